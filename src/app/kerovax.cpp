#include "app/kerovax.h"

#include <QDate>
#include <QDateEdit>
#include <QDesktopServices>
#include <QEvent>
#include <QFontMetrics>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace app {

using forms::qs;
using vb::Err;
using vb::resume;

std::function<void(const std::string&)> KerovaX::openAddress = [](const std::string& address) {
    QDesktopServices::openUrl(QUrl(qs(address)));
};

namespace {

// DBGrid1's columns: the columns of Jarmuvek in the form's order.
const char* const GridColumns[] = {
    "GkFrsz", "GkTipus", "GkForgalombahelyezve", "Hengerurtartalom", "FogyasztásLiter100", "GkVezetoNeve",
    "SzervizIntervallumNap", "SzervizIntervallumKM", "MuszakiVizsgaDatum", "ZoldkartyaDatum", "CascoHaviDija",
    "KotelezoHaviDija", "recordID", "KilometerOraAllasa", "OnkoltsegKm", "UtolsoSzervizDatum", "JelenlegiKmAllas",
    "PartnerID", "PartnerNeve", "Alvázszám", "Motorszám", "TachográfHitelesités", "TachoOMHEng", "SzemleKM",
    "OlajcsereKM", "NköziKarbantNaploKM", "HajtaslancOlajcsKM", "VezérmüOlajcsereKM", "Figyelmeztetés",
};

QDate qdate(vb::Date d) {
    auto p = vb::dateParts(d);
    return QDate(p.year, p.month, p.day);
}

// A click on a box, as VB's Click of a text box.
class ClickFilter : public QObject {
public:
    ClickFilter(QWidget* w, std::function<void()> h) : QObject(w), handler_(std::move(h)) { w->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::MouseButtonRelease) forms::run(handler_);
        return false;
    }

private:
    std::function<void()> handler_;
};

// A top-level entry of the menu bar that is itself a command (no drop-down).
}  // namespace

KerovaX::KerovaX() : RecordForm("KerovaX", std::string("Kerova ") + Version) {
    JarmuData = data("JarmuData", "Kerova.dsb", "Jarmuvek");
    ParameterData = data("ParameterData", "Torzsek.dsb", "VizsgaFigyelmeztetoNap");
    EgyebParameterData = data("EgyebParameterData", "parameter.dsb", "Egyebek");
    MennyEgysData = data("MennyEgysData", "parameter.dsb", "select * from MennyisegiEgyseg where Állandó <> 0");
    PathData = data("PathData", "parameter.dsb", "Path");
    KMData = data("KMData", "kerova.dsb", "UtakKilometerNyt");

    auto* bar = menuBar(nullptr);
    bar->setObjectName("MenuBar");
    buildMenu(bar);
    buildLayout(bar);

    Label11->setVisible(false);
    JarmuData->bind(Label11, "Figyelmeztetés");
    MennyEgysData->bind(Label14, "MennyiségiEgység");
    EgyebParameterData->bind(Label16, "Napidíj");
    EgyebParameterData->bind(Label17, "NapidíjDevizanem");
    PathData->bind(Label7, "PolcrakPath");
    PathData->bind(Label8, "FogastorPath");
    PathData->bind(Label9, "BizonylaNextPath");
    PathData->bind(Label10, "InterfacePath");
    for (auto* l : {Label7, Label8, Label9, Label10}) l->setVisible(false);

    DBGrid1->bind(JarmuData);
    // Each column as wide as its heading, so that the column names read in full.
    QFontMetrics heading(DBGrid1->horizontalHeader()->font());
    for (const char* c : GridColumns)
        DBGrid1->addColumn(c, c, std::max(std::string(c) == "GkTipus" || std::string(c) == "PartnerNeve" ? 170 : 95,
                                          heading.horizontalAdvance(qs(c)) + 28));

    using forms::onClick;
    onClick(UtTav, [this] { openFromMenu("GkUtakTavolsagaTorzsFormX"); });
    onClick(Gepkocsik, [this] { Gepkocsik_Click(); });
    onClick(Vezetok, [this] { openFromMenu("VezetokTorzsFormX"); });
    onClick(GKBesz, [this] { openFromMenu("BeraktarozokFormX"); });
    onClick(Megnevezesek, [this] { openFromMenu("MegnevezesTorzsFormX"); });
    onClick(Uzemelteto, [this] { openFromMenu("UzemeltetokForm"); });
    onClick(AlkatreszTorzse, [this] { AlkatreszTorzse_Click(); });
    onClick(ParameterAdat, [this] { openFromMenu("ParameterFormX"); });
    onClick(KerovatUj, [this] { openFromMenu("UtNyilvantartasFormX"); });
    onClick(KMNyt, [this] { openFromMenu("KilometerNytFormX"); });
    onClick(GKSzamlaBe, [this] { openFromMenu("UzemanyagSzamlaFormX"); });
    onClick(SzervizModul, [this] { openFromMenu("SzervizmodulFormX"); });
    onClick(Lekerdezes, [this] { openFromMenu("LekerdezesFormX"); });
    onClick(UaKtsg, [this] { UaKtsg_Click(); });
    onClick(AdatSzerviz, [this] { AdatSzerviz_Click(); });
    onClick(Kezik, [this] { openFromMenu("KerovaFelhasznaloiKezikonyvForm"); });
    onClick(Kilepes, [this] { Kilepes_Click(); });

    // Each button only takes its menu entry.
    onClick(Command1, [this] { Kilepes->trigger(); });
    onClick(Command2, [this] { Kezik->trigger(); });
    onClick(Command3, [this] { AdatSzerviz->trigger(); });
    onClick(Command4, [this] { UaKtsg->trigger(); });
    onClick(Command5, [this] { Lekerdezes->trigger(); });
    onClick(Command6, [this] { KerovatUj->trigger(); });

    new ClickFilter(Text1, [] { openAddress(WebAddress); });
}

void KerovaX::buildMenu(QMenuBar* bar) {
    Torzsek = menu(bar, "Torzsek", "&Törzsek");
    UtTav = menuItem(Torzsek, "UtTav", "Távolságok");
    Gepkocsik = menuItem(Torzsek, "Gepkocsik", "Járművek");
    Vezetok = menuItem(Torzsek, "Vezetok", "Vezetők");
    GKBesz = menuItem(Torzsek, "GKBesz", "Beszállítók (partnerek)");
    Megnevezesek = menuItem(Torzsek, "Megnevezesek", "Megnevezések");
    Uzemelteto = menuItem(Torzsek, "Uzemelteto", "Nyilvántartó adatai");
    AlkatreszTorzse = menuItem(Torzsek, "AlkatreszTorzse", "Cikkszámok - Alkatrészek");
    ParameterAdat = menuItem(Torzsek, "ParameterAdat", "Paraméter adatok");
    GKAdatbe = menu(bar, "GKAdatbe", "&Adatbevitel");
    KerovatUj = menuItem(GKAdatbe, "KerovatUj", "Útnyilvántartás");
    KMNyt = menuItem(GKAdatbe, "KMNyt", "Kilométer nyilvántartás");
    GKSzamlaBe = menuItem(GKAdatbe, "GKSzamlaBe", "Számla rögzítése");
    SzervizModul = menuItem(GKAdatbe, "SzervizModul", "Szerviz (műhely) modul");
    Lekerdezes = menuItem(bar, "Lekerdezes", "&Lekérdezés, nyomtatás");
    UaKtsg = menuItem(bar, "UaKtsg", "&Üzemanyagköltség kalkulátor");
    AdatSzerviz = menuItem(bar, "AdatSzerviz", "S&zerviz");
    GkHelp = menu(bar, "GkHelp", "&Segédlet");
    Kezik = menuItem(GkHelp, "Kezik", "Kézikönyv");
    Kilepes = menuItem(bar, "Kilepes", "&Kilépés");
}

void KerovaX::buildLayout(QMenuBar* bar) {
    auto* top = new QVBoxLayout(this);
    top->setMenuBar(bar);
    top->setContentsMargins(14, 10, 14, 12);
    top->setSpacing(8);

    Label1 = label("Label1", "Kerova Jármű-, Szerviz- és Útnyilvántartó Adatbázis");
    QFont big = Label1->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    Label1->setFont(big);
    Label1->setAlignment(Qt::AlignCenter);
    Label2 = label("Label2", std::string("Verzió ") + Version + " – 2026. november");
    Label2->setAlignment(Qt::AlignCenter);
    top->addWidget(Label1);
    top->addWidget(Label2);

    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    top->addWidget(line);

    auto* info = new QGridLayout;
    info->setHorizontalSpacing(10);
    Label3 = label("Label3", "Jármű-, szerviz- és útnyilvántartás");
    Label4 = label("Label4", "Megbízó adatszolgáltató alkönyvtár szerint");
    Label4->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Text1 = textBox("Text1");
    Text1->setReadOnly(true);
    Text1->setText(qs(std::string("Kerova ") + Version + " – " + WebAddress));
    Text1->setCursor(Qt::PointingHandCursor);
    Text1->setToolTip(qs(WebAddress));
    DTPicker1 = datePicker("DTPicker1");
    DTPicker1->setEnabled(false);
    Label13 = label("Label13", "Állandó (görgetett) mennyiségi egység:");
    Label14 = label("Label14", "");
    Label15 = label("Label15", "Állandó (görgetett) napidíj és pénzneme:");
    Label16 = label("Label16", "");
    Label17 = label("Label17", "");
    QFont bold = Label14->font();
    bold.setBold(true);
    for (auto* l : {Label14, Label16, Label17}) l->setFont(bold);
    Label16->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label11 = label("Label11", "");
    Label7 = label("Label7", "");
    Label8 = label("Label8", "");
    Label9 = label("Label9", "");
    Label10 = label("Label10", "");

    info->addWidget(Label3, 0, 0, 1, 2);
    info->addWidget(Label4, 0, 2, 1, 3);
    Text1->setMinimumWidth(360);
    info->addWidget(Text1, 1, 0, 1, 3);
    info->addWidget(DTPicker1, 1, 3, 1, 2, Qt::AlignRight);
    info->addWidget(Label13, 2, 0);
    info->addWidget(Label14, 2, 1, 1, 4);
    info->addWidget(Label15, 3, 0);
    info->addWidget(Label16, 3, 1);
    info->addWidget(Label17, 3, 2, 1, 3);
    info->setColumnStretch(4, 1);
    top->addLayout(info);

    GridCaption = label("GridCaption", "FIGYELMEZTETÉSI LISTA!");
    QFont alarm = GridCaption->font();
    alarm.setBold(true);
    GridCaption->setFont(alarm);
    GridCaption->setStyleSheet("color: #b00000;");
    DBGrid1 = grid("DBGrid1");
    DBGrid1->setMinimumHeight(180);
    top->addWidget(GridCaption);
    top->addWidget(DBGrid1, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    Command6 = button("Command6", "Útnyilvántartás");
    Command5 = button("Command5", "Lekérdezés, nyomtatás");
    Command4 = button("Command4", "Üzemanyagköltség kalkulátor");
    Command3 = button("Command3", "Szerviz");
    Command2 = button("Command2", "Segédlet");
    Command1 = button("Command1", "Kilépés");
    for (auto* b : {Command6, Command5, Command4, Command3, Command2, Command1}) {
        b->setMinimumHeight(46);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        buttons->addWidget(b);
    }
    top->addLayout(buttons);
    resize(1180, 680);
}

// ---------------------------------------------------------------- start-up

void KerovaX::Form_Load() {
    Globals::AccessLevel = 0;
    Globals::Label3Caption = forms::str(Label3->text());
    Globals::Label4Caption = forms::str(Label4->text());
}

void KerovaX::Form_Activate() {
    forms::hourglass();
    struct Arrow { ~Arrow() { forms::arrow(); } } atEnd;
    startUp();
}

void KerovaX::startUp() {
    // 1
    DTPicker1->setDate(qdate(vb::clock::today()));
    Globals::ProductName = "Kerova";

    // 2: the folder must hold the databases; the operator's name
    if (!operatorCheck()) return;

    // 3: the ten warning limits of the last row
    readParameters();

    // 4: the four reminders, on the set as it stands
    if (count(JarmuData) > 0) {
        reminder(Globals::WarnInspectionDays, "MuszakiVizsgaDatum", InspectionText);
        reminder(Globals::WarnTachoCalibrationDays, "TachográfHitelesNap", TachoCalibrationText);
        reminder(Globals::WarnTachoPermitDays, "TachográfOMHEngNap", TachoPermitText);
        reminder(Globals::WarnInsuranceCardDays, "BiztosításZöldkNap", InsuranceCardText);
        JarmuData->setRecordSource("select * from jarmuvek");
        resume([&] { JarmuData->Refresh(); });
        Err.Clear();
    }

    // 5
    Globals::InterfacePathValue.clear();
    Globals::PolcrakPathValue.clear();
    Globals::FogastorPathValue.clear();
    Globals::BizonylaPathValue.clear();

    // 6: the fixed daily allowance (its row is made when missing)
    if (count(EgyebParameterData) < 1) {
        resume([&] {
            auto& e = EgyebParameterData->rs();
            e.AddNew();
            e.Update();
        });
    }
    resume([&] { EgyebParameterData->rs().MoveLast(); });
    resume([&] { Globals::FixedAllowance = vb::CDbl(EgyebParameterData->rs().Fields("Napidíj").Value()); });
    resume([&] {
        Globals::FixedAllowanceCurrency = vb::nullToText(EgyebParameterData->rs().Fields("NapidíjDevizanem").Value());
    });
    Err.Clear();

    // 7
    if (count(PathData) > 0) readPaths(PathData);

    // 8
    listWarned();

    // 9: the fixed unit; the query runs again so that a change in the settings shows
    resume([&] { MennyEgysData->Refresh(); });
    Err.Clear();
    if (count(MennyEgysData) > 0) {
        resume([&] { MennyEgysData->rs().MoveFirst(); });
        Globals::FixedUnit = forms::str(Label14->text());
    } else {
        Globals::FixedUnit.clear();
    }
    Err.Clear();
}

// The operator's table through UzemeltetokForm's Data control: the form is loaded, not shown.
bool KerovaX::operatorCheck() {
    forms::Form& operatorForm = forms::get("UzemeltetokForm");
    operatorForm.Load();
    forms::DataControl* betarol = operatorForm.dataControl("Betarol");
    std::unique_ptr<db::Recordset> own;  // only when that form is not there
    Err.Clear();
    db::Recordset* r = nullptr;
    resume([&] {
        if (betarol) {
            r = &betarol->rs();
        } else {
            own = db::Database::open("Torzsek.dsb")->OpenRecordset("Bettorzs");
            r = own.get();
        }
        r->RecordCount();
    });
    if (Err.Number() != 0) {
        Err.Clear();
        forms::Beep();
        forms::arrow();
        forms::MsgBox(NoDatabasesText, vb::vbCritical, NoDatabasesTitle);
        return false;
    }
    resume([&] { Globals::OperatorName = vb::nullToText(r->Fields("UzNev").Value()); });
    Err.Clear();
    return true;
}

void KerovaX::readParameters() {
    if (count(ParameterData) < 1) return;
    auto& p = ParameterData->rs();
    auto num = [&p](int i) { return vb::NullToNum(p.Fields(i).Value()); };
    resume([&] { p.MoveLast(); });
    resume([&] { Globals::WarnInspectionDays = vb::CInt(num(0)); });
    resume([&] { Globals::WarnGreenCardDays = vb::CInt(num(1)); });
    resume([&] { Globals::WarnTachoCalibrationDays = vb::CInt(num(2)); });
    resume([&] { Globals::WarnTachoPermitDays = vb::CInt(num(3)); });
    resume([&] { Globals::WarnInsuranceCardDays = vb::CInt(num(4)); });
    resume([&] { Globals::WarnInspectionKm = vb::CLng(num(5)); });
    resume([&] { Globals::WarnOilChangeKm = vb::CLng(num(6)); });
    resume([&] { Globals::WarnServiceLogKm = vb::CLng(num(7)); });
    resume([&] { Globals::WarnDrivetrainOilKm = vb::CLng(num(8)); });
    resume([&] { Globals::WarnTimingBeltKm = vb::CLng(num(9)); });
    Err.Clear();
}

// One reminder: the limit is today minus N days (the program's own rule), and the statement is the
// program's as written, also where it names a column Jarmuvek does not have: then the Refresh
// fails and the reminder acts on the set that was there before.
void KerovaX::reminder(int days, const std::string& column, const char* text) {
    if (days <= 0) return;
    DTPicker1->setDate(qdate(vb::clock::today()));
    DTPicker1->setDate(DTPicker1->date().addDays(-days));
    resume([&] { JarmuData->rs().MoveFirst(); });
    QDate limit = DTPicker1->date();
    JarmuData->setRecordSource("select * from jarmuvek where " + column + " <= #" + std::to_string(limit.month()) +
                               "/" + std::to_string(limit.day()) + "/" + std::to_string(limit.year()) + "#");
    resume([&] { JarmuData->Refresh(); });
    Err.Clear();
    if (count(JarmuData) > 0) {
        forms::arrow();
        forms::Beep();
        forms::MsgBox(text, vb::vbExclamation, ReminderTitle);
        forms::hourglass();
        MarkWarned();
    }
    Err.Clear();
}

// Sets Figyelmeztetés on every vehicle of the set (Label11's bound column). A flag already set is
// left alone, so that the reminders of each return cost no writes.
void KerovaX::MarkWarned() {
    if (count(JarmuData) > 0) resume([&] { JarmuData->rs().MoveFirst(); });
    db::Recordset* r = JarmuData->Recordset();
    if (!r || r->closed()) {
        Err.Clear();
        return;
    }
    while (!resume([&] { return r->Eof(); }, true)) {
        bool set = resume([&] { return vb::CBool(r->Fields("Figyelmeztetés").Value()); }, false);
        Err.Clear();
        if (!set) {
            bool stored = resume([&] {
                r->Edit();
                r->Fields("Figyelmeztetés").setValue(true);
                r->Update();
            });
            if (!stored && r->editing()) resume([&] { r->CancelUpdate(); });
            if (stored) Label11->setText("1");
        }
        Err.Clear();
        if (!resume([&] { r->MoveNext(); })) break;
    }
    Err.Clear();
}

void KerovaX::listWarned() {
    JarmuData->setRecordSource(WarnedListSource);
    resume([&] { JarmuData->Refresh(); });
    Err.Clear();
    bool any = count(JarmuData) > 0;
    DBGrid1->setVisible(any);
    GridCaption->setVisible(any);
    if (any) {
        DBGrid1->Refresh();
        resume([&] { JarmuData->rs().MoveFirst(); });
    }
    Err.Clear();
}

void readPaths(forms::DataControl* pathData) {
    resume([&] { pathData->rs().MoveFirst(); });
    resume([&] { pathData->rs().MoveLast(); });
    auto text = [pathData](const char* column) { return vb::nullToText(pathData->rs().Fields(column).Value()); };
    resume([&] { Globals::InterfacePathValue = text("InterfacePath"); });
    resume([&] { Globals::PolcrakPathValue = text("PolcrakPath"); });
    resume([&] { Globals::FogastorPathValue = text("FogastorPath"); });
    resume([&] { Globals::BizonylaPathValue = text("BizonylaNextPath"); });
    Err.Clear();
}

// ---------------------------------------------------------------- menu

void KerovaX::openFromMenu(const std::string& formName) {
    Hide();
    forms::get(formName).Show(true);
    Show();
}

void KerovaX::Gepkocsik_Click() {
    Globals::CurrentFormName = "GKTorzsFormX";
    Hide();
    forms::get("GKTorzsFormX").Show(true);
    if (Globals::CurrentFormName != "SzervizModulFormX") {
        Show();
        return;
    }
    // The vehicle form went on into the service module: KerovaX stays hidden while that is open,
    // and comes back when it closes. With nothing left on the screen it comes back at once, so that
    // the program never runs without a window.
    forms::Form* going = forms::active();
    if (going && going != this && going->isLoaded() && going->isShown()) {
        connect(going, &QObject::destroyed, this, [this] {
            if (isLoaded() && !isShown() && !forms::ending()) forms::run([this] { Show(); });
        });
    } else {
        Show();
    }
}

void KerovaX::AlkatreszTorzse_Click() {
    Globals::CurrentFormName = "cikkszamform";
    Globals::ArticlePickMode = 0;
    openFromMenu("cikkszamform");
}

// The calculator: KerovaX stays on the screen, disabled.
void KerovaX::UaKtsg_Click() {
    setEnabled(false);
    struct Enable {
        QWidget* w;
        ~Enable() { w->setEnabled(true); }
    } again{this};
    forms::get("KerovaForm").Show(true);
}

// The data service: KerovaX stays as it is.
void KerovaX::AdatSzerviz_Click() { forms::get("KerovaSzervizFormX").Show(true); }

// Exit: the main sources close and the process ends, whatever forms are loaded.
void KerovaX::Kilepes_Click() {
    CloseGuard = false;
    closeAll({PathData, ParameterData, EgyebParameterData, JarmuData});
    Err.Clear();
    Unload();
    forms::End();
}

}  // namespace app
