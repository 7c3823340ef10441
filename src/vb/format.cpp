#include "vb/format.h"

#include <cmath>
#include <memory>
#include <unordered_map>
#include <vector>

#include "vb/conv.h"
#include "vb/detail.h"
#include "vb/text.h"

namespace vb {

namespace {

const char* const Months[] = {"január", "február", "március", "április", "május", "június",
                              "július", "augusztus", "szeptember", "október", "november", "december"};
const char* const MonthsShort[] = {"jan.", "febr.", "márc.", "ápr.", "máj.", "jún.",
                                   "júl.", "aug.", "szept.", "okt.", "nov.", "dec."};
const char* const Days[] = {"vasárnap", "hétfő", "kedd", "szerda", "csütörtök", "péntek", "szombat"};
const char* const DaysShort[] = {"V", "H", "K", "Sze", "Cs", "P", "Szo"};

char lowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

std::string lowerAscii(std::string_view s) {
    std::string out(s);
    for (auto& c : out) c = lowerAscii(c);
    return out;
}

void pad(std::string& out, int n, int width) {
    std::string s = std::to_string(n);
    if (static_cast<int>(s.size()) < width) out.append(width - s.size(), '0');
    out += s;
}

// ---- mask scanning ----------------------------------------------------------------------------

// The mask split at ';' outside quotes and escapes.
std::vector<std::string> splitSections(std::string_view mask) {
    std::vector<std::string> out(1);
    bool quoted = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        char c = mask[i];
        if (quoted) {
            out.back() += c;
            if (c == '"') quoted = false;
        } else if (c == '"') {
            quoted = true;
            out.back() += c;
        } else if (c == '\\' && i + 1 < mask.size()) {
            out.back() += c;
            out.back() += mask[++i];
        } else if (c == ';') {
            out.emplace_back();
        } else {
            out.back() += c;
        }
    }
    return out;
}

// The characters of the mask outside quotes and escapes.
std::string bare(std::string_view mask) {
    std::string out;
    bool quoted = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        char c = mask[i];
        if (quoted) {
            if (c == '"') quoted = false;
        } else if (c == '"') {
            quoted = true;
        } else if (c == '\\') {
            ++i;
        } else {
            out += c;
        }
    }
    return out;
}

bool hasDateToken(const std::string& bareMask) {
    std::string b = lowerAscii(bareMask);
    if (b.find_first_of("dmyhnswqc") != std::string::npos) return true;
    return b.find("ttttt") != std::string::npos || b.find("am/pm") != std::string::npos ||
           b.find("a/p") != std::string::npos || b.find("ampm") != std::string::npos;
}

// ---- numbers ----------------------------------------------------------------------------------

enum class T { Zero, Hash, Point, Comma, Percent, Exp, Lit };

struct Tok {
    T type;
    std::string text;
    bool digit() const { return type == T::Zero || type == T::Hash; }
};

std::vector<Tok> numberTokens(std::string_view section) {
    std::vector<Tok> toks;
    bool point = false;
    for (size_t i = 0; i < section.size(); ++i) {
        char c = section[i];
        switch (c) {
        case '"': {
            size_t close = section.find('"', i + 1);
            size_t end = close == std::string_view::npos ? section.size() : close;
            toks.push_back({T::Lit, std::string(section.substr(i + 1, end - i - 1))});
            i = end;
            break;
        }
        case '\\':
            if (i + 1 < section.size()) toks.push_back({T::Lit, std::string(1, section[++i])});
            break;
        case '0': toks.push_back({T::Zero, "0"}); break;
        case '#': toks.push_back({T::Hash, "#"}); break;
        case '.':
            toks.push_back({point ? T::Lit : T::Point, "."});
            point = true;
            break;
        case ',': toks.push_back({T::Comma, ","}); break;
        case '%': toks.push_back({T::Percent, "%"}); break;
        case 'E':
        case 'e':
            if (i + 1 < section.size() && (section[i + 1] == '+' || section[i + 1] == '-')) {
                toks.push_back({T::Exp, std::string(section.substr(i, 2))});
                ++i;
            } else {
                toks.push_back({T::Lit, std::string(1, c)});
            }
            break;
        default: toks.push_back({T::Lit, std::string(1, c)});
        }
    }
    return toks;
}

void appendDigit(std::string& out, const std::string& digits, size_t j, bool grouping) {
    out += digits[j];
    size_t rest = digits.size() - 1 - j;
    if (grouping && rest > 0 && rest % 3 == 0) out += ' ';
}

std::string exponentText(int exponent, const std::string& marker, const std::vector<Tok>& expo) {
    std::string out(1, marker[0]);
    if (exponent < 0) {
        out += '-';
    } else if (marker[1] == '+') {
        out += '+';
    }
    int zeros = 0;
    for (auto& t : expo) zeros += t.type == T::Zero;
    std::string d = std::to_string(std::abs(exponent));
    if (d == "0" && zeros == 0) d.clear();
    for (int i = static_cast<int>(d.size()); i < zeros; ++i) out += '0';
    out += d;
    for (auto& t : expo) {
        if (t.type == T::Lit) out += t.text;
    }
    return out;
}

// One section of a numeric mask, analysed once.
struct NumberSection {
    std::vector<Tok> toks, intPart, fracPart, expo;
    int expAt = -1, pointAt = -1;
    int intPlaces = 0, fracPlaces = 0, shift = 0, minLen = 0;
    bool grouping = false;

    explicit NumberSection(std::string_view section) {
        toks = numberTokens(section);
        for (size_t i = 0; i < toks.size() && expAt < 0; ++i) {
            if (toks[i].type == T::Exp) expAt = static_cast<int>(i);
        }
        std::vector<Tok> mantissa(toks.begin(), expAt < 0 ? toks.end() : toks.begin() + expAt);
        if (expAt >= 0) expo.assign(toks.begin() + expAt + 1, toks.end());
        for (size_t i = 0; i < mantissa.size() && pointAt < 0; ++i) {
            if (mantissa[i].type == T::Point) pointAt = static_cast<int>(i);
        }
        intPart.assign(mantissa.begin(), pointAt < 0 ? mantissa.end() : mantissa.begin() + pointAt);
        if (pointAt >= 0) fracPart.assign(mantissa.begin() + pointAt + 1, mantissa.end());

        int firstIntDigit = -1, lastIntDigit = -1;
        for (int i = 0; i < static_cast<int>(intPart.size()); ++i) {
            if (intPart[i].digit()) {
                ++intPlaces;
                lastIntDigit = i;
                if (firstIntDigit < 0) firstIntDigit = i;
            }
        }
        // a comma between digit placeholders groups; commas right of the last one scale by 1000
        int scaling = 0;
        for (int i = 0; i < static_cast<int>(intPart.size()); ++i) {
            if (intPart[i].type == T::Comma && firstIntDigit >= 0 && i > firstIntDigit) {
                if (i < lastIntDigit) {
                    grouping = true;
                } else {
                    ++scaling;
                }
            }
        }
        for (auto& t : fracPart) fracPlaces += t.digit();
        int percents = 0;
        for (auto& t : toks) percents += t.type == T::Percent;
        shift = 2 * percents - 3 * scaling;
        int zeroFrom = -1, q = 0;
        for (auto& t : intPart) {
            if (t.digit()) {
                if (t.type == T::Zero && zeroFrom < 0) zeroFrom = q;
                ++q;
            }
        }
        minLen = zeroFrom < 0 ? 0 : intPlaces - zeroFrom;
    }

    // Formats a non-negative value; `minus` puts "-" in front.
    std::string format(Decimal a, bool minus) const {
        a.negative = false;
        a.shift(shift);
        std::string expText;
        if (expAt >= 0) {
            int exponent = 0;
            if (!a.isZero()) {
                int move = a.magnitude() - (intPlaces - 1);
                Decimal m = a;
                m.shift(-move).roundToScale(fracPlaces, Decimal::Rounding::HalfUp);
                // the rounding may carry into one more integer digit: 9,999 -> 10,00
                if (!m.isZero() && m.magnitude() >= std::max(intPlaces, 0)) {
                    ++move;
                    m = a;
                    m.shift(-move).roundToScale(fracPlaces, Decimal::Rounding::HalfUp);
                }
                exponent = move;
                a = m;
            }
            expText = exponentText(exponent, toks[expAt].text, expo);
        }
        a.roundToScale(fracPlaces, Decimal::Rounding::HalfUp);
        std::string digits = a.integerDigits();
        std::string fracDigits = a.fractionDigits(fracPlaces);

        std::string out;
        if (minus) out += '-';
        // integer part: placeholders filled from the right, the surplus digits at the first one
        if (static_cast<int>(digits.size()) < minLen) digits.insert(0, minLen - digits.size(), '0');
        int len = static_cast<int>(digits.size());
        int next = 0, q = 0;
        for (auto& t : intPart) {
            if (t.digit()) {
                int fromRight = intPlaces - 1 - q;
                int upTo = len - fromRight;
                while (next < upTo) appendDigit(out, digits, next++, grouping);
                ++q;
            } else if (t.type == T::Lit) {
                out += t.text;
            } else if (t.type == T::Percent) {
                out += '%';
            }
        }
        if (intPlaces == 0) {
            while (next < len) appendDigit(out, digits, next++, grouping);
        }
        if (pointAt >= 0) {
            out += ',';
            int lastNeeded = -1, k = 0;
            for (auto& t : fracPart) {
                if (t.digit()) {
                    if (t.type == T::Zero || fracDigits[k] != '0') lastNeeded = k;
                    ++k;
                }
            }
            k = 0;
            for (auto& t : fracPart) {
                if (t.digit()) {
                    if (k <= lastNeeded) out += fracDigits[k];
                    ++k;
                } else if (t.type == T::Lit) {
                    out += t.text;
                } else if (t.type == T::Percent) {
                    out += '%';
                }
            }
        }
        out += expText;
        return out;
    }
};

// A mask analysed once.
struct Mask {
    std::vector<std::string> sections;
    bool digits = false, dateTokens = false, text = false;
    std::vector<NumberSection> numbers;
};

const Mask& analyse(std::string_view text) {
    // masks come from code and a few from data: a small cache keeps the per-row cost low
    static thread_local std::unordered_map<std::string, std::unique_ptr<Mask>> cache;
    auto it = cache.find(std::string(text));
    if (it != cache.end()) return *it->second;
    auto m = std::make_unique<Mask>();
    m->sections = splitSections(text);
    for (auto& s : m->sections) m->numbers.emplace_back(s);
    std::string b = bare(text);
    m->digits = b.find_first_of("0#") != std::string::npos;
    m->text = b.find_first_of("@&") != std::string::npos;
    m->dateTokens = hasDateToken(b);
    if (cache.size() > 500) cache.clear();
    return *cache.emplace(std::string(text), std::move(m)).first->second;
}

// The exact decimal value of a number: a Double to 15 significant digits, a Single to 7.
Decimal exact(const Variant& v) {
    switch (v.index()) {
    case 6: {
        float f = std::get<float>(v);
        if (!std::isfinite(f)) detail::overflow();
        return Decimal::rounded(f, 7);
    }
    case 8: return Decimal::fromScaled(std::get<Currency>(v).scaled, 4);
    case 2: case 3: case 4: case 5: return Decimal::fromInt(CLng(v));
    default: {
        double d = CDbl(v);
        if (!std::isfinite(d)) detail::overflow();
        return Decimal::shortest(d).roundToPrecision(15, Decimal::Rounding::HalfEven);
    }
    }
}

// ---- dates ------------------------------------------------------------------------------------

std::string formatDate(Date value, std::string_view section) {
    DateParts d = detail::secondParts(value);
    d.millisecond = 0;
    Date rounded = toDate(d);
    Date midnight = toDate(DateParts{d.year, d.month, d.day});
    int weekday0 = Weekday(midnight) - 1;  // 0 = Sunday
    int dayOfYear = static_cast<int>(midnight.serial - toDate(DateParts{d.year, 1, 1}).serial) + 1;

    bool twelve = false;
    std::string lower = lowerAscii(section);
    if (lower.find('a') != std::string::npos) {
        twelve = lower.find("am/pm") != std::string::npos || lower.find("a/p") != std::string::npos ||
                 lower.find("ampm") != std::string::npos;
    }
    std::string out;
    bool afterHour = false;
    size_t n = section.size();
    for (size_t i = 0; i < n; ++i) {
        char c = section[i];
        char lc = lowerAscii(c);
        size_t run = 1;
        while (i + run < n && lowerAscii(section[i + run]) == lc) ++run;
        switch (lc) {
        case '"': {
            size_t close = section.find('"', i + 1);
            size_t end = close == std::string_view::npos ? n : close;
            out += section.substr(i + 1, end - i - 1);
            i = end;
            continue;
        }
        case '\\':
            if (i + 1 < n) out += section[++i];
            continue;
        case 'y':
            if (run >= 3) {
                pad(out, d.year, 4);
            } else if (run == 2) {
                pad(out, d.year % 100, 2);
            } else {
                out += std::to_string(dayOfYear);
            }
            afterHour = false;
            break;
        case 'm':
            if (run <= 2 && afterHour) {
                pad(out, d.minute, static_cast<int>(run));
            } else if (run <= 2) {
                pad(out, d.month, static_cast<int>(run));
            } else if (run == 3) {
                out += MonthsShort[d.month - 1];
            } else {
                out += Months[d.month - 1];
            }
            afterHour = false;
            break;
        case 'd':
            switch (std::min<size_t>(run, 6)) {
            case 1: out += std::to_string(d.day); break;
            case 2: pad(out, d.day, 2); break;
            case 3: out += DaysShort[weekday0]; break;
            case 4: out += Days[weekday0]; break;
            case 5: out += dateText(rounded); break;
            default:
                out += std::to_string(d.year) + ". " + Months[d.month - 1] + ' ' + std::to_string(d.day) + '.';
            }
            afterHour = false;
            break;
        case 'w':
            if (run >= 2) {
                // VB's default: weeks start on Sunday, week 1 holds January 1
                int jan1 = Weekday(toDate(DateParts{d.year, 1, 1})) - 1;
                out += std::to_string((dayOfYear - 1 + jan1) / 7 + 1);
            } else {
                out += std::to_string(weekday0 + 1);
            }
            afterHour = false;
            break;
        case 'q':
            out += std::to_string((d.month - 1) / 3 + 1);
            afterHour = false;
            break;
        case 'h': {
            int h = d.hour;
            if (twelve) h = h % 12 == 0 ? 12 : h % 12;
            pad(out, h, static_cast<int>(std::min<size_t>(run, 2)));
            afterHour = true;
            break;
        }
        case 'n':
            pad(out, d.minute, static_cast<int>(std::min<size_t>(run, 2)));
            afterHour = false;
            break;
        case 's':
            pad(out, d.second, static_cast<int>(std::min<size_t>(run, 2)));
            afterHour = false;
            break;
        case 'c':
            out += dateTimeText(rounded);
            afterHour = false;
            break;
        case 't':
            if (run >= 5) {
                out += timeText(rounded);
                run = 5;
            } else {
                out += section.substr(i, run);
            }
            afterHour = false;
            break;
        case 'a': {
            std::string_view rest = section.substr(i);
            std::string restLower = lowerAscii(rest.substr(0, 5));
            bool pm = d.hour >= 12;
            if (restLower.starts_with("am/pm")) {
                out += pm ? rest.substr(3, 2) : rest.substr(0, 2);
                run = 5;
            } else if (restLower.starts_with("a/p")) {
                out += pm ? rest[2] : rest[0];
                run = 3;
            } else if (restLower.starts_with("ampm")) {
                out += pm ? "du." : "de.";
                run = 4;
            } else {
                out += c;
                run = 1;
            }
            break;
        }
        case '/':
            out += '.';
            run = 1;
            break;
        case ':':
            out += ':';
            run = 1;
            break;
        default:
            out += c;
            run = 1;
        }
        i += run - 1;
    }
    return out;
}

// ---- texts ------------------------------------------------------------------------------------

std::string formatText(const std::string& s, const std::vector<std::string>& sections) {
    const std::string& section = s.empty() && sections.size() >= 2 ? sections[1] : sections[0];
    bool leftToRight = false;
    int upperLower = 0;
    struct Part {
        bool literal;
        std::u32string text;  // the literal, or "@" / "&"
    };
    std::vector<Part> parts;
    std::u32string b = toCodePoints(section);
    for (size_t i = 0; i < b.size(); ++i) {
        char32_t c = b[i];
        switch (c) {
        case U'"': {
            size_t close = b.find(U'"', i + 1);
            size_t end = close == std::u32string::npos ? b.size() : close;
            parts.push_back({true, b.substr(i + 1, end - i - 1)});
            i = end;
            break;
        }
        case U'\\':
            if (i + 1 < b.size()) parts.push_back({true, std::u32string(1, b[++i])});
            break;
        case U'@':
        case U'&': parts.push_back({false, std::u32string(1, c)}); break;
        case U'!': leftToRight = true; break;
        case U'<': upperLower = -1; break;
        case U'>': upperLower = 1; break;
        default: parts.push_back({true, std::u32string(1, c)});
        }
    }
    std::u32string text = toCodePoints(s);
    for (auto& c : text) c = upperLower < 0 ? lower(c) : upperLower > 0 ? upper(c) : c;
    size_t places = 0;
    for (auto& p : parts) places += !p.literal;
    std::vector<std::optional<std::u32string>> fill(places);
    size_t len = text.size();
    if (leftToRight) {
        for (size_t k = 0; k < places; ++k) {
            if (k < len) fill[k] = text.substr(k, 1);
        }
        if (len > places && places > 0) *fill[places - 1] += text.substr(places);
    } else {
        for (size_t k = 0; k < places; ++k) {
            long j = static_cast<long>(len) - static_cast<long>(places) + static_cast<long>(k);
            if (j >= 0) fill[k] = text.substr(static_cast<size_t>(j), 1);
        }
        if (len > places && places > 0) fill[0] = text.substr(0, len - places + 1);
    }
    std::u32string out;
    size_t k = 0;
    for (auto& p : parts) {
        if (p.literal) {
            out += p.text;
        } else {
            auto& f = fill[k++];
            out += f ? *f : p.text == U"@" ? U" " : U"";
        }
    }
    return toUtf8(out);
}

// ---- named formats ----------------------------------------------------------------------------

std::optional<std::string> named(const Variant& v, std::string_view mask) {
    std::string name = lowerAscii(detail::strip(mask));
    static const char* const numberNames[] = {"general number", "currency", "fixed", "standard", "percent",
                                              "scientific", "yes/no", "true/false", "on/off"};
    static const char* const dateNames[] = {"general date", "long date", "medium date", "short date",
                                            "long time", "medium time", "short time"};
    auto among = [&](const auto& names) {
        for (const char* n : names) {
            if (name == n) return true;
        }
        return false;
    };
    if (among(numberNames)) {
        if (isNull(v)) return std::string();
        Variant n = v;
        if (auto* s = std::get_if<std::string>(&v)) {
            if (!IsNumeric(v)) return *s;
            n = CDbl(v);
        }
        if (auto* d = std::get_if<Date>(&n)) n = d->serial;
        if (name == "general number") return CStr(std::holds_alternative<bool>(n) ? Variant(CDbl(n)) : n);
        if (name == "currency") return Format(n, "#,##0.00 \"Ft\"");
        if (name == "fixed") return Format(n, "0.00");
        if (name == "standard") return Format(n, "#,##0.00");
        if (name == "percent") return Format(n, "0.00%");
        if (name == "scientific") return Format(n, "0.00E+00");
        bool zero = exact(n).isZero();
        if (name == "yes/no") return std::string(zero ? "No" : "Yes");
        if (name == "true/false") return std::string(zero ? "False" : "True");
        return std::string(zero ? "Off" : "On");
    }
    if (among(dateNames)) {
        if (isNull(v)) return std::string();
        Date d;
        if (auto* s = std::get_if<std::string>(&v)) {
            if (IsDate(v)) {
                d = CDate(v);
            } else if (IsNumeric(v)) {
                d = CDate(CDbl(v));
            } else {
                return *s;
            }
        } else {
            d = CDate(v);
        }
        if (name == "general date") return dateTimeText(d);
        if (name == "long date") return formatDate(d, "dddddd");
        if (name == "medium date") return formatDate(d, "dd-mmm-yy");
        if (name == "short date") return formatDate(d, "ddddd");
        if (name == "long time") return formatDate(d, "ttttt");
        if (name == "medium time") return formatDate(d, "hh:nn AMPM");
        return formatDate(d, "hh:nn");
    }
    return std::nullopt;
}

}  // namespace

std::string Format(const Variant& value, std::string_view mask) {
    // Empty formats as the empty text it converts to
    const Variant& v = isEmpty(value) ? Variant(std::string()) : value;
    if (mask.empty()) return isNull(v) ? std::string() : CStr(v);
    if (auto r = named(v, mask)) return *r;
    const Mask& m = analyse(mask);
    if (isNull(v)) return m.sections.size() >= 4 ? m.numbers[3].format(Decimal{}, false) : std::string();
    Variant x = v;
    if (auto* s = std::get_if<std::string>(&v)) {
        if (m.text && !m.digits) return formatText(*s, m.sections);
        if (m.dateTokens && !m.digits && IsDate(v)) {
            x = CDate(v);
        } else if (IsNumeric(v)) {
            x = CDbl(v);
        } else {
            return *s;
        }
    }
    bool isDate = std::holds_alternative<Date>(x);
    if (isDate ? (m.dateTokens || !m.digits) : (!m.digits && m.dateTokens)) {
        return formatDate(CDate(x), m.sections[0]);
    }
    Decimal n = exact(x);
    bool negative = n.negative && !n.isZero();
    if (negative && m.sections.size() >= 2 && !m.sections[1].empty()) return m.numbers[1].format(n, false);
    if (n.isZero() && m.sections.size() >= 3 && !m.sections[2].empty()) return m.numbers[2].format(Decimal{}, false);
    return m.numbers[0].format(n, negative);
}

}  // namespace vb
