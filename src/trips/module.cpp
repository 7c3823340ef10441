#include "trips/module.h"

namespace trips {
void registerForms() {}
}  // namespace trips
