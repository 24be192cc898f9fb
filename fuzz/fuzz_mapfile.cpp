// Fuzz target: the map file reader, through a scratch file; a map that reads
// is written back to memory, so every field the reader accepts goes through
// the writer too.
#include "support.hpp"

namespace {
std::string mapFile;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    mapFile = fuzz::ScratchDir() + "/shop.map";
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::WriteFile(mapFile, fuzz::Text(data, size));
    SpmMap *map = nullptr;
    int status = SpmReadMapFile(&map, mapFile.c_str());
    if ((status == 0) != (map != nullptr)) std::abort();
    if (map) {
        char *buffer = nullptr;
        size_t length = 0;
        FILE *out = open_memstream(&buffer, &length);
        if (!out) std::abort();
        SpmWriteMap(out, map);
        fclose(out);
        free(buffer);
        SpmDestroyMap(&map);
    }
    return 0;
}
