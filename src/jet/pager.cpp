// The pager: page cache, write transaction with rollback journal, and the locks that let several
// processes share one file.
//
// Locks (fcntl open-file-description locks on the database file, one byte each, far past the end
// of any Jet file and away from the ranges Access itself locks, which start at 0x10000000):
//
//   0x7FFFFF00  PENDING   a writer holds it exclusive from the moment it wants to write pages;
//                         a reader holds it shared only for the instant it takes SHARED, so a
//                         waiting writer is not starved by a stream of new readers
//   0x7FFFFF01  RESERVED  exclusive: the one writer, from begin() to the end of commit/rollback
//   0x7FFFFF02  SHARED    shared by readers while they read pages; exclusive by the writer while
//                         it overwrites pages of the file
//   0x7FFFFF03  QUEUE     shared by each writer blocked in begin(); a writer that sees it held
//                         steps back for a moment so a process committing in a loop cannot keep
//                         the others out
//   0x100000000 + pgno * 65536 + row
//               ROW       exclusive while an edit holds that row (one byte per row)
//
// Commit: journal written and synced (RESERVED held, readers still reading the unchanged file)
// -> PENDING, SHARED exclusive (waits for readers, bounded) -> counter bumped -> pages written ->
// file synced -> journal deleted, which is the commit point -> locks released.
// A journal is hot when it exists and nobody holds RESERVED: its writer died. Whoever takes a lock
// next rolls it back (a read-only pager cannot, and fails with Locked).
#include "pager.h"

#include <algorithm>
#include <cstring>
#include <thread>
#include <vector>

#include "error.h"
#include "journal.h"
#include "os.h"

namespace jet {

namespace {

constexpr uint64_t kPendingByte = 0x7FFFFF00;
constexpr uint64_t kReservedByte = 0x7FFFFF01;
constexpr uint64_t kSharedByte = 0x7FFFFF02;
constexpr uint64_t kQueueByte = 0x7FFFFF03;
constexpr uint64_t kRowLockBase = 0x100000000ull;

using Clock = std::chrono::steady_clock;

// Calls attempt() until it returns true or the timeout passes, sleeping a little longer each time.
template <class F>
bool retry(std::chrono::milliseconds timeout, F attempt) {
    auto deadline = Clock::now() + timeout;
    auto pause = std::chrono::microseconds(50);
    for (;;) {
        if (attempt()) return true;
        if (Clock::now() >= deadline) return false;
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::microseconds(2000));
    }
}

std::string counterPath(const std::string& path) { return path + ".klk"; }

std::string ms(std::chrono::milliseconds t) { return std::to_string(t.count()) + " ms"; }

}  // namespace

Pager::Pager(std::string path, Mode mode) : path_(std::move(path)), journal_(journalPath(path_)), mode_(mode) {}

Pager::~Pager() {
    try {
        rollback();
    } catch (...) {
        // Closing the file below releases every lock anyway.
    }
}

std::unique_ptr<Pager> Pager::open(const std::string& path, Mode mode) {
    std::unique_ptr<Pager> p(new Pager(path, mode));
    bool rw = mode == Mode::ReadWrite;
    p->file_ = File::open(path, rw ? File::Open::ReadWrite : File::Open::ReadOnly);
    if (rw) p->counter_ = File::open(counterPath(path), File::Open::OpenOrCreate);
    p->lockShared();  // rolls back a crashed writer's journal first
    try {
        p->syncWithFile();
    } catch (...) {
        p->unlockShared();
        throw;
    }
    p->unlockShared();
    return p;
}

std::unique_ptr<Pager> Pager::create(const std::string& path) {
    std::unique_ptr<Pager> p(new Pager(path, Mode::ReadWrite));
    p->file_ = File::open(path, File::Open::CreateNew);
    File::remove(p->journal_);  // left by a deleted file of the same name: it must not touch ours
    p->counter_ = File::open(counterPath(path), File::Open::OpenOrCreate);
    p->syncWithFile();
    return p;
}

uint32_t Pager::pageCount() const { return depth_ > 0 ? txPages_ : filePages_; }

PageRef Pager::page(uint32_t pgno) {
    if (depth_ > 0) {
        auto d = dirty_.find(pgno);
        if (d != dirty_.end()) return d->second;
    }
    auto c = cache_.find(pgno);
    if (c != cache_.end()) return c->second;
    if (depth_ > 0 || shared_) return readPage(pgno);
    lockShared();
    try {
        PageRef pg = readPage(pgno);
        unlockShared();
        return pg;
    } catch (...) {
        unlockShared();
        throw;
    }
}

PageRef Pager::readPage(uint32_t pgno) {
    if (pgno >= filePages_) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is past the end of the file");
    auto pg = std::make_shared_for_overwrite<Page>();
    size_t n = file_->readAt(uint64_t(pgno) * kPageSize, pg->data(), kPageSize);
    ++reads_;
    if (n != kPageSize) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is truncated");
    cache_.emplace(pgno, pg);
    return pg;
}

static_assert(sizeof(Page) == kPageSize, "a block of pages is the bytes of a run of the file");

void Pager::preload(const uint32_t* pages, size_t n) {
    if (depth_ == 0 && !shared_) return;  // reads outside a read operation take the lock per page
    constexpr size_t kRun = 32;           // 128 KiB a call
    std::vector<uint32_t> want;
    want.reserve(n);
    for (size_t i = 0; i < n; ++i) {
        uint32_t pg = pages[i];
        if (pg >= filePages_ || cache_.count(pg) || (depth_ > 0 && dirty_.count(pg))) continue;
        want.push_back(pg);
    }
    if (want.size() < 2) return;  // page() reads a lone page as well
    std::sort(want.begin(), want.end());
    want.erase(std::unique(want.begin(), want.end()), want.end());
    for (size_t i = 0; i < want.size();) {
        size_t j = i + 1;
        while (j < want.size() && j - i < kRun && want[j] == want[j - 1] + 1) ++j;
        size_t count = j - i;
        // A run is read straight into one block of pages, each cached page a view of its part:
        // one allocation and no copy per run. The block lives while any of its pages is held.
        std::shared_ptr<Page[]> block = std::make_shared_for_overwrite<Page[]>(count);
        size_t got = file_->readAt(uint64_t(want[i]) * kPageSize, block.get(), count * kPageSize);
        for (size_t k = 0; k < count && (k + 1) * kPageSize <= got; ++k) {
            ++reads_;
            cache_.emplace(want[i + k], std::shared_ptr<Page>(block, &block[k]));
        }
        i = j;
    }
}

// ---- cache freshness ----

uint64_t Pager::readCounter() {
    if (!counter_) counter_ = File::openIfExists(counterPath(path_), File::Open::ReadOnly);
    if (!counter_) return 0;
    uint8_t b[8] = {};
    counter_->readAt(0, b, 8);  // a shorter file reads as zeros
    uint64_t v = 0;
    for (int i = 7; i >= 0; --i) v = (v << 8) | b[i];
    return v;
}

void Pager::bumpCounter() {
    if (!counter_) counter_ = File::open(counterPath(path_), File::Open::OpenOrCreate);
    uint64_t v = readCounter() + 1;
    uint8_t b[8];
    for (int i = 0; i < 8; ++i) b[i] = uint8_t(v >> (8 * i));
    counter_->writeAt(0, b, 8);
    seenCounter_ = v;
}

void Pager::dropCache() {
    cache_.clear();
    ++generation_;
}

void Pager::syncWithFile() {
    uint64_t c = readCounter();
    uint64_t size = file_->size();
    if (c == seenCounter_ && size == fileSize_) return;
    dropCache();
    seenCounter_ = c;
    fileSize_ = size;
    filePages_ = static_cast<uint32_t>(std::min<uint64_t>(size / kPageSize, 0xFFFFFFFFu));
}

void Pager::refresh() {
    if (depth_ == 0) syncWithFile();
}

// ---- locks ----

void Pager::lockShared() {
    for (;;) {
        bool got = retry(busyTimeout_, [&] {
            if (!file_->lock(kPendingByte, 1, File::Lock::Shared, false)) return false;
            bool ok = file_->lock(kSharedByte, 1, File::Lock::Shared, false);
            file_->unlock(kPendingByte, 1);
            return ok;
        });
        if (!got) fail(ErrorKind::Locked, path_, "another process is writing the file and did not finish within " + ms(busyTimeout_));
        shared_ = true;
        if (!journalIsHot()) return;
        // A torn journal means its writer never touched the file: a reader may read it as it is.
        if (!writable() && !checkJournal(journal_)) return;
        unlockShared();
        if (!writable())
            fail(ErrorKind::Locked, path_,
                 "a writer stopped in the middle of a commit and left " + journal_ +
                     "; the file must be opened for writing once to undo the unfinished commit");
        recoverJournal();
    }
}

void Pager::unlockShared() {
    if (!shared_) return;
    file_->unlock(kSharedByte, 1);
    shared_ = false;
}

void Pager::lockReserved() {
    // Writers waiting already: let one of them go first.
    if (file_->lockedByOthers(kQueueByte, 1, File::Lock::Exclusive))
        retry(std::chrono::milliseconds(50), [&] { return !file_->lockedByOthers(kQueueByte, 1, File::Lock::Exclusive); });
    if (!file_->lock(kReservedByte, 1, File::Lock::Exclusive, false)) {
        file_->lock(kQueueByte, 1, File::Lock::Shared, true);
        try {
            file_->lock(kReservedByte, 1, File::Lock::Exclusive, true);
        } catch (...) {
            file_->unlock(kQueueByte, 1);
            throw;
        }
        file_->unlock(kQueueByte, 1);
    }
    reserved_ = true;
}

void Pager::lockExclusive() {
    if (!retry(busyTimeout_, [&] { return file_->lock(kPendingByte, 1, File::Lock::Exclusive, false); }))
        fail(ErrorKind::Locked, path_, "readers kept the file busy for " + ms(busyTimeout_));
    if (!retry(busyTimeout_, [&] { return file_->lock(kSharedByte, 1, File::Lock::Exclusive, false); })) {
        file_->unlock(kPendingByte, 1);
        fail(ErrorKind::Locked, path_, "readers kept the file busy for " + ms(busyTimeout_));
    }
    exclusive_ = true;
}

void Pager::unlockExclusive() {
    if (!exclusive_) return;
    file_->unlock(kSharedByte, 1);
    file_->unlock(kPendingByte, 1);
    exclusive_ = false;
}

// Releases the write locks; a read operation still open gets its shared lock back (no other
// writer can be in the way while RESERVED is still ours).
void Pager::endWrite() {
    unlockExclusive();
    if (readDepth_ > 0 && !shared_) shared_ = file_->lock(kSharedByte, 1, File::Lock::Shared, false);
    if (reserved_) {
        file_->unlock(kReservedByte, 1);
        reserved_ = false;
    }
}

bool Pager::journalIsHot() {
    if (!File::exists(journal_)) return false;
    if (reserved_) return true;  // nobody else can be writing it
    return !file_->lockedByOthers(kReservedByte, 1, File::Lock::Shared);
}

// Rolls back a dead writer's journal. Called with no lock held, or with RESERVED held by begin().
void Pager::recoverJournal() {
    bool hadReserved = reserved_;
    if (!hadReserved) lockReserved();  // a live writer recovers it itself in its begin()
    try {
        if (File::exists(journal_)) {
            lockExclusive();
            playBackJournal(journal_, *file_);  // false: torn, the file was never touched
            File::remove(journal_);
            bumpCounter();  // others may have cached pages of the half-written file
            unlockExclusive();
            fileSize_ = ~uint64_t(0);  // forces syncWithFile to drop the cache and re-read the size
            syncWithFile();
        }
    } catch (...) {
        unlockExclusive();
        if (!hadReserved) endWrite();
        throw;
    }
    if (!hadReserved) endWrite();
}

// ---- reading ----

void Pager::beginRead() {
    if (readDepth_++ > 0 || depth_ > 0) return;
    try {
        lockShared();
        syncWithFile();
    } catch (...) {
        --readDepth_;
        unlockShared();
        throw;
    }
}

void Pager::endRead() {
    if (readDepth_ == 0) return;
    if (--readDepth_ == 0 && depth_ == 0) unlockShared();
}

// ---- the write transaction ----

void Pager::begin() {
    if (mode_ != Mode::ReadWrite) fail(ErrorKind::ReadOnly, path_, "the file is open for reading only");
    if (depth_ > 0) {
        ++depth_;
        return;
    }
    // A reader starting to write gives up its shared lock: holding it while waiting for a writer
    // that waits for readers would deadlock. The cache is refreshed below.
    unlockShared();
    lockReserved();
    try {
        if (File::exists(journal_)) recoverJournal();  // we hold RESERVED: a dead writer's
        syncWithFile();
    } catch (...) {
        endWrite();
        throw;
    }
    depth_ = 1;
    txPages_ = filePages_;
}

uint8_t* Pager::modify(uint32_t pgno) {
    if (depth_ == 0) fail(ErrorKind::Invalid, path_, "page change outside a transaction");
    auto d = dirty_.find(pgno);
    if (d != dirty_.end()) return d->second->data();
    if (pgno >= txPages_) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is past the end of the file");
    PageRef before = page(pgno);
    auto copy = std::make_shared<Page>(*before);
    dirty_.emplace(pgno, copy);
    if (pgno < filePages_) originals_.emplace(pgno, std::move(before));
    return copy->data();
}

uint32_t Pager::append() {
    if (depth_ == 0) fail(ErrorKind::Invalid, path_, "page append outside a transaction");
    if (txPages_ == 0xFFFFFFFFu) fail(ErrorKind::Invalid, path_, "the file cannot grow further");
    uint32_t pgno = txPages_++;
    auto pg = std::make_shared<Page>();
    pg->bytes.fill(0);
    dirty_.emplace(pgno, pg);
    return pgno;
}

void Pager::commit() {
    if (depth_ == 0) return;
    if (--depth_ > 0) return;
    if (dirty_.empty() && txPages_ == filePages_) {
        originals_.clear();
        endWrite();
        return;
    }
    std::vector<uint32_t> order;
    order.reserve(dirty_.size());
    for (auto& [pgno, pg] : dirty_) order.push_back(pgno);
    std::sort(order.begin(), order.end());
    std::vector<JournalPage> before;
    for (uint32_t pgno : order)
        if (pgno < filePages_) before.push_back({pgno, originals_.at(pgno)});

    bool touched = false;  // a page of the file may have been overwritten
    try {
        writeJournal(journal_, fileSize_, before);
        lockExclusive();
        bumpCounter();
        touched = true;
        for (uint32_t pgno : order) file_->writeAt(uint64_t(pgno) * kPageSize, dirty_[pgno]->data(), kPageSize);
        file_->sync();
        File::remove(journal_);
    } catch (...) {
        // Undo now if the disk lets us; otherwise the journal stays hot and whoever locks the file
        // next (this pager included) rolls it back.
        try {
            if (!touched || playBackJournal(journal_, *file_)) File::remove(journal_);
        } catch (...) {
        }
        dirty_.clear();
        originals_.clear();
        txPages_ = filePages_;
        if (touched) {
            fileSize_ = ~uint64_t(0);  // the next refresh re-reads the size
            dropCache();
        } else {
            ++generation_;
        }
        try {
            endWrite();
        } catch (...) {
        }
        throw;
    }
    for (auto& [pgno, pg] : dirty_) cache_[pgno] = std::move(pg);
    dirty_.clear();
    originals_.clear();
    filePages_ = txPages_;
    fileSize_ = std::max(fileSize_, uint64_t(txPages_) * kPageSize);
    endWrite();
}

void Pager::rollback() {
    if (depth_ == 0) return;
    bool changed = !dirty_.empty() || txPages_ != filePages_;
    depth_ = 0;
    dirty_.clear();
    originals_.clear();
    txPages_ = filePages_;
    if (changed) ++generation_;
    endWrite();
}

// ---- row locks ----

bool Pager::lockRow(uint32_t pgno, uint16_t row) {
    if (mode_ != Mode::ReadWrite) fail(ErrorKind::ReadOnly, path_, "the file is open for reading only");
    return file_->lock(kRowLockBase + (uint64_t(pgno) << 16) + row, 1, File::Lock::Exclusive, false);
}

void Pager::unlockRow(uint32_t pgno, uint16_t row) {
    file_->unlock(kRowLockBase + (uint64_t(pgno) << 16) + row, 1);
}

}  // namespace jet
