// The run's record of failed writes and of a refusal to write, and the lock
// on the project file. The driver reads the record at the end to choose the
// exit status; the project writer reads the refusal before it writes.
#include "util/runstate.h"

#include "util/messages.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

namespace {

bool writeFailed = false;
bool writesRefused = false;

} // namespace

extern "C" {

void VlNoteWriteFailure(void) {
    writeFailed = true;
}

int VlAnyWriteFailed(void) {
    return writeFailed ? 1 : 0;
}

void VlRefuseWrites(void) {
    writesRefused = true;
}

int VlWritesRefused(void) {
    return writesRefused ? 1 : 0;
}

void VlResetRunState(void) {
    writeFailed = false;
    writesRefused = false;
}

int VlLockProject(const char *projectPath) {
    if (!projectPath) return -1;
    const std::string lockFile = std::string(projectPath) + ".lock";
    // Not followed when it is a symbolic link, and not passed on to the
    // scripts: a script left running in the background must not keep the
    // project locked after the run.
    int fd = open(lockFile.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (fd < 0) {
        const std::string message =
            "Could not lock " + lockFile + ": " + std::strerror(errno) + "\n";
        VlPrintError(message.c_str());
        return -1;
    }
    // Another run holding the lock is not waited for: a script that runs the
    // engine must never hang.
    while (flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        const int error = errno;
        close(fd);
        const std::string message =
            error == EWOULDBLOCK
                ? "Project " + std::string(projectPath) + " is in use by another run\n"
                : "Could not lock " + lockFile + ": " + std::strerror(error) + "\n";
        VlPrintError(message.c_str());
        return error == EWOULDBLOCK ? 0 : -1;
    }
    return 1; // the descriptor stays open, and the lock held, until the process ends
}

} // extern "C"
