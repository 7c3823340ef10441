// Jet's operators on VB Variants: comparison (texts in the General sort order, numbers across
// types with True as -1, dates), three-valued logic, arithmetic with Null propagation, and the sort
// keys ORDER BY and DISTINCT use. Internal to db/sql.
#pragma once

#include <string>

#include "db/sql/text.h"
#include "vb/variant.h"

namespace db::sql {

using vb::Variant;

[[noreturn]] void mismatch();        // 3464
[[noreturn]] void divisionByZero();  // 11

// Runs f with VB's run-time errors turned into Jet's: Overflow stays 6, Division by zero 11,
// everything else is a type mismatch (3464).
template <class F>
decltype(auto) jetErrors(F&& f);

inline bool isNullish(const Variant& v) { return vb::isNull(v) || vb::isEmpty(v); }
bool isNumeric(const Variant& v);  // numbers and Booleans
bool isText(const Variant& v);
bool isDate(const Variant& v);

// The value as Jet converts it to text (numbers with the decimal comma, True as "-1").
std::string text(const Variant& v);
vb::Date date(const Variant& v);
// A Boolean as Jet's number (True is -1), other values unchanged.
Variant jetValue(const Variant& v);
// A whole number argument (CLng).
int32_t intArg(const Variant& v);
// The value as a number for arithmetic: numbers stay, True is -1, a numeric text by CDbl, a date
// its serial.
Variant number(const Variant& v);

// Truth of a condition's value: non-null and non-zero.
bool isTrue(const Variant& v);

// Compares two non-null values (3464 when they can't be compared).
int compare(const Variant& a, const Variant& b);
// A comparison operator ("=", "<>", "<", "<=", ">", ">="); Null if either side is Null.
Variant compareOp(const std::string& op, const Variant& a, const Variant& b);

Variant negate(const Variant& v);
Variant add(const Variant& a, const Variant& b);
Variant subtract(const Variant& a, const Variant& b);
Variant multiply(const Variant& a, const Variant& b);
Variant divide(const Variant& a, const Variant& b);
Variant intDivide(const Variant& a, const Variant& b);
Variant modulo(const Variant& a, const Variant& b);
Variant power(const Variant& a, const Variant& b);
Variant concat(const Variant& a, const Variant& b);  // '&': Null as "" unless both are Null

// A value as ORDER BY and DISTINCT compare it: Null first, then numbers (Booleans as -1/0,
// Currency exactly), dates, texts (General sort order keys), anything else by its bytes.
struct SortKey {
    enum Rank : uint8_t { Null, Number, DateRank, Text, Other } rank = Null;
    bool exact = false;   // Number: `scaled` holds the value times 10 000 exactly
    int64_t scaled = 0;
    double d = 0;         // Number, DateRank
    TextKey text;         // Text; Other: the bytes
};
SortKey sortKey(const Variant& v);
int compareSortKeys(const SortKey& a, const SortKey& b);

}  // namespace db::sql

#include "db/error.h"
#include "vb/error.h"

namespace db::sql {
template <class F>
decltype(auto) jetErrors(F&& f) {
    try {
        return f();
    } catch (const vb::VbError& e) {
        if (e.number() == vb::Overflow) throw DaoError(vb::Overflow, "Overflow");
        if (e.number() == vb::DivisionByZero) throw DaoError(vb::DivisionByZero, "Division by zero");
        throw DaoError(3464, "Data type mismatch in criteria expression.");
    }
}
}  // namespace db::sql
