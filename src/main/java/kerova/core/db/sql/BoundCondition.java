package kerova.core.db.sql;

/** A Find filter bound to a set's columns. */
public final class BoundCondition {
    private final Eval eval;
    private final int[] needed;

    BoundCondition(Eval eval, int[] needed) {
        this.eval = eval;
        this.needed = needed;
    }

    /** The column indexes the filter reads, ascending. */
    public int[] neededColumns() {
        return needed.clone();
    }

    /** True when the filter holds for the row (Null is no match). */
    public boolean matches(Object[] row) {
        return Eval.test(eval, row);
    }
}
