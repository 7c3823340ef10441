// The pager: every page of a database file passes through here. It owns the page cache, the
// write transaction with its rollback journal, and the locks that let several processes share one
// file. Layers above never touch the file directly.
//
//   file:     | page 0 (header) | page 1 | page 2 | ... |      4096 bytes each
//   journal:  FILE-journal beside the file while a commit is under way (see journal.h)
//   counter:  FILE.klk beside the file: a commit counter (its first 8 bytes, little-endian; the rest
//             of the file is left alone), bumped by every commit, so that other processes know
//             their cached pages are stale
//   locks:    byte ranges of the database file far past its end (layout in pager.cpp)
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

namespace jet {

constexpr uint32_t kPageSize = 4096;

struct Page {
    std::array<uint8_t, kPageSize> bytes;
    const uint8_t* data() const { return bytes.data(); }
    uint8_t* data() { return bytes.data(); }
};

// A read view of a page. It stays valid (and unchanged) for as long as it is held, even when the
// page is changed or evicted later: a writer works on its own copy.
using PageRef = std::shared_ptr<const Page>;

class File;

class Pager {
public:
    enum class Mode { ReadOnly, ReadWrite };

    // Opens an existing file. A journal left by a crashed writer is rolled back first (which needs
    // write access to the file; a read-only open of a file with a hot journal fails with Locked).
    static std::unique_ptr<Pager> open(const std::string& path, Mode mode);
    // Creates a new, empty file (no pages); fails when the file exists.
    static std::unique_ptr<Pager> create(const std::string& path);
    ~Pager();

    const std::string& path() const { return path_; }
    bool writable() const { return mode_ == Mode::ReadWrite; }
    uint32_t pageCount() const;

    // Reads a page (from the cache, or the transaction's own copy inside a transaction).
    // A page number past the end of the file fails with Corrupt.
    PageRef page(uint32_t pgno);

    // Reads into the cache, a run of neighbouring pages per system call, those of `pages` (in any
    // order) that are not cached yet; pages past the end are left to page() to refuse. A scan
    // calls it ahead of the pages it is about to visit.
    void preload(const uint32_t* pages, size_t n);

    // Outside a transaction: drops the cached pages when another process committed since the last
    // look (or the file's size changed). Cheap when nothing changed (one small read and a stat).
    void refresh();
    // Increases whenever pages that callers may have read were discarded: the cache dropped by
    // refresh(), begin() or the recovery of a crashed writer's journal, or a rollback() of a
    // transaction that had changed pages. Whoever keeps state parsed from pages (table
    // definitions) compares it with the value it read them at.
    uint64_t generation() const { return generation_; }

    // One read operation: holds the file's shared lock (so no other process's commit lands in the
    // middle of it) and refreshes the cache on entry. Nests. Without it, a page missing from the
    // cache is read under the shared lock for just that read. A cached page never takes a lock.
    void beginRead();
    void endRead();
    class ReadLock {
    public:
        explicit ReadLock(Pager& p) : p_(p) { p_.beginRead(); }
        ~ReadLock() { p_.endRead(); }
        ReadLock(const ReadLock&) = delete;
        ReadLock& operator=(const ReadLock&) = delete;

    private:
        Pager& p_;
    };

    // The write transaction. begin() waits for the file's write lock (one writer at a time) and
    // refreshes the cache; nested begin() calls nest and only the outermost commit() writes.
    // rollback() drops every change of the transaction; the cache stays valid. A commit that fails
    // (Locked: readers did not let go within the busy timeout; Io) leaves the file as it was and
    // the transaction rolled back; a journal it could not undo is recovered by the next opener.
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return depth_ > 0; }

    // How long a commit waits for readers to finish, and a reader for a commit (Locked after).
    void setBusyTimeout(std::chrono::milliseconds t) { busyTimeout_ = t; }

    // A writable copy of a page inside the transaction; valid until commit() or rollback().
    uint8_t* modify(uint32_t pgno);
    // A new zero-filled page at the end of the file, inside the transaction; returns its number.
    uint32_t append();

    // Record locks for editing a row, held until unlockRow() or the pager closes. Returns false when
    // another process (or another Pager on the file) holds the row. Needs a writable pager.
    bool lockRow(uint32_t pgno, uint16_t row);
    void unlockRow(uint32_t pgno, uint16_t row);

    // Cache statistics, for tests that prove a scan reads each page once.
    uint64_t pageReads() const { return reads_; }

private:
    Pager(std::string path, Mode mode);

    PageRef readPage(uint32_t pgno);
    void lockShared();
    void unlockShared();
    void lockReserved();
    void lockExclusive();
    void unlockExclusive();
    void endWrite();
    bool journalIsHot();
    void recoverJournal();
    uint64_t readCounter();
    void bumpCounter();
    void syncWithFile();
    void dropCache();

    std::string path_;
    std::string journal_;
    Mode mode_;
    std::unique_ptr<File> file_;
    std::unique_ptr<File> counter_;  // FILE.klk; null while it does not exist (read-only opens)
    uint64_t fileSize_ = 0;   // bytes of the file on disk, as last seen
    uint32_t filePages_ = 0;  // pages in the file on disk
    std::unordered_map<uint32_t, std::shared_ptr<Page>> cache_;
    std::unordered_map<uint32_t, std::shared_ptr<Page>> dirty_;  // the transaction's copies
    std::unordered_map<uint32_t, PageRef> originals_;            // their images before the transaction
    uint32_t txPages_ = 0;  // page count inside the transaction
    int depth_ = 0;
    int readDepth_ = 0;
    bool shared_ = false, reserved_ = false, exclusive_ = false;  // locks held
    std::chrono::milliseconds busyTimeout_{5000};
    uint64_t reads_ = 0;
    uint64_t seenCounter_ = 0;
    uint64_t generation_ = 0;
};

}  // namespace jet
