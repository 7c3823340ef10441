package kerova.trips;

import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CommandButton;
import kerova.core.form.Control;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbConst;

/**
 * Part 3.5: the pattern of the three small masters, written once: one source {@code VezetoData} on
 * {@code Kerova.dsb}, the box {@code Text1} with the focus colours of Part 1.3, the label of today's
 * date ("Mai dátum:", set at load), the grid {@code DBGrid1} on the source, {@code Command1} that
 * saves, and the menus {@code Frissites}, {@code UjAdat}, {@code Torl_s}, {@code Segedlet},
 * {@code Kilepes}. The opening and the new row differ between the purposes and the two group
 * forms ({@link MegnevezesTorzsFormX}, {@link GroupAttachmentForm}).
 */
public abstract class SmallMasterForm extends RecordForm {
    public static final String DELETE_TEXT = "Valóban véglegesen törli a kijelölt adatsort?";
    public static final String DELETE_TITLE = "FIGYELEM! Végleges törlés!";
    /** The end-of-list question of Part 3.4, which the delete of Part 3.5 follows. */
    public static final String DELETED_ALL = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";
    public static final String WARN_TITLE = "FIGYELEM!";

    public final DataControl VezetoData;

    public final TextBox Text1;
    /**
     * The group id, bound to {@code UtakCsoportAzonosito}: on the passenger and document forms only;
     * null on the purposes form, which has no group.
     */
    public final Label Label3;
    /** The label of today's date, set on form load (the Part gives no name). */
    public final Label TodayLabel;
    public final DBGrid DBGrid1;
    public final CommandButton Command1;

    public final Menu Frissites;
    public final Menu UjAdat;
    public final Menu Torl_s;
    public final Menu Segedlet;
    public final Menu Kilepes;

    /** The column of Text1, which the save's find looks for. */
    private final String textColumn;

    /**
     * @param textColumn Text1's column
     * @param grouped whether the form has the group label {@code Label3}
     * @param gridColumns pairs of heading and column of {@code DBGrid1}
     */
    protected SmallMasterForm(String name, String title, String source, String textCaption, String textColumn,
            boolean grouped, String... gridColumns) {
        super(name, title);
        this.textColumn = textColumn;
        VezetoData = data("VezetoData", "Kerova.dsb", source);

        Text1 = field(textCaption, new TextBox("Text1"));
        Label3 = grouped ? field("Csoportazonosító:", new Label("Label3")) : null;
        TodayLabel = field("Mai dátum:", new Label("TodayLabel"));
        DBGrid1 = add(new DBGrid("DBGrid1"));
        Command1 = add(new CommandButton("Command1", "OK-Mentés"));

        Frissites = menu(new Menu("Frissites", "&Frissítés"));
        UjAdat = menu(new Menu("UjAdat", "Ú&j adat"));
        Torl_s = menu(new Menu("Torl_s", "&Törlés"));
        Segedlet = menu(new Menu("Segedlet", "&Segédlet"));
        Kilepes = menu(new Menu("Kilepes", "&Kilépés"));

        // bindings; the widths of the columns are ours (left to the implementer)
        Text1.bind(VezetoData, textColumn);
        if (Label3 != null) {
            Label3.bind(VezetoData, "UtakCsoportAzonosito");
        }
        DBGrid1.bind(VezetoData);
        for (int i = 0; i + 1 < gridColumns.length; i += 2) {
            DBGrid1.addColumn(gridColumns[i], gridColumns[i + 1]).Width = i == 0 ? 320 : 160;
        }
        layout();

        Command1.Click = this::Command1_Click;
        Frissites.Click = this::Frissites_Click;
        UjAdat.Click = this::UjAdat_Click;
        Torl_s.Click = this::Torl_s_Click;
        Segedlet.Click = this::Segedlet_Click;
        Kilepes.Click = this::Kilepes_Click;
        focusColors(Text1);
    }


    private void layout() {
        layoutConstraints = "wrap 2, insets 10, hidemode 3";
        columnConstraints = "[right][360!]";
        Width = 620;
        Height = 480;
        DBGrid1.layout = "newline, span 2, grow, push, h 160:260:, gaptop 8";
        Command1.layout = "span 2, align right, w 140!, gaptop 6";
    }

    // ---------------------------------------------------------------- lifecycle

    /** The label of today's date, set at form load. */
    @Override
    protected void Form_Load() {
        TodayLabel.setCaption(Conv.dateText(VbClock.today()));
    }

    // ---------------------------------------------------------------- handlers

    /**
     * Save ({@code Command1}): an empty or Null Text1 only takes the focus back. Otherwise 1. refresh
     * the source (the bound values are written first) and the grid; 2. find "[column] = '" + Text1 +
     * "'", quoted with no escaping, so that the cursor returns to the saved row. An apostrophe breaks
     * the criterion: the error is cleared and the cursor stays where the refresh put it, the row being
     * saved all the same.
     */
    void Command1_Click() {
        String text = Text1.Text();
        if (text == null || text.isEmpty()) {
            Err.resume(Text1::SetFocus);
            Err.Clear();
            return;
        }
        Forms.hourglass();
        try {
            // 1
            Err.resume(VezetoData::Refresh);
            Err.Clear();
            DBGrid1.Refresh();
            // 2
            String criterion = "[" + textColumn + "] = '" + text + "'";
            Err.resume(() -> rs(VezetoData).FindFirst(criterion));
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    /** "Frissítés": refresh the source and the grid. */
    void Frissites_Click() {
        Forms.hourglass();
        try {
            Err.resume(VezetoData::Refresh);
            Err.Clear();
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** New row: add, update, move last, then what the form adds; focus Text1. */
    abstract void UjAdat_Click();

    /**
     * Delete: "Valóban véglegesen törli a kijelölt adatsort?" under "FIGYELEM! Végleges törlés!", Yes
     * and No; on Yes delete and move next (Part 1.3's delete, at the end move last); then the
     * end-of-list rule of Part 3.4: with no row left the offer of a new one, No leaving the form.
     */
    void Torl_s_Click() {
        delete(VezetoData, DELETE_TEXT, DELETE_TITLE, null, null, 0, null, this::deletedAll);
        if (isLoaded()) {
            DBGrid1.Refresh();
        }
    }

    /** No row left: "Minden adat törölve (Deleted All)! Kér új adatot (New)?"; Yes a new row, No leaves. */
    private void deletedAll() {
        Forms.arrow();
        if (Forms.MsgBox(DELETED_ALL, VbConst.vbYesNo, WARN_TITLE) == VbConst.vbYes) {
            UjAdat_Click();
        } else {
            Kilepes_Click();
        }
    }

    /** "Segédlet": the form's help topic (Part 8.2). */
    void Segedlet_Click() {
        help();
    }

    /** Leaving: close the source, ignoring errors; unload. The close box runs it once (CloseGuard). */
    void Kilepes_Click() {
        standardExit(null, VezetoData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    // ---------------------------------------------------------------- shared routines

    /** Add, update, move last on VezetoData; false when it failed (the error cleared). */
    protected boolean addRow() {
        return addRow(VezetoData);
    }

    /** Focus to Text1, an error cleared. */
    protected void focusText1() {
        Err.resume(Text1::SetFocus);
        Err.Clear();
    }
}
