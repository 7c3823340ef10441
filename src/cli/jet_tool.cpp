#include "cli/jet_tool.h"

#include <cstdio>

namespace kerova {

int jetTool(const std::vector<std::string>& args) {
    std::fprintf(stderr, "kerova jet: not built yet\n");
    return 2;
}

}  // namespace kerova
