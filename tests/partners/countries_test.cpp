// The country marks: new rows and the sweep of blank ones, save, delete, archive and restore with
// their doubling "No", and the hand-over to a caller.
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "partners/OrszagokFormX.h"
#include "partners/module.h"
#include "partners_support.h"
#include "print/module.h"
#include "vb/constants.h"

using namespace partners_test;
using partners::OrszagokFormX;

namespace {

class CountriesTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        print::registerForms();
        partners::registerForms();
    }
    static void country(const char* mark, const char* name) {
        insert("betarol.mdb", "Orszagjel", {{"Országjel", s(mark)}, {"Ország", s(name)}});
    }
    static void archived(const char* mark, const char* name) {
        insert("parameter.dsb", "OrszagjelArchiv", {{"Országjel", s(mark)}, {"Ország", s(name)}});
    }
    OrszagokFormX& open() {
        forms::get("OrszagokFormX").Show();
        return static_cast<OrszagokFormX&>(form("OrszagokFormX"));
    }
    static std::vector<std::string> marks() { return column("betarol.mdb", "Orszagjel", "Országjel"); }
    static std::vector<std::string> archive() { return column("parameter.dsb", "OrszagjelArchiv", "Országjel"); }
};

TEST_F(CountriesTest, NewRowsSweepTheBlankOnesAndTheExitSweepsSilently) {
    country("H", "Magyarország");
    country("A", "");
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Jelzés- és ország törzs");
    EXPECT_EQ(textOf(f, "Label1"), "Országjel (nagy betű):");
    click(f, "Command2");  // the blank row goes without asking; a new row with an empty mark
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", ""}));
    click(f, "UjOrsz");  // twice in a row leaves one new row
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", ""}));
    EXPECT_TRUE(dialogs->log.empty());

    type(f, "Text1", "sk");  // nothing forces capitals
    forms::setText(f.Text2, "Szlovákia");
    click(f, "Command1");  // save stores the pending edit and stays on the row
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "sk"}));
    EXPECT_EQ(textOf(f, "Text2"), "Szlovákia");

    click(f, "Command2");
    type(f, "Text1", "RO");  // a mark without a name vanishes at the exit without a word
    click(f, "Command7");
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "sk"}));
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(forms::find("OrszagokFormX"), nullptr);

    // the close box takes the same sweep
    auto& g = open();
    click(g, "UjOrsz");
    g.close();
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "sk"}));
    EXPECT_EQ(forms::find("OrszagokFormX"), nullptr);
}

TEST_F(CountriesTest, SaveOnAnEmptyTableMakesARowAndDeleteAsks) {
    auto& f = open();
    EXPECT_EQ(marks().size(), 0u);  // no row on opening
    click(f, "OKMentes");
    EXPECT_EQ(marks(), std::vector<std::string>{""});
    type(f, "Text1", "D");
    forms::setText(f.Text2, "Németország");
    click(f, "Command1");
    dialogs->answers = {vb::vbNo, vb::vbYes};
    click(f, "Command3");
    EXPECT_EQ(marks(), std::vector<std::string>{"D"});
    click(f, "OTorol");
    EXPECT_EQ(marks().size(), 0u);
    ASSERT_EQ(dialogs->log.size(), 2u);
    EXPECT_EQ(dialogs->log[0].text, "A kijelölt sor törölhető véglegesen?");
    EXPECT_EQ(dialogs->log[0].title, "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS!");
    EXPECT_EQ(dialogs->log[0].style, vb::vbYesNo);
    EXPECT_EQ(dialogs->beeps(), 0);
}

TEST_F(CountriesTest, ArchiveAndRestoreDoubleOnNo) {
    country("H", "Magyarország");
    country("A", "Ausztria");
    auto& f = open();
    click(f, "Command5");  // an empty archive: a beep, the notice, nothing restored
    auto m = messages();
    ASSERT_EQ(m.size(), 1u);
    EXPECT_EQ(m[0].text, "Nincs archívum! Nem lehet adatot visszatölteni!");
    EXPECT_EQ(m[0].style, vb::vbOKOnly);
    EXPECT_EQ(m[0].title, "FIGYELEM!");
    EXPECT_EQ(dialogs->beeps(), 1);
    dialogs->clear();

    click(f, "OMent");  // into an empty archive: no question
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(archive(), (std::vector<std::string>{"H", "A"}));
    dialogs->answers = {vb::vbNo};
    click(f, "Command4");  // "No" appends behind: the archive doubles
    EXPECT_EQ(messages().at(0).text, "Törli véglegesen az archív táblában az adatokat?");
    EXPECT_EQ(messages().at(0).title, "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS vagy adathozzáfűzés!");
    EXPECT_EQ(archive(), (std::vector<std::string>{"H", "A", "H", "A"}));
    dialogs->answers = {vb::vbYes};
    click(f, "Command4");
    EXPECT_EQ(archive(), (std::vector<std::string>{"H", "A"}));

    dialogs->clear();
    dialogs->answers = {vb::vbNo};
    click(f, "OTolt");  // "No" keeps the master: it doubles
    EXPECT_EQ(messages().at(0).text, "Törli=Igen és/vagy Hozzáfűzi=Nem a törzstáblában az adatokat?");
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "A", "H", "A"}));
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 4);
    dialogs->answers = {vb::vbYes};
    click(f, "OTolt");
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "A"}));
    EXPECT_EQ(textOf(f, "Text1"), "H");  // then the first row
}

TEST_F(CountriesTest, TheHandOverTakesTheBoxesAsShown) {
    country("H", "Magyarország");
    country("A", "Ausztria");
    Globals::CountryMarkTransfer = "régi";
    Globals::CountryPicked = vb::Empty{};
    auto& f = open();
    EXPECT_EQ(Globals::CountryMarkTransfer, "");  // emptied on opening
    f.DBGrid1->selectRow(1);
    click(f, "Command8");
    EXPECT_EQ(vb::CStr(Globals::CountryPicked), "1");
    EXPECT_EQ(Globals::CountryMarkTransfer, "A");
    EXPECT_EQ(Globals::CountryNameTransfer, "Ausztria");
    EXPECT_EQ(forms::find("OrszagokFormX"), nullptr);

    // a new blank row handed over: the texts are the empty boxes, and the row is swept at the close
    Globals::CountryPicked = vb::Empty{};
    auto& g = open();
    click(g, "UjOrsz");
    click(g, "AdatAtad");
    EXPECT_EQ(vb::CStr(Globals::CountryPicked), "1");
    EXPECT_EQ(Globals::CountryMarkTransfer, "");
    EXPECT_EQ(marks(), (std::vector<std::string>{"H", "A"}));

    // the header sorts by the column, the second click descending
    auto& h = open();
    h.DBGrid1->HeadClick(0);
    EXPECT_EQ(h.DBGrid1->cellText(0, 0), "A");
    h.DBGrid1->HeadClick(0);
    EXPECT_EQ(h.DBGrid1->cellText(0, 0), "H");
}

}  // namespace
