#include "error.h"

namespace jet {

void fail(ErrorKind kind, const std::string& file, const std::string& cause) {
    throw JetError(kind, file + ": " + cause);
}

}  // namespace jet
