// A screenshot of the invoice register on the demo company, for a person to look at. Runs only
// with KEROVA_SHOTS set to a folder, on a real display (Xvfb): the whole screen is taken by `import`.
#include <QApplication>
#include <QThread>
#include <cstdlib>

#include "gui/support.h"
#include "invoices/module.h"

namespace {

class InvoiceScreenshots : public kerova_test::GuiTest {};

TEST_F(InvoiceScreenshots, OnTheDemoCompany) {
    if (!std::getenv("KEROVA_SHOTS")) GTEST_SKIP() << "KEROVA_SHOTS not set";
    demoCompany();
    invoices::registerForms();
    auto& f = forms::get("UzemanyagSzamlaFormX");
    f.Show();
    f.move(0, 0);
    for (int i = 0; i < 20; ++i) {
        QApplication::processEvents();
        QThread::msleep(25);
    }
    std::string out = std::string(std::getenv("KEROVA_SHOTS")) + "/x-UzemanyagSzamlaFormX.png";
    std::string cmd = "import -window root '" + out + "'";
    if (std::system(cmd.c_str()) != 0) f.grab().save(QString::fromStdString(out));
}

}  // namespace
