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

inline DocPtr scan(const std::string &text) {
    return DocPtr(VlReadHtmlDesignTime(text.c_str()));
}

inline VlHtmlForm *formAt(VlHtmlDoc *doc, int i) {
    return nth<VlHtmlForm>(doc->forms, i);
}
inline VlHtmlAnch *anchAt(VlHtmlDoc *doc, int i) {
    return nth<VlHtmlAnch>(doc->anchors, i);
}
inline VlHtmlSite *siteAt(VlHtmlDoc *doc, int i) {
    return nth<VlHtmlSite>(doc->sites, i);
}

// The forms as "fullName|action|method", the anchors as "fullName|url", the
// sites by name and a form's elements as "name/type".
inline Strings formsOf(VlHtmlDoc *doc) {
    return each<VlHtmlForm>(doc->forms, [](VlHtmlForm *f) {
        return str(f->fullName) + "|" + str(f->action) + "|" + str(f->method);
    });
}
inline Strings anchorsOf(VlHtmlDoc *doc) {
    return each<VlHtmlAnch>(doc->anchors,
                            [](VlHtmlAnch *a) { return str(a->fullName) + "|" + str(a->url); });
}
inline Strings sitesOf(VlHtmlDoc *doc) {
    return each<VlHtmlSite>(doc->sites, [](VlHtmlSite *s) { return str(s->name); });
}
inline Strings elementsOf(VlHtmlForm *form) {
    return each<VlHtmlFormElement>(
        form->elements, [](VlHtmlFormElement *e) { return str(e->name) + "/" + str(e->type); });
}

// The change flags of a page: changed, forms, anchors and sites, as "1100".
inline std::string flagsOf(const VlHtmlDoc *doc) {
    return std::to_string(doc->changed) + std::to_string(doc->formsChanged) +
           std::to_string(doc->anchorsChanged) + std::to_string(doc->sitesChanged);
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

// Loads the given keyword file text for one test and unloads it afterwards
// (without VELMORA the keyword list is emptied).
class KeywordsLoaded {
  public:
    explicit KeywordsLoaded(const std::string &lines) { read(lines); }
    // Reads the keyword file again, with these lines or (nullopt) without
    // the file, and returns what the reader answers.
    int read(const std::optional<std::string> &lines) {
        if (lines)
            dist_.write("config/VlKeyWds.ini", *lines);
        else
            fs::remove(dist_.file("config/VlKeyWds.ini"));
        return VlReadKeyWords();
    }
    ~KeywordsLoaded() {
        velmora_.set(nullptr);
        VlReadKeyWords();
    }

  private:
    TempDir dist_;
    ScopedEnv velmora_{"VELMORA", dist_.path().c_str()};
};

#endif
