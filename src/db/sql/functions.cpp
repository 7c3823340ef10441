// Jet's functions over VB semantics (vb/conv, vb/format, vb/text do the conversions).
#include "db/sql/functions.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>

#include "db/sql/ast.h"
#include "db/sql/ops.h"
#include "vb/clock.h"
#include "vb/conv.h"
#include "vb/format.h"
#include "vb/text.h"

namespace db::sql {

namespace {

using vb::Variant;
using A = const Variant*;

bool anyNull(A a, size_t n) {
    return std::any_of(a, a + n, [](const Variant& v) { return isNullish(v); });
}

// A non-negative count argument (Null raises 94, a negative one 5; both reach Jet as 3464).
long count(const Variant& v) {
    if (isNullish(v)) throw vb::VbError(vb::InvalidUseOfNull);
    int32_t n = intArg(v);
    if (n < 0) throw vb::VbError(vb::InvalidProcedureCall);
    return n;
}

// The date's parts with the time rounded to the second.
vb::DateParts partsToSecond(const Variant& v) {
    vb::Date d = date(v);
    double s = d.serial;
    double days = std::trunc(s);
    double frac = std::fabs(s - days);
    double secs = std::round(frac * 86400.0);
    if (secs >= 86400) {
        vb::DateParts p = vb::dateParts(vb::Date{s >= 0 ? days + 1 : days - 1});
        p.hour = p.minute = p.second = p.millisecond = 0;
        return p;
    }
    vb::DateParts p = vb::dateParts(vb::Date{days});
    int is = static_cast<int>(secs);
    p.hour = is / 3600;
    p.minute = is / 60 % 60;
    p.second = is % 60;
    p.millisecond = 0;
    return p;
}

Variant wholePart(const Variant& n, bool floor) {
    if (std::holds_alternative<int32_t>(n) || std::holds_alternative<int16_t>(n) || std::holds_alternative<uint8_t>(n))
        return n;
    if (auto c = std::get_if<vb::Currency>(&n)) {
        int64_t q = c->scaled / 10000, r = c->scaled % 10000;
        if (floor && r < 0) --q;
        return vb::Currency{q * 10000};
    }
    double d = vb::CDbl(n);
    return floor ? std::floor(d) : std::trunc(d);
}

std::string strip(std::string s, bool left, bool right) {
    size_t b = 0, e = s.size();
    while (left && b < e && s[b] == ' ') ++b;
    while (right && e > b && s[e - 1] == ' ') --e;
    return s.substr(b, e - b);
}

// Halves to even on the shortest decimal text of the double (as Java's BigDecimal.valueOf):
// round(8.345, 2) is 8.34, round(2.5) is 2.
double roundHalfEven(double d, int places) {
    if (!std::isfinite(d)) return d;
    char buf[400];
    auto res = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::fixed);
    std::string s(buf, res.ptr);
    bool neg = !s.empty() && s[0] == '-';
    if (neg) s.erase(0, 1);
    size_t dot = s.find('.');
    std::string intPart = dot == std::string::npos ? s : s.substr(0, dot);
    std::string frac = dot == std::string::npos ? std::string() : s.substr(dot + 1);
    if (frac.size() <= static_cast<size_t>(places)) return d;
    std::string digits = intPart + frac.substr(0, places);
    char first = frac[places];
    bool restNonZero = frac.find_first_not_of('0', places + 1) != std::string::npos;
    bool up = first > '5' || (first == '5' && (restNonZero || ((digits.back() - '0') & 1)));
    if (up) {
        int i = static_cast<int>(digits.size()) - 1;
        while (i >= 0 && digits[i] == '9') digits[i--] = '0';
        if (i < 0) digits.insert(digits.begin(), '1');
        else ++digits[i];
    }
    std::string out = (neg ? "-" : "") + digits.substr(0, digits.size() - places);
    if (places > 0) out += "." + digits.substr(digits.size() - places);
    double r = 0;
    std::from_chars(out.data(), out.data() + out.size(), r);
    return r;
}

struct Def {
    size_t min, max;
    Function fn;
};

Variant fnDatePart(A a, size_t n) {
    if (anyNull(a, n)) return vb::Null{};
    std::string interval = lowerText(text(a[0]));
    vb::DateParts p = partsToSecond(a[1]);
    if (interval == "yyyy") return p.year;
    if (interval == "q") return (p.month - 1) / 3 + 1;
    if (interval == "m") return p.month;
    if (interval == "d") return p.day;
    if (interval == "h") return p.hour;
    if (interval == "n") return p.minute;
    if (interval == "s") return p.second;
    if (interval == "w") return jetErrors([&] { return vb::Weekday(a[1]); });
    if (interval == "y") {
        vb::DateParts jan1;
        jan1.year = p.year;
        jan1.month = 1;
        jan1.day = 1;
        vb::DateParts day = p;
        day.hour = day.minute = day.second = 0;
        return static_cast<int32_t>(vb::toDate(day).serial - vb::toDate(jan1).serial) + 1;
    }
    throw vb::VbError(vb::InvalidProcedureCall);
}

const std::map<std::string, Def>& defs() {
    static const std::map<std::string, Def> table = {
        // dates
        {"year", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).year); }}},
        {"month", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).month); }}},
        {"day", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).day); }}},
        {"hour", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).hour); }}},
        {"minute", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).minute); }}},
        {"second", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(partsToSecond(a[0]).second); }}},
        {"weekday", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             vb::Date d = date(a[0]);
             return vb::Weekday(d);
         }}},
        {"datepart", {2, 2, fnDatePart}},
        {"timeserial", {3, 3, [](A a, size_t n) -> Variant {
             if (anyNull(a, n)) return vb::Null{};
             int32_t h = intArg(a[0]), m = intArg(a[1]), s = intArg(a[2]);
             return vb::TimeSerial(h, m, s);
         }}},
        {"dateserial", {3, 3, [](A a, size_t n) -> Variant {
             if (anyNull(a, n)) return vb::Null{};
             int32_t y = intArg(a[0]), m = intArg(a[1]), d = intArg(a[2]);
             return vb::DateSerial(y, m, d);
         }}},
        {"date", {0, 0, [](A, size_t) -> Variant { return vb::clock::today(); }}},
        {"now", {0, 0, [](A, size_t) -> Variant { return vb::clock::now(); }}},
        {"time", {0, 0, [](A, size_t) -> Variant {
             double s = vb::clock::now().serial;
             return vb::Date{std::fabs(s - std::trunc(s))};
         }}},
        {"cdate", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(date(a[0])); }}},
        {"datevalue", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             return vb::Date{std::trunc(date(a[0]).serial)};
         }}},
        {"isdate", {1, 1, [](A a, size_t) -> Variant { return !isNullish(a[0]) && vb::IsDate(a[0]); }}},

        // texts
        {"str", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : vb::Str(jetValue(a[0])); }}},
        {"format", {1, 2, [](A a, size_t n) -> Variant {
             if (isNullish(a[0]) && n < 2) return vb::Null{};
             std::string mask = n < 2 || isNullish(a[1]) ? std::string() : text(a[1]);
             return vb::Format(jetValue(a[0]), mask);
         }}},
        {"left", {2, 2, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             return vb::Left(text(a[0]), count(a[1]));
         }}},
        {"right", {2, 2, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             return vb::Right(text(a[0]), count(a[1]));
         }}},
        {"mid", {2, 3, [](A a, size_t n) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             std::string s = text(a[0]);
             int32_t start = intArg(a[1]);
             if (n > 2 && !isNullish(a[2])) return vb::Mid(s, start, count(a[2]));
             return vb::Mid(s, start);
         }}},
        {"len", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             return static_cast<int32_t>(vb::Len(text(a[0])));
         }}},
        {"trim", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(strip(text(a[0]), true, true)); }}},
        {"ltrim", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(strip(text(a[0]), true, false)); }}},
        {"rtrim", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(strip(text(a[0]), false, true)); }}},
        {"ucase", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::UCase(text(a[0]))); }}},
        {"lcase", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::LCase(text(a[0]))); }}},
        {"space", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(std::string(count(a[0]), ' ')); }}},
        {"instr", {2, 3, [](A a, size_t n) -> Variant {
             long start = 1;
             const Variant* s1 = &a[0];
             const Variant* s2 = &a[1];
             if (n == 3) {
                 if (isNullish(a[0])) return vb::Null{};
                 start = intArg(a[0]);
                 if (start < 1) throw vb::VbError(vb::InvalidProcedureCall);
                 s1 = &a[1];
                 s2 = &a[2];
             }
             if (isNullish(*s1) || isNullish(*s2)) return vb::Null{};
             std::u32string hay = decodeUtf8(lowerText(text(*s1)));
             std::u32string needle = decodeUtf8(lowerText(text(*s2)));
             if (static_cast<size_t>(start) > hay.size()) return 0;
             size_t p = hay.find(needle, start - 1);
             return static_cast<int32_t>(p == std::u32string::npos ? 0 : p + 1);
         }}},

        // conversions
        {"val", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::Val(jetValue(a[0]))); }}},
        {"cdbl", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::CDbl(jetValue(a[0]))); }}},
        {"csng", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::CSng(jetValue(a[0]))); }}},
        {"ccur", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::CCur(jetValue(a[0]))); }}},
        {"cint", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::CInt(jetValue(a[0]))); }}},
        {"clng", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(vb::CLng(jetValue(a[0]))); }}},
        {"cstr", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(text(a[0])); }}},
        {"cbool", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : Variant(isTrue(a[0])); }}},
        {"nz", {1, 2, [](A a, size_t n) -> Variant { return !isNullish(a[0]) ? a[0] : n > 1 ? a[1] : Variant(std::string()); }}},
        {"isnull", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]); }}},
        {"isnumeric", {1, 1, [](A a, size_t) -> Variant { return !isNullish(a[0]) && vb::IsNumeric(a[0]); }}},

        // numbers
        {"abs", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             Variant n = number(a[0]);
             return compare(n, Variant(int32_t(0))) < 0 ? negate(n) : n;
         }}},
        {"int", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : wholePart(number(a[0]), true); }}},
        {"fix", {1, 1, [](A a, size_t) -> Variant { return isNullish(a[0]) ? Variant(vb::Null{}) : wholePart(number(a[0]), false); }}},
        {"sgn", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             return static_cast<int16_t>(compare(number(a[0]), Variant(int32_t(0))));
         }}},
        {"sqr", {1, 1, [](A a, size_t) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             double d = vb::CDbl(number(a[0]));
             if (d < 0) throw vb::VbError(vb::InvalidProcedureCall);
             return std::sqrt(d);
         }}},
        {"round", {1, 2, [](A a, size_t n) -> Variant {
             if (isNullish(a[0])) return vb::Null{};
             Variant x = number(a[0]);
             int places = n > 1 && !isNullish(a[1]) ? intArg(a[1]) : 0;
             if (places < 0) throw vb::VbError(vb::InvalidProcedureCall);
             if (!std::holds_alternative<double>(x) && !std::holds_alternative<float>(x) &&
                 !std::holds_alternative<vb::Currency>(x))
                 return x;
             if (auto c = std::get_if<vb::Currency>(&x)) {
                 if (places >= 4) return x;
                 int64_t unit = 1;
                 for (int i = places; i < 4; ++i) unit *= 10;
                 int64_t q = c->scaled / unit, r = c->scaled % unit;
                 if (2 * r > unit || (2 * r == unit && (q & 1))) ++q;
                 else if (2 * r < -unit || (2 * r == -unit && (q & 1))) --q;
                 return vb::Currency{q * unit};
             }
             return roundHalfEven(vb::CDbl(x), places);
         }}},
    };
    return table;
}

}  // namespace

bool isAggregateFunction(const std::string& n) {
    return n == "sum" || n == "count" || n == "min" || n == "max" || n == "avg" || n == "first" || n == "last";
}

bool functionExists(const std::string& n) { return isAggregateFunction(n) || n == "iif" || defs().count(n); }

bool functionArityOk(const std::string& n, size_t count) {
    if (isAggregateFunction(n)) return count == 1;
    if (n == "iif") return count == 3;
    auto it = defs().find(n);
    return it != defs().end() && count >= it->second.min && count <= it->second.max;
}

Function scalarFunction(const std::string& n) {
    auto it = defs().find(n);
    return it == defs().end() ? nullptr : it->second.fn;
}

}  // namespace db::sql
