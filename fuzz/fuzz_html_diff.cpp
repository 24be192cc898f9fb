// Fuzz target: the differential check of the page scanner and the markup. The
// input is a page; the engine's scanner and markup and the reference copies
// of them as they stood before the scanner jumped between candidate bytes
// (fuzz/reference/) must give identical documents, identical marked text of
// every pass and identical answers of the small readers, once with a keyword
// file loaded and once without. Any difference aborts with a description.
#include "support.hpp"

#include "reference/compare.hpp"

namespace {

std::string withKeywords, withoutKeywords; // two distribution directories

void Check(const std::string &page, const std::string &dist) {
    setenv("VELMORA", dist.c_str(), 1);
    VlReadKeyWords();
    std::string difference = vlref::DiffPage(page);
    if (!difference.empty()) {
        // Standard error's stream is silenced; descriptor 2 still reports.
        dprintf(2, "engine and reference differ (keywords %s): %s\n",
                VlAnyKeys() ? "loaded" : "not loaded", difference.c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    withKeywords = fuzz::Distribution();
    fuzz::WriteFile(withKeywords + "/config/VlKeyWds.ini", vlref::kDiffKeywords);
    withoutKeywords = fuzz::ScratchDir() + "/nokeys";
    std::filesystem::create_directories(withoutKeywords);
    VlHtmlSetProjName("/cgi-bin/shop.exe");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string page = fuzz::Text(data, size);
    Check(page, withKeywords);
    Check(page, withoutKeywords);
    return 0;
}
