// UtakSzallitottSzemelyekFormX, "Szállított személyek felvitele - Kerova": the people carried on a
// group of trips, UtakSzallitottSzemely, keyed by the group id.
#pragma once

#include "trips/smallmaster.h"

namespace trips {

class UtakSzallitottSzemelyekFormX : public GroupAttachmentForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "UtakSzallitottSzemelyekFormX";
    static constexpr const char* Title = "Szállított személyek felvitele - Kerova";
    static constexpr const char* Source = "select * from UtakSzallitottSzemely";

    UtakSzallitottSzemelyekFormX();
};

}  // namespace trips
