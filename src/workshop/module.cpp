#include "workshop/module.h"

namespace workshop {
void registerForms() {}
}  // namespace workshop
