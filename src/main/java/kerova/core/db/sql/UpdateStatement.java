package kerova.core.db.sql;

import java.util.List;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public final class UpdateStatement implements Statement {
    public String tableName() {
        throw new UnsupportedOperationException("TODO");
    }

    public BoundUpdate bind(List<String> tableColumns) {
        throw new UnsupportedOperationException("TODO");
    }
}
