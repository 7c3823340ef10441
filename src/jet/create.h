// Making things from nothing: table definitions from a TableSpec, their TDEF pages, and new
// database files (Database::create and Database::createTable live in create.cpp).
//
//   a new table's pages:  | TDEF (one or more) | usage maps (a data page: owned, free space, one
//                         row per real index) | one empty leaf root per real index |
//   Data pages come later, with the first row.
#pragma once

#include <cstdint>
#include <string>

#include "database.h"
#include "tabledef.h"
#include "value.h"

namespace jet {

class Pager;

// The stored bytes of a table definition, all of it: the first page's 8-byte header included
// (its free-space and next-page fields left 0), the 0xFFFF end mark last. The length field says
// the total. Columns and real indexes are written in their vector order; the reader sorts by number.
Bytes encodeTableDef(const TableDef& def);

// Writes `def` over its TDEF chain (def.defPages, or def.firstPage alone when empty) inside the
// pager's transaction: a definition longer than a page continues on chained pages (4088 bytes of
// definition each after the 8-byte header); pages are appended when the chain is too short, and
// def.defPages is updated.
void writeTableDef(Pager& pager, TableDef& def);

// A new page at the end of the file, marked as used in the database's own page map.
uint32_t allocatePage(Pager& pager);

// The definition of a new user table from its spec, checked (Invalid naming `file` and the
// table on any fault): column numbers, variable indexes and fixed offsets as Access lays them
// out, real indexes (one per distinct column list and flags) and logical indexes. Pages are
// left unset (0).
TableDef layoutTable(const TableSpec& spec, const std::string& file);

// The usage-map row of an empty inline map: | 0x00 | start page (4) | 64 bytes of bits |, with
// the given pages set (each within [start, start + 512)).
Bytes inlineUsageMap(uint32_t start, const std::vector<uint32_t>& pages);

// An empty index leaf of the table with TDEF page `owner` (an empty tree is an empty root leaf).
void initEmptyLeaf(uint8_t* page, uint32_t owner);

// The date double (days since 1899-12-30, local time) of the current moment, whole seconds.
double nowAsDate();

// Fills `page0` with the header page of a new file created at `created` (create_header.cpp).
void writeNewHeader(uint8_t* page0, double created);

}  // namespace jet
