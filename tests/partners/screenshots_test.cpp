// Screenshots of the partner forms on the demo company, for a person to look at. Runs only with
// KEROVA_SHOTS set to a folder, on a real display (Xvfb): the whole screen is taken by `import`.
#include <QApplication>
#include <QThread>
#include <cstdlib>

#include "forms/grid.h"
#include "partners/BeraktarozokFormX.h"
#include "partners/module.h"
#include "print/module.h"
#include "print/pageform.h"
#include "gui/support.h"

namespace {

using kerova_test::shoot;

class PartnerScreenshots : public kerova_test::GuiTest {};

TEST_F(PartnerScreenshots, OnTheDemoCompany) {
    if (!std::getenv("KEROVA_SHOTS")) GTEST_SKIP() << "KEROVA_SHOTS not set";
    demoCompany();
    print::registerForms();
    partners::registerForms();
    for (const char* name : {"BeraktarozokFormX", "OrszagokFormX", "CimzettForm"}) {
        auto& f = forms::get(name);
        f.Show();
        shoot(f, std::string("w-") + name);
        if (std::string(name) == "BeraktarozokFormX") {
            forms::setModalRunner([](forms::Form& page) {
                shoot(page, "w-BeszallitoNyomFormX");
                static_cast<print::PageForm&>(page).Command3_Click();
            });
            f.action("BeszNyom")->trigger();
            forms::setModalRunner([](forms::Form&) {});
        }
        f.hide();
    }
}

}  // namespace
