#include "forms/dialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QPushButton>

#include "vb/constants.h"

namespace forms {

namespace {
std::unique_ptr<Dialogs>& installed() {
    static std::unique_ptr<Dialogs> d = std::make_unique<ScreenDialogs>();
    return d;
}
QString q(const std::string& s) { return QString::fromStdString(s); }
}  // namespace

Dialogs& dialogs() { return *installed(); }
void setDialogs(std::unique_ptr<Dialogs> d) { installed() = std::move(d); }

int ScreenDialogs::msgBox(const std::string& text, int style, const std::string& title) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(q(title));
    box.setText(q(text));
    switch (style & 0x70) {
        case vb::vbCritical: box.setIcon(QMessageBox::Critical); break;
        case vb::vbQuestion: box.setIcon(QMessageBox::Question); break;
        case vb::vbExclamation: box.setIcon(QMessageBox::Warning); break;
        case vb::vbInformation: box.setIcon(QMessageBox::Information); break;
        default: box.setIcon(QMessageBox::NoIcon); break;
    }
    struct Button { const char* text; int answer; QMessageBox::ButtonRole role; };
    std::vector<Button> buttons;
    switch (style & 7) {
        case vb::vbOKCancel: buttons = {{"OK", vb::vbOK, QMessageBox::AcceptRole}, {"Mégse", vb::vbCancel, QMessageBox::RejectRole}}; break;
        case vb::vbAbortRetryIgnore: buttons = {{"Megszakítás", vb::vbAbort, QMessageBox::RejectRole}, {"Újra", vb::vbRetry, QMessageBox::AcceptRole}, {"Kihagyás", vb::vbIgnore, QMessageBox::AcceptRole}}; break;
        case vb::vbYesNoCancel: buttons = {{"Igen", vb::vbYes, QMessageBox::YesRole}, {"Nem", vb::vbNo, QMessageBox::NoRole}, {"Mégse", vb::vbCancel, QMessageBox::RejectRole}}; break;
        case vb::vbYesNo: buttons = {{"Igen", vb::vbYes, QMessageBox::YesRole}, {"Nem", vb::vbNo, QMessageBox::NoRole}}; break;
        case vb::vbRetryCancel: buttons = {{"Újra", vb::vbRetry, QMessageBox::AcceptRole}, {"Mégse", vb::vbCancel, QMessageBox::RejectRole}}; break;
        default: buttons = {{"OK", vb::vbOK, QMessageBox::AcceptRole}}; break;
    }
    std::vector<QPushButton*> made;
    for (auto& b : buttons) made.push_back(box.addButton(QString::fromUtf8(b.text), b.role));
    int def = (style >> 8) & 3;
    if (def < int(made.size())) box.setDefaultButton(made[def]);
    // The mouse pointer is the arrow over a message, whatever the program had set.
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    box.exec();
    QApplication::restoreOverrideCursor();
    for (size_t i = 0; i < made.size(); ++i)
        if (box.clickedButton() == made[i]) return buttons[i].answer;
    // The close box: Cancel where there is one, else the only or last answer.
    for (auto& b : buttons)
        if (b.answer == vb::vbCancel) return b.answer;
    return buttons.size() == 1 ? buttons[0].answer : buttons.back().answer;
}

std::string ScreenDialogs::inputBox(const std::string& prompt, const std::string& title,
                                    const std::string& defaultText) {
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(q(title));
    dialog.setLabelText(q(prompt));
    dialog.setTextValue(q(defaultText));
    dialog.setOkButtonText("OK");
    dialog.setCancelButtonText("Mégse");
    QApplication::setOverrideCursor(Qt::ArrowCursor);
    bool ok = dialog.exec() == QDialog::Accepted;
    QApplication::restoreOverrideCursor();
    return ok ? dialog.textValue().toStdString() : std::string();
}

void ScreenDialogs::beep() { QApplication::beep(); }

void ScreenDialogs::mousePointer(int pointer) {
    bool wasBusy = pointer_ == vb::vbHourglass;
    bool busy = pointer == vb::vbHourglass;
    pointer_ = pointer;
    if (busy && !wasBusy) QApplication::setOverrideCursor(Qt::WaitCursor);
    if (!busy && wasBusy) QApplication::restoreOverrideCursor();
}

bool ScreenDialogs::printerReady() { return !QPrinterInfo::availablePrinters().isEmpty(); }

void ScreenDialogs::exitProcess() {
    QApplication::closeAllWindows();
    QApplication::exit(0);
}

int ScriptedDialogs::msgBox(const std::string& text, int style, const std::string& title) {
    log.push_back({Entry::Message, text, style, title});
    if (onMessage) onMessage(log.back());
    int buttons = style & 7;
    if (buttons == vb::vbOKOnly) return vb::vbOK;
    if (answers.empty()) {
        unexpected.push_back(text);
        return buttons == vb::vbYesNo || buttons == vb::vbYesNoCancel ? vb::vbYes : vb::vbOK;
    }
    int a = answers.front();
    answers.pop_front();
    return a;
}

std::string ScriptedDialogs::inputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) {
    log.push_back({Entry::Input, prompt, 0, title});
    if (inputs.empty()) {
        unexpected.push_back(prompt);
        return "";
    }
    std::string s = inputs.front();
    inputs.pop_front();
    return s;
}

void ScriptedDialogs::beep() { log.push_back({Entry::Beep, "", 0, ""}); }

std::vector<std::string> ScriptedDialogs::messages() const {
    std::vector<std::string> out;
    for (auto& e : log)
        if (e.kind == Entry::Message) out.push_back(e.text);
    return out;
}

int ScriptedDialogs::beeps() const {
    int n = 0;
    for (auto& e : log) n += e.kind == Entry::Beep;
    return n;
}

void ScriptedDialogs::clear() {
    log.clear();
    answers.clear();
    inputs.clear();
    unexpected.clear();
}

}  // namespace forms
