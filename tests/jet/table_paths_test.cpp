// The cheap paths of the table layer: reading only some columns, updates that leave the indexes
// of unchanged keys alone, and short ASCII texts encoded without the general UTF-16 route.
#include <gtest/gtest.h>

#include "jet/check.h"
#include "jet/database.h"
#include "jet/format.h"
#include "jet/pager.h"
#include "jet/support.h"
#include "jet/text.h"

using namespace jet;

namespace {

enum { Id, Name, Note, Flag, Amount, Code };

TableSpec spec() {
    TableSpec t;
    t.name = "T";
    t.columns = {{"Id", ColType::Long, 0, true},
                 {"Name", ColType::Text, 50},
                 {"Note", ColType::Memo},
                 {"Flag", ColType::Boolean},
                 {"Amount", ColType::Double},
                 {"Code", ColType::Text, 10}};
    t.indexes = {{"PrimaryKey", {"Id"}, true, true}, {"ByName", {"Name"}}, {"ByCode", {"Code"}, false, true}};
    return t;
}

Row sampleRow(int i) {
    Row r(6);
    r[Name] = i % 7 == 0 ? Value{} : Value{"név " + std::to_string(i % 50) + (i % 3 ? "" : "ő")};
    r[Note] = i % 5 == 0 ? Value{std::string(size_t(300 + i * 13 % 3000), char('a' + i % 26))} : Value{};
    r[Flag] = i % 2 == 0;
    r[Amount] = i % 11 == 0 ? Value{} : Value{i * 1.5};
    r[Code] = i % 4 == 0 ? Value{} : Value{"C" + std::to_string(i)};
    return r;
}

// Every index page of the file, by page number.
std::map<uint32_t, std::vector<uint8_t>> indexPages(Database& db) {
    std::map<uint32_t, std::vector<uint8_t>> out;
    for (uint32_t n = 1; n < db.pager().pageCount(); ++n) {
        PageRef p = db.pager().page(n);
        if (p->bytes[0] == page::kIndexLeaf || p->bytes[0] == page::kIndexNode) out[n].assign(p->bytes.begin(), p->bytes.end());
    }
    return out;
}

}  // namespace

// scanColumns hands over exactly the asked columns of scan()'s rows, in the order asked: nulls,
// Booleans (kept in the null mask), memos on their own pages, rows moved behind an overflow
// pointer; a column out of range is refused.
TEST(TablePaths, ScanColumnsIsScanProjected) {
    testsupport::TempDir dir;
    auto db = Database::create((dir / "p.mdb").string());
    Table& t = db->createTable(spec());
    db->begin();
    std::vector<RowId> ids;
    for (int i = 0; i < 400; ++i) ids.push_back(t.insert(sampleRow(i)));
    for (int i = 0; i < 400; i += 9) {  // grown rows move off their page
        Row r = t.read(ids[size_t(i)]);
        r[Note] = std::string(size_t(1500), 'x');
        t.update(ids[size_t(i)], r);
    }
    db->commit();

    const std::vector<size_t> asked = {Amount, Id, Note, Flag, Amount};
    std::vector<std::pair<RowId, Row>> full, part;
    t.scan([&](RowId id, const Row& r) {
        Row p;
        for (size_t c : asked) p.push_back(r[c]);
        full.emplace_back(id, p);
        return true;
    });
    t.scanColumns(asked, [&](RowId id, const Row& r) {
        part.emplace_back(id, r);
        return true;
    });
    ASSERT_EQ(full.size(), 400u);
    EXPECT_EQ(part, full);

    // readColumns: the marked columns as read() gives them, the rest null, moved rows included.
    std::vector<bool> wanted(6, false);
    wanted[Id] = wanted[Note] = true;
    for (size_t i : {size_t(0), size_t(1), size_t(9)}) {
        Row all = t.read(ids[i]), some = t.readColumns(ids[i], wanted);
        ASSERT_EQ(some.size(), all.size());
        for (size_t c = 0; c < all.size(); ++c) EXPECT_EQ(some[c], wanted[c] ? all[c] : Value{}) << i << " " << c;
    }

    size_t visited = 0;
    t.scanColumns({}, [&](RowId, const Row& r) { return r.empty() && ++visited < 10; });
    EXPECT_EQ(visited, 10u);
    try {
        t.scanColumns({Name, 6}, [](RowId, const Row&) { return true; });
        ADD_FAILURE() << "column 6 of 6 accepted";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::NoSuchColumn);
    }
}

// An update that keeps a row's keys leaves every index page as it was; one that changes a key
// (to another value, to null and back) moves exactly that index's entry.
TEST(TablePaths, UpdatesChangeOnlyTheIndexesOfChangedKeys) {
    testsupport::TempDir dir;
    auto db = Database::create((dir / "u.mdb").string());
    Table& t = db->createTable(spec());
    db->begin();
    std::vector<RowId> ids;
    for (int i = 0; i < 2000; ++i) ids.push_back(t.insert(sampleRow(i)));
    db->commit();

    auto before = indexPages(*db);
    db->begin();
    for (size_t i = 0; i < ids.size(); i += 3) {
        Row r = t.read(ids[i]);
        r[Amount] = 99.0;
        r[Note] = std::string(size_t(i % 2 ? 10 : 2500), 'n');  // same size, smaller, moved
        r[Flag] = !std::get<bool>(r[Flag]);
        t.update(ids[i], r);
    }
    db->commit();
    EXPECT_EQ(indexPages(*db), before);

    db->begin();
    Row r = t.read(ids[10]);
    r[Name] = std::string("új név");
    r[Code] = Value{};
    t.update(ids[10], r);
    r = t.read(ids[12]);
    r[Code] = std::string("C10");  // the code row 10 gave up: no clash
    t.update(ids[12], r);
    db->commit();
    EXPECT_EQ(t.seek("ByName", {std::string("új név")}), std::vector<RowId>{ids[10]});
    EXPECT_EQ(t.seek("ByCode", {std::string("C10")}), std::vector<RowId>{ids[12]});
    EXPECT_TRUE(t.seek("ByCode", {std::string("C12")}).empty());
    auto byName = t.seek("ByName", {std::string("név 10")});
    EXPECT_EQ(std::count(byName.begin(), byName.end(), ids[10]), 0);
    EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
}

// Short ASCII texts: plain below three characters, packed from three; a NUL keeps them plain.
TEST(TablePaths, AsciiTextsEncodeAsTheGeneralRule) {
    EXPECT_EQ(encodeText("", true), Bytes{});
    EXPECT_EQ(encodeText("a", true), (Bytes{'a', 0}));
    EXPECT_EQ(encodeText("ab", true), (Bytes{'a', 0, 'b', 0}));
    EXPECT_EQ(encodeText("abc", true), (Bytes{0xFF, 0xFE, 'a', 'b', 'c'}));
    EXPECT_EQ(encodeText("abc", false), (Bytes{'a', 0, 'b', 0, 'c', 0}));
    EXPECT_EQ(encodeText(std::string("a\0bc", 4), true), (Bytes{'a', 0, 0, 0, 'b', 0, 'c', 0}));
    EXPECT_EQ(encodeText("\x7F~ \x01", true), (Bytes{0xFF, 0xFE, 0x7F, '~', ' ', 0x01}));
    EXPECT_EQ(utf16Length("a\xC5\x91\xF0\x9F\x9A\x97"), 4u);  // a, ő, and a pair for the emoji
}
