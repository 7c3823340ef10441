// Operating-system calls, in one place: positioned reads and writes, sync, byte-range locks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace jet {

class File {
public:
    enum class Open { ReadOnly, ReadWrite, CreateNew, CreateOrTruncate };
    static std::unique_ptr<File> open(const std::string& path, Open how);
    static bool exists(const std::string& path);
    static void remove(const std::string& path);  // no error when absent
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

    const std::string& path() const { return path_; }

private:
    File(std::string path, int fd) : path_(std::move(path)), fd_(fd) {}
    std::string path_;
    int fd_;
};

}  // namespace jet
