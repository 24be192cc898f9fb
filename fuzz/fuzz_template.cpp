// Fuzz target: template filling with "$VL_" markers, the template taken from
// the input and a few fixed keys, two of which begin alike.
#include "support.hpp"

namespace {
SutList *keys;
SutList *values;
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    keys = SutNewList();
    values = SutNewList();
    const char *pairs[][2] = {{"$VL_SOURCE_SUFFIX", ".c"},
                              {"$VL_SOURCE", "shop"},
                              {"$VL_EXECUTABLE", "shop.exe"},
                              {"$VL_EMPTY", ""},
                              {"$VL_MODULES", "\ta.c\\\n\tb.c\n"}};
    for (auto &pair : pairs) {
        SutAddList(keys, strdup(pair[0]));
        SutAddList(values, strdup(pair[1]));
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string text = fuzz::Text(data, size);
    char *filled = VlStrSubsList(text.c_str(), keys, values, "$VL_");
    if (!filled) std::abort();
    free(filled);
    return 0;
}
