// Writing rows: page slots, long values, usage maps, and whole tables checked against the oracle.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <map>
#include <random>

#include "jet/database.h"
#include "jet/datapage.h"
#include "jet/error.h"
#include "jet/longvalue.h"
#include "jet/pager.h"
#include "jet/usagemap.h"
#include "jet/support.h"

using namespace jet;
namespace dp = jet::datapage;
using testsupport::readFile;
using testsupport::TempDir;

namespace {

// Every slot's bytes (empty for deleted ones), in slot order.
std::vector<Bytes> slots(const uint8_t* page) {
    std::vector<Bytes> out;
    for (uint16_t r = 0; r < dp::rowCount(page); ++r) {
        dp::Slot s = dp::slot(page, r, "t", 9);
        out.push_back(s.deleted && s.overflow ? Bytes{} : Bytes(page + s.start, page + s.end));
    }
    return out;
}

// The header's free space is exactly the gap between the slot table and the lowest row.
void expectTight(const uint8_t* page) {
    uint16_t n = dp::rowCount(page);
    size_t low = n ? (dp::get16(page + 14 + 2 * (n - 1)) & 0x1FFF) : kPageSize;
    EXPECT_EQ(dp::freeSpace(page), low - (14 + 2 * n));
}

Bytes filled(size_t n, uint8_t seed) {
    Bytes b(n);
    for (size_t i = 0; i < n; ++i) b[i] = uint8_t(seed + i * 7);
    return b;
}

}  // namespace

TEST(WriteDataPage, SlotsKeepTheirNumbersThroughGrowthShrinkDeleteAndCompaction) {
    Page page;
    uint8_t* p = page.data();
    dp::initDataPage(p, 77);
    EXPECT_EQ(dp::freeSpace(p), 4082);
    EXPECT_EQ(dp::owner(p), 77u);

    std::vector<Bytes> want;
    for (int i = 0; i < 5; ++i) {
        want.push_back(filled(100 + i, uint8_t(i)));
        ASSERT_EQ(dp::appendRow(p, want.back().data(), want.back().size()), i);
    }
    expectTight(p);
    EXPECT_EQ(dp::freeSpace(p), 4082 - 5 * 2 - (100 + 101 + 102 + 103 + 104));

    // Grow a middle row, shrink the first, same size in place: neighbours stay intact.
    want[2] = filled(900, 50);
    ASSERT_TRUE(dp::replaceRow(p, 2, want[2].data(), want[2].size()));
    want[0] = filled(3, 60);
    ASSERT_TRUE(dp::replaceRow(p, 0, want[0].data(), want[0].size()));
    want[4] = filled(104, 70);
    ASSERT_TRUE(dp::replaceRow(p, 4, want[4].data(), want[4].size()));
    EXPECT_EQ(slots(p), want);
    expectTight(p);

    // Too big: refused, page unchanged.
    Bytes huge = filled(4000, 1);
    EXPECT_FALSE(dp::replaceRow(p, 1, huge.data(), huge.size()));
    EXPECT_EQ(slots(p), want);

    // Delete: Access's flags only; the bytes stay until the page is compacted, which gives the
    // room back.
    size_t before = dp::freeSpace(p);
    dp::deleteRow(p, 1);
    want[1].clear();
    EXPECT_EQ(slots(p), want);
    EXPECT_EQ(dp::freeSpace(p), before);
    EXPECT_EQ(dp::get16(p + 14 + 2) & 0xC000, 0xC000);
    dp::compact(p);
    EXPECT_EQ(slots(p), want);
    EXPECT_EQ(dp::freeSpace(p), before + 101);
    expectTight(p);

    // Overflow pointer: 4 bytes, flag set, a moved row's data keeps its 0x8000 flag on update.
    ASSERT_TRUE(dp::setOverflow(p, 3, RowId{12345, 7}));
    dp::Slot s = dp::slot(p, 3, "t", 9);
    EXPECT_TRUE(s.overflow);
    EXPECT_FALSE(s.deleted);
    EXPECT_EQ(dp::readPointer(p + s.start), (RowId{12345, 7}));
    dp::addFlags(p, 4, dp::kDeleted);
    Bytes moved = filled(300, 9);
    ASSERT_TRUE(dp::replaceRow(p, 4, moved.data(), moved.size()));
    s = dp::slot(p, 4, "t", 9);
    EXPECT_TRUE(s.deleted && !s.overflow);
    EXPECT_EQ(Bytes(p + s.start, p + s.end), moved);

    // Fill up: canAppend agrees with appendRow up to the last byte and the 255-row limit.
    Page small;
    dp::initDataPage(small.data(), 1);
    int rows = 0;
    Bytes one = filled(30, 3);
    while (dp::canAppend(small.data(), one.size())) {
        dp::appendRow(small.data(), one.data(), one.size());
        ++rows;
    }
    EXPECT_EQ(rows, 4082 / 32);
    expectTight(small.data());
    // Deleting frees room that canAppend counts; appendRow compacts to use it.
    EXPECT_FALSE(dp::canAppend(small.data(), 30));
    dp::deleteRow(small.data(), 10);
    ASSERT_TRUE(dp::canAppend(small.data(), 30));
    EXPECT_EQ(dp::appendRow(small.data(), one.data(), one.size()), rows);
    expectTight(small.data());

    Page many;
    dp::initDataPage(many.data(), 1);
    for (int i = 0; i < 255; ++i) dp::appendRow(many.data(), one.data(), 1);
    EXPECT_FALSE(dp::canAppend(many.data(), 1));

    // A slot pointing outside the page or into the slot table is Corrupt, never read.
    Page bad = page;
    dp::put16(bad.data() + 14, 0x0005);
    EXPECT_THROW(dp::slot(bad.data(), 0, "t", 9), JetError);
    EXPECT_THROW(dp::slot(p, 200, "t", 9), JetError);
}

namespace {

// A writable copy of a Microsoft-made file and a pager in a transaction on it.
struct Scratch {
    TempDir dir;
    std::string path;
    std::unique_ptr<Pager> pager;
    explicit Scratch(const std::string& name = "testV2000.mdb") {
        path = testsupport::copyTestFile(name, dir).string();
        pager = Pager::open(path, Pager::Mode::ReadWrite);
        pager->begin();
    }
};

}  // namespace

TEST(WriteLongValue, InlineOneRowAndChainedRoundTripAndFree) {
    Scratch s;
    Pager& pager = *s.pager;
    TableDef def;
    def.name = "T";
    uint32_t pagesBefore = pager.pageCount();

    struct Case { size_t size; size_t room; uint8_t kind; };
    // kind: top bits of the field's 4th byte (0x80 inline, 0x40 one row, 0 chained)
    std::vector<Case> cases = {{0, 4000, 0x80},   {64, 4000, 0x80},  {64, 70, 0x40},  {65, 4000, 0x40},
                               {4076, 4000, 0x40}, {4077, 4000, 0x00}, {3 * 4072, 100, 0x00},
                               {20000, 100, 0x00}};
    std::vector<Bytes> fields;
    for (const Case& c : cases) {
        Bytes data = filled(c.size, uint8_t(c.size));
        Bytes f = writeLongValue(pager, def, data, c.room);
        ASSERT_GE(f.size(), 12u);
        EXPECT_EQ(f[3] & 0xC0, c.kind) << c.size;
        EXPECT_EQ(dp::get24(f.data()), c.size);
        EXPECT_EQ(readLongValue(pager, f.data(), f.size()), data) << c.size;
        fields.push_back(f);
    }
    // Small values share LVAL pages; a 20000-byte value takes five chained rows.
    EXPECT_LE(pager.pageCount() - pagesBefore, 14u);
    uint32_t lval = dp::readPointer(fields[3].data() + 4).page;
    EXPECT_TRUE(dp::isLvalPage(pager.page(lval)->data()));

    // Freed: the rows are gone (a read now fails); the room comes back when the page is compacted.
    size_t freeBefore = dp::freeSpace(pager.page(lval)->data());
    freeLongValue(pager, def, fields[3].data(), fields[3].size());
    dp::compact(pager.modify(lval));
    EXPECT_EQ(dp::freeSpace(pager.page(lval)->data()), freeBefore + 65);
    EXPECT_THROW(readLongValue(pager, fields[3].data(), fields[3].size()), JetError);
    freeLongValue(pager, def, fields[7].data(), fields[7].size());
    EXPECT_THROW(readLongValue(pager, fields[7].data(), fields[7].size()), JetError);
    // Other values are untouched.
    EXPECT_EQ(readLongValue(pager, fields[5].data(), fields[5].size()), filled(4077, uint8_t(4077)));
}

TEST(WriteLongValue, BrokenFieldsAndChainsAreCorruptNotCrashes) {
    Scratch s;
    Pager& pager = *s.pager;
    TableDef def;
    Bytes f = writeLongValue(pager, def, filled(9000, 1), 0);  // chained over 3 rows
    RowId first = dp::readPointer(f.data() + 4);

    auto corrupt = [&](const Bytes& field) {
        try {
            readLongValue(pager, field.data(), field.size());
            ADD_FAILURE() << "no error";
        } catch (const JetError& e) {
            EXPECT_EQ(e.kind(), ErrorKind::Corrupt);
        }
    };
    corrupt(Bytes(8, 0));                                     // too short a field
    Bytes inl = {20, 0, 0, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 1};  // inline length beyond the field
    corrupt(inl);
    Bytes far = f;
    dp::put24(far.data() + 5, 0xFFFFFF);                      // a page outside the file
    corrupt(far);
    Bytes huge = f;
    dp::put24(huge.data(), 0x3FFFFF);  // longer than the chain holds: it ends early
    corrupt(huge);
    // A loop: the first row points at itself.
    uint8_t* p = pager.modify(first.page);
    dp::Slot sl = dp::slot(p, first.row, "t", first.page);
    dp::writePointer(p + sl.start, first);
    corrupt(f);
}

TEST(WriteUsageMap, AddRemoveSlidesTheInlineMapAndBecomesAReferenceMap) {
    Scratch s;
    Pager& pager = *s.pager;
    // Table T's maps of the file (TDEF page 2 is the catalogue; its owned map is inline).
    PageRef tdef = pager.page(2);
    UsageMapRef ref{dp::get24(tdef->data() + 56), tdef->bytes[55]};
    UsageMap m = UsageMap::read(pager, ref);
    std::vector<uint32_t> want = m.pages();
    ASSERT_FALSE(want.empty());

    auto add = [&](uint32_t pg) {
        m.add(pager, pg);
        want.insert(std::lower_bound(want.begin(), want.end(), pg), pg);
    };
    add(want.back() + 3);
    add(want.back() + 400);      // past the inline window: the start slides
    EXPECT_EQ(UsageMap::read(pager, ref).pages(), want);
    m.remove(pager, want.front());
    want.erase(want.begin());
    EXPECT_EQ(UsageMap::read(pager, ref).pages(), want);
    add(70000);                  // no inline window holds it: map pages
    add(40000);
    UsageMap back = UsageMap::read(pager, ref);
    EXPECT_EQ(back.pages(), want);
    EXPECT_TRUE(back.contains(40000));
    EXPECT_FALSE(back.contains(40001));
    m.remove(pager, 40000);
    want.erase(std::find(want.begin(), want.end(), 40000u));
    EXPECT_EQ(UsageMap::read(pager, ref).pages(), want);

    // A map reference to a deleted slot or outside the file is Corrupt.
    EXPECT_THROW(UsageMap::read(pager, UsageMapRef{pager.pageCount() + 5, 0}), JetError);
    EXPECT_THROW(UsageMap::read(pager, UsageMapRef{ref.page, 250}), JetError);
}

// ---- Whole tables, against the oracle ----

namespace {

const char* kSchema =
    "new\n"
    "table\tT\n"
    "column\tid\tLONG\tauto\n"
    "column\tname\tTEXT\t60\n"
    "column\tnote\tMEMO\n"
    "column\tflag\tBOOLEAN\n"
    "column\tamount\tMONEY\n"
    "column\tratio\tDOUBLE\n"
    "column\twhen\tSHORT_DATE_TIME\n"
    "column\tsmall\tINT\n"
    "column\ttiny\tBYTE\n"
    "column\tpic\tOLE\n"
    "column\tcode\tTEXT\t10\tnocompress\n"
    "column\tdec\tNUMERIC\t18\t4\n"
    "index\tPrimaryKey\tprimary\tid\n"
    "index\tbyName\tplain\tname,-small\n"
    "end\n";

enum Col { Id, Name, Note, Flag, Amount, Ratio, When, Small, Tiny, Pic, Code, Dec };

std::string makeOracleFile(const TempDir& dir, const std::string& name) {
    std::string path = (dir / name).string();
    std::string script = (dir / (name + ".script")).string();
    std::ofstream(script) << kSchema;
    auto r = testsupport::oracle({"write", path, script});
    EXPECT_EQ(r.exitCode, 0) << r.err;
    return path;
}

struct RandomRows {
    std::mt19937 gen;
    explicit RandomRows(unsigned seed) : gen(seed) {}
    int pick(int n) { return int(gen() % unsigned(n)); }

    std::string text(size_t maxChars) {
        static const char* parts[] = {"á", "é", "í", "ó", "ö", "ő", "ú", "ü", "ű", "Ő", "Ű", "a", "b", "z",
                                      " ", "x", "Q", "1", "\t", "\\"};
        std::string s;
        size_t n = size_t(pick(int(maxChars) + 1));
        for (size_t i = 0; i < n; ++i) s += parts[pick(20)];
        return s;
    }
    std::string memo() {
        switch (pick(5)) {
        case 0: return "";
        case 1: return text(20);                         // inline
        case 2: return text(900);                        // one LVAL row
        case 3: return std::string(size_t(3000 + pick(9000)), char('a' + pick(26)));  // chained
        default: return text(3000);                      // over 1024 characters: stored plain
        }
    }
    Value maybe(Value v) { return pick(6) == 0 ? Value{} : v; }
    Row row() {
        Row r(12);
        r[Name] = maybe(text(60));
        r[Note] = maybe(memo());
        r[Flag] = pick(2) == 0;
        r[Amount] = maybe(Currency{int64_t(pick(2000000)) - 1000000});
        r[Ratio] = maybe(double(pick(100000)) / 7.0);
        r[When] = maybe(DateTime{double(30000 + pick(20000)) + pick(1440) / 1440.0});
        r[Small] = maybe(int16_t(pick(65536) - 32768));
        r[Tiny] = maybe(uint8_t(pick(256)));
        r[Pic] = maybe(pick(3) == 0 ? filled(size_t(pick(9000)), uint8_t(pick(256))) : filled(size_t(pick(40)), 1));
        r[Code] = maybe(std::string(size_t(pick(11)), char('A' + pick(26))));
        Decimal d;
        d.magnitude[0] = uint32_t(gen());
        d.magnitude[1] = uint32_t(pick(1000));
        d.negative = pick(2) == 0;
        d.scale = 4;
        r[Dec] = maybe(Value{d});
        return r;
    }
};

// Our dump and the oracle's agree, and the oracle finds the file consistent.
void expectSameAsOracle(const std::string& path) {
    auto ours = testsupport::cli({"jet", "dump", path});
    auto theirs = testsupport::oracle({"dump", path});
    ASSERT_EQ(ours.exitCode, 0) << ours.err;
    ASSERT_EQ(theirs.exitCode, 0) << theirs.err;
    EXPECT_EQ(ours.out, theirs.out);
    auto check = testsupport::oracle({"check", path});
    EXPECT_EQ(check.exitCode, 0) << check.out << check.err;
}

}  // namespace

TEST(WriteTable, RandomInsertsUpdatesDeletesMatchTheOracle) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    TempDir dir;
    std::string path = makeOracleFile(dir, "w.mdb");
    RandomRows rnd(20240611);
    std::map<RowId, Row> model;
    int32_t lastId = 0;
    for (int batch = 0; batch < 4; ++batch) {
        {
            auto db = Database::open(path);
            Table& t = db->table("T");
            db->begin();
            for (int op = 0; op < 150; ++op) {
                int what = model.size() < 20 ? 0 : rnd.pick(10);
                if (what < 5) {
                    Row r = rnd.row();
                    RowId id = t.insert(r);
                    r[Id] = ++lastId;  // the autonumber continues from the TDEF
                    model[id] = r;
                } else {
                    auto it = std::next(model.begin(), rnd.pick(int(model.size())));
                    if (what < 8) {
                        Row r = rnd.row();
                        if (what == 7) r[Note] = std::string(size_t(5000), 'g');  // grows: may move
                        if (what == 6) r[Name] = std::string(60, 'W');
                        t.update(it->first, r);
                        r[Id] = it->second[Id];
                        it->second = r;
                    } else {
                        t.remove(it->first);
                        model.erase(it);
                    }
                }
            }
            db->commit();
            // Every row reads back at its RowId, moved or not.
            for (const auto& [id, row] : model) ASSERT_EQ(t.read(id), row) << id.page << ":" << id.row;
            EXPECT_EQ(t.rowCount(), model.size());
            size_t seen = 0;
            t.scan([&](RowId id, const Row&) { seen += model.count(id); return true; });
            EXPECT_EQ(seen, model.size());
        }
        expectSameAsOracle(path);
    }
    // mdb-export reads every row too (header + one line per row at least).
    auto exp = testsupport::run({"mdb-export", path, "T"});
    ASSERT_EQ(exp.exitCode, 0) << exp.err;
    EXPECT_GE(size_t(std::count(exp.out.begin(), exp.out.end(), '\n')), model.size() + 1);
    // The oracle's own next insert continues the autonumber after ours.
    std::string script = (dir / "more.script").string();
    std::ofstream(script) << "open\ninsert\tT\t0\tafter\t\\N\t0\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\t\\N\n";
    ASSERT_EQ(testsupport::oracle({"write", path, script}).exitCode, 0);
    auto db = Database::open(path, Database::Mode::ReadOnly);
    bool found = false;
    db->table("T").scan([&](RowId, const Row& r) {
        if (r[Name] == Value{std::string("after")}) {
            found = true;
            EXPECT_EQ(r[Id], Value{int32_t(lastId + 1)});
        }
        return true;
    });
    EXPECT_TRUE(found);
}

TEST(WriteTable, ThousandsOfRowsInOneBatchAndOnAMicrosoftFile) {
    if (!testsupport::oracleAvailable()) GTEST_SKIP() << "no oracle";
    TempDir dir;
    std::string path = makeOracleFile(dir, "big.mdb");
    {
        auto db = Database::open(path);
        Table& t = db->table("T");
        RandomRows rnd(7);
        db->begin();
        for (int i = 0; i < 4000; ++i) {
            Row r(12);
            r[Name] = "sor " + std::to_string(i) + " árvíztűrő tükörfúrógép";
            r[Flag] = i % 3 == 0;
            r[Small] = int16_t(i);
            t.insert(r);
        }
        db->commit();
        EXPECT_EQ(t.rowCount(), 4000u);
        // The data pages are all owned, and the scan lists them in insertion order.
        int32_t expect = 1;
        t.scan([&](RowId, const Row& r) { EXPECT_EQ(r[Id], Value{expect++}); return true; });
        EXPECT_EQ(expect, 4001);
    }
    expectSameAsOracle(path);

    // The same kinds of writes on a file Access made (compressed texts, its own page layout).
    std::string ms = testsupport::copyTestFile("overflowTestV2000.mdb", dir).string();
    {
        auto db = Database::open(ms);
        for (const std::string& name : db->tableNames()) {
            Table& t = db->table(name);
            std::vector<RowId> ids = t.rowIds();
            std::vector<Row> rows;
            for (RowId id : ids) {
                rows.push_back(t.read(id));
                for (size_t c = 0; c < rows.back().size(); ++c)
                    if (t.def().columns[c].autoNumber()) rows.back()[c] = Value{};
            }
            if (rows.empty()) continue;
            db->begin();
            for (const Row& r : rows) t.insert(r);   // copies (autonumbers renumbered)
            t.update(ids.front(), rows.back());
            t.remove(ids.back());
            db->commit();
        }
    }
    expectSameAsOracle(ms);
}

TEST(WriteTable, AFailingBatchLeavesTheFileAsItWas) {
    TempDir dir;
    std::string path = testsupport::copyTestFile("testV2000.mdb", dir).string();
    std::string before = readFile(path);
    {
        auto db = Database::open(path);
        Table& t = db->table("Table1");  // A: Text(50) primary key, B: Text(100)
        uint32_t count = t.rowCount();
        Row existing = t.read(t.rowIds().front());
        auto withKey = [&](const std::string& a) {
            Row r(t.def().columns.size());
            r[0] = a;
            return r;
        };

        auto failsWith = [&](ErrorKind kind, const std::function<void()>& f) {
            try {
                f();
                ADD_FAILURE() << "no error";
            } catch (const JetError& e) {
                EXPECT_EQ(e.kind(), kind) << e.what();
            }
            EXPECT_FALSE(db->pager().inTransaction());
            EXPECT_EQ(t.rowCount(), count);
        };
        // A text too long for its column, after two good rows of the same batch.
        failsWith(ErrorKind::Invalid, [&] {
            db->begin();
            t.insert(withKey("új kulcs 1"));
            t.insert(withKey("új kulcs 2"));
            Row bad = withKey("új kulcs 3");
            bad[1] = std::string(101, 'x');
            t.insert(bad);
        });
        // A duplicate primary key, after a good row of the same batch.
        failsWith(ErrorKind::Duplicate, [&] {
            db->begin();
            t.insert(withKey("új kulcs 4"));
            t.insert(existing);
        });
        failsWith(ErrorKind::NoSuchRow, [&] { t.remove(RowId{1, 0}); });  // not a page of the table
        failsWith(ErrorKind::Invalid, [&] { t.insert(Row(1)); });         // wrong width
        // The table still takes rows afterwards, with the autonumber and count it had.
        db->begin();
        t.insert(withKey("új kulcs 5"));
        db->rollback();
        EXPECT_EQ(t.rowCount(), count);
    }
    EXPECT_EQ(readFile(path), before);
}
