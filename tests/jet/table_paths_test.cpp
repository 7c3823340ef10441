// The cheap paths of the table layer: reading only some columns, updates that leave the indexes
// of unchanged keys alone, and short ASCII texts encoded without the general UTF-16 route.
#include <gtest/gtest.h>

#include "jet/check.h"
#include "jet/database.h"
#include "jet/format.h"
#include "jet/pager.h"
#include "jet/rowcodec.h"
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

// Packed texts take a shortcut when all their bytes are ASCII, checked eight at a time: a mode
// toggle (0) or a byte above 0x7F at any place, in texts of any length, must take the general way.
TEST(TablePaths, PackedTextShortcutAgreesWithTheGeneralWay) {
    for (size_t len = 0; len <= 20; ++len) {
        Bytes plainAsciiText{0xFF, 0xFE};
        for (size_t i = 0; i < len; ++i) plainAsciiText.push_back(uint8_t('a' + i));
        std::string out(40, '?');  // a longer text left by the previous row
        decodeTextInto(plainAsciiText.data(), plainAsciiText.size(), out);
        EXPECT_EQ(out, std::string(plainAsciiText.begin() + 2, plainAsciiText.end()));
        for (size_t at = 0; at < len; ++at) {
            for (uint8_t b : {0x00, 0x01, 0x7F, 0x80, 0xE9, 0xFF}) {
                Bytes t = plainAsciiText;
                t[2 + at] = b;
                if (b == 0) t.insert(t.begin() + 2 + at + 1, {0x51, 0x01});  // a wide ő after the toggle
                std::string general;
                decodeTextGeneral(t.data(), t.size(), general);
                decodeTextInto(t.data(), t.size(), out);
                EXPECT_EQ(out, general) << "length " << len << ", byte " << int(b) << " at " << at;
            }
        }
    }
}

// A row written before columns were added to its table has fewer columns, variable entries and
// fixed bytes than the definition: those columns read as null (a Boolean as false). A row with
// them all takes the grouped way, which must still refuse a variable entry outside the row.
TEST(TablePaths, RowsOlderThanTheirColumnsAndBrokenVariableEntries) {
    testsupport::TempDir dir;
    auto db = Database::create((dir / "t.mdb").string());
    Table& t = db->createTable(spec());
    const TableDef& def = t.def();
    RowDecoder dec(db->pager(), def);
    // | N | Id (4) | Name: packed "abc" | end of data | offset of Name | V = 1 | mask: Id, Name |
    ASSERT_TRUE(def.columns[Id].fixed());
    ASSERT_EQ(def.columns[Id].fixedOffset, 0);
    ASSERT_EQ(def.columns[Name].varIndex, 0);
    const uint8_t old[] = {2, 0, 42, 0, 0, 0, 0xFF, 0xFE, 'a', 'b', 'c', 11, 0, 6, 0, 1, 0, 0x03};
    Row row(3, Value{std::string("left over")});
    dec.decode(old, sizeof old, RowId{1, 0}, row);
    ASSERT_EQ(row.size(), 6u);
    EXPECT_EQ(std::get<int32_t>(row[Id]), 42);
    EXPECT_EQ(std::get<std::string>(row[Name]), "abc");
    EXPECT_TRUE(isNull(row[Note]));
    EXPECT_EQ(row[Flag], Value{false});
    EXPECT_TRUE(isNull(row[Amount]));
    EXPECT_TRUE(isNull(row[Code]));

    // A whole row as the engine writes it, then its Name entry pointed past the variable data.
    Row full = sampleRow(3);
    full[Code] = std::string("C3");
    RowId id = t.insert(full);
    PageRef p = db->pager().page(id.page);
    uint16_t start = le16(p->data() + 14 + 2 * id.row) & 0x1FFF;
    uint16_t end = id.row == 0 ? 4096 : le16(p->data() + 14 + 2 * (id.row - 1)) & 0x1FFF;
    std::vector<uint8_t> bytes(p->data() + start, p->data() + end);
    dec.decode(bytes.data(), bytes.size(), id, row);
    EXPECT_EQ(row, t.read(id));
    size_t maskLen = (size_t(le16(bytes.data())) + 7) / 8;
    size_t nameEntry = bytes.size() - maskLen - 4 - 2 * def.columns[Name].varIndex;
    putLe16(&bytes[nameEntry], uint16_t(bytes.size()));
    try {
        dec.decode(bytes.data(), bytes.size(), id, row);
        ADD_FAILURE() << "a variable entry outside the row was read";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Corrupt);
    }
}
