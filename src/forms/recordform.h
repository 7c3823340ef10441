// The behaviour every record form shares, written once: standard and quick search, saving by
// moving, a new record with the computed key, deletion with an optional archive copy, the exit
// with its mandatory-field check, header sort with the tenth-click reopen, selection from a side
// grid, the picker hand-over, start on the last record, focus colours, numeric key filters, the
// action log and the print checks. Every path sets the pointer back to the arrow.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "forms/datacontrol.h"
#include "forms/form.h"
#include "vb/variant.h"

class QLabel;
class QLineEdit;

namespace forms {

class DBGrid;

// GotFocus colour of every typing field (BGR: a pale cyan) and the resting colour.
inline constexpr int32_t FocusColor = 0xFFFF80;
inline constexpr int32_t RestColor = static_cast<int32_t>(0x80000005u);  // the window colour
// Resting colour of the quick-search fields (a pale blue).
inline constexpr int32_t QuickSearchColor = 0xFFC0C0;

inline constexpr const char* NoDatabasesText = "Ebben a könyvtárban nincsenek adatbázisok!";
inline constexpr const char* NoDatabasesTitle = "FIGYELEM! SÚLYOS HIBA!";
inline constexpr const char* NothingToPrint = "Nincs nyomtatandó adat!";
inline constexpr const char* PrinterNotReady = "A nyomtató nincs készenlétben!";
inline constexpr const char* PrintMessageTitle = "FIGYELEM!";

// Focus colours: FocusColor on entry, `rest` on leaving, then the optional extra step.
void focusColors(QWidget* box, int32_t rest = RestColor, std::function<void()> onLeave = {});
void focusColors(std::initializer_list<QWidget*> boxes);
// The key filters: whole number (digits, Backspace), decimal (also ","), signed decimal (also "-").
// Any other key beeps and is dropped.
void wholeNumber(std::initializer_list<QWidget*> boxes);
void decimal(std::initializer_list<QWidget*> boxes);
void signedDecimal(std::initializer_list<QWidget*> boxes);
void filterKey(int& keyAscii, const char* extra);

class RecordForm : public Form {
    Q_OBJECT
public:
    using Form::Form;

    // A picking form's start: PickDone = 0.
    static void pickStart();
    // Opens a picker modally after setting CurrentFormName; whether a row was picked.
    static bool openPicker(const std::string& formName, const std::string& callerName);

protected:
    // RecordCount with any failure counting as empty.
    static int count(DataControl* dc);
    // Whether the set has a current record.
    static bool onRecord(DataControl* dc);
    // AddNew, the columns, Update, MoveLast, errors resumed; false when it failed.
    static bool addRow(DataControl* dc, const std::vector<std::pair<std::string, vb::Variant>>& columns);

    // Start: an empty table gets its first record with key 1 (and the focus to firstField);
    // otherwise the form opens on its last record.
    void openOnLast(DataControl* dc, const std::string& keyColumn, QWidget* firstField);
    // The first count of a table: a failure means the folder holds no databases; the message
    // shows and the form leaves by its exit handler. False in that case.
    bool checkDatabases(DataControl* dc);

    void standardSearch(DataControl* dc, const std::string& column, const std::string& prompt,
                        const std::string& title, const std::string& notFoundText,
                        const std::string& notFoundTitle = {});
    // At each change of a quick-search field: FindFirst with the prefix; no match returns to the
    // last hit. With exactColumn, a second try by `[exactColumn] = "text"`.
    void quickSearch(DataControl* dc, const std::string& column, const std::string& typed,
                     const std::string& exactColumn = {});
    // Selecting a row of a side grid: FindFirst on the main set by the exact text.
    void selectFromGrid(DataControl* main, const std::string& column, const vb::Variant& key);

    // "OK-Mentés": save by moving, then back to the saved bookmark.
    void save(DataControl* dc, DBGrid* grid);
    // "Új adat": key = the key label's number + 1 (1 in an empty set); AddNew, key, Update,
    // MoveLast, focus to the first field.
    void newRecord(DataControl* dc, QLabel* keyLabel, const std::string& keyColumn, QWidget* firstField);
    struct ArchiveFailure {
        std::string text;
        int style = 0;
        std::string title;
    };
    // "Törlés": the question (Yes/No), the lock test by Edit, the optional archive copy of every
    // column by position, Delete, MoveNext (MoveLast at the end); with no record left, onEmpty runs.
    bool deleteRecord(DataControl* dc, const std::string& text, const std::string& title, DataControl* archive,
                      const ArchiveFailure& archiveFailure, const std::function<void()>& onEmpty);
    // The exit's mandatory-field check: a record whose key field is empty is offered for deletion.
    void offerDeleteIfEmpty(DataControl* dc, const std::string& fieldText, const std::string& text,
                            const std::string& title);
    // "Kilépés": CloseGuard off, the checks, Close on every Recordset, Unload.
    void standardExit(const std::function<void()>& checks, std::initializer_list<DataControl*> sources);
    static void closeAll(std::initializer_list<DataControl*> sources);

    // A click on a column heading: the tenth reopens the set from RecordSource; then the set is
    // sorted by the column, or by the column DESC when it already was.
    void headerSort(DataControl* dc, DBGrid* grid, int column);

    // "Választ": with a current record PickDone = 1 and the values are handed over, else cleared;
    // then the exit handler.
    void returnPick(DataControl* dc, const std::function<void()>& writePicked, const std::function<void()>& clearPicked);

    // A row in Regisztrálás for an action (failures are silent).
    void LogAction(DataControl* regisztData, const std::string& action, QLabel* idLabel);

    // Something to print and a ready printer, else the message.
    bool printCheck(DataControl* dc);
    static bool printerCheck();
    // The help entry: HelpFormX for this form.
    void help();

    vb::Variant quickSearchBookmark;
    int headClickCount = 0;
};

}  // namespace forms
