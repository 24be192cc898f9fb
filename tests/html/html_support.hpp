// Helpers of the page tests: documents that free themselves, the markup of a
// pass as a string, and a keyword file under a temporary VELMORA.
#ifndef VELMORA_TESTS_HTML_SUPPORT_HPP
#define VELMORA_TESTS_HTML_SUPPORT_HPP

#include "html/document.h"
#include "html/keywords.h"
#include "html/markup.h"
#include "html/scanner.h"
#include "util/tempdir.hpp"

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
inline std::string str(const char *s) {
    return s ? s : "<null>";
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

// Sets an environment variable (null: unsets it) and restores it at the end.
class ScopedEnv {
  public:
    ScopedEnv(const char *name, const char *value) : name_(name) {
        if (const char *old = getenv(name)) old_ = old;
        if (value)
            setenv(name, value, 1);
        else
            unsetenv(name);
    }
    ~ScopedEnv() {
        if (old_)
            setenv(name_.c_str(), old_->c_str(), 1);
        else
            unsetenv(name_.c_str());
    }

  private:
    std::string name_;
    std::optional<std::string> old_;
};

// Makes dir the working directory and returns to the old one at the end.
class ScopedCwd {
  public:
    explicit ScopedCwd(const std::string &dir) : old_(std::filesystem::current_path()) {
        std::filesystem::current_path(dir);
    }
    ~ScopedCwd() { std::filesystem::current_path(old_); }

  private:
    std::filesystem::path old_;
};

#endif
