package kerova.core.form;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.List;
import kerova.core.Globals;
import kerova.core.db.DaoException;
import kerova.core.db.Recordset;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 1.3: the common record-form behaviour, on a small form over Jarmuvek, with the scripted Ui. */
class Part1_3Test extends FormTestBase {

    private TestVehicleForm form;

    private void vehicle(int id, String frsz, String tipus) {
        insert("Kerova.dsb", "Jarmuvek", "recordID", id, "GkFrsz", frsz, "GkTipus", tipus);
    }

    private TestVehicleForm open() {
        form = Forms.put(new TestVehicleForm());
        form.Show();
        return form;
    }

    private Recordset rs() {
        return form.JarmuData.Recordset();
    }

    private static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    // ---- edge cases of Part 1.3 ----

    @Test
    void closeBoxRunsTheSameChecksAsKilepes() {
        vehicle(1, "ABC123", "Opel");
        vehicle(2, "XYZ999", null);
        open();
        assertThat(form.Text1.Text()).isEqualTo("XYZ999");
        ui.answer(VbConst.vbYes);
        form.closeBox();
        assertThat(ui.messages).containsExactly(msg(TestVehicleForm.MANDATORY_TEXT, 36, TestVehicleForm.MANDATORY_TITLE));
        assertThat(form.exits).isEqualTo(1);
        assertThat(form.isLoaded()).isFalse();
        assertThat(form.CloseGuard).isFalse();
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly("ABC123");
        assertThat(form.JarmuData.Recordset().isClosed()).isTrue();
        assertThat(ui.log).contains("close:TestVehicleForm");
    }

    @Test
    void kilepesAndCloseBoxAskTheSameAndNoKeepsTheRecord() {
        vehicle(1, "ABC123", null);
        open();
        ui.answer(VbConst.vbNo);
        form.Command3.fireClick();
        assertThat(ui.messages).containsExactly(msg(TestVehicleForm.MANDATORY_TEXT, 36, TestVehicleForm.MANDATORY_TITLE));
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly("ABC123");
        assertThat(form.isLoaded()).isFalse();
        // the second query after the exit handler doesn't run it again
        form.closeBox();
        assertThat(form.exits).isEqualTo(1);
    }

    @Test
    void searchForEmptyOrCancelChangesNothing() {
        vehicle(1, "ABC123", "Opel");
        vehicle(2, "XYZ999", "Fiat");
        open();
        int before = rs().AbsolutePosition();
        ui.input("");
        form.KeresFrsz.fireClick();
        assertThat(ui.inputs).containsExactly(TestVehicleForm.SEARCH_TITLE + " | " + TestVehicleForm.SEARCH_PROMPT);
        assertThat(ui.messages).isEmpty();
        assertThat(rs().AbsolutePosition()).isEqualTo(before);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void searchWrapsRoundAndSecondSearchMovesOn() {
        vehicle(1, "AB1", "Opel");
        vehicle(2, "XY2", "Fiat");
        vehicle(3, "AB3", "Ford");
        open();
        assertThat(form.Text1.Text()).isEqualTo("AB3");
        ui.input("AB");
        form.KeresFrsz.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("AB1");
        ui.input("AB");
        form.KeresFrsz.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("AB3");
        ui.input("ab");
        form.KeresFrsz.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("AB1");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void searchWithoutMatchWarnsAndGoesToFirst() {
        vehicle(1, "AB1", "Opel");
        vehicle(2, "XY2", "Fiat");
        open();
        ui.input("QQ");
        form.KeresFrsz.fireClick();
        assertThat(ui.messages).containsExactly(msg(TestVehicleForm.NOT_FOUND, 48, TestVehicleForm.SEARCH_TITLE));
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(form.Text1.Text()).isEqualTo("AB1");
        // a quote in the text makes the filter invalid: no find, only the no-match message
        ui.clear();
        ui.input("X\"Y");
        form.KeresFrsz.fireClick();
        assertThat(ui.messages).containsExactly(msg(TestVehicleForm.NOT_FOUND, 48, TestVehicleForm.SEARCH_TITLE));
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void tenthHeadingClickReopensAndSortStillToggles() {
        vehicle(1, "CCC", "Opel");
        vehicle(2, "AAA", "Fiat");
        vehicle(3, "BBB", "Ford");
        open();
        List<String> firsts = new ArrayList<>();
        List<String> sorts = new ArrayList<>();
        for (int i = 1; i <= 10; i++) {
            Recordset before = rs();
            form.DBGrid1.fireHeadClick(0);
            assertThat(rs()).isNotSameAs(before);
            firsts.add(form.DBGrid1.cellText(0, form.DBGrid1.Columns(0)));
            sorts.add(rs().Sort());
            if (i == 10) {
                assertThat(before.isClosed()).as("the tenth click closes the set").isTrue();
                assertThat(form.headClickCount).isZero();
            } else {
                assertThat(form.headClickCount).isEqualTo(i);
            }
        }
        assertThat(firsts).containsExactly("AAA", "CCC", "AAA", "CCC", "AAA", "CCC", "AAA", "CCC", "AAA", "CCC");
        assertThat(sorts.get(0)).isEqualTo("GkFrsz");
        assertThat(sorts.get(8)).isEqualTo("GkFrsz");
        assertThat(sorts.get(9)).isEqualTo("GkFrsz DESC");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void emptyTableGetsRecordWithKey1OnOpening() {
        open();
        List<Object[]> rows = rows("Kerova.dsb", "Jarmuvek");
        assertThat(rows).hasSize(1);
        assertThat(column("Kerova.dsb", "Jarmuvek", "recordID")).containsExactly(1);
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly((Object) null);
        assertThat(form.Label5.Caption()).isEqualTo("1");
        assertThat(form.focused()).isSameAs(form.Text1);
        // the user does nothing and leaves: the exit check offers the empty record; No keeps it
        ui.answer(VbConst.vbNo);
        form.closeBox();
        assertThat(column("Kerova.dsb", "Jarmuvek", "recordID")).containsExactly(1);
    }

    @Test
    void emptyRecordRemovedByTheExitCheckOnYes() {
        open();
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(rows("Kerova.dsb", "Jarmuvek")).isEmpty();
    }

    @Test
    void deletingTheLastRowCreatesANewRowAtOnce() {
        vehicle(5, "AAA111", "Opel");
        open();
        ui.answer(VbConst.vbYes);
        form.Torles.fireClick();
        assertThat(ui.messages).containsExactly(msg(TestVehicleForm.DELETE_TEXT, 36, TestVehicleForm.DELETE_TITLE));
        assertThat(ui.log.indexOf("beep")).isLessThan(ui.log.indexOf("msg:" + TestVehicleForm.DELETE_TEXT));
        assertThat(column("Kerova.dsb", "Jarmuvek", "recordID")).containsExactly(1);
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly((Object) null);
        assertThat(column("Kerova.dsb", "JarmuvekArchiv", "GkFrsz")).containsExactly("AAA111");
        assertThat(column("Kerova.dsb", "JarmuvekArchiv", "recordID")).containsExactly(5);
        assertThat(form.Label5.Caption()).isEqualTo("1");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void twoQuickClicksOnUjAdatCreateTwoRecords() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        open();
        form.Command2.fireClick();
        form.Command2.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "recordID")).containsExactly(1, 2, 3, 4);
        assertThat(form.Label5.Caption()).isEqualTo("4");
        assertThat(form.focused()).isSameAs(form.Text1);
        assertThat(ui.messages).isEmpty();
    }

    // ---- the other behaviours ----

    @Test
    void deleteNoKeepsTheRow() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        open();
        ui.answer(VbConst.vbNo);
        form.Torles.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly("AAA111", "BBB222");
        assertThat(rows("Kerova.dsb", "JarmuvekArchiv")).isEmpty();
    }

    @Test
    void deleteOfTheLastOfSeveralMovesToTheNewLast() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        open();
        form.archive = false;
        ui.answer(VbConst.vbYes);
        form.Torles.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly("AAA111");
        assertThat(form.Text1.Text()).isEqualTo("AAA111");
        assertThat(rows("Kerova.dsb", "JarmuvekArchiv")).isEmpty();
    }

    @Test
    void failedArchiveCopyWarnsAndKeepsTheRow() {
        vehicle(1, "AAA111", "Opel");
        form = Forms.put(new TestVehicleForm());
        form.ArchivData.setRecordSource("NincsIlyenTabla");
        form.Show();
        ui.answer(VbConst.vbYes);
        form.Torles.fireClick();
        assertThat(ui.messages).containsExactly(
                msg(TestVehicleForm.DELETE_TEXT, 36, TestVehicleForm.DELETE_TITLE),
                msg(TestVehicleForm.ARCHIVE_FAIL, 48, "FIGYELEM!"));
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkFrsz")).containsExactly("AAA111");
    }

    @Test
    void saveIsMovingAndReturnsToTheBookmark() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        vehicle(3, "CCC333", "Ford");
        open();
        rs().setAbsolutePosition(1);
        form.Text2.setText("Suzuki");
        form.Command1.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkTipus")).containsExactly("Opel", "Suzuki", "Ford");
        assertThat(rs().AbsolutePosition()).isEqualTo(1);
        assertThat(form.Text1.Text()).isEqualTo("BBB222");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void quickSearchKeepsTheLastHitOnNoMatch() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "ABB222", "Fiat");
        vehicle(3, "CCC333", "Ford");
        open();
        form.Text21.setText("A");
        assertThat(form.Text1.Text()).isEqualTo("AAA111");
        form.Text21.setText("AB");
        assertThat(form.Text1.Text()).isEqualTo("ABB222");
        form.Text21.setText("ABX");
        assertThat(form.Text1.Text()).isEqualTo("ABB222");
        form.Text21.setText("");
        assertThat(form.Text1.Text()).isEqualTo("ABB222");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void selectingFromASecondGridFindsTheRow() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        open();
        form.selectFromGrid(form.JarmuData, "GkFrsz", "AAA111");
        assertThat(form.Text1.Text()).isEqualTo("AAA111");
        form.selectFromGrid(form.JarmuData, "GkFrsz", "NINCS");
        assertThat(form.Text1.Text()).isEqualTo("AAA111");
        assertThat(ui.beeps).isEqualTo(1);
    }

    @Test
    void gridRowSelectionMovesTheRecordAndSavesTheOldOne() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        open();
        form.Text2.setText("Lada");
        form.DBGrid1.selectRow(0);
        assertThat(form.Text1.Text()).isEqualTo("AAA111");
        assertThat(column("Kerova.dsb", "Jarmuvek", "GkTipus")).containsExactly("Opel", "Lada");
        assertThat(form.DBGrid1.rowCount()).isEqualTo(2);
        assertThat(form.DBGrid1.Row()).isEqualTo(0);
    }

    @Test
    void actionLogRowByOrdinal() {
        vehicle(7, "AAA111", "Opel");
        open();
        List<Object[]> log = rows("Regiszt.dsb", "Regisztrálás");
        assertThat(log).hasSize(1);
        Object[] r = log.get(0);
        assertThat(r[0]).isEqualTo("");
        assertThat(r[1]).isEqualTo("");
        assertThat(r[2]).isEqualTo(NOW.toLocalDate().atStartOfDay());
        assertThat(r[3]).isEqualTo(java.time.LocalDateTime.of(1899, 12, 30, 10, 15, 30));
        assertThat(r[4]).isEqualTo("Járművekbe belépés");
        assertThat(r[5]).isEqualTo(dir.toString());
        assertThat(((Number) r[6]).intValue()).isZero();
        assertThat(r[7]).isEqualTo("TestVehicleForm");
        assertThat(((Number) r[8]).doubleValue()).isEqualTo(7.0);
        assertThat(r[9]).isEqualTo("Kerova");
    }

    @Test
    void focusColoursAndTheLostFocusStep() {
        vehicle(1, "abc123", "Opel");
        open();
        form.Text2.SetFocus();
        form.Text1.SetFocus();
        assertThat(form.Text1.BackColor()).isEqualTo(0xFFFF80);
        assertThat(form.Text2.BackColor()).isEqualTo(0x80000005);
        form.Text21.SetFocus();
        assertThat(form.Text1.BackColor()).isEqualTo(0x80000005);
        assertThat(form.Text1.Text()).isEqualTo("ABC123");
        assertThat(form.Text21.BackColor()).isEqualTo(0xFFFF80);
        form.Text2.SetFocus();
        assertThat(form.Text21.BackColor()).isEqualTo(0xFFC0C0);
    }

    @Test
    void numericKeyFilters() {
        TextBox t = new TextBox("T");
        t.KeyPress = RecordForm::wholeNumberKey;
        assertThat(t.fireKeyPress('5')).isEqualTo('5');
        assertThat(t.fireKeyPress(8)).isEqualTo(8);
        assertThat(t.fireKeyPress(',')).isZero();
        assertThat(ui.beeps).isEqualTo(1);
        t.KeyPress = RecordForm::decimalKey;
        assertThat(t.fireKeyPress(',')).isEqualTo(',');
        assertThat(t.fireKeyPress('-')).isZero();
        assertThat(t.fireKeyPress('.')).isZero();
        t.KeyPress = RecordForm::signedDecimalKey;
        assertThat(t.fireKeyPress('-')).isEqualTo('-');
        assertThat(t.fireKeyPress(',')).isEqualTo(',');
        assertThat(t.fireKeyPress('a')).isZero();
        assertThat(ui.beeps).isEqualTo(4);
    }

    @Test
    void printChecks() {
        vehicle(1, "AAA111", "Opel");
        open();
        form.Nyomtat.fireClick();
        assertThat(ui.messages).containsExactly(msg("A nyomtató nincs készenlétben!", 0, "FIGYELEM!"));
        ui.clear();
        ui.printerReady = true;
        form.Nyomtat.fireClick();
        assertThat(ui.messages).isEmpty();
        ui.clear();
        // nothing to print: a form whose set is empty (the archive here)
        assertThat(form.printCheck(form.ArchivData)).isFalse();
        assertThat(ui.messages).containsExactly(msg("Nincs nyomtatandó adat!", 48, "FIGYELEM!"));
    }

    @Test
    void helpSetsTheTopicAndOpensHelpModally() {
        vehicle(1, "AAA111", "Opel");
        open();
        form.Segedlet.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("TestVehicleForm");
        assertThat(ui.log).contains("modal:HelpFormX");
    }

    @Test
    void pickerHandsOverThroughPublicVariables() {
        vehicle(1, "AAA111", "Opel");
        vehicle(2, "BBB222", "Fiat");
        Forms.register("TestVehicleForm", TestVehicleForm::new);
        ui.whenShown("TestVehicleForm", f -> {
            TestVehicleForm t = (TestVehicleForm) f;
            assertThat(t.Valaszt.Visible()).isTrue();
            assertThat(Globals.PickDone).isZero();
            t.Valaszt.fireClick();
        });
        boolean picked = RecordForm.openPicker("TestVehicleForm", "PickerCaller");
        assertThat(picked).isTrue();
        assertThat(Globals.PickDone).isEqualTo((short) 1);
        assertThat(Globals.PickedName).isEqualTo("BBB222");
        assertThat(Globals.CurrentFormName).isEqualTo("PickerCaller");
        assertThat(Forms.get("TestVehicleForm").isLoaded()).isFalse();
    }

    @Test
    void modalOpeningStopsTheCallerAndActivatesItAgain() {
        vehicle(1, "AAA111", "Opel");
        open();
        int logRows = rows("Regiszt.dsb", "Regisztrálás").size();
        Forms.get("ValamiFormX").Show(true);
        assertThat(ui.log).contains("modal:ValamiFormX", "close:ValamiFormX");
        // Form_Activate ran again on return: a second log row
        assertThat(rows("Regiszt.dsb", "Regisztrálás")).hasSize(logRows + 1);
    }

    @Test
    void unexpectedErrorShowsOneMessageAndTheProgramGoesOn() {
        vehicle(1, "AAA111", "Opel");
        open();
        form.Command1.Click = () -> {
            throw new DaoException(3021, "No current record.");
        };
        form.Command1.fireClick();
        assertThat(ui.messages).containsExactly(msg("Váratlan hiba (3021): No current record.", 16, "Kerova"));
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        form.Command2.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "recordID")).containsExactly(1, 2);
    }

    @Test
    void handlersOnADataControlWithoutASetGoOnWithoutAMessage() {
        vehicle(1, "AAA111", "Opel");
        open();
        form.JarmuData.Recordset().Close(); // as after a failed open: the set is not there
        ui.clear();
        form.UjAdat.fireClick();
        form.Text21.setText("AA");
        form.DBGrid1.fireHeadClick(0);
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void aFolderWithoutDatabasesIsReported() {
        AccessFile_emptyFolder();
        TestVehicleForm f = Forms.put(new TestVehicleForm());
        f.Show();
        assertThat(f.checkDatabases(f.JarmuData)).isFalse();
        assertThat(ui.messages).contains(msg("Ebben a könyvtárban nincsenek adatbázisok!", 16, "FIGYELEM! SÚLYOS HIBA!"));
        assertThat(f.isLoaded()).isFalse();
    }

    private void AccessFile_emptyFolder() {
        kerova.core.db.AccessFile.closeAll();
        java.nio.file.Path empty = dir.resolve("ures");
        try {
            java.nio.file.Files.createDirectories(empty);
        } catch (java.io.IOException e) {
            throw new RuntimeException(e);
        }
        kerova.core.db.AccessFile.setWorkingFolder(empty);
    }
}
