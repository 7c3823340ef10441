// Long values: Memo and OLE Object data (the field layout is drawn in longvalue.h).
//
//   field in the row (12 bytes + inline data):
//     | length (30 bits) + kind (top 2 bits: 0x80.. inline, 0x40.. one LVAL row, 0x00.. chained) |
//     | row (1) + page (3) of the first LVAL row | 0 (4) | inline data ... |
//   LVAL page: a data page whose owner field reads "LVAL"; its rows are
//     one-row value:  | data ... |
//     chained value:  | next row (1) + next page (3), zero at the end | data ... |
#include "longvalue.h"

#include <algorithm>
#include <set>
#include <string>

#include "datapage.h"
#include "error.h"
#include "pager.h"
#include "usagemap.h"

namespace jet {

namespace {

using namespace datapage;

constexpr uint32_t kKindMask = 0xC0000000u;
constexpr uint32_t kInline = 0x80000000u;
constexpr uint32_t kOneRow = 0x40000000u;
constexpr size_t kFieldSize = 12;
constexpr size_t kMaxInline = 64;                 // Access keeps at most this much in the row
constexpr size_t kChunk = kMaxLvalRow - 4 - 4;    // data per chained row: 4072

struct LvalRow {
    PageRef page;
    Slot slot;
};

LvalRow lvalRow(Pager& pager, RowId id) {
    if (id.page == 0 || id.page >= pager.pageCount())
        fail(ErrorKind::Corrupt, pager.path(), "a long value points at page " + std::to_string(id.page) + " outside the file");
    LvalRow r{pager.page(id.page), {}};
    r.slot = slot(r.page->data(), id.row, pager.path(), id.page);
    if (r.slot.deleted || r.slot.overflow)
        fail(ErrorKind::Corrupt, pager.path(),
             "a long value points at a deleted row " + std::to_string(id.row) + " on page " + std::to_string(id.page));
    return r;
}

[[noreturn]] void broken(Pager& pager, const std::string& why) {
    fail(ErrorKind::Corrupt, pager.path(), "broken long value: " + why);
}

}  // namespace

LongValueBytes viewLongValue(Pager& pager, const uint8_t* field, size_t fieldLen, PageRef& hold, Bytes& scratch) {
    if (fieldLen < kFieldSize) broken(pager, "its field has " + std::to_string(fieldLen) + " bytes");
    uint32_t head = get32(field);
    uint32_t length = head & ~kKindMask;
    uint32_t kind = head & kKindMask;
    if (kind == kInline) {
        if (length > fieldLen - kFieldSize) broken(pager, "inline data is shorter than its length");
        return {field + kFieldSize, length};
    }
    if (length == 0) return {field, 0};
    RowId at = readPointer(field + 4);
    if (kind == kOneRow) {
        LvalRow r = lvalRow(pager, at);
        if (r.slot.size() < length) broken(pager, "its row is shorter than its length");
        hold = std::move(r.page);
        return {hold->data() + r.slot.start, length};
    }
    if (kind != 0) broken(pager, "unknown kind");
    // A chain can hold no more than the file does; a larger length is a lie.
    if (uint64_t(length) > uint64_t(pager.pageCount()) * kPageSize) broken(pager, "its length exceeds the file");
    Bytes& out = scratch;
    out.clear();
    out.reserve(length);
    std::set<RowId> seen;
    while (out.size() < length) {
        if (at.page == 0) broken(pager, "its chain ends early");
        if (!seen.insert(at).second) broken(pager, "its chain loops");
        LvalRow r = lvalRow(pager, at);
        if (r.slot.size() < 4) broken(pager, "a chained row is too short");
        const uint8_t* p = r.page->data() + r.slot.start;
        size_t take = std::min<size_t>(r.slot.size() - 4, length - out.size());
        if (take == 0 && readPointer(p).page == 0) broken(pager, "its chain ends early");
        out.insert(out.end(), p + 4, p + 4 + take);
        at = readPointer(p);
    }
    return {out.data(), out.size()};
}

Bytes readLongValue(Pager& pager, const uint8_t* field, size_t fieldLen) {
    PageRef hold;
    Bytes scratch;
    LongValueBytes v = viewLongValue(pager, field, fieldLen, hold, scratch);
    if (v.size > 0 && v.data == scratch.data()) return scratch;
    return Bytes(v.data, v.data + v.size);
}

namespace {

// Where new LVAL rows go: the table's most recent LVAL page while it has room, else a new page.
// Access 2000 keeps LVAL pages out of the table's usage maps (only the database's map knows them).
uint32_t lvalPageFor(Pager& pager, TableDef& table, size_t rowSize) {
    uint32_t last = table.lastLvalPage;
    if (last != 0 && last < pager.pageCount()) {
        PageRef pg = pager.page(last);
        if (isLvalPage(pg->data()) && canAppend(pg->data(), rowSize)) return last;
    }
    uint32_t pg = pager.append();
    initLvalPage(pager.modify(pg));
    UsageMap::markAllocated(pager, pg);
    table.lastLvalPage = pg;
    return pg;
}

RowId putRow(Pager& pager, uint32_t pgno, const uint8_t* data, size_t n) {
    uint8_t* p = pager.modify(pgno);
    uint16_t row = appendRow(p, data, n);
    return RowId{pgno, row};
}

}  // namespace

Bytes writeLongValue(Pager& pager, TableDef& table, const Bytes& data, size_t inlineRoom) {
    if (data.size() > 0x3FFFFFFFu) fail(ErrorKind::Invalid, pager.path(), "a long value is too large");
    Bytes field(kFieldSize, 0);
    uint32_t length = uint32_t(data.size());
    if (data.size() <= kMaxInline && kFieldSize + data.size() <= inlineRoom) {
        put32(field.data(), length | kInline);
        field.insert(field.end(), data.begin(), data.end());
        return field;
    }
    if (data.size() <= kMaxLvalRow - 4) {
        uint32_t pg = lvalPageFor(pager, table, data.size());
        RowId id = putRow(pager, pg, data.data(), data.size());
        put32(field.data(), length | kOneRow);
        writePointer(field.data() + 4, id);
        return field;
    }
    // Chained: write the chunks back to front so that each row knows its successor.
    size_t chunks = (data.size() + kChunk - 1) / kChunk;
    RowId next{0, 0};
    Bytes row;
    for (size_t i = chunks; i-- > 0;) {
        size_t off = i * kChunk;
        size_t n = std::min(kChunk, data.size() - off);
        row.assign(4, 0);
        writePointer(row.data(), next);
        row.insert(row.end(), data.begin() + off, data.begin() + off + n);
        uint32_t pg = lvalPageFor(pager, table, row.size());
        next = putRow(pager, pg, row.data(), row.size());
    }
    put32(field.data(), length);
    writePointer(field.data() + 4, next);
    return field;
}

void freeLongValue(Pager& pager, TableDef&, const uint8_t* field, size_t fieldLen) {
    if (fieldLen < kFieldSize) return;
    uint32_t head = get32(field);
    uint32_t kind = head & kKindMask;
    if (kind == kInline || (head & ~kKindMask) == 0) return;
    RowId at = readPointer(field + 4);
    std::set<RowId> seen;
    while (at.page != 0 && seen.insert(at).second) {
        LvalRow r = lvalRow(pager, at);
        RowId next = (kind == 0 && r.slot.size() >= 4) ? readPointer(r.page->data() + r.slot.start) : RowId{0, 0};
        deleteRow(pager.modify(at.page), at.row);
        if (kind != 0) break;
        at = next;
    }
}

}  // namespace jet
