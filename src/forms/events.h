// VB's control events on Qt widgets: Click, Change, KeyPress (with KeyAscii that the handler may
// set to 0 to swallow the key), GotFocus, LostFocus, DblClick. Every handler runs under the
// runtime's guard. Also the BGR colours of the program and text helpers between Qt and UTF-8.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <string>

class QAbstractButton;
class QAction;
class QLineEdit;
class QWidget;

namespace forms {

using Handler = std::function<void()>;

void onClick(QAbstractButton* button, Handler h);
void onClick(QAction* action, Handler h);
// Change: every change of the text, typed or set by code (VB's Change).
void onChange(QWidget* box, Handler h);
// KeyPress: a typed character (Enter is 13, Backspace 8); set keyAscii to 0 to drop the key.
void onKeyPress(QWidget* w, std::function<void(int& keyAscii)> h);
// GotFocus / LostFocus; switching to another application fires neither.
void onGotFocus(QWidget* w, Handler h);
void onLostFocus(QWidget* w, Handler h);
void onDblClick(QWidget* w, Handler h);

// Moves the focus by code (SetFocus).
void setFocus(QWidget* w);

// A VB colour (BGR, system colours with the high bit) on a widget's background / text.
void setBackColor(QWidget* w, int32_t bgr);
int32_t backColor(const QWidget* w);
void setForeColor(QWidget* w, int32_t bgr);

inline std::string str(const QString& s) { return s.toStdString(); }
inline QString qs(const std::string& s) { return QString::fromStdString(s); }
// The text of a text box, label, combo box, check box or date picker as VB's Text/Caption shows it.
std::string text(const QWidget* w);
// Sets it (a label's Caption, a box's Text); fires Change as VB does.
void setText(QWidget* w, const std::string& s);

}  // namespace forms
