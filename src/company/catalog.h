// The catalogue of a company folder: every database file, its tables and their columns in the
// order the program relies on (several tables are copied and read by column position), with the
// keys and indexes the files are created with.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jet/database.h"
#include "jet/value.h"

namespace company {

struct Column {
    std::string name;
    jet::ColType type = jet::ColType::Text;
    int length = 0;           // Text: characters
    bool autoNumber = false;  // Long AutoNumber (the Sorszám columns); gets a plain index
    bool unique = false;      // the program's computed key: a unique index
};

struct Table {
    std::string name;
    std::vector<Column> columns;

    // Without regard to case; null when absent.
    const Column* column(std::string_view columnName) const;
    // Position of a column, or -1.
    int position(std::string_view columnName) const;
    std::vector<std::string> columnNames() const;
};

// One physical database file. `fileName` is the spelling init creates; `spellings` are every
// spelling the forms use (matched without regard to case). Sibling files belong to the
// warehouse products and are created only by `init --sibling`.
struct DbFile {
    std::string fileName;
    std::vector<std::string> spellings;
    bool sibling = false;
    std::vector<Table> tables;

    const Table* table(std::string_view tableName) const;
};

const std::vector<DbFile>& allFiles();
std::vector<const DbFile*> companyFiles();
std::vector<const DbFile*> siblingFiles();
// The file a spelling names (without regard to case); null when none.
const DbFile* findFile(std::string_view spelling);

// The engine's description of a catalogue table: its columns, and an index on every unique or
// AutoNumber column, named "ix<n>_<the column name in plain ASCII letters and digits>".
jet::TableSpec tableSpec(const Table& t);

// Comparison of names as Jet does it: without regard to case (ASCII and Hungarian letters).
bool sameName(std::string_view a, std::string_view b);

}  // namespace company
