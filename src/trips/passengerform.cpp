#include "trips/passengerform.h"

namespace trips {

UtakSzallitottSzemelyekFormX::UtakSzallitottSzemelyekFormX()
    : GroupAttachmentForm({Name, Title, Source, "Személy neve:", "SzállitottSzemélyNeve", true,
                           "Szállított személyek",
                           {{"Személy neve", "SzállitottSzemélyNeve"}, {"Csoportazonosító", "UtakCsoportAzonosito"}}}) {}

}  // namespace trips
