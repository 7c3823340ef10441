#include "forms/form.h"

#include <QAction>
#include <QBackingStore>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/grid.h"
#include "vb/err.h"

namespace forms {

Form::Form(std::string name, std::string caption) : QWidget(nullptr, Qt::Window), name_(std::move(name)) {
    setObjectName(qs(name_));
    setWindowTitle(qs(caption));
    setAttribute(Qt::WA_DeleteOnClose, false);
}

Form::~Form() = default;

std::string Form::Caption() const { return str(windowTitle()); }
void Form::setCaption(const std::string& caption) { setWindowTitle(qs(caption)); }

QAction* Form::action(const std::string& actionName) const {
    return findChild<QAction*>(qs(actionName));
}

DataControl* Form::dataControl(const std::string& dataName) const {
    for (auto* d : data_)
        if (d->name() == dataName) return d;
    return nullptr;
}

void Form::Form_Initialize() { CloseGuard = true; }

void Form::Form_QueryUnload(bool& cancel, int unloadMode) {
    if (CloseGuard) exitHandler();
}

void Form::exitHandler() { Unload(); }

void Form::unloadUnguarded() {
    CloseGuard = false;
    Unload();
}

void Form::Load() {
    if (loaded_) return;
    loaded_ = true;
    if (!initialized_) {
        initialized_ = true;
        run([this] { Form_Initialize(); });
    }
    run([this] { Form_Load(); });
    openDataControls();
}

// The Data controls open once the form has loaded; one that can't open keeps no Recordset, and
// the form's first use of it fails with error 91, as a Data control without a database did.
void Form::openDataControls() {
    for (auto* d : data_) {
        if (d->Recordset()) continue;
        try {
            d->Refresh();
        } catch (const std::exception&) {
        }
    }
    vb::Err.Clear();
}

void Form::Show(bool modal) {
    Load();
    if (!loaded_) return;
    detail::showForm(*this, modal);
}

void Form::Hide() {
    if (!shown_) return;
    shown_ = false;
    closingByRuntime_ = true;
    hide();
    closingByRuntime_ = false;
    // A hidden form gives back its window's pixels (megabytes for a large form): its backing store
    // shrinks to one pixel, and the next Show grows it and paints the form anew.
    if (QBackingStore* store = backingStore()) {
        store->resize(QSize(1, 1));
        store->beginPaint(QRegion(0, 0, 1, 1));
        store->endPaint();
    }
    detail::formHidden(*this);
}

void Form::Unload() {
    if (!loaded_) return;
    bool cancel = false;
    run([&] { Form_Unload(cancel); });
    if (cancel) return;
    for (auto* d : data_) d->detach();
    loaded_ = false;
    shown_ = false;
    closingByRuntime_ = true;
    close();  // not hide(): the program ends when its last window closes
    closingByRuntime_ = false;
    detail::formUnloaded(*this);
    // VB gives the next Show a fresh form with its controls as designed.
    deleteLater();
}

void Form::closeBox() {
    bool cancel = false;
    run([&] { Form_QueryUnload(cancel, 0); });
    if (!cancel && loaded_) Unload();
}

void Form::activate() { Form_Activate(); }

void Form::closeEvent(QCloseEvent* e) {
    if (closingByRuntime_ || !loaded_) {
        e->accept();
        return;
    }
    // The close box: the form decides (its exit handler unloads it, or it stays).
    e->ignore();
    closeBox();
}

void Form::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    if (loaded_) run([this] { Form_Resize(); });
}

void Form::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::ActivationChange && isActiveWindow()) detail::windowActivated(*this);
}

DataControl* Form::data(const std::string& dataName, const std::string& databaseName,
                        const std::string& recordSource) {
    auto* d = new DataControl(dataName, databaseName, recordSource, this);
    data_.push_back(d);
    return d;
}

namespace {
template <class T>
T* named(T* w, const std::string& name) {
    w->setObjectName(qs(name));
    return w;
}
}  // namespace

QLineEdit* Form::textBox(const std::string& n, QWidget* parent) {
    return named(new QLineEdit(parent ? parent : this), n);
}

QTextEdit* Form::memoBox(const std::string& n, QWidget* parent) {
    auto* t = named(new QTextEdit(parent ? parent : this), n);
    t->setAcceptRichText(false);
    return t;
}

QLabel* Form::label(const std::string& n, const std::string& caption, QWidget* parent) {
    return named(new QLabel(qs(caption), parent ? parent : this), n);
}

QPushButton* Form::button(const std::string& n, const std::string& caption, QWidget* parent) {
    auto* b = named(new QPushButton(qs(caption), parent ? parent : this), n);
    b->setAutoDefault(false);
    return b;
}

QCheckBox* Form::checkBox(const std::string& n, const std::string& caption, QWidget* parent) {
    return named(new QCheckBox(qs(caption), parent ? parent : this), n);
}

QComboBox* Form::comboBox(const std::string& n, QWidget* parent) {
    return named(new QComboBox(parent ? parent : this), n);
}

QDateEdit* Form::datePicker(const std::string& n, QWidget* parent) {
    auto* d = named(new QDateEdit(parent ? parent : this), n);
    d->setCalendarPopup(true);
    d->setDisplayFormat("yyyy.MM.dd.");
    return d;
}

QGroupBox* Form::frame(const std::string& n, const std::string& caption, QWidget* parent) {
    return named(new QGroupBox(qs(caption), parent ? parent : this), n);
}

DBGrid* Form::grid(const std::string& n, QWidget* parent) {
    return named(new DBGrid(parent ? parent : this), n);
}

QMenuBar* Form::menuBar(QLayout* outer) {
    auto* bar = new QMenuBar(this);
    if (outer) outer->setMenuBar(bar);
    return bar;
}

QMenu* Form::menu(QMenuBar* bar, const std::string& n, const std::string& caption) {
    auto* m = bar->addMenu(qs(caption));
    m->setObjectName(qs(n));
    return m;
}

QAction* Form::menuItem(QWidget* menu, const std::string& n, const std::string& caption) {
    auto* a = named(new QAction(qs(caption), this), n);
    menu->addAction(a);
    return a;
}

StandInForm::StandInForm(const std::string& name) : Form(name, name) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label("Label1", NotBuiltText));
    auto* exit = button("Kilepes", "Kilépés");
    layout->addWidget(exit);
    onClick(exit, [this] { unloadUnguarded(); });
    resize(360, 120);
}

}  // namespace forms
