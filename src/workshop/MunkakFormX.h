// The jobs of SzervizModulMunkak, picked by the service form; a pick leaves PickedJobName.
#pragma once

#include "workshop/WorkshopMasterForm.h"

namespace workshop {

class MunkakFormX : public WorkshopMasterForm {
public:
    MunkakFormX();
    QLabel* Label4;  // the job's code

protected:
    void handOver() override;
};

}  // namespace workshop
