#include "app/parameterformx.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/kerovax.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "forms/layout.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace app {

using vb::Err;
using vb::resume;

namespace {

// VizsgaFigyelmeztetoNap's columns in their binding order (readers address them by ordinal).
const char* const WarningColumns[][2] = {
    {"MüszakiVizsgaFigyelmeztetöNap", "Müszaki vizsga figyelmeztető nap"},
    {"ZöldkártyaFigyelmeztetöNap", "Zöldkártya figyelmeztető nap"},
    {"TachográfHitelesNap", "Tachográf hitelesítés figy. nap"},
    {"TachográfOMHEngNap", "Tachográf OMH eng. figy. nap"},
    {"BiztosításZöldkNap", "Biztosítás zöld kártya figy. nap"},
    {"SzemleKilométer", "Szemle figy. kilométer"},
    {"OlajcsereKilométer", "Olajcsere figy. kilométer"},
    {"NkKarbantNaplóKilométer", "Nemzetközi karbantart. napló kilométer"},
    {"HajtásláncOlajcsereKilométer", "Hajtáslánc olajcsere kilométer"},
    {"VezérmüÉkszijcsereKilométer", "Vezérmű ékszíjcsere kilométer"},
};

QGroupBox* holding(QGroupBox* frame, QWidget* content) {
    auto* l = new QVBoxLayout(frame);
    l->setContentsMargins(8, 6, 8, 8);
    l->addWidget(content);
    return frame;
}

}  // namespace

ParameterFormX::ParameterFormX() : RecordForm("ParameterFormX", "Paraméter adatok beállítása - Kerova") {
    ParameterData = data("ParameterData", "Torzsek.dsb", "VizsgaFigyelmeztetoNap");
    PathData = data("PathData", "parameter.dsb", "Path");
    MennyData = data("MennyData", "parameter.dsb", "MennyisegiEgyseg");
    EgyebData = data("EgyebData", "parameter.dsb", "Egyebek");

    auto* bar = menuBar(nullptr);
    Kilepes = menuItem(bar, "Kilepes", "Kilépés");

    DBGrid1 = grid("DBGrid1");
    DBGrid2 = grid("DBGrid2");
    DBGrid3 = grid("DBGrid3");
    DBGrid4 = grid("DBGrid4");
    for (auto& c : WarningColumns) DBGrid1->addColumn(c[1], c[0], 122);
    for (const char* c : {"PolcrakPath", "FogastorPath", "BizonylaNextPath", "InterfacePath"})
        DBGrid2->addColumn(c, c, 300);
    DBGrid3->addColumn("M.egység rövidítve", "MennyiségiEgység", 200);
    DBGrid3->addColumn("Állandó", "Állandó", 90);
    DBGrid4->addColumn("Napidíj", "Napidíj", 160);
    DBGrid4->addColumn("Pénznem", "NapidíjDevizanem", 160);
    DBGrid1->bind(ParameterData);
    DBGrid2->bind(PathData);
    DBGrid3->bind(MennyData);
    DBGrid4->bind(EgyebData);
    for (auto* g : {DBGrid1, DBGrid2, DBGrid3, DBGrid4}) {
        g->setAllowUpdate(true);
        g->horizontalHeader()->setStretchLastSection(true);
    }
    // The long captions of the warning grid wrap in a taller heading.
    DBGrid1->horizontalHeader()->setDefaultAlignment(Qt::Alignment(Qt::AlignCenter | Qt::TextWordWrap));
    int line = DBGrid1->fontMetrics().height();
    DBGrid1->horizontalHeader()->setFixedHeight(3 * line + 10);
    DBGrid1->setFixedHeight(3 * line + 10 + 3 * (line + 6));
    DBGrid2->setFixedHeight(DBGrid2->fontMetrics().height() + 12 + 3 * (DBGrid2->fontMetrics().height() + 6));

    Check1 = checkBox("Check1", "Görgetés adatoknál (állandó)");
    MennyData->bind(Check1, "Állandó");
    Command1 = button("Command1", "Új mennyiségi egység");

    // A cell edit in the units' grid shows at once in Check1 (the row is read again).
    connect(DBGrid3->recordsetModel(), &QAbstractItemModel::dataChanged, this, [this] {
        db::Recordset* r = MennyData->Recordset();
        if (!r || r->closed()) return;
        resume([&] {
            int p = r->AbsolutePosition();
            if (p >= 0) r->setAbsolutePosition(p);
        });
        Err.Clear();
    });

    Command2 = button("Command2", "OK-Mentés");
    Command4 = button("Command4", "Segédlet");
    Command3 = button("Command3", "Kilépés");

    auto* top = new QVBoxLayout(this);
    top->setMenuBar(bar);
    top->setContentsMargins(12, 8, 12, 12);
    Frame1 = holding(frame("Frame1", WarningGridCaption), DBGrid1);
    Frame2 = holding(frame("Frame2", PathGridCaption), DBGrid2);
    top->addWidget(Frame1);
    top->addWidget(Frame2);

    auto* lower = new QHBoxLayout;
    Frame3 = frame("Frame3", UnitGridCaption);
    auto* units = new QGridLayout(Frame3);
    units->setContentsMargins(8, 6, 8, 8);
    units->addWidget(DBGrid3, 0, 0, 1, 2);
    units->addWidget(Check1, 1, 0);
    units->addWidget(Command1, 1, 1, Qt::AlignRight);
    Frame4 = holding(frame("Frame4", AllowanceGridCaption), DBGrid4);
    lower->addWidget(Frame3, 1);
    lower->addWidget(Frame4, 1);
    top->addLayout(lower, 1);

    top->addLayout(forms::buttonRow({Command2, Command4, Command3}, 120, true, false));
    resize(1320, 640);

    using forms::onClick;
    onClick(Command1, [this] { Command1_Click(); });
    onClick(Command2, [this] { Kilepes_Click(); });
    onClick(Command3, [this] { Kilepes_Click(); });
    onClick(Command4, [this] {
        Globals::HelpTopicName = HelpTopic;
        forms::get("HelpFormX").Show(true);
    });
    onClick(Kilepes, [this] { Kilepes_Click(); });
}

// Every empty table gets its row, so that each grid has a row to edit.
void ParameterFormX::Form_Activate() {
    forms::hourglass();
    for (auto* d : {ParameterData, PathData, MennyData, EgyebData}) {
        if (count(d) < 1) addRow(d, {});
        Err.Clear();
    }
    forms::arrow();
}

// A further unit of quantity: a new row at the end, its first cell open for typing.
void ParameterFormX::Command1_Click() {
    if (!addRow(MennyData, {})) {
        forms::Beep();
        return;
    }
    int row = DBGrid3->Row();
    if (row >= 0) {
        QModelIndex cell = DBGrid3->model()->index(row, 0);
        DBGrid3->setCurrentIndex(cell);
        forms::setFocus(DBGrid3);
        DBGrid3->edit(cell);
    }
}

// The exit writes the edited values back into Globals, so that they act before the main form
// reloads them; the other eight warning limits wait for the main form's next activation.
void ParameterFormX::Kilepes_Click() {
    CloseGuard = false;
    forms::hourglass();
    if (count(ParameterData) > 0) {
        auto& p = ParameterData->rs();
        resume([&] { p.MoveFirst(); });
        resume([&] { p.MoveLast(); });
        resume([&] { Globals::WarnInspectionDays = vb::CInt(vb::NullToNum(p.Fields(0).Value())); });
        resume([&] { Globals::WarnGreenCardDays = vb::CInt(vb::NullToNum(p.Fields(1).Value())); });
        Err.Clear();
    }
    if (onRecord(MennyData) && Check1->isChecked()) {
        resume([&] { Globals::FixedUnit = vb::nullToText(MennyData->rs().Fields("MennyiségiEgység").Value()); });
    } else {
        Globals::FixedUnit.clear();
    }
    Err.Clear();
    if (count(PathData) > 0) readPaths(PathData);
    if (count(EgyebData) > 0) {
        auto& e = EgyebData->rs();
        resume([&] { e.MoveLast(); });
        resume([&] { Globals::FixedAllowance = vb::CDbl(e.Fields("Napidíj").Value()); });
        resume([&] { Globals::FixedAllowanceCurrency = vb::nullToText(e.Fields("NapidíjDevizanem").Value()); });
        Err.Clear();
    }
    closeAll({ParameterData, PathData, MennyData, EgyebData});
    Err.Clear();
    forms::arrow();
    Unload();
}

}  // namespace app
