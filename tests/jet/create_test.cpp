// New files and new tables: what they hold, that other readers open them, and that faults write
// nothing.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "jet/check.h"
#include "jet/create.h"
#include "jet/database.h"
#include "jet/error.h"
#include "jet/header.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;
using testsupport::readFile;
using testsupport::TempDir;

namespace {

// Every Access 2000 column type, a primary key, a unique, a plain and a two-column index.
TableSpec fleetSpec() {
    TableSpec t;
    t.name = "Járművek";
    t.columns = {{"Id", ColType::Long, 0, true},    {"Rendszám", ColType::Text, 12},
                 {"Megjegyzés", ColType::Memo},     {"Ülések", ColType::Integer},
                 {"Ár", ColType::Currency},         {"Vásárlás", ColType::DateTime},
                 {"Aktív", ColType::Boolean},       {"Kategória", ColType::Byte},
                 {"Fogyasztás", ColType::Single},   {"Km", ColType::Double},
                 {"Azonosító", ColType::Guid},      {"Súly", ColType::Numeric, 0, false, false, 10, 3},
                 {"Kód", ColType::Binary, 8},       {"Kép", ColType::Ole}};
    t.indexes = {{"PrimaryKey", {"Id"}, true},
                 {"Rendszám", {"Rendszám"}, false, true},
                 {"Ülések", {"Ülések"}},
                 {"KategóriaÁr", {"Kategória", "Ár"}}};
    return t;
}

Row fleetRow(int i) {
    Decimal weight;
    weight.magnitude[0] = uint32_t(1500250 + i);
    weight.scale = 3;
    Guid g;
    g.bytes[0] = uint8_t(i + 1);
    return Row{std::monostate{}, "ABC-" + std::to_string(100 + i), std::string(i == 1 ? 3000 : 20, 'm'),
               int16_t(4 + i % 3), Currency{125000 * (i + 1)}, DateTime{45000.25 + i}, i % 2 == 0,
               uint8_t(i % 4), 6.5f + float(i), 123456.75 * i, g, weight, Bytes{0xDE, 0xAD, uint8_t(i)},
               Bytes(i == 2 ? 5000 : 3, uint8_t(i))};
}

// Pages inside the file that the database's page map (page 1, row 0: set bit = free for reuse)
// offers for reuse: Access would overwrite them, so none may be in use.
std::vector<uint32_t> reusablePagesInFile(const std::string& path) {
    std::string b = readFile(path);
    const uint8_t* page = reinterpret_cast<const uint8_t*>(b.data()) + kPageSize;
    size_t at = (page[14] | page[15] << 8) & 0x1FFF;
    const uint8_t* row = page + at;
    uint32_t start = uint32_t(row[1] | row[2] << 8 | row[3] << 16 | row[4] << 24);
    std::vector<uint32_t> out;
    for (size_t bit = 0; bit < (kPageSize - at - 5) * 8; ++bit)
        if ((row[5 + bit / 8] >> (bit % 8) & 1) && start + bit < b.size() / kPageSize) out.push_back(uint32_t(start + bit));
    return out;
}

std::vector<std::string> linesWith(const std::string& text, const std::string& prefix) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        if (line.rfind(prefix, 0) == 0) out.push_back(line);
    return out;
}

}  // namespace

TEST(CreateFile, NewFileHoldsTheSystemTablesAndOpensEverywhere) {
    TempDir dir;
    std::string path = (dir / "uj.mdb").string();
    auto db = Database::create(path);
    EXPECT_TRUE(db->tableNames().empty());
    EXPECT_EQ(db->tableNames(true),
              (std::vector<std::string>{"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}));
    EXPECT_EQ(db->sortOrder(), 1033);
    EXPECT_TRUE(db->generalSortOrder());

    std::string bytes = readFile(path);
    ASSERT_EQ(bytes.size(), 16u * kPageSize);
    DbHeader h = readHeader(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), path);
    EXPECT_EQ(h.version, 1);
    EXPECT_EQ(h.codePage, 1252);
    EXPECT_FALSE(h.hasPassword);
    EXPECT_NEAR(h.created, nowAsDate(), 1.0 / 24);

    // The catalogue: containers, the database object and the system tables, each with its id.
    Table& objects = db->table("MSysObjects");
    std::vector<std::string> names;
    objects.scan([&](RowId, const Row& r) {
        names.push_back(std::get<std::string>(r[2]) + "=" + std::to_string(std::get<int32_t>(r[0])));
        return true;
    });
    EXPECT_EQ(names, (std::vector<std::string>{"Tables=251658241", "Databases=251658242", "Relationships=251658243",
                                               "MSysDb=268435456", "MSysObjects=2", "MSysACEs=3", "MSysQueries=4",
                                               "MSysRelationships=5"}));
    EXPECT_EQ(db->table("MSysACEs").rowCount(), 16u);
    EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
    EXPECT_EQ(reusablePagesInFile(path), std::vector<uint32_t>{});
    // The catalogue index that readers look tables up by, in key order: ParentId, then Name.
    std::vector<std::string> byIndex;
    for (RowId id : objects.indexOrder("ParentIdName")) byIndex.push_back(std::get<std::string>(objects.read(id)[2]));
    EXPECT_EQ(byIndex, (std::vector<std::string>{"Databases", "Relationships", "Tables", "MSysACEs", "MSysObjects",
                                                 "MSysQueries", "MSysRelationships", "MSysDb"}));

    auto tables = testsupport::run({"mdb-tables", "-S", "-1", path});
    EXPECT_EQ(tables.out, "MSysObjects\nMSysACEs\nMSysQueries\nMSysRelationships\n");
    EXPECT_EQ(testsupport::run({"mdb-ver", path}).out, "JET4\n");
    if (testsupport::oracleAvailable()) {
        auto dump = testsupport::oracle({"dump", path, "MSysObjects", "MSysACEs"});
        EXPECT_EQ(dump.exitCode, 0) << dump.err;
        EXPECT_EQ(linesWith(dump.out, "END"), (std::vector<std::string>{"END 16", "END 8"}));
        EXPECT_EQ(linesWith(dump.out, "INDEX"),
                  (std::vector<std::string>{"INDEX ObjectId\tObjectId\tplain", "INDEX Id\tId\tprimary",
                                            "INDEX ParentIdName\tParentId,Name\tunique"}));
        EXPECT_EQ(testsupport::oracle({"check", path}).out, "OK\n");
    }
}

TEST(CreateFile, SystemTablesAreLaidOutAsAccessLaysThemOut) {
    TempDir dir;
    std::string path = (dir / "uj.mdb").string();
    auto ours = Database::create(path);
    auto theirs = Database::open(testsupport::copyTestFile("testV2000.mdb", dir).string(), Database::Mode::ReadOnly);
    for (const char* name : {"MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"}) {
        SCOPED_TRACE(name);
        const TableDef& a = ours->table(name).def();
        const TableDef& b = theirs->table(name).def();
        EXPECT_EQ(a.firstPage, b.firstPage);
        EXPECT_TRUE(a.system);
        ASSERT_EQ(a.columns.size(), b.columns.size());
        for (size_t i = 0; i < a.columns.size(); ++i) {
            const Column &x = a.columns[i], &y = b.columns[i];
            EXPECT_EQ(x.name + " " + std::to_string(int(x.type)) + " " + std::to_string(x.length) + " " +
                          std::to_string(x.flags) + " " + std::to_string(x.extFlags) + " " + std::to_string(x.varIndex) +
                          " " + std::to_string(x.fixed() ? x.fixedOffset : 0) + " " + std::to_string(x.sortOrder),
                      y.name + " " + std::to_string(int(y.type)) + " " + std::to_string(y.length) + " " +
                          std::to_string(y.flags) + " " + std::to_string(y.extFlags) + " " + std::to_string(y.varIndex) +
                          " " + std::to_string(y.fixed() ? y.fixedOffset : 0) + " " + std::to_string(y.sortOrder));
        }
        ASSERT_EQ(a.logicalIndexes.size(), b.logicalIndexes.size());
        for (const LogicalIndex& l : a.logicalIndexes) {
            auto m = std::find_if(b.logicalIndexes.begin(), b.logicalIndexes.end(),
                                  [&](const LogicalIndex& o) { return o.name == l.name; });
            ASSERT_NE(m, b.logicalIndexes.end()) << l.name;
            const RealIndex &x = a.realIndexes[l.realIndex], &y = b.realIndexes[m->realIndex];
            EXPECT_EQ(l.kind, m->kind) << l.name;
            EXPECT_EQ(x.flags, y.flags) << l.name;
            ASSERT_EQ(x.columns.size(), y.columns.size()) << l.name;
            for (size_t k = 0; k < x.columns.size(); ++k) EXPECT_EQ(x.columns[k].columnNumber, y.columns[k].columnNumber);
        }
    }
}

TEST(CreateTable, DefinitionsRoundTripThroughTheReaderOnOneAndSeveralPages) {
    TempDir dir;
    std::string path = (dir / "uj.mdb").string();
    { Database::create(path); }
    auto pager = Pager::open(path, Pager::Mode::ReadWrite);

    TableSpec wide = fleetSpec();
    for (int i = 0; i < 150; ++i)
        wide.columns.push_back({"Hosszú oszlopnév a több lapos definícióhoz " + std::to_string(i), ColType::Text, 10});
    for (const TableSpec& spec : {fleetSpec(), wide}) {
        TableDef def = layoutTable(spec, path);
        pager->begin();
        def.firstPage = allocatePage(*pager);
        def.rowCount = 7;
        def.nextAutoNumber = 9;
        def.ownedPages = {300, 0};
        def.freeSpacePages = {300, 1};
        for (size_t i = 0; i < def.realIndexes.size(); ++i) {
            def.realIndexes[i].rootPage = uint32_t(400 + i);
            def.realIndexes[i].usedPages = {300, uint8_t(2 + i)};
            def.realIndexes[i].rowCount = 7;
        }
        writeTableDef(*pager, def);
        pager->commit();
        EXPECT_EQ(def.defPages.size() > 1, spec.columns.size() > 100);

        TableDef back = readTableDef(*pager, def.firstPage, def.name);
        EXPECT_EQ(back.defPages, def.defPages);
        EXPECT_EQ(encodeTableDef(back), encodeTableDef(def));  // every stored field survived
        EXPECT_EQ(back.columns.size(), spec.columns.size());
        EXPECT_EQ(back.columns.back().name, spec.columns.back().name);
        EXPECT_EQ(back.rowCount, 7u);
        EXPECT_EQ(back.realIndexes.size(), 4u);
        EXPECT_EQ(back.realIndexes[0].flags, 0x89);  // primary key: unique and required
        EXPECT_EQ(back.realIndexes[1].flags, 0x81);
        EXPECT_EQ(back.realIndexes[2].flags, 0x80);
        EXPECT_EQ(back.realIndexes[3].columns.size(), 2u);
    }
}

TEST(CreateTable, EveryColumnTypeAndIndexReadsBackInTheOracleAndMdbtools) {
    TempDir dir;
    std::string path = (dir / "flotta.mdb").string();
    {
        auto db = Database::create(path);
        Table& t = db->createTable(fleetSpec());
        db->createTable({"Sofőrök", {{"Név", ColType::Text, 50}}, {{"Név", {"Név"}}}});
        EXPECT_EQ(db->tableNames(), (std::vector<std::string>{"Járművek", "Sofőrök"}));
        db->begin();
        for (int i = 0; i < 40; ++i) t.insert(fleetRow(i));
        db->commit();
        EXPECT_EQ(t.rowCount(), 40u);
        EXPECT_EQ(std::get<int32_t>(t.read(t.rowIds().back())[0]), 40);  // the AutoNumber counted
        EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});       // catalogue indexes too
    }
    EXPECT_EQ(reusablePagesInFile(path), std::vector<uint32_t>{});
    auto ours = testsupport::cli({"jet", "dump", path});
    ASSERT_EQ(ours.exitCode, 0) << ours.err;
    EXPECT_EQ(linesWith(ours.out, "COLUMN").size(), 15u);
    if (testsupport::oracleAvailable()) {
        auto dump = testsupport::oracle({"dump", path});
        ASSERT_EQ(dump.exitCode, 0) << dump.err;
        EXPECT_EQ(dump.out, ours.out);
        EXPECT_NE(dump.out.find("TABLE Sofőrök\nCOLUMN Név\tTEXT\t100\nINDEX Név\tNév\tplain\nEND 0\n"), std::string::npos);
        EXPECT_EQ(linesWith(dump.out.substr(0, dump.out.find("TABLE Sofőrök")), "COLUMN"),
                  (std::vector<std::string>{
                      "COLUMN Id\tLONG\t4", "COLUMN Rendszám\tTEXT\t24", "COLUMN Megjegyzés\tMEMO\t0",
                      "COLUMN Ülések\tINT\t2", "COLUMN Ár\tMONEY\t8", "COLUMN Vásárlás\tSHORT_DATE_TIME\t8",
                      "COLUMN Aktív\tBOOLEAN\t1", "COLUMN Kategória\tBYTE\t1", "COLUMN Fogyasztás\tFLOAT\t4",
                      "COLUMN Km\tDOUBLE\t8", "COLUMN Azonosító\tGUID\t16", "COLUMN Súly\tNUMERIC\t17",
                      "COLUMN Kód\tBINARY\t8", "COLUMN Kép\tOLE\t0"}));
        EXPECT_EQ(linesWith(dump.out.substr(0, dump.out.find("TABLE Sofőrök")), "INDEX"),
                  (std::vector<std::string>{"INDEX KategóriaÁr\tKategória,Ár\tplain", "INDEX PrimaryKey\tId\tprimary",
                                            "INDEX Rendszám\tRendszám\tunique", "INDEX Ülések\tÜlések\tplain"}));
        auto check = testsupport::oracle({"check", path});
        EXPECT_EQ(check.out, "OK\n") << check.err;
    }
    auto schema = testsupport::run({"mdb-schema", path});
    EXPECT_NE(schema.out.find("CREATE TABLE [Járművek]"), std::string::npos);
    EXPECT_NE(schema.out.find("[Súly]\t\t\tNumeric (10, 3)"), std::string::npos);
    auto csv = testsupport::run({"mdb-export", path, "Járművek"});
    EXPECT_EQ(csv.out.rfind("Id,Rendszám,Megjegyzés,", 0), 0u);
    for (const char* plate : {",\"ABC-100\",", ",\"ABC-139\","}) EXPECT_NE(csv.out.find(plate), std::string::npos);
}

TEST(CreateTable, InAMicrosoftFileTheNewTableInheritsTheContainersAccess) {
    TempDir dir;
    std::string path = testsupport::copyTestFile("testV2000.mdb", dir).string();
    auto db = Database::open(path);
    TableSpec spec{"Szervizek", {{"Azon", ColType::Long, 0, true}, {"Leírás", ColType::Text, 80}},
                   {{"PrimaryKey", {"Azon"}, true}}};
    Table& t = db->createTable(spec);
    t.insert({std::monostate{}, std::string("olajcsere")});
    uint32_t id = t.def().firstPage;
    // The new table's access entries: the SIDs the Tables container hands down (the Creator
    // template aside), with full access; its owner is the database's owner.
    std::vector<std::string> sids;
    db->table("MSysACEs").scan([&](RowId, const Row& r) {
        if (std::get<int32_t>(r[0]) == int32_t(id)) {
            const Bytes& b = std::get<Bytes>(r[1]);
            sids.push_back(std::to_string(b.size()) + ":" + std::to_string(std::get<int32_t>(r[2])));
        }
        return true;
    });
    EXPECT_EQ(sids, (std::vector<std::string>{"2:1048319", "102:1048319", "2:1048319"}));
    EXPECT_EQ(checkDatabase(*db), std::vector<std::string>{});
    db.reset();
    EXPECT_NE(testsupport::run({"mdb-tables", "-1", path}).out.find("Szervizek\n"), std::string::npos);
    if (testsupport::oracleAvailable()) {
        auto dump = testsupport::oracle({"dump", path, "Szervizek"});
        EXPECT_NE(dump.out.find("ROW 1\tolajcsere\nEND 1\n"), std::string::npos) << dump.out << dump.err;
        EXPECT_EQ(testsupport::oracle({"check", path}).out, "OK\n");
    }
}

TEST(CreateFaults, BadRequestsFailClearlyAndWriteNothing) {
    TempDir dir;
    // Creating over an existing file.
    std::string existing = testsupport::copyTestFile("indexTestV2000.mdb", dir).string();
    std::string before = readFile(existing);
    try {
        Database::create(existing);
        ADD_FAILURE() << "created over an existing file";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Invalid);
        EXPECT_NE(std::string(e.what()).find("already exists"), std::string::npos);
    }
    EXPECT_EQ(readFile(existing), before);

    std::string path = (dir / "uj.mdb").string();
    auto db = Database::create(path);
    db->createTable({"Autók", {{"Rendszám", ColType::Text, 10}}, {}});
    // A query lives in the Tables container too (type 5): its name is taken.
    Row query(db->table("MSysObjects").def().columns.size());
    query[0] = int32_t(0x80000010);
    query[1] = int32_t(0x0F000001);
    query[2] = std::string("Lekérdezés");
    query[3] = int16_t(5);
    query[7] = int32_t(0);
    db->table("MSysObjects").insert(query);
    std::string image = readFile(path);
    auto column = [](ColumnSpec c) { return TableSpec{"Új", {c}, {}}; };
    auto indexed = [](IndexSpec i) {
        return TableSpec{"Új", {{"A", ColType::Long}, {"B", ColType::Memo}}, {std::move(i)}};
    };
    struct Case {
        TableSpec spec;
        std::string says;
    } cases[] = {
        {{"autók", {{"X", ColType::Long}}, {}}, "already exists"},
        {{"msysobjects", {{"X", ColType::Long}}, {}}, "already exists"},
        {{"LEKÉRDEZÉS", {{"X", ColType::Long}}, {}}, "a query or linked table"},
        {{"Új", {}, {}}, "at least one column"},
        {{"", {{"X", ColType::Long}}, {}}, "name is empty"},
        {{"Rossz.Név", {{"X", ColType::Long}}, {}}, "character names cannot hold"},
        {column({"Név", ColType::Text, 0}), "1 to 255 characters, not 0"},
        {column({"Név", ColType::Text, 256}), "1 to 255 characters, not 256"},
        {column({"Szám", ColType::Text, 10, true}), "only a Long can be an AutoNumber"},
        {column({"Tört", ColType::Numeric, 0, false, false, 30, 2}), "precision 1 to 28"},
        {column({"X", ColType(0x0D)}), "unknown type"},
        {{"Új", {{"A", ColType::Long}, {"a", ColType::Text, 5}}, {}}, "two columns are named a"},
        {indexed({"I", {"C"}}), "names column C, which the table lacks"},
        {indexed({"I", {"B"}}), "cannot be indexed"},
        {indexed({"I", {"A", "A"}}), "names column A twice"},
        {indexed({"I", {}}), "1 to 10 columns"},
        {{"Új", {{"A", ColType::Long}}, {{"P", {"A"}, true}, {"Q", {"A"}, true}}}, "more than one primary key"},
    };
    for (const Case& c : cases) {
        try {
            db->createTable(c.spec);
            ADD_FAILURE() << "accepted: " << c.says;
        } catch (const JetError& e) {
            EXPECT_EQ(e.kind(), ErrorKind::Invalid) << e.what();
            EXPECT_NE(std::string(e.what()).find(c.says), std::string::npos) << e.what();
            EXPECT_EQ(std::string(e.what()).rfind(path + ": ", 0), 0u) << e.what();
        }
    }
    EXPECT_EQ(readFile(path), image);
    EXPECT_EQ(db->tableNames(), (std::vector<std::string>{"Autók"}));
}

TEST(CreateFaults, ATableCreatedInARolledBackBatchLeavesNoTrace) {
    TempDir dir;
    std::string path = (dir / "uj.mdb").string();
    auto db = Database::create(path);
    std::string image = readFile(path);
    db->begin();
    db->createTable({"Ideiglenes", {{"X", ColType::Long}}, {{"PK", {"X"}, true}}});
    db->rollback();
    EXPECT_FALSE(db->hasTable("Ideiglenes"));
    EXPECT_EQ(readFile(path), image);
}
