// Test support: temporary folders, copies of the Microsoft-made files, running commands (the
// oracle, mdbtools, our own CLI) and reading their output.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace testsupport {

namespace fs = std::filesystem;

// A file's whole contents.
std::string readFile(const fs::path& path);

// Runs f in a child process; its exit code is f's result (9 when it throws). exitCode waits for
// it: the exit code, or 100 + the signal that killed it.
pid_t spawn(const std::function<int()>& f);
int exitCode(pid_t pid);

// A fresh folder under the system's temp dir, removed with its contents at destruction.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const fs::path& path() const { return path_; }
    fs::path operator/(const std::string& name) const { return path_ / name; }

private:
    fs::path path_;
};

// The folder of the Microsoft-made Access 2000 files (read-only: tests work on copies).
fs::path testdata();
// Copies testdata()/name into dir and returns the copy (writable).
fs::path copyTestFile(const std::string& name, const TempDir& dir);

struct CommandResult {
    int exitCode = -1;
    std::string out;  // standard output
    std::string err;  // standard error
};
// Runs argv[0] with arguments (no shell), waits, and collects both outputs.
CommandResult run(const std::vector<std::string>& argv);

// The oracle (Java, on the reference implementation): `java -jar jet-oracle.jar ARGS...`.
CommandResult oracle(const std::vector<std::string>& args);
bool oracleAvailable();
// Our own command line tool (build/kerova).
CommandResult cli(const std::vector<std::string>& args);

}  // namespace testsupport
