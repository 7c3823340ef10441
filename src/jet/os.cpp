// Operating-system calls (POSIX): positioned reads and writes, sync, and fcntl byte-range locks.
// Locks are open-file-description locks (F_OFD_*): they belong to one open of the file, not to the
// process, so two Pagers in one process exclude each other exactly as two processes do, and closing
// one Pager's file never drops the locks of another.
#include "os.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "error.h"

namespace jet {

namespace {

[[noreturn]] void ioFail(const std::string& path, const std::string& what, int err) {
    fail(ErrorKind::Io, path, what + ": " + std::strerror(err));
}
[[noreturn]] void ioFail(const std::string& path, const std::string& what) { ioFail(path, what, errno); }

std::atomic<long> ioBudget{-1};  // writes left before the injected failure; negative: none
std::atomic<long> writeDelay{0};  // microseconds

// True when the test hook says this write/sync/truncate is to fail.
bool injectedFailure() {
    long left = ioBudget.load();
    while (left >= 0) {
        if (left == 0) return true;
        if (ioBudget.compare_exchange_weak(left, left - 1)) return false;
    }
    return false;
}

}  // namespace

void injectIoFailureAfter(long n) { ioBudget.store(n < 0 ? -1 : n); }
void injectWriteDelay(long microseconds) { writeDelay.store(microseconds); }

std::unique_ptr<File> File::open(const std::string& path, Open how) {
    int flags = O_CLOEXEC;
    switch (how) {
        case Open::ReadOnly: flags |= O_RDONLY; break;
        case Open::ReadWrite: flags |= O_RDWR; break;
        case Open::CreateNew: flags |= O_RDWR | O_CREAT | O_EXCL; break;
        case Open::CreateOrTruncate: flags |= O_RDWR | O_CREAT | O_TRUNC; break;
        case Open::OpenOrCreate: flags |= O_RDWR | O_CREAT; break;
    }
    int fd = ::open(path.c_str(), flags, 0644);
    if (fd < 0) {
        int err = errno;
        if (how == Open::ReadWrite && (err == EACCES || err == EROFS || err == EPERM))
            ioFail(path, "the file is read-only, it cannot be opened for writing", err);
        ioFail(path, how == Open::CreateNew ? "cannot create" : "cannot open", err);
    }
    struct stat st{};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        fail(ErrorKind::Io, path, "is a folder, not a file");
    }
    return std::unique_ptr<File>(new File(path, fd));
}

std::unique_ptr<File> File::openIfExists(const std::string& path, Open how) {
    if (!exists(path)) return nullptr;
    try {
        return open(path, how);
    } catch (const JetError&) {
        if (!exists(path)) return nullptr;  // removed in between
        throw;
    }
}

bool File::exists(const std::string& path) {
    struct stat st{};
    return ::stat(path.c_str(), &st) == 0;
}

void File::remove(const std::string& path) {
    if (injectedFailure()) ioFail(path, "cannot remove", EIO);
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) ioFail(path, "cannot remove");
}

void File::syncFolderOf(const std::string& path) {
    auto slash = path.find_last_of('/');
    std::string folder = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) ioFail(folder, "cannot open the folder");
    int rc = injectedFailure() ? (errno = EIO, -1) : ::fsync(fd);
    int err = errno;
    ::close(fd);
    // Some file systems do not sync folders; that is not an error worth failing a commit for.
    if (rc != 0 && err != EINVAL && err != EROFS) ioFail(folder, "folder sync failed", err);
}

File::~File() { ::close(fd_); }

uint64_t File::size() const {
    struct stat st{};
    if (::fstat(fd_, &st) != 0) ioFail(path_, "cannot stat");
    return static_cast<uint64_t>(st.st_size);
}

size_t File::readAt(uint64_t off, void* buf, size_t n) const {
    size_t done = 0;
    while (done < n) {
        ssize_t r = ::pread(fd_, static_cast<char*>(buf) + done, n - done, static_cast<off_t>(off + done));
        if (r < 0) {
            if (errno == EINTR) continue;
            ioFail(path_, "read failed");
        }
        if (r == 0) break;
        done += static_cast<size_t>(r);
    }
    return done;
}

void File::writeAt(uint64_t off, const void* buf, size_t n) {
    if (injectedFailure()) ioFail(path_, "write failed", EIO);
    if (long us = writeDelay.load()) ::usleep(static_cast<useconds_t>(us));
    size_t done = 0;
    while (done < n) {
        ssize_t r = ::pwrite(fd_, static_cast<const char*>(buf) + done, n - done, static_cast<off_t>(off + done));
        if (r < 0) {
            if (errno == EINTR) continue;
            ioFail(path_, "write failed");
        }
        done += static_cast<size_t>(r);
    }
}

void File::truncate(uint64_t size) {
    if (injectedFailure()) ioFail(path_, "truncate failed", EIO);
    if (::ftruncate(fd_, static_cast<off_t>(size)) != 0) ioFail(path_, "truncate failed");
}

void File::sync() {
    if (injectedFailure()) ioFail(path_, "sync failed", EIO);
    if (::fsync(fd_) != 0) ioFail(path_, "sync failed");
}

bool File::lock(uint64_t off, uint64_t len, Lock kind, bool wait) {
    struct flock fl{};
    fl.l_type = kind == Lock::Shared ? F_RDLCK : F_WRLCK;
    fl.l_whence = SEEK_SET;
    fl.l_start = static_cast<off_t>(off);
    fl.l_len = static_cast<off_t>(len);
    for (;;) {
        if (::fcntl(fd_, wait ? F_OFD_SETLKW : F_OFD_SETLK, &fl) == 0) return true;
        if (errno == EINTR) continue;
        if (!wait && (errno == EAGAIN || errno == EACCES)) return false;
        ioFail(path_, "lock failed");
    }
}

void File::unlock(uint64_t off, uint64_t len) {
    struct flock fl{};
    fl.l_type = F_UNLCK;
    fl.l_whence = SEEK_SET;
    fl.l_start = static_cast<off_t>(off);
    fl.l_len = static_cast<off_t>(len);
    ::fcntl(fd_, F_OFD_SETLK, &fl);
}

bool File::lockedByOthers(uint64_t off, uint64_t len, Lock kind) const {
    struct flock fl{};
    fl.l_type = kind == Lock::Shared ? F_RDLCK : F_WRLCK;
    fl.l_whence = SEEK_SET;
    fl.l_start = static_cast<off_t>(off);
    fl.l_len = static_cast<off_t>(len);
    if (::fcntl(fd_, F_OFD_GETLK, &fl) != 0) ioFail(path_, "lock query failed");
    return fl.l_type != F_UNLCK;
}

}  // namespace jet
