// The forms runtime: forms known by name, showing (modal or not), Form_Activate, the error guard
// every handler runs under, and the program's ways to the screen (MsgBox, InputBox, Beep, pointer).
// One thread, as the program always had: everything runs on Qt's event thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/dialogs.h"

namespace forms {

class Form;

// The title of the box that reports an error no handler expected.
inline constexpr const char* UnexpectedTitle = "Kerova";
// The stand-in window of a form not built yet.
inline constexpr const char* NotBuiltText = "Ez a modul még nem készült el.";

// How a form is made, under its name. Modules register their forms at start-up.
void registerForm(const std::string& name, std::function<Form*()> factory);
bool formExists(const std::string& name);
// The single instance of a form (VB's implicit form variable), made on first use; a name nobody
// registered gives a stand-in form that says the module is not built yet.
Form& get(const std::string& name);
// The loaded instance, or nullptr.
Form* find(const std::string& name);
// The form that became active last.
Form* active();
// Forms opened modally and not yet closed, innermost last.
std::vector<Form*> modalForms();

// Runs a handler under the guard: an error it did not resume shows one box ("Váratlan hiba (N):
// ..."), the pointer returns to the arrow, and the program goes on. No exception leaves it.
void run(const std::function<void()>& handler);

// How a modal form waits. On screen an event loop runs until the form is hidden or unloaded.
// Tests replace it: the function gets the form just shown and may drive it; when it returns with
// the form still shown, the form stays open and the caller goes on (as if it had been non-modal).
using ModalRunner = std::function<void(Form&)>;
void setModalRunner(ModalRunner runner);  // empty: back to the screen's event loop

// VB's MsgBox, InputBox, Beep and Screen.MousePointer through the installed Dialogs.
int MsgBox(const std::string& text, int style = 0, const std::string& title = "Kerova");
std::string InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText = "");
void Beep();
void MousePointer(int pointer);
int MousePointer();
void hourglass();
void arrow();

// VB's End: the program ends (through Dialogs::exitProcess) and the running handlers unwind.
[[noreturn]] void End();
bool ending();

// Unloads every form and forgets the instances (tests; a new start of the program).
void resetRuntime();

// Internal: the runtime's bookkeeping of forms (called by Form).
namespace detail {
void showForm(Form& f, bool modal);
void formHidden(Form& f);
void formUnloaded(Form& f);
void windowActivated(Form& f);
}  // namespace detail

}  // namespace forms
