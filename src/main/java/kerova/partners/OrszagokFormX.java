package kerova.partners;

import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CommandButton;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbConst;

/**
 * Part 4.4: the country marks of {@code Orszagjel} (in {@code betarol.dsb}), with a copy in the archive
 * table {@code OrszagjelArchiv} of {@code Parameter.dsb}, and the hand-over of one row to a caller
 * through {@code CountryPicked}, {@code CountryMarkTransfer} and {@code CountryNameTransfer}.
 */
public class OrszagokFormX extends RecordForm {
    public static final String NAME = "OrszagokFormX";
    public static final String TITLE = "Jelzés- és ország törzs";

    public static final String MASTER_SOURCE = "Orszagjel";
    /** The archive table: its name is ours (Part 4.4 "Left to the implementer", docs/DECISIONS.md). */
    public static final String ARCHIVE_SOURCE = "OrszagjelArchiv";

    public static final String DELETE_TEXT = "A kijelölt sor törölhető véglegesen?";
    public static final String DELETE_TITLE = "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS!";
    public static final String ARCHIVE_TEXT = "Törli véglegesen az archív táblában az adatokat?";
    public static final String ARCHIVE_TITLE = "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS vagy adathozzáfűzés!";
    public static final String NO_ARCHIVE_TEXT = "Nincs archívum! Nem lehet adatot visszatölteni!";
    public static final String NO_ARCHIVE_TITLE = "FIGYELEM!";
    public static final String RESTORE_TEXT = "Törli=Igen és/vagy Hozzáfűzi=Nem a törzstáblában az adatokat?";
    public static final String RESTORE_TITLE = "FIGYELEM!";
    /** The Part says "yes/no" without the question sign: a plain question (Part 1.3, style 4). */
    public static final int QUESTION_STYLE = VbConst.vbYesNo;
    /** The Part gives only text and title: a plain box, as VB's MsgBox without a style. */
    public static final int NOTICE_STYLE = VbConst.vbOKOnly;

    static final String MARK = "Országjel";
    static final String COUNTRY = "Ország";

    // ---------------------------------------------------------------- Data controls

    public final DataControl OrszagJel = data("OrszagJel", "betarol.dsb", MASTER_SOURCE);
    public final DataControl OrszagJelArchivData = data("OrszagJelArchivData", "Parameter.dsb", ARCHIVE_SOURCE);

    // ---------------------------------------------------------------- controls

    public final Label Label1 = add(new Label("Label1", "Országjel (nagy betű):"));
    public final TextBox Text1 = add(new TextBox("Text1"));
    public final Label Label2 = add(new Label("Label2", "Ország:"));
    public final TextBox Text2 = add(new TextBox("Text2"));
    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));

    public final CommandButton Command1 = add(new CommandButton("Command1", "OK-Mentés"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Új ország"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Kijelölt sor törlése"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Adatok archiválása"));
    public final CommandButton Command5 = add(new CommandButton("Command5", "Archivumból visszatöltés"));
    public final CommandButton Command6 = add(new CommandButton("Command6", "Segédlet"));
    public final CommandButton Command7 = add(new CommandButton("Command7", "Kilépés"));
    public final CommandButton Command8 = add(new CommandButton("Command8", "Adat átadása"));

    // ---------------------------------------------------------------- menus (captions the Part leaves
    // empty are the buttons')

    public final Menu OKMentes = menu(new Menu("OKMentes", "OK-Mentés"));
    public final Menu UjOrsz = menu(new Menu("UjOrsz", "Új ország"));
    public final Menu OTorol = menu(new Menu("OTorol", "Töröl"));
    public final Menu OArch = menu(new Menu("OArch", "Archiválás"));
    public final Menu OMent = OArch.add(new Menu("OMent", "Mentés"));
    public final Menu OTolt = menu(new Menu("OTolt", "Visszatöltés"));
    public final Menu OSeg = menu(new Menu("OSeg", "Segédlet"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "Kilépés"));
    public final Menu AdatAtad = menu(new Menu("AdatAtad", "Adat átadása"));

    public OrszagokFormX() {
        super(NAME, TITLE);
        layout();
        Text1.bind(OrszagJel, MARK);
        Text2.bind(OrszagJel, COUNTRY);
        DBGrid1.bind(OrszagJel);
        DBGrid1.addColumn(MARK, MARK).Width = 110;
        DBGrid1.addColumn(COUNTRY, COUNTRY).Width = 320;

        OKMentes.Click = this::OKMentes_Click;
        UjOrsz.Click = this::UjOrsz_Click;
        OTorol.Click = this::OTorol_Click;
        OMent.Click = this::OMent_Click;
        OTolt.Click = this::OTolt_Click;
        OSeg.Click = this::OSeg_Click;
        Kilepes.Click = this::Kilepes_Click;
        AdatAtad.Click = this::AdatAtad_Click;
        // each button only runs the menu action beside it
        Command1.Click = OKMentes::fireClick;
        Command2.Click = UjOrsz::fireClick;
        Command3.Click = OTorol::fireClick;
        Command4.Click = OMent::fireClick;
        Command5.Click = OTolt::fireClick;
        Command6.Click = OSeg::fireClick;
        Command7.Click = Kilepes::fireClick;
        Command8.Click = AdatAtad::fireClick;

        // focus colours; the capitals of Text1 are asked for by its label only
        focusColors(Text1, Text2);
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
    }

    private void layout() {
        layoutConstraints = "wrap 5, insets 10, hidemode 3";
        columnConstraints = "[right][90!]16[right][260!][grow]";
        Text2.layout = "wrap";
        Width = 720;
        Height = 520;
        DBGrid1.setCaption("Országok törzs");
        DBGrid1.layout = "span 5, grow, push, h 200:300:, gaptop 8";
        Command1.layout = "span 5, split 4, gaptop 8, sg b";
        Command2.layout = "sg b";
        Command3.layout = "sg b";
        Command4.layout = "sg b";
        Command5.layout = "span 5, split 4, sg b";
        Command6.layout = "sg b";
        Command8.layout = "sg b";
        Command7.layout = "sg b";
    }

    // ---------------------------------------------------------------- opening

    /** Opening: the two transfer texts are emptied; the arrow pointer. */
    @Override
    protected void Form_Load() {
        Globals.CountryMarkTransfer = "";
        Globals.CountryNameTransfer = "";
        Forms.arrow();
    }

    // ---------------------------------------------------------------- menu entries, in the Part's order

    /** "OK-Mentés": off the ends, move last; bookmark, move last, back to the bookmark. Empty: UjOrsz. */
    void OKMentes_Click() {
        Forms.hourglass();
        try {
            if (count(OrszagJel) < 1) {
                UjOrsz_Click();
                return;
            }
            Err.Clear();
            Err.resume(() -> {
                Recordset r = rs(OrszagJel);
                if (r.BOF() || r.EOF()) {
                    r.MoveLast();
                }
                Object mark = r.Bookmark();
                r.MoveLast(); // pushes the pending edit into the table
                r.setBookmark(mark);
            });
            if (Err.Number() != 0) {
                // a failed save gives only a beep
                Err.Clear();
                Forms.Beep();
                Err.resume(() -> rs(OrszagJel).MoveLast());
                Err.Clear();
            }
        } finally {
            Forms.arrow();
        }
    }

    /** "Új ország": the blank rows are swept without asking; a row with "" as its mark is added; move last. */
    void UjOrsz_Click() {
        Forms.hourglass();
        try {
            sweepBlankRows();
            addRow(OrszagJel, MARK, "");
        } finally {
            Forms.arrow();
        }
    }

    /** "Töröl": the question; on Yes the row is deleted (and the form stands on the next row). */
    void OTorol_Click() {
        if (count(OrszagJel) < 1) {
            return;
        }
        Forms.arrow();
        if (Forms.MsgBox(DELETE_TEXT, QUESTION_STYLE, DELETE_TITLE) != VbConst.vbYes) {
            return;
        }
        Forms.hourglass();
        try {
            Err.resume(() -> {
                Recordset r = rs(OrszagJel);
                r.Delete();
                r.MoveNext();
                if (r.EOF() && r.RecordCount() > 0) {
                    r.MoveLast();
                }
            });
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    /** "Archiválás / Mentés": the master rows appended to the archive, which Yes empties first. */
    void OMent_Click() {
        Forms.hourglass();
        try {
            // 1
            if (count(OrszagJel) < 1) {
                return;
            }
            // 2: No keeps the archive, and the copy is appended behind it
            if (count(OrszagJelArchivData) > 0) {
                Forms.arrow();
                Forms.Beep();
                int answer = Forms.MsgBox(ARCHIVE_TEXT, QUESTION_STYLE, ARCHIVE_TITLE);
                Forms.hourglass();
                if (answer == VbConst.vbYes) {
                    deleteAll(OrszagJelArchivData);
                }
            }
            // 3: each master row with its two columns (the first move stores a pending edit)
            Recordset r = rs(OrszagJel);
            Object mark = Err.resume(r::Bookmark, null);
            Err.Clear();
            appendAll(OrszagJel, OrszagJelArchivData);
            Err.resume(() -> rs(OrszagJelArchivData).MoveLast());
            if (mark != null) {
                Err.resume(() -> r.setBookmark(mark));
            } else {
                Err.resume(r::MoveFirst);
            }
            Err.Clear();
        } finally {
            Forms.arrow();
        }
    }

    /** "Visszatöltés": the archive rows appended to the master, which Yes empties first; then move first. */
    void OTolt_Click() {
        Forms.hourglass();
        try {
            // 1
            if (count(OrszagJelArchivData) < 1) {
                Forms.arrow();
                Forms.Beep();
                Forms.MsgBox(NO_ARCHIVE_TEXT, NOTICE_STYLE, NO_ARCHIVE_TITLE);
                return;
            }
            // 2: No keeps the master rows, and the archive is appended behind them
            if (count(OrszagJel) > 0) {
                Forms.arrow();
                Forms.Beep();
                int answer = Forms.MsgBox(RESTORE_TEXT, QUESTION_STYLE, RESTORE_TITLE);
                Forms.hourglass();
                if (answer == VbConst.vbYes) {
                    deleteAll(OrszagJel);
                }
            }
            // 3: no test for doubled marks
            appendAll(OrszagJelArchivData, OrszagJel);
            Err.resume(() -> rs(OrszagJel).MoveFirst());
            Err.Clear();
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** "Segédlet": help topic "OrszagokFormX". */
    void OSeg_Click() {
        help();
    }

    /**
     * "Kilépés": with rows, the blank rows are swept as in UjOrsz; both recordsets close, an error
     * there gives a beep; the form is unloaded.
     */
    void Kilepes_Click() {
        CloseGuard = false;
        Forms.hourglass();
        try {
            if (count(OrszagJel) > 0) {
                sweepBlankRows();
            }
            Err.Clear();
            Err.resume(() -> rs(OrszagJel).Close());
            Err.resume(() -> rs(OrszagJelArchivData).Close());
            if (Err.Number() != 0) {
                Forms.Beep();
            }
            Err.Clear();
        } finally {
            Forms.arrow();
            Unload();
        }
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /**
     * "Adat átadása": with a current row CountryPicked := 1 and the transfer texts take Text1 and Text2;
     * otherwise the texts are emptied. Then the form closes as under Kilepes.
     */
    void AdatAtad_Click() {
        if (onRecord(OrszagJel)) {
            Globals.CountryPicked = 1;
            Globals.CountryMarkTransfer = Text1.Text();
            Globals.CountryNameTransfer = Text2.Text();
        } else {
            Globals.CountryMarkTransfer = "";
            Globals.CountryNameTransfer = "";
        }
        Kilepes_Click();
    }

    /** The header click on DBGrid1: the standard sort of Part 1.3. */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(OrszagJel, DBGrid1, colIndex);
    }

    // ---------------------------------------------------------------- algorithms

    /** Blank row test: Országjel or Ország is "" or null. */
    static boolean isBlank(Object mark, Object country) {
        return Funcs.nullToText(mark).isEmpty() || Funcs.nullToText(country).isEmpty();
    }

    /** Requery (which stores a pending edit first) and walk the whole table, deleting every blank row. */
    void sweepBlankRows() {
        Err.resume(() -> {
            Recordset r = rs(OrszagJel);
            r.Requery();
            if (r.RecordCount() < 1) {
                return;
            }
            r.MoveFirst();
            while (!r.EOF()) {
                if (isBlank(r.Fields(MARK).Value(), r.Fields(COUNTRY).Value())) {
                    r.Delete();
                }
                r.MoveNext();
            }
        });
        Err.Clear();
    }

    /** Deletes every row of a source, walking it from the first. */
    private static void deleteAll(DataControl dc) {
        Err.resume(() -> {
            Recordset r = rs(dc);
            r.MoveFirst();
            while (!r.EOF()) {
                r.Delete();
                r.MoveNext();
            }
        });
        Err.Clear();
    }

    /** Appends each row of one source to the other with its two columns. */
    private static void appendAll(DataControl from, DataControl to) {
        Err.resume(() -> {
            Recordset f = rs(from);
            Recordset t = rs(to);
            if (f.RecordCount() < 1) {
                return;
            }
            f.MoveFirst();
            while (!f.EOF()) {
                Object mark = f.Fields(MARK).Value();
                Object country = f.Fields(COUNTRY).Value();
                t.AddNew();
                t.Fields(MARK).setValue(mark);
                t.Fields(COUNTRY).setValue(country);
                t.Update();
                f.MoveNext();
            }
        });
        Err.Clear();
    }
}
