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

inline void setNull(Value& v) {
    if (v.index() != 0) v.emplace<std::monostate>();
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
                            c.scale, uint16_t(cols_.size())});
        if (!fixed) hasVar_ = true;
    }
    auto kindOf = [](const Col& c) {
        if (c.type == ColType::Boolean) return Kind::Bool;
        if (c.type == ColType::Text && !c.fixed) return Kind::Text;
        if (!c.fixed) return Kind::Other;
        switch (c.type) {
            case ColType::Integer: return Kind::Int16;
            case ColType::Long: return Kind::Int32;
            case ColType::Double: return Kind::Double;
            case ColType::Currency: return Kind::Currency;
            case ColType::DateTime: return Kind::DateTime;
            default: return Kind::Other;
        }
    };
    for (int k = 0; k <= int(Kind::Other); ++k) {
        Group g{Kind(k), uint16_t(byKind_.size()), 0};
        for (const Col& c : cols_) {
            if (kindOf(c) != g.kind) continue;
            byKind_.push_back(c);
            if (g.kind == Kind::Other) continue;  // decodeInto checks the row's extent itself
            needColumns_ = std::max<uint16_t>(needColumns_, uint16_t(c.number + 1));
            if (g.kind == Kind::Text) needVars_ = std::max<uint16_t>(needVars_, uint16_t(c.offset + 1));
            else if (c.fixed) needFixedEnd_ = std::max(needFixedEnd_, row::kFixedStart + size_t(c.offset) + c.size);
        }
        g.end = uint16_t(byKind_.size());
        if (g.end > g.begin) groups_.push_back(g);
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
            PageRef hold;
            Bytes scratch;
            LongValueBytes raw = viewLongValue(pager_, p, n, hold, scratch);
            decodeTextInto(raw.data, raw.size, as<std::string>(out));
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

void RowDecoder::decodeWhole(const RowView& v, Row& out) const {
    const uint8_t* mask = v.mask();
    const uint8_t* fixedArea = v.data() + row::kFixedStart;
    auto present = [mask](uint16_t number) { return (mask[number >> 3] >> (number & 7)) & 1; };
    // One loop per group: the branches inside repeat column after column.
    auto fixedLoop = [&](const Col* c, const Col* e, auto read) {
        for (; c != e; ++c) {
            Value& o = out[c->index];
            if (present(c->number)) set(o, read(fixedArea + c->offset));
            else setNull(o);
        }
    };
    for (const Group& g : groups_) {
        const Col* c = byKind_.data() + g.begin;
        const Col* e = byKind_.data() + g.end;
        switch (g.kind) {
            case Kind::Bool:
                for (; c != e; ++c) set(out[c->index], bool(present(c->number)));
                break;
            case Kind::Int16: fixedLoop(c, e, [](const uint8_t* p) { return int16_t(le16(p)); }); break;
            case Kind::Int32: fixedLoop(c, e, [](const uint8_t* p) { return int32_t(le32(p)); }); break;
            case Kind::Double: fixedLoop(c, e, [](const uint8_t* p) { return leDouble(p); }); break;
            case Kind::Currency: fixedLoop(c, e, [](const uint8_t* p) { return Currency{int64_t(le64(p))}; }); break;
            case Kind::DateTime: fixedLoop(c, e, [](const uint8_t* p) { return DateTime{leDouble(p)}; }); break;
            case Kind::Text:
                for (; c != e; ++c) {
                    Value& o = out[c->index];
                    if (!present(c->number)) {
                        setNull(o);
                        continue;
                    }
                    const uint8_t* p;
                    size_t n;
                    v.varIn(c->offset, p, n);
                    decodeTextInto(p, n, as<std::string>(o));
                }
                break;
            case Kind::Other:
                for (; c != e; ++c) decodeInto(v, *c, out[c->index]);
                break;
        }
    }
}

void RowDecoder::decode(const uint8_t* row, size_t len, RowId where, Row& out) const {
    RowView v(row, len, hasVar_, pager_.path(), where);
    out.resize(cols_.size());
    if (v.columnCount() >= needColumns_ && v.fixedEnd() >= needFixedEnd_ && v.varCount() >= needVars_) {
        decodeWhole(v, out);
        return;
    }
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
