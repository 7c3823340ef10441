package kerova.vehicles;

import static org.assertj.core.api.Assertions.assertThat;

import java.math.BigDecimal;
import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import kerova.core.Globals;
import kerova.core.db.DataControl;
import kerova.core.form.Form;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import kerova.core.print.Page;
import kerova.core.print.PageForm;
import kerova.core.print.PageItem;
import kerova.core.print.PagedList;
import kerova.core.print.SheetPageForm;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/**
 * Part 2.2: the three vehicle prints on GKTorzsNyomFormX, with the scripted Ui on a company folder
 * made by CompanyFolder.init. First the print procedures on a Data control as the vehicle form holds
 * it, then through the vehicle form's menu entries and buttons.
 */
class Part2_2Test extends FormTestBase {
    static final LocalDateTime TODAY = NOW.toLocalDate().atStartOfDay();
    static final String ISSUED = "Kiadva: 2026.11.23.";
    static final String NOTHING = "Nincs nyomtatandó adat!";

    /** A scripted Ui that also keeps what was sent to the printer. */
    static final class PrintUi extends ScriptedUi {
        final List<Page> printed = new ArrayList<>();

        @Override
        public boolean printForm(Form form) {
            log.add("print:" + form.getName());
            if (!printerReady) {
                return false;
            }
            printed.add(((PageForm) form).page());
            return true;
        }
    }

    PrintUi pui;
    DataControl jarmuvek;
    /** Each sheet as shown: its sixteen lines, then "Kiadva: " and today. */
    final List<List<String>> sheets = new ArrayList<>();
    /** The RecordSource of the Data control while each sheet was shown. */
    final List<String> sourcesSeen = new ArrayList<>();

    @BeforeEach
    void setUp() {
        pui = new PrintUi();
        ui = pui;
        Forms.setUi(pui);
        jarmuvek = new DataControl("JarmuvekData", "Kerova.dsb", VehicleSheets.NORMAL_SOURCE);
    }

    /** A vehicle with its plate, type and the pairs given; every other column null. */
    static void vehicle(int id, String plate, Object... more) {
        List<Object> p = new ArrayList<>(Arrays.asList("recordID", id, "GkFrsz", plate));
        p.addAll(Arrays.asList(more));
        insert("Kerova.dsb", "Jarmuvek", p.toArray());
    }

    /** A vehicle with every column of the sheet filled. */
    static void fullVehicle(int id) {
        vehicle(id, "KŐB-112", "GkTipus", "Rába H18", "GkForgalombahelyezve", LocalDateTime.of(2019, 3, 15, 0, 0),
                "KilometerOraAllasa", 120500.0, "Hengerurtartalom", 10350.0, "FogyasztásLiter100", 32.5,
                "GkVezetoNeve", "Győri Ödön", "UtolsoSzervizDatum", LocalDateTime.of(2026, 5, 2, 0, 0),
                "JelenlegiKmAllas", 185250.0, "SzervizIntervallumNap", 180, "SzervizIntervallumKM", 15000.0,
                "MuszakiVizsgaDatum", LocalDateTime.of(2027, 3, 31, 0, 0), "ZoldkartyaDatum",
                LocalDateTime.of(2027, 1, 5, 0, 0), "CascoHaviDija", new BigDecimal("12500.5"),
                "KotelezoHaviDija", new BigDecimal("8400"), "OnkoltsegKm", 212.75);
    }

    /** What the user does on the next sheet: records it, then clicks the buttons given. */
    void onSheet(DataControl source, String... buttons) {
        pui.whenShown(GKTorzsNyomFormX.NAME, f -> {
            SheetPageForm s = (SheetPageForm) f;
            sheets.add(s.lines());
            sourcesSeen.add(source.RecordSource());
            for (String b : buttons) {
                f.control(b).fireClick();
            }
        });
    }

    long sheetsShown() {
        return pui.log.stream().filter(s -> s.equals("modal:" + GKTorzsNyomFormX.NAME)).count();
    }

    String plateNow(DataControl dc) {
        return (String) dc.Recordset().get("GkFrsz");
    }

    /** The plate on each sheet shown. */
    List<String> platesShown() {
        return sheets.stream().map(l -> l.get(0)).toList();
    }

    static ScriptedUi.Message nothingToPrint() {
        return new ScriptedUi.Message(NOTHING, VbConst.vbExclamation, "FIGYELEM!");
    }

    // ---------------------------------------------------------------- the sheet

    @Test
    void theSheetOfTheCurrentVehicleHasItsSixteenLinesAndTheIssueDate() {
        vehicle(1, "AAA-111", "GkTipus", "Opel");
        fullVehicle(2);
        vehicle(3, "CCC-333", "GkTipus", "Fiat");
        jarmuvek.Refresh();
        jarmuvek.Recordset().MoveNext();
        onSheet(jarmuvek, "Command1");

        PagedList.Outcome o = VehicleSheets.AktLapNyom(jarmuvek);

        assertThat(o).isEqualTo(PagedList.Outcome.DONE);
        assertThat(sheetsShown()).isEqualTo(1);
        assertThat(sheets.get(0)).containsExactly(
                "Forgalmi rendszám: KŐB-112",
                "Típus: Rába H18",
                "Forgalomba helyezve: 2019.03.15.",
                "Kilométeróra állása: 120500",
                "Hengerűrtartalom: 10350",
                "Fogyasztás (liter/100 km): 32,5",
                "Járművezető neve: Győri Ödön",
                "Utolsó szerviz dátuma: 2026.05.02.",
                "Jelenlegi kilométeróra állás: 185250",
                "Szervizintervallum (nap): 180",
                "Szervizintervallum (km): 15000",
                "Műszaki vizsga lejárat dátuma: 2027.03.31.",
                "Zöld kártya lejárat (környezetvédelmi) dátuma: 2027.01.05.",
                "CASCO havi díja: 12500,5",
                "Kötelező biztosítás havi díja: 8400",
                "Önköltség/kilométer: 212,75",
                ISSUED);
        GKTorzsNyomFormX f = VehicleSheets.pageForm();
        assertThat(f.Caption()).isEqualTo("Gépjármű adatlap");
        assertThat(f.Cim.Caption()).isEqualTo("GÉPJÁRMŰ ADATLAP");
        assertThat(f.lineCount()).isEqualTo(16);
        assertThat(f.Command1.Caption()).isEqualTo("Tovább");
        assertThat(f.Command2.Caption()).isEqualTo("Nyomtat");
        assertThat(f.Command3.Caption()).isEqualTo("Mégse");
        // the cursor stays on the vehicle printed; hourglass while filling, the arrow at the end
        assertThat(plateNow(jarmuvek)).isEqualTo("KŐB-112");
        assertThat(pui.log).containsSubsequence("pointer:" + VbConst.vbHourglass, "pointer:" + VbConst.vbArrow,
                "modal:GKTorzsNyomFormX");
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
        assertThat(pui.messages).isEmpty();
        assertThat(pui.beeps).isZero();
    }

    @Test
    void aVehicleWithNoDatesPrintsTodaysDateInThoseLines() {
        vehicle(1, "NUL-000");
        jarmuvek.Refresh();
        onSheet(jarmuvek, "Command1");

        VehicleSheets.AktLapNyom(jarmuvek);

        List<String> s = sheets.get(0);
        assertThat(s.get(2)).isEqualTo("Forgalomba helyezve: 2026.11.23.");
        assertThat(s.get(7)).isEqualTo("Utolsó szerviz dátuma: 2026.11.23.");
        assertThat(s.get(11)).isEqualTo("Műszaki vizsga lejárat dátuma: 2026.11.23.");
        assertThat(s.get(12)).isEqualTo("Zöld kártya lejárat (környezetvédelmi) dátuma: 2026.11.23.");
        // the other nulls: NullToStr gives "", NullToNum gives 0
        assertThat(s).containsExactly(
                "Forgalmi rendszám: NUL-000",
                "Típus: ",
                "Forgalomba helyezve: 2026.11.23.",
                "Kilométeróra állása: 0",
                "Hengerűrtartalom: 0",
                "Fogyasztás (liter/100 km): 0",
                "Járművezető neve: ",
                "Utolsó szerviz dátuma: 2026.11.23.",
                "Jelenlegi kilométeróra állás: 0",
                "Szervizintervallum (nap): 0",
                "Szervizintervallum (km): 0",
                "Műszaki vizsga lejárat dátuma: 2026.11.23.",
                "Zöld kártya lejárat (környezetvédelmi) dátuma: 2026.11.23.",
                "CASCO havi díja: 0",
                "Kötelező biztosítás havi díja: 0",
                "Önköltség/kilométer: 0",
                ISSUED);
        // nothing was written: the dates stay null in the table
        assertThat(column("Kerova.dsb", "Jarmuvek", "MuszakiVizsgaDatum")).containsOnlyNulls();
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkForgalombahelyezve")).containsOnlyNulls();
    }

    @Test
    void theCurrentSheetWithoutDataBeepsAndShowsNoPageForm() {
        jarmuvek.Refresh();

        PagedList.Outcome o = VehicleSheets.AktLapNyom(jarmuvek);

        assertThat(o).isEqualTo(PagedList.Outcome.EMPTY);
        assertThat(pui.log).containsSubsequence("beep", "msg:" + NOTHING);
        assertThat(pui.messages).containsExactly(nothingToPrint());
        assertThat(sheetsShown()).isZero();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void nyomtatSendsTheSheetAsItLooks() {
        fullVehicle(1);
        jarmuvek.Refresh();
        pui.printerReady = true;
        onSheet(jarmuvek, "Command2", "Command1");

        VehicleSheets.AktLapNyom(jarmuvek);

        assertThat(pui.printed).hasSize(1);
        List<String> texts = pui.printed.get(0).items().stream()
                .filter(i -> i instanceof PageItem.Text).map(i -> ((PageItem.Text) i).text()).toList();
        assertThat(texts).contains("GÉPJÁRMŰ ADATLAP", "Forgalmi rendszám: KŐB-112", "Hengerűrtartalom: 10350",
                "Önköltség/kilométer: 212,75", ISSUED);
        assertThat(texts).doesNotContain("Tovább", "Nyomtat", "Mégse");
    }

    // ---------------------------------------------------------------- from the current vehicle onwards

    @Test
    void fromTheCurrentVehicleOnwardsEveryRecordUntilEofThenMoveLast() {
        vehicle(1, "AAA-111");
        vehicle(2, "BBB-222");
        vehicle(3, "CCC-333");
        vehicle(4, "DDD-444");
        jarmuvek.Refresh();
        jarmuvek.Recordset().MoveNext();
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");

        PagedList.Outcome o = VehicleSheets.AktLapTolMindNyom(jarmuvek);

        assertThat(o).isEqualTo(PagedList.Outcome.DONE);
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: BBB-222", "Forgalmi rendszám: CCC-333",
                "Forgalmi rendszám: DDD-444");
        assertThat(sheets).allSatisfy(s -> {
            assertThat(s).hasSize(17);
            assertThat(s.get(12)).startsWith("Zöld kártya lejárat (környezetvédelmi) dátuma: ");
            assertThat(s.get(16)).isEqualTo(ISSUED);
        });
        assertThat(plateNow(jarmuvek)).isEqualTo("DDD-444");
        assertThat(pui.messages).isEmpty();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void megseOnASheetOfTheLoopStopsTheLoop() {
        vehicle(1, "AAA-111");
        vehicle(2, "BBB-222");
        vehicle(3, "CCC-333");
        vehicle(4, "DDD-444");
        jarmuvek.Refresh();
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command3");
        onSheet(jarmuvek, "Command1");

        PagedList.Outcome o = VehicleSheets.AktLapTolMindNyom(jarmuvek);

        assertThat(o).isEqualTo(PagedList.Outcome.CANCELLED);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        assertThat(sheetsShown()).isEqualTo(2);
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: AAA-111", "Forgalmi rendszám: BBB-222");
        assertThat(VehicleSheets.pageForm().isLoaded()).isFalse();
        // the set has records: MoveLast
        assertThat(plateNow(jarmuvek)).isEqualTo("DDD-444");
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theLoopFromTheLastVehicleGivesOneSheet() {
        vehicle(1, "AAA-111");
        vehicle(2, "BBB-222");
        jarmuvek.Refresh();
        jarmuvek.Recordset().MoveLast();
        onSheet(jarmuvek, "Command1");

        VehicleSheets.AktLapTolMindNyom(jarmuvek);

        assertThat(platesShown()).containsExactly("Forgalmi rendszám: BBB-222");
        assertThat(plateNow(jarmuvek)).isEqualTo("BBB-222");
    }

    @Test
    void theLoopOnAnEmptySetGivesTheMessageOfTheFirstPrint() {
        jarmuvek.Refresh();

        assertThat(VehicleSheets.AktLapTolMindNyom(jarmuvek)).isEqualTo(PagedList.Outcome.EMPTY);

        assertThat(pui.log).containsSubsequence("beep", "msg:" + NOTHING);
        assertThat(pui.messages).containsExactly(nothingToPrint());
        assertThat(sheetsShown()).isZero();
    }

    // ---------------------------------------------------------------- inspection needed

    /** Inspection dates around the limit of today minus 10 days (2026.11.13.). */
    void inspectionVehicles() {
        vehicle(1, "LIM-013", "MuszakiVizsgaDatum", LocalDateTime.of(2026, 11, 13, 0, 0),
                "ZoldkartyaDatum", LocalDateTime.of(2027, 2, 1, 0, 0));
        vehicle(2, "NEX-014", "MuszakiVizsgaDatum", LocalDateTime.of(2026, 11, 14, 0, 0));
        vehicle(3, "OLD-025", "MuszakiVizsgaDatum", LocalDateTime.of(2025, 1, 2, 0, 0));
        vehicle(4, "NUL-000");
        vehicle(5, "NEW-027", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        vehicle(6, "TOD-023", "MuszakiVizsgaDatum", TODAY);
    }

    @Test
    void inspectionNeededUsesTodayMinusTheDaysAndTheMisspelledLine() {
        Globals.WarnInspectionDays = 10;
        inspectionVehicles();
        jarmuvek.Refresh();
        jarmuvek.Recordset().MoveLast();
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");

        PagedList.Outcome o = VehicleSheets.MuszakiKell(jarmuvek, null);

        assertThat(o).isEqualTo(PagedList.Outcome.DONE);
        // the limit is today minus 10 days, month/day/year without leading zeros
        assertThat(sourcesSeen).containsOnly("select * from jarmuvek where MuszakiVizsgaDatum <= #11/13/2026#");
        // on or before the limit, in table order; null dates and later ones aren't selected
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: LIM-013", "Forgalmi rendszám: OLD-025");
        assertThat(sheets.get(0).get(11)).isEqualTo("Műszaki vizsga lejárat dátuma: 2026.11.13.");
        assertThat(sheets.get(0).get(12)).isEqualTo("Zöld kártya lajárat (környezetvédelmi) dátuma: 2027.02.01.");
        assertThat(sheets.get(1).get(12)).isEqualTo("Zöld kártya lajárat (környezetvédelmi) dátuma: 2026.11.23.");
        assertThat(sheets.get(1).get(16)).isEqualTo(ISSUED);
        // the normal RecordSource comes back, refreshed: the cursor is on the first vehicle
        assertThat(jarmuvek.RecordSource()).isEqualTo("select * from Jarmuvek order by recordID");
        assertThat(jarmuvek.Recordset().RecordCount()).isGreaterThan(0);
        jarmuvek.Recordset().MoveLast();
        assertThat(jarmuvek.Recordset().RecordCount()).isEqualTo(6);
        jarmuvek.Recordset().MoveFirst();
        assertThat(pui.messages).isEmpty();
        assertThat(pui.beeps).isZero();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void inspectionNeededWithZeroDaysTakesTodayItself() {
        Globals.WarnInspectionDays = 0;
        inspectionVehicles();
        jarmuvek.Refresh();
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");

        VehicleSheets.MuszakiKell(jarmuvek, null);

        assertThat(sourcesSeen).containsOnly("select * from jarmuvek where MuszakiVizsgaDatum <= #11/23/2026#");
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: LIM-013", "Forgalmi rendszám: NEX-014",
                "Forgalmi rendszám: OLD-025", "Forgalmi rendszám: TOD-023");
    }

    @Test
    void megseOnAnInspectionSheetStopsAndTheSourceComesBack() {
        Globals.WarnInspectionDays = 0;
        inspectionVehicles();
        jarmuvek.Refresh();
        onSheet(jarmuvek, "Command3");
        onSheet(jarmuvek, "Command1");

        assertThat(VehicleSheets.MuszakiKell(jarmuvek, null)).isEqualTo(PagedList.Outcome.CANCELLED);

        assertThat(sheetsShown()).isEqualTo(1);
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: LIM-013");
        assertThat(jarmuvek.RecordSource()).isEqualTo(VehicleSheets.NORMAL_SOURCE);
        assertThat(plateNow(jarmuvek)).isEqualTo("LIM-013");
        jarmuvek.Recordset().MoveLast();
        assertThat(plateNow(jarmuvek)).isEqualTo("TOD-023");
    }

    @Test
    void noInspectionDueSaysNothingToPrintWithoutABeepAndRestoresTheSource() {
        Globals.WarnInspectionDays = 10;
        vehicle(1, "NEW-027", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        vehicle(2, "NUL-000");
        jarmuvek.Refresh();
        jarmuvek.Recordset().MoveLast();

        assertThat(VehicleSheets.MuszakiKell(jarmuvek, null)).isEqualTo(PagedList.Outcome.EMPTY);

        assertThat(pui.messages).containsExactly(nothingToPrint());
        assertThat(pui.beeps).isZero();
        assertThat(sheetsShown()).isZero();
        assertThat(jarmuvek.RecordSource()).isEqualTo(VehicleSheets.NORMAL_SOURCE);
        assertThat(plateNow(jarmuvek)).isEqualTo("NEW-027");
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theMisspellingBelongsToTheThirdPrintOnly() {
        Globals.WarnInspectionDays = 0;
        vehicle(1, "OLD-025", "MuszakiVizsgaDatum", LocalDateTime.of(2025, 1, 2, 0, 0));
        jarmuvek.Refresh();
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");
        onSheet(jarmuvek, "Command1");

        VehicleSheets.MuszakiKell(jarmuvek, null);
        VehicleSheets.AktLapNyom(jarmuvek);
        VehicleSheets.AktLapTolMindNyom(jarmuvek);

        assertThat(sheets).extracting(s -> s.get(12)).containsExactly(
                "Zöld kártya lajárat (környezetvédelmi) dátuma: 2026.11.23.",
                "Zöld kártya lejárat (környezetvédelmi) dátuma: 2026.11.23.",
                "Zöld kártya lejárat (környezetvédelmi) dátuma: 2026.11.23.");
    }

    @Test
    void theInspectionStatementForALimitDate() {
        assertThat(VehicleSheets.inspectionSource(LocalDateTime.of(2027, 1, 5, 0, 0)))
                .isEqualTo("select * from jarmuvek where MuszakiVizsgaDatum <= #1/5/2027#");
        assertThat(VehicleSheets.lineText(13)).isEqualTo("Zöld kártya lejárat (környezetvédelmi) dátuma: ");
        assertThat(VehicleSheets.lineColumn(11)).isEqualTo("SzervizIntervallumKm");
    }

    // ---------------------------------------------------------------- through the vehicle form

    GKTorzsFormX openVehicles() {
        Globals.CurrentFormName = GKTorzsFormX.NAME;
        GKTorzsFormX form = Forms.put(new GKTorzsFormX());
        form.Show();
        return form;
    }

    @Test
    void theMenuEntryAndItsButtonPrintTheCurrentVehicleAndTheFormReturnsToTheLast() {
        fullVehicle(1);
        vehicle(2, "BBB-222", "GkTipus", "Fiat");
        vehicle(3, "CCC-333", "GkTipus", "Opel");
        GKTorzsFormX form = openVehicles();
        form.DBGrid1.selectRow(0);
        assertThat(form.Text1.Text()).isEqualTo("KŐB-112");
        onSheet(form.JarmuvekData, "Command1");
        onSheet(form.JarmuvekData, "Command1");

        form.AktLapNyom.fireClick();
        // the sheet is the current vehicle's; on return the vehicle form's Form_Activate runs
        // (Part 2.1 step 2: MoveLast), so the form stands on the last vehicle
        assertThat(sheets.get(0).get(0)).isEqualTo("Forgalmi rendszám: KŐB-112");
        assertThat(sheets.get(0).get(4)).isEqualTo("Hengerűrtartalom: 10350");
        assertThat(form.Text1.Text()).isEqualTo("CCC-333");

        form.DBGrid1.selectRow(1);
        form.Command6.fireClick();
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: KŐB-112", "Forgalmi rendszám: BBB-222");
        assertThat(form.Text1.Text()).isEqualTo("CCC-333");
        assertThat(pui.messages).isEmpty();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void megseInTheLoopOfTheVehicleFormStopsItAndTheFormEndsOnTheLast() {
        vehicle(1, "AAA-111", "GkTipus", "Opel");
        vehicle(2, "BBB-222", "GkTipus", "Fiat");
        vehicle(3, "CCC-333", "GkTipus", "Rába");
        vehicle(4, "DDD-444", "GkTipus", "Ikarus");
        GKTorzsFormX form = openVehicles();
        form.DBGrid1.selectRow(1);
        onSheet(form.JarmuvekData, "Command1");
        onSheet(form.JarmuvekData, "Command3");
        onSheet(form.JarmuvekData, "Command1");

        form.Command7.fireClick();

        assertThat(platesShown()).containsExactly("Forgalmi rendszám: BBB-222", "Forgalmi rendszám: CCC-333");
        assertThat(sheetsShown()).isEqualTo(2);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        assertThat(form.Text1.Text()).isEqualTo("DDD-444");
        assertThat(form.Label24.Caption()).isEqualTo("4");
        // the walk stored nothing but what the form's own checks store; the plates are unchanged
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz"))
                .containsExactly("AAA-111", "BBB-222", "CCC-333", "DDD-444");
    }

    @Test
    void megseOnTheFirstSheetLeavesTheNextVehicleUntouched() {
        // "with MoveNext between": the next vehicle is not reached before the sheet was answered,
        // so the vehicle form's warning check never runs on it
        Globals.WarnInspectionDays = 10;
        vehicle(1, "AAA-111", "GkTipus", "Opel", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        vehicle(2, "BBB-222", "GkTipus", "Fiat", "MuszakiVizsgaDatum", LocalDateTime.of(2025, 1, 2, 0, 0));
        vehicle(3, "CCC-333", "GkTipus", "Rába", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        GKTorzsFormX form = openVehicles();
        form.DBGrid1.selectRow(0);
        assertThat(form.Text1.Text()).isEqualTo("AAA-111");
        onSheet(form.JarmuvekData, "Command3");

        form.Command7.fireClick();

        assertThat(platesShown()).containsExactly("Forgalmi rendszám: AAA-111");
        assertThat(form.Text1.Text()).isEqualTo("CCC-333");
        assertThat(column("Kerova.dsb", "Jarmuvek", "Figyelmeztetés").get(1)).isNotEqualTo(Boolean.TRUE);
    }

    @Test
    void theInspectionPrintOfTheVehicleFormRestoresItsSourceAndGrid() {
        Globals.WarnInspectionDays = 10;
        vehicle(1, "OLD-025", "GkTipus", "Opel", "MuszakiVizsgaDatum", LocalDateTime.of(2025, 1, 2, 0, 0));
        vehicle(2, "NEW-027", "GkTipus", "Fiat", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        vehicle(3, "LIM-013", "GkTipus", "Rába", "MuszakiVizsgaDatum", LocalDateTime.of(2026, 11, 13, 0, 0));
        GKTorzsFormX form = openVehicles();
        List<Integer> gridRows = new ArrayList<>();
        pui.whenShown(GKTorzsNyomFormX.NAME, f -> {
            sheets.add(((SheetPageForm) f).lines());
            sourcesSeen.add(form.JarmuvekData.RecordSource());
            gridRows.add(form.DBGrid1.rowCount());
            f.control("Command1").fireClick();
        });
        onSheet(form.JarmuvekData, "Command1");

        form.Command8.fireClick();

        assertThat(sourcesSeen).containsOnly("select * from jarmuvek where MuszakiVizsgaDatum <= #11/13/2026#");
        assertThat(gridRows).containsOnly(2);
        assertThat(platesShown()).containsExactly("Forgalmi rendszám: OLD-025", "Forgalmi rendszám: LIM-013");
        assertThat(sheets).allSatisfy(l -> assertThat(l.get(12)).startsWith("Zöld kártya lajárat "));
        assertThat(form.JarmuvekData.RecordSource()).isEqualTo(GKTorzsFormX.LIVE_SOURCE);
        assertThat(form.DBGrid1.rowCount()).isEqualTo(3);
        assertThat(form.Text1.Text()).isEqualTo("LIM-013");
    }

    @Test
    void theInspectionPrintOfTheVehicleFormWithNothingDue() {
        Globals.WarnInspectionDays = 10;
        vehicle(1, "NEW-027", "GkTipus", "Fiat", "MuszakiVizsgaDatum", LocalDateTime.of(2027, 6, 30, 0, 0));
        vehicle(2, "NUL-000", "GkTipus", "Opel");
        GKTorzsFormX form = openVehicles();
        assertThat(form.Text1.Text()).isEqualTo("NUL-000");

        form.MuszakiKell.fireClick();

        assertThat(pui.messages).containsExactly(nothingToPrint());
        assertThat(sheetsShown()).isZero();
        assertThat(form.JarmuvekData.RecordSource()).isEqualTo(GKTorzsFormX.LIVE_SOURCE);
        // no sheet was shown, so no Form_Activate: the refreshed source stands on its first vehicle
        assertThat(form.Text1.Text()).isEqualTo("NEW-027");
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
    }
}
