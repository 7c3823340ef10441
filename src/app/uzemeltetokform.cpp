#include "app/uzemeltetokform.h"

#include <QAction>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>

#include "db/database.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "vb/constants.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace app {

using vb::Err;
using vb::resume;

UzemeltetokForm::UzemeltetokForm() : RecordForm("UzemeltetokForm", "Nyilvántartást végző adatai - Kerova") {
    Betarol = data("Betarol", "Torzsek.dsb", "Bettorzs");
    Regisztralas = data("Regisztrálás", "Regiszt.dsb", "Regisztrálás");

    auto* bar = menuBar(nullptr);
    Kilepes = menuItem(bar, "Kilepes", "Kilépés");

    auto* grid = new QGridLayout(this);
    grid->setMenuBar(bar);
    grid->setContentsMargins(16, 12, 16, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    Label1 = label("Label1", "A nyilvántartást végző (üzemeltető) adatai");
    QFont heading = Label1->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.25);
    Label1->setFont(heading);
    grid->addWidget(Label1, 0, 0, 1, 2, Qt::AlignCenter);

    int row = 1;
    auto field = [&](const std::string& name, const char* caption, const char* column) {
        auto* l = label(name + "Caption", caption);
        auto* t = textBox(name);
        t->setMinimumWidth(420);
        grid->addWidget(l, row, 0, Qt::AlignRight);
        grid->addWidget(t, row, 1);
        ++row;
        Betarol->bind(t, column);
        return t;
    };
    Text2 = field("Text2", "Üzemeltető neve:", "UzNev");
    Text3 = field("Text3", "Irányítószám:", "UzIrszam");
    Text4 = field("Text4", "Székhely (település):", "UzSzekhely");
    Text5 = field("Text5", "Cím:", "UzCim");
    Text6 = field("Text6", "Adószám:", "UzAdoszam");
    Text7 = field("Text7", "Bankszámlaszám:", "UzSzamlaszam");
    Text12 = field("Text12", "Telefon:", "Uztelefon");
    Text13 = field("Text13", "Fax:", "UzFax");
    Text14 = field("Text14", "Mobil:", "UzMobil");
    Text20 = field("Text20", "EU adószám:", "EUAdoszam");
    Text22 = field("Text22", "VPID:", "VPID");
    Text24 = field("Text24", "Telephely:", "Telephely");
    Text2->setToolTip("Üresen hagyva az adatlap TÖRLŐDIK!");
    Text24->setToolTip("Telephely teljes címe");

    grid->addWidget(label("FolderCaption", "Adatkönyvtár:"), row, 0, Qt::AlignRight);
    Folder = label("Folder", "");
    Folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(Folder, row++, 1);

    Command1 = button("Command1", "Kilépés");
    Command1->setMinimumWidth(120);
    grid->addWidget(Command1, row, 1, Qt::AlignRight);
    grid->setRowMinimumHeight(row, 44);
    grid->setColumnStretch(1, 1);

    forms::focusColors({Text2, Text3, Text4, Text5, Text6, Text7, Text12, Text13, Text14, Text20, Text22, Text24});
    forms::wholeNumber({Text3, Text6, Text12, Text13, Text14});

    forms::onClick(Command1, [this] { Kilepes->trigger(); });
    forms::onClick(Kilepes, [this] { Kilepes_Click(); });
}

// The form always has a row to bind to: the first, or a new empty one.
void UzemeltetokForm::Form_Activate() {
    Folder->setText(forms::qs(db::workingFolder().string()));
    if (count(Betarol) > 0) {
        resume([&] { Betarol->rs().MoveFirst(); });
    } else {
        addRow(Betarol, {});
    }
    Err.Clear();
    forms::MousePointer(vb::vbDefault);
}

void UzemeltetokForm::Kilepes_Click() {
    CloseGuard = false;
    // 1: the action log, when the form stands on a row
    if (count(Betarol) > 0 && !resume([&] { return Betarol->rs().Eof(); }, true)) LogAction(Regisztralas, LogText, nullptr);
    Err.Clear();
    // 2: the moves write the bound boxes
    resume([&] { Betarol->rs().MoveLast(); });
    resume([&] { Betarol->rs().MoveFirst(); });
    Err.Clear();
    // 3: the name is mandatory; a name that can't be read counts as empty
    vb::Variant name = resume([&] { return Betarol->rs().Fields("UzNev").Value(); }, vb::Variant(vb::Null{}));
    Err.Clear();
    if (vb::isNull(name) || vb::isEmpty(name) || vb::nullToText(name).empty()) {
        forms::arrow();
        forms::Beep();
        forms::MsgBox(EmptyNameText, vb::vbCritical, EmptyNameTitle);
        resume([&] { Betarol->rs().Delete(); });
        closeAll({Betarol, Regisztralas});
        Err.Clear();
        forms::End();
    }
    // 4
    closeAll({Regisztralas, Betarol});
    Err.Clear();
    Unload();
}

}  // namespace app
