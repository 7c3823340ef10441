#include "trips/documentform.h"

namespace trips {

UtakCsatoltOkmanyokFormX::UtakCsatoltOkmanyokFormX()
    : GroupAttachmentForm({Name, Title, Source, "Csatolt okmány:", "SzállitottSzemélyNeve", true,
                           "Csatolt okmányok",
                           {{"Csatolt okmány", "CsatoltOkmány"}, {"Csoportazonosító", "UtakCsoportAzonosito"}}}) {}

}  // namespace trips
