// Fuzz target: the multi-line resource lookup of map files. The first line of
// the input is the name looked up, the other lines are the resource list.
// The lookup is made twice, as the lookup changes the list it reads.
#include "support.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string text = fuzz::Text(data, size);
    text.resize(strlen(text.c_str()));
    size_t newline = text.find('\n');
    std::string name = text.substr(0, newline);
    SutList *list = fuzz::Lines(newline == std::string::npos ? "" : text.substr(newline + 1));
    for (int round = 0; round < 2; round++) {
        char *value = WbGetMultiResourceValueFromList(list, name.c_str());
        if (!value) std::abort(); // never null
        free(value);
        (void)WbGetResourceValueFromList(list, name.c_str()); // points into the list
    }
    SutDestroyList(list);
    return 0;
}
