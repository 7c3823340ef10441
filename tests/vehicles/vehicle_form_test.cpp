// The vehicle master: what it shows, the expiry marks, the fields, the searches, the pick hand-over,
// the exit, and the delete with its archive copy and the archive view.
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QPushButton>

#include "forms/grid.h"
#include "forms/recordform.h"
#include "vb/constants.h"
#include "vehicles_support.h"

using namespace vehicles_test;
using vehicles::GKTorzsFormX;
using Strings = std::vector<std::string>;

namespace {

constexpr int32_t Red = GKTorzsFormX::WarnColor;
constexpr int32_t White = GKTorzsFormX::PlainColor;
const Message DeleteQuestion{"Az adat törölhető?", 36, "FIGYELEM! Aktuális adat végleges törlése!"};
const Message NoTypeQuestion{"Nincs megadva típus! Az adat törölhető?", 36, "FIGYELEM! Aktuális adat törlése!"};

// A vehicle whose inspection and insurance lie a year ahead and whose last service is old.
Fields ordinary(Fields more = {}) {
    Fields f{{"MuszakiVizsgaDatum", vb::DateSerial(2027, 11, 23)},
             {"KotelezoBiztDatum", vb::DateSerial(2027, 11, 23)},
             {"UtolsoSzervizDatum", vb::DateSerial(2025, 11, 23)}};
    f.insert(f.end(), more.begin(), more.end());
    return f;
}

using VehicleFormTest = VehicleTest;

TEST_F(VehicleFormTest, OpensOnTheLastVehicleWithItsValuesAndNothingDue) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "KŐB-112", "Rába H18",
            ordinary({{"FogyasztásLiter100", 32.5}, {"KotelezoHaviDija", 12500.0}, {"PartnerID", int32_t(7)},
                      {"Alvállalkozó", true}}));
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Járművek nyilvántartása törzs Tartosan és Kerova");
    EXPECT_EQ(t(f.Text1), "KŐB-112");
    EXPECT_EQ(t(f.Text4), "32,5");
    EXPECT_EQ(t(f.Text9) + "|" + t(f.Text22), "12500|12500");
    EXPECT_EQ(t(f.Label23) + "|" + t(f.Label24), "7|2");
    EXPECT_TRUE(f.Check2->isChecked());
    EXPECT_EQ(f.DTPicker2->date(), QDate(2027, 11, 23));
    EXPECT_EQ(f.DBGrid1->columnCount(), 29);
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    // from the main menu: no "Választ"; nothing due, nothing marked
    EXPECT_FALSE(f.Valaszt->isVisible());
    EXPECT_FALSE(f.VisszaEles->isVisible() || f.Command1->isVisible());
    for (auto* l : {f.Label14, f.Label15, f.Label16, f.Label17, f.Label35, f.Label36}) EXPECT_FALSE(l->isVisible());
    EXPECT_FALSE(f.Check1->isChecked());
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
    EXPECT_TRUE(dialogs->log.empty());
}

TEST_F(VehicleFormTest, AnEmptyTableGetsRecordOneWhoseNullDatesStayNull) {
    auto& f = open();
    EXPECT_EQ(col("recordID"), Strings{"1"});
    // the pickers show today, and the checks compare that: inspection and insurance are due
    EXPECT_EQ(f.DTPicker2->date(), QDate(2026, 11, 23));
    EXPECT_TRUE(f.Label16->isVisible() && f.Label17->isVisible() && f.Check1->isChecked());
    f.Text2->setText("Opel Astra");
    click(f, "Command4");
    EXPECT_EQ(col("Figyelmeztetés"), Strings{"True"});
    EXPECT_EQ(col("MuszakiVizsgaDatum"), Strings{""});
    // two quick clicks on "Új adat" make two records; the pickers keep what they showed
    f.DTPicker2->setDate(QDate(2027, 1, 1));
    click(f, "Command3");
    click(f, "Command5");
    EXPECT_EQ(col("recordID"), (Strings{"1", "2", "3"}));
    EXPECT_EQ(col("MuszakiVizsgaDatum"), (Strings{"2027.01.01.", "", ""}));
    EXPECT_EQ(QApplication::focusWidget(), f.Text1);
}

TEST_F(VehicleFormTest, TheExpiryChecksKeepTheProgramsOwnSense) {
    Globals::WarnTachoCalibrationDays = 30;
    Globals::WarnOilChangeKm = 15000;
    // 1: "9000" stands above "10000" as text; the last service plus 30 days is still ahead
    vehicle(1, "AAA-111", "Opel",
            ordinary({{"SzervizIntervallumKM", 9000.0}, {"JelenlegiKmAllas", 10000.0}, {"UtolsoSzervizDatum", day(-10)},
                      {"SzervizIntervallumNap", int32_t(30)}, {"TachográfHitelesités", day(-20)}}));
    // 2: 10000 >= 9000 as numbers but not as texts; 100000 + 15000 >= 110000; calibration 40 days ago
    vehicle(2, "BBB-222", "Fiat",
            ordinary({{"SzervizIntervallumKM", 10000.0}, {"JelenlegiKmAllas", 110000.0}, {"OlajcsereKM", 100000.0},
                      {"TachográfHitelesités", day(-40)}, {"TachoOMHEng", day(0)}}));
    auto& f = open();
    EXPECT_FALSE(f.Label15->isVisible());
    EXPECT_FALSE(f.Label14->isVisible());
    EXPECT_EQ(forms::backColor(f.Text17), Red);
    EXPECT_TRUE(f.Label35->isVisible());   // before today minus 30
    EXPECT_FALSE(f.Label36->isVisible());  // today is not before today minus 0
    EXPECT_EQ(forms::backColor(f.Text16), White);  // no limit: switched off
    EXPECT_EQ(t(f.Text20), "");                    // empty: not a number, not marked
    EXPECT_EQ(forms::backColor(f.Text20), White);
    EXPECT_TRUE(f.Check1->isChecked());
    f.DBGrid1->selectRow(0);
    EXPECT_TRUE(f.Label15->isVisible());
    EXPECT_TRUE(f.Label14->isVisible());
    EXPECT_TRUE(f.Label35->isVisible());  // the calibration mark never hides again
    EXPECT_EQ(forms::backColor(f.Text17), White);
    f.Text7->setText("0");  // the interval must be above 0
    f.CheckWarnings();
    EXPECT_FALSE(f.Label15->isVisible());
    EXPECT_TRUE(f.Check1->isChecked());  // no check clears the flag
    EXPECT_EQ(col("Figyelmeztetés"), (Strings{"True", "True"}));  // each was checked when shown
    // only the user clears it; the move stores it
    f.Check1->setChecked(false);
    click(f, "Mentes");
    EXPECT_TRUE(f.Check1->isChecked());  // the save checks again: the service is still ahead
    f.Text6->setText("5");
    f.Check1->setChecked(false);
    click(f, "Mentes");
    EXPECT_FALSE(f.Check1->isChecked());
    EXPECT_EQ(col("Figyelmeztetés"), (Strings{"False", "True"}));
    EXPECT_EQ(col("SzervizIntervallumKM"), (Strings{"0", "10000"}));
}

TEST_F(VehicleFormTest, KeyFiltersCapitalsZeroesAndTheTwoFeeBoxes) {
    vehicle(1, "abc-123", "Opel", ordinary({{"KotelezoHaviDija", 1000.0}}));
    vehicle(2, "BBB-222", "Fiat", ordinary());
    auto& f = open();
    for (auto* b : {f.Text3, f.Text4, f.Text7, f.Text8, f.Text10, f.Text12, f.Text16, f.Text17, f.Text18, f.Text19,
                    f.Text20}) {
        b->clear();
        type(f, b->objectName().toStdString(), "7,-a");
        EXPECT_EQ(t(b), "7,") << b->objectName().toStdString();
    }
    f.Text6->clear();
    type(f, "Text6", "5,");
    EXPECT_EQ(t(f.Text6), "5");
    f.Text11->clear();
    type(f, "Text11", "-1,5x");
    EXPECT_EQ(t(f.Text11), "-1,5");
    EXPECT_EQ(dialogs->beeps(), 11 * 2 + 1 + 1);
    f.DBGrid1->selectRow(0);
    // the plate turns to capitals and an empty money box to "0" on leaving
    focus(f, "Text1");
    EXPECT_EQ(forms::backColor(f.Text1), forms::FocusColor);
    f.Text8->clear();
    focus(f, "Text8");
    focus(f, "Text11");
    EXPECT_EQ(t(f.Text1), "ABC-123");
    EXPECT_EQ(forms::backColor(f.Text1), forms::RestColor);
    EXPECT_EQ(t(f.Text8), "0");
    // Text9 and Text22 show one column: the last edit shows in both and is stored
    f.Text9->setText("3000");
    f.Text22->setText("4000");
    EXPECT_EQ(t(f.Text9), "4000");
    f.DBGrid1->selectRow(1);
    EXPECT_EQ(col("KotelezoHaviDija")[0] + "|" + col("GkFrsz")[0] + "|" + col("CascoHaviDija")[0], "4000|ABC-123|0");
}

TEST_F(VehicleFormTest, SearchesQuickSearchSideGridAndHeaderSort) {
    vehicle(1, "AAA-111", "Opel", ordinary({{"GkVezetoNeve", "Kovács Ödön"}, {"Figyelmeztetés", true}}));
    vehicle(2, "BBB-222", "Fiat", ordinary({{"GkVezetoNeve", "Szűts Írisz"}}));
    vehicle(3, "AAB-333", "Opel", ordinary({{"GkVezetoNeve", "Kovács Béla"}, {"Figyelmeztetés", true}}));
    auto& f = open();
    dialogs->inputs = {"AA", "Fiat", "Kovács", "Kovács"};
    Strings found;
    for (const char* entry : {"FrszKeres", "GKtipusKeres", "GKVezetoKeres", "GKVezetoKeres"}) {
        click(f, entry);
        found.push_back(t(f.Text1));
    }
    EXPECT_EQ(found, (Strings{"AAA-111", "BBB-222", "AAB-333", "AAA-111"}));  // the last one wrapped round
    EXPECT_EQ(dialogs->log[2].title + "|" + dialogs->log[2].text, "Keresés gépkocsivezető szerint|Kérem a gépkocsivezető nevét:");
    dialogs->clear();
    dialogs->inputs = {"ZZZ", "Trabant", "Nagy", ""};
    for (const char* entry : {"FrszKeres", "GKtipusKeres", "GKVezetoKeres", "FrszKeres"}) click(f, entry);
    EXPECT_EQ(messages(), (std::vector<Message>{
                              {"Nincs ilyen forgalmi rendszám! Keressen újra!", 48, "Keresés rendszám szerint"},
                              {"Nincs ilyen gépkocsi típus! Keressen újra!", 48, "Keresés típus szerint"},
                              {"Nincs ilyen gépkocsivezető! Keressen újra!", 48, "Keresés gépkocsivezető szerint"}}));
    // the quick search follows the typing and stays on the last hit
    f.Text21->setText("B");
    f.Text21->setText("BX");
    EXPECT_EQ(t(f.Text1), "BBB-222");
    // the side grid lists the flagged vehicles by plate; a click or a double click finds the vehicle
    ASSERT_EQ(f.DBGrid2->model()->rowCount(), 2);
    auto at = [&](int row) { return f.DBGrid2->visualRect(f.DBGrid2->model()->index(row, 0)).center(); };
    QTest::mouseClick(f.DBGrid2->viewport(), Qt::LeftButton, {}, at(1));
    EXPECT_EQ(t(f.Text1), "AAB-333");
    f.DBGrid2->selectRow(0);
    QTest::mouseDClick(f.DBGrid2->viewport(), Qt::LeftButton, {}, at(0));
    EXPECT_EQ(t(f.Text1), "AAA-111");
    // the heading sorts the main grid, the next click the other way
    f.DBGrid1->HeadClick(0);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0) + "|" + f.DBGrid1->cellText(2, 0), "AAA-111|BBB-222");
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
        offered = static_cast<GKTorzsFormX&>(shown).Valaszt->isVisible();
        click(shown, "Valaszt");
    });
    forms::run([] { forms::get(GKTorzsFormX::Name).Show(true); });
    EXPECT_TRUE(offered);
    EXPECT_EQ(Globals::PickDone, 1);
    EXPECT_EQ(Globals::PickedVehiclePlate + "|" + Globals::PickedPartnerName, "BBB-222|Kőszegi Kft.");
    EXPECT_EQ(vb::CStr(Globals::PickedVehicleID) + vb::CStr(Globals::PickedPartnerID) +
                  vb::CStr(Globals::PickedSubcontractor),
              "271");
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
    EXPECT_EQ(f.Combo1->itemText(1).toStdString(), "Őrségi Autó Kft.");  // by name
    emit f.Combo1->activated(1);
    EXPECT_EQ(t(f.Text13) + "|" + t(f.Label23), "Őrségi Autó Kft.|3");
    click(f, "Mentes");
    EXPECT_EQ(col("PartnerID"), (Strings{"", "3"}));
    // the customer picker hands its pick to the vehicle the user was on
    f.DBGrid1->selectRow(0);
    forms::registerForm("CimzettForm", [] { return new forms::StandInForm("CimzettForm"); });
    forms::setModalRunner([&](forms::Form& shown) {
        Globals::PickDone = 1;
        Globals::PickedName = "Vevő Ödön";
        Globals::PickedCustomerID = int32_t(42);
        shown.Unload();
    });
    click(f, "Command2");
    EXPECT_EQ(col("PartnerNeve"), (Strings{"Vevő Ödön", "Őrségi Autó Kft."}));
    EXPECT_EQ(col("PartnerID"), (Strings{"42", "3"}));
    EXPECT_EQ(t(f.Text1), "BBB-222");  // then Form_Activate went to the last vehicle
    // nothing picked: nothing changes
    forms::setModalRunner([&](forms::Form& shown) { shown.Unload(); });
    click(f, "Command2");
    click(f, "Mentes");
    EXPECT_EQ(col("PartnerNeve"), (Strings{"Vevő Ödön", "Őrségi Autó Kft."}));
}

TEST_F(VehicleFormTest, ServiceModuleHelpAndTheCloseBoxWithTheTypeCheck) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", vb::Null{}, ordinary());
    auto& f = open();
    Strings shown;
    forms::setModalRunner([&](forms::Form& s) {
        shown.push_back(s.name() + ":" + Globals::CurrentFormName + ":" + Globals::HelpTopicName);
        s.Unload();
    });
    click(f, "Command9");
    click(f, "Command12");
    EXPECT_EQ(shown, (Strings{"SzervizmodulFormX::", "HelpFormX::GKTorzsFormX"}));
    EXPECT_EQ(vb::CStr(Globals::CurrentVehicleID), "2");
    // the close box asks as "Kilépés" does; "Nem" keeps the row, and the form leaves
    dialogs->answers = {vb::vbNo};
    f.close();
    EXPECT_EQ(messages(), std::vector<Message>{NoTypeQuestion});
    EXPECT_EQ(col("GkFrsz"), (Strings{"AAA-111", "BBB-222"}));
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
    // a folder without databases: the message, and the form leaves
    db::closeAll();
    std::filesystem::create_directories(dir.path() / "ures");
    db::setWorkingFolder(dir.path() / "ures");
    dialogs->clear();
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
    EXPECT_EQ(messages(), std::vector<Message>{DeleteQuestion});
    auto copied = db::Database::open("Kerova.dsb")->OpenRecordset("JarmuvekArchiv")->peek(0);
    ASSERT_EQ(copied.size(), before.size());
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(forms::displayText(copied[i]), forms::displayText(before[i])) << "column " << i;
    EXPECT_EQ(col("recordID")[0] + "|" + col("GkFrsz")[0], "1|");
    EXPECT_EQ(t(f.Text1) + "|" + t(f.Label24), "|1");
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
    EXPECT_EQ(col("GkFrsz"), (Strings{"AAA-111", "CCC-333"}));
    EXPECT_EQ(col("GkFrsz", "JarmuvekArchiv"), Strings{"BBB-222"});
    EXPECT_EQ(t(f.Text1), "CCC-333");
    dialogs->clear();
    f.ArchivData->rs().Close();
    dialogs->answers = {vb::vbYes};
    click(f, "GKTorol");
    EXPECT_EQ(messages(), (std::vector<Message>{DeleteQuestion, {"ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!", 0, "Kerova"}}));
    EXPECT_EQ(col("GkFrsz"), (Strings{"AAA-111", "CCC-333"}));
    EXPECT_EQ(dialogs->pointer, vb::vbArrow);
}

TEST_F(VehicleFormTest, TheArchiveViewItsEditsAndTheWayBack) {
    vehicle(1, "AAA-111", "Opel", ordinary());
    vehicle(2, "BBB-222", "Fiat", ordinary());
    vehicle(3, "CCC-333", "Volvo", ordinary());
    auto& f = open();
    click(f, "Command11");  // an empty archive says so, and the live data stay
    EXPECT_EQ(messages(), (std::vector<Message>{{"Nincsenek archivált (törölt) adatok!", 64, "FIGYELEM!"}}));
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from Jarmuvek order by recordID");
    EXPECT_FALSE(f.Command1->isVisible() || f.VisszaEles->isVisible());
    EXPECT_EQ(t(f.Text1), "AAA-111");  // the live data read again, on the first vehicle
    dialogs->answers = {vb::vbYes, vb::vbYes};
    click(f, "GKTorol");
    click(f, "GKTorol");
    click(f, "ArchivumA");
    EXPECT_EQ(f.JarmuvekData->RecordSource(), "select * from JarmuvekArchiv order by recordID");
    EXPECT_TRUE(f.Command1->isVisible() && f.Command1->isDefault() && f.VisszaEles->isVisible());
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    EXPECT_EQ(t(f.Text1), "AAA-111");
    // an edit made in the archive view lands in the archive
    f.Text5->setText("Archív Ödön");
    click(f, "VisszaEles");
    EXPECT_EQ(col("GkVezetoNeve", "JarmuvekArchiv"), (Strings{"Archív Ödön", ""}));
    EXPECT_FALSE(f.Command1->isVisible() || f.VisszaEles->isVisible());
    EXPECT_EQ(t(f.Text1), "CCC-333");
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
    EXPECT_EQ(messages(), (std::vector<Message>{DeleteQuestion, NoTypeQuestion}));
    EXPECT_TRUE(col("GkFrsz", "JarmuvekArchiv").empty());
    EXPECT_EQ(col("GkFrsz"), Strings{"AAA-111"});
    EXPECT_EQ(forms::find(GKTorzsFormX::Name), nullptr);
}

TEST_F(VehicleFormTest, TheGridOpensAtOnceOnALargeTable) {
    insertMany("Kerova.dsb", "Jarmuvek", 20000, [](int i) {
        return Fields{{"recordID", int32_t(i + 1)}, {"GkFrsz", "R" + std::to_string(100001 + i)}};
    });
    QElapsedTimer clock;
    clock.start();
    auto& f = open();
    f.DBGrid1->scrollToBottom();
    QCoreApplication::processEvents();
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 20000);
    EXPECT_EQ(t(f.Text1), "R120000");
    f.Text21->setText("R1100");
    EXPECT_EQ(t(f.Text1), "R110000");
    EXPECT_LT(clock.elapsed(), 2000);
}

}  // namespace
