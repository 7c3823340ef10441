#include "app/app.h"

#include <QApplication>
#include <QPixmapCache>

#include "forms/runtime.h"
#include "forms/form.h"
#include "app/kerovaform.h"
#include "app/kerovax.h"
#include "app/parameterformx.h"
#include "app/uzemeltetokform.h"
#include "print/module.h"
#include "partners/module.h"
#include "trips/module.h"
#include "vehicles/module.h"
#include "workshop/module.h"
#include "invoices/module.h"

namespace app {

void registerAllForms() {
    forms::registerForm("KerovaX", [] { return new KerovaX; });
    forms::registerForm("ParameterFormX", [] { return new ParameterFormX; });
    forms::registerForm("UzemeltetokForm", [] { return new UzemeltetokForm; });
    forms::registerForm("KerovaForm", [] { return new KerovaForm; });
    print::registerForms();
    vehicles::registerForms();
    trips::registerForms();
    partners::registerForms();
    workshop::registerForms();
    invoices::registerForms();
}

int run(QApplication& application) {
    // Qt keeps 10 MiB of the style's drawn pieces by default; the forms redraw them at no visible
    // cost, and the clerk's machine keeps the memory.
    QPixmapCache::setCacheLimit(128);
    registerAllForms();
    forms::run([] { forms::get("KerovaX").Show(); });
    if (forms::ending()) return 0;
    return application.exec();
}

}  // namespace app
