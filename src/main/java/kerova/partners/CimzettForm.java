package kerova.partners;

import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CheckBox;
import kerova.core.form.CommandButton;
import kerova.core.form.Control;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.print.PagedList;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbConst;

/**
 * Part 4.5: the customer master on {@code Címzett} in {@code kitarol.mdb} ("CRM alap"), with the
 * countries of {@code Orszagjel} in {@code betarol.mdb} beside it, the filters, the search as you type,
 * the copy of a row, the two deletions, the hand-over to a caller ({@code AtadaS}), the closing check
 * and the printed list.
 */
public class CimzettForm extends RecordForm {
    public static final String NAME = "CimzettForm";
    public static final String TITLE = "Partnertörzs - Vevők (címzettek) adatai (CRM alap)";

    // ---------------------------------------------------------------- record sources

    /** The designed source. */
    public static final String DESIGNED_SOURCE = "select * from Címzett order by CimNev";
    public static final String SUBCONTRACTOR_SOURCE =
            "select * from Címzett where NemAktiv = False and Alvállalkozó = True order by Cimnev";
    public static final String ACTIVE_SOURCE = "select * from Címzett where NemAktiv = False order by Cimnev";
    public static final String INACTIVE_SOURCE = "select * from Címzett where NemAktiv = True order by Cimnev";
    public static final String ALL_SOURCE = "select * from Címzett order by Cimnev";
    public static final String BY_ID_SOURCE = "select * from Címzett order by recordID";

    // ---------------------------------------------------------------- texts

    public static final String NEW_LOG = "Új vevőtörzs adatsor";
    public static final String NEW_FAIL_LOG = "HIBA vevőtörzs mentésében (új adat)";
    public static final String SAVE_FAIL_LOG = "HIBA vevőtörzs mentésben (OK)";
    public static final String MANDATORY_TEXT = "Kötelező adat nincs kitöltve (vastag aláhúzottak)!";
    public static final String MANDATORY_TITLE = "FIGYELEM! KEZELŐI HIBA!";
    public static final String MANDATORY_LOG = "Adathiány (kötelező adat) vevőtörzsben";
    public static final String COPY_TEXT = "Kér új adatot a név és az adószám másolatával (New)?";
    public static final String COPY_TITLE = "FIGYELEM! Új adatsor duplázással!";
    public static final String COPY_LOG = "Új adatsor duplázással vevőtörzsben";
    public static final String NO_ROW_TEXT = "Nincs adat, vagy nem választott ki adatsort!";
    public static final String NO_ROW_TITLE = "FIGYELEM! Válasszon kattintással adatsort!";
    public static final String DELETE_TEXT = "Biztosan véglegesen törli az adatsort (Delete record)?";
    public static final String DELETE_TITLE = "FIGYELEM! VÉGLEGES SORTÖRLÉS!";
    public static final String DELETE_LOG = "Törlés vevő törzsből";
    public static final String ALL_GONE_TEXT = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";
    public static final String ALL_GONE_TITLE = "FIGYELEM! Új adatsor felvitele!";
    public static final String DELETE_ALL_TEXT = "Biztosan véglegesen törli az ÖSSZES adatot (Delete)?";
    public static final String DELETE_ALL_TITLE = "FIGYELEM! MINDEN ADAT VÉGLEGES TÖRLÉSE!";
    public static final String DELETE_ALL_LOG = "Törlés teljes vevőtörzs (Del All)";
    public static final String COUNTRY_TITLE = "Keresés országra";
    public static final String COUNTRY_PROMPT = "Kérem az ország nevét:";
    public static final String COUNTRY_NOT_FOUND = "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!";
    public static final String COUNTRY_NOT_FOUND_TITLE = "FIGYELEM! NINCS ILYEN ADAT!";
    public static final String NEW_COUNTRY_LOG = "Új adatsor ország törzsbe";
    public static final String DELETE_COUNTRY_TEXT = "Biztosan véglegesen törli az adatsort (Delete)?";
    public static final String DELETE_COUNTRY_TITLE = "FIGYELEM! VÉGELEGES TÖRLÉS!";
    public static final String DELETE_COUNTRY_LOG = "Törlés ország törzsből (adatsor Del)";
    public static final String CHECK_TEXT = "Kéri az adatok teljes ellenőrzését?";
    public static final String CHECK_TITLE = "FIGYELEM! Teljeskörű ellenőrzés!";
    public static final String COUNTRY_TIP = "Dupla kattintással válasszon!";

    // ---------------------------------------------------------------- Data controls

    public final DataControl CimzettData = data("CimzettData", "kitarol.mdb", DESIGNED_SOURCE);
    public final DataControl OrszagjelData = data("OrszagjelData", "betarol.mdb", "Orszagjel");
    public final DataControl RegisztData = data("RegisztData", "Regiszt.dsb", "Regisztrálás");

    // ---------------------------------------------------------------- fields, in the order of the columns

    public final TextBox Text1 = field("Azonosító:", new TextBox("Text1"), null);
    public final TextBox Text2 = field("Vevő neve:", new TextBox("Text2"), "Név");
    public final TextBox Text3 = field("Irányítószám:", new TextBox("Text3"), "Postai jel, irányítószám");
    public final TextBox Text4 = field("Székhely:", new TextBox("Text4"), "Székhely neve");
    public final TextBox Text5 = field("Cím:", new TextBox("Text5"), "Utca, tér stb. neve, száma");
    public final TextBox Text6 = field("Telefon:", new TextBox("Text6"), "Szám");
    public final TextBox Text7 = field("Fax:", new TextBox("Text7"), "Szám");
    public final TextBox Text8 = field("Mobil:", new TextBox("Text8"), "Szám");
    public final TextBox Text9 = field("Adószám:", new TextBox("Text9"), "Szám");
    public final TextBox Text10 = field("Bankszámlaszám:", new TextBox("Text10"), "Szám");
    public final TextBox Text11 = field("Kapcsolattartó:", new TextBox("Text11"), "Név");
    public final TextBox Text12 = field("Számlázási székhely:", new TextBox("Text12"), "Székhely neve");
    public final TextBox Text13 = field("Számlázási irányítószám:", new TextBox("Text13"), "Postai irányítószám");
    public final TextBox Text14 = field("Számlázási cím:", new TextBox("Text14"), "Utca, tér stb. neve, száma");
    public final TextBox Text15 = field("Vevő kódja:", new TextBox("Text15"), "Kód");
    public final TextBox Text16 = field("Jutalék jele:", new TextBox("Text16"), "Jutalék jele");
    public final TextBox Text17 = field("Fizetési határidő (nap):", new TextBox("Text17"),
            "Teljesítés dátumához adott nap");
    public final TextBox Text18 = field("Kézhezvétel (nap):", new TextBox("Text18"), "Okmány keltéhez adott nap");
    public final TextBox Text19 = field("Kapcsolattartó címe:", new TextBox("Text19"), "Teljes cím");
    public final TextBox Text20 = field("Megjegyzés:", new TextBox("Text20"), "Megjegyzés");
    public final Label Label14 = field("Ország jelzése:", new Label("Label14"), null);
    public final CheckBox Check1 = check(new CheckBox("Check1", "Folyamatos teljesítés:"), null);
    public final CheckBox Check2 = check(new CheckBox("Check2", "NEM aktív"), "Nem jelenik meg okmánykitöltésnél");
    public final CheckBox Check3 = check(new CheckBox("Check3", "Környzetvédelmi termékdíjat vevő átvállalja"), null);
    public final CheckBox Check4 = check(new CheckBox("Check4", "Különjárat:"), null);
    public final CheckBox Check5 = check(new CheckBox("Check5", "Munkásjárat:"), null);
    public final CheckBox Check6 = check(new CheckBox("Check6", "Alvállalkozó:"), null);
    public final CheckBox Check7 = check(new CheckBox("Check7", "Pénzforgalmi elszámolás:"),
            "Pénzforgalmi elszámolás 2013-tól");

    /** The search as you type. */
    public final TextBox Text21 = field("Név gyorskereső:", new TextBox("Text21"), null);

    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final DBGrid DBGrid2 = add(new DBGrid("DBGrid2"));

    public final CommandButton Command4 = add(new CommandButton("Command4", "OK-Mentés"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "Keresés országra"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Új ország megadása"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Ország törlése"));

    // ---------------------------------------------------------------- menus

    public final Menu Adatkezeles = menu(new Menu("Adatkezeles", "&Adatkezelés"));
    public final Menu UjAdat = Adatkezeles.add(new Menu("UjAdat", "Új adat"));
    public final Menu RekordDupla = Adatkezeles.add(new Menu("RekordDupla", "Rekord duplázás"));
    public final Menu CimzettTorol = Adatkezeles.add(new Menu("CimzettTorol", "Törlés (adatsor)"));
    public final Menu OsszTorol = Adatkezeles.add(new Menu("OsszTorol", "Összes adat törlése"));
    public final Menu Szuresek = menu(new Menu("Szuresek", "&Szűrések"));
    public final Menu Aktivak = Szuresek.add(new Menu("Aktivak", "Aktív vevők"));
    public final Menu NemAktiv = Szuresek.add(new Menu("NemAktiv", "NEM aktív vevők"));
    public final Menu SzuresKi = Szuresek.add(new Menu("SzuresKi", "Szűrés ki (mind)"));
    public final Menu CimzettNyom = menu(new Menu("CimzettNyom", "&Nyomtatás"));
    public final Menu AtadaS = menu(new Menu("AtadaS", "Á&tadás (Választ)"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "&Kilépés (Exit)"));

    /** The key of the current row for the action log's ordinal 8 (not on the form; Text1 shows it). */
    private final Label logKey = new Label("logKey");

    public CimzettForm() {
        super(NAME, TITLE);
        layout();
        bindings();

        Text21.Change = this::Text21_Change;
        UjAdat.Click = this::UjAdat_Click;
        Command4.Click = this::Command4_Click;
        RekordDupla.Click = this::RekordDupla_Click;
        CimzettTorol.Click = this::CimzettTorol_Click;
        OsszTorol.Click = this::OsszTorol_Click;
        Aktivak.Click = this::Aktivak_Click;
        NemAktiv.Click = this::NemAktiv_Click;
        SzuresKi.Click = this::SzuresKi_Click;
        Command1.Click = this::Command1_Click;
        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        AtadaS.Click = this::AtadaS_Click;
        Kilepes.Click = this::Kilepes_Click;
        CimzettNyom.Click = this::CimzettNyom_Click;
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
        DBGrid2.HeadClick = this::DBGrid2_HeadClick;
        DBGrid2.DblClick = this::DBGrid2_DblClick;

        // Text6: digits, "-", "/" and backspace; focus colours on every typing field (Part 1.3)
        Text6.KeyPress = CimzettForm::phoneKey;
        focusColors(Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12, Text13,
                Text14, Text15, Text16, Text17, Text18, Text19, Text20, Text21);
    }

    // ---------------------------------------------------------------- building

    private <T extends Control> T field(String caption, T control, String tip) {
        add(new Label(control.getName() + "Caption", caption));
        if (tip != null) {
            control.setToolTipText(tip);
        }
        return add(control);
    }

    private CheckBox check(CheckBox box, String tip) {
        if (tip != null) {
            box.setToolTipText(tip);
        }
        return add(box);
    }

    private void layout() {
        layoutConstraints = "wrap 6, insets 8, hidemode 3";
        columnConstraints = "[right][200!]12[right][200!]12[right][200!]";
        Width = 1340;
        Height = 860;
        Text1.setLocked(true);
        Label14.layout = "w 60!";
        Check1.layout = "newline, span 6, split 7, gaptop 4";
        control("Text21Caption").layout = "newline";
        Text21.layout = "wrap";
        DBGrid1.layout = "span 6, grow, push, h 160:260:";
        DBGrid2.layout = "span 6, growx, h 90:130:";
        Command4.layout = "span 6, split 4, gaptop 6";
        DBGrid1.setCaption("Vevők (címzettek)");
        DBGrid2.setCaption("Országjel");
        DBGrid2.setToolTipText(COUNTRY_TIP);
        DBGrid1.AllowUpdate = true;
        DBGrid2.AllowUpdate = true;
    }

    private void bindings() {
        String[] columns = {"recordID", "CimNev", "CimIrszam", "CimSzekhely", "CimCim", "CimTelefon", "CimFax",
            "CimMobil", "CimAdoszam", "CimSzamlaszam", "Kapcsolattartó", "SzamlazasSzekhelye", "SzamlazasIrszama",
            "SzamlazasCime", "VevoKodja", "JutalekJel", "FizetésiHatáridö", "KézhezvételNap", "KapcsolattartóCime",
            "Megjegyzés"};
        TextBox[] boxes = {Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12,
            Text13, Text14, Text15, Text16, Text17, Text18, Text19, Text20};
        for (int i = 0; i < boxes.length; i++) {
            boxes[i].bind(CimzettData, columns[i]);
        }
        Check1.bind(CimzettData, "FolyamatosTelj");
        Check2.bind(CimzettData, "NemAktiv");
        Check3.bind(CimzettData, "KVTDÁtvállalás");
        Check4.bind(CimzettData, "Különjárat");
        Check5.bind(CimzettData, "Munkásjárat");
        Check6.bind(CimzettData, "Alvállalkozó");
        Check7.bind(CimzettData, "PénzforgalmiElszámolás");
        Label14.bind(CimzettData, "cimorszag");
        logKey.bind(CimzettData, "recordID");

        DBGrid1.bind(CimzettData);
        DBGrid1.addColumn("Név", "CimNev").Width = 240;
        DBGrid1.addColumn("Irsz.", "CimIrszam").Width = 60;
        DBGrid1.addColumn("Székhely", "CimSzekhely").Width = 140;
        DBGrid1.addColumn("Cím", "CimCim").Width = 200;
        DBGrid1.addColumn("Ország", "CimOrszag").Width = 50;
        DBGrid1.addColumn("Telefon", "CimTelefon").Width = 110;
        DBGrid1.addColumn("Adószám", "CimAdoszam").Width = 110;
        DBGrid1.addColumn("Kapcsolattartó", "Kapcsolattartó").Width = 150;
        DBGrid1.addColumn("Azonosító", "recordID").Width = 70;
        DBGrid2.bind(OrszagjelData);
        DBGrid2.addColumn("Országjel").Width = 90;
        DBGrid2.addColumn("Ország").Width = 220;
    }

    // ---------------------------------------------------------------- form start

    /** Showing the form: the subcontractor view on the caller's request, else the designed source. */
    @Override
    protected void Form_Load() {
        pickStart();
        if (Globals.CustomerSubcontractorRequest == 1) {
            CimzettData.setRecordSource(SUBCONTRACTOR_SOURCE);
        } else {
            CimzettData.setRecordSource(DESIGNED_SOURCE);
        }
    }

    /** Part 1.3's start: an empty set gets its first row with recordID 1, else the last row. */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            openOnLast(CimzettData, "recordID", Text2);
            DBGrid1.Refresh();
            DBGrid2.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** Text6: digits, "-", "/" and backspace; any other key beeps and is swallowed. */
    static void phoneKey(kerova.core.form.KeyArgs k) {
        if (k.KeyAscii != '-' && k.KeyAscii != '/') {
            wholeNumberKey(k);
        }
    }

    // ---------------------------------------------------------------- filters and search

    /** "Aktív vevők". */
    void Aktivak_Click() {
        setSource(ACTIVE_SOURCE);
    }

    /** "NEM aktív vevők". */
    void NemAktiv_Click() {
        setSource(INACTIVE_SOURCE);
    }

    /** "Szűrés ki". */
    void SzuresKi_Click() {
        setSource(ALL_SOURCE);
    }

    private void setSource(String source) {
        Forms.hourglass();
        try {
            CimzettData.setRecordSource(source);
            Err.resume(CimzettData::Refresh);
            Err.Clear();
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** The search as you type on CimNev (Part 1.3's quick search). */
    void Text21_Change() {
        quickSearch(CimzettData, "CimNev", Text21.Text());
    }

    // ---------------------------------------------------------------- new, save, copy

    /** "Új adat": the key from the rows in recordID order; the row added under the name order. */
    void UjAdat_Click() {
        Forms.hourglass();
        try {
            Err.Clear();
            double[] id = {1};
            // the last recordID + 1, in key order
            Err.resume(() -> {
                CimzettData.setRecordSource(BY_ID_SOURCE);
                CimzettData.Refresh();
                Recordset r = rs(CimzettData);
                if (r.RecordCount() > 0) {
                    r.MoveLast();
                    id[0] = Conv.CDbl(Funcs.NullToNum(r.Fields("recordID").Value())) + 1;
                }
            });
            // back to the name order; a row with that key alone, requeried and found
            Err.resume(() -> {
                CimzettData.setRecordSource(DESIGNED_SOURCE);
                CimzettData.Refresh();
                Recordset r = rs(CimzettData);
                r.AddNew();
                r.Fields("recordID").setValue(id[0]);
                r.Update();
                r.Requery();
                r.FindFirst("[recordID] = " + Conv.CStr(id[0]));
            });
            boolean failed = Err.Number() != 0;
            Err.Clear();
            DBGrid1.Refresh();
            if (failed) {
                LogAction(RegisztData, NEW_FAIL_LOG, logKey);
            } else {
                Err.resume(Text2::SetFocus);
                Err.Clear();
                LogAction(RegisztData, NEW_LOG, logKey);
            }
        } finally {
            Forms.arrow();
        }
    }

    /** "OK-Mentés": save by moving, then the test of the three mandatory fields; an empty table gets a row. */
    void Command4_Click() {
        Forms.hourglass();
        try {
            if (count(CimzettData) > 0) {
                // 1
                Err.Clear();
                Err.resume(() -> {
                    Recordset r = rs(CimzettData);
                    if (r.EOF() || r.BOF()) {
                        r.MoveLast();
                    }
                    Object mark = r.Bookmark();
                    r.MoveLast();
                    r.setBookmark(mark);
                });
                if (Err.Number() != 0) {
                    Err.Clear();
                    LogAction(RegisztData, SAVE_FAIL_LOG, logKey);
                    Forms.Beep();
                    Err.resume(() -> rs(CimzettData).MoveLast());
                    Err.Clear();
                }
                DBGrid1.Refresh();
                // 2: the row stays saved as it is
                if (Text2.Text().isEmpty() || Text4.Text().isEmpty() || Text5.Text().isEmpty()) {
                    Forms.arrow();
                    Forms.Beep();
                    Forms.MsgBox(MANDATORY_TEXT, VbConst.vbExclamation, MANDATORY_TITLE);
                    LogAction(RegisztData, MANDATORY_LOG, logKey);
                }
            } else {
                // 3
                UjAdat_Click();
            }
        } finally {
            Forms.arrow();
        }
    }

    /** "Rekord duplázás": a new row with the current row's name and tax number, nothing else. */
    void RekordDupla_Click() {
        if (!onRecord(CimzettData)) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(NO_ROW_TEXT, VbConst.vbExclamation, NO_ROW_TITLE);
            return;
        }
        Forms.arrow();
        if (Forms.MsgBox(COPY_TEXT, VbConst.vbYesNo + VbConst.vbQuestion, COPY_TITLE) != VbConst.vbYes) {
            return;
        }
        String name = Text2.Text();
        String taxNumber = Text9.Text();
        UjAdat_Click();
        Text2.setText(name);
        Text9.setText(taxNumber);
        Command4_Click();
        LogAction(RegisztData, COPY_LOG, logKey);
    }

    // ---------------------------------------------------------------- deletions

    /** "Törlés": the standard delete; an emptied table offers a new row. */
    void CimzettTorol_Click() {
        if (!delete(CimzettData, DELETE_TEXT, DELETE_TITLE, null, null, 0, null, null)) {
            return;
        }
        LogAction(RegisztData, DELETE_LOG, logKey);
        DBGrid1.Refresh();
        if (count(CimzettData) < 1) {
            Forms.arrow();
            if (Forms.MsgBox(ALL_GONE_TEXT, VbConst.vbYesNo + VbConst.vbQuestion, ALL_GONE_TITLE) == VbConst.vbYes) {
                UjAdat_Click();
            }
        }
    }

    /** "Összes adat törlése": every row of the set goes. */
    void OsszTorol_Click() {
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(DELETE_ALL_TEXT, VbConst.vbYesNo + VbConst.vbQuestion, DELETE_ALL_TITLE) != VbConst.vbYes) {
            return;
        }
        Forms.hourglass();
        try {
            Recordset r = Err.resume(() -> rs(CimzettData), null);
            Err.Clear();
            if (r == null) {
                return;
            }
            if (count(CimzettData) > 0) {
                Err.resume(r::MoveFirst);
                while (!Err.resume(r::EOF, true)) {
                    Err.resume(r::Delete);
                    Err.resume(r::MoveNext);
                    if (Err.Number() != 0) {
                        break;
                    }
                }
            }
            Err.Clear();
            DBGrid1.Refresh();
            LogAction(RegisztData, DELETE_ALL_LOG, logKey);
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- countries

    /** "Keresés országra": the standard search over Orszagjel, with its own not-found title. */
    void Command1_Click() {
        standardSearch(OrszagjelData, "Ország", COUNTRY_PROMPT, COUNTRY_TITLE, COUNTRY_NOT_FOUND,
                COUNTRY_NOT_FOUND_TITLE);
    }

    /** "Új ország megadása": an empty row in Orszagjel, to be typed in the grid. */
    void Command2_Click() {
        Forms.hourglass();
        try {
            addRow(OrszagjelData);
            DBGrid2.Refresh();
            LogAction(RegisztData, NEW_COUNTRY_LOG, logKey);
        } finally {
            Forms.arrow();
        }
    }

    /** "Ország törlése". */
    void Command3_Click() {
        if (delete(OrszagjelData, DELETE_COUNTRY_TEXT, DELETE_COUNTRY_TITLE, null, null, 0, null, null)) {
            DBGrid2.Refresh();
            LogAction(RegisztData, DELETE_COUNTRY_LOG, logKey);
        }
    }

    /** A double click in the country grid: the row's Országjel into Label14, and so into CimOrszag. */
    void DBGrid2_DblClick() {
        if (count(OrszagjelData) < 1) {
            return;
        }
        Object mark = Err.resume(() -> rs(OrszagjelData).Fields("Országjel").Value(), null);
        if (Err.Number() != 0) {
            Err.Clear();
            return;
        }
        Label14.setCaption(Funcs.nullToText(mark));
    }

    // ---------------------------------------------------------------- hand-over, closing, list

    /** "Átadás": the current customer into the shared slots, in the Part's order; then Kilepes. */
    void AtadaS_Click() {
        returnPick(CimzettData, () -> {
            Globals.PickedName = Text2.Text();
            Integer id = Err.resume(() -> Conv.CLng(Text1.Text()), 0);
            Err.Clear();
            Globals.PickedCustomerID = id == null ? 0 : id;
            Globals.PickedCustomerPostCode = Text3.Text();
            Globals.PickedCustomerTown = Text4.Text();
            Globals.PickedCustomerStreet = Text5.Text();
            Globals.PickedCustomerPhone = Text6.Text();
            Globals.PickedCustomerFax = Text7.Text();
            Globals.PickedCustomerMobile = Text8.Text();
            Globals.PickedCustomerTaxNumber = Text9.Text();
            Globals.PickedCustomerBankAccount = Text10.Text();
            Globals.PickedCustomerContact = Text11.Text();
            Globals.PickedCustomerCountry = Label14.Caption();
        }, () -> {
            Globals.PickedName = "";
            Globals.PickedCustomerPostCode = "";
            Globals.PickedCustomerTown = "";
            Globals.PickedCustomerStreet = "";
            Globals.PickedCustomerPhone = "";
            Globals.PickedCustomerFax = "";
            Globals.PickedCustomerMobile = "";
            Globals.PickedCustomerTaxNumber = "";
            Globals.PickedCustomerBankAccount = "";
            Globals.PickedCustomerContact = "";
            Globals.PickedCustomerCountry = "";
        });
    }

    /** "Kilépés": the full check of the names on request, the sets closed, the form unloaded. */
    void Kilepes_Click() {
        CloseGuard = false;
        try {
            if (count(CimzettData) > 0) {
                Forms.arrow();
                Forms.Beep();
                if (Forms.MsgBox(CHECK_TEXT, VbConst.vbYesNo + VbConst.vbQuestion, CHECK_TITLE) == VbConst.vbYes) {
                    removeNameless();
                }
            }
            closeAll(CimzettData, OrszagjelData, RegisztData);
            // the caller to show again: neither form exists in this program, so this never holds
            String caller = Globals.CurrentFormName;
            if ("menuform".equals(caller) || "ujszamlaformx".equals(caller)) {
                Forms.get(caller).Show();
            }
        } finally {
            Forms.arrow();
            Unload();
        }
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /** The walk of the closing check (as in Part 4.1): a row whose CimNev is empty or null is deleted. */
    void removeNameless() {
        Forms.hourglass();
        Recordset r = Err.resume(() -> rs(CimzettData), null);
        Err.Clear();
        if (r == null) {
            return;
        }
        Err.resume(r::MoveFirst);
        while (Err.Number() == 0 && !Err.resume(r::EOF, true)) {
            Object name = Err.resume(() -> r.Fields("CimNev").Value(), "?");
            Err.Clear();
            if (name == null || "".equals(name)) {
                Err.resume(r::Delete);
                if (Err.Number() != 0) {
                    Err.Clear();
                    Forms.Beep();
                }
            }
            Err.resume(r::MoveNext);
        }
        Err.Clear();
        Forms.arrow();
    }

    /** The customer list: pages of CimzettNyomFormX in the order of the set; then the last row. */
    void CimzettNyom_Click() {
        CimzettNyomFormX page = (CimzettNyomFormX) Forms.get(CimzettNyomFormX.NAME);
        PagedList.list(page, CimzettData.Recordset(), r -> new Object[] {
            PagedList.str(r.get("cimnev")),
            PagedList.str(r.get("cimirszam")),
            PagedList.str(r.get("cimorszag")),
            PagedList.str(r.get("cimszekhely")),
            PagedList.str(r.get("cimcim")),
            PagedList.str(r.get("cimTelefon")) + " / " + PagedList.str(r.get("cimFax"))})
            .beepWhenEmpty()
            .endAt(PagedList.End.LAST)
            .run();
    }

    // ---------------------------------------------------------------- grids

    void DBGrid1_HeadClick(int colIndex) {
        headerSort(CimzettData, DBGrid1, colIndex);
    }

    void DBGrid2_HeadClick(int colIndex) {
        headerSort(OrszagjelData, DBGrid2, colIndex);
    }
}
