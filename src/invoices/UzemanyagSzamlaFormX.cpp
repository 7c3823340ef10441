#include "invoices/UzemanyagSzamlaFormX.h"

#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace invoices {

using forms::arrow;
using forms::Beep;
using forms::hourglass;
using forms::MsgBox;
using vb::Err;
using vb::resume;

namespace {

constexpr const char* NoRowText = "Nincs adat, vagy nem áll adatsoron!";
constexpr const char* NoRowTitle = "FIGYELEM! Jelöljön ki számla adatsort!";

// The seller's columns 0-12 and the vehicle's 0-16 land at these positions of SZAMLA.
constexpr int SellerFirst = 0, SellerCount = 13;
constexpr int VehicleFirst = 13, VehicleCount = 17;

struct Arrow {
    ~Arrow() { arrow(); }
};

// A label's Click (VB's Label_Click): the left button released over it.
class LabelClick : public QObject {
public:
    LabelClick(QLabel* l, forms::Handler h) : QObject(l), h_(std::move(h)) { l->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (e->type() == QEvent::MouseButtonRelease) {
            auto* m = static_cast<QMouseEvent*>(e);
            auto* w = static_cast<QWidget*>(watched);
            if (m->button() == Qt::LeftButton && w->rect().contains(m->position().toPoint())) forms::run(h_);
        }
        return false;
    }

private:
    forms::Handler h_;
};

QLabel* heading(QWidget* parent, const std::string& text) {
    auto* l = new QLabel(forms::qs(text), parent);
    l->setStyleSheet("font-weight: bold");
    return l;
}

struct GridColumn {
    const char* caption;
    const char* field;
    int width;
};

// The invoice grid: the invoice's own data first, then the copies of the seller and the vehicle;
// every column of the table but VTSZ.
const GridColumn InvoiceColumns[] = {
    {"Sorszám", "SZAMLASOR", 80},        {"Kelte", "SZML_KELTE", 90},
    {"Teljesítés", "TELJDATUM", 90},     {"Esedékes", "ESEDEKES", 90},
    {"Megnevezés", "MEGNEVEZES", 170},   {"Mennyiség", "MENNYISEG", 80},
    {"Egys.", "MENNY_EGYS", 50},         {"Nettó egys.ár", "NETTO_EGYS", 105},
    {"Engedmény %", "ENGEDMENY", 100},    {"Nettó érték", "NETTO_ERTE", 95},
    {"ÁFA %", "AFA", 60},                {"Pénznem", "PENZNEM", 65},
    {"Eladó", "BerNev", 190},            {"FRSZ", "GkFrsz", 80},
    {"Típus", "GkTipus", 120},           {"Megjegyzés 1", "MEGJEGYZ1", 160},
    {"Megjegyzés 2", "MEGJEGYZ2", 160},  {"Megjegyzés 3", "MEGJEGYZ3", 120},
    {"Kiegyenlítve", "KIEGYENLIT", 85},  {"Kiegyenl. dátum", "KIEGYENDAT", 105},
    {"Kiegyenl. összeg", "KIEGYENOSZ", 110}, {"Részkiegyenlítés", "ReszKiegyenlites", 110},
    {"Részkiegy. összeg", "ReszkiegyenlitesTeljOsszeg", 115}, {"Storno", "STORNO", 60},
    {"Számla sorsz.", "SZAMLASORS", 95}, {"ETK", "ETK", 50},
    {"SZJ", "SZJ", 50},                  {"TAM", "TAM", 50},
    {"Akciós", "AKCIOS", 60},            {"Rekord", "Rekord", 60},
    {"Ir.szám", "BerIrszam", 60},        {"Székhely", "BerSzekhely", 110},
    {"Cím", "BerCim", 150},              {"Telefon", "BerTelefon", 90},
    {"Fax", "BerFax", 90},               {"Mobil", "BerMobil", 90},
    {"Adószám", "BerAdoszam", 100},      {"Bankszámla", "BerSzamlaszam", 150},
    {"Eladó azon.", "BerRecordID", 80},  {"Kapcsolattartó", "Kapcsolattartó", 130},
    {"Ország", "BerOrszag", 55},         {"Ügyf. státusz", "UgyfelStatus", 90},
    {"Forg.helyezve", "GkForgalombahelyezve", 95}, {"Hengerűrt.", "Hengerurtartalom", 80},
    {"l/100 km", "FogyasztásLiter100", 70}, {"Vezető", "GkVezetoNeve", 140},
    {"Szerviz nap", "SzervizIntervallumNap", 80}, {"Szerviz km", "SzervizIntervallumKM", 80},
    {"Műszaki vizsga", "MuszakiVizsgaDatum", 100}, {"Zöldkártya", "ZoldkartyaDatum", 90},
    {"Casco/hó", "CascoHaviDija", 80},   {"Kötelező/hó", "KotelezoHaviDija", 85},
    {"Jármű azon.", "recordID", 80},     {"Km-óra", "KilometerOraAllasa", 80},
    {"Önköltség/km", "OnkoltsegKm", 90}, {"Utolsó szerviz", "UtolsoSzervizDatum", 100},
    {"Jelenlegi km", "JelenlegiKmAllas", 90},
};

const GridColumn SellerColumns[] = {
    {"Név", "BerNev", 215},        {"Székhely", "BerSzekhely", 105}, {"Cím", "BerCim", 125},
    {"Adószám", "BerAdoszam", 95}, {"Ország", "BerOrszag", 60},       {"Azonosító", "recordID", 75},
};

const GridColumn VehicleColumns[] = {
    {"FRSZ", "GkFrsz", 85},        {"Típus", "GkTipus", 175},        {"Vezető", "GkVezetoNeve", 150},
    {"l/100 km", "FogyasztásLiter100", 70}, {"Azonosító", "recordID", 70},
};

template <size_t N>
void addColumns(forms::DBGrid* g, const GridColumn (&cols)[N]) {
    for (const auto& c : cols) g->addColumn(c.caption, c.field, c.width);
}

}  // namespace

UzemanyagSzamlaFormX::UzemanyagSzamlaFormX() : RecordForm(Name, "Bejövő számlák nyilvántartása - Kerova") {
    SzamlaData = data("SzamlaData", "Kerova.dsb", "SZAMLA");
    BeraktarData = data("BeraktarData", "Kerova.dsb", "beraktar");
    JarmData = data("JarmData", "Kerova.dsb", "Jarmuvek");

    auto* root = new QVBoxLayout(this);
    auto* bar = menuBar(root);
    QMenu* adat = menu(bar, "SzamlaAdatm", "Adat&műveletek");
    UjSzamla = menuItem(adat, "UjSzamla", "Új számla");
    Torles = menuItem(adat, "Torles", "Számlasor törlése");
    adat->addSeparator();
    AtadasS = menuItem(adat, "AtadasS", "&Adatátadás");
    SzNyom = new QAction("&Nyomtatás (kijelöléstől)", this);
    SzNyom->setObjectName("SzNyom");
    SzamlHelp = new QAction("&Segédlet", this);
    SzamlHelp->setObjectName("SzamlHelp");
    Kilepes = new QAction("&Vissza", this);
    Kilepes->setObjectName("Kilepes");
    bar->addAction(SzNyom);
    bar->addAction(SzamlHelp);
    bar->addAction(Kilepes);

    // ---- Frame1: the invoice's own boxes ----
    Frame1 = frame("Frame1", "Számla adatai:");
    DTPicker1 = datePicker("DTPicker1", Frame1);
    Text1 = textBox("Text1", Frame1);
    Text2 = textBox("Text2", Frame1);
    Text3 = textBox("Text3", Frame1);
    Text4 = textBox("Text4", Frame1);
    Text5 = textBox("Text5", Frame1);
    Text6 = textBox("Text6", Frame1);
    Text7 = textBox("Text7", Frame1);
    Text8 = textBox("Text8", Frame1);
    Text9 = textBox("Text9", Frame1);
    Text10 = textBox("Text10", Frame1);
    Command3 = button("Command3", "OK-Mentés", Frame1);
    Command3->setToolTip("A számlasor rögzítése");

    auto* fields = new QGridLayout(Frame1);
    fields->setHorizontalSpacing(8);
    auto place = [&](int row, int col, QWidget* box, const char* caption, QWidget* second = nullptr) {
        auto* c = label(forms::str(box->objectName()) + "Caption", caption, Frame1);
        c->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        fields->addWidget(c, row, col);
        if (second) {
            auto* pair = new QHBoxLayout;
            pair->addWidget(box, 3);
            pair->addWidget(second, 1);
            fields->addLayout(pair, row, col + 1);
        } else {
            fields->addWidget(box, row, col + 1);
        }
    };
    place(0, 0, DTPicker1, "Számla kelte:");
    place(1, 0, Text1, "Sorszáma:");
    place(2, 0, Text2, "Megnevezés:");
    place(3, 0, Text3, "VTSZ:");
    place(0, 3, Text5, "Mennyiség és mennyiségi egység:", Text6);
    place(1, 3, Text7, "Nettó egys.ár:");
    place(2, 3, Text8, "Engedmény %:");
    place(3, 3, Text9, "Nettó érték:");
    place(0, 6, Text4, "ÁFA %:");
    place(1, 6, Text10, "Pénznem:");
    fields->addWidget(Command3, 3, 7);
    fields->setColumnStretch(1, 3);
    fields->setColumnStretch(4, 2);
    fields->setColumnStretch(7, 1);
    fields->setColumnMinimumWidth(2, 14);
    fields->setColumnMinimumWidth(5, 14);
    DTPicker1->setMinimumWidth(120);
    Text6->setMinimumWidth(50);
    root->addWidget(Frame1);

    // ---- the invoices ----
    auto* invoiceHead = new QHBoxLayout;
    invoiceHead->addWidget(heading(this, "Számlák - Mozgás nyilakkal"));
    invoiceHead->addStretch(1);
    Label1 = label("Label1", "3. Keres (okmány száma szerint)");
    Label1->setStyleSheet("color: #1a4f9c; text-decoration: underline");
    Label1->setCursor(Qt::PointingHandCursor);
    Label1->setToolTip("Kattintson: keresés okmány (számla) számra");
    invoiceHead->addWidget(Label1);
    root->addLayout(invoiceHead);
    DBGrid3 = grid("DBGrid3");
    root->addWidget(DBGrid3, 3);

    // ---- the sellers and the vehicles, side by side ----
    auto* sides = new QHBoxLayout;
    auto side = [&](const char* title, forms::DBGrid* g, QPushButton* b) {
        auto* col = new QVBoxLayout;
        col->addWidget(heading(this, title));
        col->addWidget(g, 1);
        auto* row = new QHBoxLayout;
        b->setMinimumWidth(190);
        row->addWidget(b);
        row->addStretch(1);
        col->addLayout(row);
        sides->addLayout(col, 1);
    };
    DBGrid1 = grid("DBGrid1");
    DBGrid1->setToolTip("Beszállítók-Mozgás");
    Command1 = button("Command1", "1. Keres (név szerint)");
    side("1. Beszállítók-Dupla klikk választ", DBGrid1, Command1);
    DBGrid2 = grid("DBGrid2");
    DBGrid2->setToolTip("Járművek-Mozgás");
    Command2 = button("Command2", "2. Keres (frsz. szerint)");
    side("2. Gépjárművek-Dupla klikk választ", DBGrid2, Command2);
    root->addLayout(sides, 2);

    // ---- bindings ----
    SzamlaData->bind(DTPicker1, "SZML_KELTE");
    SzamlaData->bind(Text1, "SZAMLASOR");
    SzamlaData->bind(Text2, "MEGNEVEZES");
    SzamlaData->bind(Text3, "VTSZ");
    SzamlaData->bind(Text4, "AFA");
    SzamlaData->bind(Text5, "MENNYISEG");
    SzamlaData->bind(Text6, "MENNY_EGYS");
    SzamlaData->bind(Text7, "NETTO_EGYS");
    SzamlaData->bind(Text8, "ENGEDMENY");
    SzamlaData->bind(Text9, "NETTO_ERTE");
    SzamlaData->bind(Text10, "PENZNEM");

    DBGrid3->bind(SzamlaData);
    addColumns(DBGrid3, InvoiceColumns);
    DBGrid1->bind(BeraktarData);
    addColumns(DBGrid1, SellerColumns);
    DBGrid2->bind(JarmData);
    addColumns(DBGrid2, VehicleColumns);
    DBGrid3->HeadClick = [this](int c) { sortBy(SzamlaData, DBGrid3, c); };
    DBGrid1->HeadClick = [this](int c) { sortBy(BeraktarData, DBGrid1, c); };
    DBGrid2->HeadClick = [this](int c) { sortBy(JarmData, DBGrid2, c); };
    forms::onDblClick(DBGrid1, [this] { DBGrid1_DblClick(); });
    forms::onDblClick(DBGrid2, [this] { DBGrid2_DblClick(); });

    forms::onClick(UjSzamla, [this] { UjSzamla_Click(); });
    forms::onClick(Torles, [this] { Torles_Click(); });
    forms::onClick(AtadasS, [this] { AtadasS_Click(); });
    forms::onClick(SzNyom, [this] { SzNyom_Click(); });
    forms::onClick(SzamlHelp, [this] { SzamlHelp_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::onClick(Command1, [this] { Command1_Click(); });
    forms::onClick(Command2, [this] { Command2_Click(); });
    forms::onClick(Command3, [this] { Command3_Click(); });
    new LabelClick(Label1, [this] { Label1_Click(); });

    // The number boxes drop letters with a beep; quantities and values may be negative (a
    // cancelling invoice), the invoice number is whole.
    forms::wholeNumber({Text1});
    forms::decimal({Text4, Text8});
    forms::signedDecimal({Text5, Text7, Text9});
    forms::focusColors({Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10});

    QWidget* order[] = {DTPicker1, Text1, Text2, Text3, Text5, Text6, Text7, Text8, Text9, Text4, Text10, Command3};
    for (size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);

    resize(1280, 860);
}

void UzemanyagSzamlaFormX::exitHandler() { Kilepes_Click(); }

// Opens on the newest invoice; the frame shows only when there are invoices.
void UzemanyagSzamlaFormX::Form_Activate() {
    hourglass();
    Arrow atEnd;
    if (count(SzamlaData) > 0) resume([&] { SzamlaData->rs().MoveLast(); });
    Err.Clear();
    showFrame();
}

void UzemanyagSzamlaFormX::showFrame() { Frame1->setVisible(count(SzamlaData) > 0); }

void UzemanyagSzamlaFormX::noRowMessage() {
    arrow();
    Beep();
    MsgBox(NoRowText, vb::vbExclamation, NoRowTitle);
}

// "Új számla": an empty row stored at once, made current. Its date box shows today, which is
// stored with the row's first move or save.
void UzemanyagSzamlaFormX::UjSzamla_Click() {
    hourglass();
    Arrow atEnd;
    Err.Clear();
    bool added = resume([&] {
        auto& r = SzamlaData->rs();
        r.AddNew();
        r.Update();
    });
    if (!added) {
        Err.Clear();
        resume([&] { SzamlaData->rs().CancelUpdate(); });
        Err.Clear();
        Frame1->setVisible(false);
        arrow();
        Beep();
        MsgBox("Lépjen ki és kérjen új számla adatot!", vb::vbCritical, "FIGYELEM! Meghatározhatatlan hiba (244)!");
        return;
    }
    // the move stores what was typed into the previous row; should that fail, the new row is
    // still reached so that the clerk sees it
    if (!resume([&] { SzamlaData->rs().MoveLast(); })) {
        Err.Clear();
        Beep();
        return;
    }
    Err.Clear();
    Frame1->setVisible(true);
    forms::setPickerDate(DTPicker1, vb::clock::today());
    forms::setFocus(Text1);
}

// Command3: the typed values into the current row (Edit, Update), then back to it.
void UzemanyagSzamlaFormX::Command3_Click() {
    if (count(SzamlaData) < 1) return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    auto& r = SzamlaData->rs();
    vb::Variant mark;
    if (!resume([&] { mark = r.Bookmark(); })) {
        Err.Clear();
        Beep();
        return;
    }
    // A value a column can't take (a pasted letter, a number out of range) fails the whole write:
    // the row keeps what it had, the box keeps the text for correcting.
    if (!resume([&] { SzamlaData->writeBound(); })) {
        Err.Clear();
        Beep();
        return;
    }
    if (!resume([&] {
            r.Edit();
            r.Update();
        })) {
        Err.Clear();
        resume([&] { r.CancelUpdate(); });
        Err.Clear();
        Beep();
    }
    if (!resume([&] { r.setBookmark(mark); })) Beep();
    Err.Clear();
    DBGrid3->Refresh();
}

void UzemanyagSzamlaFormX::DBGrid1_DblClick() { copyInto(BeraktarData, SellerFirst, SellerCount); }

void UzemanyagSzamlaFormX::DBGrid2_DblClick() { copyInto(JarmData, VehicleFirst, VehicleCount); }

void UzemanyagSzamlaFormX::copyInto(forms::DataControl* from, int first, int count) {
    if (RecordForm::count(SzamlaData) < 1 || RecordForm::count(from) < 1) return;
    arrow();
    Beep();
    if (MsgBox("Helyettesíthető a számla adat?", vb::vbYesNo + vb::vbQuestion, "Adatbevitel-korrekció") != vb::vbYes)
        return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    // Without a current row on either side there is nothing to copy from or into.
    if (!onRecord(SzamlaData) || !onRecord(from)) {
        Beep();
        return;
    }
    auto& r = SzamlaData->rs();
    auto& src = from->rs();
    vb::Variant mark;
    // what was typed into the invoice's boxes is stored first, so that it doesn't meet the copy
    if (!resume([&] { SzamlaData->writeBound(); })) {
        Err.Clear();
        Beep();
    }
    if (!resume([&] { mark = r.Bookmark(); })) {
        Err.Clear();
        Beep();
    }
    if (!resume([&] { r.Edit(); })) {
        Err.Clear();
        Beep();
        return;  // the row is held by another copy of the program: nothing is written
    }
    for (int i = 0; i < count; ++i) {
        if (!resume([&] { r.Fields(first + i).setValue(src.Fields(i).Value()); })) {
            Err.Clear();
            Beep();
        }
    }
    if (!resume([&] { r.Update(); })) {
        Err.Clear();
        resume([&] { r.CancelUpdate(); });
        Err.Clear();
        Beep();
    }
    if (!resume([&] { r.setBookmark(mark); })) {
        Err.Clear();
        Beep();
    }
    Err.Clear();
    DBGrid3->Refresh();
}

// "Adatátadás": the net unit price as the box shows it. A box that holds no number hands nothing
// over (the conversion fails and is passed over): the opener's slot keeps its 0.
void UzemanyagSzamlaFormX::AtadasS_Click() {
    if (count(SzamlaData) < 1 || !onRecord(SzamlaData)) {
        noRowMessage();
        return;
    }
    Err.Clear();
    std::string price = forms::text(Text7);
    resume([&] { Globals::FuelPriceTransfer = vb::CDbl(vb::Variant(price)); });
    Err.Clear();
    Kilepes_Click();
}

// "Számlasor törlése": the current row after the question. At the end of the table the last row
// becomes current, so that the boxes always stand on a row.
void UzemanyagSzamlaFormX::Torles_Click() {
    if (count(SzamlaData) < 1 || !onRecord(SzamlaData)) {
        noRowMessage();
        return;
    }
    arrow();
    Beep();
    if (MsgBox("Törölhető az adat visszavonhatatlanul?", vb::vbYesNo + vb::vbQuestion, "FIGYELEM! Végleges törlés!") !=
        vb::vbYes)
        return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    auto& r = SzamlaData->rs();
    if (!resume([&] { r.Delete(); })) {
        Err.Clear();
        Beep();  // held by another copy of the program: the row stays
        return;
    }
    resume([&] { r.MoveNext(); });
    Err.Clear();
    if (resume([&] { return r.Eof(); }, false) && count(SzamlaData) > 0) resume([&] { r.MoveLast(); });
    Err.Clear();
    if (count(SzamlaData) < 1) Frame1->setVisible(false);
    DBGrid3->Refresh();
}

// Printing of invoices is switched off: only the warning.
void UzemanyagSzamlaFormX::SzNyom_Click() {
    if (count(SzamlaData) < 1) return;
    arrow();
    Beep();
    MsgBox("FEJLESZTÉS ALATT! JELENLEG A MODUL NEM MŰKÖDIK, NEM HASZNÁLHATÓ!", vb::vbCritical,
           "FIGYELEM! Működés csak felhasználói felelősségre!");
}

void UzemanyagSzamlaFormX::SzamlHelp_Click() { help(); }

// "Vissza": the invoices' set is closed (what the boxes hold is stored by the close; an error is
// passed over), and the form unloads.
void UzemanyagSzamlaFormX::Kilepes_Click() {
    CloseGuard = false;
    closeAll({SzamlaData});
    arrow();
    Unload();
}

void UzemanyagSzamlaFormX::searchOnward(forms::DataControl* dc, const std::string& column, const std::string& prompt,
                                        const std::string& title, const std::string& notFound,
                                        const std::string& notFoundTitle) {
    if (count(dc) < 1) return;
    arrow();
    std::string answer = forms::InputBox(prompt, title, "");
    if (answer.empty()) return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    auto& r = dc->rs();
    std::string filter = "[" + column + "] like \"" + answer + "*\"";
    resume([&] { r.FindNext(filter); });
    Err.Clear();
    if (r.NoMatch()) {
        arrow();
        Beep();
        MsgBox(notFound, vb::vbExclamation, notFoundTitle);
        resume([&] { r.MoveFirst(); });
        Err.Clear();
    }
}

void UzemanyagSzamlaFormX::Command1_Click() {
    searchOnward(BeraktarData, "BerNev", "Kérem a beszállító (eladó) nevét:", "Keresés megnevezésre",
                 "Nincs ilyen név! Keressen újra!", "FIGYELEM! Keresés megnevezésre sikertelen!");
}

void UzemanyagSzamlaFormX::Command2_Click() {
    searchOnward(JarmData, "GkFrsz", "Kérem a jármű forgalmi rendszámát:", "Keresés rendszámra",
                 "Nincs ilyen rendszám! Keressen újra!", "Keresés rendszámra");
}

// Label1: the invoice by its number, from the first row. The number goes into the criterion as
// typed: a text that is no number fails the find, which then counts as no match.
void UzemanyagSzamlaFormX::Label1_Click() {
    if (count(SzamlaData) < 1) return;
    arrow();
    std::string answer = forms::InputBox("Kérem az okmány számát:", "Keresés okmány számra", "");
    if (answer.empty()) return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    auto& r = SzamlaData->rs();
    resume([&] { r.FindFirst("[SZAMLASOR] = " + answer); });
    Err.Clear();
    if (r.NoMatch()) {
        arrow();
        Beep();
        MsgBox("Nincs ilyen okmány! Keressen újra, vagy válasszon a listából!", vb::vbExclamation, "FIGYELEM!");
        resume([&] { r.MoveFirst(); });
        Err.Clear();
    }
}

// A heading click: the source sorted by "[field]", a second click on the same column descending.
// What the boxes hold is stored first; a value that can't be stored keeps the order as it is.
void UzemanyagSzamlaFormX::sortBy(forms::DataControl* dc, forms::DBGrid* g, int column) {
    if (column < 0 || column >= g->columnCount()) return;
    hourglass();
    Arrow atEnd;
    Err.Clear();
    if (!resume([&] { dc->writeBound(); })) {
        Err.Clear();
        Beep();
        return;
    }
    resume([&] {
        auto& r = dc->rs();
        std::string key = "[" + g->DataField(column) + "]";
        std::string sort = r.Sort() == key ? key + " DESC" : key;
        r.setSort(sort);
        auto sorted = r.OpenRecordset();
        sorted->setSort(sort);
        dc->setRecordset(std::move(sorted));
    });
    Err.Clear();
    g->Refresh();
}

}  // namespace invoices
