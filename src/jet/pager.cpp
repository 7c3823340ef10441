#include "pager.h"

#include "error.h"
#include "os.h"

namespace jet {

// First version: a page cache and a transaction that writes its pages at commit. The rollback
// journal and the cross-process locks come in journal.cpp and replace the marked places.

Pager::Pager(std::string path, Mode mode) : path_(std::move(path)), mode_(mode) {}
Pager::~Pager() = default;

std::unique_ptr<Pager> Pager::open(const std::string& path, Mode mode) {
    std::unique_ptr<Pager> p(new Pager(path, mode));
    p->file_ = File::open(path, mode == Mode::ReadOnly ? File::Open::ReadOnly : File::Open::ReadWrite);
    uint64_t size = p->file_->size();
    p->filePages_ = static_cast<uint32_t>(size / kPageSize);
    return p;
}

std::unique_ptr<Pager> Pager::create(const std::string& path) {
    std::unique_ptr<Pager> p(new Pager(path, Mode::ReadWrite));
    p->file_ = File::open(path, File::Open::CreateNew);
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
    if (pgno >= filePages_) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is past the end of the file");
    auto pg = std::make_shared<Page>();
    size_t n = file_->readAt(uint64_t(pgno) * kPageSize, pg->data(), kPageSize);
    ++reads_;
    if (n != kPageSize) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is truncated");
    cache_.emplace(pgno, pg);
    return pg;
}

void Pager::refresh() {}

void Pager::begin() {
    if (mode_ != Mode::ReadWrite) fail(ErrorKind::ReadOnly, path_, "the file is open for reading only");
    if (depth_++ == 0) txPages_ = filePages_;
}

uint8_t* Pager::modify(uint32_t pgno) {
    if (depth_ == 0) fail(ErrorKind::Invalid, path_, "page change outside a transaction");
    auto d = dirty_.find(pgno);
    if (d != dirty_.end()) return d->second->data();
    if (pgno >= txPages_) fail(ErrorKind::Corrupt, path_, "page " + std::to_string(pgno) + " is past the end of the file");
    auto copy = std::make_shared<Page>(*page(pgno));
    dirty_.emplace(pgno, copy);
    return copy->data();
}

uint32_t Pager::append() {
    if (depth_ == 0) fail(ErrorKind::Invalid, path_, "page append outside a transaction");
    uint32_t pgno = txPages_++;
    auto pg = std::make_shared<Page>();
    pg->bytes.fill(0);
    dirty_.emplace(pgno, pg);
    return pgno;
}

void Pager::commit() {
    if (depth_ == 0) return;
    if (--depth_ > 0) return;
    for (auto& [pgno, pg] : dirty_) file_->writeAt(uint64_t(pgno) * kPageSize, pg->data(), kPageSize);
    file_->sync();
    for (auto& [pgno, pg] : dirty_) cache_[pgno] = pg;
    dirty_.clear();
    filePages_ = txPages_;
}

void Pager::rollback() {
    depth_ = 0;
    dirty_.clear();
    txPages_ = filePages_;
}

bool Pager::lockRow(uint32_t, uint16_t) { return true; }
void Pager::unlockRow(uint32_t, uint16_t) {}

}  // namespace jet
