#include "vb/error.h"

namespace vb {

VbError::VbError(int number) : VbError(number, describe(number)) {}

std::string describe(int number) {
    switch (number) {
    case 0: return "";
    case 3: return "Return without GoSub";
    case 5: return "Invalid procedure call or argument";
    case 6: return "Overflow";
    case 7: return "Out of memory";
    case 9: return "Subscript out of range";
    case 11: return "Division by zero";
    case 13: return "Type mismatch";
    case 52: return "Bad file name or number";
    case 53: return "File not found";
    case 91: return "Object variable or With block variable not set";
    case 94: return "Invalid use of Null";
    default: return "Application-defined or object-defined error";
    }
}

}  // namespace vb
