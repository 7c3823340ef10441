// Index keys: the byte strings that an index stores and compares (memcmp order is index order).
//
//   entry: for each key column: | flag (1): 0x7F not null / 0x00 null (ascending; flipped for
//          descending) | encoded value |   then, in leaf entries, the row id: page (3, big-endian)
//          and row (1)
//   Text uses Access 2000's General sort order: generated character codes (general_sort.inc).
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "tabledef.h"
#include "value.h"

namespace jet {

// The entry bytes of `row` for index `index` of `table` (without the row id). A text that the
// General sort order tables cannot encode fails with SortOrder (never a wrong key).
Bytes encodeIndexKey(const TableDef& table, const RealIndex& index, const Row& row);

// The same for an explicit list of values, one per key column (a seek key; fewer values give a
// prefix).
Bytes encodeSeekKey(const TableDef& table, const RealIndex& index, const std::vector<Value>& key);

// One text value, as a key column of the General sort order (ascending) without the flag byte.
Bytes encodeGeneralText(std::string_view utf8);

// Whether every character of the text has a code in the generated tables.
bool canEncodeGeneralText(std::string_view utf8);

// Sort order id of Access 2000's General order, as a text column stores it (version 0).
inline constexpr uint16_t kGeneralSortOrder = 1033;

// One character of the generated General sort order table (general_sort.inc), exposed so that
// tests can compare it with a fresh run of the generator's source.
struct GeneralSortCode {
    uint32_t code = 0;      // code point
    char kind = 'X';        // S simple, I international, U unprintable, P unprintable modifier,
                            // Z international with flag, G significant, X ignored
    uint8_t inlineLen = 0;
    std::array<uint8_t, 4> inlineBytes{};  // written in place of the character
    uint8_t extraLen = 0;
    std::array<uint8_t, 4> extraBytes{};   // accent codes, after the text
    uint8_t unprintLen = 0;
    std::array<uint8_t, 4> unprintBytes{}; // codes of characters left out of the text
    uint8_t modifier = 0;   // added to the previous accent code
    uint8_t crazy = 0;      // 2-bit flag packed after the accent codes (0: none)
};

// The whole table, ordered by code point.
std::span<const GeneralSortCode> generalSortTable();

}  // namespace jet
