// Encoding a row for a data page (the layout is drawn in rowwrite.cpp).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tabledef.h"
#include "value.h"

namespace jet {

class Pager;

// The stored bytes of `row` (one value per column of `def`, in order). Memo and OLE values that
// do not fit in the row go to LVAL pages through the pager's open transaction. A value that does
// not fit its column (type, text length, decimal precision) or a row over the size limit fails
// with Invalid. `file` names the database in messages.
Bytes encodeRow(Pager& pager, TableDef& def, const Row& row);

// The Memo and OLE fields of a stored row (the 12-byte header and any inline data), so that their
// LVAL rows can be freed when the row goes away or its values change. Corrupt on a broken row.
std::vector<Bytes> longValueFields(const std::string& file, const TableDef& def, const uint8_t* row, size_t n);

// The largest row the format allows.
constexpr size_t kMaxRowBytes = 4060;

}  // namespace jet
