#include "forms/layout.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QLabel>

#include "forms/events.h"

namespace forms {

QBoxLayout* buttonRow(std::initializer_list<QAbstractButton*> buttons, int minWidth, bool roomBefore, bool roomAfter) {
    auto* row = new QHBoxLayout;
    if (roomBefore) row->addStretch(1);
    for (auto* b : buttons) {
        b->setMinimumWidth(minWidth);
        row->addWidget(b);
    }
    if (roomAfter) row->addStretch(1);
    return row;
}

QLabel* heading(QWidget* parent, const std::string& text) {
    auto* l = new QLabel(qs(text), parent);
    l->setStyleSheet("font-weight: bold");
    return l;
}

}  // namespace forms
