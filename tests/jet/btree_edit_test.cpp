// Index changes made directly in a leaf's bytes must leave every page exactly as encoding its
// decoded form would, across the cases that decide between editing in place and rebuilding: the
// first or last entry changing, a shared prefix that grows or shrinks, full pages, and leaves that
// a parent names by an entry rather than as its tail.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "jet/btree.h"
#include "jet/format.h"
#include "jet/pager.h"
#include "jet/support.h"
#include "jet/index_model.h"

using namespace jet;

namespace {

using indextest::Entry;
using indextest::EntryLess;
using indextest::Model;

struct Tree {
    testsupport::TempDir dir;
    std::unique_ptr<Pager> pager;
    IndexPageSource source;
    std::set<Entry, EntryLess> model;

    Tree() {
        pager = Pager::create((dir / "t.mdb").string());
        pager->begin();
        pager->append();
        IndexPage root;
        root.number = pager->append();
        root.owner = 7;
        root.encode(pager->modify(root.number));
        source.allocate = [this] { return pager->append(); };
        source.release = [this](uint32_t p) { std::memset(pager->modify(p), 0, kPageSize); };
    }
    BTree tree() { return BTree(*pager, 1, 7); }
    // Also checks what insert says about the key being there already (for any row).
    void insert(const Entry& e) {
        auto it = model.lower_bound({e.first, RowId{}});
        bool wasThere = it != model.end() && it->first == e.first, known = !wasThere;
        ASSERT_EQ(tree().insert(e.first, e.second, source, &known), model.insert(e).second);
        ASSERT_EQ(known, wasThere);
    }
    void remove(const Entry& e) {
        ASSERT_EQ(tree().remove(e.first, e.second, source), model.erase(e) == 1);
        EXPECT_FALSE(tree().contains(e.first, e.second));
    }

    // Every index page re-encodes to its own bytes; the tree is consistent and holds the model.
    void check(const std::string& when) {
        for (uint32_t n = 1; n < pager->pageCount(); ++n) {
            PageRef p = pager->page(n);
            if (p->bytes[0] != page::kIndexLeaf && p->bytes[0] != page::kIndexNode) continue;
            Page again;
            IndexPage::decode(p->data(), n, "t").encode(again.data());
            ASSERT_EQ(again.bytes, p->bytes) << when << ": page " << n;
        }
        std::vector<std::string> problems;
        std::vector<Entry> seen;
        tree().verify(problems, [&](KeyView k, RowId r) {
            seen.emplace_back(Bytes(k.begin(), k.end()), r);
            return true;
        });
        ASSERT_EQ(problems, std::vector<std::string>{}) << when;
        ASSERT_EQ(seen, std::vector<Entry>(model.begin(), model.end())) << when;
        for (const Entry& e : model) ASSERT_TRUE(tree().contains(e.first, e.second)) << when;
    }
};

Bytes key(uint32_t v, size_t pad = 0) {
    Bytes k{0x7F, uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
    k.insert(k.end(), pad, uint8_t(0x41 + v % 5));
    return k;
}

}  // namespace

// Ascending appends (the page's last entry and, on a rightmost leaf, nothing above), then every
// second entry removed (middle entries), then the rest from both ends (first and last entries,
// prefixes growing as the range narrows, pages emptying).
TEST(BTreeEdits, AppendsAndRemovalsMatchTheEncoder) {
    Tree t;
    for (uint32_t i = 0; i < 3000; ++i) t.insert({key(i * 3), RowId{100 + i / 40, uint16_t(i % 40)}});
    t.check("after appends");
    for (uint32_t i = 0; i < 3000; i += 2) t.remove({key(i * 3), RowId{100 + i / 40, uint16_t(i % 40)}});
    t.check("after removing every second");
    // Inserts between the remaining keys: middle of leaves, leaves named by an entry above.
    for (uint32_t i = 0; i < 3000; i += 2) t.insert({key(i * 3 + 1), RowId{9, uint16_t(i % 200)}});
    t.check("after filling the gaps");
    std::vector<Entry> all(t.model.begin(), t.model.end());
    for (size_t lo = 0, hi = all.size(); lo < hi;) {
        t.remove(all[lo++]);
        if (lo < hi) t.remove(all[--hi]);
        if ((hi - lo) % 500 == 0) t.check("while removing from both ends");
    }
    t.check("empty");
}

// Random keys of varied lengths sharing long prefixes, and runs of one key ordered by row id
// that cross leaf boundaries: inserts and removals anywhere, pages filling up and splitting.
TEST(BTreeEdits, RandomChangesMatchTheEncoder) {
    Tree t;
    std::mt19937 rng(777);
    auto randomEntry = [&] {
        uint32_t v = rng() % 300;
        return Entry{key(v, v % 7 == 0 ? 0 : 20 + v % 40), RowId{uint32_t(50 + rng() % 5), uint16_t(rng() % 250)}};
    };
    for (int round = 0; round < 6; ++round) {
        for (int i = 0; i < 1200; ++i) {
            if (round % 2 == 0 || t.model.empty() || rng() % 3 == 0) {
                Entry e = randomEntry();
                if (t.model.count(e)) {
                    EXPECT_FALSE(t.tree().insert(e.first, e.second, t.source));
                    continue;
                }
                t.insert(e);
            } else {
                auto it = t.model.begin();
                std::advance(it, rng() % t.model.size());
                t.remove(Entry(*it));
            }
        }
        t.check("round " + std::to_string(round));
    }
}
