// The main form: start-up in a company folder, the settings it loads, the four deadline reminders
// with their marks and the warned list, the menu opening every form by name, and the exit.
#include <QAction>
#include <QDateEdit>
#include <QMenu>

#include "app/kerovax.h"
#include "app/app_support.h"
#include "forms/grid.h"
#include "vb/constants.h"

using namespace kerova_test;
using app::KerovaX;
using forms::ScriptedDialogs;

namespace {

class MainFormTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        initCompany();
        operatorRow("Teszt Kft.");
    }
    KerovaX& main() { return static_cast<KerovaX&>(form("KerovaX")); }
    std::vector<std::string> reminderTexts() {
        std::vector<std::string> out;
        for (auto& e : messages()) {
            EXPECT_EQ(e.style, vb::vbExclamation) << e.text;
            EXPECT_EQ(e.title, "FIGYELEM!") << e.text;
            out.push_back(e.text);
        }
        return out;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(MainFormTest, StartUpLoadsTheSettingsFromTheLastRowsAndMakesTheAllowanceRow) {
    limits({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    limits({0, 12, 0, 0, 0, 16, 17, 18, 19, 20});
    insert("parameter.dsb", "Path", {{"InterfacePath", std::string("C:\\if")}, {"PolcrakPath", std::string("C:\\polcrak")},
                                     {"FogastorPath", std::string("C:\\fogas")}, {"BizonylaNextPath", std::string("C:\\biz")}});
    insert("parameter.dsb", "MennyisegiEgyseg", {{"MennyiségiEgység", std::string("db")}, {"Állandó", false}});
    insert("parameter.dsb", "MennyisegiEgyseg", {{"MennyiségiEgység", std::string("tonna")}, {"Állandó", true}});
    Globals::AccessLevel = 3;
    auto& f = startMain();
    EXPECT_EQ(f.windowTitle().toStdString(), "Kerova 1.0");
    EXPECT_EQ(Globals::OperatorName, "Teszt Kft.");
    EXPECT_EQ(Globals::ProductName, "Kerova");
    EXPECT_EQ(Globals::AccessLevel, 0);
    EXPECT_EQ(Globals::WarnInspectionDays, 0);
    EXPECT_EQ(Globals::WarnGreenCardDays, 12);
    EXPECT_EQ(Globals::WarnInspectionKm, 16);
    EXPECT_EQ(Globals::WarnOilChangeKm, 17);
    EXPECT_EQ(Globals::WarnServiceLogKm, 18);
    EXPECT_EQ(Globals::WarnDrivetrainOilKm, 19);
    EXPECT_EQ(Globals::WarnTimingBeltKm, 20);
    EXPECT_EQ(Globals::InterfacePathValue, "C:\\if");
    EXPECT_EQ(Globals::PolcrakPathValue, "C:\\polcrak");
    EXPECT_EQ(Globals::FogastorPathValue, "C:\\fogas");
    EXPECT_EQ(Globals::BizonylaPathValue, "C:\\biz");
    EXPECT_EQ(Globals::FixedUnit, "tonna");
    EXPECT_EQ(textOf(f, "Label14"), "tonna");
    EXPECT_EQ(rowCount("parameter.dsb", "Egyebek"), 1u);  // made at start
    EXPECT_EQ(Globals::FixedAllowanceCurrency, "");
    // An empty vehicle table: no reminder, no warned list, the picker holds today.
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_TRUE(main().DBGrid1->isHidden());
    EXPECT_EQ(main().DTPicker1->date(), QDate(2026, 1, 15));
    EXPECT_EQ(main().JarmuData->RecordSource(), KerovaX::WarnedListSource);
    EXPECT_EQ(forms::MousePointer(), vb::vbArrow);
}

TEST_F(MainFormTest, TheLimitIsTodayMinusNDaysAndTheCaughtVehiclesStayMarked) {
    limits({10, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    vehicle(1, "AAA111", {{"MuszakiVizsgaDatum", daysFromToday(-9)}});
    vehicle(2, "BBB222", {{"MuszakiVizsgaDatum", daysFromToday(5)}});
    vehicle(3, "CCC333", {{"MuszakiVizsgaDatum", daysFromToday(-10)}});
    std::string sourceAtMessage;
    dialogs->onMessage = [&](const ScriptedDialogs::Entry&) { sourceAtMessage = main().JarmuData->RecordSource(); };
    startMain();
    EXPECT_EQ(reminderTexts(), Texts{KerovaX::InspectionText});
    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].kind, ScriptedDialogs::Entry::Beep);  // the beep comes first
    EXPECT_EQ(sourceAtMessage, "select * from jarmuvek where MuszakiVizsgaDatum <= #1/5/2026#");
    EXPECT_EQ(main().DTPicker1->date(), QDate(2026, 1, 5));
    EXPECT_EQ(flags(), (std::vector<bool>{false, false, true}));
    ASSERT_FALSE(main().DBGrid1->isHidden());
    EXPECT_EQ(main().DBGrid1->model()->rowCount(), 1);
    EXPECT_EQ(main().DBGrid1->cellText(0, 0), "CCC333");
    EXPECT_EQ(main().DBGrid1->columnCount(), 29);

    // The date is put right elsewhere: the flag stays until the vehicle form clears it, and the
    // return from any menu form runs the reminders again.
    auto r = db::Database::open("Kerova.dsb")->OpenRecordset("select * from Jarmuvek where recordID = 3");
    r->Edit();
    r->set("MuszakiVizsgaDatum", daysFromToday(200));
    r->Update();
    dialogs->clear();
    vehicle(4, "DDD444", {{"MuszakiVizsgaDatum", daysFromToday(-30)}});
    click(main(), "UtTav");
    EXPECT_EQ(reminderTexts(), Texts{KerovaX::InspectionText});
    EXPECT_EQ(flags(), (std::vector<bool>{false, false, true, true}));
    EXPECT_EQ(main().DBGrid1->model()->rowCount(), 2);
    EXPECT_EQ(main().DBGrid1->cellText(0, 0), "CCC333");  // ordered by plate
}

TEST_F(MainFormTest, ZeroOrEmptyDaysSwitchAReminderOffAndTheGreenCardDaysHaveNoReminder) {
    limits({0, 30, vb::Null{}, vb::Null{}, vb::Null{}, 0, 0, 0, 0, 0});
    vb::Date old = daysFromToday(-800);
    vehicle(1, "AAA111", {{"MuszakiVizsgaDatum", old}, {"ZoldkartyaDatum", old}});
    Globals::WarnTachoCalibrationDays = 10;  // a former value: the empty cell reads as 0
    startMain();
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(Globals::WarnGreenCardDays, 30);
    EXPECT_EQ(Globals::WarnTachoCalibrationDays, 0);
    EXPECT_EQ(flags(), std::vector<bool>{false});
    EXPECT_TRUE(main().DBGrid1->isHidden());
}

// The statements of reminders 2-4 name parameter columns Jarmuvek lacks: each Refresh fails and the
// reminder repeats on the set that stood before.
TEST_F(MainFormTest, RemindersOnMissingColumnsActOnThePreviousSet) {
    limits({10, 10, 10, 10, 10, 0, 0, 0, 0, 0});
    vb::Date old = daysFromToday(-1000);
    vehicle(1, "AAA111", {{"MuszakiVizsgaDatum", old}, {"TachográfHitelesités", old}});
    vehicle(2, "BBB222", {{"MuszakiVizsgaDatum", daysFromToday(300)}, {"TachográfHitelesités", old}});
    startMain();
    EXPECT_EQ(reminderTexts(), (Texts{KerovaX::InspectionText, KerovaX::TachoCalibrationText,
                                      KerovaX::TachoPermitText, KerovaX::InsuranceCardText}));
    EXPECT_EQ(dialogs->beeps(), 4);
    EXPECT_EQ(flags(), (std::vector<bool>{true, false}));
    EXPECT_EQ(main().JarmuData->RecordSource(), KerovaX::WarnedListSource);
    EXPECT_EQ(forms::MousePointer(), vb::vbArrow);
}

TEST_F(MainFormTest, WithTheInspectionReminderOffAFailingReminderMarksTheWholeTable) {
    limits({0, 0, 10, 0, 0, 0, 0, 0, 0, 0});
    vehicle(1, "AAA111", {{"MuszakiVizsgaDatum", daysFromToday(300)}});
    vehicle(2, "BBB222");
    startMain();
    EXPECT_EQ(reminderTexts(), Texts{KerovaX::TachoCalibrationText});
    EXPECT_EQ(flags(), (std::vector<bool>{true, true}));
}

TEST_F(MainFormTest, AFolderWithoutDatabasesGivesTheMessageAndTheMenuStaysUsable) {
    db::closeAll();
    TempDir empty;
    db::setWorkingFolder(empty.path());
    auto& f = startMain();
    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].kind, ScriptedDialogs::Entry::Beep);
    EXPECT_EQ(dialogs->log[1].text, "Olyan könyvtárban van, amelyikben nincsenek adatbázisok!");
    EXPECT_EQ(dialogs->log[1].style, vb::vbCritical);
    EXPECT_EQ(dialogs->log[1].title, "FIGYELEM! Válasszon másik megbízó adatszolgáltató alkönyvtárat!");
    EXPECT_TRUE(f.isLoaded());
    EXPECT_EQ(Globals::ProductName, "Kerova");
    EXPECT_TRUE(std::filesystem::is_empty(empty.path()));  // nothing created
    dialogs->clear();
    forms::setModalRunner([](forms::Form& shown) { shown.exitHandler(); });
    click(f, "UtTav");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{KerovaX::NoDatabasesText});
}

TEST_F(MainFormTest, EveryMenuEntryOpensItsFormByNameAndTheReturnReactivates) {
    limits({10, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    vehicle(1, "AAA111", {{"MuszakiVizsgaDatum", daysFromToday(-30)}});
    auto& f = startMain();
    const std::vector<std::pair<std::string, std::string>> entries = {
        {"UtTav", "GkUtakTavolsagaTorzsFormX"}, {"Gepkocsik", "GKTorzsFormX"},
        {"Vezetok", "VezetokTorzsFormX"}, {"GKBesz", "BeraktarozokFormX"},
        {"Megnevezesek", "MegnevezesTorzsFormX"}, {"Uzemelteto", "UzemeltetokForm"},
        {"AlkatreszTorzse", "cikkszamform"}, {"ParameterAdat", "ParameterFormX"},
        {"KerovatUj", "UtNyilvantartasFormX"}, {"KMNyt", "KilometerNytFormX"},
        {"GKSzamlaBe", "UzemanyagSzamlaFormX"}, {"SzervizModul", "SzervizmodulFormX"},
        {"Lekerdezes", "LekerdezesFormX"}, {"UaKtsg", "KerovaForm"}, {"AdatSzerviz", "KerovaSzervizFormX"},
        {"Kezik", "KerovaFelhasznaloiKezikonyvForm"}, {"Command6", "UtNyilvantartasFormX"},
        {"Command5", "LekerdezesFormX"}, {"Command4", "KerovaForm"}, {"Command3", "KerovaSzervizFormX"},
        {"Command2", "KerovaFelhasznaloiKezikonyvForm"}};
    for (auto& [entry, target] : entries) {
        SCOPED_TRACE(entry);
        dialogs->clear();
        std::string shown, caller;
        forms::setModalRunner([&](forms::Form& opened) {
            shown = opened.name();
            caller = Globals::CurrentFormName;
            bool stays = target == "KerovaForm" || target == "KerovaSzervizFormX";
            EXPECT_EQ(f.isVisible(), stays);
            EXPECT_EQ(f.isEnabled(), target != "KerovaForm");
            opened.exitHandler();
        });
        Globals::ArticlePickMode = 1;
        click(f, entry);
        EXPECT_EQ(shown, target);
        EXPECT_TRUE(f.isVisible());
        EXPECT_TRUE(f.isEnabled());
        EXPECT_EQ(reminderTexts(), Texts{KerovaX::InspectionText});
        if (entry == "Gepkocsik") {
            EXPECT_EQ(caller, "GKTorzsFormX");
        }
        if (entry == "AlkatreszTorzse") {
            EXPECT_EQ(caller, "cikkszamform");
            EXPECT_EQ(Globals::ArticlePickMode, 0);
        }
    }
    // The menu as the clerk reads it.
    std::vector<std::string> torzsek;
    for (auto* a : main().Torzsek->actions()) torzsek.push_back(a->text().toStdString());
    EXPECT_EQ(torzsek, (Texts{"Távolságok", "Járművek", "Vezetők", "Beszállítók (partnerek)", "Megnevezések",
                              "Nyilvántartó adatai", "Cikkszámok - Alkatrészek", "Paraméter adatok"}));
    EXPECT_EQ(main().GKAdatbe->title().toStdString(), "&Adatbevitel");
    EXPECT_EQ(f.action("UaKtsg")->text().toStdString(), "&Üzemanyagköltség kalkulátor");
}

// The vehicle form went on into the service module: KerovaX stays hidden while that is open.
TEST_F(MainFormTest, TheMainFormStaysHiddenWhileTheServiceModuleIsOpen) {
    auto& f = startMain();
    forms::setModalRunner([](forms::Form& vehicles) {
        Globals::CurrentFormName = "SzervizModulFormX";
        forms::get("SzervizmodulFormX").Show();
        vehicles.Unload();
    });
    click(f, "Gepkocsik");
    EXPECT_FALSE(f.isVisible());
    forms::run([this] { form("SzervizmodulFormX").Unload(); });
    deferredDeletes();
    EXPECT_TRUE(f.isVisible());
}

TEST_F(MainFormTest, KilepesAndTheCloseBoxEndTheProgram) {
    auto& f = startMain();
    click(f, "Command1");
    EXPECT_EQ(dialogs->exits, 1);
    EXPECT_EQ(forms::find("KerovaX"), nullptr);
    forms::resetRuntime();
    auto& g = startMain();
    g.close();
    EXPECT_EQ(dialogs->exits, 2);
    EXPECT_FALSE(g.isLoaded());
}

}  // namespace
