// Index B-trees: the pages of one real index, read in key order, searched, and changed.
//
//   index page (0x03 intermediate, 0x04 leaf):
//   0      1      2          4           8       12         16         20         24          26  27
//   | type | 0x01 | free (2) | TDEF (4)  | 0 (4) | prev (4) | next (4) | tail (4) | prefix (2) | 0 | mask (453) |
//   480: entries ... | free space to the page end
//
//   entry area: 3616 bytes from offset 480. Bit n of the mask (low bit first) set means an entry
//   ends n bytes into the area; the first entry starts at 0. The first entry is stored whole; every
//   later one without the page's shared prefix (its first "prefix" bytes, always within the key).
//
//   leaf entry:          | key bytes | row page (3, big-endian) | row (1) |
//   intermediate entry:  | key bytes | row page (3) | row (1) | child page (4, big-endian) |
//
//   Entries sort by key bytes (memcmp, shorter first on a common prefix), then by row id. An
//   intermediate entry repeats the last entry of the subtree below its child. An intermediate page
//   with several children keeps its last child out of the entries: "tail" names it. Leaves are
//   chained by prev/next from first to last; intermediate pages only among children of one parent.
//   The root page never moves: it is a leaf until it splits, and an empty tree is an empty leaf.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "pager.h"
#include "tabledef.h"
#include "value.h"

namespace jet {

class IndexPageView;  // one index page read in place (btree.cpp)

namespace indexpage {
constexpr uint32_t kPrev = 12;
constexpr uint32_t kNext = 16;
constexpr uint32_t kTail = 20;
constexpr uint32_t kPrefix = 24;
constexpr uint32_t kMask = 27;
constexpr uint32_t kMaskBytes = 453;
constexpr uint32_t kEntries = 480;
constexpr uint32_t kEntryArea = 3616;     // 4096 - 480
constexpr size_t kMaxKey = 1000;          // longest key we write: two entries always fit a page
}  // namespace indexpage

using KeyView = std::span<const uint8_t>;

// Index order of two entries.
int compareIndexEntries(KeyView keyA, RowId a, KeyView keyB, RowId b);

// One index page, decoded: the entries in full (prefix put back), in page order.
class IndexPage {
public:
    uint32_t number = 0;
    bool leaf = true;
    uint32_t owner = 0;  // the table's TDEF page
    uint32_t prev = 0, next = 0, tail = 0;

    // Corrupt (naming `file` and the page) when the page is not a well-formed index page.
    static IndexPage decode(const uint8_t* page, uint32_t number, const std::string& file);
    // Writes the whole page (the entries must fit).
    void encode(uint8_t* page) const;

    size_t size() const { return ends_.size(); }
    bool empty() const { return ends_.empty(); }
    KeyView key(size_t i) const;
    RowId row(size_t i) const;
    uint32_t child(size_t i) const;  // intermediate pages
    // The first entry >= (key, row): size() when none.
    size_t lowerBound(KeyView key, RowId row) const;
    bool equalAt(size_t i, KeyView key, RowId row) const;

    void insert(size_t i, KeyView key, RowId row, uint32_t child = 0);
    void replace(size_t i, KeyView key, RowId row);  // keeps the child
    void erase(size_t i);
    // Moves entries [0, n) to a new page object (same kind).
    IndexPage takeFront(size_t n);

    // Bytes of the entry area with prefix compression; whether they fit a page.
    size_t encodedSize() const { return encodedSize(0, size()); }
    size_t encodedSize(size_t from, size_t to) const;
    bool fits() const { return encodedSize() <= indexpage::kEntryArea; }

private:
    size_t trailer() const { return leaf ? 4 : 8; }
    size_t begin(size_t i) const { return i ? ends_[i - 1] : 0; }
    std::span<const uint8_t> whole(size_t i) const { return {blob_.data() + begin(i), ends_[i] - begin(i)}; }

    Bytes blob_;                  // the entries back to back, each in full
    std::vector<uint32_t> ends_;  // entry i is blob_[ends_[i-1], ends_[i])
};

// Where a writer gets new pages for the index and returns emptied ones.
struct IndexPageSource {
    std::function<uint32_t()> allocate;
    std::function<void(uint32_t)> release;
};

class BTree {
public:
    // `owner` is the table's TDEF page (written into new pages).
    BTree(Pager& pager, uint32_t root, uint32_t owner) : pager_(pager), root_(root), owner_(owner) {}

    // Visits the entries in order; the visitor returns false to stop. One pass over the leaves.
    using Visit = std::function<bool(KeyView key, RowId row)>;
    void scan(const Visit& visit) const;
    // The same from the first entry whose key is >= key.
    void scanFrom(KeyView key, const Visit& visit) const;

    // Changes, inside the pager's transaction. insert returns false when the entry is already
    // there, remove when it is absent. `keyKnown`, when given, tells whether the index had an
    // entry with this key (for any row) before the insert.
    bool insert(KeyView key, RowId row, const IndexPageSource& pages, bool* keyKnown = nullptr);
    bool remove(KeyView key, RowId row, const IndexPageSource& pages);
    // Whether the entry (key, row) is there.
    bool contains(KeyView key, RowId row) const;

    // Walks the whole tree and reports every inconsistency (page kinds and owner, entry order,
    // intermediate entries against their children, tails, prev/next links, free-space fields).
    // The leaf entries are handed to `visit` in tree order. At most `limit` problems.
    void verify(std::vector<std::string>& problems, const Visit& visit, size_t limit = 20) const;

    uint32_t root() const { return root_; }

private:
    struct Frame;
    IndexPage load(uint32_t pgno) const;
    PageRef pageAt(uint32_t pgno) const;
    IndexPage& decoded(Frame& f) const;
    // The leaf for (key, row) (seek) or the first leaf; the intermediate pages passed on the way
    // go to `path` when given.
    // The view is built in `out` (no copies of its mask tables on the way down).
    IndexPageView& leafFor(KeyView key, RowId row, bool seek, std::vector<Frame>* path,
                           std::optional<IndexPageView>& out) const;
    void walkLeaves(std::optional<IndexPageView>& leaf, bool seek, KeyView key, const Visit& visit) const;
    bool insertInPlace(const std::vector<Frame>& path, const IndexPageView& leaf, size_t i, KeyView key, RowId row);
    bool removeInPlace(const std::vector<Frame>& path, const IndexPageView& leaf, size_t i);
    void fixUp(std::vector<Frame>& path, bool lastChanged, const IndexPageSource& pages);
    void normalize(IndexPage& page) const;
    void lastEntryUnder(uint32_t pgno, Bytes& key, RowId& row) const;
    void split(IndexPage& page, IndexPage& parent, size_t childIndex, const IndexPageSource& pages);
    void setLink(uint32_t pgno, uint32_t offset, uint32_t value);
    void write(const IndexPage& page);

    Pager& pager_;
    uint32_t root_;
    uint32_t owner_;
};

}  // namespace jet
