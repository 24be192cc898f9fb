// Fuzz target: a page scanned into its document, its unnamed forms and
// anchors named, then marked up the way a page is saved: the anchor pass, the
// keyword pass and the form pass, each reading what the one before wrote, and
// the site marks last. The marked page is scanned again.
#include "support.hpp"

namespace {

// One markup pass over text into a new string.
std::string Pass(VlHtmlDoc *doc, const std::string &text, int pass) {
    char *buffer = nullptr;
    size_t length = 0;
    FILE *out = open_memstream(&buffer, &length);
    if (!out) std::abort();
    if (pass < 0)
        VlMarkupHtmlDesignTime(doc, text.c_str(), out);
    else
        VlMarkupHtmlDesignTimeForms(doc, text.c_str(), out, pass);
    fclose(out);
    std::string result(buffer, length);
    free(buffer);
    return result;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    fuzz::Distribution();
    // The keyword pass runs only with keywords loaded.
    if (VlReadKeyWords() != 0) std::abort();
    VlHtmlSetProjName("/cgi-bin/shop.exe");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string page = fuzz::Text(data, size);
    page.resize(strlen(page.c_str()));
    VlHtmlDoc *doc = VlReadHtmlDesignTime(page.c_str());
    if (!doc) std::abort();
    VlHtmlSetName(doc, "shop.html");
    VlHtmlMarkOrigNames(doc);
    VlSetLastSiteNumber(doc);
    VlHtmlGenFormNames(doc);
    VlHtmlGenAnchNames(doc);
    VlHtmlGenSiteNames(doc);

    std::string anchors = Pass(doc, page, 1);
    std::string keywords = Pass(doc, anchors, 2);
    std::string forms = Pass(doc, keywords, 0);
    std::string sites = Pass(doc, forms, -1);
    VlHtmlDelete(doc);

    VlHtmlDoc *again = VlReadHtmlDesignTime(sites.c_str());
    if (!again) std::abort();
    VlHtmlDelete(again);
    return 0;
}
