// The printed list of a workshop master: its print title with today's date, one line per row.
#pragma once

namespace forms {
class DataControl;
}

namespace workshop {

class WorkshopMasterForm;

void printMaster(WorkshopMasterForm& form, forms::DataControl* source);

}  // namespace workshop
