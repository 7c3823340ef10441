// The kerova command: the program (no arguments, or `demo [DIR]`), the company tools (init, check,
// sql, demo-data), the engine tools (`kerova jet ...`) and the benchmarks.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <cstring>
#include <cstdio>
#include <filesystem>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/bench.h"
#include "cli/company_tools.h"
#include "cli/jet_tool.h"
#include "app/app.h"
#include "company/demo.h"
#include "db/database.h"
#include "forms/dialogs.h"
#include "forms/form.h"
#include "forms/runtime.h"

namespace {

// Peak resident memory of this process in KiB (VmHWM).
long peakRssKb() {
    std::FILE* f = std::fopen("/proc/self/status", "r");
    if (!f) return -1;
    char line[256];
    long kb = -1;
    while (std::fgets(line, sizeof line, f))
        if (std::strncmp(line, "VmHWM:", 6) == 0) kb = std::atol(line + 6);
    std::fclose(f);
    return kb;
}

// Lets the windows be exposed and painted, as they are before the user's next click.
void settle() {
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QThread::msleep(10);
    }
}

// Under `kerova bench-start`: messages are answered at once; once the main form is up the program
// says "shown", lets it paint, opens the vehicle form from its menu as the user does, reports its
// peak memory once that form has painted, and ends.
void benchStartHooks() {
    forms::setDialogs(std::make_unique<forms::ScriptedDialogs>());
    QTimer::singleShot(0, [] {
        std::printf("shown\n");
        std::fflush(stdout);
        settle();
        std::printf("rss-main %ld\n", peakRssKb());
        std::fflush(stdout);
        QTimer::singleShot(0, [] {  // runs inside the vehicle form's modal loop
            settle();
            std::printf("rss %ld\n", peakRssKb());
            std::fflush(stdout);
            std::_Exit(0);
        });
        if (auto* entry = forms::get("KerovaX").findChild<QAction*>("Gepkocsik")) entry->trigger();
        std::_Exit(1);  // the vehicle form did not open
    });
}

// Under `kerova bench-start` with KEROVA_BENCH_START=bare: the toolkit alone, a window of the
// vehicle form's size with a menu bar and an empty table, to show what Qt itself holds.
int bareWindow() {
    QMainWindow window;
    window.menuBar()->addMenu("Törzsek")->addAction("Járművek");
    window.setCentralWidget(new QTableView);
    window.resize(1340, 760);
    window.show();
    QTimer::singleShot(0, [] {
        std::printf("shown\n");
        std::fflush(stdout);
        settle();
        std::printf("rss %ld\n", peakRssKb());
        std::fflush(stdout);
        std::_Exit(0);
    });
    return QApplication::exec();
}

int startProgram(int argc, char** argv) {
    QApplication application(argc, argv);
    if (const char* bench = std::getenv("KEROVA_BENCH_START"); bench && std::strcmp(bench, "bare") == 0)
        return bareWindow();
    db::setWorkingFolder(std::filesystem::current_path());
    if (std::getenv("KEROVA_BENCH_START")) benchStartHooks();
    return app::run(application);
}

// `kerova demo [DIR]`: the demo company (made when the folder has none yet), then the program there.
int demo(int argc, char** argv, const std::vector<std::string>& rest) {
    std::filesystem::path dir = rest.empty() ? "demo" : rest[0];
    std::error_code ec;
    try {
        company::createDemo(dir);  // leaves a folder that has a company already as it is
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kerova demo: %s\n", e.what());
        return 1;
    }
    std::filesystem::current_path(dir, ec);
    if (ec) {
        std::fprintf(stderr, "kerova demo: %s: %s\n", dir.string().c_str(), ec.message().c_str());
        return 1;
    }
    return startProgram(1, argv);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return startProgram(argc, argv);
    const std::string& command = args[0];
    std::vector<std::string> rest(args.begin() + 1, args.end());
    if (command == "demo") return demo(argc, argv, rest);
    if (command == "jet") return kerova::jetTool(rest);
    if (command == "init") return kerova::initTool(rest);
    if (command == "check") return kerova::checkTool(rest);
    if (command == "sql") return kerova::sqlTool(rest);
    if (command == "demo-data") return kerova::demoDataTool(rest);
    if (command == "bench-engine" || command == "bench-records" || command == "bench-start") {
        std::string dir = rest.size() > 0 ? rest[0] : "bench";
        int rows = rest.size() > 1 ? std::atoi(rest[1].c_str()) : 200000;
        if (rows < 1) {
            std::fprintf(stderr, "kerova %s: ROWS must be a positive number\n", command.c_str());
            return 2;
        }
        if (command == "bench-start") return kerova::benchStart(dir, rows);
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
