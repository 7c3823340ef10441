#include "forms/grid.h"

#include <QHeaderView>
#include <QItemSelectionModel>

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "forms/events.h"
#include "forms/runtime.h"
#include "vb/err.h"
#include "vb/format.h"

namespace forms {

namespace {
constexpr size_t CacheRows = 512;
}

void RecordsetModel::setSource(DataControl* dc) {
    dc_ = dc;
    reload();
}

void RecordsetModel::reload() {
    beginResetModel();
    cache_.clear();
    cacheOrder_.clear();
    fieldIndex_.clear();
    db::Recordset* r = dc_ ? dc_->Recordset() : nullptr;
    rows_ = r && !r->closed() ? int(r->size()) : 0;
    if (r && !r->closed() && columns_.empty()) {
        for (auto& name : r->columnNames()) columns_.push_back({name, name, true, {}});
    }
    endResetModel();
}

void RecordsetModel::forget() {
    db::Recordset* r = dc_ ? dc_->Recordset() : nullptr;
    int now = r && !r->closed() ? int(r->size()) : 0;
    if (now != rows_) {
        reload();
        return;
    }
    cache_.clear();
    cacheOrder_.clear();
    if (rows_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
}

const std::vector<size_t>& RecordsetModel::fieldIndexes() const {
    if (!fieldIndex_.empty() || !dc_ || !dc_->Recordset()) return fieldIndex_;
    const auto& names = dc_->Recordset()->columnNames();
    for (auto& c : columns_) {
        size_t found = SIZE_MAX;
        for (size_t i = 0; i < names.size(); ++i) {
            if (QString::fromStdString(names[i]).compare(QString::fromStdString(c.dataField), Qt::CaseInsensitive) == 0) {
                found = i;
                break;
            }
        }
        fieldIndex_.push_back(found);
    }
    return fieldIndex_;
}

const std::vector<vb::Variant>* RecordsetModel::row(int r) const {
    auto it = cache_.find(r);
    if (it != cache_.end()) return &it->second;
    db::Recordset* rs = dc_ ? dc_->Recordset() : nullptr;
    if (!rs || rs->closed() || r < 0 || r >= int(rs->size())) return nullptr;
    std::vector<vb::Variant> values;
    if (!vb::resume([&] { values = rs->peek(size_t(r)); })) {
        vb::Err.Clear();
        return nullptr;  // a row deleted by another copy shows empty
    }
    if (cache_.size() >= CacheRows) {
        // drop the older half
        size_t half = cacheOrder_.size() / 2;
        for (size_t i = 0; i < half; ++i) cache_.erase(cacheOrder_[i]);
        cacheOrder_.erase(cacheOrder_.begin(), cacheOrder_.begin() + long(half));
    }
    cacheOrder_.push_back(r);
    return &(cache_[r] = std::move(values));
}

vb::Variant RecordsetModel::value(int r, int column) const {
    const auto& idx = fieldIndexes();
    if (column < 0 || column >= int(idx.size()) || idx[column] == SIZE_MAX) return vb::Null{};
    const auto* values = row(r);
    if (!values || idx[column] >= values->size()) return vb::Null{};
    return (*values)[idx[column]];
}

std::string RecordsetModel::text(int r, int column) const {
    vb::Variant v = value(r, column);
    if (column >= 0 && column < int(columns_.size()) && !columns_[column].format.empty() && !vb::isNull(v) &&
        !vb::isEmpty(v)) {
        std::string s;
        if (vb::resume([&] { s = vb::Format(v, columns_[column].format); })) return s;
        vb::Err.Clear();
    }
    return displayText(v);
}

int RecordsetModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }
int RecordsetModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(columns_.size()); }

QVariant RecordsetModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole) return qs(text(index.row(), index.column()));
    if (role == Qt::TextAlignmentRole) {
        vb::Variant v = value(index.row(), index.column());
        bool number = !std::holds_alternative<std::string>(v) && !vb::isNull(v) && !std::holds_alternative<vb::Date>(v);
        return int((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation o, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (o == Qt::Horizontal) return section < int(columns_.size()) ? qs(columns_[section].caption) : QVariant();
    return {};
}

Qt::ItemFlags RecordsetModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (allowUpdate) f |= Qt::ItemIsEditable;
    return f;
}

bool RecordsetModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !allowUpdate || !dc_ || !dc_->Recordset()) return false;
    std::string typed = str(value.toString());
    const auto& idx = fieldIndexes();
    if (index.column() >= int(idx.size()) || idx[index.column()] == SIZE_MAX) return false;
    bool stored = false;
    run([&] {
        if (beforeColUpdate && !beforeColUpdate(index.row(), index.column(), typed)) return;
        db::Recordset& r = dc_->rs();
        if (r.AbsolutePosition() != index.row()) r.setAbsolutePosition(index.row());
        r.Edit();
        try {
            r.setValue(idx[index.column()], typed.empty() ? vb::Variant(vb::Null{}) : vb::Variant(typed));
            r.Update();
        } catch (...) {
            if (r.editing()) vb::resume([&] { r.CancelUpdate(); });
            throw;
        }
        stored = true;
    });
    cache_.erase(index.row());
    emit dataChanged(this->index(index.row(), 0), this->index(index.row(), columnCount() - 1));
    return stored;
}

DBGrid::DBGrid(QWidget* parent) : QTableView(parent), model_(new RecordsetModel(this)) {
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    verticalHeader()->hide();
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        if (HeadClick) run([&] { HeadClick(section); });
    });
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) { rowSelected(current); });
}

void DBGrid::bind(DataControl* dc) {
    model_->setSource(dc);
    connect(dc, &DataControl::recordsetChanged, this, [this] {
        model_->reload();
        followRecordset();
    });
    connect(dc, &DataControl::moved, this, [this] { followRecordset(); });
    followRecordset();
}

void DBGrid::addColumn(const std::string& caption, const std::string& dataField, int width) {
    model_->columns().push_back({caption.empty() ? dataField : caption, dataField, true, {}});
    model_->reload();
    if (width > 0) setColumnWidth(int(model_->columns().size()) - 1, width);
}

void DBGrid::Refresh() {
    model_->forget();
    followRecordset();
}

int DBGrid::Row() const {
    auto* dc = model_->source();
    if (!dc || !dc->Recordset() || dc->Recordset()->closed()) return -1;
    return dc->Recordset()->AbsolutePosition();
}

void DBGrid::setAllowUpdate(bool allow) {
    model_->allowUpdate = allow;
    setEditTriggers(allow ? QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                                QAbstractItemView::AnyKeyPressed
                          : QAbstractItemView::NoEditTriggers);
}

void DBGrid::followRecordset() {
    if (following_) return;
    following_ = true;
    auto* dc = model_->source();
    db::Recordset* r = dc ? dc->Recordset() : nullptr;
    if (r && !r->closed() && int(r->size()) != model_->rowCount()) model_->reload();
    int pos = Row();
    if (pos >= 0 && pos < model_->rowCount()) {
        QModelIndex i = model_->index(pos, std::max(0, currentIndex().column()));
        selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        scrollTo(i);
    } else {
        selectionModel()->clearSelection();
    }
    following_ = false;
}

void DBGrid::rowSelected(const QModelIndex& current) {
    if (following_ || !current.isValid()) return;
    auto* dc = model_->source();
    if (!dc) return;
    run([&] {
        db::Recordset& r = dc->rs();
        if (r.AbsolutePosition() != current.row()) r.setAbsolutePosition(current.row());
        if (RowColChange) RowColChange();
    });
    // A move that failed (a bound box holds what its column can't take) leaves the set on its
    // row: the grid's cursor goes back there instead of marking a row that isn't current.
    if (Row() >= 0 && Row() != current.row()) followRecordset();
}

}  // namespace forms
