#include "partners/BeraktarozokFormX.h"

#include <QGridLayout>
#include <algorithm>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/layout.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "partners/print.h"
#include "vb/constants.h"
#include "vb/conv.h"
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
constexpr const char* NewFailText = "Lépjen ki a MÉGSE gombbal a főmenüre!";
constexpr const char* NewFailTitle = "FIGYELEM! HIBA!";
constexpr const char* CheckText = "Kéri az adatok teljes ellenőrzését?";
constexpr const char* CheckFailText = "Az adatok ellenőrzése nem végezhető el mezőhiba miatt!";
constexpr const char* CheckFailTitle = "FIGYELEM! Később javítsa vagy törölje a hibás tétel sorát!";

}  // namespace

BeraktarozokFormX::BeraktarozokFormX() : RecordForm("BeraktarozokFormX", "Beszállítók, partnerek adatai törzs - Kerova") {
    // the table in its own order: a new identifier is the last row's plus 1 in that order
    Beraktarozok = data("Beraktarozok", "Kerova.dsb", "beraktar");
    Data1 = data("Data1", "Kerova.dsb", "Orszagjel");
    Regisztralas = data("Regisztrálás", "Regiszt.dsb", "Regisztrálás");

    auto* root = new QVBoxLayout(this);
    auto* bar = menuBar(root);
    QMenu* adatkez = menu(bar, "BeszAdatkez", "&Adatkezelés");
    UjAdat = menuItem(adatkez, "UjAdat", "Új beszállító");
    BeszallTorol = menuItem(adatkez, "BeszallTorol", "Törlés");
    BeszNyom = menuItem(adatkez, "BeszNyom", "Nyomtatás");
    adatkez->addSeparator();
    Kilepes = menuItem(adatkez, "Kilepes", "Mentés-Kilépés");

    Text1 = textBox("Text1");
    Text2 = textBox("Text2");
    Text3 = textBox("Text3");
    Text4 = textBox("Text4");
    Text5 = textBox("Text5");
    Text6 = textBox("Text6");
    Text7 = textBox("Text7");
    Text8 = textBox("Text8");
    Text9 = textBox("Text9");
    Text10 = textBox("Text10");
    Text11 = textBox("Text11");
    Text12 = textBox("Text12");
    Label14 = label("Label14", "");
    Label14->setFrameShape(QFrame::StyledPanel);
    Label14->setProperty(forms::LabelWritesBack, true);
    Label14->setFixedWidth(70);
    Label14->setMinimumHeight(Text1->sizeHint().height());

    struct Field {
        const char* caption;
        QWidget* box;
    };
    // in the order of the columns; two columns of captioned fields
    const Field fields[] = {{"Beszállító (cég) neve:", Text2}, {"Postai irányítószám:", Text3},
                            {"Székhely:", Text4},            {"Cím:", Text5},
                            {"Telefon:", Text6},             {"FAX:", Text7},
                            {"Mobil:", Text8},               {"Adószám:", Text9},
                            {"Banki számlaszám:", Text10},   {"Azonosító sorszám:", Text1},
                            {"Kapcsolattartó neve:", Text11}, {"Ország jelzése:", Label14},
                            {"Ügyféli státusz:", Text12}};
    auto* fieldGrid = new QGridLayout;
    fieldGrid->setHorizontalSpacing(10);
    int n = 0;
    for (const auto& f : fields) {
        int row = n % 7, col = (n / 7) * 3;
        auto* caption = label(forms::str(f.box->objectName()) + "Caption", f.caption);
        caption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        fieldGrid->addWidget(caption, row, col);
        fieldGrid->addWidget(f.box, row, col + 1, f.box == Label14 ? Qt::Alignment(Qt::AlignLeft) : Qt::Alignment());
        ++n;
    }
    fieldGrid->setColumnStretch(1, 1);
    fieldGrid->setColumnStretch(4, 1);
    fieldGrid->setColumnMinimumWidth(2, 16);
    root->addLayout(fieldGrid);

    ProgressBar1 = new QProgressBar(this);
    ProgressBar1->setObjectName("ProgressBar1");
    ProgressBar1->setRange(0, 100);
    ProgressBar1->setValue(0);
    ProgressBar1->setTextVisible(false);
    ProgressBar1->setMaximumHeight(12);
    root->addWidget(ProgressBar1);

    root->addWidget(forms::heading(this, "Mozgás a táblában"));
    DBGrid1 = grid("DBGrid1");
    root->addWidget(DBGrid1, 3);
    root->addWidget(forms::heading(this, "Data1-országjel"));
    DBGrid2 = grid("DBGrid2");
    DBGrid2->setToolTip("Dupla kattintással válasszon!");
    root->addWidget(DBGrid2, 1);

    keres = button("keres", "Keresés");
    Command1 = button("Command1", "Ország");
    Command4 = button("Command4", "Rögzítés");
    megse = button("megse", "Mégse");
    root->addLayout(forms::buttonRow({keres, Command1, Command4, megse}));

    const char* columns[][2] = {{"BerNev", "BerNev"}, {"BerIrszam", "BerIrszam"}, {"BerSzekhely", "BerSzekhely"},
                                {"BerCim", "BerCim"}, {"BerTelefon", "BerTelefon"}, {"BerFax", "BerFax"},
                                {"BerMobil", "BerMobil"}, {"BerAdoszam", "BerAdoszam"},
                                {"BerSzamlaszam", "BerSzamlaszam"}, {"recordID", "recordID"},
                                {"Kapcsolattartó", "Kapcsolattartó"}, {"BerOrszag", "BerOrszag"},
                                {"UgyfelStatus", "UgyfelStatus"}};
    QLineEdit* boxes[] = {Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text1, Text11};
    for (int i = 0; i < 11; ++i) Beraktarozok->bind(boxes[i], columns[i][1]);
    Beraktarozok->bind(Label14, "BerOrszag");
    Beraktarozok->bind(Text12, "UgyfelStatus");
    logKey = new QLabel(this);
    logKey->hide();
    Beraktarozok->bind(logKey, "recordID");

    DBGrid1->bind(Beraktarozok);
    for (auto& c : columns) DBGrid1->addColumn(c[0], c[1], std::string(c[1]) == "BerNev" ? 240 : 0);
    DBGrid1->setAllowUpdate(true);
    DBGrid1->HeadClick = [this](int c) { DBGrid1_HeadClick(c); };
    DBGrid2->bind(Data1);
    DBGrid2->addColumn("Országjel", "Országjel", 90);
    DBGrid2->addColumn("Ország", "Ország", 240);
    forms::onDblClick(DBGrid2, [this] { DBGrid2_DblClick(); });

    forms::onClick(UjAdat, [this] { UjAdat_Click(); });
    forms::onClick(BeszallTorol, [this] { BeszallTorol_Click(); });
    forms::onClick(BeszNyom, [this] { BeszNyom_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::onClick(keres, [this] { keres_Click(); });
    forms::onClick(Command1, [this] { Command1_Click(); });
    forms::onClick(Command4, [this] { Command4_Click(); });
    forms::onClick(megse, [this] { megse_Click(); });

    // phone and tax numbers are stored without separators: digits and backspace only
    forms::wholeNumber({Text3, Text6, Text7, Text8, Text9, Text10, Text12});
    forms::focusColors({Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12});

    resize(1100, 760);
}

void BeraktarozokFormX::exitHandler() { Kilepes_Click(); }

// An empty table gets its first row with recordID 1, else the form opens on the last row.
void BeraktarozokFormX::Form_Activate() {
    hourglass();
    openOnLast(Beraktarozok, "recordID", Text2);
    DBGrid1->Refresh();
    DBGrid2->Refresh();
    arrow();
}

// "Új beszállító": the last row's recordID + 1 after a requery (1 on an empty table); a row with
// that key alone; found again after the requery.
void BeraktarozokFormX::UjAdat_Click() {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    Err.Clear();
    double id = 1;
    resume([&] {
        auto& r = Beraktarozok->rs();
        if (r.RecordCount() > 0) {
            r.MoveFirst();
            r.Requery();
            r.MoveLast();
            id = vb::nullToDouble(r.Fields("recordID").Value()) + 1;
        }
    });
    if (Err.Number() != 0) {
        Err.Clear();
        arrow();
        Beep();
        MsgBox(NewFailText, vb::vbCritical, NewFailTitle);
        return;
    }
    resume([&] {
        auto& r = Beraktarozok->rs();
        r.AddNew();
        r.Fields("recordID").setValue(id);
        r.Update();
        r.Requery();
        r.MoveFirst();
    });
    Err.Clear();
    DBGrid1->Refresh();
    std::string filter = "[recordID] = " + vb::CStr(id);
    bool found = resume([&] {
        auto& r = Beraktarozok->rs();
        r.FindFirst(filter);
        return !r.NoMatch();
    }, false);
    Err.Clear();
    if (!found) {
        Beep();
        return;
    }
    ProgressBar1->setValue(ProgressBar1->minimum());
    forms::setFocus(Text2);
    LogAction(Regisztralas, "Új beszállító felvitele", logKey);
}

// "Törlés": the standard delete with its lock test; no test of trips or invoices naming the
// partner (they hold copies of the name). With the last row gone a new one is made.
void BeraktarozokFormX::BeszallTorol_Click() {
    if (deleteRecord(Beraktarozok, "Biztosan törli véglegesen az adatot?", "FIGYELEM! Végleges törlés!", nullptr,
                     {}, [this] { UjAdat_Click(); }))
        DBGrid1->Refresh();
}

void BeraktarozokFormX::BeszNyom_Click() {
    printPartners(Beraktarozok);
    DBGrid1->Refresh();
}

// "Mentés-Kilépés": refresh (which stores the pending edit), the last row, the grid; then the
// full check in which a null name is no bad row.
void BeraktarozokFormX::Kilepes_Click() {
    CloseGuard = false;
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    Err.Clear();
    resume([&] { Beraktarozok->Refresh(); });
    if (Err.Number() != 0) {
        Err.Clear();
        arrow();
        Beep();
        MsgBox(NewFailText, vb::vbCritical, NewFailTitle);
        return;  // the user leaves with "Mégse"
    }
    resume([&] { Beraktarozok->rs().MoveLast(); });
    Err.Clear();
    DBGrid1->Refresh();
    if (count(Beraktarozok) > 0) {
        arrow();
        Beep();
        if (MsgBox(CheckText, vb::vbYesNo + vb::vbQuestion, "Ellenőrzés...") == vb::vbYes) fullCheck(false);
    }
    closeAndUnload();
}

// "Mégse": the full check in which a null name is bad too. No edit is cancelled: the bound boxes
// are stored by the walk or the closing.
void BeraktarozokFormX::megse_Click() {
    CloseGuard = false;
    if (count(Beraktarozok) > 0) {
        arrow();
        if (MsgBox(CheckText, vb::vbYesNo, "Ellenőrzés") == vb::vbYes) fullCheck(true);
    }
    closeAndUnload();
}

void BeraktarozokFormX::fullCheck(bool nullIsBad) {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    DBGrid1->setAllowUpdate(false);
    db::Recordset* r = Beraktarozok->Recordset();
    if (!r || r->closed()) return;
    ProgressBar1->setRange(0, std::max(1, count(Beraktarozok)));
    ProgressBar1->setValue(0);
    Err.Clear();
    resume([&] { r->MoveFirst(); });
    if (Err.Number() != 0) {
        Err.Clear();
        arrow();
        Beep();
        MsgBox(CheckFailText, vb::vbCritical, CheckFailTitle);
        return;
    }
    while (!resume([&] { return r->Eof(); }, true)) {
        ProgressBar1->setValue(std::min(ProgressBar1->maximum(), ProgressBar1->value() + 1));
        vb::Variant name = resume([&] { return r->Fields("BerNev").Value(); }, vb::Variant(std::string("?")));
        Err.Clear();
        auto* text = std::get_if<std::string>(&name);
        if ((text && text->empty()) || (nullIsBad && vb::isNull(name))) {
            if (!resume([&] { r->Delete(); })) {
                Err.Clear();
                Beep();
            }
        }
        if (!resume([&] { r->MoveNext(); })) {
            Err.Clear();
            break;  // a move that fails would walk on the spot for ever
        }
    }
    Err.Clear();
    DBGrid1->Refresh();
}

void BeraktarozokFormX::closeAndUnload() {
    closeAll({Beraktarozok, Regisztralas});
    arrow();
    Unload();
}

void BeraktarozokFormX::keres_Click() {
    standardSearch(Beraktarozok, "BerNev", "Kérem a beraktározó nevét:", "Keresés (cég)névre",
                   "Nincs ilyen beraktározó! Keressen újra, vagy válasszon a listából!");
}

void BeraktarozokFormX::Command1_Click() {
    standardSearch(Data1, "Ország", "Kérem az ország nevét:", "Keresés országra",
                   "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!");
}

// The lock test: Edit takes the row's lock (another copy holding it fails), then the pending edit
// of the bound boxes is stored.
void BeraktarozokFormX::Command4_Click() {
    if (count(Beraktarozok) < 1) return;
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    Err.Clear();
    resume([&] {
        auto& r = Beraktarozok->rs();
        r.Edit();
        r.CancelUpdate();
        Beraktarozok->writeBound();
    });
    if (Err.Number() != 0) {
        Err.Clear();
        arrow();
        Beep();
        MsgBox("Az adat jelenleg zárolt! Próbálja újra!", vb::vbExclamation, "Adatzárolás!");
    }
}

// A double click in the country grid: the row's mark into Label14 and so into BerOrszag.
void BeraktarozokFormX::DBGrid2_DblClick() {
    if (count(Data1) < 1) return;
    Err.Clear();
    vb::Variant mark = resume([&] { return Data1->rs().Fields("Országjel").Value(); }, vb::Variant(vb::Null{}));
    if (Err.Number() != 0) {
        Err.Clear();
        return;
    }
    std::string text = vb::nullToText(mark);
    forms::setText(Label14, text);  // stored with the row at the next move, as a bound label
}

void BeraktarozokFormX::DBGrid1_HeadClick(int column) { headerSort(Beraktarozok, DBGrid1, column); }

}  // namespace partners
