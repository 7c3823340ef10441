// New files and new tables.
//
//   a new file (16 pages):
//     0 header | 1 the database's page map (row 0: pages free for reuse; row 1: empty) |
//     2 MSysObjects | 3 MSysACEs | 4 MSysQueries | 5 MSysRelationships   (TDEF pages) |
//     6 the system tables' usage maps | 7..13 their index roots (one leaf each) |
//     14 MSysObjects rows | 15 MSysACEs rows
//
//   The catalogue of a new file holds what the database engine itself creates: the containers
//   Tables, Databases and Relationships, the database object MSysDb, and the four system tables;
//   MSysACEs gives each of them its access entries (Admin user, Users group, Creator and Engine
//   SIDs as Access stores them). MSysQueries and MSysRelationships start empty. Objects of
//   Access's own user interface (forms, reports, MSysAccessObjects) are left to Access.
//
//   a new table: | TDEF pages | usage-map page: owned, free space, one row per real index |
//   one empty root leaf per real index | — then a row in MSysObjects and its access entries in
//   MSysACEs, through the engine's own row insert (so every catalogue index stays right).
#include "create.h"

#include <algorithm>
#include <cmath>
#include <ctime>

#include "btree.h"
#include "datapage.h"
#include "error.h"
#include "format.h"
#include "indexkey.h"
#include "os.h"
#include "pager.h"
#include "rowwrite.h"
#include "text.h"

namespace jet {

namespace {

constexpr uint8_t kFixedFlag = 0x01;
constexpr uint8_t kUpdatableFlag = 0x02;  // set on every column Access writes
constexpr uint8_t kAutoNumberFlag = 0x04;
constexpr uint8_t kSystemColumnFlag = 0x10;
constexpr uint8_t kCompressedUnicode = 0x01;

constexpr uint8_t kIndexUnique = 0x01;
constexpr uint8_t kIndexIgnoreNulls = 0x02;
constexpr uint8_t kIndexRequired = 0x08;
constexpr uint8_t kIndexAlways = 0x80;  // set on every index Access 2000 writes

constexpr size_t kMaxNameLength = 64;
constexpr size_t kMaxColumns = 255;
constexpr size_t kMaxIndexes = 32;
constexpr size_t kMapBits = 64;            // bytes of bits in an inline usage map
constexpr uint32_t kMapRowSize = 5 + kMapBits;

// Object ids and types of the catalogue.
constexpr int32_t kRootId = 0x0F000000;
constexpr int32_t kTablesId = 0x0F000001;
constexpr int32_t kDatabasesId = 0x0F000002;
constexpr int32_t kRelationshipsId = 0x0F000003;
constexpr int32_t kMSysDbId = 0x10000000;
constexpr int16_t kTypeTable = 1;
constexpr int16_t kTypeDatabase = 2;
constexpr int16_t kTypeContainer = 3;
constexpr int32_t kSystemObject = int32_t(0x80000000u);

// Access rights (ACM) as Access stores them.
constexpr int32_t kFullAccess = 1048319;
constexpr int32_t kCreatorTemplate = 983294;

// SIDs as stored: the Admin user, the Users group, the Creator and Engine placeholders.
const Bytes kAdminSid{0xA6, 0x33};
const Bytes kUsersSid{0xA7, 0x33};
const Bytes kCreatorSid{0xA7, 0x36};
const Bytes kEngineSid{0xA7, 0x31};

[[noreturn]] void invalid(const std::string& file, const std::string& table, const std::string& cause) {
    fail(ErrorKind::Invalid, file, "table " + table + ": " + cause);
}

// Names as Access accepts them: 1..64 characters, no leading space, none of . ! ` [ ] and no
// control characters.
std::string nameFault(const std::string& name) {
    if (name.empty()) return "the name is empty";
    std::u16string u = utf8ToUtf16(name);
    if (u.size() > kMaxNameLength) return "the name " + name + " is longer than 64 characters";
    if (u[0] == u' ') return "the name \"" + name + "\" starts with a space";
    for (char16_t c : u)
        if (c < 0x20 || c == u'.' || c == u'!' || c == u'`' || c == u'[' || c == u']')
            return "the name \"" + name + "\" contains a character names cannot hold (. ! ` [ ] or a control character)";
    return {};
}

// The length a table definition states: the data size, and 1 for Boolean as Access writes it.
uint16_t storedLength(ColType t) { return t == ColType::Boolean ? 1 : fixedDataSize(t); }

bool isVariable(ColType t) {
    return t == ColType::Text || t == ColType::Binary || t == ColType::Memo || t == ColType::Ole;
}

bool knownType(ColType t) {
    switch (t) {
    case ColType::Boolean: case ColType::Byte: case ColType::Integer: case ColType::Long:
    case ColType::Currency: case ColType::Single: case ColType::Double: case ColType::DateTime:
    case ColType::Binary: case ColType::Text: case ColType::Ole: case ColType::Memo:
    case ColType::Guid: case ColType::Numeric:
        return true;
    }
    return false;
}

// Variable indexes and fixed offsets in column order, as Access lays them out: a fixed column's
// variable index is the count of variable columns before it; a Boolean lives in the null mask.
void layoutColumns(TableDef& def) {
    uint16_t var = 0, fixedOffset = 0;
    for (Column& c : def.columns) {
        c.varIndex = var;
        if (c.fixed()) {
            c.fixedOffset = c.type == ColType::Boolean ? 0 : fixedOffset;
            if (c.type != ColType::Boolean) fixedOffset = uint16_t(fixedOffset + c.length);
        } else {
            c.fixedOffset = 0;
            ++var;
        }
    }
    def.varColumns = var;
    def.maxColumns = uint16_t(def.columns.size());
}

Column makeColumn(std::string name, ColType type, uint16_t length, uint8_t extraFlags = 0) {
    Column c;
    c.name = std::move(name);
    c.type = type;
    c.length = length ? length : storedLength(type);
    c.flags = uint8_t(kUpdatableFlag | (isVariable(type) ? 0 : kFixedFlag) | extraFlags);
    if (type == ColType::Text || type == ColType::Memo) c.sortOrder = kGeneralSortOrder;
    return c;
}

// Adds a real index with its logical index of the same name and number.
void addIndex(TableDef& def, const std::string& name, std::vector<uint16_t> columns, uint8_t flags, bool primary) {
    RealIndex x;
    x.number = uint32_t(def.realIndexes.size());
    for (uint16_t c : columns) x.columns.push_back({c, true});
    x.flags = flags;
    def.realIndexes.push_back(x);
    LogicalIndex l;
    l.name = name;
    l.number = uint32_t(def.logicalIndexes.size());
    l.realIndex = x.number;
    l.kind = primary ? 1 : 0;
    l.relIndexNumber = 0xFFFFFFFF;
    def.logicalIndexes.push_back(l);
}

// ---- The system tables, with the columns, flags and indexes Access gives them ----

struct SysColumn {
    const char* name;
    ColType type;
    uint16_t length;
    uint8_t flags;  // beyond "updatable" and "fixed"
};

TableDef systemTable(const char* name, std::initializer_list<SysColumn> columns) {
    TableDef def;
    def.name = name;
    def.system = true;
    uint16_t n = 0;
    for (const SysColumn& s : columns) {
        Column c = makeColumn(s.name, s.type, s.length, uint8_t(kSystemColumnFlag | s.flags));
        c.number = n++;
        def.columns.push_back(c);
    }
    layoutColumns(def);
    return def;
}

TableDef msysObjects() {
    TableDef d = systemTable("MSysObjects", {
        {"Id", ColType::Long, 0, 0},          {"ParentId", ColType::Long, 0, 0},
        {"Name", ColType::Text, 510, 0},      {"Type", ColType::Integer, 0, 0},
        {"DateCreate", ColType::DateTime, 0, 0}, {"DateUpdate", ColType::DateTime, 0, 0},
        {"Owner", ColType::Binary, 510, 0x20}, {"Flags", ColType::Long, 0, 0},
        {"Database", ColType::Memo, 0, 0},    {"Connect", ColType::Memo, 0, 0},
        {"ForeignName", ColType::Text, 510, 0}, {"RmtInfoShort", ColType::Binary, 510, 0},
        {"RmtInfoLong", ColType::Ole, 0, 0},  {"Lv", ColType::Ole, 0, 0},
        {"LvProp", ColType::Ole, 0, 0},       {"LvModule", ColType::Ole, 0, 0},
        {"LvExtra", ColType::Ole, 0, 0},
    });
    addIndex(d, "ParentIdName", {1, 2}, kIndexAlways | kIndexUnique, false);
    addIndex(d, "Id", {0}, kIndexAlways | kIndexUnique, true);
    return d;
}

TableDef msysAces() {
    TableDef d = systemTable("MSysACEs", {
        {"ObjectId", ColType::Long, 0, 0}, {"SID", ColType::Binary, 510, 0x20},
        {"ACM", ColType::Long, 0, 0},      {"FInheritable", ColType::Boolean, 0, 0},
    });
    addIndex(d, "ObjectId", {0}, kIndexAlways | kIndexRequired, false);
    return d;
}

TableDef msysQueries() {
    TableDef d = systemTable("MSysQueries", {
        {"ObjectId", ColType::Long, 0, 0},    {"Attribute", ColType::Byte, 0, 0},
        {"Order", ColType::Binary, 510, 0},   {"Name1", ColType::Text, 510, 0},
        {"Name2", ColType::Text, 510, 0},     {"Expression", ColType::Memo, 0, 0},
        {"Flag", ColType::Integer, 0, 0},     {"LvExtra", ColType::Long, 0, 0},
    });
    addIndex(d, "ObjectIdAttribute", {0, 1, 2}, kIndexAlways | kIndexUnique, true);
    return d;
}

TableDef msysRelationships() {
    TableDef d = systemTable("MSysRelationships", {
        {"szRelationship", ColType::Text, 510, 0}, {"grbit", ColType::Long, 0, 0},
        {"ccolumn", ColType::Long, 0, 0},          {"icolumn", ColType::Long, 0, 0},
        {"szObject", ColType::Text, 510, 0},       {"szColumn", ColType::Text, 510, 0},
        {"szReferencedObject", ColType::Text, 510, 0}, {"szReferencedColumn", ColType::Text, 510, 0},
    });
    addIndex(d, "szRelationship", {0}, kIndexAlways | kIndexIgnoreNulls, false);
    addIndex(d, "szObject", {4}, kIndexAlways | kIndexIgnoreNulls, false);
    addIndex(d, "szReferencedObject", {6}, kIndexAlways | kIndexIgnoreNulls, false);
    return d;
}

// A row of `def` from (column name, value) pairs; the other columns are null.
Row rowOf(const TableDef& def, std::initializer_list<std::pair<const char*, Value>> values) {
    Row row(def.columns.size());
    for (const auto& [name, v] : values)
        for (size_t i = 0; i < def.columns.size(); ++i)
            if (equalsFolded(def.columns[i].name, name)) row[i] = v;
    return row;
}

Row catalogRow(const TableDef& cat, int32_t id, int32_t parent, const std::string& name, int16_t type,
               double now, const Bytes& owner, int32_t flags) {
    return rowOf(cat, {{"Id", id}, {"ParentId", parent}, {"Name", name}, {"Type", type},
                       {"DateCreate", DateTime{now}}, {"DateUpdate", DateTime{now}}, {"Owner", owner},
                       {"Flags", flags}});
}

Row aceRow(const TableDef& aces, int32_t object, const Bytes& sid, int32_t acm, bool inheritable) {
    return rowOf(aces, {{"ObjectId", object}, {"SID", sid}, {"ACM", acm}, {"FInheritable", inheritable}});
}

// Days from 1970-01-01 of a civil date (proleptic Gregorian).
int64_t daysFromCivil(int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const int64_t era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = unsigned(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + int64_t(doe) - 719468;
}

// The rows of a brand-new table placed on its one data page, with their row ids.
std::vector<RowId> placeRows(Pager& pager, TableDef& def, uint32_t dataPage, const std::vector<Row>& rows) {
    uint8_t* p = pager.modify(dataPage);
    datapage::initDataPage(p, def.firstPage);
    std::vector<RowId> ids;
    for (const Row& r : rows) {
        Bytes b = encodeRow(pager, def, r);
        if (!datapage::canAppend(p, b.size()))
            fail(ErrorKind::Invalid, pager.path(), "the catalogue of a new file does not fit its page");
        ids.push_back(RowId{dataPage, datapage::appendRow(p, b.data(), b.size())});
    }
    def.rowCount = uint32_t(rows.size());
    return ids;
}

// Fills the root leaf of every real index of `def` with the entries of `rows` (a new table's
// few rows fit one leaf).
void fillIndexes(Pager& pager, TableDef& def, const std::vector<Row>& rows, const std::vector<RowId>& ids) {
    for (RealIndex& x : def.realIndexes) {
        std::vector<std::pair<Bytes, RowId>> entries;
        for (size_t i = 0; i < rows.size(); ++i) {
            bool allNull = true;
            for (const auto& k : x.columns)
                for (size_t c = 0; c < def.columns.size(); ++c)
                    if (def.columns[c].number == k.columnNumber && !isNull(rows[i][c])) allNull = false;
            if (allNull && x.ignoreNulls()) continue;
            entries.emplace_back(encodeIndexKey(def, x, rows[i]), ids[i]);
        }
        std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
            return compareIndexEntries(a.first, a.second, b.first, b.second) < 0;
        });
        IndexPage leaf;
        leaf.number = x.rootPage;
        leaf.leaf = true;
        leaf.owner = def.firstPage;
        for (const auto& [key, id] : entries) leaf.insert(leaf.size(), key, id);
        if (!leaf.fits()) fail(ErrorKind::Invalid, pager.path(), "the catalogue index of a new file does not fit its page");
        leaf.encode(pager.modify(x.rootPage));
        x.rowCount = uint32_t(entries.size());
    }
}

// The usage maps of a table (owned, free space, one per real index) as the next rows of
// `mapPage` (a data page already set up).
void writeUsageMaps(Pager& pager, uint32_t mapPage, const TableDef& def, uint32_t mapStart,
                    const std::vector<uint32_t>& dataPages) {
    uint8_t* p = pager.modify(mapPage);
    auto add = [&](const Bytes& row, UsageMapRef ref) {
        if (ref.page != mapPage || datapage::appendRow(p, row.data(), row.size()) != ref.row)
            fail(ErrorKind::Invalid, pager.path(), "usage maps of " + def.name + " out of order");
    };
    add(inlineUsageMap(mapStart, dataPages), def.ownedPages);
    add(inlineUsageMap(mapStart, dataPages), def.freeSpacePages);
    for (const RealIndex& x : def.realIndexes) add(inlineUsageMap(mapStart, {x.rootPage}), x.usedPages);
}

// Gives `def` its pages: usage maps on `mapPage` from row `firstRow`, roots from `rootPages`.
uint8_t assignMaps(TableDef& def, uint32_t mapPage, uint8_t row, const std::vector<uint32_t>& rootPages) {
    def.ownedPages = UsageMapRef{mapPage, row++};
    def.freeSpacePages = UsageMapRef{mapPage, row++};
    for (size_t i = 0; i < def.realIndexes.size(); ++i) {
        def.realIndexes[i].usedPages = UsageMapRef{mapPage, row++};
        def.realIndexes[i].rootPage = rootPages.at(i);
    }
    return row;
}

void buildNewFile(Pager& pager) {
    const double now = nowAsDate();
    constexpr uint32_t kPages = 16;
    for (uint32_t i = 0; i < kPages; ++i) pager.append();

    writeNewHeader(pager.modify(0), now);

    TableDef objects = msysObjects(), aces = msysAces(), queries = msysQueries(), rels = msysRelationships();
    objects.firstPage = 2;
    aces.firstPage = 3;
    queries.firstPage = 4;
    rels.firstPage = 5;

    // Usage maps (page 6) and index roots (7..13), in the order Access has them.
    constexpr uint32_t kMapPage = 6, kObjectsData = 14, kAcesData = 15;
    uint8_t row = 0;
    row = assignMaps(objects, kMapPage, row, {7, 8});
    row = assignMaps(aces, kMapPage, row, {9});
    row = assignMaps(queries, kMapPage, row, {10});
    assignMaps(rels, kMapPage, row, {11, 12, 13});

    // The catalogue and its access entries.
    const std::vector<Row> objectRows = {
        catalogRow(objects, kTablesId, kRootId, "Tables", kTypeContainer, now, kEngineSid, kSystemObject),
        catalogRow(objects, kDatabasesId, kRootId, "Databases", kTypeContainer, now, kEngineSid, kSystemObject),
        catalogRow(objects, kRelationshipsId, kRootId, "Relationships", kTypeContainer, now, kEngineSid, kSystemObject),
        catalogRow(objects, kMSysDbId, kDatabasesId, "MSysDb", kTypeDatabase, now, kAdminSid, kSystemObject),
        catalogRow(objects, 2, kTablesId, "MSysObjects", kTypeTable, now, kEngineSid, kSystemObject),
        catalogRow(objects, 3, kTablesId, "MSysACEs", kTypeTable, now, kEngineSid, kSystemObject),
        catalogRow(objects, 4, kTablesId, "MSysQueries", kTypeTable, now, kEngineSid, kSystemObject),
        catalogRow(objects, 5, kTablesId, "MSysRelationships", kTypeTable, now, kEngineSid, kSystemObject),
    };
    const std::vector<Row> aceRows = {
        aceRow(aces, 2, kAdminSid, 393216, false),       aceRow(aces, 2, kUsersSid, 20, false),
        aceRow(aces, 3, kAdminSid, 393216, false),
        aceRow(aces, 4, kAdminSid, 393216, false),       aceRow(aces, 4, kUsersSid, 20, false),
        aceRow(aces, 5, kAdminSid, 917504, false),       aceRow(aces, 5, kUsersSid, 20, false),
        aceRow(aces, kTablesId, kCreatorSid, kCreatorTemplate, true),
        aceRow(aces, kTablesId, kAdminSid, kFullAccess, true),
        aceRow(aces, kTablesId, kUsersSid, kFullAccess, true),
        aceRow(aces, kRelationshipsId, kCreatorSid, kCreatorTemplate, true),
        aceRow(aces, kRelationshipsId, kAdminSid, 393217, false),
        aceRow(aces, kRelationshipsId, kUsersSid, 1048575, true),
        aceRow(aces, kDatabasesId, kAdminSid, 393216, false),
        aceRow(aces, kMSysDbId, kAdminSid, 393230, false),
        aceRow(aces, kMSysDbId, kUsersSid, 14, false),
    };
    std::vector<RowId> objectIds = placeRows(pager, objects, kObjectsData, objectRows);
    std::vector<RowId> aceIds = placeRows(pager, aces, kAcesData, aceRows);
    fillIndexes(pager, objects, objectRows, objectIds);
    fillIndexes(pager, aces, aceRows, aceIds);
    for (TableDef* d : {&queries, &rels})
        for (const RealIndex& x : d->realIndexes) initEmptyLeaf(pager.modify(x.rootPage), d->firstPage);

    datapage::initDataPage(pager.modify(kMapPage), 0);
    writeUsageMaps(pager, kMapPage, objects, 0, {kObjectsData});
    writeUsageMaps(pager, kMapPage, aces, 0, {kAcesData});
    writeUsageMaps(pager, kMapPage, queries, 0, {});
    writeUsageMaps(pager, kMapPage, rels, 0, {});
    for (TableDef* d : {&objects, &aces, &queries, &rels}) writeTableDef(pager, *d);

    // The database's page map: pages free for reuse, none inside the file; past its end all are.
    uint8_t* p = pager.modify(1);
    datapage::initDataPage(p, 1);
    Bytes global(kMapRowSize, 0);
    for (uint32_t pg = kPages; pg < kMapBits * 8; ++pg) global[5 + pg / 8] |= uint8_t(1u << (pg % 8));
    datapage::appendRow(p, global.data(), global.size());
    Bytes second(kMapRowSize, 0);
    datapage::appendRow(p, second.data(), second.size());
}

}  // namespace

Bytes inlineUsageMap(uint32_t start, const std::vector<uint32_t>& pages) {
    Bytes b(kMapRowSize, 0);
    putLe32(b.data() + 1, start);
    for (uint32_t pg : pages) {
        if (pg < start || pg - start >= kMapBits * 8) fail(ErrorKind::Invalid, "", "page outside a new usage map");
        b[5 + (pg - start) / 8] |= uint8_t(1u << ((pg - start) % 8));
    }
    return b;
}

void initEmptyLeaf(uint8_t* p, uint32_t owner) {
    std::fill(p, p + kPageSize, uint8_t(0));
    p[0] = page::kIndexLeaf;
    p[1] = 0x01;
    putLe16(p + 2, uint16_t(indexpage::kEntryArea));
    putLe32(p + 4, owner);
}

double nowAsDate() {
    std::time_t t = std::time(nullptr);
    std::tm tm{};
#ifdef _WIN32
    localtime_s(&tm, &t);
#else
    localtime_r(&t, &tm);
#endif
    int64_t days = daysFromCivil(tm.tm_year + 1900, unsigned(tm.tm_mon + 1), unsigned(tm.tm_mday));
    double seconds = tm.tm_hour * 3600.0 + tm.tm_min * 60.0 + tm.tm_sec;
    // 1899-12-30 is day -25569 from 1970-01-01.
    return double(days + 25569) + seconds / 86400.0;
}

TableDef layoutTable(const TableSpec& spec, const std::string& file) {
    const std::string& t = spec.name;
    if (std::string f = nameFault(t); !f.empty()) invalid(file, t.empty() ? "\"\"" : t, f);
    if (spec.columns.empty()) invalid(file, t, "a table needs at least one column");
    if (spec.columns.size() > kMaxColumns) invalid(file, t, "more than 255 columns");
    if (spec.indexes.size() > kMaxIndexes) invalid(file, t, "more than 32 indexes");

    TableDef def;
    def.name = t;
    size_t autoNumbers = 0;
    for (size_t i = 0; i < spec.columns.size(); ++i) {
        const ColumnSpec& s = spec.columns[i];
        if (std::string f = nameFault(s.name); !f.empty()) invalid(file, t, "column " + std::to_string(i + 1) + ": " + f);
        for (size_t k = 0; k < i; ++k)
            if (equalsFolded(spec.columns[k].name, s.name)) invalid(file, t, "two columns are named " + s.name);
        if (!knownType(s.type)) invalid(file, t, "column " + s.name + " has an unknown type " + std::to_string(int(s.type)));
        uint16_t length = 0;
        if (s.type == ColType::Text) {
            if (s.length < 1 || s.length > 255)
                invalid(file, t, "column " + s.name + ": a Text column holds 1 to 255 characters, not " + std::to_string(s.length));
            length = uint16_t(2 * s.length);
        } else if (s.type == ColType::Binary) {
            if (s.length > 255) invalid(file, t, "column " + s.name + ": a Binary column holds at most 255 bytes");
            length = s.length ? s.length : 255;
        } else if (s.type == ColType::Numeric) {
            if (s.precision < 1 || s.precision > 28 || s.scale > s.precision)
                invalid(file, t, "column " + s.name + ": a Decimal needs precision 1 to 28 and a scale not above it");
        }
        if (s.autoNumber && s.type != ColType::Long) invalid(file, t, "column " + s.name + ": only a Long can be an AutoNumber");
        if (s.autoNumber && ++autoNumbers > 1) invalid(file, t, "more than one AutoNumber column");

        Column c = makeColumn(s.name, s.type, length, s.autoNumber ? kAutoNumberFlag : 0);
        c.number = uint16_t(i);
        if (s.type == ColType::Text || s.type == ColType::Memo) c.extFlags = kCompressedUnicode;
        if (s.type == ColType::Numeric) {
            c.precision = s.precision;
            c.scale = s.scale;
        }
        def.columns.push_back(c);
    }
    layoutColumns(def);

    // The smallest row must fit a page: fixed area, offsets, counts and null mask.
    size_t fixedEnd = 0;
    for (const Column& c : def.columns)
        if (c.fixed()) fixedEnd = std::max<size_t>(fixedEnd, size_t(c.fixedOffset) + c.length);
    size_t minimal = 2 + fixedEnd + (def.varColumns ? 4 + 2 * size_t(def.varColumns) : 0) + (def.columns.size() + 7) / 8;
    if (minimal > kMaxRowBytes) invalid(file, t, "the columns need more room than a row has");

    bool primary = false;
    for (size_t i = 0; i < spec.indexes.size(); ++i) {
        const IndexSpec& s = spec.indexes[i];
        if (std::string f = nameFault(s.name); !f.empty()) invalid(file, t, "index " + std::to_string(i + 1) + ": " + f);
        for (size_t k = 0; k < i; ++k)
            if (equalsFolded(spec.indexes[k].name, s.name)) invalid(file, t, "two indexes are named " + s.name);
        if (s.columns.empty() || s.columns.size() > 10) invalid(file, t, "index " + s.name + " needs 1 to 10 columns");
        if (s.primaryKey && primary) invalid(file, t, "more than one primary key");
        primary = primary || s.primaryKey;
        std::vector<RealIndex::KeyColumn> keys;
        for (const std::string& name : s.columns) {
            const Column* c = def.column(name);
            if (!c) invalid(file, t, "index " + s.name + " names column " + name + ", which the table lacks");
            if (c->type == ColType::Memo || c->type == ColType::Ole)
                invalid(file, t, "index " + s.name + ": a Memo or OLE Object column cannot be indexed");
            for (const auto& k : keys)
                if (k.columnNumber == c->number) invalid(file, t, "index " + s.name + " names column " + name + " twice");
            keys.push_back({c->number, true});
        }
        uint8_t flags = kIndexAlways;
        if (s.primaryKey || s.unique) flags |= kIndexUnique;
        if (s.primaryKey) flags |= kIndexRequired;

        // Logical indexes with the same columns and flags share one real index.
        uint32_t real = uint32_t(def.realIndexes.size());
        for (const RealIndex& x : def.realIndexes) {
            bool same = x.flags == flags && x.columns.size() == keys.size();
            for (size_t k = 0; same && k < keys.size(); ++k)
                same = x.columns[k].columnNumber == keys[k].columnNumber && x.columns[k].ascending == keys[k].ascending;
            if (same) real = x.number;
        }
        if (real == def.realIndexes.size()) {
            RealIndex x;
            x.number = real;
            x.columns = keys;
            x.flags = flags;
            def.realIndexes.push_back(x);
        }
        LogicalIndex l;
        l.name = s.name;
        l.number = uint32_t(i);
        l.realIndex = real;
        l.kind = s.primaryKey ? 1 : 0;
        l.relIndexNumber = 0xFFFFFFFF;
        def.logicalIndexes.push_back(l);
    }
    return def;
}

// ---- Database ----

std::unique_ptr<Database> Database::create(const std::string& path) {
    if (File::exists(path)) fail(ErrorKind::Invalid, path, "the file already exists; a new database is not written over it");
    {
        std::unique_ptr<Pager> pager = Pager::create(path);
        try {
            pager->begin();
            buildNewFile(*pager);
            pager->commit();
        } catch (...) {
            pager->rollback();
            pager.reset();
            File::remove(path);
            File::remove(path + ".klk");  // the pager's commit counter beside it
            throw;
        }
    }
    return open(path, Mode::ReadWrite);
}

Table& Database::createTable(const TableSpec& spec) {
    const std::string& file = path();
    if (!pager_->writable()) fail(ErrorKind::ReadOnly, file, "the file is open for reading only");
    TableDef def = layoutTable(spec, file);
    for (const std::string& name : tableNames(true))
        if (equalsFolded(name, spec.name)) invalid(file, spec.name, "a table of that name already exists");

    Table& objects = table("MSysObjects");
    // Files of some other writers have no access entries at all: then the new table gets none.
    Table* aces = hasTable("MSysACEs") ? &table("MSysACEs") : nullptr;
    const TableDef& cat = objects.def();

    // The Tables container, the database's owner (for the new object) and the SIDs that the
    // container hands down to new tables (its inheritable entries, the Creator template aside).
    int32_t tablesId = kTablesId;
    Bytes owner;
    {
        size_t cId = 0, cParent = 0, cName = 0, cOwner = 0;
        for (size_t i = 0; i < cat.columns.size(); ++i) {
            const std::string& n = cat.columns[i].name;
            if (n == "Id") cId = i;
            else if (n == "ParentId") cParent = i;
            else if (n == "Name") cName = i;
            else if (n == "Owner") cOwner = i;
        }
        std::vector<std::pair<int32_t, std::string>> named;  // (parent, name) of every object
        objects.scan([&](RowId, const Row& r) {
            auto name = std::get_if<std::string>(&r[cName]);
            auto parent = std::get_if<int32_t>(&r[cParent]);
            if (!name || !parent) return true;
            named.emplace_back(*parent, *name);
            if (*parent == kRootId && *name == "Tables") {
                if (auto id = std::get_if<int32_t>(&r[cId])) tablesId = *id;
            } else if (*name == "MSysDb") {
                if (auto b = std::get_if<Bytes>(&r[cOwner])) owner = *b;
            }
            return true;
        });
        // Queries and linked tables share the Tables container (and its unique name index).
        for (const auto& [parent, name] : named)
            if (parent == tablesId && equalsFolded(name, spec.name))
                invalid(file, spec.name, "an object of that name (a query or linked table) already exists");
    }
    if (owner.empty()) owner = kAdminSid;
    std::vector<Bytes> sids;
    if (aces) {
        const TableDef& ad = aces->def();
        size_t cObject = 0, cSid = 0, cAcm = 0;
        for (size_t i = 0; i < ad.columns.size(); ++i) {
            const std::string& n = ad.columns[i].name;
            if (n == "ObjectId") cObject = i;
            else if (n == "SID") cSid = i;
            else if (n == "ACM") cAcm = i;
        }
        aces->scan([&](RowId, const Row& r) {
            auto obj = std::get_if<int32_t>(&r[cObject]);
            auto sid = std::get_if<Bytes>(&r[cSid]);
            auto acm = std::get_if<int32_t>(&r[cAcm]);
            if (obj && sid && *obj == tablesId && !(acm && *acm == kCreatorTemplate) &&
                std::find(sids.begin(), sids.end(), *sid) == sids.end())
                sids.push_back(*sid);
            return true;
        });
    }
    if (sids.empty()) sids.push_back(owner);

    begin();
    try {
        Pager& pager = *pager_;
        def.firstPage = allocatePage(pager);
        uint32_t mapPage = allocatePage(pager);
        std::vector<uint32_t> roots;
        for (size_t i = 0; i < def.realIndexes.size(); ++i) roots.push_back(allocatePage(pager));
        assignMaps(def, mapPage, 0, roots);
        // The maps cover the 512 pages from the table's first: its first data pages come next.
        datapage::initDataPage(pager.modify(mapPage), 0);
        writeUsageMaps(pager, mapPage, def, def.firstPage, {});
        for (uint32_t r : roots) initEmptyLeaf(pager.modify(r), def.firstPage);
        writeTableDef(pager, def);

        double now = nowAsDate();
        objects.insert(catalogRow(cat, int32_t(def.firstPage), tablesId, def.name, kTypeTable, now, owner, 0));
        for (const Bytes& sid : sids)
            if (aces) aces->insert(aceRow(aces->def(), int32_t(def.firstPage), sid, kFullAccess, false));
        commit();
    } catch (...) {
        rollback();
        throw;
    }
    // Our own commit leaves the cached catalogue in place: read it again to see the new table.
    reloadDefinitions();
    return table(spec.name);
}

}  // namespace jet
