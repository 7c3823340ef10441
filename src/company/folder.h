// The tools on a company folder: create the catalogue's files (init) and check a folder (check).
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace company {

// Creates every missing database file of the catalogue (or of the sibling products) as an
// Access 2000 file, and every missing table in an existing one; existing tables are left as they
// are. Returns the names of the files it created or completed. Fails with a jet::JetError (a file
// that is no Access 2000 file) or a std::filesystem::filesystem_error (the folder).
std::vector<std::string> init(const std::filesystem::path& dir, bool sibling);

// Lists missing files, tables and columns against the catalogue; empty when the folder is
// complete. A file that cannot be read is listed as such.
std::vector<std::string> check(const std::filesystem::path& dir, bool sibling);

// The file of the folder with one of the spellings (without regard to case), first spelling
// first; empty when none.
std::filesystem::path findInFolder(const std::filesystem::path& dir, const std::vector<std::string>& spellings);

}  // namespace company
