// VB's string functions over UTF-8 texts, counting characters (code points) as VB counted its
// UTF-16 characters for every letter the program meets.
#pragma once

#include <string>
#include <string_view>

namespace vb {

size_t Len(std::string_view s);
std::string Left(std::string_view s, long n);   // n < 0 raises 5
std::string Right(std::string_view s, long n);  // n < 0 raises 5
// Mid from `start` (counting from 1) to the end, or `length` characters; start < 1 or length < 0
// raise 5.
std::string Mid(std::string_view s, long start);
std::string Mid(std::string_view s, long start, long length);
// Case of the Latin letters, accented ones (á, é, ő, ű ...) too.
std::string UCase(std::string_view s);
std::string LCase(std::string_view s);
std::string Trim(std::string_view s);   // spaces only, as VB
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);

// UTF-8 <-> code points; a malformed byte is read as its Latin-1 letter, so nothing is lost.
std::u32string toCodePoints(std::string_view s);
std::string toUtf8(std::u32string_view s);
char32_t upper(char32_t c);
char32_t lower(char32_t c);

}  // namespace vb
