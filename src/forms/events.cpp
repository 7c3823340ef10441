#include "forms/events.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include "forms/runtime.h"
#include "vb/color.h"

namespace forms {

namespace {

// The VB events of one widget, kept as its child so they die with it.
class EventHub : public QObject {
public:
    explicit EventHub(QWidget* w) : QObject(w) {
        setObjectName("kerovaEvents");
        w->installEventFilter(this);
    }
    std::vector<std::function<void(int&)>> keyPress;
    std::vector<Handler> gotFocus, lostFocus, dblClick;
    bool focused = false;

    bool eventFilter(QObject* watched, QEvent* e) override {
        switch (e->type()) {
            case QEvent::KeyPress: {
                if (keyPress.empty()) break;
                auto* k = static_cast<QKeyEvent*>(e);
                int ascii = keyAscii(k);
                if (ascii < 0) break;
                int original = ascii;
                for (auto& h : keyPress) run([&] { h(ascii); });
                if (ascii == 0) return true;
                if (ascii != original) {
                    // The handler changed the key: deliver the new character instead.
                    QKeyEvent changed(QEvent::KeyPress, 0, k->modifiers(), QString(QChar(ascii)));
                    QCoreApplication::sendEvent(watched, &changed);
                    return true;
                }
                break;
            }
            case QEvent::FocusIn:
                // Coming back to the window gives the focus again to the control that had it:
                // that is no GotFocus.
                if (!focused) {
                    focused = true;
                    for (auto& h : gotFocus) run(h);
                }
                break;
            case QEvent::FocusOut:
                if (focused && focusCounts(static_cast<QFocusEvent*>(e))) {
                    focused = false;
                    for (auto& h : lostFocus) run(h);
                }
                break;
            case QEvent::MouseButtonDblClick:
                for (auto& h : dblClick) run(h);
                break;
            default: break;
        }
        return false;
    }

private:
    // Leaving for another window or a popup is no LostFocus.
    static bool focusCounts(QFocusEvent* f) {
        return f->reason() != Qt::ActiveWindowFocusReason && f->reason() != Qt::PopupFocusReason;
    }
    // VB's KeyAscii: the typed character's code (Backspace 8, Enter 13, Escape 27); -1 for keys
    // that type nothing (arrows, Delete, F-keys), which VB never passes to KeyPress.
    static int keyAscii(QKeyEvent* k) {
        switch (k->key()) {
            case Qt::Key_Backspace: return 8;
            case Qt::Key_Return:
            case Qt::Key_Enter: return 13;
            case Qt::Key_Escape: return 27;
            case Qt::Key_Tab: return -1;
            default: break;
        }
        QString t = k->text();
        if (t.isEmpty() || k->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return -1;
        return t.at(0).unicode();
    }
};

EventHub* hub(QWidget* w) {
    auto* h = w->findChild<EventHub*>("kerovaEvents", Qt::FindDirectChildrenOnly);
    return h ? h : new EventHub(w);
}

QPalette::ColorRole backRole(const QWidget* w) {
    if (qobject_cast<const QLineEdit*>(w) || qobject_cast<const QTextEdit*>(w) ||
        qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QComboBox*>(w) ||
        qobject_cast<const QDateEdit*>(w))
        return QPalette::Base;
    if (qobject_cast<const QAbstractButton*>(w) && !qobject_cast<const QCheckBox*>(w)) return QPalette::Button;
    return QPalette::Window;
}

QColor color(int32_t bgr) { return QColor(QRgb(vb::toRgb(bgr))); }

}  // namespace

void onClick(QAbstractButton* button, Handler h) {
    QObject::connect(button, &QAbstractButton::clicked, button, [h] { run(h); });
}

void onClick(QAction* action, Handler h) {
    QObject::connect(action, &QAction::triggered, action, [h] { run(h); });
}

void onChange(QWidget* box, Handler h) {
    auto fire = [h] { run(h); };
    if (auto* e = qobject_cast<QLineEdit*>(box)) QObject::connect(e, &QLineEdit::textChanged, e, fire);
    else if (auto* c = qobject_cast<QComboBox*>(box)) QObject::connect(c, &QComboBox::currentTextChanged, c, fire);
    else if (auto* d = qobject_cast<QDateEdit*>(box)) QObject::connect(d, &QDateEdit::dateChanged, d, fire);
    else if (auto* t = qobject_cast<QTextEdit*>(box)) QObject::connect(t, &QTextEdit::textChanged, t, fire);
    else if (auto* b = qobject_cast<QCheckBox*>(box)) QObject::connect(b, &QCheckBox::stateChanged, b, fire);
}

void onKeyPress(QWidget* w, std::function<void(int&)> h) { hub(w)->keyPress.push_back(std::move(h)); }
void onGotFocus(QWidget* w, Handler h) { hub(w)->gotFocus.push_back(std::move(h)); }
void onLostFocus(QWidget* w, Handler h) { hub(w)->lostFocus.push_back(std::move(h)); }
void onDblClick(QWidget* w, Handler h) {
    if (auto* a = qobject_cast<QAbstractScrollArea*>(w)) w = a->viewport();
    hub(w)->dblClick.push_back(std::move(h));
}

void setFocus(QWidget* w) {
    if (!w) return;
    QWidget* window = w->window();
    if (window->isVisible() && !window->isActiveWindow()) {
        window->activateWindow();
        // Offscreen and under some window managers activation is asynchronous: take it at once.
        QApplication::setActiveWindow(window);
    }
    w->setFocus(Qt::OtherFocusReason);
}

void setBackColor(QWidget* w, int32_t bgr) {
    QPalette p = w->palette();
    p.setColor(backRole(w), color(bgr));
    w->setPalette(p);
    if (backRole(w) == QPalette::Window) w->setAutoFillBackground(true);
    w->setProperty("kerovaBackColor", bgr);
}

int32_t backColor(const QWidget* w) {
    QVariant v = w->property("kerovaBackColor");
    if (v.isValid()) return v.toInt();
    return vb::fromRgb(w->palette().color(backRole(w)).rgb() & 0xFFFFFF);
}

void setForeColor(QWidget* w, int32_t bgr) {
    QPalette p = w->palette();
    QColor c = color(bgr);
    p.setColor(QPalette::WindowText, c);
    p.setColor(QPalette::Text, c);
    p.setColor(QPalette::ButtonText, c);
    w->setPalette(p);
}

std::string text(const QWidget* w) {
    if (auto* e = qobject_cast<const QLineEdit*>(w)) return str(e->text());
    if (auto* l = qobject_cast<const QLabel*>(w)) return str(l->text());
    if (auto* c = qobject_cast<const QComboBox*>(w)) return str(c->currentText());
    if (auto* t = qobject_cast<const QTextEdit*>(w)) return str(t->toPlainText());
    if (auto* d = qobject_cast<const QDateEdit*>(w)) return str(d->date().toString("yyyy.MM.dd."));
    if (auto* b = qobject_cast<const QAbstractButton*>(w)) return str(b->text());
    if (auto* g = qobject_cast<const QGroupBox*>(w)) return str(g->title());
    return {};
}

void setText(QWidget* w, const std::string& s) {
    QString t = qs(s);
    if (auto* e = qobject_cast<QLineEdit*>(w)) e->setText(t);
    else if (auto* l = qobject_cast<QLabel*>(w)) l->setText(t);
    else if (auto* c = qobject_cast<QComboBox*>(w)) c->setEditText(t);
    else if (auto* x = qobject_cast<QTextEdit*>(w)) x->setPlainText(t);
    else if (auto* b = qobject_cast<QAbstractButton*>(w)) b->setText(t);
    else if (auto* g = qobject_cast<QGroupBox*>(w)) g->setTitle(t);
}

}  // namespace forms
