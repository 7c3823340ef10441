// The kerova command: the engine tools (`kerova jet ...`) and the engine benchmark.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/bench.h"
#include "cli/jet_tool.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "jet") return kerova::jetTool({args.begin() + 1, args.end()});
    if (!args.empty() && args[0] == "bench-engine") {
        std::string dir = args.size() > 1 ? args[1] : "bench";
        int rows = args.size() > 2 ? std::atoi(args[2].c_str()) : 200000;
        if (rows < 1) {
            std::fprintf(stderr, "kerova bench-engine: ROWS must be a positive number\n");
            return 2;
        }
        return kerova::benchEngine(dir, rows);
    }
    std::fprintf(stderr, "usage: kerova jet tables|schema|export|dump|check FILE [TABLE]\n"
                         "       kerova bench-engine [DIR] [ROWS]\n");
    return 2;
}
