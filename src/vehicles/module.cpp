#include "vehicles/module.h"

#include "forms/runtime.h"
#include "vehicles/gktorzsformx.h"
#include "vehicles/vehiclesheets.h"

namespace vehicles {
void registerForms() {
    forms::registerForm(GKTorzsFormX::Name, [] { return new GKTorzsFormX; });
    sheets::registerPageForm();
}
}  // namespace vehicles
