#include "vehicles/module.h"

namespace vehicles {
void registerForms() {}
}  // namespace vehicles
