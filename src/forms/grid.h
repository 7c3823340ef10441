// DBGrid: a QTableView over a Data control's Recordset. The model reads rows lazily (only the
// rows on screen, through a small cache), so a grid on 200 000 rows opens and scrolls at once.
// Selecting a row moves the Recordset there (the bound widgets follow); a move of the Recordset
// selects its row. A click on a column heading runs HeadClick with the column's index.
#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "vb/variant.h"

namespace forms {

class DataControl;

class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    struct Column {
        std::string caption;
        std::string dataField;
        bool visible = true;
        std::string format;  // a Format mask for the cell's text (a column's NumberFormat); "" none
    };
    explicit RecordsetModel(QObject* parent) : QAbstractTableModel(parent) {}
    void setSource(DataControl* dc);
    DataControl* source() const { return dc_; }
    std::vector<Column>& columns() { return columns_; }
    void reload();  // the Recordset changed or was re-run
    void forget();  // rows may have changed: read them again when shown

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation o, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    // The value and the text of a cell (row: position in the Recordset).
    vb::Variant value(int row, int column) const;
    std::string text(int row, int column) const;
    bool allowUpdate = false;
    // Called before a typed cell value is stored; false refuses it (the grid's own checks).
    std::function<bool(int row, int column, std::string& text)> beforeColUpdate;

private:
    const std::vector<vb::Variant>* row(int r) const;
    const std::vector<size_t>& fieldIndexes() const;
    DataControl* dc_ = nullptr;
    std::vector<Column> columns_;
    mutable std::unordered_map<int, std::vector<vb::Variant>> cache_;
    mutable std::vector<int> cacheOrder_;
    mutable std::vector<size_t> fieldIndex_;
    int rows_ = 0;
};

class DBGrid : public QTableView {
    Q_OBJECT
public:
    explicit DBGrid(QWidget* parent);
    void bind(DataControl* dc);
    DataControl* DataSource() const { return model_->source(); }
    // Adds a column showing a field; the caption defaults to the field's name.
    void addColumn(const std::string& caption, const std::string& dataField, int width = 0);
    int columnCount() const { return int(model_->columns().size()); }
    const std::string& DataField(int column) const { return model_->columns().at(column).dataField; }
    // The column's NumberFormat: its cells show their values through vb::Format with the mask.
    void setColumnFormat(int column, const std::string& mask) { model_->columns().at(column).format = mask; }
    RecordsetModel* recordsetModel() const { return model_; }
    // Reads the rows again (VB's Refresh).
    void Refresh();
    // The row of the current record, -1 when none.
    int Row() const;
    // The text of a cell as shown.
    std::string cellText(int row, int column) const { return model_->text(row, column); }
    void setAllowUpdate(bool allow);

    std::function<void(int column)> HeadClick;
    std::function<void()> RowColChange;

private:
    void followRecordset();
    void rowSelected(const QModelIndex& current);
    RecordsetModel* model_;
    bool following_ = false;
};

}  // namespace forms
