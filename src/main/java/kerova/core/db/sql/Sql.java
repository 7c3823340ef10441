package kerova.core.db.sql;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public final class Sql {
    public static Statement parse(String text) {
        throw new UnsupportedOperationException("TODO");
    }

    public static Condition parseCondition(String text) {
        throw new UnsupportedOperationException("TODO");
    }
}
