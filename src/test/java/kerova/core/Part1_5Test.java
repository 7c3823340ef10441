package kerova.core;

import static org.assertj.core.api.Assertions.assertThat;

import java.time.LocalDateTime;
import java.util.List;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.DBGrid;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 1.5: the parameters form, on real files with the scripted Ui. */
class Part1_5Test extends FormTestBase {
    private static final LocalDateTime TODAY = NOW.toLocalDate().atStartOfDay();
    private static final ScriptedUi.Message INSPECTION =
            new ScriptedUi.Message(KerovaX.INSPECTION_TEXT, 48, "FIGYELEM!");

    /** The ten values of VizsgaFigyelmeztetoNap, by ordinal. */
    private static void parameters(Integer... values) {
        Recordset r = Database.open("Torzsek.dsb").OpenRecordset("VizsgaFigyelmeztetoNap");
        r.AddNew();
        for (int i = 0; i < values.length; i++) {
            r.Fields(i).setValue(values[i]);
        }
        r.Update();
        r.Close();
    }

    private ParameterFormX open() {
        ParameterFormX f = Forms.put(new ParameterFormX());
        f.Show();
        return f;
    }

    private KerovaX startMain() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Teszt Kft.");
        KerovaX main = Forms.put(new KerovaX());
        main.Show();
        return main;
    }

    private static void edit(DBGrid grid, int row, int col, String text) {
        grid.editCell(row, grid.Columns(col), text);
    }

    // ---- edge cases of Part 1.5 ----

    @Test
    void anUntickedUnitEmptiesFixedUnitAndTheMainFormSetsItAgain() {
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "db", "Állandó", false);
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        KerovaX main = startMain();
        assertThat(Globals.FixedUnit).isEqualTo("tonna");
        boolean[] seen = new boolean[1];
        ui.whenShown("ParameterFormX", f -> {
            ParameterFormX p = (ParameterFormX) f;
            seen[0] = true;
            // the form stands on the first unit, which isn't the fixed one
            assertThat(p.DBGrid3.Columns(0).Text()).isEqualTo("db");
            assertThat(p.Check1.Value()).isZero();
            p.Command3.fireClick();
            assertThat(p.isLoaded()).isFalse();
            assertThat(Globals.FixedUnit).isEmpty();
        });
        main.ParameterAdat.fireClick();
        assertThat(seen[0]).isTrue();
        // the main form's query "... where Állandó <> 0" sets it again at its activation
        assertThat(Globals.FixedUnit).isEqualTo("tonna");
        assertThat(main.Label14.Caption()).isEqualTo("tonna");
        assertThat(column("parameter.dsb", "MennyisegiEgyseg", "Állandó")).containsExactly(false, true);
    }

    @Test
    void theMainFormsQueryRunsAgainSoAnotherFixedUnitShowsOnReturn() {
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "db", "Állandó", true);
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", false);
        KerovaX main = startMain();
        assertThat(Globals.FixedUnit).isEqualTo("db");
        ui.whenShown("ParameterFormX", f -> {
            ParameterFormX p = (ParameterFormX) f;
            p.Check1.setValue(0); // "db" no longer fixed
            p.DBGrid3.selectRow(1);
            p.Check1.setValue(1); // "tonna" fixed instead
            p.Command3.fireClick();
        });
        main.ParameterAdat.fireClick();
        assertThat(column("parameter.dsb", "MennyisegiEgyseg", "Állandó")).containsExactly(false, true);
        assertThat(Globals.FixedUnit).isEqualTo("tonna");
        assertThat(main.Label14.Caption()).isEqualTo("tonna");
    }

    @Test
    void aTickedCurrentUnitBecomesFixedUnit() {
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "db", "Állandó", false);
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        ParameterFormX f = open();
        // the fixed row itself: ticked
        f.DBGrid3.selectRow(1);
        assertThat(f.Check1.Value()).isEqualTo(1);
        f.Command3.fireClick();
        assertThat(Globals.FixedUnit).isEqualTo("tonna");

        // ticking Check1 on another row: that unit, and Állandó is stored on leaving
        ParameterFormX g = open();
        assertThat(g.DBGrid3.Columns(0).Text()).isEqualTo("db");
        g.Check1.setValue(1);
        g.Kilepes.fireClick();
        assertThat(Globals.FixedUnit).isEqualTo("db");
        assertThat(column("parameter.dsb", "MennyisegiEgyseg", "Állandó")).containsExactly(true, true);
    }

    @Test
    void aDaysValueOfZeroSwitchesTheMatchingReminderOff() {
        parameters(40, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "KŐB-112", "MuszakiVizsgaDatum", TODAY.minusDays(60));
        KerovaX main = startMain();
        assertThat(ui.messages).containsExactly(INSPECTION);
        ui.clear();
        ui.whenShown("ParameterFormX", f -> {
            ParameterFormX p = (ParameterFormX) f;
            edit(p.DBGrid1, 0, 0, "0");
            p.Command2.fireClick();
            assertThat(Globals.WarnInspectionDays).isZero();
        });
        main.ParameterAdat.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(Globals.WarnInspectionDays).isZero();
        assertThat(column("Torzsek.dsb", "VizsgaFigyelmeztetoNap", "MüszakiVizsgaFigyelmeztetöNap"))
                .containsExactly((short) 0);
        // and back on: the reminder comes again at the return
        ui.whenShown("ParameterFormX", f -> {
            ParameterFormX p = (ParameterFormX) f;
            edit(p.DBGrid1, 0, 0, "40");
            p.Command2.fireClick();
        });
        main.ParameterAdat.fireClick();
        assertThat(ui.messages).containsExactly(INSPECTION);
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 40);
    }

    @Test
    void theCloseBoxDoesTheSameAsKilepes() {
        parameters(10, 20, 30, 40, 50, 60, 70, 80, 90, 100);
        insert("parameter.dsb", "Path", "PolcrakPath", "C:\\Polcrak", "FogastorPath", "C:\\Fogastor",
                "BizonylaNextPath", "C:\\BizonylaNext", "InterfacePath", "C:\\Interface");
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "liter", "Állandó", true);
        insert("parameter.dsb", "Egyebek", "Napidíj", 7.5, "NapidíjDevizanem", "EUR");
        ParameterFormX f = open();
        f.closeBox();
        assertThat(f.isLoaded()).isFalse();
        assertThat(f.CloseGuard).isFalse();
        assertWrittenBack();
        for (var d : f.dataControls()) {
            assertThat(d.Recordset().isClosed()).as(d.getName()).isTrue();
        }
        Globals.reset();
        ParameterFormX g = open();
        g.Command3.fireClick();
        assertWrittenBack();
        assertThat(ui.messages).isEmpty();
    }

    private static void assertWrittenBack() {
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 10);
        assertThat(Globals.WarnGreenCardDays).isEqualTo((short) 20);
        assertThat(Globals.FixedUnit).isEqualTo("liter");
        assertThat(Globals.PolcrakPathValue).isEqualTo("C:\\Polcrak");
        assertThat(Globals.FogastorPathValue).isEqualTo("C:\\Fogastor");
        assertThat(Globals.BizonylaPathValue).isEqualTo("C:\\BizonylaNext");
        assertThat(Globals.InterfacePathValue).isEqualTo("C:\\Interface");
        assertThat(Globals.FixedAllowance).isEqualTo(7.5);
        assertThat(Globals.FixedAllowanceCurrency).isEqualTo("EUR");
        // the other eight aren't taken here
        assertThat(Globals.WarnTachoCalibrationDays).isZero();
        assertThat(Globals.WarnInsuranceCardDays).isZero();
        assertThat(Globals.WarnInspectionKm).isZero();
        assertThat(Globals.WarnTimingBeltKm).isZero();
    }

    // ---- the rest of the Part ----

    @Test
    void titleGridCaptionsAndTheTenColumnsInTheirBindingOrder() {
        ParameterFormX f = new ParameterFormX();
        assertThat(f.Caption()).isEqualTo("Paraméter adatok beállítása - Kerova");
        assertThat(f.DBGrid1.Caption()).startsWith("A táblázatban adja meg, hogy hány nappal vagy kilométerrel előre kapjo");
        assertThat(f.DBGrid2.Caption()).isEqualTo("A táblázatban adja meg a pontos elérési útvonalakat (Path)!");
        assertThat(f.DBGrid1.columns()).extracting(DBGrid.Column::DataField).containsExactly(
                "MüszakiVizsgaFigyelmeztetöNap", "ZöldkártyaFigyelmeztetöNap", "TachográfHitelesNap",
                "TachográfOMHEngNap", "BiztosításZöldkNap", "SzemleKilométer", "OlajcsereKilométer",
                "NkKarbantNaplóKilométer", "HajtásláncOlajcsereKilométer", "VezérmüÉkszijcsereKilométer");
        assertThat(f.DBGrid1.columns()).extracting(DBGrid.Column::Caption).containsExactly(
                "Müszaki vizsga figyelmeztető nap", "Zöldkártya figyelmeztető nap", "Tachográf hitelesítés figy. nap",
                "Tachográf OMH eng. figy. nap", "Biztosítás zöld kártya figy. nap", "Szemle figy. kilométer",
                "Olajcsere figy. kilométer", "Nemzetközi karbantart. napló kilométer", "Hajtáslánc olajcsere kilométer",
                "Vezérmű ékszíjcsere kilométer");
        assertThat(f.DBGrid2.columns()).extracting(DBGrid.Column::DataField)
                .containsExactly("PolcrakPath", "FogastorPath", "BizonylaNextPath", "InterfacePath");
        assertThat(f.DBGrid3.columns()).extracting(DBGrid.Column::Caption).containsExactly("M.egység rövidítve", "Állandó");
        assertThat(f.DBGrid3.columns()).extracting(DBGrid.Column::DataField).containsExactly("MennyiségiEgység", "Állandó");
        assertThat(f.DBGrid4.columns()).extracting(DBGrid.Column::Caption).containsExactly("Napidíj", "Pénznem");
        assertThat(f.DBGrid4.columns()).extracting(DBGrid.Column::DataField).containsExactly("Napidíj", "NapidíjDevizanem");
        assertThat(f.Check1.Caption()).isEqualTo("Görgetés adatoknál (állandó)");
        assertThat(f.Check1.DataField()).isEqualTo("Állandó");
        assertThat(f.Check1.DataSource()).isSameAs(f.MennyData);
        assertThat(f.Command2.Caption()).isEqualTo("OK-Mentés");
        assertThat(f.Command3.Caption()).isEqualTo("Kilépés");
        assertThat(f.Command4.Caption()).isEqualTo("Segédlet");
        // the Data controls and their tables
        assertThat(f.ParameterData.DatabaseName()).isEqualTo("Torzsek.dsb");
        assertThat(f.ParameterData.RecordSource()).isEqualTo("VizsgaFigyelmeztetoNap");
        assertThat(f.PathData.RecordSource()).isEqualTo("Path");
        assertThat(f.MennyData.RecordSource()).isEqualTo("MennyisegiEgyseg");
        assertThat(f.EgyebData.RecordSource()).isEqualTo("Egyebek");
        // the ten columns are the table's first ten, in this order (readers go by ordinal)
        Recordset r = Database.open("Torzsek.dsb").OpenRecordset("VizsgaFigyelmeztetoNap");
        assertThat(r.columnNames().subList(0, 10)).containsExactlyElementsOf(
                f.DBGrid1.columns().stream().map(DBGrid.Column::DataField).toList());
        r.Close();
    }

    @Test
    void activationCreatesARowInEveryEmptyTable() {
        insert("parameter.dsb", "Path", "PolcrakPath", "C:\\Polcrak");
        ParameterFormX f = open();
        assertThat(rows("Torzsek.dsb", "VizsgaFigyelmeztetoNap")).hasSize(1);
        assertThat(rows("parameter.dsb", "Path")).hasSize(1);
        assertThat(rows("parameter.dsb", "MennyisegiEgyseg")).hasSize(1);
        assertThat(rows("parameter.dsb", "Egyebek")).hasSize(1);
        assertThat(rows("Torzsek.dsb", "VizsgaFigyelmeztetoNap").get(0)).containsOnlyNulls();
        // every grid has a row to edit
        for (DBGrid g : new DBGrid[] {f.DBGrid1, f.DBGrid2, f.DBGrid3, f.DBGrid4}) {
            assertThat(g.rowCount()).as(g.getName()).isEqualTo(1);
            assertThat(g.Row()).as(g.getName()).isZero();
            assertThat(g.AllowUpdate).isTrue();
        }
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        // a second activation adds nothing
        f.Hide();
        f.Show();
        assertThat(rows("parameter.dsb", "MennyisegiEgyseg")).hasSize(1);
    }

    @Test
    void cellsAreEditedInPlaceAndTheExitTakesOnlyTheFirstTwoDays() {
        ParameterFormX f = open();
        String[] values = {"11", "22", "33", "44", "55", "6000", "7000", "8000", "9000", "10000"};
        for (int i = 0; i < values.length; i++) {
            edit(f.DBGrid1, 0, i, values[i]);
        }
        edit(f.DBGrid2, 0, 0, "D:\\Polcrak");
        edit(f.DBGrid2, 0, 1, "D:\\Fogastor");
        edit(f.DBGrid2, 0, 2, "D:\\Bizonyla");
        edit(f.DBGrid2, 0, 3, "D:\\Interface");
        edit(f.DBGrid3, 0, 0, "kg");
        edit(f.DBGrid4, 0, 0, "8,25");
        edit(f.DBGrid4, 0, 1, "EUR");
        assertThat(ui.messages).isEmpty();
        assertThat(f.DBGrid4.cellText(0, f.DBGrid4.Columns(0))).isEqualTo("8,25");
        f.Command2.fireClick();
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 11);
        assertThat(Globals.WarnGreenCardDays).isEqualTo((short) 22);
        assertThat(Globals.WarnTachoCalibrationDays).isZero();
        assertThat(Globals.WarnTachoPermitDays).isZero();
        assertThat(Globals.WarnInsuranceCardDays).isZero();
        assertThat(Globals.WarnInspectionKm).isZero();
        assertThat(Globals.WarnOilChangeKm).isZero();
        assertThat(Globals.WarnServiceLogKm).isZero();
        assertThat(Globals.WarnDrivetrainOilKm).isZero();
        assertThat(Globals.WarnTimingBeltKm).isZero();
        assertThat(Globals.InterfacePathValue).isEqualTo("D:\\Interface");
        assertThat(Globals.PolcrakPathValue).isEqualTo("D:\\Polcrak");
        assertThat(Globals.FogastorPathValue).isEqualTo("D:\\Fogastor");
        assertThat(Globals.BizonylaPathValue).isEqualTo("D:\\Bizonyla");
        assertThat(Globals.FixedAllowance).isEqualTo(8.25);
        assertThat(Globals.FixedAllowanceCurrency).isEqualTo("EUR");
        // not ticked: no fixed unit
        assertThat(Globals.FixedUnit).isEmpty();
        // stored
        Object[] row = rows("Torzsek.dsb", "VizsgaFigyelmeztetoNap").get(0);
        for (int i = 0; i < values.length; i++) {
            assertThat(((Number) row[i]).intValue()).isEqualTo(Integer.parseInt(values[i]));
        }
        assertThat(column("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység")).containsExactly("kg");
        // the main form reads the other eight at its next activation
        KerovaX main = startMain();
        assertThat(Globals.WarnTachoCalibrationDays).isEqualTo((short) 33);
        assertThat(Globals.WarnTimingBeltKm).isEqualTo(10000);
        assertThat(main.Label16.Caption()).isEqualTo("8,25");
    }

    @Test
    void aNewRowOfTheWarningTableActsAtOnceThroughTheWriteBack() {
        // the main form's set was opened on the empty table and doesn't see the new row: the write-back does it
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "ŰRH-455", "MuszakiVizsgaDatum", TODAY.minusDays(60),
                "Figyelmeztetés", true);
        KerovaX main = startMain();
        assertThat(ui.messages).isEmpty();
        ui.whenShown("ParameterFormX", f -> {
            ParameterFormX p = (ParameterFormX) f;
            assertThat(p.DBGrid1.rowCount()).isEqualTo(1);
            edit(p.DBGrid1, 0, 0, "30");
            p.Kilepes.fireClick();
        });
        main.ParameterAdat.fireClick();
        assertThat(ui.messages).containsExactly(INSPECTION);
    }

    @Test
    void theLastRowIsTheOneThatCounts() {
        parameters(1, 2, 3, 4, 5, 6, 7, 8, 9, 10);
        parameters(21, 22, 23, 24, 25, 26, 27, 28, 29, 30);
        insert("parameter.dsb", "Path", "InterfacePath", "C:\\a");
        insert("parameter.dsb", "Path", "InterfacePath", "C:\\b");
        insert("parameter.dsb", "Egyebek", "Napidíj", 1.0, "NapidíjDevizanem", "Ft");
        insert("parameter.dsb", "Egyebek", "Napidíj", 2.0, "NapidíjDevizanem", "EUR");
        ParameterFormX f = open();
        f.Command3.fireClick();
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 21);
        assertThat(Globals.WarnGreenCardDays).isEqualTo((short) 22);
        assertThat(Globals.InterfacePathValue).isEqualTo("C:\\b");
        assertThat(Globals.FixedAllowance).isEqualTo(2.0);
        assertThat(Globals.FixedAllowanceCurrency).isEqualTo("EUR");
    }

    @Test
    void aNullAllowanceKeepsTheFormerValueAndTheErrorIsCleared() {
        Globals.FixedAllowance = 99;
        ParameterFormX f = open();
        edit(f.DBGrid4, 0, 1, "HUF");
        f.Command3.fireClick();
        assertThat(Globals.FixedAllowance).isEqualTo(99.0);
        assertThat(Globals.FixedAllowanceCurrency).isEqualTo("HUF");
        assertThat(ui.messages).isEmpty();
        assertThat(kerova.core.vb.Err.Number()).isZero();
    }

    @Test
    void aValueTheColumnCannotTakeShowsTheRuntimeBoxAndTheCellKeepsItsValue() {
        parameters(10, 20, 30, 40, 50, 60, 70, 80, 90, 100);
        ParameterFormX f = open();
        edit(f.DBGrid1, 0, 0, "tíz");
        assertThat(ui.messages).hasSize(1);
        assertThat(ui.messages.get(0).text()).startsWith("Váratlan hiba (");
        assertThat(ui.messages.get(0).style()).isEqualTo(16);
        assertThat(ui.messages.get(0).title()).isEqualTo("Kerova");
        assertThat(f.DBGrid1.cellText(0, f.DBGrid1.Columns(0))).isEqualTo("10");
        // the grid goes on working
        edit(f.DBGrid1, 0, 0, "12");
        f.Command3.fireClick();
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 12);
    }

    @Test
    void unitsCanBeAddedBelowTheLastRow() {
        ParameterFormX f = open();
        edit(f.DBGrid3, 0, 0, "db");
        assertThat(f.DBGrid3.AllowAddNew).isTrue();
        edit(f.DBGrid3, 1, 0, "tonna");
        assertThat(f.DBGrid3.rowCount()).isEqualTo(2);
        assertThat(f.DBGrid3.Row()).isEqualTo(1);
        f.Check1.setValue(1);
        f.Command2.fireClick();
        assertThat(Globals.FixedUnit).isEqualTo("tonna");
        List<Object> units = column("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység");
        assertThat(units).containsExactly("db", "tonna");
        assertThat(column("parameter.dsb", "MennyisegiEgyseg", "Állandó")).containsExactly(false, true);
    }

    @Test
    void helpOpensTheTopicGkParameterFormX() {
        ParameterFormX f = open();
        f.Command4.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("GkParameterFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
        assertThat(f.isLoaded()).isTrue();
    }
}
