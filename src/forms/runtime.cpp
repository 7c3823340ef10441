#include "forms/runtime.h"

#include <QEventLoop>
#include <QPointer>
#include <QScreen>
#include <map>

#include "forms/form.h"
#include "vb/constants.h"
#include "vb/err.h"
#include "vb/error.h"

namespace forms {

namespace {

// Thrown by End() so that the running handlers unwind, as the process end would.
struct ExitRequest {};

struct State {
    std::map<std::string, std::function<Form*()>> factories;
    std::map<std::string, QPointer<Form>> instances;
    std::vector<Form*> modal;
    QPointer<Form> active;
    int pointer = 0;
    int depth = 0;           // handlers running under run()
    int modalBase = 0;       // the depth at which the innermost modal form's events run
    QPointer<Form> pendingActivation;
    int pendingBase = 0;     // the depth of the handler that opened the modal form
    ModalRunner runner;
    bool ending = false;
};

State& st() {
    static State s;
    return s;
}

void unexpected(int number, const std::string& description) {
    vb::Err.Clear();
    try {
        MousePointer(vb::vbArrow);
        dialogs().msgBox("Váratlan hiba (" + std::to_string(number) + "): " + description, vb::vbCritical,
                         UnexpectedTitle);
    } catch (...) {
        // the box itself failed: nothing more to do
    }
}

// A form drawn for a large screen opens no larger than the screen it is on (a 1366x768 laptop),
// as far as its layout's minimum allows; the room for the window frame is an estimate, as the frame
// is only known once the window is shown.
void fitToScreen(Form& f) {
    const QScreen* screen = f.screen();
    if (!screen || f.isVisible()) return;
    QSize room = screen->availableGeometry().size() - QSize(16, 48);
    QSize size = f.size().boundedTo(room).expandedTo(f.minimumSizeHint());
    if (size != f.size()) f.resize(size);
}

void activateForm(Form& f) {
    st().active = &f;
    run([&f] { f.activate(); });
}

}  // namespace

void registerForm(const std::string& name, std::function<Form*()> factory) {
    st().factories[name] = std::move(factory);
}

bool formExists(const std::string& name) { return st().factories.count(name) > 0; }

Form& get(const std::string& name) {
    auto& s = st();
    auto it = s.instances.find(name);
    if (it != s.instances.end() && it->second) return *it->second;
    auto f = s.factories.find(name);
    Form* made = f != s.factories.end() ? f->second() : new StandInForm(name);
    s.instances[name] = made;
    return *made;
}

Form* find(const std::string& name) {
    auto& s = st();
    auto it = s.instances.find(name);
    return it != s.instances.end() && it->second && it->second->isLoaded() ? it->second.data() : nullptr;
}

Form* active() { return st().active.data(); }
std::vector<Form*> modalForms() { return st().modal; }

void run(const std::function<void()>& handler) {
    if (!handler) return;
    auto& s = st();
    ++s.depth;
    bool rethrowExit = false;
    try {
        handler();
    } catch (const ExitRequest&) {
        // Unwinds to the outermost handler of the current event loop, never into Qt's loop.
        rethrowExit = s.depth - 1 > s.modalBase;
    } catch (const vb::NumberedError& e) {
        unexpected(e.number(), e.what());
    } catch (const std::exception& e) {
        unexpected(vb::InvalidProcedureCall, e.what());
    } catch (...) {
        unexpected(vb::InvalidProcedureCall, "ismeretlen hiba");
    }
    --s.depth;
    if (rethrowExit) throw ExitRequest{};
    // Only the handler that opened the modal form runs the caller's Activate at its end, not a
    // handler inside a later modal form it opens (a loop of page forms).
    if (s.depth == s.pendingBase && s.depth == s.modalBase && s.pendingActivation && !s.ending) {
        QPointer<Form> p = s.pendingActivation;
        s.pendingActivation = nullptr;
        if (p && p->isLoaded() && p->isShown() && s.active == p) run([p] { p->activate(); });
    }
}

void setModalRunner(ModalRunner runner) { st().runner = std::move(runner); }

int MsgBox(const std::string& text, int style, const std::string& title) {
    return dialogs().msgBox(text, style, title);
}

std::string InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText) {
    return dialogs().inputBox(prompt, title, defaultText);
}

void Beep() { dialogs().beep(); }

void MousePointer(int pointer) {
    st().pointer = pointer;
    dialogs().mousePointer(pointer);
}

int MousePointer() { return st().pointer; }
void hourglass() { MousePointer(vb::vbHourglass); }
void arrow() { MousePointer(vb::vbArrow); }

void End() {
    st().ending = true;
    dialogs().exitProcess();
    throw ExitRequest{};
}

bool ending() { return st().ending; }

void resetRuntime() {
    auto& s = st();
    for (auto& [name, f] : s.instances) {
        if (!f) continue;
        f->CloseGuard = false;
        f->loaded_ = false;
        f->shown_ = false;
        f->closingByRuntime_ = true;
        f->hide();
        delete f.data();
    }
    s.instances.clear();
    s.modal.clear();
    s.active = nullptr;
    s.pendingActivation = nullptr;
    s.pendingBase = 0;
    s.pointer = 0;
    s.depth = 0;
    s.modalBase = 0;
    s.ending = false;
}

namespace detail {

void showForm(Form& f, bool modal) {
    auto& s = st();
    bool already = f.shown_ && s.active == &f;
    f.shown_ = true;
    fitToScreen(f);
    if (!modal) {
        f.show();
        f.raise();
        f.activateWindow();
        if (!already && f.isLoaded()) activateForm(f);
        return;
    }
    QPointer<Form> caller = s.active;
    QPointer<Form> self = &f;
    s.modal.push_back(&f);
    int outerBase = s.modalBase;
    s.modalBase = s.depth;
    f.setWindowModality(Qt::ApplicationModal);
    f.show();
    f.raise();
    f.activateWindow();
    if (!already && f.isLoaded()) activateForm(f);
    if (s.runner) {
        if (self && self->isLoaded() && self->isShown()) s.runner(f);
    } else {
        QEventLoop loop;
        QObject::connect(&f, &Form::destroyed, &loop, &QEventLoop::quit);
        // The loop ends when the form is hidden or unloaded (formHidden quits it through the property).
        f.setProperty("kerovaModalLoop", QVariant::fromValue<void*>(&loop));
        if (self->isLoaded() && self->isShown()) loop.exec();
        if (self) self->setProperty("kerovaModalLoop", QVariant());
    }
    s.modalBase = outerBase;
    std::erase(s.modal, &f);
    if (self) self->setWindowModality(Qt::NonModal);
    if (s.ending) throw ExitRequest{};
    if (!self || s.active == self || !s.active || !s.active->isLoaded()) {
        s.active = caller;
        if (caller && caller->isLoaded() && caller->isShown()) {
            if (s.depth > s.modalBase) {
                // The caller's Activate comes once the handler that opened the modal form has run
                // to its end, so that it reads a picker's hand-over first.
                s.pendingActivation = caller;
                s.pendingBase = s.modalBase;
            } else {
                activateForm(*caller);
            }
        }
    }
}

void formHidden(Form& f) {
    if (auto* loop = static_cast<QEventLoop*>(f.property("kerovaModalLoop").value<void*>())) loop->quit();
}

void formUnloaded(Form& f) {
    auto& s = st();
    if (s.active == &f) s.active = nullptr;
    auto it = s.instances.find(f.name());
    if (it != s.instances.end() && it->second == &f) s.instances.erase(it);
    formHidden(f);
}

void windowActivated(Form& f) {
    // The user clicked another of the program's windows: it becomes the active form. Coming back
    // from another application re-activates the same form, which fires nothing.
    auto& s = st();
    if (!f.isLoaded() || !f.isShown() || s.active == &f || !s.modal.empty()) return;
    activateForm(f);
}

}  // namespace detail

}  // namespace forms
