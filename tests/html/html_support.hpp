// Helpers of the page tests: documents that free themselves, the markup of a
// pass as a string, and a keyword file under a temporary VELMORA.
#ifndef VELMORA_TESTS_HTML_SUPPORT_HPP
#define VELMORA_TESTS_HTML_SUPPORT_HPP

#include "html/document.h"
#include "html/keywords.h"
#include "html/markup.h"
#include "html/scanner.h"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

struct DocDeleter {
    void operator()(VlHtmlDoc *doc) const { VlHtmlDelete(doc); }
};
using DocPtr = std::unique_ptr<VlHtmlDoc, DocDeleter>;

inline DocPtr scan(const std::string &text) {
    return DocPtr(VlReadHtmlDesignTime(text.c_str()));
}

inline VlHtmlForm *formAt(VlHtmlDoc *doc, int i) {
    return static_cast<VlHtmlForm *>(SutGetNList(doc->forms, i));
}
inline VlHtmlAnch *anchAt(VlHtmlDoc *doc, int i) {
    return static_cast<VlHtmlAnch *>(SutGetNList(doc->anchors, i));
}
inline VlHtmlSite *siteAt(VlHtmlDoc *doc, int i) {
    return static_cast<VlHtmlSite *>(SutGetNList(doc->sites, i));
}
inline VlHtmlFormElement *elemAt(VlHtmlForm *form, int i) {
    return static_cast<VlHtmlFormElement *>(SutGetNList(form->elements, i));
}

// What one markup pass (or the site pass, pass -1) writes, and its result.
struct Marked {
    int result;
    std::string text;
};
inline Marked mark(VlHtmlDoc *doc, const std::string &text, int pass) {
    char *buffer = nullptr;
    size_t size = 0;
    FILE *out = open_memstream(&buffer, &size);
    int result = pass < 0 ? VlMarkupHtmlDesignTime(doc, text.c_str(), out)
                          : VlMarkupHtmlDesignTimeForms(doc, text.c_str(), out, pass);
    fclose(out);
    Marked m{result, std::string(buffer, size)};
    free(buffer);
    return m;
}

// Loads the given keyword file text for one test and unloads it afterwards.
class KeywordsLoaded {
  public:
    explicit KeywordsLoaded(const std::string &lines) {
        if (const char *old = getenv("VELMORA")) old_ = old;
        std::filesystem::create_directories(dist_.file("config"));
        dist_.write("config/VlKeyWds.ini", lines);
        setenv("VELMORA", dist_.path().c_str(), 1);
        VlReadKeyWords();
    }
    ~KeywordsLoaded() {
        unsetenv("VELMORA"); // without VELMORA the keyword list is emptied
        VlReadKeyWords();
        if (old_) setenv("VELMORA", old_->c_str(), 1);
    }

  private:
    TempDir dist_;
    std::optional<std::string> old_;
};

#endif
