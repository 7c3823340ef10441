#include "app/app.h"

#include <QApplication>

#include "forms/runtime.h"
#include "forms/form.h"
#include "print/module.h"
#include "partners/module.h"
#include "trips/module.h"
#include "vehicles/module.h"
#include "workshop/module.h"

namespace app {

void registerAllForms() {
    print::registerForms();
    vehicles::registerForms();
    trips::registerForms();
    partners::registerForms();
    workshop::registerForms();
}

int run(QApplication& application) {
    registerAllForms();
    forms::run([] { forms::get("KerovaX").Show(); });
    if (forms::ending()) return 0;
    return application.exec();
}

}  // namespace app
