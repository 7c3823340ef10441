#include "workshop/module.h"

#include "forms/runtime.h"
#include "workshop/AlkatreszekFormX.h"
#include "workshop/MunkakFormX.h"
#include "workshop/SzerelokFormX.h"

namespace workshop {
void registerForms() {
    forms::registerForm("SzerelokFormX", [] { return new SzerelokFormX; });
    forms::registerForm("MunkakFormX", [] { return new MunkakFormX; });
    forms::registerForm("AlkatreszekFormX", [] { return new AlkatreszekFormX; });
}
}  // namespace workshop
