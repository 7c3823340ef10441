package kerova.core.db;

/**
 * A control bound to a Data control through {@code DataField} (text box, label, check box, combo).
 * The forms runtime implements it on its control models; grids read the Recordset directly.
 */
public interface Binding {
    /** The column, or "" for none. */
    String DataField();

    /** Shows a column's value of the record that became current (null when there is none). */
    void loadBound(Object value);

    /** Whether the user changed the value since it was loaded. */
    boolean boundChanged();

    /** The value to write back. */
    Object boundValue();

    /** Whether this binding writes back (labels only show). */
    default boolean writesBack() {
        return true;
    }
}
