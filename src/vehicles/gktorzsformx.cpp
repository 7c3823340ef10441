#include "vehicles/gktorzsformx.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <map>

#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"
#include "vb/text.h"
#include "vehicles/vehiclesheets.h"

namespace vehicles {

using forms::qs;
using forms::str;
using vb::Err;

namespace {

constexpr const char* PlatePrompt = "Kérem a forgalmi rendszámot:";
constexpr const char* PlateTitle = "Keresés rendszám szerint";
constexpr const char* PlateNotFound = "Nincs ilyen forgalmi rendszám! Keressen újra!";
constexpr const char* TypePrompt = "Kérem a gépkocsi típusát:";
constexpr const char* TypeTitle = "Keresés típus szerint";
constexpr const char* TypeNotFound = "Nincs ilyen gépkocsi típus! Keressen újra!";
constexpr const char* DriverPrompt = "Kérem a gépkocsivezető nevét:";
constexpr const char* DriverTitle = "Keresés gépkocsivezető szerint";
constexpr const char* DriverNotFound = "Nincs ilyen gépkocsivezető! Keressen újra!";
constexpr const char* DeleteText = "Az adat törölhető?";
constexpr const char* DeleteTitle = "FIGYELEM! Aktuális adat végleges törlése!";
constexpr const char* ArchiveFailText = "ADATMENTÉSI HIBA AZ ARCHÍV TÁBLÁBAN!";
constexpr const char* ExitText = "Nincs megadva típus! Az adat törölhető?";
constexpr const char* ExitTitle = "FIGYELEM! Aktuális adat törlése!";
constexpr const char* EmptyArchiveText = "Nincsenek archivált (törölt) adatok!";
constexpr const char* EmptyArchiveTitle = "FIGYELEM!";

// The columns of the main grid, as the main form's list of warned vehicles has them.
constexpr std::array GridColumns = {
    "GkFrsz", "GkTipus", "GkForgalombahelyezve", "Hengerurtartalom", "FogyasztásLiter100", "GkVezetoNeve",
    "SzervizIntervallumNap", "SzervizIntervallumKM", "MuszakiVizsgaDatum", "ZoldkartyaDatum", "CascoHaviDija",
    "KotelezoHaviDija", "recordID", "KilometerOraAllasa", "OnkoltsegKm", "UtolsoSzervizDatum", "JelenlegiKmAllas",
    "PartnerID", "PartnerNeve", "Alvázszám", "Motorszám", "TachográfHitelesités", "TachoOMHEng", "SzemleKM",
    "OlajcsereKM", "NköziKarbantNaploKM", "HajtaslancOlajcsKM", "VezérmüOlajcsereKM", "Figyelmeztetés",
};

QDate qdate(double serial) { return QDate(1899, 12, 30).addDays(qint64(serial)); }

double serial(const QDateEdit* d) {
    QDate q = d->date();
    return vb::DateSerial(q.year(), q.month(), q.day()).serial;
}

// NullToNum of a field's text as a number: "" raises 13, as CDbl does.
double num(const QLineEdit* box) { return vb::CDbl(vb::NullToNum(vb::Variant(str(box->text())))); }

// The number in a label (Val of its caption) as a Long.
vb::Variant numberIn(const QLabel* label) { return vb::CLng(vb::Val(str(label->text()))); }

// One condition of CheckWarnings with errors resumed: one that fails to evaluate doesn't hold.
template <class F>
bool holds(F&& condition) {
    bool b = vb::resume(std::forward<F>(condition), false);
    Err.Clear();
    return b;
}

}  // namespace

GKTorzsFormX::GKTorzsFormX() : RecordForm(Name, Title) {
    JarmuvekData = data("JarmuvekData", "Kerova.dsb", LiveSource);
    Data1 = data("Data1", "Kerova.dsb", WarnedSource);
    ArchivData = data("ArchivData", "Kerova.dsb", "JarmuvekArchiv");
    PartnerData = data("PartnerData", "Kerova.dsb", PartnerSource);
    build();
    bindings();
    events();
}

// ---------------------------------------------------------------- building

void GKTorzsFormX::build() {
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 4, 8, 8);
    outer->setSpacing(6);

    // menus
    auto* bar = menuBar(outer);
    bar->setObjectName("MenuBar");
    auto* muveletek = menu(bar, "Muveletek", "&Műveletek");
    Mentes = menuItem(muveletek, "Mentes", "OK-Mentés");
    GKUjadat = menuItem(muveletek, "GKUjadat", "Új adat");
    GKTorol = menuItem(muveletek, "GKTorol", "Törlés");
    muveletek->addSeparator();
    SzervizModul = menuItem(muveletek, "SzervizModul", "Szerviz modul");
    auto* keresesek = menu(bar, "Keresesek", "&Keresések");
    FrszKeres = menuItem(keresesek, "FrszKeres", "Forgalmi rendszám");
    GKtipusKeres = menuItem(keresesek, "GKtipusKeres", "Jármű típus");
    GKVezetoKeres = menuItem(keresesek, "GKVezetoKeres", "Járművet vezető neve");
    auto* nyomtatas = menu(bar, "Nyomtatas", "&Nyomtatás");
    AktLapNyom = menuItem(nyomtatas, "AktLapNyom", "Aktuális lap nyomtatása");
    AktLapTolMindNyom = menuItem(nyomtatas, "AktLapTolMindNyom", "Aktuális laptól minden adat  nyomtatása");
    MuszakiKell = menuItem(nyomtatas, "MuszakiKell", "Műszaki viszga szükségesség nyomtatása");
    auto* archivum = menu(bar, "Archivum", "&Archívum");
    ArchivumA = menuItem(archivum, "ArchivumA", "Archívum");
    VisszaEles = menuItem(archivum, "VisszaEles", "Vissza az éles adatokra!");
    Valaszt = menuItem(bar, "Valaszt", "&Választ");
    Segedlet = menuItem(bar, "Segedlet", "Segédlet (Help)");
    Kilepes = menuItem(bar, "Kilepes", "Kilépés (Exit)");

    // fields: three columns of caption, box and the " LEJÁRT! " mark
    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(6);
    fields->setVerticalSpacing(4);
    outer->addLayout(fields);
    int rows[3] = {0, 0, 0};
    auto expired = [&](const char* name) {
        auto* l = label(name, Expired);
        QPalette p = l->palette();
        p.setColor(QPalette::WindowText, Qt::red);
        l->setPalette(p);
        QFont f = l->font();
        f.setBold(true);
        l->setFont(f);
        QSizePolicy sp = l->sizePolicy();
        sp.setRetainSizeWhenHidden(true);
        l->setSizePolicy(sp);
        return l;
    };
    auto place = [&](int col, const std::string& captionOf, const char* caption, std::initializer_list<QWidget*> boxes,
                     QLabel* mark = nullptr) {
        int row = rows[col]++;
        auto* c = label(captionOf + "Caption", caption);
        c->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        // a caption longer than 210 pixels takes two lines, so that the form fits a 1366 pixel wide
        // screen; the shorter ones stay on one
        c->setWordWrap(true);
        c->setMinimumWidth(std::min(c->fontMetrics().horizontalAdvance(c->text()) + 4, 210));
        c->setMaximumWidth(210);
        fields->addWidget(c, row, col * 4);
        auto* cell = new QHBoxLayout;
        cell->setSpacing(4);
        for (auto* b : boxes) cell->addWidget(b);
        if (boxes.size() == 1) cell->addStretch(0);
        fields->addLayout(cell, row, col * 4 + 1);
        if (mark) fields->addWidget(mark, row, col * 4 + 2);
    };
    auto box = [&](const char* name, int width = 120) {
        auto* t = textBox(name);
        t->setFixedWidth(width);
        return t;
    };
    auto picker = [&](const char* name, int width = 120) {
        auto* d = datePicker(name);
        d->setFixedWidth(width);
        // an unbound or never-set picker shows today, as VB's date picker does
        d->setDate(qdate(vb::clock::today().serial));
        return d;
    };

    // the vehicle and its owner
    Text1 = box("Text1");
    place(0, "Text1", "Rendszám:", {Text1});
    Text2 = box("Text2");
    Text2->setToolTip("Kulcs adat");
    place(0, "Text2", "Típus:", {Text2});
    DTPicker1 = picker("DTPicker1");
    place(0, "DTPicker1", "Forgalomba hely.:", {DTPicker1});
    Text3 = box("Text3");
    place(0, "Text3", "Hengerűrtartalom:", {Text3});
    Text4 = box("Text4");
    place(0, "Text4", "Fogyasztás (lit/100km):", {Text4});
    Text5 = box("Text5", 190);
    place(0, "Text5", "Járművezető neve:", {Text5});
    Text14 = box("Text14", 190);
    place(0, "Text14", "Alvázszám:", {Text14});
    Text15 = box("Text15", 190);
    place(0, "Text15", "Motorszám:", {Text15});
    Text13 = box("Text13", 190);
    place(0, "Text13", "Tulajdonos- vagy alvállalkozó neve:", {Text13});
    Combo1 = comboBox("Combo1");
    Combo1->setFixedWidth(190);
    place(0, "Combo1", "Tulajdonos kiválasztása szerviz törzsből", {Combo1});

    // service, readings and costs
    Text6 = box("Text6");
    place(1, "Text6", "Szerviz intervall. (nap):", {Text6});
    Label15 = expired("Label15");
    Text7 = box("Text7");
    place(1, "Text7", "Szerviz intervallum (km):", {Text7}, Label15);
    Label14 = expired("Label14");
    DTPicker4 = picker("DTPicker4");
    place(1, "DTPicker4", "Utolsó szerviz dátuma:", {DTPicker4}, Label14);
    Text10 = box("Text10");
    Text10->setToolTip("Induló km");
    place(1, "Text10", "Kilométeróra állása:", {Text10});
    Text12 = box("Text12");
    place(1, "Text12", "Jelenlegi km állás:", {Text12});
    Text11 = box("Text11");
    place(1, "Text11", "Önköltség/km:", {Text11});
    Text8 = box("Text8");
    place(1, "Text8", "CASCO havi díja (Ft):", {Text8});
    Label17 = expired("Label17");
    DTPicker3 = picker("DTPicker3", 105);
    Text9 = box("Text9", 80);
    place(1, "Text9", "Kötelező biztosítás dátuma, díja:", {DTPicker3, Text9}, Label17);
    Label39 = expired("Label39");
    DTPicker8 = picker("DTPicker8", 105);
    Text22 = box("Text22", 80);
    Text22->setToolTip("Nemzetközi biztosítás díja");
    place(1, "DTPicker8", "Nemzetközi biztosítás dátuma, díja:", {DTPicker8, Text22}, Label39);
    Label16 = expired("Label16");
    DTPicker2 = picker("DTPicker2");
    place(1, "DTPicker2", "Műszaki vizsga dátuma (lejárat dátuma):", {DTPicker2}, Label16);

    // deadlines and the kilometre readings of the periodic works
    Label35 = expired("Label35");
    DTPicker6 = picker("DTPicker6");
    place(2, "DTPicker6", "Tachogr. hitelesítés:", {DTPicker6}, Label35);
    Label36 = expired("Label36");
    DTPicker7 = picker("DTPicker7");
    place(2, "DTPicker7", "Tachográf OMH engedély dátuma:", {DTPicker7}, Label36);
    Label12 = expired("Label12");
    DTPicker9 = picker("DTPicker9");
    place(2, "DTPicker9", "Tűzoltó készülék dátuma:", {DTPicker9}, Label12);
    Text16 = box("Text16");
    place(2, "Text16", "Szemle kilométer állása:", {Text16});
    Text17 = box("Text17");
    place(2, "Text17", "Olajcsere kilométer állása:", {Text17});
    Text18 = box("Text18");
    place(2, "Text18", "Karbant. napló kilométer állása:", {Text18});
    Text19 = box("Text19");
    place(2, "Text19", "Hajtáslánc olajcsere kilométer állása:", {Text19});
    Text20 = box("Text20");
    place(2, "Text20", "Vezérmű ékszíj olajcsere kilométer állása:", {Text20});
    // the marks under the third column
    Check1 = checkBox("Check1", "FIGYELMEZTETÉS");
    Check2 = checkBox("Check2", "ALVÁLLALKOZÓ");
    fields->addWidget(Check1, rows[2], 8, Qt::AlignRight);
    fields->addWidget(Check2, rows[2]++, 9);
    for (int c : {3, 7}) fields->setColumnMinimumWidth(c, 14);
    fields->setColumnStretch(11, 1);

    // the owner from the customers, the quick search, the work date
    auto* line = new QHBoxLayout;
    Command2 = button("Command2", "Tulajdonos kiválasztása partner (vevő) törzsből");
    line->addWidget(Command2);
    line->addSpacing(24);
    line->addWidget(label("Text21Caption", "Rendszám gyorskereső"));
    Text21 = textBox("Text21");
    Text21->setFixedWidth(150);
    line->addWidget(Text21);
    DTPicker5 = picker("DTPicker5");
    DTPicker5->setVisible(false);
    line->addSpacing(24);
    line->addWidget(label("Label24Caption", "recordID jármű"));
    Label24 = label("Label24", "");
    Label21 = label("Label21", "");
    line->addSpacing(24);
    auto* owner = label("Label23Caption", "Tulajdonos azonosító:");
    Label23 = label("Label23", "");
    for (auto* key : {Label24, Label23}) {
        key->setMinimumWidth(60);
        key->setFrameShape(QFrame::Panel);
        key->setFrameShadow(QFrame::Sunken);
    }
    line->addWidget(Label24);
    line->addWidget(Label21);
    line->addSpacing(24);
    line->addWidget(owner);
    line->addWidget(Label23);
    line->addStretch(1);
    outer->addLayout(line);

    // the main grid and the side grid of flagged vehicles
    auto* grids = new QHBoxLayout;
    auto* main = frame("Frame1", "Járművek");
    auto* mainLayout = new QVBoxLayout(main);
    DBGrid1 = grid("DBGrid1", main);
    mainLayout->addWidget(DBGrid1);
    auto* side = frame("Frame2", "Figyelmeztetett járművek");
    auto* sideLayout = new QVBoxLayout(side);
    DBGrid2 = grid("DBGrid2", side);
    sideLayout->addWidget(DBGrid2);
    side->setFixedWidth(380);
    grids->addWidget(main, 1);
    grids->addWidget(side);
    outer->addLayout(grids, 1);
    DBGrid1->setMinimumHeight(150);
    DBGrid2->setMinimumHeight(100);

    // buttons
    auto* buttons = new QGridLayout;
    buttons->setHorizontalSpacing(6);
    buttons->setVerticalSpacing(4);
    Command4 = button("Command4", "OK-Mentés");
    Command3 = button("Command3", "Új adat");
    Command5 = button("Command5", "Új adat");
    Command9 = button("Command9", "Szerviz modul");
    Command10 = button("Command10", "Szerviz modul");
    Command11 = button("Command11", "Archívum");
    Command1 = button("Command1", "Vissza az éles adatokra!");
    Command6 = button("Command6", "Aktuális lap nyomtatása");
    Command7 = button("Command7", "Aktuális laptól minden adat  nyomtatása");
    Command8 = button("Command8", "Műszaki viszga szükségesség nyomtatása");
    Command12 = button("Command12", "Segédlet (Help)");
    Command13 = button("Command13", "Kilépés (Exit)");
    int col = 0;
    for (auto* b : {Command4, Command3, Command9, Command11, Command1, Command12}) buttons->addWidget(b, 0, col++);
    col = 0;
    for (auto* b : {Command5, Command10, Command6, Command7, Command8, Command13}) buttons->addWidget(b, 1, col++);
    for (int c = 0; c < 6; ++c) buttons->setColumnStretch(c, 1);
    outer->addLayout(buttons);

    // marks that no code of this form shows stay hidden; Label35 and Label36 until the checks show them
    for (auto* l : {Label12, Label39, Label35, Label36}) l->setVisible(false);
    Label21->setVisible(false);
    Command1->setVisible(false);
    VisszaEles->setVisible(false);
    resize(1340, 760);
}

void GKTorzsFormX::bindings() {
    auto* d = JarmuvekData;
    d->bind(Text1, "GkFrsz");
    d->bind(Text2, "GkTipus");
    d->bind(DTPicker1, "GkForgalombahelyezve");
    d->bind(Text3, "Hengerurtartalom");
    d->bind(Text4, "FogyasztásLiter100");
    d->bind(Text5, "GkVezetoNeve");
    d->bind(Text6, "SzervizIntervallumNap");
    d->bind(Text7, "SzervizIntervallumKM");
    d->bind(Text8, "CascoHaviDija");
    d->bind(Text9, "KotelezoHaviDija");
    d->bind(Text22, "KotelezoHaviDija");
    d->bind(DTPicker3, "KotelezoBiztDatum");
    d->bind(Text10, "KilometerOraAllasa");
    d->bind(Text11, "OnkoltsegKm");
    d->bind(Text12, "JelenlegiKmAllas");
    d->bind(DTPicker4, "UtolsoSzervizDatum");
    d->bind(DTPicker2, "MuszakiVizsgaDatum");
    d->bind(Text13, "PartnerNeve");
    Label23->setProperty(forms::LabelWritesBack, true);  // the owner choice sets it
    d->bind(Label23, "PartnerID");
    d->bind(Check2, "Alvállalkozó");
    d->bind(Text14, "Alvázszám");
    d->bind(Text15, "Motorszám");
    d->bind(DTPicker6, "TachográfHitelesités");
    d->bind(DTPicker7, "TachoOMHEng");
    d->bind(DTPicker8, "NemzetkoziBiztDatum");
    d->bind(DTPicker9, "TuzoltoDatum");
    d->bind(Text16, "SzemleKM");
    d->bind(Text17, "OlajcsereKM");
    d->bind(Text18, "NköziKarbantNaploKM");
    d->bind(Text19, "HajtaslancOlajcsKM");
    d->bind(Text20, "VezérmüOlajcsereKM");
    d->bind(Check1, "Figyelmeztetés");
    d->bind(Label21, "recordID");
    d->bind(Label24, "recordID");

    DBGrid1->bind(JarmuvekData);
    const QFontMetrics metrics(DBGrid1->horizontalHeader()->font());
    // wide enough for the heading, and for the names and types a clerk reads
    const std::map<std::string, int> texts = {{"GkTipus", 150}, {"GkVezetoNeve", 130}, {"PartnerNeve", 180},
                                              {"Alvázszám", 150}, {"Motorszám", 120}};
    for (const char* c : GridColumns) {
        int width = std::max(70, metrics.horizontalAdvance(qs(c)) + 20);
        if (auto it = texts.find(c); it != texts.end()) width = std::max(width, it->second);
        DBGrid1->addColumn(c, c, width);
    }
    DBGrid2->bind(Data1);
    DBGrid2->addColumn("GkFrsz", "GkFrsz", 90);
    DBGrid2->addColumn("GkTipus", "GkTipus", 120);
    DBGrid2->addColumn("GkVezetoNeve", "GkVezetoNeve", 130);
}

void GKTorzsFormX::events() {
    using forms::onClick;
    onClick(Mentes, [this] { Mentes_Click(); });
    onClick(GKUjadat, [this] { GKUjadat_Click(); });
    onClick(GKTorol, [this] { GKTorol_Click(); });
    onClick(FrszKeres, [this] { FrszKeres_Click(); });
    onClick(GKtipusKeres, [this] { GKtipusKeres_Click(); });
    onClick(GKVezetoKeres, [this] { GKVezetoKeres_Click(); });
    onClick(AktLapNyom, [this] { AktLapNyom_Click(); });
    onClick(AktLapTolMindNyom, [this] { AktLapTolMindNyom_Click(); });
    onClick(MuszakiKell, [this] { MuszakiKell_Click(); });
    onClick(SzervizModul, [this] { SzervizModul_Click(); });
    onClick(ArchivumA, [this] { ArchivumA_Click(); });
    onClick(VisszaEles, [this] { VisszaEles_Click(); });
    onClick(Segedlet, [this] { Segedlet_Click(); });
    onClick(Kilepes, [this] { Kilepes_Click(); });
    onClick(Valaszt, [this] { Valaszt_Click(); });
    // the buttons only call the menu handlers
    onClick(Command4, [this] { Mentes_Click(); });
    onClick(Command3, [this] { GKUjadat_Click(); });
    onClick(Command5, [this] { GKUjadat_Click(); });
    onClick(Command6, [this] { AktLapNyom_Click(); });
    onClick(Command7, [this] { AktLapTolMindNyom_Click(); });
    onClick(Command8, [this] { MuszakiKell_Click(); });
    onClick(Command9, [this] { SzervizModul_Click(); });
    onClick(Command10, [this] { SzervizModul_Click(); });
    onClick(Command11, [this] { ArchivumA_Click(); });
    onClick(Command1, [this] { Command1_Click(); });
    onClick(Command12, [this] { Segedlet_Click(); });
    onClick(Command13, [this] { Kilepes_Click(); });
    onClick(Command2, [this] { Command2_Click(); });
    connect(Combo1, &QComboBox::activated, this, [this](int i) { forms::run([&] { Combo1_Click(i); }); });

    // focus colours; the plate in capitals and "0" in the empty money fields on leaving
    forms::focusColors(Text1, forms::RestColor, [this] { Text1->setText(qs(vb::UCase(str(Text1->text())))); });
    forms::focusColors({Text2, Text3, Text4, Text5, Text6, Text7, Text10, Text12, Text13, Text14, Text15, Text16,
                        Text17, Text18, Text19, Text20, Text21});
    for (auto* t : {Text8, Text9, Text11, Text22}) {
        forms::focusColors(t, forms::RestColor, [t] {
            if (t->text().isEmpty()) t->setText("0");
        });
    }
    forms::decimal({Text3, Text4, Text7, Text8, Text10, Text12, Text16, Text17, Text18, Text19, Text20});
    forms::wholeNumber({Text6});
    forms::signedDecimal({Text9, Text11});
    forms::onChange(Text9, [this] { mirror(Text9, Text22); });
    forms::onChange(Text22, [this] { mirror(Text22, Text9); });

    forms::onChange(Text21, [this] { Text21_Change(); });
    connect(DBGrid2, &QAbstractItemView::clicked, this, [this] { forms::run([this] { DBGrid2_Click(); }); });
    forms::onDblClick(DBGrid2, [this] { DBGrid2_Click(); });
    DBGrid1->HeadClick = [this](int column) { DBGrid1_HeadClick(column); };
    // Label24 shows the key: it changes with every move of the vehicles, and the checks follow.
    connect(JarmuvekData, &forms::DataControl::moved, this, [this] { forms::run([this] { Label24_Change(); }); });
}

// ---------------------------------------------------------------- menu entries and buttons

void GKTorzsFormX::Mentes_Click() {
    save(JarmuvekData, DBGrid1);
    if (count(JarmuvekData) > 0) CheckWarnings();
}

void GKTorzsFormX::GKUjadat_Click() { newRecord(JarmuvekData, Label24, "recordID", Text1); }

void GKTorzsFormX::GKTorol_Click() {
    bool deleted = deleteRecord(JarmuvekData, DeleteText, DeleteTitle, ArchivData,
                                {ArchiveFailText, vb::vbOKOnly, forms::UnexpectedTitle}, [this] { GKUjadat_Click(); });
    if (!deleted) DBGrid1->Refresh();
}

void GKTorzsFormX::FrszKeres_Click() {
    standardSearch(JarmuvekData, "GkFrsz", PlatePrompt, PlateTitle, PlateNotFound);
}

void GKTorzsFormX::GKtipusKeres_Click() {
    standardSearch(JarmuvekData, "GkTipus", TypePrompt, TypeTitle, TypeNotFound);
}

void GKTorzsFormX::GKVezetoKeres_Click() {
    standardSearch(JarmuvekData, "GkVezetoNeve", DriverPrompt, DriverTitle, DriverNotFound);
}

void GKTorzsFormX::AktLapNyom_Click() { sheets::currentVehicle(JarmuvekData); }

void GKTorzsFormX::AktLapTolMindNyom_Click() { sheets::fromCurrentOn(JarmuvekData); }

void GKTorzsFormX::MuszakiKell_Click() { sheets::inspectionDue(JarmuvekData, DBGrid1); }

// The service module gets the vehicle's key; it sets CurrentFormName itself, which the main form
// reads when this form has closed.
void GKTorzsFormX::SzervizModul_Click() {
    Globals::CurrentFormName.clear();
    Globals::CurrentVehicleID = numberIn(Label24);
    forms::get("SzervizmodulFormX").Show(true);
}

void GKTorzsFormX::ArchivumA_Click() {
    forms::hourglass();
    struct Arrow {
        ~Arrow() { forms::arrow(); }
    } atEnd;
    Command1->setVisible(true);
    Command1->setDefault(true);
    VisszaEles->setVisible(true);
    JarmuvekData->setRecordSource(ArchiveSource);
    vb::resume([&] { JarmuvekData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
    if (count(JarmuvekData) > 0) {
        vb::resume([&] { JarmuvekData->rs().MoveLast(); });
        vb::resume([&] { JarmuvekData->rs().MoveFirst(); });
        Err.Clear();
    } else {
        forms::arrow();
        forms::MsgBox(EmptyArchiveText, vb::vbInformation, EmptyArchiveTitle);
        Command1_Click();
    }
    RefreshView();
}

void GKTorzsFormX::VisszaEles_Click() { Command1_Click(); }

void GKTorzsFormX::Command1_Click() {
    forms::hourglass();
    struct Arrow {
        ~Arrow() { forms::arrow(); }
    } atEnd;
    JarmuvekData->setRecordSource(LiveSource);
    vb::resume([&] { JarmuvekData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
    Command1->setVisible(false);
    Command1->setDefault(false);
    VisszaEles->setVisible(false);
}

void GKTorzsFormX::Segedlet_Click() { help(); }

void GKTorzsFormX::Kilepes_Click() {
    standardExit([this] { offerDeleteIfEmpty(JarmuvekData, str(Text2->text()), ExitText, ExitTitle); },
                 {Data1, ArchivData, JarmuvekData});
}

// ---------------------------------------------------------------- picking

void GKTorzsFormX::Form_Load() {
    for (auto* l : {Label14, Label15, Label16, Label17}) l->setVisible(false);
    Valaszt->setVisible(Globals::CurrentFormName != Name);
}

void GKTorzsFormX::Valaszt_Click() {
    returnPick(
        JarmuvekData,
        [this] {
            Globals::PickedVehiclePlate = str(Text1->text());
            Globals::PickedVehicleID = numberIn(Label24);
            Globals::PickedPartnerName = str(Text13->text());
            Globals::PickedPartnerID = numberIn(Label23);
            Globals::PickedSubcontractor = int16_t(Check2->isChecked() ? 1 : 0);
        },
        [] {
            Globals::PickedVehiclePlate.clear();
            Globals::PickedPartnerName.clear();
        });
}

// ---------------------------------------------------------------- owner choice

void GKTorzsFormX::Combo1_Click(int index) {
    if (count(JarmuvekData) < 1 || index < 0) return;
    forms::setText(Text13, str(Combo1->itemText(index)));
    // PartnerData stands on the chosen item's row: the list was filled in the same order
    vb::resume([&] {
        auto& p = PartnerData->rs();
        p.setAbsolutePosition(index);
        forms::setText(Label23, vb::CStr(vb::NullToNum(p.Fields("recordID").Value())));
    });
    Err.Clear();
}

void GKTorzsFormX::Command2_Click() {
    Globals::PickedName.clear();
    Globals::PickedCustomerID = vb::Empty{};
    if (openPicker("CimzettForm", Globals::CurrentFormName)) {
        forms::setText(Text13, Globals::PickedName);
        const auto& id = Globals::PickedCustomerID;
        forms::setText(Label23, vb::isEmpty(id) || vb::isNull(id) ? std::string() : vb::CStr(id));
    }
}

// ---------------------------------------------------------------- fields and grids

void GKTorzsFormX::mirror(QLineEdit* from, QLineEdit* to) {
    if (mirroring_ || to->text() == from->text()) return;
    mirroring_ = true;
    to->setText(from->text());
    mirroring_ = false;
}

void GKTorzsFormX::Text21_Change() { quickSearch(JarmuvekData, "GkFrsz", str(Text21->text())); }

void GKTorzsFormX::DBGrid2_Click() {
    vb::Variant plate = vb::resume([&] { return Data1->rs().Fields("GkFrsz").Value(); }, vb::Variant(vb::Null{}));
    Err.Clear();
    selectFromGrid(JarmuvekData, "GkFrsz", plate);
}

void GKTorzsFormX::DBGrid1_HeadClick(int column) { headerSort(JarmuvekData, DBGrid1, column); }

void GKTorzsFormX::Label24_Change() {
    if (count(JarmuvekData) > 0) CheckWarnings();
}

// ---------------------------------------------------------------- start and the checks

void GKTorzsFormX::Form_Activate() {
    forms::hourglass();
    struct Arrow {
        ~Arrow() { forms::arrow(); }
    } atEnd;
    DTPicker5->setDate(qdate(vb::clock::today().serial));
    openOnLast(JarmuvekData, "recordID", Text1);
    if (!checkDatabases(PartnerData)) return;
    Combo1->clear();
    if (count(PartnerData) > 0) {
        auto& p = PartnerData->rs();
        vb::resume([&] { p.MoveFirst(); });
        while (!vb::resume([&] { return p.Eof(); }, true)) {
            Combo1->addItem(qs(vb::nullToText(vb::resume([&] { return p.Fields("BerNev").Value(); },
                                                         vb::Variant(vb::Null{})))));
            if (!vb::resume([&] { p.MoveNext(); })) break;
        }
    }
    Combo1->setCurrentIndex(-1);
    Err.Clear();
    RefreshView();
    Globals::PickDone = 0;
}

// Shared by Form_Activate and the archive view: the side grid reads the flagged vehicles again,
// and the checks run on the current record.
void GKTorzsFormX::RefreshView() {
    vb::resume([&] { Data1->Refresh(); });
    DBGrid2->Refresh();
    Err.Clear();
    if (count(JarmuvekData) > 0) CheckWarnings();
}

// The marks of the current record, in this order; no step clears Check1. Kept as the program has
// them: the service interval in km is compared with the present reading as texts; the last value
// plus the interval at or above the present one marks; the tachograph dates use today minus N.
void GKTorzsFormX::CheckWarnings() {
    double today = vb::clock::today().serial;
    auto flag = [this] { Check1->setChecked(true); };
    // tachograph calibration
    if (holds([&] { return serial(DTPicker6) < today - Globals::WarnTachoCalibrationDays; })) Label35->setVisible(true);
    // tachograph permit
    if (holds([&] { return serial(DTPicker7) < today - Globals::WarnTachoPermitDays; })) {
        Label36->setVisible(true);
        flag();
    }
    // last service plus the interval in days
    if (holds([&] { return serial(DTPicker4) + num(Text6) >= today; })) {
        Label14->setVisible(true);
        flag();
    } else {
        Label14->setVisible(false);
    }
    // the service interval in km against the present reading, as texts
    if (holds([&] { return (num(Text7) > 0) & (str(Text7->text()) >= str(Text12->text())); })) {
        Label15->setVisible(true);
        flag();
    } else {
        Label15->setVisible(false);
    }
    // technical inspection
    if (holds([&] { return serial(DTPicker2) <= today; })) {
        Label16->setVisible(true);
        flag();
    } else {
        Label16->setVisible(false);
    }
    // compulsory insurance
    if (holds([&] { return serial(DTPicker3) <= today; })) {
        Label17->setVisible(true);
        flag();
    } else {
        Label17->setVisible(false);
    }
    // the kilometre readings of the periodic works
    const std::array<QLineEdit*, 5> fields = {Text16, Text17, Text18, Text19, Text20};
    const std::array<int32_t, 5> limits = {Globals::WarnInspectionKm, Globals::WarnOilChangeKm,
                                           Globals::WarnServiceLogKm, Globals::WarnDrivetrainOilKm,
                                           Globals::WarnTimingBeltKm};
    for (size_t i = 0; i < fields.size(); ++i) {
        auto* f = fields[i];
        int32_t n = limits[i];
        if (holds([&] { return (n > 0) & (num(f) + n >= num(Text12)); })) {
            forms::setBackColor(f, WarnColor);
            flag();
        } else {
            forms::setBackColor(f, PlainColor);
        }
    }
    Err.Clear();
}

}  // namespace vehicles
