// The header page (page 0) of a new file. Layout in header.h; what a new file holds there:
//
//   0x00 | 00 01 00 00 | "Standard Jet DB\0" | 0x14 version 1 (Jet 4) |
//   masked region (0x18, 128 bytes), before masking:
//     0x18 | 00 01 00 00 | 01 01 00 00 | 0x20 the system tables' TDEF pages 2, 3, 4, 5 (4 each) |
//     0x3C code page 1252 | 0x3E encoding key 0 (not encrypted) |
//     0x42 password: 40 zero bytes, masked with the creation date's whole days (4 bytes, LE) |
//     0x6E sort order 1033, 0, version 0 (General) | 0x72 creation date (8) |
//   0x98 | 0x654 (4) | "4.0\0" |                  (as Access 2000 writes them)
#include <algorithm>
#include <cstring>

#include "create.h"
#include "format.h"
#include "header.h"
#include "pager.h"

namespace jet {

void writeNewHeader(uint8_t* p, double created) {
    std::fill(p, p + kPageSize, uint8_t(0));
    p[1] = 0x01;
    std::memcpy(p + 4, "Standard Jet DB", 16);
    putLe32(p + 0x14, 1);
    putLe32(p + 0x18, 0x100);
    putLe32(p + 0x1C, 0x101);
    for (uint32_t i = 0; i < 4; ++i) putLe32(p + 0x20 + 4 * i, 2 + i);
    putLe16(p + 0x3C, 1252);
    uint8_t dateMask[4];
    putLe32(dateMask, uint32_t(int32_t(created)));
    for (uint32_t i = 0; i < 40; ++i) p[0x42 + i] = dateMask[i % 4];
    putLe16(p + 0x6E, kGeneralSortOrder);
    uint64_t bits;
    std::memcpy(&bits, &created, 8);
    putLe64(p + 0x72, bits);
    maskHeader(p);
    putLe32(p + 0x98, 0x654);
    std::memcpy(p + 0x9C, "4.0", 4);
}

}  // namespace jet
