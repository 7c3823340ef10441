// The settings form, the operator's record and the fuel calculator, alone and as the main menu
// opens them.
#include <QCheckBox>
#include <QLineEdit>

#include "app/app_support.h"
#include "app/kerovaform.h"
#include "app/kerovax.h"
#include "app/parameterformx.h"
#include "app/uzemeltetokform.h"
#include "forms/events.h"
#include "forms/grid.h"
#include "forms/recordform.h"
#include "vb/constants.h"
#include "vb/err.h"

using namespace kerova_test;
using app::KerovaForm;
using app::ParameterFormX;
using app::UzemeltetokForm;

namespace {

class FormsTest : public AppTest {
protected:
    void SetUp() override {
        AppTest::SetUp();
        initCompany();
    }
    template <class F>
    F& open(const std::string& name) {
        forms::run([&] { forms::get(name).Show(); });
        return static_cast<F&>(form(name));
    }
    static void edit(forms::DBGrid* g, int row, int col, const std::string& text) {
        g->model()->setData(g->model()->index(row, col), forms::qs(text), Qt::EditRole);
    }
    // Opens a form from the main menu and runs `inside` while it is shown.
    void fromMenu(const std::string& entry, std::function<void(forms::Form&)> inside) {
        forms::setModalRunner([inside](forms::Form& f) { inside(f); });
        click(form("KerovaX"), entry);
        forms::setModalRunner([](forms::Form&) {});
    }
};

// ---------------------------------------------------------------- ParameterFormX

TEST_F(FormsTest, SettingsMakeTheirRowsAndTheExitWritesBackOnlyWhatItShould) {
    auto& f = open<ParameterFormX>("ParameterFormX");
    for (auto* t : {"VizsgaFigyelmeztetoNap", "Path", "MennyisegiEgyseg", "Egyebek"})
        EXPECT_EQ(rowCount(std::string(t) == "VizsgaFigyelmeztetoNap" ? "Torzsek.dsb" : "parameter.dsb", t), 1u) << t;
    EXPECT_EQ(f.DBGrid1->columnCount(), 10);
    EXPECT_EQ(f.DBGrid1->model()->headerData(7, Qt::Horizontal).toString().toStdString(),
              "Nemzetközi karbantart. napló kilométer");
    const char* values[] = {"11", "22", "33", "44", "55", "6000", "7000", "8000", "9000", "10000"};
    for (int i = 0; i < 10; ++i) edit(f.DBGrid1, 0, i, values[i]);
    edit(f.DBGrid2, 0, 0, "D:\\Polcrak");
    edit(f.DBGrid2, 0, 3, "D:\\Interface");
    edit(f.DBGrid3, 0, 0, "kg");
    edit(f.DBGrid4, 0, 0, "8,25");
    edit(f.DBGrid4, 0, 1, "EUR");
    EXPECT_EQ(f.DBGrid4->cellText(0, 0), "8,25");
    click(f, "Command2");
    EXPECT_EQ(forms::find("ParameterFormX"), nullptr);
    EXPECT_EQ(Globals::WarnInspectionDays, 11);
    EXPECT_EQ(Globals::WarnGreenCardDays, 22);
    EXPECT_EQ(Globals::WarnTachoCalibrationDays, 0);  // the other eight wait for the main form
    EXPECT_EQ(Globals::WarnTimingBeltKm, 0);
    EXPECT_EQ(Globals::PolcrakPathValue, "D:\\Polcrak");
    EXPECT_EQ(Globals::InterfacePathValue, "D:\\Interface");
    EXPECT_EQ(Globals::FixedAllowance, 8.25);
    EXPECT_EQ(Globals::FixedAllowanceCurrency, "EUR");
    EXPECT_EQ(Globals::FixedUnit, "");  // not ticked
    auto stored = column("Torzsek.dsb", "VizsgaFigyelmeztetoNap", "VezérmüÉkszijcsereKilométer");
    EXPECT_EQ(vb::CLng(stored.at(0)), 10000);
    EXPECT_TRUE(dialogs->log.empty());

    // The main form reads the other eight at its activation.
    operatorRow("Teszt Kft.");
    auto& main = startMain();
    EXPECT_EQ(Globals::WarnTachoCalibrationDays, 33);
    EXPECT_EQ(Globals::WarnTimingBeltKm, 10000);
    EXPECT_EQ(textOf(main, "Label16"), "8,25");
}

TEST_F(FormsTest, TheFixedUnitFollowsCheck1AndTheMainFormsQuerySetsItAgain) {
    insert("parameter.dsb", "MennyisegiEgyseg", {{"MennyiségiEgység", std::string("db")}, {"Állandó", false}});
    insert("parameter.dsb", "MennyisegiEgyseg", {{"MennyiségiEgység", std::string("tonna")}, {"Állandó", true}});
    operatorRow("Teszt Kft.");
    auto& main = startMain();
    EXPECT_EQ(Globals::FixedUnit, "tonna");
    // Leaving on the unticked first row empties FixedUnit; the main form's activation sets it again.
    fromMenu("ParameterAdat", [&](forms::Form& p) {
        EXPECT_FALSE(p.control<QCheckBox>("Check1")->isChecked());
        click(p, "Command3");
        EXPECT_EQ(Globals::FixedUnit, "");
    });
    EXPECT_EQ(Globals::FixedUnit, "tonna");
    // Another unit made the fixed one: stored on leaving, shown on return.
    fromMenu("ParameterAdat", [&](forms::Form& p) {
        auto& s = static_cast<ParameterFormX&>(p);
        s.Check1->setChecked(true);  // "db"
        s.DBGrid3->selectRow(1);
        EXPECT_TRUE(s.Check1->isChecked());
        s.Check1->setChecked(false);  // "tonna" no longer
        s.DBGrid3->selectRow(0);
        click(p, "Kilepes");
        EXPECT_EQ(Globals::FixedUnit, "db");
    });
    EXPECT_EQ(column("parameter.dsb", "MennyisegiEgyseg", "Állandó"), (std::vector<vb::Variant>{true, false}));
    EXPECT_EQ(textOf(main, "Label14"), "db");
    EXPECT_EQ(Globals::FixedUnit, "db");
}

TEST_F(FormsTest, ADaysValueOfZeroTakesTheReminderOffAtTheReturn) {
    limits({40, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    vehicle(1, "KŐB-112", {{"MuszakiVizsgaDatum", daysFromToday(-60)}});
    operatorRow("Teszt Kft.");
    startMain();
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{app::KerovaX::InspectionText});
    dialogs->clear();
    fromMenu("ParameterAdat", [&](forms::Form& p) {
        edit(static_cast<ParameterFormX&>(p).DBGrid1, 0, 0, "0");
        p.close();  // the close box takes the same exit
    });
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(Globals::WarnInspectionDays, 0);
}

TEST_F(FormsTest, SettingsKeepTheirValuesOnBadInputAndAddUnits) {
    Globals::FixedAllowance = 99;
    auto& f = open<ParameterFormX>("ParameterFormX");
    edit(f.DBGrid1, 0, 0, "12");
    edit(f.DBGrid1, 0, 0, "tíz");  // no number: the runtime's box, the cell keeps its value
    ASSERT_EQ(dialogs->log.size(), 1u);
    EXPECT_EQ(dialogs->log[0].text.rfind("Váratlan hiba (", 0), 0u) << dialogs->log[0].text;
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "12");
    click(f, "Command1");
    EXPECT_EQ(f.DBGrid3->model()->rowCount(), 2);
    edit(f.DBGrid3, 1, 0, "tonna");
    f.Check1->setChecked(true);
    click(f, "Command4");  // help on its topic
    EXPECT_EQ(Globals::HelpTopicName, "GkParameterFormX");
    click(f, "Command3");
    EXPECT_EQ(Globals::WarnInspectionDays, 12);
    EXPECT_EQ(Globals::FixedAllowance, 99);  // Napidíj is empty: the former value stays
    EXPECT_EQ(Globals::FixedUnit, "tonna");
    EXPECT_EQ(column("parameter.dsb", "MennyisegiEgyseg", "Állandó").at(1), vb::Variant(true));
    EXPECT_EQ(vb::Err.Number(), 0);
}

// ---------------------------------------------------------------- UzemeltetokForm

TEST_F(FormsTest, TheOperatorRecordIsMadeAtOnceFilteredAndStoredWithItsLogRow) {
    auto& f = open<UzemeltetokForm>("UzemeltetokForm");
    EXPECT_EQ(rowCount("Torzsek.dsb", "Bettorzs"), 1u);
    EXPECT_EQ(forms::MousePointer(), vb::vbDefault);
    EXPECT_EQ(f.Text2->toolTip().toStdString(), "Üresen hagyva az adatlap TÖRLŐDIK!");
    EXPECT_EQ(f.Text24->toolTip().toStdString(), "Telephely teljes címe");
    for (auto* name : {"Text3", "Text6", "Text12", "Text13", "Text14"}) type(f, name, "9a0");
    EXPECT_EQ(dialogs->beeps(), 5);
    EXPECT_EQ(textOf(f, "Text3"), "90");
    type(f, "Text2", "Szucs");  // letters pass in the other boxes
    f.Text2->setText("Szűcs és Társa Bt.");
    f.Text4->setText("Győr");
    EXPECT_EQ(dialogs->beeps(), 5);
    focus(f, "Text2");
    EXPECT_EQ(forms::backColor(f.Text2), forms::FocusColor);
    focus(f, "Text4");
    EXPECT_EQ(forms::backColor(f.Text2), forms::RestColor);
    f.close();
    EXPECT_EQ(forms::find("UzemeltetokForm"), nullptr);
    EXPECT_EQ(dialogs->exits, 0);
    EXPECT_EQ(column("Torzsek.dsb", "Bettorzs", "UzNev"), std::vector<vb::Variant>{std::string("Szűcs és Társa Bt.")});
    EXPECT_EQ(column("Torzsek.dsb", "Bettorzs", "UzSzekhely"), std::vector<vb::Variant>{std::string("Győr")});
    EXPECT_EQ(column("Torzsek.dsb", "Bettorzs", "UzIrszam"), std::vector<vb::Variant>{std::string("90")});
    auto log = db::Database::open("Regiszt.dsb")->OpenRecordset("Regisztrálás");
    ASSERT_EQ(log->size(), 1u);
    log->MoveFirst();
    EXPECT_EQ(log->Fields(4).Value(), vb::Variant(std::string("Üzemeltető adatai")));
    EXPECT_EQ(log->Fields(7).Value(), vb::Variant(std::string("UzemeltetokForm")));
    EXPECT_EQ(vb::CDbl(log->Fields(8).Value()), 0);
    EXPECT_EQ(log->Fields(9).Value(), vb::Variant(std::string("Kerova")));
}

TEST_F(FormsTest, AnOperatorNameChangedFromTheMenuShowsOnReturnAndAnEmptyOneEndsTheProgram) {
    operatorRow("Kerekes Fuvarozó Kft.");
    startMain();
    EXPECT_EQ(Globals::OperatorName, "Kerekes Fuvarozó Kft.");
    fromMenu("Uzemelteto", [&](forms::Form& u) {
        EXPECT_EQ(textOf(u, "Text2"), "Kerekes Fuvarozó Kft.");
        static_cast<UzemeltetokForm&>(u).Text2->setText("Szűcs és Társa Bt.");
        click(u, "Kilepes");
    });
    EXPECT_EQ(Globals::OperatorName, "Szűcs és Társa Bt.");

    fromMenu("Uzemelteto", [&](forms::Form& u) {
        static_cast<UzemeltetokForm&>(u).Text2->setText("");
        u.close();
    });
    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].kind, forms::ScriptedDialogs::Entry::Beep);
    EXPECT_EQ(dialogs->log[1].text, UzemeltetokForm::EmptyNameText);
    EXPECT_EQ(dialogs->log[1].style, vb::vbCritical);
    EXPECT_EQ(dialogs->exits, 1);
    EXPECT_TRUE(forms::ending());
    EXPECT_EQ(rowCount("Torzsek.dsb", "Bettorzs"), 0u);
}

// ---------------------------------------------------------------- KerovaForm

TEST_F(FormsTest, TheCalculatorCutsEachInputToAWholeNumberFirst) {
    auto& f = open<KerovaForm>("KerovaForm");
    auto put = [&](const char* d, const char* c, const char* p) {
        f.TxtTavolsag->setText(d);
        f.TxtFogyasztas->setText(c);
        f.TxtBenzinar->setText(p);
        return textOf(f, "TxtEredmeny");
    };
    EXPECT_EQ(put("100", "7", "400"), "2 800,00 Ft");
    EXPECT_EQ(put("100", "7,5", "400"), "2 800,00 Ft");  // Val stops at the comma
    EXPECT_EQ(put("100", "7.5", "400"), "3 200,00 Ft");  // 7.5 is used as 8
    EXPECT_EQ(put("100", "6.5", "400"), "2 400,00 Ft");  // and 6.5 as 6
    EXPECT_EQ(put("100km", "7 l", "400 Ft"), "2 800,00 Ft");
    EXPECT_EQ(put("1", "3", "333"), "9,99 Ft");
    EXPECT_EQ(put("1000", "7", "0.4"), "0,00 Ft");  // above 0, then cut to 0
    // An input that is empty, not a number or not above 0 keeps the former result.
    for (auto* p : {"", "Ft 400", "-400"}) EXPECT_EQ(put("1000", "7", p), "0,00 Ft");
    EXPECT_EQ(put("100", "", "400"), "0,00 Ft");
    EXPECT_TRUE(dialogs->log.empty());
}

TEST_F(FormsTest, TheCalculatorsOverflowShowsTheRuntimesBoxAndTheCalculatorGoesOn) {
    auto& f = open<KerovaForm>("KerovaForm");
    f.TxtFogyasztas->setText("7");
    f.TxtBenzinar->setText("400");
    f.TxtTavolsag->setText("32767");
    EXPECT_EQ(textOf(f, "TxtEredmeny"), "917 476,00 Ft");
    f.TxtTavolsag->setText("32767.5");
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{"Váratlan hiba (6): Overflow"});
    EXPECT_EQ(textOf(f, "TxtEredmeny"), "917 476,00 Ft");
    EXPECT_TRUE(f.isLoaded());
    f.TxtTavolsag->setText("10");
    EXPECT_EQ(textOf(f, "TxtEredmeny"), "280,00 Ft");
    EXPECT_EQ(forms::backColor(f.TxtEredmeny), vb::vbYellow);
    focus(f, "TxtTavolsag");
    EXPECT_EQ(forms::backColor(f.TxtTavolsag), forms::FocusColor);
    focus(f, "TxtBenzinar");
    EXPECT_EQ(forms::backColor(f.TxtTavolsag), forms::RestColor);
    f.close();
    EXPECT_EQ(forms::find("KerovaForm"), nullptr);
}

TEST_F(FormsTest, TheMainFormIsDisabledWhileTheCalculatorIsOpen) {
    operatorRow("Teszt Kft.");
    auto& main = startMain();
    bool seen = false;
    fromMenu("UaKtsg", [&](forms::Form& k) {
        seen = true;
        EXPECT_EQ(k.windowTitle().toStdString(), "Üzemanyagköltség kalkulátor - Kerova");
        EXPECT_FALSE(main.isEnabled());
        EXPECT_TRUE(main.isVisible());
        click(k, "Kilepes");
    });
    EXPECT_TRUE(seen);
    EXPECT_TRUE(main.isEnabled());
    EXPECT_TRUE(dialogs->log.empty());
}

}  // namespace
