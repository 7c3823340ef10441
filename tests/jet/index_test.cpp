#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <set>

#include "jet/btree.h"
#include "jet/error.h"
#include "jet/format.h"
#include "jet/pager.h"
#include "jet/support.h"
#include "jet/index_model.h"

using namespace jet;

namespace {

using indextest::Entry;
using indextest::EntryLess;
using indextest::Model;

// A file of bare index pages: page 0 unused, page 1 the root (an empty leaf of table page 7).
struct TreeFile {
    testsupport::TempDir dir;
    std::unique_ptr<Pager> pager;
    std::set<uint32_t> released;
    IndexPageSource source;
    uint32_t allocated = 0;

    TreeFile() {
        pager = Pager::create((dir / "t.mdb").string());
        pager->begin();
        pager->append();
        IndexPage root;
        root.number = pager->append();
        root.owner = 7;
        root.encode(pager->modify(root.number));
        source.allocate = [this] {
            ++allocated;
            return pager->append();
        };
        source.release = [this](uint32_t p) { released.insert(p); };
    }
    BTree tree() { return BTree(*pager, 1, 7); }

    std::vector<Entry> scan() {
        std::vector<Entry> out;
        tree().scan([&](KeyView k, RowId r) {
            out.emplace_back(Bytes(k.begin(), k.end()), r);
            return true;
        });
        return out;
    }
    std::vector<std::string> verify() {
        std::vector<std::string> problems;
        tree().verify(problems, [](KeyView, RowId) { return true; });
        return problems;
    }
    int depth() {
        int d = 1;
        for (uint32_t p = 1; pager->page(p)->bytes[0] == page::kIndexNode; ++d) {
            IndexPage pg = IndexPage::decode(pager->page(p)->data(), p, "t");
            p = pg.empty() ? pg.tail : pg.child(0);
        }
        return d;
    }
};

Bytes key(uint32_t v, size_t pad = 0, uint8_t fill = 0x41) {
    Bytes k{0x7F, uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
    k.insert(k.end(), pad, fill);
    return k;
}

}  // namespace

// Page encoding: the shared prefix, the entry bitmask, free space, and refusal of broken pages.
TEST(BTreePage, RoundTripAndMalformedPages) {
    IndexPage pg;
    pg.number = 5;
    pg.owner = 42;
    pg.prev = 3;
    pg.next = 9;
    for (uint32_t i = 0; i < 20; ++i) pg.insert(i, key(1000 + i), RowId{261, uint16_t(i)});
    Page raw;
    pg.encode(raw.data());
    EXPECT_EQ(raw.bytes[0], page::kIndexLeaf);
    EXPECT_EQ(le32(raw.data() + 4), 42u);
    EXPECT_EQ(le16(raw.data() + indexpage::kPrefix), 4u);  // 7F 00 00 03 shared by 1000..1019
    // First entry whole (9 bytes), then 5 bytes each: 9 + 19*5 = 104 bytes used.
    EXPECT_EQ(le16(raw.data() + 2), indexpage::kEntryArea - 104);
    EXPECT_EQ(raw.bytes[indexpage::kMask + 1], 0x42);  // entries end at bits 9 and 14
    IndexPage back = IndexPage::decode(raw.data(), 5, "f");
    ASSERT_EQ(back.size(), 20u);
    EXPECT_EQ(back.prev, 3u);
    EXPECT_EQ(back.next, 9u);
    for (size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(Bytes(back.key(i).begin(), back.key(i).end()), key(1000 + uint32_t(i)));
        EXPECT_EQ(back.row(i), (RowId{261, uint16_t(i)}));
    }

    // The example of the format notes: prefix 7F 00 00 00, second entry "02 00 01 05 04".
    Page ex{};
    ex.bytes.fill(0);
    ex.bytes[0] = page::kIndexLeaf;
    putLe16(ex.data() + indexpage::kPrefix, 4);
    const uint8_t entries[] = {0x7F, 0, 0, 0, 1, 0, 1, 5, 3, 0x02, 0, 1, 5, 4};
    std::memcpy(ex.data() + indexpage::kEntries, entries, sizeof entries);
    ex.bytes[indexpage::kMask + 1] = 0x02;  // bit 9
    ex.bytes[indexpage::kMask + 1] |= 0x40; // bit 14
    IndexPage exp = IndexPage::decode(ex.data(), 2, "f");
    ASSERT_EQ(exp.size(), 2u);
    EXPECT_EQ(Bytes(exp.key(1).begin(), exp.key(1).end()), key(2));
    EXPECT_EQ(exp.row(1), (RowId{261, 4}));

    auto corrupt = [](Page p) {
        try {
            IndexPage::decode(p.data(), 2, "f.mdb");
        } catch (const JetError& e) {
            return e.kind() == ErrorKind::Corrupt && std::string(e.what()).find("f.mdb") != std::string::npos;
        }
        return false;
    };
    Page bad = ex;
    bad.bytes[0] = page::kData;
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    putLe16(bad.data() + indexpage::kPrefix, 10);  // longer than the first entry
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    bad.bytes[indexpage::kMask + indexpage::kMaskBytes - 1] = 0x80;  // an entry ending past the page
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    bad.bytes[indexpage::kMask] = 0x01;  // an empty first entry
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    putLe16(bad.data() + indexpage::kPrefix, 0);
    bad.bytes[indexpage::kMask] = 0x08;  // a 3-byte entry cannot hold a row id
    EXPECT_TRUE(corrupt(bad));
}

// Random inserts and removals against a sorted model, with long keys so the tree grows several
// levels: order, seeks, tails, links and parent entries stay right, and emptied pages go back.
TEST(BTree, RandomChangesKeepTheTreeConsistent) {
    TreeFile f;
    Model model;
    std::mt19937 rng(12345);
    auto randomEntry = [&] {
        uint32_t v = rng() % 5000;
        return Entry{key(v, 40 + v % 160, uint8_t(0x41 + v % 3)), RowId{uint32_t(100 + rng() % 900), uint16_t(rng() % 200)}};
    };
    int maxDepth = 0;
    for (int round = 0; round < 6; ++round) {
        bool grow = round % 2 == 0;
        for (int i = 0; i < 1500; ++i) {
            if (grow || model.empty() || rng() % 4 == 0) {
                Entry e = randomEntry();
                EXPECT_EQ(f.tree().insert(e.first, e.second, f.source), model.insert(e).second);
            } else {
                auto it = model.begin();
                std::advance(it, rng() % model.size());
                Entry e = *it;
                model.erase(it);
                ASSERT_TRUE(f.tree().remove(e.first, e.second, f.source));
                EXPECT_FALSE(f.tree().remove(e.first, e.second, f.source));
            }
        }
        maxDepth = std::max(maxDepth, f.depth());
        ASSERT_EQ(f.verify(), std::vector<std::string>{}) << "round " << round;
        ASSERT_EQ(f.scan(), std::vector<Entry>(model.begin(), model.end()));
        // Seek: everything from the first key >= a probe.
        for (uint32_t probe : {0u, 17u, 2500u, 4999u, 6000u}) {
            Bytes k = key(probe);
            std::vector<Entry> got;
            f.tree().scanFrom(k, [&](KeyView kv, RowId r) {
                got.emplace_back(Bytes(kv.begin(), kv.end()), r);
                return got.size() < 5;
            });
            std::vector<Entry> want;
            for (auto it = model.lower_bound({k, RowId{}}); it != model.end() && want.size() < 5; ++it) want.push_back(*it);
            EXPECT_EQ(got, want) << "probe " << probe;
        }
    }
    EXPECT_GE(maxDepth, 3);
    // Emptying the tree leaves an empty leaf root and every other page released.
    for (const Entry& e : model) ASSERT_TRUE(f.tree().remove(e.first, e.second, f.source));
    EXPECT_EQ(f.verify(), std::vector<std::string>{});
    EXPECT_TRUE(f.scan().empty());
    EXPECT_EQ(f.pager->page(1)->bytes[0], page::kIndexLeaf);
    EXPECT_EQ(f.released.size(), f.allocated);
}

// Ascending appends (AutoNumber keys) and descending inserts grow the tree at its two ends; long
// runs of one key (a plain index on a repeated value) order by row id.
TEST(BTree, AppendsDescendingInsertsAndDuplicateKeys) {
    for (int mode = 0; mode < 3; ++mode) {
        TreeFile f;
        Model model;
        for (uint32_t i = 0; i < 4000; ++i) {
            Entry e = mode == 0   ? Entry{key(i), RowId{1000 + i / 50, uint16_t(i % 50)}}
                      : mode == 1 ? Entry{key(100000 - i, 20), RowId{5, 1}}
                                  : Entry{key(7, 30), RowId{500 + i % 97 * 31, uint16_t(i / 97)}};
            ASSERT_TRUE(f.tree().insert(e.first, e.second, f.source));
            model.insert(e);
        }
        EXPECT_EQ(f.verify(), std::vector<std::string>{}) << "mode " << mode;
        EXPECT_EQ(f.scan(), std::vector<Entry>(model.begin(), model.end())) << "mode " << mode;
        EXPECT_GE(f.depth(), 2);
        EXPECT_FALSE(f.tree().insert(model.begin()->first, model.begin()->second, f.source));
    }
    TreeFile f;
    try {
        f.tree().insert(Bytes(1001, 0x7F), RowId{1, 1}, f.source);
        ADD_FAILURE() << "a key too long for a page was accepted";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Invalid);
    }
}

// Reading in index order costs one read per leaf; a seek reads one page per level.
TEST(BTree, ScanReadsEachLeafOnceAndSeekOnePath) {
    TreeFile f;
    for (uint32_t i = 0; i < 30000; ++i) f.tree().insert(key(i * 7 % 30000, 60), RowId{50 + i / 100, uint16_t(i % 100)}, f.source);
    int depth = f.depth();
    ASSERT_GE(depth, 3);
    f.pager->commit();
    auto fresh = [&] { return Pager::open((f.dir / "t.mdb").string(), Pager::Mode::ReadOnly); };
    auto p = fresh();
    uint32_t leaves = 0;
    for (uint32_t n = 1; n < p->pageCount(); ++n) leaves += p->page(n)->bytes[0] == page::kIndexLeaf;
    p = fresh();
    size_t n = 0;
    BTree(*p, 1, 7).scan([&](KeyView, RowId) { return ++n, true; });
    EXPECT_EQ(n, 30000u);
    EXPECT_EQ(p->pageReads(), uint64_t(leaves + depth - 1));
    p = fresh();
    BTree(*p, 1, 7).scanFrom(key(12345), [&](KeyView k, RowId) {
        EXPECT_EQ(Bytes(k.begin(), k.end()), key(12345, 60));
        return false;
    });
    EXPECT_EQ(p->pageReads(), uint64_t(depth));
}

// A broken tree gives Corrupt errors, never a hang or a crash, and verify names the fault.
TEST(BTree, BrokenTreesAreReportedNotFollowed) {
    TreeFile f;
    for (uint32_t i = 0; i < 600; ++i) f.tree().insert(key(i, 40), RowId{9, uint16_t(i % 200)}, f.source);
    ASSERT_GE(f.depth(), 2);
    IndexPage root = IndexPage::decode(f.pager->page(1)->data(), 1, "t");
    uint32_t firstLeaf = root.child(0);
    IndexPage leaf = IndexPage::decode(f.pager->page(firstLeaf)->data(), firstLeaf, "t");

    // The leaf chain loops back to the first leaf.
    putLe32(f.pager->modify(leaf.next) + indexpage::kNext, firstLeaf);
    EXPECT_THROW(f.scan(), JetError);
    auto problems = f.verify();
    EXPECT_FALSE(problems.empty());

    // An intermediate entry points outside the file.
    TreeFile g;
    for (uint32_t i = 0; i < 600; ++i) g.tree().insert(key(i, 40), RowId{9, uint16_t(i % 200)}, g.source);
    IndexPage r = IndexPage::decode(g.pager->page(1)->data(), 1, "t");
    r.tail = 99999;
    r.encode(g.pager->modify(1));
    try {
        g.tree().insert(key(100000), RowId{1, 1}, g.source);
        ADD_FAILURE() << "no error";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Corrupt);
    }
    problems = g.verify();
    ASSERT_FALSE(problems.empty());
    EXPECT_NE(problems[0].find("99999"), std::string::npos) << problems[0];
}

// ---- Real files: Access-made indexes, indexes Jackcess wrote, and our own writes ----

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "jet/check.h"
#include "jet/database.h"
#include "jet/indexkey.h"

namespace {

const RealIndex& realOf(const TableDef& def, const LogicalIndex& l) {
    for (const auto& ri : def.realIndexes)
        if (ri.number == l.realIndex) return ri;
    throw std::runtime_error("no real index");
}

// The table's rows as the index must list them: sorted by (key, row id), all-null keys left out
// when the index ignores nulls.
std::vector<Entry> expectedEntries(Table& t, const RealIndex& ri) {
    std::vector<Entry> out;
    const TableDef& def = t.def();
    t.scan([&](RowId id, const Row& row) {
        bool allNull = true;
        for (const auto& kc : ri.columns)
            for (size_t i = 0; i < def.columns.size(); ++i)
                if (def.columns[i].number == kc.columnNumber && !isNull(row[i])) allNull = false;
        if (!(ri.ignoreNulls() && allNull)) out.emplace_back(encodeIndexKey(def, ri, row), id);
        return true;
    });
    std::sort(out.begin(), out.end(), EntryLess());
    return out;
}

std::vector<RowId> rowsOf(const std::vector<Entry>& es) {
    std::vector<RowId> out;
    for (const auto& e : es) out.push_back(e.second);
    return out;
}

// Every index of every user table reads in key order; a seek by the values of a row finds the
// rows with that key (and only them).
void expectIndexesReadInOrder(Database& db, const std::string& what) {
    for (const auto& name : db.tableNames()) {
        Table& t = db.table(name);
        for (const auto& l : t.def().logicalIndexes) {
            const RealIndex& ri = realOf(t.def(), l);
            auto want = expectedEntries(t, ri);
            EXPECT_EQ(t.indexOrder(l.name), rowsOf(want)) << what << " " << name << "." << l.name;
            if (want.empty()) continue;
            const Entry& probe = want[want.size() / 2];
            Row row = t.read(probe.second);
            std::vector<Value> key;
            for (const auto& kc : ri.columns)
                for (size_t i = 0; i < t.def().columns.size(); ++i)
                    if (t.def().columns[i].number == kc.columnNumber) key.push_back(row[i]);
            std::vector<RowId> same;
            for (const auto& e : want)
                if (e.first == probe.first) same.push_back(e.second);
            EXPECT_EQ(t.seek(l.name, key), same) << what << " " << name << "." << l.name;
        }
    }
}

}  // namespace

TEST(BTreeFiles, AccessMadeIndexesReadInKeyOrderAndCheckClean) {
    for (const char* file : {"indexTestV2000.mdb", "testV2000.mdb", "delColTestV2000.mdb", "overflowTestV2000.mdb"}) {
        auto db = Database::open((testsupport::testdata() / file).string(), Database::Mode::ReadOnly);
        EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{}) << file;
        expectIndexesReadInOrder(*db, file);
    }
    auto db = Database::open((testsupport::testdata() / "indexTestV2000.mdb").string(), Database::Mode::ReadOnly);
    Table& t = db->table(db->tableNames().front());
    EXPECT_THROW(t.indexOrder("NoSuchIndexAnywhere"), JetError);
}

// Multi-level indexes written by the reference implementation (tails, node chains): same reading.
TEST(BTreeFiles, IndexesWrittenByTheOracleReadAndCheckClean) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    testsupport::TempDir dir;
    std::string path = (dir / "r.mdb").string();
    ASSERT_EQ(testsupport::oracle({"write", path, "random", "11", "3000"}).exitCode, 0);
    auto db = Database::open(path, Database::Mode::ReadOnly);
    EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
    expectIndexesReadInOrder(*db, "random");
}

namespace {

const char* kScript =
    "new\n"
    "table\tJarmu\n"
    "column\tId\tLONG\tauto\n"
    "column\tNev\tTEXT\t60\n"
    "column\tKod\tTEXT\t20\n"
    "column\tSzam\tLONG\n"
    "column\tDatum\tSHORT_DATE_TIME\n"
    "index\tPrimaryKey\tprimary\tId\n"
    "index\tKod\tunique\tKod\n"
    "index\tNevSzam\tplain\tNev,-Szam\n"
    "index\tDatum\tplain\t-Datum\tignorenulls\n"
    "end\n";

std::string makeJarmu(const testsupport::TempDir& dir) {
    std::string script = (dir / "s.txt").string(), path = (dir / "j.mdb").string();
    std::ofstream(script) << kScript;
    auto r = testsupport::oracle({"write", path, script});
    if (r.exitCode != 0) throw std::runtime_error("oracle write: " + r.err);
    return path;
}

}  // namespace

// Thousands of inserts, updates and deletes through the table: every index stays consistent for
// the reference implementation and for our own check, and reads in key order.
TEST(BTreeWrites, ThousandsOfChangesStayConsistent) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    testsupport::TempDir dir;
    std::string path = makeJarmu(dir);
    std::mt19937 rng(2024);
    const char* words[] = {"árvíztűrő", "tükörfúrógép", "Ödön", "alma", "ALMA", "Élő", "öt", "út", "Zsófi", "kft", "Bt.", "12"};
    auto text = [&] {
        std::string s;
        for (int n = 1 + int(rng() % 5); n > 0; --n) s += std::string(s.empty() ? "" : " ") + words[rng() % 12];
        return s.substr(0, 60);
    };
    int serial = 0;
    auto randomRow = [&] {
        Row r(5);
        if (rng() % 10) r[1] = text();
        if (rng() % 20) r[2] = "K" + std::to_string(1000000 + serial++);
        if (rng() % 10) r[3] = int32_t(rng() % 200) - 100;
        if (rng() % 10) r[4] = DateTime{double(rng() % 400000) / 8.0};  // on whole milliseconds, as Access stores them
        return r;
    };
    {
        auto db = Database::open(path);
        Table& t = db->table("Jarmu");
        std::vector<RowId> live;
        for (int batch = 0; batch < 30; ++batch) {
            db->begin();
            for (int i = 0; i < 150; ++i) {
                unsigned op = rng() % 100;
                if (live.empty() || op < 60) {
                    live.push_back(t.insert(randomRow()));
                } else if (op < 80) {
                    size_t k = rng() % live.size();
                    Row r = randomRow();
                    r[0] = t.read(live[k])[0];
                    t.update(live[k], r);
                } else {
                    size_t k = rng() % live.size();
                    t.remove(live[k]);
                    live.erase(live.begin() + ptrdiff_t(k));
                }
            }
            db->commit();
        }
        EXPECT_GT(live.size(), 1500u);
        for (const auto& l : t.def().logicalIndexes)  // every index has split beyond its root
            EXPECT_EQ(db->pager().page(realOf(t.def(), l).rootPage)->bytes[0], page::kIndexNode) << l.name;
        EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
        expectIndexesReadInOrder(*db, "written");
    }
    auto r = testsupport::oracle({"check", path});
    EXPECT_EQ(r.exitCode, 0) << r.out << r.err;
    EXPECT_EQ(r.out, "OK\n");
}

// A unique index refuses a duplicate before anything is written; null keys and a row keeping its
// own key do not clash.
TEST(BTreeWrites, UniqueIndexRefusesDuplicatesBeforeWriting) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    testsupport::TempDir dir;
    std::string path = makeJarmu(dir);
    auto db = Database::open(path);
    Table& t = db->table("Jarmu");
    RowId a = t.insert({{}, std::string("Első"), std::string("K1"), int32_t(1), {}});
    RowId b = t.insert({{}, std::string("Második"), std::string("K2"), int32_t(2), {}});
    t.insert({{}, std::string("Harmadik"), Value{}, int32_t(3), {}});
    t.insert({{}, std::string("Negyedik"), Value{}, int32_t(4), {}});  // a second null Kod
    auto bytes = [&] {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    std::string before = bytes();
    try {
        t.insert({{}, std::string("Ötödik"), std::string("K1"), int32_t(5), {}});
        ADD_FAILURE() << "duplicate accepted";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Duplicate);
    }
    EXPECT_THROW(t.update(b, {int32_t(2), std::string("Második"), std::string("K1"), int32_t(2), {}}), JetError);
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(t.rowCount(), 4u);
    t.update(a, {int32_t(1), std::string("Első, átírva"), std::string("K1"), int32_t(10), {}});
    EXPECT_EQ(t.seek("Kod", {std::string("K1")}), std::vector<RowId>{a});
    EXPECT_EQ(t.seek("Kod", {Value{}}).size(), 2u);
    EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
    db.reset();
    EXPECT_EQ(testsupport::oracle({"check", path}).out, "OK\n");
}

// Damaged indexes are reported (by our check and by the reference implementation alike).
TEST(BTreeCheck, DamagedIndexesAreReported) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    testsupport::TempDir dir;
    std::string path = makeJarmu(dir);
    {
        auto db = Database::open(path);
        Table& t = db->table("Jarmu");
        db->begin();
        for (int i = 0; i < 400; ++i)
            t.insert({{}, std::string("Név ") + std::to_string(i % 37), std::string("K") + std::to_string(i), int32_t(i), {}});
        db->commit();
    }
    // Find a leaf of the primary key and point its third entry at another row.
    auto db = Database::open(path);
    const TableDef& def = db->table("Jarmu").def();
    uint32_t root = 0;
    for (const auto& l : def.logicalIndexes)
        if (l.name == "PrimaryKey") root = realOf(def, l).rootPage;
    db->pager().begin();
    uint32_t leaf = root;
    while (db->pager().page(leaf)->bytes[0] == page::kIndexNode)
        leaf = IndexPage::decode(db->pager().page(leaf)->data(), leaf, path).child(0);
    IndexPage pg = IndexPage::decode(db->pager().page(leaf)->data(), leaf, path);
    Bytes k(pg.key(2).begin(), pg.key(2).end());
    RowId r = pg.row(2);
    pg.erase(2);
    pg.insert(2, k, RowId{r.page, uint16_t(r.row + 100)});
    pg.encode(db->pager().modify(leaf));
    db->pager().commit();
    auto problems = checkDatabase(*db);
    ASSERT_FALSE(problems.empty());
    EXPECT_NE(problems[0].find("Jarmu: index PrimaryKey"), std::string::npos) << problems[0];
    db.reset();
    auto r2 = testsupport::oracle({"check", path});
    EXPECT_EQ(r2.exitCode, 1) << r2.out << r2.err;
}
