// Trip purposes, passengers and documents: opening, save that finds its row again, delete, and the
// two forms kept per trip group.
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>

#include "forms/globals.h"
#include "forms/grid.h"
#include "trips/documentform.h"
#include "trips/passengerform.h"
#include "trips/purposeform.h"
#include "trips_support.h"
#include "vb/constants.h"

using namespace trips_test;
using trips::MegnevezesTorzsFormX;
using trips::UtakCsatoltOkmanyokFormX;
using trips::UtakSzallitottSzemelyekFormX;

namespace {

class SmallMasterTest : public TripsTest {
protected:
    void SetUp() override {
        TripsTest::SetUp();
        initCompany();
    }
    static void purpose(const std::string& name) { insert("Kerova.dsb", "MegnevezesTorzs", {{"Megnevezés", name}}); }
    static void passenger(const std::string& name, const std::string& group) {
        insert("Kerova.dsb", "UtakSzallitottSzemely", {{"SzállitottSzemélyNeve", name}, {"UtakCsoportAzonosito", group}});
    }
    static std::vector<std::string> purposes() { return column("Kerova.dsb", "MegnevezesTorzs", "Megnevezés"); }
    static std::vector<std::string> passengers(const std::string& col) {
        return column("Kerova.dsb", "UtakSzallitottSzemely", col);
    }
    MegnevezesTorzsFormX& openPurposes() { return open<MegnevezesTorzsFormX>(MegnevezesTorzsFormX::Name); }
};

TEST_F(SmallMasterTest, AnEmptyPurposeTableGetsARowAndAFilledOneOpensOnItsFirstPurpose) {
    auto& f = openPurposes();
    EXPECT_EQ(purposes(), std::vector<std::string>{""});
    EXPECT_EQ(f.windowTitle().toStdString(), "Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova");
    click(f, "Kilepes");
    purpose("Áruszállítás");
    purpose("Anyagbeszerzés");
    auto& g = openPurposes();
    EXPECT_EQ(textOf(g, "Text1"), "");  // the empty row sorts first
    g.VezetoData->rs().MoveNext();
    EXPECT_EQ(textOf(g, "Text1"), "Anyagbeszerzés");
}

TEST_F(SmallMasterTest, SaveStoresThePurposeAndFindsItAgainEvenWithAnApostrophe) {
    purpose("Áruszállítás");
    purpose("Kiszállítás");
    auto& f = openPurposes();
    click(f, "UjAdat");
    f.Text1->setText("Ügyfél látogatás");
    click(f, "Command1");
    EXPECT_EQ(textOf(f, "Text1"), "Ügyfél látogatás");
    EXPECT_EQ(f.DBGrid1->Row(), 2);

    f.Text1->clear();  // an empty text only takes the focus back
    click(f, "Command1");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3);

    click(f, "UjAdat");
    f.Text1->setText("Ügyfél's");
    click(f, "Command1");  // the find breaks; the row is saved all the same
    EXPECT_EQ(purposes().back(), "Ügyfél's");
    EXPECT_TRUE(dialogs->messages().empty());
    EXPECT_TRUE(f.isLoaded());
}

TEST_F(SmallMasterTest, DeletingTheLastPurposeOffersANewOneAndNoLeaves) {
    purpose("Áruszállítás");
    purpose("Kiszállítás");
    auto& f = openPurposes();
    dialogs->answers = {vb::vbNo, vb::vbYes, vb::vbYes, vb::vbYes};
    click(f, "Torl_s");
    EXPECT_EQ(purposes().size(), 2u);
    click(f, "Torl_s");
    click(f, "Torl_s");
    EXPECT_EQ(dialogs->log.back().text, "Minden adat törölve (Deleted All)! Kér új adatot (New)?");
    EXPECT_EQ(purposes(), std::vector<std::string>{""});  // Yes: a new row
    dialogs->answers = {vb::vbYes, vb::vbNo};
    click(f, "Torl_s");
    EXPECT_EQ(forms::find(MegnevezesTorzsFormX::Name), nullptr);
    EXPECT_TRUE(purposes().empty());
}

TEST_F(SmallMasterTest, WithoutAGroupIdEitherGroupFormLeavesAtOnceWithTheMessage) {
    for (const char* name : {UtakSzallitottSzemelyekFormX::Name, UtakCsatoltOkmanyokFormX::Name}) {
        dialogs->clear();
        forms::get(name).Show();
        EXPECT_EQ(forms::find(name), nullptr) << name;
        ASSERT_EQ(dialogs->messages(), std::vector<std::string>{"Csoportazonosító nélkül nem lehet személyt felvinni!"});
        EXPECT_EQ(dialogs->log.back().style, vb::vbCritical);
        EXPECT_EQ(dialogs->log.back().title, "FIGYELEM! Kezelői hiba! Válasszon utat először!");
    }
    EXPECT_EQ(rows("Kerova.dsb", "UtakSzallitottSzemely"), 0);
}

TEST_F(SmallMasterTest, AGroupShowsOnlyItsPassengersAndNewOnesTakeItsId) {
    passenger("Kiss Ödön", "20261123-30600");
    passenger("Nagy Éva", "20261120-100");
    Globals::CurrentGroupID = "20261123-30600";
    auto& f = open<UtakSzallitottSzemelyekFormX>(UtakSzallitottSzemelyekFormX::Name);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 1);
    EXPECT_EQ(textOf(f, "Label3"), "20261123-30600");
    click(f, "UjAdat");
    EXPECT_EQ(textOf(f, "Label3"), "20261123-30600");
    f.Text1->setText("Szűts Ősz");
    click(f, "Command1");
    EXPECT_EQ(textOf(f, "Text1"), "Szűts Ősz");
    EXPECT_EQ(column("Kerova.dsb", "select * from UtakSzallitottSzemely where UtakCsoportAzonosito = '20261123-30600'",
                     "SzállitottSzemélyNeve"),
              (std::vector<std::string>{"Kiss Ödön", "Szűts Ősz"}));
}

// The first opening for a group makes its empty row at once; the documents form, as it stands,
// works on the passenger table.
TEST_F(SmallMasterTest, TheFirstOpeningForAGroupMakesARowAndTheDocumentFormWritesPassengers) {
    Globals::CurrentGroupID = "20261123-1";
    auto& f = open<UtakSzallitottSzemelyekFormX>(UtakSzallitottSzemelyekFormX::Name);
    EXPECT_EQ(passengers("UtakCsoportAzonosito"), std::vector<std::string>{"20261123-1"});
    click(f, "Kilepes");
    Globals::CurrentGroupID = "20261123-2";
    auto& d = open<UtakCsatoltOkmanyokFormX>(UtakCsatoltOkmanyokFormX::Name);
    EXPECT_EQ(d.windowTitle().toStdString(), "Csatolt okmányok felvitele - Kerova");
    d.Text1->setText("Menetlevél");
    d.close();
    EXPECT_EQ(passengers("UtakCsoportAzonosito"), (std::vector<std::string>{"20261123-1", "20261123-2"}));
    EXPECT_EQ(passengers("SzállitottSzemélyNeve"), (std::vector<std::string>{"", "Menetlevél"}));
    EXPECT_EQ(rows("Kerova.dsb", "UtakCsatoltOkmany"), 0);
}

TEST_F(SmallMasterTest, ThousandsOfPurposesOpenAtOnce) {
    insertMany("Kerova.dsb", "MegnevezesTorzs", 3000,
               [](int i) { return Fields{{"Megnevezés", "Megnevezés " + std::to_string(i)}}; });
    QElapsedTimer t;
    t.start();
    auto& f = openPurposes();
    EXPECT_LT(t.elapsed(), 2000);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3000);
}

}  // namespace
