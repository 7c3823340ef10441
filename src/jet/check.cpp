// The consistency check (check.h).
//
//   every user table: the row count of its definition against the rows a scan finds (Access keeps
//   the counts of its system tables loosely, so theirs are not compared)
//   every real index of every table: the rules of its pages (BTree::verify), and its entries against the keys of
//   the table's rows: the same (key, row id) pairs, so each row is found under its own key and
//   nothing else is there; a unique index has no key twice (keys of null columns excepted).
//   An index whose keys this engine cannot encode (another sort order) is checked without the
//   key comparison.
#include "check.h"

#include <algorithm>

#include "btree.h"
#include "database.h"
#include "error.h"
#include "indexkey.h"
#include "pager.h"

namespace jet {

namespace {

using Entry = std::pair<Bytes, RowId>;
constexpr size_t kPerIndex = 10;  // problems listed per index

bool entryLess(const Entry& a, const Entry& b) { return compareIndexEntries(a.first, a.second, b.first, b.second) < 0; }

std::string rowName(RowId r) { return std::to_string(r.page) + ":" + std::to_string(r.row); }

size_t nullKeyColumns(const TableDef& def, const RealIndex& ri, const Row& row) {
    size_t n = 0;
    for (const auto& kc : ri.columns) {
        bool null = true;
        for (size_t i = 0; i < def.columns.size() && i < row.size(); ++i)
            if (def.columns[i].number == kc.columnNumber) null = isNull(row[i]);
        n += null;
    }
    return n;
}

std::string indexName(const TableDef& def, const RealIndex& ri) {
    std::string out;
    for (const auto& l : def.logicalIndexes)
        if (l.realIndex == ri.number) out += (out.empty() ? "" : ", ") + l.name;
    return out.empty() ? "#" + std::to_string(ri.number) : out;
}

struct Expected {
    std::vector<Entry> keys;
    size_t rows = 0;         // rows that have an entry
    bool encodable = true;
};

void checkTable(Pager& pager, Table& table, std::vector<std::string>& problems) {
    const TableDef& def = table.def();
    std::vector<Expected> want(def.realIndexes.size());
    size_t rows = 0;
    table.scan([&](RowId id, const Row& row) {
        ++rows;
        for (size_t i = 0; i < def.realIndexes.size(); ++i) {
            const RealIndex& ri = def.realIndexes[i];
            if (ri.ignoreNulls() && nullKeyColumns(def, ri, row) == ri.columns.size()) continue;
            Expected& w = want[i];
            ++w.rows;
            if (!w.encodable) continue;
            try {
                w.keys.emplace_back(encodeIndexKey(def, ri, row), id);
            } catch (const JetError& e) {
                if (e.kind() != ErrorKind::SortOrder && e.kind() != ErrorKind::Unsupported) throw;
                w.encodable = false;
                w.keys.clear();
            }
        }
        return true;
    });
    const std::string t = def.name + ": ";
    if (!def.system && rows != def.rowCount)
        problems.push_back(t + "the definition counts " + std::to_string(def.rowCount) + " rows, the table has " + std::to_string(rows));

    for (size_t i = 0; i < def.realIndexes.size(); ++i) {
        const RealIndex& ri = def.realIndexes[i];
        const std::string x = t + "index " + indexName(def, ri) + ": ";
        std::vector<Entry> have;
        std::vector<std::string> found;
        BTree(pager, ri.rootPage, def.firstPage).verify(found, [&](KeyView k, RowId r) {
            have.emplace_back(Bytes(k.begin(), k.end()), r);
            return true;
        }, kPerIndex);
        for (auto& f : found) problems.push_back(x + f);

        Expected& w = want[i];
        if (have.size() != w.rows)
            problems.push_back(x + std::to_string(have.size()) + " entries for " + std::to_string(w.rows) + " rows");
        if (w.encodable) {
            std::sort(w.keys.begin(), w.keys.end(), entryLess);
            std::vector<Entry> sorted = have;
            std::sort(sorted.begin(), sorted.end(), entryLess);
            size_t a = 0, b = 0, listed = 0;
            while ((a < w.keys.size() || b < sorted.size()) && listed < kPerIndex) {
                if (b == sorted.size() || (a < w.keys.size() && entryLess(w.keys[a], sorted[b]))) {
                    problems.push_back(x + "row " + rowName(w.keys[a++].second) + " is not in the index under its key");
                    ++listed;
                } else if (a == w.keys.size() || entryLess(sorted[b], w.keys[a])) {
                    problems.push_back(x + "the entry for row " + rowName(sorted[b++].second) + " does not match the row");
                    ++listed;
                } else {
                    ++a, ++b;
                }
            }
        }
        bool unique = ri.unique();
        for (const auto& l : def.logicalIndexes) unique |= l.realIndex == ri.number && l.kind == 0x01;
        if (unique) {
            Bytes nullKey;
            try {
                nullKey = encodeSeekKey(def, ri, std::vector<Value>(ri.columns.size()));
            } catch (const JetError&) {
            }
            size_t listed = 0;
            for (size_t k = 1; k < have.size() && listed < kPerIndex; ++k)
                if (have[k].first == have[k - 1].first && have[k].first != nullKey) {
                    problems.push_back(x + "rows " + rowName(have[k - 1].second) + " and " + rowName(have[k].second) + " have the same key in a unique index");
                    ++listed;
                }
        }
    }
}

}  // namespace

std::vector<std::string> checkDatabase(Database& db) {
    std::vector<std::string> problems;
    for (const std::string& name : db.tableNames(true)) {
        try {
            checkTable(db.pager(), db.table(name), problems);
        } catch (const JetError& e) {
            problems.push_back(name + ": " + e.what());
        }
    }
    return problems;
}

}  // namespace jet
