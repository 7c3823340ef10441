// Texts: the engine's strings are UTF-8; Jet 4 stores UTF-16LE, optionally "compressed".
//
//   compressed:  | FF FE | one byte per character (high byte 0) ... | 00 | two bytes per
//                character (UTF-16LE) ... | 00 | one byte per character ... |
//   A 00 byte toggles between the two modes, starting in the one-byte mode, so a compressed
//   text never holds a character whose low byte is 0 in its two-byte stretches.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "value.h"

namespace jet {

// UTF-16LE bytes (an odd last byte is dropped) to UTF-8; unpaired surrogates become U+FFFD.
std::string utf16leToUtf8(const uint8_t* p, size_t n);
// UTF-8 to UTF-16 code units; invalid sequences become U+FFFD.
std::u16string utf8ToUtf16(std::string_view utf8);
// utf8ToUtf16(utf8).size(), without building the text.
size_t utf16Length(std::string_view utf8);
std::string utf16ToUtf8(std::u16string_view s);

// A stored text value (compressed or not) to UTF-8.
std::string decodeText(const uint8_t* p, size_t n);
// Into `out`, replacing what it held (no allocation when `out` has room).
void decodeTextInto(const uint8_t* p, size_t n, std::string& out);
// Any text; decodeTextInto's way for all but packed ASCII.
void decodeTextGeneral(const uint8_t* p, size_t n, std::string& out);

// Whether none of the n bytes is 0 (a mode toggle) or above 0x7F; eight at a time.
inline bool packedAscii(const uint8_t* p, size_t n) {
    constexpr uint64_t kOnes = 0x0101010101010101ull, kHigh = 0x8080808080808080ull;
    auto bad = [](uint64_t w) { return ((w | ((w - kOnes) & ~w)) & kHigh) != 0; };
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        uint64_t w;
        std::memcpy(&w, p + i, 8);
        if (bad(w)) return false;
    }
    if (i == n) return true;
    if (n >= 8) {  // the last eight bytes, overlapping ones already checked
        uint64_t w;
        std::memcpy(&w, p + n - 8, 8);
        return !bad(w);
    }
    for (; i < n; ++i)
        if (p[i] - 1u >= 0x7Fu) return false;
    return true;
}

// Inline: scans decode most texts here. The usual case, a packed text of ASCII only, is its bytes.
inline void decodeTextInto(const uint8_t* p, size_t n, std::string& out) {
    if (n >= 2 && p[0] == 0xFF && p[1] == 0xFE && packedAscii(p + 2, n - 2))
        out.assign(reinterpret_cast<const char*>(p + 2), n - 2);
    else
        decodeTextGeneral(p, n, out);
}

// The stored bytes of a text. With `compress`, the compressed form when it is shorter (as
// Access writes a column marked for compression); else plain UTF-16LE.
Bytes encodeText(std::string_view utf8, bool compress);

// Case folding for names (table, column, index names compare without regard to case): Latin
// letters of Unicode's first blocks, accented ones included.
std::string foldCase(std::string_view utf8);
bool equalsFolded(std::string_view a, std::string_view b);

}  // namespace jet
