// Writing a file so that it holds its old or its new content at every moment
// (a temporary file beside it, then rename), leaving alone a file whose bytes
// would not change, reading the project's own files whole or refusing them,
// and the test that keeps the engine's writes inside the project directory.
#include "util/safefile.h"

#include "util/heap.hpp"
#include "util/messages.h"
#include "util/runstate.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <unordered_map>

namespace fs = std::filesystem;

namespace {

// Temporary files left by a run that was killed are named so (in the
// directory of the file being written); they can be removed at any time.
constexpr const char kTempPattern[] = ".vlnogui.XXXXXX";

// The permission bits fopen gives a new file under the process's umask.
mode_t NewFileMode() {
    static const mode_t mask = [] {
        const mode_t m = umask(0);
        umask(m);
        return m;
    }();
    return 0666 & ~mask;
}

std::string DirectoryOf(const char *path) {
    const char *slash = std::strrchr(path, '/');
    if (!slash) return ".";
    if (slash == path) return "/";
    return std::string(path, static_cast<size_t>(slash - path));
}

// Reads up to size bytes at the descriptor's position; the count read, short
// only at the end of the file; -1 on an error.
ssize_t ReadFully(int fd, char *buffer, size_t size) {
    size_t done = 0;
    while (done < size) {
        const ssize_t n = read(fd, buffer + done, size - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return -1;
        if (n == 0) break;
        done += static_cast<size_t>(n);
    }
    return static_cast<ssize_t>(done);
}

bool WriteFully(int fd, const char *data, size_t size) {
    while (size > 0) {
        const ssize_t n = write(fd, data, size);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        data += n;
        size -= static_cast<size_t>(n);
    }
    return true;
}

// The size of the regular file at path (not followed when it is a symbolic
// link), or -1 when there is no such file.
off_t RegularFileSize(const char *path) {
    struct stat st;
    if (lstat(path, &st) != 0 || !S_ISREG(st.st_mode)) return -1;
    return st.st_size;
}

// Whether the regular file at path holds exactly the bytes that next() gives:
// next(buffer, n) fills the buffer with the next n bytes, false on a failure.
template <typename Next> bool FileHolds(const char *path, size_t size, Next next) {
    if (RegularFileSize(path) != static_cast<off_t>(size)) return false;
    const int fd = open(path, O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0) return false;
    static char onDisk[1 << 16], expected[1 << 16];
    bool same = true;
    for (size_t done = 0; same && done < size;) {
        const size_t n = std::min(sizeof onDisk, size - done);
        same = ReadFully(fd, onDisk, n) == static_cast<ssize_t>(n) && next(expected, n) &&
               std::memcmp(onDisk, expected, n) == 0;
        done += n;
    }
    // Nothing may follow (the file may have grown since it was measured).
    same = same && ReadFully(fd, onDisk, 1) == 0;
    close(fd);
    return same;
}

bool FileHoldsData(const char *path, const char *data, size_t size) {
    size_t at = 0;
    return FileHolds(path, size, [&](char *buffer, size_t n) {
        std::memcpy(buffer, data + at, n);
        at += n;
        return true;
    });
}

// A new temporary file in the directory of path; -1 with errno set when none
// can be made, or when path could not be opened for writing either: a
// directory, or a file without write permission (a file kept read-only, by
// version control say, is not replaced behind its owner's back).
int MakeTemp(const char *path, std::string &tempName) {
    struct stat st;
    if (lstat(path, &st) == 0) {
        if (S_ISDIR(st.st_mode)) {
            errno = EISDIR;
            return -1;
        }
        if (S_ISREG(st.st_mode) && access(path, W_OK) != 0) return -1;
    }
    tempName = DirectoryOf(path) + "/" + kTempPattern;
    return mkostemp(tempName.data(), O_CLOEXEC);
}

// Gives the written temporary file the old file's permission bits (and its
// owner and group where the process may) and closes it. 0, or the errno value
// of the step that failed; the descriptor is closed either way.
int FinishTemp(int fd, const char *path) {
    mode_t mode = NewFileMode();
    struct stat st;
    if (lstat(path, &st) == 0 && S_ISREG(st.st_mode)) {
        mode = st.st_mode & 07777;
        // Only the superuser can give a file away; for others the owner is
        // the one who runs the engine, as fopen would have left it.
        if (geteuid() == 0 && fchown(fd, st.st_uid, st.st_gid) != 0) {
        }
    }
    int error = fchmod(fd, mode) == 0 ? 0 : errno;
    if (close(fd) != 0 && error == 0) error = errno;
    return error;
}

// Renames the finished temporary file over path; the outcome, reported.
int Replace(const std::string &tempName, const char *path, int error) {
    if (error == 0 && rename(tempName.c_str(), path) != 0) error = errno;
    if (error == 0) return VL_WRITE_DONE;
    unlink(tempName.c_str());
    VlReportWriteFailure(path, error);
    return VL_WRITE_FAILED;
}

struct PendingStream {
    std::string path;
    std::string tempName;
};

std::unordered_map<FILE *, PendingStream> &PendingStreams() {
    static std::unordered_map<FILE *, PendingStream> streams;
    return streams;
}

char *RefuseRead(const char *path, const std::string &why) {
    const std::string message = "Could not read " + std::string(path) + ": " + why + "\n";
    VlPrintError(message.c_str());
    VlRefuseWrites();
    return nullptr;
}

} // namespace

extern "C" {

int VlWriteFileSafely(const char *path, const char *data, size_t size) {
    if (!path || !*path || (!data && size > 0)) {
        VlNoteWriteFailure();
        errno = EINVAL;
        return VL_WRITE_NOT_OPENED;
    }
    if (FileHoldsData(path, data, size)) return VL_WRITE_SAME;
    std::string tempName;
    const int fd = MakeTemp(path, tempName);
    if (fd < 0) {
        const int error = errno;
        VlNoteWriteFailure();
        errno = error;
        return VL_WRITE_NOT_OPENED;
    }
    int error = WriteFully(fd, data, size) ? 0 : errno;
    const int finished = FinishTemp(fd, path);
    if (error == 0) error = finished;
    return Replace(tempName, path, error);
}

FILE *VlOpenSafely(const char *path) {
    if (!path || !*path) {
        VlNoteWriteFailure();
        errno = EINVAL;
        return nullptr;
    }
    std::string tempName;
    const int fd = MakeTemp(path, tempName);
    FILE *stream = fd >= 0 ? fdopen(fd, "w") : nullptr;
    if (!stream) {
        const int error = errno;
        if (fd >= 0) {
            close(fd);
            unlink(tempName.c_str());
        }
        VlNoteWriteFailure();
        errno = error;
        return nullptr;
    }
    PendingStreams()[stream] = PendingStream{path, tempName};
    return stream;
}

int VlCloseSafely(FILE *stream) {
    auto &streams = PendingStreams();
    auto found = streams.find(stream);
    if (!stream || found == streams.end()) {
        VlReportWriteFailure("(a stream not opened safely)", EBADF);
        return VL_WRITE_FAILED;
    }
    const PendingStream pending = found->second;
    streams.erase(found);
    const char *path = pending.path.c_str();
    // A full disk shows up at the flush at the latest.
    errno = 0;
    int error = 0;
    if (std::fflush(stream) != 0 || std::ferror(stream)) error = errno != 0 ? errno : EIO;
    const int fd = fileno(stream);
    const off_t size = lseek(fd, 0, SEEK_END);
    if (error == 0 && size < 0) error = errno;
    if (error == 0) {
        // The written bytes are read back from the temporary file to compare.
        const int readBack = open(pending.tempName.c_str(), O_RDONLY | O_CLOEXEC);
        const bool same = readBack >= 0 &&
                          FileHolds(path, static_cast<size_t>(size), [&](char *buffer, size_t n) {
                              return ReadFully(readBack, buffer, n) == static_cast<ssize_t>(n);
                          });
        if (readBack >= 0) close(readBack);
        if (same) {
            std::fclose(stream);
            unlink(pending.tempName.c_str());
            return VL_WRITE_SAME;
        }
    }
    // fclose would close the descriptor a second time after FinishTemp.
    const int finished = FinishTemp(dup(fd), path);
    if (std::fclose(stream) != 0 && error == 0) error = errno;
    if (error == 0) error = finished;
    return Replace(pending.tempName, path, error);
}

void VlReportWriteFailure(const char *path, int error) {
    const std::string message =
        "Could not write " + std::string(path ? path : "") + ": " + std::strerror(error) + "\n";
    VlPrintError(message.c_str());
    VlNoteWriteFailure();
}

int VlFilesHoldSameBytes(const char *path, const char *copy) {
    struct stat st;
    if (!path || !copy || stat(path, &st) != 0 || !S_ISREG(st.st_mode)) return 0;
    const int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0) return 0;
    const bool same = FileHolds(copy, static_cast<size_t>(st.st_size), [&](char *buffer, size_t n) {
        return ReadFully(fd, buffer, n) == static_cast<ssize_t>(n);
    });
    close(fd);
    return same ? 1 : 0;
}

char *VlReadFileWhole(const char *path, time_t *modTimeOut) {
    if (!path) return nullptr;
    struct stat st;
    if (stat(path, &st) != 0) {
        // A file that is not there is the caller's ordinary case.
        if (errno == ENOENT || errno == ENOTDIR) return nullptr;
        return RefuseRead(path, std::strerror(errno));
    }
    if (!S_ISREG(st.st_mode)) return RefuseRead(path, "not a regular file");
    const int fd = open(path, O_RDONLY | O_CLOEXEC);
    if (fd < 0) return RefuseRead(path, std::strerror(errno));
    const size_t size = static_cast<size_t>(st.st_size);
    VlCharPtr text(static_cast<char *>(std::malloc(size + 1)));
    const ssize_t got = text ? ReadFully(fd, text.get(), size) : -1;
    const int error = errno;
    close(fd);
    if (got < 0) return RefuseRead(path, std::strerror(text ? error : ENOMEM));
    if (static_cast<size_t>(got) < size)
        return RefuseRead(path, "the file shrank while it was read");
    text.get()[size] = '\0';
    // The engine's records are C strings: text after a NUL byte would be
    // lost when the file is written back, so such a file is not taken.
    if (const void *nul = std::memchr(text.get(), '\0', size)) {
        const size_t offset = static_cast<size_t>(static_cast<const char *>(nul) - text.get());
        const std::string message = std::string(path) + " holds a NUL byte at offset " +
                                    std::to_string(offset) + ": it is not read\n";
        VlPrintError(message.c_str());
        VlRefuseWrites();
        return nullptr;
    }
    if (modTimeOut) *modTimeOut = st.st_mtime;
    return text.release();
}

int VlPathInsideWorkingDir(const char *path) {
    if (!path || !*path) return 0;
    // A plain relative file name names a file of the directory itself.
    if (path[0] != '/' && !std::strchr(path, '/')) return 1;
    std::error_code ec;
    const fs::path here = fs::current_path(ec);
    if (ec) return 0;
    const fs::path base = fs::canonical(here, ec);
    if (ec) return 0;
    const fs::path given(path);
    const fs::path directory = (given.is_absolute() ? given : here / given).parent_path();
    const fs::path resolved = fs::weakly_canonical(directory, ec);
    if (ec) return 0;
    // Inside when every component of the project directory begins it.
    const auto [inBase, inResolved] =
        std::mismatch(base.begin(), base.end(), resolved.begin(), resolved.end());
    (void)inResolved;
    return inBase == base.end() ? 1 : 0;
}

} // extern "C"
