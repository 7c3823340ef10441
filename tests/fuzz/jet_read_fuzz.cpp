// libFuzzer target: opens mutated bytes as a database file and reads everything the reader can
// reach (catalogue, table definitions, every row, every index). Any crash, hang or sanitizer report
// is a bug; a JetError is the expected answer to garbage.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "jet/database.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static int fd = memfd_create("jetfuzz", 0);
    if (fd < 0) return 0;
    if (ftruncate(fd, 0) != 0) return 0;
    if (pwrite(fd, data, size, 0) != static_cast<ssize_t>(size)) return 0;
    std::string path = "/proc/self/fd/" + std::to_string(fd);
    try {
        auto db = jet::Database::open(path, jet::Database::Mode::ReadOnly);
        for (const auto& name : db->tableNames(true)) {
            try {
                jet::Table& t = db->table(name);
                size_t n = 0;
                t.scan([&](jet::RowId, const jet::Row&) { return ++n < 100000; });
                for (const auto& ix : t.def().logicalIndexes) {
                    try {
                        (void)t.indexOrder(ix.name);
                    } catch (const jet::JetError&) {
                    }
                }
            } catch (const jet::JetError&) {
            }
        }
    } catch (const jet::JetError&) {
    }
    return 0;
}
