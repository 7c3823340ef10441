// Index B-trees (page layout drawn in btree.h).
//
//   A change works on decoded copies of the pages on the path from the root to one leaf, then
//   fixes them bottom-up: an emptied page leaves its parent and the page chain; a changed last
//   entry is copied into the parent's entry for that child; a page that no longer fits is split,
//   the front part going to new pages placed before it (so the parent's entry for the old page
//   stays right); a root that no longer fits moves its entries to a new child first.
#include "btree.h"

#include <algorithm>
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

std::string pageName(uint32_t pgno) { return "index page " + std::to_string(pgno); }

// The end offsets of a page's entries, from its bitmask (low bit first). Bounds-checked.
void entryEnds(const uint8_t* p, uint32_t pgno, const std::string& file, std::vector<uint16_t>& ends) {
    ends.clear();
    const uint8_t* mask = p + kMask;
    for (size_t i = 0; i < kMaskBytes; i += 8) {
        uint64_t w = 0;
        std::memcpy(&w, mask + i, std::min<size_t>(8, kMaskBytes - i));  // little-endian hosts
        while (w) {
            size_t end = i * 8 + size_t(std::countr_zero(w));
            w &= w - 1;
            if (end > kEntryArea) fail(ErrorKind::Corrupt, file, pageName(pgno) + " has an entry past the page end");
            if (end <= (ends.empty() ? 0 : ends.back())) fail(ErrorKind::Corrupt, file, pageName(pgno) + " has an empty entry");
            ends.push_back(uint16_t(end));
        }
    }
}

// Calls f(entry, length) for every entry of an index page, in full. Bounds-checked.
template <class F>
void forEachEntry(const uint8_t* p, uint32_t pgno, const std::string& file, size_t trailer, F&& f,
                  size_t* storedEnd = nullptr) {
    thread_local std::vector<uint16_t> ends;
    entryEnds(p, pgno, file, ends);
    const size_t prefix = le16(p + kPrefix);
    const uint8_t* area = p + kEntries;
    if (!ends.empty() && prefix > ends[0])
        fail(ErrorKind::Corrupt, file, pageName(pgno) + " has a prefix longer than its first entry");
    uint8_t buf[kEntryArea * 2];
    if (prefix) std::memcpy(buf, area, prefix);  // the first entry begins the area
    size_t start = 0;
    for (size_t i = 0; i < ends.size(); ++i) {
        size_t len = ends[i] - start;
        if (i == 0 || prefix == 0) {
            if (len < trailer) fail(ErrorKind::Corrupt, file, pageName(pgno) + " has a truncated entry");
            f(area + start, len);
        } else {
            if (prefix + len < trailer) fail(ErrorKind::Corrupt, file, pageName(pgno) + " has a truncated entry");
            std::memcpy(buf + prefix, area + start, len);
            f(static_cast<const uint8_t*>(buf), prefix + len);
        }
        start = ends[i];
    }
    if (storedEnd) *storedEnd = start;
}

}  // namespace

int compareIndexEntries(KeyView keyA, RowId a, KeyView keyB, RowId b) {
    int c = compareKeys(keyA, keyB);
    if (c) return c;
    if (a.page != b.page) return a.page < b.page ? -1 : 1;
    if (a.row != b.row) return a.row < b.row ? -1 : 1;
    return 0;
}

// ---- IndexPage ----

IndexPage IndexPage::decode(const uint8_t* p, uint32_t number, const std::string& file) {
    if (p[0] != page::kIndexNode && p[0] != page::kIndexLeaf)
        fail(ErrorKind::Corrupt, file, pageName(number) + " is not an index page");
    IndexPage pg;
    pg.number = number;
    pg.leaf = p[0] == page::kIndexLeaf;
    pg.owner = le32(p + 4);
    pg.prev = le32(p + kPrev);
    pg.next = le32(p + kNext);
    pg.tail = le32(p + kTail);
    pg.blob_.resize(kEntryArea * 2);
    size_t used = 0;
    forEachEntry(p, number, file, pg.trailer(), [&](const uint8_t* e, size_t len) {
        if (used + len > pg.blob_.size()) pg.blob_.resize(std::max(pg.blob_.size() * 2, used + len));
        std::memcpy(pg.blob_.data() + used, e, len);
        used += len;
        pg.ends_.push_back(uint32_t(used));
    });
    pg.blob_.resize(used);
    return pg;
}

namespace {
size_t commonPrefix(KeyView a, KeyView b) {
    size_t n = std::min(a.size(), b.size()), i = 0;
    while (i < n && a[i] == b[i]) ++i;
    return i;
}
}  // namespace

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
    IndexPage page;
    size_t child = 0;  // the child taken: an entry, or size() for the tail
    bool dirty = false;
};

IndexPage BTree::load(uint32_t pgno) const {
    if (pgno == 0 || pgno >= pager_.pageCount())
        fail(ErrorKind::Corrupt, pager_.path(), "an index points at page " + std::to_string(pgno) + " outside the file");
    PageRef ref = pager_.page(pgno);
    return IndexPage::decode(ref->data(), pgno, pager_.path());
}

namespace {
// The child to follow for (key, row) on an intermediate page: the first entry >= it, else the
// tail, else the last entry. Returns the child's index (size() for the tail).
size_t childFor(const IndexPage& pg, KeyView key, RowId row, bool seek, const std::string& file) {
    if (pg.empty() && !pg.tail) fail(ErrorKind::Corrupt, file, pageName(pg.number) + " has no children");
    if (!seek) return pg.empty() ? pg.size() : 0;
    size_t i = pg.lowerBound(key, row);
    if (i == pg.size() && !pg.tail) --i;
    return i;
}
uint32_t childPage(const IndexPage& pg, size_t i) { return i == pg.size() ? pg.tail : pg.child(i); }
}  // namespace

uint32_t BTree::firstLeafFrom(uint32_t pgno, KeyView key, RowId row, bool seek) const {
    for (int depth = 0; depth <= kMaxDepth; ++depth) {
        IndexPage pg = load(pgno);
        if (pg.leaf) return pgno;
        pgno = childPage(pg, childFor(pg, key, row, seek, pager_.path()));
    }
    fail(ErrorKind::Corrupt, pager_.path(), "the index at page " + std::to_string(root_) + " is too deep (a loop?)");
}

void BTree::walkLeaves(uint32_t pgno, bool seek, KeyView key, const Visit& visit) const {
    const uint32_t limit = pager_.pageCount();
    bool started = !seek;
    bool stop = false;
    for (uint32_t count = 0; pgno && !stop; ++count) {
        if (count >= limit || pgno >= limit)
            fail(ErrorKind::Corrupt, pager_.path(), "the leaf chain of the index at page " + std::to_string(root_) + " is broken");
        PageRef ref = pager_.page(pgno);
        const uint8_t* p = ref->data();
        if (p[0] != page::kIndexLeaf) fail(ErrorKind::Corrupt, pager_.path(), pageName(pgno) + " is not an index leaf");
        forEachEntry(p, pgno, pager_.path(), 4, [&](const uint8_t* e, size_t len) {
            if (stop) return;
            KeyView k(e, len - 4);
            if (!started) {
                if (compareKeys(k, key) < 0) return;
                started = true;
            }
            if (!visit(k, rowAt(e + len - 4))) stop = true;
        });
        pgno = le32(p + kNext);
    }
}

void BTree::scan(const Visit& visit) const { walkLeaves(firstLeafFrom(root_, {}, {}, false), false, {}, visit); }

void BTree::scanFrom(KeyView key, const Visit& visit) const {
    walkLeaves(firstLeafFrom(root_, key, RowId{}, true), true, key, visit);
}

// ---- writing ----

std::vector<BTree::Frame> BTree::descend(KeyView key, RowId row) const {
    std::vector<Frame> path;
    uint32_t pgno = root_;
    for (int depth = 0; depth <= kMaxDepth; ++depth) {
        Frame f;
        f.page = load(pgno);
        if (f.page.leaf) {
            path.push_back(std::move(f));
            return path;
        }
        f.child = childFor(f.page, key, row, true, pager_.path());
        pgno = childPage(f.page, f.child);
        path.push_back(std::move(f));
    }
    fail(ErrorKind::Corrupt, pager_.path(), "the index at page " + std::to_string(root_) + " is too deep (a loop?)");
}

bool BTree::insert(KeyView key, RowId row, const IndexPageSource& pages) {
    if (key.size() > kMaxKey)
        fail(ErrorKind::Invalid, pager_.path(), "an index key of " + std::to_string(key.size()) + " bytes is too long");
    auto path = descend(key, row);
    IndexPage& leaf = path.back().page;
    size_t i = leaf.lowerBound(key, row);
    if (leaf.equalAt(i, key, row)) return false;
    leaf.insert(i, key, row);
    path.back().dirty = true;
    fixUp(path, i + 1 == leaf.size(), pages);
    return true;
}

bool BTree::remove(KeyView key, RowId row, const IndexPageSource& pages) {
    auto path = descend(key, row);
    IndexPage& leaf = path.back().page;
    size_t i = leaf.lowerBound(key, row);
    if (!leaf.equalAt(i, key, row)) return false;
    leaf.erase(i);
    path.back().dirty = true;
    fixUp(path, i == leaf.size(), pages);
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
        IndexPage& pg = f.page;
        if (lv == 0) {
            if (!f.dirty) return;
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
        const bool viaTail = at == up.page.size();
        bool upLast = false;
        if (f.dirty && pg.empty() && !pg.tail) {
            // An empty page leaves the chain and its parent, and goes back to the file.
            if (pg.prev) setLink(pg.prev, kNext, pg.next);
            if (pg.next) setLink(pg.next, kPrev, pg.prev);
            pages.release(pg.number);
            if (viaTail) {
                up.page.tail = 0;
                upLast = true;
            } else {
                up.page.erase(at);
                upLast = !up.page.tail && at == up.page.size();
            }
            up.dirty = true;
            lastChanged = upLast;
            continue;
        }
        if (f.dirty) normalize(pg);
        if (lastChanged) {
            if (viaTail) {
                upLast = true;
            } else {
                Bytes k;
                RowId r;
                if (!pg.leaf && pg.tail) {
                    lastEntryUnder(pg.tail, k, r);
                } else {
                    auto kv = pg.key(pg.size() - 1);
                    k.assign(kv.begin(), kv.end());
                    r = pg.row(pg.size() - 1);
                }
                up.page.replace(at, k, r);
                up.dirty = true;
                upLast = !up.page.tail && at + 1 == up.page.size();
            }
        }
        if (f.dirty && !pg.fits()) {
            split(pg, up.page, at, pages);
            up.dirty = true;
        }
        if (f.dirty) write(pg);
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
            forEachEntry(ref->data(), pgno, pager.path(), pg.leaf ? 4 : 8, [](const uint8_t*, size_t) {}, &storedEnd);
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
