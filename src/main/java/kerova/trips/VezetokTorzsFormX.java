package kerova.trips;

import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CheckBox;
import kerova.core.form.CommandButton;
import kerova.core.form.Control;
import kerova.core.form.DBGrid;
import kerova.core.form.DTPicker;
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
 * Part 3.4: the driver master on {@code Vezetok} ({@code Kerova.dsb}) with the list of the vehicles
 * assigned to the driver on screen, {@code VezetokJarmuvei} in the separate file {@code Tartosan.dsb}.
 * The two files are not kept in step: deleting a driver leaves his assignments, and nothing checks
 * that an assignment names an existing driver (kept as the Part says).
 */
public class VezetokTorzsFormX extends RecordForm {
    public static final String NAME = "VezetokTorzsFormX";
    public static final String TITLE = "Járművezető adatai törzs Tartosan";

    public static final String ALL_SOURCE = "select * from Vezetok order by VezetöNeve";
    /** {@code Aktiv} true means NOT active: the filter keeps the rows whose box is unticked. */
    public static final String ACTIVE_SOURCE = "select * from Vezetok where Aktiv = False order by VezetöNeve";
    /** The assigned list of one driver; the key is {@code Val} of {@code Label7}. */
    public static final String ASSIGNED_SOURCE = "select * from VezetokJarmuvei where VezetöID = ";

    public static final String WARN_TITLE = "FIGYELEM!";
    public static final String NO_ACTIVE = "Nincs AKTÍV járművezető!";
    public static final String NO_DRIVER = "Nincs járművezető! Visz fel ÚJ adatot?";
    public static final String NO_ROW = "Nincs adat, vagy nem jelölt ki adatsort!";
    public static final String DELETE_TITLE = "FIGYELEM! Végleges törlés!";
    public static final String DELETE_VEHICLE = "Törli a kijelölt jármű adatsort?";
    public static final String DELETE_DRIVER = "Valóban véglegesen törli a kijelölt adatsort?";
    public static final String DELETED_ALL = "Minden adat törölve (Deleted All)! Kér új adatot (New)?";

    /** The forms this one opens. */
    public static final String VEHICLE_FORM = "GKTorzsFormX";
    public static final String PARTNER_FORM = "BeraktarozokFormX";

    // ---------------------------------------------------------------- Data controls

    public final DataControl VezetoData = data("VezetoData", "Kerova.dsb", ALL_SOURCE);
    public final DataControl JarmuData = data("JarmuData", "Tartosan.dsb", ASSIGNED_SOURCE + "0");

    // ---------------------------------------------------------------- fields, in the order of the columns

    public final Label Label17 = field("Sorszám:", new Label("Label17"));
    public final TextBox Text1 = field("Név", new TextBox("Text1"));
    public final TextBox Text2 = field("Jogosítvány száma:", new TextBox("Text2"));
    public final DTPicker DTPicker1 = field("Jogosítvány lejárata", new DTPicker("DTPicker1"));
    public final TextBox Text3 = field("Munkakör:", new TextBox("Text3"));
    public final TextBox Text4 = field("Irányítószám:", new TextBox("Text4"));
    public final TextBox Text5 = field("Település:", new TextBox("Text5"));
    public final TextBox Text6 = field("Utca, házszám:", new TextBox("Text6"));
    public final TextBox Text7 = field("Elérhetőség:", new TextBox("Text7"));
    public final TextBox Text8 = field("Munkáltató:", new TextBox("Text8"));
    public final Label Label13 = field("MunkaltatoID", new Label("Label13"));
    public final TextBox Text9 = field("Adóazonosító:", new TextBox("Text9"));
    public final TextBox Text10 = field("TAJ szám:", new TextBox("Text10"));
    public final TextBox Text11 = field("Születési hely:", new TextBox("Text11"));
    public final DTPicker DTPicker2 = field("Születési idő:", new DTPicker("DTPicker2"));
    public final TextBox Text12 = field("Anyja neve:", new TextBox("Text12"));
    public final CheckBox Check1 = add(new CheckBox("Check1", "NEM aktív"));
    public final Label Label7 = field("Azonosító:", new Label("Label7"));
    /** The label of today's date, set on form load (the Part gives no name). */
    public final Label TodayLabel = field("Mai dátum:", new Label("TodayLabel"));

    public final TextBox Text13 = field("Névre keresés", new TextBox("Text13"));

    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));

    /** The assigned list: the grid, and the two labels bound to the current assignment. */
    public final DBGrid DBGrid2 = add(new DBGrid("DBGrid2"));
    public final Label Label8 = field("Vezető azonosító:", new Label("Label8"));
    public final Label Label18 = field("Rendszám:", new Label("Label18"));

    // ---------------------------------------------------------------- buttons

    public final CommandButton Command1 = add(new CommandButton("Command1", "OK-Mentés"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Új jármű"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Törlés"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Frissít"));
    public final CommandButton Command5 = add(new CommandButton("Command5", "Új adat"));
    public final CommandButton Command6 = add(new CommandButton("Command6", "Csak aktívak (szűrés)"));
    public final CommandButton Command7 = add(new CommandButton("Command7", "Szűrés kikapcsolása"));
    public final CommandButton Command8 = add(new CommandButton("Command8", "Adatátadás"));
    public final CommandButton Command9 = add(new CommandButton("Command9", "Adatsor végleges törlése"));
    public final CommandButton Command10 = add(new CommandButton("Command10", "Kilépés"));
    public final CommandButton Command11 = add(new CommandButton("Command11", "Segédlet (Help)"));
    public final CommandButton Command12 = add(new CommandButton("Command12", "Partnertörzs"));

    // ---------------------------------------------------------------- menus (captions as the buttons')

    public final Menu Muveletek = menu(new Menu("Muveletek", "&Műveletek"));
    public final Menu OKMent = Muveletek.add(new Menu("OKMent", "OK-Mentés"));
    public final Menu Frissites = Muveletek.add(new Menu("Frissites", "Frissít"));
    public final Menu UjAdat = Muveletek.add(new Menu("UjAdat", "Új adat"));
    public final Menu Torl_s = Muveletek.add(new Menu("Torl_s", "Adatsor végleges törlése"));
    public final Menu Szures = menu(new Menu("Szures", "&Szűrés"));
    public final Menu CsakAktiv = Szures.add(new Menu("CsakAktiv", "Csak aktívak (szűrés)"));
    public final Menu SzuresSKI = Szures.add(new Menu("SzuresSKI", "Szűrés kikapcsolása"));
    public final Menu AtadaS = menu(new Menu("AtadaS", "&Adatátadás"));
    public final Menu Segedlet = menu(new Menu("Segedlet", "Segédlet (&Help)"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "&Kilépés"));

    public VezetokTorzsFormX() {
        super(NAME, TITLE);
        layout();
        bindings();

        OKMent.Click = this::OKMent_Click;
        Frissites.Click = this::Frissites_Click;
        UjAdat.Click = this::UjAdat_Click;
        CsakAktiv.Click = this::CsakAktiv_Click;
        SzuresSKI.Click = this::SzuresSKI_Click;
        AtadaS.Click = this::AtadaS_Click;
        Torl_s.Click = this::Torl_s_Click;
        Kilepes.Click = this::Kilepes_Click;
        Segedlet.Click = this::Segedlet_Click;
        Command1.Click = OKMent::fireClick;
        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        Command4.Click = Frissites::fireClick;
        Command5.Click = UjAdat::fireClick;
        Command6.Click = CsakAktiv::fireClick;
        Command7.Click = SzuresSKI::fireClick;
        Command8.Click = AtadaS::fireClick;
        Command9.Click = Torl_s::fireClick;
        Command10.Click = Kilepes::fireClick;
        Command11.Click = Segedlet::fireClick;
        Command12.Click = this::Command12_Click;

        // Part 1.3: focus colours on every typing field; the Part names no key filters
        focusColors(Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12, Text13);
        Text13.Change = this::Text13_Change;
        Label7.Change = this::Label7_Change;
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
    }

    // ---------------------------------------------------------------- building


    private void layout() {
        layoutConstraints = "wrap 6, insets 8, hidemode 3";
        columnConstraints = "[right][220!]16[right][220!]16[right][160!]";
        Width = 1180;
        Height = 800;
        Check1.layout = "skip 1";
        control("TodayLabelCaption").layout = "newline";
        // the driver grid with the assigned list beside it, and the list's two labels below that
        DBGrid1.layout = "newline, span 4, grow, push, h 200:320:, gaptop 8";
        DBGrid2.layout = "span 2, grow, h 200:320:, gaptop 8";
        control("Label8Caption").layout = "skip 4";
        control("Label18Caption").layout = "skip 4";
        // the buttons in two rows, in the order of their numbers
        Command1.layout = "newline, span 6, split 6, sg b, gaptop 6";
        for (CommandButton b : new CommandButton[] {Command2, Command3, Command4, Command5, Command6, Command8,
            Command9, Command10, Command11, Command12}) {
            b.layout = "sg b";
        }
        Command7.layout = "span 6, split 6, sg b";
        DBGrid1.setCaption("Járművezetők");
        DBGrid2.setCaption("Vezető járművei");
        Command2.setToolTipText("Járművezetőhöz jármű rendelése");
        Command3.setToolTipText("Jármű törlése");
        // the registration and the vehicle's id are grid columns: the grid takes typing
        DBGrid1.AllowUpdate = true;
    }

    private void bindings() {
        Label17.bind(VezetoData, "Sorszám");
        Text1.bind(VezetoData, "VezetöNeve");
        Text2.bind(VezetoData, "JogositványSzáma");
        DTPicker1.bind(VezetoData, "JogositványÉrvényessége");
        Text3.bind(VezetoData, "Munkakör");
        Text4.bind(VezetoData, "LakcimIrSzám");
        Text5.bind(VezetoData, "LakcimSzékhely");
        Text6.bind(VezetoData, "LakcimCim");
        Text7.bind(VezetoData, "Elérhetöség");
        Text8.bind(VezetoData, "Munkáltató");
        Label13.bind(VezetoData, "MunkáltatóID");
        Text9.bind(VezetoData, "Adóazonositó");
        Text10.bind(VezetoData, "TAJSzám");
        Text11.bind(VezetoData, "SzületésiHely");
        DTPicker2.bind(VezetoData, "SzületésiIdö");
        Text12.bind(VezetoData, "AnyjaNeve");
        Check1.bind(VezetoData, "Aktiv");
        Label7.bind(VezetoData, "PartnerID");
        Label8.bind(JarmuData, "VezetöID");
        Label18.bind(JarmuData, "Rendszám");

        // the widths are ours (Part 3.4 leaves them to the implementer)
        DBGrid1.bind(VezetoData);
        DBGrid1.addColumn("Név", "VezetöNeve").Width = 200;
        DBGrid1.addColumn("Gépkocsi", "GépkocsiFrsz").Width = 90;
        DBGrid1.addColumn("GkID", "GkID").Width = 50;
        DBGrid1.addColumn("Munkakör", "Munkakör").Width = 120;
        DBGrid1.addColumn("Munkáltató", "Munkáltató").Width = 180;
        DBGrid1.addColumn("Jogosítvány lejárata", "JogositványÉrvényessége").Width = 110;
        DBGrid1.addColumn("NEM aktív", "Aktiv").Width = 70;
        DBGrid2.bind(JarmuData);
        DBGrid2.addColumn("Rendszám", "Rendszám").Width = 120;
        DBGrid2.addColumn("Vezető azonosító", "VezetöID").Width = 110;
    }

    // ---------------------------------------------------------------- lifecycle

    /** The label of today's date; PickDone 0 as a picking form starts (Part 1.3). */
    @Override
    protected void Form_Load() {
        TodayLabel.setCaption(Conv.dateText(VbClock.today()));
        pickStart();
    }

    /**
     * Opening: an empty VezetoData gets a row (AddNew, Update, MoveLast) whose licence expiry is
     * today; a filled one stays where it is, so that the return from the partner or vehicle picker
     * (which runs this again) doesn't move away from the driver who takes the hand-over.
     */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            if (count(VezetoData) < 1) {
                // the picker shows today whatever its column held, so the row takes today with it
                addDriverRow(VbClock.today());
                DTPicker1.setValue(VbClock.today());
            }
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- menu entries and buttons, in the Part's order

    /**
     * "OK-Mentés": with rows: 1. at either end, move last; 2. keep the bookmark; 3. move last and move
     * first (the moves force the bound values to the table); 4. back to the bookmark, an error moving
     * last. With no row it works as "Új adat".
     */
    void OKMent_Click() {
        if (count(VezetoData) < 1) {
            UjAdat_Click();
            return;
        }
        Forms.hourglass();
        try {
            Recordset r = rs(VezetoData);
            // 1
            if (Err.resume(() -> r.EOF() || r.BOF(), true)) {
                Err.resume(r::MoveLast);
            }
            // 2
            Object mark = Err.resume(r::Bookmark, null);
            // 3
            Err.resume(r::MoveLast);
            if (count(VezetoData) > 0) {
                Err.resume(r::MoveFirst);
            }
            Err.Clear();
            // 4
            Err.resume(() -> r.setBookmark(mark));
            if (Err.Number() != 0) {
                Err.Clear();
                Err.resume(r::MoveLast);
                Err.Clear();
            }
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** "Új jármű": the vehicle picked in the vehicle master is assigned to the driver on screen. */
    void Command2_Click() {
        if (count(VezetoData) < 1 || !onRecord(VezetoData)) {
            warn(NO_ROW);
            return;
        }
        // 1. the driver by his key; a miss moves to the first row
        String criterion = "[PartnerID] = " + Label7.Caption();
        Boolean found = Err.resume(() -> {
            Recordset r = rs(VezetoData);
            r.FindFirst(criterion);
            return !r.NoMatch();
        }, false);
        Err.Clear();
        if (found == null || !found) {
            Err.resume(() -> rs(VezetoData).MoveFirst());
            Err.Clear();
        }
        // 2. the registration the form holds: the vehicle master as a picker (ours, the Part leaves
        //    it open); the pick becomes the driver's GépkocsiFrsz and GkID. No pick, no assignment.
        Globals.PickedVehiclePlate = "";
        Globals.PickedVehicleID = null;
        if (!openPicker(VEHICLE_FORM, NAME)) {
            return;
        }
        String plate = Globals.PickedVehiclePlate == null ? "" : Globals.PickedVehiclePlate;
        Object vehicleId = Globals.PickedVehicleID;
        Forms.hourglass();
        try {
            Err.resume(() -> {
                Recordset r = rs(VezetoData);
                VezetoData.writeBound();
                r.Edit();
                r.Fields("GépkocsiFrsz").setValue(plate);
                r.Fields("GkID").setValue(vehicleId);
                r.Update();
            });
            Err.Clear();
            // 3. a row of JarmuData: AddNew, Update, MoveLast; Label8 the driver's key, Label18 the plate
            Err.resume(() -> {
                Recordset j = rs(JarmuData);
                j.AddNew();
                j.Update();
                j.MoveLast();
            });
            Err.Clear();
            Label8.setCaption(Conv.CStr(Conv.Val(Label7.Caption())));
            Label18.setCaption(plate);
            // 4. the list and the grids again (the reload writes the two labels)
            reloadAssigned();
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /** "Törlés" of the assigned list: the current assignment, after a question. */
    void Command3_Click() {
        if (count(JarmuData) < 1 || Err.resume(() -> rs(JarmuData).EOF() || rs(JarmuData).BOF(), true)) {
            Err.Clear();
            warn(NO_ROW);
            return;
        }
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(DELETE_VEHICLE, VbConst.vbYesNo + VbConst.vbQuestion, DELETE_TITLE) != VbConst.vbYes) {
            return;
        }
        Err.resume(() -> {
            Recordset j = rs(JarmuData);
            j.Delete();
            j.MoveNext();
        });
        Err.Clear();
        DBGrid2.Refresh();
    }

    /** "Frissít": the bookmark kept, the filter off, back to the bookmark; errors ignored. */
    void Frissites_Click() {
        Object mark = Err.resume(() -> rs(VezetoData).Bookmark(), null);
        Err.Clear();
        SzuresSKI_Click();
        Err.resume(() -> rs(VezetoData).setBookmark(mark));
        Err.Clear();
    }

    /**
     * "Új adat": AddNew, Update, MoveLast; the row's key for the assigned list is its Sorszám (ours);
     * Text8 gets the operator's name (Part 1.6); focus to the name.
     */
    void UjAdat_Click() {
        Forms.hourglass();
        try {
            if (addDriverRow(null)) {
                Text8.setText(Globals.OperatorName);
                Err.resume(Text1::SetFocus);
                Err.Clear();
            }
            DBGrid1.Refresh();
        } finally {
            Forms.arrow();
        }
    }

    /**
     * "Csak aktívak (szűrés)": the rows whose "NEM aktív" box is unticked ({@code Aktiv = False}, kept
     * with that sense). None: both entries unticked, the warning, and the list back to all drivers.
     */
    void CsakAktiv_Click() {
        Forms.hourglass();
        try {
            setSource(ACTIVE_SOURCE);
            if (count(VezetoData) < 1) {
                CsakAktiv.setChecked(false);
                SzuresSKI.setChecked(false);
                warn(NO_ACTIVE);
                resetList();
                return;
            }
            lastThenFirst();
            CsakAktiv.setChecked(true);
            SzuresSKI.setChecked(false);
        } finally {
            Forms.arrow();
        }
    }

    /** "Szűrés kikapcsolása": all drivers again; with none, the offer of a new row. */
    void SzuresSKI_Click() {
        Forms.hourglass();
        try {
            CsakAktiv.setChecked(false);
            SzuresSKI.setChecked(true);
            setSource(ALL_SOURCE);
            if (count(VezetoData) < 1) {
                Forms.arrow();
                if (Forms.MsgBox(NO_DRIVER, VbConst.vbYesNo, WARN_TITLE) == VbConst.vbYes) {
                    UjAdat_Click();
                }
                return;
            }
            lastThenFirst();
        } finally {
            Forms.arrow();
        }
    }

    /** "Adatátadás": name, Label7, Label18 and Text8 into the driver globals (Part 1.3's hand-over), then leave. */
    void AtadaS_Click() {
        returnPick(VezetoData, () -> {
            DriverGlobals.PickedDriverName = Text1.Text();
            DriverGlobals.PickedDriverID = numberIn(Label7);
            DriverGlobals.PickedDriverVehicle = Label18.Caption();
            DriverGlobals.PickedDriverEmployer = Text8.Text();
        }, () -> {
            DriverGlobals.PickedDriverName = "";
            DriverGlobals.PickedDriverVehicle = "";
            DriverGlobals.PickedDriverEmployer = "";
        });
    }

    /**
     * "Adatsor végleges törlése": after the question, Delete and MoveNext; at the end MoveLast. The
     * last driver gone, the offer of a new row; No leaves the form. The driver's assignments in
     * Tartosan.dsb stay, and so do the trips that hold a copy of his name.
     */
    void Torl_s_Click() {
        if (count(VezetoData) < 1) {
            return;
        }
        Forms.arrow();
        Forms.Beep();
        if (Forms.MsgBox(DELETE_DRIVER, VbConst.vbYesNo + VbConst.vbQuestion, DELETE_TITLE) != VbConst.vbYes) {
            return;
        }
        Forms.hourglass();
        try {
            Err.resume(() -> {
                Recordset r = rs(VezetoData);
                r.Delete();
                r.MoveNext();
            });
            Err.Clear();
            if (count(VezetoData) > 0) {
                if (Err.resume(() -> rs(VezetoData).EOF(), false)) {
                    Err.resume(() -> rs(VezetoData).MoveLast());
                }
                Err.Clear();
                DBGrid1.Refresh();
                return;
            }
            Forms.arrow();
            if (Forms.MsgBox(DELETED_ALL, VbConst.vbYesNo, WARN_TITLE) == VbConst.vbYes) {
                UjAdat_Click();
            } else {
                Kilepes_Click();
            }
        } finally {
            Forms.arrow();
        }
    }

    /** "Kilépés": Close of JarmuData and VezetoData, errors ignored; Unload. The close box runs it once (CloseGuard). */
    void Kilepes_Click() {
        standardExit(null, JarmuData, VezetoData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /** "Segédlet (Help)": topic "VezetokTorzsFormX". */
    void Segedlet_Click() {
        help();
    }

    /**
     * "Partnertörzs": the partner master modally; if it passed a row (PickDone 1, the name in
     * PickedPartnerName, the slots of the partner pick of Part 2.1) Text8 gets the partner's name.
     */
    void Command12_Click() {
        Globals.PickedPartnerName = "";
        Globals.PickedPartnerID = null;
        if (openPicker(PARTNER_FORM, NAME)) {
            Text8.setText(Globals.PickedPartnerName == null ? "" : Globals.PickedPartnerName);
        }
    }

    /** "Névre keresés": the quick search of Part 1.3 on VezetöNeve. */
    void Text13_Change() {
        quickSearch(VezetoData, "VezetöNeve", Text13.Text());
    }

    /** A change of Label7 (another driver, or his key set): the assigned list is reloaded. */
    void Label7_Change() {
        reloadAssigned();
    }

    /** The header click on DBGrid1: the sort with the " DESC" toggle (Part 1.3's routine). */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(VezetoData, DBGrid1, colIndex);
    }

    // ---------------------------------------------------------------- the form's own routines

    /**
     * AddNew, Update, MoveLast on VezetoData; the new row's PartnerID (the key of its assigned list)
     * is set to its Sorszám through Label7, written at the next move; {@code licenceExpiry}, when
     * given, is stored with the row. False when the add failed.
     */
    private boolean addDriverRow(java.time.LocalDateTime licenceExpiry) {
        boolean added = licenceExpiry == null ? addRow(VezetoData)
                : addRow(VezetoData, "JogositványÉrvényessége", licenceExpiry);
        if (!added) {
            return false;
        }
        if (Label7.Caption().isEmpty()) {
            Label7.setCaption(Label17.Caption());
        }
        return true;
    }

    /** The reload of the assigned list: JarmuData on the driver's key (Val of Label7), and its grid. */
    void reloadAssigned() {
        String key = Conv.CStr(Conv.Val(Label7.Caption()));
        JarmuData.setRecordSource(ASSIGNED_SOURCE + key);
        Err.resume(JarmuData::Refresh);
        Err.Clear();
        DBGrid2.Refresh();
    }

    /** The reset of the list after an empty filter (ours): all drivers again, on the last one, no tick. */
    private void resetList() {
        setSource(ALL_SOURCE);
        if (count(VezetoData) > 0) {
            Err.resume(() -> rs(VezetoData).MoveLast());
            Err.Clear();
        }
    }

    /** A new RecordSource for VezetoData, Refresh, and the grid too. */
    private void setSource(String source) {
        VezetoData.setRecordSource(source);
        Err.resume(VezetoData::Refresh);
        Err.Clear();
        DBGrid1.Refresh();
    }

    private void lastThenFirst() {
        Err.resume(() -> {
            Recordset r = rs(VezetoData);
            r.MoveLast();
            r.MoveFirst();
        });
        Err.Clear();
    }

    /** Arrow, beep and a warning (style 48) under "FIGYELEM!". */
    private static void warn(String text) {
        Forms.arrow();
        Forms.Beep();
        Forms.MsgBox(text, VbConst.vbExclamation, WARN_TITLE);
    }

    /** A label's number (Val), or null when it is empty. */
    private static Object numberIn(Label label) {
        String c = label.Caption();
        return c == null || c.isEmpty() ? null : Conv.Val(c);
    }
}
