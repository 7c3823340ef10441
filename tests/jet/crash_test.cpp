// A writer killed at random moments: after every kill the file must read back as it was after
// some whole batch, never a mix.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <algorithm>
#include <random>

#include "jet/database.h"
#include "jet/error.h"
#include "jet/journal.h"
#include "jet/os.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;

namespace {

// Page 0: [batch][page count]. Every other page: [batch that wrote it][its number][fill from both].
constexpr uint32_t kFirstPages = 8, kMaxPages = 160;

void stampPage(uint8_t* p, uint32_t batch, uint32_t pgno) {
    std::memcpy(p, &batch, 4);
    std::memcpy(p + 4, &pgno, 4);
    uint32_t x = batch * 2654435761u ^ pgno * 40503u;
    for (uint32_t i = 8; i < kPageSize; i += 4) {
        x = x * 1664525u + 1013904223u;
        std::memcpy(p + i, &x, 4);
    }
}

// The pages batch `b` writes, derived from b alone, so the checker can replay every batch.
struct Plan {
    uint32_t pagesAfter;
    std::vector<uint32_t> touched;
};
Plan plan(uint32_t b, uint32_t pagesBefore) {
    std::mt19937 rng(b);
    Plan pl{pagesBefore, {}};
    if (rng() % 3 == 0) pl.pagesAfter = std::min(kMaxPages, pagesBefore + 1 + uint32_t(rng() % 3));
    for (uint32_t n = 1 + rng() % 12; n > 0; --n) pl.touched.push_back(1 + rng() % (pagesBefore - 1));
    for (uint32_t p = pagesBefore; p < pl.pagesAfter; ++p) pl.touched.push_back(p);
    return pl;
}

// Commits batches until killed (in a child process); reports each committed batch on reportFd.
int writerLoop(const std::string& path, int reportFd) {
    injectWriteDelay(150);  // page writes take long enough for kills to land between them
    auto p = Pager::open(path, Pager::Mode::ReadWrite);
    for (;;) {
        p->begin();
        uint32_t head[2];
        std::memcpy(head, p->page(0)->data(), 8);
        Plan pl = plan(head[0] + 1, head[1]);
        while (p->pageCount() < pl.pagesAfter) p->append();
        for (uint32_t pgno : pl.touched) stampPage(p->modify(pgno), head[0] + 1, pgno);
        head[0] += 1;
        head[1] = pl.pagesAfter;
        std::memcpy(p->modify(0), head, 8);
        p->commit();
        if (write(reportFd, &head[0], 4) != 4) return 3;
    }
}

// Checks that the file is exactly the state after batch `b`; returns b.
uint32_t checkWholeBatch(const std::string& path) {
    auto p = Pager::open(path, Pager::Mode::ReadWrite);
    EXPECT_FALSE(File::exists(journalPath(path)));
    uint32_t head[2];
    std::memcpy(head, p->page(0)->data(), 8);
    std::vector<uint32_t> writer(kFirstPages, 0);
    for (uint32_t b = 1; b <= head[0]; ++b) {
        Plan pl = plan(b, uint32_t(writer.size()));
        writer.resize(pl.pagesAfter, b);
        for (uint32_t pgno : pl.touched) writer[pgno] = b;
    }
    EXPECT_EQ(head[1], writer.size());
    EXPECT_EQ(p->pageCount(), writer.size()) << "batch " << head[0];
    Page want;
    for (uint32_t pgno = 1; pgno < std::min<uint32_t>(p->pageCount(), writer.size()); ++pgno) {
        stampPage(want.data(), writer[pgno], pgno);
        if (p->page(pgno)->bytes != want.bytes) {
            ADD_FAILURE() << "page " << pgno << " is not as batch " << writer[pgno] << " wrote it (file at batch "
                          << head[0] << ")";
            break;
        }
    }
    return head[0];
}

}  // namespace

TEST(CrashSafety, AWriterKilledAtRandomLeavesBeforeOrAfterOneBatch) {
    testsupport::TempDir dir;
    std::string path = (dir / "crash.mdb").string();
    {
        auto p = Pager::create(path);
        p->begin();
        uint32_t head[2] = {0, kFirstPages};
        std::memcpy(p->modify(p->append()), head, 8);
        for (uint32_t pgno = 1; pgno < kFirstPages; ++pgno) stampPage(p->modify(p->append()), 0, pgno);
        p->commit();
    }
    std::mt19937 rng(12345);
    uint32_t reported = 0, unreported = 0, lastChecked = 0, kills = 0, hot = 0, torn = 0;
    auto start = std::chrono::steady_clock::now();
    for (int it = 0; it < 200 && std::chrono::steady_clock::now() - start < std::chrono::seconds(25); ++it) {
        int fds[2];
        ASSERT_EQ(pipe(fds), 0);
        pid_t pid = testsupport::spawn([&] {
            close(fds[0]);
            return writerLoop(path, fds[1]);
        });
        ASSERT_GE(pid, 0);
        close(fds[1]);
        usleep(1000 + rng() % 60000);
        kill(pid, SIGKILL);
        int rc = testsupport::exitCode(pid);
        ASSERT_EQ(rc, 100 + SIGKILL) << "the writer stopped by itself, exit " << rc;
        ++kills;
        // A writer may die between its commit and its report: one unreported batch per writer
        // since the last one that reported.
        uint32_t b;
        bool any = false;
        while (read(fds[0], &b, 4) == 4) reported = b, any = true;
        unreported = any ? 1 : unreported + 1;
        close(fds[0]);
        // Every third kill is left for the next writer to recover (which may be killed recovering).
        if (File::exists(journalPath(path))) ++(checkJournal(journalPath(path)) ? hot : torn);
        if (it % 3 == 1) continue;
        uint32_t now = checkWholeBatch(path);
        EXPECT_TRUE(now >= reported && now <= reported + unreported)
            << "file at batch " << now << ", writers reported " << reported << " (+" << unreported << ")";
        EXPECT_GE(now, lastChecked);
        lastChecked = now;
        if (HasFailure()) break;
    }
    EXPECT_GT(lastChecked, 20u) << "too few batches committed to mean anything";
    EXPECT_GT(hot, 10u) << "too few kills landed inside a commit";
    RecordProperty("kills", int(kills));
    RecordProperty("batches", int(lastChecked));
    RecordProperty("hot_journals", int(hot));
    RecordProperty("torn_journals", int(torn));
}

namespace {

constexpr int32_t kBatchBase = 500000, kBatchRows = 5;

// The batches of kBatchRows rows an inserter has committed to Table2: -1 when they are not whole
// batches 0..n-1, each row once.
int committedBatches(Table& t) {
    std::vector<int> seen;
    t.scan([&](RowId, const Row& r) {
        if (auto* id = std::get_if<int32_t>(&r[0]); id && *id >= kBatchBase) {
            size_t k = size_t(*id - kBatchBase);
            if (seen.size() <= k) seen.resize(k + 1, 0);
            ++seen[k];
        }
        return true;
    });
    if (seen.size() % kBatchRows != 0 || std::count(seen.begin(), seen.end(), 1) != long(seen.size())) return -1;
    return int(seen.size() / kBatchRows);
}

}  // namespace

TEST(CrashSafety, AKilledInserterLeavesAnAccessFileBeforeOrAfterItsBatch) {
    testsupport::TempDir dir;
    std::string path = testsupport::copyTestFile("indexTestV2000.mdb", dir).string();
    std::mt19937 rng(777);
    int reported = 0, unreported = 0, hot = 0;
    for (int it = 0; it < 25; ++it) {
        int fds[2];
        ASSERT_EQ(pipe(fds), 0);
        pid_t pid = testsupport::spawn([&] {
            close(fds[0]);
            injectWriteDelay(100);
            auto db = Database::open(path);
            Table& t = db->table("Table2");
            for (int32_t b = committedBatches(t);; ++b) {
                db->begin();
                for (int32_t k = 0; k < kBatchRows; ++k)
                    t.insert({kBatchBase + b * kBatchRows + k, "batch " + std::to_string(b)});
                db->commit();
                int32_t done = b + 1;
                if (write(fds[1], &done, 4) != 4) return 3;
            }
        });
        ASSERT_GE(pid, 0);
        close(fds[1]);
        usleep(5000 + rng() % 60000);
        kill(pid, SIGKILL);
        int rc = testsupport::exitCode(pid);
        ASSERT_EQ(rc, 100 + SIGKILL) << "the inserter stopped by itself, exit " << rc;
        int32_t b;
        bool any = false;
        while (read(fds[0], &b, 4) == 4) reported = b, any = true;
        unreported = any ? 1 : unreported + 1;
        close(fds[0]);
        hot += File::exists(journalPath(path));

        auto db = Database::open(path);
        int now = committedBatches(db->table("Table2"));
        ASSERT_GE(now, 0) << "a batch is only partly in the table";
        EXPECT_TRUE(now >= reported && now <= reported + unreported) << now << " batches, reported " << reported;
    }
    EXPECT_GT(reported, 5);
    EXPECT_GT(hot, 0);
    if (testsupport::oracleAvailable()) {
        auto check = testsupport::oracle({"check", path});
        EXPECT_EQ(check.out, "OK\n") << check.err;
    }
}
