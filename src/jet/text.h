// Texts: the engine's strings are UTF-8; Jet 4 stores UTF-16LE, optionally "compressed".
//
//   compressed:  | FF FE | one byte per character (high byte 0) ... | 00 | two bytes per
//                character (UTF-16LE) ... | 00 | one byte per character ... |
//   A 00 byte toggles between the two modes, starting in the one-byte mode, so a compressed
//   text never holds a character whose low byte is 0 in its two-byte stretches.
#pragma once

#include <cstddef>
#include <cstdint>
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
// Appends instead of returning (no allocation when `out` has room).
void decodeTextInto(const uint8_t* p, size_t n, std::string& out);

// The stored bytes of a text. With `compress`, the compressed form when it is shorter (as
// Access writes a column marked for compression); else plain UTF-16LE.
Bytes encodeText(std::string_view utf8, bool compress);

// Case folding for names (table, column, index names compare without regard to case): Latin
// letters of Unicode's first blocks, accented ones included.
std::string foldCase(std::string_view utf8);
bool equalsFolded(std::string_view a, std::string_view b);

}  // namespace jet
