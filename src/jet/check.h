// The consistency check of a database file: tables against their row counts, indexes against
// their tables and against the rules of the index pages.
#pragma once

#include <string>
#include <vector>

namespace jet {

class Database;

// One line per problem found ("TABLE: what is wrong"); empty when every table and index is
// consistent.
std::vector<std::string> checkDatabase(Database& db);

}  // namespace jet
