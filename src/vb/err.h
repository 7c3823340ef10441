// VB's Err object and running code "with errors resumed" (VB's On Error Resume Next): a failing
// call records its number and description in Err and the handler goes on, testing Err.Number().
#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include "vb/error.h"

namespace vb {

class ErrObject {
public:
    int Number() const { return number_; }
    const std::string& Description() const { return description_; }
    void Clear() {
        number_ = 0;
        description_.clear();
    }
    // Records the error and throws it as a VbError; an empty description is VB's for the number.
    [[noreturn]] void Raise(int number, const std::string& description = {});
    // Records an error as if it had been raised and resumed.
    void set(int number, const std::string& description) {
        number_ = number;
        description_ = description;
    }
    void set(const NumberedError& e) { set(e.number(), e.what()); }

private:
    int number_ = 0;
    std::string description_;
};

// The program has one event thread, so one Err, as VB had.
extern ErrObject Err;

// Runs f with errors resumed: any NumberedError (VB's own or a DAO error) is recorded in Err
// instead of thrown. Returns whether f ran through. Other exceptions pass.
template <class F>
bool resume(F&& f) {
    try {
        std::forward<F>(f)();
        return true;
    } catch (const NumberedError& e) {
        Err.set(e);
        return false;
    }
}

// The same for a function with a result: on error the fallback comes back.
template <class F, class T>
T resume(F&& f, T fallback) {
    try {
        return static_cast<T>(std::forward<F>(f)());
    } catch (const NumberedError& e) {
        Err.set(e);
        return fallback;
    }
}

}  // namespace vb
