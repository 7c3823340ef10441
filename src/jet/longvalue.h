// Long values (Memo and OLE Object): the 12-byte field in the row and where the data lives.
//
//   field: | length (3) | flags (1): 0x80 inline, 0x40 one LVAL row, 0x00 chained |
//          | row pointer (4): row (1) + page (3) | unknown (4) | inline data ... |
//   an LVAL row (chained): | next row pointer (4) | data ... |
#pragma once

#include <cstddef>
#include <cstdint>

#include "pager.h"
#include "tabledef.h"
#include "value.h"

namespace jet {

// The value's bytes (before text decoding). Corrupt on a broken chain (loops are detected).
Bytes readLongValue(Pager& pager, const uint8_t* field, size_t fieldLen);

// The same bytes without a copy where they lie in one place: inline in the field, or in one LVAL
// row (whose page `hold` then keeps alive). A chained value is gathered into `scratch`.
struct LongValueBytes {
    const uint8_t* data;
    size_t size;
};
LongValueBytes viewLongValue(Pager& pager, const uint8_t* field, size_t fieldLen, PageRef& hold, Bytes& scratch);

// Stores data for a row of `table` and returns the field bytes for the row: inline when it fits
// in `inlineRoom` bytes of the row, else on LVAL pages of the table. Inside a transaction.
Bytes writeLongValue(Pager& pager, TableDef& table, const Bytes& data, size_t inlineRoom);

// Frees the LVAL rows a field points at (on update or delete of its row).
void freeLongValue(Pager& pager, TableDef& table, const uint8_t* field, size_t fieldLen);

}  // namespace jet
