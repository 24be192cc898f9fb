// vlnogui: the command-line project engine. This is the program entry: it
// reads the two paths from the command line, checks the project file and the
// environment, and hands the project to the engine library.
#include "driver/nogui.h"
#include "html/keywords.h"
#include "util/files.h"
#include "util/strings.h"

#include <cstdio>
#include <cstdlib>

namespace {

// The argument at index i, or null past the end of the vector: a trailing
// "-p" or "-c" (or a group such as "-pc" short of values) reads the null
// entry and leaves its path unset instead of reading beyond argv.
const char *argAt(int argc, char **argv, int i) {
    return i < argc ? argv[i] : nullptr;
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
    while (--left > 0 && argAt(argc, argv, ++at)[0] == '-') {
        for (const char *s = argv[at] + 1; *s; ++s) {
            switch (*s) {
            case 'c':
                if (--left < 1) std::printf("-c requires another argument");
                configPath = argAt(argc, argv, ++at);
                break;
            case 'p':
                if (--left < 1) std::printf("-p requires another argument");
                projectPath = argAt(argc, argv, ++at);
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

    // Reading, merging, writing and installing the project come with the
    // project reader and writer.
    std::fflush(stdout);
    std::fprintf(stderr, "vlnogui: project processing is not built yet\n");
    std::free(config);
    return 1;
}
