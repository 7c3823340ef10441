// Writing rows of a table: insert, update, delete.
//
//   TDEF page:  ... | row count (4) at 16 | last autonumber (4) at 20 | ...
//   owned-pages map:      every data page of the table
//   free-space map:       the data pages a new row may go to
//   data page slot:       | row | or | 0x4000: row (1) + page (3) of the row's data | whose slot
//                         carries 0x8000 so that scans skip it there |
//
// A row keeps its RowId for life: an update that no longer fits on its page moves the data and
// leaves an overflow pointer at home; a second move re-points home (never a chain of pointers).
// Each operation runs in the pager's transaction (nested in the caller's batch); an exception
// rolls the transaction back and restores the table definition held in memory.
#include <cstring>
#include <random>

#include "database.h"
#include "datapage.h"
#include "error.h"
#include "format.h"
#include "index.h"
#include "longvalue.h"
#include "pager.h"
#include "rowwrite.h"
#include "usagemap.h"

namespace jet {

namespace {

using namespace datapage;

// The pager's transaction around one write (nested in the caller's batch). Unless committed, the
// whole transaction is rolled back through the database, which also re-reads every open table's
// definition: counters bumped in memory (row count, autonumber) go back with the pages.
class WriteScope {
public:
    explicit WriteScope(Database& db) : db_(db) { db_.pager().begin(); }
    ~WriteScope() {
        if (done_) return;
        try {
            db_.rollback();
        } catch (...) {
            // Already failing; the pager has dropped the changes, the next access re-reads.
        }
    }
    void commit() {
        db_.pager().commit();
        done_ = true;
    }

private:
    Database& db_;
    bool done_ = false;
};

struct Located {
    RowId home;
    RowId data;
    bool moved = false;
    Bytes bytes;  // the row's stored bytes
};

[[noreturn]] void noRow(Pager& pager, const TableDef& def, RowId id) {
    fail(ErrorKind::NoSuchRow, pager.path(),
         "table " + def.name + " has no row " + std::to_string(id.page) + ":" + std::to_string(id.row));
}

bool ownDataPage(Pager& pager, const TableDef& def, uint32_t pgno) {
    if (pgno == 0 || pgno >= pager.pageCount()) return false;
    PageRef pg = pager.page(pgno);
    return pg->bytes[0] == kDataPageType && owner(pg->data()) == def.firstPage;
}

Located locate(Pager& pager, const TableDef& def, RowId id) {
    if (!ownDataPage(pager, def, id.page)) noRow(pager, def, id);
    PageRef pg = pager.page(id.page);
    if (id.row >= rowCount(pg->data())) noRow(pager, def, id);
    Slot s = slot(pg->data(), id.row, pager.path(), id.page);
    if (s.deleted) noRow(pager, def, id);
    Located at{id, id, false, {}};
    if (s.overflow) {
        at.moved = true;
        at.data = readPointer(pg->data() + s.start);
        if (!ownDataPage(pager, def, at.data.page))
            fail(ErrorKind::Corrupt, pager.path(), "table " + def.name + ": an overflow pointer leads off the table");
        pg = pager.page(at.data.page);
        s = slot(pg->data(), at.data.row, pager.path(), at.data.page);
        if (s.overflow) fail(ErrorKind::Corrupt, pager.path(), "table " + def.name + ": overflow pointers chain");
    }
    at.bytes.assign(pg->data() + s.start, pg->data() + s.end);
    return at;
}

void storeCounts(Pager& pager, const TableDef& def) {
    if (def.firstPage == 0 || def.firstPage >= pager.pageCount())
        fail(ErrorKind::Corrupt, pager.path(), "table " + def.name + " has no definition page");
    uint8_t* p = pager.modify(def.firstPage);
    if (p[0] != page::kTableDef)
        fail(ErrorKind::Corrupt, pager.path(), "table " + def.name + ": page " + std::to_string(def.firstPage) + " is not its definition");
    put32(p + tdef::kRowCount, def.rowCount);
    put32(p + tdef::kAutoNumber, def.nextAutoNumber);
}

std::optional<UsageMap> freeMap(Pager& pager, const TableDef& def) {
    if (def.freeSpacePages.page == 0) return std::nullopt;
    return UsageMap::read(pager, def.freeSpacePages);
}

// A data page of the table with room for n more bytes: the page last written, else the newest
// page of the free-space map, else a new page (then owned and listed as having free space).
uint32_t pageWithRoom(Pager& pager, TableDef& def, size_t n, uint32_t avoid = 0) {
    uint32_t hint = def.lastDataPage;
    if (hint != avoid && ownDataPage(pager, def, hint) && canAppend(pager.page(hint)->data(), n)) return hint;
    std::optional<UsageMap> fm = freeMap(pager, def);
    if (fm) {
        // Pages too full for this row leave the map (as other writers do); a delete brings them back.
        int tries = 0;
        for (auto it = fm->pages().rbegin(); it != fm->pages().rend() && tries < 4;) {
            uint32_t pg = *it++;
            if (pg == avoid || !ownDataPage(pager, def, pg)) continue;
            ++tries;
            if (canAppend(pager.page(pg)->data(), n)) {
                def.lastDataPage = pg;
                return pg;
            }
            fm->remove(pager, pg);
            it = std::make_reverse_iterator(std::upper_bound(fm->pages().begin(), fm->pages().end(), pg));
        }
    }
    uint32_t pg = pager.append();
    initDataPage(pager.modify(pg), def.firstPage);
    UsageMap::markAllocated(pager, pg);
    if (def.ownedPages.page != 0) UsageMap::read(pager, def.ownedPages).add(pager, pg);
    if (fm) fm->add(pager, pg);
    def.lastDataPage = pg;
    return pg;
}

// After rows left a page: list it as having free space again.
void regainedRoom(Pager& pager, const TableDef& def, uint32_t pg) {
    std::optional<UsageMap> fm = freeMap(pager, def);
    if (fm && !fm->contains(pg)) fm->add(pager, pg);
}

void freeLongValues(Pager& pager, TableDef& def, const Bytes& row) {
    for (const Bytes& f : longValueFields(pager.path(), def, row.data(), row.size()))
        freeLongValue(pager, def, f.data(), f.size());
}

Guid randomGuid() {
    static std::mt19937_64 gen{std::random_device{}()};
    Guid g;
    for (size_t i = 0; i < 16; i += 8) {
        uint64_t r = gen();
        std::memcpy(g.bytes.data() + i, &r, 8);
    }
    g.bytes[7] = uint8_t((g.bytes[7] & 0x0F) | 0x40);  // version 4, stored little-endian
    g.bytes[8] = uint8_t((g.bytes[8] & 0x3F) | 0x80);
    return g;
}

// Fills AutoNumber columns left null: the next number (stored back in the TDEF), or a new
// replication id. A number given explicitly moves the counter past it.
void fillAutoNumbers(TableDef& def, Row& row) {
    for (size_t i = 0; i < def.columns.size(); ++i) {
        const Column& c = def.columns[i];
        if (!c.autoNumber()) continue;
        if (c.type == ColType::Guid) {
            if (isNull(row[i])) row[i] = randomGuid();
        } else if (c.type == ColType::Long) {
            if (isNull(row[i])) {
                row[i] = int32_t(++def.nextAutoNumber);
            } else if (auto v = std::get_if<int32_t>(&row[i]); v && *v > 0 && uint32_t(*v) > def.nextAutoNumber) {
                def.nextAutoNumber = uint32_t(*v);
            }
        }
    }
}

void checkRow(Pager& pager, const TableDef& def, const Row& row) {
    if (row.size() != def.columns.size())
        fail(ErrorKind::Invalid, pager.path(), "table " + def.name + ": a row of " + std::to_string(row.size()) +
                                                   " values for " + std::to_string(def.columns.size()) + " columns");
}

}  // namespace

RowId Table::insert(Row row) {
    Pager& pager = db_.pager();
    WriteScope scope(db_);  // the write lock first, then a definition current with the file
    freshen();
    checkRow(pager, def_, row);
    fillAutoNumbers(def_, row);
    checkUniqueKeys(*this, row, std::nullopt);

    Bytes bytes = encodeRow(pager, def_, row);
    uint32_t pg = pageWithRoom(pager, def_, bytes.size());
    RowId id{pg, appendRow(pager.modify(pg), bytes.data(), bytes.size())};
    indexInsert(*this, id, row);
    ++def_.rowCount;
    storeCounts(pager, def_);
    scope.commit();
    return id;
}

void Table::update(RowId id, Row row) {
    Pager& pager = db_.pager();
    WriteScope scope(db_);  // the write lock first, then a definition current with the file
    freshen();
    checkRow(pager, def_, row);
    Located at = locate(pager, def_, id);
    // The old values matter only for the index keys and the AutoNumbers kept.
    std::vector<bool> wanted = keyColumnMask(def_);
    for (size_t i = 0; i < def_.columns.size(); ++i)
        if (def_.columns[i].autoNumber()) wanted[i] = true;
    Row old = readColumns(id, wanted);
    for (size_t i = 0; i < def_.columns.size(); ++i)
        if (def_.columns[i].autoNumber() && isNull(row[i])) row[i] = old[i];
    fillAutoNumbers(def_, row);
    checkUniqueKeys(*this, row, id, &old);

    const std::vector<bool> keep = unchangedIndexes(*this, id, old, row);
    freeLongValues(pager, def_, at.bytes);
    Bytes bytes = encodeRow(pager, def_, row);
    indexRemove(*this, id, old, keep);

    if (replaceRow(pager.modify(at.data.page), at.data.row, bytes.data(), bytes.size())) {
        if (bytes.size() < at.bytes.size()) regainedRoom(pager, def_, at.data.page);
    } else {
        // Move the data; home keeps (or gets) a pointer to it.
        uint32_t pg = pageWithRoom(pager, def_, bytes.size(), at.data.page);
        RowId dest{pg, appendRow(pager.modify(pg), bytes.data(), bytes.size())};
        addFlags(pager.modify(pg), dest.row, kDeleted);
        if (at.moved) {
            deleteRow(pager.modify(at.data.page), at.data.row);
            regainedRoom(pager, def_, at.data.page);
            uint8_t ptr[4];
            writePointer(ptr, dest);
            if (!replaceRow(pager.modify(id.page), id.row, ptr, 4))
                fail(ErrorKind::Corrupt, pager.path(), "table " + def_.name + ": cannot re-point a moved row");
        } else {
            if (!setOverflow(pager.modify(id.page), id.row, dest))
                fail(ErrorKind::Corrupt, pager.path(), "table " + def_.name + ": no room for an overflow pointer");
            regainedRoom(pager, def_, id.page);
        }
    }
    indexInsert(*this, id, row, keep);
    storeCounts(pager, def_);
    scope.commit();
}

void Table::remove(RowId id) {
    Pager& pager = db_.pager();
    WriteScope scope(db_);  // the write lock first, then a definition current with the file
    freshen();
    Located at = locate(pager, def_, id);
    Row old = readColumns(id, keyColumnMask(def_));  // the index keys are all a delete needs
    freeLongValues(pager, def_, at.bytes);
    indexRemove(*this, id, old);
    if (at.moved) {
        deleteRow(pager.modify(at.data.page), at.data.row);
        regainedRoom(pager, def_, at.data.page);
    }
    deleteRow(pager.modify(id.page), id.row);
    regainedRoom(pager, def_, id.page);
    if (def_.rowCount > 0) --def_.rowCount;
    storeCounts(pager, def_);
    scope.commit();
}

}  // namespace jet
