#include "trips/smallmaster.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "trips/common.h"
#include "vb/constants.h"
#include "vb/err.h"

namespace trips {

using forms::arrow;
using forms::hourglass;
using forms::text;
using vb::Err;

namespace {
struct ArrowAtEnd {
    ~ArrowAtEnd() { arrow(); }
};
}  // namespace

SmallMasterForm::SmallMasterForm(const Design& d) : RecordForm(d.name, d.title), textColumn_(d.textColumn) {
    VezetoData = data("VezetoData", "Kerova.dsb", d.source);

    auto* outer = new QVBoxLayout(this);
    auto* bar = menuBar(outer);
    Frissites = menuItem(bar, "Frissites", "&Frissítés");
    UjAdat = menuItem(bar, "UjAdat", "Ú&j adat");
    Torl_s = menuItem(bar, "Torl_s", "&Törlés");
    Segedlet = menuItem(bar, "Segedlet", "&Segédlet");
    Kilepes = menuItem(bar, "Kilepes", "&Kilépés");

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(8);
    Text1 = textBox("Text1");
    Text1->setMinimumWidth(360);
    TodayLabel = label("TodayLabel", "");
    int row = 0;
    fields->addWidget(label("Text1Caption", d.textCaption), row, 0, Qt::AlignRight);
    fields->addWidget(Text1, row++, 1);
    if (d.grouped) {
        Label3 = label("Label3", "");
        Label3->setTextInteractionFlags(Qt::TextSelectableByMouse);
        fields->addWidget(label("Label3Caption", "Csoportazonosító:"), row, 0, Qt::AlignRight);
        fields->addWidget(Label3, row++, 1);
    }
    fields->addWidget(label("TodayLabelCaption", "Mai dátum:"), row, 0, Qt::AlignRight);
    fields->addWidget(TodayLabel, row++, 1);
    fields->setColumnStretch(1, 1);
    outer->addLayout(fields);

    auto* gridFrame = frame("VezetoDataFrame", d.gridCaption);
    auto* gridBox = new QVBoxLayout(gridFrame);
    DBGrid1 = grid("DBGrid1", gridFrame);
    gridBox->addWidget(DBGrid1);
    outer->addWidget(gridFrame, 1);

    Command1 = button("Command1", "OK-Mentés");
    Command1->setMinimumWidth(140);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(Command1);
    outer->addLayout(buttons);

    VezetoData->bind(Text1, d.textColumn);
    if (Label3) VezetoData->bind(Label3, "UtakCsoportAzonosito");
    DBGrid1->bind(VezetoData);
    bool first = true;
    for (auto& [heading, column] : d.gridColumns) {
        DBGrid1->addColumn(heading, column, first ? 340 : 170);
        first = false;
    }

    forms::onClick(Command1, [this] { Command1_Click(); });
    forms::onClick(Frissites, [this] { Frissites_Click(); });
    forms::onClick(UjAdat, [this] { UjAdat_Click(); });
    forms::onClick(Torl_s, [this] { Torl_s_Click(); });
    forms::onClick(Segedlet, [this] { Segedlet_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::focusColors({Text1});
    resize(640, 480);
}

void SmallMasterForm::Form_Load() { forms::setText(TodayLabel, todayText()); }

// "OK-Mentés": an empty Text1 only takes the focus back. Otherwise the source is refreshed (which
// stores the typed text) and the row found again by its text, quoted with no escaping: an
// apostrophe breaks the find, and the row is saved all the same.
void SmallMasterForm::Command1_Click() {
    std::string t = text(Text1);
    if (t.empty()) {
        focusText1();
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    vb::resume([&] { VezetoData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
    findFirst(VezetoData, "[" + textColumn_ + "] = '" + t + "'");
}

void SmallMasterForm::Frissites_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    vb::resume([&] { VezetoData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
}

// Delete after the question; with no row left the offer of a new one, whose No leaves the form.
void SmallMasterForm::Torl_s_Click() {
    deleteRecord(VezetoData, DeleteText, DeleteTitle, nullptr, {}, [this] { deletedAll(); });
    if (isLoaded()) DBGrid1->Refresh();
}

void SmallMasterForm::deletedAll() {
    arrow();
    if (forms::MsgBox(DeletedAll, vb::vbYesNo, WarnTitle) == vb::vbYes) UjAdat_Click();
    else Kilepes_Click();
}

void SmallMasterForm::Segedlet_Click() { help(); }

// Leaving: the source closed (errors ignored), the form unloaded; the close box comes here.
void SmallMasterForm::Kilepes_Click() { standardExit(nullptr, {VezetoData}); }

bool SmallMasterForm::addRowWith(const std::vector<std::pair<std::string, vb::Variant>>& columns) {
    bool ok = addRow(VezetoData, columns);
    DBGrid1->Refresh();
    return ok;
}

void SmallMasterForm::focusText1() { forms::setFocus(Text1); }

// Opening: the group's rows, and a first row for a group that has none; without a group id the
// message, and the form is left.
void GroupAttachmentForm::Form_Activate() {
    const std::string id = Globals::CurrentGroupID;
    if (id.empty()) {
        arrow();
        forms::Beep();
        forms::MsgBox(NoGroupText, vb::vbCritical, NoGroupTitle);
        Kilepes_Click();
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    VezetoData->setRecordSource(GroupSource + id + "'");
    Frissites_Click();
    if (count(VezetoData) < 1) addRowWith({{"UtakCsoportAzonosito", id}});
    focusText1();
}

// A new row of the group: it holds the group id from the moment it exists.
void GroupAttachmentForm::UjAdat_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    addRowWith({{"UtakCsoportAzonosito", Globals::CurrentGroupID}});
    focusText1();
}

}  // namespace trips
