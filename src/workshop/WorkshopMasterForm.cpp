#include "workshop/WorkshopMasterForm.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "db/recordset.h"
#include "forms/events.h"
#include "forms/layout.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "vb/constants.h"
#include "vb/err.h"
#include "vb/funcs.h"
#include "workshop/print.h"

namespace workshop {

using forms::arrow;
using forms::Beep;
using forms::hourglass;
using forms::MsgBox;
using vb::Err;
using vb::resume;

namespace {
}  // namespace

WorkshopMasterForm::WorkshopMasterForm(Master m) : RecordForm(m.name, m.title), master_(std::move(m)) {
    const Master& ms = master_;
    NyelvData = data("NyelvData", "Kerova.dsb", ms.table);
    RegisztData = data("RegisztData", "Regiszt.dsb", "Regisztrálás");

    auto* root = new QVBoxLayout(this);
    auto* bar = menuBar(root);
    Mentes = menuItem(bar, "Mentes", "&Mentés-OK");
    Nyomtat = menuItem(bar, "Nyomtat", "&Nyomtatás");
    Segedlet = menuItem(bar, "Segedlet", "&Segédlet");
    Kilepes = menuItem(bar, "Kilepes", "&Kilépés");

    Text1 = textBox("Text1");
    Label1 = label("Label1", "- gyorskereső");
    Text1->setToolTip("Névre keres");
    Text1->setFixedWidth(200);
    auto* search = new QHBoxLayout;
    search->addWidget(Text1);
    search->addWidget(Label1);
    search->addStretch(1);
    root->addLayout(search);

    fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label2 = label("Label2", ms.nameCaption);
    Text2 = textBox("Text2");
    fields->addRow(Label2, Text2);
    Label3 = label("Label3", ms.codeCaption);
    if (ms.codeInTextBox) {
        secondField = textBox("Text3");
    } else {
        auto* l = label("Label4", "");
        l->setFrameShape(QFrame::StyledPanel);
        l->setMinimumHeight(Text2->sizeHint().height());
        secondField = l;
    }
    fields->addRow(Label3, secondField);
    root->addLayout(fields);

    DBGrid1 = grid("DBGrid1");
    DBGrid1->setToolTip("Oszlopra kattintva rendez, sorba gépelve módosít");
    root->addWidget(DBGrid1, 1);

    Command1 = button("Command1", "Új adat");
    Command2 = button("Command2", "Töröl");
    Command3 = button("Command3", "Vissza");
    Command1->setToolTip("Új adat, sor");
    Command2->setToolTip("Kijelölt sort véglegesen törli");
    Command3->setToolTip("Kiválaszt és helyettesít");
    root->addLayout(forms::buttonRow({Command1, Command2, Command3}, 130));

    NyelvData->bind(Text2, ms.nameField);
    NyelvData->bind(secondField, ms.codeField);
    DBGrid1->bind(NyelvData);
    for (auto& c : ms.columns) DBGrid1->addColumn(c.caption, c.field, c.width);
    DBGrid1->setAllowUpdate(true);
    DBGrid1->HeadClick = [this](int c) { DBGrid1_HeadClick(c); };

    forms::onClick(Command1, [this] { Command1_Click(); });
    forms::onClick(Command2, [this] { Command2_Click(); });
    forms::onClick(Command3, [this] { Command3_Click(); });
    forms::onClick(Mentes, [this] { Mentes_Click(); });
    forms::onClick(Nyomtat, [this] { Nyomtat_Click(); });
    forms::onClick(Segedlet, [this] { Segedlet_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::onChange(Text1, [this] { Text1_Change(); });
    forms::focusColors({Text1, Text2});
    if (ms.codeInTextBox) forms::focusColors(secondField);

    resize(760, 560);
}

void WorkshopMasterForm::exitHandler() { Kilepes_Click(); }

// Opening, each time the form becomes active: an empty table offers a first row (No leaves the
// form); with rows the first is current and Text2 has the focus. Then the log entry.
void WorkshopMasterForm::Form_Activate() {
    Globals::CurrentFormName = name();
    if (count(NyelvData) < 1) {
        arrow();
        if (MsgBox(EmptyText, vb::vbYesNo, EmptyTitle) == vb::vbYes) {
            Command1_Click();
        } else {
            Kilepes_Click();
            return;
        }
    } else {
        resume([&] { NyelvData->rs().MoveFirst(); });
        Err.Clear();
        forms::setFocus(Text2);
    }
    log(master_.logOpen);
}

// New row: the button green while it works; a row with the name and the code empty, stored; the
// last row; the log; the focus on Text2.
void WorkshopMasterForm::Command1_Click() {
    int32_t color = forms::backColor(Command1);
    forms::setBackColor(Command1, vb::vbGreen);
    hourglass();
    addRow(NyelvData, {{master_.nameField, std::string()}, {master_.codeField, std::string()}});
    DBGrid1->Refresh();
    forms::setBackColor(Command1, color);
    log(master_.logNew);
    forms::setFocus(Text2);
    arrow();
}

void WorkshopMasterForm::Command2_Click() {
    if (deleteRecord(NyelvData, DeleteText, DeleteTitle, nullptr, {}, [this] { allDeleted(); })) {
        DBGrid1->Refresh();
        // after a "No" above the form has gone and its log is closed: the write fails silently
        log(master_.logDelete);
    }
}

void WorkshopMasterForm::allDeleted() {
    arrow();
    Beep();
    if (MsgBox(AllDeletedText, vb::vbYesNo, AllDeletedTitle) == vb::vbYes) {
        Command1_Click();
    } else {
        Kilepes_Click();
    }
}

// Pick: with a current row the shared slots take it and the log its entry; the form closes either
// way, so an empty master leaves the slots as they were. The button's colour comes back last.
void WorkshopMasterForm::Command3_Click() {
    int32_t color = forms::backColor(Command3);
    forms::setBackColor(Command3, vb::vbGreen);
    if (count(NyelvData) > 0 && onRecord(NyelvData)) {
        handOver();
        log(master_.logPick);
    }
    Kilepes_Click();
    forms::setBackColor(Command3, color);
}

std::string WorkshopMasterForm::current(const std::string& field) {
    std::string v = resume([&] { return vb::nullToText(NyelvData->rs().Fields(field).Value()); }, std::string());
    Err.Clear();
    return v;
}

// Saving by the round trip: off the ends the last row; bookmark, last, first, back to the
// bookmark. A failure beeps and leaves the last row current. Then the list is redrawn.
void WorkshopMasterForm::Mentes_Click() {
    if (count(NyelvData) < 1) {
        Command1_Click();
        return;
    }
    hourglass();
    Err.Clear();
    resume([&] {
        auto& r = NyelvData->rs();
        if (r.Eof() || r.Bof()) r.MoveLast();
        vb::Variant mark = r.Bookmark();
        r.MoveLast();
        if (r.RecordCount() > 0) r.MoveFirst();
        r.setBookmark(mark);
    });
    if (Err.Number() != 0) {
        Err.Clear();
        Beep();
        if (count(NyelvData) > 0) resume([&] { NyelvData->rs().MoveLast(); });
        Err.Clear();
    }
    DBGrid1->Refresh();
    arrow();
}

void WorkshopMasterForm::Text1_Change() {
    std::string typed = forms::text(Text1);
    if (typed.empty()) return;
    quickSearch(NyelvData, master_.searchKey, typed, master_.exactSearchKey);
}

void WorkshopMasterForm::Nyomtat_Click() {
    if (count(NyelvData) < 1) {
        Beep();
        return;
    }
    printMaster(*this, NyelvData);
    DBGrid1->Refresh();
}

void WorkshopMasterForm::Segedlet_Click() { help(); }

// Leaving: both sources closed, errors cleared, unload; CloseGuard keeps the close box from running
// it a second time.
void WorkshopMasterForm::Kilepes_Click() { standardExit({}, {NyelvData, RegisztData}); }

void WorkshopMasterForm::DBGrid1_HeadClick(int column) { headerSort(NyelvData, DBGrid1, column); }

// These forms have no key label: the log's key is 0.
void WorkshopMasterForm::log(const std::string& action) { LogAction(RegisztData, action, nullptr); }

}  // namespace workshop
