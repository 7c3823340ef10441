package kerova.core.form;

import kerova.core.vb.Conv;
import kerova.core.vb.VbConst;

/** VB's TextBox: Text, SelStart/SelLength, Locked; bound through DataField. Change fires on every change. */
public class TextBox extends BoundControl {
    private String text = "";
    private String loadedText = "";
    private int selStart;
    private int selLength;
    private boolean locked;
    private int maxLength;
    public boolean MultiLine;

    public TextBox(String name) {
        super(name, VbConst.vbWindowBackground);
    }

    public String Text() {
        return text;
    }

    /** Sets the text (by code or typed); raises Change when it differs. */
    public void setText(String t) {
        String v = t == null ? "" : t;
        if (!v.equals(text)) {
            text = v;
            if (selStart > text.length()) {
                selStart = text.length();
            }
            changed("Text");
            fireChange();
        }
    }

    public int SelStart() {
        return selStart;
    }

    public void setSelStart(int s) {
        selStart = Math.max(0, Math.min(s, text.length()));
        selLength = Math.min(selLength, text.length() - selStart);
        changed("Sel");
    }

    public int SelLength() {
        return selLength;
    }

    public void setSelLength(int l) {
        selLength = Math.max(0, Math.min(l, text.length() - selStart));
        changed("Sel");
    }

    public String SelText() {
        return text.substring(selStart, selStart + selLength);
    }

    public boolean Locked() {
        return locked;
    }

    public void setLocked(boolean l) {
        locked = l;
        changed("Locked");
    }

    public int MaxLength() {
        return maxLength;
    }

    public void setMaxLength(int m) {
        maxLength = m;
    }

    // ---- Binding ----

    @Override
    public void loadBound(Object value) {
        String t = value == null ? "" : Conv.CStr(value);
        loadedText = t;
        setText(t);
    }

    @Override
    public boolean boundChanged() {
        return !text.equals(loadedText);
    }

    @Override
    public Object boundValue() {
        return text.isEmpty() ? null : text;
    }
}
