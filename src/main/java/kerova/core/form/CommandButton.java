package kerova.core.form;

/** VB's CommandButton: Caption and Click. */
public class CommandButton extends Control {
    private String caption;

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
}
