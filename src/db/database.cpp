#include "db/database.h"

#include <unistd.h>

#include <system_error>
#include <vector>

#include "db/recordset.h"
#include "db/sql/sql.h"
#include "db/values.h"

namespace fs = std::filesystem;

namespace db {

namespace {

fs::path startFolder() {
    std::error_code ec;
    fs::path p = fs::current_path(ec);
    return ec ? fs::path("/") : p;
}

// The working folder as the process found it at start-up.
fs::path g_folder = startFolder();

// Every file open in the process: the registry keeps them open until closeAll(); recordsets keep
// theirs alive beyond that, and an open() meanwhile finds that same object again.
struct Registry {
    std::map<fs::path, std::weak_ptr<Database>> byPath;
    std::vector<std::shared_ptr<Database>> kept;
};
Registry& registry() {
    static Registry r;
    return r;
}

// Folds a UTF-8 name for comparison: ASCII and the Latin letters of U+00C0..U+017F.
std::u32string fold(std::string_view s) {
    std::u32string out;
    for (size_t i = 0; i < s.size();) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        char32_t cp;
        size_t n = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
        if (n == 1 || i + n > s.size()) {
            cp = c;
            n = 1;
        } else {
            cp = c & (0xFF >> (n + 1));
            for (size_t k = 1; k < n; ++k) cp = (cp << 6) | (static_cast<unsigned char>(s[i + k]) & 0x3F);
        }
        if (cp >= 'A' && cp <= 'Z') cp += 32;
        else if (cp >= 0xC0 && cp <= 0xDE && cp != 0xD7) cp += 32;
        else if (cp >= 0x100 && cp <= 0x17F && cp % 2 == 0 && cp != 0x130 && cp != 0x138) cp += 1;
        out.push_back(cp);
        i += n;
    }
    return out;
}

std::optional<fs::path> findIgnoringCase(const fs::path& dir, const std::string& name) {
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) return std::nullopt;
    fs::path exact = dir / name;
    if (fs::is_regular_file(exact, ec)) return exact;
    std::u32string want = fold(name);
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
        if (fold(it->path().filename().string()) == want && fs::is_regular_file(it->path(), ec)) return it->path();
    }
    return std::nullopt;
}

// The two spellings that name one file in an installation.
std::optional<std::string> alternateSpelling(const std::string& name) {
    std::u32string f = fold(name);
    auto is = [&](const char* s) { return f == fold(s); };
    std::string stem = name.substr(0, name.size() >= 4 ? name.size() - 4 : 0);
    if (is("betarol.mdb") || is("regiszt.mdb")) return stem + ".dsb";
    if (is("betarol.dsb") || is("regiszt.dsb")) return stem + ".mdb";
    return std::nullopt;
}

fs::path fullName(std::string_view databaseName) {
    std::string n(databaseName);
    while (!n.empty() && (n.back() == ' ' || n.back() == '\t')) n.pop_back();
    size_t b = n.find_first_not_of(" \t");
    n = b == std::string::npos ? std::string() : n.substr(b);
    for (char& c : n)
        if (c == '\\') c = '/';  // names from the Path table are Windows paths
    fs::path given(n);
    return given.is_absolute() ? given : workingFolder() / given;
}

}  // namespace

fs::path workingFolder() { return g_folder; }

void setWorkingFolder(const fs::path& folder) {
    closeAll();
    std::error_code ec;
    fs::path abs = fs::absolute(folder, ec);
    g_folder = (ec ? folder : abs).lexically_normal();
}

void closeAll() {
    registry().kept.clear();
    registry().byPath.clear();
}

std::optional<fs::path> resolve(std::string_view databaseName) {
    if (databaseName.find_first_not_of(" \t") == std::string_view::npos) return std::nullopt;
    fs::path full = fullName(databaseName);
    std::string name = full.filename().string();
    if (name.empty()) return std::nullopt;
    auto found = findIgnoringCase(full.parent_path(), name);
    if (!found) {
        if (auto alt = alternateSpelling(name)) found = findIgnoringCase(full.parent_path(), *alt);
    }
    if (!found) return std::nullopt;
    std::error_code ec;
    fs::path canon = fs::canonical(*found, ec);
    return ec ? found->lexically_normal() : canon;
}

std::shared_ptr<Database> Database::open(std::string_view databaseName) {
    auto p = resolve(databaseName);
    if (!p) {
        fs::path full = fullName(databaseName);
        std::error_code ec;
        if (!full.has_parent_path() || !fs::is_directory(full.parent_path(), ec))
            throw DaoError(dao::InvalidPath, "'" + full.parent_path().string() + "' isn't a valid path.");
        throw DaoError(dao::FileNotFound, "Could not find file '" + full.string() + "'.");
    }
    Registry& r = registry();
    if (auto it = r.byPath.find(*p); it != r.byPath.end()) {
        if (auto db = it->second.lock()) {
            bool kept = false;
            for (auto& k : r.kept) kept = kept || k == db;
            if (!kept) r.kept.push_back(db);
            return db;
        }
    }
    bool readOnly = ::access(p->c_str(), W_OK) != 0;
    auto engine = translated([&] {
        return jet::Database::open(p->string(), readOnly ? jet::Database::Mode::ReadOnly : jet::Database::Mode::ReadWrite);
    });
    auto db = std::make_shared<Database>(*p, std::move(engine), readOnly);
    r.byPath[*p] = db;
    r.kept.push_back(db);
    return db;
}

Database::Database(fs::path path, std::unique_ptr<jet::Database> engine, bool readOnly)
    : path_(std::move(path)), engine_(std::move(engine)), readOnly_(readOnly) {}

// Record locks go with the file: closing it releases them.
Database::~Database() = default;

std::unique_ptr<Recordset> Database::OpenRecordset(std::string_view source, int type) {
    return std::unique_ptr<Recordset>(new Recordset(shared_from_this(), std::string(source), type));
}

size_t Database::Execute(std::string_view sql) {
    auto statement = sql::parse(sql);
    if (statement->isSelect()) throw DaoError(dao::CannotExecuteSelect, "Cannot execute a select query.");
    if (readOnly_) throw DaoError(dao::NotUpdatable, "Cannot update. Database or object is read-only.");
    jet::Table& t = table(statement->tableName());
    return translated([&] { return sql::executeUpdate(*statement, t, toColumnValue); });
}

void Database::batch(const std::function<void()>& work) {
    translated([&] { engine_->begin(); });
    try {
        work();
    } catch (...) {
        try {
            engine_->rollback();
        } catch (...) {
        }
        throw;
    }
    translated([&] { engine_->commit(); });
}

jet::Table& Database::table(std::string_view name) {
    std::string n(name);
    if (n.size() >= 2 && n.front() == '[' && n.back() == ']') n = n.substr(1, n.size() - 2);
    try {
        return engine_->table(n);
    } catch (const jet::JetError& e) {
        if (e.kind() == jet::ErrorKind::NoSuchTable)
            throw DaoError(dao::UnknownTable, "The Microsoft Jet database engine cannot find the input table or query '" +
                                                  n + "'. Make sure it exists and that its name is spelled correctly.");
        throw daoError(e);
    }
}

void Database::lockRecord(const jet::Table& t, jet::RowId id) {
    auto key = std::make_pair(t.def().firstPage, id);
    if (auto it = held_.find(key); it != held_.end()) {
        ++it->second;
        return;
    }
    bool got = translated([&] { return engine_->lockRow(t, id); });
    if (!got)
        throw DaoError(dao::RecordLocked, "Could not update; currently locked by another user.");
    held_[key] = 1;
}

void Database::unlockRecord(const jet::Table& t, jet::RowId id) {
    auto it = held_.find(std::make_pair(t.def().firstPage, id));
    if (it == held_.end()) return;
    if (--it->second > 0) return;
    held_.erase(it);
    try {
        engine_->unlockRow(t, id);
    } catch (...) {
    }
}

}  // namespace db
