// The Data control: DatabaseName, RecordSource, Refresh, its Recordset, and the widgets bound to
// its columns. Bound widgets write on move: before the current record is left (a move, Refresh,
// Requery, Close) the values changed since it was loaded are written with an implicit Edit +
// Update; after a record became current every bound widget shows it.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "db/database.h"
#include "db/recordset.h"

class QWidget;

namespace forms {

inline constexpr const char* LabelWritesBack = "kerovaLabelWritesBack";
// A bound text box or label whose property DataFormat holds a Format mask shows its value through
// vb::Format with that mask (a masked edit's display format), and compares in that form.
inline constexpr const char* DataFormat = "kerovaDataFormat";
// Set on a bound date picker while its record's column is Null: the picker then counts as empty,
// so a Null stays Null on the move; setPickerDate() clears it (a date set by code is stored).
inline constexpr const char* DateIsNull = "kerovaDateIsNull";

class DataControl : public QObject, public db::Recordset::MoveListener {
    Q_OBJECT
public:
    DataControl(std::string name, std::string databaseName, std::string recordSource, QObject* parent);
    ~DataControl() override;

    const std::string& name() const { return name_; }
    const std::string& DatabaseName() const { return databaseName_; }
    void setDatabaseName(std::string n) { databaseName_ = std::move(n); }
    const std::string& RecordSource() const { return recordSource_; }
    void setRecordSource(std::string s) { recordSource_ = std::move(s); }

    // Writes the bound changes, opens RecordSource anew and closes the old Recordset. When the
    // new source fails to open, the error is raised and the previous Recordset stays.
    void Refresh();
    // The open Recordset, or nullptr (never opened, or its database failed to open).
    db::Recordset* Recordset() const { return rs_.get(); }
    // The open Recordset; error 91 when there is none (VB's "Object variable not set").
    db::Recordset& rs() const;
    // Assigns another Recordset (a sorted copy, a filtered one); the bound widgets show it.
    void setRecordset(std::unique_ptr<db::Recordset> rs);
    std::shared_ptr<db::Database> Database() const;

    // Binds a widget to a column: QLineEdit, QTextEdit, QComboBox, QCheckBox and QDateEdit write
    // back; a QLabel only shows, unless its property LabelWritesBack is true (a bound label whose
    // caption the code sets, stored on the move as VB stores a bound Label).
    void bind(QWidget* w, const std::string& column);
    // Writes the bound values that changed into the current record.
    void writeBound();
    // The widget's shown value counts as the loaded one: a caption set by code only to show
    // something (not to store it) is not written on the next move.
    void markLoaded(QWidget* w);
    // Forgets the Recordset without writing (the form unloads).
    void detach();

signals:
    // After every move and every change of the Recordset (grids follow).
    void moved();
    void recordsetChanged();

private:
    void beforeMove(db::Recordset& rs) override;
    void afterMove(db::Recordset& rs) override;
    void load();

    struct Binding {
        QWidget* widget;
        std::string column;
        std::string loaded;  // the text shown when the record was loaded
    };
    std::string name_;
    std::string databaseName_;
    std::string recordSource_;
    std::unique_ptr<db::Recordset> rs_;
    std::vector<Binding> bindings_;
    bool writing_ = false;
};

// The text a bound widget or a grid cell shows for a value.
std::string displayText(const vb::Variant& v);
// Sets a date picker's day by code so that a bound picker stores it even when its record's column
// was Null and the picker already showed that day.
void setPickerDate(QWidget* picker, const vb::Date& d);

}  // namespace forms
