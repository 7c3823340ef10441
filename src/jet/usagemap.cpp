// Usage maps (layout drawn in usagemap.h).
//
//   inline (type 0):     | 0x00 | start page (4) | bitmap to the row's end |   bit n = page start+n
//   reference (type 1):  | 0x01 | map page (4) | map page (4) | ... |        slot i covers pages
//                        i*32736 .. (i+1)*32736-1 on a page | 0x05 0x01 0 0 | bitmap (4092) |
//
// A table's maps say which pages it owns and which of them have free space. The database's
// global map (page 1, row 0) has the opposite sense: a set bit is a free page.
#include "usagemap.h"

#include <algorithm>
#include <cstring>

#include "datapage.h"
#include "error.h"
#include "pager.h"

namespace jet {

namespace {

using namespace datapage;

constexpr uint8_t kUsageMapPage = 0x05;
constexpr size_t kMapPageData = 4;
constexpr uint32_t kPagesPerMapPage = (kPageSize - kMapPageData) * 8;  // 32736

std::string where(UsageMapRef ref) {
    return "usage map at page " + std::to_string(ref.page) + " row " + std::to_string(ref.row);
}

// The map's row: [start, end) on the page. Bounds-checked.
Slot mapRow(const Page& page, Pager& pager, UsageMapRef ref) {
    Slot s = slot(page.data(), ref.row, pager.path(), ref.page);
    if (s.deleted || s.overflow || s.size() < 1)
        fail(ErrorKind::Corrupt, pager.path(), where(ref) + " is not a map");
    return s;
}

void collectBits(const uint8_t* bits, size_t n, uint32_t base, std::vector<uint32_t>& out) {
    for (size_t i = 0; i < n; ++i) {
        uint8_t b = bits[i];
        if (!b) continue;
        for (int k = 0; k < 8; ++k)
            if (b & (1u << k)) out.push_back(base + uint32_t(i * 8 + k));
    }
}

}  // namespace

UsageMap UsageMap::read(Pager& pager, UsageMapRef ref) {
    if (ref.page == 0 || ref.page >= pager.pageCount())
        fail(ErrorKind::Corrupt, pager.path(), where(ref) + " points outside the file");
    PageRef pg = pager.page(ref.page);
    Slot s = mapRow(*pg, pager, ref);
    const uint8_t* row = pg->data() + s.start;
    size_t len = s.size();

    UsageMap m;
    m.pager_ = &pager;
    m.ref_ = ref;
    m.type_ = row[0];
    if (m.type_ == 0) {
        if (len < 5) fail(ErrorKind::Corrupt, pager.path(), where(ref) + " is too short");
        m.start_ = get32(row + 1);
    } else if (m.type_ == 1) {
        size_t slots = (len - 1) / 4;
        uint32_t total = pager.pageCount();
        for (size_t i = 0; i < slots; ++i) {
            uint32_t mp = get32(row + 1 + 4 * i);
            if (mp == 0) continue;
            if (mp >= total) fail(ErrorKind::Corrupt, pager.path(), where(ref) + " names a page outside the file");
            if (pager.page(mp)->bytes[0] != kUsageMapPage)
                fail(ErrorKind::Corrupt, pager.path(), where(ref) + ": page " + std::to_string(mp) + " is not a map page");
        }
    } else {
        fail(ErrorKind::Corrupt, pager.path(), where(ref) + " has unknown type " + std::to_string(m.type_));
    }
    return m;
}

const std::vector<uint32_t>& UsageMap::pages() const {
    if (collected_) return pages_;
    Pager& pager = *pager_;
    PageRef pg = pager.page(ref_.page);
    Slot s = mapRow(*pg, pager, ref_);
    const uint8_t* row = pg->data() + s.start;
    if (type_ == 0) {
        collectBits(row + 5, s.size() - 5, start_, pages_);
    } else {
        for (size_t i = 0, slots = (s.size() - 1) / 4; i < slots; ++i) {
            uint32_t mp = get32(row + 1 + 4 * i);
            if (mp == 0) continue;
            PageRef bits = pager.page(mp);
            collectBits(bits->data() + kMapPageData, kPageSize - kMapPageData, uint32_t(i) * kPagesPerMapPage, pages_);
        }
    }
    collected_ = true;
    return pages_;
}

std::optional<UsageMap::Place> UsageMap::place(uint32_t page) const {
    Pager& pager = *pager_;
    PageRef pg = pager.page(ref_.page);
    Slot s = mapRow(*pg, pager, ref_);
    if (type_ == 0) {
        if (s.size() < 5 || page < start_) return std::nullopt;
        uint64_t bit = uint64_t(page) - start_;
        if (bit >= uint64_t(s.size() - 5) * 8) return std::nullopt;
        return Place{ref_.page, s.start + 5 + size_t(bit / 8), uint8_t(bit % 8)};
    }
    size_t i = page / kPagesPerMapPage;
    if (1 + 4 * (i + 1) > s.size()) return std::nullopt;
    uint32_t mp = get32(pg->data() + s.start + 1 + 4 * i);
    if (!mp || mp >= pager.pageCount() || pager.page(mp)->bytes[0] != kUsageMapPage) return std::nullopt;
    uint32_t bit = page % kPagesPerMapPage;
    return Place{mp, kMapPageData + bit / 8, uint8_t(bit % 8)};
}

bool UsageMap::contains(uint32_t page) const {
    auto at = place(page);
    return at && (pager_->page(at->page)->bytes[at->byte] >> at->bit & 1);
}

namespace {

// Sets or clears one page's bit in the stored map; `pages` is the map's set (kept in step).
// Returns false when an inline map cannot hold the page where it is.
bool setInline(uint8_t* row, size_t len, uint32_t start, uint32_t page, bool on) {
    if (page < start) return false;
    uint64_t bit = uint64_t(page) - start;
    if (bit >= uint64_t(len - 5) * 8) return false;
    uint8_t& b = row[5 + bit / 8];
    b = on ? uint8_t(b | (1u << (bit % 8))) : uint8_t(b & ~(1u << (bit % 8)));
    return true;
}

// A new usage-map page: all clear, or all set (the global map, where set means free).
uint32_t newMapPage(Pager& pager, bool allSet) {
    uint32_t pg = pager.append();
    uint8_t* p = pager.modify(pg);
    std::memset(p, allSet ? 0xFF : 0x00, kPageSize);
    p[0] = kUsageMapPage;
    p[1] = 0x01;
    p[2] = p[3] = 0;
    return pg;
}

}  // namespace

// Rewrites the whole stored map from pages_ (inline: choosing a start page that covers them all,
// or becoming a reference map when none does).
static void storeTableMap(Pager& pager, UsageMapRef ref, uint8_t& type, uint32_t& start,
                          const std::vector<uint32_t>& pages) {
    uint8_t* p = pager.modify(ref.page);
    Slot s = slot(p, ref.row, pager.path(), ref.page);
    uint8_t* row = p + s.start;
    size_t len = s.size();
    if (len < 5) fail(ErrorKind::Corrupt, pager.path(), where(ref) + " is too short");
    if (type == 0) {
        uint64_t capacity = uint64_t(len - 5) * 8;
        uint32_t newStart = pages.empty() ? start : (pages.front() / 8) * 8;
        if (pages.empty() || uint64_t(pages.back()) - newStart < capacity) {
            // Keep the start when it still covers everything (fewer bytes change).
            if (!pages.empty() && pages.front() >= start && uint64_t(pages.back()) - start < capacity) newStart = start;
            start = newStart;
            std::memset(row + 1, 0, len - 1);
            put32(row + 1, start);
            for (uint32_t pg : pages) setInline(row, len, start, pg, true);
            return;
        }
        // Too wide for the inline bitmap: switch to map pages.
        type = 1;
        std::memset(row, 0, len);
        row[0] = 1;
    }
    size_t slots = (len - 1) / 4;
    // Clear the bits of every existing map page, then set ours (map pages are few and small).
    std::vector<uint8_t*> mapPages(slots, nullptr);
    for (size_t i = 0; i < slots; ++i) {
        uint32_t mp = get32(pager.page(ref.page)->data() + s.start + 1 + 4 * i);
        if (mp) {
            mapPages[i] = pager.modify(mp);
            std::memset(mapPages[i] + kMapPageData, 0, kPageSize - kMapPageData);
        }
    }
    for (uint32_t pg : pages) {
        size_t i = pg / kPagesPerMapPage;
        if (i >= slots) fail(ErrorKind::Unsupported, pager.path(), where(ref) + " cannot map page " + std::to_string(pg));
        if (!mapPages[i]) {
            uint32_t mp = newMapPage(pager, false);
            UsageMap::markAllocated(pager, mp);
            mapPages[i] = pager.modify(mp);
            put32(pager.modify(ref.page) + s.start + 1 + 4 * i, mp);
        }
        uint32_t bit = pg % kPagesPerMapPage;
        mapPages[i][kMapPageData + bit / 8] |= uint8_t(1u << (bit % 8));
    }
}

void UsageMap::add(Pager& pager, uint32_t page) {
    if (contains(page)) return;
    if (auto at = place(page)) {
        pager.modify(at->page)[at->byte] |= uint8_t(1u << at->bit);
        if (collected_) pages_.insert(std::lower_bound(pages_.begin(), pages_.end(), page), page);
        return;
    }
    // The map cannot name the page as it is: rewritten whole.
    pages();
    pages_.insert(std::lower_bound(pages_.begin(), pages_.end(), page), page);
    storeTableMap(pager, ref_, type_, start_, pages_);
}

void UsageMap::remove(Pager& pager, uint32_t page) {
    if (!contains(page)) return;
    auto at = place(page);
    pager.modify(at->page)[at->byte] &= uint8_t(~(1u << at->bit));
    if (collected_) pages_.erase(std::lower_bound(pages_.begin(), pages_.end(), page));
}

void UsageMap::markAllocated(Pager& pager, uint32_t page) {
    const UsageMapRef ref{1, 0};
    uint8_t* p = pager.modify(ref.page);
    Slot s = slot(p, ref.row, pager.path(), ref.page);
    uint8_t* row = p + s.start;
    size_t len = s.size();
    if (len < 5) fail(ErrorKind::Corrupt, pager.path(), "the database's usage map is too short");
    if (row[0] == 0) {
        uint32_t start = get32(row + 1);
        uint64_t capacity = uint64_t(len - 5) * 8;
        if (page < start) return;  // before the map's range: left as the map has it
        if (uint64_t(page) - start >= capacity) {
            // Slide the window so that the page sits in its middle; pages the window newly covers
            // past its old end count as free (as they did outside it).
            uint32_t oldEnd = uint32_t(start + capacity);
            uint32_t newStart = uint32_t(((page > capacity / 2 ? page - capacity / 2 : 0) / 8) * 8);
            std::vector<uint8_t> bits(len - 5, 0);
            for (uint64_t b = 0; b < capacity; ++b) {
                uint64_t pg = newStart + b;
                bool on = pg >= oldEnd || (pg >= start && (row[5 + (pg - start) / 8] >> ((pg - start) % 8)) & 1);
                if (on) bits[b / 8] |= uint8_t(1u << (b % 8));
            }
            put32(row + 1, newStart);
            std::memcpy(row + 5, bits.data(), bits.size());
            start = newStart;
        }
        setInline(row, len, start, page, false);
        return;
    }
    if (row[0] != 1) fail(ErrorKind::Corrupt, pager.path(), "the database's usage map has an unknown type");
    size_t i = page / kPagesPerMapPage;
    if (1 + 4 * (i + 1) > len) return;  // past what the map can name: nothing to clear
    uint32_t mp = get32(row + 1 + 4 * i);
    if (mp == 0) {
        mp = newMapPage(pager, true);
        put32(pager.modify(ref.page) + s.start + 1 + 4 * i, mp);
        if (mp / kPagesPerMapPage == i) {
            uint32_t b = mp % kPagesPerMapPage;
            pager.modify(mp)[kMapPageData + b / 8] &= uint8_t(~(1u << (b % 8)));
        } else {
            markAllocated(pager, mp);
        }
    }
    if (mp >= pager.pageCount() || pager.page(mp)->bytes[0] != kUsageMapPage)
        fail(ErrorKind::Corrupt, pager.path(), "the database's usage map names a page that is not a map page");
    uint32_t bit = page % kPagesPerMapPage;
    pager.modify(mp)[kMapPageData + bit / 8] &= uint8_t(~(1u << (bit % 8)));
}

}  // namespace jet
