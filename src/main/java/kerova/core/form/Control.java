package kerova.core.form;

import java.util.function.Consumer;
import kerova.core.vb.VbConst;

/**
 * A control model: the properties and events the Parts use. Handlers are assigned as fields
 * ({@code Kilepes.Click = this::Kilepes_Click}); the view and the tests raise them through the
 * {@code fire...} methods, which run the handler under the runtime's error guard.
 */
public abstract class Control {
    private final String name;
    Form form;
    /** The Frame that holds this control, or null for the form itself. */
    Frame container;

    private boolean visible = true;
    private boolean enabled = true;
    private String toolTipText = "";
    private int backColor;
    private Object tag;
    private int height;
    /** Layout hint for the view (MigLayout component constraints); ours, not the spec's. */
    public String layout = "";

    public Runnable Click;
    public Runnable DblClick;
    public Runnable Change;
    public Runnable GotFocus;
    public Runnable LostFocus;
    public Consumer<KeyArgs> KeyPress;
    public Consumer<CancelArgs> Validate;

    protected Control(String name, int defaultBackColor) {
        this.name = name;
        this.backColor = defaultBackColor;
    }

    protected Control(String name) {
        this(name, VbConst.vbButtonFace);
    }

    public String getName() {
        return name;
    }

    public Form form() {
        return form;
    }

    public Frame container() {
        return container;
    }

    public boolean Visible() {
        return visible;
    }

    public void setVisible(boolean v) {
        if (visible != v) {
            visible = v;
            changed("Visible");
        }
    }

    public boolean Enabled() {
        return enabled;
    }

    public void setEnabled(boolean v) {
        if (enabled != v) {
            enabled = v;
            changed("Enabled");
        }
    }

    public String ToolTipText() {
        return toolTipText;
    }

    public void setToolTipText(String t) {
        toolTipText = t == null ? "" : t;
        changed("ToolTipText");
    }

    /** The colour in VB's BGR order (system colours as &amp;H80000000 + index). */
    public int BackColor() {
        return backColor;
    }

    public void setBackColor(int bgr) {
        if (backColor != bgr) {
            backColor = bgr;
            changed("BackColor");
        }
    }

    /** The height in pixels; 0 leaves it to the layout (VB's Height is in twips, 15 to a pixel). */
    public int Height() {
        return height;
    }

    public void setHeight(int h) {
        if (height != h) {
            height = h;
            changed("Height");
        }
    }

    public Object Tag() {
        return tag;
    }

    public void setTag(Object t) {
        tag = t;
    }

    /** Moves the focus here: LostFocus of the control that had it, then GotFocus of this one. */
    public void SetFocus() {
        if (form != null) {
            form.moveFocus(this, true);
        }
    }

    /** Tells the view that a property changed. */
    protected void changed(String property) {
        if (form != null) {
            form.notifyChanged(this, property);
        }
    }

    // ---- raising events (view and tests) ----

    public void fireClick() {
        Forms.run(Click);
    }

    public void fireDblClick() {
        Forms.run(DblClick);
    }

    public void fireChange() {
        Forms.run(Change);
    }

    public void fireGotFocus() {
        Forms.run(GotFocus);
    }

    public void fireLostFocus() {
        Forms.run(LostFocus);
    }

    /** Raises KeyPress; returns the key code after the handler (0: the key is cancelled). */
    public int fireKeyPress(int keyAscii) {
        KeyArgs k = new KeyArgs(keyAscii);
        if (KeyPress != null) {
            Forms.run(() -> KeyPress.accept(k));
        }
        return k.KeyAscii;
    }

    /** Raises Validate; returns true when the focus may leave. */
    public boolean fireValidate() {
        CancelArgs c = new CancelArgs();
        if (Validate != null) {
            Forms.run(() -> Validate.accept(c));
        }
        return !c.Cancel;
    }

    @Override
    public String toString() {
        return getClass().getSimpleName() + " " + name;
    }
}
