package kerova.trips;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.List;
import kerova.core.Globals;
import kerova.core.form.DBGrid;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/**
 * Part 3.5: the trip purposes, and the passengers and documents of a group of trips, with the
 * scripted Ui on a company folder made by CompanyFolder.init. The two group forms are opened through
 * Forms with the group id set, as the trip form of Part 3.1 will open them.
 */
class Part3_5Test extends FormTestBase {
    static final String GROUP = "2026112336930,5";
    static final ScriptedUi.Message NO_GROUP = new ScriptedUi.Message(
            "Csoportazonosító nélkül nem lehet személyt felvinni!", VbConst.vbCritical,
            "FIGYELEM! Kezelői hiba! Válasszon utat először!");
    static final ScriptedUi.Message DELETE = new ScriptedUi.Message(
            "Valóban véglegesen törli a kijelölt adatsort?", VbConst.vbYesNo + VbConst.vbQuestion,
            "FIGYELEM! Végleges törlés!");
    static final ScriptedUi.Message DELETED_ALL = new ScriptedUi.Message(
            "Minden adat törölve (Deleted All)! Kér új adatot (New)?", VbConst.vbYesNo, "FIGYELEM!");

    @BeforeEach
    void setUp() {
        TripGlobals.reset();
    }

    static void purpose(String name) {
        insert("Kerova.dsb", "MegnevezesTorzs", "Megnevezés", name);
    }

    static void passenger(String name, String group) {
        insert("Kerova.dsb", "UtakSzallitottSzemely", "SzállitottSzemélyNeve", name, "UtakCsoportAzonosito", group);
    }

    static List<Object> purposes() {
        return column("Kerova.dsb", "MegnevezesTorzs", "Megnevezés");
    }

    /** The passenger table as "name|group" per row, in table order. */
    static List<String> passengers() {
        List<String> out = new ArrayList<>();
        for (Object[] r : rows("Kerova.dsb", "UtakSzallitottSzemely")) {
            out.add(r[0] + "|" + r[1]);
        }
        return out;
    }

    static List<String> gridColumn(SmallMasterForm f, int col) {
        List<String> out = new ArrayList<>();
        DBGrid.Column c = f.DBGrid1.Columns(col);
        for (int i = 0; i < f.DBGrid1.rowCount(); i++) {
            out.add(f.DBGrid1.cellText(i, c));
        }
        return out;
    }

    /** Opens a form by name as the main menu or the trip form does (modeless here, to drive it). */
    static <T extends SmallMasterForm> T open(String name) {
        @SuppressWarnings("unchecked")
        T f = (T) Forms.get(name);
        f.Show();
        return f;
    }

    // ---------------------------------------------------------------- purposes

    @Test
    void purposesTitleSourceControlsAndMenus() {
        purpose("Áruszállítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        assertThat(f.Caption()).isEqualTo("Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova");
        assertThat(f.VezetoData.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(f.VezetoData.RecordSource()).isEqualTo("select * from MegnevezesTorzs order by Megnevezés");
        assertThat(f.Text1.DataField()).isEqualTo("Megnevezés");
        assertThat(f.Label3).isNull();
        assertThat(f.Command1.Caption()).isEqualTo("OK-Mentés");
        assertThat(f.menus()).extracting(m -> m.getName())
                .containsExactly("Frissites", "UjAdat", "Torl_s", "Segedlet", "Kilepes");
        assertThat(f.DBGrid1.Columns(0).DataField()).isEqualTo("Megnevezés");
        assertThat(f.DBGrid1.Columns(1).DataField()).isEqualTo("Sorszám");
        assertThat(((kerova.core.form.Label) f.control("TodayLabelCaption")).Caption()).isEqualTo("Mai dátum:");
        assertThat(f.TodayLabel.Caption()).isEqualTo("2026.11.23.");
        // the focus colours of Part 1.3
        f.Text1.fireGotFocus();
        assertThat(f.Text1.BackColor()).isEqualTo(0xFFFF80);
        f.Text1.fireLostFocus();
        assertThat(f.Text1.BackColor()).isEqualTo(RecordForm.REST_COLOR);
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void anEmptyPurposeTableGetsARowAtOnceAndTheFocusGoesToText1() {
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        assertThat(purposes()).containsExactly((Object) null);
        assertThat(f.focused()).isSameAs(f.Text1);
        assertThat(f.Text1.Text()).isEmpty();
    }

    @Test
    void aFilledPurposeTableOpensOnTheFirstRowInOrder() {
        purpose("Személyszállítás");
        purpose("Áruszállítás");
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        assertThat(f.Text1.Text()).isEqualTo("Áruszállítás");
        assertThat(gridColumn(f, 0)).containsExactly("Áruszállítás", "Javítás", "Személyszállítás");
        assertThat(purposes()).hasSize(3);
    }

    @Test
    void saveStoresTheTextAndFindsTheSavedRowAgain() {
        purpose("Áruszállítás");
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.UjAdat.fireClick();
        assertThat(purposes()).hasSize(3);
        f.Text1.setText("Bérfuvar");
        f.Command1.fireClick();
        assertThat(purposes()).containsExactly("Áruszállítás", "Javítás", "Bérfuvar");
        // the refresh puts it in order; the find returns the cursor to it
        assertThat(gridColumn(f, 0)).containsExactly("Áruszállítás", "Bérfuvar", "Javítás");
        assertThat(f.Text1.Text()).isEqualTo("Bérfuvar");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void saveWithAnEmptyText1OnlyTakesTheFocusBack() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.UjAdat.fireClick();
        f.Command1.SetFocus();
        ui.clear();
        f.Command1.fireClick();
        assertThat(f.focused()).isSameAs(f.Text1);
        assertThat(ui.pointers).isEmpty();
        assertThat(ui.messages).isEmpty();
        assertThat(f.Text1.Text()).isEmpty();
        assertThat(purposes()).containsExactly("Javítás", null);
    }

    @Test
    void aPurposeWithAnApostropheBreaksTheFindButIsSavedAllTheSame() {
        purpose("Áruszállítás");
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.UjAdat.fireClick();
        f.Text1.setText("Zoli's fuvar");
        f.Command1.fireClick();
        assertThat(purposes()).containsExactly("Áruszállítás", "Javítás", "Zoli's fuvar");
        // "[Megnevezés] = 'Zoli's fuvar'" doesn't parse: the error is cleared, no message, and the
        // cursor stays where the refresh put it (the first row), not on the saved one
        assertThat(f.Text1.Text()).isEqualTo("Áruszállítás");
        assertThat(ui.messages).isEmpty();
        assertThat(kerova.core.vb.Err.Number()).isZero();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void twoNewRowsMakeTwoRowsAndTheFocusGoesToText1() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.Command1.SetFocus();
        f.UjAdat.fireClick();
        f.UjAdat.fireClick();
        assertThat(purposes()).containsExactly("Javítás", null, null);
        assertThat(f.focused()).isSameAs(f.Text1);
    }

    @Test
    void deleteAsksAndNoKeepsTheRow() {
        purpose("Áruszállítás");
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        ui.answer(VbConst.vbNo);
        f.Torl_s.fireClick();
        assertThat(ui.messages).containsExactly(DELETE);
        assertThat(ui.log.get(ui.log.indexOf("msg:" + DELETE.text()) - 1)).isEqualTo("beep");
        assertThat(purposes()).containsExactly("Áruszállítás", "Javítás");
    }

    @Test
    void deleteOnYesRemovesTheRowAndMovesNextAtTheEndLast() {
        purpose("Áruszállítás");
        purpose("Javítás");
        purpose("Személyszállítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        ui.answer(VbConst.vbYes);
        f.Torl_s.fireClick();
        assertThat(purposes()).containsExactly("Javítás", "Személyszállítás");
        assertThat(f.Text1.Text()).isEqualTo("Javítás");
        RecordForm.rs(f.VezetoData).MoveLast();
        assertThat(f.Text1.Text()).isEqualTo("Személyszállítás");
        ui.answer(VbConst.vbYes);
        // deleting the last row of the list moves last
        f.Torl_s.fireClick();
        assertThat(f.Text1.Text()).isEqualTo("Javítás");
        assertThat(purposes()).containsExactly("Javítás");
        assertThat(ui.messages).containsExactly(DELETE, DELETE);
    }

    @Test
    void deletingTheLastPurposeAsksForANewOneAndNoLeavesTheForm() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        ui.answer(VbConst.vbYes).answer(VbConst.vbNo);
        f.Torl_s.fireClick();
        assertThat(ui.messages).containsExactly(DELETE, DELETED_ALL);
        assertThat(f.isLoaded()).isFalse();
        assertThat(ui.log).contains("close:MegnevezesTorzsFormX");
        assertThat(purposes()).isEmpty();
    }

    @Test
    void deletingTheLastPurposeAndYesAddsANewRow() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        f.Torl_s.fireClick();
        assertThat(ui.messages).containsExactly(DELETE, DELETED_ALL);
        assertThat(f.isLoaded()).isTrue();
        assertThat(purposes()).containsExactly((Object) null);
        assertThat(f.focused()).isSameAs(f.Text1);
    }

    @Test
    void refreshShowsWhatOthersAdded() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        purpose("Áruszállítás");
        f.Frissites.fireClick();
        assertThat(gridColumn(f, 0)).containsExactly("Áruszállítás", "Javítás");
    }

    @Test
    void leavingAndTheCloseBoxCloseTheSourceWithoutAQuestion() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.Text1.setText("Javítás és karbantartás");
        f.closeBox();
        assertThat(f.isLoaded()).isFalse();
        assertThat(f.VezetoData.Recordset().isClosed()).isTrue();
        assertThat(ui.messages).isEmpty();
        // the close wrote the bound value first
        assertThat(purposes()).containsExactly("Javítás és karbantartás");
        Forms.reset();
        Forms.setUi(ui);
        MegnevezesTorzsFormX g = open("MegnevezesTorzsFormX");
        g.Kilepes.fireClick();
        assertThat(g.isLoaded()).isFalse();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void helpOpensTheHelpFormOnTheFormsTopic() {
        purpose("Javítás");
        MegnevezesTorzsFormX f = open("MegnevezesTorzsFormX");
        f.Segedlet.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("MegnevezesTorzsFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
    }

    // ---------------------------------------------------------------- passengers and documents

    @Test
    void groupFormsTitlesSourcesAndBindings() {
        UtakSzallitottSzemelyekFormX p = new UtakSzallitottSzemelyekFormX();
        assertThat(p.Caption()).isEqualTo("Szállított személyek felvitele - Kerova");
        assertThat(p.VezetoData.RecordSource()).isEqualTo("select * from UtakSzallitottSzemely");
        assertThat(p.Text1.DataField()).isEqualTo("SzállitottSzemélyNeve");
        assertThat(((kerova.core.form.Label) p.control("Text1Caption")).Caption()).isEqualTo("Személy neve:");
        assertThat(p.Label3.DataField()).isEqualTo("UtakCsoportAzonosito");
        assertThat(p.DBGrid1.Columns(0).DataField()).isEqualTo("SzállitottSzemélyNeve");
        UtakCsatoltOkmanyokFormX d = new UtakCsatoltOkmanyokFormX();
        assertThat(d.Caption()).isEqualTo("Csatolt okmányok felvitele - Kerova");
        assertThat(d.VezetoData.RecordSource()).isEqualTo("select * from UtakCsatoltOkmany");
        // the documents form's Text1 is bound to the passenger's name, its grid shows the document
        assertThat(d.Text1.DataField()).isEqualTo("SzállitottSzemélyNeve");
        assertThat(d.DBGrid1.Columns(0).DataField()).isEqualTo("CsatoltOkmány");
        assertThat(d.Label3.DataField()).isEqualTo("UtakCsoportAzonosito");
        for (SmallMasterForm f : List.of(p, d)) {
            assertThat(f.menus()).extracting(m -> m.getName())
                    .containsExactly("Frissites", "UjAdat", "Torl_s", "Segedlet", "Kilepes");
            assertThat(f.Command1.Caption()).isEqualTo("OK-Mentés");
        }
    }

    @Test
    void openingThePassengerFormWithNoGroupIdLeavesAtOnceWithTheMessage() {
        passenger("Kiss Anna", GROUP);
        SmallMasterForm f = open("UtakSzallitottSzemelyekFormX");
        assertThat(ui.messages).containsExactly(NO_GROUP);
        assertThat(ui.log.get(ui.log.indexOf("msg:" + NO_GROUP.text()) - 1)).isEqualTo("beep");
        assertThat(f.isLoaded()).isFalse();
        assertThat(ui.log).contains("close:UtakSzallitottSzemelyekFormX");
        assertThat(passengers()).containsExactly("Kiss Anna|" + GROUP);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void openingTheDocumentFormWithNoGroupIdLeavesAtOnceWithTheSameWords() {
        TripGlobals.CurrentGroupID = "";
        SmallMasterForm f = open("UtakCsatoltOkmanyokFormX");
        assertThat(ui.messages).containsExactly(NO_GROUP);
        assertThat(f.isLoaded()).isFalse();
        assertThat(ui.log).contains("close:UtakCsatoltOkmanyokFormX");
        assertThat(passengers()).isEmpty();
        assertThat(rows("Kerova.dsb", "UtakCsatoltOkmany")).isEmpty();
    }

    @Test
    void theFirstOpeningOfThePassengerFormForAGroupMakesAnEmptyRowAtOnce() {
        passenger("Nagy Béla", "2026111036000,25");
        TripGlobals.CurrentGroupID = GROUP;
        SmallMasterForm f = open("UtakSzallitottSzemelyekFormX");
        assertThat(f.VezetoData.RecordSource())
                .isEqualTo("select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '" + GROUP + "'");
        assertThat(ui.messages).isEmpty();
        assertThat(passengers()).hasSize(2);
        assertThat(f.Label3.Caption()).isEqualTo(GROUP);
        assertThat(f.focused()).isSameAs(f.Text1);
        // the id reaches the row with the next move, here the leaving
        f.Kilepes.fireClick();
        assertThat(passengers()).containsExactly("Nagy Béla|2026111036000,25", "null|" + GROUP);
    }

    @Test
    void theFirstOpeningOfTheDocumentFormForAGroupMakesAnEmptyRowInThePassengerTable() {
        TripGlobals.CurrentGroupID = GROUP;
        SmallMasterForm f = open("UtakCsatoltOkmanyokFormX");
        assertThat(f.VezetoData.RecordSource())
                .isEqualTo("select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '" + GROUP + "'");
        assertThat(ui.messages).isEmpty();
        assertThat(f.Label3.Caption()).isEqualTo(GROUP);
        f.Text1.setText("Menetlevél 123");
        f.Command1.fireClick();
        // the documents form writes to the passenger table, as the Part keeps it
        assertThat(passengers()).containsExactly("Menetlevél 123|" + GROUP);
        assertThat(rows("Kerova.dsb", "UtakCsatoltOkmany")).isEmpty();
        assertThat(f.Text1.Text()).isEqualTo("Menetlevél 123");
    }

    @Test
    void aGroupWithRowsShowsOnlyItsOwnAndMakesNoRow() {
        passenger("Kiss Anna", GROUP);
        passenger("Nagy Béla", "2026111036000,25");
        passenger("Őz Ödön", GROUP);
        TripGlobals.CurrentGroupID = GROUP;
        UtakSzallitottSzemelyekFormX f = open("UtakSzallitottSzemelyekFormX");
        assertThat(gridColumn(f, 0)).containsExactly("Kiss Anna", "Őz Ödön");
        assertThat(f.Text1.Text()).isEqualTo("Kiss Anna");
        assertThat(passengers()).hasSize(3);
        // the documents form shows the same passengers of the group
        f.Kilepes.fireClick();
        UtakCsatoltOkmanyokFormX d = open("UtakCsatoltOkmanyokFormX");
        assertThat(d.Text1.Text()).isEqualTo("Kiss Anna");
        assertThat(d.DBGrid1.rowCount()).isEqualTo(2);
    }

    @Test
    void aNewPassengerTakesTheGroupIdAndSaveFindsIt() {
        passenger("Kiss Anna", GROUP);
        TripGlobals.CurrentGroupID = GROUP;
        UtakSzallitottSzemelyekFormX f = open("UtakSzallitottSzemelyekFormX");
        f.Command1.SetFocus();
        f.UjAdat.fireClick();
        assertThat(f.Label3.Caption()).isEqualTo(GROUP);
        assertThat(f.focused()).isSameAs(f.Text1);
        f.Text1.setText("Bodnár Péter");
        f.Command1.fireClick();
        assertThat(passengers()).containsExactly("Kiss Anna|" + GROUP, "Bodnár Péter|" + GROUP);
        assertThat(gridColumn(f, 0)).containsExactly("Kiss Anna", "Bodnár Péter");
        assertThat(f.Text1.Text()).isEqualTo("Bodnár Péter");
    }

    @Test
    void saveOfAnEmptyPassengerOnlyTakesTheFocusBack() {
        TripGlobals.CurrentGroupID = GROUP;
        UtakSzallitottSzemelyekFormX f = open("UtakSzallitottSzemelyekFormX");
        f.Command1.SetFocus();
        ui.clear();
        f.Command1.fireClick();
        assertThat(f.focused()).isSameAs(f.Text1);
        assertThat(ui.pointers).isEmpty();
        // the group id set at the opening isn't written yet: no move took place
        assertThat(passengers()).containsExactly("null|null");
    }

    @Test
    void deletingTheLastPassengerOfTheGroupAsksForANewOne() {
        passenger("Kiss Anna", GROUP);
        passenger("Nagy Béla", "2026111036000,25");
        TripGlobals.CurrentGroupID = GROUP;
        UtakSzallitottSzemelyekFormX f = open("UtakSzallitottSzemelyekFormX");
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        f.Torl_s.fireClick();
        assertThat(ui.messages).containsExactly(DELETE, DELETED_ALL);
        assertThat(f.Label3.Caption()).isEqualTo(GROUP);
        f.Kilepes.fireClick();
        assertThat(passengers()).containsExactly("Nagy Béla|2026111036000,25", "null|" + GROUP);
    }
}
