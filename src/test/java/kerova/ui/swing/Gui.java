package kerova.ui.swing;

import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.awt.Container;
import java.awt.Rectangle;
import java.awt.Robot;
import java.awt.Window;
import java.awt.image.BufferedImage;
import java.io.File;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.Predicate;
import java.util.function.Supplier;
import javax.imageio.ImageIO;
import javax.swing.AbstractButton;
import javax.swing.JButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JMenu;
import javax.swing.JMenuBar;
import javax.swing.JOptionPane;
import javax.swing.RootPaneContainer;
import javax.swing.SwingUtilities;
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.HeadlessUi;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.Assumptions;

/**
 * What the GUI tests share: a company folder for a test, the event thread, waiting, finding windows
 * and components by name, clicking, the message boxes, screenshots into target/screenshots and the
 * external tools (pdftotext, pdftoppm).
 */
public final class Gui {
    /** How long {@link #waitFor} waits before it fails. */
    public static final long TIMEOUT_MS = 10_000;

    private Gui() {
    }

    // ---------------------------------------------------------------- set-up and tear-down

    /** Skips the test without a display; else an empty company in {@code dir}, with fresh globals and clock. */
    public static void openCompany(Path dir) {
        Assumptions.assumeFalse(java.awt.GraphicsEnvironment.isHeadless(), "needs a display (xvfb-run)");
        AccessFile.closeAll();
        CompanyFolder.init(dir, false);
        AccessFile.setWorkingFolder(dir);
        Globals.reset();
        VbClock.reset();
    }

    /**
     * Disposes every window, puts the headless forms back and closes the files. Disposing a modal form
     * lets the code that showed it go on (the main window shows again, a reminder box opens), so the
     * windows are disposed again until two rounds in a row find none left.
     */
    public static void closeAll() throws Exception {
        int quiet = 0;
        for (int round = 0; round < 50 && quiet < 2; round++) {
            boolean any = onEdt(() -> {
                boolean found = false;
                for (Window w : Window.getWindows()) {
                    found |= w.isDisplayable();
                    w.dispose();
                }
                return found;
            });
            quiet = any ? 0 : quiet + 1;
            Thread.sleep(any ? 100 : 50);
        }
        Forms.reset();
        Forms.setUi(new HeadlessUi());
        AccessFile.closeAll();
    }

    /** A new row in {@code table} of {@code db}, from the values of its fields in order. */
    public static void insertValues(String db, String table, Object... values) {
        Recordset r = Database.open(db).OpenRecordset(table);
        r.AddNew();
        for (int i = 0; i < values.length; i++) {
            r.Fields(i).setValue(values[i]);
        }
        r.Update();
        r.Close();
    }

    /** Starts the program on {@code dir} and waits for its main window (KerovaX) to show. */
    public static JFrame startMain(Path dir, Runnable exit) throws Exception {
        SwingApp.start(dir, exit);
        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> main.isShowing() ? main : null, "main showing");
        return main;
    }

    // ---------------------------------------------------------------- the event thread and waiting

    /** {@code s} on the event dispatch thread, and its value. */
    public static <T> T onEdt(Supplier<T> s) {
        if (SwingUtilities.isEventDispatchThread()) {
            return s.get();
        }
        AtomicReference<T> ref = new AtomicReference<>();
        try {
            SwingUtilities.invokeAndWait(() -> ref.set(s.get()));
        } catch (java.lang.reflect.InvocationTargetException e) {
            throw new IllegalStateException(e.getCause());
        } catch (InterruptedException e) {
            Thread.currentThread().interrupt();
            throw new IllegalStateException(e);
        }
        return ref.get();
    }

    /** The first value of {@code s} (asked on the event thread) that is not null; fails after {@link #TIMEOUT_MS}. */
    public static <T> T waitFor(Supplier<T> s, String what) throws Exception {
        long end = System.currentTimeMillis() + TIMEOUT_MS;
        while (System.currentTimeMillis() < end) {
            T v = onEdt(s);
            if (v != null) {
                return v;
            }
            Thread.sleep(50);
        }
        throw new AssertionError("timed out waiting for " + what + "; showing: " + onEdt(Gui::showing));
    }

    /** The showing windows with their names, titles and messages, for a failure message. */
    public static String showing() {
        StringBuilder b = new StringBuilder();
        for (Window w : Window.getWindows()) {
            if (w.isShowing()) {
                b.append("[").append(w.getName()).append(" ");
                if (w instanceof JDialog d) {
                    b.append(d.getTitle());
                    Component p = findType(d, JOptionPane.class);
                    if (p != null) {
                        b.append(": ").append(((JOptionPane) p).getMessage());
                    }
                } else if (w instanceof JFrame f) {
                    b.append(f.getTitle());
                }
                b.append("] ");
            }
        }
        return b.toString();
    }

    // ---------------------------------------------------------------- windows

    /** The displayable frame of that component name, or null. */
    public static JFrame frame(String name) {
        for (Window w : Window.getWindows()) {
            if (w instanceof JFrame f && name.equals(f.getName()) && f.isDisplayable()) {
                return f;
            }
        }
        return null;
    }

    /** The showing dialog of that component name, or null. */
    public static JDialog dialogNamed(String name) {
        return showingDialog(d -> name.equals(d.getName()));
    }

    /** The showing dialog of that title, or null. */
    public static JDialog dialogTitled(String title) {
        return showingDialog(d -> title.equals(d.getTitle()));
    }

    /** The showing message box (a dialog with a JOptionPane) of that title, or null. */
    public static JDialog messageBox(String title) {
        return showingDialog(d -> title.equals(d.getTitle()) && findType(d, JOptionPane.class) != null);
    }

    /** The first showing dialog that {@code p} accepts, or null. */
    public static JDialog showingDialog(Predicate<JDialog> p) {
        for (Window w : Window.getWindows()) {
            if (w instanceof JDialog d && d.isShowing() && p.test(d)) {
                return d;
            }
        }
        return null;
    }

    /** The titles of the message boxes that show. */
    public static List<String> showingMessages() {
        return onEdt(() -> {
            List<String> out = new ArrayList<>();
            for (Window w : Window.getWindows()) {
                if (w instanceof JDialog d && d.isShowing() && findType(d, JOptionPane.class) != null) {
                    out.add(d.getTitle());
                }
            }
            return out;
        });
    }

    // ---------------------------------------------------------------- components

    /** The component of that name below {@code root} (the menus too), on the event thread; asserted to be there. */
    public static Component find(Container root, String name) {
        Component c = onEdt(() -> {
            Component k = findIn(root, name);
            if (k == null && root instanceof RootPaneContainer w && w.getRootPane() != null
                    && w.getRootPane().getJMenuBar() != null) {
                k = findIn(w.getRootPane().getJMenuBar(), name);
            }
            return k;
        });
        assertThat(c).as("component " + name).isNotNull();
        return c;
    }

    /** The component of that name: {@code root} itself or one below it, the items of menus too; or null. */
    public static Component findIn(Container root, String name) {
        if (name.equals(root.getName())) {
            return root;
        }
        Component[] kids = root instanceof JMenu m ? m.getMenuComponents() : root.getComponents();
        for (Component k : kids) {
            if (name.equals(k.getName())) {
                return k;
            }
            if (k instanceof Container cc) {
                Component f = findIn(cc, name);
                if (f != null) {
                    return f;
                }
            }
        }
        return null;
    }

    /** The first component of that type below {@code root}, or null. */
    public static Component findType(Container root, Class<?> type) {
        for (Component k : root.getComponents()) {
            if (type.isInstance(k)) {
                return k;
            }
            if (k instanceof Container cc) {
                Component f = findType(cc, type);
                if (f != null) {
                    return f;
                }
            }
        }
        return null;
    }

    /** The first button with that text below {@code c}, or null. */
    public static AbstractButton findButton(Container c, String text) {
        for (Component k : c.getComponents()) {
            if (k instanceof AbstractButton b && text.equals(b.getText())) {
                return b;
            }
            if (k instanceof Container cc) {
                AbstractButton b = findButton(cc, text);
                if (b != null) {
                    return b;
                }
            }
        }
        return null;
    }

    /** The texts of the push buttons below {@code c}, in order. */
    public static List<String> buttonTexts(Container c) {
        return onEdt(() -> {
            List<String> out = new ArrayList<>();
            collectButtons(c, out);
            return out;
        });
    }

    private static void collectButtons(Container c, List<String> out) {
        for (Component k : c.getComponents()) {
            if (k instanceof JButton b) {
                out.add(b.getText());
            }
            if (k instanceof Container cc) {
                collectButtons(cc, out);
            }
        }
    }

    // ---------------------------------------------------------------- clicking

    /** Clicks (later, on the event thread) the button with that text. */
    public static void clickText(Container c, String text) {
        AbstractButton b = onEdt(() -> findButton(c, text));
        assertThat(b).as("button " + text).isNotNull();
        SwingUtilities.invokeLater(b::doClick);
    }

    /** Clicks (later, on the event thread) the button of that component name. */
    public static void clickNamed(Container c, String name) {
        AbstractButton b = (AbstractButton) find(c, name);
        SwingUtilities.invokeLater(b::doClick);
    }

    /** Clicks (later, on the event thread) the button of that component name, or else the one with that text. */
    public static void click(Container c, String nameOrText) {
        AbstractButton b = onEdt(() -> {
            Component k = findIn(c, nameOrText);
            return k instanceof AbstractButton ab ? ab : findButton(c, nameOrText);
        });
        assertThat(b).as("button " + nameOrText).isNotNull();
        SwingUtilities.invokeLater(b::doClick);
    }

    /**
     * Clicks (later, on the event thread) the menu item of that name: in the menu bar of {@code c} where it
     * is a frame or dialog, else below {@code c} itself (a menu bar).
     */
    /** Clicks a main-menu entry and waits for the modal form it opens. */
    public static JDialog openFromMenu(JFrame main, String menuEntry, String formName) throws Exception {
        clickMenu(main.getJMenuBar(), menuEntry);
        return waitFor(() -> dialogNamed(formName), formName);
    }

    public static void clickMenu(Container c, String name) {
        AbstractButton item = onEdt(() -> (AbstractButton) findIn(menuBar(c), name));
        assertThat(item).as("menu " + name).isNotNull();
        SwingUtilities.invokeLater(item::doClick);
    }

    private static Container menuBar(Container c) {
        if (c instanceof RootPaneContainer w) {
            JMenuBar bar = w.getRootPane().getJMenuBar();
            if (bar != null) {
                return bar;
            }
        }
        return c;
    }

    // ---------------------------------------------------------------- message boxes

    /** The message of the JOptionPane in {@code d}, as text. */
    public static String messageOf(JDialog d) {
        return onEdt(() -> String.valueOf(((JOptionPane) findType(d, JOptionPane.class)).getMessage()));
    }

    /** The message type of the JOptionPane in {@code d}. */
    public static int messageTypeOf(JDialog d) {
        return onEdt(() -> ((JOptionPane) findType(d, JOptionPane.class)).getMessageType());
    }

    /**
     * Waits for the message box of {@code title}, checks its text, its type and (where given) its buttons,
     * takes the screenshot {@code shot} unless it is null, clicks "OK" and waits until the box is gone.
     */
    public static JDialog confirm(String title, String text, int type, String shot, String... buttons)
            throws Exception {
        JDialog box = waitFor(() -> messageBox(title), "message " + text);
        assertThat(messageOf(box)).isEqualTo(text);
        if (buttons.length > 0) {
            assertThat(buttonTexts(box)).containsExactly(buttons);
        }
        assertThat(messageTypeOf(box)).isEqualTo(type);
        if (shot != null) {
            Thread.sleep(300);
            screenshot(shot);
        }
        clickText(box, "OK");
        waitFor(() -> onEdt(box::isShowing) ? null : box, "box closed");
        return box;
    }

    // ---------------------------------------------------------------- screenshots

    /** The screenshot folder (system property kerova.screenshots, else target/screenshots), made if missing. */
    public static Path shots() {
        Path shots = Paths.get(System.getProperty("kerova.screenshots", "target/screenshots"));
        try {
            Files.createDirectories(shots);
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
        return shots;
    }

    /** The screen (every window as it shows) into the screenshot folder as NAME.png; nothing without a robot. */
    public static void screenshot(String name) throws Exception {
        BufferedImage img;
        try {
            Rectangle all = null;
            for (Window w : onEdt(Window::getWindows)) {
                if (onEdt(w::isShowing)) {
                    Rectangle b = onEdt(w::getBounds);
                    all = all == null ? b : all.union(b);
                }
            }
            all = all == null || all.isEmpty() ? new Rectangle(0, 0, 800, 600) : all;
            img = new Robot().createScreenCapture(all);
        } catch (java.awt.AWTException | SecurityException e) {
            return;
        }
        ImageIO.write(img, "png", new File(shots().toFile(), name + ".png"));
    }

    // ---------------------------------------------------------------- external tools

    /** Whether the command-line tool answers {@code -v} (poppler-utils: pdftotext, pdftoppm, ...). */
    public static boolean hasTool(String tool) {
        try {
            Process p = new ProcessBuilder(tool, "-v").redirectErrorStream(true).start();
            p.getInputStream().readAllBytes();
            return p.waitFor(20, TimeUnit.SECONDS);
        } catch (Exception e) {
            return false;
        }
    }

    /** Runs {@code cmd} in {@code workDir} (null: this folder), asserts it ends with 0, and its output. */
    public static String runTool(Path workDir, String... cmd) throws Exception {
        ProcessBuilder pb = new ProcessBuilder(cmd).redirectErrorStream(true);
        if (workDir != null) {
            pb.directory(workDir.toFile());
        }
        Process p = pb.start();
        String out = new String(p.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        assertThat(p.waitFor(60, TimeUnit.SECONDS)).isTrue();
        assertThat(p.exitValue()).as(String.join(" ", cmd) + ": " + out).isZero();
        return out;
    }
}
