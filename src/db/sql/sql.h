// The program's SQL: single-table SELECT and UPDATE statements, and the filters of the Find
// operations, with Jet's semantics (names without regard to case, #m/d/y# dates, True/False,
// LIKE with * and ?, nulls first ascending, texts compared and ordered in Access 2000's General
// sort order, so that sorting rows gives the order an index gives).
//
// A statement is parsed once into an immutable Statement that any number of recordsets share.
// Binding it to a table resolves the names; the bound forms run against the engine.
//
// Every failure is a db::DaoError with Jet's number: syntax 3075 (in an expression), 3129 (not a
// statement), 3131 (FROM), 3138 (ORDER BY), 3141 (SELECT list), 3142 (text after the end), 3144
// (UPDATE); an unknown name 3061 in a statement ("Too few parameters. Expected n."), 3070 in a
// filter; an unknown function 3085; a bare column beside an aggregate 3122; an aggregate where none
// may be 3096; ORDER BY outside a DISTINCT list 3093; evaluation: type mismatch 3464, division by
// zero 11, overflow 6 (VB's other run-time errors, such as 5 and 94, reach Jet as 3464).
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jet/database.h"
#include "vb/variant.h"

namespace db::sql {

struct StatementData;  // the syntax tree (internal)
struct SelectPlan;     // a bound SELECT (internal)
struct FilterPlan;     // a bound filter (internal)

// A parsed statement: immutable and shareable.
class Statement {
public:
    enum class Kind { Select, Update };
    Kind kind() const;
    bool isSelect() const { return kind() == Kind::Select; }
    // The table's name as written, without brackets.
    const std::string& tableName() const;
    // The statement's text as given.
    const std::string& text() const;

    const StatementData& data() const { return *data_; }
    explicit Statement(std::unique_ptr<StatementData> d);
    ~Statement();

private:
    std::unique_ptr<StatementData> data_;
};

// Parses a SELECT or UPDATE (an optional ';' at the end). Syntax errors raise their DaoError.
std::shared_ptr<const Statement> parse(std::string_view text);

// Whether a recordset source is a statement rather than a table name.
bool looksLikeStatement(std::string_view source);

// One value of a row by column index (table column, or for a dynaset's extra column its index in
// Select::columns()). Called only for the columns an expression reads.
using ColumnReader = std::function<vb::Variant(size_t column)>;

// A read-only computed set: column names and rows of values.
struct Snapshot {
    std::vector<std::string> columns;
    std::vector<std::vector<vb::Variant>> rows;
};

// A SELECT bound to a table. Immutable after binding; keep it as long as the recordset lives.
class Select {
public:
    // Resolves the names against the table's columns (3061, 3122, 3093, 3096; 3065-free: an
    // UPDATE statement given here raises 3129).
    Select(std::shared_ptr<const Statement> statement, const jet::Table& table);
    ~Select();
    Select(Select&&) noexcept;
    Select& operator=(Select&&) noexcept;

    const Statement& statement() const { return *statement_; }

    // DISTINCT, an aggregate, or a list without '*': a read-only snapshot (run with snapshot()).
    // Otherwise a dynaset over the table (run with rowIds()).
    bool isSnapshot() const;

    // The visible columns. Dynaset: the table's columns (all of them, in table order), then the
    // extra expression columns of "select *, expr". Snapshot: the output names. A name is the
    // alias, the table's spelling of a plain column, or Expr1000 + the item's position in the list.
    const std::vector<std::string>& columns() const;
    // Dynaset: how many of columns() are the table's (the rest are extra). Snapshot: 0.
    size_t tableWidth() const;

    // Dynaset: the ids of the rows WHERE keeps, in ORDER BY order (stable: physical order among
    // equal keys; nulls first ascending). An ORDER BY on one column that an index starts with reads
    // the index when that gives the same order.
    std::vector<jet::RowId> rowIds(const jet::Table& table) const;

    // Dynaset: the value of visible column `column` of a row: a table column comes from `tableRow`
    // as it is; an extra column is computed, reading only the table columns it uses.
    vb::Variant value(size_t column, const ColumnReader& tableRow) const;

    // Snapshot: runs the statement (filter, project, aggregate, distinct, order).
    Snapshot snapshot(const jet::Table& table) const;

    const SelectPlan& plan() const { return *plan_; }

private:
    std::shared_ptr<const Statement> statement_;
    std::unique_ptr<SelectPlan> plan_;
};

// A Find filter such as "[GkFrsz] like 'AB*'" bound to a set's visible columns.
class Filter {
public:
    // Parses (3075) and resolves against `columns` (3070 for an unknown name, 3096 aggregate).
    Filter(std::string_view text, const std::vector<std::string>& columns);
    ~Filter();
    Filter(Filter&&) noexcept;
    Filter& operator=(Filter&&) noexcept;

    // The column indexes the filter reads, ascending.
    const std::vector<size_t>& columnsUsed() const;
    // True when the filter holds for the row (Null is no match). `row` is asked only for
    // columnsUsed().
    bool matches(const ColumnReader& row) const;
    // A snapshot row (values by visible column).
    bool matches(const std::vector<vb::Variant>& row) const;

    // Dynaset helper: the ids of the table's rows that match, ascending by RowId, from one scan
    // reading only the columns used. `select` (may be null: a plain table) supplies extra columns.
    std::vector<jet::RowId> matchingRows(const jet::Table& table, const Select* select) const;

private:
    std::unique_ptr<FilterPlan> plan_;
};

// The column value a Variant becomes when written to `column` (the record layer's conversion:
// 3163 too long, 3421 conversion...).
using ToColumnValue = std::function<jet::Value(const jet::Column& column, const vb::Variant& v)>;

// Runs an UPDATE on `table`: every new value is computed from the row as it was and converted
// before the first write, then all rows are written in one engine batch (opened here unless one
// is open already). Returns the number of rows changed.
size_t executeUpdate(const Statement& statement, jet::Table& table, const ToColumnValue& convert);

// ---- The sort order of values (also for the record layer's own sorting) ----

// Compares two texts as the database's General sort order does: case ignored, accented letters
// after their base letter. Texts the General tables cannot encode sort after all others, among
// themselves by their case-folded code points (then by their bytes).
int compareText(std::string_view a, std::string_view b);

// Names without regard to case (Hungarian accented letters folded too): "ÁRU" matches "áru".
bool sameName(std::string_view a, std::string_view b);
std::string foldName(std::string_view name);

}  // namespace db::sql
