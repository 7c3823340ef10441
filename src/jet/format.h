// On-disk constants of Jet 4 files and little-endian readers and writers.
//
//   page types (byte 0 of every page):
//     0x00 the database header (page 0)      0x01 data rows (table rows, LVAL rows, usage maps)
//     0x02 a table definition (TDEF)         0x03 index, intermediate      0x04 index, leaf
//     0x05 a usage-map page
//
//   TDEF page:  | 0x02 | 0x01 | free (2) | next TDEF page (4) | definition bytes ... |
//     The definition continues on the next pages of the chain after their 8-byte header; the
//     offsets below count in the concatenated definition (first page header included).
#pragma once

#include <cstdint>
#include <cstring>

namespace jet {

namespace page {
constexpr uint8_t kHeader = 0x00;
constexpr uint8_t kData = 0x01;
constexpr uint8_t kTableDef = 0x02;
constexpr uint8_t kIndexNode = 0x03;
constexpr uint8_t kIndexLeaf = 0x04;
constexpr uint8_t kUsageMap = 0x05;
}  // namespace page

// The catalogue (MSysObjects) always has its TDEF on page 2.
constexpr uint32_t kCatalogPage = 2;

namespace tdef {
constexpr uint32_t kNextPage = 4;        // next page of the TDEF chain (0: last)
constexpr uint32_t kPageHeader = 8;      // bytes of each chained page before its definition data
constexpr uint32_t kLength = 8;          // length of the definition (4)
constexpr uint32_t kRowCount = 16;       // (4)
constexpr uint32_t kAutoNumber = 20;     // last autonumber handed out (4)
constexpr uint32_t kTableType = 40;      // 0x4E user, 0x53 system (1)
constexpr uint32_t kMaxColumns = 41;     // (2)
constexpr uint32_t kVarColumns = 43;     // (2)
constexpr uint32_t kColumnCount = 45;    // (2)
constexpr uint32_t kLogicalIndexCount = 47;  // (4)
constexpr uint32_t kRealIndexCount = 51;     // (4)
constexpr uint32_t kOwnedPages = 55;     // usage map reference: row (1) + page (3)
constexpr uint32_t kFreeSpacePages = 59; // same
constexpr uint32_t kRealIndexBlock = 63; // real index entry counts: 12 bytes each
constexpr uint32_t kRealIndexCountSize = 12;
constexpr uint32_t kColumnSize = 25;     // one column descriptor
constexpr uint32_t kRealIndexSize = 52;  // one real index descriptor
constexpr uint32_t kLogicalIndexSize = 28;
constexpr uint8_t kUserTable = 0x4E;
constexpr uint8_t kSystemTable = 0x53;

// Offsets inside a column descriptor.
constexpr uint32_t kColType = 0;
constexpr uint32_t kColNumber = 5;
constexpr uint32_t kColVarIndex = 7;
constexpr uint32_t kColMisc = 11;        // precision/scale, or sort order (2) + version byte at 14
constexpr uint32_t kColFlags = 15;
constexpr uint32_t kColExtFlags = 16;
constexpr uint32_t kColFixedOffset = 21;
constexpr uint32_t kColLength = 23;
}  // namespace tdef

// A row of a data page: | column count (2) | fixed area | variable data | ... |
// | end of variable data (2) | variable offsets (2 each, last column first) | variable count (2) |
// | null mask ((count + 7) / 8) |
namespace row {
constexpr uint32_t kFixedStart = 2;
}

inline uint16_t le16(const uint8_t* p) { return uint16_t(p[0] | (p[1] << 8)); }
inline uint32_t le24(const uint8_t* p) { return uint32_t(p[0]) | (uint32_t(p[1]) << 8) | (uint32_t(p[2]) << 16); }
inline uint32_t le32(const uint8_t* p) { return le24(p) | (uint32_t(p[3]) << 24); }
inline uint64_t le64(const uint8_t* p) { return uint64_t(le32(p)) | (uint64_t(le32(p + 4)) << 32); }
inline float leFloat(const uint8_t* p) {
    uint32_t b = le32(p);
    float f;
    std::memcpy(&f, &b, 4);
    return f;
}
inline double leDouble(const uint8_t* p) {
    uint64_t b = le64(p);
    double d;
    std::memcpy(&d, &b, 8);
    return d;
}

inline void putLe16(uint8_t* p, uint16_t v) { p[0] = uint8_t(v); p[1] = uint8_t(v >> 8); }
inline void putLe24(uint8_t* p, uint32_t v) { p[0] = uint8_t(v); p[1] = uint8_t(v >> 8); p[2] = uint8_t(v >> 16); }
inline void putLe32(uint8_t* p, uint32_t v) { putLe24(p, v); p[3] = uint8_t(v >> 24); }
inline void putLe64(uint8_t* p, uint64_t v) { putLe32(p, uint32_t(v)); putLe32(p + 4, uint32_t(v >> 32)); }

}  // namespace jet
