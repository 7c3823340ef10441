package kerova.core.db.sql;

import java.util.ArrayList;
import java.util.BitSet;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import kerova.core.db.DaoException;

/** A parsed SELECT on one table. */
public final class SelectStatement implements Statement {

    /**
     * One entry of the select list: an expression with an optional alias, or {@code *} (for a
     * qualified {@code t.*} the qualifier is kept in {@code alias}). {@code start} is its offset in the text.
     */
    public record Item(Expr expr, String alias, int start, boolean star) {
    }

    /** One ORDER BY entry. */
    public record Order(Expr expr, boolean descending, String text) {
    }

    private final String text;
    private final boolean distinct;
    private final List<Item> items;
    private final String tableName;
    private final String tableAlias;
    private final Expr where;
    private final List<Order> order;

    SelectStatement(String text, boolean distinct, List<Item> items, String tableName, String tableAlias,
                    Expr where, List<Order> order) {
        this.text = text;
        this.distinct = distinct;
        this.items = List.copyOf(items);
        this.tableName = tableName;
        this.tableAlias = tableAlias;
        this.where = where;
        this.order = List.copyOf(order);
    }

    @Override
    public String tableName() {
        return tableName;
    }

    public String text() {
        return text;
    }

    public boolean isDistinct() {
        return distinct;
    }

    public List<Item> items() {
        return items;
    }

    public Expr where() {
        return where;
    }

    public List<Order> order() {
        return order;
    }

    /**
     * Resolves the statement against the table's columns (in table order). An unknown column raises
     * 3061 ("Too few parameters. Expected n."), a bare column beside an aggregate 3122, an ORDER BY
     * entry that isn't in a DISTINCT list 3093.
     */
    public BoundSelect bind(List<String> tableColumns) {
        Binder b = new Binder(tableColumns, tableName, tableAlias);
        boolean star = items.get(0).star();
        if (star && items.get(0).alias() != null) {
            // t.* must name the table
            Expr.Column q = new Expr.Column(items.get(0).alias(), tableColumns.isEmpty() ? "" : tableColumns.get(0));
            b.compile(q, new BitSet(), Binder.Mode.ROW);
        }
        boolean aggregate = false;
        for (Item it : items) {
            if (!it.star() && Expr.hasAggregate(it.expr())) {
                aggregate = true;
            }
        }
        boolean snapshot = distinct || aggregate || !star;

        BitSet needed = new BitSet();
        Eval whereEval = where == null ? null : b.compile(where, needed, Binder.Mode.ROW);

        // the select list
        BitSet read = new BitSet();
        List<String> names = new ArrayList<>();
        List<Eval> itemEvals = new ArrayList<>();
        Map<String, Expr> aliases = new HashMap<>();
        int tableWidth = tableColumns.size();
        for (int pos = 0; pos < items.size(); pos++) {
            Item it = items.get(pos);
            if (it.star()) {
                names.addAll(tableColumns);
                continue;
            }
            Binder.Mode mode = aggregate ? Binder.Mode.AGGREGATE : Binder.Mode.ROW;
            itemEvals.add(b.compile(it.expr(), read, mode));
            names.add(outputName(it, pos, b));
            if (it.alias() != null) {
                aliases.putIfAbsent(Binder.lower(it.alias()), it.expr());
            }
        }
        if (aggregate && star) {
            b.compile(new Expr.Column(null, tableColumns.get(0)), read, Binder.Mode.AGGREGATE);
        }

        // ORDER BY: table columns first, then the list's aliases
        b.setAliases(aliases);
        Eval[] orderEvals = new Eval[order.size()];
        boolean[] desc = new boolean[order.size()];
        for (int k = 0; k < order.size(); k++) {
            Order o = order.get(k);
            orderEvals[k] = b.compile(o.expr(), aggregate ? read : needed,
                    aggregate ? Binder.Mode.AGGREGATE : Binder.Mode.ROW);
            desc[k] = o.descending();
        }
        b.check();

        int[] distinctOrder = null;
        if (distinct && !aggregate && !order.isEmpty()) {
            distinctOrder = new int[order.size()];
            for (int k = 0; k < order.size(); k++) {
                distinctOrder[k] = outputIndexOf(order.get(k), b, star, tableWidth);
            }
        }
        read.or(needed);
        if (star) {
            read.set(0, tableWidth);
        }
        return new BoundSelect(snapshot, distinct, aggregate, star, tableWidth, List.copyOf(names),
                Binder.indexes(needed), Binder.indexes(read), whereEval, itemEvals.toArray(new Eval[0]),
                orderEvals, desc, distinctOrder, b.aggregates());
    }

    /** Jet's column name: the alias; the column's own name; else Expr1000 + the entry's position. */
    private static String outputName(Item it, int pos, Binder b) {
        if (it.alias() != null) {
            return it.alias();
        }
        if (it.expr() instanceof Expr.Column c) {
            int i = b.resolve(c);
            return i >= 0 ? b.columns().get(i) : c.name();
        }
        return "Expr" + (1000 + pos);
    }

    /** For DISTINCT: the output column an ORDER BY entry stands for; Jet's 3093 if none. */
    private int outputIndexOf(Order o, Binder b, boolean star, int tableWidth) {
        int out = 0;
        for (Item it : items) {
            if (it.star()) {
                if (o.expr() instanceof Expr.Column c && b.resolve(c) >= 0) {
                    return b.resolve(c);
                }
                out += tableWidth;
                continue;
            }
            if (it.expr().equals(o.expr())) {
                return out;
            }
            if (o.expr() instanceof Expr.Column c) {
                if (it.expr() instanceof Expr.Column ic && b.resolve(ic) >= 0 && b.resolve(ic) == b.resolve(c)) {
                    return out;
                }
                if (c.qualifier() == null && it.alias() != null && Binder.lower(it.alias()).equals(Binder.lower(c.name()))) {
                    return out;
                }
            }
            out++;
        }
        throw new DaoException(Sql.ORDER_BY_CONFLICTS_WITH_DISTINCT,
                "ORDER BY clause (" + o.text() + ") conflicts with DISTINCT.");
    }

    @Override
    public String toString() {
        return text;
    }
}
