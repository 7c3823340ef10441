package kerova.workshop;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.List;
import java.util.stream.Collectors;
import kerova.core.Globals;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.DBGrid;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.print.ListPageForm;
import kerova.core.print.PageForm;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 6.2: the mechanics, jobs and parts masters, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part6_2Test extends FormTestBase {
    static final String DB = "Kerova.dsb";

    static void mechanic(String name, String code) {
        insert(DB, "SzervizModulSzerelok", "SzerelöNeve", name, "SzerelöKódja", code);
    }

    static void job(String name, String code) {
        insert(DB, "SzervizModulMunkak", "MunkaMegnevezés", name, "MunkaKód", code);
    }

    static List<String> mechanics() {
        return rows(DB, "SzervizModulSzerelok").stream().map(r -> r[0] + "|" + r[1]).collect(Collectors.toList());
    }

    /** The log rows as "action|form". */
    static List<String> log() {
        return rows("Regiszt.dsb", "Regisztrálás").stream().map(r -> r[4] + "|" + r[7]).collect(Collectors.toList());
    }

    /** Another user empties a table. */
    static void emptyTable(String table) {
        Recordset r = Database.open(DB).OpenRecordset(table);
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

    static <T extends WorkshopMasterForm> T open(T form) {
        Forms.put(form).Show();
        return form;
    }

    void threeMechanics() {
        mechanic("Kovács Péter", "K1");
        mechanic("Szőke Ödön", "SZ7");
        mechanic("Nagy Tűző", "N3");
    }

    // ---------------------------------------------------------------- the forms

    @Test
    void theMechanicsFormHasTheSharedControlsAndItsOwnColumn() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        assertThat(f.Caption()).isEqualTo("Szerelők adatai - Kerova");
        assertThat(f.NyelvData.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(f.NyelvData.RecordSource()).isEqualTo("SzervizModulSzerelok");
        assertThat(f.RegisztData.DatabaseName()).isEqualTo("Regiszt.dsb");
        assertThat(f.RegisztData.RecordSource()).isEqualTo("Regisztrálás");
        assertThat(List.of(f.Command1.Caption(), f.Command2.Caption(), f.Command3.Caption()))
                .containsExactly("Új adat", "Töröl", "Vissza");
        assertThat(List.of(f.Command1.ToolTipText(), f.Command2.ToolTipText(), f.Command3.ToolTipText()))
                .containsExactly("Új adat, sor", "Kijelölt sort véglegesen törli", "Kiválaszt és helyettesít");
        assertThat(f.Label1.Caption()).isEqualTo("- gyorskereső");
        assertThat(f.Text1.ToolTipText()).isEqualTo("Névre keres");
        assertThat(f.DBGrid1.ToolTipText()).isEqualTo("Oszlopra kattintva rendez, sorba gépelve módosít");
        assertThat(f.menus().stream().map(m -> m.getName() + "=" + m.Caption()))
                .containsExactly("Mentes=&Mentés-OK", "Nyomtat=&Nyomtatás", "Segedlet=&Segédlet", "Kilepes=&Kilépés");
        assertThat(f.Text2.DataField()).isEqualTo("SzerelöNeve");
        assertThat(f.Text3.DataField()).isEqualTo("SzerelöKódja");
        assertThat(f.DBGrid1.columns().stream().map(c -> c.Caption() + "=" + c.DataField()))
                .containsExactly("Szerelő neve=SzerelöNeve", "Szerelő kódja=SzerelöKódja");
        // opening: the first row, CurrentFormName, and the log text left over from the vehicle form
        assertThat(f.Text2.Text()).isEqualTo("Kovács Péter");
        assertThat(f.focused()).isSameAs(f.Text2);
        assertThat(f.Text2.BackColor()).isEqualTo(RecordForm.FOCUS_COLOR);
        assertThat(Globals.CurrentFormName).isEqualTo("SzerelokFormX");
        assertThat(log()).containsExactly("Járművekbe belépés|SzerelokFormX");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theJobsAndPartsFormsDifferOnlyByThePartsTable() {
        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        assertThat(m.Caption()).isEqualTo("Munkák törzs - Kerova");
        assertThat(m.NyelvData.RecordSource()).isEqualTo("SzervizModulMunkak");
        assertThat(m.Text2.DataField()).isEqualTo("MunkaMegnevezés");
        assertThat(m.Label4.DataField()).isEqualTo("MunkaKód");
        assertThat(m.Label4.Caption()).isEqualTo("M1");
        assertThat(m.DBGrid1.columns().stream().map(DBGrid.Column::DataField)).containsExactly("MunkaMegnevezés", "MunkaKód");
        assertThat(Globals.CurrentFormName).isEqualTo("MunkakFormX");

        insert(DB, "SzervizModulAlkatreszek", "cikkszám", "FK-100", "megnevezés", "Fékbetét");
        AlkatreszekFormX a = open(new AlkatreszekFormX());
        assertThat(a.Caption()).isEqualTo("Alkatrészek saját törzs - Kerova");
        assertThat(a.NyelvData.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(a.NyelvData.RecordSource()).isEqualTo("SzervizModulAlkatreszek");
        assertThat(a.Text2.Text()).isEqualTo("Fékbetét");
        assertThat(a.Label4.Caption()).isEqualTo("FK-100");
        // Label5 names a column that the table lacks, and stands as it is: empty
        assertThat(a.Label5.DataField()).isEqualTo("MunkaMegnevezés");
        assertThat(a.Label5.Caption()).isEmpty();
        List<String> cols = a.DBGrid1.columns().stream().map(DBGrid.Column::DataField).collect(Collectors.toList());
        assertThat(cols).hasSize(53).doesNotContain("AFA", "SZJ", "TAM").startsWith("cikkszám", "megnevezés")
                .endsWith("DarabszámCsomagban", "JármüID");
        Recordset r = Database.open(DB).OpenRecordset("SzervizModulAlkatreszek");
        for (String c : cols) {
            assertThat(r.Fields(c).Name()).isEqualToIgnoringCase(c);
        }
        r.Close();
        assertThat(log()).containsExactly("MunkakFormX|MunkakFormX", "AlkatreszekFormX|AlkatreszekFormX");
    }

    // ---------------------------------------------------------------- opening an empty master

    @Test
    void anEmptyMasterAsksAndYesAddsARow() {
        ui.answer(VbConst.vbYes);
        SzerelokFormX f = open(new SzerelokFormX());
        assertThat(ui.messages).containsExactly(
                msg("Nincs még adat! Visz fel most új adatot?", VbConst.vbYesNo, "FIGYELEM!"));
        assertThat(f.isLoaded()).isTrue();
        assertThat(mechanics()).containsExactly("|");
        assertThat(f.Command1.BackColor()).isNotEqualTo(WorkshopMasterForm.WORKING_COLOR);
        assertThat(f.focused()).isSameAs(f.Text2);
        assertThat(log()).containsExactly("Szerelők új adat|SzerelokFormX", "Járművekbe belépés|SzerelokFormX");
    }

    // ---------------------------------------------------------------- edge: a pick in an empty master

    @Test
    void aPickInAnEmptyMasterLeavesTheServiceFormsFieldsUntouched() {
        // the service form's caller reads the slots after the modal opening (Part 6.1)
        Globals.PickedMechanicName = "Régi Szerelő";
        Globals.PickedMechanicCode = "R9";
        ui.answer(VbConst.vbNo);
        SzerelokFormX f = open(new SzerelokFormX());
        assertThat(f.isLoaded()).isFalse();
        assertThat(Globals.PickedMechanicName).isEqualTo("Régi Szerelő");
        assertThat(Globals.PickedMechanicCode).isEqualTo("R9");
        assertThat(mechanics()).isEmpty();

        // "Vissza" on a list whose rows are gone: the form closes and the slot stays as it was
        job("Olajcsere", "M1");
        Globals.PickedJobName = "";
        MunkakFormX m = open(new MunkakFormX());
        emptyTable("SzervizModulMunkak");
        m.NyelvData.Refresh();
        ui.clear();
        m.Command3.fireClick();
        assertThat(m.isLoaded()).isFalse();
        assertThat(Globals.PickedJobName).isEmpty();
        assertThat(m.Command3.BackColor()).isNotEqualTo(WorkshopMasterForm.WORKING_COLOR);
        assertThat(log()).containsExactly("MunkakFormX|MunkakFormX");
    }

    @Test
    void aPickLeavesTheCurrentRowInTheSlotsAndCloses() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.NyelvData.Recordset().MoveNext();
        f.Command3.fireClick();
        assertThat(f.isLoaded()).isFalse();
        assertThat(Globals.PickedMechanicName).isEqualTo("Szőke Ödön");
        assertThat(Globals.PickedMechanicCode).isEqualTo("SZ7");
        assertThat(log()).containsExactly("Járművekbe belépés|SzerelokFormX", "Szerelő kiválasztás|SzerelokFormX");

        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        m.Command3.fireClick();
        assertThat(Globals.PickedJobName).isEqualTo("Olajcsere");

        insert(DB, "SzervizModulAlkatreszek", "cikkszám", "FK-100", "megnevezés", "Fékbetét");
        AlkatreszekFormX a = open(new AlkatreszekFormX());
        a.Command3.fireClick();
        // the parts form hands its name over in the jobs' slot, as it stands
        assertThat(Globals.PickedJobName).isEqualTo("Fékbetét");
        assertThat(log()).endsWith("Munka kiválasztás|MunkakFormX", "AlkatreszekFormX|AlkatreszekFormX",
                "Alkatrésztörzs kiválasztás|AlkatreszekFormX");
    }

    // ---------------------------------------------------------------- edge: the code found exactly

    @Test
    void typingACodeFindsTheMechanicByTheExactCodeWhenNoNameBeginsWithIt() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.Text1.setText("Na");
        assertThat(f.Text2.Text()).isEqualTo("Nagy Tűző");
        // "SZ7": no name begins with it, the exact code finds Szőke Ödön
        f.Text1.setText("SZ7");
        assertThat(f.Text2.Text()).isEqualTo("Szőke Ödön");
        assertThat(f.Text3.Text()).isEqualTo("SZ7");
        // a prefix of a code isn't a code: back to the last hit
        f.Text1.setText("K");
        assertThat(f.Text2.Text()).isEqualTo("Kovács Péter");
        f.Text1.setText("SZ");
        assertThat(f.Text2.Text()).isEqualTo("Szőke Ödön");
        f.Text1.setText("X1");
        assertThat(f.Text2.Text()).isEqualTo("Szőke Ödön");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theJobsSearchHasTheOneKey() {
        job("Olajcsere", "M1");
        job("Fékjavítás", "M2");
        MunkakFormX m = open(new MunkakFormX());
        m.Text1.setText("Fék");
        assertThat(m.Text2.Text()).isEqualTo("Fékjavítás");
        // a code is no key here: the position stays at the last hit
        m.Text1.setText("M1");
        assertThat(m.Text2.Text()).isEqualTo("Fékjavítás");
    }

    // ---------------------------------------------------------------- new row, delete

    @Test
    void aNewRowIsAddedEmptyAndLogged() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.Command1.fireClick();
        f.Command1.fireClick();
        assertThat(mechanics()).endsWith("|", "|").hasSize(5);
        assertThat(f.Text2.Text()).isEmpty();
        assertThat(f.NyelvData.Recordset().AbsolutePosition()).isEqualTo(4);
        assertThat(log()).endsWith("Szerelők új adat|SzerelokFormX", "Szerelők új adat|SzerelokFormX");
    }

    @Test
    void deletingARowAsksAndLogs() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        ui.answer(VbConst.vbNo);
        f.Command2.fireClick();
        assertThat(mechanics()).hasSize(3);
        ui.answer(VbConst.vbYes);
        f.Command2.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Biztosan véglegesen törli az adatsort (Delete)?", 36, "FIGYELEM! TÖRLÉS!"),
                msg("Biztosan véglegesen törli az adatsort (Delete)?", 36, "FIGYELEM! TÖRLÉS!"));
        assertThat(ui.beeps).isEqualTo(2);
        assertThat(mechanics()).containsExactly("Szőke Ödön|SZ7", "Nagy Tűző|N3");
        assertThat(f.Text2.Text()).isEqualTo("Szőke Ödön");
        assertThat(log()).endsWith("Szerelőt töröl|SzerelokFormX");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void deletingTheOnlyRowAndAnsweringNoLeavesTheForm() {
        mechanic("Kovács Péter", "K1");
        SzerelokFormX f = open(new SzerelokFormX());
        ui.answer(VbConst.vbYes).answer(VbConst.vbNo);
        f.Command2.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Biztosan véglegesen törli az adatsort (Delete)?", 36, "FIGYELEM! TÖRLÉS!"),
                msg("Minden adat törölve (Deleted All)! Kér új adatot (New)?", VbConst.vbYesNo, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(2);
        assertThat(f.isLoaded()).isFalse();
        assertThat(ui.log).contains("close:SzerelokFormX");
        assertThat(mechanics()).isEmpty();
    }

    @Test
    void deletingTheOnlyRowAndAnsweringYesAddsAnEmptyRow() {
        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        m.Command2.fireClick();
        assertThat(m.isLoaded()).isTrue();
        assertThat(rows(DB, "SzervizModulMunkak")).hasSize(1);
        assertThat(rows(DB, "SzervizModulMunkak").get(0)).containsExactly("", "");
        assertThat(log()).containsExactly("MunkakFormX|MunkakFormX", "Munkatörzs új adat|MunkakFormX",
                "MunkakFormX|MunkakFormX");
    }

    // ---------------------------------------------------------------- saving, print, leaving

    @Test
    void savingStoresTheTypedValueAndStaysOnTheRow() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.NyelvData.Recordset().MoveNext();
        f.Text3.setText("SZ8");
        f.Mentes.fireClick();
        assertThat(mechanics()).containsExactly("Kovács Péter|K1", "Szőke Ödön|SZ8", "Nagy Tűző|N3");
        assertThat(f.Text2.Text()).isEqualTo("Szőke Ödön");
        assertThat(ui.beeps).isZero();
    }

    @Test
    void printingShowsTheListUnderTheTitleAndTodaysDate() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        List<String> seen = new ArrayList<>();
        ui.whenShown("SzerelokNyomFormX", p -> {
            ListPageForm page = (ListPageForm) p;
            seen.add(page.Cim.Caption());
            seen.add(String.join("|", page.row(2)));
            seen.add(page.Oldal.Caption());
        });
        f.Nyomtat.fireClick();
        assertThat(seen).containsExactly("SZERELŐK 2026.11.23.", "Szőke Ödön|SZ7", "1. oldal          ");
        assertThat(PageForm.PrintCancelled).isZero();
        // on return from the page the opening runs again (Form_Activate, Part 1.3): the first row, a log entry
        assertThat(f.Text2.Text()).isEqualTo("Kovács Péter");
        assertThat(log()).containsExactly("Járművekbe belépés|SzerelokFormX", "Járművekbe belépés|SzerelokFormX");

        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        ui.whenShown("MunkakNyomFormX", p -> seen.add(((ListPageForm) p).Cim.Caption()));
        m.Nyomtat.fireClick();
        insert(DB, "SzervizModulAlkatreszek", "cikkszám", "FK-100", "megnevezés", "Fékbetét");
        AlkatreszekFormX a = open(new AlkatreszekFormX());
        ui.whenShown("AlkatreszekNyomFormX", p -> seen.add(((ListPageForm) p).Cim.Caption()));
        a.Nyomtat.fireClick();
        // the parts list keeps the jobs' title
        assertThat(seen).endsWith("MUNKÁK TÖRZS 2026.11.23.", "MUNKÁK TÖRZS 2026.11.23.");
    }

    @Test
    void printingAnEmptyListOnlyBeeps() {
        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        emptyTable("SzervizModulMunkak");
        m.NyelvData.Refresh();
        ui.clear();
        m.Nyomtat.fireClick();
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(ui.messages).isEmpty();
        assertThat(ui.log).noneMatch(s -> s.startsWith("modal:"));
    }

    @Test
    void savingAnEmptyListAddsARow() {
        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        emptyTable("SzervizModulMunkak");
        m.NyelvData.Refresh();
        m.Mentes.fireClick();
        assertThat(rows(DB, "SzervizModulMunkak")).hasSize(1);
    }

    @Test
    void theCloseBoxLeavesAsKilepesAndClosesBothSources() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.closeBox();
        assertThat(f.isLoaded()).isFalse();
        assertThat(f.CloseGuard).isFalse();
        assertThat(f.NyelvData.Recordset().isClosed()).isTrue();
        assertThat(f.RegisztData.Recordset().isClosed()).isTrue();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theHeadClickSortsAndToggles() {
        threeMechanics();
        SzerelokFormX f = open(new SzerelokFormX());
        f.DBGrid1.HeadClick.accept(1);
        f.NyelvData.Recordset().MoveFirst();
        assertThat(f.Text3.Text()).isEqualTo("K1");
        f.DBGrid1.HeadClick.accept(1);
        f.NyelvData.Recordset().MoveFirst();
        assertThat(f.Text3.Text()).isEqualTo("SZ7");
    }

    @Test
    void theHelpEntryOpensHelpForTheForm() {
        job("Olajcsere", "M1");
        MunkakFormX m = open(new MunkakFormX());
        m.Segedlet.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("MunkakFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
    }
}
