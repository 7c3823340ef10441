package kerova.core.print;

import java.util.function.BiConsumer;
import java.util.function.Function;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbConst;

/**
 * The paged list of Part 1.4, written once for every list and sheet of the spec:
 *
 * <ol>
 * <li>Hourglass. An empty set: arrow, (a beep where the Part says so), "Nincs nyomtatandó adat!"
 * under "FIGYELEM!", style 48, and no page form.</li>
 * <li>Page 1; {@code MoveFirst} (or the current record, Part 2.2).</li>
 * <li>While not {@code EOF}: the page form is loaded and its page started (row labels emptied,
 * heading, page label, date); each record fills the line with the counter's number, then
 * {@code MoveNext}; when the counter passes the rows per page, or the set ends, the arrow is set
 * and the page form is shown modally.</li>
 * <li>After it closes: {@code PrintCancelled} = 1 ("Mégse") stops the list; else the next page.</li>
 * <li>The arrow, and the current record back to the last or first, as the caller says.</li>
 * </ol>
 *
 * <pre>
 * PagedList.list(form, rs(TavData), r -&gt; new Object[] {
 *         PagedList.str(r.get("Honnan")), PagedList.str(r.get("Hova")), PagedList.num(r.get("TávolságKm"))})
 *     .endAt(PagedList.End.FIRST)
 *     .run();
 * </pre>
 *
 * @param <F> the page form
 */
public final class PagedList<F extends PageForm> {
    /** Where the current record goes when the list ends. */
    public enum End {
        /** {@code MoveLast}, if the set has records. */
        LAST,
        /** {@code MoveFirst}, if the set has records. */
        FIRST,
        /** Left where the walk ended. */
        STAY
    }

    /** How a run ended. */
    public enum Outcome {
        /** The set was empty: the message, and no page form. */
        EMPTY,
        /** Every page was shown. */
        DONE,
        /** "Mégse" stopped the list. */
        CANCELLED
    }

    /** Fills the labels of one line (1-based) from the current record. */
    @FunctionalInterface
    public interface RowFill<F> {
        void fill(F form, int line, Recordset rs);
    }

    /** Starts a page: empties the rows, sets heading, page label and date. */
    @FunctionalInterface
    public interface PageStart<F> {
        void start(F form, int pageNumber);
    }

    private final F form;
    private final Recordset rs;
    private int rowsPerPage;
    private RowFill<F> row = (f, line, r) -> {
    };
    private PageStart<F> pageStart = PageForm::startPage;
    private boolean fromCurrent;
    private boolean currentOnly;
    /** One record a page (Part 2.2): the move to the next record comes after the sheet was seen. */
    private boolean sheetPerRecord;
    private boolean beepWhenEmpty;
    private End end = End.STAY;
    private int pagesShown;

    private PagedList(F form, Recordset rs) {
        this.form = form;
        this.rs = rs;
        this.rowsPerPage = form instanceof ListPageForm l ? l.rows() : 1;
    }

    // ---------------------------------------------------------------- making a run

    /** A run over a set onto any page form; give {@link #row} (and {@link #rowsPerPage} unless 1). */
    public static <F extends PageForm> PagedList<F> of(F form, Recordset rs) {
        return new PagedList<>(form, rs);
    }

    /** As {@link #of(PageForm, Recordset)}, on a Data control's set (none open counts as empty). */
    public static <F extends PageForm> PagedList<F> of(F form, DataControl dc) {
        return new PagedList<>(form, dc == null ? null : dc.Recordset());
    }

    /**
     * A list: each record gives the texts of its line, left to right (a non-text value goes through
     * {@link #str}); the rows per page are the form's.
     */
    public static PagedList<ListPageForm> list(ListPageForm form, Recordset rs, Function<Recordset, Object[]> cells) {
        return new PagedList<>(form, rs).row((f, line, r) -> f.setRow(line, cells.apply(r)));
    }

    /** A sheet per record (Part 1.4, Part 2.2): one record a page, filled by {@code sheet}. */
    public static PagedList<SheetPageForm> sheets(SheetPageForm form, Recordset rs,
            BiConsumer<SheetPageForm, Recordset> sheet) {
        PagedList<SheetPageForm> list = new PagedList<>(form, rs).rowsPerPage(1).row((f, line, r) -> sheet.accept(f, r));
        list.sheetPerRecord = true;
        return list;
    }

    public PagedList<F> row(RowFill<F> fill) {
        this.row = fill;
        return this;
    }

    public PagedList<F> rowsPerPage(int n) {
        if (n < 1) {
            throw new IllegalArgumentException("rows per page " + n);
        }
        this.rowsPerPage = n;
        return this;
    }

    /** Replaces the page start (the default is the form's {@link PageForm#startPage}). */
    public PagedList<F> pageStart(PageStart<F> start) {
        this.pageStart = start;
        return this;
    }

    /** Starts at the current record, not the first (Part 2.2 "from the current vehicle onwards"). */
    public PagedList<F> fromCurrent() {
        this.fromCurrent = true;
        return this;
    }

    /** Only the current record, one page (Part 2.2 "current vehicle"); the cursor isn't moved. */
    public PagedList<F> currentOnly() {
        this.currentOnly = true;
        this.fromCurrent = true;
        return this;
    }

    /** A beep before "Nincs nyomtatandó adat!" (Parts 2.2, 4.2). */
    public PagedList<F> beepWhenEmpty() {
        this.beepWhenEmpty = true;
        return this;
    }

    public PagedList<F> endAt(End e) {
        this.end = e;
        return this;
    }

    // ---------------------------------------------------------------- the run

    /** Runs the list: fills and shows the pages modally until the set ends or "Mégse". */
    public Outcome run() {
        pagesShown = 0;
        Forms.hourglass();
        int count = rs == null ? 0 : Err.resume(() -> rs.isClosed() ? 0 : rs.RecordCount(), 0);
        Err.Clear();
        if (count < 1 || (currentOnly && (rs.EOF() || rs.BOF()))) {
            Forms.arrow();
            if (beepWhenEmpty) {
                Forms.Beep();
            }
            Forms.MsgBox(RecordForm.NOTHING_TO_PRINT, VbConst.vbExclamation, PageForm.PRINTER_TITLE);
            return Outcome.EMPTY;
        }
        if (!fromCurrent) {
            rs.MoveFirst();
        }
        Outcome outcome = Outcome.DONE;
        int page = 1;
        while (!rs.EOF()) {
            Forms.hourglass();
            form.Load();
            Forms.hourglass();
            pageStart.start(form, page);
            if (currentOnly || sheetPerRecord) {
                fillLine(1);
            } else {
                int line = 1;
                while (!rs.EOF() && line <= rowsPerPage) {
                    fillLine(line);
                    rs.MoveNext();
                    line++;
                }
            }
            Forms.arrow();
            form.Show(true);
            pagesShown++;
            if (PageForm.PrintCancelled == 1) {
                outcome = Outcome.CANCELLED;
                break;
            }
            if (currentOnly) {
                break;
            }
            if (sheetPerRecord) {
                // Part 2.2: "with MoveNext between": "Mégse" stops before the next record is reached
                rs.MoveNext();
            }
            page++;
        }
        Forms.arrow();
        switch (end) {
            case LAST -> Err.resume(() -> {
                if (rs.RecordCount() > 0) {
                    rs.MoveLast();
                }
            });
            case FIRST -> Err.resume(() -> {
                if (rs.RecordCount() > 0) {
                    rs.MoveFirst();
                }
            });
            default -> {
            }
        }
        Err.Clear();
        return outcome;
    }

    private void fillLine(int line) {
        Err.resume(() -> row.fill(form, line, rs));
        Err.Clear();
    }

    /** Pages shown by the last {@link #run}. */
    public int pagesShown() {
        return pagesShown;
    }

    // ---------------------------------------------------------------- captions of column values

    /** A column's value through NullToStr, as a label's caption. */
    public static String str(Object v) {
        return Funcs.nullToText(v);
    }

    /** A column's value through NullToNum, as a label's caption ("0" for null, "9,5"). */
    public static String num(Object v) {
        return Conv.CStr(Funcs.NullToNum(v));
    }

    /** A column's value through NullToDate, as a label's caption (null is today: "2026.11.23."). */
    public static String date(Object v) {
        return Conv.CStr(Funcs.NullToDate(v));
    }
}
