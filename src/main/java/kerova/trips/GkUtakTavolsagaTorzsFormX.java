package kerova.trips;

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
import kerova.core.print.PagedList;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.VbConst;

/**
 * Part 3.3: the route distance master on {@code UtakTavolsag}: one-directional rows from, to and
 * distance with the two country codes; the return row, the two searches, the delete, the save by
 * finding the row again, the country picker of Part 4.4, the hand-over to a caller and the paged
 * list on {@link UttavNyomFormX}.
 */
public class GkUtakTavolsagaTorzsFormX extends RecordForm {
    public static final String NAME = "GkUtakTavolsagaTorzsFormX";
    public static final String TITLE = "Utak távolsága törzs - Kerova";
    /** The table itself, in its stored order (the Part gives no statement). */
    public static final String SOURCE = "UtakTavolsag";
    /** The Data control's caption; shown on the grid, which is where the arrows of the control sit. */
    public static final String DATA_CAPTION = "Távolságok törzs - Mozgás nyilakkal";

    public static final String FROM_PROMPT = "Honnan:";
    public static final String FROM_TITLE = "Keresés - honnan";
    public static final String TO_PROMPT = "Hova:";
    public static final String TO_TITLE = "Keresés - hova";
    public static final String NOT_FOUND = "Nincs ilyen helység!";

    public static final String DELETE_TEXT = "Az adatsor VÉGLEGESEN törölhető?";
    public static final String DELETE_TITLE = "FIGYELEM! Aktuális adat VISSZAVONHATATLAN törlése!";

    public static final String SAVE_MISS_1 = "Nincs ilyen azonosító! Lehet, hogy hibás az adatbázis!";
    public static final String SAVE_MISS_2 = "Nincs ilyen azonosító! Álljon rá egy másik adatra a táblázatban!";
    /** The Part gives only the texts: plain boxes under the program's title, as VB's MsgBox with a text alone. */
    public static final int SAVE_MISS_STYLE = VbConst.vbOKOnly;
    public static final String SAVE_MISS_TITLE = "Kerova";

    public static final String COUNTRY_FORM = "OrszagokFormX";

    // ---------------------------------------------------------------- Data control

    public final DataControl UtTavTorzsData = data("UtTavTorzsData", "Kerova.dsb", SOURCE);

    // ---------------------------------------------------------------- fields

    public final Label Text1Caption = add(new Label("Text1Caption", "Honnan:"));
    public final TextBox Text1 = add(new TextBox("Text1"));
    public final Label Text4Caption = add(new Label("Text4Caption", "Országjel:"));
    public final TextBox Text4 = add(new TextBox("Text4"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "Országjel törzs"));

    public final Label Text2Caption = add(new Label("Text2Caption", "Hova:"));
    public final TextBox Text2 = add(new TextBox("Text2"));
    public final Label Text5Caption = add(new Label("Text5Caption", "Országjel:"));
    public final TextBox Text5 = add(new TextBox("Text5"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Országjel törzs"));

    public final Label Text3Caption = add(new Label("Text3Caption", "Távolság km:"));
    public final TextBox Text3 = add(new TextBox("Text3"));
    public final Label Label4Caption = add(new Label("Label4Caption", "Sorszám:"));
    public final Label Label4 = add(new Label("Label4"));

    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));

    // ---------------------------------------------------------------- buttons (each only calls its menu entry)

    public final CommandButton Command1 = add(new CommandButton("Command1", "OK-Mentés"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Új adat-üres sor"));
    public final CommandButton Command5 = add(new CommandButton("Command5", "Új adat-ellentétes út előzővel"));
    public final CommandButton Command6 = add(new CommandButton("Command6", "Keresés-honnan"));
    public final CommandButton Command7 = add(new CommandButton("Command7", "Keresés-hová"));
    public final CommandButton Command8 = add(new CommandButton("Command8", "Kijelölt sort törli"));
    public final CommandButton Command9 = add(new CommandButton("Command9", "Nyomtatás"));
    public final CommandButton Command10 = add(new CommandButton("Command10", "Segédlet"));
    public final CommandButton Command11 = add(new CommandButton("Command11", "Vissza"));
    public final CommandButton Command12 = add(new CommandButton("Command12", "Adat átadása"));

    // ---------------------------------------------------------------- menus (captions as the buttons')

    public final Menu Muveletek = menu(new Menu("Muveletek", "&Műveletek"));
    public final Menu OKMent = Muveletek.add(new Menu("OKMent", "OK-Mentés"));
    public final Menu UtTorzsUj = Muveletek.add(new Menu("UtTorzsUj", "Új adat-üres sor"));
    public final Menu UjVissza = Muveletek.add(new Menu("UjVissza", "Új adat-ellentétes út előzővel"));
    public final Menu UtTorzsTorol = Muveletek.add(new Menu("UtTorzsTorol", "Kijelölt sort törli"));
    public final Menu Keresesek = menu(new Menu("Keresesek", "&Keresések"));
    public final Menu GTKeresHonnan = Keresesek.add(new Menu("GTKeresHonnan", "Keresés-honnan"));
    public final Menu GTKeresHova = Keresesek.add(new Menu("GTKeresHova", "Keresés-hová"));
    public final Menu GTNyom = menu(new Menu("GTNyom", "&Nyomtatás"));
    public final Menu AdatAtad = menu(new Menu("AdatAtad", "&Adat átadása"));
    public final Menu Segedlet = menu(new Menu("Segedlet", "&Segédlet"));
    public final Menu Kilepes = menu(new Menu("Kilepes", "&Vissza"));

    public GkUtakTavolsagaTorzsFormX() {
        super(NAME, TITLE);
        layout();
        bindings();

        OKMent.Click = this::OKMent_Click;
        UtTorzsUj.Click = this::UtTorzsUj_Click;
        UjVissza.Click = this::UjVissza_Click;
        GTKeresHonnan.Click = this::GTKeresHonnan_Click;
        GTKeresHova.Click = this::GTKeresHova_Click;
        UtTorzsTorol.Click = this::UtTorzsTorol_Click;
        GTNyom.Click = this::GTNyom_Click;
        Segedlet.Click = this::Segedlet_Click;
        Kilepes.Click = this::Kilepes_Click;
        AdatAtad.Click = this::AdatAtad_Click;
        Command1.Click = OKMent::fireClick;
        Command4.Click = UtTorzsUj::fireClick;
        Command5.Click = UjVissza::fireClick;
        Command6.Click = GTKeresHonnan::fireClick;
        Command7.Click = GTKeresHova::fireClick;
        Command8.Click = UtTorzsTorol::fireClick;
        Command9.Click = GTNyom::fireClick;
        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        Command10.Click = Segedlet::fireClick;
        Command11.Click = Kilepes::fireClick;
        Command12.Click = AdatAtad::fireClick;

        // Part 1.3: focus colours on every typing field; the distance takes a decimal number
        focusColors(Text1, Text2, Text3, Text4, Text5);
        decimal(Text3);
        DBGrid1.HeadClick = this::DBGrid1_HeadClick;
    }

    // ---------------------------------------------------------------- building

    private void layout() {
        layoutConstraints = "wrap 5, insets 10, hidemode 3";
        columnConstraints = "[right][220!]12[right][70!][]";
        Width = 860;
        Height = 620;
        Label4.layout = "span 2";
        DBGrid1.layout = "span 5, grow, push, h 200:320:, gaptop 8";
        Command1.layout = "span 5, split 5, sg b, gaptop 6";
        Command4.layout = "sg b";
        Command5.layout = "sg b";
        Command6.layout = "sg b";
        Command7.layout = "sg b";
        Command8.layout = "span 5, split 5, sg b";
        Command9.layout = "sg b";
        Command10.layout = "sg b";
        Command11.layout = "sg b";
        Command12.layout = "sg b";
        DBGrid1.setCaption(DATA_CAPTION);
    }

    private void bindings() {
        Text1.bind(UtTavTorzsData, "Honnan");
        Text2.bind(UtTavTorzsData, "Hova");
        Text3.bind(UtTavTorzsData, "TávolságKm");
        Text4.bind(UtTavTorzsData, "HonnanOrszág");
        Text5.bind(UtTavTorzsData, "HovaOrszág");
        Label4.bind(UtTavTorzsData, "Sorszám");
        DBGrid1.bind(UtTavTorzsData);
        // the widths are ours (Part 3.3 leaves them to the implementer)
        DBGrid1.addColumn("Országjel", "HonnanOrszág").Width = 80;
        DBGrid1.addColumn("Honnan", "Honnan").Width = 250;
        DBGrid1.addColumn("Országjel", "HovaOrszág").Width = 80;
        DBGrid1.addColumn("Hova", "Hova").Width = 250;
        DBGrid1.addColumn("Távolság km", "TávolságKm").Width = 110;
    }

    // ---------------------------------------------------------------- opening

    /** Opening: an empty table gets a row (Update, MoveLast); otherwise the set stays where it opened. */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            if (count(UtTavTorzsData) < 1) {
                addRow(UtTavTorzsData);
            }
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- menu entries and buttons, in the Part's order

    /**
     * "OK-Mentés": 1. FindFirst on the row's Sorszám (the move stores the pending edit); 2. Refresh of
     * the source and the grid, and the same row found again. Each miss has its message and the
     * handler goes on. With no rows it is "Új adat-üres sor".
     */
    void OKMent_Click() {
        if (count(UtTavTorzsData) < 1) {
            UtTorzsUj_Click();
            return;
        }
        Forms.hourglass();
        try {
            // 1
            String criterion = "[Sorszám] = " + Conv.CStr(Conv.Val(Label4.Caption()));
            if (!find(criterion)) {
                missMessage(SAVE_MISS_1);
            }
            // 2
            Err.resume(UtTavTorzsData::Refresh);
            Err.Clear();
            DBGrid1.Refresh();
            if (!find(criterion)) {
                missMessage(SAVE_MISS_2);
            }
        } finally {
            Forms.arrow();
        }
    }

    /** FindFirst with errors resumed; false on NoMatch or an error. */
    private boolean find(String criterion) {
        Err.Clear();
        Boolean found = Err.resume(() -> {
            Recordset r = rs(UtTavTorzsData);
            r.FindFirst(criterion);
            return !r.NoMatch();
        }, false);
        Err.Clear();
        return found != null && found;
    }

    private static void missMessage(String text) {
        Forms.arrow();
        Forms.Beep();
        Forms.MsgBox(text, SAVE_MISS_STYLE, SAVE_MISS_TITLE);
        Forms.hourglass();
    }

    /** "Új adat-üres sor": AddNew, Update, MoveLast: the row exists from now on, its fields empty. */
    void UtTorzsUj_Click() {
        Forms.hourglass();
        try {
            if (addRow(UtTavTorzsData)) {
                Err.resume(Text1::SetFocus);
                Err.Clear();
            }
        } finally {
            Forms.arrow();
        }
    }

    /**
     * "Új adat-ellentétes út előzővel": with a current row, its from, to and distance are kept (an
     * empty distance as 0), a new empty row is added, and it gets to and from swapped with the same
     * distance. The country codes are not carried over: the new row has none (kept as the Part says).
     */
    void UjVissza_Click() {
        if (count(UtTavTorzsData) < 1 || !onRecord(UtTavTorzsData)) {
            return;
        }
        String from = Text1.Text();
        String to = Text2.Text();
        double distance = distanceIn(Text3);
        UtTorzsUj_Click();
        Text1.setText(to);
        Text2.setText(from);
        Text3.setText(Conv.CStr(distance));
        Err.resume(Text1::SetFocus);
        Err.Clear();
    }

    /** "Keresés-honnan": the standard search on Honnan. */
    void GTKeresHonnan_Click() {
        standardSearch(UtTavTorzsData, "Honnan", FROM_PROMPT, FROM_TITLE, NOT_FOUND);
    }

    /** "Keresés-hová": the standard search on Hova. */
    void GTKeresHova_Click() {
        standardSearch(UtTavTorzsData, "Hova", TO_PROMPT, TO_TITLE, NOT_FOUND);
    }

    /**
     * "Kijelölt sort törli": the standard delete (question, Delete, MoveNext, MoveLast at the end);
     * with no row left, and with a source that was empty to begin with, a new row is added.
     */
    void UtTorzsTorol_Click() {
        if (count(UtTavTorzsData) < 1) {
            UtTorzsUj_Click();
            return;
        }
        delete(UtTavTorzsData, DELETE_TEXT, DELETE_TITLE, null, null, 0, null, this::UtTorzsUj_Click);
        DBGrid1.Refresh();
    }

    /** "Nyomtatás": the paged list of Part 1.4 on UttavNyomFormX, 21 rows a page, then the first row. */
    void GTNyom_Click() {
        print();
    }

    PagedList.Outcome print() {
        UttavNyomFormX page = (UttavNyomFormX) Forms.get(UttavNyomFormX.NAME);
        PagedList.Outcome o = PagedList.list(page, UtTavTorzsData.Recordset(), r -> new Object[] {
            PagedList.str(r.get("Honnan")), PagedList.str(r.get("Hova")), PagedList.num(r.get("TávolságKm"))})
                .endAt(PagedList.End.FIRST)
                .run();
        DBGrid1.Refresh();
        return o;
    }

    /** "Országjel törzs" beside the start: the picked country code into Text4. */
    void Command2_Click() {
        String mark = pickCountry();
        if (mark != null) {
            Text4.setText(mark);
        }
    }

    /** "Országjel törzs" beside the end: the picked country code into Text5. */
    void Command3_Click() {
        String mark = pickCountry();
        if (mark != null) {
            Text5.setText(mark);
        }
    }

    /**
     * OrszagokFormX (Part 4.4) modally, its slots cleared first; the passed mark when its flag is 1,
     * else null.
     */
    private static String pickCountry() {
        Globals.CountryPicked = 0;
        Globals.CountryMarkTransfer = "";
        Globals.CountryNameTransfer = "";
        Forms.get(COUNTRY_FORM).Show(true);
        Object flag = Globals.CountryPicked;
        Double v = Err.resume(() -> flag == null ? 0.0 : Conv.CDbl(flag), 0.0);
        Err.Clear();
        if (v != null && v == 1) {
            return Globals.CountryMarkTransfer == null ? "" : Globals.CountryMarkTransfer;
        }
        return null;
    }

    /** "Segédlet": topic "GkUtakTavolsagaTorzsFormX". */
    void Segedlet_Click() {
        help();
    }

    /**
     * "Vissza": with rows, Edit and Update of the current row (errors ignored); Close of the source
     * (errors ignored); Unload. CloseGuard makes the close box run this once.
     */
    void Kilepes_Click() {
        standardExit(() -> {
            if (count(UtTavTorzsData) > 0) {
                Err.resume(() -> {
                    Recordset r = rs(UtTavTorzsData);
                    r.Edit();
                    r.Update();
                });
                Err.Clear();
            }
        }, UtTavTorzsData);
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }

    /**
     * "Adat átadása": with a current row the flag becomes 1 and the globals get Text4, Text5, Text1,
     * Text2 and Text3; otherwise the four texts are cleared (the flag and the distance stay). Then
     * the form leaves.
     */
    void AdatAtad_Click() {
        if (count(UtTavTorzsData) > 0 && onRecord(UtTavTorzsData)) {
            RouteGlobals.RoutePicked = 1;
            RouteGlobals.PickedFromCountry = Text4.Text();
            RouteGlobals.PickedToCountry = Text5.Text();
            RouteGlobals.PickedFrom = Text1.Text();
            RouteGlobals.PickedTo = Text2.Text();
            RouteGlobals.PickedRouteDistance = distanceIn(Text3);
        } else {
            RouteGlobals.PickedFromCountry = "";
            RouteGlobals.PickedToCountry = "";
            RouteGlobals.PickedFrom = "";
            RouteGlobals.PickedTo = "";
        }
        Kilepes_Click();
    }

    /** The header click on DBGrid1: the standard sort of Part 1.3. */
    void DBGrid1_HeadClick(int colIndex) {
        headerSort(UtTavTorzsData, DBGrid1, colIndex);
    }

    // ---------------------------------------------------------------- helpers

    /** The distance in a box as a number: empty as 0 (NullToNum); a text that isn't a number as 0. */
    private static double distanceIn(TextBox box) {
        String t = box.Text();
        if (t == null || t.isEmpty()) {
            return 0;
        }
        Double d = Err.resume(() -> Conv.CDbl(t), 0.0);
        Err.Clear();
        return d == null ? 0 : d;
    }
}
