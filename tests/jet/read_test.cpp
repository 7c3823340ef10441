// Reading the Microsoft-made files: values, overflow rows, deleted columns, the command line's
// export and dump against mdbtools and the oracle, texts, refreshing definitions, scan speed.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

#include "jet/catalog.h"
#include "jet/database.h"
#include "jet/format.h"
#include "jet/header.h"
#include "jet/pager.h"
#include "jet/support.h"
#include "jet/text.h"

using namespace jet;
using namespace testsupport;

namespace {

const std::vector<std::string> kFiles = {"testV2000.mdb", "indexTestV2000.mdb", "overflowTestV2000.mdb",
                                         "delColTestV2000.mdb"};

std::vector<Row> allRows(const Table& t) {
    std::vector<Row> rows;
    t.scan([&](RowId, const Row& r) {
        rows.push_back(r);
        return true;
    });
    return rows;
}

std::string text(const Value& v) { return std::get<std::string>(v); }

}  // namespace

TEST(ReadFiles, ValuesOfEveryColumnType) {
    auto db = Database::open((testdata() / "testV2000.mdb").string(), Database::Mode::ReadOnly);
    EXPECT_EQ(db->tableNames(), (std::vector<std::string>{"Table1", "Table2", "Table3", "Table4"}));
    auto withSystem = db->tableNames(true);
    EXPECT_NE(std::find(withSystem.begin(), withSystem.end(), "MSysObjects"), withSystem.end());
    EXPECT_TRUE(db->hasTable("table1"));
    EXPECT_FALSE(db->hasTable("Table9"));
    EXPECT_EQ(db->sortOrder(), 1033);
    EXPECT_TRUE(db->generalSortOrder());

    Table& t = db->table("TABLE1");
    EXPECT_EQ(&t, &db->table("Table1"));  // one object per table, whatever the spelling
    ASSERT_EQ(t.def().columns.size(), 9u);
    EXPECT_EQ(t.def().columns[0].length, 100);  // Text(50): two bytes a character
    EXPECT_EQ(t.def().column("b")->name, "B");
    std::vector<Row> rows = allRows(t);
    ASSERT_EQ(rows.size(), 2u);
    const Row& r = rows[0];
    EXPECT_EQ(text(r[0]), "abcdefg");
    EXPECT_EQ(text(r[1]), "hijklmnop");
    EXPECT_EQ(std::get<uint8_t>(r[2]), 2);
    EXPECT_EQ(std::get<int16_t>(r[3]), 222);
    EXPECT_EQ(std::get<int32_t>(r[4]), 333333333);
    EXPECT_EQ(std::get<double>(r[5]), 444.555);
    EXPECT_EQ(std::get<DateTime>(r[6]).days, 27293.0);  // 1974-09-21
    EXPECT_EQ(std::get<Currency>(r[7]).scaled, 35000);
    EXPECT_EQ(std::get<bool>(r[8]), true);
    EXPECT_EQ(std::get<bool>(rows[1][8]), false);

    // Row ids address the same rows, whole or one column at a time.
    std::vector<RowId> ids = t.rowIds();
    ASSERT_EQ(ids.size(), 2u);
    EXPECT_EQ(t.read(ids[1]), rows[1]);
    EXPECT_EQ(t.readValue(ids[0], 1), r[1]);

    try {
        db->table("Nincs");
        FAIL();
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::NoSuchTable);
    }
    for (RowId bad : {RowId{ids[0].page, 200}, RowId{1, 0}, RowId{99999, 0}}) {
        try {
            t.read(bad);
            FAIL() << bad.page << "/" << bad.row;
        } catch (const JetError& e) {
            EXPECT_EQ(e.kind(), ErrorKind::NoSuchRow) << e.what();
        }
    }
}

TEST(ReadFiles, OverflowRowsStayAtTheirHomeSlot) {
    auto db = Database::open((testdata() / "overflowTestV2000.mdb").string(), Database::Mode::ReadOnly);
    Table& t = db->table("Table1");
    std::vector<std::string> home, stored;
    std::vector<RowId> ids;
    t.scan([&](RowId id, const Row& r) {
        ids.push_back(id);
        home.push_back(isNull(r[0]) ? text(r[1]) : text(r[0]));
        return true;
    });
    t.scanStored([&](RowId, const Row& r) {
        stored.push_back(isNull(r[0]) ? text(r[1]) : text(r[0]));
        return true;
    });
    EXPECT_EQ(home, (std::vector<std::string>{"row1col1", "row2col1", "row3col3", "row4col1", "row5col2", "row6col2",
                                              "row7col1"}));
    EXPECT_EQ(stored, (std::vector<std::string>{"row1col1", "row2col1", "row4col1", "row6col2", "row7col1", "row3col3",
                                                "row5col2"}));
    // All ids on the home page, and an overflowed row read by its id.
    for (RowId id : ids) EXPECT_EQ(id.page, ids[0].page);
    EXPECT_EQ(text(t.readValue(ids[2], 1)), "row3col3");
    EXPECT_EQ(text(t.read(ids[2])[7]), "row3col9");
}

TEST(ReadFiles, DeletedColumnsLeaveGaps) {
    auto db = Database::open((testdata() / "delColTestV2000.mdb").string(), Database::Mode::ReadOnly);
    const TableDef& def = db->table("Table1").def();
    std::vector<std::string> names;
    for (const auto& c : def.columns) names.push_back(c.name);
    EXPECT_EQ(names, (std::vector<std::string>{"id", "id2", "data", "data2"}));
    EXPECT_GT(def.maxColumns, def.columns.size());  // numbers of deleted columns stay used
    std::vector<Row> rows = allRows(db->table("Table1"));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(std::get<int32_t>(rows[1][0]), 3);
    EXPECT_EQ(std::get<int32_t>(rows[1][1]), 5);
    EXPECT_EQ(text(rows[1][3]), "bar2");
}

TEST(ReadFiles, IndexDefinitions) {
    auto db = Database::open((testdata() / "indexTestV2000.mdb").string(), Database::Mode::ReadOnly);
    const TableDef& def = db->table("Table1").def();
    std::map<std::string, const LogicalIndex*> byName;
    for (const auto& l : def.logicalIndexes) byName[l.name] = &l;
    ASSERT_TRUE(byName.count("PrimaryKey") && byName.count("Table2Table1"));
    const LogicalIndex& pk = *byName["PrimaryKey"];
    EXPECT_EQ(pk.kind, 0x01);
    const RealIndex& real = def.realIndexes.at(pk.realIndex);
    EXPECT_TRUE(real.unique());
    ASSERT_EQ(real.columns.size(), 1u);
    EXPECT_EQ(real.columns[0].columnNumber, def.column("id")->number);
    EXPECT_NE(real.rootPage, 0u);
    EXPECT_EQ(byName["Table2Table1"]->kind, 0x02);
    EXPECT_EQ(byName["Table2Table1"]->relTablePage, db->table("Table2").def().firstPage);
}

TEST(ReadCli, ExportEqualsMdbExport) {
    for (const auto& f : kFiles) {
        std::string path = (testdata() / f).string();
        CommandResult tables = cli({"jet", "tables", path});
        ASSERT_EQ(tables.exitCode, 0) << tables.err;
        EXPECT_EQ(tables.out, run({"mdb-tables", "-1", path}).out);
        std::istringstream names(tables.out);
        for (std::string t; std::getline(names, t);) {
            CommandResult ours = cli({"jet", "export", path, t});
            CommandResult theirs = run({"mdb-export", path, t});
            ASSERT_EQ(theirs.exitCode, 0) << theirs.err;
            EXPECT_EQ(ours.exitCode, 0) << ours.err;
            EXPECT_EQ(ours.out, theirs.out) << f << " " << t;
        }
    }
}

TEST(ReadCli, DumpEqualsOracle) {
    if (!oracleAvailable()) GTEST_SKIP() << "the oracle is not built";
    for (const auto& f : kFiles) {
        std::string path = (testdata() / f).string();
        CommandResult ours = cli({"jet", "dump", path});
        CommandResult theirs = oracle({"dump", path});
        ASSERT_EQ(theirs.exitCode, 0) << theirs.err;
        EXPECT_EQ(ours.exitCode, 0) << ours.err;
        EXPECT_EQ(ours.out, theirs.out) << f;
    }
}

TEST(ReadCli, DatesAtTheEdges) {
    // Stored date doubles where the conversions differ in their details: negative days with a
    // time, rounding to the millisecond or second, midnight carries, beyond the readers' ranges.
    const double values[] = {-1.25, -0.5, 0.0, 1e-9, 36526.99999999, 27293.5 + 0.0005 / 86400, 2958465.99999,
                             45000.123456789, 0.5 / 86400, -700000.3, 1000001.0, 43831.0 + 59.9995 / 86400};
    TempDir dir;
    std::string path = copyTestFile("testV2000.mdb", dir).string();
    std::vector<size_t> at;  // file offsets of the two rows' dates
    {
        auto db = Database::open(path, Database::Mode::ReadOnly);
        Table& t = db->table("Table1");
        for (RowId id : t.rowIds()) {
            PageRef p = db->pager().page(id.page);
            size_t start = le16(p->data() + 14 + 2 * id.row) & 0x1FFF;
            at.push_back(size_t(id.page) * kPageSize + start + 2 + t.def().column("G")->fixedOffset);
        }
    }
    ASSERT_EQ(at.size(), 2u);
    for (size_t i = 0; i < std::size(values); i += 2) {
        {
            std::fstream f(path, std::ios::in | std::ios::out | std::ios::binary);
            for (size_t k = 0; k < 2; ++k) {
                uint8_t b[8];
                uint64_t bits;
                std::memcpy(&bits, &values[i + k], 8);
                putLe64(b, bits);
                f.seekp(std::streamoff(at[k]));
                f.write(reinterpret_cast<const char*>(b), 8);
            }
        }
        CommandResult ours = cli({"jet", "export", path, "Table1"});
        EXPECT_EQ(ours.out, run({"mdb-export", path, "Table1"}).out) << values[i] << " " << values[i + 1];
        if (!oracleAvailable()) continue;
        ours = cli({"jet", "dump", path, "Table1"});
        CommandResult theirs = oracle({"dump", path, "Table1"});
        EXPECT_EQ(ours.out, theirs.out) << values[i] << " " << values[i + 1] << theirs.err;
    }
}

TEST(ReadCli, EveryTypeAsOthersReadIt) {
    // Decimal, Replication ID, OLE (inline, one page, chained), Memo, packed texts with quotes
    // and accents, Single, Byte: written by the engine, exported and dumped as the other readers
    // read the same file.
    TempDir dir;
    std::string path = (dir / "mix.mdb").string();
    {
        auto db = Database::create(path);
        TableSpec spec;
        spec.name = "Mix";
        spec.columns = {{"Id", ColType::Long, 0, true}, {"Dec", ColType::Numeric, 0, false, false, 18, 4},
                        {"G", ColType::Guid},           {"O", ColType::Ole},
                        {"M", ColType::Memo},           {"T", ColType::Text, 50},
                        {"F", ColType::Single},         {"B", ColType::Byte}};
        db->createTable(spec);
        Table& t = db->table("Mix");
        for (int i = 0; i < 6; ++i) {
            Decimal d;
            d.magnitude = {uint32_t(123456789u * (i + 1)), uint32_t(i), 0};
            d.negative = i % 2;
            d.scale = 4;
            Guid g;
            for (int k = 0; k < 16; ++k) g.bytes[k] = uint8_t(k * 17 + i);
            Bytes ole;
            for (int k = 0; k < (i == 3 ? 9000 : i * 7); ++k) ole.push_back(uint8_t(k * 31 + i));
            std::string memo;
            for (int k = 0; k < (i == 2 ? 3000 : i * 20); ++k) memo += k % 7 == 0 ? "ő\"x\t" : "ab";
            std::string text = i == 1 ? "Árvíztűrő \"tükör\", \\ fúrógép" : "x\ny";
            t.insert({Value{}, d, g, ole, memo, text, float(i) / 3.0f, uint8_t(250 + i % 6)});
        }
    }
    EXPECT_EQ(cli({"jet", "export", path, "Mix"}).out, run({"mdb-export", path, "Mix"}).out);
    if (oracleAvailable()) {
        EXPECT_EQ(cli({"jet", "dump", path}).out, oracle({"dump", path}).out);
    }
}

TEST(ReadCli, ErrorsAndUsage) {
    TempDir dir;
    std::string path = copyTestFile("testV2000.mdb", dir).string();
    CommandResult r = cli({"jet", "export", path, "Nincs"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "kerova jet: " + path + ": no table named Nincs\n");
    EXPECT_EQ(cli({"jet", "frobnicate", path}).exitCode, 2);
    EXPECT_EQ(cli({"jet", "export", path}).exitCode, 2);
    r = cli({"jet", "dump", path, "table3", "Table1"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out.rfind("TABLE Table1\n", 0), 0u);  // names sorted, spelled as stored
    EXPECT_NE(r.out.find("TABLE Table3\n"), std::string::npos);
    EXPECT_EQ(r.out.find("TABLE Table2\n"), std::string::npos);
}

TEST(ReadText, CompressedAndPlainRoundTrip) {
    // Each text: does compression apply, and does it come back unchanged?
    struct Case {
        std::string text;
        bool packed;
    } cases[] = {
        {"", false},
        {"abc", true},
        {"Árvíztűrő tükörfúrógép", true},  // ű and ő are wide: the mode toggles
        {"ŐŰ", false},                      // all wide: packing would not be shorter
        {"ĀĀĀ abc", false},                 // U+0100 has a zero low byte: cannot be packed
        {"emoji \xF0\x9F\x9A\x97 kocsi", true},
        {std::string("nul\0x", 5), false},
    };
    for (const auto& c : cases) {
        Bytes packed = encodeText(c.text, true);
        bool isPacked = packed.size() >= 2 && packed[0] == 0xFF && packed[1] == 0xFE;
        EXPECT_EQ(isPacked, c.packed) << c.text;
        EXPECT_EQ(decodeText(packed.data(), packed.size()), c.text);
        Bytes plain = encodeText(c.text, false);
        EXPECT_EQ(plain.size(), utf8ToUtf16(c.text).size() * 2);
        EXPECT_EQ(decodeText(plain.data(), plain.size()), c.text);
    }
    // As Access stores it: packed "ab", wide "ő" (51 01), packed "c".
    const uint8_t stored[] = {0xFF, 0xFE, 'a', 'b', 0x00, 0x51, 0x01, 0x00, 'c'};
    EXPECT_EQ(decodeText(stored, sizeof stored), "abőc");
    // Broken input never throws: a lone surrogate and an odd byte.
    const uint8_t lone[] = {0x00, 0xD8, 'a', 0, 'b'};
    EXPECT_EQ(decodeText(lone, sizeof lone), "\xEF\xBF\xBD" "a");
    EXPECT_EQ(foldCase("ÁRVÍZTŰRŐ Tükör"), "árvíztűrő tükör");
    EXPECT_TRUE(equalsFolded("Gépjármű", "GÉPJÁRMŰ"));
    EXPECT_FALSE(equalsFolded("Table1", "Table2"));
}

TEST(ReadDefinitions, RollbackAndOtherWritersRefreshThem) {
    TempDir dir;
    std::string path = copyTestFile("testV2000.mdb", dir).string();
    auto db = Database::open(path);
    Table& t = db->table("Table1");
    uint32_t rows = t.rowCount();
    db->begin();
    t.mutableDef().rowCount = 999;
    db->rollback();
    EXPECT_EQ(t.rowCount(), rows);

    // Another open of the file commits a changed row count into the definition page.
    {
        auto other = Database::open(path);
        other->begin();
        putLe32(other->pager().modify(t.def().firstPage) + tdef::kRowCount, 77);
        other->commit();
    }
    t.rowIds();  // any read operation looks again
    EXPECT_EQ(t.rowCount(), 77u);
    EXPECT_EQ(&t, &db->table("Table1"));
}

TEST(ReadSpeed, ScanOfTwoHundredThousandRows) {
    // A copy of testV2000.mdb whose Table1 owns ~3500 appended pages, each full of copies of its
    // first row, named by a reference usage map on an appended map page.
    TempDir dir;
    std::string path = copyTestFile("testV2000.mdb", dir).string();
    uint32_t tdefPage, pages;
    UsageMapRef owned;
    std::vector<uint8_t> rowBytes;
    {
        auto db = Database::open(path, Database::Mode::ReadOnly);
        Table& t = db->table("Table1");
        tdefPage = t.def().firstPage;
        owned = t.def().ownedPages;
        RowId first = t.rowIds()[0];
        PageRef p = db->pager().page(first.page);
        uint16_t start = le16(p->data() + 14) & 0x1FFF;
        rowBytes.assign(p->data() + start, p->data() + 4096);
        pages = db->pager().pageCount();
    }
    const size_t perPage = (4096 - 14) / (rowBytes.size() + 2);
    const size_t want = 200000, newPages = (want + perPage - 1) / perPage;
    std::fstream f(path, std::ios::in | std::ios::out | std::ios::binary);
    std::vector<uint8_t> pg(4096);
    size_t made = 0;
    for (size_t i = 0; i < newPages; ++i) {
        std::fill(pg.begin(), pg.end(), 0);
        pg[0] = 0x01;
        pg[1] = 0x01;
        putLe32(&pg[4], tdefPage);
        size_t n = std::min(perPage, want - made);
        putLe16(&pg[12], uint16_t(n));
        for (size_t r = 0; r < n; ++r) {
            size_t at = 4096 - (r + 1) * rowBytes.size();
            std::copy(rowBytes.begin(), rowBytes.end(), pg.begin() + at);
            putLe16(&pg[14 + 2 * r], uint16_t(at));
        }
        putLe16(&pg[2], uint16_t(4096 - n * rowBytes.size() - 14 - 2 * n));
        made += n;
        f.seekp(std::streamoff(pages + i) * 4096);
        f.write(reinterpret_cast<const char*>(pg.data()), 4096);
    }
    uint32_t mapPage = pages + uint32_t(newPages);
    std::fill(pg.begin(), pg.end(), 0);
    pg[0] = 0x05;
    pg[1] = 0x01;
    for (uint32_t p = pages; p < mapPage; ++p) pg[4 + p / 8] |= uint8_t(1 << (p % 8));
    f.seekp(std::streamoff(mapPage) * 4096);
    f.write(reinterpret_cast<const char*>(pg.data()), 4096);
    // The table's map row becomes a reference map naming that page.
    f.seekg(std::streamoff(owned.page) * 4096);
    f.read(reinterpret_cast<char*>(pg.data()), 4096);
    uint16_t start = le16(&pg[14 + 2 * owned.row]) & 0x1FFF;
    uint16_t end = owned.row == 0 ? 4096 : le16(&pg[14 + 2 * (owned.row - 1)]) & 0x1FFF;
    std::fill(pg.begin() + start, pg.begin() + end, 0);
    pg[start] = 0x01;
    putLe32(&pg[start + 1], mapPage);
    f.seekp(std::streamoff(owned.page) * 4096);
    f.write(reinterpret_cast<const char*>(pg.data()), 4096);
    f.close();

    auto db = Database::open(path, Database::Mode::ReadOnly);
    Table& t = db->table("Table1");
    size_t count = 0;
    t.scan([&](RowId, const Row&) { return ++count, true; });  // warms the cache
    ASSERT_EQ(count, want);
    uint64_t readsBefore = db->pager().pageReads();
    auto t0 = std::chrono::steady_clock::now();
    count = 0;
    size_t chars = 0;
    t.scan([&](RowId, const Row& r) {
        chars += std::get<std::string>(r[0]).size();
        return ++count, true;
    });
    double secs = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    EXPECT_EQ(count, want);
    EXPECT_EQ(chars, want * 7);
    EXPECT_EQ(db->pager().pageReads(), readsBefore);  // warm: no page read again
    EXPECT_LT(secs, 0.25) << "warm scan of " << want << " rows took " << secs << " s";
    RecordProperty("warm_scan_seconds", std::to_string(secs));
}
