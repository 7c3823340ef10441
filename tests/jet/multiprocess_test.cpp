// Several processes on one file: serialised commits, fresh reads after another's commit, row locks.
#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <algorithm>
#include <functional>

#include "jet/database.h"
#include "jet/error.h"
#include "jet/pager.h"
#include "jet/support.h"

using namespace jet;
using testsupport::exitCode;
using testsupport::spawn;

namespace {

// One byte through a pipe: a step of two processes in lock-step.
struct Signal {
    int fd[2];
    Signal() { EXPECT_EQ(pipe(fd), 0); }
    ~Signal() { close(fd[0]), close(fd[1]); }
    void post() { EXPECT_EQ(write(fd[1], "x", 1), 1); }
    bool wait() {
        char c;
        return read(fd[0], &c, 1) == 1;
    }
};

uint64_t get(const uint8_t* p) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    return v;
}
void put(uint8_t* p, uint64_t v) { std::memcpy(p, &v, 8); }

std::string makeFile(const testsupport::TempDir& dir, uint32_t pages) {
    std::string path = (dir / "shared.mdb").string();
    auto p = Pager::create(path);
    p->begin();
    for (uint32_t i = 0; i < pages; ++i) p->append();
    p->commit();
    return path;
}

}  // namespace

TEST(MultiProcess, ConcurrentReadModifyWriteCommitsLoseNoUpdate) {
    testsupport::TempDir dir;
    // Page 0 holds the total, pages 1..4 one counter each: readers check total == sum.
    std::string path = makeFile(dir, 5);
    constexpr int kRounds = 120;
    Signal go;
    auto writer = [&](int id) {
        return [&, id] {
            go.wait();
            auto p = Pager::open(path, Pager::Mode::ReadWrite);
            for (int i = 0; i < kRounds; ++i) {
                p->begin();
                uint32_t pg = 1 + (i + id) % 4;
                put(p->modify(pg), get(p->page(pg)->data()) + 1);
                put(p->modify(0), get(p->page(0)->data()) + 1);
                p->commit();
            }
            return 0;
        };
    };
    // A reader inside a read operation must never see a commit half-applied.
    auto reader = [&] {
        go.wait();
        auto p = Pager::open(path, Pager::Mode::ReadOnly);
        uint64_t seen = 0;
        while (seen < 2 * kRounds) {
            Pager::ReadLock lock(*p);
            uint64_t total = get(p->page(0)->data()), sum = 0;
            for (uint32_t pg = 1; pg <= 4; ++pg) sum += get(p->page(pg)->data());
            if (sum != total || total < seen) return 1;
            seen = total;
        }
        return 0;
    };
    pid_t a = spawn(writer(0)), b = spawn(writer(1)), r = spawn(reader);
    for (int i = 0; i < 3; ++i) go.post();
    EXPECT_EQ(exitCode(a), 0);
    EXPECT_EQ(exitCode(b), 0);
    EXPECT_EQ(exitCode(r), 0);

    auto p = Pager::open(path, Pager::Mode::ReadOnly);
    uint64_t sum = 0;
    for (uint32_t pg = 1; pg <= 4; ++pg) sum += get(p->page(pg)->data());
    EXPECT_EQ(get(p->page(0)->data()), uint64_t(2 * kRounds));
    EXPECT_EQ(sum, uint64_t(2 * kRounds));
}

TEST(MultiProcess, AReaderSeesAnotherProcessCommitAfterRefresh) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 3);
    Signal start, committed;
    pid_t child = spawn([&] {
        start.wait();
        auto p = Pager::open(path, Pager::Mode::ReadWrite);
        p->begin();
        put(p->modify(1), 77);
        p->append();
        p->commit();
        committed.post();
        return 0;
    });
    auto p = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_EQ(get(p->page(1)->data()), 0u);
    start.post();
    ASSERT_TRUE(committed.wait());
    EXPECT_EQ(exitCode(child), 0);
    EXPECT_EQ(get(p->page(1)->data()), 0u);  // the cache answers until refreshed
    uint64_t gen = p->generation();
    p->refresh();
    EXPECT_GT(p->generation(), gen);
    EXPECT_EQ(p->pageCount(), 4u);
    EXPECT_EQ(get(p->page(1)->data()), 77u);
}

TEST(MultiProcess, RowLocksExcludeOtherProcessesUntilUnlockOrExit) {
    testsupport::TempDir dir;
    std::string path = makeFile(dir, 8);
    Signal toParent, toChild;
    pid_t child = spawn([&] {
        auto p = Pager::open(path, Pager::Mode::ReadWrite);
        if (!p->lockRow(5, 3) || !p->lockRow(6, 0) || !p->lockRow(5, 3)) return 1;  // a re-lock is fine
        toParent.post();
        toChild.wait();
        p->unlockRow(5, 3);
        toParent.post();
        toChild.wait();
        return 0;  // exits holding (6, 0)
    });
    auto p = Pager::open(path, Pager::Mode::ReadWrite);
    ASSERT_TRUE(toParent.wait());
    EXPECT_FALSE(p->lockRow(5, 3));
    EXPECT_FALSE(p->lockRow(6, 0));
    EXPECT_TRUE(p->lockRow(5, 4));  // neighbours are separate rows
    EXPECT_TRUE(p->lockRow(4, 3));
    EXPECT_TRUE(p->lockRow(6, 1));
    toChild.post();
    ASSERT_TRUE(toParent.wait());
    EXPECT_TRUE(p->lockRow(5, 3));
    EXPECT_FALSE(p->lockRow(6, 0));
    toChild.post();
    EXPECT_EQ(exitCode(child), 0);
    EXPECT_TRUE(p->lockRow(6, 0));

    // A row lock never blocks reading or committing.
    p->begin();
    put(p->modify(5), 1);
    p->commit();
    auto ro = Pager::open(path, Pager::Mode::ReadOnly);
    EXPECT_EQ(get(ro->page(5)->data()), 1u);
    EXPECT_THROW(ro->lockRow(5, 3), JetError);
}

TEST(MultiProcess, TwoProcessesInsertingIntoOneTableOfAnAccessFileLoseNoRow) {
    testsupport::TempDir dir;
    std::string path = testsupport::copyTestFile("indexTestV2000.mdb", dir).string();
    uint32_t before = 0;
    {
        auto db = Database::open(path, Database::Mode::ReadOnly);
        before = db->table("Table2").rowCount();
    }
    constexpr int kRows = 60;
    Signal go;
    auto inserter = [&](int32_t base) {
        return [&, base] {
            go.wait();
            auto db = Database::open(path);
            Table& t = db->table("Table2");
            for (int i = 0; i < kRows;) {
                if (i % 10 == 0) {  // a batch of three, and single-row commits
                    db->begin();
                    for (int k = 0; k < 3; ++k, ++i) t.insert({int32_t(base + i), "b" + std::to_string(base + i)});
                    db->commit();
                } else {
                    t.insert({int32_t(base + i), "s" + std::to_string(base + i)});
                    ++i;
                }
            }
            return 0;
        };
    };
    pid_t a = spawn(inserter(100000)), b = spawn(inserter(200000));
    go.post(), go.post();
    EXPECT_EQ(exitCode(a), 0);
    EXPECT_EQ(exitCode(b), 0);

    auto db = Database::open(path, Database::Mode::ReadOnly);
    Table& t = db->table("Table2");
    EXPECT_EQ(t.rowCount(), before + 2 * kRows);
    std::vector<int> seen(2 * kRows, 0);
    uint32_t rows = 0;
    t.scan([&](RowId, const Row& r) {
        ++rows;
        if (auto* id = std::get_if<int32_t>(&r[0]); id && *id >= 100000) {
            int k = *id >= 200000 ? kRows + (*id - 200000) : *id - 100000;
            if (k >= 0 && k < 2 * kRows) ++seen[size_t(k)];
        }
        return true;
    });
    EXPECT_EQ(rows, before + 2 * kRows);
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), 2 * kRows);
    if (testsupport::oracleAvailable()) {
        auto check = testsupport::oracle({"check", path});
        EXPECT_EQ(check.out, "OK\n") << check.err;
    }
}
