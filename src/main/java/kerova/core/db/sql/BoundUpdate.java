package kerova.core.db.sql;

import java.util.LinkedHashMap;
import java.util.Map;

/** An UPDATE bound to its table. */
public final class BoundUpdate {
    private final int[] targets;
    private final Eval[] values;
    private final Eval where;

    BoundUpdate(int[] targets, Eval[] values, Eval where) {
        this.targets = targets;
        this.values = values;
        this.where = where;
    }

    /** WHERE over a full row (no WHERE: every row). */
    public boolean matches(Object[] fullRow) {
        return where == null || Eval.test(where, fullRow);
    }

    /**
     * The new values of the row, column index to value, all computed from the row as it was before
     * (in SET order; a column set twice keeps the last). The caller converts to the column's type.
     */
    public Map<Integer, Object> assignments(Object[] fullRow) {
        Map<Integer, Object> out = new LinkedHashMap<>();
        for (int i = 0; i < targets.length; i++) {
            out.put(targets[i], Eval.run(values[i], fullRow));
        }
        return out;
    }
}
