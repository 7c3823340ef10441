package kerova.core.print;

/**
 * One drawing instruction of a page. Coordinates are in points (1/72 inch) from the top left
 * corner of the paper.
 */
public sealed interface PageItem permits PageItem.Text, PageItem.Line {

    /**
     * A text in a box: {@code x}, {@code y} the box's top left corner, {@code width} its width (the
     * text is aligned in it and cut at its edges), the height being the font's line height.
     */
    record Text(double x, double y, double width, String text, PageFont font, Align align) implements PageItem {
        public Text {
            text = text == null ? "" : text;
        }
    }

    /** A straight line of the given stroke width in points; {@code gray} 0 is black, 1 white. */
    record Line(double x1, double y1, double x2, double y2, double stroke, double gray) implements PageItem {
    }
}
