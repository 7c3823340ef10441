#include "app/kerovaform.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "forms/events.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/format.h"

namespace app {

KerovaForm::KerovaForm() : RecordForm("KerovaForm", "Üzemanyagköltség kalkulátor - Kerova") {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(18, 14, 18, 14);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    Label1 = label("Label1", "Üzemanyagköltség kiszámításához kalkulátor");
    QFont heading = Label1->font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.2);
    Label1->setFont(heading);
    grid->addWidget(Label1, 0, 0, 1, 2, Qt::AlignCenter);

    Label2 = label("Label2", "Távolság (km):");
    TxtTavolsag = textBox("TxtTavolsag");
    Label3 = label("Label3", "Fogyasztás:");
    TxtFogyasztas = textBox("TxtFogyasztas");
    Label4 = label("Label4", "Benzinár:");
    TxtBenzinar = textBox("TxtBenzinar");
    Label5 = label("Label5", "Üzemanyagköltség:");
    TxtEredmeny = textBox("TxtEredmeny");
    int row = 1;
    for (auto [l, t] : {std::pair{Label2, TxtTavolsag}, {Label3, TxtFogyasztas}, {Label4, TxtBenzinar},
                        {Label5, TxtEredmeny}}) {
        t->setMinimumWidth(200);
        grid->addWidget(l, row, 0, Qt::AlignRight);
        grid->addWidget(t, row, 1);
        ++row;
    }
    grid->setRowMinimumHeight(4, 36);
    TxtEredmeny->setReadOnly(true);
    TxtEredmeny->setFocusPolicy(Qt::ClickFocus);
    QFont result = TxtEredmeny->font();
    result.setBold(true);
    TxtEredmeny->setFont(result);
    TxtEredmeny->setAlignment(Qt::AlignRight);
    forms::setBackColor(TxtEredmeny, vb::vbYellow);

    Kilepes = button("Kilepes", "Kilépés");
    Kilepes->setMinimumWidth(110);
    grid->addWidget(Kilepes, row, 1, Qt::AlignRight);
    grid->setRowStretch(row + 1, 1);

    forms::focusColors({TxtTavolsag, TxtFogyasztas, TxtBenzinar});
    for (auto* t : {TxtTavolsag, TxtFogyasztas, TxtBenzinar}) forms::onChange(t, [this] { Recompute(); });
    forms::onClick(Kilepes, [this] { unloadUnguarded(); });
    resize(430, 260);
}

// Only when all three are above 0, tested in the order price, consumption, distance; each is cut
// to a whole Integer first (7.5 is used as 8), and the overflow above 32767 is nobody's to catch.
void KerovaForm::Recompute() {
    using forms::text;
    if (vb::Val(text(TxtBenzinar)) > 0 && vb::Val(text(TxtFogyasztas)) > 0 && vb::Val(text(TxtTavolsag)) > 0) {
        int16_t price = vb::CInt(vb::Val(text(TxtBenzinar)));
        int16_t consumption = vb::CInt(vb::Val(text(TxtFogyasztas)));
        int16_t distance = vb::CInt(vb::Val(text(TxtTavolsag)));
        double cost = consumption / 100.0 * price * distance;
        forms::setText(TxtEredmeny, vb::Format(vb::CCur(cost), "Currency"));
    }
}

}  // namespace app
