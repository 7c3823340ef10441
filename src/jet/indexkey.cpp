// Index key encoding: how each column type becomes bytes whose memcmp order is the index order.
//
//   key column   | flag | value bytes                                   |
//   flag         0x7F value follows (ascending), 0x80 (descending); 0x00 null (ascending), 0xFF
//                (descending). Descending values are the ascending bytes inverted unless noted.
//   Byte         the byte
//   Integer, Long, Currency   big-endian two's complement with the sign bit inverted
//   Single, Double, Date/Time big-endian IEEE; >= 0: sign bit inverted; < 0: all bits inverted
//                             (descending: the opposite)
//   Boolean      never null: true 0x00, false 0xFF (descending: inverted)
//   Decimal      | sign 0xFF (>= 0) / 0x00 (< 0) | 16-byte big-endian magnitude at the column's
//                scale, inverted when negative | (descending: magnitude inverted when >= 0)
//   Guid, Binary in 8-byte segments, each followed by a length byte: 9 = more segments follow,
//                else the count of real bytes in the last (zero-padded) segment. Descending
//                inverts data bytes and the last length byte, never the 9s.
//                A Guid is taken in its text order (first three fields big-endian).
//   Text         General sort order (Access 2000 to 2007):
//                | inline codes | 01 | accent codes | [ 01 01 [flags FF 02 80 FF 80 [FF]]
//                [ 01 unprintable codes ] ] | 00 |
//                Descending: everything after the flag, plus one 00, inverted, then 00.
//                Only the first 255 characters count; trailing spaces are dropped.
#include "indexkey.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "error.h"

namespace jet {

namespace {

const GeneralSortCode kTable[] = {
#include "general_sort.inc"
};

constexpr uint8_t kAscStart = 0x7F;
constexpr uint8_t kAscNull = 0x00;
constexpr uint8_t kDescStart = 0x80;
constexpr uint8_t kDescNull = 0xFF;

constexpr size_t kMaxIndexedChars = 255;  // UTF-16 units of a text that reach the key

// Codes 0..kDirect-1 sit at their own position in the table (checked on first use).
constexpr uint32_t kDirect = 0x370;

const GeneralSortCode* findCode(uint32_t cp) {
    static const bool direct = [] {
        if (std::size(kTable) < kDirect) return false;
        for (uint32_t i = 0; i < kDirect; ++i)
            if (kTable[i].code != i) return false;
        return true;
    }();
    if (direct && cp < kDirect) return &kTable[cp];
    auto it = std::lower_bound(std::begin(kTable), std::end(kTable), cp,
                               [](const GeneralSortCode& c, uint32_t v) { return c.code < v; });
    return it != std::end(kTable) && it->code == cp ? &*it : nullptr;
}

std::string hexCode(uint32_t cp) {
    static const char* digits = "0123456789ABCDEF";
    std::string s = "U+";
    int width = cp > 0xFFFF ? 6 : 4;
    for (int i = width - 1; i >= 0; --i) s += digits[(cp >> (4 * i)) & 0xF];
    return s;
}

// Decodes UTF-8 into code points; false on a malformed sequence.
bool decodeUtf8(std::string_view s, std::vector<uint32_t>& out) {
    size_t i = 0;
    while (i < s.size()) {
        uint8_t b = static_cast<uint8_t>(s[i]);
        uint32_t cp;
        size_t n;
        if (b < 0x80) { cp = b; n = 1; }
        else if ((b & 0xE0) == 0xC0) { cp = b & 0x1F; n = 2; }
        else if ((b & 0xF0) == 0xE0) { cp = b & 0x0F; n = 3; }
        else if ((b & 0xF8) == 0xF0) { cp = b & 0x07; n = 4; }
        else return false;
        if (i + n > s.size()) return false;
        for (size_t k = 1; k < n; ++k) {
            uint8_t c = static_cast<uint8_t>(s[i + k]);
            if ((c & 0xC0) != 0x80) return false;
            cp = (cp << 6) | (c & 0x3F);
        }
        static const uint32_t minOf[] = {0, 0, 0x80, 0x800, 0x10000};
        if (cp < minOf[n] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
        out.push_back(cp);
        i += n;
    }
    return true;
}

// The characters that reach the key: the first 255 UTF-16 units, trailing spaces dropped.
// A supplementary character cut in half keeps its first half (which has no code).
std::vector<uint32_t> indexedChars(std::string_view utf8, const std::string& where) {
    std::vector<uint32_t> cps;
    if (!decodeUtf8(utf8, cps)) fail(ErrorKind::Invalid, where, "text is not valid UTF-8");
    size_t units = 0, keep = 0;
    for (; keep < cps.size(); ++keep) {
        size_t w = cps[keep] > 0xFFFF ? 2 : 1;
        if (units + w > kMaxIndexedChars) {
            if (units < kMaxIndexedChars) {  // keep the high surrogate alone
                cps[keep] = 0xD800 + ((cps[keep] - 0x10000) >> 10);
                ++keep;
            }
            break;
        }
        units += w;
    }
    cps.resize(keep);
    while (!cps.empty() && cps.back() == ' ') cps.pop_back();
    return cps;
}

void flip(Bytes& out, size_t from) {
    for (size_t i = from; i < out.size(); ++i) out[i] = static_cast<uint8_t>(~out[i]);
}

void trimTrailing(Bytes& b, uint8_t lo, uint8_t hi) {
    while (!b.empty() && b.back() >= lo && b.back() <= hi) b.pop_back();
}

// Appends one text value (without the flag) in the General sort order.
void writeGeneralText(const std::vector<uint32_t>& chars, bool ascending, Bytes& out,
                      const std::string& where) {
    const size_t start = out.size();
    Bytes extra;            // accent codes, one group per character up to the last accented one
    size_t extraChars = 0;  // characters that `extra` accounts for
    size_t extraPrefix = 0; // a modifier that arrived before any accent code
    bool anyExtra = false;
    Bytes unprint, flags;
    bool anyUnprint = false, anyFlags = false;
    size_t pos = 0;  // characters with inline codes so far

    for (uint32_t cp : chars) {
        const GeneralSortCode* c = findCode(cp);
        if (!c)
            fail(ErrorKind::SortOrder, where,
                 "character " + hexCode(cp) + " has no code in the General sort order");
        const size_t at = pos;
        if (c->inlineLen) {
            out.insert(out.end(), c->inlineBytes.begin(), c->inlineBytes.begin() + c->inlineLen);
            ++pos;
        }
        if (c->kind == 'S') continue;

        if (c->extraLen || c->modifier) {
            anyExtra = true;
            if (extraChars < at) {  // characters without accents in between: placeholders
                extra.insert(extra.end(), at - extraChars, 0x02);
                extraChars = at;
            }
            if (c->extraLen) {
                extra.insert(extra.end(), c->extraBytes.begin(), c->extraBytes.begin() + c->extraLen);
                ++extraChars;
            } else if (!extra.empty()) {
                extra.back() = static_cast<uint8_t>(extra.back() + c->modifier);
            } else {
                extra.push_back(c->modifier);
                extraPrefix = 1;
            }
        }
        if (c->unprintLen) {
            anyUnprint = true;
            // The position counts accent-code bytes, as if they had all been written already.
            long p = anyExtra ? static_cast<long>(extra.size()) + static_cast<long>(at) -
                                    static_cast<long>(extraChars) - static_cast<long>(extraPrefix)
                              : static_cast<long>(at);
            int offset = (7 + 4 * static_cast<int>(p)) | 0x8000;
            unprint.push_back(static_cast<uint8_t>((offset >> 8) & 0xFF));
            unprint.push_back(static_cast<uint8_t>(offset & 0xFF));
            unprint.push_back(0x06);
            unprint.insert(unprint.end(), c->unprintBytes.begin(),
                           c->unprintBytes.begin() + c->unprintLen);
        }
        if (c->crazy) {
            anyFlags = true;
            flags.push_back(c->crazy);
        }
    }

    out.push_back(0x01);
    trimTrailing(extra, 0x00, 0x02);
    out.insert(out.end(), extra.begin(), extra.end());
    if (anyFlags || anyUnprint) {
        out.push_back(0x01);
        out.push_back(0x01);
        if (anyFlags) {
            trimTrailing(flags, 0x03, 0x03);  // trailing "3" flags carry nothing
            // Three 2-bit flags per byte under a 0x80 prefix.
            uint8_t cur = 0x80;
            int n = 0;
            for (uint8_t f : flags) {
                cur = static_cast<uint8_t>(cur | (f << ((2 - n) * 2)));
                if (++n == 3) {
                    out.push_back(cur);
                    cur = 0x80;
                    n = 0;
                }
            }
            if (n > 0) out.push_back(cur);
            for (uint8_t b : {0xFF, 0x02, 0x80, 0xFF, 0x80}) out.push_back(b);
            if (anyUnprint) out.push_back(0xFF);
        }
        if (anyUnprint) {
            out.push_back(0x01);
            out.insert(out.end(), unprint.begin(), unprint.end());
        }
    }
    if (!ascending) {
        out.push_back(0x00);
        flip(out, start);
    }
    out.push_back(0x00);
}

void putBigEndian(Bytes& out, uint64_t v, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) out.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

// Two's complement integer of `bytes` width.
void writeInteger(Bytes& out, int64_t v, int bytes, bool ascending) {
    size_t start = out.size();
    putBigEndian(out, static_cast<uint64_t>(v), bytes);
    out[start] ^= 0x80;
    if (!ascending) flip(out, start);
}

void writeFloat(Bytes& out, uint64_t bits, int bytes, bool ascending) {
    size_t start = out.size();
    putBigEndian(out, bits, bytes);
    bool negative = out[start] & 0x80;
    if (!negative) out[start] ^= 0x80;
    if (negative == ascending) flip(out, start);
}

void writeBinary(Bytes& out, const uint8_t* data, size_t len, bool ascending) {
    size_t pos = 0;
    while (len - pos > 8) {
        size_t s = out.size();
        out.insert(out.end(), data + pos, data + pos + 8);
        if (!ascending) flip(out, s);
        out.push_back(9);
        pos += 8;
    }
    if (len > pos) {
        size_t s = out.size();
        size_t n = len - pos;
        out.insert(out.end(), data + pos, data + len);
        out.insert(out.end(), 8 - n, 0);
        out.push_back(static_cast<uint8_t>(n));
        if (!ascending) flip(out, s);
    }
}

using U128 = unsigned __int128;

// The decimal's magnitude at `scale` digits after the point; false if it does not fit exactly.
bool rescale(const Decimal& d, int scale, U128& out) {
    U128 m = (U128(d.magnitude[2]) << 64) | (U128(d.magnitude[1]) << 32) | d.magnitude[0];
    for (int s = d.scale; s < scale; ++s) {
        if (m > std::numeric_limits<U128>::max() / 10) return false;
        m *= 10;
    }
    for (int s = d.scale; s > scale; --s) {
        if (m % 10 != 0) return false;
        m /= 10;
    }
    out = m;
    return true;
}

int digits(U128 m) {
    int n = 1;
    while (m >= 10) {
        m /= 10;
        ++n;
    }
    return n;
}

void writeDecimal(Bytes& out, const Decimal& d, const Column& col, bool ascending,
                  const std::string& where) {
    U128 m;
    if (!rescale(d, col.scale, m))
        fail(ErrorKind::Invalid, where, "column " + col.name + ": decimal does not fit scale " +
                                            std::to_string(col.scale));
    if (col.precision > 0 && digits(m) > col.precision)
        fail(ErrorKind::Invalid, where, "column " + col.name + ": decimal exceeds precision " +
                                            std::to_string(col.precision));
    bool negative = d.negative && m != 0;
    size_t start = out.size();
    out.push_back(negative ? 0x80 : 0x00);
    putBigEndian(out, static_cast<uint64_t>(m >> 64), 8);
    putBigEndian(out, static_cast<uint64_t>(m), 8);
    if (negative == ascending) flip(out, start);
    out[start] = negative ? 0x00 : 0xFF;
}

[[noreturn]] void wrongType(const Column& col, const std::string& where) {
    fail(ErrorKind::Invalid, where, "column " + col.name + ": value does not match its type");
}

// Any integral alternative, for the integer column types.
bool integral(const Value& v, int64_t& out) {
    if (auto p = std::get_if<bool>(&v)) out = *p ? -1 : 0;  // Access stores True as -1
    else if (auto p = std::get_if<uint8_t>(&v)) out = *p;
    else if (auto p = std::get_if<int16_t>(&v)) out = *p;
    else if (auto p = std::get_if<int32_t>(&v)) out = *p;
    else return false;
    return true;
}

int64_t integralIn(const Value& v, int64_t lo, int64_t hi, const Column& col,
                   const std::string& where) {
    int64_t x;
    if (!integral(v, x)) wrongType(col, where);
    if (x < lo || x > hi)
        fail(ErrorKind::Invalid, where, "column " + col.name + ": value out of range");
    return x;
}

double floating(const Value& v, const Column& col, const std::string& where) {
    if (auto p = std::get_if<double>(&v)) return *p;
    if (auto p = std::get_if<float>(&v)) return *p;
    if (auto p = std::get_if<DateTime>(&v)) return p->days;
    int64_t x;
    if (integral(v, x)) return static_cast<double>(x);
    wrongType(col, where);
}

bool isGeneralColumn(const Column& col) {
    return (col.sortOrder == kGeneralSortOrder || col.sortOrder == 0) && col.sortVersion == 0;
}

void writeColumn(Bytes& out, const Column& col, bool asc, const Value& v, const std::string& where) {
    if (col.type == ColType::Boolean) {  // a Yes/No column has no null
        bool t = false;
        if (auto p = std::get_if<bool>(&v)) t = *p;
        else if (int64_t x; integral(v, x)) t = x != 0;
        else if (!isNull(v)) wrongType(col, where);
        out.push_back(asc ? kAscStart : kDescStart);
        out.push_back((t == asc) ? 0x00 : 0xFF);
        return;
    }
    if (isNull(v)) {
        out.push_back(asc ? kAscNull : kDescNull);
        return;
    }
    out.push_back(asc ? kAscStart : kDescStart);
    switch (col.type) {
    case ColType::Byte: {
        out.push_back(static_cast<uint8_t>(integralIn(v, 0, 255, col, where)));
        if (!asc) flip(out, out.size() - 1);
        return;
    }
    case ColType::Integer:
        return writeInteger(out, integralIn(v, INT16_MIN, INT16_MAX, col, where), 2, asc);
    case ColType::Long:
        return writeInteger(out, integralIn(v, INT32_MIN, INT32_MAX, col, where), 4, asc);
    case ColType::Currency: {
        int64_t x;
        if (auto p = std::get_if<Currency>(&v)) x = p->scaled;
        else if (integral(v, x)) x *= 10000;
        else wrongType(col, where);
        return writeInteger(out, x, 8, asc);
    }
    case ColType::Single: {
        float f = static_cast<float>(floating(v, col, where));
        return writeFloat(out, std::bit_cast<uint32_t>(f), 4, asc);
    }
    case ColType::Double:
    case ColType::DateTime:
        return writeFloat(out, std::bit_cast<uint64_t>(floating(v, col, where)), 8, asc);
    case ColType::Text:
    case ColType::Memo: {
        auto p = std::get_if<std::string>(&v);
        if (!p) wrongType(col, where);
        if (!isGeneralColumn(col))
            fail(ErrorKind::SortOrder, where,
                 "column " + col.name + " uses sort order " + std::to_string(col.sortOrder) +
                     " (version " + std::to_string(col.sortVersion) +
                     "); only the General order can be written");
        return writeGeneralText(indexedChars(*p, where), asc, out, where + ": column " + col.name);
    }
    case ColType::Guid: {
        auto p = std::get_if<Guid>(&v);
        if (!p) wrongType(col, where);
        std::array<uint8_t, 16> b = p->bytes;  // stored little-endian fields -> text order
        std::reverse(b.begin(), b.begin() + 4);
        std::reverse(b.begin() + 4, b.begin() + 6);
        std::reverse(b.begin() + 6, b.begin() + 8);
        return writeBinary(out, b.data(), b.size(), asc);
    }
    case ColType::Binary: {
        auto p = std::get_if<Bytes>(&v);
        if (!p) wrongType(col, where);
        return writeBinary(out, p->data(), p->size(), asc);
    }
    case ColType::Numeric: {
        auto p = std::get_if<Decimal>(&v);
        if (!p) wrongType(col, where);
        return writeDecimal(out, *p, col, asc, where);
    }
    default:
        fail(ErrorKind::Unsupported, where, "column " + col.name + ": its type cannot be indexed");
    }
}

const Column& keyColumn(const TableDef& table, const RealIndex::KeyColumn& kc, size_t* position) {
    for (size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].number == kc.columnNumber) {
            if (position) *position = i;
            return table.columns[i];
        }
    }
    fail(ErrorKind::Corrupt, table.name,
         "an index names column number " + std::to_string(kc.columnNumber) +
             ", which does not exist");
}

}  // namespace

std::span<const GeneralSortCode> generalSortTable() { return kTable; }

Bytes encodeIndexKey(const TableDef& table, const RealIndex& index, const Row& row) {
    Bytes out;
    for (const auto& kc : index.columns) {
        size_t i = 0;
        const Column& col = keyColumn(table, kc, &i);
        if (i >= row.size())
            fail(ErrorKind::Invalid, table.name, "row has fewer values than the table has columns");
        writeColumn(out, col, kc.ascending, row[i], table.name);
    }
    return out;
}

Bytes encodeSeekKey(const TableDef& table, const RealIndex& index, const std::vector<Value>& key) {
    if (key.size() > index.columns.size())
        fail(ErrorKind::Invalid, table.name, "seek key has more values than the index has columns");
    Bytes out;
    for (size_t k = 0; k < key.size(); ++k) {
        const Column& col = keyColumn(table, index.columns[k], nullptr);
        writeColumn(out, col, index.columns[k].ascending, key[k], table.name);
    }
    return out;
}

Bytes encodeGeneralText(std::string_view utf8) {
    Bytes out;
    writeGeneralText(indexedChars(utf8, "text key"), true, out, "text key");
    return out;
}

bool canEncodeGeneralText(std::string_view utf8) {
    std::vector<uint32_t> cps;
    if (!decodeUtf8(utf8, cps)) return false;
    // Only what reaches the key matters: characters past the 255th are cut off.
    size_t units = 0;
    for (uint32_t cp : cps) {
        size_t w = cp > 0xFFFF ? 2 : 1;
        if (units + w > kMaxIndexedChars) return units == kMaxIndexedChars;  // else half is kept
        units += w;
        if (!findCode(cp)) return false;
    }
    return true;
}

}  // namespace jet
