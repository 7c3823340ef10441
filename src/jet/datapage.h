// Data pages: the slots of rows (table rows, LVAL rows, usage-map rows) on one page.
//
//   0      1      2          4                  8           12         14
//   | 0x01 | 0x01 | free (2) | owner (4)        | 0 (4)     | rows (2) | slot 0 (2) | slot 1 | ...
//                              TDEF page, or "LVAL" on long-value pages
//   ... free space ... | row n-1 | ... | row 1 | row 0 |   <- page end (4096)
//
//   slot word: bits 0..12 the row's start offset, 0x4000 the row is an overflow pointer
//   (row (1) + page (3) of where the row lives now), 0x8000|0x4000 the row is deleted (no bytes),
//   0x8000 alone: the data of a row that lives behind an overflow pointer elsewhere.
//   Row i runs from its start to the start of row i-1 (row 0 to the page end), so rows lie in
//   slot order from the page end down; "free" is the gap between the slot table and the lowest row.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "pager.h"
#include "tabledef.h"
#include "value.h"

namespace jet::datapage {

constexpr uint8_t kDataPageType = 0x01;
constexpr size_t kHeaderSize = 14;
constexpr uint16_t kDeleted = 0x8000;
constexpr uint16_t kOverflow = 0x4000;
constexpr uint16_t kOffsetMask = 0x1FFF;
constexpr size_t kMaxRows = 255;                          // a row number is one byte in pointers
constexpr size_t kMaxRowSize = 4060;                      // the largest table row Access writes
constexpr size_t kEmptyFree = kPageSize - kHeaderSize;    // free space of an empty page
constexpr size_t kMaxLvalRow = kEmptyFree - 2;            // one row filling a page: 4080

inline uint16_t get16(const uint8_t* p) { return uint16_t(p[0] | (p[1] << 8)); }
inline uint32_t get24(const uint8_t* p) { return uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16); }
inline uint32_t get32(const uint8_t* p) { return get24(p) | (uint32_t(p[3]) << 24); }
inline void put16(uint8_t* p, uint16_t v) { p[0] = uint8_t(v); p[1] = uint8_t(v >> 8); }
inline void put24(uint8_t* p, uint32_t v) { p[0] = uint8_t(v); p[1] = uint8_t(v >> 8); p[2] = uint8_t(v >> 16); }
inline void put32(uint8_t* p, uint32_t v) { put24(p, v); p[3] = uint8_t(v >> 24); }

inline uint16_t rowCount(const uint8_t* page) { return get16(page + 12); }
inline uint16_t freeSpace(const uint8_t* page) { return get16(page + 2); }
inline uint32_t owner(const uint8_t* page) { return get32(page + 4); }
inline bool isLvalPage(const uint8_t* page) {
    return page[0] == kDataPageType && page[4] == 'L' && page[5] == 'V' && page[6] == 'A' && page[7] == 'L';
}

// One slot, its bounds checked against the page (Corrupt otherwise).
struct Slot {
    uint16_t start = 0;
    uint16_t end = 0;
    bool deleted = false;
    bool overflow = false;
    size_t size() const { return size_t(end) - start; }
};
// `file` and `pgno` only name the place in the error message.
// Fails with the error that fits a slot the inline checks of slot() refused.
[[noreturn]] void badSlot(const uint8_t* page, uint16_t row, const std::string& file, uint32_t pgno);
// Inline: scans call it once a row.
inline Slot slot(const uint8_t* page, uint16_t row, const std::string& file, uint32_t pgno) {
    uint16_t n = rowCount(page);
    size_t tableEnd = kHeaderSize + 2 * size_t(n);
    if (page[0] != kDataPageType || tableEnd > kPageSize || row >= n) badSlot(page, row, file, pgno);
    uint16_t w = get16(page + kHeaderSize + 2 * row);
    Slot s;
    s.start = w & kOffsetMask;
    s.end = row == 0 ? uint16_t(kPageSize) : uint16_t(get16(page + kHeaderSize + 2 * (row - 1)) & kOffsetMask);
    s.deleted = w & kDeleted;
    s.overflow = w & kOverflow;
    // A deleted row's bytes may have been reclaimed; only its flag matters then. A row flagged
    // 0x8000 alone holds the data of a moved row and must be sound.
    if (!(s.deleted && s.overflow) && (s.start < tableEnd || s.start > s.end || s.end > kPageSize))
        badSlot(page, row, file, pgno);
    if (s.overflow && !s.deleted && s.size() < 4) badSlot(page, row, file, pgno);
    return s;
}
// Checks the page type and that the slot table fits in the page.
void checkDataPage(const uint8_t* page, const std::string& file, uint32_t pgno);

// The pointer stored in an overflow row (and in long-value fields): row (1) + page (3).
inline RowId readPointer(const uint8_t* p) { return RowId{get24(p + 1), p[0]}; }
inline void writePointer(uint8_t* p, RowId id) { p[0] = uint8_t(id.row); put24(p + 1, id.page); }

// ---- Changes (the page bytes are a writable copy from Pager::modify) ----

// A fresh, empty data page of a table (owner = its TDEF page) or a long-value page.
void initDataPage(uint8_t* page, uint32_t tdefPage);
void initLvalPage(uint8_t* page);

// Bytes a new row of n bytes would need (its slot included) and whether the page has them,
// counting what compaction would win back from deleted rows.
bool canAppend(const uint8_t* page, size_t n);
// Adds a row in a new slot (compacting first when the gap is too small); returns the slot.
// The caller checked canAppend.
uint16_t appendRow(uint8_t* page, const uint8_t* data, size_t n);
// Gives row `row` new bytes, keeping its slot number and flags; false (page unchanged) when the
// page cannot hold them.
bool replaceRow(uint8_t* page, uint16_t row, const uint8_t* data, size_t n);
// Turns the slot into an overflow pointer to `target` (4 bytes of row data).
bool setOverflow(uint8_t* page, uint16_t row, RowId target);
// Deletes the row as Access does: flags 0x8000|0x4000; its bytes stay until the page is compacted.
void deleteRow(uint8_t* page, uint16_t row);
// Sets flag bits on a slot (0x8000 on a row that lives behind an overflow pointer, so that scans
// skip it at its own place).
void addFlags(uint8_t* page, uint16_t row, uint16_t flags);
// Rewrites the rows tightly against the page end in slot order; deleted rows (0x8000|0x4000)
// keep no bytes.
void compact(uint8_t* page);
// Whether every slot is deleted (the page holds nothing of value).
bool allDeleted(const uint8_t* page);

}  // namespace jet::datapage
