package kerova.core.print;

import java.util.ArrayList;
import java.util.List;

/**
 * One sheet of paper as drawing instructions, without any toolkit: the same page is drawn on the
 * screen, on the printer and into a PDF file by the view (kerova.ui.swing.PagePainter).
 */
public record Page(double width, double height, List<PageItem> items) {
    /** A4 portrait, in points. */
    public static final double A4_WIDTH = 595.28;
    public static final double A4_HEIGHT = 841.89;

    public Page {
        items = List.copyOf(items);
    }

    public static Page a4(List<PageItem> items) {
        return new Page(A4_WIDTH, A4_HEIGHT, items);
    }

    /** The texts of the page, in drawing order (tests). */
    public List<String> texts() {
        List<String> out = new ArrayList<>();
        for (PageItem i : items) {
            if (i instanceof PageItem.Text t) {
                out.add(t.text());
            }
        }
        return out;
    }
}
