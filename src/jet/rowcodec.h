// Decoding a table row, and walking the rows of a table's data pages.
//
//   row: | column count N (2) | fixed area: fixed columns at their offsets | variable data ... |
//        | end of variable data (2) | offset of variable column v (2), for v = V-1 .. 0 |
//        | V (2) | null mask: (N + 7) / 8 bytes, bit c set = column c not null |
//   Offsets count from the row start; variable column v runs from offset[v] to offset[v + 1]
//   (the end of data for the last). A Boolean lives only in the null mask (bit set = true).
//   A table without variable columns stores neither offsets nor V. A row written before a
//   column was added has a smaller N: the newer columns are null (Booleans false).
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "datapage.h"
#include "error.h"
#include "format.h"
#include "pager.h"
#include "tabledef.h"
#include "value.h"

namespace jet {

// Bytes a fixed column of this type takes in the fixed area (0 for Boolean).
uint16_t fixedSize(const Column& c);

// The parts of one stored row, bounds checked at parse time.
class RowView {
public:
    // Throws Corrupt (naming the file, page and slot) when the row's structure does not fit.
    // Inline: scans build one a row.
    RowView(const uint8_t* row, size_t len, bool hasVarColumns, const std::string& file, RowId where)
        : row_(row), len_(len), file_(file), where_(where) {
        if (len < 2) badRow();
        columnCount_ = le16(row);
        size_t maskLen = (size_t(columnCount_) + 7) / 8;
        if (2 + maskLen > len) badRow();
        mask_ = row + len - maskLen;
        size_t end = len - maskLen;
        fixedEnd_ = end;
        if (hasVarColumns) {
            if (end < 2 + 4) badRow();
            varCount_ = le16(row + end - 2);
            if (2 + 4 + 2 * size_t(varCount_) > end) badRow();
            varTable_ = end - 4;
            fixedEnd_ = end - 4 - 2 * size_t(varCount_);
        }
    }

    uint16_t columnCount() const { return columnCount_; }
    bool notNull(uint16_t columnNumber) const {
        return columnNumber < columnCount_ && (mask_[columnNumber >> 3] >> (columnNumber & 7) & 1);
    }
    // A variable column's bytes; false when the row has no such entry (a later column).
    bool var(uint16_t i, const uint8_t*& p, size_t& n) const {
        if (i >= varCount_) return false;
        size_t start = le16(row_ + varTable_ - 2 * size_t(i));
        size_t stop = le16(row_ + varTable_ - 2 * (size_t(i) + 1));
        if (start < 2 || start > stop || stop > fixedEnd_) badVar(i, start, stop);
        p = row_ + start;
        n = stop - start;
        return true;
    }
    // A fixed column's bytes; false when they lie beyond the row.
    bool fixed(uint16_t offset, uint16_t size, const uint8_t*& p) const {
        size_t pos = row::kFixedStart + size_t(offset);
        if (pos + size > fixedEnd_) return false;
        p = row_ + pos;
        return true;
    }
    const uint8_t* data() const { return row_; }
    size_t size() const { return len_; }
    uint16_t varCount() const { return varCount_; }
    size_t fixedEnd() const { return fixedEnd_; }
    const uint8_t* mask() const { return mask_; }
    // A variable column's bytes when the row is known to have entry i (i < varCount()).
    void varIn(uint16_t i, const uint8_t*& p, size_t& n) const {
        size_t start = le16(row_ + varTable_ - 2 * size_t(i));
        size_t stop = le16(row_ + varTable_ - 2 * (size_t(i) + 1));
        if (start < 2 || start > stop || stop > fixedEnd_) badVar(i, start, stop);
        p = row_ + start;
        n = stop - start;
    }

private:
    [[noreturn]] void badVar(uint16_t i, size_t start, size_t stop) const;
    [[noreturn]] void badRow() const;  // says what of the structure does not fit
    const uint8_t* row_;
    size_t len_;
    uint16_t columnCount_ = 0;
    const uint8_t* mask_ = nullptr;
    uint16_t varCount_ = 0;
    size_t varTable_ = 0;  // position of the offset of variable column 0
    size_t fixedEnd_ = 0;  // end of the area where data may lie
    const std::string& file_;
    RowId where_;
};

// Per-table decoding plan, built once per scan.
class RowDecoder {
public:
    RowDecoder(Pager& pager, const TableDef& def);
    // All columns, in def.columns order, into `out` (its strings and vectors are reused).
    void decode(const uint8_t* row, size_t len, RowId where, Row& out) const;
    // One column (position in def.columns).
    Value decodeOne(const uint8_t* row, size_t len, RowId where, size_t column) const;
    // The given columns (positions in def.columns, in range), in that order, into `out`.
    void decodeColumns(const uint8_t* row, size_t len, RowId where, const std::vector<size_t>& columns, Row& out) const;
    size_t columnCount() const { return cols_.size(); }

private:
    struct Col {
        ColType type;
        uint16_t number;
        bool fixed;
        uint16_t offset;   // fixed area offset, or variable index
        uint16_t size;     // fixed size
        uint8_t scale;
        uint16_t index;    // position in def.columns
    };
    // decode() of a row that has every column of the definition: the columns grouped by type,
    // each group one tight loop, no per-column checks of the row's extent.
    enum class Kind : uint8_t { Bool, Int16, Int32, Double, Currency, DateTime, Text, Other };
    struct Group {
        Kind kind;
        uint16_t begin, end;  // range of byKind_
    };
    void decodeInto(const RowView& v, const Col& c, Value& out) const;
    void decodeWhole(const RowView& v, Row& out) const;
    [[noreturn]] void badFixed(const RowView& v, const Col& c) const;

    Pager& pager_;
    std::vector<Col> cols_;
    bool hasVar_ = false;
    std::vector<Col> byKind_;
    std::vector<Group> groups_;
    uint16_t needColumns_ = 0;  // a row with fewer columns, a shorter fixed area or fewer
    size_t needFixedEnd_ = 0;   // variable entries takes the general way
    uint16_t needVars_ = 0;
};

// Where a live row's bytes are: its own slot, or where its overflow pointer leads.
struct RowLocation {
    PageRef page;   // holds the bytes alive
    uint16_t start = 0, end = 0;
    RowId at;       // where the bytes are (the home slot unless the row overflowed)
};

// Follows an overflow pointer from a slot's 4 bytes to the row's bytes (a few hops at most, no
// loops). Corrupt when it leads nowhere sensible.
RowLocation followOverflow(Pager& pager, const uint8_t* pointer, RowId home);

// The data pages of `def` among `pages` (its owned pages, ascending), each fetched once: every
// live row in physical order, visit(RowId home, const uint8_t* bytes, size_t len) returning
// false to stop. LVAL and index pages in the list are skipped. `readsRows` false: the visitor
// looks at no row bytes (only ids are wanted), so pages are not fetched ahead.
template <class Visit>
void forEachRow(Pager& pager, const TableDef& def, const std::vector<uint32_t>& pages, Visit&& visit,
                bool readsRows = true) {
    const std::string& file = pager.path();
    const uint32_t count = pager.pageCount();
    constexpr size_t kAhead = 64;
    for (size_t i = 0; i < pages.size(); ++i) {
        if (i % kAhead == 0) pager.preload(pages.data() + i, std::min(kAhead, pages.size() - i));
        uint32_t pg = pages[i];
        if (pg == 0 || pg >= count) continue;
        PageRef p = pager.page(pg);
        // The next page's bytes on their way to the cache while this one is parsed: rows are
        // read in a few places each, too scattered for the hardware to guess across pages.
        if (readsRows && i + 1 < pages.size() && pages[i + 1] != 0 && pages[i + 1] < count) {
            PageRef next = pager.page(pages[i + 1]);
            for (size_t off = 0; off < kPageSize; off += 64) __builtin_prefetch(next->data() + off);
        }
        const uint8_t* d = p->data();
        if (d[0] != page::kData || le32(d + 4) != def.firstPage) continue;
        uint16_t n = datapage::rowCount(d);
        datapage::checkDataPage(d, file, pg);
        for (uint16_t r = 0; r < n; ++r) {
            datapage::Slot s = datapage::slot(d, r, file, pg);
            if (s.deleted) continue;
            RowId home{pg, r};
            if (s.overflow) {
                RowLocation loc = followOverflow(pager, d + s.start, home);
                if (!visit(home, loc.page->data() + loc.start, size_t(loc.end - loc.start))) return;
            } else if (!visit(home, d + s.start, s.size())) {
                return;
            }
        }
    }
}

// The owned pages of a table (ascending).
std::vector<uint32_t> ownedPages(Pager& pager, const TableDef& def);

}  // namespace jet
