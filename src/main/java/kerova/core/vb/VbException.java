package kerova.core.vb;

/** A run-time error as VB raises it: a number (the handlers' "last error") and a description. */
public class VbException extends RuntimeException {
    private final int number;

    public VbException(int number, String description) {
        super(description);
        this.number = number;
    }

    public VbException(int number, String description, Throwable cause) {
        super(description, cause);
        this.number = number;
    }

    public int getNumber() {
        return number;
    }

    // VB run-time error numbers used by the conversions.
    public static final int OVERFLOW = 6;
    public static final int TYPE_MISMATCH = 13;
    public static final int INVALID_USE_OF_NULL = 94;
    public static final int INVALID_PROCEDURE_CALL = 5;
}
