// Keeping indexes in step with row changes, and reading rows through an index.
#pragma once

#include <optional>
#include <vector>

#include "tabledef.h"
#include "value.h"

namespace jet {

class Table;

// Throws Duplicate when `row` would break a unique index (ignoring the row `self`, for updates;
// an index whose key values equal those of `old`, the row's values before, is not searched).
// Called before anything is written.
void checkUniqueKeys(Table& table, const Row& row, std::optional<RowId> self, const Row* old = nullptr);
// Adds / removes the row's entries in every index of the table (inside the transaction), except
// the real indexes marked in `skip` (by position in TableDef::realIndexes).
void indexInsert(Table& table, RowId id, const Row& row, const std::vector<bool>& skip = {});
void indexRemove(Table& table, RowId id, const Row& row, const std::vector<bool>& skip = {});
// The columns (by position in def.columns) that some real index keys on.
std::vector<bool> keyColumnMask(const TableDef& def);
// The real indexes whose entry for row `id` stays as it is when its values go from `old` to
// `row`: the same key (or none in both), and the entry found where that key puts it. An update
// leaves their pages alone.
std::vector<bool> unchangedIndexes(Table& table, RowId id, const Row& old, const Row& row);

}  // namespace jet
