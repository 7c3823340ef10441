package kerova.core.db.sql;

import java.util.Comparator;
import java.util.List;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public final class BoundSelect {
    public boolean isSnapshot() { throw new UnsupportedOperationException("TODO"); }
    public List<String> outputColumns() { throw new UnsupportedOperationException("TODO"); }
    public int[] neededColumns() { throw new UnsupportedOperationException("TODO"); }
    public boolean matches(Object[] row) { throw new UnsupportedOperationException("TODO"); }
    public Comparator<Object[]> ordering() { throw new UnsupportedOperationException("TODO"); }
    public Object[] extras(Object[] fullRow) { throw new UnsupportedOperationException("TODO"); }
    public List<Object[]> snapshot(Iterable<Object[]> fullRows) { throw new UnsupportedOperationException("TODO"); }
}
