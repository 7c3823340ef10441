// The database header (page 0).
//
//   0x00 | 00 01 00 00 | "Standard Jet DB\0" (Access 2007 and later: "Standard ACE DB\0")
//   0x14 | version (4): 0 Jet 3 (Access 97), 1 Jet 4 (Access 2000-2003), 2+ Access 2007 and later
//   0x18 | 128 bytes masked with a fixed RC4 key stream; inside them (offsets from page start):
//          0x3C code page (2) | 0x3E encoding key (4): non-zero when the pages are encrypted |
//          0x42 database password (40, UTF-16, masked again with the creation date) |
//          0x6E sort order (2) + 0 + version (1) | 0x72 creation date (8, a date double)
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "indexkey.h"  // kGeneralSortOrder (1033)

namespace jet {

constexpr uint32_t kHeaderMaskOffset = 0x18;
constexpr uint32_t kHeaderMaskLength = 128;

struct DbHeader {
    uint8_t version = 1;
    uint16_t codePage = 0;
    uint32_t encodingKey = 0;
    uint16_t sortOrder = 0;     // 1033 is General; 0 (files of some writers) means the default
    uint8_t sortVersion = 0;
    double created = 0;
    bool hasPassword = false;

    // Access 2000's General order: 1033 (or unset) with version 0 or 1.
    bool generalSortOrder() const { return (sortOrder == kGeneralSortOrder || sortOrder == 0) && sortVersion <= 1; }
};

// Parses and checks the first bytes of a file (len may be less than a page for a short file).
// Anything but an unencrypted Jet 4 file fails with NotJet4 or Encrypted, naming `file`.
DbHeader readHeader(const uint8_t* bytes, size_t len, const std::string& file);

// Masks or unmasks (the same operation) the 128 masked header bytes of a page-0 image in place.
void maskHeader(uint8_t* page0);

}  // namespace jet
