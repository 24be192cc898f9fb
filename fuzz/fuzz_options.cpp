// Fuzz target: option text (configuration and option files) read into an
// option list, then looked up the way the project reads its options.
#include "support.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string text = fuzz::Text(data, size);
    SutList *options = VlOptionGetFromString(text.c_str());
    // Look up the name of every line, so lines without " : " and repeated
    // names go through the lookup as well.
    for (int i = 0; i < SutSizList(options) && i < 64; i++) {
        const char *line = static_cast<const char *>(SutGetNList(options, i));
        if (!line) continue;
        std::string name(line);
        size_t colon = name.find(" : ");
        if (colon != std::string::npos) name.resize(colon);
        int index = -1;
        free(VlGetOption(options, name.c_str(), &index));
        free(VlGetStrippedOptionValue(options, name.c_str()));
    }
    SutDestroyList(options);
    return 0;
}
