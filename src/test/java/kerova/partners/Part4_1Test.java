package kerova.partners;

import static org.assertj.core.api.Assertions.assertThat;

import java.io.BufferedReader;
import java.io.InputStreamReader;
import java.io.OutputStreamWriter;
import java.io.PrintWriter;
import java.nio.charset.StandardCharsets;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.TimeUnit;
import kerova.core.Globals;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.Test;

/** Part 4.1: the partner master, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part4_1Test extends FormTestBase {
    BeraktarozokFormX form;

    static void partner(int id, Object name, Object... more) {
        List<Object> p = new ArrayList<>(Arrays.asList("recordID", id, "BerNev", name));
        p.addAll(Arrays.asList(more));
        insert("Kerova.dsb", "beraktar", p.toArray());
    }

    static void country(String mark, String name) {
        insert("Kerova.dsb", "Orszagjel", "Országjel", mark, "Ország", name);
    }

    BeraktarozokFormX open() {
        Globals.CurrentFormName = BeraktarozokFormX.NAME;
        form = Forms.put(new BeraktarozokFormX());
        form.Show();
        return form;
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    static List<Object> col(String column) {
        return column("Kerova.dsb", "beraktar", column);
    }

    static final ScriptedUi.Message CHECK_MEGSE = msg("Kéri az adatok teljes ellenőrzését?", 4, "Ellenőrzés");
    static final ScriptedUi.Message CHECK_KILEPES = msg("Kéri az adatok teljes ellenőrzését?", 36, "Ellenőrzés...");

    // ---------------------------------------------------------------- the form

    @Test
    void titleCaptionsAndBindings() {
        partner(1, "Őrségi Szerviz Kft.", "BerIrszam", "9941", "BerSzekhely", "Őriszentpéter", "BerCim", "Fő út 1.",
                "BerTelefon", "94428001", "BerFax", "94428002", "BerMobil", "306012345", "BerAdoszam", "12345678",
                "BerSzamlaszam", "117730160000", "Kapcsolattartó", "Szűts Írisz", "BerOrszag", "H",
                "UgyfelStatus", "2");
        open();
        assertThat(form.Caption()).isEqualTo("Beszállítók, partnerek adatai törzs - Kerova");
        assertThat(form.Text2.Text()).isEqualTo("Őrségi Szerviz Kft.");
        assertThat(form.Text3.Text()).isEqualTo("9941");
        assertThat(form.Text4.Text()).isEqualTo("Őriszentpéter");
        assertThat(form.Text5.Text()).isEqualTo("Fő út 1.");
        assertThat(form.Text6.Text()).isEqualTo("94428001");
        assertThat(form.Text7.Text()).isEqualTo("94428002");
        assertThat(form.Text8.Text()).isEqualTo("306012345");
        assertThat(form.Text9.Text()).isEqualTo("12345678");
        assertThat(form.Text10.Text()).isEqualTo("117730160000");
        assertThat(form.Text1.Text()).isEqualTo("1");
        assertThat(form.Text11.Text()).isEqualTo("Szűts Írisz");
        assertThat(form.Label14.Caption()).isEqualTo("H");
        assertThat(form.Text12.Text()).isEqualTo("2");
        String[][] captions = {
            {"Text2", "Beszállító (cég) neve:"}, {"Text3", "Postai irányítószám:"}, {"Text4", "Székhely:"},
            {"Text5", "Cím:"}, {"Text6", "Telefon:"}, {"Text7", "FAX:"}, {"Text8", "Mobil:"}, {"Text9", "Adószám:"},
            {"Text10", "Banki számlaszám:"}, {"Text1", "Azonosító sorszám:"}, {"Text11", "Kapcsolattartó neve:"},
            {"Label14", "Ország jelzése:"}, {"Text12", "Ügyféli státusz:"},
        };
        for (String[] c : captions) {
            assertThat(((kerova.core.form.Label) form.control(c[0] + "Caption")).Caption()).isEqualTo(c[1]);
        }
        assertThat(form.UjAdat.Caption()).isEqualTo("Új beszállító");
        assertThat(form.Kilepes.Caption()).isEqualTo("Mentés-Kilépés");
        assertThat(form.Command1.Caption()).isEqualTo("Ország");
        assertThat(form.megse.Caption()).isEqualTo("Mégse");
        assertThat(form.DBGrid1.Caption()).isEqualTo("Mozgás a táblában");
        assertThat(form.DBGrid2.Caption()).isEqualTo("Data1-országjel");
        assertThat(form.DBGrid2.ToolTipText()).isEqualTo("Dupla kattintással válasszon!");
        assertThat(form.DBGrid2.columns()).extracting(c -> c.DataField()).containsExactly("Országjel", "Ország");
        assertThat(form.Beraktarozok.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(form.Data1.RecordSource()).isEqualTo("Orszagjel");
        assertThat(form.Regisztrálás.DatabaseName()).isEqualTo("Regiszt.dsb");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theFormOpensOnTheLastPartnerAndFocusColoursFollowPart1_3() {
        partner(1, "Alfa Kft.");
        partner(2, "Béta Bt.");
        open();
        assertThat(form.Text2.Text()).isEqualTo("Béta Bt.");
        form.Text5.fireGotFocus();
        assertThat(form.Text5.BackColor()).isEqualTo(0xFFFF80);
        form.Text5.fireLostFocus();
        assertThat(form.Text5.BackColor()).isEqualTo(RecordForm.REST_COLOR);
    }

    // ---------------------------------------------------------------- edge cases of Part 4.1

    @Test
    void aNameOfBlanksIsNoBadRowOnEitherWayOut() {
        partner(1, "   ");
        partner(2, "");
        partner(3, "Gamma Zrt.");
        open();
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(ui.messages).containsExactly(CHECK_KILEPES);
        assertThat(col("BerNev")).containsExactly("   ", "Gamma Zrt.");
        assertThat(form.isLoaded()).isFalse();

        partner(4, "");
        ui.clear();
        open();
        ui.answer(VbConst.vbYes);
        form.megse.fireClick();
        assertThat(ui.messages).containsExactly(CHECK_MEGSE);
        assertThat(ui.beeps).isZero(); // "Mégse" asks without a beep and without an icon
        assertThat(col("BerNev")).containsExactly("   ", "Gamma Zrt.");
        assertThat(form.ProgressBar1.Max()).isEqualTo(3);
        assertThat(form.ProgressBar1.Value()).isEqualTo(3);
        assertThat(form.DBGrid1.AllowUpdate).isFalse();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void withKilepesANullNameIsKeptWithMegseItIsDeleted() {
        partner(1, "Alfa Kft.");
        partner(2, null);
        partner(3, "Gamma Zrt.");
        open();
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(ui.messages).containsExactly(CHECK_KILEPES);
        assertThat(ui.beeps).isEqualTo(1); // the beep before the question
        assertThat(col("recordID")).containsExactly(1, 2, 3);
        assertThat(col("BerNev")).containsExactly("Alfa Kft.", null, "Gamma Zrt.");

        ui.clear();
        open();
        ui.answer(VbConst.vbYes);
        form.megse.fireClick();
        assertThat(ui.messages).containsExactly(CHECK_MEGSE);
        assertThat(col("recordID")).containsExactly(1, 3);
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void aRowJustMadeAndLeftEmptyDisappearsUnderMegseButStaysUnderKilepes() {
        partner(1, "Alfa Kft.");
        open();
        form.UjAdat.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("2");
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(col("recordID")).containsExactly(1, 2);

        open();
        form.UjAdat.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("3");
        ui.answer(VbConst.vbYes);
        form.megse.fireClick();
        assertThat(col("recordID")).containsExactly(1);
    }

    @Test
    void answeringNoLeavesEveryRowAndBothWaysOutKeepTheEdits() {
        partner(1, "Alfa Kft.");
        partner(2, null);
        open();
        form.Text4.setText("Győr");
        ui.answer(VbConst.vbNo);
        form.megse.fireClick();
        // "Mégse" cancels no edit: the bound box was written on closing
        assertThat(col("BerSzekhely")).containsExactly(null, "Győr");
        assertThat(col("recordID")).containsExactly(1, 2);

        open();
        form.Text5.setText("Szent István út 8.");
        ui.answer(VbConst.vbNo);
        form.Kilepes.fireClick();
        assertThat(col("BerCim")).containsExactly(null, "Szent István út 8.");
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void theFirstPartnerOfAnEmptyTableGetsTheIdentifier1() {
        // on opening (Part 1.3's form start)
        open();
        assertThat(col("recordID")).containsExactly(1);
        assertThat(form.Text1.Text()).isEqualTo("1");
        // and through "Új beszállító" once the table has been emptied
        ui.answer(VbConst.vbYes);
        form.BeszallTorol.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Biztosan törli véglegesen az adatot?", 36, "FIGYELEM! Végleges törlés!"));
        // the last row gone, "Új beszállító" ran at once, with the identifier 1 again
        assertThat(col("recordID")).containsExactly(1);
        form.Text2.setText("Első Partner Kft.");
        form.UjAdat.fireClick();
        assertThat(col("recordID")).containsExactly(1, 2);
        assertThat(col("BerNev")).containsExactly("Első Partner Kft.", null);
        List<Object[]> log = rows("Regiszt.dsb", "Regisztrálás");
        assertThat(log).hasSize(2);
        assertThat(log.get(1)[4]).isEqualTo("Új beszállító felvitele");
        assertThat(log.get(1)[7]).isEqualTo("BeraktarozokFormX");
        assertThat(((Number) log.get(1)[8]).doubleValue()).isEqualTo(2.0);
        assertThat(log.get(1)[9]).isEqualTo("Kerova");
    }

    @Test
    void theNewIdentifierIsTheLastRowInTableOrderPlusOneAndAGapStays() {
        partner(5, "Alfa Kft.");
        partner(9, "Béta Bt.");
        partner(7, "Gamma Zrt.");
        open();
        form.UjAdat.fireClick();
        // last row in the table's own order is 7: the new one is 8, not 10
        assertThat(col("recordID")).containsExactly(5, 9, 7, 8);
        assertThat(form.Text1.Text()).isEqualTo("8");
        assertThat(form.focused()).isSameAs(form.Text2);
        assertThat(form.ProgressBar1.Value()).isZero();
        // deleting the last row leaves no gap; deleting another one does
        ui.answer(VbConst.vbYes);
        form.BeszallTorol.fireClick();
        form.UjAdat.fireClick();
        assertThat(col("recordID")).containsExactly(5, 9, 7, 8);
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void aPostCodeCantBeTypedWithALetter() {
        open();
        for (var box : List.of(form.Text3, form.Text6, form.Text7, form.Text8, form.Text9, form.Text10, form.Text12)) {
            assertThat(box.fireKeyPress('7')).as(box.getName()).isEqualTo('7');
            assertThat(box.fireKeyPress(8)).as(box.getName()).isEqualTo(8);
            assertThat(box.fireKeyPress('A')).as(box.getName()).isZero();
            assertThat(box.fireKeyPress('-')).as(box.getName()).isZero();
            assertThat(box.fireKeyPress(' ')).as(box.getName()).isZero();
        }
        assertThat(ui.beeps).isEqualTo(21);
        // no filter by character table: the name and the town take Hungarian letters
        assertThat(form.Text2.fireKeyPress('ő')).isEqualTo('ő');
        assertThat(form.Text4.fireKeyPress('Ű')).isEqualTo('Ű');
        assertThat(form.Text1.KeyPress).isNull();
        assertThat(form.Text11.KeyPress).isNull();
    }

    // ---------------------------------------------------------------- country, searches, lock, print

    @Test
    void aDoubleClickInTheCountryGridSetsTheMark() {
        country("A", "Ausztria");
        country("H", "Magyarország");
        partner(1, "Alfa Kft.", "BerOrszag", "H");
        open();
        form.DBGrid2.selectRow(0);
        form.DBGrid2.fireDblClick();
        assertThat(form.Label14.Caption()).isEqualTo("A");
        form.UjAdat.fireClick(); // moving stores the mark
        assertThat(col("BerOrszag")).containsExactly("A", null);
    }

    @Test
    void aDoubleClickOnAnEmptyCountryTableDoesNothing() {
        partner(1, "Alfa Kft.", "BerOrszag", "H");
        open();
        form.DBGrid2.fireDblClick();
        assertThat(form.Label14.Caption()).isEqualTo("H");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theNameSearchFindsByPrefixAndWraps() {
        partner(1, "Kovács Kft.");
        partner(2, "Szabó Bt.");
        partner(3, "Kovácsné Zrt.");
        open();
        ui.input("Kovács");
        form.keres.fireClick();
        assertThat(ui.inputs).containsExactly("Keresés (cég)névre | Kérem a beraktározó nevét:");
        // FindNext from the last row finds nothing, FindFirst wraps to the first match
        assertThat(form.Text1.Text()).isEqualTo("1");
        ui.input("Kovács");
        form.keres.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("3");
        ui.input("Nagy");
        form.keres.fireClick();
        assertThat(ui.messages).containsExactly(msg(
                "Nincs ilyen beraktározó! Keressen újra, vagy válasszon a listából!", 48, "Keresés (cég)névre"));
        assertThat(form.Text1.Text()).isEqualTo("1");
        ui.input("");
        form.keres.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("1");
        assertThat(ui.allAnswered()).isTrue();
    }

    @Test
    void theCountrySearchMovesTheCountryGrid() {
        country("A", "Ausztria");
        country("H", "Magyarország");
        country("SK", "Szlovákia");
        partner(1, "Alfa Kft.");
        open();
        ui.input("Magyar");
        form.Command1.fireClick();
        assertThat(ui.inputs).containsExactly("Keresés országra | Kérem az ország nevét:");
        form.DBGrid2.fireDblClick();
        assertThat(form.Label14.Caption()).isEqualTo("H");
        ui.input("Német");
        form.Command1.fireClick();
        assertThat(ui.messages).containsExactly(msg(
                "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!", 48, "Keresés országra"));
    }

    @Test
    void theLockButtonStoresThePendingEdit() {
        partner(1, "Alfa Kft.");
        open();
        form.Text6.setText("3612345678");
        form.Command4.fireClick();
        assertThat(col("BerTelefon")).containsExactly("3612345678");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void aRowHeldByAnotherCopyGivesTheLockMessageAndStays() throws Exception {
        partner(1, "Alfa Kft.", "BerTelefon", "111");
        String javaBin = Paths.get(System.getProperty("java.home"), "bin", "java").toString();
        Process peer = new ProcessBuilder(javaBin, "-cp", System.getProperty("java.class.path"),
                PartnerLockPeer.class.getName(), dir.toString()).redirectErrorStream(true).start();
        try (var toPeer = new PrintWriter(new OutputStreamWriter(peer.getOutputStream(),
                StandardCharsets.UTF_8), true);
             var fromPeer = new BufferedReader(new InputStreamReader(peer.getInputStream(),
                StandardCharsets.UTF_8))) {
            assertThat(fromPeer.readLine()).isEqualTo("ready");
            toPeer.println("edit 1");
            assertThat(fromPeer.readLine()).isEqualTo("ok");
            open();
            form.Text6.setText("222");
            form.Command4.fireClick();
            assertThat(ui.messages).containsExactly(msg("Az adat jelenleg zárolt! Próbálja újra!", 48, "Adatzárolás!"));
            assertThat(ui.beeps).isEqualTo(1);
            assertThat(col("BerTelefon")).containsExactly("111");
            assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
            toPeer.println("quit");
            assertThat(fromPeer.readLine()).isEqualTo("ok");
            peer.waitFor(10, TimeUnit.SECONDS);
            // the other copy has let go: the same button stores the edit
            ui.clear();
            form.Command4.fireClick();
            assertThat(ui.messages).isEmpty();
            assertThat(col("BerTelefon")).containsExactly("222");
        } finally {
            peer.destroyForcibly();
        }
    }

    @Test
    void deleteAnsweredNoKeepsTheRow() {
        partner(1, "Alfa Kft.");
        partner(2, "Béta Bt.");
        open();
        ui.answer(VbConst.vbNo);
        form.BeszallTorol.fireClick();
        assertThat(col("recordID")).containsExactly(1, 2);
        ui.answer(VbConst.vbYes);
        form.BeszallTorol.fireClick();
        assertThat(col("recordID")).containsExactly(1);
        assertThat(form.Text2.Text()).isEqualTo("Alfa Kft.");
        assertThat(ui.beeps).isEqualTo(2);
    }

    @Test
    void theCloseBoxTakesTheWayOfMentesKilepes() {
        partner(1, "Alfa Kft.");
        partner(2, "");
        open();
        ui.answer(VbConst.vbYes);
        form.closeBox();
        assertThat(ui.messages).containsExactly(CHECK_KILEPES);
        assertThat(col("recordID")).containsExactly(1);
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void thePrintEntryOpensThePartnerListOfPart4_2() {
        partner(1, "Alfa Kft.");
        open();
        form.BeszNyom.fireClick();
        assertThat(ui.log).contains("modal:BeszallitoNyomFormX");
        assertThat(form.isLoaded()).isTrue();
    }

    @Test
    void theHeaderClickSortsAndTogglesAndTheTenthReopens() {
        partner(1, "Béta Bt.");
        partner(2, "Alfa Kft.");
        partner(3, "Cézár Kft.");
        open();
        for (int i = 1; i <= 10; i++) {
            form.DBGrid1.fireHeadClick(0);
            String first = form.DBGrid1.cellText(0, form.DBGrid1.Columns(0));
            assertThat(first).as("click " + i).isEqualTo(i % 2 == 1 ? "Alfa Kft." : "Cézár Kft.");
        }
    }
}
