// The database header: signature, version and the masked region (layout in header.h).
#include "header.h"

#include <array>
#include <cmath>
#include <cstring>

#include "error.h"
#include "format.h"

namespace jet {

namespace {

constexpr char kJetSignature[] = "Standard Jet DB";
constexpr char kAceSignature[] = "Standard ACE DB";
constexpr uint32_t kVersionOffset = 0x14;
constexpr uint32_t kCodePageOffset = 0x3C;
constexpr uint32_t kEncodingKeyOffset = 0x3E;
constexpr uint32_t kPasswordOffset = 0x42;
constexpr uint32_t kPasswordLength = 40;
constexpr uint32_t kSortOrderOffset = 0x6E;
constexpr uint32_t kCreatedOffset = 0x72;

// The mask is the RC4 key stream of the fixed key 0x6B39DAC7 (little-endian bytes).
std::array<uint8_t, kHeaderMaskLength> makeMask() {
    const uint8_t key[4] = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<uint8_t, 256> s;
    for (int i = 0; i < 256; ++i) s[i] = uint8_t(i);
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + s[i] + key[i % 4]) & 0xFF;
        std::swap(s[i], s[j]);
    }
    std::array<uint8_t, kHeaderMaskLength> out;
    for (size_t n = 0, i = 0, j = 0; n < out.size(); ++n) {
        i = (i + 1) & 0xFF;
        j = (j + s[i]) & 0xFF;
        std::swap(s[i], s[j]);
        out[n] = s[(s[i] + s[j]) & 0xFF];
    }
    return out;
}

const std::array<uint8_t, kHeaderMaskLength>& mask() {
    static const auto m = makeMask();
    return m;
}

}  // namespace

void maskHeader(uint8_t* page0) {
    const auto& m = mask();
    for (size_t i = 0; i < m.size(); ++i) page0[kHeaderMaskOffset + i] ^= m[i];
}

DbHeader readHeader(const uint8_t* bytes, size_t len, const std::string& file) {
    if (len == 0) fail(ErrorKind::NotJet4, file, "the file is empty, not an Access file");
    bool jet = len >= 19 && std::memcmp(bytes + 4, kJetSignature, 15) == 0;
    bool ace = len >= 19 && std::memcmp(bytes + 4, kAceSignature, 15) == 0;
    if (len < 4 || bytes[0] != 0 || bytes[1] != 1 || (!jet && !ace))
        fail(ErrorKind::NotJet4, file, "not an Access database (no Jet signature)");
    if (len <= kVersionOffset) fail(ErrorKind::NotJet4, file, "the file is too short for an Access database");
    uint8_t version = bytes[kVersionOffset];
    if (ace || version >= 2)
        fail(ErrorKind::NotJet4, file, "an Access 2007 or later database (version " + std::to_string(version) +
                                           "); only Access 2000 files (Jet 4) are read");
    if (version == 0) fail(ErrorKind::NotJet4, file, "an Access 97 database (Jet 3); only Access 2000 files (Jet 4) are read");
    if (len < 4096) fail(ErrorKind::NotJet4, file, "the file is shorter than one page (" + std::to_string(len) + " bytes)");

    uint8_t h[kHeaderMaskOffset + kHeaderMaskLength];
    std::memcpy(h, bytes, sizeof h);
    maskHeader(h);

    DbHeader out;
    out.version = version;
    out.codePage = le16(h + kCodePageOffset);
    out.encodingKey = le32(h + kEncodingKeyOffset);
    out.sortOrder = le16(h + kSortOrderOffset);
    out.sortVersion = h[kSortOrderOffset + 3];
    out.created = leDouble(h + kCreatedOffset);
    // The password bytes are masked again with the creation date's whole days (4 bytes, LE).
    uint8_t dateMask[4] = {0, 0, 0, 0};
    if (std::isfinite(out.created) && std::fabs(out.created) < 2147483647.0)
        putLe32(dateMask, uint32_t(int32_t(out.created)));
    for (uint32_t i = 0; i < kPasswordLength; ++i)
        if ((h[kPasswordOffset + i] ^ dateMask[i % 4]) != 0) out.hasPassword = true;
    if (out.encodingKey != 0) fail(ErrorKind::Encrypted, file, "the database is encrypted; encrypted files are not read");
    return out;
}

}  // namespace jet
