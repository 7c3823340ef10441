package kerova.core.db;

import kerova.core.vb.VbException;

/** An error of the record layer (DAO/Jet), with a Jet-like error number. */
public class DaoException extends VbException {
    // Jet/DAO numbers we use; no handler tests a particular one (Part 1.1).
    public static final int NO_CURRENT_RECORD = 3021;
    public static final int SYNTAX_ERROR = 3075;
    public static final int SYNTAX_ERROR_FROM = 3131;
    public static final int SYNTAX_ERROR_STATEMENT = 3000;
    public static final int UNKNOWN_TABLE = 3078;
    public static final int UNKNOWN_FIELD = 3265;
    public static final int TOO_FEW_PARAMETERS = 3061;
    public static final int FILE_NOT_FOUND = 3024;
    public static final int CANNOT_OPEN = 3051;
    public static final int LOCKED = 3260;
    public static final int DUPLICATE_KEY = 3022;
    public static final int OBJECT_CLOSED = 3420;
    public static final int NOT_UPDATABLE = 3027;
    public static final int NO_EDIT = 3020;
    public static final int DATA_TYPE_CONVERSION = 3421;
    public static final int DATA_TYPE_MISMATCH = 3464;
    public static final int FIELD_TOO_SMALL = 3163;
    public static final int DELETED = 3167;

    public DaoException(int number, String description) {
        super(number, description);
    }

    public DaoException(int number, String description, Throwable cause) {
        super(number, description, cause);
    }
}
