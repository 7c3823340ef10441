package kerova.core.form;

/** A control with a Caption (CommandButton, Menu, Frame): the text it shows, never null. */
public abstract class CaptionedControl extends Control {
    private String caption;

    protected CaptionedControl(String name, String caption) {
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
