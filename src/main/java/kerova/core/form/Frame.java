package kerova.core.form;

import java.util.ArrayList;
import java.util.List;

/** VB's Frame: a captioned container of controls. */
public class Frame extends Control {
    private String caption;
    final List<Control> children = new ArrayList<>();
    /** Layout hint for the frame's own content (MigLayout layout constraints). */
    public String contentLayout = "wrap 2, hidemode 3";

    public Frame(String name, String caption) {
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

    public List<Control> children() {
        return List.copyOf(children);
    }
}
