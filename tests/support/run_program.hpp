// Runs a program as a child process in a given directory with exactly the
// given environment (plus the sanitizer settings of the test run), standard
// input from /dev/null, and returns what it printed on standard output and
// standard error and its exit status. An unprivileged run of a test that
// runs as root runs as the user nobody, for whom permissions count. Given a
// function, the test runs it with the program's process id while the
// program runs (to watch it, or to kill it).
#ifndef VELMORA_TESTS_SUPPORT_RUN_PROGRAM_HPP
#define VELMORA_TESTS_SUPPORT_RUN_PROGRAM_HPP

#include "support/temp_dir.hpp"

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

struct ProgramRun {
    std::string out;
    std::string err;
    int status = -1; // exit status, or -1 when the program did not exit normally
};

inline ProgramRun runProgram(const std::string &program, const std::vector<std::string> &args,
                             std::vector<std::string> env, const std::string &dir,
                             bool unprivileged = false,
                             const std::function<void(pid_t)> &whileRunning = {}) {
    for (const char *name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char *v = std::getenv(name)) env.push_back(std::string(name) + "=" + v);
    std::vector<std::string> argStrings = {program};
    argStrings.insert(argStrings.end(), args.begin(), args.end());
    std::vector<char *> argv, envp;
    for (std::string &a : argStrings)
        argv.push_back(a.data());
    argv.push_back(nullptr);
    for (std::string &e : env)
        envp.push_back(e.data());
    envp.push_back(nullptr);

    // The output is caught outside dir, so the program's directory holds only
    // what the program itself wrote there.
    std::string pattern = (std::filesystem::temp_directory_path() / "vlrunXXXXXX").string();
    if (!mkdtemp(pattern.data())) return {};
    const std::string outPath = pattern + "/stdout", errPath = pattern + "/stderr";

    std::fflush(stdout);
    std::fflush(stderr);
    pid_t pid = fork();
    if (pid == 0) {
        int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        int in = open("/dev/null", O_RDONLY);
        const uid_t nobody = 65534;
        if (unprivileged && geteuid() == 0 &&
            (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(126);
        if (out < 0 || err < 0 || in < 0 || chdir(dir.c_str()) != 0) _exit(126);
        dup2(in, 0);
        dup2(out, 1);
        dup2(err, 2);
        execve(argv[0], argv.data(), envp.data());
        _exit(127);
    }
    if (pid > 0 && whileRunning) whileRunning(pid);
    ProgramRun run;
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status))
        run.status = WEXITSTATUS(status);
    run.out = readText(outPath);
    run.err = readText(errPath);
    std::error_code ec;
    std::filesystem::remove_all(pattern, ec);
    return run;
}

#endif
