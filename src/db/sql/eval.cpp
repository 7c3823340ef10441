// The binder and the evaluator's nodes.
#include "db/sql/eval.h"

#include <algorithm>

#include "db/sql/functions.h"
#include "db/sql/like.h"
#include "db/sql/ops.h"
#include "db/sql/text.h"

namespace db::sql {

using vb::Variant;

namespace {

struct LiteralNode : Node {
    Variant value;
    explicit LiteralNode(Variant v) : value(std::move(v)) {}
    Variant eval(const RowView&) const override { return value; }
};

struct ColumnNode : Node {
    size_t column;
    explicit ColumnNode(size_t c) : column(c) {}
    Variant eval(const RowView& row) const override { return row.get(column); }
};

struct UnaryNode : Node {
    char op;  // '-', '+', '!'
    NodePtr x;
    UnaryNode(char o, NodePtr n) : op(o), x(std::move(n)) {}
    Variant eval(const RowView& row) const override {
        Variant v = x->eval(row);
        if (op == '-') return negate(v);
        if (op == '+') return v;
        if (isNullish(v)) return vb::Null{};
        return !isTrue(v);
    }
};

enum class BinOp { Add, Sub, Mul, Div, IntDiv, Mod, Pow, Concat, And, Or, Xor, Compare };

struct BinaryNode : Node {
    BinOp op;
    std::string cmp;
    NodePtr l, r;
    BinaryNode(BinOp o, std::string c, NodePtr a, NodePtr b) : op(o), cmp(std::move(c)), l(std::move(a)), r(std::move(b)) {}
    Variant eval(const RowView& row) const override {
        switch (op) {
        case BinOp::And: {
            Variant a = l->eval(row);
            if (!isNullish(a) && !isTrue(a)) return false;
            Variant b = r->eval(row);
            if (!isNullish(b) && !isTrue(b)) return false;
            if (isNullish(a) || isNullish(b)) return vb::Null{};
            return true;
        }
        case BinOp::Or: {
            Variant a = l->eval(row);
            if (!isNullish(a) && isTrue(a)) return true;
            Variant b = r->eval(row);
            if (!isNullish(b) && isTrue(b)) return true;
            if (isNullish(a) || isNullish(b)) return vb::Null{};
            return false;
        }
        case BinOp::Xor: {
            Variant a = l->eval(row);
            Variant b = r->eval(row);
            if (isNullish(a) || isNullish(b)) return vb::Null{};
            return isTrue(a) != isTrue(b);
        }
        default:
            break;
        }
        Variant a = l->eval(row);
        Variant b = r->eval(row);
        switch (op) {
        case BinOp::Add: return add(a, b);
        case BinOp::Sub: return subtract(a, b);
        case BinOp::Mul: return multiply(a, b);
        case BinOp::Div: return divide(a, b);
        case BinOp::IntDiv: return intDivide(a, b);
        case BinOp::Mod: return modulo(a, b);
        case BinOp::Pow: return power(a, b);
        case BinOp::Concat: return concat(a, b);
        default: return compareOp(cmp, a, b);
        }
    }
};

struct LikeNode : Node {
    NodePtr value, pattern;
    std::shared_ptr<const LikePattern> fixed;  // a literal pattern, compiled once
    bool negated;
    LikeNode(NodePtr v, NodePtr p, std::shared_ptr<const LikePattern> f, bool n)
        : value(std::move(v)), pattern(std::move(p)), fixed(std::move(f)), negated(n) {}
    Variant eval(const RowView& row) const override {
        Variant x = value->eval(row);
        if (isNullish(x)) return vb::Null{};
        if (fixed) {
            if (auto s = std::get_if<std::string>(&x)) return fixed->matches(*s) != negated;
            return fixed->matches(text(x)) != negated;
        }
        Variant p = pattern->eval(row);
        if (isNullish(p)) return vb::Null{};
        return LikePattern(text(p)).matches(text(x)) != negated;
    }
};

struct IsNullNode : Node {
    NodePtr x;
    bool negated;
    IsNullNode(NodePtr n, bool neg) : x(std::move(n)), negated(neg) {}
    Variant eval(const RowView& row) const override { return isNullish(x->eval(row)) != negated; }
};

struct BetweenNode : Node {
    NodePtr v, lo, hi;
    bool negated;
    BetweenNode(NodePtr a, NodePtr b, NodePtr c, bool n) : v(std::move(a)), lo(std::move(b)), hi(std::move(c)), negated(n) {}
    Variant eval(const RowView& row) const override {
        Variant x = v->eval(row), a = lo->eval(row), z = hi->eval(row);
        if (isNullish(x) || isNullish(a) || isNullish(z)) return vb::Null{};
        return (compare(x, a) >= 0 && compare(x, z) <= 0) != negated;
    }
};

struct InNode : Node {
    NodePtr v;
    std::vector<NodePtr> items;
    bool negated;
    Variant eval(const RowView& row) const override {
        Variant x = v->eval(row);
        if (isNullish(x)) return vb::Null{};
        bool sawNull = false;
        for (const auto& it : items) {
            Variant y = it->eval(row);
            if (isNullish(y)) sawNull = true;
            else if (isTrue(compareOp("=", x, y))) return !negated;
        }
        if (sawNull) return vb::Null{};
        return negated;
    }
};

struct CallNode : Node {
    Function fn;
    std::vector<NodePtr> args;
    Variant eval(const RowView& row) const override {
        Variant a[4];
        std::vector<Variant> many;
        Variant* p = a;
        if (args.size() > 4) {
            many.resize(args.size());
            p = many.data();
        }
        for (size_t i = 0; i < args.size(); ++i) p[i] = args[i]->eval(row);
        return fn(p, args.size());
    }
};

struct IifNode : Node {
    NodePtr c, t, f;
    Variant eval(const RowView& row) const override { return isTrue(c->eval(row)) ? t->eval(row) : f->eval(row); }
};

struct NullNode : Node {
    Variant eval(const RowView&) const override { return vb::Null{}; }
};

BinOp binOp(const std::string& op) {
    if (op == "+") return BinOp::Add;
    if (op == "-") return BinOp::Sub;
    if (op == "*") return BinOp::Mul;
    if (op == "/") return BinOp::Div;
    if (op == "\\") return BinOp::IntDiv;
    if (op == "mod") return BinOp::Mod;
    if (op == "^") return BinOp::Pow;
    if (op == "&") return BinOp::Concat;
    if (op == "and") return BinOp::And;
    if (op == "or") return BinOp::Or;
    if (op == "xor") return BinOp::Xor;
    return BinOp::Compare;
}

}  // namespace

int plainColumn(const Node& n) {
    auto* c = dynamic_cast<const ColumnNode*>(&n);
    return c ? static_cast<int>(c->column) : -1;
}

bool likeOnColumn(const Node& n, int& column, const LikePattern*& pattern, bool& negated) {
    auto* like = dynamic_cast<const LikeNode*>(&n);
    if (!like || !like->fixed) return false;
    column = plainColumn(*like->value);
    if (column < 0) return false;
    pattern = like->fixed.get();
    negated = like->negated;
    return true;
}

Variant evaluate(const Node& n, const RowView& row) {
    return jetErrors([&] { return n.eval(row); });
}

bool test(const Node& n, const RowView& row) {
    return jetErrors([&] { return isTrue(n.eval(row)); });
}

Binder::Binder(std::vector<std::string> columns, std::string table, std::string alias)
    : columns_(std::move(columns)), table_(foldName(table)), alias_(foldName(alias)) {
    folded_.reserve(columns_.size());
    for (const auto& c : columns_) folded_.push_back(foldName(c));
}

int Binder::resolve(const Expr& c) const {
    if (!c.qualifier.empty()) {
        std::string q = foldName(c.qualifier);
        if (q != table_ && (alias_.empty() || q != alias_)) return -1;
    }
    std::string n = foldName(c.name);
    auto it = std::find(folded_.begin(), folded_.end(), n);
    return it == folded_.end() ? -1 : static_cast<int>(it - folded_.begin());
}

void Binder::check() const {
    if (!unknown_.empty()) {
        if (unknownNumber_ != err::TooFewParameters)
            fail(unknownNumber_, "The Microsoft Jet database engine does not recognize '" + unknown_.front() +
                                     "' as a valid field name or expression.");
        fail(err::TooFewParameters, "Too few parameters. Expected " + std::to_string(unknown_.size()) + ".");
    }
    if (!aggregateError_.empty())
        fail(err::NotPartOfAggregate, "You tried to execute a query that does not include the specified expression '" +
                                          aggregateError_ + "' as part of an aggregate function.");
}

NodePtr Binder::compile(const Expr& e, std::vector<bool>& used, Mode mode) {
    switch (e.kind) {
    case Expr::Kind::Literal:
        return std::make_shared<LiteralNode>(e.value);
    case Expr::Kind::Column: {
        int i = resolve(e);
        if (i < 0) {
            if (e.qualifier.empty()) {
                std::string n = foldName(e.name);
                for (const auto& [alias, expr] : aliases_) {
                    if (alias != n) continue;
                    auto saved = std::move(aliases_);
                    aliases_.clear();  // an alias doesn't name itself
                    try {
                        NodePtr r = compile(*expr, used, mode);
                        aliases_ = std::move(saved);
                        return r;
                    } catch (...) {
                        aliases_ = std::move(saved);
                        throw;
                    }
                }
            }
            std::string name = (e.qualifier.empty() ? "" : foldName(e.qualifier) + ".") + foldName(e.name);
            if (std::find(unknown_.begin(), unknown_.end(), name) == unknown_.end()) unknown_.push_back(name);
            return std::make_shared<NullNode>();
        }
        if (mode == Mode::Aggregate) {
            if (aggregateError_.empty()) aggregateError_ = e.name;
            return std::make_shared<NullNode>();
        }
        if (used.size() < columns_.size()) used.resize(columns_.size());
        used[i] = true;
        return std::make_shared<ColumnNode>(static_cast<size_t>(i));
    }
    case Expr::Kind::Unary: {
        NodePtr x = compile(*e.args[0], used, mode);
        return std::make_shared<UnaryNode>(e.op == "-" ? '-' : e.op == "+" ? '+' : '!', x);
    }
    case Expr::Kind::Binary: {
        NodePtr l = compile(*e.args[0], used, mode);
        NodePtr r = compile(*e.args[1], used, mode);
        return std::make_shared<BinaryNode>(binOp(e.op), e.op, l, r);
    }
    case Expr::Kind::Like: {
        NodePtr v = compile(*e.args[0], used, mode);
        const Expr& p = *e.args[1];
        std::shared_ptr<const LikePattern> fixed;
        if (p.kind == Expr::Kind::Literal && !isNullish(p.value))
            fixed = std::make_shared<const LikePattern>(jetErrors([&] { return text(p.value); }));
        NodePtr pn = compile(p, used, mode);
        return std::make_shared<LikeNode>(v, pn, fixed, e.negated);
    }
    case Expr::Kind::IsNull:
        return std::make_shared<IsNullNode>(compile(*e.args[0], used, mode), e.negated);
    case Expr::Kind::Between: {
        NodePtr v = compile(*e.args[0], used, mode);
        NodePtr lo = compile(*e.args[1], used, mode);
        NodePtr hi = compile(*e.args[2], used, mode);
        return std::make_shared<BetweenNode>(v, lo, hi, e.negated);
    }
    case Expr::Kind::In: {
        auto n = std::make_shared<InNode>();
        n->v = compile(*e.args[0], used, mode);
        for (size_t i = 1; i < e.args.size(); ++i) n->items.push_back(compile(*e.args[i], used, mode));
        n->negated = e.negated;
        return n;
    }
    case Expr::Kind::Call:
        return compileCall(e, used, mode);
    case Expr::Kind::Star:
        break;
    }
    fail(err::SyntaxError, "Syntax error (missing operator) in query expression '*'.");
}

NodePtr Binder::compileCall(const Expr& e, std::vector<bool>& used, Mode mode) {
    if (isAggregateFunction(e.op)) {
        if (mode != Mode::Aggregate)
            fail(err::AggregateNotAllowed, "Cannot have aggregate function in expression (" + e.op + ").");
        const Expr& arg = *e.args[0];
        Aggregate a{e.op, arg.kind == Expr::Kind::Star ? nullptr : compile(arg, used, Mode::Row)};
        size_t slot = aggregates_.size();
        aggregates_.push_back(std::move(a));
        return std::make_shared<ColumnNode>(slot);  // reads the aggregate's result
    }
    std::vector<NodePtr> args;
    for (const auto& a : e.args) args.push_back(compile(*a, used, mode));
    if (e.op == "iif") {
        auto n = std::make_shared<IifNode>();
        n->c = args[0];
        n->t = args[1];
        n->f = args[2];
        return n;
    }
    auto n = std::make_shared<CallNode>();
    n->fn = scalarFunction(e.op);
    n->args = std::move(args);
    return n;
}

std::vector<size_t> usedColumns(const std::vector<bool>& used) {
    std::vector<size_t> out;
    for (size_t i = 0; i < used.size(); ++i)
        if (used[i]) out.push_back(i);
    return out;
}

}  // namespace db::sql
