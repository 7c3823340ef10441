// Opening a database and reading its tables.
//
//   page 0: the header (header.h)       page 2: the catalogue's definition (catalog.h)
//   a table: its TDEF chain (tabledef.cpp) | an owned-pages usage map naming its data pages |
//            data pages whose owner field is the TDEF page, rows in slots (rowcodec.h)
//
// Tables are opened on demand and stay at one address for the Database's life; their
// definitions are read again in place when the pager's generation moves on (another process
// committed, or a rollback dropped changes).
#include <algorithm>

#include "catalog.h"
#include "database.h"
#include "datapage.h"
#include "error.h"
#include "header.h"
#include "os.h"
#include "pager.h"
#include "rowcodec.h"
#include "text.h"

namespace jet {

namespace {

using Decoders = std::unordered_map<const Table*, std::shared_ptr<const RowDecoder>>;

std::shared_ptr<const RowDecoder> decoderFor(Decoders& decoders, Pager& pager, const Table& t) {
    auto& d = decoders[&t];
    if (!d) d = std::make_shared<RowDecoder>(pager, t.def());
    return d;
}

// A live row's bytes by id; NoSuchRow when the id names no live row of the table.
RowLocation locate(Pager& pager, const TableDef& def, RowId id) {
    const std::string& file = pager.path();
    auto none = [&](const std::string& why) {
        fail(ErrorKind::NoSuchRow, file, "no row " + std::to_string(id.row) + " on page " + std::to_string(id.page) +
                                             " in table " + def.name + ": " + why);
    };
    if (id.page == 0 || id.page >= pager.pageCount()) none("the page is outside the file");
    RowLocation loc;
    loc.page = pager.page(id.page);
    const uint8_t* d = loc.page->data();
    if (d[0] != page::kData || le32(d + 4) != def.firstPage) none("the page holds no rows of this table");
    if (id.row >= datapage::rowCount(d)) none("the page has fewer rows");
    datapage::Slot s = datapage::slot(d, id.row, file, id.page);
    if (s.deleted) none("the row is deleted");
    if (s.overflow) return followOverflow(pager, d + s.start, id);
    loc.start = s.start;
    loc.end = s.end;
    loc.at = id;
    return loc;
}

}  // namespace

std::unique_ptr<Database> Database::open(const std::string& path, Mode mode) {
    // The header first, with plain reads, so that anything but an Access 2000 file gets its own
    // clear error before the pager (and its journal handling) ever looks at it.
    {
        auto f = File::open(path, File::Open::ReadOnly);
        uint64_t size = f->size();
        std::vector<uint8_t> head(size_t(std::min<uint64_t>(size, kPageSize)));
        size_t n = head.empty() ? 0 : f->readAt(0, head.data(), head.size());
        readHeader(head.data(), n, path);
        if (size % kPageSize != 0)
            fail(ErrorKind::Corrupt, path, "the file is truncated: its size (" + std::to_string(size) +
                                               " bytes) is not a whole number of pages");
        if (size < uint64_t(kCatalogPage + 1) * kPageSize)
            fail(ErrorKind::Corrupt, path, "the file is truncated: it has only " + std::to_string(size / kPageSize) + " pages");
    }
    std::unique_ptr<Database> db(new Database());
    db->pager_ = Pager::open(path, mode == Mode::ReadOnly ? Pager::Mode::ReadOnly : Pager::Mode::ReadWrite);
    db->impl_ = std::make_unique<Impl>();
    Pager& pager = *db->pager_;
    Pager::ReadLock lock(pager);
    PageRef p0 = pager.page(0);
    db->impl_->header = readHeader(p0->data(), kPageSize, path);
    db->impl_->loadCatalog(pager);
    return db;
}

Database::~Database() = default;

const std::string& Database::path() const { return pager_->path(); }

uint16_t Database::sortOrder() const { return impl_->header.sortOrder; }
bool Database::generalSortOrder() const { return impl_->header.generalSortOrder(); }

void Database::freshenCatalog() {
    if (impl_->catalogGeneration != pager_->generation()) impl_->loadCatalog(*pager_);
}

void Database::reloadDefinitions() {
    Pager::ReadLock lock(*pager_);
    impl_->loadCatalog(*pager_);
    for (auto it = tables_.begin(); it != tables_.end();) {
        Table& t = *it->second;
        impl_->decoders.erase(&t);
        const CatalogEntry* e = impl_->catalog.findTable(t.def_.name);
        if (!e || e->tdefPage() != t.def_.firstPage) {
            impl_->tableGeneration.erase(&t);
            impl_->gone.push_back(std::move(it->second));
            it = tables_.erase(it);
            continue;
        }
        t.def_ = readTableDef(*pager_, t.def_.firstPage, t.def_.name);
        impl_->tableGeneration[&t] = pager_->generation();
        ++it;
    }
}

std::vector<std::string> Database::tableNames(bool withSystem) const {
    auto& self = const_cast<Database&>(*this);
    Pager::ReadLock lock(*pager_);
    self.freshenCatalog();
    std::vector<std::string> out;
    for (const CatalogEntry* e : impl_->catalog.tables(withSystem)) out.push_back(e->name);
    return out;
}

bool Database::hasTable(std::string_view name) const {
    auto& self = const_cast<Database&>(*this);
    Pager::ReadLock lock(*pager_);
    self.freshenCatalog();
    return impl_->catalog.findTable(name) != nullptr;
}

Table& Database::table(std::string_view name) {
    Pager::ReadLock lock(*pager_);
    freshenCatalog();
    std::string key = foldCase(name);
    auto it = tables_.find(key);
    if (it != tables_.end()) {
        it->second->freshen();
        return *it->second;
    }
    const CatalogEntry* e = impl_->catalog.findTable(name);
    if (!e) fail(ErrorKind::NoSuchTable, path(), "no table named " + std::string(name));
    std::unique_ptr<Table> t(new Table(*this, readTableDef(*pager_, e->tdefPage(), e->name)));
    impl_->tableGeneration[t.get()] = pager_->generation();
    Table& ref = *t;
    tables_.emplace(std::move(key), std::move(t));
    return ref;
}

void Database::begin() { pager_->begin(); }
void Database::commit() { pager_->commit(); }
void Database::rollback() {
    pager_->rollback();
    reloadDefinitions();
}

bool Database::lockRow(const Table& t, RowId id) { return pager_->lockRow(id.page, id.row); }
void Database::unlockRow(const Table& t, RowId id) { pager_->unlockRow(id.page, id.row); }

void Table::freshen() const {
    Pager& pager = *db_.pager_;
    uint64_t gen = pager.generation();
    auto& seen = db_.impl_->tableGeneration[this];
    if (seen == gen) return;
    auto& self = const_cast<Table&>(*this);
    self.def_ = readTableDef(pager, def_.firstPage, def_.name);
    db_.impl_->decoders.erase(this);
    seen = gen;
}

void Table::scan(const std::function<bool(RowId, const Row&)>& visit) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    auto dec = decoderFor(db_.impl_->decoders, pager, *this);
    Row row;
    forEachRow(pager, def_, ownedPages(pager, def_), [&](RowId id, const uint8_t* p, size_t n) {
        dec->decode(p, n, id, row);
        return visit(id, row);
    });
}

void Table::scanColumns(const std::vector<size_t>& columns, const std::function<bool(RowId, const Row&)>& visit) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    for (size_t c : columns)
        if (c >= def_.columns.size())
            fail(ErrorKind::NoSuchColumn, pager.path(), "table " + def_.name + " has no column " + std::to_string(c));
    auto dec = decoderFor(db_.impl_->decoders, pager, *this);
    Row row;
    forEachRow(pager, def_, ownedPages(pager, def_), [&](RowId id, const uint8_t* p, size_t n) {
        dec->decodeColumns(p, n, id, columns, row);
        return visit(id, row);
    });
}

std::vector<RowId> Table::rowIds() const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    std::vector<RowId> out;
    out.reserve(plausibleRowCount(def_, pager));
    forEachRow(
        pager, def_, ownedPages(pager, def_),
        [&](RowId id, const uint8_t*, size_t) {
            out.push_back(id);
            return true;
        },
        false);
    return out;
}

void Table::scanStored(const std::function<bool(RowId, const Row&)>& visit) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    // Where each live row's bytes are; sorted by that place when any row overflowed.
    struct Item {
        RowId at, home;
    };
    std::vector<Item> items;
    bool moved = false;
    const std::string& file = pager.path();
    for (uint32_t pg : ownedPages(pager, def_)) {
        if (pg == 0 || pg >= pager.pageCount()) continue;
        PageRef p = pager.page(pg);
        const uint8_t* d = p->data();
        if (d[0] != page::kData || le32(d + 4) != def_.firstPage) continue;
        datapage::checkDataPage(d, file, pg);
        for (uint16_t r = 0, n = datapage::rowCount(d); r < n; ++r) {
            datapage::Slot s = datapage::slot(d, r, file, pg);
            if (s.deleted) continue;
            RowId home{pg, r};
            if (s.overflow) {
                items.push_back({followOverflow(pager, d + s.start, home).at, home});
                moved = true;
            } else {
                items.push_back({home, home});
            }
        }
    }
    if (moved) std::stable_sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.at < b.at; });
    auto dec = decoderFor(db_.impl_->decoders, pager, *this);
    Row row;
    for (const Item& it : items) {
        RowLocation loc = locate(pager, def_, it.home);
        dec->decode(loc.page->data() + loc.start, size_t(loc.end - loc.start), it.home, row);
        if (!visit(it.home, row)) return;
    }
}

Row Table::read(RowId id) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    RowLocation loc = locate(pager, def_, id);
    Row row;
    decoderFor(db_.impl_->decoders, pager, *this)->decode(loc.page->data() + loc.start, size_t(loc.end - loc.start), id, row);
    return row;
}

Value Table::readValue(RowId id, size_t column) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    if (column >= def_.columns.size())
        fail(ErrorKind::NoSuchColumn, pager.path(), "table " + def_.name + " has no column " + std::to_string(column));
    RowLocation loc = locate(pager, def_, id);
    return decoderFor(db_.impl_->decoders, pager, *this)->decodeOne(loc.page->data() + loc.start, size_t(loc.end - loc.start), id, column);
}

Row Table::readColumns(RowId id, const std::vector<bool>& wanted) const {
    Pager& pager = *db_.pager_;
    Pager::ReadLock lock(pager);
    freshen();
    RowLocation loc = locate(pager, def_, id);
    auto dec = decoderFor(db_.impl_->decoders, pager, *this);
    Row row(def_.columns.size());
    for (size_t i = 0; i < row.size() && i < wanted.size(); ++i)
        if (wanted[i]) row[i] = dec->decodeOne(loc.page->data() + loc.start, size_t(loc.end - loc.start), id, i);
    return row;
}

}  // namespace jet
