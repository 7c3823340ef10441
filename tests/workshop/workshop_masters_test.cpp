// The three workshop masters of one design: opening an empty master, new rows, delete down to
// none, the pick and its shared slots, the quick search with the exact code, save, print, exit.
#include <QLabel>
#include <algorithm>
#include <QLineEdit>
#include <QPushButton>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "gui/support.h"
#include "print/module.h"
#include "print/pageform.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/funcs.h"
#include "workshop/AlkatreszekFormX.h"
#include "workshop/MunkakFormX.h"
#include "workshop/SzerelokFormX.h"
#include "workshop/module.h"

using namespace workshop;

namespace {

std::vector<std::string> column(const std::string& file, const std::string& source, const std::string& name) {
    auto rs = db::Database::open(file)->OpenRecordset(source);
    std::vector<std::string> out;
    if (rs->RecordCount() == 0) return out;
    for (rs->MoveFirst(); !rs->Eof(); rs->MoveNext()) out.push_back(vb::nullToText(rs->get(name)));
    return out;
}

class WorkshopMastersTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        print::registerForms();
        workshop::registerForms();
    }
    static void mechanic(const char* name, const char* code) {
        insert("Kerova.dsb", "SzervizModulSzerelok", {{"SzerelöNeve", std::string(name)}, {"SzerelöKódja", std::string(code)}});
    }
    template <class F>
    F& open(const char* name) {
        forms::get(name).Show();
        return static_cast<F&>(form(name));
    }
    static std::vector<std::string> mechanics() { return column("Kerova.dsb", "SzervizModulSzerelok", "SzerelöNeve"); }
    static std::vector<std::string> logged() { return column("Regiszt.dsb", "Regisztrálás", "Esemény"); }
};

TEST_F(WorkshopMastersTest, TheSharedDesignAndWhatDiffers) {
    mechanic("Fűzfa Gábor", "SZ01");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    EXPECT_EQ(f.windowTitle().toStdString(), "Szerelők adatai - Kerova");
    EXPECT_EQ(Globals::CurrentFormName, "SzerelokFormX");
    EXPECT_EQ(textOf(f, "Label1"), "- gyorskereső");
    EXPECT_EQ(f.Text1->toolTip().toStdString(), "Névre keres");
    EXPECT_EQ(f.Command3->toolTip().toStdString(), "Kiválaszt és helyettesít");
    EXPECT_EQ(f.action("Mentes")->text().toStdString(), "&Mentés-OK");
    EXPECT_EQ(textOf(f, "Text2"), "Fűzfa Gábor");
    EXPECT_EQ(textOf(f, "Text3"), "SZ01");
    EXPECT_EQ(f.DBGrid1->model()->headerData(0, Qt::Horizontal, Qt::DisplayRole).toString().toStdString(), "Szerelő neve");
    EXPECT_EQ(logged(), std::vector<std::string>{"Járművekbe belépés"});
    click(f, "Kilepes");

    dialogs->answers = {vb::vbYes, vb::vbYes};
    auto& j = open<MunkakFormX>("MunkakFormX");  // empty: asked, "Yes" adds a row
    EXPECT_EQ(j.windowTitle().toStdString(), "Munkák törzs - Kerova");
    EXPECT_NE(j.Label4, nullptr);
    EXPECT_EQ(j.control<QLineEdit>("Text3"), nullptr);
    click(j, "Kilepes");

    auto& p = open<AlkatreszekFormX>("AlkatreszekFormX");
    EXPECT_EQ(p.windowTitle().toStdString(), "Alkatrészek saját törzs - Kerova");
    EXPECT_EQ(p.DBGrid1->columnCount(), 53);  // all part columns but AFA, SZJ, TAM
    EXPECT_EQ(textOf(p, "Label5"), "");        // bound to a column the table lacks
    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].text, "Nincs még adat! Visz fel most új adatot?");
    EXPECT_EQ(dialogs->log[0].style, vb::vbYesNo);
    EXPECT_EQ(dialogs->log[0].title, "FIGYELEM!");
    EXPECT_EQ(column("Kerova.dsb", "SzervizModulMunkak", "MunkaKód"), std::vector<std::string>{""});
}

TEST_F(WorkshopMastersTest, AnEmptyMasterAnsweredNoLeavesAndAPickThereLeavesTheSlots) {
    Globals::PickedJobName = "előző munka";
    dialogs->answers = {vb::vbNo};
    forms::get("MunkakFormX").Show(true);
    EXPECT_EQ(forms::find("MunkakFormX"), nullptr);
    EXPECT_EQ(Globals::PickedJobName, "előző munka");
    EXPECT_TRUE(column("Kerova.dsb", "SzervizModulMunkak", "MunkaKód").empty());

    // the pick on rows: the slots, the log entry, the form closes
    mechanic("Fűzfa Gábor", "SZ01");
    mechanic("Kőrösi Ádám", "SZ02");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    f.DBGrid1->selectRow(1);
    click(f, "Command3");
    EXPECT_EQ(Globals::PickedMechanicName, "Kőrösi Ádám");
    EXPECT_EQ(Globals::PickedMechanicCode, "SZ02");
    EXPECT_EQ(logged().back(), "Szerelő kiválasztás");
    EXPECT_EQ(forms::find("SzerelokFormX"), nullptr);
}

TEST_F(WorkshopMastersTest, TheQuickSearchFindsByNameThenByTheExactCode) {
    mechanic("Fűzfa Gábor", "SZ01");
    mechanic("Kőrösi Ádám", "SZ02");
    mechanic("SZabó Ede", "X9");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    forms::setText(f.Text1, "Kő");  // Change fires as when typed
    EXPECT_EQ(textOf(f, "Text2"), "Kőrösi Ádám");
    forms::setText(f.Text1, "");
    type(f, "Text1", "SZ02");  // no name begins with it: the exact code
    EXPECT_EQ(textOf(f, "Text2"), "Kőrösi Ádám");
    forms::setText(f.Text1, "");
    type(f, "Text1", "SZ0");  // the prefix of a code is no match; "SZ" found SZabó
    EXPECT_EQ(textOf(f, "Text2"), "SZabó Ede");
}

TEST_F(WorkshopMastersTest, NewDeleteAndSave) {
    mechanic("Fűzfa Gábor", "SZ01");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    click(f, "Command1");
    EXPECT_EQ(mechanics(), (std::vector<std::string>{"Fűzfa Gábor", ""}));
    EXPECT_EQ(forms::backColor(f.Command1), forms::backColor(f.Command2));  // green only while it works
    forms::setText(f.Text2, "Ürögdi Tibor");
    type(f, "Text3", "SZ03");
    click(f, "Mentes");
    EXPECT_EQ(mechanics(), (std::vector<std::string>{"Fűzfa Gábor", "Ürögdi Tibor"}));
    EXPECT_EQ(textOf(f, "Text2"), "Ürögdi Tibor");  // saving stays on the row

    dialogs->answers = {vb::vbYes};
    click(f, "Command2");
    EXPECT_EQ(dialogs->log.back().text, "Biztosan véglegesen törli az adatsort (Delete)?");
    EXPECT_EQ(dialogs->log.back().style, vb::vbYesNo + vb::vbQuestion);
    EXPECT_EQ(dialogs->log.back().title, "FIGYELEM! TÖRLÉS!");
    EXPECT_EQ(mechanics(), std::vector<std::string>{"Fűzfa Gábor"});
    // the only row deleted, "Yes": an empty row; then deleted again, "No": the form leaves
    dialogs->answers = {vb::vbYes, vb::vbYes};
    click(f, "Command2");
    EXPECT_EQ(dialogs->log.back().text, "Minden adat törölve (Deleted All)! Kér új adatot (New)?");
    EXPECT_EQ(mechanics(), std::vector<std::string>{""});
    dialogs->answers = {vb::vbYes, vb::vbNo};
    click(f, "Command2");
    EXPECT_TRUE(mechanics().empty());
    EXPECT_EQ(forms::find("SzerelokFormX"), nullptr);
    auto log = logged();
    EXPECT_EQ(std::count(log.begin(), log.end(), "Szerelőt töröl"), 2);
    EXPECT_EQ(std::count(log.begin(), log.end(), "Szerelők új adat"), 2);
}

TEST_F(WorkshopMastersTest, PrintListsUnderTheTitleAndTodayAndAnEmptyListBeeps) {
    vb::clock::setFixed(vb::DateSerial(2026, 11, 23));
    mechanic("Fűzfa Gábor", "SZ01");
    mechanic("Kőrösi Ádám", "SZ02");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    std::vector<std::string> seen;
    forms::setModalRunner([&](forms::Form& page) {
        auto& p = static_cast<print::ListPageForm&>(page);
        seen.push_back(p.text("Cim"));
        seen.push_back(p.row(2)[0] + "|" + p.row(2)[1]);
        p.Command1_Click();
    });
    click(f, "Nyomtat");
    EXPECT_EQ(seen, (std::vector<std::string>{"SZERELŐK 2026.11.23.", "Kőrösi Ádám|SZ02"}));
    EXPECT_EQ(textOf(f, "Text2"), "Fűzfa Gábor");  // back on the first row
    click(f, "Kilepes");

    // the parts keep the jobs' print title; an empty list only beeps
    dialogs->answers = {vb::vbYes};
    auto& p = open<AlkatreszekFormX>("AlkatreszekFormX");
    seen.clear();
    click(p, "Nyomtat");
    EXPECT_EQ(seen.at(0), "MUNKÁK TÖRZS 2026.11.23.");
    p.NyelvData->rs().Delete();
    seen.clear();
    dialogs->clear();
    click(p, "Nyomtat");
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(dialogs->beeps(), 1);
    EXPECT_EQ(dialogs->log.size(), 1u);
}

TEST_F(WorkshopMastersTest, TheCloseBoxLeavesAsKilepesAndTheHeaderSorts) {
    mechanic("Béla", "2");
    mechanic("Aladár", "1");
    auto& f = open<SzerelokFormX>("SzerelokFormX");
    f.DBGrid1->HeadClick(0);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "Aladár");
    f.DBGrid1->HeadClick(0);
    EXPECT_EQ(f.DBGrid1->cellText(0, 0), "Béla");
    f.close();
    EXPECT_EQ(forms::find("SzerelokFormX"), nullptr);
    EXPECT_TRUE(dialogs->log.empty());
}

}  // namespace
