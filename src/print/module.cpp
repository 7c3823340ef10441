#include "print/module.h"

namespace print {
void registerForms() {}
}  // namespace print
