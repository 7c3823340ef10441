// Running statements on the engine: SELECT as a dynaset (ordered row ids) or a snapshot (computed
// rows), Find filters, and UPDATE in one batch.
//
// Sorting computes each row's keys once (texts as General sort order keys), then sorts row
// positions by the keys with the row id as the last key: the order an index with that column
// gives, so that reading an index and sorting agree.
#include <algorithm>
#include <cstring>
#include <numeric>
#include <optional>

#include "db/error.h"
#include "db/sql/eval.h"
#include "db/sql/like.h"
#include "db/sql/ops.h"
#include "db/sql/sql.h"
#include "db/values.h"
#include "jet/indexkey.h"
#include "vb/conv.h"

namespace db::sql {

using vb::Variant;

struct SelectPlan {
    bool snapshot = false, distinct = false, aggregate = false, star = false;
    size_t tableWidth = 0;
    std::vector<std::string> columns;
    std::vector<size_t> needed;  // WHERE and ORDER BY
    std::vector<size_t> read;    // everything the statement reads
    NodePtr where;
    std::vector<NodePtr> items;  // the list without '*'
    std::vector<NodePtr> order;
    std::vector<bool> descending;
    std::vector<size_t> distinctOrder;  // DISTINCT with ORDER BY: the output column of each entry
    std::vector<Binder::Aggregate> aggregates;
    int orderColumn = -1;  // ORDER BY one plain table column: its index
};

struct FilterPlan {
    NodePtr condition;
    std::vector<size_t> used;
};

namespace {

// A table row from the engine: the whole row, or only the columns a scan read (`pos` gives the
// place of table column c in the row read, -1 for a column not read).
struct TableRow : RowView {
    const jet::Row* row = nullptr;
    const std::vector<int>* pos = nullptr;
    Variant get(size_t c) const override {
        if (!row) return vb::Null{};
        if (pos) {
            if (c >= pos->size() || (*pos)[c] < 0) return vb::Null{};
            return toVariant((*row)[static_cast<size_t>((*pos)[c])]);
        }
        return c < row->size() ? toVariant((*row)[c]) : Variant(vb::Null{});
    }
};

// The table columns one scan reads, and where each lands in the row it hands over.
struct ColumnSet {
    std::vector<size_t> list;
    std::vector<int> pos;
    ColumnSet(const std::vector<size_t>& columns, size_t width) : list(columns), pos(width, -1) {
        for (size_t i = 0; i < list.size(); ++i) pos[list[i]] = static_cast<int>(i);
    }
};

struct ReaderRow : RowView {
    const ColumnReader& reader;
    explicit ReaderRow(const ColumnReader& r) : reader(r) {}
    Variant get(size_t c) const override { return reader(c); }
};

std::vector<std::string> columnNames(const jet::Table& t) {
    std::vector<std::string> out;
    for (const auto& c : t.def().columns) out.push_back(c.name);
    return out;
}

void scanRows(const jet::Table& t, const std::function<void(jet::RowId, const jet::Row&)>& f) {
    translated([&] {
        t.scan([&](jet::RowId id, const jet::Row& r) {
            f(id, r);
            return true;
        });
    });
}

// Only the columns of `cols`: `row` is pointed at each row read, its map at cols.
void scanRows(const jet::Table& t, const ColumnSet& cols, TableRow& row, const std::function<void(jet::RowId)>& f) {
    row.pos = &cols.pos;
    translated([&] {
        t.scanColumns(cols.list, [&](jet::RowId id, const jet::Row& r) {
            row.row = &r;
            f(id);
            return true;
        });
    });
}

// Keys of many rows in one flat array: row i's keys at [i * width, (i + 1) * width).
struct KeyTable {
    size_t width = 0;
    std::vector<SortKey> keys;
    std::vector<jet::RowId> ids;

    // Positions 0..n-1 sorted by the keys (descending ones reversed), then by row id.
    std::vector<size_t> order(const std::vector<bool>& desc) const {
        std::vector<size_t> idx(ids.size());
        std::iota(idx.begin(), idx.end(), size_t{0});
        std::stable_sort(idx.begin(), idx.end(), [&](size_t a, size_t b) {
            const SortKey* ka = &keys[a * width];
            const SortKey* kb = &keys[b * width];
            for (size_t k = 0; k < width; ++k) {
                int c = compareSortKeys(ka[k], kb[k]);
                if (c != 0) return desc[k] ? c > 0 : c < 0;
            }
            return ids[a] < ids[b];
        });
        return idx;
    }
};

std::string outputName(const SelectItem& it, size_t pos, const Binder& b) {
    if (!it.alias.empty()) return it.alias;
    if (it.expr->kind == Expr::Kind::Column) {
        int i = b.resolve(*it.expr);
        return i >= 0 ? b.columns()[i] : it.expr->name;
    }
    return "Expr" + std::to_string(1000 + pos);
}

// For DISTINCT: the output column an ORDER BY entry stands for; 3093 if none.
size_t outputIndexOf(const OrderItem& o, const StatementData& st, const Binder& b, size_t tableWidth) {
    size_t out = 0;
    const Expr& oe = *o.expr;
    for (const auto& it : st.items) {
        if (it.star) {
            if (oe.kind == Expr::Kind::Column && b.resolve(oe) >= 0) return static_cast<size_t>(b.resolve(oe));
            out += tableWidth;
            continue;
        }
        if (*it.expr == oe) return out;
        if (oe.kind == Expr::Kind::Column) {
            if (it.expr->kind == Expr::Kind::Column && b.resolve(*it.expr) >= 0 && b.resolve(*it.expr) == b.resolve(oe))
                return out;
            if (oe.qualifier.empty() && !it.alias.empty() && sameName(it.alias, oe.name)) return out;
        }
        ++out;
    }
    fail(err::OrderByConflictsWithDistinct, "ORDER BY clause (" + o.text + ") conflicts with DISTINCT.");
}

// An index whose only key column is `column`, in the given direction, that holds every row.
const jet::LogicalIndex* singleColumnIndex(const jet::Table& t, size_t column, bool descending) {
    const jet::TableDef& def = t.def();
    const jet::Column& col = def.columns[column];
    switch (col.type) {
    case jet::ColType::Binary:
    case jet::ColType::Ole:
    case jet::ColType::Memo:
    case jet::ColType::Guid:
        return nullptr;
    case jet::ColType::Text:
        if (!t.database().generalSortOrder() || col.sortOrder != jet::kGeneralSortOrder) return nullptr;
        break;
    default:
        break;
    }
    for (const auto& li : def.logicalIndexes) {
        if (li.kind == 0x02) continue;  // a foreign key reference is not an index of its own
        for (const auto& ri : def.realIndexes) {
            if (ri.number != li.realIndex) continue;
            if (ri.columns.size() == 1 && ri.columns[0].columnNumber == col.number &&
                ri.columns[0].ascending == !descending && !ri.ignoreNulls())
                return &li;
        }
    }
    return nullptr;
}

// ORDER BY on plain columns of number, date and Yes/No types only (the trip list's date and
// departure time): each value becomes one 64-bit word that orders as sortKey/compareSortKeys
// order that column's values (Null 0 below every value; descending columns inverted), and
// entries of words and scan position sort without Variants. Ties keep the scan's order, which is
// row id order, as KeyTable::order does. Nothing when the shape does not fit (or a NaN turns up).
template <size_t W>
struct NumberEntry {
    uint64_t k[W];
    uint32_t at;
    bool operator<(const NumberEntry& o) const {
        for (size_t j = 0; j < W; ++j)
            if (k[j] != o.k[j]) return k[j] < o.k[j];
        return at < o.at;
    }
};

// The word of a non-null value: order-preserving, never 0 (false when there is none).
bool numberWord(const jet::Value& v, uint64_t& out) {
    auto ofInt = [&](int64_t i) { out = static_cast<uint64_t>(i) ^ (uint64_t(1) << 63); };
    auto ofDouble = [&](double d) {
        if (d != d) return false;  // NaN: no order
        if (d == 0) d = 0.0;       // -0 equals 0
        uint64_t b;
        std::memcpy(&b, &d, 8);
        out = (b >> 63) ? ~b : b | (uint64_t(1) << 63);
        return true;
    };
    switch (v.index()) {
    case 1: ofInt(std::get<bool>(v) ? -1 : 0); return true;
    case 2: ofInt(std::get<uint8_t>(v)); return true;
    case 3: ofInt(std::get<int16_t>(v)); return true;
    case 4: ofInt(std::get<int32_t>(v)); return true;
    case 5: {
        int64_t c = std::get<jet::Currency>(v).scaled;
        if (c == INT64_MIN) return false;
        ofInt(c);
        return true;
    }
    case 6: return ofDouble(std::get<float>(v));
    case 7: return ofDouble(std::get<double>(v));
    case 8: return ofDouble(std::get<jet::DateTime>(v).days);
    default: return false;
    }
}

template <size_t W>
std::optional<std::vector<jet::RowId>> sortByWords(const jet::Table& table, const SelectPlan& p,
                                                   const std::vector<int>& places, const ColumnSet& cols, TableRow& row) {
    std::vector<NumberEntry<W>> entries;
    std::vector<jet::RowId> ids;
    entries.reserve(table.rowCount());
    ids.reserve(table.rowCount());
    bool ok = true;
    scanRows(table, cols, row, [&](jet::RowId id) {
        if (!ok || (p.where && !test(*p.where, row))) return;
        NumberEntry<W> e;
        for (size_t j = 0; j < W; ++j) {
            const jet::Value& v = (*row.row)[static_cast<size_t>(places[j])];
            uint64_t w = 0;
            if (v.index() != 0 && !numberWord(v, w)) ok = false;
            e.k[j] = p.descending[j] ? ~w : w;
        }
        e.at = static_cast<uint32_t>(ids.size());
        entries.push_back(e);
        ids.push_back(id);
    });
    if (!ok) return std::nullopt;
    std::sort(entries.begin(), entries.end());
    std::vector<jet::RowId> out;
    out.reserve(entries.size());
    for (const auto& e : entries) out.push_back(ids[e.at]);
    return out;
}

std::optional<std::vector<jet::RowId>> numberOrder(const jet::Table& table, const SelectPlan& p, const ColumnSet& cols,
                                                   TableRow& row) {
    if (p.order.empty() || p.order.size() > 3) return std::nullopt;
    std::vector<int> places;
    for (const auto& o : p.order) {
        int c = plainColumn(*o);
        if (c < 0 || cols.pos[static_cast<size_t>(c)] < 0) return std::nullopt;
        switch (table.def().columns[static_cast<size_t>(c)].type) {
        case jet::ColType::Boolean:
        case jet::ColType::Byte:
        case jet::ColType::Integer:
        case jet::ColType::Long:
        case jet::ColType::Currency:
        case jet::ColType::Single:
        case jet::ColType::Double:
        case jet::ColType::DateTime:
            break;
        default:
            return std::nullopt;
        }
        places.push_back(cols.pos[static_cast<size_t>(c)]);
    }
    switch (places.size()) {
    case 1: return sortByWords<1>(table, p, places, cols, row);
    case 2: return sortByWords<2>(table, p, places, cols, row);
    default: return sortByWords<3>(table, p, places, cols, row);
    }
}

}  // namespace

// ---- Select ----

Select::Select(std::shared_ptr<const Statement> statement, const jet::Table& table)
    : statement_(std::move(statement)), plan_(std::make_unique<SelectPlan>()) {
    const StatementData& st = statement_->data();
    if (st.kind != Statement::Kind::Select)
        fail(err::InvalidStatement,
             "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'.");
    SelectPlan& p = *plan_;
    std::vector<std::string> cols = columnNames(table);
    Binder b(cols, st.table, st.tableAlias);
    p.star = st.items[0].star;
    p.tableWidth = cols.size();
    if (p.star && !st.items[0].starQualifier.empty()) {
        // t.* must name the table
        Expr q;
        q.kind = Expr::Kind::Column;
        q.qualifier = st.items[0].starQualifier;
        q.name = cols.empty() ? std::string() : cols[0];
        std::vector<bool> ignored;
        b.compile(q, ignored, Binder::Mode::Row);
    }
    for (const auto& it : st.items)
        if (!it.star && hasAggregate(*it.expr)) p.aggregate = true;
    p.distinct = st.distinct;
    p.snapshot = p.distinct || p.aggregate || !p.star;

    std::vector<bool> needed, read;
    if (st.where) p.where = b.compile(*st.where, needed, Binder::Mode::Row);

    std::vector<std::pair<std::string, ExprPtr>> aliases;
    Binder::Mode mode = p.aggregate ? Binder::Mode::Aggregate : Binder::Mode::Row;
    for (size_t pos = 0; pos < st.items.size(); ++pos) {
        const SelectItem& it = st.items[pos];
        if (it.star) {
            p.columns.insert(p.columns.end(), cols.begin(), cols.end());
            continue;
        }
        p.items.push_back(b.compile(*it.expr, read, mode));
        p.columns.push_back(outputName(it, pos, b));
        if (!it.alias.empty()) aliases.emplace_back(foldName(it.alias), it.expr);
    }
    if (p.aggregate && p.star && !cols.empty()) {
        Expr first;
        first.kind = Expr::Kind::Column;
        first.name = cols[0];
        b.compile(first, read, Binder::Mode::Aggregate);
    }

    // ORDER BY: table columns first, then the list's aliases
    b.setAliases(std::move(aliases));
    for (const auto& o : st.order) {
        p.order.push_back(b.compile(*o.expr, p.aggregate ? read : needed, mode));
        p.descending.push_back(o.descending);
    }
    b.check();
    if (p.distinct && !p.aggregate)
        for (const auto& o : st.order) p.distinctOrder.push_back(outputIndexOf(o, st, b, p.tableWidth));
    p.aggregates = b.aggregates();

    p.needed = usedColumns(needed);
    if (read.size() < needed.size()) read.resize(needed.size());
    for (size_t i = 0; i < needed.size(); ++i)
        if (needed[i]) read[i] = true;
    if (p.star) read.assign(cols.size(), true);
    p.read = usedColumns(read);
    if (p.star) p.tableWidth = cols.size();
    else p.tableWidth = 0;

    if (!p.snapshot && st.order.size() == 1 && st.order[0].expr->kind == Expr::Kind::Column) {
        int c = b.resolve(*st.order[0].expr);
        if (c >= 0) p.orderColumn = c;
    }
}

Select::~Select() = default;
Select::Select(Select&&) noexcept = default;
Select& Select::operator=(Select&&) noexcept = default;

bool Select::isSnapshot() const { return plan_->snapshot; }
const std::vector<std::string>& Select::columns() const { return plan_->columns; }
size_t Select::tableWidth() const { return plan_->snapshot ? 0 : plan_->tableWidth; }

std::vector<jet::RowId> Select::rowIds(const jet::Table& table) const {
    const SelectPlan& p = *plan_;
    if (p.snapshot) fail(3251, "Operation is not supported for this type of object.");
    ColumnSet cols(p.needed, table.def().columns.size());
    TableRow row;

    // One indexed column: the index's order, filtered by WHERE.
    if (p.orderColumn >= 0) {
        if (const jet::LogicalIndex* li = singleColumnIndex(table, static_cast<size_t>(p.orderColumn), p.descending[0])) {
            std::vector<jet::RowId> ordered = translated([&] { return table.indexOrder(li->name); });
            if (!p.where) return ordered;
            std::vector<jet::RowId> keep;
            scanRows(table, cols, row, [&](jet::RowId id) {
                if (test(*p.where, row)) keep.push_back(id);
            });
            std::sort(keep.begin(), keep.end());
            std::vector<jet::RowId> out;
            out.reserve(keep.size());
            for (const auto& id : ordered)
                if (std::binary_search(keep.begin(), keep.end(), id)) out.push_back(id);
            return out;
        }
    }

    if (auto fast = numberOrder(table, p, cols, row)) return std::move(*fast);

    KeyTable kt;
    kt.width = p.order.size();
    scanRows(table, cols, row, [&](jet::RowId id) {
        if (p.where && !test(*p.where, row)) return;
        kt.ids.push_back(id);
        for (const auto& o : p.order) kt.keys.push_back(sortKey(evaluate(*o, row)));
    });
    if (p.order.empty()) return kt.ids;
    std::vector<jet::RowId> out;
    out.reserve(kt.ids.size());
    for (size_t i : kt.order(p.descending)) out.push_back(kt.ids[i]);
    return out;
}

Variant Select::value(size_t column, const ColumnReader& tableRow) const {
    const SelectPlan& p = *plan_;
    if (p.snapshot) fail(3251, "Operation is not supported for this type of object.");
    if (column < p.tableWidth) return tableRow(column);
    size_t extra = column - p.tableWidth;
    if (extra >= p.items.size()) fail(3265, "Item not found in this collection.");
    ReaderRow r(tableRow);
    return evaluate(*p.items[extra], r);
}

namespace {

// Jet's aggregates: Null values are skipped; sum/avg/min/max of no values are Null, count 0.
struct Accumulator {
    enum Fn { Count, Sum, Avg, Min, Max, First, Last, Other } fn = Other;
    int64_t count = 0;
    bool seen = false, allCurrency = true;
    double dsum = 0;
    __int128 csum = 0;
    Variant best = vb::Null{}, first = vb::Null{}, last = vb::Null{};
    bool any = false;

    explicit Accumulator(const std::string& function)
        : fn(function == "count" ? Count
             : function == "sum" ? Sum
             : function == "avg" ? Avg
             : function == "min" ? Min
             : function == "max" ? Max
             : function == "first" ? First
             : function == "last" ? Last
                                  : Other) {}

    void add(const Variant& v, bool star) {
        if (fn == First || fn == Last) {
            if (!any) {
                first = v;
                any = true;
            }
            last = v;
        }
        if (star) {
            ++count;
            return;
        }
        if (isNullish(v)) return;
        ++count;
        if (fn == Sum || fn == Avg) {
            Variant n = number(v);
            if (auto c = std::get_if<vb::Currency>(&n); c && allCurrency) csum += c->scaled;
            else allCurrency = false;
            dsum += vb::CDbl(n);
            seen = true;
        } else if (fn == Min) {
            if (isNullish(best) || compare(v, best) < 0) best = v;
        } else if (fn == Max) {
            if (isNullish(best) || compare(v, best) > 0) best = v;
        }
    }

    // A column value straight from the engine: whole numbers and Doubles of count, sum and avg
    // without a Variant (the same arithmetic as add); everything else through add.
    void addValue(const jet::Value& v) {
        if (fn == Count || fn == Sum || fn == Avg) {
            double d;
            switch (v.index()) {
            case 0: return;  // Null: skipped
            case 2: d = std::get<uint8_t>(v); break;
            case 3: d = std::get<int16_t>(v); break;
            case 4: d = std::get<int32_t>(v); break;
            case 7: d = std::get<double>(v); break;
            default: add(toVariant(v), false); return;
            }
            ++count;
            if (fn != Count) {
                allCurrency = false;
                dsum += d;
                seen = true;
            }
            return;
        }
        add(toVariant(v), false);
    }

    Variant result() const {
        switch (fn) {
        case Count:
            if (count <= INT32_MAX) return static_cast<int32_t>(count);
            return static_cast<double>(count);
        case Sum:
            if (!seen) return vb::Null{};
            if (allCurrency) {
                if (csum > INT64_MAX || csum < INT64_MIN) fail(err::Overflow, "Overflow");
                return vb::Currency{static_cast<int64_t>(csum)};
            }
            return dsum;
        case Avg:
            if (!seen) return vb::Null{};
            if (allCurrency) {
                __int128 q = csum / count, r = csum % count;
                if (2 * r > count || (2 * r == count && (q & 1))) ++q;
                else if (-2 * r > count || (-2 * r == count && (q & 1))) --q;
                return vb::Currency{static_cast<int64_t>(q)};
            }
            return dsum / static_cast<double>(count);
        case Min:
        case Max: return best;
        case First: return first;
        case Last: return last;
        case Other: break;
        }
        return vb::Null{};
    }
};

}  // namespace

Snapshot Select::snapshot(const jet::Table& table) const {
    const SelectPlan& p = *plan_;
    Snapshot out;
    out.columns = p.columns;
    TableRow row;

    ColumnSet cols(p.read, table.def().columns.size());
    if (p.aggregate) {
        std::vector<Accumulator> acc;
        std::vector<int> direct;  // an aggregate of a plain column: its place in the row read
        for (const auto& a : p.aggregates) {
            acc.emplace_back(a.function);
            int c = a.argument ? plainColumn(*a.argument) : -1;
            direct.push_back(c >= 0 ? cols.pos[static_cast<size_t>(c)] : -1);
        }
        scanRows(table, cols, row, [&](jet::RowId) {
            if (p.where && !test(*p.where, row)) return;
            for (size_t i = 0; i < acc.size(); ++i) {
                if (direct[i] >= 0) {
                    acc[i].addValue((*row.row)[static_cast<size_t>(direct[i])]);
                    continue;
                }
                const NodePtr& arg = p.aggregates[i].argument;
                acc[i].add(arg ? evaluate(*arg, row) : Variant(true), !arg);
            }
        });
        std::vector<Variant> slots;
        for (const auto& a : acc) slots.push_back(jetErrors([&] { return a.result(); }));
        VectorRow sr(slots);
        std::vector<Variant> values;
        for (const auto& it : p.items) values.push_back(evaluate(*it, sr));
        out.rows.push_back(std::move(values));
        return out;
    }

    bool ordered = !p.order.empty() && !p.distinct;
    KeyTable kt;
    kt.width = ordered ? p.order.size() : 0;
    std::vector<std::vector<Variant>> rows;
    scanRows(table, cols, row, [&](jet::RowId id) {
        if (p.where && !test(*p.where, row)) return;
        std::vector<Variant> o;
        o.reserve(p.columns.size());
        if (p.star)
            for (size_t c = 0; c < p.tableWidth; ++c) o.push_back(row.get(c));
        for (const auto& it : p.items) o.push_back(evaluate(*it, row));
        rows.push_back(std::move(o));
        kt.ids.push_back(id);
        if (ordered)
            for (const auto& ord : p.order) kt.keys.push_back(sortKey(evaluate(*ord, row)));
    });

    if (ordered) {
        for (size_t i : kt.order(p.descending)) out.rows.push_back(std::move(rows[i]));
        return out;
    }
    if (!p.distinct) {
        out.rows = std::move(rows);
        return out;
    }

    // DISTINCT: rows equal in every column (texts in the sort order, so case ignored) are one; the
    // first met stays. Jet sorts to find duplicates: without ORDER BY the rows come ascending by
    // every column.
    size_t width = p.columns.size();
    KeyTable all;
    all.width = width;
    all.ids = kt.ids;
    for (const auto& r : rows)
        for (const auto& v : r) all.keys.push_back(sortKey(v));
    std::vector<size_t> byAll = all.order(std::vector<bool>(width, false));
    std::vector<bool> duplicate(rows.size(), false);
    for (size_t k = 1; k < byAll.size(); ++k) {
        const SortKey* a = &all.keys[byAll[k - 1] * width];
        const SortKey* b = &all.keys[byAll[k] * width];
        bool same = true;
        for (size_t c = 0; c < width && same; ++c) same = compareSortKeys(a[c], b[c]) == 0;
        // within a run of equal rows the order is by row id: keep the first
        if (same) duplicate[byAll[k]] = true;
    }
    if (p.distinctOrder.empty()) {
        for (size_t i : byAll)
            if (!duplicate[i]) out.rows.push_back(std::move(rows[i]));
        return out;
    }
    KeyTable chosen;
    chosen.width = p.distinctOrder.size();
    std::vector<size_t> survivors;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (duplicate[i]) continue;
        survivors.push_back(i);
        chosen.ids.push_back(kt.ids[i]);
        for (size_t c : p.distinctOrder) chosen.keys.push_back(all.keys[i * width + c]);
    }
    for (size_t k : chosen.order(p.descending)) out.rows.push_back(std::move(rows[survivors[k]]));
    return out;
}

// ---- Filter ----

Filter::Filter(std::string_view text, const std::vector<std::string>& columns) : plan_(std::make_unique<FilterPlan>()) {
    ExprPtr e = parseCondition(text);
    Binder b(columns, "", "");
    b.setUnknownNumber(err::UnknownName);
    std::vector<bool> used;
    plan_->condition = b.compile(*e, used, Binder::Mode::Row);
    b.check();
    plan_->used = usedColumns(used);
}

Filter::~Filter() = default;
Filter::Filter(Filter&&) noexcept = default;
Filter& Filter::operator=(Filter&&) noexcept = default;

const std::vector<size_t>& Filter::columnsUsed() const { return plan_->used; }

bool Filter::matches(const ColumnReader& row) const {
    ReaderRow r(row);
    return test(*plan_->condition, r);
}

bool Filter::matches(const std::vector<Variant>& row) const {
    VectorRow r(row);
    return test(*plan_->condition, r);
}

std::vector<jet::RowId> Filter::matchingRows(const jet::Table& table, const Select* select) const {
    std::vector<jet::RowId> out;
    TableRow row;
    size_t width = table.def().columns.size();
    ColumnReader reader = [&](size_t c) -> Variant {
        if (c < width) return row.get(c);
        if (!select) return vb::Null{};
        return select->value(c, [&](size_t t) { return row.get(t); });
    };
    const std::vector<size_t>& used = plan_->used;
    if (used.empty() || used.back() < width) {
        // only table columns: read just those
        ColumnSet cols(used, width);
        int column = -1;
        const LikePattern* pattern = nullptr;
        bool negated = false;
        if (likeOnColumn(*plan_->condition, column, pattern, negated) && used.size() == 1) {
            // [Text column] like "literal": matched on the engine's text, no Variant a row
            scanRows(table, cols, row, [&](jet::RowId id) {
                const jet::Value& v = (*row.row)[0];
                if (auto s = std::get_if<std::string>(&v)) {
                    if (pattern->matches(*s) != negated) out.push_back(id);
                } else if (v.index() != 0 && test(*plan_->condition, row)) {
                    out.push_back(id);
                }
            });
        } else {
            scanRows(table, cols, row, [&](jet::RowId id) {
                if (test(*plan_->condition, row)) out.push_back(id);
            });
        }
    } else {
        scanRows(table, [&](jet::RowId id, const jet::Row& r) {
            row.row = &r;
            if (matches(reader)) out.push_back(id);
        });
    }
    std::sort(out.begin(), out.end());
    return out;
}

// ---- UPDATE ----

size_t executeUpdate(const Statement& statement, jet::Table& table, const ToColumnValue& convert) {
    const StatementData& st = statement.data();
    if (st.kind != Statement::Kind::Update) fail(3065, "Cannot execute a select query.");
    std::vector<std::string> cols = columnNames(table);
    Binder b(cols, st.table, st.tableAlias);
    std::vector<bool> used;
    std::vector<int> targets;
    std::vector<NodePtr> values;
    for (const auto& a : st.sets) {
        b.compile(*a.target, used, Binder::Mode::Row);  // records an unknown target
        targets.push_back(b.resolve(*a.target));
        values.push_back(b.compile(*a.value, used, Binder::Mode::Row));
    }
    NodePtr where = st.where ? b.compile(*st.where, used, Binder::Mode::Row) : nullptr;
    b.check();
    for (int t : targets)
        if (table.def().columns[t].autoNumber()) fail(3164, "Field cannot be updated.");

    jet::Database& db = table.database();
    translated([&] { db.begin(); });
    try {
        // Under the write lock: compute and convert every new row before the first write.
        std::vector<std::pair<jet::RowId, jet::Row>> changes;
        TableRow row;
        scanRows(table, [&](jet::RowId id, const jet::Row& r) {
            row.row = &r;
            if (where && !test(*where, row)) return;
            jet::Row updated = r;
            std::vector<Variant> computed;
            for (const auto& v : values) computed.push_back(evaluate(*v, row));
            for (size_t i = 0; i < targets.size(); ++i)
                updated[targets[i]] = convert(table.def().columns[targets[i]], computed[i]);
            changes.emplace_back(id, std::move(updated));
        });
        translated([&] {
            for (auto& [id, r] : changes) table.update(id, std::move(r));
            db.commit();
        });
        return changes.size();
    } catch (...) {
        try {
            db.rollback();
        } catch (...) {
        }
        throw;
    }
}

}  // namespace db::sql
