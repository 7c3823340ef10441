// The pager: every page of a database file passes through here. It owns the page cache, the
// write transaction with its rollback journal, and the locks that let several processes share one
// file. Layers above never touch the file directly.
//
//   file:     | page 0 (header) | page 1 | page 2 | ... |      4096 bytes each
//   journal:  FILE-journal beside the file while a commit is under way (see journal.h)
//   counter:  FILE.klk beside the file: a commit counter, bumped by every commit, so that other
//             processes know their cached pages are stale
#pragma once

#include <array>
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

    // Outside a transaction: drops the cached pages when another process committed since the last
    // look. Cheap when nothing changed (one small read).
    void refresh();

    // The write transaction. begin() waits for the file's write lock; nested begin() calls nest
    // and only the outermost commit() writes. rollback() drops every change of the transaction.
    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return depth_ > 0; }

    // A writable copy of a page inside the transaction; valid until commit() or rollback().
    uint8_t* modify(uint32_t pgno);
    // A new zero-filled page at the end of the file, inside the transaction; returns its number.
    uint32_t append();

    // Record locks for editing a row, held until unlockRow() or the pager closes. Returns false when
    // another process holds the row.
    bool lockRow(uint32_t pgno, uint16_t row);
    void unlockRow(uint32_t pgno, uint16_t row);

    // Cache statistics, for tests that prove a scan reads each page once.
    uint64_t pageReads() const { return reads_; }

private:
    Pager(std::string path, Mode mode);

    std::string path_;
    Mode mode_;
    std::unique_ptr<File> file_;
    uint32_t filePages_ = 0;  // pages in the file on disk
    std::unordered_map<uint32_t, std::shared_ptr<Page>> cache_;
    std::unordered_map<uint32_t, std::shared_ptr<Page>> dirty_;  // the transaction's copies
    uint32_t txPages_ = 0;  // page count inside the transaction
    int depth_ = 0;
    uint64_t reads_ = 0;
    uint64_t seenCounter_ = 0;
};

}  // namespace jet
