// Index B-trees (page layout drawn in btree.h).
//
//   A change works on decoded copies of the pages on the path from the root to one leaf, then
//   fixes them bottom-up: an emptied page leaves its parent and the page chain; a changed last
//   entry is copied into the parent's entry for that child; a page that no longer fits is split,
//   the front part going to new pages placed before it (so the parent's entry for the old page
//   stays right); a root that no longer fits moves its entries to a new child first.
#include "btree.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>
#include <set>

#include "error.h"
#include "format.h"
#include "pager.h"

namespace jet {

using namespace indexpage;

namespace {

constexpr int kMaxDepth = 32;

uint32_t be24(const uint8_t* p) { return (uint32_t(p[0]) << 16) | (uint32_t(p[1]) << 8) | p[2]; }
uint32_t be32(const uint8_t* p) { return (uint32_t(p[0]) << 24) | be24(p + 1); }
void putBe32(uint8_t* p, uint32_t v) {
    p[0] = uint8_t(v >> 24);
    p[1] = uint8_t(v >> 16);
    p[2] = uint8_t(v >> 8);
    p[3] = uint8_t(v);
}

int compareKeys(KeyView a, KeyView b) {
    size_t n = std::min(a.size(), b.size());
    int c = n ? std::memcmp(a.data(), b.data(), n) : 0;
    if (c) return c < 0 ? -1 : 1;
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

RowId rowAt(const uint8_t* p) { return RowId{be24(p), p[3]}; }

size_t commonPrefix(KeyView a, KeyView b) {
    size_t n = std::min(a.size(), b.size()), i = 0;
    while (i < n && a[i] == b[i]) ++i;
    return i;
}

// Set bits of a word. std::popcount becomes a library call on builds for CPUs without the
// instruction (the default on x86-64); this stays inline.
int bitCount(uint64_t x) {
    x -= (x >> 1) & 0x5555555555555555u;
    x = (x & 0x3333333333333333u) + ((x >> 2) & 0x3333333333333333u);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0Fu;
    return int((x * 0x0101010101010101u) >> 56);
}

std::string pageName(uint32_t pgno) { return "index page " + std::to_string(pgno); }

// before[w] = set bits of words [0, w), for w = 0..n. Every index page read sums its mask, so
// the CPU's popcount instruction is used where there is one (the build targets plain x86-64).
void prefixCountsPortable(const uint64_t* words, uint16_t* before, size_t n) {
    uint16_t count = 0;
    for (size_t w = 0; w < n; ++w) {
        before[w] = count;
        count = uint16_t(count + bitCount(words[w]));
    }
    before[n] = count;
}
#if defined(__x86_64__) && defined(__GNUC__)
__attribute__((target("popcnt"))) void prefixCountsPopcnt(const uint64_t* words, uint16_t* before, size_t n) {
    uint16_t count = 0;
    for (size_t w = 0; w < n; ++w) {
        before[w] = count;
        count = uint16_t(count + __builtin_popcountll(words[w]));
    }
    before[n] = count;
}
const auto prefixCounts = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("popcnt") ? prefixCountsPopcnt : prefixCountsPortable;
}();
#else
const auto prefixCounts = prefixCountsPortable;
#endif

}  // namespace

int compareIndexEntries(KeyView keyA, RowId a, KeyView keyB, RowId b) {
    int c = compareKeys(keyA, keyB);
    if (c) return c;
    if (a.page != b.page) return a.page < b.page ? -1 : 1;
    if (a.row != b.row) return a.row < b.row ? -1 : 1;
    return 0;
}

// One index page read where it lies. The mask is summed per 64-bit word once; entry i's end is
// found from those sums when asked (a binary search touches a handful of entries, not all), and
// an entry is put back together (the page's shared prefix, then its stored bytes) in the view's
// own buffer, so a span it returns stays valid only until the next read of an entry that is not
// the first. Every entry read is bounds-checked.
class IndexPageView {
public:
    static constexpr size_t kWords = (kMaskBytes + 7) / 8;
    using MaskWords = std::array<uint64_t, kWords>;  // the mask, bit n of the whole = bit n % 64 of word n / 64
    IndexPageView(PageRef page, uint32_t pgno, const std::string& file) : IndexPageView(page->data(), pgno, file) {
        hold_ = std::move(page);
    }
    IndexPageView(const uint8_t* p, uint32_t pgno, const std::string& file) : number(pgno), p_(p), file_(&file) {
        if (p[0] != page::kIndexNode && p[0] != page::kIndexLeaf)
            fail(ErrorKind::Corrupt, file, pageName(pgno) + " is not an index page");
        leaf = p[0] == page::kIndexLeaf;
        tail = le32(p + kTail);
        prefix_ = le16(p + kPrefix);
        std::memcpy(words_.data(), p + kMask, kMaskBytes);  // little-endian hosts
        std::memset(reinterpret_cast<uint8_t*>(words_.data()) + kMaskBytes, 0, sizeof(MaskWords) - kMaskBytes);
        if (words_[0] & 1) fail(ErrorKind::Corrupt, file, pageName(pgno) + " has an empty entry");
        constexpr size_t kLast = kEntryArea / 64;  // the word holding the last place an entry may end
        if ((words_[kLast] >> (kEntryArea % 64) >> 1) != 0 || std::any_of(words_.begin() + kLast + 1, words_.end(), [](uint64_t w) { return w != 0; }))
            fail(ErrorKind::Corrupt, file, pageName(pgno) + " has an entry past the page end");
        prefixCounts(words_.data(), before_.data(), kWords);
        if (size() && prefix_ > end(0))
            fail(ErrorKind::Corrupt, file, pageName(pgno) + " has a prefix longer than its first entry");
    }

    uint32_t number;
    bool leaf = true;
    uint32_t tail = 0;

    size_t size() const { return before_[kWords]; }
    bool empty() const { return size() == 0; }
    size_t trailer() const { return leaf ? 4 : 8; }
    size_t prefix() const { return prefix_; }
    uint32_t prev() const { return le32(p_ + kPrev); }
    uint32_t next() const { return le32(p_ + kNext); }

    // Where entry i's stored bytes end (and entry i + 1's begin), counted from the entry area.
    size_t end(size_t i) const {
        size_t w = size_t(std::upper_bound(before_.begin(), before_.end(), uint16_t(i)) - before_.begin()) - 1;
        // The k-th set bit of the word: halves, quarters, eighths by count, then bit by bit.
        uint64_t bits = words_[w];
        size_t k = i - before_[w], pos = w * 64;
        for (int width = 32; width >= 8; width /= 2) {
            size_t low = size_t(bitCount(bits & ((uint64_t(1) << width) - 1)));
            if (k >= low) {
                k -= low;
                bits >>= width;
                pos += size_t(width);
            }
        }
        for (; k; --k) bits &= bits - 1;
        return pos + size_t(std::countr_zero(bits));
    }
    size_t begin(size_t i) const { return i ? end(i - 1) : 0; }
    size_t storedEnd() const { return empty() ? 0 : end(size() - 1); }
    // The first entry end after `pos` (the entry that starts at pos); 0 when none.
    size_t endAfter(size_t pos) const {
        size_t b = pos + 1, w = b / 64;
        uint64_t bits = w < kWords ? words_[w] & (~uint64_t(0) << (b % 64)) : 0;
        while (!bits) {
            if (++w >= kWords) return 0;
            bits = words_[w];
        }
        return w * 64 + size_t(std::countr_zero(bits));
    }

    // Entry i in full, given where its stored bytes lie.
    std::span<const uint8_t> entry(size_t i, size_t start, size_t stop) const {
        const uint8_t* area = p_ + kEntries;
        size_t len = stop - start;
        if (i == 0 || prefix_ == 0) {
            if (len < trailer()) truncated();
            return {area + start, len};
        }
        if (prefix_ + len < trailer()) truncated();
        if (buf_.size() < prefix_ + len) buf_.resize(prefix_ + len);
        std::memcpy(buf_.data(), area, prefix_);
        std::memcpy(buf_.data() + prefix_, area + start, len);
        return {buf_.data(), prefix_ + len};
    }
    std::span<const uint8_t> entry(size_t i) const { return entry(i, begin(i), end(i)); }
    // Calls f(entry) for the entries from i on, in order, until it returns false.
    template <class F>
    void forEachFrom(size_t i, F&& f) const {
        for (size_t start = begin(i); i < size(); ++i) {
            size_t stop = endAfter(start);
            if (!f(entry(i, start, stop))) return;
            start = stop;
        }
    }
    KeyView key(size_t i) const {
        auto e = entry(i);
        return e.first(e.size() - trailer());
    }
    uint32_t child(size_t i) const {
        auto e = entry(i);
        return be32(e.data() + e.size() - 4);
    }
    int compareAt(size_t i, KeyView k, RowId r) const {
        auto e = entry(i);
        KeyView ek = e.first(e.size() - trailer());
        return compareIndexEntries(ek, rowAt(e.data() + ek.size()), k, r);
    }
    // The first entry >= (key, row): size() when none. The last entry is tried first: keys
    // that grow (AutoNumbers, dates of new rows) land after it, without a search.
    size_t lowerBound(KeyView k, RowId r) const {
        size_t lo = 0, hi = size();
        if (hi && compareAt(hi - 1, k, r) < 0) return hi;
        while (lo < hi) {
            size_t mid = (lo + hi) / 2;
            if (compareAt(mid, k, r) < 0) lo = mid + 1;
            else hi = mid;
        }
        return lo;
    }

    const MaskWords& mask() const { return words_; }

private:
    [[noreturn]] void truncated() const { fail(ErrorKind::Corrupt, *file_, pageName(number) + " has a truncated entry"); }

    PageRef hold_;  // keeps the bytes alive
    const uint8_t* p_;
    const std::string* file_;
    size_t prefix_ = 0;
    MaskWords words_;                          // set whole by the constructor
    std::array<uint16_t, kWords + 1> before_;  // likewise  // entries ending in the words before word w
    mutable Bytes buf_;  // an entry put together
};

// ---- IndexPage ----

IndexPage IndexPage::decode(const uint8_t* p, uint32_t number, const std::string& file) {
    IndexPageView v(p, number, file);
    IndexPage pg;
    pg.number = number;
    pg.leaf = v.leaf;
    pg.owner = le32(p + 4);
    pg.prev = le32(p + kPrev);
    pg.next = le32(p + kNext);
    pg.tail = v.tail;
    pg.blob_.reserve(v.storedEnd() + v.prefix() * (v.size() ? v.size() - 1 : 0));
    pg.ends_.reserve(v.size());
    v.forEachFrom(0, [&](std::span<const uint8_t> e) {
        pg.blob_.insert(pg.blob_.end(), e.begin(), e.end());
        pg.ends_.push_back(uint32_t(pg.blob_.size()));
        return true;
    });
    return pg;
}

size_t IndexPage::encodedSize(size_t from, size_t to) const {
    if (to <= from) return 0;
    size_t total = ends_[to - 1] - begin(from);
    if (to - from > 1) total -= commonPrefix(key(from), key(to - 1)) * (to - from - 1);
    return total;
}

void IndexPage::encode(uint8_t* p) const {
    std::memset(p, 0, kPageSize);
    p[0] = leaf ? page::kIndexLeaf : page::kIndexNode;
    p[1] = 0x01;
    putLe32(p + 4, owner);
    putLe32(p + kPrev, prev);
    putLe32(p + kNext, next);
    putLe32(p + kTail, tail);
    size_t prefix = size() > 1 ? commonPrefix(key(0), key(size() - 1)) : 0;
    putLe16(p + kPrefix, uint16_t(prefix));
    uint8_t* area = p + kEntries;
    size_t pos = 0;
    for (size_t i = 0; i < size(); ++i) {
        auto w = whole(i);
        size_t skip = i ? prefix : 0;
        std::memcpy(area + pos, w.data() + skip, w.size() - skip);
        pos += w.size() - skip;
        p[kMask + pos / 8] |= uint8_t(1u << (pos % 8));
    }
    putLe16(p + 2, uint16_t(kEntryArea - pos));
}

KeyView IndexPage::key(size_t i) const {
    auto w = whole(i);
    return w.first(w.size() - trailer());
}

RowId IndexPage::row(size_t i) const { return rowAt(blob_.data() + ends_[i] - trailer()); }

uint32_t IndexPage::child(size_t i) const { return be32(blob_.data() + ends_[i] - 4); }

size_t IndexPage::lowerBound(KeyView k, RowId r) const {
    size_t lo = 0, hi = size();
    while (lo < hi) {
        size_t mid = (lo + hi) / 2;
        if (compareIndexEntries(key(mid), row(mid), k, r) < 0) lo = mid + 1;
        else hi = mid;
    }
    return lo;
}

bool IndexPage::equalAt(size_t i, KeyView k, RowId r) const {
    return i < size() && compareIndexEntries(key(i), row(i), k, r) == 0;
}

void IndexPage::insert(size_t i, KeyView k, RowId r, uint32_t childPage) {
    uint8_t tr[8];
    tr[0] = uint8_t(r.page >> 16);
    tr[1] = uint8_t(r.page >> 8);
    tr[2] = uint8_t(r.page);
    tr[3] = uint8_t(r.row);
    putBe32(tr + 4, childPage);
    size_t len = k.size() + trailer();
    size_t at = begin(i);
    blob_.insert(blob_.begin() + ptrdiff_t(at), k.begin(), k.end());
    blob_.insert(blob_.begin() + ptrdiff_t(at + k.size()), tr, tr + trailer());
    ends_.insert(ends_.begin() + ptrdiff_t(i), uint32_t(at + len));
    for (size_t j = i + 1; j < ends_.size(); ++j) ends_[j] += uint32_t(len);
}

void IndexPage::replace(size_t i, KeyView k, RowId r) {
    uint32_t c = leaf ? 0 : child(i);
    erase(i);
    insert(i, k, r, c);
}

void IndexPage::erase(size_t i) {
    size_t at = begin(i), len = ends_[i] - at;
    blob_.erase(blob_.begin() + ptrdiff_t(at), blob_.begin() + ptrdiff_t(at + len));
    ends_.erase(ends_.begin() + ptrdiff_t(i));
    for (size_t j = i; j < ends_.size(); ++j) ends_[j] -= uint32_t(len);
}

IndexPage IndexPage::takeFront(size_t n) {
    IndexPage q;
    q.leaf = leaf;
    q.owner = owner;
    if (n == 0) return q;
    size_t bytes = ends_[n - 1];
    q.blob_.assign(blob_.begin(), blob_.begin() + ptrdiff_t(bytes));
    q.ends_.assign(ends_.begin(), ends_.begin() + ptrdiff_t(n));
    blob_.erase(blob_.begin(), blob_.begin() + ptrdiff_t(bytes));
    ends_.erase(ends_.begin(), ends_.begin() + ptrdiff_t(n));
    for (auto& e : ends_) e -= uint32_t(bytes);
    return q;
}

// ---- reading ----

struct BTree::Frame {
    uint32_t number = 0;
    size_t child = 0;      // the child taken: an entry, or the entry count for the tail
    bool viaTail = false;
    std::optional<IndexPage> page;  // decoded once the page takes part in a change
    bool dirty = false;
};

IndexPage BTree::load(uint32_t pgno) const { return IndexPage::decode(pageAt(pgno)->data(), pgno, pager_.path()); }

PageRef BTree::pageAt(uint32_t pgno) const {
    if (pgno == 0 || pgno >= pager_.pageCount())
        fail(ErrorKind::Corrupt, pager_.path(), "an index points at page " + std::to_string(pgno) + " outside the file");
    return pager_.page(pgno);
}

IndexPage& BTree::decoded(Frame& f) const {
    if (!f.page) f.page = load(f.number);
    return *f.page;
}

namespace {
// The child to follow for (key, row) on an intermediate page: the first entry >= it, else the
// tail, else the last entry. Returns the child's index (size() for the tail).
size_t childFor(const IndexPageView& pg, KeyView key, RowId row, bool seek, const std::string& file) {
    if (pg.empty() && !pg.tail) fail(ErrorKind::Corrupt, file, pageName(pg.number) + " has no children");
    if (!seek) return pg.empty() ? pg.size() : 0;
    size_t i = pg.lowerBound(key, row);
    if (i == pg.size() && !pg.tail) --i;
    return i;
}
uint32_t childPage(const IndexPageView& pg, size_t i) { return i == pg.size() ? pg.tail : pg.child(i); }

void putRow(uint8_t* p, RowId r) {
    p[0] = uint8_t(r.page >> 16);
    p[1] = uint8_t(r.page >> 8);
    p[2] = uint8_t(r.page);
    p[3] = uint8_t(r.row);
}

using MaskWords = IndexPageView::MaskWords;

// The mask with the end of every entry lying after `from` moved by delta bytes (the entries
// behind an insertion or removal at `from`).
MaskWords moveEnds(const MaskWords& in, size_t from, ptrdiff_t delta) {
    const size_t n = in.size();
    MaskWords out{};
    for (size_t w = 0; w < n; ++w) {
        uint64_t stay = w * 64 + 63 <= from ? ~uint64_t(0) : w * 64 > from ? 0 : (uint64_t(2) << (from % 64)) - 1;
        out[w] |= in[w] & stay;
        uint64_t move = in[w] & ~stay;
        if (!move) continue;
        // Bits of word w land at w * 64 + delta + k: words t and t + 1 (t may be one below w).
        ptrdiff_t target = ptrdiff_t(w * 64) + delta;
        ptrdiff_t t = target >= 0 ? target / 64 : -1;  // bits only move to non-negative places
        size_t shift = size_t(target - t * 64);         // 0..63
        if (t >= 0 && size_t(t) < n) out[size_t(t)] |= move << shift;
        if (shift && size_t(t + 1) < n) out[size_t(t + 1)] |= move >> (64 - shift);
    }
    return out;
}

void storeMask(uint8_t* p, const MaskWords& words) { std::memcpy(p + kMask, words.data(), kMaskBytes); }
}  // namespace

IndexPageView& BTree::leafFor(KeyView key, RowId row, bool seek, std::vector<Frame>* path,
                              std::optional<IndexPageView>& out) const {
    uint32_t pgno = root_;
    for (int depth = 0; depth <= kMaxDepth; ++depth) {
        IndexPageView& pg = out.emplace(pageAt(pgno), pgno, pager_.path());
        if (pg.leaf) return pg;
        size_t i = childFor(pg, key, row, seek, pager_.path());
        if (path) {
            path->emplace_back();
            path->back().number = pgno;
            path->back().child = i;
            path->back().viaTail = i == pg.size();
        }
        pgno = childPage(pg, i);
    }
    fail(ErrorKind::Corrupt, pager_.path(), "the index at page " + std::to_string(root_) + " is too deep (a loop?)");
}

void BTree::walkLeaves(std::optional<IndexPageView>& leaf, bool seek, KeyView key, const Visit& visit) const {
    const uint32_t limit = pager_.pageCount();
    bool started = !seek;
    for (uint32_t count = 0;; ++count) {
        if (!leaf->leaf) fail(ErrorKind::Corrupt, pager_.path(), pageName(leaf->number) + " is not an index leaf");
        size_t i = 0;
        if (!started) {
            i = leaf->lowerBound(key, RowId{});
            started = i < leaf->size();
        }
        bool more = true;
        leaf->forEachFrom(i, [&](std::span<const uint8_t> e) {
            return more = visit(e.first(e.size() - 4), rowAt(e.data() + e.size() - 4));
        });
        if (!more) return;
        uint32_t next = leaf->next();
        if (!next) return;
        if (count + 1 >= limit || next >= limit)
            fail(ErrorKind::Corrupt, pager_.path(), "the leaf chain of the index at page " + std::to_string(root_) + " is broken");
        PageRef ref = pager_.page(next);
        if (ref->bytes[0] != page::kIndexLeaf) fail(ErrorKind::Corrupt, pager_.path(), pageName(next) + " is not an index leaf");
        leaf.emplace(std::move(ref), next, pager_.path());
    }
}

void BTree::scan(const Visit& visit) const {
    std::optional<IndexPageView> leaf;
    leafFor({}, {}, false, nullptr, leaf);
    walkLeaves(leaf, false, {}, visit);
}

void BTree::scanFrom(KeyView key, const Visit& visit) const {
    std::optional<IndexPageView> leaf;
    leafFor(key, RowId{}, true, nullptr, leaf);
    walkLeaves(leaf, true, key, visit);
}

bool BTree::contains(KeyView key, RowId row) const {
    std::optional<IndexPageView> held;
    IndexPageView& leaf = leafFor(key, row, true, nullptr, held);
    size_t i = leaf.lowerBound(key, row);
    return i < leaf.size() && leaf.compareAt(i, key, row) == 0;
}

// ---- writing ----

bool BTree::insert(KeyView key, RowId row, const IndexPageSource& pages, bool* keyKnown) {
    if (key.size() > kMaxKey)
        fail(ErrorKind::Invalid, pager_.path(), "an index key of " + std::to_string(key.size()) + " bytes is too long");
    std::vector<Frame> path;
    std::optional<IndexPageView> held;
    IndexPageView& view = leafFor(key, row, true, &path, held);
    size_t i = view.lowerBound(key, row);
    if (i < view.size() && view.compareAt(i, key, row) == 0) return false;
    if (keyKnown) {
        // Entries of this key sit right before or after the new one's place; on a neighbouring
        // leaf when that place is at an end of this one (then looked up before anything changes).
        auto same = [&](size_t j) { return compareKeys(view.key(j), key) == 0; };
        if ((i < view.size() && same(i)) || (i > 0 && same(i - 1))) {
            *keyKnown = true;
        } else if ((i == 0 && view.prev()) || (i == view.size() && view.next())) {
            *keyKnown = false;
            scanFrom(key, [&](KeyView k, RowId) { return *keyKnown = compareKeys(k, key) == 0, false; });
        } else {
            *keyKnown = false;
        }
    }
    if (insertInPlace(path, view, i, key, row)) return true;
    path.emplace_back();
    path.back().number = view.number;
    IndexPage& leaf = decoded(path.back());
    leaf.insert(i, key, row);
    path.back().dirty = true;
    fixUp(path, i + 1 == leaf.size(), pages);
    return true;
}

bool BTree::remove(KeyView key, RowId row, const IndexPageSource& pages) {
    std::vector<Frame> path;
    std::optional<IndexPageView> held;
    IndexPageView& view = leafFor(key, row, true, &path, held);
    size_t i = view.lowerBound(key, row);
    if (!(i < view.size() && view.compareAt(i, key, row) == 0)) return false;
    if (removeInPlace(path, view, i)) return true;
    path.emplace_back();
    path.back().number = view.number;
    IndexPage& leaf = decoded(path.back());
    leaf.erase(i);
    path.back().dirty = true;
    fixUp(path, i == leaf.size(), pages);
    return true;
}

// Most changes stay within one leaf: its first entry and shared prefix stay, and its last entry
// either stays or is named by no parent (every page above was left by its tail). Those are made
// in the page's bytes; the page ends up exactly as decoding, changing and encoding it would leave
// it (encode's prefix rule: the common prefix of the first and last keys).

bool BTree::insertInPlace(const std::vector<Frame>& path, const IndexPageView& leaf, size_t i, KeyView key, RowId row) {
    const size_t n = leaf.size();
    if (i == 0) return false;  // a new first entry: every other entry's stored bytes change
    if (i == n && !std::all_of(path.begin(), path.end(), [](const Frame& f) { return f.viaTail; })) return false;
    size_t prefix = commonPrefix(leaf.key(0), i == n ? key : leaf.key(n - 1));
    const size_t len = key.size() + 4 - prefix;
    if (prefix != leaf.prefix() || leaf.storedEnd() + len > kEntryArea) return false;
    const size_t at = leaf.begin(i), end = leaf.storedEnd();
    uint8_t* p = pager_.modify(leaf.number);
    uint8_t* area = p + kEntries;
    std::memmove(area + at + len, area + at, end - at);
    std::memcpy(area + at, key.data() + prefix, key.size() - prefix);
    putRow(area + at + key.size() - prefix, row);
    MaskWords mask = moveEnds(leaf.mask(), at, ptrdiff_t(len));
    mask[(at + len) / 64] |= uint64_t(1) << ((at + len) % 64);
    storeMask(p, mask);
    putLe16(p + 2, uint16_t(kEntryArea - end - len));
    return true;
}

bool BTree::removeInPlace(const std::vector<Frame>& path, const IndexPageView& leaf, size_t i) {
    const size_t n = leaf.size();
    if (i == 0) return false;  // a new first entry
    if (i + 1 == n && !std::all_of(path.begin(), path.end(), [](const Frame& f) { return f.viaTail; })) return false;
    size_t prefix = n > 2 ? commonPrefix(leaf.key(0), leaf.key(i + 1 == n ? n - 2 : n - 1)) : 0;
    if (prefix != leaf.prefix()) return false;
    const size_t at = leaf.begin(i), len = leaf.end(i) - at, end = leaf.storedEnd();
    uint8_t* p = pager_.modify(leaf.number);
    uint8_t* area = p + kEntries;
    std::memmove(area + at, area + at + len, end - at - len);
    std::memset(area + end - len, 0, len);
    MaskWords mask = leaf.mask();
    mask[(at + len) / 64] &= ~(uint64_t(1) << ((at + len) % 64));
    storeMask(p, moveEnds(mask, at + len, -ptrdiff_t(len)));
    putLe16(p + 2, uint16_t(kEntryArea - end + len));
    return true;
}

void BTree::lastEntryUnder(uint32_t pgno, Bytes& key, RowId& row) const {
    for (int depth = 0; depth <= kMaxDepth; ++depth) {
        IndexPage pg = load(pgno);
        if (!pg.leaf && pg.tail) {
            pgno = pg.tail;
            continue;
        }
        if (pg.empty()) fail(ErrorKind::Corrupt, pager_.path(), pageName(pgno) + " is empty");
        auto k = pg.key(pg.size() - 1);
        key.assign(k.begin(), k.end());
        row = pg.row(pg.size() - 1);
        return;
    }
    fail(ErrorKind::Corrupt, pager_.path(), "the index at page " + std::to_string(root_) + " is too deep (a loop?)");
}

// An intermediate page with several children keeps the last one as its tail; a single child is
// an ordinary entry.
void BTree::normalize(IndexPage& pg) const {
    if (pg.leaf) return;
    if (!pg.tail && pg.size() > 1) {
        pg.tail = pg.child(pg.size() - 1);
        pg.erase(pg.size() - 1);
    } else if (pg.tail && pg.empty()) {
        Bytes k;
        RowId r;
        lastEntryUnder(pg.tail, k, r);
        pg.insert(0, k, r, pg.tail);
        pg.tail = 0;
    }
}

void BTree::setLink(uint32_t pgno, uint32_t offset, uint32_t value) {
    if (pgno == 0 || pgno >= pager_.pageCount())
        fail(ErrorKind::Corrupt, pager_.path(), "an index page links to page " + std::to_string(pgno) + " outside the file");
    uint8_t* p = pager_.modify(pgno);
    if (p[0] != page::kIndexNode && p[0] != page::kIndexLeaf)
        fail(ErrorKind::Corrupt, pager_.path(), pageName(pgno) + " is not an index page");
    putLe32(p + offset, value);
}

void BTree::write(const IndexPage& pg) { pg.encode(pager_.modify(pg.number)); }

void BTree::split(IndexPage& pg, IndexPage& parent, size_t at, const IndexPageSource& pages) {
    // The fewest equal groups (by count) that each fit; the last group stays on this page.
    const size_t n = pg.size();
    if (n < 2) fail(ErrorKind::Corrupt, pager_.path(), pageName(pg.number) + " cannot be split");
    size_t groups = 2;
    for (; groups < n; ++groups) {
        bool ok = true;
        for (size_t g = 0; g < groups && ok; ++g)
            ok = pg.encodedSize(n * g / groups, n * (g + 1) / groups) <= kEntryArea;
        if (ok) break;
    }
    std::vector<IndexPage> front;
    for (size_t g = 0; g + 1 < groups; ++g) {
        IndexPage q = pg.takeFront(n * (g + 1) / groups - n * g / groups);
        q.number = pages.allocate();
        q.owner = owner_;
        front.push_back(std::move(q));
    }
    // Page chain: prev -> front... -> this page.
    front[0].prev = pg.prev;
    if (pg.prev) setLink(pg.prev, kNext, front[0].number);
    for (size_t g = 0; g < front.size(); ++g) {
        if (g) front[g].prev = front[g - 1].number;
        front[g].next = g + 1 < front.size() ? front[g + 1].number : pg.number;
    }
    pg.prev = front.back().number;
    // Intermediate children are chained only under one parent: cut the chain between groups.
    if (!pg.leaf) {
        for (size_t g = 0; g < front.size(); ++g) {
            uint32_t left = front[g].child(front[g].size() - 1);
            const IndexPage& right = g + 1 < front.size() ? front[g + 1] : pg;
            uint32_t rightChild = right.empty() ? right.tail : right.child(0);
            if (left >= pager_.pageCount() || pager_.page(left)->bytes[0] != page::kIndexNode) break;
            setLink(left, kNext, 0);
            setLink(rightChild, kPrev, 0);
        }
    }
    for (size_t g = 0; g < front.size(); ++g) {
        IndexPage& q = front[g];
        parent.insert(at + g, q.key(q.size() - 1), q.row(q.size() - 1), q.number);
        normalize(q);
        write(q);
    }
}

void BTree::fixUp(std::vector<Frame>& path, bool lastChanged, const IndexPageSource& pages) {
    for (size_t lv = path.size(); lv-- > 0;) {
        Frame& f = path[lv];
        if (lv == 0) {
            if (!f.dirty) return;
            IndexPage& pg = decoded(f);
            if (!pg.leaf && pg.empty() && !pg.tail) pg.leaf = true;  // the tree is empty again
            normalize(pg);
            if (!pg.fits()) {
                // The root stays where it is: its entries move to a new child, which then splits.
                IndexPage c = pg.takeFront(pg.size());
                c.number = pages.allocate();
                c.owner = owner_;
                c.tail = pg.tail;
                pg.leaf = false;
                pg.tail = c.number;
                split(c, pg, 0, pages);
                write(c);
            }
            write(pg);
            return;
        }
        Frame& up = path[lv - 1];
        const size_t at = up.child;
        const bool viaTail = up.viaTail;
        bool upLast = false;
        if (f.dirty && decoded(f).empty() && !decoded(f).tail) {
            // An empty page leaves the chain and its parent, and goes back to the file.
            IndexPage& pg = decoded(f);
            IndexPage& parent = decoded(up);
            if (pg.prev) setLink(pg.prev, kNext, pg.next);
            if (pg.next) setLink(pg.next, kPrev, pg.prev);
            pages.release(pg.number);
            if (viaTail) {
                parent.tail = 0;
                upLast = true;
            } else {
                parent.erase(at);
                upLast = !parent.tail && at == parent.size();
            }
            up.dirty = true;
            lastChanged = upLast;
            continue;
        }
        if (f.dirty) normalize(decoded(f));
        if (lastChanged) {
            if (viaTail) {
                upLast = true;
            } else {
                IndexPage& pg = decoded(f);
                IndexPage& parent = decoded(up);
                Bytes k;
                RowId r;
                if (!pg.leaf && pg.tail) {
                    lastEntryUnder(pg.tail, k, r);
                } else {
                    auto kv = pg.key(pg.size() - 1);
                    k.assign(kv.begin(), kv.end());
                    r = pg.row(pg.size() - 1);
                }
                parent.replace(at, k, r);
                up.dirty = true;
                upLast = !parent.tail && at + 1 == parent.size();
            }
        }
        if (f.dirty && !decoded(f).fits()) {
            split(decoded(f), decoded(up), at, pages);
            up.dirty = true;
        }
        if (f.dirty) write(decoded(f));
        lastChanged = upLast;
        if (!up.dirty && !lastChanged) return;
    }
}

// ---- verification ----

namespace {
struct Walker {
    Walker(Pager& p, uint32_t o, std::vector<std::string>& out, const BTree::Visit& v, size_t l)
        : pager(p), owner(o), problems(out), visit(v), limit(l) {}
    Pager& pager;
    uint32_t owner;
    std::vector<std::string>& problems;
    const BTree::Visit& visit;
    size_t limit;
    std::set<uint32_t> seen;
    struct LeafLink {
        uint32_t page, prev, next;
    };
    std::vector<LeafLink> leaves;
    int leafDepth = -1;
    bool havePrev = false;
    Bytes prevKey;
    RowId prevRow;

    struct Sub {
        bool ok = false;
        bool leaf = false;
        uint32_t prev = 0, next = 0;
        Bytes lastKey;
        RowId lastRow;
    };

    bool full() const { return problems.size() >= limit; }
    void report(const std::string& s) {
        if (!full()) problems.push_back(s);
    }

    Sub walk(uint32_t pgno, int depth, bool isRoot) {
        Sub out;
        if (full()) return out;
        if (depth > kMaxDepth) {
            report("the tree is deeper than " + std::to_string(kMaxDepth) + " levels");
            return out;
        }
        if (!seen.insert(pgno).second) {
            report(pageName(pgno) + " is reached twice");
            return out;
        }
        IndexPage pg;
        size_t storedEnd = 0;
        try {
            if (pgno == 0 || pgno >= pager.pageCount())
                fail(ErrorKind::Corrupt, pager.path(), "page " + std::to_string(pgno) + " is outside the file");
            PageRef ref = pager.page(pgno);
            pg = IndexPage::decode(ref->data(), pgno, pager.path());
            storedEnd = IndexPageView(ref->data(), pgno, pager.path()).storedEnd();
            if (le16(ref->data() + 2) != kEntryArea - storedEnd) report(pageName(pgno) + " has a wrong free-space count");
        } catch (const JetError& e) {
            report(e.what());
            return out;
        }
        if (pg.owner != owner)
            report(pageName(pgno) + " belongs to table page " + std::to_string(pg.owner) + ", not " + std::to_string(owner));
        for (size_t i = 1; i < pg.size(); ++i)
            if (compareIndexEntries(pg.key(i - 1), pg.row(i - 1), pg.key(i), pg.row(i)) >= 0)
                report(pageName(pgno) + ": entries " + std::to_string(i - 1) + " and " + std::to_string(i) + " are out of order");
        out.leaf = pg.leaf;
        out.prev = pg.prev;
        out.next = pg.next;
        if (pg.leaf) {
            if (pg.tail) report(pageName(pgno) + " is a leaf with a tail page");
            if (leafDepth < 0) leafDepth = depth;
            else if (leafDepth != depth) report(pageName(pgno) + " is a leaf at another depth than the others");
            if (pg.empty()) {
                if (!isRoot) report(pageName(pgno) + " is an empty leaf");
                out.ok = isRoot;
                return out;
            }
            leaves.push_back({pgno, pg.prev, pg.next});
            for (size_t i = 0; i < pg.size(); ++i) {
                KeyView k = pg.key(i);
                RowId r = pg.row(i);
                if (havePrev && compareIndexEntries(KeyView(prevKey), prevRow, k, r) >= 0)
                    report(pageName(pgno) + ": entry " + std::to_string(i) + " is not after the previous leaf's last");
                prevKey.assign(k.begin(), k.end());
                prevRow = r;
                havePrev = true;
                visit(k, r);
            }
            out.lastKey = prevKey;
            out.lastRow = prevRow;
            out.ok = true;
            return out;
        }
        if (pg.empty() && !pg.tail) {
            report(pageName(pgno) + " is an intermediate page without children");
            return out;
        }
        if (pg.empty() && pg.tail) report(pageName(pgno) + " has its only child as tail");
        size_t children = pg.size() + (pg.tail ? 1 : 0);
        Sub prevChild;
        bool chainOk = true, anyOk = false;
        for (size_t i = 0; i < children; ++i) {
            uint32_t c = i < pg.size() ? pg.child(i) : pg.tail;
            Sub s = walk(c, depth + 1, false);
            if (!s.ok) {
                chainOk = false;
                continue;
            }
            if (i < pg.size() &&
                compareIndexEntries(pg.key(i), pg.row(i), KeyView(s.lastKey), s.lastRow) != 0)
                report(pageName(pgno) + ": entry " + std::to_string(i) + " is not the last entry of page " + std::to_string(c));
            if (!s.leaf && chainOk && i > 0 && !prevChild.leaf) {
                uint32_t pc = i - 1 < pg.size() ? pg.child(i - 1) : pg.tail;
                if (prevChild.next != c || s.prev != pc)
                    report("pages " + std::to_string(pc) + " and " + std::to_string(c) + " under " + pageName(pgno) + " are not linked to each other");
            }
            prevChild = s;
            chainOk = true;
            anyOk = true;
            out.lastKey = s.lastKey;
            out.lastRow = s.lastRow;
        }
        out.ok = anyOk;
        return out;
    }
};
}  // namespace

void BTree::verify(std::vector<std::string>& problems, const Visit& visit, size_t limit) const {
    Walker w(pager_, owner_, problems, visit, problems.size() + limit);
    w.walk(root_, 0, true);
    // The leaf chain runs through the leaves in tree order.
    for (size_t i = 0; i < w.leaves.size() && !w.full(); ++i) {
        const auto& l = w.leaves[i];
        uint32_t want = i ? w.leaves[i - 1].page : 0;
        uint32_t wantNext = i + 1 < w.leaves.size() ? w.leaves[i + 1].page : 0;
        if (l.prev != want) w.report(pageName(l.page) + " has prev " + std::to_string(l.prev) + ", not " + std::to_string(want));
        if (l.next != wantNext) w.report(pageName(l.page) + " has next " + std::to_string(l.next) + ", not " + std::to_string(wantNext));
    }
}

}  // namespace jet
