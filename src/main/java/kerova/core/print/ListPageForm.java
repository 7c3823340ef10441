package kerova.core.print;

import java.util.ArrayList;
import java.util.List;
import java.util.function.IntFunction;
import java.util.function.Supplier;
import kerova.core.form.Label;

/**
 * A page form of a list (Part 1.4): a heading label {@code Cim}, the issue date {@code Kiadva}, the
 * page label {@code Oldal}, one heading label per column ({@code Fej(1)} …), and a fixed number of
 * row lines, each with one label per column named after the column and the line:
 * {@code Honnan(1)} … {@code Honnan(21)}. A4 portrait; the columns share the width by weight.
 *
 * <p>What differs between the spec's lists is given to the constructor or set afterwards:
 * {@link #heading} (the title by page number: Part 4.2's first page differs), {@link #pageText}
 * ({@link #OLDAL} or {@link #LAPSZAM}) and {@link #dateText}.
 */
public class ListPageForm extends PageForm {
    /** Part 1.4 / 3.3: the page number followed by ". oldal" and ten blanks. */
    public static final IntFunction<String> OLDAL = n -> n + ". oldal          ";
    /** Parts 4.2 and 4.5: "Lapszám: " and the page number. */
    public static final IntFunction<String> LAPSZAM = n -> "Lapszám: " + n;

    /** One column of the list: the name of its labels, its heading caption, its share of the width. */
    public record Column(String name, String heading, double weight, Align align) {
        public Column(String name, String heading, double weight) {
            this(name, heading, weight, Align.LEFT);
        }
    }

    private static final double TITLE_Y = 45;
    private static final double INFO_Y = 76;
    private static final double HEAD_Y = 102;
    private static final double RULE_Y = 118;
    private static final double FIRST_ROW_Y = 124;
    private static final double PAD = 3;

    public final Label Cim;
    public final Label Kiadva;
    public final Label Oldal;
    private final List<Column> columns;
    private final List<Label> heads = new ArrayList<>();
    /** cells.get(line - 1).get(column index) */
    private final List<List<Label>> cells = new ArrayList<>();
    private final int rows;

    /** The heading of a page by its number (default: the fixed title given to the constructor). */
    public IntFunction<String> heading;
    /** The page label's text by page number (default {@link #OLDAL}). */
    public IntFunction<String> pageText = OLDAL;
    /** The date label's text (default "Kiadva: " and today). */
    public Supplier<String> dateText = PageForm::issuedText;

    /**
     * @param name the spec's form name ({@code UttavNyomFormX})
     * @param caption the window title of the preview
     * @param title the heading label's text on every page
     * @param rows row lines per page (21, 22 …)
     * @param body the font of the rows ({@link PageFont#BODY}; smaller for many columns)
     */
    public ListPageForm(String name, String caption, String title, int rows, PageFont body, Column... columns) {
        super(name, caption);
        if (rows < 1 || columns.length < 1) {
            throw new IllegalArgumentException("a list needs rows and columns");
        }
        this.rows = rows;
        this.columns = List.of(columns);
        this.heading = n -> title;
        double left = MARGIN;
        double width = paperWidth() - 2 * MARGIN;
        Cim = label("Cim", title, left, TITLE_Y, width, PageFont.TITLE, Align.CENTER);
        Kiadva = label("Kiadva", "", left, INFO_Y, width / 2, PageFont.BODY, Align.LEFT);
        Oldal = label("Oldal", "", left + width / 2, INFO_Y, width / 2, PageFont.BODY, Align.RIGHT);
        double total = 0;
        for (Column c : columns) {
            total += c.weight();
        }
        double[] xs = new double[columns.length];
        double[] ws = new double[columns.length];
        double x = left;
        for (int i = 0; i < columns.length; i++) {
            xs[i] = x;
            ws[i] = width * columns[i].weight() / total;
            x += ws[i];
        }
        for (int i = 0; i < columns.length; i++) {
            heads.add(label("Fej(" + (i + 1) + ")", columns[i].heading(), xs[i] + PAD, HEAD_Y, ws[i] - 2 * PAD,
                    PageFont.HEADING.withSize(Math.min(PageFont.HEADING.size(), body.size())), columns[i].align()));
        }
        rule(left, RULE_Y, left + width, RULE_Y, 0.8, 0);
        double available = paperHeight() - MARGIN - FIRST_ROW_Y;
        double rowHeight = Math.min(24, available / rows);
        for (int line = 1; line <= rows; line++) {
            double y = FIRST_ROW_Y + (line - 1) * rowHeight;
            List<Label> row = new ArrayList<>();
            for (int i = 0; i < columns.length; i++) {
                row.add(label(columns[i].name() + "(" + line + ")", "", xs[i] + PAD, y + (rowHeight - body.size() * 1.2) / 2,
                        ws[i] - 2 * PAD, body, columns[i].align()));
            }
            cells.add(row);
            rule(left, y + rowHeight, left + width, y + rowHeight, 0.3, 0.75);
        }
    }

    public ListPageForm(String name, String caption, String title, int rows, Column... columns) {
        this(name, caption, title, rows, PageFont.BODY, columns);
    }

    public int rows() {
        return rows;
    }

    public List<Column> columns() {
        return columns;
    }

    /** The label of a column (by name) on a line (1-based). */
    public Label cell(String column, int line) {
        return cells.get(line - 1).get(columnIndex(column));
    }

    /** The label of a column (0-based index) on a line (1-based). */
    public Label cell(int column, int line) {
        return cells.get(line - 1).get(column);
    }

    /** The heading label of a column (0-based). */
    public Label head(int column) {
        return heads.get(column);
    }

    private int columnIndex(String column) {
        for (int i = 0; i < columns.size(); i++) {
            if (columns.get(i).name().equals(column)) {
                return i;
            }
        }
        throw new IllegalArgumentException("no column " + column + " on " + getName());
    }

    /** Sets the labels of a line from left to right (null as ""); missing cells stay as they are. */
    public void setRow(int line, Object... texts) {
        List<Label> row = cells.get(line - 1);
        for (int i = 0; i < texts.length && i < row.size(); i++) {
            Object t = texts[i];
            row.get(i).setCaption(t == null ? "" : t instanceof String s ? s : PagedList.str(t));
        }
    }

    /** The captions of a line, left to right. */
    public List<String> row(int line) {
        List<String> out = new ArrayList<>();
        for (Label l : cells.get(line - 1)) {
            out.add(l.Caption());
        }
        return out;
    }

    /** Empties every row label. */
    public void clearRows() {
        for (List<Label> row : cells) {
            for (Label l : row) {
                l.setCaption("");
            }
        }
    }

    /** Rows emptied; heading, page label and date set for this page. */
    @Override
    public void startPage(int pageNumber) {
        clearRows();
        Cim.setCaption(heading.apply(pageNumber));
        Oldal.setCaption(pageText.apply(pageNumber));
        Kiadva.setCaption(dateText.get());
    }
}
