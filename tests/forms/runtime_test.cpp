// The forms runtime as a form sees it: bound widgets writing on move, the grid following the
// Recordset, the close box taking the exit handler, the error guard, key filters, modal forms.
#include <QApplication>
#include <QBackingStore>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/recordform.h"
#include "gui/support.h"
#include "vb/constants.h"

using namespace forms;

namespace {

class NamesForm : public RecordForm {
public:
    NamesForm() : RecordForm("NamesForm", "Megnevezések") {
        auto* l = new QGridLayout(this);
        Data1 = data("Data1", "Kerova.dsb", "select * from MegnevezesTorzs order by Sorszám");
        Text1 = textBox("Text1");
        Text2 = textBox("Text2");
        Label1 = label("Label1", "");
        DBGrid1 = grid("DBGrid1");
        Kilepes = button("Kilepes", "Kilépés");
        Hiba = button("Hiba", "Hiba");
        l->addWidget(Text1, 0, 0);
        l->addWidget(Text2, 0, 1);
        l->addWidget(Label1, 1, 0);
        l->addWidget(DBGrid1, 2, 0, 1, 2);
        l->addWidget(Kilepes, 3, 0);
        Data1->bind(Text1, "Megnevezés");
        Data1->bind(Label1, "Sorszám");
        DBGrid1->bind(Data1);
        DBGrid1->addColumn("Megnevezés", "Megnevezés");
        wholeNumber({Text2});
        focusColors({Text1});
        onClick(Kilepes, [this] { exitHandler(); });
        onClick(Hiba, [this] { Data1->rs().Fields("nincs ilyen").Value(); });
    }
    void exitHandler() override {
        ++exits;
        standardExit([this] { offerDeleteIfEmpty(Data1, text(Text1), "Üres sor. Törli?", "Kilépés"); }, {Data1});
    }
    void Form_Activate() override { ++activations; }
    DataControl* Data1;
    QLineEdit *Text1, *Text2;
    QLabel* Label1;
    DBGrid* DBGrid1;
    QPushButton *Kilepes, *Hiba;
    int exits = 0, activations = 0;
};

class RuntimeTest : public kerova_test::GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        initCompany();
        for (const char* n : {"Áru", "Ügyfél", "Szerviz"})
            insert("Kerova.dsb", "MegnevezesTorzs", {{"Megnevezés", std::string(n)}});
        registerForm("NamesForm", [] { return new NamesForm; });
    }
    NamesForm& names() { return static_cast<NamesForm&>(get("NamesForm")); }
};

TEST_F(RuntimeTest, BoundBoxesWriteOnMoveAndTheGridFollowsTheRecordset) {
    auto& f = names();
    f.Show();
    EXPECT_EQ(f.windowTitle().toStdString(), "Megnevezések");
    EXPECT_EQ(f.activations, 1);
    EXPECT_EQ(textOf(f, "Text1"), "Áru");
    EXPECT_EQ(f.DBGrid1->model()->rowCount(), 3);
    EXPECT_EQ(f.DBGrid1->cellText(1, 0), "Ügyfél");

    f.Text1->setText("Árú új");
    f.Data1->rs().MoveNext();  // leaving the record writes the box back
    EXPECT_EQ(textOf(f, "Text1"), "Ügyfél");
    EXPECT_EQ(f.DBGrid1->Row(), 1);
    auto check = db::Database::open("Kerova.dsb")->OpenRecordset("select * from MegnevezesTorzs where Sorszám = 1");
    EXPECT_EQ(std::get<std::string>(check->get("Megnevezés")), "Árú új");

    // Selecting a grid row moves the Recordset and the bound widgets.
    f.DBGrid1->selectRow(2);
    EXPECT_EQ(f.Data1->rs().AbsolutePosition(), 2);
    EXPECT_EQ(textOf(f, "Text1"), "Szerviz");
    EXPECT_EQ(textOf(f, "Label1"), "3");
}

TEST_F(RuntimeTest, TheCloseBoxTakesTheExitHandlerWithItsChecks) {
    auto& f = names();
    f.Show();
    f.Text1->setText("");
    dialogs->answers.push_back(vb::vbNo);
    f.close();  // the window's close box
    EXPECT_EQ(f.exits, 1);
    EXPECT_EQ(dialogs->messages(), std::vector<std::string>{"Üres sor. Törli?"});
    EXPECT_FALSE(f.isLoaded());
    EXPECT_EQ(find("NamesForm"), nullptr);
    // The next opening is a fresh form on the stored rows.
    auto& again = names();
    EXPECT_NE(&again, &f);
    again.Show();
    EXPECT_EQ(again.DBGrid1->model()->rowCount(), 3);
}

TEST_F(RuntimeTest, AnUnexpectedErrorShowsOneBoxAndTheProgramGoesOn) {
    auto& f = names();
    f.Show();
    click(f, "Hiba");
    ASSERT_EQ(dialogs->log.size(), 1u);
    EXPECT_EQ(dialogs->log[0].text.rfind("Váratlan hiba (3265): ", 0), 0u) << dialogs->log[0].text;
    EXPECT_EQ(dialogs->log[0].style, vb::vbCritical);
    EXPECT_EQ(MousePointer(), vb::vbArrow);
    EXPECT_TRUE(f.isLoaded());
}

TEST_F(RuntimeTest, KeyFiltersAndFocusColours) {
    auto& f = names();
    f.Show();
    type(f, "Text2", "12a,3");
    EXPECT_EQ(textOf(f, "Text2"), "123");
    EXPECT_EQ(dialogs->beeps(), 2);
    focus(f, "Text1");
    EXPECT_EQ(backColor(f.Text1), FocusColor);
    focus(f, "Text2");
    EXPECT_EQ(backColor(f.Text1), RestColor);
}

TEST_F(RuntimeTest, AModalFormReturnsBeforeTheCallerIsActivatedAgain) {
    auto& caller = names();
    caller.Show();
    registerForm("Picker", [] { return new NamesForm; });
    std::vector<std::string> order;
    setModalRunner([&](Form& picker) {
        order.push_back("picker shown");
        Globals::PickDone = 1;
        picker.Hide();
    });
    run([&] {
        bool picked = RecordForm::openPicker("Picker", "NamesForm");
        order.push_back(picked ? "picked" : "none");
        EXPECT_EQ(caller.activations, 1);  // not yet: the handler is still running
    });
    EXPECT_EQ(order, (std::vector<std::string>{"picker shown", "picked"}));
    EXPECT_EQ(caller.activations, 2);
    EXPECT_EQ(active(), &caller);
}

TEST_F(RuntimeTest, AnUnknownFormIsAStandIn) {
    get("NincsIlyenForm").Show();
    auto& f = form("NincsIlyenForm");
    EXPECT_EQ(textOf(f, "Label1"), "Ez a modul még nem készült el.");
    click(f, "Kilepes");
    EXPECT_EQ(find("NincsIlyenForm"), nullptr);
}

// The window's pixels: no larger than the screen, given back while the form is hidden.
TEST_F(RuntimeTest, AFormFitsTheScreenAndAHiddenFormHoldsNoPixels) {
    auto& f = names();
    f.resize(5000, 4000);
    f.Show();
    QSize screen = f.screen()->availableGeometry().size();
    EXPECT_LE(f.width(), std::max(screen.width(), f.minimumSizeHint().width()));
    EXPECT_LE(f.height(), std::max(screen.height(), f.minimumSizeHint().height()));
    EXPECT_GT(f.width(), screen.width() / 2);

    QApplication::processEvents();
    ASSERT_NE(f.backingStore(), nullptr);
    EXPECT_EQ(f.backingStore()->size(), f.size());
    f.Hide();
    EXPECT_EQ(f.backingStore()->size(), QSize(1, 1));
    f.Show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&f));
    QApplication::processEvents();
    EXPECT_EQ(f.backingStore()->size(), f.size());
}

}  // namespace
