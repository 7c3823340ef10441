#include "forms/recordform.h"

#include <QLabel>
#include <QLineEdit>

#include "db/recordset.h"
#include "forms/events.h"
#include "forms/globals.h"
#include "forms/grid.h"
#include "forms/runtime.h"
#include "vb/clock.h"
#include "vb/constants.h"
#include "vb/conv.h"
#include "vb/err.h"
#include "vb/funcs.h"

namespace forms {

using vb::Err;
using vb::resume;

namespace {
// Runs f; whatever it raises is recorded in Err (the "errors resumed" of a handler).
template <class F>
bool quietly(F&& f) {
    return resume(std::forward<F>(f));
}
bool blank(const std::string& s) { return s.find_first_not_of(" \t") == std::string::npos; }
}  // namespace

void focusColors(QWidget* box, int32_t rest, std::function<void()> onLeave) {
    onGotFocus(box, [box] { setBackColor(box, FocusColor); });
    onLostFocus(box, [box, rest, onLeave] {
        setBackColor(box, rest);
        if (onLeave) onLeave();
    });
}

void focusColors(std::initializer_list<QWidget*> boxes) {
    for (auto* b : boxes) focusColors(b);
}

void filterKey(int& keyAscii, const char* extra) {
    int c = keyAscii;
    if ((c >= '0' && c <= '9') || c == vb::vbKeyBack) return;
    for (const char* p = extra; *p; ++p)
        if (c == *p) return;
    Beep();
    keyAscii = 0;
}

void wholeNumber(std::initializer_list<QWidget*> boxes) {
    for (auto* b : boxes) onKeyPress(b, [](int& k) { filterKey(k, ""); });
}
void decimal(std::initializer_list<QWidget*> boxes) {
    for (auto* b : boxes) onKeyPress(b, [](int& k) { filterKey(k, ","); });
}
void signedDecimal(std::initializer_list<QWidget*> boxes) {
    for (auto* b : boxes) onKeyPress(b, [](int& k) { filterKey(k, ",-"); });
}

void RecordForm::pickStart() { Globals::PickDone = 0; }

bool RecordForm::openPicker(const std::string& formName, const std::string& callerName) {
    Globals::CurrentFormName = callerName;
    Globals::PickDone = 0;
    get(formName).Show(true);
    return Globals::PickDone == 1;
}

int RecordForm::count(DataControl* dc) { return resume([&] { return dc->rs().RecordCount(); }, 0); }

bool RecordForm::onRecord(DataControl* dc) {
    return resume([&] { return dc->rs().AbsolutePosition() >= 0; }, false);
}

bool RecordForm::addRow(DataControl* dc, const std::vector<std::pair<std::string, vb::Variant>>& columns) {
    Err.Clear();
    quietly([&] {
        auto& r = dc->rs();
        r.AddNew();
        for (auto& [name, value] : columns) r.Fields(name).setValue(value);
        r.Update();
        r.MoveLast();
    });
    bool ok = Err.Number() == 0;
    Err.Clear();
    return ok;
}

void RecordForm::openOnLast(DataControl* dc, const std::string& keyColumn, QWidget* firstField) {
    if (count(dc) < 1) {
        quietly([&] {
            auto& r = dc->rs();
            r.AddNew();
            r.Fields(keyColumn).setValue(int32_t(1));
            r.Update();
            r.MoveLast();
        });
        if (firstField) forms::setFocus(firstField);
    } else {
        quietly([&] { dc->rs().MoveLast(); });
    }
    Err.Clear();
}

bool RecordForm::checkDatabases(DataControl* dc) {
    Err.Clear();
    quietly([&] { dc->rs().RecordCount(); });
    if (Err.Number() == 0) return true;
    Err.Clear();
    arrow();
    Beep();
    MsgBox(NoDatabasesText, vb::vbCritical, NoDatabasesTitle);
    exitHandler();
    return false;
}

void RecordForm::standardSearch(DataControl* dc, const std::string& column, const std::string& prompt,
                                const std::string& title, const std::string& notFoundText,
                                const std::string& notFoundTitle) {
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    if (count(dc) < 1) return;
    arrow();
    std::string answer = InputBox(prompt, title, "");
    std::string text = answer + "*";
    if (answer.empty() || text == "*") return;
    std::string filter = "[" + column + "] like \"" + text + "\"";
    hourglass();
    auto& r = dc->rs();
    quietly([&] { r.FindNext(filter); });
    if (r.NoMatch()) quietly([&] { r.FindFirst(filter); });
    if (r.NoMatch()) {
        arrow();
        Beep();
        MsgBox(notFoundText, vb::vbExclamation, notFoundTitle.empty() ? title : notFoundTitle);
        quietly([&] { r.MoveFirst(); });
    }
    Err.Clear();
}

void RecordForm::quickSearch(DataControl* dc, const std::string& column, const std::string& typed,
                             const std::string& exactColumn) {
    std::string text = typed + "*";
    if (typed.empty() || text == "*") return;
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    db::Recordset* r = dc->Recordset();
    if (!r || r->closed()) return;
    std::string filter = "[" + column + "] like \"" + text + "\"";
    quietly([&] { r->FindFirst(filter); });
    if (r->NoMatch() && !exactColumn.empty()) {
        std::string exact = "[" + exactColumn + "] = \"" + typed + "\"";
        quietly([&] { r->FindFirst(exact); });
    }
    if (r->NoMatch()) {
        quietly([&] { r->setBookmark(quickSearchBookmark); });
        Err.Clear();
    } else if (!quietly([&] { quickSearchBookmark = r->Bookmark(); })) {
        Beep();
        Err.Clear();
    }
}

void RecordForm::selectFromGrid(DataControl* main, const std::string& column, const vb::Variant& key) {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    db::Recordset* r = main->Recordset();
    if (!r || r->closed()) {
        Beep();
        return;
    }
    std::string k = vb::isNull(key) || vb::isEmpty(key) ? "" : resume([&] { return vb::CStr(key); }, std::string());
    std::string filter = "[" + column + "] = \"" + k + "\"";
    quietly([&] { r->FindFirst(filter); });
    if (r->NoMatch()) Beep();
    Err.Clear();
}

void RecordForm::save(DataControl* dc, DBGrid* grid) {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    if (count(dc) < 1) {
        Beep();
        return;
    }
    auto& r = dc->rs();
    vb::Variant mark;
    if (!r.Eof() && r.AbsolutePosition() >= 0) mark = r.Bookmark();
    quietly([&] { r.MoveLast(); });
    quietly([&] { r.MoveFirst(); });
    if (grid) grid->Refresh();
    if (!quietly([&] { r.setBookmark(mark); })) {
        Beep();
        Err.Clear();
    }
}

void RecordForm::newRecord(DataControl* dc, QLabel* keyLabel, const std::string& keyColumn, QWidget* firstField) {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    db::Recordset* r = dc->Recordset();
    if (!r || r->closed()) return;
    double key = 1;
    if (count(dc) > 0) {
        quietly([&] { r->MoveLast(); });
        if (blank(str(keyLabel->text()))) keyLabel->setText("0");
        key = resume([&] { return vb::nullToDouble(vb::Variant(str(keyLabel->text()))); }, 0.0) + 1;
    }
    Err.Clear();
    if (!quietly([&] {
            r->AddNew();
            r->Fields(keyColumn).setValue(vb::NullToNum(key));
            r->Update();
        })) {
        Err.Clear();
        return;
    }
    quietly([&] { r->MoveLast(); });
    Err.Clear();
    if (firstField) forms::setFocus(firstField);
}

bool RecordForm::deleteRecord(DataControl* dc, const std::string& text, const std::string& title,
                              DataControl* archive, const ArchiveFailure& failure,
                              const std::function<void()>& onEmpty) {
    if (count(dc) < 1) return false;
    arrow();
    Beep();
    if (MsgBox(text, vb::vbYesNo + vb::vbQuestion, title) != vb::vbYes) return false;
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    auto& r = dc->rs();
    Err.Clear();
    if (!quietly([&] { r.Edit(); })) {
        Err.Clear();
        return false;
    }
    if (archive) {
        bool copied = quietly([&] {
            auto& a = archive->rs();
            a.AddNew();
            for (size_t i = 0; i < r.FieldCount(); ++i) a.Fields(int(i)).setValue(r.Fields(int(i)).Value());
            a.Update();
        });
        if (!copied) {
            Err.Clear();
            quietly([&] { r.CancelUpdate(); });
            Err.Clear();
            arrow();
            Beep();
            MsgBox(failure.text, failure.style, failure.title);
            return false;
        }
        quietly([&] { archive->rs().MoveLast(); });  // the archive's last row first
        Err.Clear();
    }
    quietly([&] { r.Delete(); });
    quietly([&] { r.MoveNext(); });
    if (resume([&] { return r.Eof(); }, true) && count(dc) > 0) quietly([&] { r.MoveLast(); });
    Err.Clear();
    if (count(dc) < 1 && onEmpty) onEmpty();
    return true;
}

void RecordForm::offerDeleteIfEmpty(DataControl* dc, const std::string& fieldText, const std::string& text,
                                    const std::string& title) {
    if (!onRecord(dc) || !blank(fieldText)) return;
    arrow();
    Beep();
    if (MsgBox(text, vb::vbYesNo + vb::vbQuestion, title) == vb::vbYes) {
        quietly([&] {
            auto& r = dc->rs();
            r.Edit();
            r.Delete();
            r.MoveNext();
        });
    }
}

void RecordForm::standardExit(const std::function<void()>& checks, std::initializer_list<DataControl*> sources) {
    CloseGuard = false;
    struct Finish {
        RecordForm* f;
        std::vector<DataControl*> s;
        ~Finish() {
            for (auto* d : s) resume([&] { d->rs().Close(); });
            Err.Clear();
            arrow();
            f->Unload();
        }
    } finish{this, sources};
    if (checks) checks();
}

void RecordForm::closeAll(std::initializer_list<DataControl*> sources) {
    for (auto* d : sources) resume([&] { d->rs().Close(); });
    Err.Clear();
}

void RecordForm::headerSort(DataControl* dc, DBGrid* grid, int column) {
    hourglass();
    struct Arrow { ~Arrow() { arrow(); } } atEnd;
    ++headClickCount;
    // errors resumed throughout: a failing reopen or sort leaves the grid as it was
    quietly([&] {
        if (headClickCount == 10) {
            headClickCount = 0;
            auto& old = dc->rs();
            std::string oldSort = old.Sort();
            quietly([&] { old.Close(); });
            auto fresh = dc->Database()->OpenRecordset(dc->RecordSource(), db::dbOpenDynaset);
            fresh->setSort(oldSort);
            dc->setRecordset(std::move(fresh));
        }
        if (column < 0 || column >= grid->columnCount()) return;
        std::string key = grid->DataField(column);
        auto& r = dc->rs();
        std::string sort = key == r.Sort() ? key + " DESC" : key;
        r.setSort(sort);
        auto sorted = r.OpenRecordset();
        sorted->setSort(sort);
        dc->setRecordset(std::move(sorted));
    });
    Err.Clear();
    grid->Refresh();
}

void RecordForm::returnPick(DataControl* dc, const std::function<void()>& writePicked,
                            const std::function<void()>& clearPicked) {
    if (onRecord(dc)) {
        Globals::PickDone = 1;
        if (writePicked) writePicked();
    } else if (clearPicked) {
        clearPicked();
    }
    exitHandler();
}

void RecordForm::LogAction(DataControl* regisztData, const std::string& action, QLabel* idLabel) {
    db::Recordset* r = regisztData ? regisztData->Recordset() : nullptr;
    if (!r || r->closed()) {
        Err.Clear();
        return;
    }
    vb::Date now = vb::clock::now();
    vb::Date today = vb::clock::today();
    vb::Date time{now.serial - today.serial};
    std::string id = idLabel ? str(idLabel->text()) : std::string();
    quietly([&] { r->AddNew(); });
    quietly([&] { r->Fields(0).setValue(std::string()); });
    quietly([&] { r->Fields(1).setValue(std::string()); });
    quietly([&] { r->Fields(2).setValue(today); });
    quietly([&] { r->Fields(3).setValue(time); });
    quietly([&] { r->Fields(4).setValue(action); });
    quietly([&] { r->Fields(5).setValue(db::workingFolder().string()); });
    quietly([&] { r->Fields(6).setValue(Globals::AccessLevel); });
    quietly([&] { r->Fields(7).setValue(name()); });
    quietly([&] {
        r->Fields(8).setValue(vb::NullToNum(id.empty() ? vb::Variant(vb::Null{}) : vb::Variant(id)));
    });
    quietly([&] { r->Fields(9).setValue(std::string("Kerova")); });
    Err.Clear();
    if (!quietly([&] { r->Update(); })) Err.Clear();
    quietly([&] { r->MoveLast(); });
    Err.Clear();
}

bool RecordForm::printCheck(DataControl* dc) {
    if (count(dc) < 1) {
        arrow();
        Beep();
        MsgBox(NothingToPrint, vb::vbExclamation, PrintMessageTitle);
        return false;
    }
    return printerCheck();
}

bool RecordForm::printerCheck() {
    if (dialogs().printerReady()) return true;
    arrow();
    Beep();
    MsgBox(PrinterNotReady, vb::vbOKOnly, PrintMessageTitle);
    return false;
}

void RecordForm::help() {
    Globals::HelpTopicName = name();
    get("HelpFormX").Show(true);
}

}  // namespace forms
