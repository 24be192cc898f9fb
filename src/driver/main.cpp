// vlnogui: the command-line project engine. This is the program entry: it
// reads the two paths from the command line, checks the project file and the
// environment, merges the configuration file into the project's options and
// has the project written back and installed.
#include "html/keywords.h"
#include "project/naming.h"
#include "project/project.h"
#include "project/reader.h"
#include "project/scripts.h"
#include "project/writer.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/messages.h"
#include "util/options.h"
#include "util/runstate.h"
#include "util/safefile.h"
#include "util/strings.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

// The argument at index i, or null past the end of the vector: a trailing
// "-p" or "-c" (or a group such as "-pc" short of values) reads the null
// entry and leaves its path unset instead of reading beyond argv.
const char *ArgAt(int argc, char **argv, int i) {
    return i < argc ? argv[i] : nullptr;
}

// Reading the project makes its directory the working directory, so a
// relative path given on the command line is taken from where the program
// started (an empty path stays empty).
std::string FromStart(const std::string &startDir, const char *path) {
    if (!*path || path[0] == '/' || startDir.empty()) return path;
    return startDir + "/" + path;
}

// Without its keyword file the distribution would have the keyword anchors
// of every page read as plain text and their functions dropped from the
// modules: the run stops before it reads anything.
bool KeywordFileReadable(const char *distribution) {
    const std::string path = std::string(distribution) + "/config/VlKeyWds.ini";
    const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat st;
    const char *why = nullptr;
    if (fd < 0)
        why = std::strerror(errno);
    else if (fstat(fd, &st) != 0 || !S_ISREG(st.st_mode))
        why = "not a regular file";
    if (fd >= 0) close(fd);
    if (!why) return true;
    std::printf("Could not read the keyword file %s: %s\n", path.c_str(), why);
    return false;
}

// Said when the project cannot be written back whole; the reason was printed
// where it was found.
int NothingWritten() {
    std::printf("Nothing was written: the project could not be read whole.\n");
    return 1;
}

} // namespace

int main(int argc, char **argv) {
    std::printf("%s\n", "No GUI Velmora Version 3.0");
    if (argc < 3) {
        std::printf("Usage :vlnogui -p <full path to project> -c < full path to config file>\n");
        return 1;
    }

    // Option letters may be grouped; each "p" or "c" takes the next whole
    // argument, in the order the letters stand. Parsing ends at the first
    // argument that is not an option; a later -p or -c wins.
    const char *projectPath = nullptr;
    const char *configPath = nullptr;
    int left = argc;
    int at = 0;
    while (--left > 0 && ArgAt(argc, argv, ++at)[0] == '-') {
        for (const char *s = argv[at] + 1; *s; ++s) {
            switch (*s) {
            case 'c':
                if (--left < 1) std::printf("-c requires another argument");
                configPath = ArgAt(argc, argv, ++at);
                break;
            case 'p':
                if (--left < 1) std::printf("-p requires another argument");
                projectPath = ArgAt(argc, argv, ++at);
                break;
            default:
                std::printf("unknown command line option: %c", *s);
                break;
            }
        }
    }

    if (!projectPath) {
        std::printf("No Project specified\n");
        return 1;
    }
    char *config = VlCopyString(configPath);
    std::printf("Applying Changes to %s from %s\n", projectPath, config);
    if (!VlFileExists(projectPath)) {
        std::printf("Could not open project file %s\n", projectPath);
        std::free(config);
        return 1;
    }
    VlCatOpen();
    VlReadKeyWords();
    const char *distribution = std::getenv("VELMORA");
    if (!distribution) {
        std::printf("VELMORA environment variable must be set to run Velmora\n");
        std::free(config);
        std::exit(1);
    }
    // One run at a time on a project; a second one ends at once.
    if (!KeywordFileReadable(distribution) || VlLockProject(projectPath) != 1) {
        std::free(config);
        return 1;
    }

    VlCharPtr startDir(VlGetCurrentDir());
    const std::string project = FromStart(startDir.get(), projectPath);
    const std::string configFile = FromStart(startDir.get(), config);

    VlProjNew(projectPath, 0);
    if (VlWritesRefused()) {
        std::free(config);
        return NothingWritten();
    }
    SutList *options = VlProjGetOptions();
    if (!options) {
        std::printf("Internal Error. could not read project options\n");
        std::free(config);
        return 1;
    }

    // A missing configuration file (also the empty default) is only a warning;
    // one that cannot be read whole (or holds a NUL byte) has been reported.
    SutList *lines = nullptr;
    if (!VlFileExists(configFile.c_str())) {
        std::printf("Warning : Could not open configuration file %s\n", config);
        lines = SutNewList();
    } else if (VlCharPtr text{VlReadFileWhole(configFile.c_str(), nullptr)}) {
        lines = VlOptionGetFromString(text.get());
    }
    if (!lines) {
        std::printf("Could not open configuration file %s\n", config);
        std::free(config);
        return 1;
    }
    // Each line replaces the project's option of the same name where it
    // stands, or is added after all others.
    VlMergeOptionLines(options, lines);
    // Nothing reads the lines again; releasing them keeps leak checkers quiet.
    SutDestroyList(lines);

    // Failures of the steps below are reported by the steps themselves; the
    // run goes on, and ends with status 1 when a file could not be written.
    VlProjSetName(project.c_str());
    std::printf("%s\n", "Done Reading Project.");
    VlProjWrite(1);
    std::printf("Done Writing Project\n");
    VlProjRunInstall();
    std::printf("Finished\n");
    std::free(config);
    return VlAnyWriteFailed() ? 1 : 0;
}
