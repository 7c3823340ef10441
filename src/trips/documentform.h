// UtakCsatoltOkmanyokFormX, "Csatolt okmányok felvitele - Kerova": the documents attached to a
// group of trips. Its design source is UtakCsatoltOkmany and its grid shows CsatoltOkmány, but on
// opening for a group it queries the passenger table and its Text1 is bound to the passenger's
// name: it shows, and adds to, the passengers of the group. Kept so until the team decides
// otherwise.
#pragma once

#include "trips/smallmaster.h"

namespace trips {

class UtakCsatoltOkmanyokFormX : public GroupAttachmentForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "UtakCsatoltOkmanyokFormX";
    static constexpr const char* Title = "Csatolt okmányok felvitele - Kerova";
    static constexpr const char* Source = "select * from UtakCsatoltOkmany";

    UtakCsatoltOkmanyokFormX();
};

}  // namespace trips
