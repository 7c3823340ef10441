#include "db/values.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "db/error.h"
#include "vb/conv.h"

namespace db {

vb::Variant toVariant(const jet::Value& v) {
    struct Visit {
        vb::Variant operator()(std::monostate) const { return vb::Null{}; }
        vb::Variant operator()(bool b) const { return b; }
        vb::Variant operator()(uint8_t b) const { return b; }
        vb::Variant operator()(int16_t i) const { return i; }
        vb::Variant operator()(int32_t i) const { return i; }
        vb::Variant operator()(const jet::Currency& c) const { return vb::Currency{c.scaled}; }
        vb::Variant operator()(float f) const { return f; }
        vb::Variant operator()(double d) const { return d; }
        vb::Variant operator()(const jet::DateTime& d) const { return vb::Date{d.days}; }
        vb::Variant operator()(const std::string& s) const { return s; }
        vb::Variant operator()(const jet::Bytes& b) const { return vb::ByteArray(b); }
        vb::Variant operator()(const jet::Guid& g) const { return jet::guidText(g); }
        vb::Variant operator()(const jet::Decimal& d) const { return jet::decimalToDouble(d); }
    };
    return std::visit(Visit{}, v);
}

namespace {

[[noreturn]] void conversionError() { throw DaoError(dao::DataTypeConversion, "Data type conversion error."); }

// The number a numeric column takes: Booleans are -1/0, a Date its serial, texts as CDbl reads
// them; an empty text is not 0 here (DAO refuses it).
double number(const vb::Variant& v) {
    if (auto* s = std::get_if<std::string>(&v)) {
        if (s->find_first_not_of(" \t") == std::string::npos) conversionError();
    }
    if (auto* b = std::get_if<bool>(&v)) return *b ? -1 : 0;
    if (auto* d = std::get_if<vb::Date>(&v)) return d->serial;
    if (std::holds_alternative<vb::ByteArray>(v)) conversionError();
    return vb::CDbl(v);
}

// Halves to even (the default rounding mode), within [lo, hi].
int64_t whole(double d, double lo, double hi) {
    if (!std::isfinite(d)) conversionError();
    double r = std::nearbyint(d);
    if (r < lo || r > hi) conversionError();
    return static_cast<int64_t>(r);
}

// UTF-16 code units of a UTF-8 text: what a Text column's length counts.
size_t utf16Length(const std::string& s) {
    size_t n = 0;
    for (unsigned char c : s) {
        if ((c & 0xC0) != 0x80) ++n;
        if (c >= 0xF0) ++n;  // a surrogate pair
    }
    return n;
}

// A double into a Decimal of the column's scale: from its shortest decimal text, so 12.34 is
// stored as 1234 with scale 2, halves to even beyond the scale.
jet::Decimal toDecimal(double d, const jet::Column& col) {
    if (!std::isfinite(d)) conversionError();
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::scientific);
    std::string text(buf, res.ptr);  // "-1.234e+01"
    bool negative = text[0] == '-';
    if (negative) text.erase(0, 1);
    size_t e = text.find('e');
    int exponent = std::stoi(text.substr(e + 1));
    std::string digits;
    for (char c : text.substr(0, e))
        if (c != '.') digits += c;
    // value = digits * 10^(exponent - (digits.size() - 1)); bring it to `scale` places.
    int shift = exponent - int(digits.size() - 1) + col.scale;
    if (shift >= 0) {
        digits.append(size_t(shift), '0');
    } else {
        size_t keep = size_t(std::max(0, int(digits.size()) + shift));
        std::string dropped = digits.substr(keep);
        digits.resize(keep);
        // halves to even on the dropped digits
        bool more = dropped.find_first_not_of('0', 1) != std::string::npos;
        int first = dropped.empty() ? 0 : dropped[0] - '0';
        int last = digits.empty() ? 0 : digits.back() - '0';
        bool up = first > 5 || (first == 5 && (more || last % 2 == 1));
        if (up) {
            int i = int(digits.size()) - 1;
            while (i >= 0 && digits[size_t(i)] == '9') digits[size_t(i--)] = '0';
            if (i < 0) digits.insert(digits.begin(), '1');
            else ++digits[size_t(i)];
        }
    }
    size_t nz = digits.find_first_not_of('0');
    digits = nz == std::string::npos ? "" : digits.substr(nz);
    uint8_t precision = col.precision ? col.precision : 18;
    if (digits.size() > precision || digits.size() > 28)
        throw DaoError(dao::NumericOverflow, "Numeric field overflow.");
    // digits into a 96-bit magnitude
    jet::Decimal out;
    for (char c : digits) {
        uint64_t carry = uint64_t(c - '0');
        for (uint32_t& w : out.magnitude) {
            uint64_t x = uint64_t(w) * 10 + carry;
            w = uint32_t(x);
            carry = x >> 32;
        }
    }
    out.negative = negative && !digits.empty();
    out.scale = col.scale;
    return out;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", the first three groups little-endian on disk.
jet::Guid toGuid(const std::string& s) {
    std::string hex;
    std::string t = s;
    if (t.size() == 38 && t.front() == '{' && t.back() == '}') t = t.substr(1, 36);
    if (t.size() != 36 || t[8] != '-' || t[13] != '-' || t[18] != '-' || t[23] != '-') conversionError();
    for (char c : t)
        if (c != '-') hex += c;
    uint8_t b[16];
    for (int i = 0; i < 16; ++i) {
        int hi = hexDigit(hex[size_t(2 * i)]), lo = hexDigit(hex[size_t(2 * i + 1)]);
        if (hi < 0 || lo < 0) conversionError();
        b[i] = uint8_t(hi * 16 + lo);
    }
    jet::Guid g;
    const int order[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    for (int i = 0; i < 16; ++i) g.bytes[size_t(i)] = b[order[i]];
    return g;
}

jet::Value convert(const jet::Column& col, const vb::Variant& v) {
    using T = jet::ColType;
    switch (col.type) {
    case T::Text:
    case T::Memo: {
        std::string s = std::holds_alternative<std::string>(v) ? std::get<std::string>(v) : vb::CStr(v);
        if (col.type == T::Text && utf16Length(s) > col.length / 2u)
            throw DaoError(dao::FieldTooSmall,
                           "The field is too small to accept the amount of data you attempted to add.");
        return s;
    }
    case T::Boolean: return vb::CBool(v);
    case T::Byte: return uint8_t(whole(number(v), 0, 255));
    case T::Integer: return int16_t(whole(number(v), -32768, 32767));
    case T::Long: return int32_t(whole(number(v), -2147483648.0, 2147483647.0));
    case T::Double: {
        double d = number(v);
        if (auto* c = std::get_if<vb::Currency>(&v)) d = double(c->scaled) / 10000.0;
        return d;
    }
    case T::Single: {
        double d = number(v);
        if (std::isfinite(d) && std::fabs(d) > std::numeric_limits<float>::max()) conversionError();
        return float(d);
    }
    case T::Currency: {
        if (auto* c = std::get_if<vb::Currency>(&v)) return jet::Currency{c->scaled};
        if (auto* s = std::get_if<std::string>(&v))
            if (s->find_first_not_of(" \t") == std::string::npos) conversionError();
        if (std::holds_alternative<vb::ByteArray>(v)) conversionError();
        if (auto* b = std::get_if<bool>(&v)) return jet::Currency{*b ? -10000 : 0};
        if (auto* d = std::get_if<vb::Date>(&v)) return jet::Currency{vb::CCur(d->serial).scaled};
        return jet::Currency{vb::CCur(v).scaled};
    }
    case T::Numeric: {
        if (auto* c = std::get_if<vb::Currency>(&v)) return toDecimal(double(c->scaled) / 10000.0, col);
        return toDecimal(number(v), col);
    }
    case T::DateTime: {
        if (auto* d = std::get_if<vb::Date>(&v)) return jet::DateTime{d->serial};
        if (auto* s = std::get_if<std::string>(&v))
            if (s->find_first_not_of(" \t") == std::string::npos) conversionError();
        if (std::holds_alternative<bool>(v) || std::holds_alternative<vb::ByteArray>(v)) conversionError();
        return jet::DateTime{vb::CDate(v).serial};
    }
    case T::Binary:
    case T::Ole: {
        if (auto* b = std::get_if<vb::ByteArray>(&v)) return jet::Bytes(*b);
        if (auto* s = std::get_if<std::string>(&v)) return jet::Bytes(s->begin(), s->end());
        conversionError();
    }
    case T::Guid: {
        if (auto* s = std::get_if<std::string>(&v)) return toGuid(*s);
        conversionError();
    }
    }
    conversionError();
}

}  // namespace

jet::Value toColumnValue(const jet::Column& column, const vb::Variant& v) {
    if (vb::isNull(v) || vb::isEmpty(v)) return std::monostate{};
    try {
        return convert(column, v);
    } catch (const DaoError&) {
        throw;
    } catch (const vb::NumberedError&) {
        // VB's own errors (13 type mismatch, 6 overflow) are DAO's conversion error here.
        conversionError();
    }
}

}  // namespace db
