package kerova.core;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.time.LocalDateTime;
import java.util.List;
import kerova.core.db.AccessFile;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.Menu;
import kerova.core.form.ScriptedUi;
import kerova.core.form.StandInForm;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 1.2: start-up, the reminders and the main menu, on real files with the scripted Ui. */
class Part1_2Test extends FormTestBase {
    private static final LocalDateTime TODAY = NOW.toLocalDate().atStartOfDay();
    private static final ScriptedUi.Message INSPECTION =
            new ScriptedUi.Message(KerovaX.INSPECTION_TEXT, 48, "FIGYELEM!");

    private KerovaX main;

    private void operator(String name) {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", name);
    }

    /** The ten values of VizsgaFigyelmeztetoNap, by ordinal (null for empty). */
    private void parameters(Integer... values) {
        Recordset r = Database.open("Torzsek.dsb").OpenRecordset("VizsgaFigyelmeztetoNap");
        r.AddNew();
        for (int i = 0; i < values.length; i++) {
            if (values[i] != null) {
                r.Fields(i).setValue(values[i]);
            }
        }
        r.Update();
        r.Close();
    }

    private void vehicle(int id, String frsz, Object... pairs) {
        Object[] all = new Object[pairs.length + 4];
        all[0] = "recordID";
        all[1] = id;
        all[2] = "GkFrsz";
        all[3] = frsz;
        System.arraycopy(pairs, 0, all, 4, pairs.length);
        insert("Kerova.dsb", "Jarmuvek", all);
    }

    private KerovaX start() {
        main = Forms.put(new KerovaX());
        main.Show();
        return main;
    }

    private List<Object> flags() {
        return column("Kerova.dsb", "Jarmuvek", "Figyelmeztetés");
    }

    // ---- edge cases of Part 1.2 ----

    @Test
    void emptyJarmuvekRunsNoReminderAndHidesTheGrid() {
        operator("Teszt Kft.");
        parameters(30, 30, 30, 30, 30, 1000, 1000, 1000, 1000, 1000);
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(main.DBGrid1.Visible()).isFalse();
        assertThat(Globals.OperatorName).isEqualTo("Teszt Kft.");
        // no reminder ran: a reminder would have set the picker to today minus 30 days
        assertThat(main.DTPicker1.Value()).isEqualTo(TODAY);
        assertThat(main.JarmuData.RecordSource()).isEqualTo("select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
    }

    @Test
    void daysOfZeroOrEmptySwitchTheReminderOff() {
        operator("Teszt Kft.");
        parameters(0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusYears(2));
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(flags()).containsExactly(false);
        assertThat(main.DBGrid1.Visible()).isFalse();
    }

    @Test
    void nullDaysReadAsZero() {
        operator("Teszt Kft.");
        parameters((Integer) null, null, null, null, null, null, null, null, null, null);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusYears(2));
        Globals.WarnInspectionDays = 10; // a former value: the empty column must overwrite it with 0
        Globals.WarnTachoCalibrationDays = 10;
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(Globals.WarnInspectionDays).isZero();
        assertThat(Globals.WarnTachoCalibrationDays).isZero();
        assertThat(flags()).containsExactly(false);
    }

    @Test
    void theReminderStatementHasMonthDayYearWithoutLeadingZeros() {
        kerova.core.vb.VbClock.setFixed(LocalDateTime.of(2026, 1, 15, 9, 0));
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", LocalDateTime.of(2026, 1, 2, 0, 0));
        java.util.List<String> sources = new java.util.ArrayList<>();
        ui.whenMessage(m -> sources.add(main.JarmuData.RecordSource()));
        start();
        assertThat(ui.messages).containsExactly(INSPECTION);
        assertThat(sources).containsExactly("select * from jarmuvek where MuszakiVizsgaDatum <= #1/5/2026#");
        assertThat(main.DTPicker1.Value()).isEqualTo(LocalDateTime.of(2026, 1, 5, 0, 0));
    }

    @Test
    void greenCardDaysHaveNoEffectHere() {
        operator("Teszt Kft.");
        parameters(0, 30, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "ZoldkartyaDatum", TODAY.minusYears(1), "MuszakiVizsgaDatum", TODAY.minusYears(1));
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(Globals.WarnGreenCardDays).isEqualTo((short) 30);
        assertThat(flags()).containsExactly(false);
    }

    @Test
    void noParameterRowKeepsTheFormerValues() {
        operator("Teszt Kft.");
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusDays(20), "Figyelmeztetés", true);
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(Globals.WarnInspectionDays).isZero();
        assertThat(Globals.WarnTimingBeltKm).isZero();
        // a former value stays, and the reminder acts on it
        Globals.WarnInspectionDays = 10;
        main.Hide();
        main.Show();
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 10);
        assertThat(ui.messages).containsExactly(INSPECTION);
    }

    @Test
    void returnFromAnyMenuFormRunsTheRemindersAgain() {
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusDays(30));
        start();
        assertThat(ui.messages).containsExactly(INSPECTION);
        // the vehicle form's own exit check (Part 2.1) is not this test's concern
        Forms.register("GKTorzsFormX", () -> new StandInForm("GKTorzsFormX"));
        // nor the partner form's (Part 4.1)
        Forms.register("BeraktarozokFormX", () -> new StandInForm("BeraktarozokFormX"));
        String[] entries = {"UtTav", "Gepkocsik", "Vezetok", "GKBesz", "Megnevezesek", "Uzemelteto",
            "AlkatreszTorzse", "ParameterAdat", "KerovatUj", "KMNyt", "GKSzamlaBe", "SzervizModul", "Lekerdezes",
            "UaKtsg", "AdatSzerviz", "Kezik"};
        String[] targets = {"GkUtakTavolsagaTorzsFormX", "GKTorzsFormX", "VezetokTorzsFormX", "BeraktarozokFormX",
            "MegnevezesTorzsFormX", "UzemeltetokForm", "cikkszamform", "ParameterFormX", "UtNyilvantartasFormX",
            "KilometerNytFormX", "UzemanyagSzamlaFormX", "SzervizmodulFormX", "LekerdezesFormX", "KerovaForm",
            "KerovaSzervizFormX", "KerovaFelhasznaloiKezikonyvForm"};
        for (int i = 0; i < entries.length; i++) {
            ui.clear();
            String target = targets[i];
            boolean[] seen = new boolean[1];
            ui.whenShown(target, f -> {
                seen[0] = true;
                if (f instanceof StandInForm s) {
                    assertThat(f.Caption()).isEqualTo(target);
                    assertThat(s.Label1.Caption()).isEqualTo("Ez a modul még nem készült el.");
                }
                boolean stays = target.equals("KerovaForm") || target.equals("KerovaSzervizFormX");
                assertThat(main.Visible()).as(target).isEqualTo(stays);
                assertThat(main.Enabled()).as(target).isEqualTo(!target.equals("KerovaForm"));
            });
            ((Menu) main.control(entries[i])).fireClick();
            assertThat(seen[0]).as(target).isTrue();
            assertThat(ui.messages).as(entries[i]).containsExactly(INSPECTION);
            assertThat(main.Visible()).isTrue();
            assertThat(main.Enabled()).isTrue();
        }
        assertThat(Globals.CurrentFormName).isEqualTo("cikkszamform");
    }

    @Test
    void theButtonsCallTheMenuHandlers() {
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusDays(30));
        start();
        String[][] pairs = {{"Command6", "UtNyilvantartasFormX"}, {"Command5", "LekerdezesFormX"},
            {"Command4", "KerovaForm"}, {"Command3", "KerovaSzervizFormX"}, {"Command2", "KerovaFelhasznaloiKezikonyvForm"}};
        for (String[] p : pairs) {
            ui.clear();
            main.control(p[0]).fireClick();
            assertThat(ui.log).as(p[0]).contains("modal:" + p[1]);
            assertThat(ui.messages).containsExactly(INSPECTION);
        }
    }

    @Test
    void vehicleFormGoingOnIntoTheServiceModuleLeavesTheMainFormHidden() {
        operator("Teszt Kft.");
        start();
        Forms.register("GKTorzsFormX", () -> new StandInForm("GKTorzsFormX"));
        ui.whenShown("GKTorzsFormX", f -> Globals.CurrentFormName = "SzervizModulFormX");
        main.Gepkocsik.fireClick();
        assertThat(main.Visible()).isFalse();
    }

    @Test
    void menuNotesSetTheCallerMarkAndTheArticlePickMode() {
        operator("Teszt Kft.");
        start();
        Forms.register("GKTorzsFormX", () -> new StandInForm("GKTorzsFormX"));
        String[] seen = new String[1];
        Globals.CurrentFormName = "valami";
        ui.whenShown("GKTorzsFormX", f -> seen[0] = Globals.CurrentFormName);
        main.Gepkocsik.fireClick();
        assertThat(seen[0]).isEqualTo("GKTorzsFormX");
        Globals.ArticlePickMode = 1;
        main.AlkatreszTorzse.fireClick();
        assertThat(Globals.ArticlePickMode).isZero();
    }

    @Test
    void theExitButtonEndsTheProgramAsTheMenuEntryDoes() {
        operator("Teszt Kft.");
        start();
        assertThatThrownBy(() -> main.Command1.fireClick()).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.exited).isTrue();
    }

    @Test
    void aMarkedVehicleStaysMarkedAfterItsDateIsCorrected() {
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "BBB222", "MuszakiVizsgaDatum", TODAY.minusDays(30));
        vehicle(2, "AAA111", "MuszakiVizsgaDatum", TODAY.plusDays(200));
        start();
        assertThat(ui.messages).containsExactly(INSPECTION);
        assertThat(flags()).containsExactly(true, false);
        assertThat(main.DBGrid1.Visible()).isTrue();
        assertThat(main.DBGrid1.rowCount()).isEqualTo(1);
        assertThat(main.DBGrid1.cellText(0, main.DBGrid1.Columns(0))).isEqualTo("BBB222");
        // the date is corrected (as the vehicle form would); the flag stays, the grid still lists it
        Recordset r = Database.open("Kerova.dsb").OpenRecordset("Jarmuvek");
        r.MoveFirst();
        r.Edit();
        r.set("MuszakiVizsgaDatum", TODAY.plusYears(1));
        r.Update();
        r.Close();
        ui.clear();
        main.Uzemelteto.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(flags()).containsExactly(true, false);
        assertThat(main.DBGrid1.Visible()).isTrue();
        assertThat(main.DBGrid1.rowCount()).isEqualTo(1);
    }

    // ---- the rest of the start-up ----

    @Test
    void limitIsTodayMinusNDays() {
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusDays(9));
        vehicle(2, "BBB222", "MuszakiVizsgaDatum", TODAY.plusDays(5));
        start();
        assertThat(ui.messages).isEmpty();
        assertThat(main.DTPicker1.Value()).isEqualTo(TODAY.minusDays(10));
    }

    @Test
    void limitDayItselfIsCaught() {
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.minusDays(9));
        vehicle(2, "BBB222", "MuszakiVizsgaDatum", TODAY.plusDays(5));
        vehicle(3, "CCC333", "MuszakiVizsgaDatum", TODAY.minusDays(10));
        start();
        assertThat(ui.messages).containsExactly(INSPECTION);
        assertThat(flags()).containsExactly(false, false, true);
    }

    @Test
    void onReturnTheRemindersTestTheWarnedListAsTheProgramDoes() {
        // step 4 tests JarmuData's set as it stands: on a return that is step 8's warned list, so with no
        // warned vehicle the reminders don't run until the next start (kept as the program does it)
        operator("Teszt Kft.");
        parameters(10, 0, 0, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.plusDays(9));
        start();
        assertThat(ui.messages).isEmpty();
        vehicle(2, "BBB222", "MuszakiVizsgaDatum", TODAY.minusDays(30));
        main.UtTav.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(flags()).containsExactly(false, false);
        // once a vehicle is warned (and the warned list has been read again), the reminders run on each return
        insert("Kerova.dsb", "Jarmuvek", "recordID", 3, "GkFrsz", "CCC333", "Figyelmeztetés", true);
        main.UtTav.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(main.DBGrid1.Visible()).isTrue();
        main.UtTav.fireClick();
        assertThat(ui.messages).containsExactly(INSPECTION);
        assertThat(flags()).containsExactly(false, true, true);
    }

    @Test
    void theThreeStatementsOnParameterColumnsFailAndActOnThePreviousSet() {
        // the statements are kept as written; Jarmuvek has no such columns, the Refresh fails, the error is
        // ignored and JarmuData keeps the inspection reminder's set: each reminder repeats on those vehicles
        operator("Teszt Kft.");
        parameters(10, 10, 10, 10, 10, 0, 0, 0, 0, 0);
        LocalDateTime old = TODAY.minusYears(3);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", old, "TachográfHitelesités", old, "TachoOMHEng", old,
                "ZoldkartyaDatum", old);
        vehicle(2, "BBB222", "MuszakiVizsgaDatum", TODAY.plusYears(1), "TachográfHitelesités", old);
        start();
        assertThat(ui.messages).containsExactly(INSPECTION,
                new ScriptedUi.Message(KerovaX.TACHO_CALIBRATION_TEXT, 48, "FIGYELEM!"),
                new ScriptedUi.Message(KerovaX.TACHO_PERMIT_TEXT, 48, "FIGYELEM!"),
                new ScriptedUi.Message(KerovaX.INSURANCE_CARD_TEXT, 48, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(4);
        assertThat(flags()).containsExactly(true, false);
        assertThat(main.JarmuData.RecordSource())
                .isEqualTo("select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void aFailingReminderWithNoSetBeforeItActsOnTheWholeTable() {
        operator("Teszt Kft.");
        parameters(0, 0, 10, 0, 0, 0, 0, 0, 0, 0);
        vehicle(1, "AAA111", "MuszakiVizsgaDatum", TODAY.plusYears(1));
        start();
        assertThat(ui.messages).containsExactly(
                new ScriptedUi.Message(KerovaX.TACHO_CALIBRATION_TEXT, 48, "FIGYELEM!"));
        assertThat(flags()).containsExactly(true);
    }

    @Test
    void theTenParametersAreReadByOrdinalFromTheLastRow() {
        operator("Teszt Kft.");
        parameters(1, 2, 3, 4, 5, 6, 7, 8, 9, 10);
        parameters(0, 12, 0, 0, 0, 16, 17, 18, 19, 20);
        start();
        assertThat(Globals.WarnInspectionDays).isEqualTo((short) 0);
        assertThat(Globals.WarnGreenCardDays).isEqualTo((short) 12);
        assertThat(Globals.WarnTachoCalibrationDays).isEqualTo((short) 0);
        assertThat(Globals.WarnInspectionKm).isEqualTo(16);
        assertThat(Globals.WarnOilChangeKm).isEqualTo(17);
        assertThat(Globals.WarnServiceLogKm).isEqualTo(18);
        assertThat(Globals.WarnDrivetrainOilKm).isEqualTo(19);
        assertThat(Globals.WarnTimingBeltKm).isEqualTo(20);
        assertThat(Globals.ProductName).isEqualTo("Kerova");
        assertThat(Globals.AccessLevel).isZero();
    }

    @Test
    void allowancePathsAndFixedUnit() {
        operator("Teszt Kft.");
        insert("parameter.dsb", "Path", "InterfacePath", "C:\\if", "PolcrakPath", "C:\\polcrak",
                "FogastorPath", "C:\\fogas", "BizonylaNextPath", "C:\\biz");
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "db", "Állandó", false);
        insert("parameter.dsb", "MennyisegiEgyseg", "MennyiségiEgység", "tonna", "Állandó", true);
        start();
        // Egyebek was empty: a row was created
        assertThat(rows("parameter.dsb", "Egyebek")).hasSize(1);
        assertThat(Globals.FixedAllowanceCurrency).isEmpty();
        assertThat(Globals.InterfacePathValue).isEqualTo("C:\\if");
        assertThat(Globals.PolcrakPathValue).isEqualTo("C:\\polcrak");
        assertThat(Globals.FogastorPathValue).isEqualTo("C:\\fogas");
        assertThat(Globals.BizonylaPathValue).isEqualTo("C:\\biz");
        assertThat(Globals.FixedUnit).isEqualTo("tonna");
        assertThat(main.Label14.Caption()).isEqualTo("tonna");
    }

    @Test
    void fixedAllowanceFromEgyebek() {
        operator("Teszt Kft.");
        insert("parameter.dsb", "Egyebek", "Napidíj", 7.5, "NapidíjDevizanem", "EUR");
        start();
        assertThat(Globals.FixedAllowance).isEqualTo(7.5);
        assertThat(Globals.FixedAllowanceCurrency).isEqualTo("EUR");
        assertThat(main.Label16.Caption()).isEqualTo("7,5");
        assertThat(main.Label17.Caption()).isEqualTo("EUR");
        assertThat(Globals.FixedUnit).isEmpty();
    }

    @Test
    void aFolderWithoutDatabasesGivesTheMessageAndNoCrash() {
        AccessFile.closeAll();
        java.nio.file.Path empty = dir.resolve("ures");
        try {
            java.nio.file.Files.createDirectories(empty);
        } catch (java.io.IOException e) {
            throw new RuntimeException(e);
        }
        AccessFile.setWorkingFolder(empty);
        start();
        assertThat(ui.messages).containsExactly(new ScriptedUi.Message(
                "Olyan könyvtárban van, amelyikben nincsenek adatbázisok!", 16,
                "FIGYELEM! Válasszon másik megbízó adatszolgáltató alkönyvtárat!"));
        assertThat(ui.log.indexOf("beep")).isLessThan(ui.log.indexOf("msg:" + KerovaX.NO_DB_TEXT));
        assertThat(main.isLoaded()).isTrue();
        assertThat(Globals.ProductName).isEqualTo("Kerova");
        // the menus stay available; a menu form opens and the message comes again on return
        ui.clear();
        main.UtTav.fireClick();
        assertThat(ui.messages).hasSize(1);
    }

    @Test
    void kilepesClosesTheSourcesAndEndsTheProcess() {
        operator("Teszt Kft.");
        start();
        assertThatThrownBy(() -> main.Kilepes.fireClick()).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.exited).isTrue();
        assertThat(main.isLoaded()).isFalse();
        assertThat(main.JarmuData.Recordset().isClosed()).isTrue();
        assertThat(main.PathData.Recordset().isClosed()).isTrue();
        assertThat(main.ParameterData.Recordset().isClosed()).isTrue();
        assertThat(main.EgyebParameterData.Recordset().isClosed()).isTrue();
        assertThat(main.MennyEgysData.Recordset().isClosed()).isFalse();
    }

    @Test
    void theCloseBoxTakesTheExit() {
        operator("Teszt Kft.");
        start();
        assertThatThrownBy(() -> main.closeBox()).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.exited).isTrue();
        assertThat(main.CloseGuard).isFalse();
    }

    @Test
    void menusButtonsAndCaptions() {
        KerovaX k = new KerovaX();
        assertThat(k.Caption()).startsWith("Kerova");
        assertThat(k.Label1.Caption()).isEqualTo("Kerova Jármű-, Szerviz- és Útnyilvántartó Adatbázis");
        assertThat(k.Label13.Caption()).isEqualTo("Állandó (görgetett) mennyiségi egység:");
        assertThat(k.Label15.Caption()).isEqualTo("Állandó (görgetett) napidíj és pénzneme:");
        assertThat(k.DBGrid1.Caption()).isEqualTo("FIGYELMEZTETÉSI LISTA!");
        assertThat(k.DBGrid1.columns()).extracting(c -> c.DataField()).containsExactly(KerovaX.GRID_COLUMNS);
        assertThat(k.menus()).extracting(Menu::getName)
                .containsExactly("Torzsek", "GKAdatbe", "Lekerdezes", "UaKtsg", "AdatSzerviz", "GkHelp", "Kilepes");
        assertThat(k.menus()).extracting(Menu::Caption).containsExactly("&Törzsek", "&Adatbevitel",
                "&Lekérdezés, nyomtatás", "&Üzemanyagköltség kalkulátor", "S&zerviz", "&Segédlet", "&Kilépés");
        assertThat(k.Torzsek.items()).extracting(Menu::Caption).containsExactly("Távolságok", "Járművek", "Vezetők",
                "Beszállítók (partnerek)", "Megnevezések", "Nyilvántartó adatai", "Cikkszámok - Alkatrészek",
                "Paraméter adatok");
        assertThat(k.GKAdatbe.items()).extracting(Menu::Caption).containsExactly("Útnyilvántartás",
                "Kilométer nyilvántartás", "Számla rögzítése", "Szerviz (műhely) modul");
        assertThat(k.Kezik.Caption()).isEqualTo("Kézikönyv");
        assertThat(List.of(k.Command1.Caption(), k.Command2.Caption(), k.Command3.Caption(), k.Command4.Caption(),
                k.Command5.Caption(), k.Command6.Caption())).containsExactly("Kilépés", "Segédlet", "Szerviz",
                "Üzemanyagköltség kalkulátor", "Lekérdezés, nyomtatás", "Útnyilvántartás");
    }
}
