// Bound expressions: names resolved to column indexes once, evaluated over rows. Internal to
// db/sql.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "db/sql/ast.h"
#include "vb/variant.h"

namespace db::sql {

// A row as expressions read it: one value by column index.
struct RowView {
    virtual ~RowView() = default;
    virtual vb::Variant get(size_t column) const = 0;
};

// Values held in a vector (snapshot rows, aggregate results).
struct VectorRow : RowView {
    const std::vector<vb::Variant>& values;
    explicit VectorRow(const std::vector<vb::Variant>& v) : values(v) {}
    vb::Variant get(size_t c) const override { return c < values.size() ? values[c] : vb::Variant(vb::Null{}); }
};

struct Node {
    virtual ~Node() = default;
    virtual vb::Variant eval(const RowView& row) const = 0;
};
using NodePtr = std::shared_ptr<const Node>;

// The column a node reads when it is a plain column reference (in Row mode), else -1: fast
// paths that work on the engine's values directly look for it.
int plainColumn(const Node& n);
// A LIKE of a plain column against a literal pattern: its parts (false for any other node).
class LikePattern;
bool likeOnColumn(const Node& n, int& column, const LikePattern*& pattern, bool& negated);

// Evaluates with VB's errors turned into Jet's.
vb::Variant evaluate(const Node& n, const RowView& row);
// True when the condition holds (Null is no match).
bool test(const Node& n, const RowView& row);

class Binder {
public:
    enum class Mode {
        Row,        // an aggregate is an error (3096)
        Aggregate,  // a select item of an aggregate query: aggregates read their results, bare columns are 3122
    };
    struct Aggregate {
        std::string function;
        NodePtr argument;  // null for count(*)
    };

    Binder(std::vector<std::string> columns, std::string table, std::string alias);

    // 3061 (default) for unknown names in statements, 3070 in filters.
    void setUnknownNumber(int n) { unknownNumber_ = n; }
    // Select-list aliases that ORDER BY may name (after the table's columns): folded name, expression.
    void setAliases(std::vector<std::pair<std::string, ExprPtr>> aliases) { aliases_ = std::move(aliases); }

    const std::vector<std::string>& columns() const { return columns_; }
    // The index of a column reference, or -1.
    int resolve(const Expr& column) const;
    NodePtr compile(const Expr& e, std::vector<bool>& used, Mode mode);
    // Raises 3061/3070 for unknown names (all counted), then 3122.
    void check() const;
    const std::vector<Aggregate>& aggregates() const { return aggregates_; }

private:
    NodePtr compileCall(const Expr& e, std::vector<bool>& used, Mode mode);
    std::vector<std::string> columns_;
    std::vector<std::string> folded_;
    std::string table_, alias_;
    std::vector<std::string> unknown_;
    std::vector<std::pair<std::string, ExprPtr>> aliases_;
    std::vector<Aggregate> aggregates_;
    std::string aggregateError_;
    int unknownNumber_ = err::TooFewParameters;
};

std::vector<size_t> usedColumns(const std::vector<bool>& used);

}  // namespace db::sql
