#include "trips/common.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>

#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/runtime.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"

namespace trips {

void warn(const std::string& text, const std::string& title) {
    forms::arrow();
    forms::Beep();
    forms::MsgBox(text, vb::vbExclamation, title);
}

bool findFirst(forms::DataControl* dc, const std::string& criterion) {
    vb::Err.Clear();
    bool found = vb::resume(
        [&] {
            auto& r = dc->rs();
            r.FindFirst(criterion);
            return !r.NoMatch();
        },
        false);
    vb::Err.Clear();
    return found;
}

QAction* topEntry(QMenuBar* bar, QWidget* owner, const std::string& name, const std::string& caption) {
    auto* a = new QAction(forms::qs(caption), owner);
    a->setObjectName(forms::qs(name));
    bar->addAction(a);
    return a;
}

QBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    for (auto* b : buttons) {
        b->setMinimumWidth(120);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        row->addWidget(b);
    }
    return row;
}

std::string todayText() { return vb::dateText(vb::clock::today()); }

}  // namespace trips
