#include "trips/module.h"

#include "forms/runtime.h"
#include "trips/documentform.h"
#include "trips/driverform.h"
#include "trips/passengerform.h"
#include "trips/purposeform.h"
#include "trips/routeform.h"
#include "trips/routelist.h"
#include "trips/tripform.h"

namespace trips {

void registerForms() {
    forms::registerForm(GkUtakTavolsagaTorzsFormX::Name, [] { return new GkUtakTavolsagaTorzsFormX; });
    forms::registerForm(VezetokTorzsFormX::Name, [] { return new VezetokTorzsFormX; });
    forms::registerForm(MegnevezesTorzsFormX::Name, [] { return new MegnevezesTorzsFormX; });
    forms::registerForm(UtakSzallitottSzemelyekFormX::Name, [] { return new UtakSzallitottSzemelyekFormX; });
    forms::registerForm(UtakCsatoltOkmanyokFormX::Name, [] { return new UtakCsatoltOkmanyokFormX; });
    registerRouteList();
    forms::registerForm(UtNyilvantartasFormX::Name, [] { return new UtNyilvantartasFormX; });
}

}  // namespace trips
