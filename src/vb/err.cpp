#include "vb/err.h"

namespace vb {

ErrObject Err;

void ErrObject::Raise(int number, const std::string& description) {
    set(number, description.empty() ? describe(number) : description);
    throw VbError(number_, description_);
}

}  // namespace vb
