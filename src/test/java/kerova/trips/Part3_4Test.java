package kerova.trips;

import static org.assertj.core.api.Assertions.assertThat;

import java.time.LocalDateTime;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import kerova.core.Globals;
import kerova.core.db.Database;
import kerova.core.form.DBGrid;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import kerova.vehicles.GKTorzsFormX;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/** Part 3.4: the driver master and its assigned vehicles, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part3_4Test extends FormTestBase {
    static final LocalDateTime TODAY = NOW.toLocalDate().atStartOfDay();

    VezetokTorzsFormX form;

    @BeforeEach
    void setUp() {
        DriverGlobals.reset();
    }

    /** A driver row with its PartnerID; further column pairs may follow. */
    static void driver(String name, int partnerId, Object... more) {
        List<Object> p = new ArrayList<>(Arrays.asList("VezetöNeve", name, "PartnerID", partnerId));
        p.addAll(Arrays.asList(more));
        insert("Kerova.dsb", "Vezetok", p.toArray());
    }

    static void assigned(int driverId, String plate) {
        insert("Tartosan.dsb", "VezetokJarmuvei", "VezetöID", driverId, "Rendszám", plate);
    }

    static List<Object> col(String column) {
        return column("Kerova.dsb", "Vezetok", column);
    }

    static List<String> assignments() {
        List<String> out = new ArrayList<>();
        for (Object[] r : rows("Tartosan.dsb", "VezetokJarmuvei")) {
            out.add(r[0] + ":" + r[1]);
        }
        return out;
    }

    /** Another user empties the table behind the form. */
    static void deleteAllDrivers() {
        var r = Database.open("Kerova.dsb").OpenRecordset("Vezetok");
        while (r.RecordCount() > 0) {
            r.MoveFirst();
            r.Delete();
            r.Requery();
        }
        r.Close();
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    /** Opens the form as the main menu does. */
    VezetokTorzsFormX open() {
        Globals.CurrentFormName = "";
        form = Forms.put(new VezetokTorzsFormX());
        form.Show();
        return form;
    }

    /** The names in the driver grid, top to bottom. */
    List<String> gridNames() {
        List<String> out = new ArrayList<>();
        DBGrid.Column c = form.DBGrid1.Columns(0);
        for (int i = 0; i < form.DBGrid1.rowCount(); i++) {
            out.add(form.DBGrid1.cellText(i, c));
        }
        return out;
    }

    List<String> assignedGrid() {
        List<String> out = new ArrayList<>();
        DBGrid.Column c = form.DBGrid2.Columns(0);
        for (int i = 0; i < form.DBGrid2.rowCount(); i++) {
            out.add(form.DBGrid2.cellText(i, c));
        }
        return out;
    }

    // ---------------------------------------------------------------- the form

    @Test
    void titleCaptionsTipsSourcesAndBindings() {
        driver("Kovács Béla", 1, "JogositványSzáma", "AB123456", "JogositványÉrvényessége", TODAY.plusYears(2),
                "Munkakör", "gépkocsivezető", "LakcimIrSzám", "9730", "LakcimSzékhely", "Kőszeg",
                "LakcimCim", "Fő tér 1.", "Elérhetöség", "+36 30 123 4567", "Munkáltató", "Kerekes Fuvarozó Kft.",
                "MunkáltatóID", 4, "Adóazonositó", "8412345678", "TAJSzám", "123456789", "SzületésiHely", "Győr",
                "SzületésiIdö", LocalDateTime.of(1975, 3, 14, 0, 0), "AnyjaNeve", "Szűcs Ilona", "Aktiv", true,
                "GépkocsiFrsz", "ABC-123", "GkID", 3);
        assigned(1, "ABC-123");
        open();
        assertThat(form.Caption()).isEqualTo("Járművezető adatai törzs Tartosan");
        assertThat(form.VezetoData.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(form.VezetoData.RecordSource()).isEqualTo("select * from Vezetok order by VezetöNeve");
        assertThat(form.JarmuData.DatabaseName()).isEqualTo("Tartosan.dsb");
        assertThat(form.DBGrid1.Caption()).isEqualTo("Járművezetők");
        assertThat(form.DBGrid2.Caption()).isEqualTo("Vezető járművei");
        assertThat(List.of(form.Command1, form.Command2, form.Command3, form.Command4, form.Command5, form.Command6,
                form.Command7, form.Command8, form.Command9, form.Command10, form.Command11, form.Command12))
                .extracting(c -> c.Caption())
                .containsExactly("OK-Mentés", "Új jármű", "Törlés", "Frissít", "Új adat", "Csak aktívak (szűrés)",
                        "Szűrés kikapcsolása", "Adatátadás", "Adatsor végleges törlése", "Kilépés", "Segédlet (Help)",
                        "Partnertörzs");
        assertThat(form.Command2.ToolTipText()).isEqualTo("Járművezetőhöz jármű rendelése");
        assertThat(form.Command3.ToolTipText()).isEqualTo("Jármű törlése");
        assertThat(form.Check1.Caption()).isEqualTo("NEM aktív");
        assertThat(((kerova.core.form.Label) form.control("Label13Caption")).Caption()).isEqualTo("MunkaltatoID");
        assertThat(((kerova.core.form.Label) form.control("Text13Caption")).Caption()).isEqualTo("Névre keresés");
        assertThat(((kerova.core.form.Label) form.control("DTPicker1Caption")).Caption())
                .isEqualTo("Jogosítvány lejárata");
        assertThat(((kerova.core.form.Label) form.control("Text1Caption")).Caption()).isEqualTo("Név");

        assertThat(form.Label17.Caption()).isEqualTo("1");
        assertThat(form.Text1.Text()).isEqualTo("Kovács Béla");
        assertThat(form.Text2.Text()).isEqualTo("AB123456");
        assertThat(form.DTPicker1.Value()).isEqualTo(TODAY.plusYears(2));
        assertThat(form.Text3.Text()).isEqualTo("gépkocsivezető");
        assertThat(form.Text4.Text()).isEqualTo("9730");
        assertThat(form.Text5.Text()).isEqualTo("Kőszeg");
        assertThat(form.Text6.Text()).isEqualTo("Fő tér 1.");
        assertThat(form.Text7.Text()).isEqualTo("+36 30 123 4567");
        assertThat(form.Text8.Text()).isEqualTo("Kerekes Fuvarozó Kft.");
        assertThat(form.Label13.Caption()).isEqualTo("4");
        assertThat(form.Text9.Text()).isEqualTo("8412345678");
        assertThat(form.Text10.Text()).isEqualTo("123456789");
        assertThat(form.Text11.Text()).isEqualTo("Győr");
        assertThat(form.DTPicker2.Value()).isEqualTo(LocalDateTime.of(1975, 3, 14, 0, 0));
        assertThat(form.Text12.Text()).isEqualTo("Szűcs Ilona");
        assertThat(form.Check1.Value()).isEqualTo(1);
        assertThat(form.Label7.Caption()).isEqualTo("1");
        assertThat(form.Label8.Caption()).isEqualTo("1");
        assertThat(form.Label18.Caption()).isEqualTo("ABC-123");
        assertThat(form.TodayLabel.Caption()).isEqualTo("2026.11.23.");
        assertThat(form.DBGrid1.columns()).extracting(DBGrid.Column::DataField).contains("GépkocsiFrsz", "GkID");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theButtonsRunTheirMenuEntries() {
        List<String> ran = new ArrayList<>();
        open();
        form.OKMent.Click = () -> ran.add("OKMent");
        form.Frissites.Click = () -> ran.add("Frissites");
        form.UjAdat.Click = () -> ran.add("UjAdat");
        form.CsakAktiv.Click = () -> ran.add("CsakAktiv");
        form.SzuresSKI.Click = () -> ran.add("SzuresSKI");
        form.AtadaS.Click = () -> ran.add("AtadaS");
        form.Torl_s.Click = () -> ran.add("Torl_s");
        form.Kilepes.Click = () -> ran.add("Kilepes");
        form.Segedlet.Click = () -> ran.add("Segedlet");
        for (var b : List.of(form.Command1, form.Command4, form.Command5, form.Command6, form.Command7, form.Command8,
                form.Command9, form.Command10, form.Command11)) {
            b.fireClick();
        }
        assertThat(ran).containsExactly("OKMent", "Frissites", "UjAdat", "CsakAktiv", "SzuresSKI", "AtadaS",
                "Torl_s", "Kilepes", "Segedlet");
    }

    @Test
    void anEmptyTableGetsARowOnOpeningWithTodayAsLicenceExpiryAndItsOwnKey() {
        open();
        assertThat(col("Sorszám")).hasSize(1);
        assertThat(form.DTPicker1.Value()).isEqualTo(TODAY);
        assertThat(form.Label7.Caption()).isEqualTo(form.Label17.Caption());
        // Form_Activate again (back from a modal child) adds nothing
        ui.whenShown(VezetokTorzsFormX.PARTNER_FORM, f -> f.Unload());
        form.Command12.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
        form.Kilepes.fireClick();
        assertThat(col("PartnerID")).isEqualTo(col("Sorszám"));
        assertThat(col("JogositványÉrvényessége")).containsExactly(TODAY);
        assertThat(col("VezetöNeve")).containsOnlyNulls();
    }

    @Test
    void focusColours() {
        open();
        for (var box : List.of(form.Text1, form.Text8, form.Text13)) {
            box.fireGotFocus();
            assertThat(box.BackColor()).isEqualTo(0xFFFF80);
            box.fireLostFocus();
            assertThat(box.BackColor()).isEqualTo(RecordForm.REST_COLOR);
        }
        // no key filter is named: a letter passes into the postal code
        assertThat(form.Text4.fireKeyPress('A')).isEqualTo('A');
    }

    // ---------------------------------------------------------------- new row and save

    @Test
    void aNewRowHasTheOperatorsNameAsEmployerAndTwoClicksMakeTwoRows() {
        driver("Kovács Béla", 1);
        Globals.OperatorName = "Kerekes Fuvarozó Kft.";
        open();
        form.UjAdat.fireClick();
        assertThat(col("Sorszám")).hasSize(2);
        assertThat(form.Text8.Text()).isEqualTo("Kerekes Fuvarozó Kft.");
        assertThat(form.Text1.Text()).isEmpty();
        assertThat(form.focused()).isSameAs(form.Text1);
        form.Text1.setText("Őri Ödön");
        form.Command5.fireClick();
        assertThat(col("Sorszám")).hasSize(3);
        form.Kilepes.fireClick();
        assertThat(col("VezetöNeve")).containsExactly("Kovács Béla", "Őri Ödön", null);
        assertThat(col("Munkáltató")).containsExactly(null, "Kerekes Fuvarozó Kft.", "Kerekes Fuvarozó Kft.");
        assertThat(col("PartnerID")).isEqualTo(col("Sorszám"));
    }

    @Test
    void saveStoresTheEditAndStaysOnTheRow() {
        driver("Antal Ádám", 1);
        driver("Bodnár Űrsula", 2);
        driver("Csonka Csaba", 3);
        open();
        form.Text13.setText("Bod");
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        form.Text3.setText("raktáros");
        form.Check1.setValue(1);
        form.Command1.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        assertThat(col("Munkakör")).containsExactly(null, "raktáros", null);
        assertThat(col("Aktiv")).containsExactly(false, true, false);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void saveWithNoRowWorksAsNewRow() {
        driver("Antal Ádám", 1);
        open();
        deleteAllDrivers();
        form.VezetoData.Refresh();
        form.OKMent.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
    }

    // ---------------------------------------------------------------- filters

    @Test
    void check1TickedHidesTheDriverFromCsakAktivak() {
        driver("Antal Ádám", 1, "Aktiv", false);
        driver("Bodnár Űrsula", 2, "Aktiv", true);
        driver("Csonka Csaba", 3);
        open();
        // tick "NEM aktív" for Csonka on the form: from now on he is hidden
        form.Text13.setText("Cso");
        form.Check1.setValue(1);
        form.CsakAktiv.fireClick();
        assertThat(form.VezetoData.RecordSource())
                .isEqualTo("select * from Vezetok where Aktiv = False order by VezetöNeve");
        assertThat(gridNames()).containsExactly("Antal Ádám");
        assertThat(form.Text1.Text()).isEqualTo("Antal Ádám");
        assertThat(form.CsakAktiv.Checked()).isTrue();
        assertThat(form.SzuresSKI.Checked()).isFalse();
        assertThat(ui.messages).isEmpty();

        form.SzuresSKI.fireClick();
        assertThat(form.VezetoData.RecordSource()).isEqualTo("select * from Vezetok order by VezetöNeve");
        assertThat(gridNames()).containsExactly("Antal Ádám", "Bodnár Űrsula", "Csonka Csaba");
        assertThat(form.Text1.Text()).isEqualTo("Antal Ádám");
        assertThat(form.CsakAktiv.Checked()).isFalse();
        assertThat(form.SzuresSKI.Checked()).isTrue();
    }

    @Test
    void noActiveDriverWarnsUnticksAndResetsTheList() {
        driver("Antal Ádám", 1, "Aktiv", true);
        driver("Bodnár Űrsula", 2, "Aktiv", true);
        open();
        form.SzuresSKI.setChecked(true);
        form.Command6.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs AKTÍV járművezető!", 48, "FIGYELEM!"));
        assertThat(ui.log.get(ui.log.indexOf("msg:Nincs AKTÍV járművezető!") - 1)).isEqualTo("beep");
        assertThat(form.CsakAktiv.Checked()).isFalse();
        assertThat(form.SzuresSKI.Checked()).isFalse();
        assertThat(form.VezetoData.RecordSource()).isEqualTo("select * from Vezetok order by VezetöNeve");
        assertThat(gridNames()).containsExactly("Antal Ádám", "Bodnár Űrsula");
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void filterOffWithNoDriverOffersANewRow() {
        driver("Antal Ádám", 1);
        open();
        deleteAllDrivers();
        ui.answer(VbConst.vbNo);
        form.SzuresSKI.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs járművezető! Visz fel ÚJ adatot?", 4, "FIGYELEM!"));
        assertThat(col("Sorszám")).isEmpty();
        assertThat(form.isLoaded()).isTrue();
        ui.answer(VbConst.vbYes);
        form.SzuresSKI.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
    }

    @Test
    void refreshKeepsTheRowAndTurnsTheFilterOff() {
        driver("Antal Ádám", 1);
        driver("Bodnár Űrsula", 2);
        driver("Csonka Csaba", 3);
        open();
        form.CsakAktiv.fireClick();
        form.Text13.setText("Bod");
        form.Text7.setText("bodnar@példa.hu");
        form.Command4.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        assertThat(form.SzuresSKI.Checked()).isTrue();
        assertThat(form.CsakAktiv.Checked()).isFalse();
        assertThat(col("Elérhetöség")).containsExactly(null, "bodnar@példa.hu", null);
    }

    // ---------------------------------------------------------------- assigned vehicles

    @Test
    void theAssignedListFollowsTheDriver() {
        driver("Antal Ádám", 10);
        driver("Bodnár Űrsula", 20);
        assigned(10, "AAA-111");
        assigned(20, "BBB-222");
        assigned(10, "CCC-333");
        open();
        assertThat(form.Text1.Text()).isEqualTo("Antal Ádám");
        assertThat(assignedGrid()).containsExactly("AAA-111", "CCC-333");
        assertThat(form.JarmuData.RecordSource()).isEqualTo("select * from VezetokJarmuvei where VezetöID = 10");
        form.Text13.setText("Bod");
        assertThat(assignedGrid()).containsExactly("BBB-222");
        assertThat(form.Label18.Caption()).isEqualTo("BBB-222");
    }

    @Test
    void aVehicleAssignmentIsStoredInAnotherFileThanTheDriverAndNothingChecksThem() {
        insert("Kerova.dsb", "Jarmuvek", "recordID", 7, "GkFrsz", "KŐS-777", "GkTipus", "Ford Transit",
                "MuszakiVizsgaDatum", TODAY.plusYears(1), "KotelezoBiztDatum", TODAY.plusYears(1));
        driver("Antal Ádám", 10);
        driver("Bodnár Űrsula", 20);
        assigned(99, "XXX-999"); // a driver who doesn't exist: nothing notices
        open();
        form.Text13.setText("Bod");
        ui.whenShown(GKTorzsFormX.NAME, f -> {
            assertThat(Globals.CurrentFormName).isEqualTo("VezetokTorzsFormX");
            ((GKTorzsFormX) f).Valaszt.fireClick();
        });
        form.Command2.fireClick();
        assertThat(ui.log).contains("modal:GKTorzsFormX");
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        assertThat(assignedGrid()).containsExactly("KŐS-777");
        assertThat(form.Label8.Caption()).isEqualTo("20");
        assertThat(assignments()).containsExactly("99:XXX-999", "20:KŐS-777");
        assertThat(col("GépkocsiFrsz")).containsExactly(null, "KŐS-777");
        assertThat(col("GkID")).containsExactly(null, 7);
        // the driver goes: his assignment stays in Tartosan.dsb
        ui.answer(VbConst.vbYes);
        form.Torl_s.fireClick();
        assertThat(col("VezetöNeve")).containsExactly("Antal Ádám");
        assertThat(assignments()).containsExactly("99:XXX-999", "20:KŐS-777");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void noVehiclePickedAssignsNothing() {
        driver("Antal Ádám", 10);
        open();
        ui.whenShown(GKTorzsFormX.NAME, f -> f.Unload());
        form.Command2.fireClick();
        assertThat(assignments()).isEmpty();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void removingAnAssignmentAsksFirstAndWithoutOneWarns() {
        driver("Antal Ádám", 10);
        assigned(10, "AAA-111");
        assigned(10, "BBB-222");
        open();
        ui.answer(VbConst.vbNo);
        form.Command3.fireClick();
        assertThat(assignments()).hasSize(2);
        ui.answer(VbConst.vbYes);
        form.Command3.fireClick();
        assertThat(assignments()).containsExactly("10:BBB-222");
        assertThat(ui.messages).containsExactly(
                msg("Törli a kijelölt jármű adatsort?", 36, "FIGYELEM! Végleges törlés!"),
                msg("Törli a kijelölt jármű adatsort?", 36, "FIGYELEM! Végleges törlés!"));
        ui.clear();
        form.JarmuData.Refresh();
        ui.answer(VbConst.vbYes);
        form.Command3.fireClick();
        assertThat(assignments()).isEmpty();
        ui.clear();
        form.JarmuData.Refresh();
        form.Command3.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs adat, vagy nem jelölt ki adatsort!", 48, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(1);
    }

    // ---------------------------------------------------------------- delete

    @Test
    void deletingADriverAsksAndMovesOn() {
        driver("Antal Ádám", 1);
        driver("Bodnár Űrsula", 2);
        driver("Csonka Csaba", 3);
        open();
        assertThat(form.Text1.Text()).isEqualTo("Antal Ádám");
        ui.answer(VbConst.vbNo);
        form.Command9.fireClick();
        assertThat(col("VezetöNeve")).hasSize(3);
        ui.answer(VbConst.vbYes);
        form.Command9.fireClick();
        assertThat(col("VezetöNeve")).containsExactly("Bodnár Űrsula", "Csonka Csaba");
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        assertThat(ui.messages).containsOnly(
                msg("Valóban véglegesen törli a kijelölt adatsort?", 36, "FIGYELEM! Végleges törlés!"));
        // the last one in the list: MoveLast after the end
        form.Text13.setText("Cso");
        ui.answer(VbConst.vbYes);
        form.Torl_s.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
    }

    @Test
    void deletingTheLastDriverAndAnsweringNoLeavesTheForm() {
        driver("Antal Ádám", 1);
        open();
        ui.answer(VbConst.vbYes).answer(VbConst.vbNo);
        form.Torl_s.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Valóban véglegesen törli a kijelölt adatsort?", 36, "FIGYELEM! Végleges törlés!"),
                msg("Minden adat törölve (Deleted All)! Kér új adatot (New)?", 4, "FIGYELEM!"));
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.CloseGuard).isFalse();
        assertThat(form.VezetoData.Recordset().isClosed()).isTrue();
        assertThat(form.JarmuData.Recordset().isClosed()).isTrue();
        assertThat(col("Sorszám")).isEmpty();
        assertThat(ui.log).contains("close:VezetokTorzsFormX");
    }

    @Test
    void deletingTheLastDriverAndAnsweringYesAddsARow() {
        driver("Antal Ádám", 1);
        open();
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        form.Torl_s.fireClick();
        assertThat(form.isLoaded()).isTrue();
        assertThat(col("VezetöNeve")).containsExactly((Object) null);
        assertThat(form.Text1.Text()).isEmpty();
    }

    // ---------------------------------------------------------------- searching and sorting

    @Test
    void theQuickSearchByNameGoesBackToTheLastHitOnAMiss() {
        driver("Antal Ádám", 1);
        driver("Bodnár Űrsula", 2);
        driver("Csonka Csaba", 3);
        open();
        form.Text13.setText("B");
        assertThat(form.Text1.Text()).isEqualTo("Bodnár Űrsula");
        form.Text13.setText("Cs");
        assertThat(form.Text1.Text()).isEqualTo("Csonka Csaba");
        form.Text13.setText("Csx");
        assertThat(form.Text1.Text()).isEqualTo("Csonka Csaba");
        form.Text13.setText("");
        assertThat(form.Text1.Text()).isEqualTo("Csonka Csaba");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void aHeaderClickSortsAndTheNextOneAddsDesc() {
        driver("Bodnár Űrsula", 2, "Munkakör", "b");
        driver("Antal Ádám", 1, "Munkakör", "c");
        driver("Csonka Csaba", 3, "Munkakör", "a");
        open();
        assertThat(gridNames()).containsExactly("Antal Ádám", "Bodnár Űrsula", "Csonka Csaba");
        form.DBGrid1.fireHeadClick(0);
        assertThat(form.VezetoData.Recordset().Sort()).isEqualTo("VezetöNeve");
        form.DBGrid1.fireHeadClick(0);
        assertThat(form.VezetoData.Recordset().Sort()).isEqualTo("VezetöNeve DESC");
        assertThat(gridNames()).containsExactly("Csonka Csaba", "Bodnár Űrsula", "Antal Ádám");
        form.DBGrid1.fireHeadClick(3);
        assertThat(gridNames()).containsExactly("Csonka Csaba", "Bodnár Űrsula", "Antal Ádám");
        form.DBGrid1.fireHeadClick(3);
        assertThat(gridNames()).containsExactly("Antal Ádám", "Bodnár Űrsula", "Csonka Csaba");
    }

    // ---------------------------------------------------------------- hand-overs, help, leaving

    @Test
    void adatatadasHandsOverNameKeyRegistrationAndEmployer() {
        driver("Antal Ádám", 10, "Munkáltató", "Kőszegi Kft.");
        assigned(10, "AAA-111");
        Globals.CurrentFormName = "UtNyilvantartasFormX";
        ui.whenShown(VezetokTorzsFormX.NAME, f -> {
            assertThat(Globals.PickDone).isZero();
            ((VezetokTorzsFormX) f).Command8.fireClick();
        });
        Forms.get(VezetokTorzsFormX.NAME).Show(true);
        assertThat(Globals.PickDone).isEqualTo((short) 1);
        assertThat(DriverGlobals.PickedDriverName).isEqualTo("Antal Ádám");
        assertThat(DriverGlobals.PickedDriverID).isEqualTo(10.0);
        assertThat(DriverGlobals.PickedDriverVehicle).isEqualTo("AAA-111");
        assertThat(DriverGlobals.PickedDriverEmployer).isEqualTo("Kőszegi Kft.");
        assertThat(Forms.get(VezetokTorzsFormX.NAME).isLoaded()).isFalse();
    }

    @Test
    void partnertorzsOpensThePartnerFormAndAPassedNameGoesToText8() {
        driver("Antal Ádám", 10);
        insert("Kerova.dsb", "beraktar", "recordID", 1, "BerNev", "Zala Szerviz Bt.");
        open();
        // the real partner master, left by its close box: it passes nothing, Text8 stays
        ui.answer(VbConst.vbNo); // its "Kéri az adatok teljes ellenőrzését?"
        form.Command12.fireClick();
        assertThat(ui.log).contains("modal:BeraktarozokFormX");
        assertThat(form.Text8.Text()).isEmpty();
        assertThat(Globals.CurrentFormName).isEqualTo("VezetokTorzsFormX");
        // a partner form that passes a row
        ui.whenShown(VezetokTorzsFormX.PARTNER_FORM, f -> {
            Globals.PickDone = 1;
            Globals.PickedPartnerName = "Zala Szerviz Bt.";
            f.Unload();
        });
        form.Command12.fireClick();
        assertThat(form.Text8.Text()).isEqualTo("Zala Szerviz Bt.");
        assertThat(form.Text1.Text()).isEqualTo("Antal Ádám");
        form.Kilepes.fireClick();
        assertThat(col("Munkáltató")).containsExactly("Zala Szerviz Bt.");
    }

    @Test
    void helpOpensTheFormsTopic() {
        open();
        form.Command11.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("VezetokTorzsFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
    }

    @Test
    void theCloseBoxLeavesAsKilepesOnceAndStoresThePendingEdit() {
        driver("Antal Ádám", 1);
        open();
        form.Text2.setText("XY987654");
        form.closeBox();
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.CloseGuard).isFalse();
        assertThat(form.VezetoData.Recordset().isClosed()).isTrue();
        assertThat(form.JarmuData.Recordset().isClosed()).isTrue();
        assertThat(col("JogositványSzáma")).containsExactly("XY987654");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.log.stream().filter(s -> s.equals("close:VezetokTorzsFormX"))).hasSize(1);
    }
}
