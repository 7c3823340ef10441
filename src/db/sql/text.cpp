// Texts for the SQL layer: code points, case, and General sort order keys.
#include "db/sql/text.h"

#include <algorithm>
#include <cstring>

#include "db/sql/sql.h"
#include "jet/indexkey.h"

namespace db::sql {

std::u32string decodeUtf8(std::string_view s) {
    std::u32string out;
    out.reserve(s.size());
    size_t i = 0, n = s.size();
    while (i < n) {
        auto b = static_cast<unsigned char>(s[i]);
        int len = b < 0x80 ? 1 : (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
        if (len == 0 || i + len > n) {
            out.push_back(b);
            ++i;
            continue;
        }
        char32_t cp = len == 1 ? b : len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
        bool ok = true;
        for (int k = 1; k < len; ++k) {
            auto c = static_cast<unsigned char>(s[i + k]);
            if ((c & 0xC0) != 0x80) {
                ok = false;
                break;
            }
            cp = (cp << 6) | (c & 0x3F);
        }
        if (!ok) {
            out.push_back(b);
            ++i;
            continue;
        }
        out.push_back(cp);
        i += len;
    }
    return out;
}

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

std::string encodeUtf8(std::u32string_view s) {
    std::string out;
    out.reserve(s.size());
    for (char32_t c : s) appendUtf8(out, c);
    return out;
}

char32_t lowerChar(char32_t c) {
    if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 32 : c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    if (c >= 0x100 && c <= 0x137) return c | 1;                     // Ā ā ... Ķ ķ
    if (c >= 0x139 && c <= 0x148) return (c & 1) ? c + 1 : c;       // Ĺ ĺ ... Ň ň
    if (c >= 0x14A && c <= 0x177) return c | 1;                     // Ŋ ŋ ... Ŷ ŷ (Ő ő, Ű ű)
    if (c == 0x178) return 0xFF;
    if (c >= 0x179 && c <= 0x17E) return (c & 1) ? c + 1 : c;       // Ź ź Ż ż Ž ž
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 32;      // Greek
    if (c >= 0x410 && c <= 0x42F) return c + 32;                    // Cyrillic
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    return c;
}

char32_t upperChar(char32_t c) {
    if (c < 0x80) return (c >= 'a' && c <= 'z') ? c - 32 : c;
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 32;
    if (c == 0xFF) return 0x178;
    if (c >= 0x100 && c <= 0x137) return c & ~char32_t(1);
    if (c >= 0x139 && c <= 0x148) return (c & 1) ? c : c - 1;
    if (c >= 0x14A && c <= 0x177) return c & ~char32_t(1);
    if (c >= 0x179 && c <= 0x17E) return (c & 1) ? c : c - 1;
    if (c >= 0x3B1 && c <= 0x3CB && c != 0x3C2) return c - 32;
    if (c >= 0x430 && c <= 0x44F) return c - 32;
    if (c >= 0x450 && c <= 0x45F) return c - 80;
    return c;
}

namespace {
template <class F>
std::string mapText(std::string_view s, F f) {
    bool ascii = std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    std::string out;
    out.reserve(s.size());
    if (ascii) {
        for (char c : s) out.push_back(static_cast<char>(f(static_cast<unsigned char>(c))));
        return out;
    }
    for (char32_t c : decodeUtf8(s)) appendUtf8(out, f(c));
    return out;
}

// Printable ASCII whose General code is one fixed code sequence of its own (no accent or
// ignorable part): two texts of these are equal exactly when they are equal ignoring case and
// trailing blanks.
bool plainAscii(std::string_view s) {
    for (char ch : s) {
        auto c = static_cast<unsigned char>(ch);
        if (c < 0x20 || c > 0x7E || c == '\'' || c == '-') return false;
    }
    return true;
}

std::string_view trimRight(std::string_view s) {
    while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
    return s;
}
}  // namespace

std::string lowerText(std::string_view s) { return mapText(s, lowerChar); }
std::string upperText(std::string_view s) { return mapText(s, upperChar); }

TextKey textKey(std::string_view utf8) {
    TextKey k;
    if (jet::canEncodeGeneralText(utf8)) {
        jet::Bytes b = jet::encodeGeneralText(utf8);
        k.bytes.assign(b.begin(), b.end());
        return k;
    }
    // Fallback: folded code points as big-endian 32-bit words (code point order), a zero word,
    // then the raw bytes.
    k.general = false;
    std::u32string cps = decodeUtf8(utf8);
    k.bytes.reserve(cps.size() * 4 + 4 + utf8.size());
    auto put = [&](char32_t c) {
        for (int sh = 24; sh >= 0; sh -= 8) k.bytes.push_back(static_cast<char>((c >> sh) & 0xFF));
    };
    for (char32_t c : cps) put(lowerChar(c));
    put(0);
    k.bytes.append(utf8);
    return k;
}

int compareKeys(const TextKey& a, const TextKey& b) {
    if (a.general != b.general) return a.general ? -1 : 1;
    size_t n = std::min(a.bytes.size(), b.bytes.size());
    int c = n ? std::memcmp(a.bytes.data(), b.bytes.data(), n) : 0;
    if (c != 0) return c < 0 ? -1 : 1;
    return a.bytes.size() < b.bytes.size() ? -1 : a.bytes.size() > b.bytes.size() ? 1 : 0;
}

bool textEquals(std::string_view a, std::string_view b) {
    if (plainAscii(a) && plainAscii(b)) {
        a = trimRight(a);
        b = trimRight(b);
        if (a.size() != b.size()) return false;
        for (size_t i = 0; i < a.size(); ++i)
            if (lowerChar(static_cast<unsigned char>(a[i])) != lowerChar(static_cast<unsigned char>(b[i])))
                return false;
        return true;
    }
    return compareKeys(textKey(a), textKey(b)) == 0;
}

int compareText(std::string_view a, std::string_view b) { return compareKeys(textKey(a), textKey(b)); }

std::string foldName(std::string_view name) { return lowerText(name); }

bool sameName(std::string_view a, std::string_view b) { return a == b || foldName(a) == foldName(b); }

}  // namespace db::sql
