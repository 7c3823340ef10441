package kerova.core.form;

import java.util.ArrayDeque;
import java.util.Deque;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.function.Supplier;
import kerova.core.vb.Err;
import kerova.core.vb.VbConst;
import kerova.core.vb.VbException;

/**
 * The forms runtime: the screen port ({@link Ui}), the forms known by name, modal opening,
 * Form_Activate on showing and on return from a modal child, and the error guard of handlers.
 * One thread, as the original: the Swing view calls it on the event thread.
 */
public final class Forms {
    /** The text of the runtime's box for an error that no handler expected (ours; see DECISIONS). */
    public static final String UNEXPECTED_TITLE = "Kerova";

    private static Ui ui = new HeadlessUi();
    private static int mousePointer;
    private static final Map<String, Form> byName = new LinkedHashMap<>();
    private static final Map<String, Supplier<? extends Form>> factories = new LinkedHashMap<>();
    /** Forms opened modally, innermost last. */
    private static final Deque<Form> modalStack = new ArrayDeque<>();
    private static Form active;
    /** Depth of handlers running under {@link #run}. */
    private static int handlerDepth;
    /** The handler depth at which the innermost modal form's events run (0 outside any modal form). */
    private static int modalBaseDepth;
    /** A caller whose Form_Activate waits until the handler that opened its modal child has ended. */
    private static Form pendingActivation;

    private Forms() {
    }

    public static Ui ui() {
        return ui;
    }

    public static void setUi(Ui u) {
        ui = u;
    }

    /** Forgets all forms and state (tests, and a new start of the program). */
    public static void reset() {
        byName.clear();
        factories.clear();
        modalStack.clear();
        active = null;
        mousePointer = 0;
        handlerDepth = 0;
        modalBaseDepth = 0;
        pendingActivation = null;
    }

    // ---- the screen ----

    public static int MsgBox(String text, int style, String title) {
        return ui.MsgBox(text, style, title);
    }

    public static int MsgBox(String text) {
        return ui.MsgBox(text, VbConst.vbOKOnly, "Kerova");
    }

    public static String InputBox(String prompt, String title, String defaultText) {
        String s = ui.InputBox(prompt, title, defaultText == null ? "" : defaultText);
        return s == null ? "" : s;
    }

    public static String InputBox(String prompt, String title) {
        return InputBox(prompt, title, "");
    }

    public static void Beep() {
        ui.Beep();
    }

    /** Screen.MousePointer = p. */
    public static void MousePointer(int p) {
        mousePointer = p;
        ui.MousePointer(p);
    }

    public static int MousePointer() {
        return mousePointer;
    }

    public static void hourglass() {
        MousePointer(VbConst.vbHourglass);
    }

    public static void arrow() {
        MousePointer(VbConst.vbArrow);
    }

    // ---- forms by name ----

    /** Registers how a form is made, under the spec's name. */
    public static void register(String name, Supplier<? extends Form> factory) {
        factories.put(name, factory);
    }

    /** Whether a form of that name exists (registered, or a class in one of the program's packages). */
    public static boolean exists(String name) {
        return byName.containsKey(name) || factories.containsKey(name) || findClass(name) != null;
    }

    /** The single instance of a form, made on first use (VB's implicit form variable). */
    public static Form get(String name) {
        Form f = byName.get(name);
        if (f != null) {
            return f;
        }
        Supplier<? extends Form> s = factories.get(name);
        if (s != null) {
            f = s.get();
        } else {
            Class<?> c = findClass(name);
            if (c == null) {
                f = new StandInForm(name);
            } else {
                try {
                    f = (Form) c.getDeclaredConstructor().newInstance();
                } catch (ReflectiveOperationException e) {
                    throw new IllegalStateException("form " + name + " can't be made", e);
                }
            }
        }
        byName.put(name, f);
        return f;
    }

    /** Puts an existing instance under its name (a form made by hand). */
    public static <T extends Form> T put(T form) {
        byName.put(form.getName(), form);
        return form;
    }

    private static final String[] PACKAGES = {
        "kerova.core", "kerova.vehicles", "kerova.trips", "kerova.partners", "kerova.reports",
        "kerova.workshop", "kerova.articles", "kerova.maintenance",
    };

    private static Class<?> findClass(String name) {
        for (String p : PACKAGES) {
            try {
                Class<?> c = Class.forName(p + "." + name);
                if (Form.class.isAssignableFrom(c)) {
                    return c;
                }
            } catch (ClassNotFoundException | LinkageError e) {
                // not in this package
            }
        }
        return null;
    }

    // ---- showing ----

    /** The form that last became active. */
    public static Form active() {
        return active;
    }

    /**
     * Shows a form. It is loaded first if needed. Form_Activate runs once it is on the screen, unless
     * it already was the visible active form. A modal form stops the caller here until it is closed;
     * then the form below becomes active again, and its Form_Activate runs if it is visible.
     */
    public static void Show(Form f, boolean modal) {
        f.Load();
        if (!f.loaded) {
            return;
        }
        boolean already = f.visible && active == f;
        f.visible = true;
        Runnable onShown = () -> {
            if (!already && f.loaded) {
                activate(f);
            }
        };
        if (!modal) {
            ui.showForm(f, false, onShown);
            return;
        }
        Form caller = active;
        modalStack.addLast(f);
        int outerBase = modalBaseDepth;
        modalBaseDepth = handlerDepth;
        try {
            ui.showForm(f, true, onShown);
        } finally {
            modalBaseDepth = outerBase;
            modalStack.remove(f);
        }
        if (f.loaded) {
            // VB: a modal form that is hidden ends the modal wait; unload it to keep state plain
            f.visible = false;
        }
        if (active == f || active == null || !active.loaded) {
            active = caller;
            if (caller != null && caller.loaded && caller.visible) {
                if (handlerDepth > modalBaseDepth) {
                    // As in VB, the caller's Activate comes once the handler that opened the modal
                    // form has run to its end, so that it reads a picker's hand-over first (Part 1.3).
                    pendingActivation = caller;
                } else {
                    activate(caller);
                }
            }
        }
    }

    private static void activate(Form f) {
        active = f;
        Forms.run(f::Form_Activate);
    }

    static void formUnloaded(Form f) {
        if (active == f) {
            active = null;
        }
    }

    /** Forms opened modally and not yet closed, innermost last. */
    public static java.util.List<Form> modalForms() {
        return java.util.List.copyOf(modalStack);
    }

    // ---- the error guard ----

    /**
     * Runs a handler under the runtime's guard: an error that the handler didn't resume shows one
     * message box (never a stack trace), the pointer returns to the arrow, and the program goes on.
     */
    public static void run(Runnable handler) {
        if (handler == null) {
            return;
        }
        handlerDepth++;
        try {
            handler.run();
        } catch (ExitRequest e) {
            throw e;
        } catch (VbException e) {
            unexpected(e.getNumber(), e.getMessage());
        } catch (RuntimeException | StackOverflowError e) {
            unexpected(5, String.valueOf(e.getMessage() == null ? e.getClass().getSimpleName() : e.getMessage()));
        } finally {
            handlerDepth--;
        }
        if (handlerDepth == modalBaseDepth && pendingActivation != null) {
            Form p = pendingActivation;
            pendingActivation = null;
            if (p.loaded && p.visible && active == p) {
                run(() -> p.Form_Activate());
            }
        }
    }

    private static void unexpected(int number, String description) {
        Err.Clear();
        try {
            MousePointer(VbConst.vbArrow);
            ui.MsgBox("Váratlan hiba (" + number + "): " + description, VbConst.vbCritical, UNEXPECTED_TITLE);
        } catch (ExitRequest e) {
            throw e;
        } catch (RuntimeException ignored) {
            // the box itself failed: nothing more to do
        }
    }

    /** Thrown by a test's exit hook to unwind out of the handlers, as the process end would. */
    public static final class ExitRequest extends RuntimeException {
        public ExitRequest() {
            super("exit", null, false, false);
        }
    }

    /** Ends the process through the Ui's exit hook. */
    public static void End() {
        ui.exitProcess();
    }
}
