package kerova.ui.swing;

import java.awt.BasicStroke;
import java.awt.Color;
import java.awt.Font;
import java.awt.Graphics2D;
import java.awt.GraphicsEnvironment;
import java.awt.RenderingHints;
import java.awt.font.FontRenderContext;
import java.awt.geom.Line2D;
import java.awt.print.PageFormat;
import java.awt.print.Printable;
import java.util.Arrays;
import kerova.core.print.Page;
import kerova.core.print.PageFont;
import kerova.core.print.PageItem;

/**
 * Draws a {@link Page} on any Graphics2D in the page's own units (points): the preview scales the
 * graphics to the screen, the printer draws 1:1 on the paper, and {@link PdfExport} draws on
 * OpenPDF's PdfGraphics2D. One drawing code for all three.
 */
public final class PagePainter {
    /** The font of every page; it has every Hungarian letter (ő, ű). */
    public static final String FONT_FAMILY = "DejaVu Sans";
    private static String family;

    private PagePainter() {
    }

    /** DejaVu Sans when installed, else the logical SansSerif. */
    public static synchronized String family() {
        if (family == null) {
            boolean dejavu = Arrays.asList(GraphicsEnvironment.getLocalGraphicsEnvironment()
                    .getAvailableFontFamilyNames()).contains(FONT_FAMILY);
            family = dejavu ? FONT_FAMILY : Font.SANS_SERIF;
        }
        return family;
    }

    /** The AWT font of a page font. */
    public static Font font(PageFont f) {
        int style = (f.bold() ? Font.BOLD : 0) | (f.italic() ? Font.ITALIC : 0);
        return new Font(family(), style, 12).deriveFont((float) f.size());
    }

    /** Draws the page's items; the graphics' user space is the page's points. */
    public static void paint(Graphics2D g, Page page) {
        g.setRenderingHint(RenderingHints.KEY_ANTIALIASING, RenderingHints.VALUE_ANTIALIAS_ON);
        g.setRenderingHint(RenderingHints.KEY_TEXT_ANTIALIASING, RenderingHints.VALUE_TEXT_ANTIALIAS_ON);
        g.setRenderingHint(RenderingHints.KEY_FRACTIONALMETRICS, RenderingHints.VALUE_FRACTIONALMETRICS_ON);
        for (PageItem item : page.items()) {
            if (item instanceof PageItem.Line l) {
                float v = (float) Math.max(0, Math.min(1, l.gray()));
                g.setColor(new Color(v, v, v));
                g.setStroke(new BasicStroke((float) l.stroke()));
                g.draw(new Line2D.Double(l.x1(), l.y1(), l.x2(), l.y2()));
            } else if (item instanceof PageItem.Text t) {
                drawText(g, t);
            }
        }
    }

    private static void drawText(Graphics2D g, PageItem.Text t) {
        Font f = font(t.font());
        g.setFont(f);
        g.setColor(Color.BLACK);
        FontRenderContext frc = g.getFontRenderContext();
        String s = fit(t.text(), f, frc, t.width());
        double w = f.getStringBounds(s, frc).getWidth();
        double x = switch (t.align()) {
            case CENTER -> t.x() + (t.width() - w) / 2;
            case RIGHT -> t.x() + t.width() - w;
            default -> t.x();
        };
        double ascent = f.getLineMetrics(s.isEmpty() ? "Á" : s, frc).getAscent();
        g.drawString(s, (float) x, (float) (t.y() + ascent));
    }

    /** The text cut at the box's right edge, as a label without word wrap shows it. */
    static String fit(String s, Font f, FontRenderContext frc, double width) {
        if (width <= 0 || f.getStringBounds(s, frc).getWidth() <= width) {
            return s;
        }
        int n = s.length();
        while (n > 0 && f.getStringBounds(s.substring(0, n), frc).getWidth() > width) {
            n--;
        }
        return s.substring(0, n);
    }

    /** A Printable of one page: the page drawn 1:1 from the paper's top left corner. */
    public static Printable printable(Page page) {
        return (graphics, pageFormat, pageIndex) -> {
            if (pageIndex > 0) {
                return Printable.NO_SUCH_PAGE;
            }
            paint((Graphics2D) graphics, page);
            return Printable.PAGE_EXISTS;
        };
    }

    /** A PageFormat of the page's paper size, portrait, the whole sheet imageable. */
    public static PageFormat pageFormat(java.awt.print.PrinterJob job, Page page) {
        PageFormat pf = job.defaultPage();
        java.awt.print.Paper paper = new java.awt.print.Paper();
        paper.setSize(page.width(), page.height());
        paper.setImageableArea(0, 0, page.width(), page.height());
        pf.setPaper(paper);
        pf.setOrientation(PageFormat.PORTRAIT);
        return job.validatePage(pf);
    }
}
