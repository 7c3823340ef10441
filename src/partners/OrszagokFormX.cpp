#include "partners/OrszagokFormX.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "vb/constants.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace partners {

using forms::arrow;
using forms::Beep;
using forms::hourglass;
using forms::MsgBox;
using vb::Err;
using vb::resume;

namespace {
constexpr const char* Mark = "Országjel";
constexpr const char* Country = "Ország";

bool blank(const vb::Variant& v) { return vb::nullToText(v).empty(); }

// Deletes every row of a source, walking it from the first.
void deleteAll(forms::DataControl* dc) {
    resume([&] {
        auto& r = dc->rs();
        r.MoveFirst();
        while (!r.Eof()) {
            r.Delete();
            r.MoveNext();
        }
    });
    Err.Clear();
}

// Appends each row of one source to the other with its two columns.
void appendAll(forms::DataControl* from, forms::DataControl* to) {
    resume([&] {
        auto& f = from->rs();
        auto& t = to->rs();
        if (f.RecordCount() < 1) return;
        f.MoveFirst();
        while (!f.Eof()) {
            vb::Variant mark = f.Fields(Mark).Value();
            vb::Variant country = f.Fields(Country).Value();
            t.AddNew();
            t.Fields(Mark).setValue(mark);
            t.Fields(Country).setValue(country);
            t.Update();
            f.MoveNext();
        }
    });
    Err.Clear();
}
}  // namespace

OrszagokFormX::OrszagokFormX() : RecordForm("OrszagokFormX", "Jelzés- és ország törzs") {
    OrszagJel = data("OrszagJel", "betarol.dsb", "Orszagjel");
    OrszagJelArchivData = data("OrszagJelArchivData", "Parameter.dsb", "OrszagjelArchiv");

    auto* root = new QVBoxLayout(this);
    auto* bar = menuBar(root);
    // menu captions that are not given are the buttons'
    OKMentes = menuItem(bar, "OKMentes", "OK-Mentés");
    UjOrsz = menuItem(bar, "UjOrsz", "Új ország");
    OTorol = menuItem(bar, "OTorol", "Töröl");
    QMenu* arch = menu(bar, "OArch", "Archiválás");
    OMent = menuItem(arch, "OMent", "Mentés");
    OTolt = menuItem(bar, "OTolt", "Visszatöltés");
    OSeg = menuItem(bar, "OSeg", "Segédlet");
    Kilepes = menuItem(bar, "Kilepes", "Kilépés");
    AdatAtad = menuItem(bar, "AdatAtad", "Adat átadása");

    Label1 = label("Label1", "Országjel (nagy betű):");
    Text1 = textBox("Text1");
    Label2 = label("Label2", "Ország:");
    Text2 = textBox("Text2");
    Text1->setFixedWidth(90);
    auto* fields = new QHBoxLayout;
    fields->addWidget(Label1);
    fields->addWidget(Text1);
    fields->addSpacing(16);
    fields->addWidget(Label2);
    fields->addWidget(Text2, 1);
    root->addLayout(fields);

    auto* caption = new QLabel("Országok törzs", this);
    caption->setStyleSheet("font-weight: bold");
    root->addWidget(caption);
    DBGrid1 = grid("DBGrid1");
    root->addWidget(DBGrid1, 1);

    Command1 = button("Command1", "OK-Mentés");
    Command2 = button("Command2", "Új ország");
    Command3 = button("Command3", "Kijelölt sor törlése");
    Command4 = button("Command4", "Adatok archiválása");
    Command5 = button("Command5", "Archivumból visszatöltés");
    Command6 = button("Command6", "Segédlet");
    Command7 = button("Command7", "Kilépés");
    Command8 = button("Command8", "Adat átadása");
    auto* buttons = new QGridLayout;
    QPushButton* order[] = {Command1, Command2, Command3, Command4, Command5, Command6, Command8, Command7};
    for (int i = 0; i < 8; ++i) buttons->addWidget(order[i], i / 4, i % 4);
    root->addLayout(buttons);

    OrszagJel->bind(Text1, Mark);
    OrszagJel->bind(Text2, Country);
    DBGrid1->bind(OrszagJel);
    DBGrid1->addColumn(Mark, Mark, 110);
    DBGrid1->addColumn(Country, Country, 320);
    DBGrid1->HeadClick = [this](int c) { DBGrid1_HeadClick(c); };

    forms::onClick(OKMentes, [this] { OKMentes_Click(); });
    forms::onClick(UjOrsz, [this] { UjOrsz_Click(); });
    forms::onClick(OTorol, [this] { OTorol_Click(); });
    forms::onClick(OMent, [this] { OMent_Click(); });
    forms::onClick(OTolt, [this] { OTolt_Click(); });
    forms::onClick(OSeg, [this] { OSeg_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::onClick(AdatAtad, [this] { AdatAtad_Click(); });
    // each button only runs the menu entry beside it
    QPushButton* bs[] = {Command1, Command2, Command3, Command4, Command5, Command6, Command7, Command8};
    QAction* as[] = {OKMentes, UjOrsz, OTorol, OMent, OTolt, OSeg, Kilepes, AdatAtad};
    for (int i = 0; i < 8; ++i) {
        QAction* a = as[i];
        forms::onClick(bs[i], [a] { a->trigger(); });
    }
    // the capitals of the mark are asked for by its label only
    forms::focusColors({Text1, Text2});
    resize(760, 540);
}

void OrszagokFormX::exitHandler() { Kilepes_Click(); }

// Opening: the two transfer texts are emptied; CountryPicked is the caller's to clear.
void OrszagokFormX::Form_Load() {
    Globals::CountryMarkTransfer.clear();
    Globals::CountryNameTransfer.clear();
    arrow();
}

// "OK-Mentés": off the ends the last row; bookmark, last row, back: the pending edit is stored.
void OrszagokFormX::OKMentes_Click() {
    if (count(OrszagJel) < 1) {
        UjOrsz_Click();
        return;
    }
    hourglass();
    Err.Clear();
    resume([&] {
        auto& r = OrszagJel->rs();
        if (r.Bof() || r.Eof()) r.MoveLast();
        vb::Variant mark = r.Bookmark();
        r.MoveLast();
        r.setBookmark(mark);
    });
    if (Err.Number() != 0) {
        Err.Clear();
        Beep();  // a failed save gives only a beep
        resume([&] { OrszagJel->rs().MoveLast(); });
        Err.Clear();
    }
    DBGrid1->Refresh();
    arrow();
}

// "Új ország": blank rows swept without asking, then a row with an empty mark at the end.
void OrszagokFormX::UjOrsz_Click() {
    hourglass();
    sweepBlankRows();
    addRow(OrszagJel, {{Mark, std::string()}});
    DBGrid1->Refresh();
    forms::setFocus(Text1);
    arrow();
}

void OrszagokFormX::OTorol_Click() {
    if (count(OrszagJel) < 1) return;
    arrow();
    if (MsgBox("A kijelölt sor törölhető véglegesen?", vb::vbYesNo, "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS!") != vb::vbYes)
        return;
    hourglass();
    resume([&] {
        auto& r = OrszagJel->rs();
        r.Delete();
        r.MoveNext();
        if (r.Eof() && r.RecordCount() > 0) r.MoveLast();
    });
    Err.Clear();
    DBGrid1->Refresh();
    arrow();
}

// "Archiválás / Mentés": the master appended to the archive; Yes empties the archive first, No
// appends behind what is there.
void OrszagokFormX::OMent_Click() {
    if (count(OrszagJel) < 1) return;
    hourglass();
    if (count(OrszagJelArchivData) > 0) {
        arrow();
        Beep();
        int answer = MsgBox("Törli véglegesen az archív táblában az adatokat?", vb::vbYesNo,
                            "FIGYELEM! VISSZAVONHATATLAN TÖRLÉS vagy adathozzáfűzés!");
        hourglass();
        if (answer == vb::vbYes) deleteAll(OrszagJelArchivData);
    }
    auto& r = OrszagJel->rs();
    vb::Variant mark = resume([&] { return r.Bookmark(); }, vb::Variant(vb::Empty{}));
    Err.Clear();
    appendAll(OrszagJel, OrszagJelArchivData);
    resume([&] { OrszagJelArchivData->rs().MoveLast(); });
    if (!vb::isEmpty(mark)) resume([&] { r.setBookmark(mark); });
    else resume([&] { r.MoveFirst(); });
    Err.Clear();
    DBGrid1->Refresh();
    arrow();
}

// "Visszatöltés": the archive appended to the master; Yes empties the master first. No test for
// doubled marks.
void OrszagokFormX::OTolt_Click() {
    if (count(OrszagJelArchivData) < 1) {
        arrow();
        Beep();
        MsgBox("Nincs archívum! Nem lehet adatot visszatölteni!", vb::vbOKOnly, "FIGYELEM!");
        return;
    }
    hourglass();
    if (count(OrszagJel) > 0) {
        arrow();
        Beep();
        int answer = MsgBox("Törli=Igen és/vagy Hozzáfűzi=Nem a törzstáblában az adatokat?", vb::vbYesNo, "FIGYELEM!");
        hourglass();
        if (answer == vb::vbYes) deleteAll(OrszagJel);
    }
    appendAll(OrszagJelArchivData, OrszagJel);
    resume([&] { OrszagJel->rs().MoveFirst(); });
    Err.Clear();
    DBGrid1->Refresh();
    arrow();
}

void OrszagokFormX::OSeg_Click() { help(); }

// "Kilépés": blank rows swept, both sets closed (a failure beeps), the form unloaded.
void OrszagokFormX::Kilepes_Click() {
    CloseGuard = false;
    hourglass();
    if (count(OrszagJel) > 0) sweepBlankRows();
    Err.Clear();
    bool closed = resume([&] { OrszagJel->rs().Close(); });
    closed = resume([&] { OrszagJelArchivData->rs().Close(); }) && closed;
    if (!closed) Beep();
    Err.Clear();
    arrow();
    Unload();
}

// "Adat átadása": with a current row CountryPicked := 1 and the boxes as shown go over; otherwise
// the texts are emptied. Then the form closes as under "Kilépés".
void OrszagokFormX::AdatAtad_Click() {
    if (onRecord(OrszagJel)) {
        Globals::CountryPicked = int16_t(1);
        Globals::CountryMarkTransfer = forms::text(Text1);
        Globals::CountryNameTransfer = forms::text(Text2);
    } else {
        Globals::CountryMarkTransfer.clear();
        Globals::CountryNameTransfer.clear();
    }
    Kilepes_Click();
}

void OrszagokFormX::DBGrid1_HeadClick(int column) { headerSort(OrszagJel, DBGrid1, column); }

void OrszagokFormX::sweepBlankRows() {
    resume([&] {
        auto& r = OrszagJel->rs();
        r.Requery();
        if (r.RecordCount() < 1) return;
        r.MoveFirst();
        while (!r.Eof()) {
            if (blank(r.Fields(Mark).Value()) || blank(r.Fields(Country).Value())) r.Delete();
            r.MoveNext();
        }
    });
    Err.Clear();
}

}  // namespace partners
