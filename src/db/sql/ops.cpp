// Jet's operators on VB Variants.
#include "db/sql/ops.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "db/sql/ast.h"
#include "vb/conv.h"

namespace db::sql {

void mismatch() { fail(err::DataTypeMismatch, "Data type mismatch in criteria expression."); }
void divisionByZero() { fail(err::DivisionByZero, "Division by zero"); }

namespace {

// A number for arithmetic: a whole number, a Currency (scaled by 10 000) or a double.
struct Num {
    enum Kind { Int, Cur, Dbl } kind = Int;
    int64_t i = 0;  // Int: the value; Cur: the scaled value
    double d = 0;
    double asDouble() const { return kind == Int ? double(i) : kind == Cur ? double(i) / 10000.0 : d; }
};

Num numOf(const Variant& v) {
    Num n;
    if (auto b = std::get_if<bool>(&v)) n.i = *b ? -1 : 0;
    else if (auto u = std::get_if<uint8_t>(&v)) n.i = *u;
    else if (auto s = std::get_if<int16_t>(&v)) n.i = *s;
    else if (auto l = std::get_if<int32_t>(&v)) n.i = *l;
    else if (auto c = std::get_if<vb::Currency>(&v)) {
        n.kind = Num::Cur;
        n.i = c->scaled;
    } else if (auto f = std::get_if<float>(&v)) {
        n.kind = Num::Dbl;
        n.d = *f;
    } else if (auto d = std::get_if<double>(&v)) {
        n.kind = Num::Dbl;
        n.d = *d;
    } else {
        mismatch();
    }
    return n;
}

Variant narrow(int64_t l) {
    if (l >= std::numeric_limits<int32_t>::min() && l <= std::numeric_limits<int32_t>::max())
        return static_cast<int32_t>(l);
    return static_cast<double>(l);
}

Variant currency(__int128 scaled) {
    if (scaled > std::numeric_limits<int64_t>::max() || scaled < std::numeric_limits<int64_t>::min())
        fail(err::Overflow, "Overflow");
    return vb::Currency{static_cast<int64_t>(scaled)};
}

// Halves to even.
int64_t roundToLong(const Num& n) {
    if (n.kind == Num::Int) return n.i;
    if (n.kind == Num::Cur) {
        int64_t q = n.i / 10000, r = n.i % 10000;
        if (r > 5000 || (r == 5000 && (q & 1))) ++q;
        else if (r < -5000 || (r == -5000 && (q & 1))) --q;
        return q;
    }
    double r = std::nearbyint(n.d);  // the default rounding mode is to nearest, halves to even
    if (!(r >= -9.2e18 && r <= 9.2e18)) fail(err::Overflow, "Overflow");
    return static_cast<int64_t>(r);
}

int cmp3(double x, double y) { return x < y ? -1 : x > y ? 1 : 0; }
template <class T>
int cmpInt(T x, T y) {
    return x < y ? -1 : x > y ? 1 : 0;
}

int compareNums(const Num& x, const Num& y) {
    if (x.kind == Num::Int && y.kind == Num::Int) return cmpInt(x.i, y.i);
    if (x.kind != Num::Dbl && y.kind != Num::Dbl) {
        __int128 a = x.kind == Num::Cur ? x.i : __int128(x.i) * 10000;
        __int128 b = y.kind == Num::Cur ? y.i : __int128(y.i) * 10000;
        return cmpInt(a, b);
    }
    return cmp3(x.asDouble(), y.asDouble());
}

double serial(const Variant& v) {
    if (auto d = std::get_if<vb::Date>(&v)) return d->serial;
    return numOf(number(v)).asDouble();
}

Variant arith(char op, const Num& x, const Num& y) {
    if (x.kind == Num::Int && y.kind == Num::Int) {
        __int128 r = op == '+' ? __int128(x.i) + y.i : op == '-' ? __int128(x.i) - y.i : __int128(x.i) * y.i;
        if (r >= std::numeric_limits<int32_t>::min() && r <= std::numeric_limits<int32_t>::max())
            return static_cast<int32_t>(r);
        return static_cast<double>(r);
    }
    if (x.kind != Num::Dbl && y.kind != Num::Dbl) {
        // Currency stays exact
        __int128 a = x.kind == Num::Cur ? x.i : __int128(x.i) * 10000;
        __int128 b = y.kind == Num::Cur ? y.i : __int128(y.i) * 10000;
        if (op == '+') return currency(a + b);
        if (op == '-') return currency(a - b);
        if (x.kind == Num::Int || y.kind == Num::Int)
            return currency(x.kind == Num::Int ? __int128(x.i) * y.i : __int128(x.i) * y.i);
        __int128 p = a * b, q = p / 10000, r = p % 10000;
        if (r > 5000 || (r == 5000 && (q & 1))) ++q;
        else if (r < -5000 || (r == -5000 && (q & 1))) --q;
        return currency(q);
    }
    double a = x.asDouble(), b = y.asDouble();
    return op == '+' ? a + b : op == '-' ? a - b : a * b;
}

}  // namespace

bool isNumeric(const Variant& v) {
    return std::holds_alternative<bool>(v) || std::holds_alternative<uint8_t>(v) ||
           std::holds_alternative<int16_t>(v) || std::holds_alternative<int32_t>(v) ||
           std::holds_alternative<float>(v) || std::holds_alternative<double>(v) ||
           std::holds_alternative<vb::Currency>(v);
}
bool isText(const Variant& v) { return std::holds_alternative<std::string>(v); }
bool isDate(const Variant& v) { return std::holds_alternative<vb::Date>(v); }

Variant jetValue(const Variant& v) {
    if (auto b = std::get_if<bool>(&v)) return static_cast<int16_t>(*b ? -1 : 0);
    return v;
}

std::string text(const Variant& v) {
    if (auto s = std::get_if<std::string>(&v)) return *s;
    return jetErrors([&] { return vb::CStr(jetValue(v)); });
}

vb::Date date(const Variant& v) {
    return jetErrors([&] { return vb::CDate(jetValue(v)); });
}

int32_t intArg(const Variant& v) {
    return jetErrors([&] { return vb::CLng(jetValue(v)); });
}

Variant number(const Variant& v) {
    if (auto b = std::get_if<bool>(&v)) return static_cast<int32_t>(*b ? -1 : 0);
    if (isNumeric(v)) return v;
    if (auto s = std::get_if<std::string>(&v)) {
        auto d = jetErrors([&] { return vb::parseNumber(*s); });
        if (!d) mismatch();
        return *d;
    }
    if (auto d = std::get_if<vb::Date>(&v)) return d->serial;
    mismatch();
}

bool isTrue(const Variant& v) {
    if (isNullish(v)) return false;
    if (auto b = std::get_if<bool>(&v)) return *b;
    if (isNumeric(v)) return numOf(v).asDouble() != 0;
    if (auto d = std::get_if<vb::Date>(&v)) return d->serial != 0;
    return jetErrors([&] { return vb::CBool(v); });
}

int compare(const Variant& a, const Variant& b) {
    auto sa = std::get_if<std::string>(&a);
    auto sb = std::get_if<std::string>(&b);
    if (sa && sb) return compareText(*sa, *sb);
    if (isNumeric(a) && isNumeric(b)) return compareNums(numOf(a), numOf(b));
    auto da = std::get_if<vb::Date>(&a);
    auto db = std::get_if<vb::Date>(&b);
    if (da && db) return cmp3(da->serial, db->serial);
    if (da || db) {
        const Variant& other = da ? b : a;
        int sign = da ? 1 : -1;
        double d = da ? da->serial : db->serial;
        if (auto s = std::get_if<std::string>(&other)) {
            auto parsed = jetErrors([&] { return vb::parseDate(*s); });
            if (!parsed) mismatch();
            return sign * cmp3(d, parsed->serial);
        }
        if (isNumeric(other)) return sign * cmp3(d, numOf(other).asDouble());
        mismatch();
    }
    if (sa || sb) {
        const Variant& num = sa ? b : a;
        const std::string& s = sa ? *sa : *sb;
        if (isNumeric(num)) {
            auto d = jetErrors([&] { return vb::parseNumber(s); });
            if (d) {
                Num t;
                t.kind = Num::Dbl;
                t.d = *d;
                return sa ? compareNums(t, numOf(num)) : compareNums(numOf(num), t);
            }
        }
    }
    mismatch();
}

Variant compareOp(const std::string& op, const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    if (op == "=" || op == "<>") {
        auto sa = std::get_if<std::string>(&a);
        auto sb = std::get_if<std::string>(&b);
        bool eq = sa && sb ? textEquals(*sa, *sb) : compare(a, b) == 0;
        return op == "=" ? eq : !eq;
    }
    int c = compare(a, b);
    if (op == "<") return c < 0;
    if (op == "<=") return c <= 0;
    if (op == ">") return c > 0;
    return c >= 0;
}

Variant negate(const Variant& v) {
    if (isNullish(v)) return vb::Null{};
    if (auto d = std::get_if<vb::Date>(&v)) return vb::Date{-d->serial};
    Num n = numOf(number(v));
    if (n.kind == Num::Int) return narrow(-n.i);
    if (n.kind == Num::Cur) return currency(-__int128(n.i));
    return -n.d;
}

Variant add(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    auto sa = std::get_if<std::string>(&a);
    auto sb = std::get_if<std::string>(&b);
    if (sa && sb) return *sa + *sb;
    if (isDate(a) || isDate(b)) return vb::Date{serial(a) + serial(b)};
    return arith('+', numOf(number(a)), numOf(number(b)));
}

Variant subtract(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    if (isDate(a) && !isDate(b)) return vb::Date{serial(a) - serial(b)};
    if (isDate(a) || isDate(b)) return serial(a) - serial(b);
    return arith('-', numOf(number(a)), numOf(number(b)));
}

Variant multiply(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    return arith('*', numOf(number(a)), numOf(number(b)));
}

Variant divide(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    double y = numOf(number(b)).asDouble();
    double x = numOf(number(a)).asDouble();
    if (y == 0) divisionByZero();
    return x / y;
}

Variant intDivide(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    int64_t y = roundToLong(numOf(number(b)));
    int64_t x = roundToLong(numOf(number(a)));
    if (y == 0) divisionByZero();
    return narrow(x / y);
}

Variant modulo(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    int64_t y = roundToLong(numOf(number(b)));
    int64_t x = roundToLong(numOf(number(a)));
    if (y == 0) divisionByZero();
    return narrow(x % y);
}

Variant power(const Variant& a, const Variant& b) {
    if (isNullish(a) || isNullish(b)) return vb::Null{};
    double r = std::pow(numOf(number(a)).asDouble(), numOf(number(b)).asDouble());
    if (std::isinf(r)) fail(err::Overflow, "Overflow");
    if (std::isnan(r)) fail(err::DataTypeMismatch, "Data type mismatch in criteria expression.");
    return r;
}

Variant concat(const Variant& a, const Variant& b) {
    if (isNullish(a) && isNullish(b)) return vb::Null{};
    return (isNullish(a) ? std::string() : text(a)) + (isNullish(b) ? std::string() : text(b));
}

SortKey sortKey(const Variant& v) {
    SortKey k;
    if (isNullish(v)) return k;
    if (auto s = std::get_if<std::string>(&v)) {
        k.rank = SortKey::Text;
        k.text = textKey(*s);
    } else if (auto d = std::get_if<vb::Date>(&v)) {
        k.rank = SortKey::DateRank;
        k.d = d->serial;
    } else if (isNumeric(v)) {
        Num n = numOf(v);
        k.rank = SortKey::Number;
        k.d = n.asDouble();
        if (n.kind != Num::Dbl) {
            k.exact = true;
            k.scaled = n.kind == Num::Cur ? n.i : n.i * 10000;
        }
    } else if (auto bytes = std::get_if<vb::ByteArray>(&v)) {
        k.rank = SortKey::Other;
        k.text.bytes.assign(bytes->begin(), bytes->end());
    }
    return k;
}

int compareSortKeys(const SortKey& a, const SortKey& b) {
    if (a.rank != b.rank) return a.rank < b.rank ? -1 : 1;
    switch (a.rank) {
    case SortKey::Null:
        return 0;
    case SortKey::Number:
        if (a.exact && b.exact) return cmpInt(a.scaled, b.scaled);
        return cmp3(a.d, b.d);
    case SortKey::DateRank:
        return cmp3(a.d, b.d);
    case SortKey::Text:
    case SortKey::Other:
        return compareKeys(a.text, b.text);
    }
    return 0;
}

}  // namespace db::sql
