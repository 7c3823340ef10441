package kerova.ui.swing;

import com.lowagie.text.Document;
import com.lowagie.text.Rectangle;
import com.lowagie.text.pdf.BaseFont;
import com.lowagie.text.pdf.FontMapper;
import com.lowagie.text.pdf.PdfContentByte;
import com.lowagie.text.pdf.PdfWriter;
import java.awt.Font;
import java.awt.Graphics2D;
import java.io.IOException;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.HashMap;
import java.util.List;
import java.util.Map;
import java.util.stream.Stream;
import kerova.core.print.Page;

/**
 * Saves pages as a PDF file: each page drawn by {@link PagePainter} on OpenPDF's PdfGraphics2D,
 * with DejaVu Sans embedded (Unicode, Identity-H), so that ő, ű, Ő, Ű stay intact and the text can
 * be searched and copied.
 */
public final class PdfExport {
    /** The usual place of DejaVu Sans on Debian and Ubuntu (fonts-dejavu-core). */
    public static final String DEJAVU_DIR = "/usr/share/fonts/truetype/dejavu";
    /** The font OpenPDF carries in its jar: the last fallback. */
    public static final String BUNDLED_FALLBACK = "font-fallback/LiberationSans-Regular.ttf";
    private static final String[] FILES = {
        "DejaVuSans.ttf", "DejaVuSans-Bold.ttf", "DejaVuSans-Oblique.ttf", "DejaVuSans-BoldOblique.ttf",
    };

    private PdfExport() {
    }

    /** Writes the pages to a file. */
    public static void write(List<Page> pages, Path file) throws IOException {
        try (OutputStream out = Files.newOutputStream(file)) {
            write(pages, out);
        }
    }

    /** Writes the pages as one PDF document, one sheet each, of each page's paper size. */
    public static void write(List<Page> pages, OutputStream out) throws IOException {
        if (pages.isEmpty()) {
            throw new IllegalArgumentException("no pages");
        }
        Page first = pages.get(0);
        Document doc = new Document(new Rectangle((float) first.width(), (float) first.height()), 0, 0, 0, 0);
        try {
            PdfWriter writer = PdfWriter.getInstance(doc, out);
            doc.addCreator("Kerova");
            doc.open();
            FontMapper fonts = new DejaVuFontMapper();
            for (int i = 0; i < pages.size(); i++) {
                Page p = pages.get(i);
                if (i > 0) {
                    doc.setPageSize(new Rectangle((float) p.width(), (float) p.height()));
                    doc.newPage();
                }
                PdfContentByte cb = writer.getDirectContent();
                Graphics2D g = cb.createGraphics((float) p.width(), (float) p.height(), fonts);
                try {
                    PagePainter.paint(g, p);
                } finally {
                    g.dispose();
                }
                writer.setPageEmpty(false);
            }
            doc.close();
        } catch (com.lowagie.text.DocumentException | com.lowagie.text.ExceptionConverter e) {
            throw new IOException(e.getMessage(), e);
        }
    }

    /** Maps the page fonts to DejaVu Sans files (by style), embedded as Unicode fonts. */
    static final class DejaVuFontMapper implements FontMapper {
        private final Map<Integer, BaseFont> cache = new HashMap<>();

        @Override
        public BaseFont awtToPdf(Font font) {
            int style = font.getStyle() & 3;
            return cache.computeIfAbsent(style, DejaVuFontMapper::load);
        }

        @Override
        public Font pdfToAwt(BaseFont font, int size) {
            return new Font(PagePainter.family(), Font.PLAIN, size);
        }

        private static BaseFont load(int style) {
            for (String candidate : new String[] {FILES[style], FILES[0]}) {
                Path p = locate(candidate);
                if (p != null) {
                    try {
                        return BaseFont.createFont(p.toString(), BaseFont.IDENTITY_H, BaseFont.EMBEDDED);
                    } catch (Exception e) {
                        // try the next
                    }
                }
            }
            try {
                return BaseFont.createFont(BUNDLED_FALLBACK, BaseFont.IDENTITY_H, BaseFont.EMBEDDED);
            } catch (Exception e) {
                throw new IllegalStateException("no font with Hungarian letters for the PDF", e);
            }
        }
    }

    /** A font file by name: the Debian place first, then the usual font folders of each system. */
    static Path locate(String fileName) {
        Path direct = Paths.get(DEJAVU_DIR, fileName);
        if (Files.isRegularFile(direct)) {
            return direct;
        }
        for (Path dir : fontDirs()) {
            if (!Files.isDirectory(dir)) {
                continue;
            }
            try (Stream<Path> s = Files.find(dir, 5, (p, a) -> a.isRegularFile()
                    && p.getFileName().toString().equalsIgnoreCase(fileName))) {
                var hit = s.findFirst();
                if (hit.isPresent()) {
                    return hit.get();
                }
            } catch (IOException | RuntimeException e) {
                // unreadable folder: go on
            }
        }
        return null;
    }

    private static List<Path> fontDirs() {
        String home = System.getProperty("user.home", "");
        List<Path> dirs = new ArrayList<>();
        dirs.add(Paths.get("/usr/share/fonts"));
        dirs.add(Paths.get("/usr/local/share/fonts"));
        dirs.add(Paths.get(home, ".fonts"));
        dirs.add(Paths.get(home, ".local", "share", "fonts"));
        dirs.add(Paths.get("/Library/Fonts"));
        dirs.add(Paths.get("/System/Library/Fonts"));
        dirs.add(Paths.get(home, "Library", "Fonts"));
        String win = System.getenv("WINDIR");
        if (win != null) {
            dirs.add(Paths.get(win, "Fonts"));
        }
        String local = System.getenv("LOCALAPPDATA");
        if (local != null) {
            dirs.add(Paths.get(local, "Microsoft", "Windows", "Fonts"));
        }
        return dirs;
    }
}
