// Row decoding (layout drawn in rowcodec.h) and overflow pointers.
#include "rowcodec.h"

#include "longvalue.h"
#include "text.h"
#include "usagemap.h"

namespace jet {

namespace {

std::string place(RowId at) { return "row " + std::to_string(at.row) + " on page " + std::to_string(at.page); }

template <class T>
T& as(Value& v) {
    if (auto* p = std::get_if<T>(&v)) return *p;
    return v.emplace<T>();
}

// Rows of a scan reuse one Row: a column keeps its alternative from row to row, so the common
// case is a plain store, not a variant reassignment.
template <class T>
inline void set(Value& v, const T& x) {
    if (auto* p = std::get_if<T>(&v)) *p = x;
    else v.emplace<T>(x);
}

}  // namespace

uint16_t fixedSize(const Column& c) {
    if (c.type == ColType::Boolean) return 0;
    uint16_t n = fixedDataSize(c.type);
    return n ? n : c.length;  // a fixed Binary column: its declared length
}

void RowView::badRow() const {
    const std::string& file = file_;
    RowId where = where_;
    size_t len = len_;
    if (len < 2) fail(ErrorKind::Corrupt, file, place(where) + " is too short (" + std::to_string(len) + " bytes)");
    uint16_t columns = le16(row_);
    size_t maskLen = (size_t(columns) + 7) / 8;
    if (2 + maskLen > len)
        fail(ErrorKind::Corrupt, file, place(where) + ": its null mask for " + std::to_string(columns) +
                                           " columns does not fit in " + std::to_string(len) + " bytes");
    size_t end = len - maskLen;
    if (end < 2 + 4) fail(ErrorKind::Corrupt, file, place(where) + " has no room for its variable column table");
    fail(ErrorKind::Corrupt, file, place(where) + ": its table of " + std::to_string(le16(row_ + end - 2)) +
                                       " variable columns does not fit");
}

void RowView::badVar(uint16_t i, size_t start, size_t stop) const {
    fail(ErrorKind::Corrupt, file_, place(where_) + ": variable column " + std::to_string(i) + " at " +
                                        std::to_string(start) + ".." + std::to_string(stop) + " lies outside the row");
}

RowDecoder::RowDecoder(Pager& pager, const TableDef& def) : pager_(pager) {
    cols_.reserve(def.columns.size());
    for (const Column& c : def.columns) {
        bool fixed = c.fixed();
        cols_.push_back(Col{c.type, c.number, fixed, fixed ? c.fixedOffset : c.varIndex, fixed ? fixedSize(c) : uint16_t(0),
                            c.scale});
        if (!fixed) hasVar_ = true;
    }
}

__attribute__((always_inline)) inline void RowDecoder::decodeInto(const RowView& v, const Col& c, Value& out) const {
    if (c.type == ColType::Boolean) {
        set(out, v.notNull(c.number));
        return;
    }
    if (!v.notNull(c.number)) {
        if (out.index() != 0) out.emplace<std::monostate>();
        return;
    }
    const uint8_t* p = nullptr;
    size_t n = 0;
    if (c.fixed) {
        if (!v.fixed(c.offset, c.size, p)) badFixed(v, c);
        n = c.size;
    } else if (!v.var(c.offset, p, n)) {
        if (out.index() != 0) out.emplace<std::monostate>();
        return;
    }
    switch (c.type) {
        case ColType::Byte: set(out, uint8_t(p[0])); return;
        case ColType::Integer: set(out, int16_t(le16(p))); return;
        case ColType::Long: set(out, int32_t(le32(p))); return;
        case ColType::Currency: set(out, Currency{int64_t(le64(p))}); return;
        case ColType::Single: set(out, leFloat(p)); return;
        case ColType::Double: set(out, leDouble(p)); return;
        case ColType::DateTime: set(out, DateTime{leDouble(p)}); return;
        case ColType::Guid: {
            Guid g;
            std::copy(p, p + 16, g.bytes.begin());
            out = g;
            return;
        }
        case ColType::Numeric: {
            // | sign (1) | 4 words of 32 bits, little-endian each, most significant word first |
            if (le32(p + 1) != 0) fail(ErrorKind::Corrupt, pager_.path(), "a Decimal value exceeds 96 bits");
            Decimal d;
            d.negative = p[0] != 0;
            d.magnitude = {le32(p + 13), le32(p + 9), le32(p + 5)};
            d.scale = c.scale;
            out = d;
            return;
        }
        case ColType::Text: decodeTextInto(p, n, as<std::string>(out)); return;
        case ColType::Memo: {
            Bytes raw = readLongValue(pager_, p, n);
            decodeTextInto(raw.data(), raw.size(), as<std::string>(out));
            return;
        }
        case ColType::Ole: out = readLongValue(pager_, p, n); return;
        default: {
            Bytes& b = as<Bytes>(out);
            b.assign(p, p + n);
            return;
        }
    }
}

void RowDecoder::badFixed(const RowView& v, const Col& c) const {
    fail(ErrorKind::Corrupt, pager_.path(), "a row of " + std::to_string(v.size()) +
                                                " bytes has no room for a fixed column at offset " + std::to_string(c.offset));
}

void RowDecoder::decode(const uint8_t* row, size_t len, RowId where, Row& out) const {
    RowView v(row, len, hasVar_, pager_.path(), where);
    out.resize(cols_.size());
    for (size_t i = 0; i < cols_.size(); ++i) decodeInto(v, cols_[i], out[i]);
}

void RowDecoder::decodeColumns(const uint8_t* row, size_t len, RowId where, const std::vector<size_t>& columns,
                               Row& out) const {
    RowView v(row, len, hasVar_, pager_.path(), where);
    out.resize(columns.size());
    for (size_t i = 0; i < columns.size(); ++i) decodeInto(v, cols_[columns[i]], out[i]);
}

Value RowDecoder::decodeOne(const uint8_t* row, size_t len, RowId where, size_t column) const {
    RowView v(row, len, hasVar_, pager_.path(), where);
    Value out;
    decodeInto(v, cols_.at(column), out);
    return out;
}

RowLocation followOverflow(Pager& pager, const uint8_t* pointer, RowId home) {
    const std::string& file = pager.path();
    RowId t{le24(pointer + 1), pointer[0]};
    for (int hop = 0; hop < 8; ++hop) {
        if (t.page == 0 || t.page >= pager.pageCount())
            fail(ErrorKind::Corrupt, file, place(home) + " overflows to page " + std::to_string(t.page) + ", outside the file");
        RowLocation loc;
        loc.page = pager.page(t.page);
        const uint8_t* d = loc.page->data();
        datapage::checkDataPage(d, file, t.page);
        uint16_t n = datapage::rowCount(d);
        if (t.row >= n) fail(ErrorKind::Corrupt, file, place(home) + " overflows to an absent " + place(t));
        uint16_t w = le16(d + datapage::kHeaderSize + 2 * t.row);
        size_t start = w & datapage::kOffsetMask;
        size_t end = t.row == 0 ? kPageSize : (le16(d + datapage::kHeaderSize + 2 * (t.row - 1)) & datapage::kOffsetMask);
        if (start < datapage::kHeaderSize + 2 * size_t(n) || start > end || end > kPageSize)
            fail(ErrorKind::Corrupt, file, place(home) + " overflows to " + place(t) + ", which has bad bounds");
        if (w & datapage::kOverflow) {
            if (end - start < 4) fail(ErrorKind::Corrupt, file, place(t) + " is a too short overflow pointer");
            t = RowId{le24(d + start + 1), d[start]};
            continue;
        }
        loc.start = uint16_t(start);
        loc.end = uint16_t(end);
        loc.at = t;
        return loc;
    }
    fail(ErrorKind::Corrupt, file, place(home) + ": its overflow pointers loop or run too long");
}

std::vector<uint32_t> ownedPages(Pager& pager, const TableDef& def) {
    return UsageMap::read(pager, def.ownedPages).pages();
}

}  // namespace jet
