package kerova.core.form;

/**
 * The form logic's only way to the screen: message boxes, input boxes, beeps, the mouse pointer,
 * showing and closing forms, printing hooks. The Swing view implements it; tests use a scripted one.
 */
public interface Ui {
    /** VB's MsgBox: returns vbOK, vbYes, vbNo or vbCancel (kerova.core.vb.VbConst). */
    int MsgBox(String text, int style, String title);

    /** VB's InputBox: the text typed, or "" on cancel. */
    String InputBox(String prompt, String title, String defaultText);

    void Beep();

    /** Screen.MousePointer: 0 default, 1 arrow, 11 hourglass. */
    void MousePointer(int pointer);

    /**
     * Makes a loaded form visible. {@code onShown} runs once the form is on the screen (the runtime
     * fires Form_Activate there). A modal form blocks here until it has been closed.
     */
    void showForm(Form form, boolean modal, Runnable onShown);

    /** Hides a form without unloading it. */
    void hideForm(Form form);

    /** Removes an unloaded form from the screen (ends its modal wait). */
    void closeForm(Form form);

    /** A control's or form's property changed: the view updates itself (no-op headless). */
    default void refresh(Form form) {
    }

    /** Whether a printer is ready (Part 1.3's "A nyomtató nincs készenlétben!"). */
    default boolean printerReady() {
        return false;
    }

    /** Prints a form as a sheet (PrintForm); returns false when the printer isn't ready. */
    default boolean printForm(Form form) {
        return printerReady();
    }

    /** Opens a web address in a browser (ShellExecute); no-op headless. */
    default void openUrl(String address) {
    }

    /** Ends the process (Kilepes). Tests replace it so that the JVM stays. */
    default void exitProcess() {
        System.exit(0);
    }
}
