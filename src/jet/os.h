// Operating-system calls, in one place: positioned reads and writes, sync, byte-range locks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace jet {

class File {
public:
    // OpenOrCreate keeps an existing file's content. A read-only file opened for writing fails with
    // an Io error saying so.
    enum class Open { ReadOnly, ReadWrite, CreateNew, CreateOrTruncate, OpenOrCreate };
    static std::unique_ptr<File> open(const std::string& path, Open how);
    // nullptr when the file does not exist (other failures still throw).
    static std::unique_ptr<File> openIfExists(const std::string& path, Open how);
    static bool exists(const std::string& path);
    static void remove(const std::string& path);  // no error when absent
    // Makes the folder entries of the folder holding `path` durable (a created or removed file).
    static void syncFolderOf(const std::string& path);
    ~File();

    uint64_t size() const;
    // Reads exactly n bytes at off; returns the count actually read (short only at the end of file).
    size_t readAt(uint64_t off, void* buf, size_t n) const;
    void writeAt(uint64_t off, const void* buf, size_t n);
    void truncate(uint64_t size);
    void sync();

    // Byte-range locks, per open file (not per process), so that two Pagers in one process
    // exclude each other as two processes do. wait=false returns false when the range is held.
    enum class Lock { Shared, Exclusive };
    bool lock(uint64_t off, uint64_t len, Lock kind, bool wait);
    void unlock(uint64_t off, uint64_t len);
    // True when another open file holds a lock that conflicts with `kind` on the range.
    bool lockedByOthers(uint64_t off, uint64_t len, Lock kind) const;

    const std::string& path() const { return path_; }

private:
    File(std::string path, int fd) : path_(std::move(path)), fd_(fd) {}
    std::string path_;
    int fd_;
};

// Test hook, process-wide: after `n` more writes, syncs and truncations succeed, every further one
// fails with an I/O error (as a failing disk would) until called again with a negative n.
void injectIoFailureAfter(long n);
// Test hook, process-wide: every write first sleeps this long, widening the moments a crash test
// aims its kills at. Zero turns it off.
void injectWriteDelay(long microseconds);

}  // namespace jet
