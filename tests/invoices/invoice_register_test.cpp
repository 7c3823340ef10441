// The fuel invoice register: opening, new rows, saving and bad numbers, the copies of seller and
// vehicle by position, the price hand-over to the trip form, delete, searches, sorting, size.
#include <QDateEdit>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "gui/support.h"
#include "invoices/UzemanyagSzamlaFormX.h"
#include "invoices/module.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/funcs.h"

using invoices::UzemanyagSzamlaFormX;

namespace {

using Row = std::vector<vb::Variant>;
constexpr int SZAMLASOR = 33, NETTO_EGYS = 40;  // positions in SZAMLA

class InvoiceTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        invoices::registerForms();
    }
    UzemanyagSzamlaFormX& open() {
        forms::get("UzemanyagSzamlaFormX").Show();
        return static_cast<UzemanyagSzamlaFormX&>(form("UzemanyagSzamlaFormX"));
    }
    static std::unique_ptr<db::Recordset> table(const std::string& source) {
        return db::Database::open("Kerova.dsb")->OpenRecordset(source);
    }
    // Every row of a table as its values, in stored order.
    static std::vector<Row> rows(const std::string& source) {
        auto rs = table(source);
        std::vector<Row> out;
        for (size_t n = rs->size(), i = 0; i < n; ++i) out.push_back(rs->peek(i));
        return out;
    }
    static std::string text(const vb::Variant& v) { return vb::isNull(v) ? "<null>" : vb::CStr(v); }
    void expectBox(const std::string& text, int style, const std::string& title, size_t count) {
        auto b = messages();
        ASSERT_EQ(b.size(), count);
        EXPECT_EQ(b.back().text, text);
        EXPECT_EQ(b.back().style, style);
        EXPECT_EQ(b.back().title, title);
    }
    static void doubleClick(forms::DBGrid* g, int row) {
        QPoint at = g->visualRect(g->model()->index(row, 0)).center();
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, at);
    }
    static void invoice(int number, double price) {
        auto z = table("SZAMLA");
        z->AddNew();
        z->set("SZAMLASOR", int32_t(number));
        z->set("NETTO_EGYS", price);
        z->set("MEGNEVEZES", std::string("Gázolaj"));
        z->Update();
    }
    // Two partners and two vehicles whose every copied column differs, and the given invoices.
    void smallCompany(std::initializer_list<std::pair<int, double>> invoices) {
        initCompany();
        auto p = table("beraktar");
        auto v = table("Jarmuvek");
        for (int i = 1; i <= 2; ++i) {
            p->AddNew();
            for (int c = 0; c < 13; ++c)
                p->setValue(c, c == 9 ? vb::Variant(int32_t(i)) : vb::Variant("P" + std::to_string(i) + "-" + std::to_string(c)));
            p->set("Cégnév", std::string("nem másolt"));
            p->Update();
            v->AddNew();
            v->set("GkFrsz", "ABC-00" + std::to_string(i));
            v->set("GkForgalombahelyezve", vb::DateSerial(2020, 3, i));
            v->set("FogyasztásLiter100", 30.5 + i);
            v->set("recordID", int32_t(i));
            v->set("CascoHaviDija", 12000.0);
            v->set("JelenlegiKmAllas", 150000.0 + i);
            v->Update();
        }
        for (auto [n, price] : invoices) invoice(n, price);
    }
};

TEST_F(InvoiceTest, OpensOnTheNewestInvoiceOfTheDemoCompany) {
    demoCompany();
    auto all = rows("SZAMLA");
    ASSERT_GT(all.size(), 10u);
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Bejövő számlák nyilvántartása - Kerova");
    EXPECT_TRUE(f.Frame1->isVisible());
    EXPECT_EQ(textOf(f, "Text1"), text(all.back()[SZAMLASOR]));
    EXPECT_EQ(textOf(f, "Text7"), text(all.back()[NETTO_EGYS]));
    EXPECT_EQ(textOf(f, "Text5Caption"), "Mennyiség és mennyiségi egység:");
    EXPECT_EQ(f.DBGrid3->Row(), int(all.size()) - 1);
    EXPECT_EQ(f.DBGrid2->model()->headerData(0, Qt::Horizontal).toString().toStdString(), "FRSZ");
    for (int c = 0; c < f.DBGrid3->columnCount(); ++c) EXPECT_NE(f.DBGrid3->DataField(c), "VTSZ");

    // letters never reach the number boxes; the minus only where an amount may be negative
    for (auto* box : {f.Text1, f.Text4, f.Text7}) forms::setText(box, "");
    type(f, "Text7", "4a9-2,5");
    type(f, "Text4", "-27,x");
    type(f, "Text1", "2026,1");
    EXPECT_EQ(textOf(f, "Text7"), "49-2,5");
    EXPECT_EQ(textOf(f, "Text4"), "27,");
    EXPECT_EQ(textOf(f, "Text1"), "20261");
    EXPECT_EQ(dialogs->beeps(), 4);
    focus(f, "Text9");
    EXPECT_EQ(forms::backColor(f.Text9), forms::FocusColor);
}

TEST_F(InvoiceTest, AnEmptyRegisterFillsAndEmptiesAgain) {
    initCompany();
    vb::clock::setFixed(vb::DateSerial(2026, 11, 23));
    Globals::FuelPriceTransfer = 7;
    auto& f = open();
    EXPECT_FALSE(f.Frame1->isVisible());
    EXPECT_TRUE(rows("SZAMLA").empty());  // no row of its own on opening
    click(f, "AtadasS");
    expectBox("Nincs adat, vagy nem áll adatsoron!", vb::vbExclamation, "FIGYELEM! Jelöljön ki számla adatsort!", 1);
    EXPECT_EQ(Globals::FuelPriceTransfer, 7);
    EXPECT_TRUE(f.isLoaded());
    // searches, print and save do nothing on an empty register (no input box is asked)
    for (const char* c : {"Command1", "Command2", "SzNyom", "Command3"}) click(f, c);
    QTest::mouseClick(f.Label1, Qt::LeftButton);
    EXPECT_EQ(dialogs->log.size(), 2u);  // the beep and the box

    click(f, "UjSzamla");
    ASSERT_EQ(rows("SZAMLA").size(), 1u);  // before anything is typed
    EXPECT_TRUE(f.Frame1->isVisible());
    EXPECT_EQ(f.DTPicker1->date(), QDate(2026, 11, 23));
    type(f, "Text1", "20260042");
    forms::setText(f.Text2, "Gázolaj (diesel)");  // keyClicks types ASCII only
    type(f, "Text5", "312,5");
    type(f, "Text7", "501,25");
    type(f, "Text9", "156640,63");
    type(f, "Text3", "27101943");
    click(f, "Command3");
    auto z = table("SZAMLA");
    EXPECT_EQ(text(z->get("SZAMLASOR")), "20260042");
    EXPECT_EQ(text(z->get("MEGNEVEZES")), "Gázolaj (diesel)");
    EXPECT_EQ(vb::CDbl(z->get("MENNYISEG")), 312.5);
    EXPECT_EQ(vb::CDbl(z->get("NETTO_EGYS")), 501.25);
    EXPECT_EQ(text(z->get("NETTO_ERTE")), "156640,63");  // as typed: nothing is computed
    EXPECT_EQ(text(z->get("VTSZ")), "27101943");
    EXPECT_EQ(text(z->get("SZML_KELTE")), "2026.11.23.");
    EXPECT_EQ(text(z->get("BerNev")), "<null>");

    dialogs->answers = {vb::vbNo, vb::vbYes};
    click(f, "Torles");
    expectBox("Törölhető az adat visszavonhatatlanul?", vb::vbYesNo + vb::vbQuestion, "FIGYELEM! Végleges törlés!", 2);
    EXPECT_EQ(rows("SZAMLA").size(), 1u);
    click(f, "Torles");
    EXPECT_TRUE(rows("SZAMLA").empty());
    EXPECT_FALSE(f.Frame1->isVisible());
}

TEST_F(InvoiceTest, ValuesTheColumnsCannotTakeLeaveTheRowWhole) {
    smallCompany({{77, 480.5}, {78, 480.5}});
    auto& f = open();
    forms::setText(f.Text2, "Benzin");  // a paste passes the key filter
    forms::setText(f.Text7, "négyszáz");
    click(f, "Command3");
    EXPECT_EQ(dialogs->beeps(), 1);
    EXPECT_EQ(text(rows("SZAMLA")[1][34]), "Gázolaj");  // MEGNEVEZES: not half written
    EXPECT_EQ(text(rows("SZAMLA")[1][NETTO_EGYS]), "480,5");
    EXPECT_EQ(textOf(f, "Text7"), "négyszáz");            // kept for correcting
    f.DBGrid3->selectRow(0);  // leaving the row can't store it: the runtime's box, the row stays
    expectBox("Váratlan hiba (3421): Data type conversion error.", vb::vbCritical, "Kerova", 1);
    EXPECT_EQ(f.DBGrid3->Row(), 1);
    EXPECT_EQ(f.DBGrid3->currentIndex().row(), 1);
    forms::setText(f.Text7, "");
    forms::setText(f.Text1, "99999999999");  // beyond the invoice number's range
    click(f, "Command3");
    EXPECT_EQ(dialogs->beeps(), 2);
    forms::setText(f.Text1, "79");
    click(f, "Command3");
    Row r = rows("SZAMLA")[1];
    EXPECT_EQ(text(r[SZAMLASOR]) + text(r[34]) + text(r[NETTO_EGYS]), "79Benzin<null>");
    EXPECT_EQ(dialogs->beeps(), 2);
}

TEST_F(InvoiceTest, SellerAndVehicleAreCopiedByPositionEachLeavingTheOtherAlone) {
    smallCompany({{77, 480.5}});
    auto& f = open();
    type(f, "Text2", " 95");  // a pending edit of the invoice's own box survives the copies
    dialogs->answers = {vb::vbYes};
    doubleClick(f.DBGrid1, 1);
    expectBox("Helyettesíthető a számla adat?", vb::vbYesNo + vb::vbQuestion, "Adatbevitel-korrekció", 1);
    Row inv = rows("SZAMLA")[0], seller = rows("beraktar")[1];
    for (int c = 0; c < 13; ++c) EXPECT_EQ(text(inv[c]), text(seller[c])) << c;
    for (int c = 13; c < 30; ++c) EXPECT_EQ(text(inv[c]), "<null>") << c;
    EXPECT_EQ(text(inv[34]), "Gázolaj 95");

    dialogs->answers = {vb::vbYes};
    doubleClick(f.DBGrid2, 0);
    inv = rows("SZAMLA")[0];
    Row vehicle = rows("Jarmuvek")[0];
    for (int c = 13; c < 30; ++c) EXPECT_EQ(text(inv[c]), text(vehicle[c - 13])) << c;
    for (int c = 0; c < 13; ++c) EXPECT_EQ(text(inv[c]), text(seller[c])) << c;
    EXPECT_EQ(text(inv[13]) + "/" + text(inv[25]), "ABC-001/1");  // plate and the vehicle's key
    EXPECT_EQ(text(inv[NETTO_EGYS]), "480,5");

    // "Nem" replaces nothing; the question comes also for a row that has a seller
    dialogs->answers = {vb::vbNo};
    doubleClick(f.DBGrid1, 0);
    EXPECT_EQ(text(rows("SZAMLA")[0][0]), "P2-0");
    EXPECT_EQ(dialogs->beeps(), 3);
}

TEST_F(InvoiceTest, TheNetUnitPriceGoesToTheTripFormAsTheBoxShowsIt) {
    smallCompany({{77, 480.5}, {78, 502}});
    // the trip form's way: clear the slot, open modally, read the slot
    auto openFromTrip = [&](std::function<void(UzemanyagSzamlaFormX&)> drive) {
        forms::setModalRunner([drive](forms::Form& f) { drive(static_cast<UzemanyagSzamlaFormX&>(f)); });
        Globals::FuelPriceTransfer = 0;
        forms::get("UzemanyagSzamlaFormX").Show(true);
        forms::setModalRunner([](forms::Form&) {});
        return Globals::FuelPriceTransfer;
    };
    EXPECT_EQ(openFromTrip([&](auto& f) {
                  f.DBGrid3->selectRow(0);
                  click(f, "AtadasS");
              }),
              480.5);
    EXPECT_EQ(forms::find("UzemanyagSzamlaFormX"), nullptr);  // the hand-over closes the form
    EXPECT_EQ(openFromTrip([&](auto& f) {
                  forms::setText(f.Text7, "499,9");  // typed, not saved: the box counts
                  click(f, "AtadasS");
              }),
              499.9);
    EXPECT_EQ(openFromTrip([&](auto& f) {
                  forms::setText(f.Text7, "");
                  click(f, "AtadasS");
              }),
              0);
    EXPECT_EQ(openFromTrip([&](auto& f) { click(f, "Kilepes"); }), 0);
    EXPECT_EQ(openFromTrip([&](auto& f) { f.closeBox(); }), 0);
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(text(rows("SZAMLA")[1][NETTO_EGYS]), "<null>");  // the emptied box was stored by the close
}

TEST_F(InvoiceTest, SearchesSortingAndTheSwitchedOffPrint) {
    demoCompany();
    auto& f = open();
    auto seller = text(rows("beraktar")[3][0]);
    auto second = text(rows("SZAMLA")[1][SZAMLASOR]);
    dialogs->inputs = {seller, "Nincs-Ilyen", "XX-999", second, "12x", ""};
    click(f, "Command1");
    EXPECT_EQ(text(f.BeraktarData->rs().get("BerNev")), seller);
    EXPECT_EQ(dialogs->log[0].title + dialogs->log[0].text, "Keresés megnevezésreKérem a beszállító (eladó) nevét:");
    click(f, "Command1");
    expectBox("Nincs ilyen név! Keressen újra!", vb::vbExclamation, "FIGYELEM! Keresés megnevezésre sikertelen!", 1);
    EXPECT_EQ(f.BeraktarData->rs().AbsolutePosition(), 0);
    click(f, "Command2");
    expectBox("Nincs ilyen rendszám! Keressen újra!", vb::vbExclamation, "Keresés rendszámra", 2);
    QTest::mouseClick(f.Label1, Qt::LeftButton);
    EXPECT_EQ(f.DBGrid3->Row(), 1);
    QTest::mouseClick(f.Label1, Qt::LeftButton);  // no number: the find fails, as a miss
    expectBox("Nincs ilyen okmány! Keressen újra, vagy válasszon a listából!", vb::vbExclamation, "FIGYELEM!", 3);
    EXPECT_EQ(f.DBGrid3->Row(), 0);
    QTest::mouseClick(f.Label1, Qt::LeftButton);  // an empty answer searches nothing
    expectBox("Nincs ilyen okmány! Keressen újra, vagy válasszon a listából!", vb::vbExclamation, "FIGYELEM!", 3);

    ASSERT_EQ(f.DBGrid3->DataField(4), "MEGNEVEZES");
    f.DBGrid3->HeadClick(4);
    EXPECT_EQ(f.SzamlaData->rs().Sort(), "[MEGNEVEZES]");
    std::string first = f.DBGrid3->cellText(0, 4);
    f.DBGrid3->HeadClick(4);
    EXPECT_EQ(f.SzamlaData->rs().Sort(), "[MEGNEVEZES] DESC");
    EXPECT_GT(f.DBGrid3->cellText(0, 4), first);

    click(f, "SzNyom");
    expectBox("FEJLESZTÉS ALATT! JELENLEG A MODUL NEM MŰKÖDIK, NEM HASZNÁLHATÓ!", vb::vbCritical,
              "FIGYELEM! Működés csak felhasználói felelősségre!", 4);
}

TEST_F(InvoiceTest, FiftyThousandInvoicesOpenAtOnce) {
    initCompany();
    insertMany("Kerova.dsb", "SZAMLA", 50000, [](int i) { return Fields{{"SZAMLASOR", int32_t(i + 1)}}; });
    QElapsedTimer t;
    t.start();
    auto& f = open();
    EXPECT_LT(t.elapsed(), 2000);
    EXPECT_EQ(textOf(f, "Text1"), "50000");
    EXPECT_EQ(f.DBGrid3->model()->rowCount(), 50000);
}

}  // namespace
