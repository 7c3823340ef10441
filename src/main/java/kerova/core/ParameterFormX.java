package kerova.core;

import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.CheckBox;
import kerova.core.form.CommandButton;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.form.Menu;
import kerova.core.form.RecordForm;
import kerova.core.vb.Conv;
import kerova.core.vb.Err;
import kerova.core.vb.Funcs;

/**
 * Part 1.5: the program's settings, each table in a grid of its own, edited in place: the warning days
 * and kilometres, the paths of the sibling products, the units of quantity with the fixed one, and the
 * fixed daily allowance. The exit writes the edited values back to the public variables of Part 1.2.
 */
public class ParameterFormX extends RecordForm {
    public static final String NAME = "ParameterFormX";
    public static final String TITLE = "Paraméter adatok beállítása - Kerova";
    /** The help topic: not the form's name (Part 1.5). */
    public static final String HELP_TOPIC = "GkParameterFormX";

    /** The spec quotes the beginning of this caption; the rest is ours (docs/DECISIONS.md). */
    public static final String WARNING_GRID_CAPTION =
            "A táblázatban adja meg, hogy hány nappal vagy kilométerrel előre kapjon figyelmeztetést!";
    public static final String PATH_GRID_CAPTION = "A táblázatban adja meg a pontos elérési útvonalakat (Path)!";
    /** Captions of the two grids the spec leaves open (ours). */
    public static final String UNIT_GRID_CAPTION = "Mennyiségi egységek";
    public static final String ALLOWANCE_GRID_CAPTION = "Állandó napidíj és pénzneme";

    /** VizsgaFigyelmeztetoNap's columns in their binding order (readers address them by ordinal), with captions. */
    public static final String[][] WARNING_COLUMNS = {
        {"MüszakiVizsgaFigyelmeztetöNap", "Müszaki vizsga figyelmeztető nap"},
        {"ZöldkártyaFigyelmeztetöNap", "Zöldkártya figyelmeztető nap"},
        {"TachográfHitelesNap", "Tachográf hitelesítés figy. nap"},
        {"TachográfOMHEngNap", "Tachográf OMH eng. figy. nap"},
        {"BiztosításZöldkNap", "Biztosítás zöld kártya figy. nap"},
        {"SzemleKilométer", "Szemle figy. kilométer"},
        {"OlajcsereKilométer", "Olajcsere figy. kilométer"},
        {"NkKarbantNaplóKilométer", "Nemzetközi karbantart. napló kilométer"},
        {"HajtásláncOlajcsereKilométer", "Hajtáslánc olajcsere kilométer"},
        {"VezérmüÉkszijcsereKilométer", "Vezérmű ékszíjcsere kilométer"},
    };
    public static final String[] PATH_COLUMNS = {"PolcrakPath", "FogastorPath", "BizonylaNextPath", "InterfacePath"};

    // ---- Data controls ----
    public final DataControl ParameterData = data("ParameterData", "Torzsek.dsb", "VizsgaFigyelmeztetoNap");
    public final DataControl PathData = data("PathData", "parameter.dsb", "Path");
    public final DataControl MennyData = data("MennyData", "parameter.dsb", "MennyisegiEgyseg");
    public final DataControl EgyebData = data("EgyebData", "parameter.dsb", "Egyebek");

    // ---- controls ----
    public final DBGrid DBGrid1 = add(new DBGrid("DBGrid1"));
    public final DBGrid DBGrid2 = add(new DBGrid("DBGrid2"));
    public final DBGrid DBGrid3 = add(new DBGrid("DBGrid3"));
    public final DBGrid DBGrid4 = add(new DBGrid("DBGrid4"));
    public final CheckBox Check1 = add(new CheckBox("Check1", "Görgetés adatoknál (állandó)"));
    public final CommandButton Command2 = add(new CommandButton("Command2", "OK-Mentés"));
    public final CommandButton Command4 = add(new CommandButton("Command4", "Segédlet"));
    public final CommandButton Command3 = add(new CommandButton("Command3", "Kilépés"));

    // ---- menu ----
    public final Menu Kilepes = menu(new Menu("Kilepes", "Kilépés"));

    public ParameterFormX() {
        super(NAME, TITLE);
        layoutConstraints = "wrap 2, insets 10, fill, hidemode 3";
        columnConstraints = "[grow][grow]";
        Width = 1240;
        Height = 640;
        DBGrid1.layout = "span 2, grow, h 90:110:";
        DBGrid2.layout = "span 2, grow, h 90:110:";
        DBGrid3.layout = "grow, h 140:200:";
        DBGrid4.layout = "grow, h 140:200:";
        Check1.layout = "span 2";
        Command2.layout = "span 2, split 3, align right, w 120!, gaptop 6";
        Command4.layout = "w 120!";
        Command3.layout = "w 120!";

        DBGrid1.bind(ParameterData);
        DBGrid1.setCaption(WARNING_GRID_CAPTION);
        for (String[] c : WARNING_COLUMNS) {
            // automatic width: the whole caption shows
            DBGrid1.addColumn(c[1], c[0]);
        }
        DBGrid2.bind(PathData);
        DBGrid2.setCaption(PATH_GRID_CAPTION);
        for (String c : PATH_COLUMNS) {
            DBGrid2.addColumn(c).Width = 270;
        }
        DBGrid3.bind(MennyData);
        DBGrid3.setCaption(UNIT_GRID_CAPTION);
        DBGrid3.addColumn("M.egység rövidítve", "MennyiségiEgység").Width = 200;
        DBGrid3.addColumn("Állandó", "Állandó").Width = 90;
        DBGrid4.bind(EgyebData);
        DBGrid4.setCaption(ALLOWANCE_GRID_CAPTION);
        DBGrid4.addColumn("Napidíj", "Napidíj").Width = 150;
        DBGrid4.addColumn("Pénznem", "NapidíjDevizanem").Width = 150;
        for (DBGrid g : new DBGrid[] {DBGrid1, DBGrid2, DBGrid3, DBGrid4}) {
            g.AllowUpdate = true;
            g.RowColChange = g::Refresh;
        }
        // units are a list, of which one is the fixed one: a row can be added below the last
        DBGrid3.AllowAddNew = true;

        Check1.bind(MennyData, "Állandó");

        Command2.Click = this::Command2_Click;
        Command3.Click = this::Command3_Click;
        Command4.Click = this::Command4_Click;
        Kilepes.Click = this::Kilepes_Click;
    }

    // ---------------------------------------------------------------- lifecycle

    /** Every empty table gets its row, so that the grids always have a row to edit. */
    @Override
    protected void Form_Activate() {
        Forms.hourglass();
        try {
            for (DataControl d : new DataControl[] {ParameterData, PathData, MennyData, EgyebData}) {
                if (count(d) < 1) {
                    addRow(d);
                }
                Err.Clear();
            }
        } finally {
            Forms.arrow();
        }
    }

    // ---------------------------------------------------------------- handlers

    void Command2_Click() {
        Kilepes_Click();
    }

    void Command3_Click() {
        Kilepes_Click();
    }

    void Command4_Click() {
        Globals.HelpTopicName = HELP_TOPIC;
        Forms.get("HelpFormX").Show(true);
    }

    /** The exit: the edited values back to the public variables (Part 1.5 steps 1 to 5), then unload. */
    void Kilepes_Click() {
        CloseGuard = false;
        Forms.hourglass();
        try {
            // 1: only the first two of the ten values
            if (count(ParameterData) > 0) {
                Recordset p = rs(ParameterData);
                Err.resume(p::MoveFirst);
                Err.resume(p::MoveLast);
                Err.resume(() -> Globals.WarnInspectionDays = Conv.CInt(Funcs.NullToNum(p.Fields(0).Value())));
                Err.resume(() -> Globals.WarnGreenCardDays = Conv.CInt(Funcs.NullToNum(p.Fields(1).Value())));
                Err.Clear();
            }
            // 2: the fixed unit from the current unit row, only when it is ticked
            if (onRecord(MennyData) && Check1.Value() == 1) {
                Err.resume(() -> Globals.FixedUnit = Funcs.nullToText(rs(MennyData).Fields("MennyiségiEgység").Value()));
            } else {
                Globals.FixedUnit = "";
            }
            Err.Clear();
            // 3: the paths, in the program's order
            if (count(PathData) > 0) {
                KerovaX.readPaths(rs(PathData));
            }
            // 4: the allowance (a null Napidíj fails the assignment; the error is cleared)
            if (count(EgyebData) > 0) {
                Recordset e = rs(EgyebData);
                Err.resume(e::MoveLast);
                Err.resume(() -> Globals.FixedAllowance = Conv.CDbl(e.Fields("Napidíj").Value()));
                Err.resume(() -> Globals.FixedAllowanceCurrency = Funcs.nullToText(e.Fields("NapidíjDevizanem").Value()));
                Err.Clear();
            }
        } finally {
            // 5
            closeAll(ParameterData, PathData, MennyData, EgyebData);
            Err.Clear();
            Forms.arrow();
            Unload();
        }
    }

    @Override
    protected void exitHandler() {
        Kilepes_Click();
    }
}
