// The paged list, written once for every printed list and sheet:
//  1. Hourglass. An empty set (or none): arrow, a beep where asked, "Nincs nyomtatandó adat!"
//     under "FIGYELEM!", style 48, and no page form.
//  2. Page 1; MoveFirst (or stay on the current record).
//  3. While not EOF: the page form (forms::get(name): a fresh one after each Unload) is loaded and
//     its page started (line labels emptied, heading, page label, date); each record fills the
//     line with the counter's number, MoveNext; when the counter passes the rows per page or the
//     set ends: arrow, the page form shown modally.
//  4. After it closes: PrintCancelled = 1 ("Mégse") stops the list; else the next page.
//  5. Arrow; the current record to the last or first, as the caller says.
//
// Usage (a list of three columns on the registered page form UttavNyomFormX):
//   auto outcome = print::PagedList::list("UttavNyomFormX", &TavData->rs(), [](db::Recordset& r) {
//       return std::vector<std::string>{print::str(r.get("Honnan")), print::str(r.get("Hova")),
//                                       print::num(r.get("TávolságKm"))};
//   }).endAt(print::PagedList::End::First).run();
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "vb/variant.h"

namespace db {
class Recordset;
}
namespace forms {
class DataControl;
}

namespace print {

class PageForm;
class ListPageForm;
class SheetPageForm;

// A column's value as a label's text: through NullToStr, NullToNum ("0" for null, "9,5"), NullToDate
// (null is today: "2026.11.23.").
std::string str(const vb::Variant& v);
std::string num(const vb::Variant& v);
std::string date(const vb::Variant& v);

class PagedList {
public:
    enum class End { Last, First, Stay };
    enum class Outcome { Empty, Done, Cancelled };
    // Fills the labels of one line (1-based) from the current record.
    using RowFill = std::function<void(PageForm& form, int line, db::Recordset& rs)>;
    // Starts a page (default: the form's startPage).
    using PageStart = std::function<void(PageForm& form, int pageNumber)>;

    // A run over a set onto the page form registered under formName; rs may be null (empty).
    PagedList(std::string formName, db::Recordset* rs);
    // On a Data control's set (none open counts as empty).
    PagedList(std::string formName, forms::DataControl* dc);

    // A list: each record gives the texts of its line, left to right; rows per page are the form's.
    static PagedList list(std::string formName, db::Recordset* rs,
                          std::function<std::vector<std::string>(db::Recordset&)> cells);
    // One record a page, filled by `sheet`; MoveNext after the sheet was seen.
    static PagedList sheets(std::string formName, db::Recordset* rs,
                            std::function<void(SheetPageForm&, db::Recordset&)> sheet);

    PagedList& row(RowFill fill);
    PagedList& rowsPerPage(int n);          // default: ListPageForm's rows, else 1
    PagedList& pageStart(PageStart start);
    PagedList& fromCurrent();               // start at the current record, not the first
    PagedList& currentOnly();               // only the current record, one page; no moving
    PagedList& beepWhenEmpty();             // a beep before "Nincs nyomtatandó adat!"
    PagedList& endAt(End e);                // default Stay

    // Fills and shows the pages modally until the set ends or "Mégse".
    Outcome run();
    int pagesShown() const { return pagesShown_; }

private:
    void fillLine(PageForm& form, int line);

    std::string formName_;
    db::Recordset* rs_;
    forms::DataControl* dc_ = nullptr;  // read at run time: a Refresh makes a new set
    int rowsPerPage_ = 0;  // 0: the form's
    RowFill row_;
    PageStart pageStart_;
    bool fromCurrent_ = false;
    bool currentOnly_ = false;
    bool sheetPerRecord_ = false;
    bool beepWhenEmpty_ = false;
    End end_ = End::Stay;
    int pagesShown_ = 0;
};

}  // namespace print
