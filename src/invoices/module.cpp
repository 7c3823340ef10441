#include "invoices/module.h"

#include "forms/runtime.h"

namespace invoices {

void registerForms() {
}

}  // namespace invoices
