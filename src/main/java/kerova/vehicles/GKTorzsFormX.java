package kerova.vehicles;

import java.time.LocalDateTime;
import java.util.function.Supplier;
import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CheckBox;
import kerova.core.form.ComboBox;
import kerova.core.form.CommandButton;
import kerova.core.form.DBGrid;
import kerova.core.form.DTPicker;
import kerova.core.form.Forms;
import kerova.core.form.Label;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.form.TextBox;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;
import kerova.core.vb.VbClock;
import kerova.core.vb.VbConst;

/**
 * Part 2.1: the vehicle master on {@code Jarmuvek}, with the expiry warnings of {@code CheckWarnings},
 * the side grid of warned vehicles, the owner choice and the vehicle picker; and Part 2.3: the delete
 * with its copy into {@code JarmuvekArchiv} and the archive view.
 */
public class GKTorzsFormX extends RecordForm {
    public static final String NAME = "GKTorzsFormX";
    public static final String TITLE = "Járművek nyilvántartása törzs Tartosan és Kerova";

    public static final String LIVE_SOURCE = "select * from Jarmuvek order by recordID";
    public static final String WARNED_SOURCE = "select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz";
    public static final String ARCHIVE_SOURCE = "select * from JarmuvekArchiv order by recordID";
    public static final String PARTNER_SOURCE = "select BerNev, recordID from beraktar order by BerNev";

    public static final String PLATE_PROMPT = "Kérem a forgalmi rendszámot:";
    public static final String PLATE_TITLE = "Keresés rendszám szerint";
    public static final String PLATE_NOT_FOUND = "Nincs ilyen forgalmi rendszám! Keressen újra!";
    public static final String TYPE_PROMPT = "Kérem a gépkocsi típusát:";
    public static final String TYPE_TITLE = "Keresés típus szerint";
    public static final String TYPE_NOT_FOUND = "Nincs ilyen gépkocsi típus! Keressen újra!";
    public static final String DRIVER_PROMPT = "Kérem a gépkocsivezető nevét:";
    public static final String DRIVER_TITLE = "Keresés gépkocsivezető szerint";
    public static final String DRIVER_NOT_FOUND = "Nincs ilyen gépkocsivezető! Keressen újra!";

    public static final String DELETE_TEXT = "Az adat törölhető?";
    public static final String DELETE_TITLE = "FIGYELEM! Aktuális adat végleges törlése!";
    public static final String ARCHIVE_FAIL_TEXT = "ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!";
    /** The Part gives only the text: a plain box under the program's title, as VB's MsgBox with a text alone. */
    public static final int ARCHIVE_FAIL_STYLE = VbConst.vbOKOnly;
    public static final String ARCHIVE_FAIL_TITLE = "Kerova";
    public static final String EXIT_TEXT = "Nincs megadva típus! Az adat törölhető?";
    public static final String EXIT_TITLE = "FIGYELEM! Aktuális adat törlése!";
    public static final String EMPTY_ARCHIVE_TEXT = "Nincsenek archivált (törölt) adatok!";
    public static final String EMPTY_ARCHIVE_TITLE = "FIGYELEM!";

    public static final String EXPIRED = " LEJÁRT! ";
    /** CheckWarnings rows 7 to 11: a pale red, and white. */
    public static final int WARN_COLOR = 0xC0C0FF;
    public static final int PLAIN_COLOR = 0xFFFFFF;
    /** Form_Resize: 10545 twips at 15 twips a pixel. */
    static final int GRID2_OFFSET = 10545 / 15;

    // ---------------------------------------------------------------- Data controls

    public final DataControl JarmuvekData = data("JarmuvekData", "Kerova.dsb", LIVE_SOURCE);
    public final DataControl Data1 = data("Data1", "Kerova.dsb", WARNED_SOURCE);
    public final DataControl ArchivData = data("ArchivData", "Kerova.dsb", "JarmuvekArchiv");
    public final DataControl PartnerData = data("PartnerData", "Kerova.dsb", PARTNER_SOURCE);

    // ---------------------------------------------------------------- fields, in rows of three

    public final TextBox Text1 = field("Rendszám:", new TextBox("Text1"), null);
    public final TextBox Text2 = field("Típus:", new TextBox("Text2"), null);
    public final DTPicker DTPicker1 = field("Forgalomba hely.:", new DTPicker("DTPicker1"), null);

    public final TextBox Text3 = field("Hengerűrtartalom:", new TextBox("Text3"), null);
    public final TextBox Text4 = field("Fogyasztás (lit/100km):", new TextBox("Text4"), null);
    public final TextBox Text5 = field("Járművezető neve:", new TextBox("Text5"), null);

    public final Label Label15 = new Label("Label15", EXPIRED);
    public final Label Label14 = new Label("Label14", EXPIRED);
    public final TextBox Text6 = field("Szerviz intervall. (nap):", new TextBox("Text6"), null);
    public final TextBox Text7 = field("Szerviz intervallum (km):", new TextBox("Text7"), Label15);
    public final DTPicker DTPicker4 = field("Utolsó szerviz dátuma:", new DTPicker("DTPicker4"), Label14);

    public final TextBox Text10 = field("Kilométeróra állása:", new TextBox("Text10"), null);
    public final TextBox Text12 = field("Jelenlegi km állás:", new TextBox("Text12"), null);
    public final TextBox Text11 = field("Önköltség/km:", new TextBox("Text11"), null);

    public final Label Label17 = new Label("Label17", EXPIRED);
    public final TextBox Text9 = field("Kötelező biztosítás dátuma, díja:", new TextBox("Text9"), null);
    public final DTPicker DTPicker3 = field("", new DTPicker("DTPicker3"), Label17);
    public final TextBox Text8 = field("CASCO havi díja (Ft):", new TextBox("Text8"), null);

    public final Label Label39 = new Label("Label39", EXPIRED);
    public final Label Label16 = new Label("Label16", EXPIRED);
    public final DTPicker DTPicker8 = field("Nemzetközi biztosítás dátuma, díja:", new DTPicker("DTPicker8"), Label39);
    public final TextBox Text22 = field("", new TextBox("Text22"), null);
    public final DTPicker DTPicker2 = field("Műszaki vizsga dátuma (lejárat dátuma):", new DTPicker("DTPicker2"), Label16);

    public final Label Label35 = new Label("Label35", EXPIRED);
    public final Label Label36 = new Label("Label36", EXPIRED);
    public final Label Label12 = new Label("Label12", EXPIRED);
    public final DTPicker DTPicker6 = field("Tachogr. hitelesítés:", new DTPicker("DTPicker6"), Label35);
    public final DTPicker DTPicker7 = field("Tachográf OMH engedély dátuma:", new DTPicker("DTPicker7"), Label36);
    public final DTPicker DTPicker9 = field("Tűzoltó készülék dátuma:", new DTPicker("DTPicker9"), Label12);

    public final TextBox Text16 = field("Szemle kilométer állása:", new TextBox("Text16"), null);
    public final TextBox Text17 = field("Olajcsere kilométer állása:", new TextBox("Text17"), null);
    public final TextBox Text18 = field("Karbant. napló kilométer állása:", new TextBox("Text18"), null);

    public final TextBox Text19 = field("Hajtáslánc olajcsere kilométer állása:", new TextBox("Text19"), null);
    public final TextBox Text20 = field("Vezérmű ékszíj olajcsere kilométer állása:", new TextBox("Text20"), null);
    public final TextBox Text14 = field("Alvázszám:", new TextBox("Text14"), null);

    public final TextBox Text15 = field("Motorszám:", new TextBox("Text15"), null);
    public final TextBox Text13 = field("Tulajdonos- vagy alvállalkozó neve:", new TextBox("Text13"), null);
    public final ComboBox Combo1 = field("Tulajdonos kiválasztása szerviz törzsből", new ComboBox("Combo1"), null);

    public final Label Label24Caption = add(new Label("Label24Caption", "recordID jármű"));
    public final Label Label24 = add(new Label("Label24"));
    public final Label Label21 = add(new Label("Label21"));
    public final Label Label23Caption = add(new Label("Label23Caption", "Tulajdonos azonosító:"));
    public final Label Label23 = add(new Label("Label23"));
    public final CheckBox Check2 = add(new CheckBox("Check2", "ALVÁLLALKOZÓ"));
    public final CheckBox Check1 = add(new CheckBox("Check1", "FIGYELMEZTETÉS"));
    public final CommandButton Command2 = add(new CommandButton("Command2",
            "Tulajdonos kiválasztása partner (vevő) törzsből"));

    public final Label Text21Caption = add(new Label("Text21Caption", "Rendszám gyorskereső"));
    public final TextBox Text21 = add(new TextBox("Text21"));
    public final DTPicker DTPicker5 = add(new DTPicker("DTPicker5"));

    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final DBGrid DBGrid2 = add(new DBGrid("DBGrid2"));

    public final CommandButton Command4 = add(new CommandButton("Command4", "OK-Mentés"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Új adat"));
    public final CommandButton Command5 = add(new CommandButton("Command5", "Új adat"));
    public final CommandButton Command6 = add(new CommandButton("Command6", "Aktuális lap nyomtatása"));
    public final CommandButton Command7 = add(new CommandButton("Command7", "Aktuális laptól minden adat  nyomtatása"));
    public final CommandButton Command8 = add(new CommandButton("Command8", "Műszaki viszga szükségesség nyomtatása"));
    public final CommandButton Command9 = add(new CommandButton("Command9", "Szerviz modul"));
    public final CommandButton Command10 = add(new CommandButton("Command10", "Szerviz modul"));
    public final CommandButton Command11 = add(new CommandButton("Command11", "Archívum"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "Vissza az éles adatokra!"));
    public final CommandButton Command12 = add(new CommandButton("Command12", "Segédlet (Help)"));
    public final CommandButton Command13 = add(new CommandButton("Command13", "Kilépés (Exit)"));

    // ---------------------------------------------------------------- menus

    public final Menu Muveletek = menu(new Menu("Muveletek", "&Műveletek"));
    public final Menu Mentes = Muveletek.add(new Menu("Mentes", "OK-Mentés"));
    public final Menu GKUjadat = Muveletek.add(new Menu("GKUjadat", "Új adat"));
    public final Menu GKTorol = Muveletek.add(new Menu("GKTorol", "Törlés"));
    public final Menu SzervizModul = Muveletek.add(new Menu("SzervizModul", "Szerviz modul"));
    public final Menu Keresesek = menu(new Menu("Keresesek", "&Keresések"));
    public final Menu FrszKeres = Keresesek.add(new Menu("FrszKeres", "Forgalmi rendszám"));
    public final Menu GKtipusKeres = Keresesek.add(new Menu("GKtipusKeres", "Jármű típus"));
    public final Menu GKVezetoKeres = Keresesek.add(new Menu("GKVezetoKeres", "Járművet vezető neve"));
    public final Menu Nyomtatas = menu(new Menu("Nyomtatas", "&Nyomtatás"));
    public final Menu AktLapNyom = Nyomtatas.add(new Menu("AktLapNyom", "Aktuális lap nyomtatása"));
    public final Menu AktLapTolMindNyom = Nyomtatas.add(new Menu("AktLapTolMindNyom",
            "Aktuális laptól minden adat  nyomtatása"));
    public final Menu MuszakiKell = Nyomtatas.add(new Menu("MuszakiKell", "Műszaki viszga szükségesség nyomtatása"));
    public final Menu Archivum = menu(new Menu("Archivum", "&Archívum"));
    public final Menu ArchivumA = Archivum.add(new Menu("ArchivumA", "Archívum"));
    public final Menu VisszaEles = Archivum.add(new Menu("VisszaEles", "Vissza az éles adatokra!"));
    public final Menu Valaszt = menu(new Menu("Valaszt", "&Választ"));
    public final Menu Segedlet = menu(new Menu("Segedlet", "Segédlet (Help)"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "Kilépés (Exit)"));

    /** The rows 7 to 11 of CheckWarnings: the field of each kilometre reading. */
    private final TextBox[] kmFields = {Text16, Text17, Text18, Text19, Text20};

    public GKTorzsFormX() {
        super(NAME, TITLE);
        layout();
        bindings();

        // menu entries and their buttons (the buttons only call the menu handlers)
        Mentes.Click = this::Mentes_Click;
        GKUjadat.Click = this::GKUjadat_Click;
        GKTorol.Click = this::GKTorol_Click;
        FrszKeres.Click = this::FrszKeres_Click;
        GKtipusKeres.Click = this::GKtipusKeres_Click;
        GKVezetoKeres.Click = this::GKVezetoKeres_Click;
        AktLapNyom.Click = this::AktLapNyom_Click;
        AktLapTolMindNyom.Click = this::AktLapTolMindNyom_Click;
        MuszakiKell.Click = this::MuszakiKell_Click;
        SzervizModul.Click = this::SzervizModul_Click;
        ArchivumA.Click = this::ArchivumA_Click;
        VisszaEles.Click = this::VisszaEles_Click;
        Segedlet.Click = this::Segedlet_Click;
        Kilepes.Click = this::Kilepes_Click;
        Valaszt.Click = this::Valaszt_Click;
        Command4.Click = Mentes::fireClick;
        Command3.Click = GKUjadat::fireClick;
        Command5.Click = GKUjadat::fireClick;
        Command6.Click = AktLapNyom::fireClick;
        Command7.Click = AktLapTolMindNyom::fireClick;
        Command8.Click = MuszakiKell::fireClick;
        Command9.Click = SzervizModul::fireClick;
        Command10.Click = SzervizModul::fireClick;
        Command11.Click = ArchivumA::fireClick;
        Command1.Click = this::Command1_Click;
        Command12.Click = Segedlet::fireClick;
        Command13.Click = Kilepes::fireClick;
        Command2.Click = this::Command2_Click;
        Combo1.Click = this::Combo1_Click;

        // fields: focus colours, capitals, "0" into empty money fields, key filters
        focusColors(Text1, REST_COLOR, upperCase(Text1));
        focusColors(Text2, Text3, Text4, Text5, Text6, Text7, Text10, Text12, Text13, Text14, Text15,
                Text16, Text17, Text18, Text19, Text20, Text21);
        focusColors(Text8, REST_COLOR, zeroIfEmpty(Text8));
        focusColors(Text9, REST_COLOR, zeroIfEmpty(Text9));
        focusColors(Text11, REST_COLOR, zeroIfEmpty(Text11));
        focusColors(Text22, REST_COLOR, zeroIfEmpty(Text22));
        decimal(Text3, Text4, Text7, Text8, Text10, Text12, Text16, Text17, Text18, Text19, Text20);
        wholeNumber(Text6);
        signedDecimal(Text9, Text11);
        Text9.Change = () -> lastEditWins(Text9, Text22);
        Text22.Change = () -> lastEditWins(Text22, Text9);

        Text21.Change = this::Text21_Change;
        DBGrid2.Click = this::DBGrid2_Click;
        DBGrid2.DblClick = this::DBGrid2_Click;
        Label24.Change = this::Label24_Change;
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
    }

    // ---------------------------------------------------------------- building

    /** A field with its caption label before it and its " LEJÁRT! " label (or an empty cell) after it. */
    private <T extends kerova.core.form.Control> T field(String caption, T control, Label expired) {
        add(new Label(control.getName() + "Caption", caption));
        add(control);
        if (expired != null) {
            add(expired);
        } else {
            control.layout = "span 2";
        }
        return control;
    }

    private void layout() {
        layoutConstraints = "wrap 9, insets 8, hidemode 0";
        columnConstraints = "[right][140!]0[62!]8[right][140!]0[62!]8[right][140!]0[62!]";
        Width = 1580;
        Height = 940;
        Label23.layout = "span 2";
        Check1.layout = "span 2";
        Text21.layout = "span 2, w 140!";
        Command2.layout = "span 3, align left";
        DTPicker5.layout = "span 3";
        DTPicker5.setVisible(false);
        DBGrid1.layout = "span 6, grow, push, h 160:240:";
        DBGrid2.layout = "span 3, grow, h 100:240:";
        Command4.layout = "span 9, split 13, gaptop 6";
        // the " LEJÁRT! " labels that no code of this form shows stay hidden, and Label35 and Label36
        // are hidden until CheckWarnings shows them (rows 1 and 2 never hide them again)
        Label12.setVisible(false);
        Label39.setVisible(false);
        Label35.setVisible(false);
        Label36.setVisible(false);
        Label21.setVisible(false);
        Command1.setVisible(false);
        VisszaEles.setVisible(false);
        Text2.setToolTipText("Kulcs adat");
        Text10.setToolTipText("Induló km");
        Text22.setToolTipText("Nemzetközi biztosítás díja");
        DBGrid1.setCaption("Járművek");
        DBGrid2.setCaption("Figyelmeztetett járművek");
    }

    private void bindings() {
        Text1.bind(JarmuvekData, "GkFrsz");
        Text2.bind(JarmuvekData, "GkTipus");
        DTPicker1.bind(JarmuvekData, "GkForgalombahelyezve");
        Text3.bind(JarmuvekData, "Hengerurtartalom");
        Text4.bind(JarmuvekData, "FogyasztásLiter100");
        Text5.bind(JarmuvekData, "GkVezetoNeve");
        Text6.bind(JarmuvekData, "SzervizIntervallumNap");
        Text7.bind(JarmuvekData, "SzervizIntervallumKM");
        Text8.bind(JarmuvekData, "CascoHaviDija");
        Text9.bind(JarmuvekData, "KotelezoHaviDija");
        Text22.bind(JarmuvekData, "KotelezoHaviDija");
        DTPicker3.bind(JarmuvekData, "KotelezoBiztDatum");
        Text10.bind(JarmuvekData, "KilometerOraAllasa");
        Text11.bind(JarmuvekData, "OnkoltsegKm");
        Text12.bind(JarmuvekData, "JelenlegiKmAllas");
        DTPicker4.bind(JarmuvekData, "UtolsoSzervizDatum");
        DTPicker2.bind(JarmuvekData, "MuszakiVizsgaDatum");
        Text13.bind(JarmuvekData, "PartnerNeve");
        Label23.bind(JarmuvekData, "PartnerID");
        Check2.bind(JarmuvekData, "Alvállalkozó");
        Text14.bind(JarmuvekData, "Alvázszám");
        Text15.bind(JarmuvekData, "Motorszám");
        DTPicker6.bind(JarmuvekData, "TachográfHitelesités");
        DTPicker7.bind(JarmuvekData, "TachoOMHEng");
        DTPicker8.bind(JarmuvekData, "NemzetkoziBiztDatum");
        DTPicker9.bind(JarmuvekData, "TuzoltoDatum");
        Text16.bind(JarmuvekData, "SzemleKM");
        Text17.bind(JarmuvekData, "OlajcsereKM");
        Text18.bind(JarmuvekData, "NköziKarbantNaploKM");
        Text19.bind(JarmuvekData, "HajtaslancOlajcsKM");
        Text20.bind(JarmuvekData, "VezérmüOlajcsereKM");
        Check1.bind(JarmuvekData, "Figyelmeztetés");
        Label21.bind(JarmuvekData, "recordID");
        // Label24 comes last: its change runs CheckWarnings, which must see the new row in every
        // other control (and whose Check1 must not be overwritten by a later load)
        Label24.bind(JarmuvekData, "recordID");

        DBGrid1.bind(JarmuvekData);
        for (String c : kerova.core.KerovaX.GRID_COLUMNS) {
            DBGrid1.addColumn(c);
        }
        DBGrid2.bind(Data1);
        DBGrid2.addColumn("GkFrsz");
        DBGrid2.addColumn("GkTipus");
        DBGrid2.addColumn("GkVezetoNeve");
    }

    // ---------------------------------------------------------------- menu entries and buttons

    /** "OK-Mentés": the standard save, then the warning check. */
    void Mentes_Click() {
        save(JarmuvekData, DBGrid1);
        if (count(JarmuvekData) > 0) {
            CheckWarnings();
        }
    }

    /** "Új adat": the standard new record, the key from Label24. */
    void GKUjadat_Click() {
        newRecord(JarmuvekData, Label24, "recordID", Text1);
    }

    /**
     * Part 2.3: the standard delete with the copy into JarmuvekArchiv by position (steps 1 to 4 and 6
     * in RecordForm.delete). Step 5: after a failed copy DBGrid1 is refreshed and the row stays.
     */
    void GKTorol_Click() {
        boolean deleted = delete(JarmuvekData, DELETE_TEXT, DELETE_TITLE, ArchivData,
                ARCHIVE_FAIL_TEXT, ARCHIVE_FAIL_STYLE, ARCHIVE_FAIL_TITLE, this::GKUjadat_Click);
        if (!deleted) {
            // step 5 (a refresh after "Nem" changes nothing); step 6's MoveLast on ArchivData runs
            // in RecordForm.delete, between the copy and the Delete
            DBGrid1.Refresh();
        }
    }

    void FrszKeres_Click() {
        standardSearch(JarmuvekData, "GkFrsz", PLATE_PROMPT, PLATE_TITLE, PLATE_NOT_FOUND);
    }

    void GKtipusKeres_Click() {
        standardSearch(JarmuvekData, "GkTipus", TYPE_PROMPT, TYPE_TITLE, TYPE_NOT_FOUND);
    }

    void GKVezetoKeres_Click() {
        standardSearch(JarmuvekData, "GkVezetoNeve", DRIVER_PROMPT, DRIVER_TITLE, DRIVER_NOT_FOUND);
    }

    /** Part 2.2: the sheet of the current vehicle. */
    void AktLapNyom_Click() {
        VehicleSheets.AktLapNyom(JarmuvekData);
    }

    /** Part 2.2: the sheets from the current vehicle onwards. */
    void AktLapTolMindNyom_Click() {
        VehicleSheets.AktLapTolMindNyom(JarmuvekData);
    }

    /** Part 2.2: the sheets of the vehicles that need a technical inspection. */
    void MuszakiKell_Click() {
        VehicleSheets.MuszakiKell(JarmuvekData, DBGrid1);
    }

    /**
     * "Szerviz modul": CurrentFormName empty, CurrentVehicleID the key in Label24, SzervizmodulFormX
     * modally (Part 6.1). That form sets CurrentFormName to "SzervizModulFormX", which KerovaX reads
     * when this form has closed (Part 1.2).
     */
    void SzervizModul_Click() {
        Globals.CurrentFormName = "";
        Globals.CurrentVehicleID = numberIn(Label24);
        Forms.get("SzervizmodulFormX").Show(true);
    }

    /** Part 2.3: the archive in place of the live data. */
    void ArchivumA_Click() {
        Forms.hourglass();
        try {
            // 1
            Command1.setVisible(true);
            Command1.setDefault(true);
            VisszaEles.setVisible(true);
            // 2
            JarmuvekData.setRecordSource(ARCHIVE_SOURCE);
            Err.resume(JarmuvekData::Refresh);
            Err.Clear();
            // 3
            DBGrid1.Refresh();
            if (count(JarmuvekData) > 0) {
                Err.resume(() -> rs(JarmuvekData).MoveLast());
                Err.resume(() -> rs(JarmuvekData).MoveFirst());
                Err.Clear();
            } else {
                // 4
                Forms.arrow();
                Forms.MsgBox(EMPTY_ARCHIVE_TEXT, VbConst.vbInformation, EMPTY_ARCHIVE_TITLE);
                Command1_Click();
            }
            // 5
            RefreshView();
        } finally {
            Forms.arrow();
        }
    }

    /** "Vissza az éles adatokra!": the handler of Command1. */
    void VisszaEles_Click() {
        Command1_Click();
    }

    /** Back to the live data; Command1 and VisszaEles hide again. */
    void Command1_Click() {
        Forms.hourglass();
        try {
            JarmuvekData.setRecordSource(LIVE_SOURCE);
            Err.resume(JarmuvekData::Refresh);
            Err.Clear();
            DBGrid1.Refresh();
            Command1.setVisible(false);
            VisszaEles.setVisible(false);
        } finally {
            Forms.arrow();
        }
    }

    /** "Segédlet (Help)": topic "GKTorzsFormX". */
    void Segedlet_Click() {
        help();
    }

    /** "Kilépés (Exit)": the check of GkTipus, then Data1, ArchivData, JarmuvekData close in this order. */
    void Kilepes_Click() {
        standardExit(() -> offerDeleteIfEmpty(JarmuvekData, Text2.Text(), EXIT_TEXT, EXIT_TITLE),
                Data1, ArchivData, JarmuvekData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    // ---------------------------------------------------------------- picking

    /** Hides the four warning labels; "Választ" only when another form opened this one. */
    @Override
    protected void Form_Load() {
        Label14.setVisible(false);
        Label15.setVisible(false);
        Label16.setVisible(false);
        Label17.setVisible(false);
        Valaszt.setVisible(!NAME.equals(Globals.CurrentFormName));
    }

    /** Picks the vehicle: the plate, Label24, Text13, Label23 and Check2 into the public variables. */
    void Valaszt_Click() {
        returnPick(JarmuvekData, () -> {
            Globals.PickedVehiclePlate = Text1.Text();
            Globals.PickedVehicleID = numberIn(Label24);
            Globals.PickedPartnerName = Text13.Text();
            Globals.PickedPartnerID = numberIn(Label23);
            Globals.PickedSubcontractor = Check2.Value();
        }, () -> {
            Globals.PickedVehiclePlate = "";
            Globals.PickedPartnerName = "";
        });
    }

    // ---------------------------------------------------------------- owner choice

    /** Combo1: the owner's name into Text13, the partner's recordID into Label23. */
    void Combo1_Click() {
        if (count(JarmuvekData) < 1 || Combo1.ListIndex() < 0) {
            return;
        }
        Text13.setText(Combo1.Text());
        // PartnerData goes to the row of the chosen item (the list was filled in the same order)
        int index = Combo1.ListIndex();
        Err.resume(() -> {
            Recordset p = rs(PartnerData);
            p.setAbsolutePosition(index);
            Label23.setCaption(Conv.CStr(Funcs.NullToNum(p.Fields("recordID").Value())));
        });
        Err.Clear();
    }

    /** Command2: the owner from the customer table (CimzettForm, Part 4.5, as a picker). */
    void Command2_Click() {
        Globals.PickedName = "";
        Globals.PickedCustomerID = null;
        if (openPicker("CimzettForm", Globals.CurrentFormName)) {
            Text13.setText(Globals.PickedName);
            Label23.setCaption(Globals.PickedCustomerID == null ? "" : Conv.CStr(Globals.PickedCustomerID));
        }
    }

    // ---------------------------------------------------------------- fields

    /** Text9 and Text22 show the same column: the last edit wins (the other box's pending edit is dropped). */
    private static void lastEditWins(TextBox edited, TextBox other) {
        if (edited.boundChanged() && other.boundChanged()) {
            other.loadBound(other.Text());
        }
    }

    /** The quick search of Part 1.3 on GkFrsz. */
    void Text21_Change() {
        quickSearch(JarmuvekData, "GkFrsz", Text21.Text());
    }

    /** Click and double click in the side grid: the row's plate in the main set, [GkFrsz] = "...". */
    void DBGrid2_Click() {
        Object plate = Err.resume(() -> rs(Data1).Fields("GkFrsz").Value(), null);
        Err.Clear();
        selectFromGrid(JarmuvekData, "GkFrsz", plate);
    }

    // ---------------------------------------------------------------- algorithms

    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            // 1
            DTPicker5.setValue(VbClock.today());
            // 2: an empty table gets its first record with key 1; otherwise the last record
            openOnLast(JarmuvekData, "recordID", Text1);
            // 3
            if (!checkDatabases(PartnerData)) {
                return;
            }
            Combo1.Clear();
            if (count(PartnerData) > 0) {
                Recordset p = rs(PartnerData);
                Err.resume(p::MoveFirst);
                while (!Err.resume(p::EOF, true)) {
                    Combo1.AddItem(Funcs.nullToText(Err.resume(() -> p.Fields("BerNev").Value(), null)));
                    Err.resume(p::MoveNext);
                }
            }
            Err.Clear();
            // 4
            RefreshView();
            Globals.PickDone = 0;
        } finally {
            Forms.arrow();
        }
    }

    /**
     * The shared refresh routine of Form_Activate and of the archive view (Part 2.3 step 5): the side
     * grid reads the warned vehicles again, and CheckWarnings runs on the current record.
     */
    void RefreshView() {
        Err.resume(Data1::Refresh);
        DBGrid2.Refresh();
        Err.Clear();
        if (count(JarmuvekData) > 0) {
            CheckWarnings();
        }
    }

    /** Label24 changes with every move: the checks run if the set has records. */
    void Label24_Change() {
        if (count(JarmuvekData) > 0) {
            CheckWarnings();
        }
    }

    /**
     * The marks of the current record, in the Part's order. No step clears Check1. Kept as the
     * program has them: row 4 compares the kilometres as texts; rows 3 and 7 to 11 test whether the
     * last value plus the interval is at or above the present value; rows 1 and 2 use today minus N.
     * A condition that fails to evaluate (an empty field through NullToNum) counts as not holding.
     */
    void CheckWarnings() {
        LocalDateTime today = VbClock.today();
        // 1: tachograph calibration, today minus N
        if (holds(() -> DTPicker6.Value().isBefore(today.minusDays(Globals.WarnTachoCalibrationDays)))) {
            Label35.setVisible(true);
        }
        // 2: tachograph permit, today minus N
        if (holds(() -> DTPicker7.Value().isBefore(today.minusDays(Globals.WarnTachoPermitDays)))) {
            Label36.setVisible(true);
            Check1.setValue(1);
        }
        // 3: last service plus the interval in days, on or after today
        if (holds(() -> !addDays(DTPicker4.Value(), num(Text6)).isBefore(today))) {
            Label14.setVisible(true);
            Check1.setValue(1);
        } else {
            Label14.setVisible(false);
        }
        // 4: the service interval in km, compared as text with the present reading
        if (holds(() -> num(Text7) > 0 & Text7.Text().compareTo(Text12.Text()) >= 0)) {
            Label15.setVisible(true);
            Check1.setValue(1);
        } else {
            Label15.setVisible(false);
        }
        // 5: technical inspection
        if (holds(() -> !DTPicker2.Value().isAfter(today))) {
            Label16.setVisible(true);
            Check1.setValue(1);
        } else {
            Label16.setVisible(false);
        }
        // 6: compulsory insurance
        if (holds(() -> !DTPicker3.Value().isAfter(today))) {
            Label17.setVisible(true);
            Check1.setValue(1);
        } else {
            Label17.setVisible(false);
        }
        // 7 to 11: the kilometre readings of the periodic works
        int[] limits = {Globals.WarnInspectionKm, Globals.WarnOilChangeKm, Globals.WarnServiceLogKm,
            Globals.WarnDrivetrainOilKm, Globals.WarnTimingBeltKm};
        for (int i = 0; i < kmFields.length; i++) {
            TextBox f = kmFields[i];
            int n = limits[i];
            if (holds(() -> n > 0 & num(f) + n >= num(Text12))) {
                f.setBackColor(WARN_COLOR);
                Check1.setValue(1);
            } else {
                f.setBackColor(PLAIN_COLOR);
            }
        }
        Err.Clear();
    }

    /** The header click on DBGrid1: the standard sort of Part 1.3. */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(JarmuvekData, DBGrid1, colIndex);
    }

    /** DBGrid2's height is the form's height minus 10545 twips, set only while positive. */
    @Override
    protected void Form_Resize() {
        int h = Height - GRID2_OFFSET;
        if (h > 0) {
            DBGrid2.setHeight(h);
        }
    }

    // ---------------------------------------------------------------- helpers

    /** NullToNum of a field's text, as a number ("" raises 13, as CDbl would). */
    private static double num(TextBox box) {
        return Conv.CDbl(Funcs.NullToNum(box.Text()));
    }

    /** The number in a label (Val of its caption), as a Long. */
    private static Object numberIn(Label label) {
        return Conv.CLng(Conv.Val(label.Caption()));
    }

    /** Date plus a number of days, as VB adds a number to a date. */
    private static LocalDateTime addDays(LocalDateTime d, double days) {
        return Conv.fromOADate(Conv.toOADate(d) + days);
    }

    /** Evaluates one condition of CheckWarnings with errors resumed; an error counts as false. */
    private static boolean holds(Supplier<Boolean> condition) {
        Boolean b = Err.resume(condition, false);
        Err.Clear();
        return b != null && b;
    }
}
