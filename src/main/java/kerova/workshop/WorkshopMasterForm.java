package kerova.workshop;

import java.util.List;
import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.BoundControl;
import kerova.core.form.CommandButton;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.print.ListPageForm;
import kerova.core.print.PagedList;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbConst;

/**
 * Part 6.2: the one design of the three small workshop masters ({@link SzerelokFormX},
 * {@link MunkakFormX}, {@link AlkatreszekFormX}), told once on {@code SzerelokFormX}. A list with a
 * quick search, a row of buttons and one pick button. What differs between the three is the Part's
 * table, given to this class as a {@link Master} record.
 */
public abstract class WorkshopMasterForm extends RecordForm {
    // ---------------------------------------------------------------- texts shared by the three

    public static final String EMPTY_TEXT = "Nincs még adat! Visz fel most új adatot?";
    public static final String EMPTY_TITLE = "FIGYELEM!";
    public static final String DELETE_TEXT = "Biztosan véglegesen törli az adatsort (Delete)?";
    public static final String DELETE_TITLE = "FIGYELEM! TÖRLÉS!";
    public static final String ALL_DELETED_TEXT = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";
    public static final String ALL_DELETED_TITLE = "FIGYELEM!";
    /** "Yes/No" with no icon named: a plain question (Part 1.3 style 4). */
    public static final int PLAIN_QUESTION = VbConst.vbYesNo;
    /** "Yes/No with the question icon" (Part 1.3 style 36). */
    public static final int ICON_QUESTION = VbConst.vbYesNo + VbConst.vbQuestion;
    /** The colour of a button while it works. */
    public static final int WORKING_COLOR = VbConst.vbGreen;
    /** Row lines of a printed page (ours: the Part gives only the title). */
    public static final int PRINT_ROWS = 30;

    /** One column of the list: its heading and its column. */
    public record GridColumn(String caption, String field) {
    }

    /** One column of the printed list: its column, heading and share of the width. */
    public record PrintColumn(String field, String heading, double weight) {
    }

    /**
     * The Part's table of what differs.
     *
     * @param name the form's name, also its {@code CurrentFormName}
     * @param title the window title
     * @param table the form's own table in {@code Kerova.dsb}
     * @param nameField the column of {@code Text2}
     * @param codeField the column of the second field
     * @param codeInTextBox the second field is the text box {@code Text3} (mechanics), else the label {@code Label4}
     * @param nameCaption the caption beside {@code Text2} (ours)
     * @param codeCaption the caption beside the second field (ours)
     * @param columns the list's columns
     * @param searchKey the quick search's key (prefix, "like")
     * @param exactSearchKey the quick search's second key (exact), or null
     * @param logOpen the log text on opening
     * @param logNew the log text on a new row
     * @param logPick the log text on a pick
     * @param logDelete the log text on a delete
     * @param printTitle the print title, today's date behind it
     * @param printForm the name of the printed list's page form (ours)
     * @param printColumns the printed list's columns (ours)
     */
    public record Master(String name, String title, String table, String nameField, String codeField,
            boolean codeInTextBox, String nameCaption, String codeCaption, List<GridColumn> columns,
            String searchKey, String exactSearchKey, String logOpen, String logNew, String logPick,
            String logDelete, String printTitle, String printForm, List<PrintColumn> printColumns) {
    }

    protected final Master master;

    // ---------------------------------------------------------------- Data controls

    /** The form's own table in {@code Kerova.dsb} (the name stands the same in all three). */
    public final DataControl NyelvData;
    /** The action log {@code Regisztrálás} of {@code Regiszt.dsb}. */
    public final DataControl RegisztData;

    // ---------------------------------------------------------------- controls

    public final TextBox Text1;
    public final Label Label1;
    public final Label Label2;
    public final TextBox Text2;
    public final Label Label3;
    /** The second field: {@code Text3} (a text box) or {@code Label4} (a label), by the table. */
    public final BoundControl secondField;
    public final DBGrid DBGrid1;
    public final CommandButton Command1;
    public final CommandButton Command2;
    public final CommandButton Command3;

    public final Menu Mentes;
    public final Menu Nyomtat;
    public final Menu Segedlet;
    public final Menu Kilepes;

    protected WorkshopMasterForm(Master m) {
        super(m.name(), m.title());
        this.master = m;
        NyelvData = data("NyelvData", "Kerova.dsb", m.table());
        RegisztData = data("RegisztData", "Regiszt.dsb", "Regisztrálás");

        Text1 = add(new TextBox("Text1"));
        Label1 = add(new Label("Label1", "- gyorskereső"));
        Label2 = add(new Label("Label2", m.nameCaption()));
        Text2 = add(new TextBox("Text2"));
        Label3 = add(new Label("Label3", m.codeCaption()));
        secondField = add(m.codeInTextBox() ? new TextBox("Text3") : new Label("Label4"));
        addExtraControls();
        DBGrid1 = add(new DBGrid("DBGrid1"));
        Command1 = add(new CommandButton("Command1", "Új adat"));
        Command2 = add(new CommandButton("Command2", "Töröl"));
        Command3 = add(new CommandButton("Command3", "Vissza"));

        Mentes = menu(new Menu("Mentes", "&Mentés-OK"));
        Nyomtat = menu(new Menu("Nyomtat", "&Nyomtatás"));
        Segedlet = menu(new Menu("Segedlet", "&Segédlet"));
        Kilepes = menu(new Menu("Kilepes", "&Kilépés"));

        Text1.setToolTipText("Névre keres");
        DBGrid1.setToolTipText("Oszlopra kattintva rendez, sorba gépelve módosít");
        Command1.setToolTipText("Új adat, sor");
        Command2.setToolTipText("Kijelölt sort véglegesen törli");
        Command3.setToolTipText("Kiválaszt és helyettesít");

        Text2.bind(NyelvData, m.nameField());
        secondField.bind(NyelvData, m.codeField());
        DBGrid1.bind(NyelvData);
        DBGrid1.AllowUpdate = true;
        for (GridColumn c : m.columns()) {
            DBGrid1.addColumn(c.caption(), c.field());
        }

        Command1.Click = this::Command1_Click;
        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        Mentes.Click = this::Mentes_Click;
        Text1.Change = this::Text1_Change;
        Nyomtat.Click = this::Nyomtat_Click;
        Segedlet.Click = this::Segedlet_Click;
        Kilepes.Click = this::Kilepes_Click;
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
        focusColors(Text1, Text2);
        if (secondField instanceof TextBox t) {
            focusColors(t);
        }
        layout();
    }

    /** Controls a form has beyond the shared design (placed before the list). */
    protected void addExtraControls() {
    }

    private void layout() {
        layoutConstraints = "wrap 2, insets 10, hidemode 3";
        columnConstraints = "[right][grow, fill]";
        Width = 720;
        Height = 560;
        Text1.layout = "w 160!, split 2";
        Label1.layout = "wrap";
        DBGrid1.layout = "span 2, grow, push, h 200:320:, gaptop 8";
        Command1.layout = "span 2, split 3, gaptop 8, sg b";
        Command2.layout = "sg b";
        Command3.layout = "sg b";
    }

    public Master master() {
        return master;
    }

    // ---------------------------------------------------------------- opening

    /**
     * Opening (Form_Activate, so it runs again on return from a modal child, Part 1.3):
     * {@code CurrentFormName} := the form's name; an empty table asks whether to add a row (Yes:
     * {@code Command1}, No: the form is left); with rows the first is current and {@code Text2} has
     * the focus. Then the log entry.
     */
    @Override
    protected void Form_Activate() {
        Globals.CurrentFormName = getName();
        if (count(NyelvData) < 1) {
            Forms.arrow();
            if (Forms.MsgBox(EMPTY_TEXT, PLAIN_QUESTION, EMPTY_TITLE) == VbConst.vbYes) {
                Command1_Click();
            } else {
                Kilepes_Click();
                return;
            }
        } else {
            Err.resume(() -> rs(NyelvData).MoveFirst());
            Err.Clear();
            Err.resume(Text2::SetFocus);
            Err.Clear();
        }
        log(master.logOpen());
    }

    // ---------------------------------------------------------------- buttons and menus, in the Part's order

    /** New row: the button green; a row with the name and the code empty; last row; log; focus on Text2. */
    void Command1_Click() {
        int color = Command1.BackColor();
        Command1.setBackColor(WORKING_COLOR);
        Forms.hourglass();
        try {
            addRow(NyelvData, master.nameField(), "", master.codeField(), "");
            Command1.setBackColor(color);
            log(master.logNew());
            Err.resume(Text2::SetFocus);
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    /**
     * Delete, the standard delete of Part 1.3 with this Part's texts: with no row left the question
     * "Minden adat törölve …" (Yes: {@code Command1}, No: the form is left); then the log entry.
     */
    void Command2_Click() {
        if (delete(NyelvData, DELETE_TEXT, DELETE_TITLE, null, null, 0, null, this::allDeleted)) {
            // after a "No" above the form has left and its log is closed: the write fails silently
            log(master.logDelete());
        }
    }

    /** No row remains after a delete: beep, the question; Yes runs Command1, No leaves the form. */
    private void allDeleted() {
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(ALL_DELETED_TEXT, PLAIN_QUESTION, ALL_DELETED_TITLE) == VbConst.vbYes) {
            Command1_Click();
        } else {
            Kilepes_Click();
        }
    }

    /**
     * Pick: the button green; with rows the shared values are set from the current row, the log
     * entry, and the form closes; with no row the form closes and the values stay. The colour last.
     */
    void Command3_Click() {
        int color = Command3.BackColor();
        Command3.setBackColor(WORKING_COLOR);
        try {
            if (count(NyelvData) > 0 && onRecord(NyelvData)) {
                handOver();
                log(master.logPick());
            }
            Kilepes_Click();
        } finally {
            Command3.setBackColor(color);
        }
    }

    /** Writes what a pick leaves into the shared values (the Part's last table row). */
    protected abstract void handOver();

    /** The current row's value of a column as text ("" for null). */
    protected String current(String field) {
        String v = Err.resume(() -> PagedList.str(rs(NyelvData).Fields(field).Value()), "");
        Err.Clear();
        return v == null ? "" : v;
    }

    /**
     * Saving: the round trip of Part 6.1. Off the ends, the last row; bookmark, last, first, back to
     * the bookmark; an error is ignored with a beep, and the last row becomes current. Then the
     * form's refresh. With no rows Command1.
     */
    void Mentes_Click() {
        if (count(NyelvData) < 1) {
            Command1_Click();
            return;
        }
        Forms.hourglass();
        try {
            Err.Clear();
            Err.resume(() -> {
                Recordset r = rs(NyelvData);
                if (r.EOF() || r.BOF()) {
                    r.MoveLast();
                }
                Object mark = r.Bookmark();
                r.MoveLast();
                if (r.RecordCount() > 0) {
                    r.MoveFirst();
                }
                r.setBookmark(mark);
            });
            if (Err.Number() != 0) {
                Err.Clear();
                Forms.Beep();
                if (count(NyelvData) > 0) {
                    Err.resume(() -> rs(NyelvData).MoveLast());
                }
                Err.Clear();
            }
            refreshForm();
        } finally {
            Forms.arrow();
        }
    }

    /** The form's private refresh: the list is redrawn. */
    private void refreshForm() {
        DBGrid1.Refresh();
    }

    /** Quick search at each change of Text1 (the common one of Part 1.3, with a second key where the table has one). */
    void Text1_Change() {
        if (Text1.Text().isEmpty()) {
            return;
        }
        quickSearch(NyelvData, master.searchKey(), Text1.Text(), master.exactSearchKey());
    }

    /**
     * Print: with rows, the list on a page form of Part 1.4 under the print title with today's date
     * behind it; with no rows a beep. Returns how the list ended (null: nothing printed).
     */
    PagedList.Outcome Nyomtat_Click() {
        if (count(NyelvData) < 1) {
            Forms.Beep();
            return null;
        }
        String title = master.printTitle() + Conv.dateText(VbClock.today());
        ListPageForm page = pageForm();
        page.heading = n -> title;
        List<PrintColumn> cols = master.printColumns();
        return PagedList.list(page, rs(NyelvData), r -> {
            Object[] cells = new Object[cols.size()];
            for (int i = 0; i < cells.length; i++) {
                cells[i] = PagedList.str(r.Fields(cols.get(i).field()).Value());
            }
            return cells;
        }).endAt(PagedList.End.FIRST).run();
    }

    /** The page form of the printed list, made once under its name. */
    public ListPageForm pageForm() {
        Master m = master;
        Forms.register(m.printForm(), () -> {
            ListPageForm.Column[] cols = m.printColumns().stream()
                    .map(c -> new ListPageForm.Column(c.field(), c.heading(), c.weight()))
                    .toArray(ListPageForm.Column[]::new);
            return new ListPageForm(m.printForm(), m.title(), m.printTitle(), PRINT_ROWS, cols);
        });
        return (ListPageForm) Forms.get(m.printForm());
    }

    /** "Segédlet": the help of Part 1.3. */
    void Segedlet_Click() {
        help();
    }

    /** Leaving: both sources closed, errors cleared, unload; CloseGuard keeps it from running twice. */
    void Kilepes_Click() {
        standardExit(null, NyelvData, RegisztData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /** The head click sorts as told in Part 1.3. */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(NyelvData, DBGrid1, colIndex);
    }

    /** The log entry (Part 1.3 LogAction); these forms have no key label, so the key is 0. */
    protected void log(String text) {
        LogAction(RegisztData, text, null);
    }
}
