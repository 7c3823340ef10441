// The in-memory model of a table definition (TDEF pages), shared by the reader, the writer, the
// index code and file creation. tabledef.cpp parses it from pages and encodes it back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "value.h"

namespace jet {

class Pager;

// A row's address: data page and slot on it. Stable for the row's life (an update that moves the
// row leaves an overflow pointer in the old slot).
struct RowId {
    uint32_t page = 0;
    uint16_t row = 0;
    bool operator==(const RowId&) const = default;
    auto operator<=>(const RowId&) const = default;
};

// A reference to a usage map: the row (page, slot) that holds the map's bytes.
struct UsageMapRef {
    uint32_t page = 0;
    uint8_t row = 0;
};

struct Column {
    std::string name;        // UTF-8
    ColType type = ColType::Text;
    uint16_t number = 0;     // column number as stored (stable across deleted columns)
    uint16_t varIndex = 0;   // index into the row's variable-length table (variable columns)
    uint16_t fixedOffset = 0;// offset in the fixed area (fixed columns)
    uint16_t length = 0;     // bytes: Text is 2 per character in Jet 4 (a Text(50) has 100)
    uint8_t flags = 0;       // 0x01 fixed length, 0x02 can be null, 0x04 autonumber, 0x10 replication,
                             // 0x40 hyperlink... as stored
    uint8_t extFlags = 0;    // 0x01 compressed unicode, as stored
    uint8_t precision = 0;   // Numeric
    uint8_t scale = 0;       // Numeric
    uint16_t sortOrder = 0;  // Text/Memo: the column's sort order id (1033 is General)
    uint16_t sortVersion = 0;
    uint16_t codePage = 0;

    bool fixed() const { return flags & 0x01; }
    bool autoNumber() const { return flags & 0x04; }
    bool compressedUnicode() const { return extFlags & 0x01; }
};

// A real index: the B-tree on disk. Several logical indexes may share one.
struct RealIndex {
    uint32_t number = 0;
    struct KeyColumn {
        uint16_t columnNumber = 0;  // Column::number
        bool ascending = true;
    };
    std::vector<KeyColumn> columns;  // at most 10
    UsageMapRef usedPages;
    uint32_t rootPage = 0;           // first index page
    uint8_t flags = 0;               // 0x01 unique, 0x02 ignore nulls, 0x08 required
    uint32_t rowCount = 0;           // entry count as kept in the table definition header part

    bool unique() const { return flags & 0x01; }
    bool ignoreNulls() const { return flags & 0x02; }
};

// A logical index: a name the user sees.
struct LogicalIndex {
    std::string name;
    uint32_t number = 0;
    uint32_t realIndex = 0;     // RealIndex::number it uses
    uint8_t kind = 0;           // 0x01 primary key, 0x02 foreign key reference, 0 plain
    uint8_t relTableType = 0;   // foreign key fields, kept as stored
    uint32_t relIndexNumber = 0;
    uint32_t relTablePage = 0;
    uint8_t cascadeUpdates = 0;
    uint8_t cascadeDeletes = 0;
};

struct TableDef {
    std::string name;
    uint32_t firstPage = 0;      // the TDEF page (the table's id in the catalogue)
    bool system = false;         // table type byte 0x53
    uint32_t rowCount = 0;
    uint32_t nextAutoNumber = 0; // the last autonumber handed out
    uint16_t maxColumns = 0;     // highest column number + 1 ever used
    uint16_t varColumns = 0;
    std::vector<Column> columns; // in column-number order
    std::vector<RealIndex> realIndexes;
    std::vector<LogicalIndex> logicalIndexes;
    UsageMapRef ownedPages;
    UsageMapRef freeSpacePages;
    std::vector<uint32_t> defPages;  // the TDEF page chain, first page first
    uint32_t lastLvalPage = 0;       // writers' hint (not stored): the LVAL page last written to
    uint32_t lastDataPage = 0;       // writers' hint (not stored): the data page last written to

    const Column* column(std::string_view name) const;  // without regard to case
};

// The stored row count, bounded by what the file can hold (a damaged count must not reserve
// gigabytes): a page holds at most 256 rows.
uint32_t plausibleRowCount(const TableDef& def, const Pager& pager);

// Reads the table definition that starts at page `firstPage`.
TableDef readTableDef(Pager& pager, uint32_t firstPage, std::string name);

}  // namespace jet
