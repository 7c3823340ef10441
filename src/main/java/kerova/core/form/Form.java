package kerova.core.form;

import java.util.ArrayList;
import java.util.List;
import kerova.core.db.DataControl;

/**
 * A form: its controls, menus and Data controls, and the lifecycle events Form_Initialize,
 * Form_Load, Form_Activate, Form_QueryUnload, Form_Resize, Form_Unload. The close box runs
 * Form_QueryUnload, whose default calls the exit handler while {@link #CloseGuard} is true.
 */
public abstract class Form {
    private final String name;
    private String caption;
    /** Part 1.3: true from Form_Initialize until the exit handler begins. */
    public boolean CloseGuard;

    private final List<Control> controls = new ArrayList<>();
    private final List<Control> roots = new ArrayList<>();
    private final List<Menu> menus = new ArrayList<>();
    private final List<DataControl> dataControls = new ArrayList<>();

    boolean initialized;
    boolean loaded;
    boolean visible;
    private boolean enabled = true;
    private Control focused;
    private FormObserver observer;

    /** Layout hints for the view (MigLayout layout and column constraints); ours, not the spec's. */
    public String layoutConstraints = "wrap 2, insets 10, hidemode 3";
    public String columnConstraints = "";
    public int Width = 0;
    public int Height = 0;

    protected Form(String name, String caption) {
        this.name = name;
        this.caption = caption == null ? "" : caption;
    }

    public String getName() {
        return name;
    }

    public String Caption() {
        return caption;
    }

    public void setCaption(String c) {
        caption = c == null ? "" : c;
        if (observer != null) {
            observer.formChanged("Caption");
        }
    }

    public boolean Enabled() {
        return enabled;
    }

    public void setEnabled(boolean e) {
        enabled = e;
        if (observer != null) {
            observer.formChanged("Enabled");
        }
    }

    public boolean isLoaded() {
        return loaded;
    }

    public boolean Visible() {
        return visible;
    }

    // ---- building ----

    /** Adds a control with its caption label (named NAMECaption) before it. */
    protected <T extends Control> T field(String caption, T control) {
        add(new Label(control.getName() + "Caption", caption));
        return add(control);
    }

    /** Adds a control to the form (in layout order). */
    protected <T extends Control> T add(T c) {
        register(c);
        roots.add(c);
        return c;
    }

    /** Adds a control inside a Frame. */
    protected <T extends Control> T add(Frame frame, T c) {
        register(c);
        c.container = frame;
        frame.children.add(c);
        return c;
    }

    /** Adds a top-level menu. */
    protected Menu menu(Menu m) {
        register(m);
        menus.add(m);
        return m;
    }

    /** Creates a Data control owned by this form. */
    protected DataControl data(String dataName, String databaseName, String recordSource) {
        DataControl d = new DataControl(dataName, databaseName, recordSource);
        dataControls.add(d);
        return d;
    }

    void register(Control c) {
        c.form = this;
        controls.add(c);
        if (c instanceof Menu m) {
            for (Menu child : m.items) {
                register(child);
            }
        }
    }

    public List<Control> controls() {
        return List.copyOf(controls);
    }

    /** Top-level controls in layout order (not menus, not those inside frames). */
    public List<Control> layoutRoots() {
        return List.copyOf(roots);
    }

    public List<Menu> menus() {
        return List.copyOf(menus);
    }

    public List<DataControl> dataControls() {
        return List.copyOf(dataControls);
    }

    /** A control or menu entry by its spec name. */
    public Control control(String controlName) {
        for (Control c : controls) {
            if (c.getName().equals(controlName)) {
                return c;
            }
        }
        throw new IllegalArgumentException("no control " + controlName + " on " + name);
    }

    // ---- lifecycle hooks ----

    /** Sets CloseGuard; forms that override call super first. */
    protected void Form_Initialize() {
        CloseGuard = true;
    }

    protected void Form_Load() {
    }

    protected void Form_Activate() {
    }

    /** Default of Part 1.3: the close box takes the exit handler while CloseGuard is true. */
    protected void Form_QueryUnload(CancelArgs cancel, int unloadMode) {
        if (CloseGuard) {
            exitHandler();
        }
    }

    protected void Form_Resize() {
    }

    protected void Form_Unload(CancelArgs cancel) {
    }

    /** The form's "Kilépés" handler; the default only unloads. */
    protected void exitHandler() {
        Unload();
    }

    /** A plain "Kilépés": CloseGuard off, so that the close box no longer asks, then Unload. */
    protected void unloadUnguarded() {
        CloseGuard = false;
        Unload();
    }

    // ---- runtime ----

    /** Loads the form without showing it (Initialize once, then Load). */
    public void Load() {
        if (loaded) {
            return;
        }
        loaded = true;
        if (!initialized) {
            initialized = true;
            Forms.run(this::Form_Initialize);
        }
        Forms.run(this::Form_Load);
        openDataControls();
    }

    /**
     * The Data controls open when the form has loaded, as the runtime's did; one that can't open keeps
     * no Recordset, and the form's first access to it fails (Part 1.1: "no databases").
     */
    protected void openDataControls() {
        for (DataControl d : dataControls) {
            try {
                d.Refresh();
            } catch (RuntimeException e) {
                // left without a Recordset
            }
        }
        kerova.core.vb.Err.Clear();
    }

    public void Show() {
        Forms.Show(this, false);
    }

    /** Show vbModal: returns when the form has been closed. */
    public void Show(boolean modal) {
        Forms.Show(this, modal);
    }

    public void Hide() {
        if (visible) {
            visible = false;
            Forms.ui().hideForm(this);
        }
    }

    /** Unloads the form: Form_Unload, then it leaves the screen (a modal wait ends). */
    public void Unload() {
        if (!loaded) {
            return;
        }
        CancelArgs c = new CancelArgs();
        Forms.run(() -> Form_Unload(c));
        if (c.Cancel) {
            return;
        }
        loaded = false;
        visible = false;
        focused = null;
        Forms.formUnloaded(this);
        Forms.ui().closeForm(this);
    }

    /** The window's close box (UnloadMode 0, vbFormControlMenu). */
    public void closeBox() {
        CancelArgs c = new CancelArgs();
        Forms.run(() -> Form_QueryUnload(c, 0));
        if (!c.Cancel && loaded) {
            Unload();
        }
    }

    /** The view resized the window. */
    public void resized() {
        Forms.run(this::Form_Resize);
    }

    // ---- focus and view ----

    public Control focused() {
        return focused;
    }

    /** Moves the focus: LostFocus of the old control, GotFocus of the new one. */
    public void moveFocus(Control c, boolean byCode) {
        if (c == focused) {
            return;
        }
        Control old = focused;
        focused = c;
        if (old != null) {
            old.fireLostFocus();
        }
        if (c != null) {
            c.fireGotFocus();
        }
        if (byCode && observer != null && c != null) {
            observer.focus(c);
        }
    }

    public void setObserver(FormObserver o) {
        observer = o;
    }

    public FormObserver observer() {
        return observer;
    }

    void notifyChanged(Control c, String property) {
        if (observer != null) {
            observer.changed(c, property);
        }
    }

    @Override
    public String toString() {
        return name;
    }
}
