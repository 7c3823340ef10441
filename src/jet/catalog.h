// The catalogue: the system table MSysObjects, whose definition is always on page 2. Each object
// of the database is one row:
//
//   Id (Long): for a table, its TDEF page in the low 24 bits | ParentId (Long): the container |
//   Name (Text) | Type (Integer): 1 local table, 4 and 6 linked tables, ... |
//   Flags (Long): 0x80000000 or 0x00000002 mark a system object | ...
//
//   Tables live in the container named "Tables", whose own parent is 0x0F000000.
//
// Also the state behind a Database (its header and catalogue), shared with the engine's writers.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "database.h"
#include "header.h"
#include "pager.h"
#include "tabledef.h"

namespace jet {

constexpr int16_t kObjectTable = 1;
constexpr int32_t kDatabaseParentId = 0x0F000000;
constexpr uint32_t kSystemObjectFlags = 0x80000002u;

struct CatalogEntry {
    std::string name;
    int32_t id = 0;
    int32_t parentId = 0;
    int16_t type = 0;
    uint32_t flags = 0;
    RowId rowId;

    uint32_t tdefPage() const { return uint32_t(id) & 0x00FFFFFF; }
    bool system() const { return (flags & kSystemObjectFlags) != 0; }
};

struct Catalog {
    std::vector<CatalogEntry> entries;  // physical order
    int32_t tablesParentId = 0;         // the "Tables" container

    // Local tables (type 1 in the Tables container), in catalogue order.
    std::vector<const CatalogEntry*> tables(bool withSystem) const;
    const CatalogEntry* findTable(std::string_view name) const;  // without regard to case
};

// Reads MSysObjects (`def` is its definition, read from page 2).
Catalog readCatalog(Pager& pager, const TableDef& def);

class RowDecoder;

// The state behind a Database.
struct Database::Impl {
    DbHeader header;
    TableDef catalogDef;
    Catalog catalog;
    // Definitions parsed from pages are read again when the pager's generation moved on (another
    // process committed, or a rollback dropped changes).
    uint64_t catalogGeneration = 0;
    std::unordered_map<const Table*, uint64_t> tableGeneration;
    std::unordered_map<const Table*, std::shared_ptr<const RowDecoder>> decoders;
    // Tables that no longer exist (created in a batch that was rolled back): out of the lookup,
    // but kept alive so that references to them never dangle.
    std::vector<std::unique_ptr<Table>> gone;

    void loadCatalog(Pager& pager);
};

}  // namespace jet
