package kerova.core.form;

import java.util.ArrayList;
import java.util.List;

/** VB's Frame: a captioned container of controls. */
public class Frame extends CaptionedControl {
    final List<Control> children = new ArrayList<>();
    /** Layout hint for the frame's own content (MigLayout layout constraints). */
    public String contentLayout = "wrap 2, hidemode 3";

    public Frame(String name, String caption) {
        super(name, caption);
    }

    public List<Control> children() {
        return List.copyOf(children);
    }
}
