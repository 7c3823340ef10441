package kerova.core.db.sql;

// STUB written by the lead so the tree compiles; the SQL engineer replaces it freely.
public sealed interface Statement permits SelectStatement, UpdateStatement {
    String tableName();
}
