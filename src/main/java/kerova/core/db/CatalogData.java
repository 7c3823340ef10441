package kerova.core.db;

import static kerova.core.db.Catalog.*;

import java.util.List;

/** The data of the catalogue (Part 1.1 and the Data model section of every Part). */
final class CatalogData {
    private CatalogData() {
    }

    static final List<Catalog.DbFile> FILES = List.of();
}
