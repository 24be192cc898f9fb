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
#include "util/strings.h"

#include <cstdio>
#include <cstdlib>
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
    if (!std::getenv("VELMORA")) {
        std::printf("VELMORA environment variable must be set to run Velmora\n");
        std::free(config);
        std::exit(1);
    }

    VlCharPtr startDir(VlGetCurrentDir());
    const std::string project = FromStart(startDir.get(), projectPath);
    const std::string configFile = FromStart(startDir.get(), config);

    VlProjNew(projectPath, 0);
    SutList *options = VlProjGetOptions();
    if (!options) {
        std::printf("Internal Error. could not read project options\n");
        std::free(config);
        return 1;
    }

    // A missing configuration file (also the empty default) is only a warning.
    SutList *lines = nullptr;
    if (!VlFileExists(configFile.c_str())) {
        std::printf("Warning : Could not open configuration file %s\n", config);
        lines = SutNewList();
    } else {
        lines = VlOptionGetFromFile(configFile.c_str());
    }
    if (!lines) {
        std::printf("Could not open configuration file %s\n", config);
        std::free(config);
        return 1;
    }
    // Each line replaces the project's option of the same name where it
    // stands, or is added after all others.
    for (int i = 0; i < SutSizList(lines); i++) {
        char *copy = VlCopyString(static_cast<const char *>(SutGetNList(lines, i)));
        options = VlAppendOption(options, copy);
        // A line without a colon is not taken; nothing keeps the copy then.
        if (SutGetPosFromItem(options, copy) < 0) std::free(copy);
    }
    // Nothing reads the lines again; releasing them keeps leak checkers quiet.
    SutDestroyList(lines);

    // Failures of the steps below are reported by the steps themselves; the
    // run still ends normally.
    VlProjSetName(project.c_str());
    std::printf("%s\n", "Done Reading Project.");
    VlProjWrite(1);
    std::printf("Done Writing Project\n");
    VlProjRunInstall();
    std::printf("Finished\n");
    std::free(config);
    return 0;
}
