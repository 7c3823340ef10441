// The route distance master: opening, the return row, save, searches, delete, the hand-over to the
// caller and from the country picker, leaving by the close box, and the printed list.
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "forms/globals.h"
#include "forms/grid.h"
#include "print/pageform.h"
#include "trips/routeform.h"
#include "trips_support.h"
#include "vb/clock.h"
#include "vb/constants.h"

using namespace trips_test;
using RouteForm = trips::GkUtakTavolsagaTorzsFormX;

namespace {

class RouteTest : public TripsTest {
protected:
    void SetUp() override {
        TripsTest::SetUp();
        initCompany();
    }
    static void route(const std::string& from, const std::string& to, vb::Variant km, const std::string& fromCountry = "",
                      const std::string& toCountry = "") {
        insert("Kerova.dsb", "UtakTavolsag",
            {{"Honnan", from}, {"Hova", to}, {"TávolságKm", km}, {"HonnanOrszág", fromCountry}, {"HovaOrszág", toCountry}});
    }
    static std::vector<std::string> routes(const std::string& col) {
        return column("Kerova.dsb", "select * from UtakTavolsag order by Sorszám", col);
    }
    RouteForm& openRoutes() { return open<RouteForm>(RouteForm::Name); }
};

TEST_F(RouteTest, AnEmptyTableGetsOneRowAndThousandsOfRowsOpenAtOnce) {
    click(openRoutes(), "Kilepes");
    click(openRoutes(), "Kilepes");
    EXPECT_EQ(rows("Kerova.dsb", "UtakTavolsag"), 1);

    insertMany("Kerova.dsb", "UtakTavolsag", 3000,
               [](int i) { return Fields{{"Honnan", "Hely " + std::to_string(i)}, {"TávolságKm", double(i)}}; });
    QElapsedTimer t;
    t.start();
    auto& f = openRoutes();
    EXPECT_LT(t.elapsed(), 2000);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3001);
    EXPECT_EQ(f.windowTitle().toStdString(), "Utak távolsága törzs - Kerova");
}

TEST_F(RouteTest, TheReturnRowSwapsThePlacesKeepsTheDistanceAndSaveStaysOnTheRow) {
    route("Budapest", "Győr", 121.0, "H", "H");
    route("Győr", "Wien", 120.0, "H", "A");
    auto& f = openRoutes();
    EXPECT_EQ(textOf(f, "Text1"), "Budapest");
    click(f, "Command5");
    EXPECT_EQ(textOf(f, "Text1"), "Győr");
    EXPECT_EQ(textOf(f, "Text2"), "Budapest");
    EXPECT_EQ(textOf(f, "Text3"), "121");
    EXPECT_EQ(textOf(f, "Text4"), "");
    click(f, "Command1");
    EXPECT_EQ(textOf(f, "Label4"), "3");
    EXPECT_EQ(routes("Hova"), (std::vector<std::string>{"Győr", "Wien", "Budapest"}));
    EXPECT_EQ(routes("HonnanOrszág"), (std::vector<std::string>{"H", "H", ""}));

    f.Text3->clear();
    type(f, "Text3", "95,5x");  // the distance takes digits and the comma only
    EXPECT_EQ(dialogs->beeps(), 1);
    click(f, "OKMent");
    EXPECT_EQ(textOf(f, "Label4"), "3");
    EXPECT_EQ(routes("TávolságKm")[2], "95,5");
    EXPECT_TRUE(dialogs->messages().empty());

    click(f, "Command4");
    click(f, "Command4");  // two quick clicks make two rows
    EXPECT_EQ(rows("Kerova.dsb", "UtakTavolsag"), 5);
}

TEST_F(RouteTest, SaveOfARowAnotherUserDeletedGivesBothMessages) {
    route("Budapest", "Győr", 121.0);
    route("Győr", "Wien", 120.0);
    auto& f = openRoutes();
    f.UtTavTorzsData->rs().MoveLast();
    auto other = db::Database::open("Kerova.dsb")->OpenRecordset("select * from UtakTavolsag where Sorszám = 2");
    other->Delete();
    click(f, "Command1");
    EXPECT_EQ(dialogs->messages(), (std::vector<std::string>{RouteForm::SaveMiss1, RouteForm::SaveMiss2}));
    EXPECT_TRUE(f.isLoaded());
}

TEST_F(RouteTest, SearchesWalkOnThroughTheMatchesWrapAndSayWhenNothingMatches) {
    route("Budapest", "Győr", 121.0);
    route("Győr", "Budapest", 121.0);
    route("Budaörs", "Érd", 9.0);
    auto& f = openRoutes();
    dialogs->inputs = {"Bud", "Bud", "", "Xyz"};
    click(f, "Command6");
    EXPECT_EQ(textOf(f, "Text1"), "Budaörs");
    click(f, "GTKeresHonnan");  // the second search wraps to the first match
    EXPECT_EQ(textOf(f, "Text1"), "Budapest");
    f.UtTavTorzsData->rs().MoveLast();
    click(f, "Command7");  // an empty answer changes nothing
    EXPECT_EQ(textOf(f, "Text1"), "Budaörs");
    EXPECT_TRUE(dialogs->messages().empty());
    click(f, "Command7");
    ASSERT_EQ(dialogs->messages(), std::vector<std::string>{"Nincs ilyen helység!"});
    EXPECT_EQ(dialogs->log.back().style, vb::vbExclamation);
    EXPECT_EQ(dialogs->log.back().title, "Keresés - hova");
    EXPECT_EQ(textOf(f, "Text1"), "Budapest");  // back to the first row
}

TEST_F(RouteTest, DeleteAsksAndTheLastRowGivesANewEmptyRowAtOnce) {
    route("Budapest", "Győr", 121.0);
    auto& f = openRoutes();
    dialogs->answers = {vb::vbNo, vb::vbYes};
    click(f, "Command8");
    EXPECT_EQ(routes("Honnan"), std::vector<std::string>{"Budapest"});
    click(f, "UtTorzsTorol");
    EXPECT_EQ(dialogs->log[1].text, "Az adatsor VÉGLEGESEN törölhető?");
    EXPECT_EQ(dialogs->log[1].title, "FIGYELEM! Aktuális adat VISSZAVONHATATLAN törlése!");
    EXPECT_EQ(routes("Honnan"), std::vector<std::string>{""});
    EXPECT_EQ(textOf(f, "Label4"), "2");
}

TEST_F(RouteTest, TheHandOverPassesTheRowOrOffTheEndClearsOnlyTheTexts) {
    route("Budapest", "Wien", 0.0, "H", "A");  // a zero distance stays and is passed as zero
    Globals::PickedRouteDistance = 9;
    click(openRoutes(), "Command12");
    EXPECT_EQ(forms::find(RouteForm::Name), nullptr);
    EXPECT_EQ(Globals::RoutePicked, 1);
    EXPECT_EQ(Globals::PickedFrom, "Budapest");
    EXPECT_EQ(Globals::PickedTo, "Wien");
    EXPECT_EQ(Globals::PickedFromCountry, "H");
    EXPECT_EQ(Globals::PickedToCountry, "A");
    EXPECT_EQ(Globals::PickedRouteDistance, 0);

    Globals::RoutePicked = 0;
    Globals::PickedRouteDistance = 7;
    auto& f = openRoutes();
    f.UtTavTorzsData->rs().MoveLast();
    f.UtTavTorzsData->rs().MoveNext();
    click(f, "AdatAtad");
    EXPECT_EQ(Globals::PickedFrom, "");
    EXPECT_EQ(Globals::PickedToCountry, "");
    EXPECT_EQ(Globals::RoutePicked, 0);
    EXPECT_EQ(Globals::PickedRouteDistance, 7);
}

// Leaving stores what was typed, whether by "Vissza" or by the close box, at every opening: also at
// the one after a hand-over.
TEST_F(RouteTest, TheCloseBoxStoresATypedDistanceAtEveryOpening) {
    route("Budapest", "Győr", 50.0);
    click(openRoutes(), "Command12");
    auto& f = openRoutes();
    f.Text3->setText("55");
    f.close();
    EXPECT_EQ(forms::find(RouteForm::Name), nullptr);
    EXPECT_EQ(routes("TávolságKm"), std::vector<std::string>{"55"});
    auto& g = openRoutes();
    EXPECT_EQ(textOf(g, "Text3"), "55");
    g.Text3->setText("60");
    click(g, "Command11");
    EXPECT_EQ(routes("TávolságKm"), std::vector<std::string>{"60"});
    g.close();  // the close box of a form already left asks nothing more
    EXPECT_TRUE(dialogs->messages().empty());
}

TEST_F(RouteTest, TheCountryButtonsTakeThePickedMarkAndNoPickLeavesTheBox) {
    route("Budapest", "Wien", 243.0);
    forms::registerForm("OrszagokFormX", [] { return new forms::StandInForm("OrszagokFormX"); });
    auto& f = openRoutes();
    onPicker("OrszagokFormX", [] {
        Globals::CountryPicked = int16_t(1);
        Globals::CountryMarkTransfer = std::string(1, 'A');
    });
    click(f, "Command3");
    EXPECT_EQ(textOf(f, "Text5"), "A");
    EXPECT_EQ(Globals::CurrentFormName, RouteForm::Name);
    onPicker("OrszagokFormX", nullptr);
    click(f, "Command2");
    EXPECT_EQ(textOf(f, "Text4"), "");
    click(f, "Command1");
    EXPECT_EQ(routes("HovaOrszág"), std::vector<std::string>{"A"});
}

TEST_F(RouteTest, TheListHas21LinesAPageAndMegseStopsIt) {
    for (int i = 1; i <= 21; ++i) route("Hely " + std::to_string(i), "Győr", double(i));
    auto& f = openRoutes();
    std::vector<std::vector<std::string>> firstLines, lastLines;
    std::vector<std::string> pageLines;
    const char* button = "Command1";
    forms::setModalRunner([&](forms::Form& p) {
        auto* page = dynamic_cast<print::ListPageForm*>(&p);
        if (!page) return;
        firstLines.push_back(page->row(1));
        lastLines.push_back(page->row(21));
        pageLines.push_back(page->text("Oldal"));
        EXPECT_EQ(page->text("Cim"), "T Á V O L S Á G O K");
        EXPECT_EQ(page->text("Fej(2)"), "HOVÁ:");
        p.control<QPushButton>(button)->click();
    });
    click(f, "Command9");
    ASSERT_EQ(firstLines.size(), 1u);  // exactly 21 rows: one page
    EXPECT_EQ(lastLines[0], (std::vector<std::string>{"Hely 21", "Győr", "21"}));
    EXPECT_EQ(pageLines[0], "1. oldal          " + vb::dateText(vb::clock::today()));

    for (int i = 22; i <= 43; ++i) route("Hely " + std::to_string(i), "Győr", double(i));
    click(f, "Command1");  // the save refreshes the source: the new rows come into the set
    firstLines.clear();
    lastLines.clear();
    click(f, "GTNyom");
    ASSERT_EQ(firstLines.size(), 3u);
    EXPECT_EQ(firstLines[2], (std::vector<std::string>{"Hely 43", "Győr", "43"}));
    EXPECT_EQ(lastLines[2], (std::vector<std::string>{"", "", ""}));
    EXPECT_EQ(textOf(f, "Label4"), "1");  // the first row afterwards

    firstLines.clear();
    button = "Command3";  // "Mégse" on the first page stops the whole list
    click(f, "GTNyom");
    EXPECT_EQ(firstLines.size(), 1u);
}

}  // namespace
