// The rollback journal's file format and its play-back (the layout is drawn in journal.h).
#include "journal.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "error.h"
#include "os.h"

namespace jet {

namespace {

constexpr char kMagic[8] = {'K', 'R', 'V', 'J', 'R', 'N', 'L', '1'};
constexpr size_t kHeaderSize = 32;
constexpr size_t kRecordSize = 4 + kPageSize + 4;
constexpr size_t kChunkRecords = 64;  // records per read or write call (256 KiB)

void put32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i) p[i] = uint8_t(v >> (8 * i));
}
void put64(uint8_t* p, uint64_t v) {
    for (int i = 0; i < 8; ++i) p[i] = uint8_t(v >> (8 * i));
}
uint32_t get32(const uint8_t* p) {
    uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = (v << 8) | p[i];
    return v;
}
uint64_t get64(const uint8_t* p) {
    uint64_t v = 0;
    for (int i = 7; i >= 0; --i) v = (v << 8) | p[i];
    return v;
}

// A 64-bit multiply-xorshift hash folded to 32 bits: fast over a page, and any torn sector or
// stale record changes it.
uint32_t checksum(uint32_t salt, uint32_t tag, const uint8_t* data, size_t n) {
    uint64_t h = 0x9E3779B97F4A7C15ull ^ (uint64_t(salt) << 32 | tag);
    size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        h ^= get64(data + i);
        h *= 0xFF51AFD7ED558CCDull;
        h ^= h >> 32;
    }
    for (; i < n; ++i) {
        h ^= data[i];
        h *= 0xC4CEB9FE1A85EC53ull;
    }
    h ^= h >> 29;
    h *= 0xFF51AFD7ED558CCDull;
    h ^= h >> 32;
    return uint32_t(h) ^ uint32_t(h >> 32);
}

struct Header {
    uint32_t pages;
    uint64_t originalSize;
    uint32_t salt;
};

std::optional<Header> readHeader(const File& j) {
    uint8_t h[kHeaderSize];
    if (j.readAt(0, h, kHeaderSize) != kHeaderSize) return std::nullopt;
    if (std::memcmp(h, kMagic, 8) != 0 || get32(h + 8) != kPageSize) return std::nullopt;
    if (get32(h + 28) != checksum(0, 0, h, 28)) return std::nullopt;
    Header hd{get32(h + 12), get64(h + 16), get32(h + 24)};
    if (j.size() < kHeaderSize + uint64_t(hd.pages) * kRecordSize) return std::nullopt;
    return hd;
}

// Calls f(pgno, image) for every record in order; false as soon as a record fails its checksum.
template <class F>
bool forEachRecord(const File& j, const Header& hd, F&& f) {
    std::vector<uint8_t> buf(kChunkRecords * kRecordSize);
    for (uint32_t done = 0; done < hd.pages;) {
        uint32_t n = std::min<uint32_t>(hd.pages - done, kChunkRecords);
        size_t bytes = size_t(n) * kRecordSize;
        if (j.readAt(kHeaderSize + uint64_t(done) * kRecordSize, buf.data(), bytes) != bytes) return false;
        for (uint32_t i = 0; i < n; ++i) {
            const uint8_t* r = buf.data() + size_t(i) * kRecordSize;
            uint32_t pgno = get32(r);
            if (get32(r + 4 + kPageSize) != checksum(hd.salt, pgno, r + 4, kPageSize)) return false;
            if ((uint64_t(pgno) + 1) * kPageSize > hd.originalSize) return false;  // only old pages are kept
            if (!f(pgno, r + 4)) return false;
        }
        done += n;
    }
    return true;
}

}  // namespace

std::string journalPath(const std::string& dbPath) { return dbPath + "-journal"; }

void writeJournal(const std::string& path, uint64_t originalSize, const std::vector<JournalPage>& pages) {
    if (pages.size() > 0xFFFFFFFFu) fail(ErrorKind::Invalid, path, "too many pages for one journal");
    static thread_local std::mt19937 rng{std::random_device{}()};
    uint32_t salt = rng();
    auto j = File::open(path, File::Open::CreateOrTruncate);
    uint8_t h[kHeaderSize];
    std::memcpy(h, kMagic, 8);
    put32(h + 8, kPageSize);
    put32(h + 12, uint32_t(pages.size()));
    put64(h + 16, originalSize);
    put32(h + 24, salt);
    put32(h + 28, checksum(0, 0, h, 28));
    j->writeAt(0, h, kHeaderSize);
    std::vector<uint8_t> buf;
    buf.reserve(kChunkRecords * kRecordSize);
    uint64_t off = kHeaderSize;
    for (size_t i = 0; i < pages.size(); ++i) {
        uint8_t rec[8];
        put32(rec, pages[i].pgno);
        buf.insert(buf.end(), rec, rec + 4);
        buf.insert(buf.end(), pages[i].image->data(), pages[i].image->data() + kPageSize);
        put32(rec + 4, checksum(salt, pages[i].pgno, pages[i].image->data(), kPageSize));
        buf.insert(buf.end(), rec + 4, rec + 8);
        if (buf.size() == kChunkRecords * kRecordSize || i + 1 == pages.size()) {
            j->writeAt(off, buf.data(), buf.size());
            off += buf.size();
            buf.clear();
        }
    }
    j->sync();
    File::syncFolderOf(path);
}

std::optional<JournalInfo> checkJournal(const std::string& path) {
    auto j = File::openIfExists(path, File::Open::ReadOnly);
    if (!j) return std::nullopt;
    auto hd = readHeader(*j);
    if (!hd) return std::nullopt;
    if (!forEachRecord(*j, *hd, [](uint32_t, const uint8_t*) { return true; })) return std::nullopt;
    return JournalInfo{hd->originalSize, hd->pages};
}

bool playBackJournal(const std::string& path, File& db) {
    auto j = File::openIfExists(path, File::Open::ReadOnly);
    if (!j) return false;
    auto hd = readHeader(*j);
    if (!hd) return false;
    // Check everything first: a bad record found half-way must not leave a half-restored file.
    if (!forEachRecord(*j, *hd, [](uint32_t, const uint8_t*) { return true; })) return false;
    forEachRecord(*j, *hd, [&](uint32_t pgno, const uint8_t* image) {
        db.writeAt(uint64_t(pgno) * kPageSize, image, kPageSize);
        return true;
    });
    db.truncate(hd->originalSize);
    db.sync();
    return true;
}

}  // namespace jet
