// `kerova init [--sibling] DIR`, `kerova check [--sibling] DIR`, `kerova sql FILE "statement"`
// and `kerova demo-data DIR`. Paths in messages are absolute, as the user gave them otherwise.
#include "cli/company_tools.h"

#include <cstdio>
#include <exception>
#include <filesystem>

#include "company/demo.h"
#include "company/folder.h"

namespace kerova {

namespace fs = std::filesystem;

namespace {

void line(FILE* to, const std::string& s) {
    std::fwrite(s.data(), 1, s.size(), to);
    std::fputc('\n', to);
}

// The absolute form of a path as the user wrote it: relative to the current directory, with
// empty elements (doubled or trailing slashes) dropped and nothing else resolved.
fs::path absolute(const std::string& arg) {
    fs::path a = fs::absolute(fs::path(arg));
    fs::path out = a.root_path();
    for (const auto& part : a.relative_path())
        if (!part.empty()) out /= part;
    return out;
}

// "[--sibling] DIR": false when the arguments don't have that form.
bool dirArgs(const std::vector<std::string>& args, bool& sibling, std::string& dir) {
    sibling = !args.empty() && args[0] == "--sibling";
    size_t dirArg = sibling ? 1 : 0;
    if (args.size() != dirArg + 1) return false;
    dir = args[dirArg];
    return true;
}

}  // namespace

void printUsage(bool toError) {
    FILE* to = toError ? stderr : stdout;
    line(to, "Használat:");
    line(to, "  kerova                      a program az aktuális könyvtár cégadataival");
    line(to, "  kerova demo [KÖNYVTÁR]      mintacég (ha nincs), majd a program benne");
    line(to, "  kerova demo-data KÖNYVTÁR   mintacég létrehozása (ha nincs)");
    line(to, "  kerova init [--sibling] KÖNYVTÁR   adatbázisok létrehozása");
    line(to, "  kerova check KÖNYVTÁR       hiányzó állományok, táblák, oszlopok listája");
    line(to, "  kerova sql ÁLLOMÁNY \"utasítás\"   egy SQL utasítás, eredmény TSV-ben");
    line(to, "  kerova jet tables|schema|export|dump|check ÁLLOMÁNY [TÁBLA]");
    line(to, "  kerova bench-engine|bench-records|bench-start [KÖNYVTÁR] [SOROK]");
}

int initTool(const std::vector<std::string>& args) {
    bool sibling;
    std::string arg;
    if (!dirArgs(args, sibling, arg)) {
        line(stderr, "használat: kerova init [--sibling] KÖNYVTÁR");
        return 2;
    }
    try {
        fs::path dir = absolute(arg);
        std::vector<std::string> made = company::init(dir, sibling);
        for (const auto& f : made) line(stdout, "létrehozva: " + (dir / f).string());
        if (made.empty()) line(stdout, "minden adatbázis megvan: " + dir.string());
        return 0;
    } catch (const std::exception& e) {
        std::fflush(stdout);
        line(stderr, std::string("hiba: ") + e.what());
        return 1;
    }
}

int checkTool(const std::vector<std::string>& args) {
    bool sibling;
    std::string arg;
    if (!dirArgs(args, sibling, arg)) {
        line(stderr, "használat: kerova check [--sibling] KÖNYVTÁR");
        return 2;
    }
    try {
        fs::path dir = absolute(arg);
        std::error_code ec;
        if (!fs::is_directory(dir, ec)) {
            line(stderr, "nincs ilyen könyvtár: " + dir.string());
            return 1;
        }
        std::vector<std::string> problems = company::check(dir, sibling);
        for (const auto& p : problems) line(stdout, p);
        if (problems.empty()) {
            line(stdout, "rendben: " + dir.string());
            return 0;
        }
        return 1;
    } catch (const std::exception& e) {
        std::fflush(stdout);
        line(stderr, std::string("hiba: ") + e.what());
        return 1;
    }
}

int demoDataTool(const std::vector<std::string>& args) {
    if (args.size() != 1) {
        line(stderr, "használat: kerova demo-data KÖNYVTÁR");
        return 2;
    }
    try {
        fs::path dir = absolute(args[0]);
        company::DemoResult r = company::createDemo(dir);
        for (const auto& w : r.warnings) line(stderr, "DemoCompany: " + w);
        line(stdout, "mintacég: " + dir.string());
        return 0;
    } catch (const std::exception& e) {
        std::fflush(stdout);
        line(stderr, std::string("hiba: ") + e.what());
        return 1;
    }
}

}  // namespace kerova
