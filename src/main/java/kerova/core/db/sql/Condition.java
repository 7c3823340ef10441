package kerova.core.db.sql;

import java.util.BitSet;
import java.util.List;

/** A parsed Find filter. */
public final class Condition {
    private final Expr expr;

    Condition(Expr expr) {
        this.expr = expr;
    }

    public Expr expr() {
        return expr;
    }

    /** Resolves the filter's names against the set's columns; an unknown one raises 3070. */
    public BoundCondition bind(List<String> tableColumns) {
        Binder b = new Binder(tableColumns, "", null);
        b.setUnknownNumber(Sql.UNKNOWN_NAME);
        BitSet used = new BitSet();
        Eval e = b.compile(expr, used, Binder.Mode.ROW);
        b.check();
        return new BoundCondition(e, Binder.indexes(used));
    }
}
