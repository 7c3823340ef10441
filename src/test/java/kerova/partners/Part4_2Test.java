package kerova.partners;

import static org.assertj.core.api.Assertions.assertThat;

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
import kerova.core.print.PagedList;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/** Part 4.2: the partner list from BeraktarozokFormX's BeszNyom, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part4_2Test extends FormTestBase {
    static final String TODAY = "Kiadva: 2026.11.23.";
    static final String FIRST = "BESZÁLLÍTÓK-PARTNEREK";
    static final String NEXT = "BESZÁLLÍTÓK-BERAKTÁROZÓK";
    static final List<String> EMPTY_LINE = List.of("", "", "", "", "", "");

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

    /** One page as it was shown: heading, page label, date label and its 22 lines. */
    record Shown(String heading, String pageLabel, String issued, List<List<String>> lines) {
        List<String> line(int n) {
            return lines.get(n - 1);
        }
    }

    PrintUi pui;
    BeraktarozokFormX form;
    final List<Shown> pages = new ArrayList<>();

    @BeforeEach
    void setUp() {
        pui = new PrintUi();
        ui = pui;
        Forms.setUi(pui);
    }

    static void partner(int id, Object name, Object... more) {
        List<Object> p = new ArrayList<>(Arrays.asList("recordID", id, "BerNev", name));
        p.addAll(Arrays.asList(more));
        insert("Kerova.dsb", "beraktar", p.toArray());
    }

    static void partners(int n) {
        for (int i = 1; i <= n; i++) {
            partner(i, "Partner " + i, "BerSzekhely", "Város " + i);
        }
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    /** Opens the partner form as the main menu does. */
    BeraktarozokFormX open() {
        Globals.CurrentFormName = BeraktarozokFormX.NAME;
        form = Forms.put(new BeraktarozokFormX());
        form.Show();
        return form;
    }

    /** The next page shown is recorded, then the buttons are clicked in order. */
    void onPage(String... buttons) {
        pui.whenShown(BeszallitoNyomFormX.NAME, f -> {
            BeszallitoNyomFormX p = (BeszallitoNyomFormX) f;
            List<List<String>> lines = new ArrayList<>();
            for (int line = 1; line <= BeszallitoNyomFormX.ROWS; line++) {
                lines.add(p.row(line));
            }
            pages.add(new Shown(p.headingText(), p.pageLabel(), p.Kiadva.Caption(), lines));
            for (String b : buttons) {
                f.control(b).fireClick();
            }
        });
    }

    // ---------------------------------------------------------------- edge cases of the Part

    @Test
    void exactly22PartnersGiveOnePage() {
        partners(22);
        open();
        onPage("Command1");
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages).hasSize(1);
        Shown p = pages.get(0);
        assertThat(p.heading()).isEqualTo(FIRST);
        assertThat(p.pageLabel()).isEqualTo("Lapszám: 1");
        assertThat(p.issued()).isEqualTo(TODAY);
        assertThat(p.line(1)).containsExactly("Partner 1", "", "", "Város 1", "", " / ");
        assertThat(p.line(22)).containsExactly("Partner 22", "", "", "Város 22", "", " / ");
        assertThat(ui.log.stream().filter(s -> s.equals("modal:" + BeszallitoNyomFormX.NAME))).hasSize(1);
        assertThat(ui.messages).isEmpty();
        assertThat(pui.printed).isEmpty();
    }

    @Test
    void partners23GiveTwoPagesTheSecondHeadedBeraktarozokWithASingleLine() {
        partners(23);
        open();
        onPage("Command1");
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages).hasSize(2);
        assertThat(pages.get(0).heading()).isEqualTo(FIRST);
        assertThat(pages.get(0).pageLabel()).isEqualTo("Lapszám: 1");
        assertThat(pages.get(0).line(22)).containsExactly("Partner 22", "", "", "Város 22", "", " / ");
        Shown second = pages.get(1);
        assertThat(second.heading()).isEqualTo("BESZÁLLÍTÓK-BERAKTÁROZÓK");
        assertThat(second.pageLabel()).isEqualTo("Lapszám: 2");
        assertThat(second.issued()).isEqualTo(TODAY);
        assertThat(second.line(1)).containsExactly("Partner 23", "", "", "Város 23", "", " / ");
        // a single line: the slots of the first page were emptied
        for (int line = 2; line <= BeszallitoNyomFormX.ROWS; line++) {
            assertThat(second.line(line)).as("line %d", line).isEqualTo(EMPTY_LINE);
        }
        // afterwards Beraktarozok stands on its last row
        assertThat(form.Text2.Text()).isEqualTo("Partner 23");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void anEmptyTablePrintsNothingAndLeavesTheTableWhereItWas() {
        // the partner form never shows an empty table (Part 1.3 adds the row with key 1 on opening),
        // so the routine runs on the Data control of the form as it stands before that row is made
        DataControl beraktarozok = new DataControl("Beraktarozok", "Kerova.dsb", BeraktarozokFormX.PARTNER_SOURCE);
        beraktarozok.Refresh();
        assertThat(BeszallitoNyomFormX.printList(beraktarozok)).isEqualTo(PagedList.Outcome.EMPTY);
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(ui.messages).containsExactly(msg("Nincs nyomtatandó adat!", 48, "FIGYELEM!"));
        assertThat(ui.log).doesNotContain("modal:" + BeszallitoNyomFormX.NAME);
        assertThat(ui.log).containsSubsequence("pointer:" + VbConst.vbHourglass, "beep", "msg:Nincs nyomtatandó adat!");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        assertThat(beraktarozok.Recordset().EOF()).isTrue();
        assertThat(beraktarozok.Recordset().BOF()).isTrue();
        assertThat(rows("Kerova.dsb", "beraktar")).isEmpty();
        assertThat(pui.printed).isEmpty();
    }

    // ---------------------------------------------------------------- the page and its lines

    @Test
    void theSixSlotsOfALineNullsAsEmptyText() {
        partner(1, "Őrségi Szerviz Kft.", "BerIrszam", "9941", "BerOrszag", "H", "BerSzekhely", "Őriszentpéter",
                "BerCim", "Fő út 1.", "BerTelefon", "94428001", "BerFax", "94428002", "BerMobil", "306012345",
                "Kapcsolattartó", "Szűts Írisz");
        partner(2, "Győri Űrtechnika Bt.", "BerTelefon", "96111222");
        partner(3, "Faxos Kft.", "BerFax", "12345");
        partner(4, null);
        open();
        onPage("Command1");
        form.BeszNyom.fireClick();
        Shown p = pages.get(0);
        assertThat(p.line(1)).containsExactly("Őrségi Szerviz Kft.", "9941", "H", "Őriszentpéter", "Fő út 1.",
                "94428001 / 94428002");
        assertThat(p.line(2)).containsExactly("Győri Űrtechnika Bt.", "", "", "", "", "96111222 / ");
        assertThat(p.line(3)).containsExactly("Faxos Kft.", "", "", "", "", " / 12345");
        assertThat(p.line(4)).containsExactly("", "", "", "", "", " / ");
        assertThat(p.line(5)).isEqualTo(EMPTY_LINE);
    }

    @Test
    void thePageFormHasItsLabelsButtonsAndColumnHeads() {
        partner(1, "Alfa Kft.");
        open();
        onPage("Command1");
        form.BeszNyom.fireClick();
        BeszallitoNyomFormX page = (BeszallitoNyomFormX) Forms.get(BeszallitoNyomFormX.NAME);
        assertThat(page.Caption()).isEqualTo("Beszállítók, partnerek nyomtatása");
        assertThat(page.rows()).isEqualTo(22);
        assertThat(page.columns()).hasSize(6);
        assertThat(page.Command1.Caption()).isEqualTo("Tovább");
        assertThat(page.Command2.Caption()).isEqualTo("Nyomtat");
        assertThat(page.Command3.Caption()).isEqualTo("Mégse");
        assertThat(page.head(0).Caption()).isEqualTo("NÉV:");
        assertThat(page.head(5).Caption()).isEqualTo("TELEFON / FAX:");
        assertThat(page.control("BerNev(1)").getName()).isEqualTo("BerNev(1)");
        assertThat(page.control("BerTelefonFax(22)").getName()).isEqualTo("BerTelefonFax(22)");
        assertThat(page.cell("BerNev", 1).Caption()).isEqualTo("Alfa Kft.");
    }

    @Test
    void rowsComeInTheOrderOfBeraktarozokAndTheListEndsOnTheLastRow() {
        partner(1, "Cézár Kft.");
        partner(2, "Alfa Kft.");
        partner(3, "Béta Bt.");
        open();
        // the table's own order
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages.get(0).lines().subList(0, 3)).extracting(l -> l.get(0))
                .containsExactly("Cézár Kft.", "Alfa Kft.", "Béta Bt.");
        assertThat(form.Text2.Text()).isEqualTo("Béta Bt.");
        // after a header sort on the name, the order of the sorted set
        form.DBGrid1_HeadClick(0);
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages.get(1).lines().subList(0, 3)).extracting(l -> l.get(0))
                .containsExactly("Alfa Kft.", "Béta Bt.", "Cézár Kft.");
        assertThat(form.Text2.Text()).isEqualTo("Cézár Kft.");
    }

    @Test
    void aPendingEditIsStoredByTheWalkAndPrinted() {
        partner(1, "Alfa Kft.");
        partner(2, "Béta Bt.");
        open();
        form.Text2.setText("Béta és Társa Bt.");
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages.get(0).line(2).get(0)).isEqualTo("Béta és Társa Bt.");
        assertThat(column("Kerova.dsb", "beraktar", "BerNev")).containsExactly("Alfa Kft.", "Béta és Társa Bt.");
    }

    @Test
    void megseOnAnyPageStopsTheWholeList() {
        partners(50);
        open();
        onPage("Command1");
        onPage("Command3");
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(pages).hasSize(2);
        assertThat(pages.get(1).heading()).isEqualTo(NEXT);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        // the cursor still goes to the last row
        assertThat(form.Text2.Text()).isEqualTo("Partner 50");
        assertThat(pui.printed).isEmpty();
    }

    @Test
    void theCloseBoxOfAPageActsLikeTovabb() {
        partners(30);
        open();
        form.BeszNyom.fireClick(); // no script: the scripted Ui closes each page by its close box
        assertThat(ui.log.stream().filter(s -> s.equals("modal:" + BeszallitoNyomFormX.NAME))).hasSize(2);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 0);
    }

    @Test
    void nyomtatPrintsThePageAsItLooksWithoutTheButtons() {
        partners(23);
        open();
        pui.printerReady = true;
        onPage("Command1");
        onPage("Command2", "Command1");
        form.BeszNyom.fireClick();
        // only the second page was printed: "Tovább" alone prints nothing
        assertThat(pui.printed).hasSize(1);
        List<String> texts = pui.printed.get(0).texts();
        assertThat(texts).contains(NEXT, "Lapszám: 2", TODAY, "NÉV:", "Partner 23", "Város 23", " / ");
        assertThat(texts).doesNotContain(FIRST, "Partner 22", "Tovább", "Nyomtat", "Mégse");
        BeszallitoNyomFormX page = (BeszallitoNyomFormX) Forms.get(BeszallitoNyomFormX.NAME);
        assertThat(page.Command1.Visible()).isTrue();
        assertThat(page.Command2.Visible()).isTrue();
        assertThat(page.Command3.Visible()).isTrue();
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void aPrinterThatIsNotReadyGivesTheMessageAndTheButtonsComeBack() {
        partner(1, "Alfa Kft.");
        open();
        pui.printerReady = false;
        pui.whenShown(BeszallitoNyomFormX.NAME, f -> {
            f.control("Command2").fireClick();
            assertThat(f.control("Command1").Visible()).isTrue();
            assertThat(f.control("Command2").Visible()).isTrue();
            assertThat(f.control("Command3").Visible()).isTrue();
            assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
            f.control("Command1").fireClick();
        });
        form.BeszNyom.fireClick();
        assertThat(ui.messages).containsExactly(msg("A nyomtató nincs készenlétben!", 0, "FIGYELEM!"));
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(pui.printed).isEmpty();
    }

    @Test
    void theFirstPartnerOfAnEmptyTablePrintsAsOneLineWithItsKeyRowOnly() {
        // through the form an empty table already has its row with recordID 1 (Part 1.3)
        open();
        onPage("Command1");
        form.BeszNyom.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(pages).hasSize(1);
        assertThat(pages.get(0).line(1)).containsExactly("", "", "", "", "", " / ");
        assertThat(column("Kerova.dsb", "beraktar", "recordID")).containsExactly(1);
    }
}
