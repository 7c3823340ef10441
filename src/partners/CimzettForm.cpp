#include "partners/CimzettForm.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/layout.h"
#include "forms/globals.h"
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
constexpr const char* DesignedSource = "select * from Címzett order by CimNev";
constexpr const char* SubcontractorSource =
    "select * from Címzett where NemAktiv = False and Alvállalkozó = True order by Cimnev";
constexpr const char* ActiveSource = "select * from Címzett where NemAktiv = False order by Cimnev";
constexpr const char* InactiveSource = "select * from Címzett where NemAktiv = True order by Cimnev";
constexpr const char* AllSource = "select * from Címzett order by Cimnev";
constexpr const char* ByIdSource = "select * from Címzett order by recordID";

}  // namespace

CimzettForm::CimzettForm() : RecordForm("CimzettForm", "Partnertörzs - Vevők (címzettek) adatai (CRM alap)") {
    CimzettData = data("CimzettData", "kitarol.mdb", DesignedSource);
    OrszagjelData = data("OrszagjelData", "betarol.mdb", "Orszagjel");
    RegisztData = data("RegisztData", "Regiszt.dsb", "Regisztrálás");

    auto* root = new QVBoxLayout(this);
    auto* bar = menuBar(root);
    QMenu* adat = menu(bar, "Adatkezeles", "&Adatkezelés");
    UjAdat = menuItem(adat, "UjAdat", "Új adat");
    RekordDupla = menuItem(adat, "RekordDupla", "Rekord duplázás");
    CimzettTorol = menuItem(adat, "CimzettTorol", "Törlés (adatsor)");
    OsszTorol = menuItem(adat, "OsszTorol", "Összes adat törlése");
    QMenu* szur = menu(bar, "Szuresek", "&Szűrések");
    Aktivak = menuItem(szur, "Aktivak", "Aktív vevők");
    NemAktiv = menuItem(szur, "NemAktiv", "NEM aktív vevők");
    SzuresKi = menuItem(szur, "SzuresKi", "Szűrés ki (mind)");
    CimzettNyom = menuItem(bar, "CimzettNyom", "&Nyomtatás");
    AtadaS = menuItem(bar, "AtadaS", "Á&tadás (Választ)");
    Kilepes = menuItem(bar, "Kilepes", "&Kilépés (Exit)");

    struct Field {
        QLineEdit** box;
        const char* name;
        const char* caption;
        const char* tip;
        const char* column;
    };
    const Field fields[] = {
        {&Text1, "Text1", "Azonosító:", nullptr, "recordID"},
        {&Text2, "Text2", "Vevő neve:", "Név", "CimNev"},
        {&Text3, "Text3", "Irányítószám:", "Postai jel, irányítószám", "CimIrszam"},
        {&Text4, "Text4", "Székhely:", "Székhely neve", "CimSzekhely"},
        {&Text5, "Text5", "Cím:", "Utca, tér stb. neve, száma", "CimCim"},
        {&Text6, "Text6", "Telefon:", "Szám", "CimTelefon"},
        {&Text7, "Text7", "Fax:", "Szám", "CimFax"},
        {&Text8, "Text8", "Mobil:", "Szám", "CimMobil"},
        {&Text9, "Text9", "Adószám:", "Szám", "CimAdoszam"},
        {&Text10, "Text10", "Bankszámlaszám:", "Szám", "CimSzamlaszam"},
        {&Text11, "Text11", "Kapcsolattartó:", "Név", "Kapcsolattartó"},
        {&Text12, "Text12", "Számlázási székhely:", "Székhely neve", "SzamlazasSzekhelye"},
        {&Text13, "Text13", "Számlázási irányítószám:", "Postai irányítószám", "SzamlazasIrszama"},
        {&Text14, "Text14", "Számlázási cím:", "Utca, tér stb. neve, száma", "SzamlazasCime"},
        {&Text15, "Text15", "Vevő kódja:", "Kód", "VevoKodja"},
        {&Text16, "Text16", "Jutalék jele:", "Jutalék jele", "JutalekJel"},
        {&Text17, "Text17", "Fizetési határidő (nap):", "Teljesítés dátumához adott nap", "FizetésiHatáridö"},
        {&Text18, "Text18", "Kézhezvétel (nap):", "Okmány keltéhez adott nap", "KézhezvételNap"},
        {&Text19, "Text19", "Kapcsolattartó címe:", "Teljes cím", "KapcsolattartóCime"},
        {&Text20, "Text20", "Megjegyzés:", "Megjegyzés", "Megjegyzés"},
    };
    auto* fieldGrid = new QGridLayout;
    fieldGrid->setHorizontalSpacing(8);
    auto place = [&](int n, const char* name, const char* caption, QWidget* box) {
        int row = n % 7, col = (n / 7) * 2;
        auto* c = label(std::string(name) + "Caption", caption);
        c->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        fieldGrid->addWidget(c, row, col);
        fieldGrid->addWidget(box, row, col + 1);
    };
    int n = 0;
    for (const auto& f : fields) {
        *f.box = textBox(f.name);
        if (f.tip) (*f.box)->setToolTip(QString::fromUtf8(f.tip));
        CimzettData->bind(*f.box, f.column);
        place(n++, f.name, f.caption, *f.box);
    }
    Text1->setReadOnly(true);
    Label14 = label("Label14", "");
    Label14->setFrameShape(QFrame::StyledPanel);
    Label14->setProperty(forms::LabelWritesBack, true);
    Label14->setMinimumHeight(Text2->sizeHint().height());
    CimzettData->bind(Label14, "cimorszag");
    place(n++, "Label14", "Ország jelzése:", Label14);
    for (int c : {1, 3, 5}) fieldGrid->setColumnStretch(c, 1);
    root->addLayout(fieldGrid);

    struct Check {
        QCheckBox** box;
        const char* name;
        const char* caption;
        const char* tip;
        const char* column;
    };
    const Check checks[] = {
        {&Check1, "Check1", "Folyamatos teljesítés:", nullptr, "FolyamatosTelj"},
        {&Check2, "Check2", "NEM aktív", "Nem jelenik meg okmánykitöltésnél", "NemAktiv"},
        {&Check3, "Check3", "Környzetvédelmi termékdíjat vevő átvállalja", nullptr, "KVTDÁtvállalás"},
        {&Check4, "Check4", "Különjárat:", nullptr, "Különjárat"},
        {&Check5, "Check5", "Munkásjárat:", nullptr, "Munkásjárat"},
        {&Check6, "Check6", "Alvállalkozó:", nullptr, "Alvállalkozó"},
        {&Check7, "Check7", "Pénzforgalmi elszámolás:", "Pénzforgalmi elszámolás 2013-tól", "PénzforgalmiElszámolás"},
    };
    auto* checkRow = new QHBoxLayout;
    for (const auto& c : checks) {
        *c.box = checkBox(c.name, c.caption);
        if (c.tip) (*c.box)->setToolTip(QString::fromUtf8(c.tip));
        CimzettData->bind(*c.box, c.column);
        checkRow->addWidget(*c.box);
    }
    checkRow->addStretch(1);
    root->addLayout(checkRow);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(label("Text21Caption", "Név gyorskereső:"));
    Text21 = textBox("Text21");
    Text21->setFixedWidth(260);
    searchRow->addWidget(Text21);
    searchRow->addStretch(1);
    root->addLayout(searchRow);

    logKey = new QLabel(this);
    logKey->hide();
    CimzettData->bind(logKey, "recordID");

    root->addWidget(forms::heading(this, "Vevők (címzettek)"));
    DBGrid1 = grid("DBGrid1");
    root->addWidget(DBGrid1, 3);
    root->addWidget(forms::heading(this, "Országjel"));
    DBGrid2 = grid("DBGrid2");
    DBGrid2->setToolTip("Dupla kattintással válasszon!");
    root->addWidget(DBGrid2, 1);

    Command4 = button("Command4", "OK-Mentés");
    Command1 = button("Command1", "Keresés országra");
    Command2 = button("Command2", "Új ország megadása");
    Command3 = button("Command3", "Ország törlése");
    root->addLayout(forms::buttonRow({Command4, Command1, Command2, Command3}, 140));

    DBGrid1->bind(CimzettData);
    DBGrid1->addColumn("Név", "CimNev", 240);
    DBGrid1->addColumn("Irsz.", "CimIrszam", 60);
    DBGrid1->addColumn("Székhely", "CimSzekhely", 140);
    DBGrid1->addColumn("Cím", "CimCim", 200);
    DBGrid1->addColumn("Ország", "CimOrszag", 60);
    DBGrid1->addColumn("Telefon", "CimTelefon", 110);
    DBGrid1->addColumn("Adószám", "CimAdoszam", 110);
    DBGrid1->addColumn("Kapcsolattartó", "Kapcsolattartó", 150);
    DBGrid1->addColumn("Azonosító", "recordID", 80);
    DBGrid1->setAllowUpdate(true);
    DBGrid2->bind(OrszagjelData);
    DBGrid2->addColumn("Országjel", "Országjel", 90);
    DBGrid2->addColumn("Ország", "Ország", 220);
    DBGrid2->setAllowUpdate(true);
    DBGrid1->HeadClick = [this](int c) { headerSort(CimzettData, DBGrid1, c); };
    DBGrid2->HeadClick = [this](int c) { headerSort(OrszagjelData, DBGrid2, c); };
    forms::onDblClick(DBGrid2, [this] { DBGrid2_DblClick(); });

    forms::onChange(Text21, [this] { Text21_Change(); });
    forms::onClick(UjAdat, [this] { UjAdat_Click(); });
    forms::onClick(Command4, [this] { Command4_Click(); });
    forms::onClick(RekordDupla, [this] { RekordDupla_Click(); });
    forms::onClick(CimzettTorol, [this] { CimzettTorol_Click(); });
    forms::onClick(OsszTorol, [this] { OsszTorol_Click(); });
    forms::onClick(Aktivak, [this] { Aktivak_Click(); });
    forms::onClick(NemAktiv, [this] { NemAktiv_Click(); });
    forms::onClick(SzuresKi, [this] { SzuresKi_Click(); });
    forms::onClick(Command1, [this] { Command1_Click(); });
    forms::onClick(Command2, [this] { Command2_Click(); });
    forms::onClick(Command3, [this] { Command3_Click(); });
    forms::onClick(AtadaS, [this] { AtadaS_Click(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
    forms::onClick(CimzettNyom, [this] { CimzettNyom_Click(); });

    // the phone: digits, "-", "/" and backspace
    forms::onKeyPress(Text6, [](int& k) { forms::filterKey(k, "-/"); });
    forms::focusColors({Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12,
                        Text13, Text14, Text15, Text16, Text17, Text18, Text19, Text20, Text21});
    resize(1340, 860);
}

void CimzettForm::exitHandler() { Kilepes_Click(); }

// The subcontractor view on the caller's request, else the designed source.
void CimzettForm::Form_Load() {
    pickStart();
    CimzettData->setRecordSource(Globals::CustomerSubcontractorRequest == 1 ? SubcontractorSource : DesignedSource);
}

void CimzettForm::Form_Activate() {
    hourglass();
    openOnLast(CimzettData, "recordID", Text2);
    DBGrid1->Refresh();
    DBGrid2->Refresh();
    arrow();
}

void CimzettForm::Aktivak_Click() { setSource(ActiveSource); }
void CimzettForm::NemAktiv_Click() { setSource(InactiveSource); }
void CimzettForm::SzuresKi_Click() { setSource(AllSource); }

void CimzettForm::setSource(const std::string& source) {
    hourglass();
    CimzettData->setRecordSource(source);
    resume([&] { CimzettData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
    arrow();
}

void CimzettForm::Text21_Change() { quickSearch(CimzettData, "CimNev", forms::text(Text21)); }

// "Új adat": the key is the last recordID + 1 in key order; the row is added under the name order,
// requeried and found.
void CimzettForm::UjAdat_Click() {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    Err.Clear();
    double id = 1;
    resume([&] {
        CimzettData->setRecordSource(ByIdSource);
        CimzettData->Refresh();
        auto& r = CimzettData->rs();
        if (r.RecordCount() > 0) {
            r.MoveLast();
            id = vb::nullToDouble(r.Fields("recordID").Value()) + 1;
        }
    });
    resume([&] {
        CimzettData->setRecordSource(DesignedSource);
        CimzettData->Refresh();
        auto& r = CimzettData->rs();
        r.AddNew();
        r.Fields("recordID").setValue(id);
        r.Update();
        r.Requery();
        r.FindFirst("[recordID] = " + vb::CStr(id));
    });
    bool failed = Err.Number() != 0;
    Err.Clear();
    DBGrid1->Refresh();
    if (failed) {
        log("HIBA vevőtörzs mentésében (új adat)");
    } else {
        forms::setFocus(Text2);
        log("Új vevőtörzs adatsor");
    }
}

// "OK-Mentés": save by moving, then the mandatory fields; the row stays saved as it is.
void CimzettForm::Command4_Click() {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    if (count(CimzettData) < 1) {
        UjAdat_Click();
        return;
    }
    Err.Clear();
    resume([&] {
        auto& r = CimzettData->rs();
        if (r.Eof() || r.Bof()) r.MoveLast();
        vb::Variant mark = r.Bookmark();
        r.MoveLast();
        r.setBookmark(mark);
    });
    if (Err.Number() != 0) {
        Err.Clear();
        log("HIBA vevőtörzs mentésben (OK)");
        Beep();
        resume([&] { CimzettData->rs().MoveLast(); });
        Err.Clear();
    }
    DBGrid1->Refresh();
    if (forms::text(Text2).empty() || forms::text(Text4).empty() || forms::text(Text5).empty()) {
        arrow();
        Beep();
        MsgBox("Kötelező adat nincs kitöltve (vastag aláhúzottak)!", vb::vbExclamation, "FIGYELEM! KEZELŐI HIBA!");
        log("Adathiány (kötelező adat) vevőtörzsben");
    }
}

// "Rekord duplázás": a new row with the current row's name and tax number, nothing else.
void CimzettForm::RekordDupla_Click() {
    if (!onRecord(CimzettData)) {
        arrow();
        Beep();
        MsgBox("Nincs adat, vagy nem választott ki adatsort!", vb::vbExclamation,
               "FIGYELEM! Válasszon kattintással adatsort!");
        return;
    }
    arrow();
    if (MsgBox("Kér új adatot a név és az adószám másolatával (New)?", vb::vbYesNo + vb::vbQuestion,
               "FIGYELEM! Új adatsor duplázással!") != vb::vbYes)
        return;
    std::string name = forms::text(Text2);
    std::string taxNumber = forms::text(Text9);
    UjAdat_Click();
    forms::setText(Text2, name);
    forms::setText(Text9, taxNumber);
    Command4_Click();
    log("Új adatsor duplázással vevőtörzsben");
}

void CimzettForm::CimzettTorol_Click() {
    if (!deleteRecord(CimzettData, "Biztosan véglegesen törli az adatsort (Delete record)?",
                      "FIGYELEM! VÉGLEGES SORTÖRLÉS!", nullptr, {}, {}))
        return;
    log("Törlés vevő törzsből");
    DBGrid1->Refresh();
    if (count(CimzettData) < 1) {
        arrow();
        if (MsgBox("Minden adat törölve (Deleted All)! Kér új adatot (New)?", vb::vbYesNo + vb::vbQuestion,
                   "FIGYELEM! Új adatsor felvitele!") == vb::vbYes)
            UjAdat_Click();
    }
}

// "Összes adat törlése": every row of the set goes (the whole table unless a filter is on).
void CimzettForm::OsszTorol_Click() {
    arrow();
    Beep();
    if (MsgBox("Biztosan véglegesen törli az ÖSSZES adatot (Delete)?", vb::vbYesNo + vb::vbQuestion,
               "FIGYELEM! MINDEN ADAT VÉGLEGES TÖRLÉSE!") != vb::vbYes)
        return;
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    db::Recordset* r = CimzettData->Recordset();
    if (!r || r->closed()) return;
    if (count(CimzettData) > 0) {
        resume([&] { r->MoveFirst(); });
        while (!resume([&] { return r->Eof(); }, true)) {
            resume([&] { r->Delete(); });
            if (!resume([&] { r->MoveNext(); })) break;
        }
    }
    Err.Clear();
    DBGrid1->Refresh();
    log("Törlés teljes vevőtörzs (Del All)");
}

void CimzettForm::Command1_Click() {
    standardSearch(OrszagjelData, "Ország", "Kérem az ország nevét:", "Keresés országra",
                   "Nincs ilyen ország! Keressen újra, vagy válasszon a listából!", "FIGYELEM! NINCS ILYEN ADAT!");
}

// "Új ország megadása": an empty row in Orszagjel, to be typed in the grid.
void CimzettForm::Command2_Click() {
    hourglass();
    addRow(OrszagjelData, {});
    DBGrid2->Refresh();
    log("Új adatsor ország törzsbe");
    arrow();
}

void CimzettForm::Command3_Click() {
    if (deleteRecord(OrszagjelData, "Biztosan véglegesen törli az adatsort (Delete)?", "FIGYELEM! VÉGELEGES TÖRLÉS!",
                     nullptr, {}, {})) {
        DBGrid2->Refresh();
        log("Törlés ország törzsből (adatsor Del)");
    }
}

// A double click in the country grid: the mark into Label14 and so into CimOrszag.
void CimzettForm::DBGrid2_DblClick() {
    if (count(OrszagjelData) < 1) return;
    Err.Clear();
    vb::Variant mark = resume([&] { return OrszagjelData->rs().Fields("Országjel").Value(); }, vb::Variant(vb::Null{}));
    if (Err.Number() != 0) {
        Err.Clear();
        return;
    }
    std::string text = vb::nullToText(mark);
    forms::setText(Label14, text);  // stored with the row at the next move, as a bound label
}

// "Átadás": the current customer into the shared slots, then the form closes as under "Kilépés".
void CimzettForm::AtadaS_Click() {
    returnPick(
        CimzettData,
        [this] {
            Globals::PickedName = forms::text(Text2);
            int32_t id = resume([&] { return vb::CLng(vb::Variant(forms::text(Text1))); }, int32_t(0));
            Err.Clear();
            Globals::PickedCustomerID = id;
            Globals::PickedCustomerPostCode = forms::text(Text3);
            Globals::PickedCustomerTown = forms::text(Text4);
            Globals::PickedCustomerStreet = forms::text(Text5);
            Globals::PickedCustomerPhone = forms::text(Text6);
            Globals::PickedCustomerFax = forms::text(Text7);
            Globals::PickedCustomerMobile = forms::text(Text8);
            Globals::PickedCustomerTaxNumber = forms::text(Text9);
            Globals::PickedCustomerBankAccount = forms::text(Text10);
            Globals::PickedCustomerContact = forms::text(Text11);
            Globals::PickedCustomerCountry = forms::text(Label14);
        },
        [] {
            Globals::PickedName.clear();
            Globals::PickedCustomerPostCode.clear();
            Globals::PickedCustomerTown.clear();
            Globals::PickedCustomerStreet.clear();
            Globals::PickedCustomerPhone.clear();
            Globals::PickedCustomerFax.clear();
            Globals::PickedCustomerMobile.clear();
            Globals::PickedCustomerTaxNumber.clear();
            Globals::PickedCustomerBankAccount.clear();
            Globals::PickedCustomerContact.clear();
            Globals::PickedCustomerCountry.clear();
        });
}

// "Kilépés": the closing check of the names on request, the sets closed, the form unloaded.
void CimzettForm::Kilepes_Click() {
    CloseGuard = false;
    if (count(CimzettData) > 0) {
        arrow();
        Beep();
        if (MsgBox("Kéri az adatok teljes ellenőrzését?", vb::vbYesNo + vb::vbQuestion,
                   "FIGYELEM! Teljeskörű ellenőrzés!") == vb::vbYes)
            removeNameless();
    }
    closeAll({CimzettData, OrszagjelData, RegisztData});
    // the callers to show again: neither form exists in this program, so this never holds
    const std::string& caller = Globals::CurrentFormName;
    if (caller == "menuform" || caller == "ujszamlaformx") forms::get(caller).Show();
    arrow();
    Unload();
}

// The walk of the closing check: a row whose name is empty or null is deleted.
void CimzettForm::removeNameless() {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    db::Recordset* r = CimzettData->Recordset();
    if (!r || r->closed()) return;
    Err.Clear();
    resume([&] { r->MoveFirst(); });
    while (Err.Number() == 0 && !resume([&] { return r->Eof(); }, true)) {
        vb::Variant name = resume([&] { return r->Fields("CimNev").Value(); }, vb::Variant(std::string("?")));
        Err.Clear();
        auto* text = std::get_if<std::string>(&name);
        if (vb::isNull(name) || (text && text->empty())) {
            if (!resume([&] { r->Delete(); })) {
                Err.Clear();
                Beep();
            }
        }
        resume([&] { r->MoveNext(); });
    }
    Err.Clear();
}

void CimzettForm::CimzettNyom_Click() {
    printCustomers(CimzettData);
    DBGrid1->Refresh();
}

void CimzettForm::log(const std::string& action) { LogAction(RegisztData, action, logKey); }

}  // namespace partners
