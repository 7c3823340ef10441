package kerova.core.db.sql;

import java.util.BitSet;
import java.util.List;

/** A parsed UPDATE … SET col = expr, … [WHERE …] on one table. */
public final class UpdateStatement implements Statement {

    /** One {@code column = expression} of the SET list. */
    public record Assignment(Expr.Column target, Expr value) {
    }

    private final String text;
    private final String tableName;
    private final String tableAlias;
    private final List<Assignment> assignments;
    private final Expr where;

    UpdateStatement(String text, String tableName, String tableAlias, List<Assignment> assignments, Expr where) {
        this.text = text;
        this.tableName = tableName;
        this.tableAlias = tableAlias;
        this.assignments = List.copyOf(assignments);
        this.where = where;
    }

    @Override
    public String tableName() {
        return tableName;
    }

    public List<Assignment> assignments() {
        return assignments;
    }

    public Expr where() {
        return where;
    }

    /** Resolves the names; an unknown column (target or operand) raises 3061. */
    public BoundUpdate bind(List<String> tableColumns) {
        Binder b = new Binder(tableColumns, tableName, tableAlias);
        BitSet used = new BitSet();
        int[] targets = new int[assignments.size()];
        Eval[] values = new Eval[assignments.size()];
        for (int i = 0; i < targets.length; i++) {
            Assignment a = assignments.get(i);
            b.compile(a.target(), used, Binder.Mode.ROW); // records an unknown target
            targets[i] = b.resolve(a.target());
            values[i] = b.compile(a.value(), used, Binder.Mode.ROW);
        }
        Eval w = where == null ? null : b.compile(where, used, Binder.Mode.ROW);
        b.check();
        return new BoundUpdate(targets, values, w);
    }

    @Override
    public String toString() {
        return text;
    }
}
