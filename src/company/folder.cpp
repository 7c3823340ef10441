// init and check of a company folder, on the engine directly.
#include "company/folder.h"

#include <system_error>

#include "company/catalog.h"
#include "jet/database.h"
#include "jet/error.h"

namespace company {

namespace fs = std::filesystem;

fs::path findInFolder(const fs::path& dir, const std::vector<std::string>& spellings) {
    std::error_code ec;
    if (!fs::is_directory(dir, ec)) return {};
    std::vector<fs::path> entries;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec))
        entries.push_back(it->path());
    for (const auto& spelling : spellings)
        for (const auto& p : entries)
            if (sameName(p.filename().string(), spelling)) return p;
    return {};
}

std::vector<std::string> init(const fs::path& dir, bool sibling) {
    std::vector<std::string> done;
    fs::create_directories(dir);
    for (const DbFile* f : sibling ? siblingFiles() : companyFiles()) {
        fs::path existing = findInFolder(dir, f->spellings);
        fs::path p = existing.empty() ? dir / f->fileName : existing;
        std::unique_ptr<jet::Database> db =
            existing.empty() ? jet::Database::create(p.string()) : jet::Database::open(p.string());
        bool changed = existing.empty();
        std::vector<const Table*> missing;
        for (const auto& t : f->tables)
            if (!db->hasTable(t.name)) missing.push_back(&t);
        if (!missing.empty()) {
            // One commit for the file's tables: all of them or none.
            db->begin();
            try {
                for (const Table* t : missing) db->createTable(tableSpec(*t));
                db->commit();
            } catch (...) {
                db->rollback();
                throw;
            }
            changed = true;
        }
        if (changed) done.push_back(p.filename().string());
    }
    return done;
}

std::vector<std::string> check(const fs::path& dir, bool sibling) {
    std::vector<std::string> problems;
    for (const DbFile* f : sibling ? siblingFiles() : companyFiles()) {
        fs::path p = findInFolder(dir, f->spellings);
        if (p.empty()) {
            problems.push_back("hiányzó állomány: " + f->fileName);
            continue;
        }
        const std::string file = p.filename().string();
        try {
            auto db = jet::Database::open(p.string(), jet::Database::Mode::ReadOnly);
            for (const auto& t : f->tables) {
                if (!db->hasTable(t.name)) {
                    problems.push_back("hiányzó tábla: " + file + " / " + t.name);
                    continue;
                }
                const jet::TableDef& def = db->table(t.name).def();
                for (const auto& c : t.columns) {
                    bool has = false;
                    for (const auto& dc : def.columns) has = has || sameName(dc.name, c.name);
                    if (!has) problems.push_back("hiányzó oszlop: " + file + " / " + t.name + " / " + c.name);
                }
            }
        } catch (const std::exception& e) {
            problems.push_back("nem olvasható állomány: " + file + " (" + e.what() + ")");
        }
    }
    return problems;
}

}  // namespace company
