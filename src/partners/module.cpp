#include "partners/module.h"

namespace partners {
void registerForms() {}
}  // namespace partners
