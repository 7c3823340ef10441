// Keeping indexes in step with row changes, and reading rows through an index.
#pragma once

#include <optional>
#include <vector>

#include "tabledef.h"
#include "value.h"

namespace jet {

class Table;

// Throws Duplicate when `row` would break a unique index (ignoring the row `self`, for updates).
// Called before anything is written.
void checkUniqueKeys(Table& table, const Row& row, std::optional<RowId> self);
// Adds / removes the row's entries in every index of the table (inside the transaction).
void indexInsert(Table& table, RowId id, const Row& row);
void indexRemove(Table& table, RowId id, const Row& row);

}  // namespace jet
