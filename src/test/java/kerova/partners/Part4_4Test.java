package kerova.partners;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.List;
import java.util.stream.Collectors;
import kerova.core.Globals;
import kerova.core.form.Form;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 4.4: the country marks and their archive, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part4_4Test extends FormTestBase {
    static final String DB = "betarol.mdb";
    static final String ARCHIVE_DB = "parameter.dsb";

    OrszagokFormX form;

    static void country(String mark, String name) {
        insert(DB, "Orszagjel", "Országjel", mark, "Ország", name);
    }

    static void archived(String mark, String name) {
        insert(ARCHIVE_DB, "OrszagjelArchiv", "Országjel", mark, "Ország", name);
    }

    /** The rows of a table as "mark|name" (null as "null"). */
    static List<String> rowsOf(String db, String table) {
        return rows(db, table).stream().map(r -> r[0] + "|" + r[1]).collect(Collectors.toList());
    }

    static List<String> master() {
        return rowsOf(DB, "Orszagjel");
    }

    static List<String> archive() {
        return rowsOf(ARCHIVE_DB, "OrszagjelArchiv");
    }

    OrszagokFormX open() {
        form = Forms.put(new OrszagokFormX());
        form.Show();
        return form;
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    void twoCountries() {
        country("H", "Magyarország");
        country("A", "Ausztria");
    }

    // ---------------------------------------------------------------- the form

    @Test
    void titleCaptionsMenusAndSources() {
        twoCountries();
        open();
        assertThat(form.Caption()).isEqualTo("Jelzés- és ország törzs");
        assertThat(form.Label1.Caption()).isEqualTo("Országjel (nagy betű):");
        assertThat(form.Label2.Caption()).isEqualTo("Ország:");
        assertThat(List.of(form.Command1.Caption(), form.Command2.Caption(), form.Command3.Caption(),
                form.Command4.Caption(), form.Command5.Caption(), form.Command6.Caption(), form.Command7.Caption(),
                form.Command8.Caption())).containsExactly("OK-Mentés", "Új ország", "Kijelölt sor törlése",
                "Adatok archiválása", "Archivumból visszatöltés", "Segédlet", "Kilépés", "Adat átadása");
        assertThat(form.UjOrsz.Caption()).isEqualTo("Új ország");
        assertThat(form.OTorol.Caption()).isEqualTo("Töröl");
        assertThat(form.OArch.Caption()).isEqualTo("Archiválás");
        assertThat(form.OMent.Caption()).isEqualTo("Mentés");
        assertThat(form.OMent.parent()).isSameAs(form.OArch);
        assertThat(form.OTolt.Caption()).isEqualTo("Visszatöltés");
        assertThat(form.OrszagJel.DatabaseName()).isEqualTo("betarol.dsb");
        assertThat(form.OrszagJel.RecordSource()).isEqualTo("Orszagjel");
        assertThat(form.OrszagJelArchivData.DatabaseName()).isEqualTo("Parameter.dsb");
        assertThat(form.OrszagJelArchivData.RecordSource()).isEqualTo("OrszagjelArchiv");
        assertThat(form.DBGrid1.Caption()).isEqualTo("Országok törzs");
        assertThat(form.DBGrid1.columns()).extracting(c -> c.DataField()).containsExactly("Országjel", "Ország");
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
        // bound to the first row (betarol.dsb is the same file as betarol.mdb)
        assertThat(form.Text1.Text()).isEqualTo("H");
        assertThat(form.Text2.Text()).isEqualTo("Magyarország");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void openingEmptiesTheTransferTextsAndLeavesTheFlag() {
        Globals.CountryMarkTransfer = "X";
        Globals.CountryNameTransfer = "Valami";
        Globals.CountryPicked = 1;
        open();
        assertThat(Globals.CountryMarkTransfer).isEmpty();
        assertThat(Globals.CountryNameTransfer).isEmpty();
        assertThat(Globals.CountryPicked).isEqualTo(1);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        // an empty table gets no row on opening (the Part names no such step)
        assertThat(master()).isEmpty();
    }

    @Test
    void theTextBoxesPaintThemselvesAndTheMarkIsNotForcedToCapitals() {
        twoCountries();
        open();
        form.moveFocus(form.Text1, false);
        assertThat(form.Text1.BackColor()).isEqualTo(RecordForm.FOCUS_COLOR);
        form.Text1.setText("sk");
        form.moveFocus(form.Text2, false);
        assertThat(form.Text1.BackColor()).isEqualTo(VbConst.vbWindowBackground);
        assertThat(form.Text1.Text()).isEqualTo("sk");
        assertThat(form.Text2.BackColor()).isEqualTo(RecordForm.FOCUS_COLOR);
    }

    // ---------------------------------------------------------------- new country and save

    @Test
    void aNewCountryIsARowWithAnEmptyMarkAtTheEnd() {
        twoCountries();
        open();
        form.UjOrsz.fireClick();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria", "|null");
        assertThat(form.Text1.Text()).isEmpty();
        assertThat(form.DBGrid1.rowCount()).isEqualTo(3);
        form.Text1.setText("SK");
        form.Text2.setText("Szlovákia");
        form.Command1.fireClick();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria", "SK|Szlovákia");
        assertThat(form.Text1.Text()).isEqualTo("SK");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void ujOrszTwiceInARowLeavesOneNewRow() {
        twoCountries();
        open();
        form.UjOrsz.fireClick();
        form.Command2.fireClick();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria", "|null");
        assertThat(form.DBGrid1.rowCount()).isEqualTo(3);
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void aNewCountrySweepsEveryBlankRowWithoutAskingAndKeepsAFilledNewRow() {
        country("H", "Magyarország");
        country("", "Üres jel");
        country("D", null);
        country("PL", "Lengyelország");
        open();
        form.UjOrsz.fireClick();
        form.Text1.setText("RO");
        form.Text2.setText("Románia");
        form.UjOrsz.fireClick(); // the typed row is stored by the Requery, and it isn't blank
        assertThat(master()).containsExactly("H|Magyarország", "PL|Lengyelország", "RO|Románia", "|null");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void saveStoresThePendingEditAndStaysOnTheRow() {
        twoCountries();
        open();
        form.Text2.setText("Magyar Köztársaság");
        form.OKMentes.fireClick();
        assertThat(master()).containsExactly("H|Magyar Köztársaság", "A|Ausztria");
        assertThat(form.Text1.Text()).isEqualTo("H");
        assertThat(ui.beeps).isZero();
    }

    @Test
    void aFailedSaveGivesOnlyABeep() {
        twoCountries();
        open();
        form.Text1.setText("X".repeat(300)); // longer than the column: the write fails
        form.OKMentes.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void saveOnAnEmptyTableRunsUjOrsz() {
        open();
        form.OKMentes.fireClick();
        assertThat(master()).containsExactly("|null");
        assertThat(ui.beeps).isZero();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    // ---------------------------------------------------------------- delete

    @Test
    void deleteAsksAndYesDeletesTheRow() {
        twoCountries();
        open();
        ui.answer(VbConst.vbNo);
        form.Command3.fireClick();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
        ui.answer(VbConst.vbYes);
        form.OTorol.fireClick();
        assertThat(master()).containsExactly("A|Ausztria");
        assertThat(ui.messages).containsExactly(
                msg("A kijelölt sor törölhető véglegesen?", 4, "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS!"),
                msg("A kijelölt sor törölhető véglegesen?", 4, "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS!"));
        assertThat(form.Text1.Text()).isEqualTo("A");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    // ---------------------------------------------------------------- archive

    @Test
    void archivingIntoAnEmptyArchiveAsksNothing() {
        twoCountries();
        open();
        form.Command4.fireClick();
        assertThat(archive()).containsExactly("H|Magyarország", "A|Ausztria");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.beeps).isZero();
        assertThat(form.Text1.Text()).isEqualTo("H");
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
    }

    @Test
    void archivingAnEmptyMasterDoesNothing() {
        archived("H", "Magyarország");
        open();
        form.OMent.fireClick();
        assertThat(archive()).containsExactly("H|Magyarország");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void answeringNoWhenArchivingASecondTimeDoublesTheArchive() {
        twoCountries();
        open();
        form.OMent.fireClick();
        ui.answer(VbConst.vbNo);
        form.OMent.fireClick();
        assertThat(archive()).containsExactly("H|Magyarország", "A|Ausztria", "H|Magyarország", "A|Ausztria");
        assertThat(ui.messages).containsExactly(msg("Törli véglegesen az archív táblában az adatokat?", 4,
                "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS vagy adathozzáfűzés!"));
        // arrow, beep, then the question
        assertThat(java.util.Collections.indexOfSubList(ui.log, List.of("pointer:1", "beep",
                "msg:Törli véglegesen az archív táblában az adatokat?"))).isNotNegative();
        // Yes empties the archive first
        ui.answer(VbConst.vbYes);
        form.OMent.fireClick();
        assertThat(archive()).containsExactly("H|Magyarország", "A|Ausztria");
        assertThat(ui.beeps).isEqualTo(2);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void restoringFromAnEmptyArchiveSaysSoAndStops() {
        twoCountries();
        open();
        form.Command5.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Nincs archívum! Nem lehet adatot visszatölteni!", 0, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void answeringNoWhenRestoringDoublesTheMaster() {
        twoCountries();
        archived("H", "Magyarország");
        archived("A", "Ausztria");
        open();
        ui.answer(VbConst.vbNo);
        form.OTolt.fireClick();
        // no test for doubled marks
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria", "H|Magyarország", "A|Ausztria");
        assertThat(ui.messages).containsExactly(msg("Törli=Igen és/vagy Hozzáfűzi=Nem a törzstáblában az adatokat?",
                4, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(form.DBGrid1.rowCount()).isEqualTo(4);
        assertThat(form.Text1.Text()).isEqualTo("H");
        assertThat(archive()).containsExactly("H|Magyarország", "A|Ausztria");
    }

    @Test
    void answeringYesWhenRestoringReplacesTheMaster() {
        country("H", "Magyarország");
        country("X", "Rossz adat");
        archived("D", "Németország");
        archived("I", "Olaszország");
        open();
        ui.answer(VbConst.vbYes);
        form.OTolt.fireClick();
        assertThat(master()).containsExactly("D|Németország", "I|Olaszország");
        assertThat(form.Text1.Text()).isEqualTo("D");
        assertThat(form.Text2.Text()).isEqualTo("Németország");
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
    }

    @Test
    void restoringIntoAnEmptyMasterAsksNothing() {
        archived("D", "Németország");
        open();
        form.OTolt.fireClick();
        assertThat(master()).containsExactly("D|Németország");
        assertThat(ui.messages).isEmpty();
        assertThat(form.Text1.Text()).isEqualTo("D");
    }

    // ---------------------------------------------------------------- closing and hand-over

    @Test
    void aRowWithAMarkAndNoNameVanishesAtClosingWithoutAWord() {
        twoCountries();
        open();
        form.UjOrsz.fireClick();
        form.Text1.setText("SK");
        form.Command7.fireClick();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.beeps).isZero();
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.OrszagJel.Recordset().isClosed()).isTrue();
        assertThat(form.OrszagJelArchivData.Recordset().isClosed()).isTrue();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theCloseBoxRunsTheSameSweep() {
        country("H", "Magyarország");
        country("", "Névtelen");
        open();
        form.closeBox();
        assertThat(master()).containsExactly("H|Magyarország");
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.CloseGuard).isFalse();
    }

    @Test
    void thePickerIsFoundByItsNameAndHandsTheCurrentRowOver() {
        twoCountries();
        Globals.CountryPicked = null;
        ui.whenShown("OrszagokFormX", f -> {
            OrszagokFormX o = (OrszagokFormX) f;
            o.DBGrid1.selectRow(1);
            assertThat(o.Text1.Text()).isEqualTo("A");
            o.AdatAtad.fireClick();
        });
        Form picker = Forms.get("OrszagokFormX");
        assertThat(picker).isInstanceOf(OrszagokFormX.class);
        picker.Show(true);
        assertThat(Globals.CountryPicked).isEqualTo(1);
        assertThat(Globals.CountryMarkTransfer).isEqualTo("A");
        assertThat(Globals.CountryNameTransfer).isEqualTo("Ausztria");
        assertThat(picker.isLoaded()).isFalse();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theHandOverTakesTheBoxesAsTyped() {
        twoCountries();
        open();
        form.Text2.setText("Österreich");
        form.Command8.fireClick();
        assertThat(Globals.CountryPicked).isEqualTo(1);
        assertThat(Globals.CountryMarkTransfer).isEqualTo("H");
        assertThat(Globals.CountryNameTransfer).isEqualTo("Österreich");
        // the close stores the edit
        assertThat(master()).containsExactly("H|Österreich", "A|Ausztria");
    }

    @Test
    void aHandOverWithoutACurrentRowEmptiesTheTextsAndLeavesTheFlag() {
        Globals.CountryPicked = null;
        open();
        Globals.CountryMarkTransfer = "H";
        Globals.CountryNameTransfer = "Magyarország";
        form.AdatAtad.fireClick();
        assertThat(Globals.CountryPicked).isNull();
        assertThat(Globals.CountryMarkTransfer).isEmpty();
        assertThat(Globals.CountryNameTransfer).isEmpty();
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void aBlankRowHandedOverIsSweptAtTheClose() {
        twoCountries();
        open();
        form.UjOrsz.fireClick();
        form.Text1.setText("SK");
        form.AdatAtad.fireClick();
        assertThat(Globals.CountryPicked).isEqualTo(1);
        assertThat(Globals.CountryMarkTransfer).isEqualTo("SK");
        assertThat(Globals.CountryNameTransfer).isEmpty();
        assertThat(master()).containsExactly("H|Magyarország", "A|Ausztria");
    }

    @Test
    void helpOpensTheTopicOrszagokFormX() {
        open();
        form.Command6.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("OrszagokFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
    }

    @Test
    void aHeaderClickSortsByTheColumnAndTheSecondDescending() {
        country("H", "Magyarország");
        country("A", "Ausztria");
        country("D", "Németország");
        open();
        form.DBGrid1.fireHeadClick(0);
        assertThat(form.DBGrid1.cellText(0, form.DBGrid1.Columns(0))).isEqualTo("A");
        form.DBGrid1.fireHeadClick(0);
        assertThat(form.DBGrid1.cellText(0, form.DBGrid1.Columns(0))).isEqualTo("H");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }
}
