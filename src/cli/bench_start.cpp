// `kerova bench-start DIR ROWS`: the time from starting the program to its main form with the
// deadline reminders, and the peak memory after the vehicle form has opened, on the demo company
// and on the demo company grown to ROWS trips. Each run is a fresh process (on the X display when
// DISPLAY is set, as the user has it, else offscreen; message boxes answered at once); the best of
// three runs is shown.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "cli/bench.h"
#include "company/demo.h"

namespace kerova {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Run {
    double startMs = -1;
    long rssKb = -1;
};

// Starts the program in `folder` and reads its two report lines.
Run runOnce(const fs::path& folder, const char* platform, const char* mode) {
    int out[2];
    if (pipe(out) != 0) throw std::runtime_error("pipe");
    auto t0 = Clock::now();
    pid_t pid = fork();
    if (pid == 0) {
        dup2(out[1], 1);
        close(out[0]);
        close(out[1]);
        if (chdir(folder.c_str()) != 0) _exit(127);
        setenv("KEROVA_BENCH_START", mode, 1);
        setenv("QT_QPA_PLATFORM", platform, 1);
        execl("/proc/self/exe", "kerova", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    Run run;
    std::string buffer;
    char chunk[256];
    ssize_t n;
    while ((n = read(out[0], chunk, sizeof chunk)) > 0) {
        buffer.append(chunk, size_t(n));
        if (run.startMs < 0 && buffer.find("shown\n") != std::string::npos)
            run.startMs = std::chrono::duration<double, std::milli>(Clock::now() - t0).count();
    }
    close(out[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    auto at = buffer.find("rss ");
    if (at != std::string::npos) run.rssKb = std::atol(buffer.c_str() + at + 4);
    return run;
}

}  // namespace

int benchStart(const std::string& dirName, int rows) {
    fs::path dir = fs::absolute(dirName);
    fs::path small = dir / "start-demo", large = dir / ("start-" + std::to_string(rows));
    try {
        company::createDemo(small);
        if (company::createDemo(large).created) company::growTrips(large / "Kerova.dsb", rows);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kerova bench-start: %s\n", e.what());
        return 1;
    }
    const char* platform = std::getenv("DISPLAY") ? "xcb" : "offscreen";
    std::printf("Qt platform: %s\n\n", platform);
    std::printf("| company | start to main form (ms) | peak RSS after the vehicle form (MiB) |\n|---|---:|---:|\n");
    // The last row is the toolkit alone: a bare window of the vehicle form's size with a menu bar
    // and an empty table, the floor under any program's figure.
    struct Case {
        std::string label;
        fs::path folder;
        const char* mode;
    };
    for (const auto& c : {Case{"demo", small, "1"}, Case{std::to_string(rows) + " trips", large, "1"},
                          Case{"bare Qt window", small, "bare"}}) {
        Run best;
        for (int i = 0; i < 3; ++i) {
            Run r = runOnce(c.folder, platform, c.mode);
            if (r.startMs < 0) {
                std::fprintf(stderr, "kerova bench-start: the program did not reach its main form in %s\n",
                             c.folder.c_str());
                return 1;
            }
            if (best.startMs < 0 || r.startMs < best.startMs) best.startMs = r.startMs;
            if (best.rssKb < 0 || (r.rssKb >= 0 && r.rssKb < best.rssKb)) best.rssKb = r.rssKb;
        }
        std::printf("| %s | %.0f | %.1f |\n", c.label.c_str(), best.startMs, best.rssKb / 1024.0);
    }
    return 0;
}

}  // namespace kerova
