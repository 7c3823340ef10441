#include "db/recordset.h"

#include <algorithm>
#include <cctype>

#include "db/values.h"

namespace db {

namespace {

DaoError noCurrent() { return DaoError(dao::NoCurrentRecord, "No current record."); }
DaoError notFound() { return DaoError(dao::UnknownField, "Item not found in this collection."); }
DaoError badBookmark() { return DaoError(dao::InvalidBookmark, "Not a valid bookmark."); }

uint64_t keyOf(jet::RowId id) { return (uint64_t(id.page) << 16) | id.row; }

std::string trimmed(std::string_view s) {
    size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string_view::npos) return {};
    size_t e = s.find_last_not_of(" \t\r\n");
    return std::string(s.substr(b, e - b + 1));
}

// The statement without its last ORDER BY clause (outside quotes, brackets and #dates#).
std::string stripOrderBy(const std::string& sql) {
    char open = 0;
    size_t cut = std::string::npos;
    auto lower = [&](size_t i) { return char(std::tolower(static_cast<unsigned char>(sql[i]))); };
    auto word = [&](size_t i, const char* w) {
        for (size_t k = 0; w[k]; ++k)
            if (i + k >= sql.size() || lower(i + k) != w[k]) return false;
        return true;
    };
    for (size_t i = 0; i < sql.size(); ++i) {
        char c = sql[i];
        if (open) {
            if (c == open) open = 0;
        } else if (c == '\'' || c == '"' || c == '#') {
            open = c;
        } else if (c == '[') {
            open = ']';
        } else if (word(i, "order") && (i == 0 || std::isspace(static_cast<unsigned char>(sql[i - 1])))) {
            size_t j = i + 5;
            if (j < sql.size() && !std::isspace(static_cast<unsigned char>(sql[j]))) continue;
            while (j < sql.size() && std::isspace(static_cast<unsigned char>(sql[j]))) ++j;
            if (word(j, "by")) cut = i;
        }
    }
    return cut == std::string::npos ? sql : trimmed(sql.substr(0, cut));
}

}  // namespace

// ---- Field ----

vb::Variant Field::Value() const { return rs_->value(index_); }
void Field::setValue(const vb::Variant& v) const { rs_->setValue(index_, v); }
const std::string& Field::Name() const { return rs_->columns_.at(index_); }

// ---- opening ----

Recordset::Recordset(std::shared_ptr<Database> db, std::string source, int type)
    : db_(std::move(db)), source_(trimmed(source)), readOnly_(type == dbOpenSnapshot) {
    if (sql::looksLikeStatement(source_)) {
        statement_ = sql::parse(source_);
        tableName_ = statement_->tableName();
        table_ = &db_->table(tableName_);
        jet::Table& t = *table_;
        select_ = translated([&] { return std::make_unique<sql::Select>(statement_, t); });
        snapshot_ = select_->isSnapshot();
        columns_ = select_->columns();
        tableWidth_ = snapshot_ ? 0 : select_->tableWidth();
    } else {
        tableName_ = source_;
        if (tableName_.size() >= 2 && tableName_.front() == '[' && tableName_.back() == ']')
            tableName_ = tableName_.substr(1, tableName_.size() - 2);
        table_ = &db_->table(tableName_);
        for (const jet::Column& c : table_->def().columns) columns_.push_back(c.name);
        tableWidth_ = columns_.size();
    }
    run();
}

Recordset::~Recordset() {
    try {
        if (!closed_) endEdit();
    } catch (...) {
    }
}

jet::Table& Recordset::table() const { return *table_; }

void Recordset::run() {
    table_ = &db_->table(tableName_);
    jet::Table& t = *table_;
    translated([&] {
        if (snapshot_) {
            rows_ = select_->snapshot(t).rows;
        } else {
            keys_ = select_ ? select_->rowIds(t) : t.rowIds();
        }
    });
    keyIndex_.clear();
    pos_ = size() == 0 ? -1 : 0;
    maxVisited_ = pos_;
    deleted_ = false;
    current_.reset();
    mode_ = Mode::None;
}

size_t Recordset::size() const { return snapshot_ ? rows_.size() : keys_.size(); }

void Recordset::checkOpen() const {
    if (closed_) throw DaoError(dao::ObjectClosed, "Object invalid or no longer set.");
}

bool Recordset::updatable() const { return !closed_ && !snapshot_ && !readOnly_ && !db_->readOnly(); }

void Recordset::checkUpdatable() const {
    if (!updatable()) throw DaoError(dao::NotUpdatable, "Cannot update. Database or object is read-only.");
}

// ---- position ----

bool Recordset::Eof() const {
    checkOpen();
    return !deleted_ && (size() == 0 || pos_ >= int(size()));
}

bool Recordset::Bof() const {
    checkOpen();
    return !deleted_ && (size() == 0 || pos_ < 0);
}

int Recordset::RecordCount() const {
    checkOpen();
    int n = int(size());
    return n == 0 ? 0 : std::min(n, std::max(1, maxVisited_ + 1));
}

void Recordset::beforeMove() {
    auto ls = listeners_;
    for (MoveListener* l : ls) l->beforeMove(*this);
}

void Recordset::arrive(int pos) {
    endEdit();
    pos_ = pos;
    deleted_ = false;
    current_.reset();
    if (onRecord()) maxVisited_ = std::max(maxVisited_, pos_);
    auto ls = listeners_;
    for (MoveListener* l : ls) l->afterMove(*this);
}

void Recordset::MoveFirst() {
    checkOpen();
    if (size() == 0) throw noCurrent();
    beforeMove();
    arrive(0);
}

void Recordset::MoveLast() {
    checkOpen();
    if (size() == 0) throw noCurrent();
    beforeMove();
    arrive(int(size()) - 1);
}

void Recordset::MoveNext() {
    checkOpen();
    if (!deleted_ && Eof()) throw noCurrent();
    beforeMove();
    // after a Delete the record that followed has slid into the deleted one's place
    arrive(std::min(deleted_ ? pos_ : pos_ + 1, int(size())));
}

void Recordset::MovePrevious() {
    checkOpen();
    if (!deleted_ && Bof()) throw noCurrent();
    beforeMove();
    arrive(std::max(pos_ - 1, -1));
}

int Recordset::AbsolutePosition() const {
    checkOpen();
    return onRecord() ? pos_ : -1;
}

void Recordset::setAbsolutePosition(int position) {
    checkOpen();
    if (position < 0 || position >= int(size())) throw noCurrent();
    beforeMove();
    arrive(position);
}

vb::Variant Recordset::Bookmark() const {
    checkOpen();
    if (!onRecord()) throw noCurrent();
    if (snapshot_) {
        uint32_t i = uint32_t(pos_);
        return vb::ByteArray{0xFF, uint8_t(i), uint8_t(i >> 8), uint8_t(i >> 16), uint8_t(i >> 24)};
    }
    jet::RowId id = keys_[size_t(pos_)];
    return vb::ByteArray{uint8_t(id.page), uint8_t(id.page >> 8), uint8_t(id.page >> 16), uint8_t(id.page >> 24),
                         uint8_t(id.row), uint8_t(id.row >> 8)};
}

void Recordset::setBookmark(const vb::Variant& bookmark) {
    checkOpen();
    auto* b = std::get_if<vb::ByteArray>(&bookmark);
    if (!b) throw badBookmark();
    int target = -1;
    if (snapshot_) {
        if (b->size() != 5 || (*b)[0] != 0xFF) throw badBookmark();
        uint32_t i = (*b)[1] | (*b)[2] << 8 | (*b)[3] << 16 | uint32_t((*b)[4]) << 24;
        if (i >= size()) throw badBookmark();
        target = int(i);
    } else {
        if (b->size() != 6) throw badBookmark();
        jet::RowId id{uint32_t((*b)[0] | (*b)[1] << 8 | (*b)[2] << 16 | uint32_t((*b)[3]) << 24),
                      uint16_t((*b)[4] | (*b)[5] << 8)};
        if (keyIndex_.empty())
            for (size_t i = 0; i < keys_.size(); ++i) keyIndex_.emplace(keyOf(keys_[i]), int(i));
        auto it = keyIndex_.find(keyOf(id));
        if (it == keyIndex_.end()) throw badBookmark();
        target = it->second;
    }
    beforeMove();
    arrive(target);
}

// ---- Find ----

void Recordset::FindFirst(std::string_view filter) { find(filter, 0, +1); }
void Recordset::FindLast(std::string_view filter) { find(filter, int(size()) - 1, -1); }
void Recordset::FindNext(std::string_view filter) { find(filter, deleted_ ? pos_ : pos_ + 1, +1); }
void Recordset::FindPrevious(std::string_view filter) { find(filter, pos_ - 1, -1); }

void Recordset::find(std::string_view filter, int start, int step) {
    checkOpen();
    noMatch_ = true;  // a filter that fails to parse leaves "no match": the handlers' path
    sql::Filter f(filter, columns_);
    const int n = int(size());
    int found = -1;
    if (snapshot_) {
        for (int i = start; i >= 0 && i < n && found < 0; i += step)
            if (f.matches(rows_[size_t(i)])) found = i;
    } else if (start >= 0 && start < n) {
        // one scan of the filter's columns, then a walk of the set from the start
        std::vector<jet::RowId> hits = translated([&] { return f.matchingRows(table(), select_.get()); });
        if (!hits.empty())
            for (int i = start; i >= 0 && i < n && found < 0; i += step)
                if (std::binary_search(hits.begin(), hits.end(), keys_[size_t(i)])) found = i;
    }
    if (found < 0) return;  // the current record stays
    noMatch_ = false;
    beforeMove();
    arrive(found);
}

// ---- values ----

const jet::Row& Recordset::currentRow() {
    if (deleted_) throw DaoError(dao::RecordDeleted, "Record is deleted.");
    if (!onRecord()) throw noCurrent();
    if (!current_) current_ = translated([&] { return table().read(keys_[size_t(pos_)]); });
    return *current_;
}

vb::Variant Recordset::rowValue(size_t column, const jet::Row& row) const {
    if (column < tableWidth_) return column < row.size() ? toVariant(row[column]) : vb::Variant(vb::Null{});
    return translated([&] {
        return select_->value(column, [&](size_t c) {
            return c < row.size() ? toVariant(row[c]) : vb::Variant(vb::Null{});
        });
    });
}

vb::Variant Recordset::value(size_t column) {
    checkOpen();
    if (column >= columns_.size()) throw notFound();
    if (mode_ != Mode::None) return rowValue(column, buffer_);
    if (snapshot_) {
        if (!onRecord()) throw noCurrent();
        return rows_[size_t(pos_)][column];
    }
    return rowValue(column, currentRow());
}

void Recordset::setValue(size_t column, const vb::Variant& v) {
    checkOpen();
    if (column >= columns_.size()) throw notFound();
    if (mode_ == Mode::None) throw DaoError(dao::NoEdit, "Update or CancelUpdate without AddNew or Edit.");
    const auto& cols = table().def().columns;
    if (column >= tableWidth_ || column >= cols.size() || cols[column].autoNumber())
        throw DaoError(dao::FieldNotUpdatable, "Field can't be updated.");
    buffer_[column] = toColumnValue(cols[column], v);
    dirty_[column] = true;
}

Field Recordset::Fields(std::string_view name) {
    checkOpen();
    for (size_t i = 0; i < columns_.size(); ++i)
        if (sql::sameName(columns_[i], name)) return Field(*this, i);
    throw notFound();
}

Field Recordset::Fields(int index) {
    checkOpen();
    if (index < 0 || size_t(index) >= columns_.size()) throw notFound();
    return Field(*this, size_t(index));
}

std::vector<vb::Variant> Recordset::peek(size_t position) {
    checkOpen();
    if (position >= size()) throw noCurrent();
    if (snapshot_) return rows_[position];
    jet::Row row = int(position) == pos_ && current_ && !deleted_
                       ? *current_
                       : translated([&] { return table().read(keys_[position]); });
    std::vector<vb::Variant> out;
    out.reserve(columns_.size());
    for (size_t c = 0; c < columns_.size(); ++c) out.push_back(rowValue(c, row));
    return out;
}

// ---- editing ----

void Recordset::endEdit() {
    if (mode_ == Mode::Edit && db_) {
        try {
            db_->unlockRecord(table(), editKey_);
        } catch (...) {
        }
    }
    mode_ = Mode::None;
    buffer_.clear();
    dirty_.clear();
}

void Recordset::CancelUpdate() {
    checkOpen();
    endEdit();
}

void Recordset::AddNew() {
    checkOpen();
    checkUpdatable();
    beforeMove();
    endEdit();
    buffer_.assign(tableWidth_, std::monostate{});
    dirty_.assign(tableWidth_, false);
    mode_ = Mode::Add;
}

void Recordset::Edit() {
    checkOpen();
    checkUpdatable();
    endEdit();
    if (deleted_) throw DaoError(dao::RecordDeleted, "Record is deleted.");
    if (!onRecord()) throw noCurrent();
    jet::Table& t = table();
    jet::RowId key = keys_[size_t(pos_)];
    db_->lockRecord(t, key);
    try {
        current_.reset();  // read afresh under the lock: the edit starts from what others stored
        buffer_ = currentRow();
    } catch (...) {
        db_->unlockRecord(t, key);
        throw;
    }
    buffer_.resize(tableWidth_);
    dirty_.assign(tableWidth_, false);
    editKey_ = key;
    mode_ = Mode::Edit;
}

void Recordset::Update() {
    checkOpen();
    if (mode_ == Mode::None) throw DaoError(dao::NoEdit, "Update or CancelUpdate without AddNew or Edit.");
    try {
        jet::Table& t = table();
        if (mode_ == Mode::Add) {
            jet::RowId id = translated([&] { return t.insert(buffer_); });
            const int n = int(size());
            bool atEof = pos_ >= n;
            bool allVisited = maxVisited_ == n - 1;
            keys_.push_back(id);  // DAO shows added records at the end of the set
            keyIndex_.clear();
            if (atEof && pos_ >= 0) pos_ = int(size());
            if (allVisited && size() > 1) ++maxVisited_;  // a fully visited set counts the new one
        } else if (std::find(dirty_.begin(), dirty_.end(), true) != dirty_.end()) {
            translated([&] {
                jet::Row row = t.read(editKey_);
                for (size_t i = 0; i < dirty_.size() && i < row.size(); ++i)
                    if (dirty_[i]) row[i] = buffer_[i];
                t.update(editKey_, std::move(row));
            });
        }
    } catch (...) {
        // DAO keeps a failed edit open; the handlers never go on with it, so it ends here
        endEdit();
        current_.reset();
        throw;
    }
    endEdit();
    current_.reset();
}

void Recordset::Delete() {
    checkOpen();
    checkUpdatable();
    if (!onRecord()) throw noCurrent();
    jet::Table& t = table();
    jet::RowId key = keys_[size_t(pos_)];
    db_->lockRecord(t, key);  // another user's Edit stops a Delete
    try {
        translated([&] { t.remove(key); });
    } catch (...) {
        db_->unlockRecord(t, key);
        throw;
    }
    db_->unlockRecord(t, key);
    endEdit();
    keys_.erase(keys_.begin() + pos_);
    keyIndex_.clear();
    if (maxVisited_ >= pos_) --maxVisited_;
    deleted_ = true;
    current_.reset();
}

// ---- queries ----

void Recordset::Requery() {
    checkOpen();
    beforeMove();
    endEdit();
    run();
    auto ls = listeners_;
    for (MoveListener* l : ls) l->afterMove(*this);
}

std::unique_ptr<Recordset> Recordset::OpenRecordset(int type) {
    checkOpen();
    if (trimmed(sort_).empty()) return db_->OpenRecordset(source_, type);
    std::string base = statement_ ? stripOrderBy(source_) : "select * from [" + tableName_ + "]";
    return db_->OpenRecordset(base + " order by " + sort_, type);
}

void Recordset::Close() {
    checkOpen();
    try {
        beforeMove();
    } catch (...) {
        endEdit();
        closed_ = true;
        listeners_.clear();
        throw;
    }
    endEdit();
    closed_ = true;
    listeners_.clear();
    keys_.clear();
    rows_.clear();
    keyIndex_.clear();
    current_.reset();
}

void Recordset::addMoveListener(MoveListener* l) { listeners_.push_back(l); }

void Recordset::removeMoveListener(MoveListener* l) {
    listeners_.erase(std::remove(listeners_.begin(), listeners_.end(), l), listeners_.end());
}

}  // namespace db
