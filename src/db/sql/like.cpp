// LIKE patterns: compiled once, matched by wildcard matching with one backtrack point per '*'.
#include "db/sql/like.h"

#include "db/sql/ast.h"
#include "db/sql/text.h"

namespace db::sql {

LikePattern::LikePattern(std::string_view pattern) {
    std::u32string p = decodeUtf8(pattern);
    for (size_t i = 0; i < p.size(); ++i) {
        char32_t c = p[i];
        Item it{Literal};
        switch (c) {
        case '*':
            if (!items_.empty() && items_.back().kind == AnyRun) continue;  // "**" is "*"
            it.kind = AnyRun;
            break;
        case '?':
            it.kind = AnyOne;
            break;
        case '#':
            it.kind = Digit;
            break;
        case '[': {
            size_t close = p.find(']', i + 1);
            if (close == std::u32string::npos) fail(err::SyntaxError, "Invalid pattern string");
            std::u32string body = p.substr(i + 1, close - i - 1);
            i = close;
            if (body.size() > 1 && body[0] == '!') {
                it.negated = true;
                body.erase(0, 1);
            }
            if (body.empty()) continue;  // "[]" matches the empty string
            for (size_t j = 0; j < body.size(); ++j) {
                char32_t lo = lowerChar(body[j]), hi = lo;
                if (j + 2 < body.size() && body[j + 1] == '-') {
                    hi = lowerChar(body[j + 2]);
                    j += 2;
                    if (hi < lo) fail(err::SyntaxError, "Invalid pattern string");
                }
                it.ranges.push_back(lo);
                it.ranges.push_back(hi);
            }
            it.kind = Set;
            break;
        }
        default:
            it.ch = lowerChar(c);
        }
        items_.push_back(std::move(it));
    }
}

bool LikePattern::one(const Item& it, char32_t c) const {
    switch (it.kind) {
    case Literal:
        return lowerChar(c) == it.ch;
    case AnyOne:
        return true;
    case Digit:
        return c >= '0' && c <= '9';
    case Set: {
        char32_t lc = lowerChar(c);
        bool in = false;
        for (size_t i = 0; i + 1 < it.ranges.size(); i += 2)
            if (lc >= it.ranges[i] && lc <= it.ranges[i + 1]) {
                in = true;
                break;
            }
        return in != it.negated;
    }
    case AnyRun:
        break;
    }
    return false;
}

bool LikePattern::matches(std::string_view text) const {
    std::u32string s = decodeUtf8(text);
    size_t n = s.size(), m = items_.size();
    size_t si = 0, pi = 0;
    size_t starP = SIZE_MAX, starS = 0;
    while (si < n) {
        if (pi < m && items_[pi].kind == AnyRun) {
            starP = pi++;
            starS = si;
        } else if (pi < m && one(items_[pi], s[si])) {
            ++pi;
            ++si;
        } else if (starP != SIZE_MAX) {
            pi = starP + 1;
            si = ++starS;
        } else {
            return false;
        }
    }
    while (pi < m && items_[pi].kind == AnyRun) ++pi;
    return pi == m;
}

}  // namespace db::sql
