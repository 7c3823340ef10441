// Reading a table definition from its TDEF page chain.
//
//   page:  | 0x02 | 0x01 | free (2) | next page (4) | data ...        (chained pages: the same
//          8-byte header, their data continues the definition)
//   definition (offsets in the concatenated bytes, first page header included):
//     8 length (4) | 12 ? (4) | 16 rows (4) | 20 autonumber (4) | ... | 40 type (1) |
//     41 max columns (2) | 43 variable columns (2) | 45 columns (2) | 47 logical indexes (4) |
//     51 real indexes (4) | 55 owned pages map (4) | 59 free space map (4) |
//     63 real index entry counts: | ? (4) | entries (4) | ? (4) |        12 bytes per real index
//     columns:       25 bytes each | type (1) | ? (4) | number (2) | variable index (2) | ? (2) |
//                    misc (4): precision, scale / sort order + version | flags (1) | ext flags (1) |
//                    ? (4) | fixed offset (2) | length (2) |
//     column names:  | length (2) | UTF-16LE |
//     real indexes:  52 bytes each | ? (4) | 10 x (column number (2), 0x01 ascending (1)) |
//                    used pages map (4) | first page (4) | ? (4) | flags (1) | ? (5) |
//     logical:       28 bytes each | ? (4) | number (4) | real index (4) | rel table type (1) |
//                    rel index (4) | rel table page (4) | cascade updates (1) | deletes (1) |
//                    kind (1) | ? (4) |
//     logical names: | length (2) | UTF-16LE |
//     then per long-value column: | column (2) | owned map (4) | free map (4) | until 0xFFFF
#include <algorithm>
#include <set>

#include "error.h"
#include "format.h"
#include "pager.h"
#include "tabledef.h"
#include "text.h"

namespace jet {

namespace {

class Reader {
public:
    Reader(const std::vector<uint8_t>& b, const std::string& file, const std::string& what)
        : b_(b), file_(file), what_(what) {}

    const uint8_t* at(size_t off, size_t n) const {
        if (off > b_.size() || n > b_.size() - off)
            fail(ErrorKind::Corrupt, file_, what_ + " is cut short (needs bytes " + std::to_string(off) + ".." +
                                                std::to_string(off + n) + " of " + std::to_string(b_.size()) + ")");
        return b_.data() + off;
    }
    uint8_t u8(size_t off) const { return *at(off, 1); }
    uint16_t u16(size_t off) const { return le16(at(off, 2)); }
    uint32_t u32(size_t off) const { return le32(at(off, 4)); }
    UsageMapRef mapRef(size_t off) const {
        const uint8_t* p = at(off, 4);
        return UsageMapRef{le24(p + 1), p[0]};
    }
    // A name at pos: | length (2) | UTF-16LE |; advances pos.
    std::string name(size_t& pos) const {
        uint16_t n = u16(pos);
        const uint8_t* p = at(pos + 2, n);
        pos += 2 + size_t(n);
        return utf16leToUtf8(p, n);
    }
    [[noreturn]] void bad(const std::string& cause) const { fail(ErrorKind::Corrupt, file_, what_ + ": " + cause); }
    size_t size() const { return b_.size(); }

private:
    const std::vector<uint8_t>& b_;
    const std::string& file_;
    std::string what_;
};

}  // namespace

const Column* TableDef::column(std::string_view n) const {
    for (const auto& c : columns)
        if (equalsFolded(c.name, n)) return &c;
    return nullptr;
}

TableDef readTableDef(Pager& pager, uint32_t firstPage, std::string name) {
    const std::string& file = pager.path();
    std::string what = "table definition of " + (name.empty() ? std::string("?") : name) + " (page " +
                       std::to_string(firstPage) + ")";
    TableDef def;
    def.name = std::move(name);
    def.firstPage = firstPage;

    // Gather the chain.
    std::vector<uint8_t> bytes;
    std::set<uint32_t> seen;
    uint32_t pg = firstPage;
    while (pg != 0) {
        if (pg >= pager.pageCount())
            fail(ErrorKind::Corrupt, file, what + ": page " + std::to_string(pg) + " is past the end of the file");
        if (!seen.insert(pg).second) fail(ErrorKind::Corrupt, file, what + ": its page chain loops at page " + std::to_string(pg));
        PageRef p = pager.page(pg);
        if (p->bytes[0] != page::kTableDef)
            fail(ErrorKind::Corrupt, file, what + ": page " + std::to_string(pg) + " is not a table definition (type " +
                                               std::to_string(p->bytes[0]) + ")");
        def.defPages.push_back(pg);
        if (bytes.empty()) bytes.assign(p->bytes.begin(), p->bytes.end());
        else bytes.insert(bytes.end(), p->bytes.begin() + tdef::kPageHeader, p->bytes.end());
        pg = le32(p->data() + tdef::kNextPage);
    }

    Reader r(bytes, file, what);
    def.rowCount = r.u32(tdef::kRowCount);
    def.nextAutoNumber = r.u32(tdef::kAutoNumber);
    def.system = r.u8(tdef::kTableType) == tdef::kSystemTable;
    def.maxColumns = r.u16(tdef::kMaxColumns);
    def.varColumns = r.u16(tdef::kVarColumns);
    uint16_t columnCount = r.u16(tdef::kColumnCount);
    uint32_t logicalCount = r.u32(tdef::kLogicalIndexCount);
    uint32_t realCount = r.u32(tdef::kRealIndexCount);
    def.ownedPages = r.mapRef(tdef::kOwnedPages);
    def.freeSpacePages = r.mapRef(tdef::kFreeSpacePages);
    // Counts that cannot fit are rejected before anything is sized by them.
    if (realCount > 1000 || logicalCount > 1000) r.bad("implausible index counts");

    size_t pos = tdef::kRealIndexBlock;
    def.realIndexes.resize(realCount);
    for (uint32_t i = 0; i < realCount; ++i) {
        def.realIndexes[i].number = i;
        def.realIndexes[i].rowCount = r.u32(pos + 4);
        pos += tdef::kRealIndexCountSize;
    }

    size_t colBlock = pos;
    r.at(colBlock, size_t(columnCount) * tdef::kColumnSize);
    pos = colBlock + size_t(columnCount) * tdef::kColumnSize;
    def.columns.resize(columnCount);
    for (uint16_t i = 0; i < columnCount; ++i) def.columns[i].name = r.name(pos);
    for (uint16_t i = 0; i < columnCount; ++i) {
        Column& c = def.columns[i];
        size_t o = colBlock + size_t(i) * tdef::kColumnSize;
        c.type = ColType(r.u8(o + tdef::kColType));
        c.number = r.u16(o + tdef::kColNumber);
        c.varIndex = r.u16(o + tdef::kColVarIndex);
        c.flags = r.u8(o + tdef::kColFlags);
        c.extFlags = r.u8(o + tdef::kColExtFlags);
        c.fixedOffset = r.u16(o + tdef::kColFixedOffset);
        c.length = r.u16(o + tdef::kColLength);
        if (c.type == ColType::Numeric) {
            c.precision = r.u8(o + tdef::kColMisc);
            c.scale = r.u8(o + tdef::kColMisc + 1);
        } else if (c.type == ColType::Text || c.type == ColType::Memo) {
            c.sortOrder = r.u16(o + tdef::kColMisc);
            c.sortVersion = r.u8(o + tdef::kColMisc + 3);
        }
    }
    std::stable_sort(def.columns.begin(), def.columns.end(),
                     [](const Column& a, const Column& b) { return a.number < b.number; });
    for (size_t i = 1; i < def.columns.size(); ++i)
        if (def.columns[i].number == def.columns[i - 1].number)
            r.bad("two columns share number " + std::to_string(def.columns[i].number));
    for (const Column& c : def.columns)
        if (!c.fixed() && c.varIndex >= std::max<uint16_t>(def.maxColumns, columnCount))
            r.bad("column " + c.name + " has variable index " + std::to_string(c.varIndex));

    for (uint32_t i = 0; i < realCount; ++i) {
        RealIndex& x = def.realIndexes[i];
        const uint8_t* p = r.at(pos, tdef::kRealIndexSize);
        for (int k = 0; k < 10; ++k) {
            uint16_t num = le16(p + 4 + 3 * k);
            if (num == 0xFFFF) continue;
            bool known = std::any_of(def.columns.begin(), def.columns.end(), [&](const Column& c) { return c.number == num; });
            if (!known) r.bad("index " + std::to_string(i) + " names column number " + std::to_string(num) + ", which is absent");
            x.columns.push_back({num, (p[4 + 3 * k + 2] & 0x01) != 0});
        }
        x.usedPages = UsageMapRef{le24(p + 35), p[34]};
        x.rootPage = le32(p + 38);
        x.flags = p[46];
        pos += tdef::kRealIndexSize;
    }

    def.logicalIndexes.resize(logicalCount);
    for (uint32_t i = 0; i < logicalCount; ++i) {
        LogicalIndex& l = def.logicalIndexes[i];
        const uint8_t* p = r.at(pos, tdef::kLogicalIndexSize);
        l.number = le32(p + 4);
        l.realIndex = le32(p + 8);
        l.relTableType = p[12];
        l.relIndexNumber = le32(p + 13);
        l.relTablePage = le32(p + 17);
        l.cascadeUpdates = p[21];
        l.cascadeDeletes = p[22];
        l.kind = p[23];
        if (l.realIndex >= realCount)
            r.bad("logical index " + std::to_string(i) + " uses real index " + std::to_string(l.realIndex) + " of " +
                  std::to_string(realCount));
        pos += tdef::kLogicalIndexSize;
    }
    for (uint32_t i = 0; i < logicalCount; ++i) def.logicalIndexes[i].name = r.name(pos);
    return def;
}

uint32_t plausibleRowCount(const TableDef& def, const Pager& pager) {
    return uint32_t(std::min<uint64_t>(def.rowCount, uint64_t(pager.pageCount()) * 256));
}

}  // namespace jet
