package kerova.core;

import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CommandButton;
import kerova.core.form.DBGrid;
import kerova.core.form.DTPicker;
import kerova.core.form.Form;
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

/** Part 1.2: the start form and main menu, with the deadline reminders and the loading of the parameters. */
public class KerovaX extends RecordForm {
    public static final String NAME = "KerovaX";
    public static final String VERSION = "1.0";
    /** The title: the product's name and version. */
    public static final String TITLE = "Kerova " + VERSION;
    public static final String WEB_ADDRESS = "https://kerova.hu";

    public static final String NO_DB_TEXT = "Olyan könyvtárban van, amelyikben nincsenek adatbázisok!";
    public static final String NO_DB_TITLE = "FIGYELEM! Válasszon másik megbízó adatszolgáltató alkönyvtárat!";
    public static final String REMINDER_TITLE = "FIGYELEM!";
    public static final String INSPECTION_TEXT = "Van olyan jármű, aminek a műszaki vizsgája aktuális!";
    public static final String TACHO_CALIBRATION_TEXT = "Van olyan jármű, aminek a tachográf hitelesítése aktuális!";
    public static final String TACHO_PERMIT_TEXT = "Van olyan jármű, aminek a tachográf OMH engedélye lejár!";
    public static final String INSURANCE_CARD_TEXT = "Van olyan jármű, aminek a biztosítási zöldkártyája lejár!";

    /** DBGrid1's columns, in Part 1.2's order. */
    public static final String[] GRID_COLUMNS = {
        "GkFrsz", "GkTipus", "GkForgalombahelyezve", "Hengerurtartalom", "FogyasztásLiter100", "GkVezetoNeve",
        "SzervizIntervallumNap", "SzervizIntervallumKM", "MuszakiVizsgaDatum", "ZoldkartyaDatum", "CascoHaviDija",
        "KotelezoHaviDija", "recordID", "KilometerOraAllasa", "OnkoltsegKm", "UtolsoSzervizDatum", "JelenlegiKmAllas",
        "PartnerID", "PartnerNeve", "Alvázszám", "Motorszám", "TachográfHitelesités", "TachoOMHEng", "SzemleKM",
        "OlajcsereKM", "NköziKarbantNaploKM", "HajtaslancOlajcsKM", "VezérmüOlajcsereKM", "Figyelmeztetés",
    };

    // ---- Data controls ----
    public final DataControl JarmuData = data("JarmuData", "Kerova.dsb", "Jarmuvek");
    public final DataControl ParameterData = data("ParameterData", "Torzsek.dsb", "VizsgaFigyelmeztetoNap");
    public final DataControl EgyebParameterData = data("EgyebParameterData", "parameter.dsb", "Egyebek");
    public final DataControl MennyEgysData = data("MennyEgysData", "parameter.dsb",
            "select * from MennyisegiEgyseg where Állandó <> 0");
    public final DataControl PathData = data("PathData", "parameter.dsb", "Path");
    public final DataControl KMData = data("KMData", "kerova.dsb", "UtakKilometerNyt");
    /** Stands for UzemeltetokForm's Data control on Bettorzs while that form doesn't exist (Part 1.6). */
    private final DataControl operatorData = new DataControl("UzemeltetoData", "Torzsek.dsb", "Bettorzs");

    // ---- controls ----
    public final Label Label1 = add(new Label("Label1", "Kerova Jármű-, Szerviz- és Útnyilvántartó Adatbázis"));
    public final Label Label2 = add(new Label("Label2", "Verzió " + VERSION + " – 2026. november"));
    public final Label Label3 = add(new Label("Label3", "Jármű-, szerviz- és útnyilvántartás"));
    public final Label Label4 = add(new Label("Label4", "Megbízó adatszolgáltató alkönyvtár szerint"));
    public final TextBox Text1 = add(new TextBox("Text1"));
    public final DTPicker DTPicker1 = add(new DTPicker("DTPicker1"));
    public final Label Label13 = add(new Label("Label13", "Állandó (görgetett) mennyiségi egység:"));
    public final Label Label14 = add(new Label("Label14"));
    public final Label Label15 = add(new Label("Label15", "Állandó (görgetett) napidíj és pénzneme:"));
    public final Label Label16 = add(new Label("Label16"));
    public final Label Label17 = add(new Label("Label17"));
    public final Label Label11 = add(new Label("Label11"));
    public final Label Label7 = add(new Label("Label7"));
    public final Label Label8 = add(new Label("Label8"));
    public final Label Label9 = add(new Label("Label9"));
    public final Label Label10 = add(new Label("Label10"));
    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final CommandButton Command6 = add(new CommandButton("Command6", "Útnyilvántartás"));
    public final CommandButton Command5 = add(new CommandButton("Command5", "Lekérdezés, nyomtatás"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Üzemanyagköltség kalkulátor"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Szerviz"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Segédlet"));
    public final CommandButton Command1 = add(new CommandButton("Command1", "Kilépés"));

    // ---- menus ----
    public final Menu Torzsek = menu(new Menu("Torzsek", "&Törzsek"));
    public final Menu UtTav = Torzsek.add(new Menu("UtTav", "Távolságok"));
    public final Menu Gepkocsik = Torzsek.add(new Menu("Gepkocsik", "Járművek"));
    public final Menu Vezetok = Torzsek.add(new Menu("Vezetok", "Vezetők"));
    public final Menu GKBesz = Torzsek.add(new Menu("GKBesz", "Beszállítók (partnerek)"));
    public final Menu Megnevezesek = Torzsek.add(new Menu("Megnevezesek", "Megnevezések"));
    public final Menu Uzemelteto = Torzsek.add(new Menu("Uzemelteto", "Nyilvántartó adatai"));
    public final Menu AlkatreszTorzse = Torzsek.add(new Menu("AlkatreszTorzse", "Cikkszámok - Alkatrészek"));
    public final Menu ParameterAdat = Torzsek.add(new Menu("ParameterAdat", "Paraméter adatok"));
    public final Menu GKAdatbe = menu(new Menu("GKAdatbe", "&Adatbevitel"));
    public final Menu KerovatUj = GKAdatbe.add(new Menu("KerovatUj", "Útnyilvántartás"));
    public final Menu KMNyt = GKAdatbe.add(new Menu("KMNyt", "Kilométer nyilvántartás"));
    public final Menu GKSzamlaBe = GKAdatbe.add(new Menu("GKSzamlaBe", "Számla rögzítése"));
    public final Menu SzervizModul = GKAdatbe.add(new Menu("SzervizModul", "Szerviz (műhely) modul"));
    public final Menu Lekerdezes = menu(new Menu("Lekerdezes", "&Lekérdezés, nyomtatás"));
    public final Menu UaKtsg = menu(new Menu("UaKtsg", "&Üzemanyagköltség kalkulátor"));
    public final Menu AdatSzerviz = menu(new Menu("AdatSzerviz", "S&zerviz"));
    public final Menu GkHelp = menu(new Menu("GkHelp", "&Segédlet"));
    public final Menu Kezik = GkHelp.add(new Menu("Kezik", "Kézikönyv"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "&Kilépés"));

    public KerovaX() {
        super(NAME, TITLE);
        layoutConstraints = "wrap 6, insets 12, fill, hidemode 3";
        columnConstraints = "[grow,fill,sg col][grow,fill,sg col][grow,fill,sg col][grow,fill,sg col]"
                + "[grow,fill,sg col][grow,fill,sg col]";
        Width = 1340;
        Height = 720;
        Label1.layout = "span 6, growx 0, align center, gapbottom 4";
        Label2.layout = "span 6, growx 0, align center";
        Label3.layout = "span 3";
        Label4.layout = "span 3, align right";
        Text1.layout = "span 4, growx";
        DTPicker1.layout = "span 2";
        Label13.layout = "span 2";
        Label14.layout = "span 4, growx";
        Label15.layout = "span 2";
        Label16.layout = "span 1, align right";
        Label17.layout = "span 3";
        DBGrid1.layout = "span 6, grow, push, h 200:260:";
        for (CommandButton b : new CommandButton[] {Command6, Command5, Command4, Command3, Command2, Command1}) {
            b.layout = "h 44!, w 60::";
        }
        Text1.setText("Kerova " + VERSION + " – " + WEB_ADDRESS);
        Text1.setLocked(true);
        Text1.Click = this::Text1_Click;

        Label11.bind(JarmuData, "Figyelmeztetés");
        Label11.setVisible(false);
        Label14.bind(MennyEgysData, "MennyiségiEgység");
        Label16.bind(EgyebParameterData, "Napidíj");
        Label17.bind(EgyebParameterData, "NapidíjDevizanem");
        Label7.bind(PathData, "PolcrakPath");
        Label8.bind(PathData, "FogastorPath");
        Label9.bind(PathData, "BizonylaNextPath");
        Label10.bind(PathData, "InterfacePath");
        for (Label l : new Label[] {Label7, Label8, Label9, Label10}) {
            l.setVisible(false);
        }
        DBGrid1.bind(JarmuData);
        DBGrid1.setCaption("FIGYELMEZTETÉSI LISTA!");
        for (String c : GRID_COLUMNS) {
            DBGrid1.addColumn(c);
        }

        UtTav.Click = () -> openFromMenu("GkUtakTavolsagaTorzsFormX");
        Gepkocsik.Click = this::Gepkocsik_Click;
        Vezetok.Click = () -> openFromMenu("VezetokTorzsFormX");
        GKBesz.Click = () -> openFromMenu("BeraktarozokFormX");
        Megnevezesek.Click = () -> openFromMenu("MegnevezesTorzsFormX");
        Uzemelteto.Click = () -> openFromMenu("UzemeltetokForm");
        AlkatreszTorzse.Click = this::AlkatreszTorzse_Click;
        ParameterAdat.Click = () -> openFromMenu("ParameterFormX");
        KerovatUj.Click = () -> openFromMenu("UtNyilvantartasFormX");
        KMNyt.Click = () -> openFromMenu("KilometerNytFormX");
        GKSzamlaBe.Click = () -> openFromMenu("UzemanyagSzamlaFormX");
        SzervizModul.Click = () -> openFromMenu("SzervizmodulFormX");
        Lekerdezes.Click = () -> openFromMenu("LekerdezesFormX");
        UaKtsg.Click = this::UaKtsg_Click;
        AdatSzerviz.Click = this::AdatSzerviz_Click;
        Kezik.Click = () -> openFromMenu("KerovaFelhasznaloiKezikonyvForm");
        Kilepes.Click = this::Kilepes_Click;

        Command1.Click = Kilepes::fireClick;
        Command2.Click = Kezik::fireClick;
        Command3.Click = AdatSzerviz::fireClick;
        Command4.Click = UaKtsg::fireClick;
        Command5.Click = Lekerdezes::fireClick;
        Command6.Click = KerovatUj::fireClick;
    }

    // ---------------------------------------------------------------- lifecycle

    @Override
    protected void Form_Load() {
        Globals.AccessLevel = 0;
        Globals.Label3Caption = Label3.Caption();
        Globals.Label4Caption = Label4.Caption();
    }

    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            activate();
        } finally {
            Forms.arrow();
        }
    }

    private void activate() {
        // 1
        DTPicker1.setValue(VbClock.today());
        Globals.ProductName = "Kerova";

        // 2: the operator's table, through UzemeltetokForm's Data control
        DataControl op = operatorSource();
        Err.Clear();
        Err.resume(() -> rs(op).RecordCount());
        if (Err.Number() != 0) {
            Err.Clear();
            Forms.Beep();
            Forms.arrow();
            Forms.MsgBox(NO_DB_TEXT, VbConst.vbCritical, NO_DB_TITLE);
            return;
        }
        Err.resume(() -> Globals.OperatorName = Funcs.nullToText(rs(op).Fields("UzNev").Value()));
        Err.Clear();

        // 3: the ten parameters of the last row, by ordinal
        if (count(ParameterData) > 0) {
            Recordset p = rs(ParameterData);
            Err.resume(p::MoveLast);
            Err.resume(() -> Globals.WarnInspectionDays = shortAt(p, 0));
            Err.resume(() -> Globals.WarnGreenCardDays = shortAt(p, 1));
            Err.resume(() -> Globals.WarnTachoCalibrationDays = shortAt(p, 2));
            Err.resume(() -> Globals.WarnTachoPermitDays = shortAt(p, 3));
            Err.resume(() -> Globals.WarnInsuranceCardDays = shortAt(p, 4));
            Err.resume(() -> Globals.WarnInspectionKm = longAt(p, 5));
            Err.resume(() -> Globals.WarnOilChangeKm = longAt(p, 6));
            Err.resume(() -> Globals.WarnServiceLogKm = longAt(p, 7));
            Err.resume(() -> Globals.WarnDrivetrainOilKm = longAt(p, 8));
            Err.resume(() -> Globals.WarnTimingBeltKm = longAt(p, 9));
            Err.Clear();
        }

        // 4: the four reminders
        if (count(JarmuData) > 0) {
            reminder(Globals.WarnInspectionDays, "MuszakiVizsgaDatum", INSPECTION_TEXT);
            reminder(Globals.WarnTachoCalibrationDays, "TachográfHitelesNap", TACHO_CALIBRATION_TEXT);
            reminder(Globals.WarnTachoPermitDays, "TachográfOMHEngNap", TACHO_PERMIT_TEXT);
            reminder(Globals.WarnInsuranceCardDays, "BiztosításZöldkNap", INSURANCE_CARD_TEXT);
            JarmuData.setRecordSource("select * from jarmuvek");
            Err.resume(JarmuData::Refresh);
            Err.Clear();
        }

        // 5
        Globals.InterfacePathValue = "";
        Globals.PolcrakPathValue = "";
        Globals.FogastorPathValue = "";
        Globals.BizonylaPathValue = "";

        // 6: the fixed allowance
        if (count(EgyebParameterData) < 1) {
            Err.resume(() -> {
                Recordset e = rs(EgyebParameterData);
                e.AddNew();
                e.Update();
            });
        }
        Err.resume(() -> rs(EgyebParameterData).MoveLast());
        Err.resume(() -> Globals.FixedAllowance = Conv.CDbl(rs(EgyebParameterData).Fields("Napidíj").Value()));
        Err.resume(() -> Globals.FixedAllowanceCurrency =
                Funcs.nullToText(rs(EgyebParameterData).Fields("NapidíjDevizanem").Value()));
        Err.Clear();

        // 7: the paths
        if (count(PathData) > 0) {
            readPaths(rs(PathData));
        }

        // 8: the warned vehicles
        JarmuData.setRecordSource("select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
        Err.resume(JarmuData::Refresh);
        Err.Clear();
        if (count(JarmuData) > 0) {
            DBGrid1.setVisible(true);
            DBGrid1.Refresh();
            Err.resume(() -> rs(JarmuData).MoveFirst());
        } else {
            DBGrid1.setVisible(false);
        }
        Err.Clear();

        // 9: the fixed unit; the query runs again at each activation (Part 1.5: "the main form's
        // query ... sets it again at its next activation")
        Err.resume(MennyEgysData::Refresh);
        Err.Clear();
        if (count(MennyEgysData) > 0) {
            Err.resume(() -> rs(MennyEgysData).MoveFirst());
            Globals.FixedUnit = Funcs.nullToText(Label14.Caption());
        } else {
            Globals.FixedUnit = "";
        }
        Err.Clear();
    }

    private static short shortAt(Recordset p, int ordinal) {
        return Conv.CInt(Funcs.NullToNum(p.Fields(ordinal).Value()));
    }

    private static int longAt(Recordset p, int ordinal) {
        return Conv.CLng(Funcs.NullToNum(p.Fields(ordinal).Value()));
    }

    /** One reminder of step 4: today minus N days; the statement exactly as the program writes it. */
    private void reminder(int days, String column, String text) {
        if (days <= 0) {
            return;
        }
        DTPicker1.setValue(VbClock.today());
        DTPicker1.setValue(DTPicker1.Value().minusDays(days));
        Err.resume(() -> rs(JarmuData).MoveFirst());
        JarmuData.setRecordSource("select * from jarmuvek where " + column + " <= #" + DTPicker1.Month() + "/"
                + DTPicker1.Day() + "/" + DTPicker1.Year() + "#");
        Err.resume(JarmuData::Refresh);
        Err.Clear();
        if (count(JarmuData) > 0) {
            Forms.arrow();
            Forms.Beep();
            Forms.MsgBox(text, VbConst.vbExclamation, REMINDER_TITLE);
            Forms.hourglass();
            MarkWarned();
        }
        Err.Clear();
    }

    /** Sets Figyelmeztetés on every vehicle of the set, through the bound Label11 and the moves. */
    void MarkWarned() {
        if (count(JarmuData) > 0) {
            Err.resume(() -> rs(JarmuData).MoveFirst());
        }
        Recordset r = JarmuData.Recordset();
        if (r == null) {
            Err.Clear();
            return;
        }
        while (!Err.resume(r::EOF, true)) {
            Label11.setCaption("1");
            Err.Clear();
            Err.resume(r::MoveNext);
            if (Err.Number() != 0) {
                break;
            }
        }
        Err.Clear();
    }

    /** UzemeltetokForm's Data control on Bettorzs when that form exists, else our own on the same table. */
    private DataControl operatorSource() {
        if (Forms.exists("UzemeltetokForm")) {
            Form f = Forms.get("UzemeltetokForm");
            f.Load();
            for (DataControl d : f.dataControls()) {
                if ("Bettorzs".equalsIgnoreCase(d.RecordSource())) {
                    return d;
                }
            }
        }
        if (operatorData.Recordset() == null || operatorData.Recordset().isClosed()) {
            try {
                operatorData.Refresh();
            } catch (RuntimeException e) {
                // no databases: the count below fails
            }
        }
        return operatorData;
    }

    // ---------------------------------------------------------------- menu

    /** A menu entry: KerovaX hides, the form opens modally, KerovaX shows again (and reactivates). */
    private void openFromMenu(String formName) {
        Hide();
        Forms.get(formName).Show(true);
        Show();
    }

    void Gepkocsik_Click() {
        Globals.CurrentFormName = "GKTorzsFormX";
        Hide();
        Forms.get("GKTorzsFormX").Show(true);
        if (!"SzervizModulFormX".equals(Globals.CurrentFormName)) {
            Show();
        }
    }

    void AlkatreszTorzse_Click() {
        Globals.CurrentFormName = "cikkszamform";
        Globals.ArticlePickMode = 0;
        openFromMenu("cikkszamform");
    }

    /** The calculator: KerovaX stays on the screen, disabled. */
    void UaKtsg_Click() {
        setEnabled(false);
        try {
            Forms.get("KerovaForm").Show(true);
        } finally {
            setEnabled(true);
        }
    }

    /** The data service: KerovaX stays as it is. */
    void AdatSzerviz_Click() {
        Forms.get("KerovaSzervizFormX").Show(true);
    }

    void Text1_Click() {
        Forms.ui().openUrl(WEB_ADDRESS);
    }

    /** Exit: close the four sources, unload, end the process whatever forms are loaded. */
    void Kilepes_Click() {
        CloseGuard = false;
        closeAll(PathData, ParameterData, EgyebParameterData, JarmuData);
        Err.Clear();
        Unload();
        Forms.End();
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /**
     * The four paths of the last row of the Path table into the globals, each under On Error Resume Next,
     * then Err.Clear (Form_Load here, and the saving of ParameterFormX).
     */
    static void readPaths(Recordset pd) {
        Err.resume(pd::MoveFirst);
        Err.resume(pd::MoveLast);
        Err.resume(() -> Globals.InterfacePathValue = Funcs.nullToText(pd.Fields("InterfacePath").Value()));
        Err.resume(() -> Globals.PolcrakPathValue = Funcs.nullToText(pd.Fields("PolcrakPath").Value()));
        Err.resume(() -> Globals.FogastorPathValue = Funcs.nullToText(pd.Fields("FogastorPath").Value()));
        Err.resume(() -> Globals.BizonylaPathValue = Funcs.nullToText(pd.Fields("BizonylaNextPath").Value()));
        Err.Clear();
    }
}
