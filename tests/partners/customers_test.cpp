// The customer master: filters and the subcontractor view, the search as you type, new keys,
// save with the mandatory fields, the copy of a row, the deletions, countries, the hand-over and
// the closing check, and the list.
#include <QCheckBox>

#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "partners/CimzettForm.h"
#include "partners/module.h"
#include "partners_support.h"
#include "print/module.h"
#include "print/pageform.h"
#include "vb/constants.h"

using namespace partners_test;
using partners::CimzettForm;

namespace {

class CustomersTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        print::registerForms();
        partners::registerForms();
    }
    static void customer(int id, vb::Variant name, Fields more = {}) {
        Fields v{{"recordID", int32_t(id)}, {"CimNev", name}};
        v.insert(v.end(), more.begin(), more.end());
        insert("kitarol.mdb", "Címzett", v);
    }
    CimzettForm& open() {
        forms::get("CimzettForm").Show();
        return static_cast<CimzettForm&>(form("CimzettForm"));
    }
    static std::vector<std::string> names() { return column("kitarol.mdb", "select * from Címzett order by recordID", "CimNev"); }
    // Leaves the form answering the closing check.
    void leave(CimzettForm& f, int answer) {
        dialogs->answers.push_back(answer);
        click(f, "Kilepes");
    }
};

TEST_F(CustomersTest, FiltersTheSubcontractorViewAndTheSearchAsYouType) {
    customer(1, s("Aktív Alvállalkozó Kft."), {{"Alvállalkozó", true}, {"NemAktiv", false}});
    customer(2, s("Inaktív Alvállalkozó Bt."), {{"Alvállalkozó", true}, {"NemAktiv", true}});
    customer(3, s("Sima Vevő Zrt."), {{"Alvállalkozó", false}, {"NemAktiv", false}, {"CimTelefon", s("06-1/234")}});
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Partnertörzs - Vevők (címzettek) adatai (CRM alap)");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3);
    EXPECT_EQ(textOf(f, "Text2"), "Sima Vevő Zrt.");  // the last in name order
    EXPECT_EQ(f.Text17->toolTip().toStdString(), "Teljesítés dátumához adott nap");
    EXPECT_EQ(textOf(f, "Check3"), "Környzetvédelmi termékdíjat vevő átvállalja");

    click(f, "NemAktiv");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 1);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "Inaktív Alvállalkozó Bt.");
    click(f, "Aktivak");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    click(f, "SzuresKi");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3);

    type(f, "Text21", "Ina");
    EXPECT_EQ(textOf(f, "Text2"), "Inaktív Alvállalkozó Bt.");
    type(f, "Text21", "xyz");  // no match: the last hit stays
    EXPECT_EQ(textOf(f, "Text2"), "Inaktív Alvállalkozó Bt.");

    // the phone takes digits, "-" and "/"
    forms::setText(f.Text6, "");
    type(f, "Text6", "06-1/23a");
    EXPECT_EQ(textOf(f, "Text6"), "06-1/23");
    EXPECT_EQ(dialogs->beeps(), 1);
    leave(f, vb::vbNo);

    // inactive rows vanish from the subcontractor view, whatever Alvállalkozó says
    Globals::CustomerSubcontractorRequest = 1;
    auto& g = open();
    EXPECT_EQ(g.DBGrid1->model()->rowCount(), 1);
    EXPECT_EQ(textOf(g, "Text2"), "Aktív Alvállalkozó Kft.");
    EXPECT_TRUE(g.Check6->isChecked());
}

TEST_F(CustomersTest, NewKeysSaveAndTheMandatoryFields) {
    customer(7, s("Zeta Kft."));
    customer(3, s("Alfa Kft."));
    auto& f = open();
    click(f, "UjAdat");  // the last key in key order + 1
    EXPECT_EQ(textOf(f, "Text1"), "8");
    EXPECT_EQ(logged(), std::vector<std::string>{"Új vevőtörzs adatsor"});

    // a customer with no name can be saved; only the message warns
    forms::setText(f.Text4, "Pécs");
    click(f, "Command4");
    ASSERT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].text, "Kötelező adat nincs kitöltve (vastag aláhúzottak)!");
    EXPECT_EQ(messages()[0].title, "FIGYELEM! KEZELŐI HIBA!");
    EXPECT_EQ(messages()[0].style, vb::vbExclamation);
    EXPECT_EQ(names(), (std::vector<std::string>{"Alfa Kft.", "Zeta Kft.", "<null>"}));
    EXPECT_EQ(column("kitarol.mdb", "select * from Címzett order by recordID", "CimSzekhely")[2], "Pécs");
    EXPECT_EQ(logged().back(), "Adathiány (kötelező adat) vevőtörzsben");

    // a check box and a number are stored as such
    f.Check4->setChecked(true);
    forms::setText(f.Text17, "30");
    forms::setText(f.Text2, "Új Vevő");
    forms::setText(f.Text5, "Fő tér 1.");
    dialogs->clear();
    click(f, "Command4");
    EXPECT_TRUE(messages().empty());
    auto rs = db::Database::open("kitarol.mdb")->OpenRecordset("select * from Címzett where recordID = 8");
    EXPECT_TRUE(vb::CBool(rs->get("Különjárat")));
    EXPECT_EQ(vb::CStr(rs->get("FizetésiHatáridö")), "30");

    // the closing check removes a nameless row
    click(f, "UjAdat");
    leave(f, vb::vbYes);
    EXPECT_EQ(messages().back().text, "Kéri az adatok teljes ellenőrzését?");
    EXPECT_EQ(messages().back().title, "FIGYELEM! Teljeskörű ellenőrzés!");
    EXPECT_EQ(names(), (std::vector<std::string>{"Alfa Kft.", "Zeta Kft.", "Új Vevő"}));
}

TEST_F(CustomersTest, TheCopyKeepsOnlyTheNameAndTaxNumberAndTheDeletions) {
    customer(1, s("Másolandó Kft."), {{"CimAdoszam", s("12345678-2-42")}, {"CimSzekhely", s("Győr")},
                                      {"CimCim", s("Fő út 2.")}});
    auto& f = open();
    dialogs->answers = {vb::vbYes};
    click(f, "RekordDupla");
    EXPECT_EQ(messages()[0].text, "Kér új adatot a név és az adószám másolatával (New)?");
    // town and street are empty, so the save warns
    EXPECT_EQ(messages()[1].text, "Kötelező adat nincs kitöltve (vastag aláhúzottak)!");
    auto rs = db::Database::open("kitarol.mdb")->OpenRecordset("select * from Címzett where recordID = 2");
    EXPECT_EQ(vb::nullToText(rs->get("CimNev")), "Másolandó Kft.");
    EXPECT_EQ(vb::nullToText(rs->get("CimAdoszam")), "12345678-2-42");
    EXPECT_TRUE(vb::isNull(rs->get("CimSzekhely")));
    EXPECT_EQ(logged().back(), "Új adatsor duplázással vevőtörzsben");

    dialogs->clear();
    dialogs->answers = {vb::vbYes};
    click(f, "CimzettTorol");  // one of two: one question
    EXPECT_EQ(messages().size(), 1u);
    EXPECT_EQ(messages()[0].title, "FIGYELEM! VÉGLEGES SORTÖRLÉS!");
    EXPECT_EQ(names().size(), 1u);
    dialogs->answers = {vb::vbYes, vb::vbYes};
    click(f, "CimzettTorol");  // the last: a new row is offered
    EXPECT_EQ(messages().back().text, "Minden adat törölve (Deleted All)! Kér új adatot (New)?");
    EXPECT_EQ(names(), std::vector<std::string>{"<null>"});

    customer(5, s("Még egy"));
    click(f, "SzuresKi");  // the new row comes into the view
    dialogs->answers = {vb::vbYes};
    click(f, "OsszTorol");
    EXPECT_EQ(messages().back().title, "FIGYELEM! MINDEN ADAT VÉGLEGES TÖRLÉSE!");
    EXPECT_TRUE(names().empty());
    EXPECT_EQ(logged().back(), "Törlés teljes vevőtörzs (Del All)");
    dialogs->clear();
    click(f, "RekordDupla");
    EXPECT_EQ(messages().at(0).text, "Nincs adat, vagy nem választott ki adatsort!");
    EXPECT_EQ(messages().at(0).title, "FIGYELEM! Válasszon kattintással adatsort!");
}

TEST_F(CustomersTest, CountriesAndTheHandOver) {
    customer(1, s("Átvevő Kft."), {{"CimIrszam", s("9400")}, {"CimSzekhely", s("Sopron")}, {"CimCim", s("Várkerület 1.")},
                                   {"CimTelefon", s("99-123")}, {"CimAdoszam", s("11111111")}, {"Kapcsolattartó", s("Kő Ödön")}});
    insert("betarol.mdb", "Orszagjel", {{"Országjel", s("H")}, {"Ország", s("Magyarország")}});
    insert("betarol.mdb", "Orszagjel", {{"Országjel", s("A")}, {"Ország", s("Ausztria")}});
    auto& f = open();
    dialogs->inputs = {"Auszt", "Zzz"};
    click(f, "Command1");
    EXPECT_EQ(f.DBGrid2->Row(), 1);
    click(f, "Command1");
    EXPECT_EQ(messages().back().text, "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!");
    EXPECT_EQ(messages().back().title, "FIGYELEM! NINCS ILYEN ADAT!");
    f.DBGrid2->selectRow(1);
    QTest::mouseDClick(f.DBGrid2->viewport(), Qt::LeftButton, {},
                       f.DBGrid2->visualRect(f.DBGrid2->model()->index(1, 0)).center());
    EXPECT_EQ(textOf(f, "Label14"), "A");

    click(f, "Command2");
    EXPECT_EQ(column("betarol.mdb", "Orszagjel", "Országjel").size(), 3u);
    dialogs->answers = {vb::vbYes};
    click(f, "Command3");
    EXPECT_EQ(column("betarol.mdb", "Orszagjel", "Országjel").size(), 2u);
    EXPECT_EQ(messages().back().title, "FIGYELEM! VÉGELEGES TÖRLÉS!");

    dialogs->answers = {vb::vbNo};
    click(f, "AtadaS");
    EXPECT_EQ(Globals::PickDone, 1);
    EXPECT_EQ(Globals::PickedName, "Átvevő Kft.");
    EXPECT_EQ(vb::CStr(Globals::PickedCustomerID), "1");
    EXPECT_EQ(Globals::PickedCustomerPostCode, "9400");
    EXPECT_EQ(Globals::PickedCustomerTown, "Sopron");
    EXPECT_EQ(Globals::PickedCustomerStreet, "Várkerület 1.");
    EXPECT_EQ(Globals::PickedCustomerPhone, "99-123");
    EXPECT_EQ(Globals::PickedCustomerTaxNumber, "11111111");
    EXPECT_EQ(Globals::PickedCustomerContact, "Kő Ödön");
    EXPECT_EQ(Globals::PickedCustomerCountry, "A");
    EXPECT_EQ(forms::find("CimzettForm"), nullptr);
    EXPECT_EQ(column("kitarol.mdb", "Címzett", "CimOrszag"), std::vector<std::string>{"A"});
}

TEST_F(CustomersTest, TheListGivesPagesOf22Lines) {
    for (int i = 1; i <= 23; ++i)
        customer(i, s(("Vevő " + std::string(i < 10 ? "0" : "") + std::to_string(i)).c_str()),
                 {{"CimTelefon", s("1")}, {"CimFax", s("2")}, {"CimOrszag", s("H")}});
    auto& f = open();
    std::vector<std::string> headings, first;
    forms::setModalRunner([&](forms::Form& page) {
        auto& p = static_cast<print::ListPageForm&>(page);
        headings.push_back(p.text("Cim") + " " + p.text("Oldal"));
        auto r = p.row(1);
        first.push_back(r[0] + "|" + r[2] + "|" + r[5]);
        p.Command1_Click();
    });
    click(f, "CimzettNyom");
    EXPECT_EQ(headings, (std::vector<std::string>{"CÍMZETTEK-VÁSÁRLÓK Lapszám: 1", "CÍMZETTEK-VÁSÁRLÓK Lapszám: 2"}));
    EXPECT_EQ(first, (std::vector<std::string>{"Vevő 01|H|1 / 2", "Vevő 23|H|1 / 2"}));
    EXPECT_EQ(textOf(f, "Text2"), "Vevő 23");
}

}  // namespace
