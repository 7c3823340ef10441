// Screenshots of the workshop masters on the demo company, for a person to look at. Runs only with
// KEROVA_SHOTS set to a folder, on a real display (Xvfb): the whole screen is taken by `import`.
#include <QApplication>
#include <QThread>
#include <cstdlib>

#include "forms/grid.h"
#include "workshop/WorkshopMasterForm.h"
#include "workshop/module.h"
#include "print/module.h"
#include "print/pageform.h"
#include "gui/support.h"

namespace {

using kerova_test::shoot;

class WorkshopScreenshots : public kerova_test::GuiTest {};

TEST_F(WorkshopScreenshots, OnTheDemoCompany) {
    if (!std::getenv("KEROVA_SHOTS")) GTEST_SKIP() << "KEROVA_SHOTS not set";
    demoCompany();
    print::registerForms();
    workshop::registerForms();
    for (const char* name : {"SzerelokFormX", "MunkakFormX", "AlkatreszekFormX"}) {
        auto& f = forms::get(name);
        f.Show();
        shoot(f, std::string("w-") + name);
        if (std::string(name) == "SzerelokFormX") {
            forms::setModalRunner([](forms::Form& page) {
                shoot(page, "w-SzerelokNyomFormX");
                static_cast<print::PageForm&>(page).Command3_Click();
            });
            f.action("Nyomtat")->trigger();
            forms::setModalRunner([](forms::Form&) {});
        }
        f.hide();
    }
}

}  // namespace
