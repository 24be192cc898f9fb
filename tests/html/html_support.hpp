// Helpers of the page tests: documents that free themselves, their records
// listed as text, the markup of a pass as a string, and a keyword file under a
// temporary VELMORA.
#ifndef VELMORA_TESTS_HTML_SUPPORT_HPP
#define VELMORA_TESTS_HTML_SUPPORT_HPP

#include "html/document.h"
#include "html/keywords.h"
#include "html/markup.h"
#include "html/scanner.h"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"

#include <cstdio>
#include <memory>
#include <optional>

struct DocDeleter {
    void operator()(VlHtmlDoc *doc) const { VlHtmlDelete(doc); }
};
using DocPtr = std::unique_ptr<VlHtmlDoc, DocDeleter>;

inline DocPtr Scan(const std::string &text) {
    return DocPtr(VlReadHtmlDesignTime(text.c_str()));
}

inline VlHtmlForm *FormAt(VlHtmlDoc *doc, int i) {
    return Nth<VlHtmlForm>(doc->forms, i);
}
inline VlHtmlAnch *AnchAt(VlHtmlDoc *doc, int i) {
    return Nth<VlHtmlAnch>(doc->anchors, i);
}
inline VlHtmlSite *SiteAt(VlHtmlDoc *doc, int i) {
    return Nth<VlHtmlSite>(doc->sites, i);
}

// The forms as "fullName|action|method", the anchors as "fullName|url", the
// sites by name and a form's elements as "name/type".
inline Strings FormsOf(VlHtmlDoc *doc) {
    return Each<VlHtmlForm>(doc->forms, [](VlHtmlForm *f) {
        return Str(f->fullName) + "|" + Str(f->action) + "|" + Str(f->method);
    });
}
inline Strings AnchorsOf(VlHtmlDoc *doc) {
    return Each<VlHtmlAnch>(doc->anchors,
                            [](VlHtmlAnch *a) { return Str(a->fullName) + "|" + Str(a->url); });
}
inline Strings SitesOf(VlHtmlDoc *doc) {
    return Each<VlHtmlSite>(doc->sites, [](VlHtmlSite *s) { return Str(s->name); });
}
inline Strings ElementsOf(VlHtmlForm *form) {
    return Each<VlHtmlFormElement>(
        form->elements, [](VlHtmlFormElement *e) { return Str(e->name) + "/" + Str(e->type); });
}

// The change flags of a page: changed, forms, anchors and sites, as "1100".
inline std::string FlagsOf(const VlHtmlDoc *doc) {
    return std::to_string(doc->changed) + std::to_string(doc->formsChanged) +
           std::to_string(doc->anchorsChanged) + std::to_string(doc->sitesChanged);
}

// What one markup pass (or the site pass, pass -1) writes, and its result.
struct Marked {
    int result;
    std::string text;
};
inline Marked Mark(VlHtmlDoc *doc, const std::string &text, int pass) {
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

// Loads the given keyword file text for one test and unloads it afterwards
// (without VELMORA the keyword list is emptied).
class KeywordsLoaded {
  public:
    explicit KeywordsLoaded(const std::string &lines) { Read(lines); }
    // Reads the keyword file again, with these lines or (nullopt) without
    // the file, and returns what the reader answers.
    int Read(const std::optional<std::string> &lines) {
        if (lines)
            dist_.Write("config/VlKeyWds.ini", *lines);
        else
            fs::remove(dist_.File("config/VlKeyWds.ini"));
        return VlReadKeyWords();
    }
    ~KeywordsLoaded() {
        velmora_.Set(nullptr);
        VlReadKeyWords();
    }

  private:
    TempDir dist_;
    ScopedEnv velmora_{"VELMORA", dist_.Path().c_str()};
};

#endif
