// Encoding a table definition into its TDEF pages (the reader is tabledef.cpp).
//
//   page:  | 0x02 | 0x01 | free - 8 (2) | next page (4) | definition ...     (a chained page: the
//          same 8-byte header, then the next 4088 bytes of the definition)
//   definition (offsets in the concatenated bytes, first page header included):
//     8 length (4) | 12 1625 (4) | 16 rows (4) | 20 autonumber (4) | 24 0x01 | 15 x 0 |
//     40 type (1) | 41 max columns (2) | 43 variable columns (2) | 45 columns (2) |
//     47 logical indexes (4) | 51 real indexes (4) | 55 owned map (4) | 59 free space map (4) |
//     63 per real index: | 0 (4) | entries (4) | 0 (4) |
//     per column (25): | type | 1625 (4) | number (2) | variable index (2) | number (2) |
//                      misc (4): precision, scale, 0, 0 / sort order (2), 0, version |
//                      flags | ext flags | 0 (4) | fixed offset (2) | length (2) |
//     column names:    | length in bytes (2) | UTF-16LE |
//     per real index (52): | 1923 (4) | 10 x (column number (2), 0x01 ascending) unused 0xFFFF, 0 |
//                      used pages map (4) | root page (4) | 0 (4) | flags (1) | 0 (5) |
//     per logical (28): | 1625 (4) | number (4) | real index (4) | rel table type (1) |
//                      rel index (4) | rel table page (4) | cascade updates | deletes | kind |
//                      0 (4) |
//     logical names, then 0xFFFF
//   The constants 1625 and 1923 are what Access writes in those places.
#include <algorithm>

#include "create.h"
#include "error.h"
#include "format.h"
#include "pager.h"
#include "text.h"
#include "usagemap.h"

namespace jet {

namespace {

constexpr uint32_t kTableMagic = 1625;
constexpr uint32_t kIndexMagic = 1923;
constexpr size_t kChainData = kPageSize - tdef::kPageHeader;  // definition bytes per chained page

class Writer {
public:
    Bytes b;
    void u8(uint8_t v) { b.push_back(v); }
    void u16(uint16_t v) { b.push_back(uint8_t(v)); b.push_back(uint8_t(v >> 8)); }
    void u32(uint32_t v) { u16(uint16_t(v)); u16(uint16_t(v >> 16)); }
    void zeros(size_t n) { b.insert(b.end(), n, 0); }
    void mapRef(UsageMapRef r) { u8(r.row); u8(uint8_t(r.page)); u8(uint8_t(r.page >> 8)); u8(uint8_t(r.page >> 16)); }
    void name(const std::string& utf8) {
        std::u16string s = utf8ToUtf16(utf8);
        u16(uint16_t(s.size() * 2));
        for (char16_t c : s) u16(uint16_t(c));
    }
};

bool textual(ColType t) { return t == ColType::Text || t == ColType::Memo; }

}  // namespace

Bytes encodeTableDef(const TableDef& def) {
    if (def.columns.size() > 0xFFFF || def.realIndexes.size() > 255 || def.logicalIndexes.size() > 255)
        fail(ErrorKind::Invalid, def.name, "the table definition is too large to store");
    Writer w;
    w.u8(page::kTableDef);
    w.u8(0x01);
    w.u16(0);  // free space: set per page when written
    w.u32(0);  // next page
    w.u32(0);  // length: patched below
    w.u32(kTableMagic);
    w.u32(def.rowCount);
    w.u32(def.nextAutoNumber);
    w.u8(0x01);  // Access needs this set for its autonumbers to work
    w.zeros(15);
    w.u8(def.system ? tdef::kSystemTable : tdef::kUserTable);
    w.u16(def.maxColumns);
    w.u16(def.varColumns);
    w.u16(uint16_t(def.columns.size()));
    w.u32(uint32_t(def.logicalIndexes.size()));
    w.u32(uint32_t(def.realIndexes.size()));
    w.mapRef(def.ownedPages);
    w.mapRef(def.freeSpacePages);

    for (const RealIndex& x : def.realIndexes) {
        w.u32(0);
        w.u32(x.rowCount);
        w.u32(0);
    }
    for (const Column& c : def.columns) {
        w.u8(uint8_t(c.type));
        w.u32(kTableMagic);
        w.u16(c.number);
        w.u16(c.varIndex);
        w.u16(c.number);
        if (c.type == ColType::Numeric) {
            w.u8(c.precision);
            w.u8(c.scale);
            w.u16(0);
        } else if (textual(c.type)) {
            w.u16(c.sortOrder);
            w.u8(0);
            w.u8(uint8_t(c.sortVersion));
        } else {
            w.u32(0);
        }
        w.u8(c.flags);
        w.u8(c.extFlags);
        w.u32(0);
        w.u16(c.fixed() ? c.fixedOffset : 0);
        w.u16(c.length);
    }
    for (const Column& c : def.columns) w.name(c.name);

    for (const RealIndex& x : def.realIndexes) {
        if (x.columns.size() > 10) fail(ErrorKind::Invalid, def.name, "an index has more than 10 columns");
        w.u32(kIndexMagic);
        for (size_t k = 0; k < 10; ++k) {
            if (k < x.columns.size()) {
                w.u16(x.columns[k].columnNumber);
                w.u8(x.columns[k].ascending ? 0x01 : 0x00);
            } else {
                w.u16(0xFFFF);
                w.u8(0);
            }
        }
        w.mapRef(x.usedPages);
        w.u32(x.rootPage);
        w.u32(0);
        w.u8(x.flags);
        w.zeros(5);
    }
    for (const LogicalIndex& l : def.logicalIndexes) {
        w.u32(kTableMagic);
        w.u32(l.number);
        w.u32(l.realIndex);
        w.u8(l.relTableType);
        w.u32(l.relIndexNumber);
        w.u32(l.relTablePage);
        w.u8(l.cascadeUpdates);
        w.u8(l.cascadeDeletes);
        w.u8(l.kind);
        w.u32(0);
    }
    for (const LogicalIndex& l : def.logicalIndexes) w.name(l.name);
    w.u16(0xFFFF);

    putLe32(w.b.data() + tdef::kLength, uint32_t(w.b.size()));
    return std::move(w.b);
}

uint32_t allocatePage(Pager& pager) {
    uint32_t pg = pager.append();
    UsageMap::markAllocated(pager, pg);
    return pg;
}

void writeTableDef(Pager& pager, TableDef& def) {
    Bytes b = encodeTableDef(def);
    size_t need = b.size() <= kPageSize ? 1 : 1 + (b.size() - kPageSize + kChainData - 1) / kChainData;
    std::vector<uint32_t> pages = def.defPages;
    if (pages.empty()) pages.push_back(def.firstPage);
    if (pages.front() != def.firstPage)
        fail(ErrorKind::Invalid, pager.path(), "table definition of " + def.name + " does not start at its first page");
    while (pages.size() < need) pages.push_back(allocatePage(pager));
    // A chain longer than needed keeps its extra pages unused (cut off from the chain).
    pages.resize(need);

    size_t pos = 0;
    for (size_t i = 0; i < pages.size(); ++i) {
        uint8_t* p = pager.modify(pages[i]);
        std::fill(p, p + kPageSize, uint8_t(0));
        size_t n;
        if (i == 0) {
            n = std::min(b.size(), size_t(kPageSize));
            std::copy(b.begin(), b.begin() + long(n), p);
        } else {
            p[0] = page::kTableDef;
            p[1] = 0x01;
            n = std::min(b.size() - pos, kChainData);
            std::copy(b.begin() + long(pos), b.begin() + long(pos + n), p + tdef::kPageHeader);
        }
        pos += n;
        size_t used = (i == 0 ? 0 : tdef::kPageHeader) + n;
        putLe16(p + 2, uint16_t(used + 8 >= kPageSize ? 0 : kPageSize - used - 8));
        putLe32(p + tdef::kNextPage, i + 1 < pages.size() ? pages[i + 1] : 0);
    }
    def.defPages = std::move(pages);
}

}  // namespace jet
