// The parsed form of statements and expressions (internal to db/sql). Names are kept as written;
// binding resolves them to column indexes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "db/sql/sql.h"
#include "vb/variant.h"

namespace db::sql {

struct Expr;
using ExprPtr = std::shared_ptr<const Expr>;

struct Expr {
    enum class Kind {
        Literal,  // value
        Column,   // qualifier (may be empty) . name
        Unary,    // op: "-", "+", "not"; args[0]
        Binary,   // op lower case: + - * / \ mod ^ & = <> < <= > >= and or xor; args[0], args[1]
        Like,     // args[0] [not] like args[1]
        IsNull,   // args[0] is [not] null
        Between,  // args[0] [not] between args[1] and args[2]
        In,       // args[0] [not] in (args[1..])
        Call,     // op: function name in lower case; args
        Star,     // the * of count(*)
    };
    Kind kind = Kind::Literal;
    std::string op;         // operator or function name
    std::string qualifier;  // Column
    std::string name;       // Column
    vb::Variant value;      // Literal (Null for Null)
    bool negated = false;
    std::vector<ExprPtr> args;

    bool operator==(const Expr& o) const;
};

// Whether the expression holds an aggregate function.
bool hasAggregate(const Expr& e);
bool isAggregateFunction(const std::string& lowerName);

struct SelectItem {
    ExprPtr expr;            // null for '*'
    std::string alias;       // empty when none
    bool star = false;
    std::string starQualifier;  // "t" of "t.*"
    size_t start = 0;        // offset in the text
};

struct OrderItem {
    ExprPtr expr;
    bool descending = false;
    std::string text;        // as written
};

struct Assignment {
    ExprPtr target;  // a Column
    ExprPtr value;
};

struct StatementData {
    Statement::Kind kind = Statement::Kind::Select;
    std::string text;
    std::string table;
    std::string tableAlias;
    // SELECT
    bool distinct = false;
    std::vector<SelectItem> items;
    std::vector<OrderItem> order;
    // UPDATE
    std::vector<Assignment> sets;
    // both
    ExprPtr where;
};

// Parses a Find filter expression (3075 when malformed).
ExprPtr parseCondition(std::string_view text);

// A DaoError with the number and message.
[[noreturn]] void fail(int number, const std::string& message);

// Jet's error numbers used by the SQL layer.
namespace err {
inline constexpr int Overflow = 6;
inline constexpr int DivisionByZero = 11;
inline constexpr int TooFewParameters = 3061;
inline constexpr int UnknownName = 3070;
inline constexpr int SyntaxError = 3075;
inline constexpr int UndefinedFunction = 3085;
inline constexpr int OrderByConflictsWithDistinct = 3093;
inline constexpr int AggregateNotAllowed = 3096;
inline constexpr int NotPartOfAggregate = 3122;
inline constexpr int InvalidStatement = 3129;
inline constexpr int SyntaxErrorFrom = 3131;
inline constexpr int OrderBySyntax = 3138;
inline constexpr int SelectSyntax = 3141;
inline constexpr int CharactersAfterEnd = 3142;
inline constexpr int UpdateSyntax = 3144;
inline constexpr int DataTypeMismatch = 3464;
}  // namespace err

}  // namespace db::sql
