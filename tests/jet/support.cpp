#include "jet/support.h"

#include <fcntl.h>
#include <poll.h>
#include <random>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

extern char** environ;

namespace testsupport {

TempDir::TempDir() {
    std::random_device rd;
    for (;;) {
        path_ = fs::temp_directory_path() / ("kerova-test-" + std::to_string(rd()));
        if (fs::create_directory(path_)) break;
    }
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::remove_all(path_, ec);
}

std::string readFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

pid_t spawn(const std::function<int()>& f) {
    pid_t pid = fork();
    if (pid == 0) {
        int rc = 9;
        try {
            rc = f();
        } catch (const std::exception& e) {
            std::fprintf(stderr, "child: %s\n", e.what());
        }
        _exit(rc);
    }
    return pid;
}

int exitCode(pid_t pid) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100 + WTERMSIG(status);
}

fs::path testdata() { return fs::path(KEROVA_TESTDATA); }

fs::path copyTestFile(const std::string& name, const TempDir& dir) {
    fs::path to = dir / name;
    fs::copy_file(testdata() / name, to, fs::copy_options::overwrite_existing);
    fs::permissions(to, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    return to;
}

CommandResult run(const std::vector<std::string>& argv) {
    int outPipe[2], errPipe[2];
    if (pipe(outPipe) != 0 || pipe(errPipe) != 0) throw std::runtime_error("pipe failed");
    posix_spawn_file_actions_t fa;
    posix_spawn_file_actions_init(&fa);
    posix_spawn_file_actions_adddup2(&fa, outPipe[1], 1);
    posix_spawn_file_actions_adddup2(&fa, errPipe[1], 2);
    posix_spawn_file_actions_addclose(&fa, outPipe[0]);
    posix_spawn_file_actions_addclose(&fa, errPipe[0]);
    std::vector<char*> args;
    for (const auto& a : argv) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    pid_t pid;
    int rc = posix_spawnp(&pid, args[0], &fa, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&fa);
    close(outPipe[1]);
    close(errPipe[1]);
    CommandResult r;
    if (rc != 0) {
        close(outPipe[0]);
        close(errPipe[0]);
        r.err = "cannot start " + argv[0];
        return r;
    }
    pollfd fds[2] = {{outPipe[0], POLLIN, 0}, {errPipe[0], POLLIN, 0}};
    int open = 2;
    char buf[65536];
    while (open > 0) {
        if (poll(fds, 2, -1) < 0) break;
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP))) continue;
            ssize_t n = read(fds[i].fd, buf, sizeof buf);
            if (n <= 0) {
                close(fds[i].fd);
                fds[i].fd = -1;
                --open;
            } else {
                (i == 0 ? r.out : r.err).append(buf, static_cast<size_t>(n));
            }
        }
    }
    int status = 0;
    waitpid(pid, &status, 0);
    r.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return r;
}

bool oracleAvailable() { return fs::exists(KEROVA_ORACLE_JAR); }

CommandResult oracle(const std::vector<std::string>& args) {
    std::vector<std::string> argv = {"java", "-jar", KEROVA_ORACLE_JAR};
    argv.insert(argv.end(), args.begin(), args.end());
    return run(argv);
}

CommandResult cli(const std::vector<std::string>& args) {
    std::vector<std::string> argv = {KEROVA_CLI};
    argv.insert(argv.end(), args.begin(), args.end());
    return run(argv);
}

}  // namespace testsupport
