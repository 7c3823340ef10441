#include "gui/support.h"

#include <QApplication>
#include <QThread>
#include <cstdlib>

#include "company/demo.h"
#include "company/folder.h"
#include "db/database.h"
#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "vb/clock.h"

namespace kerova_test {

void shoot(QWidget& w, const std::string& name) {
    w.move(0, 0);
    for (int i = 0; i < 20; ++i) {
        QApplication::processEvents();
        QThread::msleep(25);
    }
    std::string out = std::string(std::getenv("KEROVA_SHOTS")) + "/" + name + ".png";
    std::string cmd = "import -window root '" + out + "'";
    if (std::system(cmd.c_str()) != 0) w.grab().save(QString::fromStdString(out));
}

void GuiTest::SetUp() {
    Globals::reset();
    forms::resetRuntime();
    auto d = std::make_unique<forms::ScriptedDialogs>();
    dialogs = d.get();
    forms::setDialogs(std::move(d));
    forms::setModalRunner([](forms::Form&) {});
    db::closeAll();
    db::setWorkingFolder(dir.path());
}

void GuiTest::TearDown() {
    EXPECT_TRUE(dialogs->unexpected.empty()) << "unexpected question: " << dialogs->unexpected.front();
    forms::resetRuntime();
    forms::setModalRunner({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    db::closeAll();
    vb::clock::reset();
}

void GuiTest::initCompany() { company::init(dir.path(), false); }
void GuiTest::demoCompany() { company::createDemo(dir.path()); }

forms::Form& GuiTest::form(const std::string& name) {
    forms::Form* f = forms::find(name);
    if (!f) throw std::runtime_error("form not loaded: " + name);
    return *f;
}

void GuiTest::click(forms::Form& f, const std::string& control) {
    if (auto* b = f.control<QAbstractButton>(control)) {
        b->click();
    } else if (auto* a = f.action(control)) {
        a->trigger();
    } else {
        throw std::runtime_error("no button or menu entry " + control + " on " + f.name());
    }
}

void GuiTest::type(forms::Form& f, const std::string& control, const std::string& text) {
    auto* w = f.control<QWidget>(control);
    if (!w) throw std::runtime_error("no control " + control + " on " + f.name());
    QTest::keyClicks(w, QString::fromStdString(text));
}

void GuiTest::focus(forms::Form& f, const std::string& control) {
    auto* w = f.control<QWidget>(control);
    if (!w) throw std::runtime_error("no control " + control + " on " + f.name());
    forms::setFocus(w);
}

std::string GuiTest::textOf(forms::Form& f, const std::string& control) {
    auto* w = f.control<QWidget>(control);
    if (!w) throw std::runtime_error("no control " + control + " on " + f.name());
    return forms::text(w);
}

void GuiTest::insert(const std::string& file, const std::string& table, const Fields& fields) {
    insertMany(file, table, 1, [&](int) { return fields; });
}

void GuiTest::insertMany(const std::string& file, const std::string& table, int count,
                         const std::function<Fields(int)>& fields) {
    auto database = db::Database::open(file);
    auto rs = database->OpenRecordset(table);
    database->batch([&] {
        for (int i = 0; i < count; ++i) {
            rs->AddNew();
            for (auto& [column, value] : fields(i)) rs->set(column, value);
            rs->Update();
        }
    });
}

std::vector<forms::ScriptedDialogs::Entry> GuiTest::messages() const {
    std::vector<forms::ScriptedDialogs::Entry> out;
    for (auto& e : dialogs->log)
        if (e.kind == forms::ScriptedDialogs::Entry::Message) out.push_back(e);
    return out;
}

}  // namespace kerova_test

namespace {
// The offscreen platform's notes on what it cannot do (raise a window, size hints) are noise here.
void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith("This plugin does not support")) return;
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtFatalMsg) abort();
}
}  // namespace

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    qInstallMessageHandler(quietHandler);
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
