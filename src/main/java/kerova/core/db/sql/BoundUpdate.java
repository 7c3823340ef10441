package kerova.core.db.sql;

import java.util.Map;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public final class BoundUpdate {
    public boolean matches(Object[] fullRow) { throw new UnsupportedOperationException("TODO"); }
    public Map<Integer, Object> assignments(Object[] fullRow) { throw new UnsupportedOperationException("TODO"); }
}
