#include "trips/purposeform.h"

#include "forms/runtime.h"
#include "vb/err.h"

namespace trips {

MegnevezesTorzsFormX::MegnevezesTorzsFormX()
    : SmallMasterForm({Name, Title, Source, "Megnevezés:", "Megnevezés", false, "Megnevezések",
                       {{"Megnevezés", "Megnevezés"}, {"Sorszám", "Sorszám"}}}) {}

// Opening: an empty table gets its row at once; otherwise the first purpose. Focus to Text1.
void MegnevezesTorzsFormX::Form_Activate() {
    forms::hourglass();
    if (count(VezetoData) < 1) {
        addRowWith();
    } else {
        vb::resume([&] { VezetoData->rs().MoveFirst(); });
        vb::Err.Clear();
    }
    focusText1();
    forms::arrow();
}

void MegnevezesTorzsFormX::UjAdat_Click() {
    forms::hourglass();
    addRowWith();
    focusText1();
    forms::arrow();
}

}  // namespace trips
