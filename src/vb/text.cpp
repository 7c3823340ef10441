#include "vb/text.h"

#include <algorithm>

#include "vb/error.h"

namespace vb {

std::u32string toCodePoints(std::string_view s) {
    std::u32string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size();) {
        auto b = static_cast<unsigned char>(s[i]);
        int extra = b >= 0xC2 && b < 0xE0 ? 1 : b >= 0xE0 && b < 0xF0 ? 2 : b >= 0xF0 && b < 0xF5 ? 3 : 0;
        char32_t c = extra == 1 ? (b & 0x1F) : extra == 2 ? (b & 0x0F) : (b & 0x07);
        bool ok = extra > 0;
        for (int k = 1; ok && k <= extra; ++k) {
            if (i + k >= s.size() || (static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) {
                ok = false;
            } else {
                c = (c << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
            }
        }
        if (ok) {
            out.push_back(c);
            i += 1 + extra;
        } else {
            out.push_back(b);  // ASCII, or a stray byte kept as Latin-1
            ++i;
        }
    }
    return out;
}

std::string toUtf8(std::u32string_view s) {
    std::string out;
    out.reserve(s.size());
    for (char32_t c : s) {
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (c >> 18)));
            out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

// Latin-1 and Latin Extended-A, where the Hungarian letters live.
char32_t upper(char32_t c) {
    if (c >= 'a' && c <= 'z') return c - 32;
    if ((c >= 0xE0 && c <= 0xFE && c != 0xF7)) return c - 32;
    if (c == 0xFF) return 0x178;
    if (c >= 0x100 && c <= 0x17F) {
        bool oddUpper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        if (c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F || c == 0x178) return c;
        if (oddUpper) return c % 2 == 0 ? c - 1 : c;
        return c % 2 == 1 ? c - 1 : c;
    }
    return c;
}

char32_t lower(char32_t c) {
    if (c >= 'A' && c <= 'Z') return c + 32;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    if (c == 0x178) return 0xFF;
    if (c >= 0x100 && c <= 0x17F) {
        bool oddUpper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
        if (c == 0x130 || c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) return c == 0x130 ? U'i' : c;
        if (oddUpper) return c % 2 == 1 ? c + 1 : c;
        return c % 2 == 0 ? c + 1 : c;
    }
    return c;
}

size_t Len(std::string_view s) {
    size_t n = 0;
    for (char c : s) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}

static void checkCount(long n) {
    if (n < 0) throw VbError(InvalidProcedureCall);
}

std::string Left(std::string_view s, long n) {
    checkCount(n);
    auto cp = toCodePoints(s);
    return toUtf8(std::u32string_view(cp).substr(0, static_cast<size_t>(n)));
}

std::string Right(std::string_view s, long n) {
    checkCount(n);
    auto cp = toCodePoints(s);
    size_t k = std::min(cp.size(), static_cast<size_t>(n));
    return toUtf8(std::u32string_view(cp).substr(cp.size() - k));
}

static std::string mid(std::string_view s, long start, size_t count) {
    if (start < 1) throw VbError(InvalidProcedureCall);
    auto cp = toCodePoints(s);
    if (static_cast<size_t>(start) > cp.size()) return "";
    return toUtf8(std::u32string_view(cp).substr(static_cast<size_t>(start - 1), count));
}

std::string Mid(std::string_view s, long start) { return mid(s, start, std::u32string::npos); }

std::string Mid(std::string_view s, long start, long length) {
    checkCount(length);
    return mid(s, start, static_cast<size_t>(length));
}

std::string UCase(std::string_view s) {
    auto cp = toCodePoints(s);
    for (auto& c : cp) c = upper(c);
    return toUtf8(cp);
}

std::string LCase(std::string_view s) {
    auto cp = toCodePoints(s);
    for (auto& c : cp) c = lower(c);
    return toUtf8(cp);
}

std::string LTrim(std::string_view s) {
    size_t i = s.find_first_not_of(' ');
    return i == std::string_view::npos ? std::string() : std::string(s.substr(i));
}

std::string RTrim(std::string_view s) {
    size_t i = s.find_last_not_of(' ');
    return i == std::string_view::npos ? std::string() : std::string(s.substr(0, i + 1));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

}  // namespace vb
