#include "trips/routeform.h"

#include <QGridLayout>
#include <QGroupBox>
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
#include "trips/routelist.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace trips {

using forms::arrow;
using forms::hourglass;
using forms::onClick;
using forms::text;
using vb::Err;

namespace {
struct ArrowAtEnd {
    ~ArrowAtEnd() { arrow(); }
};

// A distance box as a number: empty or not a number is 0.
double distanceIn(QLineEdit* box) {
    std::string t = text(box);
    if (t.empty()) return 0;
    double d = vb::resume([&] { return vb::CDbl(vb::Variant(t)); }, 0.0);
    Err.Clear();
    return d;
}

// The country form's flag says a row was passed.
bool countryPicked() {
    double v = vb::resume([] {
        const auto& f = Globals::CountryPicked;
        return vb::isEmpty(f) || vb::isNull(f) ? 0.0 : vb::CDbl(f);
    }, 0.0);
    Err.Clear();
    return v == 1;
}

// The country form modally, its slots cleared first; whether a country was passed.
bool pickCountry() {
    Globals::CountryPicked = vb::Empty{};
    Globals::CountryMarkTransfer.clear();
    Globals::CountryNameTransfer.clear();
    Globals::CurrentFormName = GkUtakTavolsagaTorzsFormX::Name;
    forms::get("OrszagokFormX").Show(true);
    return countryPicked();
}
}  // namespace

GkUtakTavolsagaTorzsFormX::GkUtakTavolsagaTorzsFormX() : RecordForm(Name, Title) {
    UtTavTorzsData = data("UtTavTorzsData", "Kerova.dsb", Source);
    build();

    onClick(OKMent, [this] { OKMent_Click(); });
    onClick(UtTorzsUj, [this] { UtTorzsUj_Click(); });
    onClick(UjVissza, [this] { UjVissza_Click(); });
    onClick(UtTorzsTorol, [this] { UtTorzsTorol_Click(); });
    onClick(GTKeresHonnan, [this] { GTKeresHonnan_Click(); });
    onClick(GTKeresHova, [this] { GTKeresHova_Click(); });
    onClick(GTNyom, [this] { GTNyom_Click(); });
    onClick(AdatAtad, [this] { AdatAtad_Click(); });
    onClick(Segedlet, [this] { Segedlet_Click(); });
    onClick(Kilepes, [this] { Kilepes_Click(); });
    // each button only runs its menu entry
    onClick(Command1, [this] { OKMent_Click(); });
    onClick(Command4, [this] { UtTorzsUj_Click(); });
    onClick(Command5, [this] { UjVissza_Click(); });
    onClick(Command6, [this] { GTKeresHonnan_Click(); });
    onClick(Command7, [this] { GTKeresHova_Click(); });
    onClick(Command8, [this] { UtTorzsTorol_Click(); });
    onClick(Command9, [this] { GTNyom_Click(); });
    onClick(Command10, [this] { Segedlet_Click(); });
    onClick(Command11, [this] { Kilepes_Click(); });
    onClick(Command12, [this] { AdatAtad_Click(); });
    onClick(Command2, [this] { Command2_Click(); });
    onClick(Command3, [this] { Command3_Click(); });

    forms::focusColors({Text1, Text2, Text3, Text4, Text5});
    forms::decimal({Text3});
    DBGrid1->HeadClick = [this](int c) { DBGrid1_HeadClick(c); };
}

void GkUtakTavolsagaTorzsFormX::build() {
    auto* outer = new QVBoxLayout(this);
    auto* bar = menuBar(outer);
    auto* muveletek = menu(bar, "Muveletek", "&Műveletek");
    OKMent = menuItem(muveletek, "OKMent", "OK-Mentés");
    UtTorzsUj = menuItem(muveletek, "UtTorzsUj", "Új adat-üres sor");
    UjVissza = menuItem(muveletek, "UjVissza", "Új adat-ellentétes út előzővel");
    UtTorzsTorol = menuItem(muveletek, "UtTorzsTorol", "Kijelölt sort törli");
    auto* keresesek = menu(bar, "Keresesek", "&Keresések");
    GTKeresHonnan = menuItem(keresesek, "GTKeresHonnan", "Keresés-honnan");
    GTKeresHova = menuItem(keresesek, "GTKeresHova", "Keresés-hová");
    GTNyom = menuItem(bar, "GTNyom", "&Nyomtatás");
    AdatAtad = menuItem(bar, "AdatAtad", "&Adat átadása");
    Segedlet = menuItem(bar, "Segedlet", "&Segédlet");
    Kilepes = menuItem(bar, "Kilepes", "&Vissza");

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(8);
    Text1 = textBox("Text1");
    Text2 = textBox("Text2");
    Text3 = textBox("Text3");
    Text4 = textBox("Text4");
    Text5 = textBox("Text5");
    Label4 = label("Label4", "");
    Command2 = button("Command2", "Országjel törzs");
    Command3 = button("Command3", "Országjel törzs");
    fields->addWidget(label("Text1Caption", "Honnan:"), 0, 0, Qt::AlignRight);
    fields->addWidget(Text1, 0, 1);
    fields->addWidget(label("Text4Caption", "Országjel:"), 0, 2, Qt::AlignRight);
    fields->addWidget(Text4, 0, 3);
    fields->addWidget(Command2, 0, 4);
    fields->addWidget(label("Text2Caption", "Hova:"), 1, 0, Qt::AlignRight);
    fields->addWidget(Text2, 1, 1);
    fields->addWidget(label("Text5Caption", "Országjel:"), 1, 2, Qt::AlignRight);
    fields->addWidget(Text5, 1, 3);
    fields->addWidget(Command3, 1, 4);
    fields->addWidget(label("Text3Caption", "Távolság km:"), 2, 0, Qt::AlignRight);
    fields->addWidget(Text3, 2, 1);
    fields->addWidget(label("Label4Caption", "Sorszám:"), 2, 2, Qt::AlignRight);
    fields->addWidget(Label4, 2, 3);
    Text1->setMinimumWidth(260);
    Text2->setMinimumWidth(260);
    Text3->setMaximumWidth(120);
    Text4->setMaximumWidth(70);
    Text5->setMaximumWidth(70);
    fields->setColumnStretch(1, 1);
    fields->setColumnStretch(5, 1);
    outer->addLayout(fields);

    auto* gridFrame = frame("UtTavTorzsDataFrame", DataCaption);
    auto* gridBox = new QVBoxLayout(gridFrame);
    DBGrid1 = grid("DBGrid1", gridFrame);
    gridBox->addWidget(DBGrid1);
    outer->addWidget(gridFrame, 1);

    Command1 = button("Command1", "OK-Mentés");
    Command4 = button("Command4", "Új adat-üres sor");
    Command5 = button("Command5", "Új adat-ellentétes út előzővel");
    Command6 = button("Command6", "Keresés-honnan");
    Command7 = button("Command7", "Keresés-hová");
    Command8 = button("Command8", "Kijelölt sort törli");
    Command9 = button("Command9", "Nyomtatás");
    Command10 = button("Command10", "Segédlet");
    Command11 = button("Command11", "Vissza");
    Command12 = button("Command12", "Adat átadása");
    outer->addLayout(forms::buttonRow({Command1, Command4, Command5, Command6, Command7}, 120, false, false));
    outer->addLayout(forms::buttonRow({Command8, Command9, Command10, Command11, Command12}, 120, false, false));

    UtTavTorzsData->bind(Text1, "Honnan");
    UtTavTorzsData->bind(Text2, "Hova");
    UtTavTorzsData->bind(Text3, "TávolságKm");
    UtTavTorzsData->bind(Text4, "HonnanOrszág");
    UtTavTorzsData->bind(Text5, "HovaOrszág");
    UtTavTorzsData->bind(Label4, "Sorszám");
    DBGrid1->bind(UtTavTorzsData);
    DBGrid1->addColumn("Országjel", "HonnanOrszág", 80);
    DBGrid1->addColumn("Honnan", "Honnan", 260);
    DBGrid1->addColumn("Országjel", "HovaOrszág", 80);
    DBGrid1->addColumn("Hova", "Hova", 260);
    DBGrid1->addColumn("Távolság km", "TávolságKm", 110);
    resize(900, 620);
}

// Opening: an empty table gets its row at once; a filled one stays where the source opened it, so
// that the return from the country picker does not move away from the row taking the code.
void GkUtakTavolsagaTorzsFormX::Form_Activate() {
    hourglass();
    ArrowAtEnd atEnd;
    if (count(UtTavTorzsData) < 1) addRow(UtTavTorzsData, {});
}

// "OK-Mentés": the row found again by its Sorszám (the move stores the typed values), the source
// refreshed and the row found once more. Each miss has its message and the handler goes on.
void GkUtakTavolsagaTorzsFormX::OKMent_Click() {
    if (count(UtTavTorzsData) < 1) {
        UtTorzsUj_Click();
        return;
    }
    hourglass();
    ArrowAtEnd atEnd;
    std::string criterion = "[Sorszám] = " + vb::CStr(vb::Variant(vb::Val(text(Label4))));
    if (!findFirst(UtTavTorzsData, criterion)) saveMiss(SaveMiss1);
    vb::resume([&] { UtTavTorzsData->Refresh(); });
    Err.Clear();
    DBGrid1->Refresh();
    if (!findFirst(UtTavTorzsData, criterion)) saveMiss(SaveMiss2);
}

void GkUtakTavolsagaTorzsFormX::saveMiss(const char* text) {
    arrow();
    forms::Beep();
    forms::MsgBox(text, vb::vbOKOnly, forms::UnexpectedTitle);
    hourglass();
}

// "Új adat-üres sor": the row exists from now on, with empty fields.
void GkUtakTavolsagaTorzsFormX::UtTorzsUj_Click() {
    hourglass();
    ArrowAtEnd atEnd;
    if (addRow(UtTavTorzsData, {})) forms::setFocus(Text1);
}

// "Új adat-ellentétes út előzővel": a new row with the places swapped and the same distance. The
// country codes are not carried over.
void GkUtakTavolsagaTorzsFormX::UjVissza_Click() {
    if (count(UtTavTorzsData) < 1 || !onRecord(UtTavTorzsData)) return;
    std::string from = text(Text1);
    std::string to = text(Text2);
    double distance = distanceIn(Text3);
    UtTorzsUj_Click();
    forms::setText(Text1, to);
    forms::setText(Text2, from);
    forms::setText(Text3, vb::CStr(vb::Variant(distance)));
    forms::setFocus(Text1);
}

void GkUtakTavolsagaTorzsFormX::GTKeresHonnan_Click() {
    standardSearch(UtTavTorzsData, "Honnan", FromPrompt, FromTitle, NoSuchPlace);
}

void GkUtakTavolsagaTorzsFormX::GTKeresHova_Click() {
    standardSearch(UtTavTorzsData, "Hova", ToPrompt, ToTitle, NoSuchPlace);
}

// "Kijelölt sort törli": the standard delete; no row left (or none to begin with) gives a new row.
void GkUtakTavolsagaTorzsFormX::UtTorzsTorol_Click() {
    if (count(UtTavTorzsData) < 1) {
        UtTorzsUj_Click();
        return;
    }
    deleteRecord(UtTavTorzsData, DeleteText, DeleteTitle, nullptr, {}, [this] { UtTorzsUj_Click(); });
    DBGrid1->Refresh();
}

void GkUtakTavolsagaTorzsFormX::GTNyom_Click() {
    printRoutes(UtTavTorzsData);
    DBGrid1->Refresh();
}

void GkUtakTavolsagaTorzsFormX::Command2_Click() {
    if (pickCountry()) forms::setText(Text4, Globals::CountryMarkTransfer);
}

void GkUtakTavolsagaTorzsFormX::Command3_Click() {
    if (pickCountry()) forms::setText(Text5, Globals::CountryMarkTransfer);
}

void GkUtakTavolsagaTorzsFormX::Segedlet_Click() { help(); }

// "Vissza": the typed values stored and the current row updated (errors ignored), the source
// closed, the form unloaded. The close box comes here through CloseGuard, at every opening.
void GkUtakTavolsagaTorzsFormX::Kilepes_Click() {
    standardExit(
        [this] {
            if (count(UtTavTorzsData) < 1) return;
            vb::resume([&] {
                UtTavTorzsData->writeBound();
                auto& r = UtTavTorzsData->rs();
                r.Edit();
                r.Update();
            });
            Err.Clear();
        },
        {UtTavTorzsData});
}

// "Adat átadása": with a current row the flag 1 and the five values; otherwise the four texts
// cleared (flag and distance stay). Then the form leaves.
void GkUtakTavolsagaTorzsFormX::AdatAtad_Click() {
    if (count(UtTavTorzsData) > 0 && onRecord(UtTavTorzsData)) {
        Globals::RoutePicked = 1;
        Globals::PickedFromCountry = text(Text4);
        Globals::PickedToCountry = text(Text5);
        Globals::PickedFrom = text(Text1);
        Globals::PickedTo = text(Text2);
        Globals::PickedRouteDistance = distanceIn(Text3);
    } else {
        Globals::PickedFromCountry.clear();
        Globals::PickedToCountry.clear();
        Globals::PickedFrom.clear();
        Globals::PickedTo.clear();
    }
    Kilepes_Click();
}

void GkUtakTavolsagaTorzsFormX::DBGrid1_HeadClick(int column) { headerSort(UtTavTorzsData, DBGrid1, column); }

}  // namespace trips
