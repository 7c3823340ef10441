// Row encoding for data pages.
//
//   | column count (2) | fixed area: each fixed column at its offset (null ones zero-filled) |
//   | variable data, in var-table order | eod (2) | var offsets (2 each, last first) |
//   | var count (2) | null mask: bit n = column number n is not null (Boolean: its value) |
//
//   Offsets count from the row start; a null or empty variable value has the offset of the next.
//   The eod/offset/count trailer is left out when the table has no variable columns.
#include "rowwrite.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <random>

#include "datapage.h"
#include "error.h"
#include "longvalue.h"
#include "pager.h"
#include "text.h"

namespace jet {

namespace {

using datapage::get16;
using datapage::put16;
using datapage::put32;

constexpr size_t kLongValueField = 12;
constexpr size_t kMaxCompressedMemo = 1024;  // longer memos are stored uncompressed

[[noreturn]] void invalid(const std::string& file, const Column& c, const std::string& why) {
    fail(ErrorKind::Invalid, file, "column " + c.name + ": " + why);
}

// Numbers arrive as any numeric alternative; convert with range checks.
bool asLongDouble(const Value& v, long double& out) {
    if (auto p = std::get_if<bool>(&v)) out = *p ? -1 : 0;
    else if (auto p = std::get_if<uint8_t>(&v)) out = *p;
    else if (auto p = std::get_if<int16_t>(&v)) out = *p;
    else if (auto p = std::get_if<int32_t>(&v)) out = *p;
    else if (auto p = std::get_if<Currency>(&v)) out = (long double)p->scaled / 10000;
    else if (auto p = std::get_if<float>(&v)) out = *p;
    else if (auto p = std::get_if<double>(&v)) out = *p;
    else if (auto p = std::get_if<DateTime>(&v)) out = p->days;
    else return false;
    return true;
}

int64_t integer(const std::string& file, const Column& c, const Value& v, int64_t lo, int64_t hi) {
    // Whole numbers need no rounding (and no long double).
    std::optional<int64_t> whole;
    if (auto p = std::get_if<int32_t>(&v)) whole = *p;
    else if (auto p = std::get_if<int16_t>(&v)) whole = *p;
    else if (auto p = std::get_if<uint8_t>(&v)) whole = *p;
    if (whole) {
        if (*whole < lo || *whole > hi) invalid(file, c, "value out of range");
        return *whole;
    }
    long double d;
    if (!asLongDouble(v, d)) invalid(file, c, "expects a number");
    if (std::isnan((double)d)) invalid(file, c, "cannot hold NaN");
    d = std::nearbyint(d);
    if (d < lo || d > hi) invalid(file, c, "value out of range");
    return int64_t(d);
}

double real(const std::string& file, const Column& c, const Value& v) {
    long double d;
    if (!asLongDouble(v, d)) invalid(file, c, "expects a number");
    return double(d);
}

void put64(uint8_t* p, uint64_t v) {
    put32(p, uint32_t(v));
    put32(p + 4, uint32_t(v >> 32));
}

// Decimal: | sign (1): 0x80 negative | 16 bytes: the unscaled magnitude as four 32-bit
// little-endian words, most significant word first |
void putDecimal(const std::string& file, const Column& c, const Value& v, uint8_t* out) {
    unsigned __int128 mag = 0;
    bool negative = false;
    int scale = 0;
    if (auto d = std::get_if<Decimal>(&v)) {
        mag = (unsigned __int128)d->magnitude[0] | ((unsigned __int128)d->magnitude[1] << 32) |
              ((unsigned __int128)d->magnitude[2] << 64);
        negative = d->negative;
        scale = d->scale;
    } else {
        long double x;
        if (!asLongDouble(v, x)) invalid(file, c, "expects a number");
        negative = x < 0;
        x = std::fabs(x);
        for (int i = 0; i < c.scale; ++i) x *= 10;
        x = std::nearbyint(x);
        if (!(x < 7.9e28L)) invalid(file, c, "value out of range");
        mag = (unsigned __int128)x;
        scale = c.scale;
    }
    while (scale < c.scale) { mag *= 10; ++scale; }
    while (scale > c.scale) {
        if (mag % 10 != 0) invalid(file, c, "has more decimal places than the column");
        mag /= 10;
        --scale;
    }
    unsigned __int128 limit = 1;
    for (int i = 0; i < std::min<int>(c.precision ? c.precision : 28, 38); ++i) limit *= 10;
    if (mag >= limit) invalid(file, c, "value has more digits than the column's precision");
    out[0] = (negative && mag != 0) ? 0x80 : 0x00;
    for (int w = 0; w < 4; ++w) put32(out + 1 + 4 * w, uint32_t(mag >> (32 * (3 - w))));
}

// The bytes of a fixed-size value (length = the column's).
void putFixed(const std::string& file, const Column& c, const Value& v, uint8_t* out) {
    switch (c.type) {
    case ColType::Byte: out[0] = uint8_t(integer(file, c, v, 0, 255)); break;
    case ColType::Integer: put16(out, uint16_t(int16_t(integer(file, c, v, -32768, 32767)))); break;
    case ColType::Long:
        put32(out, uint32_t(int32_t(integer(file, c, v, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()))));
        break;
    case ColType::Currency: {
        int64_t scaled;
        if (auto p = std::get_if<Currency>(&v)) scaled = p->scaled;
        else {
            long double d;
            if (!asLongDouble(v, d)) invalid(file, c, "expects a number");
            d = std::nearbyint(d * 10000);
            if (!(d > -9.2e18L && d < 9.2e18L)) invalid(file, c, "value out of range");
            scaled = int64_t(d);
        }
        put64(out, uint64_t(scaled));
        break;
    }
    case ColType::Single: {
        float f = float(real(file, c, v));
        uint32_t bits;
        std::memcpy(&bits, &f, 4);
        put32(out, bits);
        break;
    }
    case ColType::Double:
    case ColType::DateTime: {
        double d = real(file, c, v);
        uint64_t bits;
        std::memcpy(&bits, &d, 8);
        put64(out, bits);
        break;
    }
    case ColType::Guid: {
        auto g = std::get_if<Guid>(&v);
        if (!g) invalid(file, c, "expects a replication id");
        std::memcpy(out, g->bytes.data(), 16);
        break;
    }
    case ColType::Numeric: putDecimal(file, c, v, out); break;
    default: invalid(file, c, "has a type that cannot be written");
    }
}

const std::string* text(const Value& v) { return std::get_if<std::string>(&v); }

Bytes textBytes(const std::string& file, const Column& c, const Value& v) {
    const std::string* s = text(v);
    if (!s) invalid(file, c, "expects a text");
    if (c.type == ColType::Text) {
        size_t units = utf16Length(*s);
        if (units * 2 > c.length)
            invalid(file, c, "text of " + std::to_string(units) + " characters is longer than " +
                                 std::to_string(c.length / 2));
        return encodeText(*s, c.compressedUnicode());
    }
    // Memo: Access compresses only memos of at most 1024 characters.
    bool compress = c.compressedUnicode() && utf16Length(*s) <= kMaxCompressedMemo;
    return encodeText(*s, compress);
}

}  // namespace

Bytes encodeRow(Pager& pager, TableDef& def, const Row& row) {
    const std::string& file = pager.path();
    if (row.size() != def.columns.size())
        fail(ErrorKind::Invalid, file, "table " + def.name + ": a row of " + std::to_string(row.size()) +
                                           " values for " + std::to_string(def.columns.size()) + " columns");
    uint16_t columnCount = def.maxColumns;
    size_t fixedEnd = 0;
    size_t varCount = def.varColumns;
    for (const Column& c : def.columns) {
        columnCount = std::max<uint16_t>(columnCount, uint16_t(c.number + 1));
        if (c.fixed()) fixedEnd = std::max<size_t>(fixedEnd, size_t(c.fixedOffset) + c.length);
        else varCount = std::max<size_t>(varCount, size_t(c.varIndex) + 1);
    }
    size_t maskBytes = (columnCount + 7) / 8;
    Bytes mask(maskBytes, 0);
    auto markNotNull = [&](const Column& c) { mask[c.number / 8] |= uint8_t(1u << (c.number % 8)); };

    Bytes out(2 + fixedEnd, 0);
    put16(out.data(), columnCount);

    // Fixed columns, and the variable values (long values last, once the row's room is known).
    std::vector<Bytes> var(varCount);
    std::vector<bool> varPresent(varCount, false);
    std::vector<size_t> longColumns;
    size_t varBytes = 0;
    for (size_t i = 0; i < def.columns.size(); ++i) {
        const Column& c = def.columns[i];
        const Value& v = row[i];
        if (c.type == ColType::Boolean) {
            bool on = false;
            if (auto b = std::get_if<bool>(&v)) on = *b;
            else if (!isNull(v)) on = integer(file, c, v, -1, 1) != 0;
            if (on) markNotNull(c);
            continue;
        }
        if (isNull(v)) continue;
        if (c.fixed()) {
            size_t size = fixedDataSize(c.type);
            if (c.type == ColType::Text || c.type == ColType::Binary) {
                Bytes b = c.type == ColType::Text ? encodeText(text(v) ? *text(v) : std::string(), false)
                                                  : (std::get_if<Bytes>(&v) ? std::get<Bytes>(v) : Bytes());
                if (b.size() > c.length) invalid(file, c, "value is longer than the column");
                std::memcpy(out.data() + 2 + c.fixedOffset, b.data(), b.size());
            } else {
                if (size > c.length) invalid(file, c, "has a stored length too small for its type");
                putFixed(file, c, v, out.data() + 2 + c.fixedOffset);
            }
            markNotNull(c);
            continue;
        }
        varPresent[c.varIndex] = true;
        markNotNull(c);
        switch (c.type) {
        case ColType::Text: var[c.varIndex] = textBytes(file, c, v); break;
        case ColType::Binary: {
            auto b = std::get_if<Bytes>(&v);
            if (!b) invalid(file, c, "expects bytes");
            if (b->size() > c.length) invalid(file, c, "value is longer than the column");
            var[c.varIndex] = *b;
            break;
        }
        case ColType::Numeric: var[c.varIndex].assign(17, 0); putDecimal(file, c, v, var[c.varIndex].data()); break;
        case ColType::Memo:
        case ColType::Ole:
            longColumns.push_back(i);
            continue;
        default:
            var[c.varIndex].resize(fixedDataSize(c.type));
            putFixed(file, c, v, var[c.varIndex].data());
        }
        varBytes += var[c.varIndex].size();
    }

    size_t trailer = varCount ? 4 + 2 * varCount : 0;
    if (!longColumns.empty()) {
        // What is left of the row once everything else and a bare field per long value is in.
        size_t used = out.size() + varBytes + trailer + maskBytes + kLongValueField * longColumns.size();
        size_t room = used < kMaxRowBytes ? kMaxRowBytes - used : 0;
        for (size_t i : longColumns) {
            const Column& c = def.columns[i];
            Bytes data;
            if (c.type == ColType::Memo) data = textBytes(file, c, row[i]);
            else if (auto b = std::get_if<Bytes>(&row[i])) data = *b;
            else invalid(file, c, "expects bytes");
            Bytes field = writeLongValue(pager, def, data, room + kLongValueField);
            room -= std::min(room, field.size() - kLongValueField);
            var[c.varIndex] = std::move(field);
            varBytes += var[c.varIndex].size();
        }
    }

    if (varCount) {
        std::vector<uint16_t> offsets(varCount);
        for (size_t k = 0; k < varCount; ++k) {
            offsets[k] = uint16_t(out.size());
            if (varPresent[k]) out.insert(out.end(), var[k].begin(), var[k].end());
        }
        size_t eod = out.size();
        size_t at = out.size();
        out.resize(at + trailer);
        put16(out.data() + at, uint16_t(eod));
        at += 2;
        for (size_t k = varCount; k-- > 0; at += 2) put16(out.data() + at, offsets[k]);
        put16(out.data() + at, uint16_t(varCount));
    }
    out.insert(out.end(), mask.begin(), mask.end());
    if (out.size() > kMaxRowBytes)
        fail(ErrorKind::Invalid, file, "table " + def.name + ": the row needs " + std::to_string(out.size()) +
                                           " bytes, more than " + std::to_string(kMaxRowBytes));
    return out;
}

std::vector<Bytes> longValueFields(const std::string& file, const TableDef& def, const uint8_t* row, size_t n) {
    std::vector<Bytes> out;
    bool any = false;
    for (const Column& c : def.columns) any |= (c.type == ColType::Memo || c.type == ColType::Ole) && !c.fixed();
    if (!any) return out;
    auto broken = [&] { fail(ErrorKind::Corrupt, file, "table " + def.name + ": a row with a broken layout"); };
    if (n < 2) broken();
    size_t cols = get16(row);
    size_t maskBytes = (cols + 7) / 8;
    if (n < maskBytes + 4) broken();
    size_t maskAt = n - maskBytes;
    size_t varCount = get16(row + maskAt - 2);
    if (maskAt < 4 + 2 * varCount) broken();
    size_t eodAt = maskAt - 2 - 2 * varCount - 2;
    size_t eod = get16(row + eodAt);
    auto offset = [&](size_t k) { return size_t(get16(row + maskAt - 4 - 2 * k)); };
    for (const Column& c : def.columns) {
        if ((c.type != ColType::Memo && c.type != ColType::Ole) || c.fixed()) continue;
        if (c.number >= cols || c.varIndex >= varCount) continue;  // column added after this row
        if (!(row[maskAt + c.number / 8] & (1u << (c.number % 8)))) continue;
        size_t start = offset(c.varIndex);
        size_t end = size_t(c.varIndex) + 1 < varCount ? offset(c.varIndex + 1) : eod;
        if (start > end || end > eodAt) broken();
        if (end - start >= kLongValueField) out.emplace_back(row + start, row + end);
    }
    return out;
}

}  // namespace jet
