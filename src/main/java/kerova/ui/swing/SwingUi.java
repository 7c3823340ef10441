package kerova.ui.swing;

import java.awt.Cursor;
import java.awt.Toolkit;
import java.awt.Window;
import java.util.HashMap;
import java.util.Map;
import javax.swing.JButton;
import javax.swing.JDialog;
import javax.swing.JOptionPane;
import javax.swing.JTextField;
import kerova.core.form.Form;
import kerova.core.form.Forms;
import kerova.core.form.Ui;
import kerova.core.vb.VbConst;

/** The Swing side of the Ui port: JOptionPane boxes with Hungarian buttons, the wait cursor, form windows. */
public class SwingUi implements Ui {
    public static final String OK = "OK";
    public static final String YES = "Igen";
    public static final String NO = "Nem";
    public static final String CANCEL = "Mégse";
    public static final String ABORT = "Megszakítás";
    public static final String RETRY = "Ismét";
    public static final String IGNORE = "Kihagyás";

    private final Map<Form, FormWindow> windows = new HashMap<>();
    private Runnable exitHook = () -> {
        kerova.core.db.AccessFile.closeAll();
        System.exit(0);
    };
    private int pointer;

    /** Replaces what Kilepes does at the end (tests keep the JVM). */
    public void setExitHook(Runnable hook) {
        exitHook = hook;
    }

    public FormWindow window(Form f) {
        return windows.get(f);
    }

    @Override
    public int MsgBox(String text, int style, String title) {
        int buttons = style & 7;
        String[] options;
        int[] answers;
        switch (buttons) {
            case VbConst.vbOKCancel:
                options = new String[] {OK, CANCEL};
                answers = new int[] {VbConst.vbOK, VbConst.vbCancel};
                break;
            case VbConst.vbAbortRetryIgnore:
                options = new String[] {ABORT, RETRY, IGNORE};
                answers = new int[] {VbConst.vbAbort, VbConst.vbRetry, VbConst.vbIgnore};
                break;
            case VbConst.vbYesNoCancel:
                options = new String[] {YES, NO, CANCEL};
                answers = new int[] {VbConst.vbYes, VbConst.vbNo, VbConst.vbCancel};
                break;
            case VbConst.vbYesNo:
                options = new String[] {YES, NO};
                answers = new int[] {VbConst.vbYes, VbConst.vbNo};
                break;
            case VbConst.vbRetryCancel:
                options = new String[] {RETRY, CANCEL};
                answers = new int[] {VbConst.vbRetry, VbConst.vbCancel};
                break;
            default:
                options = new String[] {OK};
                answers = new int[] {VbConst.vbOK};
        }
        int type;
        switch (style & 0x70) {
            case VbConst.vbCritical:
                type = JOptionPane.ERROR_MESSAGE;
                break;
            case VbConst.vbQuestion:
                type = JOptionPane.QUESTION_MESSAGE;
                break;
            case VbConst.vbExclamation:
                type = JOptionPane.WARNING_MESSAGE;
                break;
            case VbConst.vbInformation:
                type = JOptionPane.INFORMATION_MESSAGE;
                break;
            default:
                type = JOptionPane.PLAIN_MESSAGE;
        }
        int def = Math.min(options.length - 1, (style >> 8) & 3);
        Cursor before = currentCursor();
        setCursorEverywhere(Cursor.getDefaultCursor());
        JOptionPane pane = new JOptionPane(text == null ? "" : text.replace("\r\n", "\n").replace('\r', '\n'),
                type, JOptionPane.DEFAULT_OPTION, null, options, options[def]);
        JDialog d = pane.createDialog(activeWindow(), title == null ? "" : title);
        d.setName("MsgBox");
        nameButtons(d);
        d.setVisible(true);
        d.dispose();
        setCursorEverywhere(before);
        Object v = pane.getValue();
        for (int i = 0; i < options.length; i++) {
            if (options[i].equals(v)) {
                return answers[i];
            }
        }
        // the box was closed by its close box: Cancel where there is one, else the last answer (No / OK)
        for (int i = 0; i < options.length; i++) {
            if (answers[i] == VbConst.vbCancel) {
                return VbConst.vbCancel;
            }
        }
        return answers[answers.length - 1];
    }

    private static void nameButtons(java.awt.Container c) {
        for (java.awt.Component k : c.getComponents()) {
            if (k instanceof JButton b && b.getName() == null) {
                b.setName(b.getText());
            }
            if (k instanceof java.awt.Container cc) {
                nameButtons(cc);
            }
        }
    }

    @Override
    public String InputBox(String prompt, String title, String defaultText) {
        JTextField field = new JTextField(defaultText == null ? "" : defaultText, 30);
        field.setName("InputBoxText");
        Object[] message = {prompt == null ? "" : prompt, field};
        String[] options = {OK, CANCEL};
        JOptionPane pane = new JOptionPane(message, JOptionPane.PLAIN_MESSAGE, JOptionPane.DEFAULT_OPTION, null,
                options, options[0]);
        JDialog d = pane.createDialog(activeWindow(), title == null ? "" : title);
        d.setName("InputBox");
        nameButtons(d);
        d.addWindowFocusListener(new java.awt.event.WindowAdapter() {
            @Override
            public void windowGainedFocus(java.awt.event.WindowEvent e) {
                field.requestFocusInWindow();
            }
        });
        field.addActionListener(e -> pane.setValue(OK));
        Cursor before = currentCursor();
        setCursorEverywhere(Cursor.getDefaultCursor());
        d.setVisible(true);
        d.dispose();
        setCursorEverywhere(before);
        return OK.equals(pane.getValue()) ? field.getText() : "";
    }

    @Override
    public void Beep() {
        Toolkit.getDefaultToolkit().beep();
    }

    @Override
    public void MousePointer(int p) {
        pointer = p;
        setCursorEverywhere(p == VbConst.vbHourglass ? Cursor.getPredefinedCursor(Cursor.WAIT_CURSOR)
                : Cursor.getDefaultCursor());
    }

    public int pointer() {
        return pointer;
    }

    private Cursor currentCursor() {
        return pointer == VbConst.vbHourglass ? Cursor.getPredefinedCursor(Cursor.WAIT_CURSOR) : Cursor.getDefaultCursor();
    }

    private static void setCursorEverywhere(Cursor c) {
        for (Window w : Window.getWindows()) {
            if (w.isDisplayable()) {
                w.setCursor(c);
            }
        }
    }

    static Window activeWindow() {
        Window w = java.awt.KeyboardFocusManager.getCurrentKeyboardFocusManager().getActiveWindow();
        if (w != null && w.isShowing()) {
            return w;
        }
        for (Window x : Window.getWindows()) {
            if (x.isShowing() && !(x instanceof JDialog && "MsgBox".equals(x.getName()))) {
                w = x;
            }
        }
        return w;
    }

    @Override
    public void showForm(Form form, boolean modal, Runnable onShown) {
        if (form instanceof kerova.core.print.PageForm p) { // Part 1.4: a page form is a paper preview
            PagePreview.show(p, modal, onShown);
            return;
        }
        FormWindow w = windows.get(form);
        if (w == null || w.isModal() != modal) {
            if (w != null) {
                w.dispose();
            }
            w = new FormWindow(this, form, modal);
            windows.put(form, w);
        }
        w.show(onShown);
    }

    @Override
    public void hideForm(Form form) {
        if (PagePreview.hide(form)) {
            return;
        }
        FormWindow w = windows.get(form);
        if (w != null) {
            w.hide();
        }
    }

    @Override
    public void closeForm(Form form) {
        if (PagePreview.close(form)) {
            return;
        }
        FormWindow w = windows.remove(form);
        if (w != null) {
            w.dispose();
        }
    }

    @Override
    public void refresh(Form form) {
        FormWindow w = windows.get(form);
        if (w != null) {
            w.window().repaint();
        }
    }

    @Override
    public boolean printerReady() {
        try {
            return java.awt.print.PrinterJob.lookupPrintServices().length > 0;
        } catch (RuntimeException e) {
            return false;
        }
    }

    /** PrintForm: a page form's page through the PrinterJob (Part 1.4); false when no printer is ready. */
    @Override
    public boolean printForm(Form form) {
        if (form instanceof kerova.core.print.PageForm p) {
            return PagePreview.print(p);
        }
        return printerReady();
    }

    @Override
    public void openUrl(String address) {
        try {
            if (java.awt.Desktop.isDesktopSupported()) {
                java.awt.Desktop.getDesktop().browse(java.net.URI.create(address));
            }
        } catch (Exception e) {
            Forms.Beep();
        }
    }

    @Override
    public void exitProcess() {
        for (FormWindow w : windows.values()) {
            w.dispose();
        }
        windows.clear();
        exitHook.run();
    }
}
