// The partner master: opening, new identifiers, the full check on both ways out, the searches,
// the country mark, the lock test against a second copy of the program, delete, and the list.
#include <sys/wait.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <csignal>

#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/recordform.h"
#include "partners/BeraktarozokFormX.h"
#include "partners/module.h"
#include "partners_support.h"
#include "print/module.h"
#include "print/pageform.h"
#include "vb/constants.h"

using namespace partners_test;
using partners::BeraktarozokFormX;

namespace {

class PartnerMasterTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        print::registerForms();
        partners::registerForms();
    }
    static void partner(int id, vb::Variant name, Fields more = {}) {
        Fields v{{"recordID", int32_t(id)}, {"BerNev", name}};
        v.insert(v.end(), more.begin(), more.end());
        insert("Kerova.dsb", "beraktar", v);
    }
    BeraktarozokFormX& open() {
        forms::get("BeraktarozokFormX").Show();
        return static_cast<BeraktarozokFormX&>(form("BeraktarozokFormX"));
    }
    std::vector<std::string> names() { return column("Kerova.dsb", "beraktar", "BerNev"); }
    void expectMessage(size_t i, const std::string& text, int style, const std::string& title) {
        auto m = messages();
        ASSERT_GT(m.size(), i);
        EXPECT_EQ(m[i].text, text);
        EXPECT_EQ(m[i].style, style);
        EXPECT_EQ(m[i].title, title);
    }
};

TEST_F(PartnerMasterTest, OpensOnTheLastPartnerWithItsFieldsAndFilters) {
    partner(1, s("Őrségi Szerviz Kft."), {{"BerIrszam", s("9941")}, {"BerOrszag", s("H")}});
    partner(2, s("Fűtőház Zrt."), {{"BerSzekhely", s("Győr")}, {"BerOrszag", s("A")}});
    auto& f = open();
    EXPECT_EQ(f.windowTitle().toStdString(), "Beszállítók, partnerek adatai törzs - Kerova");
    EXPECT_EQ(textOf(f, "Text2"), "Fűtőház Zrt.");
    EXPECT_EQ(textOf(f, "Text4"), "Győr");
    EXPECT_EQ(textOf(f, "Text1"), "2");
    EXPECT_EQ(textOf(f, "Label14"), "A");
    EXPECT_EQ(textOf(f, "Text2Caption"), "Beszállító (cég) neve:");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 2);
    EXPECT_EQ(f.DBGrid2->toolTip().toStdString(), "Dupla kattintással válasszon!");

    // digits only in the numeric boxes: a foreign post code with letters can't be typed
    forms::setText(f.Text3, "");
    type(f, "Text3", "A-1010");
    EXPECT_EQ(textOf(f, "Text3"), "1010");
    EXPECT_EQ(dialogs->beeps(), 2);
    type(f, "Text6", "06 1/234");
    EXPECT_EQ(textOf(f, "Text6"), "061234");
    type(f, "Text11", "Kiss Pal");  // the contact takes any text
    EXPECT_EQ(textOf(f, "Text11"), "Kiss Pal");
    focus(f, "Text2");
    EXPECT_EQ(forms::backColor(f.Text2), forms::FocusColor);
    focus(f, "Text4");
    EXPECT_EQ(forms::backColor(f.Text2), forms::RestColor);
}

TEST_F(PartnerMasterTest, NewIdentifiersFollowTheLastRowInTableOrderAndGapsStay) {
    auto& f = open();  // an empty table: its first partner at once, identifier 1
    EXPECT_EQ(column("Kerova.dsb", "beraktar", "recordID"), std::vector<std::string>{"1"});
    EXPECT_EQ(textOf(f, "Text1"), "1");
    forms::setText(f.Text2, "Első Kft.");
    click(f, "UjAdat");
    EXPECT_EQ(textOf(f, "Text1"), "2");
    EXPECT_EQ(textOf(f, "Text2"), "");
    click(f, "UjAdat");
    EXPECT_EQ(column("Kerova.dsb", "beraktar", "recordID"), (std::vector<std::string>{"1", "2", "3"}));
    EXPECT_EQ(names()[0], "Első Kft.");  // the pending edit was stored by the moves
    EXPECT_EQ(logged(), (std::vector<std::string>{"Új beszállító felvitele", "Új beszállító felvitele"}));

    // a gap in the middle stays; the last row's identifier + 1 counts
    partner(10, s("Tízes"));
    click(f, "UjAdat");
    EXPECT_EQ(textOf(f, "Text1"), "11");
    EXPECT_TRUE(dialogs->unexpected.empty());
}

TEST_F(PartnerMasterTest, TheFullCheckDiffersBetweenTheTwoWaysOut) {
    // "Mentés-Kilépés": only the empty name is bad; a null name and a name of blanks stay
    partner(1, s("Jó Kft."));
    partner(2, s(""));
    partner(3, vb::Null{});
    partner(4, s("   "));
    auto& f = open();
    dialogs->answers = {vb::vbYes};
    click(f, "Kilepes");
    expectMessage(0, "Kéri az adatok teljes ellenőrzését?", vb::vbYesNo + vb::vbQuestion, "Ellenőrzés...");
    EXPECT_EQ(dialogs->beeps(), 1);
    EXPECT_EQ(names(), (std::vector<std::string>{"Jó Kft.", "<null>", "   "}));
    EXPECT_EQ(forms::find("BeraktarozokFormX"), nullptr);

    // "Mégse": a null name is bad too; a row just made and left empty disappears
    dialogs->clear();
    auto& g = open();
    click(g, "UjAdat");
    dialogs->answers = {vb::vbYes};
    click(g, "megse");
    expectMessage(0, "Kéri az adatok teljes ellenőrzését?", vb::vbYesNo, "Ellenőrzés");
    EXPECT_EQ(names(), (std::vector<std::string>{"Jó Kft.", "   "}));
    EXPECT_EQ(forms::find("BeraktarozokFormX"), nullptr);

    // "Nem" keeps every row, and both ways store the edit of the current row
    dialogs->clear();
    auto& h = open();
    forms::setText(h.Text2, "Átírt Bt.");
    dialogs->answers = {vb::vbNo};
    click(h, "megse");
    EXPECT_EQ(names(), (std::vector<std::string>{"Jó Kft.", "Átírt Bt."}));

    // the close box takes the way of "Mentés-Kilépés"
    dialogs->clear();
    partner(5, s(""));
    auto& k = open();
    dialogs->answers = {vb::vbYes};
    k.close();
    expectMessage(0, "Kéri az adatok teljes ellenőrzését?", vb::vbYesNo + vb::vbQuestion, "Ellenőrzés...");
    EXPECT_EQ(names(), (std::vector<std::string>{"Jó Kft.", "Átírt Bt."}));
    EXPECT_EQ(forms::find("BeraktarozokFormX"), nullptr);
}

TEST_F(PartnerMasterTest, SearchesAndTheCountryMark) {
    partner(1, s("Alfa Kft."));
    partner(2, s("Béta Bt."));
    partner(3, s("Alföldi Zrt."));
    insert("Kerova.dsb", "Orszagjel", {{"Országjel", s("H")}, {"Ország", s("Magyarország")}});
    insert("Kerova.dsb", "Orszagjel", {{"Országjel", s("A")}, {"Ország", s("Ausztria")}});
    auto& f = open();

    dialogs->inputs = {"Alf", "Alf", "Alf", "Zeta", ""};
    click(f, "keres");  // from the last row: wraps to the first match
    EXPECT_EQ(textOf(f, "Text2"), "Alfa Kft.");
    click(f, "keres");
    EXPECT_EQ(textOf(f, "Text2"), "Alföldi Zrt.");
    click(f, "keres");
    EXPECT_EQ(textOf(f, "Text2"), "Alfa Kft.");
    click(f, "keres");
    auto m = messages();
    ASSERT_EQ(m.size(), 1u);
    EXPECT_EQ(m[0].text, "Nincs ilyen beraktározó! Keressen újra, vagy válasszon a listából!");
    EXPECT_EQ(m[0].title, "Keresés (cég)névre");
    EXPECT_EQ(m[0].style, vb::vbExclamation);
    click(f, "keres");  // cancel changes nothing
    EXPECT_EQ(textOf(f, "Text2"), "Alfa Kft.");
    EXPECT_EQ(dialogs->log[0].text, "Kérem a beraktározó nevét:");

    dialogs->inputs = {"Auszt"};
    click(f, "Command1");
    EXPECT_EQ(f.DBGrid2->Row(), 1);

    // a double click in the country grid sets the mark of the current partner
    f.Data1->rs().MoveFirst();
    f.DBGrid1->selectRow(1);
    EXPECT_EQ(textOf(f, "Text2"), "Béta Bt.");
    QTest::mouseDClick(f.DBGrid2->viewport(), Qt::LeftButton, {},
                       f.DBGrid2->visualRect(f.DBGrid2->model()->index(0, 0)).center());
    EXPECT_EQ(textOf(f, "Label14"), "H");
    click(f, "Command4");  // stored with the row, as any bound box
    EXPECT_EQ(column("Kerova.dsb", "beraktar", "BerOrszag"), (std::vector<std::string>{"<null>", "H", "<null>"}));
}

// A second copy of the program holding the Edit lock of one partner row until told to quit.
class LockPeer {
public:
    LockPeer(const std::filesystem::path& folder, int id) {
        int down[2], up[2];
        ::signal(SIGPIPE, SIG_IGN);
        if (::pipe(down) != 0 || ::pipe(up) != 0) throw std::runtime_error("pipe");
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(down[1]);
            ::close(up[0]);
            std::string answer = "ok\n";
            std::unique_ptr<db::Recordset> rs;
            try {
                db::setWorkingFolder(folder);
                rs = db::Database::open("Kerova.dsb")->OpenRecordset("select * from beraktar where recordID = " +
                                                                     std::to_string(id));
                rs->Edit();
            } catch (...) {
                answer = "err\n";
            }
            (void)!::write(up[1], answer.data(), answer.size());
            char c;
            (void)!::read(down[0], &c, 1);  // until the parent says so
            ::_exit(0);
        }
        ::close(down[0]);
        ::close(up[1]);
        to_ = down[1];
        from_ = up[0];
        char buf[8] = {};
        (void)!::read(from_, buf, 3);
        ready_ = std::string(buf, 3) == "ok\n";
    }
    ~LockPeer() {
        (void)!::write(to_, "q", 1);
        ::close(to_);
        ::close(from_);
        int status = 0;
        ::waitpid(pid_, &status, 0);
    }
    bool ready() const { return ready_; }

private:
    pid_t pid_ = -1;
    int to_ = -1, from_ = -1;
    bool ready_ = false;
};

TEST_F(PartnerMasterTest, TheLockButtonStoresTheEditOrSaysTheRowIsHeld) {
    partner(1, s("Első Kft."));
    partner(2, s("Második Bt."));
    auto& f = open();
    forms::setText(f.Text2, "Második és Társa Bt.");
    click(f, "Command4");
    EXPECT_TRUE(dialogs->log.empty());
    EXPECT_EQ(names()[1], "Második és Társa Bt.");
    {
        LockPeer peer(dir.path(), 2);
        ASSERT_TRUE(peer.ready());
        forms::setText(f.Text2, "Zárolt");
        click(f, "Command4");
        auto m = messages();
        ASSERT_EQ(m.size(), 1u);
        EXPECT_EQ(m[0].text, "Az adat jelenleg zárolt! Próbálja újra!");
        EXPECT_EQ(m[0].title, "Adatzárolás!");
        EXPECT_EQ(names()[1], "Második és Társa Bt.");  // the row stays as the other copy holds it
        // the delete's lock test stops there without a word
        dialogs->clear();
        dialogs->answers = {vb::vbYes};
        click(f, "BeszallTorol");
        EXPECT_EQ(names().size(), 2u);
        EXPECT_EQ(messages().size(), 1u);  // only the question
    }
    click(f, "Command4");  // the lock is gone: the edit is stored
    EXPECT_EQ(names()[1], "Zárolt");
}

TEST_F(PartnerMasterTest, DeleteAsksAndTheLastRowGoneMakesANewOne) {
    partner(1, s("Egyetlen Kft."));
    auto& f = open();
    dialogs->answers = {vb::vbNo};
    click(f, "BeszallTorol");
    expectMessage(0, "Biztosan törli véglegesen az adatot?", vb::vbYesNo + vb::vbQuestion, "FIGYELEM! Végleges törlés!");
    EXPECT_EQ(names(), std::vector<std::string>{"Egyetlen Kft."});
    dialogs->answers = {vb::vbYes};
    click(f, "BeszallTorol");
    // a fresh row with the next identifier, so the form is never without a current row
    EXPECT_EQ(names(), std::vector<std::string>{"<null>"});
    EXPECT_EQ(column("Kerova.dsb", "beraktar", "recordID"), std::vector<std::string>{"1"});
    EXPECT_EQ(textOf(f, "Text1"), "1");
}

TEST_F(PartnerMasterTest, TheListGivesPagesOf22LinesWithTheSecondHeading) {
    for (int i = 1; i <= 23; ++i)
        partner(i, s(("Partner " + std::to_string(i)).c_str()),
                {{"BerIrszam", s("1011")}, {"BerOrszag", s("H")}, {"BerSzekhely", s("Budapest")},
                 {"BerCim", s("Fő utca 1.")}, {"BerTelefon", i == 1 ? vb::Variant(s("123")) : vb::Variant(vb::Null{})},
                 {"BerFax", i == 1 ? vb::Variant(s("456")) : vb::Variant(vb::Null{})}});
    auto& f = open();
    f.Beraktarozok->rs().MoveFirst();
    std::vector<std::string> headings, pages, firstLines, lastLines;
    forms::setModalRunner([&](forms::Form& page) {
        auto& p = static_cast<print::ListPageForm&>(page);
        headings.push_back(p.text("Cim"));
        pages.push_back(p.text("Oldal"));
        auto first = p.row(1);
        firstLines.push_back(first[0] + "|" + first[1] + "|" + first[2] + "|" + first[3] + "|" + first[4] + "|" + first[5]);
        lastLines.push_back(p.row(22)[0]);
        p.Command1_Click();
    });
    click(f, "BeszNyom");
    EXPECT_EQ(headings, (std::vector<std::string>{"BESZÁLLÍTÓK-PARTNEREK", "BESZÁLLÍTÓK-BERAKTÁROZÓK"}));
    EXPECT_EQ(pages, (std::vector<std::string>{"Lapszám: 1", "Lapszám: 2"}));
    EXPECT_EQ(firstLines[0], "Partner 1|1011|H|Budapest|Fő utca 1.|123 / 456");
    EXPECT_EQ(firstLines[1], "Partner 23|1011|H|Budapest|Fő utca 1.| / ");
    EXPECT_EQ(lastLines, (std::vector<std::string>{"Partner 22", ""}));
    EXPECT_EQ(textOf(f, "Text1"), "23");  // the list ends on the last row

    // exactly 22 partners: one page; "Mégse" on the first page stops the whole list
    f.Beraktarozok->rs().MoveLast();
    f.Beraktarozok->rs().Delete();
    f.Beraktarozok->rs().MoveLast();
    headings.clear();
    click(f, "BeszNyom");
    EXPECT_EQ(headings.size(), 1u);
    forms::setModalRunner([&](forms::Form& page) {
        headings.push_back("x");
        static_cast<print::PageForm&>(page).Command3_Click();
    });
    for (int i = 23; i <= 50; ++i) partner(i, s("Több"));
    f.Beraktarozok->rs().Requery();
    headings.clear();
    click(f, "BeszNyom");
    EXPECT_EQ(headings.size(), 1u);
}

TEST_F(PartnerMasterTest, ThousandsOfPartnersOpenAtOnce) {
    insertMany("Kerova.dsb", "beraktar", 5000, [](int i) {
        return Fields{{"recordID", int32_t(i + 1)}, {"BerNev", "Partner " + std::to_string(i + 1)}};
    });
    QElapsedTimer t;
    t.start();
    auto& f = open();
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 5000);
    EXPECT_EQ(textOf(f, "Text1"), "5000");
    EXPECT_LT(t.elapsed(), 2000);
}

}  // namespace
