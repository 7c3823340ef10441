// Usage maps: the set of pages a table owns, or has free space on.
//
//   inline map (type 0):    | 0x00 | start page (4) | bitmap: bit n = page start+n |
//   reference map (type 1): | 0x01 | page numbers (4 each) of usage-map pages, each
//                             | 0x05 0x01 0x00 0x00 | bitmap of 4092*8 pages |
//   The map's bytes are a row of a data page, addressed by (page, row).
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tabledef.h"

namespace jet {

class Pager;

class UsageMap {
public:
    // Parses the map stored at ref (Corrupt when it points nowhere sensible).
    static UsageMap read(Pager& pager, UsageMapRef ref);

    // Ascending. Collected from the bitmap on first use (a map may name tens of thousands of
    // pages; contains, add and remove read and change single bits).
    const std::vector<uint32_t>& pages() const;
    bool contains(uint32_t page) const;

    // Changes, inside the pager's transaction; the map's stored bytes are rewritten (an inline map
    // that cannot hold the page becomes a reference map).
    void add(Pager& pager, uint32_t page);
    void remove(Pager& pager, uint32_t page);

    // The database's own map of used pages (page 1, row 0; a set bit is a free page, and pages
    // past its range count as free): marks a newly appended page as in use.
    static void markAllocated(Pager& pager, uint32_t page);

private:
    // Where a page's bit lies in the stored map; nothing when the map cannot name the page as it
    // is (outside an inline map's range, or no map page for it yet).
    struct Place {
        uint32_t page;
        size_t byte;
        uint8_t bit;
    };
    std::optional<Place> place(uint32_t page) const;

    Pager* pager_ = nullptr;
    UsageMapRef ref_;
    mutable std::vector<uint32_t> pages_;
    mutable bool collected_ = false;
    uint8_t type_ = 0;       // 0 inline, 1 reference
    uint32_t start_ = 0;     // inline: the page of bit 0
};

}  // namespace jet
