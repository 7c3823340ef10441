// The engine's public face: a Database file, its Tables, rows by RowId, indexes, and batches.
// Everything else in src/jet is internal.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "error.h"
#include "tabledef.h"
#include "value.h"

namespace jet {

class Pager;
class Database;

// What a new table looks like (for Database::createTable and new files).
struct ColumnSpec {
    std::string name;
    ColType type = ColType::Text;
    uint16_t length = 0;          // Text: characters (1..255); others: ignored
    bool autoNumber = false;      // Long only
    bool required = false;
    uint8_t precision = 18, scale = 0;  // Numeric
};

struct IndexSpec {
    std::string name;
    std::vector<std::string> columns;   // column names, ascending
    bool primaryKey = false;            // implies unique and required
    bool unique = false;
};

struct TableSpec {
    std::string name;
    std::vector<ColumnSpec> columns;
    std::vector<IndexSpec> indexes;
};

class Table {
public:
    const TableDef& def() const { return def_; }
    const std::string& name() const { return def_.name; }
    uint32_t rowCount() const { return def_.rowCount; }
    Database& database() const { return db_; }

    // Every live row in physical order (page by page, slot by slot; overflow rows at their home
    // slot). The callback returns false to stop.
    void scan(const std::function<bool(RowId, const Row&)>& visit) const;
    std::vector<RowId> rowIds() const;
    // Every live row in the order its bytes lie in the file: an overflowed row where its bytes
    // are now, not at its home slot (the order other readers list rows in).
    void scanStored(const std::function<bool(RowId, const Row&)>& visit) const;
    // One row; a deleted or absent row fails with NoSuchRow.
    Row read(RowId id) const;
    // Only some columns (by position in def().columns) — cheaper for wide rows.
    Value readValue(RowId id, size_t column) const;
    // One row with only the columns marked in `wanted` (by position) decoded; the others null.
    Row readColumns(RowId id, const std::vector<bool>& wanted) const;
    // scan() decoding only the given columns (positions in def().columns): the Row handed to
    // `visit` holds their values in the order asked. A column out of range fails with NoSuchColumn.
    void scanColumns(const std::vector<size_t>& columns, const std::function<bool(RowId, const Row&)>& visit) const;

    // Writes. Each is its own commit unless a batch is open (Database::begin).
    // A row is given in column order; an AutoNumber column left null gets the next number.
    // Unique indexes are checked before anything is written (Duplicate).
    RowId insert(Row row);
    void update(RowId id, Row row);
    void remove(RowId id);

    // Index access: the row ids in the index's order, and a seek by key (values of the index's
    // columns, in order; fewer values seek a prefix).
    std::vector<RowId> indexOrder(std::string_view indexName) const;
    std::vector<RowId> seek(std::string_view indexName, const std::vector<Value>& key) const;

    // For the engine's own writers (row, index and definition code): the definition they keep
    // current (row count, autonumber, index roots) inside a transaction.
    TableDef& mutableDef() { return def_; }

private:
    friend class Database;
    Table(Database& db, TableDef def) : db_(db), def_(std::move(def)) {}
    // Reads the definition again when another process committed or a rollback dropped changes.
    void freshen() const;
    Database& db_;
    TableDef def_;
};

class Database {
public:
    enum class Mode { ReadOnly, ReadWrite };
    // Opens an Access 2000 file. Anything else fails with one JetError naming the file and cause.
    static std::unique_ptr<Database> open(const std::string& path, Mode mode = Mode::ReadWrite);
    // Writes a new, empty Access 2000 file (with the system tables Access expects).
    static std::unique_ptr<Database> create(const std::string& path);
    ~Database();

    const std::string& path() const;
    // User tables in catalogue order; with system tables when asked.
    std::vector<std::string> tableNames(bool withSystem = false) const;
    // Without regard to case; NoSuchTable when absent.
    Table& table(std::string_view name);
    bool hasTable(std::string_view name) const;
    Table& createTable(const TableSpec& spec);

    // The sort order of the file (1033 with version 0 or 1 is Access 2000's General order).
    uint16_t sortOrder() const;
    bool generalSortOrder() const;

    // A batch: everything between begin() and commit() is one all-or-nothing commit.
    void begin();
    void commit();
    void rollback();

    // Record locks for editing (false when another process holds the row).
    bool lockRow(const Table& t, RowId id);
    void unlockRow(const Table& t, RowId id);

    Pager& pager() { return *pager_; }

private:
    Database() = default;
    void freshenCatalog();
    void reloadDefinitions();  // every open table's definition and the catalogue, in place
    struct Impl;
    std::unique_ptr<Pager> pager_;
    std::unique_ptr<Impl> impl_;
    std::map<std::string, std::unique_ptr<Table>> tables_;  // by folded name, opened on demand
    friend class Table;
};

}  // namespace jet
