#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <fstream>
#include <vector>

#include "jet/error.h"
#include "jet/journal.h"
#include "jet/os.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;

namespace {

// Fills a page with a value derived from `v`, so any mixed or stale page shows.
void stamp(uint8_t* p, uint32_t v) {
    for (uint32_t i = 0; i < kPageSize; i += 4) {
        uint32_t w = v * 2654435761u + i;
        std::memcpy(p + i, &w, 4);
    }
}
bool stamped(const Page& p, uint32_t v) {
    Page want;
    stamp(want.data(), v);
    return p.bytes == want.bytes;
}

// A file of `n` pages, page i stamped with base + i.
std::string makeFile(const testsupport::TempDir& dir, uint32_t n, uint32_t base = 100) {
    std::string path = (dir / "p.mdb").string();
    auto p = Pager::create(path);
    p->begin();
    for (uint32_t i = 0; i < n; ++i) stamp(p->modify(p->append()), base + i);
    p->commit();
    return path;
}

bool allStamped(Pager& p, uint32_t n, uint32_t base) {
    if (p.pageCount() != n) return false;
    for (uint32_t i = 0; i < n; ++i)
        if (!stamped(*p.page(i), base + i)) return false;
    return true;
}

// What a writer killed mid-commit leaves: the journal synced, some pages overwritten, pages appended.
void simulateCrashedCommit(const std::string& path) {
    auto f = File::open(path, File::Open::ReadWrite);
    std::vector<JournalPage> before;
    for (uint32_t pgno : {1u, 3u}) {
        auto pg = std::make_shared<Page>();
        f->readAt(uint64_t(pgno) * kPageSize, pg->data(), kPageSize);
        before.push_back({pgno, pg});
    }
    writeJournal(journalPath(path), f->size(), before);
    Page junk;
    stamp(junk.data(), 999);
    f->writeAt(1 * kPageSize, junk.data(), kPageSize);
    f->writeAt(5 * kPageSize, junk.data(), kPageSize);  // appended (pages 4..5)
}

}  // namespace

TEST(Pager, WritesAndReadsBackPagesThroughATransaction) {
    testsupport::TempDir dir;
    std::string path = (dir / "p.mdb").string();
    {
        auto p = Pager::create(path);
        p->begin();
        uint32_t a = p->append(), b = p->append();
        p->modify(a)[0] = 7;
        p->modify(b)[4095] = 9;
        p->commit();
    }
    auto p = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_EQ(p->pageCount(), 2u);
    EXPECT_EQ(p->page(0)->bytes[0], 7);
    EXPECT_EQ(p->page(1)->bytes[4095], 9);
    EXPECT_THROW(p->page(2), JetError);
    EXPECT_THROW(p->begin(), JetError);
    EXPECT_FALSE(File::exists(journalPath(path)));
}

TEST(PagerJournal, RoundTripsAndRefusesEveryTornForm) {
    testsupport::TempDir dir;
    std::string db = (dir / "d").string(), j = journalPath(db);
    std::vector<JournalPage> pages;
    for (uint32_t pgno : {0u, 2u, 70u}) {  // 70 spans a chunk boundary of neither side: fine
        auto pg = std::make_shared<Page>();
        stamp(pg->data(), pgno + 1);
        pages.push_back({pgno, pg});
    }
    const uint64_t size = 71 * uint64_t(kPageSize);
    writeJournal(j, size, pages);
    auto info = checkJournal(j);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->originalSize, size);
    EXPECT_EQ(info->pages, 3u);

    // Play-back restores the pages and cuts the pages appended since.
    {
        auto f = File::open(db, File::Open::CreateNew);
        Page zero{};
        for (uint32_t i = 0; i < 80; ++i) f->writeAt(uint64_t(i) * kPageSize, zero.data(), kPageSize);
        ASSERT_TRUE(playBackJournal(j, *f));
        EXPECT_EQ(f->size(), size);
        Page got;
        for (auto& jp : pages) {
            f->readAt(uint64_t(jp.pgno) * kPageSize, got.data(), kPageSize);
            EXPECT_TRUE(stamped(got, jp.pgno + 1)) << jp.pgno;
        }
    }

    std::ifstream in(j, std::ios::binary);
    std::string whole((std::istreambuf_iterator<char>(in)), {});
    auto variant = [&](const std::string& bytes) {
        std::ofstream(j, std::ios::binary | std::ios::trunc) << bytes;
        auto f = File::open(db, File::Open::ReadWrite);
        uint64_t before = f->size();
        bool played = playBackJournal(j, *f);
        EXPECT_EQ(f->size(), before);  // nothing written
        return played || checkJournal(j).has_value();
    };
    for (size_t cut : {size_t(0), size_t(7), size_t(31), size_t(32), size_t(32 + 4104), whole.size() - 1})
        EXPECT_FALSE(variant(whole.substr(0, cut))) << "cut at " << cut;
    for (size_t at : {size_t(3), size_t(20), size_t(32 + 1), size_t(32 + 4104 + 2000), whole.size() - 2}) {
        std::string bad = whole;
        bad[at] ^= 0x10;
        EXPECT_FALSE(variant(bad)) << "byte " << at;
    }
    EXPECT_TRUE(variant(whole));
    EXPECT_FALSE(checkJournal((dir / "absent").string()));

    // An empty journal (a commit that only appended) is valid and only truncates.
    writeJournal(j, kPageSize, {});
    auto f = File::open(db, File::Open::ReadWrite);
    ASSERT_TRUE(playBackJournal(j, *f));
    EXPECT_EQ(f->size(), kPageSize);
}

TEST(PagerJournal, HotJournalIsRolledBackAtOpenButNotByAReadOnlyOpen) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 4);
    simulateCrashedCommit(path);

    try {
        Pager::open(path, Pager::Mode::ReadOnly);
        ADD_FAILURE() << "read-only open of a file with a hot journal";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Locked);
        EXPECT_NE(std::string(e.what()).find("-journal"), std::string::npos) << e.what();
    }
    {
        auto p = Pager::open(path, Pager::Mode::ReadWrite);
        EXPECT_TRUE(allStamped(*p, 4, 100));
        EXPECT_FALSE(File::exists(journalPath(path)));
    }
    auto p = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_TRUE(allStamped(*p, 4, 100));
}

TEST(PagerJournal, TornJournalIsIgnoredAndDeleted) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 4);
    std::string j = journalPath(path);
    auto pg = std::make_shared<Page>();
    stamp(pg->data(), 555);
    writeJournal(j, 2 * kPageSize, {{1, pg}});
    ::truncate(j.c_str(), 32 + 4000);  // the writer died while writing it

    auto ro = Pager::open(path, Pager::Mode::ReadOnly);  // readable: the file was never touched
    EXPECT_TRUE(allStamped(*ro, 4, 100));
    auto rw = Pager::open(path, Pager::Mode::ReadWrite);
    EXPECT_TRUE(allStamped(*rw, 4, 100));
    EXPECT_FALSE(File::exists(j));
}

TEST(PagerJournal, AJournalOfALiveWriterIsNotHot) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 4);
    auto writer = Pager::open(path, Pager::Mode::ReadWrite);
    writer->begin();
    simulateCrashedCommit(path);  // as if the writer were half-way through its commit
    auto reader = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_EQ(reader->pageCount(), 6u);  // sees the file as it is, recovers nothing
    writer->rollback();  // the "writer" is gone: now the journal is hot
    try {
        reader->page(2);
        ADD_FAILURE() << "read past a hot journal";
    } catch (const JetError& e) {
        EXPECT_EQ(e.kind(), ErrorKind::Locked);
    }
    writer->begin();  // the next writer rolls it back before its transaction starts
    EXPECT_EQ(writer->pageCount(), 4u);
    writer->commit();
    reader->refresh();
    EXPECT_TRUE(allStamped(*reader, 4, 100));
}

TEST(Pager, NestedTransactionsCommitOnceAndRollbackKeepsTheCache) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 3);
    auto p = Pager::open(path, Pager::Mode::ReadWrite);
    auto other = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_TRUE(allStamped(*other, 3, 100));

    p->begin();
    p->begin();
    stamp(p->modify(1), 7);
    p->commit();  // inner: nothing written yet
    EXPECT_TRUE(p->inTransaction());
    other->refresh();
    EXPECT_TRUE(stamped(*other->page(1), 101));
    uint32_t added = p->append();
    stamp(p->modify(added), 8);
    p->commit();
    EXPECT_FALSE(p->inTransaction());

    uint64_t gen = other->generation();
    other->refresh();
    EXPECT_GT(other->generation(), gen);
    EXPECT_EQ(other->pageCount(), 4u);
    EXPECT_TRUE(stamped(*other->page(1), 7));
    EXPECT_TRUE(stamped(*other->page(3), 8));

    // Rollback: the transaction's pages go, the committed cache stays (no page is read again).
    p->page(0);
    uint64_t reads = p->pageReads();
    gen = p->generation();
    p->begin();
    stamp(p->modify(0), 9);
    p->append();
    EXPECT_EQ(p->pageCount(), 5u);
    p->rollback();
    EXPECT_GT(p->generation(), gen);
    EXPECT_EQ(p->pageCount(), 4u);
    EXPECT_TRUE(stamped(*p->page(0), 100));
    EXPECT_TRUE(stamped(*p->page(1), 7));
    EXPECT_EQ(p->pageReads(), reads);
    EXPECT_THROW(p->modify(0), JetError);  // outside a transaction
    EXPECT_THROW(p->append(), JetError);
}

// Preloading reads runs of pages in one go: each page once, never over a transaction's own copy,
// nothing outside a read operation, and pages past the end left for page() to refuse.
TEST(Pager, PreloadReadsEachPageOnceAndLeavesTheTransactionsCopies) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 40);
    auto p = Pager::open(path, Pager::Mode::ReadWrite);
    std::vector<uint32_t> pages = {39, 3, 4, 5, 6, 20, 21, 5, 38, 50};
    p->preload(pages.data(), pages.size());
    EXPECT_EQ(p->pageReads(), 0u);  // no read operation open
    {
        Pager::ReadLock lock(*p);
        p->preload(pages.data(), pages.size());
        EXPECT_EQ(p->pageReads(), 8u);
        p->preload(pages.data(), pages.size());
        EXPECT_EQ(p->pageReads(), 8u);
        for (uint32_t pg : {3u, 4u, 5u, 6u, 20u, 21u, 38u, 39u}) EXPECT_TRUE(stamped(*p->page(pg), 100 + pg)) << pg;
        EXPECT_EQ(p->pageReads(), 8u);
    }
    p->begin();
    stamp(p->modify(10), 1);
    std::vector<uint32_t> more(40);
    for (uint32_t i = 0; i < 40; ++i) more[i] = i;
    p->preload(more.data(), more.size());
    EXPECT_TRUE(stamped(*p->page(10), 1));
    EXPECT_TRUE(stamped(*p->page(11), 111));
    p->rollback();
    EXPECT_TRUE(stamped(*p->page(10), 110));
    EXPECT_THROW(p->page(50), JetError);
}

TEST(Pager, RefreshSeesOtherCommitsAndOldCounterFilesAreTolerated) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 2);
    std::string klk = path + ".klk";
    std::ofstream(klk, std::ios::binary | std::ios::trunc) << std::string("\x05\x00\x00", 3);  // short, from an older tool

    auto a = Pager::open(path, Pager::Mode::ReadWrite);
    auto b = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_TRUE(stamped(*b->page(1), 101));
    uint64_t reads = b->pageReads(), gen = b->generation();
    b->refresh();  // nothing changed: the cache stays
    b->page(1);
    EXPECT_EQ(b->pageReads(), reads);
    EXPECT_EQ(b->generation(), gen);

    a->begin();
    stamp(a->modify(1), 42);
    a->commit();
    EXPECT_TRUE(stamped(*b->page(1), 101));  // cached until refreshed
    b->refresh();
    EXPECT_GT(b->generation(), gen);
    EXPECT_TRUE(stamped(*b->page(1), 42));

    // The counter lives in the first 8 bytes; whatever follows them is left alone.
    std::ofstream(klk, std::ios::binary | std::ios::trunc) << std::string(8, '\xff') + "older tool data";
    a->begin();
    stamp(a->modify(0), 43);
    a->commit();
    std::ifstream in(klk, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(content, std::string(8, '\0') + "older tool data");  // wrapped around to 0
    gen = b->generation();
    b->refresh();
    EXPECT_GT(b->generation(), gen);
    EXPECT_TRUE(stamped(*b->page(0), 43));
}

TEST(Pager, ACommitWaitsForReadersOnlyUpToItsTimeout) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 2);
    auto w = Pager::open(path, Pager::Mode::ReadWrite);
    auto r = Pager::open(path, Pager::Mode::ReadOnly);
    w->setBusyTimeout(std::chrono::milliseconds(100));
    {
        Pager::ReadLock lock(*r);
        w->begin();
        stamp(w->modify(1), 5);
        try {
            w->commit();
            ADD_FAILURE() << "commit while a reader holds the file";
        } catch (const JetError& e) {
            EXPECT_EQ(e.kind(), ErrorKind::Locked);
        }
        EXPECT_FALSE(w->inTransaction());
        EXPECT_FALSE(File::exists(journalPath(path)));
        EXPECT_TRUE(stamped(*w->page(1), 101));
    }
    w->begin();
    stamp(w->modify(1), 5);
    w->commit();
    Pager::ReadLock lock(*r);  // refreshes on entry
    EXPECT_TRUE(stamped(*r->page(1), 5));
}

TEST(Pager, DiskErrorsDuringACommitLeaveTheFileAsBefore) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 3);
    bool done = false;
    for (long k = 0; !done && k < 50; ++k) {
        {
            auto p = Pager::open(path, Pager::Mode::ReadWrite);
            p->begin();
            for (uint32_t i = 0; i < 3; ++i) stamp(p->modify(i), 200 + i);
            stamp(p->modify(p->append()), 203);
            injectIoFailureAfter(k);
            try {
                p->commit();
                done = true;
            } catch (const JetError& e) {
                EXPECT_EQ(e.kind(), ErrorKind::Io) << e.what();
            }
            injectIoFailureAfter(-1);
        }
        auto p = Pager::open(path, Pager::Mode::ReadWrite);  // rolls back a journal left behind
        if (done)
            EXPECT_TRUE(allStamped(*p, 4, 200)) << "after failure point " << k;
        else
            EXPECT_TRUE(allStamped(*p, 3, 100)) << "after failure point " << k;
        EXPECT_FALSE(File::exists(journalPath(path)));
    }
    EXPECT_TRUE(done);
}

TEST(Pager, AReadOnlyFileOpenedForWritingFailsClearly) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 1);
    ::chmod(path.c_str(), 0444);
    ::chmod(dir.path().c_str(), 0755);
    // Root may write anything: check as an ordinary user in a child process.
    pid_t pid = testsupport::spawn([&] {
        if (geteuid() == 0 && setuid(65534) != 0) return 3;
        try {
            Pager::open(path, Pager::Mode::ReadWrite);
        } catch (const JetError& e) {
            bool clear = e.kind() == ErrorKind::Io && std::string(e.what()).find("read-only") != std::string::npos &&
                         std::string(e.what()).find(path) != std::string::npos;
            return clear ? 0 : 1;
        }
        return 2;
    });
    EXPECT_EQ(testsupport::exitCode(pid), 0);
    EXPECT_NO_THROW(Pager::open(path, Pager::Mode::ReadOnly));
}
