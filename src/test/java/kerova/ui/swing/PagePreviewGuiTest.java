package kerova.ui.swing;

import static kerova.ui.swing.Gui.*;
import static org.assertj.core.api.Assertions.assertThat;

import java.awt.Component;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.concurrent.TimeUnit;
import java.util.concurrent.atomic.AtomicReference;
import javax.swing.JButton;
import javax.swing.JDialog;
import javax.swing.JOptionPane;
import javax.swing.SwingUtilities;
import kerova.core.db.DataControl;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.print.Align;
import kerova.core.print.ListPageForm;
import kerova.core.print.PageForm;
import kerova.core.print.PagedList;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * The page preview of Part 1.4 under Xvfb, driven by component names: the paper with its rows, the
 * three buttons, "Nyomtat" without a printer, "PDF mentés...", "Tovább" to the next page, "Mégse".
 * Screenshots go to target/screenshots.
 */
class PagePreviewGuiTest {
    @TempDir
    Path dir;

    @BeforeEach
    void setUp() throws Exception {
        openCompany(dir);
        String[][] towns = {
            {"Győr", "Budapest"}, {"Budapest", "Szeged"}, {"Pécs", "Kaposvár"}, {"Őriszentpéter", "Szombathely"},
            {"Hódmezővásárhely", "Békéscsaba"}, {"Székesfehérvár", "Veszprém"}, {"Debrecen", "Nyíregyháza"},
            {"Tűzkő", "Ürömhegy"}, {"Miskolc", "Eger"}, {"Sopron", "Kőszeg"},
        };
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("UtakTavolsag");
        for (int i = 0; i < 25; i++) {
            r.AddNew();
            r.set("Honnan", towns[i % towns.length][0]);
            r.set("Hova", towns[i % towns.length][1] + (i >= towns.length ? " " + (i / towns.length + 1) : ""));
            r.set("TávolságKm", 35.5 + 11 * i);
            r.Update();
        }
        r.Close();
        SwingUtilities.invokeAndWait(() -> {
            SwingApp.setUpLookAndFeel();
            Forms.reset();
            Forms.setUi(new SwingUi());
        });
    }

    @AfterEach
    void tearDown() throws Exception {
        PagePreview.pdfTarget = f -> null;
        closeAll();
    }

    @Test
    void previewPrintPdfNextPageAndCancel() throws Exception {
        ListPageForm form = new ListPageForm("UttavNyomFormX", "Utak távolsága - nyomtatás", "T Á V O L S Á G O K", 21,
                new ListPageForm.Column("Honnan", "HONNAN:", 4),
                new ListPageForm.Column("Hova", "HOVÁ:", 4),
                new ListPageForm.Column("TávolságKm", "TÁVOLSÁG (KM):", 2, Align.RIGHT));
        DataControl tav = new DataControl("TavData", "Kerova.dsb", "select * from UtakTavolsag order by Sorszám");
        AtomicReference<PagedList.Outcome> outcome = new AtomicReference<>();
        SwingUtilities.invokeLater(() -> Forms.run(() -> {
            tav.Refresh();
            outcome.set(PagedList.list(form, tav.Recordset(), r -> new Object[] {
                PagedList.str(r.get("Honnan")), PagedList.str(r.get("Hova")), PagedList.num(r.get("TávolságKm"))})
                    .endAt(PagedList.End.FIRST).run());
        }));

        // page 1: a modal window named as the form, titled as the form, with the paper and four buttons
        JDialog page1 = waitFor(() -> dialogNamed("UttavNyomFormX"), "page form");
        assertThat(onEdt(page1::isModal)).isTrue();
        assertThat(onEdt(page1::getTitle)).isEqualTo("Utak távolsága - nyomtatás");
        assertThat(onEdt(() -> ((JButton) find(page1, "Command1")).getText())).isEqualTo("Tovább");
        assertThat(onEdt(() -> ((JButton) find(page1, "Command2")).getText())).isEqualTo("Nyomtat");
        assertThat(onEdt(() -> ((JButton) find(page1, "Command3")).getText())).isEqualTo("Mégse");
        assertThat(onEdt(() -> ((JButton) find(page1, "PdfMentes")).getText())).isEqualTo("PDF mentés...");
        Component paper = onEdt(() -> find(page1, "UttavNyomFormX.paper"));
        assertThat(onEdt(paper::isShowing)).isTrue();
        assertThat(onEdt(() -> paper.getHeight() > paper.getWidth())).isTrue(); // portrait
        assertThat(form.cell("Honnan", 4).Caption()).isEqualTo("Őriszentpéter");
        assertThat(form.Oldal.Caption()).isEqualTo("1. oldal          ");
        Thread.sleep(400);
        screenshot("page-preview-1");

        // Nyomtat without a printer: the plain box under "FIGYELEM!", then the buttons are back
        boolean noPrinter = java.awt.print.PrinterJob.lookupPrintServices().length == 0;
        if (noPrinter) {
            clickNamed(page1, "Command2");
            JDialog box = waitFor(() -> messageBox("FIGYELEM!"), "printer message");
            assertThat(messageOf(box))
                    .isEqualTo("A nyomtató nincs készenlétben!");
            assertThat(messageTypeOf(box))
                    .isEqualTo(JOptionPane.PLAIN_MESSAGE);
            assertThat(onEdt(() -> find(page1, "Command1").isVisible())).isFalse(); // hidden during the print
            Thread.sleep(300);
            screenshot("page-preview-2-no-printer");
            clickText(box, "OK");
            waitFor(() -> onEdt(box::isShowing) ? null : box, "box closed");
            waitFor(() -> onEdt(() -> find(page1, "Command1").isVisible() && find(page1, "Command2").isVisible()
                    && find(page1, "Command3").isVisible() && find(page1, "PdfMentes").isVisible()) ? page1 : null,
                    "buttons back");
        }

        // PDF mentés: the page as a PDF file with its Hungarian letters
        Path pdf = dir.resolve("tavolsagok-1.pdf");
        PagePreview.pdfTarget = f -> pdf;
        clickNamed(page1, "PdfMentes");
        waitFor(() -> Files.isRegularFile(pdf) && pdf.toFile().length() > 1000 ? pdf : null, "pdf written");
        Thread.sleep(300);
        if (hasTool("pdftotext")) {
            Process p = new ProcessBuilder("pdftotext", "-layout", "-enc", "UTF-8", pdf.toString(), "-").start();
            String text = new String(p.getInputStream().readAllBytes(), StandardCharsets.UTF_8);
            assertThat(p.waitFor(30, TimeUnit.SECONDS)).isTrue();
            assertThat(text).contains("Őriszentpéter", "Hódmezővásárhely", "Tűzkő", "Ürömhegy", "1. oldal", "HOVÁ:");
            assertThat(text).doesNotContain("Tovább", "Mégse");
        }

        // Tovább: the next page, in a window of the same name, rows 22 to 25
        clickNamed(page1, "Command1");
        waitFor(() -> onEdt(() -> form.Oldal.Caption().equals("2. oldal          ")) ? form : null, "page 2");
        JDialog page2 = waitFor(() -> dialogNamed("UttavNyomFormX"), "page form 2");
        assertThat(form.cell("Honnan", 1).Caption()).isEqualTo("Budapest");
        assertThat(form.cell("Hova", 1).Caption()).isEqualTo("Szeged 3");
        assertThat(form.cell("Honnan", 5).Caption()).isEmpty();
        Thread.sleep(400);
        screenshot("page-preview-3-page2");

        // Mégse ends the list
        clickNamed(page2, "Command3");
        waitFor(outcome::get, "the list to end");
        assertThat(outcome.get()).isEqualTo(PagedList.Outcome.CANCELLED);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        assertThat(onEdt(() -> dialogNamed("UttavNyomFormX"))).isNull();
        assertThat(onEdt(() -> tav.Recordset().get("Honnan"))).isEqualTo("Győr");
    }
}
