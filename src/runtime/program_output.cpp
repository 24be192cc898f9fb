// fork and execv of a program in a process group of its own, its output
// read through a pipe until a deadline; a failed execv is reported through a
// second pipe that closes on a successful one.
#include "runtime/program_output.hpp"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

namespace vlrun {

namespace {

using Clock = std::chrono::steady_clock;

void CloseBoth(int fds[2]) {
    close(fds[0]);
    close(fds[1]);
}

// In the child: the program, or the errno of the failed execv on report.
[[noreturn]] void ExecProgram(std::vector<char *> &argv, int output, int report) {
    setpgid(0, 0);
    int null = open("/dev/null", O_RDONLY);
    if (null < 0 || dup2(null, 0) < 0 || dup2(output, 1) < 0) _exit(127);
    execv(argv[0], argv.data());
    int error = errno;
    ssize_t written = write(report, &error, sizeof error);
    (void)written;
    _exit(127);
}

// Milliseconds left until the deadline, at least 0.
int MsLeft(Clock::time_point deadline) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return left.count() > 0 ? static_cast<int>(left.count()) : 0;
}

// Reads the program's output until its end, the deadline or the limit.
bool ReadOutput(int fd, Clock::time_point deadline, const ProgramLimits &limits,
                std::string &output, std::string &why) {
    char buffer[65536];
    while (true) {
        pollfd ready = {fd, POLLIN, 0};
        int polled = poll(&ready, 1, MsLeft(deadline));
        if (polled < 0 && errno == EINTR) continue;
        if (polled <= 0) {
            why = "ran past its time limit of " + std::to_string(limits.seconds) + " s";
            return false;
        }
        ssize_t n = read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return true;
        output.append(buffer, static_cast<std::size_t>(n));
        if (output.size() > limits.outputBytes) {
            why = "wrote more than " + std::to_string(limits.outputBytes) + " bytes";
            return false;
        }
    }
}

// Waits for the program to end until the deadline; then (or at once when
// kill is set) kills its process group, so nothing it started outlives the
// request, and reaps it. Its wait status, or -1 when it had to be killed.
int Finish(pid_t pid, Clock::time_point deadline, bool kill) {
    siginfo_t info{};
    while (!kill) {
        info.si_pid = 0;
        if (waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) < 0 &&
            errno != EINTR)
            break;
        if (info.si_pid == pid) break; // ended, not yet reaped: its group is still its own
        if (MsLeft(deadline) == 0) kill = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    ::kill(-pid, SIGKILL);
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    return kill ? -1 : status;
}

} // namespace

bool ProgramOutput(const std::vector<std::string> &argv, const ProgramLimits &limits,
                   std::string &output, std::string &why) {
    std::vector<std::string> args = argv;
    std::vector<char *> pointers;
    pointers.reserve(args.size() + 1);
    for (std::string &arg : args)
        pointers.push_back(arg.data());
    pointers.push_back(nullptr);

    int out[2], report[2];
    if (pipe2(out, O_CLOEXEC) != 0) {
        why = std::string("cannot make a pipe: ") + std::strerror(errno);
        return false;
    }
    if (pipe2(report, O_CLOEXEC) != 0) {
        why = std::string("cannot make a pipe: ") + std::strerror(errno);
        CloseBoth(out);
        return false;
    }
    std::fflush(stdout);
    std::fflush(stderr);
    const auto deadline = Clock::now() + std::chrono::seconds(limits.seconds);
    pid_t pid = fork();
    if (pid == 0) ExecProgram(pointers, out[1], report[1]);
    close(out[1]);
    close(report[1]);
    if (pid < 0) {
        why = std::string("cannot start a process: ") + std::strerror(errno);
        close(out[0]);
        close(report[0]);
        return false;
    }
    int error = 0;
    ssize_t reported = 0;
    while ((reported = read(report[0], &error, sizeof error)) < 0 && errno == EINTR) {
    }
    close(report[0]);
    if (reported == sizeof error) {
        why = std::string("cannot be run: ") + std::strerror(error);
        close(out[0]);
        Finish(pid, deadline, false);
        return false;
    }
    bool complete = ReadOutput(out[0], deadline, limits, output, why);
    close(out[0]);
    int status = Finish(pid, deadline, !complete);
    if (!complete) return false;
    if (status < 0) {
        why = "ran past its time limit of " + std::to_string(limits.seconds) + " s";
        return false;
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return true;
    why = WIFEXITED(status) ? "ended with status " + std::to_string(WEXITSTATUS(status))
                            : "was killed by signal " + std::to_string(WTERMSIG(status));
    return false;
}

} // namespace vlrun
