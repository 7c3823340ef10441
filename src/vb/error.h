// Run-time errors with numbers, as VB's Err.Number sees them.
#pragma once

#include <stdexcept>
#include <string>

namespace vb {

// Every error a handler can resume carries a number: VB's own run-time errors (VbError) and the
// record layer's DAO errors (db::DaoError derives from this too).
class NumberedError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    virtual int number() const = 0;
};

// VB's run-time error numbers used here.
enum ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    DivisionByZero = 11,
    TypeMismatch = 13,
    InvalidUseOfNull = 94,
};

// A VB run-time error: the number and VB's (English) description.
struct VbError : NumberedError {
    int num;
    VbError(int number, const std::string& description) : NumberedError(description), num(number) {}
    explicit VbError(int number);  // with VB's description of the number
    int number() const override { return num; }
};

// VB's description of a run-time error number ("Overflow", "Type mismatch", ...).
std::string describe(int number);

// The number of a caught exception: its own for a NumberedError, else 0.
inline int numberOf(const std::exception& e) {
    auto* n = dynamic_cast<const NumberedError*>(&e);
    return n ? n->number() : 0;
}

}  // namespace vb
