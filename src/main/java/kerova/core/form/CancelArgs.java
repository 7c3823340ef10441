package kerova.core.form;

/** The Cancel argument of Validate and QueryUnload. */
public final class CancelArgs {
    public boolean Cancel;
}
