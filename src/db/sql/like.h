// A Jet LIKE pattern: * any run of characters, ? one character, # one digit, [abc], [a-z],
// [!abc] one character of (or not of) a list. Letters match without regard to case; accents count.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace db::sql {

class LikePattern {
public:
    // 3075 for an unclosed '[' or a reversed range.
    explicit LikePattern(std::string_view pattern);
    bool matches(std::string_view text) const;

private:
    enum Kind : uint8_t { Literal, AnyOne, Digit, Set, AnyRun };
    struct Item {
        Kind kind = Literal;
        char32_t ch = 0;                 // Literal, lower case
        std::u32string ranges;           // Set: pairs lo, hi (lower case)
        bool negated = false;            // Set
    };
    bool one(const Item& it, char32_t c) const;
    std::vector<Item> items_;
    std::string asciiHead_;  // the pattern's leading literal characters while they are ASCII, lower case
};

}  // namespace db::sql
