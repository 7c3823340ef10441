package kerova.core;

import static org.assertj.core.api.Assertions.assertThat;
import static org.assertj.core.api.Assertions.assertThatThrownBy;

import java.util.List;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import kerova.core.form.TextBox;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 1.6: the operator's record, on real files with the scripted Ui. */
class Part1_6Test extends FormTestBase {
    private static final ScriptedUi.Message EMPTY_NAME = new ScriptedUi.Message(
            "Hiányos kitöltés! Az adat törlődik! A program bejegyzett üzemeltető nélkül nem működik!", 16,
            "FIGYELEM! SÚLYOS HIBA!");

    private UzemeltetokForm open() {
        UzemeltetokForm f = Forms.put(new UzemeltetokForm());
        f.Show();
        return f;
    }

    private static List<Object[]> log() {
        return rows("Regiszt.dsb", "Regisztrálás");
    }

    // ---- edge cases of Part 1.6 ----

    @Test
    void firstOpeningOnAnEmptyTableCreatesAnEmptyRowAtOnce() {
        assertThat(rows("Torzsek.dsb", "Bettorzs")).isEmpty();
        UzemeltetokForm f = open();
        List<Object[]> rows = rows("Torzsek.dsb", "Bettorzs");
        assertThat(rows).hasSize(1);
        assertThat(rows.get(0)).containsOnlyNulls();
        assertThat(f.Text2.Text()).isEmpty();
        assertThat(f.Betarol.Recordset().AbsolutePosition()).isZero();
        assertThat(ui.messages).isEmpty();
        // pointer normal
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbDefault);
    }

    @Test
    void leavingWithAnEmptyNameShowsTheMessageDeletesTheRowAndEndsTheProgram() {
        UzemeltetokForm f = open();
        f.Text4.setText("Győr");
        assertThatThrownBy(() -> f.Kilepes.fireClick()).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.messages).containsExactly(EMPTY_NAME);
        assertThat(ui.log.indexOf("beep")).isLessThan(ui.log.indexOf("msg:" + EMPTY_NAME.text()));
        assertThat(ui.log.indexOf("msg:" + EMPTY_NAME.text())).isLessThan(ui.log.indexOf("exit"));
        assertThat(ui.exited).isTrue();
        assertThat(rows("Torzsek.dsb", "Bettorzs")).isEmpty();
        assertThat(f.Betarol.Recordset().isClosed()).isTrue();
        assertThat(f.Regisztrálás.Recordset().isClosed()).isTrue();
        // step 1 ran before: the action log keeps its row
        assertThat(log()).hasSize(1);
        assertThat(log().get(0)[4]).isEqualTo("Üzemeltető adatai");
    }

    @Test
    void theCloseBoxWithAnEmptyNameEndsTheProgramToo() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Régi Kft.", "UzSzekhely", "Pécs");
        UzemeltetokForm f = open();
        assertThat(f.Text2.Text()).isEqualTo("Régi Kft.");
        f.Text2.setText("");
        assertThatThrownBy(f::closeBox).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.messages).containsExactly(EMPTY_NAME);
        assertThat(ui.exited).isTrue();
        assertThat(rows("Torzsek.dsb", "Bettorzs")).isEmpty();
    }

    @Test
    void aLetterInThePostalCodeBeepsAndDoesNotAppear() {
        UzemeltetokForm f = open();
        assertThat(f.Text3.fireKeyPress('a')).isZero();
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(f.Text3.fireKeyPress('5')).isEqualTo('5');
        assertThat(f.Text3.fireKeyPress(VbConst.vbKeyBack)).isEqualTo(VbConst.vbKeyBack);
        assertThat(f.Text3.fireKeyPress(',')).isZero();
        assertThat(f.Text3.fireKeyPress('-')).isZero();
        assertThat(ui.beeps).isEqualTo(3);
        assertThat(f.Text3.Text()).isEmpty();
    }

    // ---- the rest of the Part ----

    @Test
    void theFiveDigitOnlyBoxesAndTheOthers() {
        UzemeltetokForm f = open();
        for (TextBox t : new TextBox[] {f.Text3, f.Text6, f.Text12, f.Text13, f.Text14}) {
            assertThat(t.fireKeyPress('x')).as(t.getName()).isZero();
            assertThat(t.fireKeyPress('0')).as(t.getName()).isEqualTo('0');
            assertThat(t.fireKeyPress('9')).as(t.getName()).isEqualTo('9');
        }
        assertThat(ui.beeps).isEqualTo(5);
        for (TextBox t : new TextBox[] {f.Text2, f.Text4, f.Text5, f.Text7, f.Text20, f.Text22, f.Text24}) {
            assertThat(t.fireKeyPress('ő')).as(t.getName()).isEqualTo('ő');
        }
        assertThat(ui.beeps).isEqualTo(5);
    }

    @Test
    void theTwelveFieldsAreBoundAndStoredOnLeaving() {
        UzemeltetokForm f = open();
        f.Text2.setText("Kerekes Fuvarozó Kft.");
        f.Text3.setText("9021");
        f.Text4.setText("Győr");
        f.Text5.setText("Szent István út 12.");
        f.Text6.setText("12345678");
        f.Text7.setText("11737007-20000000");
        f.Text12.setText("3696123456");
        f.Text13.setText("3696123457");
        f.Text14.setText("36301234567");
        f.Text20.setText("HU12345678");
        f.Text22.setText("VP-0042");
        f.Text24.setText("9027 Győr, Ipari park 3.");
        f.Kilepes.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(ui.exited).isFalse();
        assertThat(f.isLoaded()).isFalse();
        assertThat(f.Betarol.Recordset().isClosed()).isTrue();
        assertThat(f.Regisztrálás.Recordset().isClosed()).isTrue();
        List<Object[]> rows = rows("Torzsek.dsb", "Bettorzs");
        assertThat(rows).hasSize(1);
        String[] columns = {"UzNev", "UzIrszam", "UzSzekhely", "UzCim", "UzAdoszam", "UzSzamlaszam", "Uztelefon",
            "UzFax", "UzMobil", "EUAdoszam", "VPID", "Telephely"};
        Object[] expected = {"Kerekes Fuvarozó Kft.", "9021", "Győr", "Szent István út 12.", "12345678",
            "11737007-20000000", "3696123456", "3696123457", "36301234567", "HU12345678", "VP-0042",
            "9027 Győr, Ipari park 3."};
        for (int i = 0; i < columns.length; i++) {
            assertThat(column("Torzsek.dsb", "Bettorzs", columns[i])).as(columns[i]).containsExactly(expected[i]);
        }
        // the bindings name the columns of the table
        assertThat(f.Text2.DataField()).isEqualTo("UzNev");
        assertThat(f.Text24.DataField()).isEqualTo("Telephely");
    }

    @Test
    void theExitWritesTheActionLogRowByOrdinal() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        UzemeltetokForm f = open();
        f.Command1.fireClick();
        assertThat(f.isLoaded()).isFalse();
        List<Object[]> log = log();
        assertThat(log).hasSize(1);
        Object[] r = log.get(0);
        assertThat(r[0]).isEqualTo("");
        assertThat(r[1]).isEqualTo("");
        assertThat(r[2]).isEqualTo(NOW.toLocalDate().atStartOfDay());
        assertThat(r[3]).isEqualTo(java.time.LocalDateTime.of(1899, 12, 30, 10, 15, 30));
        assertThat(r[4]).isEqualTo("Üzemeltető adatai");
        assertThat(r[5]).isEqualTo(dir.toString());
        assertThat(((Number) r[6]).intValue()).isZero();
        assertThat(r[7]).isEqualTo("UzemeltetokForm");
        assertThat(((Number) r[8]).doubleValue()).isZero();
        assertThat(r[9]).isEqualTo("Kerova");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theCloseBoxTakesTheExit() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        UzemeltetokForm f = open();
        f.Text4.setText("Sopron");
        f.closeBox();
        assertThat(f.isLoaded()).isFalse();
        assertThat(f.CloseGuard).isFalse();
        assertThat(column("Torzsek.dsb", "Bettorzs", "UzSzekhely")).containsExactly("Sopron");
        assertThat(log()).hasSize(1);
    }

    @Test
    void anExistingRowOpensOnTheFirstRecord() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Első Kft.");
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Második Kft.");
        UzemeltetokForm f = open();
        assertThat(f.Text2.Text()).isEqualTo("Első Kft.");
        assertThat(rows("Torzsek.dsb", "Bettorzs")).hasSize(2);
    }

    @Test
    void tooltipsTitleAndFocusColours() {
        UzemeltetokForm f = open();
        assertThat(f.Caption()).isEqualTo("Nyilvántartást végző adatai - Kerova");
        assertThat(f.Text2.ToolTipText()).isEqualTo("Üresen hagyva az adatlap TÖRLŐDIK!");
        assertThat(f.Text24.ToolTipText()).isEqualTo("Telephely teljes címe");
        assertThat(f.Folder.Caption()).isEqualTo(dir.toString());
        f.Text2.SetFocus();
        assertThat(f.Text2.BackColor()).isEqualTo(0xFFFF80);
        f.Text3.SetFocus();
        assertThat(f.Text2.BackColor()).isEqualTo(0x80000005);
        assertThat(f.Text3.BackColor()).isEqualTo(0xFFFF80);
    }

    @Test
    void operatorNameIsLoadedByTheMainFormAtStartUpAndAfterAChange() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        KerovaX main = Forms.put(new KerovaX());
        main.Show();
        assertThat(Globals.OperatorName).isEqualTo("Kerekes Fuvarozó Kft.");
        // the main menu's entry opens the real form; the new name shows on return
        ui.whenShown("UzemeltetokForm", f -> {
            assertThat(f).isInstanceOf(UzemeltetokForm.class);
            assertThat(main.Visible()).isFalse();
            UzemeltetokForm u = (UzemeltetokForm) f;
            assertThat(u.Text2.Text()).isEqualTo("Kerekes Fuvarozó Kft.");
            u.Text2.setText("Szűcs és Társa Bt.");
            u.Kilepes.fireClick();
        });
        main.Uzemelteto.fireClick();
        assertThat(main.Visible()).isTrue();
        assertThat(Globals.OperatorName).isEqualTo("Szűcs és Társa Bt.");
        assertThat(column("Torzsek.dsb", "Bettorzs", "UzNev")).containsExactly("Szűcs és Társa Bt.");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void emptyingTheNameFromTheMainMenuEndsTheWholeProgram() {
        insert("Torzsek.dsb", "Bettorzs", "UzNev", "Kerekes Fuvarozó Kft.");
        KerovaX main = Forms.put(new KerovaX());
        main.Show();
        ui.whenShown("UzemeltetokForm", f -> {
            ((UzemeltetokForm) f).Text2.setText("");
            f.closeBox();
        });
        assertThatThrownBy(() -> main.Uzemelteto.fireClick()).isInstanceOf(Forms.ExitRequest.class);
        assertThat(ui.messages).containsExactly(EMPTY_NAME);
        assertThat(ui.exited).isTrue();
        assertThat(rows("Torzsek.dsb", "Bettorzs")).isEmpty();
    }
}
