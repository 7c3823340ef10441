// Texts as the SQL layer needs them: UTF-8 code points, case folding of the Latin letters
// (Hungarian accented ones included), and the sort key of a text in the General sort order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace db::sql {

// Code points of UTF-8 text; a malformed byte stands for itself (U+FFFD would merge texts).
std::u32string decodeUtf8(std::string_view s);
std::string encodeUtf8(std::u32string_view s);
void appendUtf8(std::string& out, char32_t cp);

// Simple case mappings for Latin (ASCII, Latin-1, Latin Extended-A), Greek and Cyrillic.
char32_t lowerChar(char32_t c);
char32_t upperChar(char32_t c);
std::string lowerText(std::string_view s);
std::string upperText(std::string_view s);

// How a text sorts: the General sort order key when every character has a code (the bytes an
// index stores, compared with memcmp: case ignored, accents after their base letter, trailing
// blanks dropped), else a fallback that sorts after every General key: the case-folded code points,
// then the text's own bytes, so that the order is total and deterministic.
struct TextKey {
    bool general = true;
    std::string bytes;
    bool operator==(const TextKey&) const = default;
};
TextKey textKey(std::string_view utf8);
int compareKeys(const TextKey& a, const TextKey& b);

// Equality of texts in the sort order (fast for plain ASCII texts).
bool textEquals(std::string_view a, std::string_view b);

}  // namespace db::sql
