// The record layer's Database: one per physical file in the process, shared by every Recordset
// on that file, so that record locks and the engine's page cache live in one place.
//
// A database name resolves against the working folder (the process's current directory at
// start-up, settable for tests): a relative name is looked up there, an absolute one as it is;
// backslashes are folder separators; the file name matches without regard to case, and
// regiszt/betarol .mdb and .dsb stand for each other when only one of them exists.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "db/error.h"
#include "jet/database.h"

namespace db {

class Recordset;

// DAO's recordset types.
inline constexpr int dbOpenTable = 1;
inline constexpr int dbOpenDynaset = 2;
inline constexpr int dbOpenSnapshot = 4;

// The folder relative names resolve against.
std::filesystem::path workingFolder();
// Sets it; the files of the old folder stay open only while recordsets still use them.
void setWorkingFolder(const std::filesystem::path& folder);
// Forgets every open file (a file stays open while a recordset of it lives).
void closeAll();
// The existing file a name resolves to, or nothing.
std::optional<std::filesystem::path> resolve(std::string_view databaseName);

class Database : public std::enable_shared_from_this<Database> {
public:
    // The open database a name resolves to, opened read-write (read-only when the file is not
    // writable). 3024 when no such file, 3044 when its folder doesn't exist, the engine's
    // error (3343 unrecognized format, ...) when it can't be opened.
    static std::shared_ptr<Database> open(std::string_view databaseName);

    const std::filesystem::path& path() const { return path_; }
    bool readOnly() const { return readOnly_; }

    // A new Recordset on a table name or a SELECT statement. A statement with DISTINCT, an
    // aggregate or a column list without '*' is a read-only snapshot; otherwise a dynaset
    // (dbOpenSnapshot makes it read-only too).
    std::unique_ptr<Recordset> OpenRecordset(std::string_view source, int type = dbOpenDynaset);

    // Runs an UPDATE at once (3065 for a SELECT); every new value is computed and converted
    // before the first row is written, so a failing statement changes nothing. Returns the count
    // of rows changed.
    size_t Execute(std::string_view sql);

    // Runs `work` as one engine batch (one commit at its end; nothing of it stays on failure).
    void batch(const std::function<void()>& work);

    // A table by name without regard to case; 3078 when absent.
    jet::Table& table(std::string_view name);
    jet::Database& engine() { return *engine_; }

    // The record lock of Edit and Delete. Re-entrant within the process (its own recordsets do
    // not lock each other out); another process holding it raises 3260.
    void lockRecord(const jet::Table& t, jet::RowId id);
    void unlockRecord(const jet::Table& t, jet::RowId id);

    Database(std::filesystem::path path, std::unique_ptr<jet::Database> engine, bool readOnly);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

private:
    std::filesystem::path path_;
    std::unique_ptr<jet::Database> engine_;
    bool readOnly_;
    std::map<std::pair<uint32_t, jet::RowId>, int> held_;  // (table's first page, row) -> depth
};

}  // namespace db
