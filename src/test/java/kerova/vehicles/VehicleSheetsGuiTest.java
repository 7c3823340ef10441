package kerova.vehicles;

import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.awt.Container;
import java.awt.Rectangle;
import java.awt.Robot;
import java.awt.Window;
import java.awt.image.BufferedImage;
import java.io.File;
import java.math.BigDecimal;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.time.LocalDateTime;
import java.util.List;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.atomic.AtomicInteger;
import java.util.concurrent.atomic.AtomicReference;
import java.util.function.Supplier;
import javax.imageio.ImageIO;
import javax.swing.AbstractButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.JOptionPane;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.Globals;
import kerova.core.db.AccessFile;
import kerova.core.db.CompanyFolder;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.HeadlessUi;
import kerova.core.print.PageForm;
import kerova.core.vb.VbClock;
import kerova.ui.swing.PdfExport;
import kerova.ui.swing.SwingApp;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Assumptions;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * Part 2.2 under Xvfb: the vehicle form opened from the main menu, its print buttons, the sheet
 * preview by component names, a sheet saved by PdfExport and rendered with pdftoppm; screenshots in
 * target/screenshots.
 */
class VehicleSheetsGuiTest {
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
        LocalDateTime today = VbClock.today();
        LocalDateTime later = today.plusYears(1);
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        insert("Kerova.dsb", "beraktar", "recordID", 1, "BerNev", "Őrségi Szerviz Kft.");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "GkTipus", "Rába H18 űrszelvény",
                "GkForgalombahelyezve", LocalDateTime.of(2019, 3, 15, 0, 0), "KilometerOraAllasa", 120500.0,
                "Hengerurtartalom", 10350.0, "FogyasztásLiter100", 32.5, "GkVezetoNeve", "Győri Ödön",
                "UtolsoSzervizDatum", LocalDateTime.of(2026, 5, 2, 0, 0), "JelenlegiKmAllas", 185250.0,
                "SzervizIntervallumNap", 180, "SzervizIntervallumKM", 15000.0,
                "MuszakiVizsgaDatum", today.minusMonths(2), "KotelezoBiztDatum", later,
                "CascoHaviDija", new BigDecimal("12500.5"), "KotelezoHaviDija", new BigDecimal("8400"),
                "OnkoltsegKm", 212.75);
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "ŰRH-455", "GkTipus", "Ikarus 280",
                "GkVezetoNeve", "Szűts Írisz", "MuszakiVizsgaDatum", later, "KotelezoBiztDatum", later,
                "Hengerurtartalom", 10690.0, "FogyasztásLiter100", 41.0);
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
    void sheetPreviewFromTheVehicleForm() throws Exception {
        SwingApp.start(dir, exits::incrementAndGet);
        JFrame main = waitFor(() -> frame("KerovaX"), "main window");
        waitFor(() -> main.isShowing() ? main : null, "main showing");
        clickMenu(main.getJMenuBar(), "Gepkocsik");
        JDialog form = waitFor(() -> dialogNamed("GKTorzsFormX"), "vehicle form");
        JTextComponent text1 = (JTextComponent) find(form, "Text1");
        waitFor(() -> "ŰRH-455".equals(text1.getText()) ? text1 : null, "last vehicle");

        // "Aktuális lap nyomtatása" (Command6): the sheet of the current vehicle in a modal preview
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command6"))::doClick);
        JDialog sheet = waitFor(() -> dialogNamed("GKTorzsNyomFormX"), "sheet preview");
        assertThat(onEdt(sheet::isModal)).isTrue();
        assertThat(onEdt(sheet::getTitle)).isEqualTo("Gépjármű adatlap");
        assertThat(onEdt(() -> ((AbstractButton) find(sheet, "Command1")).getText())).isEqualTo("Tovább");
        assertThat(onEdt(() -> ((AbstractButton) find(sheet, "Command2")).getText())).isEqualTo("Nyomtat");
        assertThat(onEdt(() -> ((AbstractButton) find(sheet, "Command3")).getText())).isEqualTo("Mégse");
        Component paper = find(sheet, "GKTorzsNyomFormX.paper");
        assertThat(onEdt(paper::isShowing)).isTrue();
        assertThat(onEdt(() -> paper.getHeight() > paper.getWidth())).isTrue();
        GKTorzsNyomFormX page = VehicleSheets.pageForm();
        assertThat(page.line(1).Caption()).isEqualTo("Forgalmi rendszám: ŰRH-455");
        assertThat(page.line(7).Caption()).isEqualTo("Járművezető neve: Szűts Írisz");
        assertThat(page.line(3).Caption()).isEqualTo("Forgalomba helyezve: " + kerova.core.vb.Conv.dateText(VbClock.today()));
        Thread.sleep(400);
        screenshot("vehicle-sheet-1-current");
        click(sheet, "Tovább");
        waitFor(() -> onEdt(sheet::isShowing) ? null : sheet, "sheet closed");

        // "Műszaki viszga szükségesség nyomtatása" (Command8): KŐB-112, line 13 misspelled
        SwingUtilities.invokeLater(((AbstractButton) find(form, "Command8"))::doClick);
        JDialog sheet2 = waitFor(() -> dialogNamed("GKTorzsNyomFormX"), "inspection sheet");
        assertThat(page.line(1).Caption()).isEqualTo("Forgalmi rendszám: KŐB-112");
        assertThat(page.line(5).Caption()).isEqualTo("Hengerűrtartalom: 10350");
        assertThat(page.line(13).Caption()).startsWith("Zöld kártya lajárat (környezetvédelmi) dátuma: ");
        Thread.sleep(400);
        screenshot("vehicle-sheet-2-inspection");

        // this sheet as a PDF (PdfExport, the drawing of the preview and the printer), rendered with
        // pdftoppm at 60 dpi
        assertThat(onEdt(() -> ((AbstractButton) find(sheet2, "PdfMentes")).getText())).isEqualTo("PDF mentés...");
        Path pdf = dir.resolve("adatlap.pdf");
        PdfExport.write(List.of(onEdt(page::page)), pdf);
        assertThat(pdf.toFile().length()).isGreaterThan(1000);
        if (has("pdftotext") && has("pdftoppm")) {
            String text = run("pdftotext", "-layout", "-enc", "UTF-8", pdf.toString(), "-");
            assertThat(text).contains("GÉPJÁRMŰ ADATLAP", "Forgalmi rendszám: KŐB-112", "Típus: Rába H18 űrszelvény",
                    "Hengerűrtartalom: 10350", "Járművezető neve: Győri Ödön",
                    "Zöld kártya lajárat (környezetvédelmi) dátuma: ", "Önköltség/kilométer: 212,75", "Kiadva: ");
            assertThat(text).doesNotContain("Tovább", "Mégse");
            Path prefix = shots.toAbsolutePath().resolve("vehicle-sheet-pdf");
            run("pdftoppm", "-png", "-r", "60", "-f", "1", "-l", "1", "-singlefile", pdf.toString(), prefix.toString());
            BufferedImage img = ImageIO.read(prefix.resolveSibling("vehicle-sheet-pdf.png").toFile());
            assertThat(img.getWidth()).isBetween(490, 500);
        }

        // "Mégse": the loop stops, the form's normal RecordSource is back
        click(sheet2, "Mégse");
        waitFor(() -> onEdt(sheet2::isShowing) ? null : sheet2, "inspection sheet closed");
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        GKTorzsFormX vehicles = (GKTorzsFormX) Forms.get("GKTorzsFormX");
        waitFor(() -> VehicleSheets.NORMAL_SOURCE.equals(vehicles.JarmuvekData.RecordSource()) ? vehicles : null,
                "normal source");
        Thread.sleep(300);
        screenshot("vehicle-sheet-3-back");
        assertThat(onEdt(() -> dialogNamed("GKTorzsNyomFormX"))).isNull();
        assertThat(exits.get()).isZero();
    }

    // ---------------------------------------------------------------- helpers

    static boolean has(String tool) {
        try {
            Process p = new ProcessBuilder(tool, "-v").redirectErrorStream(true).start();
            p.getInputStream().readAllBytes();
            return p.waitFor(20, TimeUnit.SECONDS);
        } catch (Exception e) {
            return false;
        }
    }

    static String run(String... cmd) throws Exception {
        Process p = new ProcessBuilder(cmd).redirectErrorStream(true).start();
        String out = new String(p.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
        assertThat(p.waitFor(60, TimeUnit.SECONDS)).isTrue();
        assertThat(p.exitValue()).as(String.join(" ", cmd) + ": " + out).isZero();
        return out;
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
        throw new AssertionError("timed out waiting for " + what + "; showing: " + onEdt(VehicleSheetsGuiTest::showing));
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
