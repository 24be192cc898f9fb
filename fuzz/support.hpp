// Shared pieces of the fuzz targets: the input as a NUL-terminated text, a
// private scratch directory removed at exit, and silencing the per-input
// messages that the readers print, so long runs do not write megabytes.
#ifndef VELMORA_FUZZ_SUPPORT_HPP
#define VELMORA_FUZZ_SUPPORT_HPP

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "velmora.h"

namespace fuzz {

// The input as C text: an embedded NUL ends it, as it would end a file read
// into a C string.
inline std::string Text(const uint8_t *data, size_t size) {
    return std::string(reinterpret_cast<const char *>(data), size);
}

inline void WriteFile(const std::string &path, const std::string &text) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

// A new directory, removed with everything in it when the process ends
// normally. It is made in /dev/shm when that is usable: the targets that read
// through a file rewrite it on every run, and a disk-backed directory makes
// them several times slower. Otherwise it goes under TMPDIR.
inline std::string ScratchDir() {
    static std::string dir;
    if (!dir.empty()) return dir;
    std::filesystem::path parent = access("/dev/shm", W_OK) == 0
                                       ? std::filesystem::path("/dev/shm")
                                       : std::filesystem::temp_directory_path();
    std::string pattern = (parent / "vlfuzzXXXXXX").string();
    if (!mkdtemp(pattern.data())) {
        perror("mkdtemp");
        std::abort();
    }
    dir = pattern;
    std::atexit([] {
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
    });
    return dir;
}

// The readers report bad input on standard output (VlPrintError) and some on
// the stderr stream. Standard output goes to /dev/null. The C stream stderr is
// pointed at /dev/null too; libFuzzer and the sanitizers keep writing their
// reports to descriptor 2, which stays open.
inline void Quiet() {
    if (!freopen("/dev/null", "w", stdout)) std::abort();
    FILE *null = fopen("/dev/null", "w");
    if (!null) std::abort();
    stderr = null;
}

// A distribution directory under the scratch directory: config/ with a small
// keyword file and a global option file that turns the read and write scripts
// off, so no reader runs a shell. VELMORA and HOME point into it.
inline std::string Distribution() {
    std::string dist = ScratchDir() + "/dist";
    std::filesystem::create_directories(dist + "/config");
    std::filesystem::create_directories(dist + "/home");
    WriteFile(dist + "/config/VlKeyWds.ini", "SRC\nlow\ncode|\nBACKGROUND|\nonclick\n");
    WriteFile(dist + "/config/Velmora.cfg", "Project.Call Read/Write Scripts : False\n");
    setenv("VELMORA", dist.c_str(), 1);
    setenv("HOME", (dist + "/home").c_str(), 1);
    return dist;
}

// The input cut at every newline into a list of new strings.
inline SutList *Lines(const std::string &text) {
    SutList *list = SutNewList();
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        SutAddList(list, StrNDup(text.c_str() + start, static_cast<int>(end - start)));
        start = end + 1;
    }
    return list;
}

} // namespace fuzz

#endif
