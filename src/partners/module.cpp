#include "partners/module.h"

#include "forms/runtime.h"
#include "partners/BeraktarozokFormX.h"
#include "partners/CimzettForm.h"
#include "partners/OrszagokFormX.h"
#include "partners/print.h"

namespace partners {
void registerForms() {
    registerPrintForms();
    forms::registerForm("BeraktarozokFormX", [] { return new BeraktarozokFormX; });
    forms::registerForm("OrszagokFormX", [] { return new OrszagokFormX; });
    forms::registerForm("CimzettForm", [] { return new CimzettForm; });
}
}  // namespace partners
