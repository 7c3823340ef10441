package kerova.ui.swing;

import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.awt.Container;
import java.awt.Rectangle;
import java.awt.Robot;
import java.awt.Window;
import java.awt.event.WindowEvent;
import java.awt.image.BufferedImage;
import java.io.File;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.List;
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
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.HeadlessUi;
import kerova.core.form.TestVehicleForm;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Assumptions;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/** Drives the real windows under Xvfb by component name, and saves screenshots under target/screenshots. */
class KerovaGuiTest {
    private static final String INSPECTION = "Van olyan jármű, aminek a műszaki vizsgája aktuális!";

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
        LocalDateTime today = VbClock.today();
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        Recordset p = Database.open("Torzsek.dsb").OpenRecordset("VizsgaFigyelmeztetoNap");
        p.AddNew();
        int[] v = {15, 0, 0, 0, 0, 10000, 15000, 20000, 60000, 90000};
        for (int i = 0; i < v.length; i++) {
            p.Fields(i).setValue(v[i]);
        }
        p.Update();
        p.Close();
        insert("parameter.dsb", "Egyebek", "Napidíj", 4500.0, "NapidíjDevizanem", "Ft");
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18",
                "GkVezetoNeve", "Győri Ödön", "MuszakiVizsgaDatum", today.minusDays(40));
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "ŰRH-455", "GkTipus", "Ikarus 280",
                "GkVezetoNeve", "Szűts Írisz", "MuszakiVizsgaDatum", today.minusDays(20));
        insert("Kerova.dsb", "Jarmuvek", "recordID", 3, "GkFrsz", "ABC-123", "GkTipus", "Opel Astra",
                "MuszakiVizsgaDatum", today.plusDays(300));
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

    private static void insert(String db, String table, Object... pairs) {
        Recordset r = Database.open(db).OpenRecordset(table);
        r.AddNew();
        for (int i = 0; i < pairs.length; i += 2) {
            r.set((String) pairs[i], pairs[i + 1]);
        }
        r.Update();
        r.Close();
    }

    // ---------------------------------------------------------------- the test

    @Test
    void startRemindersMenusAndCloseBox() throws Exception {
        SwingApp.start(dir, exits::incrementAndGet);
        Forms.register("GKTorzsFormX", TestVehicleForm::new);

        // the reminder comes first, with its text and title, as a modal box
        JDialog box = confirmMessage("FIGYELEM!", INSPECTION, "01-reminder");
        assertThat(box.isModal()).isTrue();

        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> main.isShowing() ? main : null, "main window showing");
        JTable grid = (JTable) find(main, "DBGrid1");
        waitFor(() -> onEdt(() -> grid.isShowing() && grid.getRowCount() == 2) ? grid : null, "warned grid");
        assertThat(onEdt(() -> grid.getValueAt(0, 0))).isEqualTo("KŐB-112");
        assertThat(onEdt(() -> grid.getValueAt(1, 0))).isEqualTo("ŰRH-455");
        assertThat(onEdt(() -> grid.getColumnCount())).isEqualTo(29);
        assertThat(onEdt(() -> ((JLabel) findIn(main, "Label1", false)).getText()))
                .isEqualTo("Kerova Jármű-, Szerviz- és Útnyilvántartó Adatbázis");
        assertThat(onEdt(main::getTitle)).startsWith("Kerova");
        Thread.sleep(300);
        screenshot("02-main", null);

        // every menu entry opens its window; the main window hides and comes back with the reminders
        String[][] entries = {
            {"UtTav", "GkUtakTavolsagaTorzsFormX"}, {"Vezetok", "VezetokTorzsFormX"},
            {"GKBesz", "BeraktarozokFormX"}, {"Megnevezesek", "MegnevezesTorzsFormX"},
            {"Uzemelteto", "UzemeltetokForm"}, {"AlkatreszTorzse", "cikkszamform"},
            {"ParameterAdat", "ParameterFormX"}, {"KerovatUj", "UtNyilvantartasFormX"},
            {"KMNyt", "KilometerNytFormX"}, {"GKSzamlaBe", "UzemanyagSzamlaFormX"},
            {"SzervizModul", "SzervizmodulFormX"}, {"Lekerdezes", "LekerdezesFormX"},
            {"UaKtsg", "KerovaForm"}, {"AdatSzerviz", "KerovaSzervizFormX"},
            {"Kezik", "KerovaFelhasznaloiKezikonyvForm"},
        };
        int n = 0;
        for (String[] e : entries) {
            clickMenu(main, e[0]);
            JDialog form = waitFor(() -> dialogNamed(e[1]), e[1]);
            // a form that is built (a Part of its own) is tested by its Part's GUI test; here it only opens
            if (onEdt(() -> Forms.get(e[1]) instanceof kerova.core.form.StandInForm)) {
                assertThat(onEdt(form::getTitle)).isEqualTo(e[1]);
                assertThat(onEdt(() -> ((JLabel) findIn(form, "Label1", false)).getText()))
                        .isEqualTo("Ez a modul még nem készült el.");
            }
            boolean stays = e[1].equals("KerovaForm") || e[1].equals("KerovaSzervizFormX");
            assertThat(onEdt(main::isVisible)).as(e[1]).isEqualTo(stays);
            if (e[1].equals("KerovaForm")) {
                assertThat(onEdt(main::isEnabled)).isFalse();
            }
            if (n++ < 2 || stays) {
                Thread.sleep(200);
                screenshot(String.format("03-menu-%s", e[1]), null);
            }
            if (n == 1) {
                // the stand-in's own button closes it
                AbstractButton exit = (AbstractButton) find(form, "Kilepes");
                SwingUtilities.invokeLater(exit::doClick);
            } else {
                // the close box takes the form's exit handler
                SwingUtilities.invokeLater(() -> form.dispatchEvent(new WindowEvent(form, WindowEvent.WINDOW_CLOSING)));
            }
            confirmMessage("FIGYELEM!", INSPECTION, null);
            waitFor(() -> onEdt(() -> main.isShowing() && main.isEnabled()) ? main : null, "main back after " + e[1]);
        }

        // the close box of a form takes its exit handler: the vehicle form's mandatory check asks
        insert("Kerova.dsb", "Jarmuvek", "recordID", 4, "GkFrsz", "NEW-001");
        clickMenu(main, "Gepkocsik");
        JDialog vehicles = waitFor(() -> dialogNamed("TestVehicleForm"), "vehicle form");
        assertThat(onEdt(main::isVisible)).isFalse();
        Thread.sleep(200);
        screenshot("04-vehicle-form", null);
        SwingUtilities.invokeLater(() -> vehicles.dispatchEvent(new WindowEvent(vehicles, WindowEvent.WINDOW_CLOSING)));
        JDialog question = waitFor(() -> dialogTitled(TestVehicleForm.MANDATORY_TITLE), "exit question");
        assertThat(messageOf(question)).isEqualTo(TestVehicleForm.MANDATORY_TEXT);
        assertThat(buttonTexts(question)).containsExactly("Igen", "Nem");
        Thread.sleep(200);
        screenshot("05-close-box-question", null);
        click(question, "Igen");
        confirmMessage("FIGYELEM!", INSPECTION, null);
        waitFor(() -> onEdt(main::isShowing) ? main : null, "main back after the vehicle form");
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
        assertThat(r.size2()).isEqualTo(3);
        r.Close();

        // Kilepes ends the program through the exit hook
        clickMenu(main, "Kilepes");
        waitFor(() -> exits.get() == 1 ? exits : null, "exit");
        assertThat(onEdt(main::isDisplayable)).isFalse();
    }

    // ---------------------------------------------------------------- helpers

    private JDialog confirmMessage(String title, String text, String shot) throws Exception {
        JDialog box = waitFor(() -> dialogTitled(title), "message " + text);
        assertThat(messageOf(box)).isEqualTo(text);
        assertThat(buttonTexts(box)).containsExactly("OK");
        assertThat(onEdt(() -> ((JOptionPane) findType(box, JOptionPane.class)).getMessageType()))
                .isEqualTo(JOptionPane.WARNING_MESSAGE);
        if (shot != null) {
            Thread.sleep(300);
            screenshot(shot, null);
        }
        click(box, "OK");
        waitFor(() -> onEdt(box::isShowing) ? null : box, "box closed");
        return box;
    }

    private static String messageOf(JDialog d) throws Exception {
        return onEdt(() -> String.valueOf(((JOptionPane) findType(d, JOptionPane.class)).getMessage()));
    }

    private static List<String> buttonTexts(Container c) throws Exception {
        return onEdt(() -> {
            List<String> out = new ArrayList<>();
            collectButtons(c, out);
            return out;
        });
    }

    private static void collectButtons(Container c, List<String> out) {
        for (Component k : c.getComponents()) {
            if (k instanceof javax.swing.JButton b) {
                out.add(b.getText());
            }
            if (k instanceof Container cc) {
                collectButtons(cc, out);
            }
        }
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

    private static void clickMenu(JFrame main, String name) throws Exception {
        AbstractButton item = onEdt(() -> (AbstractButton) findIn(main.getJMenuBar(), name, true));
        assertThat(item).as("menu " + name).isNotNull();
        SwingUtilities.invokeLater(item::doClick);
    }

    private static Component find(Container root, String name) {
        Component c = onEdt(() -> {
            Component k = findIn(root, name, false);
            if (k == null && root instanceof JFrame f && f.getJMenuBar() != null) {
                k = findIn(f.getJMenuBar(), name, true);
            }
            return k;
        });
        assertThat(c).as("component " + name).isNotNull();
        return c;
    }

    private static Component findIn(Container root, String name, boolean menus) {
        if (name.equals(root.getName())) {
            return root;
        }
        Component[] kids = root instanceof javax.swing.JMenu m ? m.getMenuComponents() : root.getComponents();
        for (Component k : kids) {
            if (name.equals(k.getName())) {
                return k;
            }
            if (k instanceof Container cc) {
                Component f = findIn(cc, name, menus);
                if (f != null) {
                    return f;
                }
            }
        }
        return null;
    }

    private static Component findType(Container root, Class<?> type) {
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
            if (w instanceof JDialog d && title.equals(d.getTitle()) && d.isShowing()
                    && findType(d, JOptionPane.class) != null) {
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
        throw new AssertionError("timed out waiting for " + what + "; showing: " + onEdt(KerovaGuiTest::showing));
    }

    private static String showing() {
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

    /** The screen (every window as it shows) into target/screenshots/NAME.png. */
    private void screenshot(String name, Window only) throws Exception {
        BufferedImage img;
        try {
            Rectangle all = null;
            for (Window w : onEdt(Window::getWindows)) {
                if (onEdt(w::isShowing)) {
                    Rectangle b = onEdt(w::getBounds);
                    all = all == null ? b : all.union(b);
                }
            }
            all = all == null ? new Rectangle() : all;
            img = new Robot().createScreenCapture(all.isEmpty() ? new Rectangle(0, 0, 800, 600) : all);
        } catch (java.awt.AWTException | SecurityException e) {
            return;
        }
        ImageIO.write(img, "png", new File(shots.toFile(), name + ".png"));
    }
}
