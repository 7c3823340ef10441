// Layout pieces every form uses: a row of command buttons and a bold caption over a grid or group.
#pragma once

#include <initializer_list>
#include <string>

class QAbstractButton;
class QBoxLayout;
class QLabel;
class QWidget;

namespace forms {

// Buttons side by side, each at least `minWidth` wide; the row's free room goes before and/or after.
QBoxLayout* buttonRow(std::initializer_list<QAbstractButton*> buttons, int minWidth = 120,
                      bool roomBefore = false, bool roomAfter = true);
// A bold caption.
QLabel* heading(QWidget* parent, const std::string& text);

}  // namespace forms
