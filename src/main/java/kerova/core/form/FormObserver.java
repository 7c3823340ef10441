package kerova.core.form;

/** The view of a form: told when a control's property changes, or the focus moves by code. */
public interface FormObserver {
    void changed(Control control, String property);

    default void focus(Control control) {
    }

    default void formChanged(String property) {
    }
}
