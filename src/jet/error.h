// Errors of the engine. Every failure that a caller can see is a JetError: one line naming the
// file and the cause. Nothing in the engine aborts or lets a system error escape as something else.
#pragma once

#include <stdexcept>
#include <string>

namespace jet {

enum class ErrorKind {
    Io,             // the operating system refused a read, write, lock or sync
    NotJet4,        // not an Access 2000 file (Jet 3, Access 2007+, text, empty ...)
    Encrypted,      // the file is encrypted or password-protected in a way we do not read
    Corrupt,        // a page or structure contradicts the format (truncated, broken page)
    NoSuchTable,
    NoSuchColumn,
    NoSuchIndex,
    NoSuchRow,      // a row id that points at a deleted or absent row
    Duplicate,      // a unique index refuses a key that is already there
    SortOrder,      // a text key would have to be encoded in a sort order we do not write
    Locked,         // another process holds the row or the file
    ReadOnly,       // a write on a file opened for reading
    Invalid,        // a value does not fit its column, a bad argument
    Unsupported,    // a valid file feature this engine does not write
};

class JetError : public std::runtime_error {
public:
    JetError(ErrorKind kind, const std::string& message) : std::runtime_error(message), kind_(kind) {}
    ErrorKind kind() const { return kind_; }

private:
    ErrorKind kind_;
};

// "FILE: cause" — the one form every message takes.
[[noreturn]] void fail(ErrorKind kind, const std::string& file, const std::string& cause);

}  // namespace jet
