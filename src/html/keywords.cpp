// The keyword file: which attribute names, besides HREF and ACTION, carry a
// URL that calls the application. The driver reads it once; the scanner and
// the markup read the process-wide list.
#include "html/keywords.h"

#include "util/files.h"
#include "util/heap.hpp"

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

SutList *keyWords = nullptr;

bool isAlnum(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

} // namespace

extern "C" {

int VlIsKeyWord(const char *line) {
    if (!line || !*line) return 0;
    size_t n = std::strlen(line);
    if (line[n - 1] == '|') n--; // one bar at the very end is allowed
    if (n == 0) return 0;
    for (size_t i = 0; i < n; i++)
        if (!isAlnum(line[i])) return 0;
    return 1;
}

int VlReadKeyWords(void) {
    SutDestroyList(keyWords);
    keyWords = nullptr;
    const char *home = std::getenv("VELMORA");
    if (!home) return 1;
    std::string path = std::string(home) + "/config/VlKeyWds.ini";
    VlCharPtr text(VlReadFile(path.c_str()));
    if (!text) return 1;
    SutList *lines = VlParseFileString(text.get(), "\n", nullptr);
    // Invalid lines are freed and the valid ones closed up in order, in one pass.
    int kept = 0;
    for (int i = 0; i < lines->count; i++) {
        char *line = static_cast<char *>(lines->items[i]);
        if (!VlIsKeyWord(line)) {
            std::free(line);
            continue;
        }
        size_t n = std::strlen(line);
        if (line[n - 1] == '|') line[n - 1] = ' ';
        lines->items[kept++] = line;
    }
    lines->count = kept;
    if (SutSizList(lines) > 0) {
        keyWords = lines;
        return 0;
    }
    SutDestroyList(lines);
    return 1;
}

int VlAnyKeys(void) {
    return keyWords ? 1 : 0;
}

SutList *VlGetKeyWords(void) {
    return keyWords;
}

} // extern "C"
