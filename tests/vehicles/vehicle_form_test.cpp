// The vehicle master: what it shows, the expiry marks, the fields, the searches, the pick hand-over,
// the exit, and the delete with its archive copy and the archive view.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QPushButton>

#include "forms/events.h"
#include "forms/grid.h"
#include "forms/recordform.h"
#include "vb/constants.h"
#include "vehicles_support.h"

using namespace vehicles_test;
using vehicles::GKTorzsFormX;

namespace {

constexpr int32_t Red = GKTorzsFormX::WarnColor;
constexpr int32_t White = GKTorzsFormX::PlainColor;

QDate qd(vb::Date d) {
    auto p = vb::dateParts(d);
    return QDate(p.year, p.month, p.day);
}

// A vehicle whose inspection and insurance lie a year ahead and whose last service is old.
Fields ordinary(Fields more = {}) {
    Fields f{{"MuszakiVizsgaDatum", vb::Date{vb::DateSerial(2027, 11, 23)}},
             {"KotelezoBiztDatum", vb::Date{vb::DateSerial(2027, 11, 23)}},
             {"UtolsoSzervizDatum", vb::Date{vb::DateSerial(2025, 11, 23)}},
             {"SzervizIntervallumNap", int32_t(30)}};
    f.insert(f.end(), more.begin(), more.end());
    return f;
}

class VehicleFormTest : public VehicleTest {
protected:
    void SetUp() override {
        VehicleTest::SetUp();
        initCompany();
    }
};

TEST_F(VehicleFormTest, OpensOnTheLastVehicleWithItsCaptionsAndSources) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "KŐB-112", "Rába H18",
            ordinary({{"Hengerurtartalom", 10350.0}, {"FogyasztásLiter100", 32.5}, {"GkVezetoNeve", "Győri Ödön"},
                      {"KotelezoHaviDija", 12500.0}, {"PartnerNeve", "Kőszegi Kft."}, {"PartnerID", int32_t(7)},
                      {"Alvállalkozó", true}, {"SzemleKM", 120000.0}}));
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Járművek nyilvántartása törzs Tartosan és Kerova");
    EXPECT_EQ(t(f.Text1), "KŐB-112");
    EXPECT_EQ(t(f.Text3), "10350");
    EXPECT_EQ(t(f.Text4), "32,5");
    EXPECT_EQ(t(f.Text5), "Győri Ödön");
    EXPECT_EQ(t(f.Text9), "12500");
    EXPECT_EQ(t(f.Text22), "12500");
    EXPECT_EQ(t(f.Text13), "Kőszegi Kft.");
    EXPECT_EQ(t(f.Label23), "7");
    EXPECT_EQ(t(f.Label24), "2");
    EXPECT_TRUE(f.Check2->isChecked());
    EXPECT_EQ(t(f.Text16), "120000");
    EXPECT_EQ(f.DTPicker2->date(), QDate(2027, 11, 23));
    EXPECT_EQ(f.DTPicker5->date(), QDate(2026, 11, 23));
    EXPECT_EQ(f.Text2->toolTip().toStdString(), "Kulcs adat");
    EXPECT_EQ(f.Text10->toolTip().toStdString(), "Induló km");
    EXPECT_EQ(f.Text22->toolTip().toStdString(), "Nemzetközi biztosítás díja");
    EXPECT_EQ(t(f.Label14), " LEJÁRT! ");
    EXPECT_EQ(textOf(f, "Text7Caption"), "Szerviz intervallum (km):");
    EXPECT_EQ(textOf(f, "Command7"), "Aktuális laptól minden adat  nyomtatása");
    EXPECT_EQ(textOf(f, "Command8"), "Műszaki viszga szükségesség nyomtatása");
    EXPECT_EQ(textOf(f, "Command2"), "Tulajdonos kiválasztása partner (vevő) törzsből");
    EXPECT_EQ(f.VisszaEles->text().toStdString(), "Vissza az éles adatokra!");
    EXPECT_FALSE(f.VisszaEles->isVisible());
    EXPECT_FALSE(f.Command1->isVisible());
    EXPECT_EQ(f.DBGrid1->columnCount(), 29);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_EQ(f.Data1->RecordSource(), "select * from Jarmuvek where Figyelmeztetés = True order by GkFrsz");
    EXPECT_EQ(f.PartnerData->RecordSource(), "select BerNev, recordID from beraktar order by BerNev");
    // from the main menu: no "Választ", no expiry mark on a vehicle with nothing due
    EXPECT_FALSE(f.Valaszt->isVisible());
    for (auto* l : {f.Label14, f.Label15, f.Label16, f.Label17, f.Label35, f.Label36}) EXPECT_FALSE(l->isVisible());
    EXPECT_EQ(Globals::PickDone, 0);
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
    EXPECT_TRUE(dialogs->log.empty());
}

TEST_F(VehicleFormTest, AnEmptyTableGetsRecordOneWhoseNullDatesStayNull) {
    auto& f = open();
    EXPECT_EQ(col("recordID"), std::vector<std::string>{"1"});
    // the pickers show today, and the checks compare that: inspection and insurance are due
    EXPECT_EQ(f.DTPicker2->date(), QDate(2026, 11, 23));
    EXPECT_TRUE(f.Label16->isVisible());
    EXPECT_TRUE(f.Label17->isVisible());
    EXPECT_TRUE(f.Check1->isChecked());
    f.Text2->setText("Opel Astra");
    click(f, "Command4");
    EXPECT_EQ(col("GkTipus"), std::vector<std::string>{"Opel Astra"});
    EXPECT_EQ(col("Figyelmeztetés"), std::vector<std::string>{"True"});
    EXPECT_EQ(col("MuszakiVizsgaDatum"), std::vector<std::string>{""});
    EXPECT_EQ(col("KotelezoBiztDatum"), std::vector<std::string>{""});

    // two quick clicks on "Új adat" make two records; the pickers keep what they showed
    f.DTPicker2->setDate(QDate(2027, 1, 1));
    click(f, "Command3");
    click(f, "Command5");
    EXPECT_EQ(col("recordID"), (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(t(f.Label24), "3");
    EXPECT_EQ(f.DTPicker2->date(), QDate(2027, 1, 1));
    EXPECT_EQ(col("MuszakiVizsgaDatum"), (std::vector<std::string>{"2027.01.01.", "", ""}));
    EXPECT_EQ(QApplication::focusWidget(), f.Text1);
}

TEST_F(VehicleFormTest, TheServiceIntervalInKmComparesAsTextWithThePresentReading) {
    vehicle(1, "AAA-111", "Opel", ordinary({{"SzervizIntervallumKM", 9000.0}, {"JelenlegiKmAllas", 10000.0}}));
    vehicle(2, "BBB-222", "Fiat", ordinary({{"SzervizIntervallumKM", 10000.0}, {"JelenlegiKmAllas", 9000.0}}));
    auto& f = open();
    // 10000 >= 9000 as numbers, but "10000" < "9000" as texts
    EXPECT_FALSE(f.Label15->isVisible());
    EXPECT_FALSE(f.Check1->isChecked());
    f.DBGrid1->selectRow(0);
    EXPECT_EQ(t(f.Text7), "9000");
    EXPECT_TRUE(f.Label15->isVisible());
    EXPECT_TRUE(f.Check1->isChecked());
    // the interval must be above 0
    f.Text7->setText("0");
    f.CheckWarnings();
    EXPECT_FALSE(f.Label15->isVisible());
    // the flag set by the check is stored at the move, and the side grid shows it on activation
    f.DBGrid1->selectRow(1);
    EXPECT_EQ(col("Figyelmeztetés"), (std::vector<std::string>{"True", "False"}));
}

TEST_F(VehicleFormTest, TachographDatesUseTodayMinusDaysAndTheirMarksNeverHide) {
    Globals::WarnTachoCalibrationDays = 30;
    Globals::WarnTachoPermitDays = 30;
    vehicle(1, "AAA-111", "Opel", ordinary({{"TachográfHitelesités", day(-20)}, {"TachoOMHEng", day(-20)}}));
    vehicle(2, "BBB-222", "Fiat", ordinary({{"TachográfHitelesités", day(-40)}, {"TachoOMHEng", day(-40)}}));
    auto& f = open();
    EXPECT_TRUE(f.Label35->isVisible());
    EXPECT_TRUE(f.Label36->isVisible());
    EXPECT_TRUE(f.Check1->isChecked());
    // on the first vehicle nothing is due, but the marks stay (those rows have no "otherwise")
    f.DBGrid1->selectRow(0);
    EXPECT_TRUE(f.Label35->isVisible());
    EXPECT_TRUE(f.Label36->isVisible());
    EXPECT_FALSE(f.Check1->isChecked());
    f.DBGrid1->selectRow(1);
    // calibration marks only its label, the permit also the flag
    Globals::WarnTachoPermitDays = 50;
    f.Check1->setChecked(false);
    f.CheckWarnings();
    EXPECT_FALSE(f.Check1->isChecked());
}

TEST_F(VehicleFormTest, ZeroDaysMeansTodayButZeroKilometresSwitchesTheReadingOff) {
    vehicle(1, "AAA-111", "Opel",
            ordinary({{"TachográfHitelesités", day(-1)}, {"TachoOMHEng", day(0)}, {"SzemleKM", 50000.0},
                      {"JelenlegiKmAllas", 40000.0}}));
    auto& f = open();
    EXPECT_TRUE(f.Label35->isVisible());   // yesterday is before today minus 0
    EXPECT_FALSE(f.Label36->isVisible());  // today is not
    EXPECT_EQ(forms::backColor(f.Text16), White);
    EXPECT_FALSE(f.Check1->isChecked());
    Globals::WarnInspectionKm = 10000;
    f.CheckWarnings();
    EXPECT_EQ(forms::backColor(f.Text16), Red);
    EXPECT_TRUE(f.Check1->isChecked());
    // an empty reading can't be a number: that row doesn't hold
    Globals::WarnTimingBeltKm = 5000;
    f.CheckWarnings();
    EXPECT_EQ(t(f.Text20), "");
    EXPECT_EQ(forms::backColor(f.Text20), White);
}

TEST_F(VehicleFormTest, LastValuePlusIntervalAtOrAbovePresentMarksAndOnlyTheUserClearsTheFlag) {
    Globals::WarnOilChangeKm = 15000;
    vehicle(1, "AAA-111", "Opel",
            ordinary({{"UtolsoSzervizDatum", day(-10)}, {"SzervizIntervallumNap", int32_t(30)},
                      {"OlajcsereKM", 100000.0}, {"JelenlegiKmAllas", 110000.0}}));
    auto& f = open();
    EXPECT_TRUE(f.Label14->isVisible());  // the last service plus 30 days is still ahead
    EXPECT_EQ(forms::backColor(f.Text17), Red);
    EXPECT_TRUE(f.Check1->isChecked());
    f.Text6->setText("5");
    f.Text12->setText("120000");
    f.CheckWarnings();
    EXPECT_FALSE(f.Label14->isVisible());
    EXPECT_EQ(forms::backColor(f.Text17), White);
    EXPECT_TRUE(f.Check1->isChecked());
    click(f, "Mentes");
    EXPECT_EQ(col("JelenlegiKmAllas"), std::vector<std::string>{"120000"});
    EXPECT_EQ(col("Figyelmeztetés"), std::vector<std::string>{"True"});
    f.Check1->setChecked(false);
    click(f, "Mentes");
    EXPECT_EQ(col("Figyelmeztetés"), std::vector<std::string>{"False"});
    EXPECT_FALSE(f.Check1->isChecked());
}

TEST_F(VehicleFormTest, KeyFiltersCapitalsZeroesAndTheTwoFeeBoxes) {
    vehicle(1, "abc-123", "Opel", ordinary({{"KotelezoHaviDija", 1000.0}}));
    vehicle(2, "BBB-222", "Fiat", ordinary({{"KotelezoHaviDija", 2000.0}}));
    auto& f = open();
    int boxes = 0;
    for (auto* b : {f.Text3, f.Text4, f.Text7, f.Text8, f.Text10, f.Text12, f.Text16, f.Text17, f.Text18, f.Text19,
                    f.Text20}) {
        b->clear();
        type(f, b->objectName().toStdString(), "7,-a");
        EXPECT_EQ(t(b), "7,") << b->objectName().toStdString();
        ++boxes;
    }
    f.Text6->clear();
    type(f, "Text6", "5,");
    EXPECT_EQ(t(f.Text6), "5");
    for (auto* b : {f.Text9, f.Text11}) {
        b->clear();
        type(f, b->objectName().toStdString(), "-1,5x");
        EXPECT_EQ(t(b), "-1,5");
    }
    EXPECT_EQ(dialogs->beeps(), boxes * 2 + 1 + 2);
    f.DBGrid1->selectRow(1);  // nothing stored from the typing above: back to a clean vehicle
    dialogs->clear();
    f.DBGrid1->selectRow(0);

    // focus colours; the plate turns to capitals and the empty money boxes to "0" on leaving
    focus(f, "Text1");
    EXPECT_EQ(forms::backColor(f.Text1), forms::FocusColor);
    f.Text8->clear();
    focus(f, "Text8");
    EXPECT_EQ(t(f.Text1), "ABC-123");
    EXPECT_EQ(forms::backColor(f.Text1), forms::RestColor);
    focus(f, "Text11");
    EXPECT_EQ(t(f.Text8), "0");

    // Text9 and Text22 show one column: the last edit is what shows and what the move stores
    f.Text9->setText("3000");
    EXPECT_EQ(t(f.Text22), "3000");
    f.Text22->setText("4000");
    EXPECT_EQ(t(f.Text9), "4000");
    f.DBGrid1->selectRow(1);
    EXPECT_EQ(col("KotelezoHaviDija")[0], "4000");
    EXPECT_EQ(col("GkFrsz")[0], "ABC-123");
    EXPECT_EQ(col("CascoHaviDija")[0], "0");
}

TEST_F(VehicleFormTest, TheThreeSearchesTheQuickSearchTheSideGridAndTheHeaderSort) {
    vehicle(1, "AAA-111", "Opel", ordinary({{"GkVezetoNeve", "Kovács Ödön"}, {"Figyelmeztetés", true}}));
    vehicle(2, "BBB-222", "Fiat", ordinary({{"GkVezetoNeve", "Szűts Írisz"}}));
    vehicle(3, "AAB-333", "Opel", ordinary({{"GkVezetoNeve", "Kovács Béla"}, {"Figyelmeztetés", true}}));
    auto& f = open();
    dialogs->inputs = {"AA", "Fiat", "Kovács", "Kovács"};
    click(f, "FrszKeres");
    EXPECT_EQ(t(f.Text1), "AAA-111");
    click(f, "GKtipusKeres");
    EXPECT_EQ(t(f.Text1), "BBB-222");
    click(f, "GKVezetoKeres");
    EXPECT_EQ(t(f.Text1), "AAB-333");
    click(f, "GKVezetoKeres");  // the next match wraps round
    EXPECT_EQ(t(f.Text1), "AAA-111");
    std::vector<std::pair<std::string, std::string>> prompts;
    for (auto& e : dialogs->log) prompts.emplace_back(e.title, e.text);
    EXPECT_EQ(prompts, (std::vector<std::pair<std::string, std::string>>{
                           {"Keresés rendszám szerint", "Kérem a forgalmi rendszámot:"},
                           {"Keresés típus szerint", "Kérem a gépkocsi típusát:"},
                           {"Keresés gépkocsivezető szerint", "Kérem a gépkocsivezető nevét:"},
                           {"Keresés gépkocsivezető szerint", "Kérem a gépkocsivezető nevét:"}}));
    dialogs->clear();
    dialogs->inputs = {"ZZZ", "Trabant", "Nagy", ""};
    click(f, "FrszKeres");
    click(f, "GKtipusKeres");
    click(f, "GKVezetoKeres");
    click(f, "FrszKeres");  // nothing given: nothing happens
    EXPECT_EQ(messages(), (std::vector<Message>{
                              {"Nincs ilyen forgalmi rendszám! Keressen újra!", 48, "Keresés rendszám szerint"},
                              {"Nincs ilyen gépkocsi típus! Keressen újra!", 48, "Keresés típus szerint"},
                              {"Nincs ilyen gépkocsivezető! Keressen újra!", 48, "Keresés gépkocsivezető szerint"}}));
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);

    // the quick search follows the typing and stays on the last hit
    f.Text21->setText("B");
    EXPECT_EQ(t(f.Text1), "BBB-222");
    f.Text21->setText("BX");
    EXPECT_EQ(t(f.Text1), "BBB-222");

    // the side grid lists the flagged vehicles by plate; a click finds the vehicle
    ASSERT_EQ(f.DBGrid2->model()->rowCount(), 2);
    EXPECT_EQ(f.DBGrid2->cellText(1, 0), "AAB-333");
    auto clickRow = [&](int row, bool twice) {
        QModelIndex i = f.DBGrid2->model()->index(row, 0);
        QPoint at = f.DBGrid2->visualRect(i).center();
        if (twice) QTest::mouseDClick(f.DBGrid2->viewport(), Qt::LeftButton, {}, at);
        else QTest::mouseClick(f.DBGrid2->viewport(), Qt::LeftButton, {}, at);
    };
    clickRow(1, false);
    EXPECT_EQ(t(f.Text1), "AAB-333");
    f.DBGrid2->selectRow(0);  // the row is chosen; the double click finds it
    EXPECT_EQ(t(f.Text1), "AAB-333");
    clickRow(0, true);
    EXPECT_EQ(t(f.Text1), "AAA-111");

    // the heading sorts the main grid, the next click the other way
    f.DBGrid1->HeadClick(0);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "AAA-111");
    EXPECT_EQ(f.DBGrid1->cellText(2, 0), "BBB-222");
    f.DBGrid1->HeadClick(0);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "BBB-222");
}

TEST_F(VehicleFormTest, AnotherFormPicksAVehicleThroughValaszt) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat",
            ordinary({{"PartnerNeve", "Kőszegi Kft."}, {"PartnerID", int32_t(7)}, {"Alvállalkozó", true}}));
    Globals::CurrentFormName = "UtNyilvantartasFormX";
    bool offered = false;
    forms::setModalRunner([&](forms::Form& shown) {
        auto& g = static_cast<GKTorzsFormX&>(shown);
        offered = g.Valaszt->isVisible();
        EXPECT_EQ(Globals::PickDone, 0);
        click(g, "Valaszt");
    });
    forms::run([] { forms::get(GKTorzsFormX::Name).Show(true); });
    EXPECT_TRUE(offered);
    EXPECT_EQ(Globals::PickDone, 1);
    EXPECT_EQ(Globals::PickedVehiclePlate, "BBB-222");
    EXPECT_EQ(vb::CStr(Globals::PickedVehicleID), "2");
    EXPECT_EQ(Globals::PickedPartnerName, "Kőszegi Kft.");
    EXPECT_EQ(vb::CStr(Globals::PickedPartnerID), "7");
    EXPECT_EQ(vb::CStr(Globals::PickedSubcontractor), "1");
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
}

TEST_F(VehicleFormTest, TheOwnerFromTheServiceListOrFromTheCustomers) {
    auto partners = db::Database::open("Kerova.dsb")->OpenRecordset("beraktar");
    for (auto [id, name] : {std::pair{5, "Zala Szerviz Bt."}, {3, "Őrségi Autó Kft."}, {9, "Alföld Trans Zrt."}}) {
        partners->AddNew();
        partners->set("recordID", int32_t(id));
        partners->set("BerNev", std::string(name));
        partners->Update();
    }
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat", ordinary());
    auto& f = open();
    ASSERT_EQ(f.Combo1->count(), 3);
    EXPECT_EQ(f.Combo1->itemText(0).toStdString(), "Alföld Trans Zrt.");
    EXPECT_EQ(f.Combo1->itemText(1).toStdString(), "Őrségi Autó Kft.");
    f.Combo1->setCurrentIndex(1);
    emit f.Combo1->activated(1);
    EXPECT_EQ(t(f.Text13), "Őrségi Autó Kft.");
    EXPECT_EQ(t(f.Label23), "3");
    click(f, "Mentes");
    EXPECT_EQ(col("PartnerNeve"), (std::vector<std::string>{"", "Őrségi Autó Kft."}));
    EXPECT_EQ(col("PartnerID"), (std::vector<std::string>{"", "3"}));

    // the customer picker hands its pick to the vehicle the user was on
    f.DBGrid1->selectRow(0);
    forms::registerForm("CimzettForm", [] { return new forms::StandInForm("CimzettForm"); });
    std::string caller;
    forms::setModalRunner([&](forms::Form& shown) {
        caller = Globals::CurrentFormName;
        Globals::PickDone = 1;
        Globals::PickedName = "Vevő Ödön";
        Globals::PickedCustomerID = int32_t(42);
        shown.Unload();
    });
    click(f, "Command2");
    EXPECT_EQ(caller, GKTorzsFormX::Name);
    EXPECT_EQ(col("PartnerNeve"), (std::vector<std::string>{"Vevő Ödön", "Őrségi Autó Kft."}));
    EXPECT_EQ(col("PartnerID"), (std::vector<std::string>{"42", "3"}));
    EXPECT_EQ(t(f.Text1), "BBB-222");  // Form_Activate went to the last vehicle
    EXPECT_EQ(Globals::PickDone, 0);
    // nothing picked: nothing changes
    forms::setModalRunner([&](forms::Form& shown) { shown.Unload(); });
    click(f, "Command2");
    click(f, "Mentes");
    EXPECT_EQ(col("PartnerNeve"), (std::vector<std::string>{"Vevő Ödön", "Őrségi Autó Kft."}));
}

TEST_F(VehicleFormTest, ServiceModuleHelpAndTheExitWithItsTypeCheck) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", vb::Null{}, ordinary());
    auto& f = open();
    std::vector<std::string> shown;
    std::string callerDuring = "?";
    forms::setModalRunner([&](forms::Form& s) {
        shown.push_back(s.name());
        if (s.name() == "SzervizmodulFormX") callerDuring = Globals::CurrentFormName;
        s.Unload();
    });
    click(f, "Command9");
    EXPECT_EQ(callerDuring, "");
    EXPECT_EQ(vb::CStr(Globals::CurrentVehicleID), "2");
    click(f, "Command12");
    EXPECT_EQ(Globals::HelpTopicName, "GKTorzsFormX");
    EXPECT_EQ(shown, (std::vector<std::string>{"SzervizmodulFormX", "HelpFormX"}));

    // the close box asks as "Kilépés" does; "Nem" keeps the row and the form still leaves
    dialogs->answers = {vb::vbNo};
    f.close();
    EXPECT_EQ(messages(), (std::vector<Message>{
                              {"Nincs megadva típus! Az adat törölhető?", 36, "FIGYELEM! Aktuális adat törlése!"}}));
    EXPECT_EQ(col("GkFrsz"), (std::vector<std::string>{"AAA-111", "BBB-222"}));
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
}

TEST_F(VehicleFormTest, AFolderWithoutDatabasesIsReportedAndTheFormLeaves) {
    db::closeAll();
    std::filesystem::create_directories(dir.path() / "ures");
    db::setWorkingFolder(dir.path() / "ures");
    open();
    EXPECT_EQ(messages(), (std::vector<Message>{
                              {"Ebben a könyvtárban nincsenek adatbázisok!", 16, "FIGYELEM! SÚLYOS HIBA!"}}));
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
}

// ---------------------------------------------------------------- delete and the archive

TEST_F(VehicleFormTest, DeletingTheOnlyVehicleCopiesEveryColumnAndStartsANewRow) {
    vehicle(7, "KŐB-112", "Rába H18",
            ordinary({{"GkVezetoNeve", "Győri Ödön"}, {"KotelezoHaviDija", 12500.0}, {"Alvállalkozó", true},
                      {"TuzoltoDatum", day(-3)}, {"PartnerID", int32_t(4)}}));
    auto before = db::Database::open("Kerova.dsb")->OpenRecordset("Jarmuvek")->peek(0);
    auto& f = open();
    dialogs->answers = {vb::vbYes};
    click(f, "GKTorol");
    EXPECT_EQ(messages(),
              (std::vector<Message>{{"Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"}}));
    auto copied = db::Database::open("Kerova.dsb")->OpenRecordset("JarmuvekArchiv")->peek(0);
    ASSERT_EQ(copied.size(), before.size());
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(forms::displayText(copied[i]), forms::displayText(before[i])) << "column " << i;
    EXPECT_EQ(col("recordID"), std::vector<std::string>{"1"});
    EXPECT_EQ(col("GkFrsz"), std::vector<std::string>{""});
    EXPECT_EQ(t(f.Text1), "");
    EXPECT_EQ(t(f.Label24), "1");
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

TEST_F(VehicleFormTest, DeletingAMiddleVehicleGoesToTheNextAndAFailedCopyKeepsTheRow) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat", ordinary());
    vehicle(3, "CCC-333", "Volvo", ordinary());
    auto& f = open();
    f.DBGrid1->selectRow(1);
    dialogs->answers = {vb::vbNo, vb::vbYes};
    click(f, "GKTorol");
    EXPECT_EQ(col("GkFrsz").size(), 3u);
    click(f, "GKTorol");
    EXPECT_EQ(col("GkFrsz"), (std::vector<std::string>{"AAA-111", "CCC-333"}));
    EXPECT_EQ(col("GkFrsz", "JarmuvekArchiv"), std::vector<std::string>{"BBB-222"});
    EXPECT_EQ(t(f.Text1), "CCC-333");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);

    dialogs->clear();
    f.ArchivData->rs().Close();
    dialogs->answers = {vb::vbYes};
    click(f, "GKTorol");
    EXPECT_EQ(messages(), (std::vector<Message>{{"Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"},
                                                {"ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!", 0, "Kerova"}}));
    EXPECT_EQ(col("GkFrsz"), (std::vector<std::string>{"AAA-111", "CCC-333"}));
    EXPECT_EQ(t(f.Text1), "CCC-333");
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

TEST_F(VehicleFormTest, AnEmptyArchiveSaysSoAndTheLiveDataStay) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat", ordinary());
    auto& f = open();
    click(f, "Command11");
    EXPECT_EQ(messages(), (std::vector<Message>{{"Nincsenek archivált (törölt) adatok!", 64, "FIGYELEM!"}}));
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_FALSE(f.Command1->isVisible());
    EXPECT_FALSE(f.VisszaEles->isVisible());
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
}

TEST_F(VehicleFormTest, TheArchiveViewItsEditsAndTheWayBack) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat", ordinary());
    vehicle(3, "CCC-333", "Volvo", ordinary());
    auto& f = open();
    dialogs->answers = {vb::vbYes, vb::vbYes};
    click(f, "GKTorol");
    click(f, "GKTorol");
    EXPECT_EQ(col("GkFrsz", "JarmuvekArchiv"), (std::vector<std::string>{"BBB-222", "CCC-333"}));
    click(f, "ArchivumA");
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from JarmuvekArchiv order by recordID");
    EXPECT_TRUE(f.Command1->isVisible());
    EXPECT_TRUE(f.Command1->isDefault());
    EXPECT_TRUE(f.VisszaEles->isVisible());
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    EXPECT_EQ(t(f.Text1), "BBB-222");
    // an edit made in the archive view lands in the archive
    f.Text5->setText("Archív Ödön");
    click(f, "VisszaEles");
    EXPECT_EQ(col("GkVezetoNeve", "JarmuvekArchiv"), (std::vector<std::string>{"Archív Ödön", ""}));
    EXPECT_EQ(col("GkVezetoNeve"), std::vector<std::string>{""});
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_FALSE(f.Command1->isVisible());
    EXPECT_FALSE(f.VisszaEles->isVisible());
    EXPECT_EQ(t(f.Text1), "AAA-111");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 1);
}

TEST_F(VehicleFormTest, LeavingTheArchiveOnARowWithoutTypeDeletesItWithoutACopy) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", vb::Null{}, ordinary());
    auto& f = open();
    dialogs->answers = {vb::vbYes, vb::vbYes};
    click(f, "GKTorol");
    click(f, "Command11");
    EXPECT_EQ(t(f.Text1), "BBB-222");
    click(f, "Kilepes");
    EXPECT_EQ(messages(), (std::vector<Message>{{"Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"},
                                                {"Nincs megadva típus! Az adat törölhető?", 36,
                                                 "FIGYELEM! Aktuális adat törlése!"}}));
    EXPECT_TRUE(col("GkFrsz", "JarmuvekArchiv").empty());
    EXPECT_EQ(col("GkFrsz"), std::vector<std::string>{"AAA-111"});
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
}

// ---------------------------------------------------------------- a large table

TEST_F(VehicleFormTest, TheGridOpensAtOnceOnALargeTable) {
    auto database = db::Database::open("Kerova.dsb");
    database->batch([&] {
        auto rs = database->OpenRecordset("Jarmuvek");
        for (int i = 1; i <= 20000; ++i) {
            rs->AddNew();
            rs->set("recordID", int32_t(i));
            rs->set("GkFrsz", "R" + std::to_string(100000 + i));
            rs->set("GkTipus", std::string("Opel"));
            rs->Update();
        }
    });
    QElapsedTimer clock;
    clock.start();
    auto& f = open();
    f.DBGrid1->scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 20000);
    EXPECT_EQ(t(f.Text1), "R120000");
    clock.restart();
    f.Text21->setText("R1100");
    EXPECT_EQ(t(f.Text1), "R110000");
    EXPECT_LT(clock.elapsed(), 2000);
}

}  // namespace
