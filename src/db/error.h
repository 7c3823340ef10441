// Errors of the record layer: a DAO error number and its message, as the handlers' "last error"
// sees them. Engine failures (jet::JetError) become DAO errors in one place: daoError().
#pragma once

#include <string>

#include "jet/error.h"

#include "vb/error.h"

namespace db {

// The DAO numbers this layer raises. No handler compares them; tests and messages do.
namespace dao {
inline constexpr int ReservedError = 3000;         // invalid statement kind
inline constexpr int NoEdit = 3020;                // Update without AddNew or Edit
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int DuplicateKey = 3022;
inline constexpr int FileNotFound = 3024;
inline constexpr int NotUpdatable = 3027;          // read-only file or snapshot
inline constexpr int NotValidPassword = 3031;      // encrypted file
inline constexpr int DiskError = 3043;             // the operating system refused
inline constexpr int InvalidPath = 3044;           // the folder does not exist
inline constexpr int CannotOpen = 3051;
inline constexpr int TooFewParameters = 3061;      // an unknown name in a statement
inline constexpr int CannotExecuteSelect = 3065;
inline constexpr int SyntaxError = 3075;           // in an expression or filter
inline constexpr int UnknownTable = 3078;
inline constexpr int SyntaxErrorFrom = 3131;
inline constexpr int NotAnIndex = 3015;
inline constexpr int InvalidBookmark = 3159;
inline constexpr int FieldTooSmall = 3163;
inline constexpr int FieldNotUpdatable = 3164;     // AutoNumber column assigned
inline constexpr int RecordDeleted = 3167;
inline constexpr int FileLocked = 3218;            // the file lock was not granted in time
inline constexpr int NotSupported = 3251;
inline constexpr int RecordLocked = 3260;
inline constexpr int UnknownField = 3265;          // Item not found in this collection
inline constexpr int UnrecognizedFormat = 3343;
inline constexpr int NumericOverflow = 3349;       // a Decimal beyond its precision
inline constexpr int ObjectClosed = 3420;
inline constexpr int DataTypeConversion = 3421;
inline constexpr int DataTypeMismatch = 3464;
}  // namespace dao

class DaoError : public vb::NumberedError {
public:
    DaoError(int number, const std::string& message) : vb::NumberedError(message), number_(number) {}
    int number() const override { return number_; }

private:
    int number_;
};

// The DAO error for an engine failure (the one place that maps them).
DaoError daoError(const jet::JetError& e);

// Runs f, turning an engine failure into its DAO error.
template <class F>
decltype(auto) translated(F&& f) {
    try {
        return f();
    } catch (const jet::JetError& e) {
        throw daoError(e);
    }
}

}  // namespace db
