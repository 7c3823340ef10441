package kerova.core.print;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.List;
import kerova.core.db.DataControl;
import kerova.core.db.Recordset;
import kerova.core.form.Form;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/** Part 1.4: the page form, its three buttons, and the paged list (the distance list is the model). */
class Part1_4Test extends FormTestBase {
    static final String NOTHING = "Nincs nyomtatandó adat!";
    static final String NOT_READY = "A nyomtató nincs készenlétben!";
    static final String TODAY = "Kiadva: 2026.11.23.";

    /** A scripted Ui that also records what was sent to the printer, and whether the buttons were hidden then. */
    static final class PrintUi extends ScriptedUi {
        final List<Page> printed = new ArrayList<>();
        final List<Boolean> buttonsHidden = new ArrayList<>();

        @Override
        public boolean printForm(Form form) {
            PageForm p = (PageForm) form;
            buttonsHidden.add(!p.Command1.Visible() && !p.Command2.Visible() && !p.Command3.Visible()
                    && !p.PdfMentes.Visible());
            log.add("print:" + form.getName());
            if (!printerReady) {
                return false;
            }
            printed.add(p.page());
            return true;
        }
    }

    PrintUi pui;
    ListPageForm form;
    DataControl tav;
    /** Each page as shown: its lines' captions, then heading, page label and date. */
    final List<List<String>> pagesSeen = new ArrayList<>();

    @BeforeEach
    void setUp() {
        pui = new PrintUi();
        pui.printerReady = true;
        ui = pui;
        Forms.setUi(pui);
        form = distanceForm();
        tav = new DataControl("TavData", "Kerova.dsb", "select * from UtakTavolsag order by Sorszám");
    }

    /** The shape of Part 3.3's UttavNyomFormX: a title, three columns, 21 lines. */
    static ListPageForm distanceForm() {
        return new ListPageForm("UttavNyomFormX", "Utak távolsága - nyomtatás", "T Á V O L S Á G O K", 21,
                new ListPageForm.Column("Honnan", "HONNAN:", 4),
                new ListPageForm.Column("Hova", "HOVÁ:", 4),
                new ListPageForm.Column("TávolságKm", "TÁVOLSÁG (KM):", 2, Align.RIGHT));
    }

    void distances(int n) {
        for (int i = 1; i <= n; i++) {
            insert("Kerova.dsb", "UtakTavolsag", "Honnan", "Győr " + i, "Hova", "Pécs", "TávolságKm", 100.0 + i + 0.5);
        }
        tav.Refresh();
    }

    PagedList<ListPageForm> distanceList() {
        return PagedList.list(form, tav.Recordset(), r -> new Object[] {
            PagedList.str(r.get("Honnan")), PagedList.str(r.get("Hova")), PagedList.num(r.get("TávolságKm"))});
    }

    /** What the user does on the next page: records the page, then clicks the given buttons. */
    void onPage(String... buttons) {
        pui.whenShown("UttavNyomFormX", f -> {
            ListPageForm l = (ListPageForm) f;
            List<String> seen = new ArrayList<>();
            for (int line = 1; line <= l.rows(); line++) {
                seen.add(String.join("|", l.row(line)));
            }
            seen.add(l.Cim.Caption());
            seen.add(l.Oldal.Caption());
            seen.add(l.Kiadva.Caption());
            pagesSeen.add(seen);
            for (String b : buttons) {
                f.control(b).fireClick();
            }
        });
    }

    long pagesShown() {
        return pui.log.stream().filter(s -> s.equals("modal:UttavNyomFormX")).count();
    }

    // ---------------------------------------------------------------- edge cases of Part 1.4

    @Test
    void emptySetShowsTheMessageAndNoPageForm() {
        tav.Refresh();
        PagedList.Outcome o = distanceList().run();

        assertThat(o).isEqualTo(PagedList.Outcome.EMPTY);
        assertThat(pui.messages).containsExactly(new ScriptedUi.Message(NOTHING, VbConst.vbExclamation, "FIGYELEM!"));
        assertThat(pui.log).noneMatch(s -> s.startsWith("modal:"));
        assertThat(form.isLoaded()).isFalse();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
        assertThat(pui.beeps).isZero();
    }

    @Test
    void emptySetWithBeepAndNoSetAtAll() {
        PagedList.Outcome o = PagedList.of(form, new DataControl("X", "Kerova.dsb", "NoSuchTable")).beepWhenEmpty().run();

        assertThat(o).isEqualTo(PagedList.Outcome.EMPTY);
        assertThat(pui.log).containsSubsequence("beep", "msg:" + NOTHING);
        assertThat(pui.log).noneMatch(s -> s.startsWith("modal:"));
    }

    @Test
    void exactly21RowsGiveOnePage() {
        distances(21);
        onPage("Command1");
        PagedList<ListPageForm> list = distanceList();

        assertThat(list.run()).isEqualTo(PagedList.Outcome.DONE);

        assertThat(pagesShown()).isEqualTo(1);
        assertThat(list.pagesShown()).isEqualTo(1);
        List<String> page = pagesSeen.get(0);
        assertThat(page.get(0)).isEqualTo("Győr 1|Pécs|101,5");
        assertThat(page.get(20)).isEqualTo("Győr 21|Pécs|121,5");
        assertThat(page.subList(21, 24)).containsExactly("T Á V O L S Á G O K", "1. oldal          ", TODAY);
        assertThat(pui.messages).isEmpty();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void twentyTwoRowsGiveTwoPagesTheSecondWithOneLineAndEmptiedRows() {
        distances(22);
        onPage("Command1");
        onPage("Command1");

        distanceList().run();

        assertThat(pagesShown()).isEqualTo(2);
        List<String> second = pagesSeen.get(1);
        assertThat(second.get(0)).isEqualTo("Győr 22|Pécs|122,5");
        assertThat(second.subList(1, 21)).allMatch(s -> s.equals("||"));
        assertThat(second.get(22)).isEqualTo("2. oldal          ");
    }

    @Test
    void megseOnAnyPageStopsTheWholeList() {
        distances(50); // three pages
        onPage("Command1");
        onPage("Command3");
        onPage("Command1");
        PagedList<ListPageForm> list = distanceList();

        assertThat(list.run()).isEqualTo(PagedList.Outcome.CANCELLED);

        assertThat(pagesShown()).isEqualTo(2);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        assertThat(form.isLoaded()).isFalse();
        assertThat(pui.printed).isEmpty();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void megseOnTheFirstPageStopsToo() {
        distances(50);
        onPage("Command3");

        assertThat(distanceList().run()).isEqualTo(PagedList.Outcome.CANCELLED);
        assertThat(pagesShown()).isEqualTo(1);
    }

    @Test
    void tovabbWithoutNyomtatPrintsNothingSoTheUserPicksPages() {
        distances(50);
        onPage("Command1");
        onPage("Command2", "Command1");
        onPage("Command1");

        assertThat(distanceList().run()).isEqualTo(PagedList.Outcome.DONE);

        assertThat(pagesShown()).isEqualTo(3);
        assertThat(pui.printed).hasSize(1);
        Page printed = pui.printed.get(0);
        assertThat(printed.texts()).contains("Győr 22", "Győr 42", "2. oldal          ", TODAY, "T Á V O L S Á G O K",
                "HOVÁ:", "TÁVOLSÁG (KM):");
        assertThat(printed.texts()).doesNotContain("Győr 21", "Győr 43", "Tovább", "Nyomtat", "Mégse");
        assertThat(pui.buttonsHidden).containsExactly(true);
        assertThat(form.printedCount()).isEqualTo(1);
    }

    @Test
    void closeBoxGoesOnLikeTovabb() {
        distances(30);
        // no script: the scripted Ui closes each page with its close box

        assertThat(distanceList().run()).isEqualTo(PagedList.Outcome.DONE);
        assertThat(pagesShown()).isEqualTo(2);
        assertThat(PageForm.PrintCancelled).isZero();
    }

    // ---------------------------------------------------------------- the buttons

    @Test
    void nyomtatWithoutPrinterShowsThePlainBoxAndTheButtonsComeBack() {
        distances(3);
        pui.printerReady = false;
        List<Boolean> visibleAfter = new ArrayList<>();
        pui.whenShown("UttavNyomFormX", f -> {
            PageForm p = (PageForm) f;
            pui.pointers.clear();
            p.Command2.fireClick();
            visibleAfter.add(p.Command1.Visible() && p.Command2.Visible() && p.Command3.Visible() && p.PdfMentes.Visible());
            visibleAfter.add(p.isLoaded());
            p.Command2.fireClick(); // the user can try again
            p.Command1.fireClick();
        });

        assertThat(distanceList().run()).isEqualTo(PagedList.Outcome.DONE);

        ScriptedUi.Message box = new ScriptedUi.Message(NOT_READY, 0, "FIGYELEM!");
        assertThat(pui.messages).containsExactly(box, box);
        assertThat(pui.log).containsSubsequence("pointer:11", "print:UttavNyomFormX", "pointer:1", "beep", "msg:" + NOT_READY);
        assertThat(pui.beeps).isEqualTo(2);
        assertThat(visibleAfter).containsExactly(true, true);
        assertThat(pui.buttonsHidden).containsExactly(true, true);
        assertThat(pui.printed).isEmpty();
        assertThat(form.printedCount()).isZero();
        assertThat(pui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void nyomtatWithPrinterPrintsAndShowsTheButtonsAgain() {
        distances(2);
        List<Boolean> visibleAfter = new ArrayList<>();
        pui.whenShown("UttavNyomFormX", f -> {
            PageForm p = (PageForm) f;
            p.Command2.fireClick();
            visibleAfter.add(p.Command1.Visible() && p.Command2.Visible() && p.Command3.Visible());
            visibleAfter.add(Forms.MousePointer() == VbConst.vbArrow);
        });

        distanceList().run();

        assertThat(pui.messages).isEmpty();
        assertThat(pui.printed).hasSize(1);
        assertThat(visibleAfter).containsExactly(true, true);
    }

    @Test
    void formLoadSetsPrintCancelledToZeroAndTheArrow() {
        PageForm.PrintCancelled = 1;
        distances(1);
        List<Short> atShow = new ArrayList<>();
        pui.whenShown("UttavNyomFormX", f -> atShow.add(PageForm.PrintCancelled));

        assertThat(distanceList().run()).isEqualTo(PagedList.Outcome.DONE);
        assertThat(atShow).containsExactly((short) 0);
        // the arrow is set before the page form is shown
        int shown = pui.log.indexOf("modal:UttavNyomFormX");
        assertThat(pui.log.subList(0, shown)).last().isEqualTo("pointer:1");
    }

    @Test
    void theButtonsHaveTheirNamesAndCaptions() {
        assertThat(form.Command1.getName()).isEqualTo("Command1");
        assertThat(form.Command1.Caption()).isEqualTo("Tovább");
        assertThat(form.Command2.Caption()).isEqualTo("Nyomtat");
        assertThat(form.Command3.Caption()).isEqualTo("Mégse");
        assertThat(form.PdfMentes.Caption()).isEqualTo("PDF mentés...");
        assertThat(form.control("Honnan(21)")).isSameAs(form.cell("Honnan", 21));
        assertThat(form.head(1).Caption()).isEqualTo("HOVÁ:");
    }

    // ---------------------------------------------------------------- where the cursor ends

    @Test
    void theCurrentRecordGoesBackToTheLastOrFirstAsTheCallerSays() {
        distances(25);
        Recordset r = tav.Recordset();

        distanceList().endAt(PagedList.End.LAST).run();
        assertThat(r.get("Honnan")).isEqualTo("Győr 25");

        distanceList().endAt(PagedList.End.FIRST).run();
        assertThat(r.get("Honnan")).isEqualTo("Győr 1");

        distanceList().endAt(PagedList.End.STAY).run();
        assertThat(r.EOF()).isTrue();
    }

    // ---------------------------------------------------------------- the lists of other Parts

    @Test
    void partnerListPatternOfPart4_2() {
        ListPageForm partners = new ListPageForm("BeszallitoNyomFormX", "Beszállítók", "BESZÁLLÍTÓK-PARTNEREK", 22,
                PageFont.SMALL,
                new ListPageForm.Column("BerNev", "Név", 5), new ListPageForm.Column("BerIrszam", "Irsz.", 1.2),
                new ListPageForm.Column("BerOrszag", "Ország", 2), new ListPageForm.Column("BerSzekhely", "Székhely", 2.5),
                new ListPageForm.Column("BerCim", "Cím", 3.5), new ListPageForm.Column("BerTelefon", "Telefon / Fax", 3.5));
        partners.heading = n -> n == 1 ? "BESZÁLLÍTÓK-PARTNEREK" : "BESZÁLLÍTÓK-BERAKTÁROZÓK";
        partners.pageText = ListPageForm.LAPSZAM;
        for (int i = 1; i <= 23; i++) {
            insert("Kerova.dsb", "beraktar", "recordID", i, "BerNev", "Partner " + i, "BerTelefon", "06-1-" + i);
        }
        DataControl d = new DataControl("Beraktarozok", "Kerova.dsb", "select * from beraktar order by recordID");
        d.Refresh();
        List<List<String>> seen = new ArrayList<>();
        for (int k = 0; k < 2; k++) {
            pui.whenShown("BeszallitoNyomFormX", f -> {
                ListPageForm l = (ListPageForm) f;
                seen.add(List.of(l.Cim.Caption(), l.Oldal.Caption(), l.Kiadva.Caption(), String.join("|", l.row(1)),
                        String.join("|", l.row(2))));
            });
        }

        PagedList.Outcome o = PagedList.list(partners, d.Recordset(), r -> new Object[] {
            PagedList.str(r.get("BerNev")), PagedList.str(r.get("BerIrszam")), PagedList.str(r.get("BerOrszag")),
            PagedList.str(r.get("BerSzekhely")), PagedList.str(r.get("BerCim")),
            PagedList.str(r.get("BerTelefon")) + " / " + PagedList.str(r.get("BerFax"))})
                .beepWhenEmpty().endAt(PagedList.End.LAST).run();

        assertThat(o).isEqualTo(PagedList.Outcome.DONE);
        assertThat(seen).hasSize(2);
        assertThat(seen.get(0)).containsExactly("BESZÁLLÍTÓK-PARTNEREK", "Lapszám: 1", TODAY,
                "Partner 1|||||06-1-1 / ", "Partner 2|||||06-1-2 / ");
        assertThat(seen.get(1)).containsExactly("BESZÁLLÍTÓK-BERAKTÁROZÓK", "Lapszám: 2", TODAY,
                "Partner 23|||||06-1-23 / ", "|||||");
        assertThat(d.Recordset().get("BerNev")).isEqualTo("Partner 23");
    }

    @Test
    void sheetsFromTheCurrentRecordStopOnMegseAndNullDatesPrintToday() {
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "AAA-111");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "BBB-222", "KilometerOraAllasa", 12345.0);
        insert("Kerova.dsb", "Jarmuvek", "recordID", 3, "GkFrsz", "CCC-333");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 4, "GkFrsz", "DDD-444");
        DataControl j = new DataControl("JarmuData", "Kerova.dsb", "select * from Jarmuvek order by recordID");
        j.Refresh();
        Recordset r = j.Recordset();
        r.MoveFirst();
        r.MoveNext(); // the current vehicle is the second
        SheetPageForm sheet = new SheetPageForm("GKTorzsNyomFormX", "Gépjármű adatlap", "", 3);
        List<List<String>> seen = new ArrayList<>();
        pui.whenShown("GKTorzsNyomFormX", f -> seen.add(((SheetPageForm) f).lines()));
        pui.whenShown("GKTorzsNyomFormX", f -> {
            seen.add(((SheetPageForm) f).lines());
            ((PageForm) f).Command3.fireClick();
        });

        PagedList.Outcome o = PagedList.sheets(sheet, r, (f, rec) -> {
            f.setLine(1, "Forgalmi rendszám: ", PagedList.str(rec.get("GkFrsz")));
            f.setLine(2, "Kilométeróra állása: ", PagedList.num(rec.get("KilometerOraAllasa")));
            f.setLine(3, "Műszaki vizsga lejárat dátuma: ", PagedList.date(rec.get("MuszakiVizsgaDatum")));
        }).fromCurrent().endAt(PagedList.End.LAST).run();

        assertThat(o).isEqualTo(PagedList.Outcome.CANCELLED);
        assertThat(seen).containsExactly(
                List.of("Forgalmi rendszám: BBB-222", "Kilométeróra állása: 12345",
                        "Műszaki vizsga lejárat dátuma: 2026.11.23.", TODAY),
                List.of("Forgalmi rendszám: CCC-333", "Kilométeróra állása: 0",
                        "Műszaki vizsga lejárat dátuma: 2026.11.23.", TODAY));
        assertThat(r.get("GkFrsz")).isEqualTo("DDD-444");
    }

    @Test
    void currentOnlyShowsOneSheetAndLeavesTheCursor() {
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "AAA-111");
        insert("Kerova.dsb", "Jarmuvek", "recordID", 2, "GkFrsz", "BBB-222");
        DataControl j = new DataControl("JarmuData", "Kerova.dsb", "select * from Jarmuvek order by recordID");
        j.Refresh();
        Recordset r = j.Recordset();
        r.MoveFirst();
        SheetPageForm sheet = new SheetPageForm("GKTorzsNyomFormX", "Gépjármű adatlap", "", 1);
        List<String> seen = new ArrayList<>();
        pui.whenShown("GKTorzsNyomFormX", f -> seen.add(((SheetPageForm) f).line(1).Caption()));

        PagedList<SheetPageForm> run = PagedList.sheets(sheet, r,
                (f, rec) -> f.setLine(1, "Forgalmi rendszám: ", rec.get("GkFrsz"))).currentOnly();

        assertThat(run.run()).isEqualTo(PagedList.Outcome.DONE);
        assertThat(run.pagesShown()).isEqualTo(1);
        assertThat(seen).containsExactly("Forgalmi rendszám: AAA-111");
        assertThat(r.get("GkFrsz")).isEqualTo("AAA-111");
    }

    // ---------------------------------------------------------------- the page model

    @Test
    void thePageHoldsTheVisibleLabelsAtTheirPlacesAndNoButtons() {
        distances(2);
        List<Page> pages = new ArrayList<>();
        pui.whenShown("UttavNyomFormX", f -> pages.add(((PageForm) f).page()));

        distanceList().run();

        Page p = pages.get(0);
        assertThat(p.width()).isEqualTo(Page.A4_WIDTH);
        assertThat(p.height()).isEqualTo(Page.A4_HEIGHT);
        assertThat(p.texts()).startsWith("T Á V O L S Á G O K", TODAY, "1. oldal          ", "HONNAN:", "HOVÁ:",
                "TÁVOLSÁG (KM):", "Győr 1", "Pécs", "101,5", "Győr 2");
        PageItem.Text km = p.items().stream().filter(i -> i instanceof PageItem.Text t && t.text().equals("101,5"))
                .map(i -> (PageItem.Text) i).findFirst().orElseThrow();
        assertThat(km.align()).isEqualTo(Align.RIGHT);
        assertThat(km.x() + km.width()).isLessThanOrEqualTo(Page.A4_WIDTH - PageForm.MARGIN);
        assertThat(p.items()).allMatch(i -> !(i instanceof PageItem.Text t) || (t.y() > 0 && t.y() < Page.A4_HEIGHT - 40));
    }
}
