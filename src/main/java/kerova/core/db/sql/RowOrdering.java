package kerova.core.db.sql;

import java.util.Comparator;
import java.util.HashMap;
import java.util.IdentityHashMap;
import java.util.Map;

/**
 * ORDER BY over rows: the keys of a row are computed once and kept by the row's identity (texts as
 * collation keys, shared between rows with the same text), so that a sort of n rows evaluates each
 * expression n times, not n log n times. Nulls come first in ascending order. One instance serves one
 * sort of unchanging row arrays.
 */
final class RowOrdering implements Comparator<Object[]> {
    private final Eval[] evals;
    private final boolean[] descending;
    private final Map<Object[], Object[]> keys = new IdentityHashMap<>();
    private final Map<String, Values.TextKey> texts = new HashMap<>();

    RowOrdering(Eval[] evals, boolean[] descending) {
        this.evals = evals;
        this.descending = descending;
    }

    Object[] keysOf(Object[] row) {
        Object[] k = keys.get(row);
        if (k == null) {
            k = new Object[evals.length];
            for (int i = 0; i < evals.length; i++) {
                k[i] = Values.sortKey(Eval.run(evals[i], row), texts);
            }
            keys.put(row, k);
        }
        return k;
    }

    /** Keys of a row without caching (for callers that keep them themselves). */
    Object[] computeKeys(Object[] row) {
        Object[] k = new Object[evals.length];
        for (int i = 0; i < evals.length; i++) {
            k[i] = Values.sortKey(Eval.run(evals[i], row), texts);
        }
        return k;
    }

    @Override
    public int compare(Object[] a, Object[] b) {
        if (a == b) {
            return 0;
        }
        return compareKeys(keysOf(a), keysOf(b), descending);
    }

    static int compareKeys(Object[] ka, Object[] kb, boolean[] descending) {
        for (int i = 0; i < ka.length; i++) {
            int c = Values.sortCompare(ka[i], kb[i]);
            if (c != 0) {
                return descending[i] ? -c : c;
            }
        }
        return 0;
    }
}
