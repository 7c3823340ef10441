// Slot-level work on one data page (layout drawn in datapage.h).
//
// Rows always lie in slot order from the page end down, each ending where the previous slot's row
// starts; readers find a row's end that way. So a row that changes size, or a compaction, lays
// the whole row area out again; a deleted row keeps its bytes until then. The header's free space is always the real gap between the slot
// table and the lowest row, because other writers append at exactly that place.
#include "datapage.h"

#include <cstring>

#include "error.h"

namespace jet::datapage {

namespace {

size_t slotTableEnd(uint16_t rows) { return kHeaderSize + 2 * size_t(rows); }

// Start of the lowest row (the page end when there is none).
size_t lowestStart(const uint8_t* page) {
    uint16_t n = rowCount(page);
    return n == 0 ? kPageSize : (get16(page + kHeaderSize + 2 * (n - 1)) & kOffsetMask);
}

struct Item {
    uint16_t flags = 0;
    std::vector<uint8_t> bytes;
};

std::vector<Item> items(const uint8_t* page) {
    uint16_t n = rowCount(page);
    std::vector<Item> out(n);
    size_t end = kPageSize;
    for (uint16_t i = 0; i < n; ++i) {
        uint16_t w = get16(page + kHeaderSize + 2 * i);
        size_t start = w & kOffsetMask;
        out[i].flags = w & (kDeleted | kOverflow);
        // A deleted row (0x8000|0x4000) keeps no bytes; a row with 0x8000 alone is a moved row's
        // data, kept.
        if ((w & (kDeleted | kOverflow)) != (kDeleted | kOverflow) && start <= end && start >= slotTableEnd(n))
            out[i].bytes.assign(page + start, page + end);
        if (start <= end) end = start;
    }
    return out;
}

// Writes the items tightly from the page end down; false (page unchanged) when they do not fit.
bool layout(uint8_t* page, const std::vector<Item>& rows) {
    if (rows.size() > kMaxRows) return false;
    size_t need = slotTableEnd(uint16_t(rows.size()));
    for (const auto& r : rows) need += r.bytes.size();
    if (need > kPageSize) return false;
    size_t pos = kPageSize;
    for (size_t i = 0; i < rows.size(); ++i) {
        pos -= rows[i].bytes.size();
        if (!rows[i].bytes.empty()) std::memcpy(page + pos, rows[i].bytes.data(), rows[i].bytes.size());
        put16(page + kHeaderSize + 2 * i, uint16_t(pos | rows[i].flags));
    }
    size_t tableEnd = slotTableEnd(uint16_t(rows.size()));
    std::memset(page + tableEnd, 0, pos - tableEnd);
    put16(page + 12, uint16_t(rows.size()));
    put16(page + 2, uint16_t(pos - tableEnd));
    return true;
}

}  // namespace

void checkDataPage(const uint8_t* page, const std::string& file, uint32_t pgno) {
    if (page[0] != kDataPageType)
        fail(ErrorKind::Corrupt, file, "page " + std::to_string(pgno) + " is not a data page");
    if (slotTableEnd(rowCount(page)) > kPageSize)
        fail(ErrorKind::Corrupt, file, "data page " + std::to_string(pgno) + " claims too many rows");
}

void badSlot(const uint8_t* page, uint16_t row, const std::string& file, uint32_t pgno) {
    checkDataPage(page, file, pgno);
    uint16_t n = rowCount(page);
    if (row >= n)
        fail(ErrorKind::NoSuchRow, file, "row " + std::to_string(row) + " is absent on page " + std::to_string(pgno));
    uint16_t w = get16(page + kHeaderSize + 2 * row);
    Slot s;
    s.start = w & kOffsetMask;
    s.end = row == 0 ? uint16_t(kPageSize) : uint16_t(get16(page + kHeaderSize + 2 * (row - 1)) & kOffsetMask);
    s.deleted = w & kDeleted;
    s.overflow = w & kOverflow;
    // A deleted row's bytes may have been reclaimed; only its flag matters then. A row flagged
    // 0x8000 alone holds the data of a moved row and must be sound.
    if (!(s.deleted && s.overflow) && (s.start < slotTableEnd(n) || s.start > s.end || s.end > kPageSize))
        fail(ErrorKind::Corrupt, file,
             "row " + std::to_string(row) + " on page " + std::to_string(pgno) + " has bad bounds");
    if (s.overflow && !s.deleted && s.size() < 4)
        fail(ErrorKind::Corrupt, file,
             "overflow row " + std::to_string(row) + " on page " + std::to_string(pgno) + " is too short");
    fail(ErrorKind::Corrupt, file, "row " + std::to_string(row) + " on page " + std::to_string(pgno) + " is unreadable");
}

void initDataPage(uint8_t* page, uint32_t tdefPage) {
    std::memset(page, 0, kPageSize);
    page[0] = kDataPageType;
    page[1] = 0x01;
    put16(page + 2, uint16_t(kEmptyFree));
    put32(page + 4, tdefPage);
}

void initLvalPage(uint8_t* page) {
    initDataPage(page, 0);
    std::memcpy(page + 4, "LVAL", 4);
}

bool canAppend(const uint8_t* page, size_t n) {
    uint16_t rows = rowCount(page);
    if (rows >= kMaxRows || n > kPageSize) return false;
    size_t gap = freeSpace(page);
    if (gap >= n + 2) return true;
    size_t used = slotTableEnd(rows + 1) + n;
    for (const auto& it : items(page)) used += it.bytes.size();
    return used <= kPageSize;
}

uint16_t appendRow(uint8_t* page, const uint8_t* data, size_t n) {
    uint16_t rows = rowCount(page);
    size_t low = lowestStart(page);
    if (low < slotTableEnd(rows + 1) + n) {
        auto all = items(page);
        all.push_back(Item{0, std::vector<uint8_t>(data, data + n)});
        if (!layout(page, all)) throw JetError(ErrorKind::Invalid, "row does not fit on its page");
        return rows;
    }
    size_t start = low - n;
    std::memcpy(page + start, data, n);
    put16(page + kHeaderSize + 2 * rows, uint16_t(start));
    put16(page + 12, uint16_t(rows + 1));
    put16(page + 2, uint16_t(start - slotTableEnd(rows + 1)));
    return rows;
}

bool replaceRow(uint8_t* page, uint16_t row, const uint8_t* data, size_t n) {
    uint16_t rows = rowCount(page);
    if (row >= rows) return false;
    size_t start = get16(page + kHeaderSize + 2 * row) & kOffsetMask;
    size_t end = row == 0 ? kPageSize : (get16(page + kHeaderSize + 2 * (row - 1)) & kOffsetMask);
    if (end >= start && end - start == n) {
        std::memcpy(page + start, data, n);
        return true;
    }
    auto all = items(page);
    all[row].bytes.assign(data, data + n);
    return layout(page, all);
}

bool setOverflow(uint8_t* page, uint16_t row, RowId target) {
    uint8_t ptr[4];
    writePointer(ptr, target);
    if (!replaceRow(page, row, ptr, 4)) return false;
    uint16_t w = get16(page + kHeaderSize + 2 * row);
    put16(page + kHeaderSize + 2 * row, uint16_t(w | kOverflow));
    return true;
}

// Only the slot is flagged: the bytes stay where they are until a later append or resize lays
// the page out again (items() drops them then), so a delete costs no page re-layout.
void deleteRow(uint8_t* page, uint16_t row) { addFlags(page, row, kDeleted | kOverflow); }

void addFlags(uint8_t* page, uint16_t row, uint16_t flags) {
    if (row >= rowCount(page)) return;
    uint8_t* w = page + kHeaderSize + 2 * row;
    put16(w, uint16_t(get16(w) | (flags & (kDeleted | kOverflow))));
}

void compact(uint8_t* page) { layout(page, items(page)); }

bool allDeleted(const uint8_t* page) {
    uint16_t n = rowCount(page);
    for (uint16_t i = 0; i < n; ++i)
        if (!(get16(page + kHeaderSize + 2 * i) & kDeleted)) return false;
    return true;
}

}  // namespace jet::datapage
