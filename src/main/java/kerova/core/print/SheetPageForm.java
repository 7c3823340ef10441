package kerova.core.print;

import java.util.ArrayList;
import java.util.List;
import kerova.core.form.Label;

/**
 * A page form of one record a page (Part 1.4: "a sheet per record", Part 2.2's vehicle sheets): an
 * optional heading {@code Cim}, one label per line {@code Sor(1)} … {@code Sor(n)}, each holding a
 * text followed by its value, and the last line {@code Kiadva} ("Kiadva: " and today). A4 portrait.
 */
public class SheetPageForm extends PageForm {
    private static final double TITLE_Y = 50;
    private static final double FIRST_LINE_Y = 110;
    private static final double LINE_HEIGHT = 28;

    /** The heading; empty when the sheet has none. */
    public final Label Cim;
    public final Label Kiadva;
    private final List<Label> lines = new ArrayList<>();

    /**
     * @param name the spec's form name ({@code GKTorzsNyomFormX})
     * @param caption the window title of the preview
     * @param title the heading on the paper, or "" for none
     * @param lineCount the lines of the sheet, not counting the "Kiadva: " line
     */
    public SheetPageForm(String name, String caption, String title, int lineCount) {
        super(name, caption);
        double left = MARGIN;
        double width = paperWidth() - 2 * MARGIN;
        Cim = label("Cim", title == null ? "" : title, left, TITLE_Y, width, PageFont.TITLE, Align.CENTER);
        if (title != null && !title.isEmpty()) {
            rule(left, TITLE_Y + 30, left + width, TITLE_Y + 30, 0.8, 0);
        }
        double lineHeight = Math.min(LINE_HEIGHT, (paperHeight() - MARGIN - FIRST_LINE_Y) / (lineCount + 2));
        PageFont font = PageFont.of(Math.min(12, lineHeight * 0.45));
        for (int i = 1; i <= lineCount; i++) {
            lines.add(label("Sor(" + i + ")", "", left, FIRST_LINE_Y + (i - 1) * lineHeight, width, font, Align.LEFT));
        }
        Kiadva = label("Kiadva", "", left, FIRST_LINE_Y + (lineCount + 1) * lineHeight, width, font, Align.LEFT);
    }

    public int lineCount() {
        return lines.size();
    }

    /** The label of a line (1-based). */
    public Label line(int i) {
        return lines.get(i - 1);
    }

    /** Sets a line: its text followed by the value's caption (null value as ""). */
    public void setLine(int i, String text, Object value) {
        line(i).setCaption((text == null ? "" : text) + (value == null ? "" : value instanceof String s ? s : PagedList.str(value)));
    }

    /** The captions of every line, then the "Kiadva: " line. */
    public List<String> lines() {
        List<String> out = new ArrayList<>();
        for (Label l : lines) {
            out.add(l.Caption());
        }
        out.add(Kiadva.Caption());
        return out;
    }

    /** Every line emptied; the last line "Kiadva: " and today. */
    @Override
    public void startPage(int pageNumber) {
        for (Label l : lines) {
            l.setCaption("");
        }
        Kiadva.setCaption(issuedText());
    }
}
