#include "os.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "error.h"

namespace jet {

namespace {
[[noreturn]] void ioFail(const std::string& path, const char* what) {
    fail(ErrorKind::Io, path, std::string(what) + ": " + std::strerror(errno));
}
}  // namespace

std::unique_ptr<File> File::open(const std::string& path, Open how) {
    int flags = O_CLOEXEC;
    switch (how) {
        case Open::ReadOnly: flags |= O_RDONLY; break;
        case Open::ReadWrite: flags |= O_RDWR; break;
        case Open::CreateNew: flags |= O_RDWR | O_CREAT | O_EXCL; break;
        case Open::CreateOrTruncate: flags |= O_RDWR | O_CREAT | O_TRUNC; break;
    }
    int fd = ::open(path.c_str(), flags, 0644);
    if (fd < 0) ioFail(path, how == Open::CreateNew ? "cannot create" : "cannot open");
    struct stat st{};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        fail(ErrorKind::Io, path, "is a folder, not a file");
    }
    return std::unique_ptr<File>(new File(path, fd));
}

bool File::exists(const std::string& path) {
    struct stat st{};
    return ::stat(path.c_str(), &st) == 0;
}

void File::remove(const std::string& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) ioFail(path, "cannot remove");
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
    if (::ftruncate(fd_, static_cast<off_t>(size)) != 0) ioFail(path_, "truncate failed");
}

void File::sync() {
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

}  // namespace jet
