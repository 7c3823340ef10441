#include "print/pagedlist.h"

#include <stdexcept>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/globals.h"
#include "forms/recordform.h"
#include "forms/runtime.h"
#include "print/pageform.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace print {

std::string str(const vb::Variant& v) { return vb::CStr(vb::NullToStr(v)); }
std::string num(const vb::Variant& v) { return vb::CStr(vb::NullToNum(v)); }
std::string date(const vb::Variant& v) { return vb::CStr(vb::NullToDate(v)); }

PagedList::PagedList(std::string formName, db::Recordset* rs) : formName_(std::move(formName)), rs_(rs) {}

PagedList::PagedList(std::string formName, forms::DataControl* dc)
    : formName_(std::move(formName)), rs_(nullptr), dc_(dc) {}

PagedList PagedList::list(std::string formName, db::Recordset* rs,
                          std::function<std::vector<std::string>(db::Recordset&)> cells) {
    PagedList l(std::move(formName), rs);
    l.row([cells = std::move(cells)](PageForm& f, int line, db::Recordset& r) {
        if (auto* lf = dynamic_cast<ListPageForm*>(&f)) lf->setRow(line, cells(r));
    });
    return l;
}

PagedList PagedList::sheets(std::string formName, db::Recordset* rs,
                            std::function<void(SheetPageForm&, db::Recordset&)> sheet) {
    PagedList l(std::move(formName), rs);
    l.rowsPerPage(1);
    l.sheetPerRecord_ = true;
    l.row([sheet = std::move(sheet)](PageForm& f, int, db::Recordset& r) {
        if (auto* sf = dynamic_cast<SheetPageForm*>(&f)) sheet(*sf, r);
    });
    return l;
}

PagedList& PagedList::row(RowFill fill) {
    row_ = std::move(fill);
    return *this;
}
PagedList& PagedList::rowsPerPage(int n) {
    if (n < 1) throw std::invalid_argument("rows per page");
    rowsPerPage_ = n;
    return *this;
}
PagedList& PagedList::pageStart(PageStart start) {
    pageStart_ = std::move(start);
    return *this;
}
PagedList& PagedList::fromCurrent() {
    fromCurrent_ = true;
    return *this;
}
PagedList& PagedList::currentOnly() {
    currentOnly_ = fromCurrent_ = true;
    return *this;
}
PagedList& PagedList::beepWhenEmpty() {
    beepWhenEmpty_ = true;
    return *this;
}
PagedList& PagedList::endAt(End e) {
    end_ = e;
    return *this;
}

void PagedList::fillLine(PageForm& form, int line) {
    // a column that fails leaves its label as it was: the page goes on, as with errors resumed
    if (row_) vb::resume([&] { row_(form, line, *rs_); });
    vb::Err.Clear();
}

PagedList::Outcome PagedList::run() {
    pagesShown_ = 0;
    if (dc_) rs_ = dc_->Recordset();
    forms::hourglass();
    int count = 0;
    if (rs_ && !rs_->closed()) count = vb::resume([&] { return rs_->RecordCount(); }, 0);
    vb::Err.Clear();
    if (count < 1 || (currentOnly_ && (rs_->Eof() || rs_->Bof()))) {
        forms::arrow();
        if (beepWhenEmpty_) forms::Beep();
        forms::MsgBox(forms::NothingToPrint, vb::vbExclamation, forms::PrintMessageTitle);
        return Outcome::Empty;
    }
    if (!fromCurrent_) vb::resume([&] { rs_->MoveFirst(); });
    vb::Err.Clear();
    Outcome outcome = Outcome::Done;
    int page = 1;
    bool stuck = false;
    while (!stuck && !rs_->Eof()) {
        forms::hourglass();
        forms::Form& f = forms::get(formName_);
        f.Load();
        auto* form = dynamic_cast<PageForm*>(&f);
        if (!form) {  // a page form not built yet: its stand-in says so, once
            forms::arrow();
            f.Show(true);
            ++pagesShown_;
            break;
        }
        forms::hourglass();
        if (pageStart_) pageStart_(*form, page);
        else form->startPage(page);
        if (currentOnly_ || sheetPerRecord_) {
            fillLine(*form, 1);
        } else {
            int rows = rowsPerPage_;
            if (rows < 1) rows = dynamic_cast<ListPageForm*>(form) ? static_cast<ListPageForm*>(form)->rows() : 1;
            for (int line = 1; !rs_->Eof() && line <= rows; ++line) {
                fillLine(*form, line);
                if (!vb::resume([&] { rs_->MoveNext(); })) {
                    stuck = true;  // a set that can't move on ends with this page
                    break;
                }
            }
            vb::Err.Clear();
        }
        forms::arrow();
        form->Show(true);
        ++pagesShown_;
        if (Globals::PrintCancelled == 1) {
            outcome = Outcome::Cancelled;
            break;
        }
        if (currentOnly_) break;
        if (sheetPerRecord_) {
            // the move comes after the sheet was seen, so "Mégse" stops before the next record
            if (!vb::resume([&] { rs_->MoveNext(); })) break;
        }
        ++page;
    }
    forms::arrow();
    if (end_ != End::Stay) {
        vb::resume([&] {
            if (rs_->RecordCount() > 0) {
                if (end_ == End::Last) rs_->MoveLast();
                else rs_->MoveFirst();
            }
        });
    }
    vb::Err.Clear();
    return outcome;
}

}  // namespace print
