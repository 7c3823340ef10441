package kerova.trips;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.List;
import kerova.core.Globals;
import kerova.core.db.Database;
import kerova.core.db.Recordset;
import kerova.core.form.DBGrid;
import kerova.core.form.Form;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.RecordForm;
import kerova.core.form.ScriptedUi;
import kerova.core.print.Page;
import kerova.core.print.PageForm;
import kerova.core.print.PageItem;
import kerova.core.print.PagedList;
import kerova.core.vb.VbConst;
import org.junit.jupiter.api.BeforeEach;
import org.junit.jupiter.api.Test;

/** Part 3.3: the route distance master and its list, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part3_3Test extends FormTestBase {
    static final String PAGE_1 = "1. oldal          2026.11.23.";

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

    PrintUi pui;
    GkUtakTavolsagaTorzsFormX form;
    /** Each page as shown: its 21 lines of three texts. */
    final List<List<List<String>>> pages = new ArrayList<>();
    final List<String> pageLines = new ArrayList<>();

    @BeforeEach
    void setUp() {
        pui = new PrintUi();
        ui = pui;
        Forms.setUi(pui);
        RouteGlobals.reset();
    }

    static void route(String from, String to, Object km, Object... more) {
        List<Object> p = new ArrayList<>(java.util.Arrays.asList("Honnan", from, "Hova", to));
        if (km != null) {
            p.add("TávolságKm");
            p.add(km);
        }
        p.addAll(List.of(more));
        insert("Kerova.dsb", "UtakTavolsag", p.toArray());
    }

    static List<Object> col(String column) {
        return column("Kerova.dsb", "UtakTavolsag", column);
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    /** Opens the form as the main menu does. */
    GkUtakTavolsagaTorzsFormX open() {
        form = Forms.put(new GkUtakTavolsagaTorzsFormX());
        form.Show();
        return form;
    }

    Recordset rs() {
        return form.UtTavTorzsData.Recordset();
    }

    // ---------------------------------------------------------------- the form

    @Test
    void titleCaptionsGridAndBindings() {
        route("Budapest", "Győr", 121.5, "HonnanOrszág", "H", "HovaOrszág", "H");
        open();
        assertThat(form.Caption()).isEqualTo("Utak távolsága törzs - Kerova");
        assertThat(form.UtTavTorzsData.DatabaseName()).isEqualTo("Kerova.dsb");
        assertThat(form.DBGrid1.Caption()).isEqualTo("Távolságok törzs - Mozgás nyilakkal");
        assertThat(form.Text1.Text()).isEqualTo("Budapest");
        assertThat(form.Text2.Text()).isEqualTo("Győr");
        assertThat(form.Text3.Text()).isEqualTo("121,5");
        assertThat(form.Text4.Text()).isEqualTo("H");
        assertThat(form.Text5.Text()).isEqualTo("H");
        assertThat(form.Label4.Caption()).isEqualTo("1");
        assertThat(form.DBGrid1.columns()).extracting(DBGrid.Column::Caption)
                .containsExactly("Országjel", "Honnan", "Országjel", "Hova", "Távolság km");
        assertThat(form.DBGrid1.columns()).extracting(DBGrid.Column::DataField)
                .containsExactly("HonnanOrszág", "Honnan", "HovaOrszág", "Hova", "TávolságKm");
        assertThat(List.of(form.Command1, form.Command4, form.Command5, form.Command6, form.Command7, form.Command8,
                form.Command9, form.Command2, form.Command3, form.Command10, form.Command11, form.Command12))
                .extracting(c -> c.Caption())
                .containsExactly("OK-Mentés", "Új adat-üres sor", "Új adat-ellentétes út előzővel", "Keresés-honnan",
                        "Keresés-hová", "Kijelölt sort törli", "Nyomtatás", "Országjel törzs", "Országjel törzs",
                        "Segédlet", "Vissza", "Adat átadása");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void theButtonsOnlyRunTheirMenuEntries() {
        List<String> ran = new ArrayList<>();
        open();
        form.OKMent.Click = () -> ran.add("OKMent");
        form.UtTorzsUj.Click = () -> ran.add("UtTorzsUj");
        form.UjVissza.Click = () -> ran.add("UjVissza");
        form.GTKeresHonnan.Click = () -> ran.add("GTKeresHonnan");
        form.GTKeresHova.Click = () -> ran.add("GTKeresHova");
        form.UtTorzsTorol.Click = () -> ran.add("UtTorzsTorol");
        form.GTNyom.Click = () -> ran.add("GTNyom");
        form.Segedlet.Click = () -> ran.add("Segedlet");
        form.Kilepes.Click = () -> ran.add("Kilepes");
        form.AdatAtad.Click = () -> ran.add("AdatAtad");
        for (var b : List.of(form.Command1, form.Command4, form.Command5, form.Command6, form.Command7, form.Command8,
                form.Command9, form.Command10, form.Command11, form.Command12)) {
            b.fireClick();
        }
        assertThat(ran).containsExactly("OKMent", "UtTorzsUj", "UjVissza", "GTKeresHonnan", "GTKeresHova",
                "UtTorzsTorol", "GTNyom", "Segedlet", "Kilepes", "AdatAtad");
    }

    @Test
    void anEmptyTableGetsARowOnOpeningAndOnlyOnce() {
        open();
        assertThat(col("Sorszám")).hasSize(1);
        assertThat(col("Honnan")).containsOnlyNulls();
        assertThat(form.Label4.Caption()).isEqualTo("1");
        // Form_Activate again (back from a modal child) adds nothing
        Forms.get(GkUtakTavolsagaTorzsFormX.COUNTRY_FORM); // made, not shown
        form.Command2.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
    }

    @Test
    void aFilledTableOpensWhereTheSourceOpenedOnTheFirstRow() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        open();
        assertThat(form.Text1.Text()).isEqualTo("Budapest");
        assertThat(col("Sorszám")).hasSize(2);
    }

    @Test
    void focusColoursAndTheDistanceKeyFilter() {
        open();
        form.Text2.fireGotFocus();
        assertThat(form.Text2.BackColor()).isEqualTo(0xFFFF80);
        form.Text2.fireLostFocus();
        assertThat(form.Text2.BackColor()).isEqualTo(RecordForm.REST_COLOR);
        assertThat(form.Text3.fireKeyPress('7')).isEqualTo('7');
        assertThat(form.Text3.fireKeyPress(',')).isEqualTo(',');
        assertThat(form.Text3.fireKeyPress(8)).isEqualTo(8);
        int beeps = ui.beeps;
        assertThat(form.Text3.fireKeyPress('k')).isZero();
        assertThat(form.Text3.fireKeyPress('-')).isZero();
        assertThat(ui.beeps).isEqualTo(beeps + 2);
        // the place and country fields take any key
        assertThat(form.Text1.fireKeyPress('k')).isEqualTo('k');
    }

    // ---------------------------------------------------------------- new row and return row

    @Test
    void aNewRowExistsAtOnceWithEmptyFieldsAndTwoClicksMakeTwo() {
        route("Budapest", "Győr", 121.0);
        open();
        form.UtTorzsUj.fireClick();
        assertThat(col("Sorszám")).hasSize(2);
        assertThat(form.Label4.Caption()).isEqualTo("2");
        assertThat(form.Text1.Text()).isEmpty();
        assertThat(form.focused()).isSameAs(form.Text1);
        form.Command4.fireClick();
        assertThat(col("Sorszám")).containsExactly(1, 2, 3);
        assertThat(col("Honnan")).containsExactly("Budapest", null, null);
    }

    @Test
    void theReturnRowSwapsThePlacesKeepsTheDistanceAndHasNoCountryCodes() {
        route("Budapest", "Wien", 243.0, "HonnanOrszág", "H", "HovaOrszág", "A");
        open();
        form.UjVissza.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Wien");
        assertThat(form.Text2.Text()).isEqualTo("Budapest");
        assertThat(form.Text3.Text()).isEqualTo("243");
        assertThat(form.Text4.Text()).isEmpty();
        assertThat(form.Text5.Text()).isEmpty();
        assertThat(form.focused()).isSameAs(form.Text1);
        form.OKMent.fireClick();
        assertThat(ui.messages).isEmpty();
        List<Object[]> rows = rows("Kerova.dsb", "UtakTavolsag");
        assertThat(rows).hasSize(2);
        assertThat(rows.get(1)).containsExactly("Wien", "Budapest", 243.0, null, null, 2);
        assertThat(rows.get(0)).containsExactly("Budapest", "Wien", 243.0, "H", "A", 1);
    }

    @Test
    void theReturnRowOfARowWithoutDistanceGetsZeroAndThePendingEditIsStored() {
        route("Pécs", null, null);
        open();
        form.Text2.setText("Szeged");
        form.Command5.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Szeged");
        assertThat(form.Text2.Text()).isEqualTo("Pécs");
        assertThat(form.Text3.Text()).isEqualTo("0");
        form.Kilepes.fireClick();
        assertThat(col("Hova")).containsExactly("Szeged", "Pécs");
        assertThat(col("TávolságKm")).containsExactly(null, 0.0);
    }

    @Test
    void noReturnRowOffTheEnd() {
        route("Budapest", "Győr", 121.0);
        open();
        rs().MoveLast();
        rs().MoveNext();
        assertThat(rs().EOF()).isTrue();
        form.UjVissza.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
    }

    // ---------------------------------------------------------------- save

    @Test
    void saveStoresTheEditAndStaysOnTheRow() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        route("Sopron", "Szombathely", 62.0);
        open();
        rs().MoveNext();
        form.Text3.setText("88,5");
        form.OKMent.fireClick();
        assertThat(col("TávolságKm")).containsExactly(121.0, 88.5, 62.0);
        assertThat(form.Label4.Caption()).isEqualTo("2");
        assertThat(form.Text1.Text()).isEqualTo("Győr");
        assertThat(ui.messages).isEmpty();
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void saveOfARowThatAnotherUserDeletedGivesBothMessages() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        open();
        rs().MoveNext();
        assertThat(form.Label4.Caption()).isEqualTo("2");
        Recordset other = Database.open("Kerova.dsb").OpenRecordset("select * from UtakTavolsag where Sorszám = 2");
        other.Delete();
        other.Close();
        form.OKMent.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Nincs ilyen azonosító! Lehet, hogy hibás az adatbázis!", 0, "Kerova"),
                msg("Nincs ilyen azonosító! Álljon rá egy másik adatra a táblázatban!", 0, "Kerova"));
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
        assertThat(col("Sorszám")).containsExactly(1);
    }

    @Test
    void saveWithNoRowsMakesANewRow() {
        form = Forms.put(new GkUtakTavolsagaTorzsFormX());
        form.Load(); // no Form_Activate: the table stays empty
        form.Command1.fireClick();
        assertThat(col("Sorszám")).hasSize(1);
        assertThat(ui.messages).isEmpty();
    }

    // ---------------------------------------------------------------- searches

    @Test
    void theSearchFromWalksOnThroughTheMatchesAndWraps() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        route("Budaörs", "Tata", 50.0);
        open();
        ui.input("Bud");
        form.GTKeresHonnan.fireClick();
        assertThat(ui.inputs).containsExactly("Keresés - honnan | Honnan:");
        assertThat(form.Text1.Text()).isEqualTo("Budaörs");
        ui.input("Bud");
        form.Command6.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Budapest");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void theSearchToWithoutMatchSaysNoSuchPlaceAndMovesFirst() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        open();
        rs().MoveLast();
        ui.input("Zala");
        form.GTKeresHova.fireClick();
        assertThat(ui.inputs).containsExactly("Keresés - hova | Hova:");
        assertThat(ui.messages).containsExactly(msg("Nincs ilyen helység!", 48, "Keresés - hova"));
        assertThat(ui.log).containsSubsequence("beep", "msg:Nincs ilyen helység!");
        assertThat(form.Text1.Text()).isEqualTo("Budapest");
        ui.input("Sop");
        form.Command7.fireClick();
        assertThat(form.Text2.Text()).isEqualTo("Sopron");
    }

    @Test
    void anEmptySearchOrCancelChangesNothing() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        open();
        rs().MoveNext();
        ui.input("");
        form.GTKeresHonnan.fireClick();
        ui.input("");
        form.GTKeresHova.fireClick();
        assertThat(form.Text1.Text()).isEqualTo("Győr");
        assertThat(ui.messages).isEmpty();
    }

    // ---------------------------------------------------------------- delete

    @Test
    void deleteAsksAndYesDeletesAndMovesNext() {
        route("Budapest", "Győr", 121.0);
        route("Győr", "Sopron", 87.0);
        route("Sopron", "Szombathely", 62.0);
        open();
        rs().MoveNext();
        ui.answer(VbConst.vbYes);
        form.UtTorzsTorol.fireClick();
        assertThat(ui.messages).containsExactly(msg("Az adatsor VÉGLEGESEN törölhető?", 36,
                "FIGYELEM! Aktuális adat VISSZAVONHATATLAN törlése!"));
        assertThat(col("Honnan")).containsExactly("Budapest", "Sopron");
        assertThat(form.Text1.Text()).isEqualTo("Sopron");
        // the last row: at the end, move last
        ui.answer(VbConst.vbYes);
        form.Command8.fireClick();
        assertThat(col("Honnan")).containsExactly("Budapest");
        assertThat(form.Text1.Text()).isEqualTo("Budapest");
        // No keeps the row
        ui.answer(VbConst.vbNo);
        form.Command8.fireClick();
        assertThat(col("Honnan")).containsExactly("Budapest");
        assertThat(ui.allAnswered()).isTrue();
    }

    @Test
    void deletingTheLastRowAddsANewRowAtOnce() {
        route("Budapest", "Győr", 121.0);
        open();
        ui.answer(VbConst.vbYes);
        form.UtTorzsTorol.fireClick();
        assertThat(col("Sorszám")).containsExactly(2);
        assertThat(col("Honnan")).containsOnlyNulls();
        assertThat(form.Label4.Caption()).isEqualTo("2");
    }

    @Test
    void deleteOnAnEmptySourceAddsARowWithoutAsking() {
        form = Forms.put(new GkUtakTavolsagaTorzsFormX());
        form.Load();
        form.UtTorzsTorol.fireClick();
        assertThat(ui.messages).isEmpty();
        assertThat(col("Sorszám")).hasSize(1);
    }

    // ---------------------------------------------------------------- edge cases of Part 3.3

    @Test
    void aRowWithAZeroDistanceStaysAndIsPassedAsZero() {
        route("Budapest", "Budapest", 0.0);
        open();
        form.OKMent.fireClick();
        assertThat(ui.messages).isEmpty();
        form.AdatAtad.fireClick();
        assertThat(col("TávolságKm")).containsExactly(0.0);
        assertThat(RouteGlobals.RoutePicked).isEqualTo((short) 1);
        assertThat(RouteGlobals.PickedRouteDistance).isZero();
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void passingARowFillsTheGlobalsAndLeaves() {
        route("Budapest", "Wien", 243.5, "HonnanOrszág", "H", "HovaOrszág", "A");
        open();
        form.Text1.setText("Budapest XI.");
        form.Command12.fireClick();
        assertThat(RouteGlobals.RoutePicked).isEqualTo((short) 1);
        assertThat(RouteGlobals.PickedFromCountry).isEqualTo("H");
        assertThat(RouteGlobals.PickedToCountry).isEqualTo("A");
        assertThat(RouteGlobals.PickedFrom).isEqualTo("Budapest XI.");
        assertThat(RouteGlobals.PickedTo).isEqualTo("Wien");
        assertThat(RouteGlobals.PickedRouteDistance).isEqualTo(243.5);
        assertThat(form.isLoaded()).isFalse();
        // the exit stored the edit
        assertThat(col("Honnan")).containsExactly("Budapest XI.");
    }

    @Test
    void passingWithAnEmptySourceClearsTheFourTextsAndLeavesTheFlag() {
        RouteGlobals.RoutePicked = 1;
        RouteGlobals.PickedFromCountry = "H";
        RouteGlobals.PickedToCountry = "A";
        RouteGlobals.PickedFrom = "Budapest";
        RouteGlobals.PickedTo = "Wien";
        RouteGlobals.PickedRouteDistance = 243;
        form = Forms.put(new GkUtakTavolsagaTorzsFormX());
        form.Load(); // the source is empty: no Form_Activate has added its row
        form.AdatAtad.fireClick();
        assertThat(RouteGlobals.PickedFromCountry).isEmpty();
        assertThat(RouteGlobals.PickedToCountry).isEmpty();
        assertThat(RouteGlobals.PickedFrom).isEmpty();
        assertThat(RouteGlobals.PickedTo).isEmpty();
        assertThat(RouteGlobals.RoutePicked).isEqualTo((short) 1);
        assertThat(RouteGlobals.PickedRouteDistance).isEqualTo(243);
        assertThat(form.isLoaded()).isFalse();
        assertThat(col("Sorszám")).isEmpty();
    }

    @Test
    void passingOffTheEndAlsoClearsTheTextsAndKeepsAFlagOfZero() {
        route("Budapest", "Wien", 243.5);
        RouteGlobals.PickedFrom = "régi";
        open();
        rs().MoveLast();
        rs().MoveNext();
        form.AdatAtad.fireClick();
        assertThat(RouteGlobals.PickedFrom).isEmpty();
        assertThat(RouteGlobals.RoutePicked).isZero();
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void aPageHolds21RowsAndThePreviewComesWhenTheCounterPasses21() {
        for (int i = 1; i <= 22; i++) {
            route("Honnan " + i, "Hová " + i, (double) i);
        }
        open();
        onPage("Command1");
        onPage("Command1");
        form.GTNyom.fireClick();
        assertThat(pages).hasSize(2);
        assertThat(pages.get(0).get(0)).containsExactly("Honnan 1", "Hová 1", "1");
        assertThat(pages.get(0).get(20)).containsExactly("Honnan 21", "Hová 21", "21");
        assertThat(pages.get(1).get(0)).containsExactly("Honnan 22", "Hová 22", "22");
        // the second page's other lines were emptied
        assertThat(pages.get(1).get(1)).containsExactly("", "", "");
        assertThat(pageLines).containsExactly(PAGE_1, "2. oldal          2026.11.23.");
        assertThat(pui.printed).isEmpty();
        // the walk ends on the first row
        assertThat(form.Text1.Text()).isEqualTo("Honnan 1");
        assertThat(ui.lastPointer()).isEqualTo(VbConst.vbArrow);
    }

    @Test
    void exactly21RowsGiveOnePage() {
        for (int i = 1; i <= 21; i++) {
            route("Honnan " + i, "Hová " + i, null);
        }
        open();
        onPage("Command1");
        form.Command9.fireClick();
        assertThat(pages).hasSize(1);
        // a null distance prints through NullToNum as 0
        assertThat(pages.get(0).get(20)).containsExactly("Honnan 21", "Hová 21", "0");
    }

    @Test
    void thePageHasItsTitleHeadsAndPageLineAndPrintsAsItLooks() {
        route("Budapest", "Győr", 121.5);
        open();
        pui.printerReady = true;
        onPage("Command2", "Command1");
        form.GTNyom.fireClick();
        UttavNyomFormX page = (UttavNyomFormX) Forms.get(UttavNyomFormX.NAME);
        assertThat(page.Cim.Caption()).isEqualTo("T Á V O L S Á G O K");
        assertThat(page.head(0).Caption()).isEqualTo("HONNAN:");
        assertThat(page.head(1).Caption()).isEqualTo("HOVÁ:");
        assertThat(page.head(2).Caption()).isEqualTo("TÁVOLSÁG (KM):");
        assertThat(page.rows()).isEqualTo(21);
        assertThat(page.Command1.Caption()).isEqualTo("Tovább");
        assertThat(page.Command2.Caption()).isEqualTo("Nyomtat");
        assertThat(page.Command3.Caption()).isEqualTo("Mégse");
        assertThat(pui.printed).hasSize(1);
        List<String> texts = pui.printed.get(0).items().stream()
                .filter(i -> i instanceof PageItem.Text).map(i -> ((PageItem.Text) i).text()).toList();
        assertThat(texts).contains("T Á V O L S Á G O K", "HOVÁ:", "TÁVOLSÁG (KM):", PAGE_1, "Budapest", "Győr",
                "121,5");
        assertThat(texts).doesNotContain("Tovább", "Nyomtat", "Mégse");
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void aPrinterThatIsNotReadyGivesTheMessageAndThePageStays() {
        route("Budapest", "Győr", 121.5);
        open();
        pui.printerReady = false;
        pui.whenShown(UttavNyomFormX.NAME, f -> {
            f.control("Command2").fireClick();
            assertThat(f.control("Command1").Visible()).isTrue();
            f.control("Command1").fireClick();
        });
        form.GTNyom.fireClick();
        assertThat(ui.messages).containsExactly(msg("A nyomtató nincs készenlétben!", 0, "FIGYELEM!"));
        assertThat(pui.printed).isEmpty();
    }

    @Test
    void megseOnTheFirstPageStopsTheWholeList() {
        for (int i = 1; i <= 30; i++) {
            route("Honnan " + i, "Hová " + i, (double) i);
        }
        open();
        onPage("Command3");
        onPage("Command1");
        form.GTNyom.fireClick();
        assertThat(pages).hasSize(1);
        assertThat(PageForm.PrintCancelled).isEqualTo((short) 1);
        assertThat(form.Text1.Text()).isEqualTo("Honnan 1");
    }

    @Test
    void anEmptySourceShowsTheMessageAndNoPage() {
        form = Forms.put(new GkUtakTavolsagaTorzsFormX());
        form.Load();
        assertThat(form.print()).isEqualTo(PagedList.Outcome.EMPTY);
        assertThat(ui.messages).containsExactly(msg("Nincs nyomtatandó adat!", 48, "FIGYELEM!"));
        assertThat(ui.log).doesNotContain("modal:" + UttavNyomFormX.NAME);
    }

    void onPage(String... buttons) {
        pui.whenShown(UttavNyomFormX.NAME, f -> {
            UttavNyomFormX p = (UttavNyomFormX) f;
            List<List<String>> lines = new ArrayList<>();
            for (int line = 1; line <= UttavNyomFormX.ROWS; line++) {
                lines.add(p.row(line));
            }
            pages.add(lines);
            pageLines.add(p.pageLine());
            for (String b : buttons) {
                f.control(b).fireClick();
            }
        });
    }

    // ---------------------------------------------------------------- the country picker (Part 4.4)

    /** The user picks a country on OrszagokFormX: its hand-over slots, then the form closes. */
    void pickCountry(String mark, String name) {
        ui.whenShown(GkUtakTavolsagaTorzsFormX.COUNTRY_FORM, f -> {
            Globals.CountryPicked = 1;
            Globals.CountryMarkTransfer = mark;
            Globals.CountryNameTransfer = name;
            f.Unload();
        });
    }

    @Test
    void theCountryButtonsPutThePickedMarkIntoTheirBox() {
        route("Budapest", "Wien", 243.0);
        open();
        pickCountry("H", "Magyarország");
        form.Command2.fireClick();
        assertThat(form.Text4.Text()).isEqualTo("H");
        assertThat(form.Text5.Text()).isEmpty();
        pickCountry("A", "Ausztria");
        form.Command3.fireClick();
        assertThat(form.Text5.Text()).isEqualTo("A");
        assertThat(ui.log).containsSubsequence("modal:OrszagokFormX", "modal:OrszagokFormX");
        form.OKMent.fireClick();
        assertThat(col("HonnanOrszág")).containsExactly("H");
        assertThat(col("HovaOrszág")).containsExactly("A");
    }

    @Test
    void closingThePickerWithoutAPickLeavesTheBox() {
        route("Budapest", "Wien", 243.0, "HonnanOrszág", "H");
        open();
        Globals.CountryPicked = 1; // a former pick: the button clears the slots before it opens the form
        Globals.CountryMarkTransfer = "D";
        ui.whenShown(GkUtakTavolsagaTorzsFormX.COUNTRY_FORM, Form::Unload);
        form.Command2.fireClick();
        assertThat(form.Text4.Text()).isEqualTo("H");
        assertThat(Globals.CountryMarkTransfer).isEmpty();
    }

    @Test
    void theRealCountryFormHandsOverItsCurrentRow() {
        insert("betarol.dsb", "Orszagjel", "Országjel", "SK", "Ország", "Szlovákia");
        route("Komárom", "Komárno", 3.0);
        open();
        // the user presses "Adat átadása" on OrszagokFormX (Part 4.4)
        ui.whenShown(GkUtakTavolsagaTorzsFormX.COUNTRY_FORM, f -> f.control("Command8").fireClick());
        form.Command3.fireClick();
        assertThat(form.Text5.Text()).isEqualTo("SK");
        assertThat(form.Text4.Text()).isEmpty();
        assertThat(Forms.get(GkUtakTavolsagaTorzsFormX.COUNTRY_FORM).isLoaded()).isFalse();
    }

    // ---------------------------------------------------------------- leaving, help, sort

    @Test
    void leavingStoresTheEditAndClosesTheSource() {
        route("Budapest", "Győr", 121.0);
        open();
        form.Text3.setText("123");
        form.Command11.fireClick();
        assertThat(col("TávolságKm")).containsExactly(123.0);
        assertThat(form.isLoaded()).isFalse();
        assertThat(rs().isClosed()).isTrue();
        assertThat(form.CloseGuard).isFalse();
    }

    @Test
    void theCloseBoxRunsTheExitOnce() {
        route("Budapest", "Győr", 121.0);
        open();
        form.Text2.setText("Győr-Ménfőcsanak");
        form.closeBox();
        assertThat(col("Hova")).containsExactly("Győr-Ménfőcsanak");
        assertThat(form.isLoaded()).isFalse();
        assertThat(ui.log.stream().filter(s -> s.equals("close:" + GkUtakTavolsagaTorzsFormX.NAME))).hasSize(1);
    }

    @Test
    void helpOpensTheHelpFormWithTheFormsName() {
        open();
        form.Command10.fireClick();
        assertThat(Globals.HelpTopicName).isEqualTo("GkUtakTavolsagaTorzsFormX");
        assertThat(ui.log).contains("modal:HelpFormX");
    }

    @Test
    void aHeaderClickSortsAndTheSecondReverses() {
        route("Budapest", "Győr", 121.0);
        route("Aszód", "Sopron", 87.0);
        route("Csorna", "Tata", 62.0);
        open();
        form.DBGrid1.fireHeadClick(1);
        assertThat(form.DBGrid1.cellText(0, form.DBGrid1.Columns(1))).isEqualTo("Aszód");
        form.DBGrid1.fireHeadClick(1);
        assertThat(form.DBGrid1.cellText(0, form.DBGrid1.Columns(1))).isEqualTo("Csorna");
    }
}
