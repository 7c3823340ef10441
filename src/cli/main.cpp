// The kerova command: the company tools (init, check, sql, demo-data), the engine tools
// (`kerova jet ...`) and the engine benchmark.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/bench.h"
#include "cli/company_tools.h"
#include "cli/jet_tool.h"

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) {
        std::fputs("A program ablakai még nem készültek el.\n", stderr);
        return 1;
    }
    const std::string& command = args[0];
    std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "jet") return kerova::jetTool(rest);
    if (command == "init") return kerova::initTool(rest);
    if (command == "check") return kerova::checkTool(rest);
    if (command == "sql") return kerova::sqlTool(rest);
    if (command == "demo-data") return kerova::demoDataTool(rest);
    if (command == "bench-engine" || command == "bench-records") {
        std::string dir = rest.size() > 0 ? rest[0] : "bench";
        int rows = rest.size() > 1 ? std::atoi(rest[1].c_str()) : 200000;
        if (rows < 1) {
            std::fprintf(stderr, "kerova %s: ROWS must be a positive number\n", command.c_str());
            return 2;
        }
        return command == "bench-engine" ? kerova::benchEngine(dir, rows) : kerova::benchRecords(dir, rows);
    }
    if (command == "-h" || command == "--help" || command == "help") {
        kerova::printUsage(false);
        return 0;
    }
    std::fprintf(stderr, "ismeretlen parancs: %s\n", command.c_str());
    kerova::printUsage(true);
    return 2;
}
