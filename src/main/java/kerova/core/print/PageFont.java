package kerova.core.print;

/**
 * The font of a text on the paper: one family for every page (DejaVu Sans, which has every
 * Hungarian letter; the view maps it), a size in points, bold and italic.
 */
public record PageFont(double size, boolean bold, boolean italic) {
    public static final PageFont BODY = new PageFont(10, false, false);
    public static final PageFont SMALL = new PageFont(9, false, false);
    public static final PageFont HEADING = new PageFont(9.5, true, false);
    public static final PageFont TITLE = new PageFont(16, true, false);

    public PageFont {
        if (!(size > 0)) {
            throw new IllegalArgumentException("font size " + size);
        }
    }

    public static PageFont of(double size) {
        return new PageFont(size, false, false);
    }

    public PageFont asBold() {
        return new PageFont(size, true, italic);
    }

    public PageFont asItalic() {
        return new PageFont(size, bold, true);
    }

    public PageFont withSize(double s) {
        return new PageFont(s, bold, italic);
    }
}
