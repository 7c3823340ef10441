// The rollback journal: FILE-journal beside the database file. It exists only while a commit is
// overwriting pages of the file, or after a writer died in the middle of one.
//
//   header, 32 bytes                      page record, 4104 bytes, N of them
//   +0  8  magic "KRVJRNL1"               +0     4  page number
//   +8  4  page size (4096)               +4  4096  the page as it was before the commit
//   +12 4  N, the number of page records  +4100  4  checksum of salt, page number and image
//   +16 8  file size before the commit
//   +24 4  salt, random per journal
//   +28 4  checksum of bytes 0..27
//
// Integers are little-endian. A journal counts only when its header and all N records are present
// with correct checksums: the writer syncs the whole journal before it overwrites the first page,
// so a journal that is torn or short proves the file was never touched and is simply deleted.
// The salt keeps records of an older journal from passing for records of this one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pager.h"

namespace jet {

class File;

struct JournalPage {
    uint32_t pgno;
    PageRef image;  // the page before the commit
};

struct JournalInfo {
    uint64_t originalSize = 0;
    uint32_t pages = 0;
};

// FILE-journal for the database FILE.
std::string journalPath(const std::string& dbPath);

// Writes the journal (replacing any file there), syncs it and its folder entry.
void writeJournal(const std::string& path, uint64_t originalSize, const std::vector<JournalPage>& pages);

// Reads and checks every record; nullopt when the journal is torn, short or not a journal.
std::optional<JournalInfo> checkJournal(const std::string& path);

// Copies the journal's pages back into db, cuts db to its original size and syncs it. Returns false
// (and writes nothing) when the journal does not pass checkJournal. The journal itself is left for
// the caller to delete.
bool playBackJournal(const std::string& path, File& db);

}  // namespace jet
