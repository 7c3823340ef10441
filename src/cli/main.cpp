// The kerova command: the engine tools for now (`kerova jet ...`).
#include <cstdio>
#include <string>
#include <vector>

#include "cli/jet_tool.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "jet") return kerova::jetTool({args.begin() + 1, args.end()});
    std::fprintf(stderr, "usage: kerova jet tables|schema|export|check FILE [TABLE]\n");
    return 2;
}
