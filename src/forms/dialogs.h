// The one way from the forms to message boxes, input boxes, beeps, the mouse pointer, the printer
// check and the process end. On screen: QMessageBox / QInputDialog with the program's Hungarian
// buttons. Tests install ScriptedDialogs, which records everything and answers from a queue.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace forms {

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // VB's MsgBox: returns vbOK, vbCancel, vbYes, vbNo ...
    virtual int msgBox(const std::string& text, int style, const std::string& title) = 0;
    // VB's InputBox: the text typed, "" on "Mégse".
    virtual std::string inputBox(const std::string& prompt, const std::string& title,
                                 const std::string& defaultText) = 0;
    virtual void beep() = 0;
    // Screen.MousePointer (0 default, 1 arrow, 11 hourglass).
    virtual void mousePointer(int pointer) = 0;
    // Whether a printer is ready to print.
    virtual bool printerReady() = 0;
    // Ends the program (the main form's exit, an empty operator name).
    virtual void exitProcess() = 0;
};

// The installed Dialogs (ScreenDialogs until another is installed).
Dialogs& dialogs();
void setDialogs(std::unique_ptr<Dialogs> d);

class ScreenDialogs : public Dialogs {
public:
    int msgBox(const std::string& text, int style, const std::string& title) override;
    std::string inputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override;
    void beep() override;
    void mousePointer(int pointer) override;
    bool printerReady() override;
    void exitProcess() override;

private:
    int pointer_ = 0;
};

// For tests: records every message, input box and beep; answers questions and input boxes from
// queues. A question or input box with an empty queue is recorded as unexpected and answered with
// the default (Yes / OK / "").
class ScriptedDialogs : public Dialogs {
public:
    struct Entry {
        enum Kind { Message, Input, Beep } kind;
        std::string text;   // message text or input prompt
        int style = 0;
        std::string title;
    };
    std::vector<Entry> log;
    std::deque<int> answers;          // for msgBox with more than one button
    std::deque<std::string> inputs;   // for inputBox
    std::vector<std::string> unexpected;
    bool printer = false;
    int pointer = 0;
    int exits = 0;
    // Called for every message box before it answers (a test can act "while it is shown").
    std::function<void(const Entry&)> onMessage;

    int msgBox(const std::string& text, int style, const std::string& title) override;
    std::string inputBox(const std::string& prompt, const std::string& title,
                         const std::string& defaultText) override;
    void beep() override;
    void mousePointer(int p) override { pointer = p; }
    bool printerReady() override { return printer; }
    void exitProcess() override { ++exits; }

    // The texts of the message boxes shown, in order.
    std::vector<std::string> messages() const;
    int beeps() const;
    void clear();
};

}  // namespace forms
