package kerova.core.form;

/** VB's CommandButton: Caption, Default (Enter presses it) and Click. */
public class CommandButton extends CaptionedControl {
    private boolean isDefault;

    public CommandButton(String name, String caption) {
        super(name, caption);
    }

    public boolean Default() {
        return isDefault;
    }

    public void setDefault(boolean d) {
        isDefault = d;
        changed("Default");
    }
}
