// Text conversion between UTF-8 and the stored UTF-16LE, plain or compressed (see text.h).
#include "text.h"

namespace jet {

namespace {

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out.push_back(char(cp));
    } else if (cp < 0x800) {
        out.push_back(char(0xC0 | (cp >> 6)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(char(0xE0 | (cp >> 12)));
        out.push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(char(0xF0 | (cp >> 18)));
        out.push_back(char(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(char(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(char(0x80 | (cp & 0x3F)));
    }
}

// UTF-16LE units from p[0..n) (n even) appended as UTF-8. `pending` carries a high surrogate
// across segment boundaries of a compressed text.
void appendUtf16le(std::string& out, const uint8_t* p, size_t n, uint32_t& pending) {
    for (size_t i = 0; i + 1 < n; i += 2) {
        uint32_t u = uint32_t(p[i]) | (uint32_t(p[i + 1]) << 8);
        if (pending) {
            if (u >= 0xDC00 && u <= 0xDFFF) {
                appendUtf8(out, 0x10000 + ((pending - 0xD800) << 10) + (u - 0xDC00));
                pending = 0;
                continue;
            }
            appendUtf8(out, 0xFFFD);
            pending = 0;
        }
        if (u >= 0xD800 && u <= 0xDBFF) pending = u;
        else if (u >= 0xDC00 && u <= 0xDFFF) appendUtf8(out, 0xFFFD);
        else if (u < 0x80) out.push_back(char(u));
        else appendUtf8(out, u);
    }
}

// Next code point of UTF-8 text at i (advancing i); U+FFFD for an invalid sequence.
uint32_t nextCodePoint(std::string_view s, size_t& i) {
    uint8_t c = uint8_t(s[i++]);
    if (c < 0x80) return c;
    int extra = c >= 0xF0 && c < 0xF8 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : -1;
    if (extra < 0) return 0xFFFD;
    uint32_t cp = c & (0x3F >> extra);
    for (int k = 0; k < extra; ++k) {
        if (i >= s.size() || (uint8_t(s[i]) & 0xC0) != 0x80) return 0xFFFD;
        cp = (cp << 6) | (uint8_t(s[i++]) & 0x3F);
    }
    static const uint32_t kMin[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kMin[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0xFFFD;
    return cp;
}

uint32_t foldCodePoint(uint32_t c) {
    if (c < 0x80) return (c >= 'A' && c <= 'Z') ? c + 32 : c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    if (c >= 0x100 && c <= 0x137) return c | 1;                       // pairs: even upper, odd lower
    if (c >= 0x139 && c <= 0x148) return (c & 1) ? c + 1 : c;        // odd upper, even lower
    if (c >= 0x14A && c <= 0x177) return c | 1;
    if (c == 0x178) return 0xFF;
    if (c >= 0x179 && c <= 0x17E) return (c & 1) ? c + 1 : c;
    if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 32;      // Greek
    if (c >= 0x410 && c <= 0x42F) return c + 32;                     // Cyrillic
    if (c >= 0x400 && c <= 0x40F) return c + 80;
    return c;
}

}  // namespace

std::string utf16leToUtf8(const uint8_t* p, size_t n) {
    std::string out;
    out.reserve(n / 2);
    uint32_t pending = 0;
    appendUtf16le(out, p, n & ~size_t(1), pending);
    if (pending) appendUtf8(out, 0xFFFD);
    return out;
}

std::u16string utf8ToUtf16(std::string_view s) {
    std::u16string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        uint32_t cp = nextCodePoint(s, i);
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(char16_t(0xD800 + (cp >> 10)));
            out.push_back(char16_t(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(char16_t(cp));
        }
    }
    return out;
}

size_t utf16Length(std::string_view s) {
    size_t n = 0;
    for (size_t i = 0; i < s.size();) n += nextCodePoint(s, i) >= 0x10000 ? 2 : 1;
    return n;
}

namespace {
// Plain ASCII without NUL: one UTF-16 unit per byte, each narrow and with a non-zero low byte.
bool plainAscii(std::string_view s) {
    for (char c : s)
        if (uint8_t(c) - 1u >= 0x7Fu) return false;
    return true;
}
}  // namespace

std::string utf16ToUtf8(std::u16string_view s) {
    std::string bytes;
    bytes.reserve(s.size() * 2);
    for (char16_t u : s) {
        bytes.push_back(char(u & 0xFF));
        bytes.push_back(char(u >> 8));
    }
    return utf16leToUtf8(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

void decodeTextGeneral(const uint8_t* p, size_t n, std::string& out) {
    // Written through a raw pointer into room for the worst case (a byte becomes at most two
    // UTF-8 bytes, a UTF-16 unit at most three), then cut to size: no per-character growth checks.
    bool packed = n >= 2 && p[0] == 0xFF && p[1] == 0xFE;
    out.resize(packed ? 2 * n : 3 * (n / 2) + 4);
    char* base = out.data();
    char* w = base;
    uint32_t pending = 0;
    auto put = [&](uint32_t cp) {
        if (cp < 0x80) {
            *w++ = char(cp);
        } else if (cp < 0x800) {
            *w++ = char(0xC0 | (cp >> 6));
            *w++ = char(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            *w++ = char(0xE0 | (cp >> 12));
            *w++ = char(0x80 | ((cp >> 6) & 0x3F));
            *w++ = char(0x80 | (cp & 0x3F));
        } else {
            *w++ = char(0xF0 | (cp >> 18));
            *w++ = char(0x80 | ((cp >> 12) & 0x3F));
            *w++ = char(0x80 | ((cp >> 6) & 0x3F));
            *w++ = char(0x80 | (cp & 0x3F));
        }
    };
    auto units = [&](const uint8_t* q, size_t len) {  // UTF-16LE, len even
        for (size_t i = 0; i + 1 < len; i += 2) {
            uint32_t u = uint32_t(q[i]) | (uint32_t(q[i + 1]) << 8);
            if (pending) {
                if (u >= 0xDC00 && u <= 0xDFFF) {
                    put(0x10000 + ((pending - 0xD800) << 10) + (u - 0xDC00));
                    pending = 0;
                    continue;
                }
                put(0xFFFD);
                pending = 0;
            }
            if (u < 0x80) *w++ = char(u);
            else if (u >= 0xD800 && u <= 0xDBFF) pending = u;
            else if (u >= 0xDC00 && u <= 0xDFFF) put(0xFFFD);
            else put(u);
        }
    };
    if (packed) {
        bool oneByte = true;
        size_t i = 2;
        while (i < n) {
            size_t j = i;
            while (j < n && p[j] != 0) ++j;
            if (oneByte) {
                if (pending && j > i) {
                    put(0xFFFD);
                    pending = 0;
                }
                for (size_t k = i; k < j; ++k) {
                    if (p[k] < 0x80) *w++ = char(p[k]);
                    else put(p[k]);
                }
            } else {
                units(p + i, (j - i) & ~size_t(1));
            }
            oneByte = !oneByte;
            i = j + 1;
        }
    } else {
        units(p, n & ~size_t(1));
    }
    if (pending) put(0xFFFD);
    out.resize(size_t(w - base));
}

std::string decodeText(const uint8_t* p, size_t n) {
    std::string out;
    decodeTextInto(p, n, out);
    return out;
}

Bytes encodeText(std::string_view utf8, bool compress) {
    if (plainAscii(utf8)) {
        // What the general path below gives for such a text: packed from three characters on.
        if (compress && utf8.size() > 2) {
            Bytes packed{0xFF, 0xFE};
            packed.insert(packed.end(), utf8.begin(), utf8.end());
            return packed;
        }
        Bytes plain(utf8.size() * 2, 0);
        for (size_t i = 0; i < utf8.size(); ++i) plain[2 * i] = uint8_t(utf8[i]);
        return plain;
    }
    std::u16string u = utf8ToUtf16(utf8);
    Bytes plain;
    plain.reserve(u.size() * 2);
    for (char16_t c : u) {
        plain.push_back(uint8_t(c & 0xFF));
        plain.push_back(uint8_t(c >> 8));
    }
    if (!compress || u.empty()) return plain;
    // A character with a zero low byte cannot appear in a two-byte stretch (0 would toggle), and
    // U+0000 cannot appear at all: such texts stay plain.
    for (char16_t c : u)
        if ((c & 0xFF) == 0) return plain;
    // Each character's mode is forced: a narrow one has a zero high byte (it would toggle in
    // two-byte mode), a wide one needs both bytes.
    Bytes packed{0xFF, 0xFE};
    bool oneByte = true;
    for (char16_t c : u) {
        bool narrow = c < 0x100;
        if (narrow != oneByte) {
            packed.push_back(0);
            oneByte = narrow;
        }
        packed.push_back(uint8_t(c & 0xFF));
        if (!narrow) packed.push_back(uint8_t(c >> 8));
        if (packed.size() >= plain.size()) return plain;
    }
    return packed.size() < plain.size() ? packed : plain;
}

std::string foldCase(std::string_view s) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        uint8_t c = uint8_t(s[i]);
        if (c < 0x80) {
            out.push_back(char(c >= 'A' && c <= 'Z' ? c + 32 : c));
            ++i;
            continue;
        }
        appendUtf8(out, foldCodePoint(nextCodePoint(s, i)));
    }
    return out;
}

bool equalsFolded(std::string_view a, std::string_view b) {
    if (a.size() == b.size()) {
        bool ascii = true, same = true;
        for (size_t i = 0; i < a.size(); ++i) {
            uint8_t x = uint8_t(a[i]), y = uint8_t(b[i]);
            if ((x | y) & 0x80) { ascii = false; break; }
            if (x != y && (x | 0x20) != (y | 0x20)) same = false;
            else if (x != y && !((x | 0x20) >= 'a' && (x | 0x20) <= 'z')) same = false;
        }
        if (ascii) return same;
    }
    return foldCase(a) == foldCase(b);
}

}  // namespace jet
