#include "invoices/module.h"

#include "forms/runtime.h"
#include "invoices/UzemanyagSzamlaFormX.h"

namespace invoices {

void registerForms() {
    forms::registerForm(UzemanyagSzamlaFormX::Name, [] { return new UzemanyagSzamlaFormX; });
}

}  // namespace invoices
