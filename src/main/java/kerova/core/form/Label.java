package kerova.core.form;

import kerova.core.vb.Conv;
import kerova.core.vb.VbConst;

/**
 * VB's Label. A bound label shows the column; when code sets its Caption, the new value is written
 * at the next move, as the runtime's bound label did (Part 1.2's {@code Label11} relies on it).
 */
public class Label extends BoundControl {
    private String caption;
    private String loadedCaption = "";

    public Label(String name, String caption) {
        super(name, VbConst.vbButtonFace);
        this.caption = caption == null ? "" : caption;
    }

    public Label(String name) {
        this(name, "");
    }

    public String Caption() {
        return caption;
    }

    public void setCaption(String c) {
        String v = c == null ? "" : c;
        if (!v.equals(caption)) {
            caption = v;
            changed("Caption");
            fireChange();
        }
    }

    @Override
    public void loadBound(Object value) {
        String t = value == null ? "" : Conv.CStr(value);
        loadedCaption = t;
        setCaption(t);
    }

    @Override
    public boolean boundChanged() {
        return !caption.equals(loadedCaption);
    }

    @Override
    public Object boundValue() {
        return caption.isEmpty() ? null : caption;
    }
}
