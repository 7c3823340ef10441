// The parts' own master, a direct view of SzervizModulAlkatreszek. No menu opens it; it stands
// complete. A near copy of the jobs form: Label5 is bound to MunkaMegnevezés, which this table
// lacks (so it stays empty), its print title is the jobs', and a pick leaves PickedJobName.
#pragma once

#include "workshop/WorkshopMasterForm.h"

namespace workshop {

class AlkatreszekFormX : public WorkshopMasterForm {
public:
    AlkatreszekFormX();
    QLabel* Label4;  // the article number
    QLabel* Label5;

protected:
    void handOver() override;
};

}  // namespace workshop
