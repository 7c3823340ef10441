// Text <-> number conversions under the Hungarian locale. Numbers are printed with std::to_chars and
// read with hand-written scanners and std::from_chars, so the C locale never takes part.
#include "vb/conv.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "vb/detail.h"

namespace vb {

using detail::isDigit;

namespace detail {

void overflow() { throw VbError(Overflow); }
void typeMismatch() { throw VbError(TypeMismatch); }
void invalidUseOfNull() { throw VbError(InvalidUseOfNull); }

// The length of the blank at s[i]: 1 for ASCII white space, 2 for the UTF-8 no-break space.
static size_t blankAt(std::string_view s, size_t i) {
    char c = s[i];
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v') return 1;
    if (c == '\xC2' && i + 1 < s.size() && s[i + 1] == '\xA0') return 2;
    return 0;
}

static bool blankEndsAt(std::string_view s, size_t n) {
    char c = s[n - 1];
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v') return true;
    return c == '\xA0' && n >= 2 && s[n - 2] == '\xC2';
}

std::string_view strip(std::string_view s) {
    size_t i = 0;
    while (i < s.size()) {
        size_t b = blankAt(s, i);
        if (!b) break;
        i += b;
    }
    size_t n = s.size();
    while (n > i && blankEndsAt(s, n)) n -= s[n - 1] == '\xA0' ? 2 : 1;
    return s.substr(i, n - i);
}

// A hexadecimal or octal literal is an Integer if it fits 16 bits, else a Long: &HFFFF is -1.
static int64_t signExtend(uint64_t value, bool forceLong) {
    if (!forceLong && value <= 0xFFFF) return static_cast<int16_t>(static_cast<uint16_t>(value));
    return static_cast<int32_t>(static_cast<uint32_t>(value));
}

static int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 99;
}

// "&H1F", "&O17", "&17" (octal); s starts after the '&'.
static std::optional<Decimal> parseHexOct(std::string_view s) {
    int radix = 8;
    size_t i = 0;
    if (i < s.size() && (s[i] == 'H' || s[i] == 'h')) {
        radix = 16;
        ++i;
    } else if (i < s.size() && (s[i] == 'O' || s[i] == 'o')) {
        ++i;
    }
    if (i >= s.size()) return std::nullopt;
    uint64_t value = 0;
    for (; i < s.size(); ++i) {
        int digit = digitValue(s[i]);
        if (digit >= radix) return std::nullopt;
        value = value * radix + digit;
        if (value > 0xFFFFFFFFu) overflow();
    }
    return Decimal::fromInt(signExtend(value, false));
}

std::optional<Decimal> parseDecimal(std::string_view text) {
    std::string_view s = strip(text);
    size_t n = s.size();
    if (n == 0) return std::nullopt;
    if (s[0] == '&') return parseHexOct(s.substr(1));
    size_t i = 0;
    bool negative = false, leadingSign = false, parens = false;
    if (s[0] == '+' || s[0] == '-') {
        negative = s[0] == '-';
        leadingSign = true;
        ++i;
    } else if (s[0] == '(') {
        parens = negative = true;
        ++i;
    }
    Decimal d;
    int fractionDigits = 0;
    bool anyDigit = false;
    while (i < n) {
        if (isDigit(s[i])) {
            d.digits.push_back(s[i++]);
            anyDigit = true;
            continue;
        }
        // a grouping blank: a space or no-break space between two digits
        size_t b = (s[i] == ' ' || (s[i] == '\xC2' && i + 1 < n && s[i + 1] == '\xA0')) ? (s[i] == ' ' ? 1 : 2) : 0;
        if (b && anyDigit && i + b < n && isDigit(s[i + b])) {
            i += b;
            continue;
        }
        break;
    }
    if (i < n && s[i] == ',') {
        ++i;
        while (i < n && isDigit(s[i])) {
            d.digits.push_back(s[i++]);
            ++fractionDigits;
            anyDigit = true;
        }
    }
    if (!anyDigit) return std::nullopt;
    long exponent = 0;
    if (i < n && (s[i] == 'e' || s[i] == 'E')) {
        ++i;
        bool expNegative = false;
        if (i < n && (s[i] == '+' || s[i] == '-')) expNegative = s[i++] == '-';
        if (i >= n || !isDigit(s[i])) return std::nullopt;
        while (i < n && isDigit(s[i])) {
            if (exponent < 100000) exponent = exponent * 10 + (s[i] - '0');
            ++i;
        }
        if (expNegative) exponent = -exponent;
    }
    if (parens) {
        if (i >= n || s[i] != ')') return std::nullopt;
        ++i;
    } else if (!leadingSign && i < n && (s[i] == '+' || s[i] == '-')) {
        negative = s[i++] == '-';
    }
    if (i != n) return std::nullopt;
    d.exponent = -fractionDigits;
    d.normalize();
    if (d.isZero()) return d;
    long magnitude = d.magnitude() + exponent;
    if (magnitude > 400) overflow();
    if (magnitude < -400) return Decimal{};
    d.exponent += static_cast<int>(exponent);
    d.negative = negative;
    return d;
}

}  // namespace detail

// ---- Text -----------------------------------------------------------------------------------------

std::string numberText(double d, int significant, char point) {
    if (!std::isfinite(d)) detail::overflow();
    if (d == 0) return "0";
    if (d == std::rint(d) && std::fabs(d) < (significant >= 15 ? 1e15 : 1e7)) {
        return std::to_string(static_cast<int64_t>(d));
    }
    Decimal r = Decimal::rounded(d, significant);
    int e = r.magnitude();
    std::string text;
    if (e < -4 || e >= significant) {
        Decimal m = r;
        m.negative = false;
        m.exponent -= e;
        text = m.plain(point);
        int a = std::abs(e);
        text += e < 0 ? "E-" : "E+";
        if (a < 10) text += '0';
        text += std::to_string(a);
        if (r.negative) text = "-" + text;
    } else {
        text = r.plain(point);
    }
    return text;
}

std::string currencyText(Currency c, char point) { return Decimal::fromScaled(c.scaled, 4).plain(point); }

double toDouble(Currency c) {
    if (std::llabs(c.scaled) < (int64_t{1} << 53)) return static_cast<double>(c.scaled) / 10000.0;
    return *Decimal::fromScaled(c.scaled, 4).toDouble();
}

std::string CStr(const Variant& v) {
    struct Visit {
        std::string operator()(Empty) const { return ""; }
        std::string operator()(Null) const { detail::invalidUseOfNull(); }
        std::string operator()(bool b) const { return b ? "True" : "False"; }
        std::string operator()(uint8_t b) const { return std::to_string(b); }
        std::string operator()(int16_t i) const { return std::to_string(i); }
        std::string operator()(int32_t i) const { return std::to_string(i); }
        std::string operator()(float f) const { return numberText(f, 7, ','); }
        std::string operator()(double d) const { return numberText(d, 15, ','); }
        std::string operator()(Currency c) const { return currencyText(c, ','); }
        std::string operator()(Date d) const { return dateTimeText(d); }
        std::string operator()(const std::string& s) const { return s; }
        std::string operator()(const ByteArray&) const { detail::typeMismatch(); }
    };
    return std::visit(Visit{}, v);
}

Variant Str(const Variant& v) {
    std::string text;
    switch (v.index()) {
    case 1: return Null{};
    case 2: return std::string(std::get<bool>(v) ? "True" : "False");
    case 9: return dateTimeText(std::get<Date>(v));
    case 6: text = numberText(std::get<float>(v), 7, '.'); break;
    case 8: text = currencyText(std::get<Currency>(v), '.'); break;
    case 10: text = numberText(CDbl(v), 15, '.'); break;
    case 11: detail::typeMismatch();
    default: text = numberText(CDbl(v), 15, '.'); break;
    }
    bool negative = !text.empty() && text[0] == '-';
    std::string digits = negative ? text.substr(1) : text;
    if (digits.starts_with("0.")) digits.erase(0, 1);
    return (negative ? "-" : " ") + digits;
}

// ---- Val ------------------------------------------------------------------------------------------

static double valHexOct(const std::string& t) {
    size_t i = 1, n = t.size();
    int radix = 8;
    if (t[i] == 'H' || t[i] == 'h') {
        radix = 16;
        ++i;
    } else if (t[i] == 'O' || t[i] == 'o') {
        ++i;
    }
    uint64_t value = 0;
    bool anyDigit = false;
    for (; i < n; ++i) {
        int digit = detail::digitValue(t[i]);
        if (digit >= radix) break;
        value = value * radix + digit;
        if (value > 0xFFFFFFFFu) detail::overflow();
        anyDigit = true;
    }
    if (!anyDigit) return 0;
    return static_cast<double>(detail::signExtend(value, i < n && t[i] == '&'));
}

double Val(std::string_view s) {
    std::string t;
    t.reserve(s.size());
    for (char c : s) {
        if (c != ' ' && c != '\t' && c != '\n') t.push_back(c);
    }
    size_t n = t.size(), i = 0;
    if (n > 1 && t[0] == '&') return valHexOct(t);
    Decimal d;
    if (i < n && (t[i] == '+' || t[i] == '-')) d.negative = t[i++] == '-';
    bool anyDigit = false;
    int fraction = 0;
    while (i < n && isDigit(t[i])) {
        d.digits.push_back(t[i++]);
        anyDigit = true;
    }
    if (i < n && t[i] == '.') {
        ++i;
        while (i < n && isDigit(t[i])) {
            d.digits.push_back(t[i++]);
            ++fraction;
            anyDigit = true;
        }
    }
    if (!anyDigit) return 0;
    bool negative = d.negative;
    d.exponent = -fraction;
    d.normalize();
    d.negative = negative && !d.isZero();
    if (i < n && std::strchr("eEdD", t[i]) && t[i] != '\0') {
        size_t j = i + 1;
        bool expNegative = false;
        if (j < n && (t[j] == '+' || t[j] == '-')) expNegative = t[j++] == '-';
        long exponent = 0;
        bool expDigit = false;
        while (j < n && isDigit(t[j])) {
            if (exponent < 100000) exponent = exponent * 10 + (t[j] - '0');
            expDigit = true;
            ++j;
        }
        if (expDigit && !d.isZero()) {
            if (expNegative) exponent = -exponent;
            long magnitude = d.magnitude() + exponent;
            if (magnitude > 400) detail::overflow();
            if (magnitude < -400) return 0;
            d.exponent += static_cast<int>(exponent);
        }
    }
    auto r = d.toDouble();
    if (!r) detail::overflow();
    return *r == 0 ? 0 : *r;
}

double Val(const Variant& v) {
    if (auto* s = std::get_if<std::string>(&v)) return Val(std::string_view(*s));
    return Val(std::string_view(CStr(v)));
}

// ---- Numbers --------------------------------------------------------------------------------------

std::optional<double> parseNumber(std::string_view text) {
    auto d = detail::parseDecimal(text);
    if (!d) return std::nullopt;
    auto r = d->toDouble();
    if (!r) detail::overflow();
    return *r;
}

static double textToDouble(const std::string& s) {
    auto r = parseNumber(s);
    if (!r) detail::typeMismatch();
    return *r;
}

double CDbl(const Variant& v) {
    struct Visit {
        double operator()(Empty) const { return 0; }
        double operator()(Null) const { detail::invalidUseOfNull(); }
        double operator()(bool b) const { return b ? -1 : 0; }
        double operator()(uint8_t b) const { return b; }
        double operator()(int16_t i) const { return i; }
        double operator()(int32_t i) const { return i; }
        double operator()(float f) const { return f; }
        double operator()(double d) const { return d; }
        double operator()(Currency c) const { return toDouble(c); }
        double operator()(Date d) const { return d.serial; }
        double operator()(const std::string& s) const { return textToDouble(s); }
        double operator()(const ByteArray&) const { detail::typeMismatch(); }
    };
    return std::visit(Visit{}, v);
}

float CSng(const Variant& v) {
    double d = CDbl(v);
    if (std::isnan(d)) detail::overflow();
    float f = static_cast<float>(d);
    if (std::isinf(f)) detail::overflow();
    return f;
}

Currency CCur(const Variant& v) {
    if (v.index() == 6 || v.index() == 7 || v.index() == 9) {
        double scaled = CDbl(v) * 10000.0;
        if (!(std::fabs(scaled) < 9223372036854775808.0)) detail::overflow();
        double r = std::nearbyint(scaled);
        if (!(r < 9223372036854775808.0 && r >= -9223372036854775808.0)) detail::overflow();
        return Currency{static_cast<int64_t>(r)};
    }
    if (auto* c = std::get_if<Currency>(&v)) return *c;
    if (auto* s = std::get_if<std::string>(&v)) {
        auto d = detail::parseDecimal(*s);
        if (!d) detail::typeMismatch();
        d->roundToScale(4, Decimal::Rounding::HalfEven);
        d->shift(4);
        auto scaled = d->toInt64();
        if (!scaled) detail::overflow();
        return Currency{*scaled};
    }
    // the whole numbers, Booleans, Empty; Null and byte arrays raise through CLng's rules
    return Currency{int64_t{CLng(v)} * 10000};
}

// Rounds halves to even into [lo, hi], else 6.
static int64_t roundedInteger(const Variant& v, int64_t lo, int64_t hi) {
    int64_t r = 0;
    switch (v.index()) {
    case 0: r = 0; break;
    case 1: detail::invalidUseOfNull();
    case 2: r = std::get<bool>(v) ? -1 : 0; break;
    case 3: r = std::get<uint8_t>(v); break;
    case 4: r = std::get<int16_t>(v); break;
    case 5: r = std::get<int32_t>(v); break;
    case 8: {
        int64_t s = std::get<Currency>(v).scaled;
        r = s / 10000;
        int64_t rem = s % 10000;
        if (rem > 5000 || (rem == 5000 && r % 2 != 0)) ++r;
        if (rem < -5000 || (rem == -5000 && r % 2 != 0)) --r;
        break;
    }
    case 10: {
        auto d = detail::parseDecimal(std::get<std::string>(v));
        if (!d) detail::typeMismatch();
        d->roundToScale(0, Decimal::Rounding::HalfEven);
        auto i = d->toInt64();
        if (!i) detail::overflow();
        r = *i;
        break;
    }
    case 11: detail::typeMismatch();
    default: {
        double d = CDbl(v);
        if (!std::isfinite(d)) detail::overflow();
        double n = std::nearbyint(d);  // the default rounding mode: halves to even
        if (n < static_cast<double>(lo) || n > static_cast<double>(hi)) detail::overflow();
        return static_cast<int64_t>(n);
    }
    }
    if (r < lo || r > hi) detail::overflow();
    return r;
}

int16_t CInt(const Variant& v) { return static_cast<int16_t>(roundedInteger(v, INT16_MIN, INT16_MAX)); }
int32_t CLng(const Variant& v) { return static_cast<int32_t>(roundedInteger(v, INT32_MIN, INT32_MAX)); }

static bool equalsIgnoreCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        char x = a[i] >= 'A' && a[i] <= 'Z' ? a[i] + 32 : a[i];
        char y = b[i] >= 'A' && b[i] <= 'Z' ? b[i] + 32 : b[i];
        if (x != y) return false;
    }
    return true;
}

bool CBool(const Variant& v) {
    if (auto* s = std::get_if<std::string>(&v)) {
        std::string_view t = detail::strip(*s);
        if (equalsIgnoreCase(t, "true") || equalsIgnoreCase(t, "igaz")) return true;
        if (equalsIgnoreCase(t, "false") || equalsIgnoreCase(t, "hamis")) return false;
        auto d = detail::parseDecimal(t);
        if (!d) detail::typeMismatch();
        return !d->isZero();
    }
    if (auto* b = std::get_if<bool>(&v)) return *b;
    if (auto* c = std::get_if<Currency>(&v)) return c->scaled != 0;
    double d = CDbl(v);
    if (std::isnan(d)) detail::overflow();
    return d != 0;
}

bool IsNumeric(const Variant& v) {
    switch (v.index()) {
    case 1: case 9: case 11: return false;
    case 10:
        try {
            auto d = detail::parseDecimal(std::get<std::string>(v));
            return d && d->toDouble().has_value();
        } catch (const VbError&) {
            return false;
        }
    default: return true;  // Empty, Boolean and the numbers
    }
}

}  // namespace vb
