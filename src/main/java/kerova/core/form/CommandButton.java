package kerova.core.form;

/** VB's CommandButton: Caption, Default (Enter presses it) and Click. */
public class CommandButton extends Control {
    private String caption;
    private boolean isDefault;

    public CommandButton(String name, String caption) {
        super(name);
        this.caption = caption == null ? "" : caption;
    }

    public String Caption() {
        return caption;
    }

    public void setCaption(String c) {
        caption = c == null ? "" : c;
        changed("Caption");
    }

    public boolean Default() {
        return isDefault;
    }

    public void setDefault(boolean d) {
        isDefault = d;
        changed("Default");
    }
}
