// Keeping a table's indexes in step with its rows, and reading rows through an index.
//
//   TDEF page, from offset 63, 12 bytes per real index:  | ? (4) | entry count (4) | ? (4) |
//   The entry count is kept as Access keeps it: one more for every entry whose key was not in the
//   index yet, never less (so it is not the number of entries).
//   Every real index owns its pages through its own usage map; a new index page is taken from the
//   end of the file, an emptied one is wiped and leaves the index's map.
#include "index.h"

#include <cstring>

#include "btree.h"
#include "database.h"
#include "error.h"
#include "format.h"
#include "indexkey.h"
#include "pager.h"
#include "text.h"
#include "usagemap.h"

namespace jet {

namespace {

constexpr uint8_t kRequired = 0x08;

const Column* keyColumn(const TableDef& def, const RealIndex::KeyColumn& kc, size_t& position) {
    for (size_t i = 0; i < def.columns.size(); ++i)
        if (def.columns[i].number == kc.columnNumber) {
            position = i;
            return &def.columns[i];
        }
    return nullptr;
}

// How many key columns of the row are null (a missing column counts as null).
size_t nullKeyColumns(const TableDef& def, const RealIndex& ri, const Row& row) {
    size_t n = 0, pos = 0;
    for (const auto& kc : ri.columns)
        if (!keyColumn(def, kc, pos) || pos >= row.size() || isNull(row[pos])) ++n;
    return n;
}

bool isPrimaryKey(const TableDef& def, const RealIndex& ri) {
    for (const auto& l : def.logicalIndexes)
        if (l.realIndex == ri.number && l.kind == 0x01) return true;
    return false;
}

std::string indexName(const TableDef& def, const RealIndex& ri) {
    for (const auto& l : def.logicalIndexes)
        if (l.realIndex == ri.number) return l.name;
    return "#" + std::to_string(ri.number);
}

bool sameKey(KeyView a, const Bytes& b) { return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin()); }

IndexPageSource pageSource(Pager& pager, const RealIndex& ri) {
    IndexPageSource s;
    s.allocate = [&pager, ref = ri.usedPages] {
        uint32_t pg = pager.append();
        UsageMap::markAllocated(pager, pg);
        if (ref.page != 0) UsageMap::read(pager, ref).add(pager, pg);
        return pg;
    };
    s.release = [&pager, ref = ri.usedPages](uint32_t pg) {
        std::memset(pager.modify(pg), 0, kPageSize);
        if (ref.page != 0) UsageMap::read(pager, ref).remove(pager, pg);
    };
    return s;
}

BTree treeOf(Pager& pager, const TableDef& def, const RealIndex& ri) { return BTree(pager, ri.rootPage, def.firstPage); }

// One more distinct key in real index i: the count in the definition page, in place.
void countNewKey(Pager& pager, TableDef& def, size_t i) {
    size_t off = tdef::kRealIndexBlock + i * tdef::kRealIndexCountSize + 4;
    if (off + 4 > kPageSize) return;
    uint8_t* p = pager.modify(def.firstPage);
    if (p[0] != page::kTableDef)
        fail(ErrorKind::Corrupt, pager.path(), "table " + def.name + ": page " + std::to_string(def.firstPage) + " is not its definition");
    uint32_t n = le32(p + off) + 1;
    putLe32(p + off, n);
    def.realIndexes[i].rowCount = n;
}

const RealIndex& realIndexNamed(const TableDef& def, std::string_view name, const std::string& file) {
    for (const auto& l : def.logicalIndexes)
        if (equalsFolded(l.name, name))
            for (const auto& ri : def.realIndexes)
                if (ri.number == l.realIndex) return ri;
    fail(ErrorKind::NoSuchIndex, file, "table " + def.name + " has no index " + std::string(name));
}

// Whether both rows hold the same values in every key column of the index.
bool sameKeyValues(const TableDef& def, const RealIndex& ri, const Row& a, const Row& b) {
    size_t pos = 0;
    for (const auto& kc : ri.columns) {
        if (!keyColumn(def, kc, pos)) continue;
        const Value none;
        if ((pos < a.size() ? a[pos] : none) != (pos < b.size() ? b[pos] : none)) return false;
    }
    return true;
}

}  // namespace

void checkUniqueKeys(Table& table, const Row& row, std::optional<RowId> self, const Row* old) {
    const TableDef& def = table.def();
    Pager& pager = table.database().pager();
    for (const RealIndex& ri : def.realIndexes) {
        bool pk = isPrimaryKey(def, ri);
        size_t nulls = nullKeyColumns(def, ri, row);
        if ((pk || (ri.flags & kRequired)) && nulls)
            fail(ErrorKind::Invalid, pager.path(), "table " + def.name + ": index " + indexName(def, ri) + " does not allow an empty key column");
        if (!(pk || ri.unique()) || nulls == ri.columns.size()) continue;  // null keys never clash
        if (self && old && sameKeyValues(def, ri, *old, row)) continue;  // the row keeps its own key
        Bytes key = encodeIndexKey(def, ri, row);
        bool clash = false;
        treeOf(pager, def, ri).scanFrom(key, [&](KeyView k, RowId r) {
            if (!sameKey(k, key)) return false;
            if (self && r == *self) return true;
            clash = true;
            return false;
        });
        if (clash)
            fail(ErrorKind::Duplicate, pager.path(), "table " + def.name + ": index " + indexName(def, ri) + " already has this key");
    }
}

namespace {
// A row's key in one real index; nothing when the index leaves the row out (every key column null
// in an index that ignores nulls).
std::optional<Bytes> entryKey(const TableDef& def, const RealIndex& ri, const Row& row) {
    if (ri.ignoreNulls() && nullKeyColumns(def, ri, row) == ri.columns.size()) return std::nullopt;
    return encodeIndexKey(def, ri, row);
}
bool skipped(const std::vector<bool>& skip, size_t i) { return i < skip.size() && skip[i]; }

}  // namespace

std::vector<bool> unchangedIndexes(Table& table, RowId id, const Row& old, const Row& row) {
    const TableDef& def = table.def();
    Pager& pager = table.database().pager();
    std::vector<bool> out(def.realIndexes.size(), false);
    for (size_t i = 0; i < def.realIndexes.size(); ++i) {
        const RealIndex& ri = def.realIndexes[i];
        if (!sameKeyValues(def, ri, old, row)) continue;
        std::optional<Bytes> before;
        try {
            before = entryKey(def, ri, old);
        } catch (const JetError& e) {
            // A key in an order we do not write (a file of another sort order): the entry stays
            // as it is, untouched, since its values did not change.
            if (e.kind() != ErrorKind::SortOrder) throw;
            out[i] = true;
            continue;
        }
        out[i] = !before || treeOf(pager, def, ri).contains(*before, id);
    }
    return out;
}

// Calls f(i, index, key) for every real index not skipped whose entry the row has.
template <class F>
void forEachEntryKey(const TableDef& def, const Row& row, const std::vector<bool>& skip, F&& f) {
    for (size_t i = 0; i < def.realIndexes.size(); ++i) {
        const RealIndex& ri = def.realIndexes[i];
        if (skipped(skip, i)) continue;
        if (std::optional<Bytes> key = entryKey(def, ri, row)) f(i, ri, *key);
    }
}

void indexInsert(Table& table, RowId id, const Row& row, const std::vector<bool>& skip) {
    TableDef& def = table.mutableDef();
    Pager& pager = table.database().pager();
    forEachEntryKey(def, row, skip, [&](size_t i, const RealIndex& ri, const Bytes& key) {
        bool known = false;
        if (treeOf(pager, def, ri).insert(key, id, pageSource(pager, ri), &known) && !known) countNewKey(pager, def, i);
    });
}

std::vector<bool> keyColumnMask(const TableDef& def) {
    std::vector<bool> out(def.columns.size(), false);
    for (const RealIndex& ri : def.realIndexes)
        for (const auto& kc : ri.columns) {
            size_t pos = 0;
            if (keyColumn(def, kc, pos)) out[pos] = true;
        }
    return out;
}

void indexRemove(Table& table, RowId id, const Row& row, const std::vector<bool>& skip) {
    TableDef& def = table.mutableDef();
    Pager& pager = table.database().pager();
    forEachEntryKey(def, row, skip, [&](size_t, const RealIndex& ri, const Bytes& key) {
        BTree tree = treeOf(pager, def, ri);
        if (tree.remove(key, id, pageSource(pager, ri))) return;
        // Not under the row's key (an entry written from other values): find it by its row id.
        Bytes found;
        bool hit = false;
        tree.scan([&](KeyView k, RowId r) {
            if (r != id) return true;
            found.assign(k.begin(), k.end());
            hit = true;
            return false;
        });
        if (hit) tree.remove(found, id, pageSource(pager, ri));
    });
}

std::vector<RowId> Table::indexOrder(std::string_view indexName) const {
    Pager& pager = db_.pager();
    Pager::ReadLock lock(pager);
    freshen();
    const RealIndex& ri = realIndexNamed(def_, indexName, pager.path());
    std::vector<RowId> out;
    out.reserve(plausibleRowCount(def_, pager));
    treeOf(pager, def_, ri).scan([&](KeyView, RowId r) {
        out.push_back(r);
        return true;
    });
    return out;
}

std::vector<RowId> Table::seek(std::string_view indexName, const std::vector<Value>& key) const {
    Pager& pager = db_.pager();
    Pager::ReadLock lock(pager);
    freshen();
    const RealIndex& ri = realIndexNamed(def_, indexName, pager.path());
    Bytes k = encodeSeekKey(def_, ri, key);
    std::vector<RowId> out;
    treeOf(pager, def_, ri).scanFrom(k, [&](KeyView e, RowId r) {
        if (e.size() < k.size() || !std::equal(k.begin(), k.end(), e.begin())) return false;
        out.push_back(r);
        return true;
    });
    return out;
}

}  // namespace jet
