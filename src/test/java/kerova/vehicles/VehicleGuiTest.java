package kerova.vehicles;

import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.awt.Container;
import java.awt.Rectangle;
import java.awt.Robot;
import java.awt.Window;
import java.awt.image.BufferedImage;
import java.io.File;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.time.LocalDateTime;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.Supplier;
import javax.imageio.ImageIO;
import javax.swing.AbstractButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JLabel;
import javax.swing.JOptionPane;
import javax.swing.JTable;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.HeadlessUi;
import kerova.core.vb.VbClock;
import kerova.ui.swing.SwingApp;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Assumptions;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** The vehicle form under Xvfb: opened from the main menu, a search and a new record, by component names. */
class VehicleGuiTest {
    @TempDir
    Path dir;
    private final AtomicInteger exits = new AtomicInteger();
    private Path shots;

    @BeforeEach
    void setUp() throws Exception {
        Assumptions.assumeFalse(java.awt.GraphicsEnvironment.isHeadless(), "needs a display (xvfb-run)");
        AccessFile.closeAll();
        CompanyFolder.init(dir, false);
        AccessFile.setWorkingFolder(dir);
        Globals.reset();
        VbClock.reset();
        Forms.reset();
        LocalDateTime later = VbClock.today().plusYears(1);
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "beraktar", "recordID", 1, "BerNev", "Őrségi Szerviz Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "GkVezetoNeve", "Győri Ödön", "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later,
                "PartnerNeve", "Őrségi Szerviz Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "ŰRH-455", "GkTipus", "Ikarus 280",
                "GkVezetoNeve", "Szűts Írisz", "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later);
        shots = Paths.get(System.getProperty("kerova.screenshots", "target/screenshots"));
        Files.createDirectories(shots);
    }

    @AfterEach
    void tearDown() throws Exception {
        SwingUtilities.invokeAndWait(() -> {
            for (Window w : Window.getWindows()) {
                w.dispose();
            }
        });
        Forms.reset();
        Forms.setUi(new HeadlessUi());
        AccessFile.closeAll();
    }

    @Test
    void openSearchAndNewRecordFromTheMainMenu() throws Exception {
        SwingApp.start(dir, exits::incrementAndGet);
        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> main.isShowing() ? main : null, "main showing");
        clickMenu(main.getJMenuBar(), "Gepkocsik");
        JDialog form = waitFor(() -> dialogNamed("GKTorzsFormX"), "vehicle form");
        assertThat(onEdt(form::getTitle)).isEqualTo("Járművek nyilvántartása törzs Tartosan és Kerova");
        waitFor(() -> main.isVisible() ? null : main, "main window hidden"); // it hides once the form shows
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "ŰRH-455".equals(text1.getText()) ? text1 : null, "last vehicle");
        assertThat(onEdt(() -> find(form, "Valaszt").isVisible())).isFalse();
        JTable grid = (JTable) find(form, "DBGrid1");
        assertThat(onEdt(grid::getRowCount)).isEqualTo(2);

        // the plate search
        clickMenu(form.getJMenuBar(), "FrszKeres");
        JDialog input = waitFor(() -> dialogTitled("Keresés rendszám szerint"), "input box");
        onEdt(() -> {
            ((JTextComponent) findIn(input, "InputBoxText")).setText("KŐ");
            return null;
        });
        click(input, "OK");
        waitFor(() -> "KŐB-112".equals(text1.getText()) ? text1 : null, "found KŐB-112");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text5")).getText())).isEqualTo("Győri Ödön");
        assertThat(onEdt(() -> ((JTextComponent) find(form, "Text13")).getText())).isEqualTo("Őrségi Szerviz Kft.");
        Thread.sleep(300);
        screenshot("vehicles-01-search");

        // a new record: key 3, the plate typed and turned to capitals on leaving
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command3"))::doClick);
        JLabel key = (JLabel) find(form, "Label24");
        waitFor(() -> "3".equals(key.getText()) ? key : null, "new key");
        onEdt(() -> {
            text1.requestFocusInWindow();
            text1.setText("győ-315");
            ((JTextComponent) find(form, "Text2")).setText("Volvo FH űrszelvény");
            return null;
        });
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command4"))::doClick);
        waitFor(() -> onEdt(grid::getRowCount) == 3 ? grid : null, "three rows");
        Thread.sleep(300);
        screenshot("vehicles-02-new-record");

        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command13"))::doClick);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back");
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("select * from Jarmuvek order by recordID");
        r.MoveLast();
        assertThat(r.get("recordID")).isEqualTo(3);
        assertThat(r.get("GkTipus")).isEqualTo("Volvo FH űrszelvény");
        assertThat(String.valueOf(r.get("GkFrsz"))).isIn("győ-315", "GYŐ-315");
        r.Close();
    }

    // ---------------------------------------------------------------- helpers

    private static void insert(String db, String table, Object... pairs) {
        Recordset r = Database.open(db).OpenRecordset(table);
        r.AddNew();
        for (int i = 0; i < pairs.length; i += 2) {
            r.set((String) pairs[i], pairs[i + 1]);
        }
        r.Update();
        r.Close();
    }

    private static void click(Container c, String text) throws Exception {
        AbstractButton b = onEdt(() -> findButton(c, text));
        assertThat(b).as("button " + text).isNotNull();
        SwingUtilities.invokeLater(b::doClick);
    }

    private static AbstractButton findButton(Container c, String text) {
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

    private static void clickMenu(Container bar, String name) throws Exception {
        AbstractButton item = onEdt(() -> (AbstractButton) findIn(bar, name));
        assertThat(item).as("menu " + name).isNotNull();
        SwingUtilities.invokeLater(item::doClick);
    }

    private static Component find(Container root, String name) {
        Component c = onEdt(() -> {
            Component k = findIn(root, name);
            if (k == null && root instanceof JDialog d && d.getJMenuBar() != null) {
                k = findIn(d.getJMenuBar(), name);
            }
            return k;
        });
        assertThat(c).as("component " + name).isNotNull();
        return c;
    }

    private static Component findIn(Container root, String name) {
        if (name.equals(root.getName())) {
            return root;
        }
        Component[] kids = root instanceof javax.swing.JMenu m ? m.getMenuComponents() : root.getComponents();
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

    private static JFrame frame(String name) {
        for (Window w : Window.getWindows()) {
            if (w instanceof JFrame f && name.equals(f.getName()) && f.isDisplayable()) {
                return f;
            }
        }
        return null;
    }

    private static JDialog dialogNamed(String name) {
        for (Window w : Window.getWindows()) {
            if (w instanceof JDialog d && name.equals(d.getName()) && d.isShowing()) {
                return d;
            }
        }
        return null;
    }

    private static JDialog dialogTitled(String title) {
        for (Window w : Window.getWindows()) {
            if (w instanceof JDialog d && title.equals(d.getTitle()) && d.isShowing()) {
                return d;
            }
        }
        return null;
    }

    private static <T> T onEdt(Supplier<T> s) {
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

    private static <T> T waitFor(Supplier<T> s, String what) throws Exception {
        long end = System.currentTimeMillis() + 10_000;
        while (System.currentTimeMillis() < end) {
            T v = onEdt(s);
            if (v != null) {
                return v;
            }
            Thread.sleep(50);
        }
        throw new AssertionError("timed out waiting for " + what + "; showing: " + onEdt(VehicleGuiTest::showing));
    }

    private static String showing() {
        StringBuilder b = new StringBuilder();
        for (Window w : Window.getWindows()) {
            if (w.isShowing()) {
                b.append("[").append(w.getName()).append(" ");
                if (w instanceof JDialog d) {
                    b.append(d.getTitle());
                    for (Component k : d.getContentPane().getComponents()) {
                        if (k instanceof JOptionPane p) {
                            b.append(": ").append(p.getMessage());
                        }
                    }
                }
                b.append("] ");
            }
        }
        return b.toString();
    }

    private void screenshot(String name) throws Exception {
        Rectangle all = null;
        for (Window w : onEdt(Window::getWindows)) {
            if (onEdt(w::isShowing)) {
                Rectangle b = onEdt(w::getBounds);
                all = all == null ? b : all.union(b);
            }
        }
        all = all == null || all.isEmpty() ? new Rectangle(0, 0, 800, 600) : all;
        BufferedImage img = new Robot().createScreenCapture(all);
        ImageIO.write(img, "png", new File(shots.toFile(), name + ".png"));
    }
}
