#include "workshop/print.h"

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/runtime.h"
#include "print/pagedlist.h"
#include "print/pageform.h"
#include "vb/clock.h"
#include "vb/conv.h"
#include "workshop/WorkshopMasterForm.h"

namespace workshop {

namespace {
constexpr int PrintRows = 30;
}

// The list on the master's page form (made once under its name), headed by the print title with
// today's date behind it; afterwards the first row is current.
void printMaster(WorkshopMasterForm& form, forms::DataControl* source) {
    const Master& m = form.master();
    if (!forms::formExists(m.printForm)) {
        print::ListLayout layout;
        layout.caption = m.title;
        layout.title = m.printTitle;
        layout.rows = PrintRows;
        for (auto& c : m.printColumns) layout.columns.push_back({c.field, c.caption, double(c.width)});
        std::string title = m.printTitle;
        layout.heading = [title](int) { return title + vb::dateText(vb::clock::today()); };
        print::registerListForm(m.printForm, layout);
    }
    std::vector<std::string> fields;
    for (auto& c : m.printColumns) fields.push_back(c.field);
    print::PagedList::list(m.printForm, source->Recordset(),
                           [fields](db::Recordset& r) {
                               std::vector<std::string> cells;
                               for (auto& f : fields) cells.push_back(print::str(r.get(f)));
                               return cells;
                           })
        .endAt(print::PagedList::End::First)
        .run();
}

}  // namespace workshop
