// Fuzz target: the keyword file. VELMORA names a scratch distribution whose
// config/VlKeyWds.ini holds the input; each run reads it again (which also
// replaces the keywords of the run before).
#include "support.hpp"

namespace {
std::string keywordFile;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    keywordFile = fuzz::Distribution() + "/config/VlKeyWds.ini";
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::WriteFile(keywordFile, fuzz::Text(data, size));
    int missing = VlReadKeyWords();
    if (missing != (VlAnyKeys() ? 0 : 1)) std::abort();
    SutList *keywords = VlGetKeyWords();
    for (int i = 0; i < SutSizList(keywords); i++)
        if (!SutGetNList(keywords, i)) std::abort();
    return 0;
}
