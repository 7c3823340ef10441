// Reading the catalogue (MSysObjects; layout in catalog.h).
#include "catalog.h"

#include "error.h"
#include "rowcodec.h"
#include "text.h"

namespace jet {

std::vector<const CatalogEntry*> Catalog::tables(bool withSystem) const {
    std::vector<const CatalogEntry*> out;
    for (const auto& e : entries)
        if (e.type == kObjectTable && e.parentId == tablesParentId && (withSystem || !e.system())) out.push_back(&e);
    return out;
}

const CatalogEntry* Catalog::findTable(std::string_view name) const {
    for (const auto& e : entries)
        if (e.type == kObjectTable && e.parentId == tablesParentId && equalsFolded(e.name, name)) return &e;
    return nullptr;
}

Catalog readCatalog(Pager& pager, const TableDef& def) {
    auto need = [&](const char* name) -> size_t {
        for (size_t i = 0; i < def.columns.size(); ++i)
            if (def.columns[i].name == name) return i;
        fail(ErrorKind::Corrupt, pager.path(), std::string("the catalogue has no column ") + name);
    };
    size_t cId = need("Id"), cParent = need("ParentId"), cName = need("Name"), cType = need("Type"), cFlags = need("Flags");

    Catalog cat;
    RowDecoder dec(pager, def);
    Row row;
    forEachRow(pager, def, ownedPages(pager, def), [&](RowId id, const uint8_t* p, size_t n) {
        dec.decode(p, n, id, row);
        CatalogEntry e;
        e.rowId = id;
        if (auto* v = std::get_if<int32_t>(&row[cId])) e.id = *v;
        if (auto* v = std::get_if<int32_t>(&row[cParent])) e.parentId = *v;
        if (auto* v = std::get_if<std::string>(&row[cName])) e.name = *v;
        if (auto* v = std::get_if<int16_t>(&row[cType])) e.type = *v;
        if (auto* v = std::get_if<int32_t>(&row[cFlags])) e.flags = uint32_t(*v);
        cat.entries.push_back(std::move(e));
        return true;
    });
    bool found = false;
    for (const auto& e : cat.entries)
        if (e.parentId == kDatabaseParentId && e.name == "Tables") {
            cat.tablesParentId = e.id;
            found = true;
            break;
        }
    if (!found) fail(ErrorKind::Corrupt, pager.path(), "the catalogue has no Tables container");
    return cat;
}

void Database::Impl::loadCatalog(Pager& pager) {
    catalogGeneration = pager.generation();
    catalogDef = readTableDef(pager, kCatalogPage, "MSysObjects");
    catalog = readCatalog(pager, catalogDef);
}

}  // namespace jet
