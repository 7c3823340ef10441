// The driver master: opening, new rows, the "Csak aktívak" filter (and that it ends with the form),
// the assigned vehicles in the other file, deleting, the quick search and the hand-overs.
#include <QAction>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>

#include "forms/globals.h"
#include "forms/grid.h"
#include "trips/driverform.h"
#include "trips_support.h"
#include "vb/clock.h"
#include "vb/constants.h"

using namespace trips_test;
using DriverForm = trips::VezetokTorzsFormX;

namespace {

class DriverTest : public TripsTest {
protected:
    void SetUp() override {
        TripsTest::SetUp();
        initCompany();
    }
    static void driver(const std::string& name, int key, bool notActive = false) {
        insert("Kerova.dsb", "Vezetok", {{"VezetöNeve", name}, {"PartnerID", int32_t(key)}, {"Aktiv", notActive}});
    }
    static void assigned(int key, const std::string& plate) {
        insert("Tartosan.dsb", "VezetokJarmuvei", {{"VezetöID", int32_t(key)}, {"Rendszám", plate}});
    }
    static std::vector<std::string> plates(int key) {
        return column("Tartosan.dsb", "select * from VezetokJarmuvei where VezetöID = " + std::to_string(key),
                      "Rendszám");
    }
    static void everyDriver(const std::function<void(db::Recordset&)>& f) {
        auto rs = db::Database::open("Kerova.dsb")->OpenRecordset("Vezetok");
        while (!rs->Eof()) {
            f(*rs);
            rs->MoveNext();
        }
    }
    DriverForm& openDrivers() { return open<DriverForm>(DriverForm::Name); }
    static std::vector<std::string> names(DriverForm& f) {
        std::vector<std::string> out;
        for (int i = 0; i < f.DBGrid1->model()->rowCount(); ++i) out.push_back(f.DBGrid1->cellText(i, 0));
        return out;
    }
};

TEST_F(DriverTest, AnEmptyTableGetsARowWithItsKeyAndNewRowsTakeTheOperatorAsEmployer) {
    Globals::OperatorName = "Kerova Fuvarozó Kft.";
    auto& f = openDrivers();
    EXPECT_EQ(f.windowTitle().toStdString(), "Járművezető adatai törzs Tartosan");
    EXPECT_EQ(column("Kerova.dsb", "Vezetok", "PartnerID"), std::vector<std::string>{"1"});
    EXPECT_EQ(column("Kerova.dsb", "Vezetok", "JogositványÉrvényessége"),
              std::vector<std::string>{vb::CStr(vb::clock::today())});
    EXPECT_EQ(textOf(f, "Label7"), "1");
    EXPECT_EQ(f.DTPicker1->date(), QDate::currentDate());

    click(f, "Command5");
    EXPECT_EQ(textOf(f, "Text8"), "Kerova Fuvarozó Kft.");
    f.Text1->setText("Ürge Ödön");
    click(f, "UjAdat");
    click(f, "Command1");
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok order by Sorszám", "Munkáltató"),
              (std::vector<std::string>{"", "Kerova Fuvarozó Kft.", "Kerova Fuvarozó Kft."}));
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok order by Sorszám", "PartnerID"),
              (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok where Sorszám = 2", "VezetöNeve")[0], "Ürge Ödön");
}

// "NEM aktív" ticked hides a driver from "Csak aktívak"; the filter ends with the form, so the next
// opening shows every driver and stores no empty row even when no driver is active any more.
TEST_F(DriverTest, CsakAktivakHidesTickedDriversAndEndsWithTheForm) {
    driver("Ács Ödön", 1);
    driver("Bíró Béla", 2, true);
    driver("Szőke Ödön", 3);
    auto& f = openDrivers();
    click(f, "Command6");
    EXPECT_EQ(names(f), (std::vector<std::string>{"Ács Ödön", "Szőke Ödön"}));
    EXPECT_TRUE(f.CsakAktiv->isChecked());
    click(f, "Kilepes");

    everyDriver([](db::Recordset& r) {
        r.Edit();
        r.set("Aktiv", true);
        r.Update();
    });
    auto& g = openDrivers();
    EXPECT_EQ(g.VezetoData->RecordSource(), DriverForm::AllSource);
    EXPECT_EQ(names(g).size(), 3u);
    EXPECT_FALSE(g.CsakAktiv->isChecked());
    EXPECT_EQ(rows("Kerova.dsb", "Vezetok"), 3);

    click(g, "CsakAktiv");  // none active: the warning, no tick, every driver again on the last
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{"Nincs AKTÍV járművezető!"});
    EXPECT_EQ(dialogs->log.back().style, vb::vbExclamation);
    EXPECT_EQ(names(g).size(), 3u);
    EXPECT_EQ(textOf(g, "Text1"), "Szőke Ödön");
    EXPECT_FALSE(g.CsakAktiv->isChecked());
    EXPECT_FALSE(g.SzuresSKI->isChecked());
}

TEST_F(DriverTest, SaveAndRefreshStayOnTheDriverAndRefreshEndsTheFilter) {
    driver("Ács Ödön", 1);
    driver("Bíró Béla", 2);
    driver("Szőke Ödön", 3);
    auto& f = openDrivers();
    f.VezetoData->rs().MoveNext();
    f.Text3->setText("gépkocsivezető");
    click(f, "Command1");
    EXPECT_EQ(textOf(f, "Text1"), "Bíró Béla");
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok where PartnerID = 2", "Munkakör")[0], "gépkocsivezető");
    click(f, "Command6");
    f.VezetoData->rs().MoveLast();
    click(f, "Command4");
    EXPECT_EQ(textOf(f, "Text1"), "Szőke Ödön");
    EXPECT_FALSE(f.CsakAktiv->isChecked());
    EXPECT_TRUE(f.SzuresSKI->isChecked());
}

// The assignments live in Tartosan.dsb: nothing ties them to the drivers of Kerova.dsb.
TEST_F(DriverTest, TheAssignedListFollowsTheDriverAndANewVehicleComesFromTheVehiclePicker) {
    driver("Ács Ödön", 1);
    driver("Bíró Béla", 2);
    assigned(1, "AAA-111");
    assigned(2, "BBB-222");
    assigned(9, "ZZZ-999");  // a driver that no longer exists
    forms::registerForm("GKTorzsFormX", [] { return new forms::StandInForm("GKTorzsFormX"); });
    auto& f = openDrivers();
    EXPECT_EQ(f.DBGrid2->model()->rowCount(), 1);
    EXPECT_EQ(textOf(f, "Label18"), "AAA-111");
    f.VezetoData->rs().MoveNext();
    EXPECT_EQ(textOf(f, "Label18"), "BBB-222");
    EXPECT_EQ(textOf(f, "Label8"), "2");

    onPicker("GKTorzsFormX", [] {
        Globals::PickDone = 1;
        Globals::PickedVehiclePlate = "CCC-333";
        Globals::PickedVehicleID = int32_t(7);
    });
    click(f, "Command2");
    EXPECT_EQ(Globals::CurrentFormName, DriverForm::Name);
    EXPECT_EQ(plates(2), (std::vector<std::string>{"BBB-222", "CCC-333"}));
    EXPECT_EQ(f.DBGrid2->model()->rowCount(), 2);
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok where PartnerID = 2", "GépkocsiFrsz")[0], "CCC-333");
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok where PartnerID = 2", "GkID")[0], "7");

    onPicker("GKTorzsFormX", nullptr);  // no pick: no assignment, no message
    click(f, "Command2");
    EXPECT_EQ(plates(2).size(), 2u);
    EXPECT_TRUE(dialogs->messages().empty());

    f.VezetoData->rs().MoveFirst();
    dialogs->answers = {vb::vbNo, vb::vbYes};
    click(f, "Command3");
    EXPECT_EQ(plates(1).size(), 1u);
    click(f, "Command3");
    EXPECT_TRUE(plates(1).empty());
    click(f, "Command3");  // nothing left to remove
    EXPECT_EQ(dialogs->messages().back(), "Nincs adat, vagy nem jelölt ki adatsort!");
    EXPECT_EQ(plates(9).size(), 1u);
}

TEST_F(DriverTest, DeletingTheLastDriverAndAnsweringNoLeavesTheFormAndHisVehiclesStay) {
    driver("Ács Ödön", 1);
    assigned(1, "AAA-111");
    auto& f = openDrivers();
    dialogs->answers = {vb::vbYes, vb::vbNo};
    click(f, "Command9");
    EXPECT_EQ(dialogs->messages(), (std::vector<std::string>{"Valóban véglegesen törli a kijelölt adatsort?",
                                                             "Minden adat törölve (Deleted All)! Kér új adatot (New)?"}));
    EXPECT_EQ(forms::find(DriverForm::Name), nullptr);
    EXPECT_EQ(rows("Kerova.dsb", "Vezetok"), 0);
    EXPECT_EQ(plates(1).size(), 1u);

    auto& g = openDrivers();  // the empty table gets its row; another user deletes it again
    everyDriver([](db::Recordset& r) { r.Delete(); });
    dialogs->clear();
    dialogs->answers = {vb::vbYes};
    click(g, "Command7");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{"Nincs járművezető! Visz fel ÚJ adatot?"});
    EXPECT_EQ(rows("Kerova.dsb", "Vezetok"), 1);
}

TEST_F(DriverTest, QuickSearchPartnerPickerAndTheHandOver) {
    driver("Ács Ödön", 1);
    driver("Őri Űrszula", 2);
    driver("Szabó Pál", 3);
    assigned(2, "ŐŰ-001");
    forms::registerForm("BeraktarozokFormX", [] { return new forms::StandInForm("BeraktarozokFormX"); });
    auto& f = openDrivers();
    f.Text13->setText("Ő");
    f.Text13->setText("Őr");
    EXPECT_EQ(textOf(f, "Text1"), "Őri Űrszula");
    f.Text13->setText("Őrx");  // no match: the last hit stays
    EXPECT_EQ(textOf(f, "Text1"), "Őri Űrszula");

    onPicker("BeraktarozokFormX", [] {
        Globals::PickDone = 1;
        Globals::PickedPartnerName = "Fuvar Kft.";
    });
    click(f, "Command12");
    EXPECT_EQ(textOf(f, "Text8"), "Fuvar Kft.");

    click(f, "Command8");
    EXPECT_EQ(forms::find(DriverForm::Name), nullptr);
    EXPECT_EQ(Globals::PickDone, 1);
    EXPECT_EQ(Globals::PickedDriverName, "Őri Űrszula");
    EXPECT_EQ(vb::CStr(Globals::PickedDriverID), "2");
    EXPECT_EQ(Globals::PickedDriverVehicle, "ŐŰ-001");
    EXPECT_EQ(Globals::PickedDriverEmployer, "Fuvar Kft.");
    EXPECT_EQ(column("Kerova.dsb", "select * from Vezetok where PartnerID = 2", "Munkáltató")[0], "Fuvar Kft.");
}

TEST_F(DriverTest, ThousandsOfDriversOpenAtOnce) {
    insertMany("Kerova.dsb", "Vezetok", 3000, [](int i) {
        return Fields{{"VezetöNeve", "Vezető " + std::to_string(100000 - i)}, {"PartnerID", int32_t(i)}};
    });
    QElapsedTimer t;
    t.start();
    auto& f = openDrivers();
    EXPECT_LT(t.elapsed(), 2000);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3000);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "Vezető 100000");
}

}  // namespace
