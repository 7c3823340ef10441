package kerova.core.db.sql;

import java.util.ArrayList;
import java.util.BitSet;
import java.util.HashMap;
import java.util.LinkedHashSet;
import java.util.List;
import java.util.Locale;
import java.util.Map;
import java.util.Set;
import kerova.core.db.DaoException;

/**
 * Binds expressions to a table: resolves names to column indexes once (without regard to case, with
 * {@link Locale#ROOT}; accents count), and builds evaluators. Unknown names are collected and reported
 * together, as Jet does ("Too few parameters. Expected 2.").
 */
final class Binder {

    /** How aggregates are treated in the expression being compiled. */
    enum Mode {
        /** A row expression: an aggregate is an error. */
        ROW,
        /** A select item of an aggregate query: aggregates read their results, bare columns are errors. */
        AGGREGATE
    }

    /** One aggregate of a query: its function, its argument (null for count(*)) and its result slot. */
    record Aggregate(String function, Eval argument, int slot) {
    }

    private final List<String> columns;
    private final Map<String, Integer> index = new HashMap<>();
    private final String tableName;
    private final String tableAlias;
    private final Set<String> unknown = new LinkedHashSet<>();
    private final List<Aggregate> aggregates = new ArrayList<>();
    private Map<String, Expr> aliases = Map.of();
    private String aggregateError;
    private int unknownNumber = DaoException.TOO_FEW_PARAMETERS;

    Binder(List<String> columns, String tableName, String tableAlias) {
        this.columns = List.copyOf(columns);
        for (int i = 0; i < columns.size(); i++) {
            index.putIfAbsent(lower(columns.get(i)), i);
        }
        this.tableName = tableName;
        this.tableAlias = tableAlias;
    }

    static String lower(String name) {
        return name.toLowerCase(Locale.ROOT);
    }

    List<String> columns() {
        return columns;
    }

    /** Select-list aliases that ORDER BY may name (after the table's columns). */
    void setAliases(Map<String, Expr> aliases) {
        this.aliases = aliases;
    }

    List<Aggregate> aggregates() {
        return aggregates;
    }

    /** The index of a column reference, or -1 if the table has no such column. */
    int resolve(Expr.Column c) {
        if (c.qualifier() != null && !lower(c.qualifier()).equals(lower(tableName))
                && (tableAlias == null || !lower(c.qualifier()).equals(lower(tableAlias)))) {
            return -1;
        }
        Integer i = index.get(lower(c.name()));
        return i == null ? -1 : i;
    }

    /** The error number for unknown names: 3061 in statements, 3070 in Find filters. */
    void setUnknownNumber(int number) {
        this.unknownNumber = number;
    }

    /** Throws Jet's 3061 if any name was unknown, or 3122 if an aggregate query lists a bare column. */
    void check() {
        if (!unknown.isEmpty()) {
            if (unknownNumber != DaoException.TOO_FEW_PARAMETERS) {
                throw new DaoException(unknownNumber, "The Microsoft Jet database engine does not recognize '"
                        + unknown.iterator().next() + "' as a valid field name or expression.");
            }
            throw new DaoException(DaoException.TOO_FEW_PARAMETERS,
                    "Too few parameters. Expected " + unknown.size() + ".");
        }
        if (aggregateError != null) {
            throw new DaoException(Sql.NOT_PART_OF_AGGREGATE, "You tried to execute a query that does not include"
                    + " the specified expression '" + aggregateError + "' as part of an aggregate function.");
        }
    }

    Eval compile(Expr e, BitSet used, Mode mode) {
        if (e instanceof Expr.Literal lit) {
            Object v = lit.value();
            return row -> v;
        }
        if (e instanceof Expr.Column c) {
            int i = resolve(c);
            if (i < 0) {
                Expr aliased = c.qualifier() == null ? aliases.get(lower(c.name())) : null;
                if (aliased != null) {
                    Map<String, Expr> saved = aliases;
                    aliases = Map.of(); // an alias doesn't name itself
                    try {
                        return compile(aliased, used, mode);
                    } finally {
                        aliases = saved;
                    }
                }
                unknown.add((c.qualifier() == null ? "" : lower(c.qualifier()) + ".") + lower(c.name()));
                return row -> null;
            }
            if (mode == Mode.AGGREGATE) {
                if (aggregateError == null) {
                    aggregateError = c.name();
                }
                return row -> null;
            }
            used.set(i);
            return row -> row[i];
        }
        if (e instanceof Expr.Unary u) {
            Eval x = compile(u.operand(), used, mode);
            return switch (u.op()) {
                case "-" -> row -> Values.negate(x.eval(row));
                case "+" -> x;
                default -> row -> Values.not(x.eval(row));
            };
        }
        if (e instanceof Expr.Binary b) {
            Eval l = compile(b.left(), used, mode);
            Eval r = compile(b.right(), used, mode);
            return switch (b.op()) {
                case "+" -> row -> Values.add(l.eval(row), r.eval(row));
                case "-" -> row -> Values.subtract(l.eval(row), r.eval(row));
                case "*" -> row -> Values.multiply(l.eval(row), r.eval(row));
                case "/" -> row -> Values.divide(l.eval(row), r.eval(row));
                case "\\" -> row -> Values.intDivide(l.eval(row), r.eval(row));
                case "mod" -> row -> Values.modulo(l.eval(row), r.eval(row));
                case "^" -> row -> Values.power(l.eval(row), r.eval(row));
                case "&" -> row -> Values.concat(l.eval(row), r.eval(row));
                case "and" -> row -> {
                    Object a = l.eval(row);
                    if (a != null && !Values.isTrue(a)) {
                        return Boolean.FALSE;
                    }
                    Object c2 = r.eval(row);
                    if (c2 != null && !Values.isTrue(c2)) {
                        return Boolean.FALSE;
                    }
                    return a == null || c2 == null ? null : Boolean.TRUE;
                };
                case "or" -> row -> {
                    Object a = l.eval(row);
                    if (a != null && Values.isTrue(a)) {
                        return Boolean.TRUE;
                    }
                    Object c2 = r.eval(row);
                    if (c2 != null && Values.isTrue(c2)) {
                        return Boolean.TRUE;
                    }
                    return a == null || c2 == null ? null : Boolean.FALSE;
                };
                case "xor" -> row -> {
                    Object a = l.eval(row);
                    Object c2 = r.eval(row);
                    return a == null || c2 == null ? null : Values.isTrue(a) != Values.isTrue(c2);
                };
                default -> {
                    String op = b.op();
                    yield row -> Values.compareOp(op, l.eval(row), r.eval(row));
                }
            };
        }
        if (e instanceof Expr.Like like) {
            Eval v = compile(like.value(), used, mode);
            boolean neg = like.negated();
            if (like.pattern() instanceof Expr.Literal lit && lit.value() != null) {
                LikePattern p = LikePattern.compile(Values.text(lit.value()));
                return row -> {
                    Object x = v.eval(row);
                    return x == null ? null : p.matches(Values.text(x)) != neg;
                };
            }
            Eval pe = compile(like.pattern(), used, mode);
            Object[] last = new Object[2]; // one-entry cache: pattern text, compiled pattern
            return row -> {
                Object x = v.eval(row);
                Object pv = pe.eval(row);
                if (x == null || pv == null) {
                    return null;
                }
                String pt = Values.text(pv);
                if (!pt.equals(last[0])) {
                    last[1] = LikePattern.compile(pt);
                    last[0] = pt;
                }
                return ((LikePattern) last[1]).matches(Values.text(x)) != neg;
            };
        }
        if (e instanceof Expr.IsNull in) {
            Eval v = compile(in.value(), used, mode);
            boolean neg = in.negated();
            return row -> (v.eval(row) == null) != neg;
        }
        if (e instanceof Expr.Between bt) {
            Eval v = compile(bt.value(), used, mode);
            Eval lo = compile(bt.low(), used, mode);
            Eval hi = compile(bt.high(), used, mode);
            boolean neg = bt.negated();
            return row -> {
                Object x = v.eval(row);
                Object a = lo.eval(row);
                Object z = hi.eval(row);
                if (x == null || a == null || z == null) {
                    return null;
                }
                return (Values.compare(x, a) >= 0 && Values.compare(x, z) <= 0) != neg;
            };
        }
        if (e instanceof Expr.In in) {
            Eval v = compile(in.value(), used, mode);
            Eval[] items = in.list().stream().map(x -> compile(x, used, mode)).toArray(Eval[]::new);
            boolean neg = in.negated();
            return row -> {
                Object x = v.eval(row);
                if (x == null) {
                    return null;
                }
                boolean sawNull = false;
                for (Eval it : items) {
                    Object y = it.eval(row);
                    if (y == null) {
                        sawNull = true;
                    } else if (Values.compare(x, y) == 0) {
                        return !neg;
                    }
                }
                return sawNull ? null : neg;
            };
        }
        if (e instanceof Expr.Call call) {
            return compileCall(call, used, mode);
        }
        throw new DaoException(DaoException.SYNTAX_ERROR, "Syntax error (missing operator) in query expression '*'.");
    }

    private Eval compileCall(Expr.Call call, BitSet used, Mode mode) {
        String name = call.name();
        if (Functions.isAggregate(name)) {
            if (mode != Mode.AGGREGATE) {
                throw new DaoException(Sql.AGGREGATE_NOT_ALLOWED,
                        "Cannot have aggregate function in expression (" + name + ").");
            }
            Expr arg = call.args().get(0);
            Eval argEval = arg instanceof Expr.Star ? null : compile(arg, used, Mode.ROW);
            int slot = aggregates.size();
            aggregates.add(new Aggregate(name, argEval, slot));
            return row -> row[slot];
        }
        Eval[] args = call.args().stream().map(x -> compile(x, used, mode)).toArray(Eval[]::new);
        if (name.equals("iif")) {
            Eval c = args[0];
            Eval t = args[1];
            Eval f = args[2];
            return row -> Values.isTrue(c.eval(row)) ? t.eval(row) : f.eval(row);
        }
        Functions.Fn fn = Functions.def(name).fn();
        return switch (args.length) {
            case 0 -> row -> fn.apply(new Object[0]);
            case 1 -> {
                Eval a0 = args[0];
                yield row -> fn.apply(new Object[] {a0.eval(row)});
            }
            case 2 -> {
                Eval a0 = args[0];
                Eval a1 = args[1];
                yield row -> fn.apply(new Object[] {a0.eval(row), a1.eval(row)});
            }
            default -> row -> {
                Object[] v = new Object[args.length];
                for (int k = 0; k < v.length; k++) {
                    v[k] = args[k].eval(row);
                }
                return fn.apply(v);
            };
        };
    }

    static int[] indexes(BitSet used) {
        return used.stream().toArray();
    }
}
