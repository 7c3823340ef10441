// DAO's Recordset over the engine.
//
// A dynaset runs its query once and keeps the ordered row ids; a row's values are read from the
// engine when it becomes current (so another user's changes show, and a row deleted meanwhile
// fails with 3167). A snapshot (DISTINCT, an aggregate, a list without '*') holds its computed
// rows and is read-only.
//
// Positions: -1 is BOF, size() is EOF. After Delete the position stays on the deleted record
// (fields raise 3167, EOF and BOF are false) until a move: MoveNext goes to the record that
// followed it. After AddNew + Update the current record stays what it was; the new row is added
// at the end of the set. RecordCount is the number of records visited so far (at least 1 when the
// set is not empty, exact after MoveLast).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "db/database.h"
#include "db/sql/sql.h"
#include "vb/variant.h"

namespace db {

class Recordset;

// A field of the current record: rs.Fields("Név").Value(), rs.Fields(3).setValue(x).
class Field {
public:
    vb::Variant Value() const;
    void setValue(const vb::Variant& v) const;
    const std::string& Name() const;
    size_t ordinal() const { return index_; }

private:
    friend class Recordset;
    Field(Recordset& rs, size_t index) : rs_(&rs), index_(index) {}
    Recordset* rs_;
    size_t index_;
};

class Recordset {
public:
    // The hook of a Data control: told before the current record is left (bound controls write
    // back) and after a record became current (they load it).
    struct MoveListener {
        virtual ~MoveListener() = default;
        virtual void beforeMove(Recordset& rs) = 0;
        virtual void afterMove(Recordset& rs) = 0;
    };

    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    // ---- position (3420 on a closed set) ----
    // DAO's EOF and BOF (spelled so because EOF is a C macro).
    bool Eof() const;
    bool Bof() const;
    bool NoMatch() const { return noMatch_; }
    int RecordCount() const;
    void MoveFirst();     // 3021 on an empty set
    void MoveLast();      // 3021 on an empty set
    void MoveNext();      // 3021 at EOF
    void MovePrevious();  // 3021 at BOF
    // The current record's position (0 upwards), -1 when none; setting it moves there (3021).
    int AbsolutePosition() const;
    void setAbsolutePosition(int position);

    // An opaque position: a byte array. 3021 without a current record; 3159 for a bookmark that
    // is not (or no longer) one of this set's.
    vb::Variant Bookmark() const;
    void setBookmark(const vb::Variant& bookmark);

    // ---- Find (a filter parse error raises and leaves NoMatch true, the current record kept) ----
    void FindFirst(std::string_view filter);
    void FindNext(std::string_view filter);
    void FindPrevious(std::string_view filter);
    void FindLast(std::string_view filter);

    // ---- queries ----
    const std::string& Sort() const { return sort_; }
    void setSort(std::string sort) { sort_ = std::move(sort); }
    // A new Recordset on the same source, ordered by Sort when it is set.
    std::unique_ptr<Recordset> OpenRecordset(int type = dbOpenDynaset);
    // Runs the query again; the first record becomes current.
    void Requery();

    // ---- editing (3027 on a snapshot or read-only file) ----
    void AddNew();
    void Edit();          // takes the record lock: 3260 when another process holds it
    void Update();        // 3020 without AddNew or Edit; ends the edit even when it fails
    void CancelUpdate();
    void Delete();        // 3021 without a current record, 3260 when another process edits it
    bool editing() const { return mode_ != Mode::None; }

    // ---- fields ----
    Field Fields(std::string_view name);  // without regard to case; 3265 when absent
    Field Fields(int index);              // 0 upwards; 3265 out of range
    size_t FieldCount() const { return columns_.size(); }
    const std::vector<std::string>& columnNames() const { return columns_; }
    vb::Variant get(std::string_view name) { return Fields(name).Value(); }
    void set(std::string_view name, const vb::Variant& v) { Fields(name).setValue(v); }
    vb::Variant value(size_t column);
    void setValue(size_t column, const vb::Variant& v);

    void Close();  // 3420 when already closed
    bool closed() const { return closed_; }

    // ---- for the forms runtime and tools ----
    size_t size() const;  // the true number of records (not DAO's RecordCount)
    // The values of the record at a position without moving (grids).
    std::vector<vb::Variant> peek(size_t position);
    bool isSnapshot() const { return snapshot_; }
    bool updatable() const;
    const std::string& source() const { return source_; }
    const std::string& tableName() const { return tableName_; }
    Database& database() { return *db_; }
    void addMoveListener(MoveListener* l);
    void removeMoveListener(MoveListener* l);

private:
    friend class Database;
    friend class Field;
    Recordset(std::shared_ptr<Database> db, std::string source, int type);

    enum class Mode { None, Edit, Add };

    jet::Table& table() const;
    void run();
    void checkOpen() const;
    void checkUpdatable() const;
    bool onRecord() const { return pos_ >= 0 && pos_ < int(size()) && !deleted_; }
    void beforeMove();
    void arrive(int pos);
    void endEdit();
    const jet::Row& currentRow();
    vb::Variant rowValue(size_t column, const jet::Row& row) const;
    void find(std::string_view filter, int start, int step);

    std::shared_ptr<Database> db_;
    std::string source_;
    std::string tableName_;
    jet::Table* table_ = nullptr;  // looked up at open and Requery (the engine keeps it alive)
    std::shared_ptr<const sql::Statement> statement_;
    std::unique_ptr<sql::Select> select_;
    bool snapshot_ = false;
    bool readOnly_ = false;
    std::vector<std::string> columns_;
    size_t tableWidth_ = 0;

    std::vector<jet::RowId> keys_;                       // dynaset
    std::vector<std::vector<vb::Variant>> rows_;         // snapshot
    mutable std::unordered_map<uint64_t, int> keyIndex_;  // row id -> position, built on demand

    int pos_ = -1;
    bool deleted_ = false;
    int maxVisited_ = -1;
    std::optional<jet::Row> current_;  // the current row as read (dynaset)
    Mode mode_ = Mode::None;
    jet::Row buffer_;                  // AddNew/Edit: the table row being built
    std::vector<bool> dirty_;
    jet::RowId editKey_{};
    bool noMatch_ = false;
    std::string sort_;
    bool closed_ = false;
    std::vector<MoveListener*> listeners_;
};

}  // namespace db
