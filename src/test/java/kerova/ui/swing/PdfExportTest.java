package kerova.ui.swing;

import static org.assertj.core.api.Assertions.assertThat;

import java.awt.image.BufferedImage;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.List;
import javax.imageio.ImageIO;
import kerova.core.print.Align;
import kerova.core.print.ListPageForm;
import kerova.core.print.Page;
import kerova.core.print.PageFont;
import kerova.core.print.PageItem;
import kerova.core.vb.VbClock;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Assumptions;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.io.TempDir;

/**
 * A page saved as PDF keeps the Hungarian letters: the text is extracted with pdftotext, and the page
 * is rendered with pdftoppm into target/screenshots for a look.
 */
class PdfExportTest {
    static final String HUNGARIAN = "Őrült Űrhajó ő ű";

    @TempDir
    Path dir;

    @AfterEach
    void tearDown() {
        VbClock.reset();
    }

    /** A list page as Part 1.4 shows it, with Hungarian texts in title, heads and rows. */
    static Page samplePage() {
        VbClock.setFixed(java.time.LocalDateTime.of(2026, 11, 23, 10, 0));
        ListPageForm f = new ListPageForm("UttavNyomFormX", "Utak távolsága", "T Á V O L S Á G O K", 21,
                new ListPageForm.Column("Honnan", "HONNAN:", 4),
                new ListPageForm.Column("Hova", "HOVÁ:", 4),
                new ListPageForm.Column("TávolságKm", "TÁVOLSÁG (KM):", 2, Align.RIGHT));
        f.startPage(1);
        f.setRow(1, HUNGARIAN, "Győr", "121,5");
        f.setRow(2, "Székesfehérvár", "Hódmezővásárhely", "312");
        f.setRow(3, "Őriszentpéter", "Tűzköves út ÁÉÍÓÖŐÚÜŰ", "7");
        List<PageItem> items = new ArrayList<>(f.page().items());
        items.add(new PageItem.Text(50, 700, 400, "Félkövér: ŐŰ őű", PageFont.of(12).asBold(), Align.LEFT));
        return Page.a4(items);
    }

    @Test
    void hungarianLettersSurviveInThePdf() throws Exception {
        Assumptions.assumeTrue(Gui.hasTool("pdftotext") && Gui.hasTool("pdftoppm"), "poppler-utils (installed by .ci/run)");
        Path pdf = dir.resolve("lap.pdf");
        Page page = samplePage();

        PdfExport.write(List.of(page, page), pdf);

        byte[] bytes = Files.readAllBytes(pdf);
        assertThat(new String(bytes, 0, 5, StandardCharsets.ISO_8859_1)).isEqualTo("%PDF-");
        String text = Gui.runTool(dir, "pdftotext", "-layout", "-enc", "UTF-8", pdf.toString(), "-");
        assertThat(text).contains(HUNGARIAN, "Hódmezővásárhely", "Őriszentpéter", "ÁÉÍÓÖŐÚÜŰ", "Félkövér: ŐŰ őű",
                "TÁVOLSÁG (KM):", "Kiadva: 2026.11.23.", "1. oldal");
        // pdftotext's layout joins the letter-spaced title; the letters are all there
        assertThat(text.replace(" ", "")).contains("TÁVOLSÁGOK");
        String info = Gui.runTool(dir, "pdfinfo", pdf.toString());
        assertThat(info).containsPattern("Pages:\\s+2");
        assertThat(info).contains("595.28 x 841.89 pts");
        String fonts = Gui.runTool(dir, "pdffonts", pdf.toString());
        assertThat(fonts).contains("DejaVuSans").contains("Identity-H");

        Path shots = Paths.get(System.getProperty("kerova.screenshots", "target/screenshots"));
        Files.createDirectories(shots);
        Path prefix = shots.toAbsolutePath().resolve("pdf-page");
        Gui.runTool(dir, "pdftoppm", "-png", "-r", "60", "-f", "1", "-l", "1", "-singlefile", pdf.toString(), prefix.toString());
        BufferedImage img = ImageIO.read(prefix.resolveSibling("pdf-page.png").toFile());
        assertThat(img.getWidth()).isBetween(490, 500); // 8.27 in at 60 dpi
        // ink where the first row stands, paper elsewhere
        assertThat(darkPixels(img, 40, 100, 450, 125)).isGreaterThan(20);
        assertThat(darkPixels(img, 40, 620, 450, 680)).isZero();
    }

    @Test
    void aSheetPageOfSixteenLinesFitsThePaper() throws Exception {
        Assumptions.assumeTrue(Gui.hasTool("pdftotext") && Gui.hasTool("pdftoppm"), "poppler-utils (installed by .ci/run)");
        VbClock.setFixed(java.time.LocalDateTime.of(2026, 11, 23, 10, 0));
        kerova.core.print.SheetPageForm f = new kerova.core.print.SheetPageForm("GKTorzsNyomFormX", "Adatlap", "", 16);
        f.startPage(1);
        for (int i = 1; i <= 16; i++) {
            f.setLine(i, i == 13 ? "Zöld kártya lajárat (környezetvédelmi) dátuma: " : "Sor " + i + " szövege: ",
                    i == 1 ? "KŐB-112" : "2026.11.23.");
        }
        Path pdf = dir.resolve("lap.pdf");
        PdfExport.write(List.of(f.page()), pdf);
        String text = Gui.runTool(dir, "pdftotext", "-layout", "-enc", "UTF-8", pdf.toString(), "-");
        assertThat(text).contains("Sor 1 szövege: KŐB-112", "Zöld kártya lajárat (környezetvédelmi) dátuma: 2026.11.23.",
                "Sor 16 szövege: ", "Kiadva: 2026.11.23.");
        Path shots = Paths.get(System.getProperty("kerova.screenshots", "target/screenshots"));
        Files.createDirectories(shots);
        Gui.runTool(dir, "pdftoppm", "-png", "-r", "60", "-singlefile", pdf.toString(),
                shots.toAbsolutePath().resolve("pdf-sheet").toString());
    }

    @Test
    void fontFilesAreFoundByName() {
        Assumptions.assumeTrue(Files.isRegularFile(Paths.get(PdfExport.DEJAVU_DIR, "DejaVuSans.ttf")));
        assertThat(PdfExport.locate("DejaVuSans-Bold.ttf")).isNotNull();
        assertThat(PdfExport.locate("no-such-font-file.ttf")).isNull();
    }

    @Test
    void theBundledFallbackFontLoadsWithHungarianLetters() throws Exception {
        com.lowagie.text.pdf.BaseFont f = com.lowagie.text.pdf.BaseFont.createFont(PdfExport.BUNDLED_FALLBACK,
                com.lowagie.text.pdf.BaseFont.IDENTITY_H, com.lowagie.text.pdf.BaseFont.EMBEDDED);
        assertThat(f.charExists('ő')).isTrue();
        assertThat(f.charExists('Ű')).isTrue();
    }

    static int darkPixels(BufferedImage img, int x0, int y0, int x1, int y1) {
        int n = 0;
        for (int y = y0; y < Math.min(y1, img.getHeight()); y++) {
            for (int x = x0; x < Math.min(x1, img.getWidth()); x++) {
                int rgb = img.getRGB(x, y);
                int lum = ((rgb >> 16) & 0xff) + ((rgb >> 8) & 0xff) + (rgb & 0xff);
                if (lum < 300) {
                    n++;
                }
            }
        }
        return n;
    }
}
