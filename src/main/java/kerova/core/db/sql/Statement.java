package kerova.core.db.sql;

/** A parsed statement of the program's SQL: a SELECT or an UPDATE on one table. */
public sealed interface Statement permits SelectStatement, UpdateStatement {
    /** The table's name as written (without brackets). */
    String tableName();
}
