package kerova.core.db.sql;

import kerova.core.db.DaoException;

/**
 * The program's Access SQL (Part 1.1): single-table SELECT and UPDATE statements, and the filters of
 * the Find operations. Parsing is done once per text; {@code bind} resolves the names against a
 * table's columns; the bound forms evaluate rows (Object arrays indexed by table column).
 *
 * <p>Every error is a {@link DaoException} with Jet's number: syntax errors in an expression 3075,
 * the other syntax errors 3129, 3131, 3138, 3141, 3142, 3144; an unknown name in a statement 3061
 * ("Too few parameters"), in a filter 3070; an unknown function 3085; a type mismatch met while
 * evaluating 3464.
 */
public final class Sql {
    private Sql() {
    }

    /** "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'." */
    public static final int INVALID_STATEMENT = 3129;
    /** "Characters found after end of SQL statement." (a second statement after ';'). */
    public static final int CHARACTERS_AFTER_END = 3142;
    /** "The SELECT statement includes a reserved word or an argument name that is misspelled or missing…". */
    public static final int SELECT_SYNTAX = 3141;
    /** "Syntax error in ORDER BY clause." */
    public static final int ORDER_BY_SYNTAX = 3138;
    /** "Syntax error in UPDATE statement." */
    public static final int UPDATE_SYNTAX = 3144;
    /** "Undefined function 'x' in expression." */
    public static final int UNDEFINED_FUNCTION = 3085;
    /** "You tried to execute a query that does not include the specified expression … aggregate function." */
    public static final int NOT_PART_OF_AGGREGATE = 3122;
    /** "Cannot have aggregate function in WHERE clause" (also ORDER BY of a row set, UPDATE, filters). */
    public static final int AGGREGATE_NOT_ALLOWED = 3096;
    /** "ORDER BY clause (x) conflicts with DISTINCT." */
    public static final int ORDER_BY_CONFLICTS_WITH_DISTINCT = 3093;
    /** A Find filter names a column that the set doesn't have. */
    public static final int UNKNOWN_NAME = 3070;
    /** VB's "Division by zero", which Jet passes on. */
    public static final int DIVISION_BY_ZERO = 11;
    /** VB's "Overflow", which Jet passes on. */
    public static final int OVERFLOW = 6;

    /** Parses a SELECT or UPDATE statement; a DaoException with Jet's number on any syntax error. */
    public static Statement parse(String text) {
        return Parser.statement(text);
    }

    /** Parses a Find filter such as {@code [GkFrsz] like "AB*"}; a DaoException (3075) if malformed. */
    public static Condition parseCondition(String text) {
        return new Condition(Parser.condition(text));
    }
}
