package kerova.vehicles;

import java.time.LocalDateTime;
import java.util.function.Function;
import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.DBGrid;
import kerova.core.form.Forms;
import kerova.core.print.PagedList;
import kerova.core.print.SheetPageForm;
import kerova.core.vb.Err;
import kerova.core.vb.VbClock;

/**
 * Part 2.2: the three prints of the vehicle form on the page form {@link GKTorzsNyomFormX}. Each
 * takes the vehicle form's Data control ({@code JarmuvekData}); the vehicle form's menu entries only
 * call them.
 *
 * <ul>
 * <li>{@link #AktLapNyom}: the sheet of the current vehicle.</li>
 * <li>{@link #AktLapTolMindNyom}: the sheets from the current vehicle until {@code EOF}; "Mégse"
 * stops the loop; at the end {@code MoveLast}.</li>
 * <li>{@link #MuszakiKell}: the sheets of the vehicles whose inspection date is on or before today
 * minus {@code WarnInspectionDays}, with line 13 misspelled as the program has it; the form's
 * normal {@code RecordSource} comes back at the end.</li>
 * </ul>
 *
 * A sheet's line is its text followed by the column's value read through {@code NullToStr},
 * {@code NullToDate} (a null date prints as today) or {@code NullToNum}; the last line is "Kiadva: "
 * and today.
 */
public final class VehicleSheets {
    /** The text of line 13 in the third print, with the program's misspelling ("lajárat"). */
    public static final String GREEN_CARD_MISSPELLED = "Zöld kártya lajárat (környezetvédelmi) dátuma: ";
    /** The start of the inspection query; the limit date and "#" follow. */
    public static final String INSPECTION_SOURCE = "select * from jarmuvek where MuszakiVizsgaDatum <= #";
    /** The vehicle form's normal RecordSource, restored by {@link #MuszakiKell}. */
    public static final String NORMAL_SOURCE = "select * from Jarmuvek order by recordID";

    /** How a line's column is read. */
    private enum Read {
        STR(PagedList::str), DATE(PagedList::date), NUM(PagedList::num);

        final Function<Object, String> caption;

        Read(Function<Object, String> caption) {
            this.caption = caption;
        }
    }

    /** The sixteen lines: text, column, and how the column is read. */
    private static final Object[][] LINES = {
        {"Forgalmi rendszám: ", "GkFrsz", Read.STR},
        {"Típus: ", "GkTipus", Read.STR},
        {"Forgalomba helyezve: ", "GkForgalombahelyezve", Read.DATE},
        {"Kilométeróra állása: ", "KilometerOraAllasa", Read.NUM},
        {"Hengerűrtartalom: ", "Hengerurtartalom", Read.NUM},
        {"Fogyasztás (liter/100 km): ", "FogyasztásLiter100", Read.NUM},
        {"Járművezető neve: ", "GkVezetoNeve", Read.STR},
        {"Utolsó szerviz dátuma: ", "UtolsoSzervizDatum", Read.DATE},
        {"Jelenlegi kilométeróra állás: ", "JelenlegiKmAllas", Read.NUM},
        {"Szervizintervallum (nap): ", "SzervizIntervallumNap", Read.NUM},
        {"Szervizintervallum (km): ", "SzervizIntervallumKm", Read.NUM},
        {"Műszaki vizsga lejárat dátuma: ", "MuszakiVizsgaDatum", Read.DATE},
        {"Zöld kártya lejárat (környezetvédelmi) dátuma: ", "ZoldkartyaDatum", Read.DATE},
        {"CASCO havi díja: ", "CascoHaviDija", Read.NUM},
        {"Kötelező biztosítás havi díja: ", "KotelezoHaviDija", Read.NUM},
        {"Önköltség/kilométer: ", "OnkoltsegKm", Read.NUM},
    };

    private VehicleSheets() {
    }

    /** The text of a line (1 to 16) as the first two prints have it. */
    public static String lineText(int line) {
        return (String) LINES[line - 1][0];
    }

    /** The column of a line (1 to 16). */
    public static String lineColumn(int line) {
        return (String) LINES[line - 1][1];
    }

    /** The page form, through the forms registry (VB's implicit form variable). */
    public static GKTorzsNyomFormX pageForm() {
        return (GKTorzsNyomFormX) Forms.get(GKTorzsNyomFormX.NAME);
    }

    // ---------------------------------------------------------------- the three prints

    /**
     * "Aktuális lap nyomtatása": if the set isn't empty, the sheet of the current record is filled
     * (under the hourglass) and shown modally; the cursor stays. Without data: Beep,
     * "Nincs nyomtatandó adat!", "FIGYELEM!", style 48.
     */
    public static PagedList.Outcome AktLapNyom(DataControl data) {
        return PagedList.sheets(pageForm(), recordset(data), (f, r) -> fill(f, r, false))
                .currentOnly()
                .beepWhenEmpty()
                .run();
    }

    /**
     * "Aktuális laptól minden adat  nyomtatása": the same sheet for each record from the current one
     * until EOF, MoveNext between; "Mégse" on a sheet stops the loop; at the end MoveLast if the set
     * has records. An empty set gives the first print's message (see docs/DECISIONS.md).
     */
    public static PagedList.Outcome AktLapTolMindNyom(DataControl data) {
        return allFromCurrent(data, false, true);
    }

    /**
     * "Műszaki viszga szükségesség nyomtatása":
     * <ol>
     * <li>the limit date is today minus {@code WarnInspectionDays} (Part 1.2's rule);</li>
     * <li>the Data control's RecordSource becomes "select * from jarmuvek where MuszakiVizsgaDatum
     * &lt;= #month/day/year#" (unpadded), and Refresh;</li>
     * <li>no record: "Nincs nyomtatandó adat!" (style 48, "FIGYELEM!"); otherwise the sheets of all of
     * them, as {@link #AktLapTolMindNyom}, with line 13 spelled "Zöld kártya lajárat …";</li>
     * <li>the normal RecordSource comes back ("select * from Jarmuvek order by recordID"), Refresh,
     * and the grid is refreshed.</li>
     * </ol>
     *
     * @param grid the vehicle form's main grid ({@code DBGrid1}), or null
     */
    public static PagedList.Outcome MuszakiKell(DataControl data, DBGrid grid) {
        PagedList.Outcome outcome;
        try {
            // 1
            LocalDateTime limit = VbClock.today().minusDays(Globals.WarnInspectionDays);
            // 2
            data.setRecordSource(inspectionSource(limit));
            Err.resume(data::Refresh);
            Err.Clear();
            // 3
            outcome = allFromCurrent(data, true, false);
        } finally {
            // 4
            data.setRecordSource(NORMAL_SOURCE);
            Err.resume(data::Refresh);
            Err.Clear();
            if (grid != null) {
                Err.resume(grid::Refresh);
                Err.Clear();
            }
            Forms.arrow();
        }
        return outcome;
    }

    /** The statement of the inspection print for a limit date: "… <= #11/3/2026#". */
    public static String inspectionSource(LocalDateTime limit) {
        return INSPECTION_SOURCE + limit.getMonthValue() + "/" + limit.getDayOfMonth() + "/" + limit.getYear() + "#";
    }

    // ---------------------------------------------------------------- the sheet

    /**
     * Fills the sixteen lines of a sheet from the current record; each line on its own with errors
     * resumed (a column that can't be read leaves its line empty, the others are still filled).
     *
     * @param misspelled the third print's line 13 ("lajárat")
     */
    public static void fill(SheetPageForm f, Recordset r, boolean misspelled) {
        for (int i = 0; i < LINES.length; i++) {
            int line = i + 1;
            String text = misspelled && line == 13 ? GREEN_CARD_MISSPELLED : (String) LINES[i][0];
            String column = (String) LINES[i][1];
            Read read = (Read) LINES[i][2];
            Err.resume(() -> f.line(line).setCaption(text + read.caption.apply(r.Fields(column).Value())));
        }
        Err.Clear();
    }

    private static PagedList.Outcome allFromCurrent(DataControl data, boolean misspelled, boolean beepWhenEmpty) {
        PagedList<SheetPageForm> run = PagedList.sheets(pageForm(), recordset(data), (f, r) -> fill(f, r, misspelled))
                .fromCurrent()
                .endAt(PagedList.End.LAST);
        if (beepWhenEmpty) {
            run.beepWhenEmpty();
        }
        return run.run();
    }

    private static Recordset recordset(DataControl data) {
        return data == null ? null : data.Recordset();
    }
}
