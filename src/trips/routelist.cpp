#include "trips/routelist.h"

#include "db/recordset.h"
#include "print/pagedlist.h"
#include "print/pageform.h"
#include "trips/common.h"

namespace trips {

void registerRouteList() {
    print::ListLayout layout;
    layout.caption = "Távolságok nyomtatása";
    layout.title = "T Á V O L S Á G O K";
    layout.rows = RouteListRows;
    layout.columns = {{"Honnan", "HONNAN:", 2},
                      {"Hova", "HOVÁ:", 2},
                      {"TávolságKm", "TÁVOLSÁG (KM):", 1, print::Align::Right}};
    // One line holds the page and the date; the separate issue label stays empty.
    layout.pageText = [](int page) { return print::oldalText(page) + todayText(); };
    layout.dateText = [] { return std::string(); };
    print::registerListForm(RouteListForm, layout);
}

void printRoutes(forms::DataControl* source) {
    print::PagedList(RouteListForm, source)
        .row([](print::PageForm& form, int line, db::Recordset& r) {
            if (auto* list = dynamic_cast<print::ListPageForm*>(&form))
                list->setRow(line, {print::str(r.get("Honnan")), print::str(r.get("Hova")),
                                    print::num(r.get("TávolságKm"))});
        })
        .endAt(print::PagedList::End::First)
        .run();
}

}  // namespace trips
