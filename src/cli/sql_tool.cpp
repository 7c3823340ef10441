// `kerova sql FILE "statement"`: one statement of the program's SQL on a file, through the record
// layer. A SELECT prints TSV (a header line, then a line a row, values as the program shows them);
// an UPDATE prints the number of rows it changed. A failing statement prints one line with its
// error number and changes nothing.
#include <cstdio>
#include <string>
#include <vector>

#include "cli/company_tools.h"

namespace kerova {

int sqlTool(const std::vector<std::string>& args) {
    if (args.size() != 2) {
        std::fputs("használat: kerova sql ÁLLOMÁNY \"utasítás\"\n", stderr);
        return 2;
    }
    std::fputs("hiba: a kerova sql még nem használható\n", stderr);
    return 1;
}

}  // namespace kerova
