// LIKE patterns: compiled once, matched by wildcard matching with one backtrack point per '*'.
#include "db/sql/like.h"

#include "db/sql/ast.h"
#include "db/sql/text.h"

namespace db::sql {

LikePattern::LikePattern(std::string_view pattern) {
    std::u32string p = decodeUtf8(pattern);
    for (size_t i = 0; i < p.size(); ++i) {
        char32_t c = p[i];
        Item it;
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
    for (const Item& it : items_) {
        if (it.kind != Literal || it.ch >= 0x80) break;
        asciiHead_.push_back(static_cast<char>(it.ch));
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

namespace {

// The code point at byte i of UTF-8 text, i moved past it; a malformed byte stands for itself
// (as decodeUtf8 reads it).
inline char32_t nextChar(std::string_view s, size_t& i) {
    auto b = static_cast<unsigned char>(s[i]);
    if (b < 0x80) {
        ++i;
        return b;
    }
    size_t n = s.size();
    int len = (b >> 5) == 6 ? 2 : (b >> 4) == 14 ? 3 : (b >> 3) == 30 ? 4 : 0;
    if (len == 0 || i + len > n) {
        ++i;
        return b;
    }
    char32_t cp = len == 2 ? (b & 0x1F) : len == 3 ? (b & 0x0F) : (b & 0x07);
    for (int k = 1; k < len; ++k) {
        auto c = static_cast<unsigned char>(s[i + k]);
        if ((c & 0xC0) != 0x80) {
            ++i;
            return b;
        }
        cp = (cp << 6) | (c & 0x3F);
    }
    i += len;
    return cp;
}

}  // namespace

// Walks the UTF-8 bytes as they are (no decoded copy: Find runs this once a row).
bool LikePattern::matches(std::string_view text) const {
    size_t n = text.size(), m = items_.size();
    size_t si = 0, pi = 0;
    // The ASCII head byte by byte: a text byte from 0x80 up is (part of) a character whose lower
    // case is never ASCII, so it cannot match; nothing before the head can be retried.
    for (; pi < asciiHead_.size(); ++pi, ++si) {
        if (si >= n) return false;
        auto b = static_cast<unsigned char>(text[si]);
        if (b >= 'A' && b <= 'Z') b += 32;
        if (b != static_cast<unsigned char>(asciiHead_[pi])) return false;
    }
    size_t starP = SIZE_MAX, starS = 0;
    while (si < n) {
        if (pi < m && items_[pi].kind == AnyRun) {
            starP = pi++;
            starS = si;
            continue;
        }
        size_t next = si;
        char32_t c = nextChar(text, next);
        if (pi < m && one(items_[pi], c)) {
            ++pi;
            si = next;
        } else if (starP != SIZE_MAX) {
            pi = starP + 1;
            nextChar(text, starS);
            si = starS;
        } else {
            return false;
        }
    }
    while (pi < m && items_[pi].kind == AnyRun) ++pi;
    return pi == m;
}

}  // namespace db::sql
