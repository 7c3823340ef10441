#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <set>

#include "jet/btree.h"
#include "jet/error.h"
#include "jet/format.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;

namespace {

using Entry = std::pair<Bytes, RowId>;

struct EntryLess {
    bool operator()(const Entry& a, const Entry& b) const {
        return compareIndexEntries(a.first, a.second, b.first, b.second) < 0;
    }
};
using Model = std::set<Entry, EntryLess>;

// A file of bare index pages: page 0 unused, page 1 the root (an empty leaf of table page 7).
struct TreeFile {
    testsupport::TempDir dir;
    std::unique_ptr<Pager> pager;
    std::set<uint32_t> released;
    IndexPageSource source;
    uint32_t allocated = 0;

    TreeFile() {
        pager = Pager::create((dir / "t.mdb").string());
        pager->begin();
        pager->append();
        IndexPage root;
        root.number = pager->append();
        root.owner = 7;
        root.encode(pager->modify(root.number));
        source.allocate = [this] {
            ++allocated;
            return pager->append();
        };
        source.release = [this](uint32_t p) { released.insert(p); };
    }
    BTree tree() { return BTree(*pager, 1, 7); }

    std::vector<Entry> scan() {
        std::vector<Entry> out;
        tree().scan([&](KeyView k, RowId r) {
            out.emplace_back(Bytes(k.begin(), k.end()), r);
            return true;
        });
        return out;
    }
    std::vector<std::string> verify() {
        std::vector<std::string> problems;
        tree().verify(problems, [](KeyView, RowId) { return true; });
        return problems;
    }
    int depth() {
        int d = 1;
        for (uint32_t p = 1; pager->page(p)->bytes[0] == page::kIndexNode; ++d) {
            IndexPage pg = IndexPage::decode(pager->page(p)->data(), p, "t");
            p = pg.empty() ? pg.tail : pg.child(0);
        }
        return d;
    }
};

Bytes key(uint32_t v, size_t pad = 0, uint8_t fill = 0x41) {
    Bytes k{0x7F, uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)};
    k.insert(k.end(), pad, fill);
    return k;
}

}  // namespace

// Page encoding: the shared prefix, the entry bitmask, free space, and refusal of broken pages.
TEST(BTreePage, RoundTripAndMalformedPages) {
    IndexPage pg;
    pg.number = 5;
    pg.owner = 42;
    pg.prev = 3;
    pg.next = 9;
    for (uint32_t i = 0; i < 20; ++i) pg.insert(i, key(1000 + i), RowId{261, uint16_t(i)});
    Page raw;
    pg.encode(raw.data());
    EXPECT_EQ(raw.bytes[0], page::kIndexLeaf);
    EXPECT_EQ(le32(raw.data() + 4), 42u);
    EXPECT_EQ(le16(raw.data() + indexpage::kPrefix), 4u);  // 7F 00 00 03 shared by 1000..1019
    // First entry whole (9 bytes), then 5 bytes each: 9 + 19*5 = 104 bytes used.
    EXPECT_EQ(le16(raw.data() + 2), indexpage::kEntryArea - 104);
    EXPECT_EQ(raw.bytes[indexpage::kMask + 1], 0x42);  // entries end at bits 9 and 14
    IndexPage back = IndexPage::decode(raw.data(), 5, "f");
    ASSERT_EQ(back.size(), 20u);
    EXPECT_EQ(back.prev, 3u);
    EXPECT_EQ(back.next, 9u);
    for (size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(Bytes(back.key(i).begin(), back.key(i).end()), key(1000 + uint32_t(i)));
        EXPECT_EQ(back.row(i), (RowId{261, uint16_t(i)}));
    }

    // The example of the format notes: prefix 7F 00 00 00, second entry "02 00 01 05 04".
    Page ex{};
    ex.bytes.fill(0);
    ex.bytes[0] = page::kIndexLeaf;
    putLe16(ex.data() + indexpage::kPrefix, 4);
    const uint8_t entries[] = {0x7F, 0, 0, 0, 1, 0, 1, 5, 3, 0x02, 0, 1, 5, 4};
    std::memcpy(ex.data() + indexpage::kEntries, entries, sizeof entries);
    ex.bytes[indexpage::kMask + 1] = 0x02;  // bit 9
    ex.bytes[indexpage::kMask + 1] |= 0x40; // bit 14
    IndexPage exp = IndexPage::decode(ex.data(), 2, "f");
    ASSERT_EQ(exp.size(), 2u);
    EXPECT_EQ(Bytes(exp.key(1).begin(), exp.key(1).end()), key(2));
    EXPECT_EQ(exp.row(1), (RowId{261, 4}));

    auto corrupt = [](Page p) {
        try {
            IndexPage::decode(p.data(), 2, "f.mdb");
        } catch (const JetError& e) {
            return e.kind() == ErrorKind::Corrupt && std::string(e.what()).find("f.mdb") != std::string::npos;
        }
        return false;
    };
    Page bad = ex;
    bad.bytes[0] = page::kData;
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    putLe16(bad.data() + indexpage::kPrefix, 10);  // longer than the first entry
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    bad.bytes[indexpage::kMask + indexpage::kMaskBytes - 1] = 0x80;  // an entry ending past the page
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    bad.bytes[indexpage::kMask] = 0x01;  // an empty first entry
    EXPECT_TRUE(corrupt(bad));
    bad = ex;
    putLe16(bad.data() + indexpage::kPrefix, 0);
    bad.bytes[indexpage::kMask] = 0x08;  // a 3-byte entry cannot hold a row id
    EXPECT_TRUE(corrupt(bad));
}

// Random inserts and removals against a sorted model, with long keys so the tree grows several
// levels: order, seeks, tails, links and parent entries stay right, and emptied pages go back.
TEST(BTree, RandomChangesKeepTheTreeConsistent) {
    TreeFile f;
    Model model;
    std::mt19937 rng(12345);
    auto randomEntry = [&] {
        uint32_t v = rng() % 5000;
        return Entry{key(v, 40 + v % 160, uint8_t(0x41 + v % 3)), RowId{uint32_t(100 + rng() % 900), uint16_t(rng() % 200)}};
    };
    int maxDepth = 0;
    for (int round = 0; round < 6; ++round) {
        bool grow = round % 2 == 0;
        for (int i = 0; i < 1500; ++i) {
            if (grow || model.empty() || rng() % 4 == 0) {
                Entry e = randomEntry();
                EXPECT_EQ(f.tree().insert(e.first, e.second, f.source), model.insert(e).second);
            } else {
                auto it = model.begin();
                std::advance(it, rng() % model.size());
                Entry e = *it;
                model.erase(it);
                ASSERT_TRUE(f.tree().remove(e.first, e.second, f.source));
                EXPECT_FALSE(f.tree().remove(e.first, e.second, f.source));
            }
        }
        maxDepth = std::max(maxDepth, f.depth());
        ASSERT_EQ(f.verify(), std::vector<std::string>{}) << "round " << round;
        ASSERT_EQ(f.scan(), std::vector<Entry>(model.begin(), model.end()));
        // Seek: everything from the first key >= a probe.
        for (uint32_t probe : {0u, 17u, 2500u, 4999u, 6000u}) {
            Bytes k = key(probe);
            std::vector<Entry> got;
            f.tree().scanFrom(k, [&](KeyView kv, RowId r) {
                got.emplace_back(Bytes(kv.begin(), kv.end()), r);
                return got.size() < 5;
            });
            std::vector<Entry> want;
            for (auto it = model.lower_bound({k, RowId{}}); it != model.end() && want.size() < 5; ++it) want.push_back(*it);
            EXPECT_EQ(got, want) << "probe " << probe;
        }
    }
    EXPECT_GE(maxDepth, 3);
    // Emptying the tree leaves an empty leaf root and every other page released.
    for (const Entry& e : model) ASSERT_TRUE(f.tree().remove(e.first, e.second, f.source));
    EXPECT_EQ(f.verify(), std::vector<std::string>{});
    EXPECT_TRUE(f.scan().empty());
    EXPECT_EQ(f.pager->page(1)->bytes[0], page::kIndexLeaf);
    EXPECT_EQ(f.released.size(), f.allocated);
}

// Ascending appends (AutoNumber keys) and descending inserts grow the tree at its two ends; long
// runs of one key (a plain index on a repeated value) order by row id.
TEST(BTree, AppendsDescendingInsertsAndDuplicateKeys) {
    for (int mode = 0; mode < 3; ++mode) {
        TreeFile f;
        Model model;
        for (uint32_t i = 0; i < 4000; ++i) {
            Entry e = mode == 0   ? Entry{key(i), RowId{1000 + i / 50, uint16_t(i % 50)}}
                      : mode == 1 ? Entry{key(100000 - i, 20), RowId{5, 1}}
                                  : Entry{key(7, 30), RowId{500 + i % 97 * 31, uint16_t(i / 97)}};
            ASSERT_TRUE(f.tree().insert(e.first, e.second, f.source));
            model.insert(e);
        }
        EXPECT_EQ(f.verify(), std::vector<std::string>{}) << "mode " << mode;
        EXPECT_EQ(f.scan(), std::vector<Entry>(model.begin(), model.end())) << "mode " << mode;
        EXPECT_GE(f.depth(), 2);
        EXPECT_FALSE(f.tree().insert(model.begin()->first, model.begin()->second, f.source));
    }
    TreeFile f;
    try {
        f.tree().insert(Bytes(1001, 0x7F), RowId{1, 1}, f.source);
        ADD_FAILURE() << "a key too long for a page was accepted";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Invalid);
    }
}

// A broken tree gives Corrupt errors, never a hang or a crash, and verify names the fault.
TEST(BTree, BrokenTreesAreReportedNotFollowed) {
    TreeFile f;
    for (uint32_t i = 0; i < 600; ++i) f.tree().insert(key(i, 40), RowId{9, uint16_t(i % 200)}, f.source);
    ASSERT_GE(f.depth(), 2);
    IndexPage root = IndexPage::decode(f.pager->page(1)->data(), 1, "t");
    uint32_t firstLeaf = root.child(0);
    IndexPage leaf = IndexPage::decode(f.pager->page(firstLeaf)->data(), firstLeaf, "t");

    // The leaf chain loops back to the first leaf.
    putLe32(f.pager->modify(leaf.next) + indexpage::kNext, firstLeaf);
    EXPECT_THROW(f.scan(), JetError);
    auto problems = f.verify();
    EXPECT_FALSE(problems.empty());

    // An intermediate entry points outside the file.
    TreeFile g;
    for (uint32_t i = 0; i < 600; ++i) g.tree().insert(key(i, 40), RowId{9, uint16_t(i % 200)}, g.source);
    IndexPage r = IndexPage::decode(g.pager->page(1)->data(), 1, "t");
    r.tail = 99999;
    r.encode(g.pager->modify(1));
    try {
        g.tree().insert(key(100000), RowId{1, 1}, g.source);
        ADD_FAILURE() << "no error";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Corrupt);
    }
    problems = g.verify();
    ASSERT_FALSE(problems.empty());
    EXPECT_NE(problems[0].find("99999"), std::string::npos) << problems[0];
}
