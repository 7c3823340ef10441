#include "trips/tripform.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "db/database.h"
#include "print/report.h"
#include "trips/common.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"
#include "vb/text.h"

namespace trips {

using forms::arrow;
using forms::hourglass;
using forms::onClick;
using forms::setText;
using forms::text;
using vb::Err;
using vb::resume;

namespace {

struct ArrowAtEnd {
    ~ArrowAtEnd() { arrow(); }
};

template <class F>
bool quietly(F&& f) {
    bool ok = resume(std::forward<F>(f));
    Err.Clear();
    return ok;
}

bool blank(const std::string& s) { return s.find_first_not_of(' ') == std::string::npos; }

// A field of the current row, Null when there is none.
vb::Variant field(forms::DataControl* dc, const std::string& column) {
    vb::Variant v = resume([&] { return dc->rs().get(column); }, vb::Variant(vb::Null{}));
    Err.Clear();
    return v;
}

std::string fieldText(forms::DataControl* dc, const std::string& column) {
    vb::Variant v = field(dc, column);
    std::string s = resume([&] { return vb::nullToText(v); }, std::string());
    Err.Clear();
    return s;
}

bool pastEnd(forms::DataControl* dc) {
    bool eof = resume([&] { return dc->rs().Eof(); }, true);
    Err.Clear();
    return eof;
}

// A click on a label (VB's Label_Click).
class LabelClick : public QObject {
public:
    LabelClick(QWidget* label, std::function<void()> h) : QObject(label), h_(std::move(h)) {
        label->installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::MouseButtonRelease) forms::run(h_);
        return false;
    }

private:
    std::function<void()> h_;
};

vb::Date pickerDate(QDateEdit* d) {
    QDate q = d->date();
    return vb::DateSerial(q.year(), q.month(), q.day());
}

// The key filter of the time and number boxes: digits, the comma, Backspace.
void decimalKey(int& k) { forms::filterKey(k, ","); }

// The grid's cell editor with the key filter of the date, time and distance columns.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& o, const QModelIndex& i) const override {
        QWidget* w = QStyledItemDelegate::createEditor(parent, o, i);
        int c = i.column();
        if (c == 3 || c == 5 || c == 7 || c == 8) forms::onKeyPress(w, decimalKey);
        return w;
    }
};

}  // namespace

UtNyilvantartasFormX::UtNyilvantartasFormX() : RecordForm(Name, Title) {
    UtakData = data("UtakData", "Kerova.dsb", AllSource);
    GkData = data("GkData", "Kerova.dsb", "Jarmuvek");
    GkVezetoData = data("GkVezetoData", "Kerova.dsb", "Vezetok");
    TavData = data("TavData", "Kerova.dsb", "UtakTavolsag");
    PartnerData = data("PartnerData", "Kerova.dsb", "beraktar");
    MegnevezesData = data("MegnevezesData", "Kerova.dsb", "MegnevezesTorzs");
    SumData = data("SumData", "Kerova.dsb", " select sum(TávolságKm) from Utak");
    NapidijData = data("NapidijData", "Kerova.dsb", "select * from Utak order by Dátum Desc");
    // Only the print reads NyomData, and it sets its statement first: it opens then, not with the
    // form (a projection of every trip costs a tenth of a second on 200 000 rows).
    NyomData = data("NyomData", "Kerova.dsb", "");
    build();
    wire();
}

void UtNyilvantartasFormX::build() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 4, 8, 8);
    auto* bar = menuBar(outer);
    OKMent = menuItem(bar, "OKMent", "&OK-Mentés");
    UjUt = menuItem(bar, "UjUt", "&Új út");
    MasikJarmu = menuItem(bar, "MasikJarmu", "&Másik csoportazonosító");
    Nyomtatas = menuItem(bar, "Nyomtatas", "&Nyomtatás");
    Torol = menuItem(bar, "Torol", "T&öröl");
    auto* kieg = menu(bar, "KiegAdat", "&Kiegészítő adatok");
    SzallSzem = menuItem(kieg, "SzallSzem", "Szállított személyek");
    CsatoltOkm = menuItem(kieg, "CsatoltOkm", "Csatolt okmányok");
    auto* torzsek = menu(bar, "Torzsek", "&Törzsek");
    Jarmuvek = menuItem(torzsek, "Jarmuvek", "Járművek");
    Jarmuvezetok = menuItem(torzsek, "Jarmuvezetok", "Járművezetők");
    UtakTavok = menuItem(torzsek, "UtakTavok", "Utak távolsága");
    Megnevezesek = menuItem(torzsek, "Megnevezesek", "Megnevezések");
    PartnereK = menuItem(torzsek, "PartnereK", "Partnerek");
    UzemanyagArTorzs = menuItem(torzsek, "UzemanyagArTorzs", "Üzemanyag egységára számlából");
    Segedlet = menuItem(bar, "Segedlet", "&Segédlet");
    Kilepes = menuItem(bar, "Kilepes", "&Vissza");

    auto cap = [this](const std::string& name, const std::string& caption) {
        auto* l = label(name, caption);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return l;
    };
    auto numberBox = [this](const std::string& name, int width) {
        auto* b = textBox(name);
        b->setMaximumWidth(width);
        b->setAlignment(Qt::AlignRight);
        return b;
    };

    // Entry boxes in the order of entry, with the computed figures beside them.
    auto* top = new QHBoxLayout;
    auto* entry = frame("Frame1", "Út adatai");
    auto* g = new QGridLayout(entry);
    g->setHorizontalSpacing(6);
    g->setVerticalSpacing(4);
    DTPicker1 = datePicker("DTPicker1");
    Command1 = button("Command1", "Plusz 1 nap");
    Text1 = textBox("Text1");
    Text2 = textBox("Text2");
    Text3 = textBox("Text3");
    Text4 = textBox("Text4");
    Text5 = textBox("Text5");
    Text6 = numberBox("Text6", 110);
    Text9 = textBox("Text9");
    Combo1 = comboBox("Combo1");
    Text14 = textBox("Text14");
    Text15 = textBox("Text15");
    MaskEdBox1 = numberBox("MaskEdBox1", 80);
    MaskEdBox2 = numberBox("MaskEdBox2", 80);
    MaskEdBox3 = numberBox("MaskEdBox3", 80);
    Text10 = numberBox("Text10", 110);
    Text11 = textBox("Text11");
    Text11->setMaximumWidth(80);
    Label24 = label("Label24", "");
    Label24->setMinimumWidth(50);
    Text1->setMaximumWidth(120);
    int r = 0;
    g->addWidget(cap("Label1", "1. Dátum:"), r, 0);
    auto* dateRow = new QHBoxLayout;
    dateRow->addWidget(DTPicker1);
    dateRow->addWidget(Command1);
    dateRow->addStretch(1);
    g->addLayout(dateRow, r++, 1, 1, 3);
    g->addWidget(cap("Label2", "2. Jármű kiválasztása:"), r, 0);
    auto* vehicleRow = new QHBoxLayout;
    vehicleRow->addWidget(Text1);
    vehicleRow->addWidget(Text2, 1);
    vehicleRow->addWidget(label("Label23", "Fogyasztás (l/100 km):"));
    vehicleRow->addWidget(Label24);
    g->addLayout(vehicleRow, r++, 1, 1, 3);
    g->addWidget(cap("Label3", "3. Vezető kiválasztása:"), r, 0);
    g->addWidget(Text3, r++, 1, 1, 3);
    g->addWidget(cap("Label4", "4.          Honnan:"), r, 0);
    g->addWidget(Text4, r++, 1, 1, 3);
    g->addWidget(cap("Label5", "5.             Hová:"), r, 0);
    g->addWidget(Text5, r++, 1, 1, 3);
    g->addWidget(cap("Label6", "6. Távolság (km):"), r, 0);
    g->addWidget(Text6, r++, 1);
    g->addWidget(cap("Label7", "7.   Megnevezés:"), r, 0);
    g->addWidget(Text9, r++, 1, 1, 3);
    g->addWidget(cap("Label8", "Megnevezés választása:"), r, 0);
    g->addWidget(Combo1, r++, 1, 1, 3);
    g->addWidget(cap("Label9", "8. Partner neve:"), r, 0);
    g->addWidget(Text14, r++, 1, 1, 3);
    g->addWidget(cap("Label10", "9. Partner címe:"), r, 0);
    g->addWidget(Text15, r++, 1, 1, 3);
    g->addWidget(cap("Label11", "Indulás ideje:"), r, 0);
    auto* timeRow = new QHBoxLayout;
    timeRow->addWidget(MaskEdBox1);
    timeRow->addWidget(label("Label13", "Érkezés ideje:"));
    timeRow->addWidget(MaskEdBox2);
    timeRow->addWidget(label("Label15", "Összesen idő:"));
    timeRow->addWidget(MaskEdBox3);
    timeRow->addStretch(1);
    g->addLayout(timeRow, r++, 1, 1, 3);
    g->addWidget(cap("Label16", "Áru tömege:"), r, 0);
    auto* loadRow = new QHBoxLayout;
    loadRow->addWidget(Text10);
    loadRow->addWidget(label("Label17", "Mennyiségi egység:"));
    loadRow->addWidget(Text11);
    loadRow->addStretch(1);
    g->addLayout(loadRow, r++, 1, 1, 3);
    g->setColumnStretch(1, 1);
    top->addWidget(entry, 3);

    auto* figures = frame("Frame2", "Számított adatok");
    auto* f = new QGridLayout(figures);
    f->setHorizontalSpacing(6);
    f->setVerticalSpacing(4);
    Text16 = numberBox("Text16", 130);
    Text17 = numberBox("Text17", 130);
    Text18 = numberBox("Text18", 130);
    Text19 = numberBox("Text19", 130);
    Text20 = numberBox("Text20", 130);
    Label28 = label("Label28", "");
    Text23 = numberBox("Text23", 130);
    Text24 = textBox("Text24");
    Text24->setMaximumWidth(70);
    Check1 = checkBox("Check1", "Napidíjas");
    DTPicker3 = datePicker("DTPicker3");
    MaskEdBox4 = numberBox("MaskEdBox4", 80);
    Label33 = label("Label33", "");
    Label34 = label("Label34", "");
    Label35 = label("Label35", "");
    Label12 = label("Label12", "");
    Label14 = label("Label14", "");
    Label29 = label("Label29", "Módosítás");
    Command5 = button("Command5", "Üzemanyag egységára számlákból");
    for (QLabel* l : {Label28, Label33, Label12, Label14}) l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    QFont bold = Label29->font();
    bold.setBold(true);
    Label29->setFont(bold);
    Label14->setFont(bold);
    r = 0;
    f->addWidget(cap("Label19", "Fogyasztott liter:"), r, 0);
    f->addWidget(Text16, r++, 1);
    f->addWidget(cap("Label20", "Üzemanyag egységár:"), r, 0);
    f->addWidget(Text17, r, 1);
    f->addWidget(Command5, r++, 2, 1, 2);
    f->addWidget(cap("Label21", "Üzemanyagköltség:"), r, 0);
    f->addWidget(Text18, r++, 1);
    f->addWidget(cap("Label22", "Kezdő km:"), r, 0);
    f->addWidget(Text19, r, 1);
    f->addWidget(cap("Label25", "Záró km:"), r, 2);
    f->addWidget(Text20, r++, 3);
    f->addWidget(cap("Label26", "Megtett km:"), r, 0);
    f->addWidget(Label28, r++, 1);
    f->addWidget(Check1, r, 0, Qt::AlignRight);
    f->addWidget(cap("Label27", "Napidíj:"), r, 1);
    auto* allowanceRow = new QHBoxLayout;
    allowanceRow->addWidget(Text23);
    allowanceRow->addWidget(Text24);
    f->addLayout(allowanceRow, r++, 2, 1, 2);
    f->addWidget(cap("Label30", "Előző dátum:"), r, 0);
    f->addWidget(DTPicker3, r, 1);
    f->addWidget(cap("Label31", "Előző érkezés:"), r, 2);
    f->addWidget(MaskEdBox4, r++, 3);
    f->addWidget(cap("Label32", "Összesen eltelt"), r, 0);
    f->addWidget(Label33, r, 1);
    auto* prevRow = new QHBoxLayout;
    prevRow->setSpacing(12);
    prevRow->addWidget(Label34);
    prevRow->addWidget(Label35, 1);
    f->addLayout(prevRow, r++, 2, 1, 2);
    f->addWidget(cap("Label36", "Csoportazonosító:"), r, 0);
    f->addWidget(Label12, r++, 1, 1, 3);
    f->addWidget(cap("Label37", "Összesen km:"), r, 0);
    f->addWidget(Label14, r++, 1, 1, 3);
    f->addWidget(cap("Label38", "Állapot:"), r, 0);
    f->addWidget(Label29, r++, 1, 1, 3);
    f->setRowStretch(r, 1);
    f->setColumnStretch(3, 1);
    top->addWidget(figures, 2);

    // The commands of the sheet.
    auto* cmd = new QVBoxLayout;
    Command2 = button("Command2", "OK és Összesít");
    Command2->setToolTip("Elfogadás és kilométer összesítés");
    Command3 = button("Command3", "Minden adat");
    Command3->setToolTip("Szűrés ki");
    Command4 = button("Command4", "Következő hónap");
    Command4->setToolTip("Következő");
    Label18 = label("Label18", "< Szűrés (napra) >");
    Label18->setCursor(Qt::PointingHandCursor);
    Label18->setAlignment(Qt::AlignCenter);
    DTPicker2 = datePicker("DTPicker2");
    for (QPushButton* b : {Command2, Command3, Command4}) b->setMinimumHeight(34);
    cmd->addWidget(Command2);
    cmd->addWidget(Command3);
    cmd->addWidget(Command4);
    cmd->addSpacing(12);
    cmd->addWidget(Label18);
    cmd->addWidget(DTPicker2);
    cmd->addStretch(1);
    top->addLayout(cmd);
    outer->addLayout(top);

    // The pickers: vehicles, drivers, routes, partners.
    auto pickerFrame = [this](const std::string& name, const std::string& caption, forms::DBGrid*& grid,
                              const std::string& gridName, std::initializer_list<std::pair<QLineEdit*, const char*>> boxes) {
        auto* box = frame(name, caption);
        auto* v = new QVBoxLayout(box);
        v->setContentsMargins(4, 4, 4, 4);
        if (boxes.size() > 0) {
            auto* h = new QHBoxLayout;
            for (auto& [b, tip] : boxes) {
                b->setToolTip(QString::fromUtf8(tip));
                b->setPlaceholderText(QString::fromUtf8(tip));
                h->addWidget(b);
            }
            v->addLayout(h);
        }
        grid = this->grid(gridName, box);
        v->addWidget(grid, 1);
        return box;
    };
    Text21 = textBox("Text21");
    Text22 = textBox("Text22");
    Text12 = textBox("Text12");
    Text13 = textBox("Text13");
    auto* pickers = new QHBoxLayout;
    pickers->addWidget(pickerFrame("Frame3", "Járművek - kattintással választ", DBGrid2, "DBGrid2",
                                   {{Text21, "FRSZ gyorskereső"}}), 3);
    pickers->addWidget(pickerFrame("Frame4", "Járművezetők - kattintással választ", DBGrid3, "DBGrid3",
                                   {{Text22, "Vezető gyorskereső"}}), 2);
    pickers->addWidget(pickerFrame("Frame5", "Távolságok törzs - kék mezők gyorskereső", DBGrid4, "DBGrid4",
                                   {{Text12, "Keresés - honnan"}, {Text13, "Keresés - hova"}}), 4);
    pickers->addWidget(pickerFrame("Frame6", "Partnerek törzs - válassza ki dupla kattintással!", DBGrid5,
                                   "DBGrid5", {}), 3);
    outer->addLayout(pickers, 2);

    // The trips.
    Text25 = textBox("Text25");
    Text26 = textBox("Text26");
    Text27 = textBox("Text27");
    outer->addWidget(pickerFrame("Frame7",
                                 "Utak nyilvántartása adott járműre és időintervallumban - Dupla kattintással "
                                 "csoport kiválasztása",
                                 DBGrid1, "DBGrid1",
                                 {{Text25, "FRSZ gyorskereső"}, {Text26, "Típus gyorskereső"},
                                  {Text27, "Járművezető gyorskereső"}}),
                     3);

    // Bindings.
    UtakData->bind(Text1, "FRSZ");
    UtakData->bind(Text2, "GkTipus");
    UtakData->bind(Text3, "GkVezetöNeve");
    UtakData->bind(DTPicker1, "Dátum");
    UtakData->bind(Text4, "Honnan");
    UtakData->bind(Text5, "Hova");
    UtakData->bind(Text6, "TávolságKm");
    for (QLineEdit* m : {MaskEdBox1, MaskEdBox2, MaskEdBox3, MaskEdBox4})
        m->setProperty(forms::DataFormat, calc::TimeFormat);
    Label34->setProperty(forms::DataFormat, calc::TimeFormat);
    UtakData->bind(MaskEdBox1, "IndulásIdeje");
    UtakData->bind(MaskEdBox2, "ÉrkezésIdeje");
    UtakData->bind(MaskEdBox3, "ÖsszesenIdö");
    UtakData->bind(Label12, "CsoportAzonositó");
    UtakData->bind(Label14, "ÖsszesenKM");
    UtakData->bind(Text9, "Megnevezés");
    UtakData->bind(Text10, "ÁuTömege");
    UtakData->bind(Text11, "MennyiségiEgység");
    UtakData->bind(Text14, "CégNév");
    UtakData->bind(Text15, "CégCim");
    UtakData->bind(Text16, "FogyasztottLiter");
    UtakData->bind(Text17, "Üzemanyagár");
    UtakData->bind(Text18, "Üzemanyagköltség");
    UtakData->bind(Text19, "KezdöKM");
    UtakData->bind(Text20, "ZáróKM");
    UtakData->bind(Label28, "KezdöZáró");
    UtakData->bind(Text23, "Napidíj");
    UtakData->bind(Text24, "NapidíjPénznem");
    UtakData->bind(Check1, "Napidijas");
    UtakData->bind(DTPicker3, "ElözöDátum");
    UtakData->bind(MaskEdBox4, "ElözöÉrkezés");
    UtakData->bind(Label33, "ElözöElteltIdö");
    for (QLabel* l : {Label12, Label14, Label28, Label33}) l->setProperty(forms::LabelWritesBack, true);
    GkData->bind(Label24, "FogyasztásLiter100");
    NapidijData->bind(Label34, "ÉrkezésIdeje");
    NapidijData->bind(Label35, "GkVezetöNeve");

    DBGrid1->bind(UtakData);
    DBGrid1->addColumn("Frsz", "FRSZ", 80);
    DBGrid1->addColumn("Típus", "GkTipus", 110);
    DBGrid1->addColumn("Vezető", "GkVezetöNeve", 130);
    DBGrid1->addColumn("Dátum", "Dátum", 90);
    DBGrid1->addColumn("Honnan", "Honnan", 120);
    DBGrid1->addColumn("Indulás ideje", "IndulásIdeje", 100);
    DBGrid1->addColumn("Hova", "Hova", 120);
    DBGrid1->addColumn("Érkezés ideje", "ÉrkezésIdeje", 100);
    DBGrid1->addColumn("Távolság Km", "TávolságKm", 90);
    DBGrid1->addColumn("Kezdés", "VezetöKezdésIdö", 60);
    DBGrid1->addColumn("Végez", "VezetöVégezIdö", 60);
    DBGrid1->addColumn("Megnevezés", "Megnevezés", 120);
    DBGrid1->addColumn("Partner", "CégNév", 140);
    DBGrid1->addColumn("Liter", "FogyasztottLiter", 60);
    DBGrid1->addColumn("Költség", "Üzemanyagköltség", 70);
    DBGrid1->addColumn("Összesen km", "ÖsszesenKM", 80);
    DBGrid1->addColumn("Csoportazonosító", "CsoportAzonositó", 130);
    for (int c : {5, 7, 9, 10}) DBGrid1->setColumnFormat(c, calc::TimeFormat);  // "8,30", not "8,3"
    DBGrid1->setAllowUpdate(true);
    DBGrid1->setItemDelegate(new CellDelegate(DBGrid1));

    DBGrid2->bind(GkData);
    DBGrid2->addColumn("FRSZ", "GkFrsz", 80);
    DBGrid2->addColumn("Típus", "GkTipus", 120);
    DBGrid2->addColumn("l/100 km", "FogyasztásLiter100", 60);
    DBGrid3->bind(GkVezetoData);
    DBGrid3->addColumn("Vezető neve", "VezetöNeve", 160);
    DBGrid4->bind(TavData);
    DBGrid4->addColumn("Honnan", "Honnan", 130);
    DBGrid4->addColumn("Hova", "Hova", 130);
    DBGrid4->addColumn("Km", "TávolságKm", 50);
    DBGrid5->bind(PartnerData);
    DBGrid5->addColumn("Partner neve", "BerNev", 170);
    DBGrid5->addColumn("Címe", "BerCim", 150);
    resize(1400, 940);
}

void UtNyilvantartasFormX::wire() {
    onClick(OKMent, [this] { Command2_Click(); });
    onClick(Command2, [this] { Command2_Click(); });
    onClick(Command1, [this] { Command1_Click(); });
    onClick(Command3, [this] { Command3_Click(); });
    onClick(Command4, [this] { Command4_Click(); });
    onClick(Command5, [this] { UzemanyagArTorzs_Click(); });
    onClick(UjUt, [this] { UjUt_Click(); });
    onClick(MasikJarmu, [this] { MasikJarmu_Click(); });
    onClick(Nyomtatas, [this] { Nyomtatas_Click(); });
    onClick(Torol, [this] { Torol_Click(); });
    onClick(Kilepes, [this] { Kilepes_Click(); });
    onClick(Segedlet, [this] { Segedlet_Click(); });
    onClick(SzallSzem, [this] { SzallSzem_Click(); });
    onClick(CsatoltOkm, [this] { CsatoltOkm_Click(); });
    onClick(Jarmuvek, [this] { Jarmuvek_Click(); });
    onClick(Jarmuvezetok, [this] { Jarmuvezetok_Click(); });
    onClick(UtakTavok, [this] { UtakTavok_Click(); });
    onClick(Megnevezesek, [this] { Megnevezesek_Click(); });
    onClick(PartnereK, [this] { PartnereK_Click(); });
    onClick(UzemanyagArTorzs, [this] { UzemanyagArTorzs_Click(); });
    new LabelClick(Label18, [this] { Label18_Click(); });
    QObject::connect(Combo1, qOverload<int>(&QComboBox::activated), this,
                     [this](int) { forms::run([this] { Combo1_Click(); }); });

    auto clicks = [this](forms::DBGrid* g, std::function<void()> click, std::function<void()> dbl) {
        if (click)
            QObject::connect(g, &QAbstractItemView::clicked, this, [click](const QModelIndex&) { forms::run(click); });
        if (dbl)
            QObject::connect(g, &QAbstractItemView::doubleClicked, this,
                             [dbl](const QModelIndex&) { forms::run(dbl); });
    };
    clicks(DBGrid2, [this] { DBGrid2_Click(); }, [this] { DBGrid2_Click(); });
    clicks(DBGrid3, [this] { DBGrid3_Click(); }, [this] { DBGrid3_Click(); });
    clicks(DBGrid4, [this] { DBGrid4_Click(); }, {});
    clicks(DBGrid5, {}, [this] { DBGrid5_DblClick(); });
    // In the trip grid typing edits a cell and a double click chooses the row's group.
    DBGrid1->setEditTriggers(QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::SelectedClicked);
    clicks(DBGrid1, {}, [this] { DBGrid1_DblClick(); });
    DBGrid1->RowColChange = [this] { DBGrid1_RowColChange(); };
    DBGrid1->HeadClick = [this](int c) { headerSort(UtakData, DBGrid1, c); };
    DBGrid4->HeadClick = [this](int c) { headerSort(TavData, DBGrid4, c); };
    DBGrid1->recordsetModel()->beforeColUpdate = [this](int row, int column, std::string& t) {
        return gridCellCheck(row, column, t);
    };

    // Quick searches: each clears its partners first; all clear themselves on leaving.
    forms::onChange(Text12, [this] {
        QSignalBlocker b(Text13);
        Text13->clear();
        quick(TavData, "Honnan", text(Text12), nullptr);
    });
    forms::onChange(Text13, [this] {
        QSignalBlocker b(Text12);
        Text12->clear();
        quick(TavData, "Hova", text(Text13), nullptr);
    });
    forms::onChange(Text21, [this] { quick(GkData, "GkFrsz", text(Text21), &markVehicle_); });
    forms::onChange(Text22, [this] { quick(GkVezetoData, "VezetöNeve", text(Text22), &markDriver_); });
    auto tripSearch = [this](QLineEdit* box, const char* column, QLineEdit* other1, QLineEdit* other2) {
        forms::onChange(box, [this, box, column, other1, other2] {
            for (QLineEdit* o : {other1, other2}) {
                QSignalBlocker b(o);
                o->clear();
            }
            quick(UtakData, column, text(box), &markTrip_);
        });
    };
    tripSearch(Text25, "FRSZ", Text26, Text27);
    tripSearch(Text26, "GkTipus", Text25, Text27);
    tripSearch(Text27, "GkVezetöNeve", Text25, Text26);
    for (QLineEdit* q : {Text12, Text13, Text21, Text22, Text25, Text26, Text27}) {
        forms::setBackColor(q, forms::QuickSearchColor);
        forms::focusColors(q, forms::QuickSearchColor, [q] {
            QSignalBlocker b(q);
            q->clear();
        });
    }

    // Typing fields: focus colours; numbers and times take digits and the comma, and select
    // their text on entry.
    forms::focusColors({Text1, Text2, Text3, Text4, Text5, Text9, Text10, Text11, Text14, Text15});
    for (QLineEdit* n : {Text6, Text16, Text17, Text18, Text19, Text20, Text23, MaskEdBox1, MaskEdBox2, MaskEdBox3,
                         MaskEdBox4}) {
        forms::onKeyPress(n, decimalKey);
        forms::onGotFocus(n, [n] { n->selectAll(); });
    }
    forms::focusColors({Text6, Text16, Text17, Text18, Text19, Text20, Text23});
    forms::focusColors(Text24, forms::RestColor, [this] { setText(Text24, vb::UCase(text(Text24))); });
    for (QLineEdit* m : {MaskEdBox1, MaskEdBox2, MaskEdBox3, MaskEdBox4}) {
        forms::focusColors(m, forms::RestColor, [m] {
            if (calc::timeAccepted(text(m))) return;
            forms::Beep();
            m->selectAll();
            forms::setFocus(m);
        });
    }
}

void UtNyilvantartasFormX::Form_Load() {
    auto p = vb::dateParts(vb::clock::today());
    DTPicker2->setDate(QDate(p.year, p.month, p.day));
}

std::string UtNyilvantartasFormX::groupIdText() const { return text(Label12); }

// Opening, each time the form becomes active: an empty table gets a row of a new group; otherwise
// the last row, and a row without a group id is offered for deletion and the form is left.
void UtNyilvantartasFormX::Form_Activate() {
    if (reportShown_) {  // the print's preview is not a form of the log: coming back reloads nothing
        reportShown_ = false;
        return;
    }
    if (count(UtakData) < 1) {
        std::string id = calc::groupId(vb::clock::today(), vb::clock::timer());
        quietly([&] {
            auto& r = UtakData->rs();
            r.AddNew();
            r.set("CsoportAzonositó", id);
            r.Update();
            r.MoveLast();
        });
        forms::setPickerDate(DTPicker1, vb::clock::today());
        setText(Text11, Globals::FixedUnit);
    } else {
        quietly([&] { UtakData->rs().MoveLast(); });
        if (blank(groupIdText())) {
            arrow();
            forms::Beep();
            if (forms::MsgBox(NoGroupText, vb::vbYesNo + vb::vbQuestion, NoGroupTitle) == vb::vbYes) {
                Err.Clear();
                vb::resume([&] { UtakData->rs().Edit(); });
                if (Err.Number() == 0) {
                    quietly([&] {
                        auto& r = UtakData->rs();
                        r.Delete();
                        r.MoveNext();
                    });
                }
                Err.Clear();
            }
            leave({GkData, GkVezetoData, TavData, UtakData, MegnevezesData, PartnerData});
            return;
        }
    }
    Globals::CurrentGroupID = groupIdText();
    reloadPurposes();
}

void UtNyilvantartasFormX::reloadPurposes() {
    Combo1->clear();
    if (count(MegnevezesData) < 1) return;
    quietly([&] {
        auto& r = MegnevezesData->rs();
        r.MoveFirst();
        while (!r.Eof()) {
            Combo1->addItem(forms::qs(vb::nullToText(r.Fields(0).Value())));
            r.MoveNext();
        }
    });
    Combo1->setCurrentIndex(-1);
}

// Closes the sources (errors ignored) and unloads.
void UtNyilvantartasFormX::leave(std::initializer_list<forms::DataControl*> sources) {
    CloseGuard = false;
    closeAll(sources);
    arrow();
    Unload();
}

void UtNyilvantartasFormX::setSource(forms::DataControl* dc, const std::string& source, forms::DBGrid* grid) {
    dc->setRecordSource(source);
    dc->Refresh();
    if (grid) grid->Refresh();
}

void UtNyilvantartasFormX::restrictToGroup(const std::string& id) {
    setSource(UtakData,
              "select * from Utak where CsoportAzonositó = '" + id + "' order by Dátum, IndulásIdeje", DBGrid1);
}

// ---- the pickers on the form -------------------------------------------------------------------

void UtNyilvantartasFormX::DBGrid2_Click() {
    if (count(GkData) < 1 || pastEnd(GkData)) return;
    setText(Text1, fieldText(GkData, "GkFrsz"));
    setText(Text2, fieldText(GkData, "GkTipus"));
}

void UtNyilvantartasFormX::DBGrid3_Click() {
    if (count(GkVezetoData) < 1 || pastEnd(GkVezetoData)) return;
    setText(Text3, fieldText(GkVezetoData, "VezetöNeve"));
}

void UtNyilvantartasFormX::DBGrid4_Click() {
    if (count(TavData) < 1) {
        forms::Beep();
        Text4->selectAll();
        forms::setFocus(Text4);
        return;
    }
    if (pastEnd(TavData)) return;
    setText(Text4, fieldText(TavData, "Honnan"));
    setText(Text5, fieldText(TavData, "Hova"));
    setText(Text6, fieldText(TavData, "TávolságKm"));
}

void UtNyilvantartasFormX::DBGrid5_DblClick() {
    if (count(PartnerData) < 1 || pastEnd(PartnerData)) return;
    setText(Text14, fieldText(PartnerData, "BerNev"));
    setText(Text15, fieldText(PartnerData, "BerCim"));
}

void UtNyilvantartasFormX::Combo1_Click() { setText(Text9, forms::str(Combo1->currentText())); }

void UtNyilvantartasFormX::quick(forms::DataControl* dc, const std::string& column, const std::string& typed,
                                 vb::Variant* mark) {
    std::string pattern = typed + "*";
    if (typed.empty() || pattern == "*") return;
    hourglass();
    ArrowAtEnd atEnd;
    db::Recordset* r = dc->Recordset();
    if (!r || r->closed()) return;
    quietly([&] { r->FindFirst("[" + column + "] like \"" + pattern + "\""); });
    if (r->NoMatch()) {
        if (mark && !quietly([&] { r->setBookmark(*mark); })) forms::Beep();
    } else if (mark && !quietly([&] { *mark = r->Bookmark(); })) {
        forms::Beep();
    }
}

// ---- the masters opened from the form ----------------------------------------------------------

bool UtNyilvantartasFormX::backFromMaster(forms::DataControl* source, forms::DBGrid* grid) {
    if (!isLoaded()) return false;
    quietly([&] { source->Refresh(); });
    grid->Refresh();
    return true;
}

void UtNyilvantartasFormX::Jarmuvek_Click() {
    Globals::PickedVehiclePlate.clear();
    bool picked = openPicker("GKTorzsFormX", Name);
    if (!backFromMaster(GkData, DBGrid2)) return;
    if (picked && !Globals::PickedVehiclePlate.empty()) {
        // the picker grid stands on the vehicle handed over, so its consumption is the one used
        if (findFirst(GkData, "[GkFrsz] = '" + Globals::PickedVehiclePlate + "'")) DBGrid2_Click();
        else setText(Text1, Globals::PickedVehiclePlate);
    }
}

void UtNyilvantartasFormX::Jarmuvezetok_Click() {
    Globals::PickedDriverName.clear();
    bool picked = openPicker("VezetokTorzsFormX", Name);
    if (!backFromMaster(GkVezetoData, DBGrid3)) return;
    if (picked && !Globals::PickedDriverName.empty()) {
        findFirst(GkVezetoData, "[VezetöNeve] = '" + Globals::PickedDriverName + "'");
        setText(Text3, Globals::PickedDriverName);
    }
}

void UtNyilvantartasFormX::UtakTavok_Click() {
    Globals::RoutePicked = 0;
    Globals::CurrentFormName = Name;
    forms::get("GkUtakTavolsagaTorzsFormX").Show(true);
    if (!backFromMaster(TavData, DBGrid4)) return;
    if (Globals::RoutePicked == 1) {
        setText(Text4, Globals::PickedFrom);
        setText(Text5, Globals::PickedTo);
        setText(Text6, calc::numberText(Globals::PickedRouteDistance));
    }
}

void UtNyilvantartasFormX::Megnevezesek_Click() {
    Globals::CurrentFormName = Name;
    forms::get("MegnevezesTorzsFormX").Show(true);
    if (!isLoaded()) return;
    quietly([&] { MegnevezesData->Refresh(); });
    reloadPurposes();
    if (count(MegnevezesData) < 1) warn(NoPurposes, NoPurposesTitle);
}

void UtNyilvantartasFormX::PartnereK_Click() {
    Globals::PickedPartnerName.clear();
    bool picked = openPicker("BeraktarozokFormX", Name);
    if (!backFromMaster(PartnerData, DBGrid5)) return;
    if (picked && !Globals::PickedPartnerName.empty()) {
        if (findFirst(PartnerData, "[BerNev] = '" + Globals::PickedPartnerName + "'")) DBGrid5_DblClick();
        else setText(Text14, Globals::PickedPartnerName);
    }
}

// The fuel price from an invoice: whatever the invoice form handed over (0 when nothing).
void UtNyilvantartasFormX::UzemanyagArTorzs_Click() {
    Globals::FuelPriceTransfer = 0;
    Globals::CurrentFormName = Name;
    forms::get("UzemanyagSzamlaFormX").Show(true);
    if (!isLoaded()) return;
    setText(Text17, calc::numberText(Globals::FuelPriceTransfer));
}

void UtNyilvantartasFormX::SzallSzem_Click() {
    Globals::CurrentGroupID = groupIdText();
    forms::get("UtakSzallitottSzemelyekFormX").Show(true);
}

void UtNyilvantartasFormX::CsatoltOkm_Click() {
    Globals::CurrentGroupID = groupIdText();
    forms::get("UtakCsatoltOkmanyokFormX").Show(true);
}

void UtNyilvantartasFormX::Segedlet_Click() { help(); }

// ---- commands ----------------------------------------------------------------------------------

void UtNyilvantartasFormX::Command1_Click() { forms::setPickerDate(DTPicker1, vb::Date{pickerDate(DTPicker1).serial + 1}); }

void UtNyilvantartasFormX::Command3_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    setSource(UtakData, AllSource, DBGrid1);
}

// The rows of one day; none: the message and all rows again.
void UtNyilvantartasFormX::Label18_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    QDate d = DTPicker2->date();
    setSource(UtakData,
              "select * from Utak where Dátum = #" + std::to_string(d.month()) + "/" + std::to_string(d.day()) + "/" +
                  std::to_string(d.year()) + "#",
              DBGrid1);
    if (count(UtakData) < 1) {
        warn(NoSuchDay, NoSuchDayTitle);
        setSource(UtakData, AllSource, DBGrid1);
    }
}

// A double click on a trip: its group alone.
void UtNyilvantartasFormX::DBGrid1_DblClick() {
    if (count(UtakData) < 1) {
        forms::Beep();
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    restrictToGroup(groupIdText());
    if (count(UtakData) < 1) {
        arrow();
        forms::Beep();
        forms::MsgBox(FatalText, vb::vbCritical, FatalTitle);
        return;
    }
    quietly([&] { UtakData->rs().MoveLast(); });
    Globals::CurrentGroupID = groupIdText();
}

// The group's km under the cursor: shown, not stored (browsing writes no row).
void UtNyilvantartasFormX::DBGrid1_RowColChange() {
    groupTotal("select sum(TávolságKm)as tav from Utak where CsoportAzonositó = '" + groupIdText() + "'", false);
}

void UtNyilvantartasFormX::groupTotal(const std::string& sql, bool store) {
    quietly([&] { setSource(SumData, sql, nullptr); });
    if (count(SumData) < 1) {
        setText(Label14, "0");
    } else {
        quietly([&] {
            auto& r = SumData->rs();
            r.MoveLast();
            setText(Label14, vb::CStr(vb::NullToNum(r.Fields(0).Value())));
        });
    }
    if (!store) UtakData->markLoaded(Label14);
}

// "OK és Összesít": the row's figures, the row stored by moving, the group's km, the previous trip
// and the allowance. Every statement with errors resumed; the only signal is the beep of a trip
// that arrives before it starts.
void UtNyilvantartasFormX::Command2_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    if (count(UtakData) < 1 || pastEnd(UtakData)) return;
    setText(Text16, calc::litres(text(Text6), text(Label24), text(Text16)));
    setText(Label28, calc::realKm(text(Text19), text(Text20), text(Label28)));
    setText(Text18, calc::cost(text(Text16), text(Text17), text(Text18)));
    auto d = calc::duration(work, text(MaskEdBox1), text(MaskEdBox2), text(MaskEdBox3));
    if (d.arrivalBeforeStart) {
        forms::Beep();
        forms::setFocus(MaskEdBox1);
    }
    setText(MaskEdBox3, d.text);

    // the row written by moving, then back to it
    Err.Clear();
    auto& r = UtakData->rs();
    vb::Variant mark = resume([&] { return r.Bookmark(); }, vb::Variant());
    vb::resume([&] { r.MoveFirst(); });
    vb::resume([&] { r.MoveLast(); });
    DBGrid1->Refresh();
    vb::resume([&] { r.setBookmark(mark); });
    if (Err.Number() != 0) {
        Err.Clear();
        if (count(UtakData) > 0) quietly([&] { r.MoveLast(); });
        else forms::Beep();
    }
    Err.Clear();

    groupTotal("select sum(TávolságKm) as tav from Utak where CsoportAzonositó = '" + groupIdText() + "'", true);
    previousTrip();

    double rate = Globals::FixedAllowance;
    if (auto amount = calc::allowance(work, text(Label33), rate, Check1->isChecked())) {
        setText(Text23, calc::numberText(*amount));
        setText(Text24, Globals::FixedAllowanceCurrency);
    }
}

// The previous trip for the allowance: the first two rows of the whole table by driver, day and
// arrival, newest first (picked in one pass over three columns, not by sorting the table). The
// labels of NapidijData show the first of them, where the cursor rests.
void UtNyilvantartasFormX::previousTrip() {
    std::vector<calc::TripKey> keys;
    bool read = quietly([&] {
        auto rs = UtakData->Database()->OpenRecordset("select GkVezetöNeve, Dátum, ÉrkezésIdeje from Utak",
                                                      db::dbOpenSnapshot);
        size_t n = rs->size();
        keys.reserve(n);
        for (size_t i = 0; i < n; ++i) {
            auto row = rs->peek(i);
            keys.push_back({row.at(0), row.at(1), row.at(2)});
        }
    });
    if (!read || keys.empty()) return;
    auto [first, second] = calc::firstTwo(keys);
    const auto& a = keys[size_t(first)];
    setText(Label34, calc::timeText(a.arrival));
    setText(Label35, vb::nullToText(a.driver));
    bool same = false;
    if (second >= 0) {
        const auto& b = keys[size_t(second)];
        auto* d1 = std::get_if<vb::Date>(&a.date);
        auto* d2 = std::get_if<vb::Date>(&b.date);
        auto* n1 = std::get_if<std::string>(&a.driver);
        auto* n2 = std::get_if<std::string>(&b.driver);
        same = d1 && d2 && d1->serial == d2->serial && n1 && n2 && *n1 == *n2;
    }
    if (same) {
        setText(MaskEdBox4, calc::timeText(keys[size_t(second)].arrival));
        auto e = calc::elapsed(work, text(MaskEdBox4));
        setText(Label33, e.elapsedText);
        if (e.allowanceDay) Check1->setChecked(*e.allowanceDay);
    } else {
        setText(MaskEdBox4, "");
        setText(Label33, "");
    }
}

// "Új út": a new row in the group on screen, a copy of the last trip's vehicle, driver and day.
void UtNyilvantartasFormX::UjUt_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    setText(Label29, "Új adat");
    keptPlate_ = text(Text1);
    keptType_ = text(Text2);
    keptDriver_ = text(Text3);
    keptDate_ = pickerDate(DTPicker1);
    std::string id = groupIdText();
    Globals::CurrentGroupID = id;
    setSource(UtakData, ArrivalSource, DBGrid1);
    previousDate_ = vb::clock::today();
    previousArrival_.clear();
    if (count(UtakData) > 0) {
        quietly([&] {
            auto& r = UtakData->rs();
            r.MoveLast();
            vb::Variant d = r.get("Dátum");
            if (auto* date = std::get_if<vb::Date>(&d)) previousDate_ = *date;
            previousArrival_ = calc::timeText(r.get("ÉrkezésIdeje"));
        });
    }
    addRow(UtakData, {{"CsoportAzonositó", id}});
    setText(MaskEdBox4, previousArrival_);
    forms::setPickerDate(DTPicker3, previousDate_);
    if (Globals::FixedAllowance > 0) {
        setText(Text23, calc::numberText(Globals::FixedAllowance));
        setText(Text24, Globals::FixedAllowanceCurrency);
    }
    setText(Text11, Globals::FixedUnit);
    restrictToGroup(id);
    if (count(UtakData) > 0) {
        quietly([&] { UtakData->rs().MoveFirst(); });
        setText(Text1, keptPlate_);
        setText(Text2, keptType_);
        setText(Text3, keptDriver_);
        forms::setPickerDate(DTPicker1, keptDate_);
    } else {
        forms::Beep();
        arrow();
        forms::Beep();
        forms::MsgBox(FatalText, vb::vbCritical, FatalTitle);
    }
}

void UtNyilvantartasFormX::MasikJarmu_Click() { newGroup(false); }
void UtNyilvantartasFormX::Command4_Click() { newGroup(true); }

// A new group (a new log sheet), dated today or 31 days after the day on the picker.
void UtNyilvantartasFormX::newGroup(bool nextMonth) {
    if (count(UtakData) < 1) return;
    std::string distance = text(Text6);
    double km = resume([&] { return vb::CDbl(vb::Variant(distance)); }, 0.0);
    Err.Clear();
    if (blank(distance) || km == 0) {
        warn(ZeroDistance, nextMonth ? ZeroTitleMonth : ZeroTitleGroup);
        forms::setFocus(Text6);
        return;
    }
    arrow();
    forms::Beep();
    if (forms::MsgBox(nextMonth ? AskMonth : AskGroup, vb::vbYesNo, WarnTitle) != vb::vbYes) return;
    hourglass();
    ArrowAtEnd atEnd;
    setSource(UtakData, AllSource, DBGrid1);
    keptPlate_.clear();
    keptType_.clear();
    keptDriver_.clear();
    keptDate_ = vb::clock::today();
    std::string id = calc::groupId(vb::clock::today(), vb::clock::timer());
    addRow(UtakData, {{"CsoportAzonositó", id}});
    if (!nextMonth) {
        forms::setPickerDate(DTPicker1, vb::clock::today());
        setText(Text11, Globals::FixedUnit);
    } else {
        setText(Text11, Globals::FixedUnit);
        forms::setPickerDate(DTPicker1, vb::Date{pickerDate(DTPicker1).serial + 31});
    }
    restrictToGroup(groupIdText());
    if (count(UtakData) > 0) {
        quietly([&] { UtakData->rs().MoveLast(); });
        Globals::CurrentGroupID = groupIdText();
    } else {
        forms::Beep();
        arrow();
        forms::Beep();
        forms::MsgBox(FatalText, vb::vbCritical, FatalTitle);
    }
}

// "Töröl": the current trip; the last row of a group goes back to the main menu.
void UtNyilvantartasFormX::Torol_Click() {
    arrow();
    forms::Beep();
    if (forms::MsgBox(DeleteText, vb::vbYesNo + vb::vbQuestion, DeleteTitle) != vb::vbYes) return;
    std::string id = groupIdText();
    Err.Clear();
    if (!vb::resume([&] { UtakData->rs().Edit(); })) {
        Err.Clear();
        forms::Beep();
        return;
    }
    quietly([&] {
        auto& r = UtakData->rs();
        r.Delete();
        r.MoveNext();
    });
    if (count(UtakData) < 1) {
        forms::Beep();
        forms::MsgBox(GroupGone, vb::vbOKOnly, WarnTitle);
        leave({GkData, GkVezetoData, TavData, UtakData, MegnevezesData, PartnerData});
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    Globals::CurrentGroupID = id;
    restrictToGroup(id);
    if (!pastEnd(UtakData)) quietly([&] { UtakData->rs().MoveLast(); });
}

// "Vissza": a row without registration or distance is offered for deletion; then the form leaves.
void UtNyilvantartasFormX::Kilepes_Click() {
    CloseGuard = false;
    if (count(UtakData) > 0 && !pastEnd(UtakData)) {
        std::string distance = text(Text6);
        double km = resume([&] { return vb::CDbl(vb::Variant(distance)); }, 1.0);
        Err.Clear();
        if (blank(text(Text1)) || blank(distance) || km == 0) {
            arrow();
            forms::Beep();
            if (forms::MsgBox(MandatoryText, vb::vbYesNoCancel + vb::vbQuestion, MandatoryTitle) == vb::vbYes) {
                if (!quietly([&] {
                        auto& r = UtakData->rs();
                        r.Edit();
                        r.Delete();
                        r.MoveNext();
                    }))
                    forms::Beep();
            }
        }
    }
    leave({GkData, GkVezetoData, TavData, UtakData, MegnevezesData, PartnerData});
}

// The grid's checks after a cell is typed: a short date is refused, a time above 23,59 becomes 0.
bool UtNyilvantartasFormX::gridCellCheck(int, int column, std::string& t) {
    if (column == 3 && !DBGrid1->isColumnHidden(3) && vb::Len(t) < 10) {
        forms::Beep();
        forms::setFocus(DTPicker1);
        return false;
    }
    if ((column == 5 || column == 7) && !DBGrid1->isColumnHidden(column)) {
        auto n = vb::parseNumber(t);
        if (n && *n > 23.59 + 1e-9) {
            forms::Beep();
            t = "0";
        }
    }
    return true;
}

// "Nyomtatás": the sheet of the group with its km, litres and cost in the title.
void UtNyilvantartasFormX::Nyomtatas_Click() {
    hourglass();
    std::string id = groupIdText();
    quietly([&] {
        setSource(SumData,
                  "select sum(TávolságKm) as tav, sum(FogyasztottLiter) as FoL, sum(Üzemanyagköltség) as UzFt from "
                  "Utak where CsoportAzonositó = '" +
                      id + "'",
                  nullptr);
    });
    if (count(SumData) < 1) {
        setText(Label14, "0");
    } else {
        quietly([&] {
            auto& r = SumData->rs();
            r.MoveLast();
            auto n = [&](const char* c) { return vb::CStr(vb::NullToNum(r.get(c))); };
            setText(Label14, n("tav") + " - " + n("FoL") + " L - " + n("UzFt") + " Ft");
        });
    }
    UtakData->markLoaded(Label14);  // a caption of the print, not a figure of the row
    quietly([&] {
        setSource(NyomData,
                  "select str(dátum) as Nap, honnan, hova, megnevezés from Utak where CsoportAzonositó = '" + id +
                      "' order by Dátum, IndulásIdeje",
                  nullptr);
    });
    std::string title = vb::Left(Globals::OperatorName, 15) + " - Frsz: " + text(Text1) + " - Táv km: " + text(Label14);
    arrow();
    auto report = print::tableReport("CrystalReport1", "Útnyilvántartás - Kerova", title,
                                     {{"Nap", "Nap", 1.2}, {"Honnan", "honnan", 2}, {"Hová", "hova", 2},
                                      {"Megnevezés", "megnevezés", 2}});
    if (auto* cim = report.control("Cim")) {  // the long title line shrinks to the paper's width
        while (cim->font.size > 9 && print::textWidth(title, cim->font) > report.bodyWidth())
            cim->font = cim->font.withSize(cim->font.size - 0.5);
    }
    if (auto* rs = NyomData->Recordset(); rs && !rs->closed()) report.setRecordset(*rs);
    reportShown_ = true;
    print::showReport(report);
}

}  // namespace trips
