package kerova.core.form;

import kerova.core.vb.Conv;
import kerova.core.vb.VbConst;

/** VB's CheckBox: Value 0 (unchecked), 1 (checked), 2 (grayed); Click fires when Value changes. */
public class CheckBox extends BoundControl {
    private String caption;
    private int value;
    private int loadedValue;

    public CheckBox(String name, String caption) {
        super(name, VbConst.vbButtonFace);
        this.caption = caption == null ? "" : caption;
    }

    public String Caption() {
        return caption;
    }

    public void setCaption(String c) {
        caption = c == null ? "" : c;
        changed("Caption");
    }

    public int Value() {
        return value;
    }

    public void setValue(int v) {
        if (value != v) {
            value = v;
            changed("Value");
            fireClick();
        }
    }

    @Override
    public void loadBound(Object v) {
        int n = v == null ? 0 : (Conv.CBool(v) ? 1 : 0);
        loadedValue = n;
        setValue(n);
    }

    @Override
    public boolean boundChanged() {
        return value != loadedValue;
    }

    @Override
    public Object boundValue() {
        return value == 1;
    }
}
