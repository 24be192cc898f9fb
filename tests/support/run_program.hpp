// Child processes for tests. SpawnProgram starts one in the background (the
// servers of the web tests) and RunProgram runs one to its end and returns
// what it printed on standard output and standard error and its exit status:
// standard input from /dev/null, output into files, in a given directory,
// optionally as another user (an unprivileged run of a test that runs as
// root runs as the user nobody, for whom permissions count), in a process
// group of its own or with a signal for when the test dies. Below them, the
// wait for a server to become ready, its stop and the choice of a free port.
#ifndef VELMORA_TESTS_SUPPORT_RUN_PROGRAM_HPP
#define VELMORA_TESTS_SUPPORT_RUN_PROGRAM_HPP

#include "support/temp_dir.hpp"

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

inline constexpr uid_t kNobody = 65534; // the user nobody and the group nogroup

struct SpawnOptions {
    std::string dir = "/";
    std::optional<std::vector<std::string>> env{}; // exactly this environment; unset: the test's
    std::string out{};                             // appended to; empty: the test's own output
    std::string err{};                             // empty: where standard output goes
    uid_t uid = 0;                                 // run as this user and group when not 0
    gid_t gid = 0;
    int deathSignal = 0;   // the child's signal should the test process die first
    bool ownGroup = false; // a process group of its own
};

// Starts argv[0] with the options: its process id, or -1. The child ends
// with status 126 when it cannot be set up and 127 when it cannot be run.
inline pid_t SpawnProgram(std::vector<std::string> argv, const SpawnOptions &o) {
    std::vector<std::string> env = o.env.value_or(std::vector<std::string>{});
    std::vector<char *> args, envp;
    for (std::string &a : argv)
        args.push_back(a.data());
    args.push_back(nullptr);
    for (std::string &e : env)
        envp.push_back(e.data());
    envp.push_back(nullptr);
    const pid_t parent = getpid();
    std::fflush(stdout);
    std::fflush(stderr);
    pid_t pid = fork();
    if (pid != 0) return pid;
    if (o.ownGroup) setpgid(0, 0);
    const int flags = O_WRONLY | O_CREAT | O_APPEND;
    int out = o.out.empty() ? 1 : open(o.out.c_str(), flags, 0644);
    int err = o.err.empty() ? out : open(o.err.c_str(), flags, 0644);
    int in = open("/dev/null", O_RDONLY);
    if (o.uid != 0 && (setgroups(0, nullptr) != 0 || setgid(o.gid) != 0 || setuid(o.uid) != 0))
        _exit(126);
    if (out < 0 || err < 0 || in < 0 || chdir(o.dir.c_str()) != 0) _exit(126);
    // Set after the change of user, which clears it.
    if (o.deathSignal && (prctl(PR_SET_PDEATHSIG, o.deathSignal) != 0 || getppid() != parent))
        _exit(126);
    dup2(in, 0);
    dup2(out, 1);
    dup2(err, 2);
    execve(args[0], args.data(), o.env ? envp.data() : environ);
    _exit(127);
}

struct ProgramRun {
    std::string out;
    std::string err;
    int status = -1; // exit status, or -1 when the program did not exit normally
};

// Runs program with exactly the given environment (plus the sanitizer
// settings of the test run); given a function, the test runs it with the
// program's process id while the program runs (to watch it, or to kill it).
inline ProgramRun RunProgram(const std::string &program, const std::vector<std::string> &args,
                             std::vector<std::string> env, const std::string &dir,
                             bool unprivileged = false,
                             const std::function<void(pid_t)> &whileRunning = {}) {
    for (const char *name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
        if (const char *v = std::getenv(name)) env.push_back(std::string(name) + "=" + v);
    std::vector<std::string> argv = {program};
    argv.insert(argv.end(), args.begin(), args.end());
    // The output is caught outside dir, so the program's directory holds only
    // what the program itself wrote there.
    TempDir output;
    SpawnOptions o{.dir = dir, .env = env, .out = output.File("out"), .err = output.File("err")};
    if (unprivileged && geteuid() == 0) o.uid = o.gid = kNobody;
    pid_t pid = SpawnProgram(argv, o);
    if (pid > 0 && whileRunning) whileRunning(pid);
    ProgramRun run;
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status))
        run.status = WEXITSTATUS(status);
    run.out = ReadText(o.out);
    run.err = ReadText(o.err);
    return run;
}

// Asks ready every interval until it says yes (true) or tries run out or the
// process pid ends (false; pid becomes -1 once it ended).
inline bool PollUntilReady(pid_t &pid, int tries, std::chrono::milliseconds interval,
                           const std::function<bool()> &ready) {
    for (int i = 0; i < tries; i++) {
        if (pid <= 0 || waitpid(pid, nullptr, WNOHANG) == pid) {
            pid = -1;
            return false;
        }
        if (ready()) return true;
        std::this_thread::sleep_for(interval);
    }
    return false;
}

// Sends the process the signal and waits for its end, killing it (SIGKILL)
// after graceMs; pid becomes -1.
inline void StopProcess(pid_t &pid, int signal, int graceMs) {
    if (pid <= 0) return;
    kill(pid, signal);
    for (int ms = 0; ms < graceMs && waitpid(pid, nullptr, WNOHANG) == 0; ms += 50)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    if (kill(pid, 0) == 0) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    pid = -1;
}

// Calls start with random ports of 127.0.0.1 above 30000 until it succeeds
// (another process may take a port first); the port it took, or 0.
inline int OnAFreePort(const std::function<bool(int port)> &start) {
    std::mt19937 random(std::random_device{}());
    for (int attempt = 0; attempt < 20; attempt++) {
        const int port = 30000 + static_cast<int>(random() % 20000);
        if (start(port)) return port;
    }
    return 0;
}

#endif
