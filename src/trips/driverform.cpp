#include "trips/driverform.h"

#include <QAction>
#include <QCheckBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "forms/layout.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "trips/common.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace trips {

using forms::arrow;
using forms::hourglass;
using forms::onClick;
using forms::text;
using vb::Err;
using vb::resume;

namespace {
struct ArrowAtEnd {
    ~ArrowAtEnd() { arrow(); }
};

std::string keyText(QLabel* l) { return vb::CStr(vb::Variant(vb::Val(text(l)))); }

QDate qdate(vb::Date d) {
    auto p = vb::dateParts(d);
    return QDate(p.year, p.month, p.day);
}
}  // namespace

VezetokTorzsFormX::VezetokTorzsFormX() : RecordForm(Name, Title) {
    VezetoData = data("VezetoData", "Kerova.dsb", AllSource);
    JarmuData = data("JarmuData", "Tartosan.dsb", std::string(AssignedSource) + "0");
    build();

    onClick(OKMent, [this] { OKMent_Click(); });
    onClick(Frissites, [this] { Frissites_Click(); });
    onClick(UjAdat, [this] { UjAdat_Click(); });
    onClick(Torl_s, [this] { Torl_s_Click(); });
    onClick(CsakAktiv, [this] { CsakAktiv_Click(); });
    onClick(SzuresSKI, [this] { SzuresSKI_Click(); });
    onClick(AtadaS, [this] { AtadaS_Click(); });
    onClick(Segedlet, [this] { Segedlet_Click(); });
    onClick(Kilepes, [this] { Kilepes_Click(); });
    onClick(Command1, [this] { OKMent_Click(); });
    onClick(Command2, [this] { Command2_Click(); });
    onClick(Command3, [this] { Command3_Click(); });
    onClick(Command4, [this] { Frissites_Click(); });
    onClick(Command5, [this] { UjAdat_Click(); });
    onClick(Command6, [this] { CsakAktiv_Click(); });
    onClick(Command7, [this] { SzuresSKI_Click(); });
    onClick(Command8, [this] { AtadaS_Click(); });
    onClick(Command9, [this] { Torl_s_Click(); });
    onClick(Command10, [this] { Kilepes_Click(); });
    onClick(Command11, [this] { Segedlet_Click(); });
    onClick(Command12, [this] { Command12_Click(); });

    forms::focusColors({Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8, Text9, Text10, Text11, Text12, Text13});
    forms::onChange(Text13, [this] { Text13_Change(); });
    // Label7 shows the current driver's key: each time the driver changes, the list follows.
    connect(VezetoData, &forms::DataControl::moved, this, [this] {
        if (text(Label7) != assignedKey_) forms::run([this] { Label7_Change(); });
    });
    DBGrid1->HeadClick = [this](int c) { DBGrid1_HeadClick(c); };
}

void VezetokTorzsFormX::build() {
    auto* outer = new QVBoxLayout(this);
    auto* bar = menuBar(outer);
    auto* muveletek = menu(bar, "Muveletek", "&Műveletek");
    OKMent = menuItem(muveletek, "OKMent", "OK-Mentés");
    Frissites = menuItem(muveletek, "Frissites", "Frissít");
    UjAdat = menuItem(muveletek, "UjAdat", "Új adat");
    Torl_s = menuItem(muveletek, "Torl_s", "Adatsor végleges törlése");
    auto* szures = menu(bar, "Szures", "&Szűrés");
    CsakAktiv = menuItem(szures, "CsakAktiv", "Csak aktívak (szűrés)");
    SzuresSKI = menuItem(szures, "SzuresSKI", "Szűrés kikapcsolása");
    CsakAktiv->setCheckable(true);
    SzuresSKI->setCheckable(true);
    AtadaS = menuItem(bar, "AtadaS", "&Adatátadás");
    Segedlet = menuItem(bar, "Segedlet", "Segédlet (&Help)");
    Kilepes = menuItem(bar, "Kilepes", "&Kilépés");

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(8);
    fields->setVerticalSpacing(4);
    auto put = [&](int row, int pair, const std::string& name, const std::string& caption, QWidget* w) {
        fields->addWidget(label(name + "Caption", caption), row, pair * 2, Qt::AlignRight);
        fields->addWidget(w, row, pair * 2 + 1);
    };
    Label17 = label("Label17", "");
    Text1 = textBox("Text1");
    Text2 = textBox("Text2");
    DTPicker1 = datePicker("DTPicker1");
    Text3 = textBox("Text3");
    Text12 = textBox("Text12");
    Text4 = textBox("Text4");
    Text5 = textBox("Text5");
    Text6 = textBox("Text6");
    Text7 = textBox("Text7");
    Text8 = textBox("Text8");
    Label13 = label("Label13", "");
    Text9 = textBox("Text9");
    Text10 = textBox("Text10");
    Text11 = textBox("Text11");
    DTPicker2 = datePicker("DTPicker2");
    Check1 = checkBox("Check1", "NEM aktív");
    Label7 = label("Label7", "");
    TodayLabel = label("TodayLabel", "");
    Text13 = textBox("Text13");
    Command12 = button("Command12", "Partnertörzs");

    put(0, 0, "Label17", "Sorszám:", Label17);
    put(1, 0, "Text1", "Név", Text1);
    put(2, 0, "Text2", "Jogosítvány száma:", Text2);
    put(3, 0, "DTPicker1", "Jogosítvány lejárata", DTPicker1);
    put(4, 0, "Text3", "Munkakör:", Text3);
    put(5, 0, "Text12", "Anyja neve:", Text12);
    put(0, 1, "Text4", "Irányítószám:", Text4);
    put(1, 1, "Text5", "Település:", Text5);
    put(2, 1, "Text6", "Utca, házszám:", Text6);
    put(3, 1, "Text7", "Elérhetőség:", Text7);
    auto* employer = new QHBoxLayout;
    Text8->setMinimumWidth(240);
    employer->addWidget(Text8, 1);
    employer->addWidget(Command12);
    fields->addWidget(label("Text8Caption", "Munkáltató:"), 4, 2, Qt::AlignRight);
    fields->addLayout(employer, 4, 3);
    put(5, 1, "Label13", "MunkaltatoID", Label13);
    put(0, 2, "Text9", "Adóazonosító:", Text9);
    put(1, 2, "Text10", "TAJ szám:", Text10);
    put(2, 2, "Text11", "Születési hely:", Text11);
    put(3, 2, "DTPicker2", "Születési idő:", DTPicker2);
    fields->addWidget(Check1, 4, 5);
    put(5, 2, "Label7", "Azonosító:", Label7);
    put(6, 0, "TodayLabel", "Mai dátum:", TodayLabel);
    put(6, 2, "Text13", "Névre keresés", Text13);
    for (int c : {1, 3, 5}) fields->setColumnStretch(c, 1);
    for (auto* w : {Text1, Text2, Text3, Text12, Text5, Text6, Text7, Text11, Text13}) w->setMinimumWidth(200);
    outer->addLayout(fields);

    auto* lists = new QHBoxLayout;
    auto* driversFrame = frame("VezetoDataFrame", "Járművezetők");
    auto* driversBox = new QVBoxLayout(driversFrame);
    DBGrid1 = grid("DBGrid1", driversFrame);
    driversBox->addWidget(DBGrid1);
    lists->addWidget(driversFrame, 3);
    auto* assignedFrame = frame("JarmuDataFrame", "Vezető járművei");
    auto* assignedBox = new QVBoxLayout(assignedFrame);
    DBGrid2 = grid("DBGrid2", assignedFrame);
    assignedBox->addWidget(DBGrid2, 1);
    auto* assignedFields = new QGridLayout;
    Label8 = label("Label8", "", assignedFrame);
    Label18 = label("Label18", "", assignedFrame);
    assignedFields->addWidget(label("Label8Caption", "Vezető azonosító:", assignedFrame), 0, 0, Qt::AlignRight);
    assignedFields->addWidget(Label8, 0, 1);
    assignedFields->addWidget(label("Label18Caption", "Rendszám:", assignedFrame), 1, 0, Qt::AlignRight);
    assignedFields->addWidget(Label18, 1, 1);
    assignedFields->setColumnStretch(1, 1);
    assignedBox->addLayout(assignedFields);
    assignedFrame->setMinimumWidth(270);
    lists->addWidget(assignedFrame, 1);
    outer->addLayout(lists, 1);

    Command1 = button("Command1", "OK-Mentés");
    Command2 = button("Command2", "Új jármű");
    Command3 = button("Command3", "Törlés");
    Command4 = button("Command4", "Frissít");
    Command5 = button("Command5", "Új adat");
    Command6 = button("Command6", "Csak aktívak (szűrés)");
    Command7 = button("Command7", "Szűrés kikapcsolása");
    Command8 = button("Command8", "Adatátadás");
    Command9 = button("Command9", "Adatsor végleges törlése");
    Command10 = button("Command10", "Kilépés");
    Command11 = button("Command11", "Segédlet (Help)");
    Command2->setToolTip("Járművezetőhöz jármű rendelése");
    Command3->setToolTip("Jármű törlése");
    outer->addLayout(forms::buttonRow({Command1, Command5, Command9, Command4, Command2, Command3}, 120, false, false));
    outer->addLayout(forms::buttonRow({Command6, Command7, Command8, Command11, Command10}, 120, false, false));

    VezetoData->bind(Label17, "Sorszám");
    VezetoData->bind(Text1, "VezetöNeve");
    VezetoData->bind(Text2, "JogositványSzáma");
    VezetoData->bind(DTPicker1, "JogositványÉrvényessége");
    VezetoData->bind(Text3, "Munkakör");
    VezetoData->bind(Text4, "LakcimIrSzám");
    VezetoData->bind(Text5, "LakcimSzékhely");
    VezetoData->bind(Text6, "LakcimCim");
    VezetoData->bind(Text7, "Elérhetöség");
    VezetoData->bind(Text8, "Munkáltató");
    VezetoData->bind(Label13, "MunkáltatóID");
    VezetoData->bind(Text9, "Adóazonositó");
    VezetoData->bind(Text10, "TAJSzám");
    VezetoData->bind(Text11, "SzületésiHely");
    VezetoData->bind(DTPicker2, "SzületésiIdö");
    VezetoData->bind(Text12, "AnyjaNeve");
    VezetoData->bind(Check1, "Aktiv");
    VezetoData->bind(Label7, "PartnerID");
    JarmuData->bind(Label8, "VezetöID");
    JarmuData->bind(Label18, "Rendszám");

    DBGrid1->bind(VezetoData);
    DBGrid1->addColumn("Név", "VezetöNeve", 200);
    DBGrid1->addColumn("Gépkocsi", "GépkocsiFrsz", 90);
    DBGrid1->addColumn("GkID", "GkID", 50);
    DBGrid1->addColumn("Munkakör", "Munkakör", 120);
    DBGrid1->addColumn("Munkáltató", "Munkáltató", 180);
    DBGrid1->addColumn("Jogosítvány lejárata", "JogositványÉrvényessége", 140);
    DBGrid1->addColumn("NEM aktív", "Aktiv", 70);
    // the registration and the vehicle's id are grid columns only: the grid takes typing
    DBGrid1->setAllowUpdate(true);
    DBGrid2->bind(JarmuData);
    DBGrid2->addColumn("Rendszám", "Rendszám", 100);
    DBGrid2->addColumn("Vezető azonosító", "VezetöID", 130);
    resize(1280, 780);
}

// Today's date; PickDone 0 as a picking form starts.
void VezetokTorzsFormX::Form_Load() {
    forms::setText(TodayLabel, todayText());
    pickStart();
}

// Opening: an empty table gets a row whose licence expiry is today. A filled one stays where it
// stands, so the return from the vehicle or partner picker keeps the driver taking the hand-over.
void VezetokTorzsFormX::Form_Activate() {
    hourglass();
    ArrowAtEnd atEnd;
    if (count(VezetoData) < 1 && addDriverRow(true)) DTPicker1->setDate(qdate(vb::clock::today()));
}

// "OK-Mentés": at either end MoveLast; the bookmark; MoveLast and MoveFirst write the typed values;
// back to the bookmark, a failure moving last. With no row: "Új adat".
void VezetokTorzsFormX::OKMent_Click() {
    if (count(VezetoData) < 1) {
        UjAdat_Click();
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    auto& r = VezetoData->rs();
    if (resume([&] { return r.Eof() || r.Bof(); }, true)) resume([&] { r.MoveLast(); });
    vb::Variant mark = resume([&] { return r.Bookmark(); }, vb::Variant());
    resume([&] { r.MoveLast(); });
    if (count(VezetoData) > 0) resume([&] { r.MoveFirst(); });
    Err.Clear();
    if (!resume([&] { r.setBookmark(mark); })) {
        Err.Clear();
        resume([&] { r.MoveLast(); });
    }
    Err.Clear();
    DBGrid1->Refresh();
}

// "Új jármű": the vehicle picked in the vehicle master becomes the driver's vehicle and a row of
// his assigned list. No pick, no assignment.
void VezetokTorzsFormX::Command2_Click() {
    if (count(VezetoData) < 1 || !onRecord(VezetoData)) {
        warn(NoRow);
        return;
    }
    if (!findFirst(VezetoData, "[PartnerID] = " + keyText(Label7))) {
        resume([&] { VezetoData->rs().MoveFirst(); });
        Err.Clear();
    }
    Globals::PickedVehiclePlate.clear();
    Globals::PickedVehicleID = vb::Empty{};
    if (!openPicker("GKTorzsFormX", Name)) return;
    if (!isLoaded()) return;
    std::string plate = Globals::PickedVehiclePlate;
    vb::Variant vehicleId = Globals::PickedVehicleID;
    if (vb::isEmpty(vehicleId)) vehicleId = vb::Null{};
    hourglass();
    ArrowAtEnd atEnd;
    resume([&] {
        VezetoData->writeBound();
        auto& r = VezetoData->rs();
        r.Edit();
        r.Fields("GépkocsiFrsz").setValue(plate);
        r.Fields("GkID").setValue(vehicleId);
        r.Update();
    });
    Err.Clear();
    double key = vb::Val(text(Label7));
    resume([&] {
        auto& j = JarmuData->rs();
        j.AddNew();
        j.Fields("VezetöID").setValue(key);
        j.Fields("Rendszám").setValue(plate);
        j.Update();
        j.MoveLast();
    });
    Err.Clear();
    reloadAssigned();
    DBGrid1->Refresh();
}

// "Törlés" of the assigned list: the current assignment after a question.
void VezetokTorzsFormX::Command3_Click() {
    if (count(JarmuData) < 1 || !onRecord(JarmuData)) {
        warn(NoRow);
        return;
    }
    arrow();
    forms::Beep();
    if (forms::MsgBox(DeleteVehicle, vb::vbYesNo + vb::vbQuestion, DeleteTitle) != vb::vbYes) return;
    resume([&] {
        auto& j = JarmuData->rs();
        j.Delete();
        j.MoveNext();
    });
    Err.Clear();
    DBGrid2->Refresh();
}

// "Frissít": the filter off and back to the same driver; errors ignored.
void VezetokTorzsFormX::Frissites_Click() {
    vb::Variant mark = resume([&] { return VezetoData->rs().Bookmark(); }, vb::Variant());
    vb::Variant key = resume([&] { return VezetoData->rs().Fields("Sorszám").Value(); }, vb::Variant());
    Err.Clear();
    SzuresSKI_Click();
    if (!isLoaded()) return;
    // A bookmark of the old set may not name a row of the new one: then the row is found by its key.
    if (!resume([&] { VezetoData->rs().setBookmark(mark); }) && !vb::isEmpty(key) && !vb::isNull(key))
        findFirst(VezetoData, "[Sorszám] = " + vb::CStr(key));
    Err.Clear();
}

// "Új adat": a new row; the employer is the operator's name; focus to the name.
void VezetokTorzsFormX::UjAdat_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    if (addDriverRow(false)) {
        forms::setText(Text8, Globals::OperatorName);
        forms::setFocus(Text1);
    }
    DBGrid1->Refresh();
}

// "Csak aktívak (szűrés)". None active: both entries unticked, the warning, all drivers again.
void VezetokTorzsFormX::CsakAktiv_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    setSource(ActiveSource);
    if (count(VezetoData) < 1) {
        CsakAktiv->setChecked(false);
        SzuresSKI->setChecked(false);
        warn(NoActive);
        resetList();
        return;
    }
    lastThenFirst();
    CsakAktiv->setChecked(true);
    SzuresSKI->setChecked(false);
}

// "Szűrés kikapcsolása": all drivers; with none, the offer of a new row.
void VezetokTorzsFormX::SzuresSKI_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    CsakAktiv->setChecked(false);
    SzuresSKI->setChecked(true);
    setSource(AllSource);
    if (count(VezetoData) < 1) {
        arrow();
        if (forms::MsgBox(NoDriver, vb::vbYesNo, WarnTitle) == vb::vbYes) UjAdat_Click();
        return;
    }
    lastThenFirst();
}

// "Adatátadás": name, key, the assigned registration on screen and the employer; then the exit.
void VezetokTorzsFormX::AtadaS_Click() {
    returnPick(
        VezetoData,
        [this] {
            Globals::PickedDriverName = text(Text1);
            std::string key = text(Label7);
            Globals::PickedDriverID = key.empty() ? vb::Variant(vb::Empty{}) : vb::Variant(vb::Val(key));
            Globals::PickedDriverVehicle = text(Label18);
            Globals::PickedDriverEmployer = text(Text8);
        },
        [] {
            Globals::PickedDriverName.clear();
            Globals::PickedDriverVehicle.clear();
            Globals::PickedDriverEmployer.clear();
        });
}

// "Adatsor végleges törlése": the standard delete; the last driver gone, the offer of a new row,
// whose No leaves the form. The driver's assignments and the trips naming him stay.
void VezetokTorzsFormX::Torl_s_Click() {
    deleteRecord(VezetoData, DeleteDriver, DeleteTitle, nullptr, {}, [this] { deletedAll(); });
    if (isLoaded()) DBGrid1->Refresh();
}

void VezetokTorzsFormX::deletedAll() {
    arrow();
    if (forms::MsgBox(DeletedAll, vb::vbYesNo, WarnTitle) == vb::vbYes) UjAdat_Click();
    else Kilepes_Click();
}

// "Kilépés": both sources closed (errors ignored), the form unloaded; the close box comes here.
void VezetokTorzsFormX::Kilepes_Click() { standardExit(nullptr, {JarmuData, VezetoData}); }

void VezetokTorzsFormX::Segedlet_Click() { help(); }

// "Partnertörzs": the partner master as a picker; a passed partner's name becomes the employer.
void VezetokTorzsFormX::Command12_Click() {
    Globals::PickedPartnerName.clear();
    Globals::PickedPartnerID = vb::Empty{};
    if (openPicker("BeraktarozokFormX", Name) && isLoaded()) forms::setText(Text8, Globals::PickedPartnerName);
}

void VezetokTorzsFormX::Text13_Change() { quickSearch(VezetoData, "VezetöNeve", text(Text13)); }

void VezetokTorzsFormX::Label7_Change() { reloadAssigned(); }

void VezetokTorzsFormX::DBGrid1_HeadClick(int column) { headerSort(VezetoData, DBGrid1, column); }

// AddNew, Update, MoveLast; the new row's key for the assigned list (PartnerID) is its Sorszám.
bool VezetokTorzsFormX::addDriverRow(bool licenceToday) {
    std::vector<std::pair<std::string, vb::Variant>> columns;
    if (licenceToday) columns.push_back({"JogositványÉrvényessége", vb::clock::today()});
    if (!addRow(VezetoData, columns)) return false;
    vb::Variant key = resume([&] {
        auto& r = VezetoData->rs();
        vb::Variant k = r.Fields("Sorszám").Value();
        r.Edit();
        r.Fields("PartnerID").setValue(k);
        r.Update();
        return k;
    }, vb::Variant());
    Err.Clear();
    forms::setText(Label7, forms::displayText(key));
    if (text(Label7) != assignedKey_) reloadAssigned();
    return true;
}

// The assigned list of the driver on screen: JarmuData on Val(Label7).
void VezetokTorzsFormX::reloadAssigned() {
    assignedKey_ = text(Label7);
    JarmuData->setRecordSource(AssignedSource + keyText(Label7));
    resume([&] { JarmuData->Refresh(); });
    Err.Clear();
    DBGrid2->Refresh();
}

void VezetokTorzsFormX::setSource(const char* source) {
    VezetoData->setRecordSource(source);
    resume([&] { VezetoData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
}

void VezetokTorzsFormX::lastThenFirst() {
    resume([&] {
        auto& r = VezetoData->rs();
        r.MoveLast();
        r.MoveFirst();
    });
    Err.Clear();
}

// After an empty "Csak aktívak": all drivers again, on the last one.
void VezetokTorzsFormX::resetList() {
    setSource(AllSource);
    if (count(VezetoData) > 0) resume([&] { VezetoData->rs().MoveLast(); });
    Err.Clear();
}

}  // namespace trips
