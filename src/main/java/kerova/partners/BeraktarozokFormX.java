package kerova.partners;

import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.ProgressBar;
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
import kerova.core.vb.Funcs;
import kerova.core.vb.VbConst;

/**
 * Part 4.1: the master of suppliers and partners on {@code beraktar}, with the country mark taken
 * from the side grid of {@code Orszagjel}, the two searches, the row lock test and the full check of
 * the names that runs on both ways out ("Mégse" and "Mentés-Kilépés"), deliberately different.
 */
public class BeraktarozokFormX extends RecordForm {
    public static final String NAME = "BeraktarozokFormX";
    public static final String TITLE = "Beszállítók, partnerek adatai törzs - Kerova";

    /** The table in its own order: the new identifier is the last row's plus 1 in that order. */
    public static final String PARTNER_SOURCE = "beraktar";
    public static final String COUNTRY_SOURCE = "Orszagjel";

    public static final String NEW_FAIL_TEXT = "Lépjen ki a MÉGSE gombbal a főmenüre!";
    public static final String NEW_FAIL_TITLE = "FIGYELEM! HIBA!";
    public static final String NEW_LOG_TEXT = "Új beszállító felvitele";

    public static final String NAME_PROMPT = "Kérem a beraktározó nevét:";
    public static final String NAME_TITLE = "Keresés (cég)névre";
    public static final String NAME_NOT_FOUND = "Nincs ilyen beraktározó! Keressen újra, vagy válasszon a listából!";
    public static final String COUNTRY_PROMPT = "Kérem az ország nevét:";
    public static final String COUNTRY_TITLE = "Keresés országra";
    public static final String COUNTRY_NOT_FOUND = "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!";

    public static final String DELETE_TEXT = "Biztosan törli véglegesen az adatot?";
    public static final String DELETE_TITLE = "FIGYELEM! Végleges törlés!";

    public static final String LOCKED_TEXT = "Az adat jelenleg zárolt! Próbálja újra!";
    public static final String LOCKED_TITLE = "Adatzárolás!";

    public static final String CHECK_TEXT = "Kéri az adatok teljes ellenőrzését?";
    /** The title of the check under "Mégse" (yes/no, no icon). */
    public static final String CHECK_TITLE_MEGSE = "Ellenőrzés";
    /** The title of the check under "Mentés-Kilépés" (yes/no with the question mark, after a beep). */
    public static final String CHECK_TITLE_KILEPES = "Ellenőrzés...";
    public static final String CHECK_FAIL_TEXT = "Az adatok ellenőrzése nem végezhető el mezőhiba miatt!";
    public static final String CHECK_FAIL_TITLE = "FIGYELEM! Később javítsa vagy törölje a hibás tétel sorát!";

    public static final String COUNTRY_TIP = "Dupla kattintással válasszon!";
    /** Part 4.2's page form, which BeszNyom opens. */
    public static final String PRINT_FORM = "BeszallitoNyomFormX";

    // ---------------------------------------------------------------- Data controls

    public final DataControl Beraktarozok = data("Beraktarozok", "Kerova.dsb", PARTNER_SOURCE);
    public final DataControl Data1 = data("Data1", "Kerova.dsb", COUNTRY_SOURCE);
    public final DataControl Regisztrálás = data("Regisztrálás", "Regiszt.dsb", "Regisztrálás");

    // ---------------------------------------------------------------- fields, in the order of the columns

    public final TextBox Text2 = field("Beszállító (cég) neve:", new TextBox("Text2"));
    public final TextBox Text3 = field("Postai irányítószám:", new TextBox("Text3"));
    public final TextBox Text4 = field("Székhely:", new TextBox("Text4"));
    public final TextBox Text5 = field("Cím:", new TextBox("Text5"));
    public final TextBox Text6 = field("Telefon:", new TextBox("Text6"));
    public final TextBox Text7 = field("FAX:", new TextBox("Text7"));
    public final TextBox Text8 = field("Mobil:", new TextBox("Text8"));
    public final TextBox Text9 = field("Adószám:", new TextBox("Text9"));
    public final TextBox Text10 = field("Banki számlaszám:", new TextBox("Text10"));
    public final TextBox Text1 = field("Azonosító sorszám:", new TextBox("Text1"));
    public final TextBox Text11 = field("Kapcsolattartó neve:", new TextBox("Text11"));
    public final Label Label14 = field("Ország jelzése:", new Label("Label14"));
    public final TextBox Text12 = field("Ügyféli státusz:", new TextBox("Text12"));

    public final ProgressBar ProgressBar1 = add(new ProgressBar("ProgressBar1"));

    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final DBGrid DBGrid2 = add(new DBGrid("DBGrid2"));

    public final CommandButton keres = add(new CommandButton("keres", "Keresés"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "Ország"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Rögzítés"));
    public final CommandButton megse = add(new CommandButton("megse", "Mégse"));

    // ---------------------------------------------------------------- menus

    public final Menu BeszAdatkez = menu(new Menu("BeszAdatkez", "&Adatkezelés"));
    public final Menu UjAdat = BeszAdatkez.add(new Menu("UjAdat", "Új beszállító"));
    public final Menu BeszallTorol = BeszAdatkez.add(new Menu("BeszallTorol", "Törlés"));
    public final Menu BeszNyom = BeszAdatkez.add(new Menu("BeszNyom", "Nyomtatás"));
    public final Menu Kilepes = BeszAdatkez.add(new Menu("Kilepes", "Mentés-Kilépés"));

    /**
     * The key of the current row for the action log's ordinal 8 (LogAction reads a label bound to the
     * key); the form shows the key in Text1, so this label is not on the form.
     */
    private final Label logKey = new Label("logKey");

    public BeraktarozokFormX() {
        super(NAME, TITLE);
        layout();
        bindings();

        UjAdat.Click = this::UjAdat_Click;
        BeszallTorol.Click = this::BeszallTorol_Click;
        BeszNyom.Click = this::BeszNyom_Click;
        Kilepes.Click = this::Kilepes_Click;
        keres.Click = this::keres_Click;
        Command1.Click = this::Command1_Click;
        Command4.Click = this::Command4_Click;
        megse.Click = this::megse_Click;

        // input filter: digits and backspace only; focus colours on every box (Part 1.3)
        wholeNumber(Text3, Text6, Text7, Text8, Text9, Text10, Text12);
        focusColors(Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12);

        DBGrid2.DblClick = this::DBGrid2_DblClick;
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
    }

    // ---------------------------------------------------------------- building


    private void layout() {
        layoutConstraints = "wrap 4, insets 8, hidemode 3";
        columnConstraints = "[right][260!]16[right][260!]";
        Width = 1100;
        Height = 760;
        Label14.layout = "w 60!";
        ProgressBar1.layout = "span 4, growx";
        DBGrid1.layout = "span 4, grow, push, h 160:260:";
        DBGrid2.layout = "span 4, growx, h 100:160:";
        keres.layout = "span 4, split 4, gaptop 6";
        DBGrid1.setCaption("Mozgás a táblában");
        DBGrid2.setCaption("Data1-országjel");
        DBGrid2.setToolTipText(COUNTRY_TIP);
        DBGrid1.AllowUpdate = true;
    }

    private void bindings() {
        Text2.bind(Beraktarozok, "BerNev");
        Text3.bind(Beraktarozok, "BerIrszam");
        Text4.bind(Beraktarozok, "BerSzekhely");
        Text5.bind(Beraktarozok, "BerCim");
        Text6.bind(Beraktarozok, "BerTelefon");
        Text7.bind(Beraktarozok, "BerFax");
        Text8.bind(Beraktarozok, "BerMobil");
        Text9.bind(Beraktarozok, "BerAdoszam");
        Text10.bind(Beraktarozok, "BerSzamlaszam");
        Text1.bind(Beraktarozok, "recordID");
        Text11.bind(Beraktarozok, "Kapcsolattartó");
        Label14.bind(Beraktarozok, "BerOrszag");
        Text12.bind(Beraktarozok, "UgyfelStatus");
        logKey.bind(Beraktarozok, "recordID");

        DBGrid1.bind(Beraktarozok);
        for (String c : new String[] {"BerNev", "BerIrszam", "BerSzekhely", "BerCim", "BerTelefon", "BerFax",
            "BerMobil", "BerAdoszam", "BerSzamlaszam", "recordID", "Kapcsolattartó", "BerOrszag", "UgyfelStatus"}) {
            DBGrid1.addColumn(c);
        }
        DBGrid1.Columns(0).Width = 220;
        DBGrid2.bind(Data1);
        DBGrid2.addColumn("Országjel").Width = 90;
        DBGrid2.addColumn("Ország").Width = 220;
    }

    // ---------------------------------------------------------------- form start

    /** Part 1.3's start: an empty table gets its first row with recordID 1, else the last row. */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            openOnLast(Beraktarozok, "recordID", Text2);
            DBGrid1.Refresh();
            DBGrid2.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- menu entries and buttons

    /** "Új beszállító". */
    void UjAdat_Click() {
        Forms.hourglass();
        try {
            // 1: the last row's recordID plus 1, after a requery; 1 on an empty table
            Err.Clear();
            double[] id = {1};
            Err.resume(() -> {
                Recordset r = rs(Beraktarozok);
                if (r.RecordCount() > 0) {
                    r.MoveFirst();
                    r.Requery();
                    r.MoveLast();
                    id[0] = Conv.CDbl(Funcs.NullToNum(r.Fields("recordID").Value())) + 1;
                }
            });
            if (Err.Number() != 0) {
                Err.Clear();
                Forms.arrow();
                Forms.Beep();
                Forms.MsgBox(NEW_FAIL_TEXT, VbConst.vbCritical, NEW_FAIL_TITLE);
                return;
            }
            // 2: a row with recordID alone
            Err.resume(() -> {
                Recordset r = rs(Beraktarozok);
                r.AddNew();
                r.Fields("recordID").setValue(id[0]);
                r.Update();
                r.Requery();
                r.MoveFirst();
            });
            Err.Clear();
            // 3
            String filter = "[recordID] = " + Conv.CStr(id[0]);
            Boolean found = Err.resume(() -> {
                Recordset r = rs(Beraktarozok);
                r.FindFirst(filter);
                return !r.NoMatch();
            }, false);
            Err.Clear();
            if (found == null || !found) {
                Forms.Beep();
                return;
            }
            // 4
            ProgressBar1.setValue(ProgressBar1.Min());
            Err.resume(Text2::SetFocus);
            Err.Clear();
            LogAction(Regisztrálás, NEW_LOG_TEXT, logKey);
        } finally {
            Forms.arrow();
        }
    }

    /**
     * "Törlés": the standard delete of Part 1.3 with the Part's question; no test of trips or invoices
     * that name the partner (they hold copies of the name). The last row gone, "Új beszállító" runs.
     */
    void BeszallTorol_Click() {
        delete(Beraktarozok, DELETE_TEXT, DELETE_TITLE, null, null, 0, null, this::UjAdat_Click);
    }

    /** Part 4.2: the partner list (its page form opens through Forms). */
    void BeszNyom_Click() {
        BeszallitoNyomFormX.printList(Beraktarozok);
        DBGrid1.Refresh();
    }

    /** "Mentés-Kilépés": refresh, last row, grid; then the full check where a null name is no bad row. */
    void Kilepes_Click() {
        CloseGuard = false;
        Forms.hourglass();
        try {
            Err.Clear();
            Err.resume(Beraktarozok::Refresh);
            if (Err.Number() != 0) {
                Err.Clear();
                Forms.arrow();
                Forms.Beep();
                Forms.MsgBox(NEW_FAIL_TEXT, VbConst.vbCritical, NEW_FAIL_TITLE);
                return; // the user leaves with "Mégse"
            }
            Err.resume(() -> rs(Beraktarozok).MoveLast());
            Err.Clear();
            DBGrid1.Refresh();
            if (count(Beraktarozok) > 0) {
                Forms.arrow();
                Forms.Beep();
                if (Forms.MsgBox(CHECK_TEXT, VbConst.vbYesNo + VbConst.vbQuestion, CHECK_TITLE_KILEPES)
                        == VbConst.vbYes) {
                    fullCheck(false);
                }
            }
            closeAndUnload();
        } finally {
            Forms.arrow();
        }
    }

    /** "Mégse": the full check where a null name is a bad row too; no edit is cancelled. */
    void megse_Click() {
        CloseGuard = false;
        try {
            if (count(Beraktarozok) > 0) {
                Forms.arrow();
                if (Forms.MsgBox(CHECK_TEXT, VbConst.vbYesNo, CHECK_TITLE_MEGSE) == VbConst.vbYes) {
                    fullCheck(true);
                }
            }
            closeAndUnload();
        } finally {
            Forms.arrow();
        }
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /** {@code keres}: the standard search on BerNev. */
    void keres_Click() {
        standardSearch(Beraktarozok, "BerNev", NAME_PROMPT, NAME_TITLE, NAME_NOT_FOUND);
    }

    /** "Ország": the standard search on the country's name in the side grid. */
    void Command1_Click() {
        standardSearch(Data1, "Ország", COUNTRY_PROMPT, COUNTRY_TITLE, COUNTRY_NOT_FOUND);
    }

    /** The lock test: Edit takes the row's lock, then the pending edit of the bound boxes is stored. */
    void Command4_Click() {
        if (count(Beraktarozok) < 1) {
            return;
        }
        Forms.hourglass();
        try {
            Err.Clear();
            Err.resume(() -> {
                Recordset r = rs(Beraktarozok);
                r.Edit();
                r.CancelUpdate();
                Beraktarozok.writeBound();
            });
            if (Err.Number() != 0) {
                Err.Clear();
                Forms.arrow();
                Forms.Beep();
                Forms.MsgBox(LOCKED_TEXT, VbConst.vbExclamation, LOCKED_TITLE);
            }
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- grids

    /** A double click in the country grid: the row's Országjel into Label14, and so into BerOrszag. */
    void DBGrid2_DblClick() {
        if (count(Data1) < 1) {
            return;
        }
        Object mark = Err.resume(() -> rs(Data1).Fields("Országjel").Value(), null);
        if (Err.Number() != 0) {
            Err.Clear();
            return;
        }
        Label14.setCaption(Funcs.nullToText(mark));
    }

    /** The standard header sort of Part 1.3 on DBGrid1. */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(Beraktarozok, DBGrid1, colIndex);
    }

    // ---------------------------------------------------------------- the full check

    /**
     * Steps 1 to 3 of the full check, after a Yes: a row is bad when BerNev is the empty string, and
     * under "Mégse" also when it is null. A bad row is deleted without a word; a name of blanks stays.
     */
    void fullCheck(boolean nullIsBad) {
        Forms.hourglass();
        // 1
        DBGrid1.AllowUpdate = false;
        Recordset r = Err.resume(() -> rs(Beraktarozok), null);
        Err.Clear();
        if (r == null) {
            return;
        }
        ProgressBar1.setMin(0);
        ProgressBar1.setMax(count(Beraktarozok));
        ProgressBar1.setValue(0);
        // 2
        Err.resume(r::MoveFirst);
        if (Err.Number() != 0) {
            Err.Clear();
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(CHECK_FAIL_TEXT, VbConst.vbCritical, CHECK_FAIL_TITLE);
            return;
        }
        // 3
        while (!Err.resume(r::EOF, true)) {
            ProgressBar1.setValue(ProgressBar1.Value() + 1);
            Object name = Err.resume(() -> r.Fields("BerNev").Value(), "?");
            Err.Clear();
            if ("".equals(name) || (nullIsBad && name == null)) {
                Err.resume(r::Delete);
                if (Err.Number() != 0) {
                    Err.Clear();
                    Forms.Beep();
                }
            }
            Err.resume(r::MoveNext);
            if (Err.Number() != 0) {
                Err.Clear();
                break; // a move that fails would walk on the spot for ever
            }
        }
        Err.Clear();
        Forms.arrow();
    }

    /** The end of both ways out: the sets of Beraktarozok and Regisztrálás close, errors passed over. */
    private void closeAndUnload() {
        closeAll(Beraktarozok, Regisztrálás);
        Forms.arrow();
        Unload();
    }
}
