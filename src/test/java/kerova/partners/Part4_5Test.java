package kerova.partners;

import static org.assertj.core.api.Assertions.assertThat;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import kerova.core.Globals;
import kerova.core.form.FormTestBase;
import kerova.core.form.Forms;
import kerova.core.form.ScriptedUi;
import kerova.core.vb.VbConst;
import kerova.vehicles.GKTorzsFormX;
import org.junit.jupiter.api.Test;

/** Part 4.5: the customer master, with the scripted Ui on a company folder made by CompanyFolder.init. */
class Part4_5Test extends FormTestBase {
    CimzettForm form;

    static void customer(int id, Object name, Object... more) {
        List<Object> p = new ArrayList<>(Arrays.asList("recordID", id, "CimNev", name));
        p.addAll(Arrays.asList(more));
        insert("kitarol.mdb", "Címzett", p.toArray());
    }

    static void country(String mark, String name) {
        insert("betarol.mdb", "Orszagjel", "Országjel", mark, "Ország", name);
    }

    CimzettForm open() {
        form = Forms.put(new CimzettForm());
        form.Show();
        return form;
    }

    static ScriptedUi.Message msg(String text, int style, String title) {
        return new ScriptedUi.Message(text, style, title);
    }

    static List<Object> col(String column) {
        return column("kitarol.mdb", "Címzett", column);
    }

    /** The actions of the log, in order. */
    static List<Object> logged() {
        List<Object> out = new ArrayList<>();
        for (Object[] r : rows("Regiszt.dsb", "Regisztrálás")) {
            out.add(r[4]);
        }
        return out;
    }

    static final ScriptedUi.Message CHECK = msg("Kéri az adatok teljes ellenőrzését?", 36,
            "FIGYELEM! Teljeskörű ellenőrzés!");
    static final ScriptedUi.Message MANDATORY = msg("Kötelező adat nincs kitöltve (vastag aláhúzottak)!", 48,
            "FIGYELEM! KEZELŐI HIBA!");

    List<String> gridNames() {
        List<String> out = new ArrayList<>();
        for (int i = 0; i < form.DBGrid1.rowCount(); i++) {
            out.add(form.DBGrid1.cellText(i, form.DBGrid1.Columns(0)));
        }
        return out;
    }

    // ---------------------------------------------------------------- the form

    @Test
    void titleBindingsTipsAndCaptions() {
        customer(4, "Őrségi Tűzifa Kft.", "CimIrszam", "9941", "CimSzekhely", "Őriszentpéter", "CimCim", "Fő út 1.",
                "CimTelefon", "94/428-001", "CimFax", "94428002", "CimMobil", "306012345", "CimAdoszam", "12345678-2-18",
                "CimSzamlaszam", "11773016-00000000", "Kapcsolattartó", "Szűts Írisz", "SzamlazasSzekhelye", "Szombathely",
                "SzamlazasIrszama", "9700", "SzamlazasCime", "Fő tér 2.", "VevoKodja", "V04", "JutalekJel", "J",
                "FizetésiHatáridö", 8, "KézhezvételNap", 3, "KapcsolattartóCime", "9941 Őriszentpéter, Fő út 1.",
                "Megjegyzés", "Jó vevő", "NemAktiv", false, "Alvállalkozó", true, "Különjárat", true,
                "CimOrszag", "H");
        open();
        assertThat(form.Caption()).isEqualTo("Partnertörzs - Vevők (címzettek) adatai (CRM alap)");
        assertThat(form.CimzettData.RecordSource()).isEqualTo("select * from Címzett order by CimNev");
        assertThat(form.Text1.Text()).isEqualTo("4");
        assertThat(form.Text2.Text()).isEqualTo("Őrségi Tűzifa Kft.");
        assertThat(form.Text6.Text()).isEqualTo("94/428-001");
        assertThat(form.Text9.Text()).isEqualTo("12345678-2-18");
        assertThat(form.Text11.Text()).isEqualTo("Szűts Írisz");
        assertThat(form.Text17.Text()).isEqualTo("8");
        assertThat(form.Text18.Text()).isEqualTo("3");
        assertThat(form.Text20.Text()).isEqualTo("Jó vevő");
        assertThat(form.Label14.Caption()).isEqualTo("H");
        assertThat(form.Check2.Value()).isZero();
        assertThat(form.Check4.Value()).isEqualTo(1);
        assertThat(form.Check6.Value()).isEqualTo(1);
        assertThat(form.Text2.ToolTipText()).isEqualTo("Név");
        assertThat(form.Text3.ToolTipText()).isEqualTo("Postai jel, irányítószám");
        assertThat(form.Text13.ToolTipText()).isEqualTo("Postai irányítószám");
        assertThat(form.Text17.ToolTipText()).isEqualTo("Teljesítés dátumához adott nap");
        assertThat(form.Text18.ToolTipText()).isEqualTo("Okmány keltéhez adott nap");
        assertThat(form.Text19.ToolTipText()).isEqualTo("Teljes cím");
        assertThat(form.Check2.Caption()).isEqualTo("NEM aktív");
        assertThat(form.Check2.ToolTipText()).isEqualTo("Nem jelenik meg okmánykitöltésnél");
        assertThat(form.Check3.Caption()).isEqualTo("Környzetvédelmi termékdíjat vevő átvállalja");
        assertThat(form.Check7.Caption()).isEqualTo("Pénzforgalmi elszámolás:");
        assertThat(form.Check7.ToolTipText()).isEqualTo("Pénzforgalmi elszámolás 2013-tól");
        assertThat(form.Command2.Caption()).isEqualTo("Új ország megadása");
        assertThat(form.Command3.Caption()).isEqualTo("Ország törlése");
        // an edit is stored by the save's moves
        form.Text20.setText("Nagyon jó vevő");
        form.Check2.setValue(1);
        form.Command4.fireClick();
        assertThat(col("Megjegyzés")).containsExactly("Nagyon jó vevő");
        assertThat(col("NemAktiv")).containsExactly(true);
        assertThat(ui.messages).isEmpty();
    }

    @Test
    void thePhoneFieldTakesDigitsDashAndSlash() {
        customer(1, "Alfa Kft.");
        open();
        assertThat(form.Text6.fireKeyPress('7')).isEqualTo('7');
        assertThat(form.Text6.fireKeyPress('-')).isEqualTo('-');
        assertThat(form.Text6.fireKeyPress('/')).isEqualTo('/');
        assertThat(form.Text6.fireKeyPress(8)).isEqualTo(8);
        assertThat(ui.beeps).isZero();
        assertThat(form.Text6.fireKeyPress('a')).isZero();
        assertThat(form.Text6.fireKeyPress('+')).isZero();
        assertThat(ui.beeps).isEqualTo(2);
        form.Text2.fireGotFocus();
        assertThat(form.Text2.BackColor()).isEqualTo(0xFFFF80);
    }

    // ---------------------------------------------------------------- views and filters

    @Test
    void inactiveRowsVanishFromTheSubcontractorViewWhateverAlvallalkozoSays() {
        customer(1, "Aktív Alvállalkozó Kft.", "NemAktiv", false, "Alvállalkozó", true);
        customer(2, "Inaktív Alvállalkozó Bt.", "NemAktiv", true, "Alvállalkozó", true);
        customer(3, "Aktív Vevő Zrt.", "NemAktiv", false, "Alvállalkozó", false);
        customer(4, "Inaktív Vevő Kft.", "NemAktiv", true, "Alvállalkozó", false);
        Globals.CustomerSubcontractorRequest = 1;
        open();
        assertThat(form.CimzettData.RecordSource())
                .isEqualTo("select * from Címzett where NemAktiv = False and Alvállalkozó = True order by Cimnev");
        assertThat(gridNames()).containsExactly("Aktív Alvállalkozó Kft.");
        assertThat(form.Text2.Text()).isEqualTo("Aktív Alvállalkozó Kft.");
    }

    @Test
    void theFilterMenus() {
        customer(1, "Cézár Kft.", "NemAktiv", false);
        customer(2, "Bódi Bt.", "NemAktiv", true);
        customer(3, "Ábel Zrt.", "NemAktiv", false);
        open();
        assertThat(gridNames()).containsExactly("Ábel Zrt.", "Bódi Bt.", "Cézár Kft.");
        form.Aktivak.fireClick();
        assertThat(form.CimzettData.RecordSource())
                .isEqualTo("select * from Címzett where NemAktiv = False order by Cimnev");
        assertThat(gridNames()).containsExactly("Ábel Zrt.", "Cézár Kft.");
        form.NemAktiv.fireClick();
        assertThat(form.CimzettData.RecordSource()).isEqualTo("select * from Címzett where NemAktiv = True order by Cimnev");
        assertThat(gridNames()).containsExactly("Bódi Bt.");
        form.SzuresKi.fireClick();
        assertThat(form.CimzettData.RecordSource()).isEqualTo("select * from Címzett order by Cimnev");
        assertThat(gridNames()).containsExactly("Ábel Zrt.", "Bódi Bt.", "Cézár Kft.");
    }

    @Test
    void theSearchAsYouType() {
        customer(1, "Kovács és Társa Kft.");
        customer(2, "Őrségi Tűzifa Kft.");
        customer(3, "Zala Fuvar Bt.");
        open();
        assertThat(form.Text2.Text()).isEqualTo("Zala Fuvar Bt.");
        form.Text21.setText("Őr");
        assertThat(form.Text2.Text()).isEqualTo("Őrségi Tűzifa Kft.");
        form.Text21.setText("Őrx");
        assertThat(form.Text2.Text()).isEqualTo("Őrségi Tűzifa Kft.");
        form.Text21.setText("");
        assertThat(form.Text2.Text()).isEqualTo("Őrségi Tűzifa Kft.");
        form.Text21.setText("Kov");
        assertThat(form.Text2.Text()).isEqualTo("Kovács és Társa Kft.");
        assertThat(ui.lastPointer()).isEqualTo(1);
    }

    // ---------------------------------------------------------------- new, save, copy

    @Test
    void aNewCustomerTakesTheLastKeyInKeyOrderPlusOne() {
        customer(7, "Aba Kft.");
        customer(2, "Zsolnai Bt.");
        open();
        form.UjAdat.fireClick();
        assertThat(form.CimzettData.RecordSource()).isEqualTo("select * from Címzett order by CimNev");
        assertThat(form.Text1.Text()).isEqualTo("8");
        assertThat(form.Text2.Text()).isEmpty();
        assertThat(col("recordID")).containsExactly(7, 2, 8);
        assertThat(logged()).containsExactly("Új vevőtörzs adatsor");
        // a second click makes a second row
        form.UjAdat.fireClick();
        assertThat(col("recordID")).containsExactly(7, 2, 8, 9);
    }

    @Test
    void aCustomerWithNoNameCanBeSavedAndTheClosingCheckRemovesIt() {
        customer(1, "Alfa Kft.", "CimSzekhely", "Pécs", "CimCim", "Fő u. 1.");
        open();
        form.UjAdat.fireClick();
        form.Text4.setText("Győr");
        form.Text5.setText("Baross út 3.");
        form.Command4.fireClick();
        // only the message warns: the row is stored as it stands
        assertThat(ui.messages).containsExactly(MANDATORY);
        assertThat(ui.beeps).isEqualTo(1);
        assertThat(col("CimNev")).containsExactly("Alfa Kft.", null);
        assertThat(col("CimSzekhely")).containsExactly("Pécs", "Győr");
        assertThat(col("CimCim")).containsExactly("Fő u. 1.", "Baross út 3.");
        assertThat(logged()).containsExactly("Új vevőtörzs adatsor", "Adathiány (kötelező adat) vevőtörzsben");
        assertThat(ui.lastPointer()).isEqualTo(1);

        // a name filled: no message
        ui.clear();
        form.Text2.setText("Béta Bt.");
        form.Command4.fireClick();
        assertThat(ui.messages).isEmpty();
        form.Text2.setText("");
        form.Command4.fireClick();
        assertThat(ui.messages).containsExactly(MANDATORY);
        // an emptied box stores null
        assertThat(col("CimNev")).containsExactly("Alfa Kft.", null);

        // the closing check: "Nem" keeps it
        ui.clear();
        ui.answer(VbConst.vbNo);
        form.Kilepes.fireClick();
        assertThat(ui.messages).containsExactly(CHECK);
        assertThat(form.isLoaded()).isFalse();
        assertThat(col("recordID")).containsExactly(1, 2);

        // "Igen" removes it (and a null name too)
        customer(3, null, "CimSzekhely", "Eger");
        ui.clear();
        open();
        ui.answer(VbConst.vbYes);
        form.Kilepes.fireClick();
        assertThat(ui.messages).containsExactly(CHECK);
        assertThat(col("recordID")).containsExactly(1);
        assertThat(form.isLoaded()).isFalse();
    }

    @Test
    void theCloseBoxRunsTheClosingCheck() {
        customer(1, "Alfa Kft.");
        customer(2, "");
        open();
        ui.answer(VbConst.vbYes);
        form.closeBox();
        assertThat(ui.messages).containsExactly(CHECK);
        assertThat(form.isLoaded()).isFalse();
        assertThat(col("CimNev")).containsExactly("Alfa Kft.");
    }

    @Test
    void rekordDuplaKeepsNothingButTheNameAndTaxNumber() {
        customer(5, "Őrségi Tűzifa Kft.", "CimIrszam", "9941", "CimSzekhely", "Őriszentpéter", "CimCim", "Fő út 1.",
                "CimTelefon", "94428001", "CimAdoszam", "12345678-2-18", "Kapcsolattartó", "Szűts Írisz",
                "FizetésiHatáridö", 8, "NemAktiv", true, "Alvállalkozó", true, "CimOrszag", "H", "Megjegyzés", "x");
        open();
        ui.answer(VbConst.vbYes);
        form.RekordDupla.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Kér új adatot a név és az adószám másolatával (New)?", 36, "FIGYELEM! Új adatsor duplázással!"),
                MANDATORY);
        List<Object[]> rows = rows("kitarol.mdb", "Címzett");
        assertThat(rows).hasSize(2);
        Object[] copy = rows.get(1);
        assertThat(copy[0]).isEqualTo(6);
        assertThat(copy[1]).isEqualTo("Őrségi Tűzifa Kft.");
        assertThat(copy[8]).isEqualTo("12345678-2-18");
        for (int i = 2; i < copy.length; i++) {
            if (i == 8) {
                continue;
            }
            assertThat(copy[i]).as("column " + i).isIn(null, false);
        }
        assertThat(form.Text1.Text()).isEqualTo("6");
        assertThat(logged()).containsExactly("Új vevőtörzs adatsor", "Adathiány (kötelező adat) vevőtörzsben",
                "Új adatsor duplázással vevőtörzsben");

        // "Nem": nothing happens
        ui.clear();
        ui.answer(VbConst.vbNo);
        form.RekordDupla.fireClick();
        assertThat(col("recordID")).containsExactly(5, 6);
    }

    // ---------------------------------------------------------------- deletions

    @Test
    void deletingTheLastRowOffersANewOne() {
        customer(3, "Alfa Kft.");
        open();
        ui.answer(VbConst.vbYes).answer(VbConst.vbYes);
        form.CimzettTorol.fireClick();
        assertThat(ui.messages).containsExactly(
                msg("Biztosan véglegesen törli az adatsort (Delete record)?", 36, "FIGYELEM! VÉGLEGES SORTÖRLÉS!"),
                msg("Minden adat törölve (Deleted All)! Kér új adatot (New)?", 36, "FIGYELEM! Új adatsor felvitele!"));
        assertThat(col("recordID")).containsExactly(1);
        assertThat(logged()).containsExactly("Törlés vevő törzsből", "Új vevőtörzs adatsor");

        // with "Nem" the table stays empty; a save then makes the row
        ui.clear();
        ui.answer(VbConst.vbYes).answer(VbConst.vbNo);
        form.CimzettTorol.fireClick();
        assertThat(col("recordID")).isEmpty();
        form.Command4.fireClick();
        assertThat(col("recordID")).containsExactly(1);
    }

    @Test
    void deletingOneOfSeveralAsksOnce() {
        customer(1, "Alfa Kft.");
        customer(2, "Béta Bt.");
        open();
        ui.answer(VbConst.vbNo);
        form.CimzettTorol.fireClick();
        assertThat(col("recordID")).containsExactly(1, 2);
        ui.answer(VbConst.vbYes);
        form.CimzettTorol.fireClick();
        assertThat(col("CimNev")).containsExactly("Alfa Kft.");
        assertThat(ui.messages).hasSize(2);
        assertThat(form.Text2.Text()).isEqualTo("Alfa Kft.");
    }

    @Test
    void deletingEverythingAndTheCopyWithNoRow() {
        customer(1, "Alfa Kft.");
        customer(2, "Béta Bt.");
        customer(3, "Gamma Zrt.");
        open();
        ui.answer(VbConst.vbYes);
        form.OsszTorol.fireClick();
        assertThat(ui.messages).containsExactly(msg("Biztosan véglegesen törli az ÖSSZES adatot (Delete)?", 36,
                "FIGYELEM! MINDEN ADAT VÉGLEGES TÖRLÉSE!"));
        assertThat(col("recordID")).isEmpty();
        assertThat(logged()).containsExactly("Törlés teljes vevőtörzs (Del All)");

        ui.clear();
        form.RekordDupla.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs adat, vagy nem választott ki adatsort!", 48,
                "FIGYELEM! Válasszon kattintással adatsort!"));

        // nothing to print
        ui.clear();
        form.CimzettNyom.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs nyomtatandó adat!", 48, "FIGYELEM!"));
        assertThat(ui.log).doesNotContain("modal:CimzettNyomFormX");
    }

    // ---------------------------------------------------------------- countries

    @Test
    void countriesSearchAddDeleteAndPick() {
        country("A", "Ausztria");
        country("H", "Magyarország");
        customer(1, "Alfa Kft.", "CimSzekhely", "Pécs", "CimCim", "Fő u. 1.");
        open();
        ui.input("Magy");
        form.Command1.fireClick();
        assertThat(ui.inputs).containsExactly("Keresés országra | Kérem az ország nevét:");
        assertThat(form.OrszagjelData.Recordset().get("Országjel")).isEqualTo("H");
        ui.input("Xy");
        form.Command1.fireClick();
        assertThat(ui.messages).containsExactly(msg("Nincs ilyen ország! Keressen újra, vagy válasszon a listából!",
                48, "FIGYELEM! NINCS ILYEN ADAT!"));

        // the double click takes the mark into the customer
        form.DBGrid2.selectRow(0);
        form.DBGrid2.fireDblClick();
        assertThat(form.Label14.Caption()).isEqualTo("A");
        form.Command4.fireClick();
        assertThat(col("CimOrszag")).containsExactly("A");

        // a new country row, then its deletion
        ui.clear();
        form.Command2.fireClick();
        assertThat(column("betarol.mdb", "Orszagjel", "Országjel")).containsExactly("A", "H", null);
        ui.answer(VbConst.vbYes);
        form.Command3.fireClick();
        assertThat(ui.messages).containsExactly(msg("Biztosan véglegesen törli az adatsort (Delete)?", 36,
                "FIGYELEM! VÉGELEGES TÖRLÉS!"));
        assertThat(column("betarol.mdb", "Orszagjel", "Országjel")).containsExactly("A", "H");
        assertThat(logged()).containsExactly("Új adatsor ország törzsbe", "Törlés ország törzsből (adatsor Del)");
    }

    // ---------------------------------------------------------------- hand-over

    @Test
    void atadasFillsTheSlotsInTheOrderOfThePart() {
        customer(12, "Őrségi Tűzifa Kft.", "CimIrszam", "9941", "CimSzekhely", "Őriszentpéter", "CimCim", "Fő út 1.",
                "CimTelefon", "94428001", "CimFax", "94428002", "CimMobil", "306012345", "CimAdoszam", "12345678",
                "CimSzamlaszam", "117730160000", "Kapcsolattartó", "Szűts Írisz", "CimOrszag", "H");
        customer(3, "Zala Fuvar Bt.");
        Globals.PickDone = 1;
        open();
        assertThat(Globals.PickDone).isZero();
        form.DBGrid1.selectRow(0);
        ui.answer(VbConst.vbNo);
        form.AtadaS.fireClick();
        assertThat(ui.messages).containsExactly(CHECK);
        assertThat(form.isLoaded()).isFalse();
        assertThat(Globals.PickDone).isEqualTo((short) 1);
        assertThat(Globals.PickedName).isEqualTo("Őrségi Tűzifa Kft.");
        assertThat(Globals.PickedCustomerID).isEqualTo(12);
        assertThat(Arrays.asList(Globals.PickedCustomerPostCode, Globals.PickedCustomerTown,
                Globals.PickedCustomerStreet, Globals.PickedCustomerPhone, Globals.PickedCustomerFax,
                Globals.PickedCustomerMobile, Globals.PickedCustomerTaxNumber, Globals.PickedCustomerBankAccount,
                Globals.PickedCustomerContact, Globals.PickedCustomerCountry)).containsExactly("9941", "Őriszentpéter",
                        "Fő út 1.", "94428001", "94428002", "306012345", "12345678", "117730160000", "Szűts Írisz", "H");
    }

    @Test
    void theVehicleFormTakesTheOwnerFromTheRealCustomerForm() {
        insert("Kerova.dsb", "Jarmuvek", "recordID", 1, "GkFrsz", "AAA-111", "GkTipus", "Opel");
        customer(42, "Vevő Ödön", "CimSzekhely", "Győr", "CimCim", "Fő tér 1.");
        customer(7, "Ábrahám Űrfuvar Kft.", "CimSzekhely", "Pécs", "CimCim", "Fő u. 2.");
        Globals.CurrentFormName = GKTorzsFormX.NAME;
        GKTorzsFormX vehicles = Forms.put(new GKTorzsFormX());
        vehicles.Show();
        ui.clear();
        ui.whenShown("CimzettForm", f -> {
            CimzettForm customers = (CimzettForm) f;
            assertThat(customers.Caption()).isEqualTo("Partnertörzs - Vevők (címzettek) adatai (CRM alap)");
            ui.answer(VbConst.vbNo);
            customers.Text21.setText("Vevő");
            customers.AtadaS.fireClick();
        });
        vehicles.Command2.fireClick();
        assertThat(ui.log).contains("modal:CimzettForm");
        assertThat(ui.messages).containsExactly(CHECK);
        assertThat(vehicles.Text13.Text()).isEqualTo("Vevő Ödön");
        assertThat(vehicles.Label23.Caption()).isEqualTo("42");
        vehicles.Mentes.fireClick();
        assertThat(column("Kerova.dsb", "Jarmuvek", "PartnerNeve")).containsExactly("Vevő Ödön");
        assertThat(column("Kerova.dsb", "Jarmuvek", "PartnerID")).containsExactly(42);
    }

    // ---------------------------------------------------------------- the list

    @Test
    void theListTwentyThreeCustomersOnTwoPages() {
        for (int i = 1; i <= 23; i++) {
            customer(i, String.format("Vevő %02d Kft.", i), "CimIrszam", "90" + (10 + i), "CimOrszag", "H",
                    "CimSzekhely", "Győr", "CimCim", "Fő u. " + i + ".", "CimTelefon", i == 1 ? "96111" : null,
                    "CimFax", i == 1 ? "96222" : null);
        }
        open();
        List<List<String>> pages = new ArrayList<>();
        ui.whenShown("CimzettNyomFormX", f -> {
            CimzettNyomFormX p = (CimzettNyomFormX) f;
            assertThat(p.Cim.Caption()).isEqualTo("CÍMZETTEK-VÁSÁRLÓK");
            assertThat(p.Oldal.Caption()).isEqualTo("Lapszám: 1");
            assertThat(p.Kiadva.Caption()).isEqualTo("Kiadva: 2026.11.23.");
            assertThat(p.row(1)).containsExactly("Vevő 01 Kft.", "9011", "H", "Győr", "Fő u. 1.", "96111 / 96222");
            assertThat(p.row(2)).containsExactly("Vevő 02 Kft.", "9012", "H", "Győr", "Fő u. 2.", " / ");
            assertThat(p.row(22).get(0)).isEqualTo("Vevő 22 Kft.");
            pages.add(p.row(1));
        });
        ui.whenShown("CimzettNyomFormX", f -> {
            CimzettNyomFormX p = (CimzettNyomFormX) f;
            assertThat(p.Cim.Caption()).isEqualTo("CÍMZETTEK-VÁSÁRLÓK");
            assertThat(p.Oldal.Caption()).isEqualTo("Lapszám: 2");
            assertThat(p.row(1).get(0)).isEqualTo("Vevő 23 Kft.");
            assertThat(p.row(2)).containsOnly("");
            pages.add(p.row(1));
        });
        form.DBGrid1.selectRow(3);
        form.CimzettNyom.fireClick();
        assertThat(pages).hasSize(2);
        assertThat(ui.messages).isEmpty();
        assertThat(form.Text2.Text()).isEqualTo("Vevő 23 Kft.");
    }
}
