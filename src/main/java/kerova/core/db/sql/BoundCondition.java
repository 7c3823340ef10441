package kerova.core.db.sql;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public final class BoundCondition {
    public int[] neededColumns() { throw new UnsupportedOperationException("TODO"); }
    public boolean matches(Object[] row) { throw new UnsupportedOperationException("TODO"); }
}
