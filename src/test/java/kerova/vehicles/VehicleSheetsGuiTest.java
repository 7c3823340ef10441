package kerova.vehicles;

import static kerova.core.form.FormTestBase.insert;
import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.awt.image.BufferedImage;
import java.math.BigDecimal;
import java.nio.file.Path;
import java.time.LocalDateTime;
import java.util.List;
import java.util.concurrent.atomic.AtomicInteger;
import javax.imageio.ImageIO;
import javax.swing.AbstractButton;
import javax.swing.JDialog;
import javax.swing.JFrame;
import javax.swing.SwingUtilities;
import javax.swing.text.JTextComponent;
import kerova.core.form.Forms;
import kerova.core.print.PageForm;
import kerova.core.vb.VbClock;
import kerova.ui.swing.PdfExport;
import org.junit.jupiter.api.AfterEach;
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

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
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
    }

    @AfterEach
    void tearDown() throws Exception {
        closeAll();
    }

    @Test
    void sheetPreviewFromTheVehicleForm() throws Exception {
        JFrame main = startMain(dir, exits::incrementAndGet);
        JDialog form = openFromMenu(main, "Gepkocsik", "GKTorzsFormX");
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
        clickText(sheet, "Tovább");
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
        if (hasTool("pdftotext") && hasTool("pdftoppm")) {
            String text = runTool(null, "pdftotext", "-layout", "-enc", "UTF-8", pdf.toString(), "-");
            assertThat(text).contains("GÉPJÁRMŰ ADATLAP", "Forgalmi rendszám: KŐB-112", "Típus: Rába H18 űrszelvény",
                    "Hengerűrtartalom: 10350", "Járművezető neve: Győri Ödön",
                    "Zöld kártya lajárat (környezetvédelmi) dátuma: ", "Önköltség/kilométer: 212,75", "Kiadva: ");
            assertThat(text).doesNotContain("Tovább", "Mégse");
            Path prefix = shots().toAbsolutePath().resolve("vehicle-sheet-pdf");
            runTool(null, "pdftoppm", "-png", "-r", "60", "-f", "1", "-l", "1", "-singlefile", pdf.toString(), prefix.toString());
            BufferedImage img = ImageIO.read(prefix.resolveSibling("vehicle-sheet-pdf.png").toFile());
            assertThat(img.getWidth()).isBetween(490, 500);
        }

        // "Mégse": the loop stops, the form's normal RecordSource is back
        clickText(sheet2, "Mégse");
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
}
