// The trip log UtNyilvantartasFormX: a whole log sheet on the demo company (pickers driven through
// their master forms), the opening rules, new trips and groups, delete, leaving, the day filter,
// the time boxes, the grid's checks, the invoice price and the print.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>

#include "app/app.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "trips/tripform.h"
#include "trips_support.h"
#include "vb/clock.h"
#include "vb/constants.h"

using namespace trips_test;
using trips::UtNyilvantartasFormX;

namespace {

using Form = UtNyilvantartasFormX;

class TripFormTest : public TripsTest {
protected:
    void SetUp() override {
        TripsTest::SetUp();
        app::registerAllForms();
        vb::clock::setFixed(vb::Date{vb::DateSerial(2026, 11, 23).serial + 0.5});
    }
    Form& openTrips() { return open<Form>(Form::Name); }
    static void trip(const Fields& f) { insert("Kerova.dsb", "Utak", f); }
    static std::vector<std::string> col(const std::string& sql, const std::string& c) {
        return column("Kerova.dsb", sql, c);
    }
    // Drives the master forms a handler opens: each one picks its row by a criterion and hands over.
    void pickers(std::map<std::string, std::pair<std::string, std::string>> picks) {
        forms::setModalRunner([picks](forms::Form& f) {
            static const std::map<std::string, std::pair<std::string, std::string>> how = {
                {"GKTorzsFormX", {"JarmuvekData", "Valaszt"}},
                {"VezetokTorzsFormX", {"VezetoData", "AtadaS"}},
                {"GkUtakTavolsagaTorzsFormX", {"UtTavTorzsData", "AdatAtad"}},
            };
            auto p = picks.find(f.name());
            auto h = how.find(f.name());
            if (p == picks.end() || h == how.end()) {
                f.exitHandler();
                return;
            }
            f.dataControl(h->second.first)->rs().FindFirst(p->second.first);
            ASSERT_FALSE(f.dataControl(h->second.first)->rs().NoMatch()) << p->second.first;
            f.action(h->second.second)->trigger();
        });
    }
};

TEST_F(TripFormTest, AWholeLogSheetOnTheDemoCompany) {
    demoCompany();
    int before = rows("Kerova.dsb", "Utak");
    Globals::FixedAllowance = 0;
    auto& f = openTrips();
    EXPECT_EQ(f.windowTitle().toStdString(), "Útnyilvántartás felvitel - Kerova");
    EXPECT_EQ(textOf(f, "Label29"), "Módosítás");
    std::string lastGroup = textOf(f, "Label12");
    EXPECT_FALSE(lastGroup.empty());

    // a new sheet: the question, then a fresh group with one row dated today
    dialogs->answers = {vb::vbYes};
    click(f, "MasikJarmu");
    ASSERT_EQ(dialogs->messages(), std::vector<std::string>{Form::AskGroup});
    std::string group = textOf(f, "Label12");
    EXPECT_NE(group, lastGroup);
    EXPECT_EQ(Globals::CurrentGroupID, group);
    EXPECT_EQ(f.DTPicker1->date(), QDate(2026, 11, 23));
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), before + 1);

    pickers({{"GKTorzsFormX", {"[GkFrsz] = 'KRV-101'", ""}},
             {"VezetokTorzsFormX", {"[VezetöNeve] = 'Kovács Béla'", ""}},
             {"GkUtakTavolsagaTorzsFormX", {"[Honnan] = 'Budapest' and [Hova] = 'Győr'", ""}}});
    click(f, "Jarmuvek");
    click(f, "Jarmuvezetok");
    click(f, "UtakTavok");
    EXPECT_EQ(textOf(f, "Text1"), "KRV-101");
    EXPECT_EQ(textOf(f, "Text2"), "Ford Transit 2.2 TDCi");
    EXPECT_EQ(textOf(f, "Label24"), "8,9");
    EXPECT_EQ(textOf(f, "Text3"), "Kovács Béla");
    EXPECT_EQ(textOf(f, "Text4"), "Budapest");
    EXPECT_EQ(textOf(f, "Text5"), "Győr");
    EXPECT_EQ(textOf(f, "Text6"), "121");

    type(f, "MaskEdBox1", "8,05");
    type(f, "MaskEdBox2", "10,00");
    type(f, "Text19", "148300");
    type(f, "Text20", "148425");
    type(f, "Text17", "600");
    click(f, "Command2");
    EXPECT_EQ(textOf(f, "Text16"), "10,769");
    EXPECT_EQ(textOf(f, "Text18"), "6461,4");
    EXPECT_EQ(textOf(f, "Label28"), "125");
    EXPECT_EQ(textOf(f, "MaskEdBox3"), "1,55");
    EXPECT_EQ(textOf(f, "Label14"), "121");
    // the figures up to the duration are stored by the button's move
    std::string where = "select * from Utak where CsoportAzonositó = '" + group + "'";
    EXPECT_EQ(col(where, "FRSZ"), std::vector<std::string>{"KRV-101"});
    EXPECT_EQ(col(where, "FogyasztottLiter"), std::vector<std::string>{"10,769"});
    EXPECT_EQ(col(where, "ÖsszesenIdö"), std::vector<std::string>{"1,55"});
    EXPECT_EQ(col(where, "IndulásIdeje"), std::vector<std::string>{"8,05"});
    EXPECT_EQ(col(where, "Dátum"), std::vector<std::string>{"2026.11.23."});

    // a new trip: a copy of vehicle, driver and day, landing on the new row
    click(f, "UjUt");
    EXPECT_EQ(textOf(f, "Label29"), "Új adat");
    EXPECT_EQ(f.UtakData->rs().size(), 2u);
    EXPECT_EQ(f.UtakData->rs().AbsolutePosition(), 0);
    EXPECT_EQ(textOf(f, "Text1"), "KRV-101");
    EXPECT_EQ(textOf(f, "Text3"), "Kovács Béla");
    EXPECT_EQ(textOf(f, "Text6"), "");
    EXPECT_EQ(f.DTPicker1->date(), QDate(2026, 11, 23));
    // the ÖsszesenKM of the first row stays what its press stored
    type(f, "Text6", "40");
    click(f, "Command2");
    EXPECT_EQ(textOf(f, "Label14"), "161");
    EXPECT_EQ(col(where + " order by IndulásIdeje", "ÖsszesenKM"), (std::vector<std::string>{"", "121"}));

    // leaving on a row without registration is offered; No keeps it
    f.Text1->clear();
    dialogs->answers = {vb::vbNo};
    click(f, "Kilepes");
    EXPECT_EQ(dialogs->messages().back(), Form::MandatoryText);
    EXPECT_EQ(forms::find(Form::Name), nullptr);
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), before + 2);
}

TEST_F(TripFormTest, QuickSearchesKeepTheLastHitAndClearOnLeaving) {
    demoCompany();
    auto& f = openTrips();
    f.show();
    focus(f, "Text21");
    type(f, "Text21", "MEG");
    EXPECT_EQ(forms::text(f.Label24), "11,2");  // the picker stands on MEG-318: its consumption
    type(f, "Text21", "X");                      // "MEGX" is no plate: back to the last hit
    EXPECT_EQ(f.GkData->rs().get("GkFrsz"), vb::Variant(std::string("MEG-318")));
    focus(f, "Text22");
    EXPECT_EQ(textOf(f, "Text21"), "");
    f.Text22->setText("Szőke");  // (key events carry ASCII only)
    EXPECT_EQ(f.GkVezetoData->rs().get("VezetöNeve"), vb::Variant(std::string("Szőke Ödön")));
    f.DBGrid3_Click();
    EXPECT_EQ(textOf(f, "Text3"), "Szőke Ödön");

    focus(f, "Text12");
    f.Text12->setText("Győr");
    f.DBGrid4_Click();
    EXPECT_EQ(textOf(f, "Text4"), "Győr");
    f.Text13->setText("Pécs");  // the other route box is cleared first
    EXPECT_EQ(textOf(f, "Text12"), "");
    EXPECT_EQ(f.TavData->rs().get("Hova"), vb::Variant(std::string("Pécs")));

    focus(f, "Text25");
    type(f, "Text25", "MEG");
    EXPECT_EQ(textOf(f, "Text1"), "MEG-318");
    type(f, "Text26", "Iveco");
    EXPECT_EQ(textOf(f, "Text25"), "");
    // the grid shows times as the boxes do
    int row = f.DBGrid1->Row();
    EXPECT_EQ(f.DBGrid1->cellText(row, 5), textOf(f, "MaskEdBox1"));
    EXPECT_EQ(dialogs->beeps(), 0);
}

TEST_F(TripFormTest, OpeningAnEmptyTableOrARowWithoutGroup) {
    initCompany();
    Globals::FixedUnit = "kg";
    auto& f = openTrips();
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 1);
    EXPECT_EQ(textOf(f, "Label12").rfind("20261123", 0), 0u);
    EXPECT_EQ(f.DTPicker1->date(), QDate(2026, 11, 23));
    EXPECT_EQ(textOf(f, "Text11"), "kg");
    dialogs->answers = {vb::vbYes};
    f.closeBox();  // the close box takes the same way as "Vissza": no registration, no distance
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{Form::MandatoryText});
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 0);

    trip({{"FRSZ", std::string("ABC-123")}, {"TávolságKm", 10.0}});
    dialogs->clear();
    dialogs->answers = {vb::vbYes};
    forms::get(Form::Name).Show();
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{Form::NoGroupText});
    EXPECT_EQ(dialogs->log.back().title, Form::NoGroupTitle);
    EXPECT_EQ(forms::find(Form::Name), nullptr);
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 0);
}

TEST_F(TripFormTest, NewGroupsAreRefusedOnZeroDistanceAndNextMonthAddsThirtyOneDays) {
    initCompany();
    trip({{"FRSZ", std::string("ABC-123")}, {"CsoportAzonositó", std::string("G1")},
          {"Dátum", vb::DateSerial(2027, 1, 31)}, {"TávolságKm", 0.0}});
    auto& f = openTrips();
    click(f, "MasikJarmu");
    click(f, "Command4");
    ASSERT_EQ(dialogs->log.size(), 4u);  // beep, message, beep, message
    EXPECT_EQ(dialogs->log[1].title, Form::ZeroTitleGroup);
    EXPECT_EQ(dialogs->log[3].title, Form::ZeroTitleMonth);
    EXPECT_EQ(dialogs->log[3].text, Form::ZeroDistance);

    click(f, "UjUt");  // a new trip asks nothing
    EXPECT_EQ(dialogs->messages().size(), 2u);
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 2);
    // a second new trip lands on its own new row, the one without a date yet
    click(f, "UjUt");
    EXPECT_EQ(f.UtakData->rs().size(), 3u);
    EXPECT_EQ(f.UtakData->rs().AbsolutePosition(), 0);
    EXPECT_TRUE(vb::isNull(f.UtakData->rs().get("Dátum")));
    EXPECT_EQ(textOf(f, "Text1"), "ABC-123");

    f.DTPicker1->setDate(QDate(2027, 1, 31));
    f.Text6->setText("12");
    dialogs->clear();
    dialogs->answers = {vb::vbNo};
    click(f, "Command4");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{Form::AskMonth});
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 3);
    dialogs->answers = {vb::vbYes};
    click(f, "Command4");
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 4);
    EXPECT_EQ(f.DTPicker1->date(), QDate(2027, 3, 3));
    EXPECT_EQ(textOf(f, "Text1"), "");  // vehicle and driver are not carried to a new group
    EXPECT_EQ(f.UtakData->rs().size(), 1u);
}

TEST_F(TripFormTest, DeletingTheLastRowOfAGroupGoesBackToTheMainMenu) {
    initCompany();
    trip({{"FRSZ", std::string("ABC-123")}, {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0},
          {"Dátum", vb::DateSerial(2026, 11, 20)}});
    trip({{"FRSZ", std::string("ABC-123")}, {"CsoportAzonositó", std::string("G2")}, {"TávolságKm", 7.0},
          {"Dátum", vb::DateSerial(2026, 11, 21)}});
    insert("Kerova.dsb", "UtakSzallitottSzemely",
        {{"SzállitottSzemélyNeve", std::string("Kiss Ádám")}, {"UtakCsoportAzonosito", std::string("G2")}});
    auto& f = openTrips();
    EXPECT_EQ(textOf(f, "Label12"), "G2");
    f.DBGrid1_DblClick();  // the group alone
    EXPECT_EQ(f.UtakData->rs().size(), 1u);
    EXPECT_EQ(Globals::CurrentGroupID, "G2");
    dialogs->answers = {vb::vbNo};
    click(f, "Torol");
    EXPECT_EQ(rows("Kerova.dsb", "Utak"), 2);
    dialogs->answers = {vb::vbYes};
    click(f, "Torol");
    EXPECT_EQ(dialogs->messages().back(), Form::GroupGone);
    EXPECT_EQ(forms::find(Form::Name), nullptr);
    EXPECT_EQ(col("select * from Utak", "CsoportAzonositó"), std::vector<std::string>{"G1"});
    EXPECT_EQ(rows("Kerova.dsb", "UtakSzallitottSzemely"), 1);  // the passengers stay
}

TEST_F(TripFormTest, PreviousTripTicksTheAllowanceAndTheRatePresetsTheAmount) {
    initCompany();
    Globals::FixedAllowance = 5000;
    Globals::FixedAllowanceCurrency = "HUF";
    vb::Date day = vb::DateSerial(2026, 11, 20);
    // the alphabetically first driver's two newest rows of one day decide
    trip({{"GkVezetöNeve", std::string("Aba Béla")}, {"Dátum", day}, {"ÉrkezésIdeje", 10.0},
          {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0}, {"FRSZ", std::string("A")}});
    trip({{"GkVezetöNeve", std::string("Aba Béla")}, {"Dátum", day}, {"ÉrkezésIdeje", 6.3},
          {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0}, {"FRSZ", std::string("A")}});
    trip({{"GkVezetöNeve", std::string("Zala Ödön")}, {"Dátum", day}, {"ÉrkezésIdeje", 9.0},
          {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0}, {"FRSZ", std::string("A")}});
    auto& f = openTrips();
    click(f, "UjUt");
    EXPECT_EQ(textOf(f, "Text23"), "5000");
    EXPECT_EQ(textOf(f, "Text24"), "HUF");
    EXPECT_EQ(textOf(f, "MaskEdBox4"), "10,00");  // the newest row of the whole table
    type(f, "MaskEdBox1", "4,30");
    type(f, "MaskEdBox2", "23,30");
    f.Text23->setText("1");
    click(f, "Command2");
    // previous arrival 6,30 (the second row of Aba Béla) less this start 4,30: 120 minutes
    EXPECT_EQ(textOf(f, "MaskEdBox4"), "6,30");
    EXPECT_EQ(textOf(f, "Label33"), "120");
    EXPECT_TRUE(f.Check1->isChecked());
    EXPECT_EQ(textOf(f, "MaskEdBox3"), "19,00");
    EXPECT_EQ(textOf(f, "Text23"), "0");  // 19 + 2 hours: under a day
    EXPECT_EQ(dialogs->beeps(), 0);

    // arrival before start: the beep, "0,00", the focus on the start
    f.MaskEdBox2->setText("3,00");
    click(f, "Command2");
    EXPECT_EQ(textOf(f, "MaskEdBox3"), "0,00");
    EXPECT_EQ(dialogs->beeps(), 1);
}

TEST_F(TripFormTest, BadInputInBoxesAndGridIsRefused) {
    initCompany();
    trip({{"FRSZ", std::string("ABC-123")}, {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0},
          {"Dátum", vb::DateSerial(2026, 11, 20)}, {"IndulásIdeje", 8.3}});
    auto& f = openTrips();
    EXPECT_EQ(textOf(f, "MaskEdBox1"), "8,30");
    f.Text6->clear();
    type(f, "Text6", "1a2.");
    EXPECT_EQ(textOf(f, "Text6"), "12");
    EXPECT_EQ(dialogs->beeps(), 2);

    f.show();
    focus(f, "MaskEdBox2");
    type(f, "MaskEdBox2", "23,60");
    focus(f, "Text19");
    EXPECT_EQ(dialogs->beeps(), 3);
    EXPECT_EQ(f.focusWidget(), f.MaskEdBox2);
    f.MaskEdBox2->setText("23,59");
    focus(f, "Text19");
    EXPECT_EQ(dialogs->beeps(), 3);

    // letters that reach a box anyway: the button goes on, the row is not half written
    f.Text19->setText("abc");
    click(f, "Command2");
    EXPECT_EQ(col("select * from Utak", "ZáróKM"), std::vector<std::string>{""});
    EXPECT_TRUE(f.isLoaded());

    // the grid: a time above 23,59 becomes 0, a short date is refused
    f.Text19->setText("1");
    click(f, "Command2");
    auto* model = f.DBGrid1->recordsetModel();
    model->setData(model->index(0, 5), "25,5", Qt::EditRole);
    EXPECT_EQ(col("select * from Utak", "IndulásIdeje"), std::vector<std::string>{"0"});
    model->setData(model->index(0, 3), "2026", Qt::EditRole);
    EXPECT_EQ(col("select * from Utak", "Dátum"), std::vector<std::string>{"2026.11.20."});
    EXPECT_EQ(dialogs->beeps(), 5);
}

TEST_F(TripFormTest, DayFilterPriceFromInvoicePurposesAndPrint) {
    initCompany();
    trip({{"FRSZ", std::string("ABC-123")}, {"CsoportAzonositó", std::string("G1")}, {"TávolságKm", 5.0},
          {"Dátum", vb::DateSerial(2026, 11, 20)}, {"Honnan", std::string("Győr")}, {"Hova", std::string("Pécs")},
          {"FogyasztottLiter", 2.5}, {"Üzemanyagköltség", 1000.0}});
    auto& f = openTrips();
    f.DTPicker2->setDate(QDate(2026, 11, 19));
    f.Label18_Click();
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{Form::NoSuchDay});
    EXPECT_EQ(f.UtakData->RecordSource(), Form::AllSource);
    f.DTPicker2->setDate(QDate(2026, 11, 20));
    f.Label18_Click();
    EXPECT_EQ(f.UtakData->rs().RecordCount(), 1);

    forms::setModalRunner([](forms::Form& g) {
        if (g.name() == "UzemanyagSzamlaFormX") Globals::FuelPriceTransfer = 612.5;
        g.Unload();
    });
    click(f, "Command5");
    EXPECT_EQ(textOf(f, "Text17"), "612,5");
    forms::setModalRunner([](forms::Form& g) { g.Unload(); });
    click(f, "UzemanyagArTorzs");
    EXPECT_EQ(textOf(f, "Text17"), "0");

    dialogs->clear();
    forms::setModalRunner([](forms::Form& g) {
        g.Unload();
        auto rs = db::Database::open("Kerova.dsb")->OpenRecordset("MegnevezesTorzs");
        while (rs->size() > 0) {
            rs->MoveFirst();
            rs->Delete();
        }
    });
    click(f, "Megnevezesek");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{Form::NoPurposes});
    EXPECT_EQ(dialogs->log.back().title, Form::NoPurposesTitle);
    forms::setModalRunner([](forms::Form& g) { g.Unload(); });
    insert("Kerova.dsb", "MegnevezesTorzs", {{"Megnevezés", std::string("Áruszállítás")}});
    click(f, "Megnevezesek");
    ASSERT_GE(f.Combo1->count(), 1);
    f.Combo1->setCurrentIndex(f.Combo1->count() - 1);
    f.Combo1_Click();
    EXPECT_EQ(textOf(f, "Text9"), "Áruszállítás");

    std::vector<std::string> pages;
    forms::setModalRunner([&](forms::Form& g) {
        pages.push_back(g.name());
        g.Unload();
    });
    Globals::OperatorName = "Fuvarozó Őrség Kft. Győr";
    click(f, "Nyomtatas");
    EXPECT_EQ(textOf(f, "Label14"), "5 - 2,5 L - 1000 Ft");
    EXPECT_EQ(pages, std::vector<std::string>{"CrystalReport1"});
    EXPECT_EQ(col("select * from Utak", "ÖsszesenKM"), std::vector<std::string>{""});  // a caption, not stored
}

}  // namespace
