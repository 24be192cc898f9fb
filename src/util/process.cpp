// Child processes: blocking runs through the shell with the output caught in
// a temporary file, background runs whose output arrives through a pipe, the
// capture streams' own process table, and the quoting that keeps any file
// name or value from running as a command.
#include "util/process.h"

#include "util/files.h"
#include "util/heap.hpp"
#include "util/toolkit.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

void *errorTextWidget = nullptr;
std::vector<FILE *> unreadStreams;

// Child process ids of the capture streams, indexed by the stream's
// descriptor; 0 marks a free entry.
std::vector<pid_t> &ChildTable() {
    static std::vector<pid_t> table;
    if (table.empty()) {
        long n = open_max();
        // Descriptors above this bound enlarge the table when they turn up.
        table.resize(n > 0 && n < 65536 ? static_cast<size_t>(n) : 65536);
    }
    return table;
}

void FlushOutput() {
    std::fflush(stdout);
    std::fflush(stderr);
}

bool SafeShellChar(char c) {
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return true;
    return std::strchr("._-/+,:@%=", c) != nullptr && c != '\0';
}

// The text as it stands when it is made only of safe characters, else in
// single quotes with each quote inside written '\''.
std::string QuoteForShell(std::string_view t) {
    bool plain = !t.empty();
    for (char c : t)
        plain = plain && SafeShellChar(c);
    if (plain) return std::string(t);
    std::string out = "'";
    for (char c : t) {
        if (c == '\'')
            out += "'\\''";
        else
            out += c;
    }
    out += '\'';
    return out;
}

} // namespace

extern "C" {

int VlLaunchAndBlock(const char *command) {
    if (!command) return 0;
    const char *dir = std::getenv("TMPDIR");
    std::string name = std::string(dir && *dir ? dir : "/tmp") + "/vlnoguiXXXXXX";
    int fd = mkstemp(name.data());
    if (fd < 0) return -1;
    close(fd);
    VlCharPtr quotedName(VlShellQuote(name.c_str()));
    // The braces send the output of every part of a compound command to the
    // file, so nothing the command prints reaches our standard output.
    std::string line = "{ ";
    line += command;
    line += "\n} 1> ";
    line += quotedName.get();
    line += " 2>&1";
    FlushOutput();
    int status = std::system(line.c_str());
    VlCharPtr text(VlReadFile(name.c_str()));
    VlAppendToText(errorTextWidget, text.get());
    unlink(name.c_str());
    return status;
}

long VlCommandLineRoom(void) {
    long all = sysconf(_SC_ARG_MAX);
    if (all <= 0) all = 131072; // no answer: the smallest limit Linux ever had
    for (char **var = environ; *var; ++var)
        all -= static_cast<long>(std::strlen(*var) + 1 + sizeof(char *));
    // Linux also limits each single argument to 32 pages (MAX_ARG_STRLEN).
    const long page = sysconf(_SC_PAGESIZE);
    const long one = 32 * (page > 0 ? page : 4096);
    // The redirection VlLaunchAndBlock adds, the shell's own arguments and a margin.
    const long margin = 4096;
    return std::min(all, one) - margin;
}

unsigned long VlLaunch(const char *command) {
    if (!command) return 0;
    FILE *stream = VlExecCaptureOutAndErr(command);
    if (!stream) return 0;
    unsigned long id = XtAppAddInput(XtWidgetToApplicationContext(errorTextWidget), fileno(stream),
                                     nullptr, ReadFromStdIn, stream);
    // Without an event loop nobody reads the pipe; the stream is kept so the
    // child is not cut off, and stays reachable until the process ends.
    if (id == 0) unreadStreams.push_back(stream);
    return id;
}

FILE *VlExecCaptureOutAndErr(const char *command) {
    if (!command) return nullptr;
    std::vector<pid_t> &table = ChildTable();
    int fds[2];
    if (pipe(fds) != 0) return nullptr;
    FlushOutput();
    pid_t pid = fork();
    if (pid < 0) {
        close(fds[0]);
        close(fds[1]);
        return nullptr;
    }
    if (pid == 0) {
        close(fds[0]);
        dup2(fds[1], 1);
        dup2(fds[1], 2);
        if (fds[1] != 1 && fds[1] != 2) close(fds[1]);
        // Earlier capture streams belong to the parent only.
        for (size_t i = 0; i < table.size(); i++)
            if (table[i] > 0) close(static_cast<int>(i));
        execl("/bin/sh", "sh", "-c", command, static_cast<char *>(nullptr));
        _exit(127);
    }
    close(fds[1]);
    FILE *stream = fdopen(fds[0], "r");
    if (!stream) {
        close(fds[0]);
        while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        return nullptr;
    }
    size_t slot = static_cast<size_t>(fds[0]);
    if (slot >= table.size()) table.resize(slot + 1);
    table[slot] = pid;
    return stream;
}

int Vlpclose(FILE *stream) {
    if (!stream) return -1;
    std::vector<pid_t> &table = ChildTable();
    int fd = fileno(stream);
    if (fd < 0 || static_cast<size_t>(fd) >= table.size() || table[fd] == 0) return -1;
    pid_t pid = table[fd];
    table[fd] = 0;
    if (std::fclose(stream) == EOF) return -1;
    int status = 0;
    while (waitpid(pid, &status, 0) < 0)
        if (errno != EINTR) return -1;
    return status;
}

long open_max(void) {
    static long cached = 0;
    static bool asked = false;
    if (!asked) {
        asked = true;
        errno = 0;
        cached = sysconf(_SC_OPEN_MAX);
        if (cached < 0) {
            if (errno != 0)
                std::fputs("sysconf error for _SC_OPEN_MAX", stderr);
            else
                cached = 256; // no limit given: a reasonable guess
        }
    }
    return cached;
}

void set_fl(int fd, int flags) {
    int now = fcntl(fd, F_GETFL, 0);
    if (now < 0) {
        std::fputs("fcntl F_GETFL error", stderr);
        return;
    }
    if (fcntl(fd, F_SETFL, now | flags) < 0) std::fputs("fcntl F_SETFL error", stderr);
}

void clr_fl(int fd, int flags) {
    int now = fcntl(fd, F_GETFL, 0);
    if (now < 0) {
        std::fputs("fcntl F_GETFL error", stderr);
        return;
    }
    if (fcntl(fd, F_SETFL, now & ~flags) < 0) std::fputs("fcntl F_SETFL error", stderr);
}

// The signature is the toolkit's input callback (XtAppAddInput takes it) and part of
// the C interface, so its pointers stay non-const.
// NOLINTNEXTLINE(readability-non-const-parameter): fixed callback signature
void ReadFromStdIn(void *stream, int *fdPtr, unsigned long *inputIdPtr) {
    if (!stream || !fdPtr) return;
    int fd = *fdPtr;
    set_fl(fd, O_NONBLOCK);
    char buffer[256];
    for (;;) {
        ssize_t n = read(fd, buffer, 255);
        if (n > 0) {
            buffer[n] = '\0';
            VlAppendToText(errorTextWidget, buffer);
            continue;
        }
        if (n == 0) {
            Vlpclose(static_cast<FILE *>(stream));
            if (inputIdPtr) XtRemoveInput(*inputIdPtr);
            return;
        }
        if (errno == EINTR) continue;
        if (errno != EAGAIN && errno != EWOULDBLOCK)
            std::fputs("Unknown errnoo in VlLaunch.ReadFromStdIn", stderr);
        return;
    }
}

void VlSetErrorTextWidget(void *widget) {
    if (!errorTextWidget) errorTextWidget = widget;
}

void VlAppendToText(void *widget, const char *text) {
    if (!widget || !text) return;
    XmTextInsert(widget, XmTextGetLastPosition(widget), text);
    XmTextShowPosition(widget, XmTextGetLastPosition(widget));
}

char *VlShellQuote(const char *text) {
    return VlHeapCopy(QuoteForShell(text ? text : ""));
}

char *VlShellQuoteName(const char *text) {
    std::string_view t(text ? text : "");
    if (!t.empty() && t[0] == '-') return VlHeapCopy(QuoteForShell("./" + std::string(t)));
    return VlHeapCopy(QuoteForShell(t));
}

char *VlShellEscapeInDoubleQuotes(const char *text) {
    std::string out;
    for (const char *p = text ? text : ""; *p; ++p) {
        if (*p == '$' || *p == '`' || *p == '"' || *p == '\\') out += '\\';
        out += *p;
    }
    return VlHeapCopy(out);
}

} // extern "C"
