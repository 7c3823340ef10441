// Small pieces the trip module's forms share: the warning box, a quiet FindFirst, top-level menu
// entries and the button rows of a form.
#pragma once

#include <initializer_list>
#include <string>

class QAction;
class QBoxLayout;
class QMenuBar;
class QPushButton;
class QWidget;

namespace forms {
class DataControl;
}

namespace trips {

inline constexpr const char* WarnTitle = "FIGYELEM!";

// Arrow, Beep and a warning box (style 48).
void warn(const std::string& text, const std::string& title = WarnTitle);
// FindFirst on the Data control's set with errors resumed; whether a row was found.
bool findFirst(forms::DataControl* dc, const std::string& criterion);
// A menu entry straight on the menu bar (VB's top-level menu with a Click), named as the form names it.
QAction* topEntry(QMenuBar* bar, QWidget* owner, const std::string& name, const std::string& caption);
// A row of buttons of equal width, left to right.
QBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons);
// Today as the program writes a date ("2026.11.23.").
std::string todayText();

}  // namespace trips
