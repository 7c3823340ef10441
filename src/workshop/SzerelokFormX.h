// The mechanics of SzervizModulSzerelok, picked by the service form; a pick leaves the name and
// the code in PickedMechanicName and PickedMechanicCode.
#pragma once

#include "workshop/WorkshopMasterForm.h"

namespace workshop {

class SzerelokFormX : public WorkshopMasterForm {
public:
    SzerelokFormX();
    QLineEdit* Text3;  // the mechanic's code

protected:
    void handOver() override;
};

}  // namespace workshop
