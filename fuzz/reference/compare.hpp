// The differential check of the page scanner and the design-time markup: one
// page text goes through the engine's scanner (both its walks) and markup
// and through the reference copies (reference.hpp), and every record field
// and every byte of marked text must agree. The public readers the scanner is built from are
// compared on the same text as well. Used by the fuzz target fuzz_html_diff
// and by the corpus test of the html tests.
#ifndef VELMORA_FUZZ_REFERENCE_COMPARE_HPP
#define VELMORA_FUZZ_REFERENCE_COMPARE_HPP

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "html/markup_text.hpp"
#include "html/textscan.hpp"
#include "reference/reference.hpp"
#include "velmora.h"

namespace vlref {

// The keyword file of the differential check: upper-case, lower-case and
// bar keywords, a keyword that is the prefix of a later one, one starting
// with a digit, one of a single letter, and HREF and ACTION, whose attributes
// inside an anchor or a form are left to the tag scanner.
constexpr const char kDiffKeywords[] = "SRC\nSRCSET\nlow\ncode|\nBACKGROUND|\nonclick\nHREF\n"
                                       "action\n9x|\nq\n";

// Collects the first difference found; empty while everything agrees.
class Differences {
  public:
    void Text(const std::string &what, const char *engine, const char *reference) {
        if ((engine == nullptr) != (reference == nullptr) ||
            (engine && std::strcmp(engine, reference) != 0))
            Note(what + ": engine " + Show(engine) + ", reference " + Show(reference));
    }
    void Number(const std::string &what, long long engine, long long reference) {
        if (engine != reference)
            Note(what + ": engine " + std::to_string(engine) + ", reference " +
                 std::to_string(reference));
    }
    void Bytes(const std::string &what, const std::string &engine, const std::string &reference) {
        if (engine == reference) return;
        size_t at = 0;
        while (at < engine.size() && at < reference.size() && engine[at] == reference[at])
            at++;
        Note(what + ": texts differ at byte " + std::to_string(at) + " (engine " +
             std::to_string(engine.size()) + " bytes, reference " +
             std::to_string(reference.size()) + ")");
    }
    const std::string &First() const { return first_; }

  private:
    static std::string Show(const char *s) { return s ? "\"" + std::string(s) + "\"" : "null"; }
    void Note(const std::string &text) {
        if (first_.empty()) first_ = text;
    }
    std::string first_;
};

template <class T> T *At(SutList *list, int i) {
    return static_cast<T *>(SutGetNList(list, i));
}

inline void CompareElement(Differences &d, const std::string &w, const VlHtmlFormElement *a,
                           const VlHtmlFormElement *b) {
    d.Number(w + " present", a != nullptr, b != nullptr);
    if (!a || !b) return;
    d.Text(w + ".name", a->name, b->name);
    d.Text(w + ".type", a->type, b->type);
    d.Text(w + ".formName", a->formName, b->formName);
    d.Text(w + ".origFormName", a->origFormName, b->origFormName);
}

inline void CompareForm(Differences &d, const std::string &w, const VlHtmlForm *a,
                        const VlHtmlForm *b) {
    d.Number(w + " present", a != nullptr, b != nullptr);
    if (!a || !b) return;
    d.Text(w + ".fullName", a->fullName, b->fullName);
    d.Text(w + ".action", a->action, b->action);
    d.Text(w + ".method", a->method, b->method);
    d.Text(w + ".origFullName", a->origFullName, b->origFullName);
    d.Text(w + ".origAction", a->origAction, b->origAction);
    d.Text(w + ".origMethod", a->origMethod, b->origMethod);
    d.Number(w + ".named", a->named, b->named);
    d.Number(w + ".elements", SutSizList(a->elements), SutSizList(b->elements));
    for (int i = 0; i < SutSizList(a->elements) && i < SutSizList(b->elements); i++)
        CompareElement(d, w + ".element " + std::to_string(i),
                       At<VlHtmlFormElement>(a->elements, i),
                       At<VlHtmlFormElement>(b->elements, i));
}

inline void CompareAnch(Differences &d, const std::string &w, const VlHtmlAnch *a,
                        const VlHtmlAnch *b) {
    d.Number(w + " present", a != nullptr, b != nullptr);
    if (!a || !b) return;
    d.Text(w + ".fullName", a->fullName, b->fullName);
    d.Text(w + ".url", a->url, b->url);
    d.Text(w + ".origFullName", a->origFullName, b->origFullName);
    d.Text(w + ".origUrl", a->origUrl, b->origUrl);
    d.Number(w + ".isKeyword", a->isKeyword, b->isKeyword);
    d.Text(w + ".urlAttr", a->urlAttr, b->urlAttr);
}

inline void CompareDocs(Differences &d, const std::string &w, const VlHtmlDoc *a,
                        const VlHtmlDoc *b) {
    d.Number(w + " present", a != nullptr, b != nullptr);
    if (!a || !b) return;
    d.Text(w + ".name", a->name, b->name);
    d.Text(w + ".modName", a->modName, b->modName);
    d.Number(w + ".changed", a->changed, b->changed);
    d.Number(w + ".sitesChanged", a->sitesChanged, b->sitesChanged);
    d.Number(w + ".formsChanged", a->formsChanged, b->formsChanged);
    d.Number(w + ".anchorsChanged", a->anchorsChanged, b->anchorsChanged);
    d.Number(w + ".nextFormNumber", a->nextFormNumber, b->nextFormNumber);
    d.Number(w + ".nextSiteNumber", a->nextSiteNumber, b->nextSiteNumber);
    d.Number(w + ".nextAnchNumber", a->nextAnchNumber, b->nextAnchNumber);
    d.Text(w + ".path", a->path, b->path);
    // A list that was never created and an empty one are told apart too.
    d.Number(w + ".forms", SutSizList(a->forms), SutSizList(b->forms));
    d.Number(w + ".sites", SutSizList(a->sites), SutSizList(b->sites));
    d.Number(w + ".anchors", SutSizList(a->anchors), SutSizList(b->anchors));
    for (int i = 0; i < SutSizList(a->forms) && i < SutSizList(b->forms); i++)
        CompareForm(d, w + " form " + std::to_string(i), At<VlHtmlForm>(a->forms, i),
                    At<VlHtmlForm>(b->forms, i));
    for (int i = 0; i < SutSizList(a->anchors) && i < SutSizList(b->anchors); i++)
        CompareAnch(d, w + " anchor " + std::to_string(i), At<VlHtmlAnch>(a->anchors, i),
                    At<VlHtmlAnch>(b->anchors, i));
    for (int i = 0; i < SutSizList(a->sites) && i < SutSizList(b->sites); i++) {
        const auto *x = At<VlHtmlSite>(a->sites, i);
        const auto *y = At<VlHtmlSite>(b->sites, i);
        d.Text(w + " site " + std::to_string(i) + ".name", x ? x->name : nullptr,
               y ? y->name : nullptr);
        d.Text(w + " site " + std::to_string(i) + ".origName", x ? x->origName : nullptr,
               y ? y->origName : nullptr);
    }
}

// The text a markup pass writes (pass -1: the site marks) and its result.
struct Marked {
    std::string text;
    int result = 0;
};

template <class Markup> Marked RunMarkup(Markup markup) {
    char *buffer = nullptr;
    size_t length = 0;
    FILE *out = open_memstream(&buffer, &length);
    if (!out) std::abort();
    Marked m;
    m.result = markup(out);
    std::fclose(out);
    m.text.assign(buffer, length);
    std::free(buffer);
    return m;
}

inline Marked EnginePass(VlHtmlDoc *doc, const std::string &text, int pass) {
    return RunMarkup([&](FILE *out) {
        return pass < 0 ? ::VlMarkupHtmlDesignTime(doc, text.c_str(), out)
                        : ::VlMarkupHtmlDesignTimeForms(doc, text.c_str(), out, pass);
    });
}

inline Marked ReferencePass(VlHtmlDoc *doc, const std::string &text, int pass) {
    return RunMarkup([&](FILE *out) {
        return pass < 0 ? vlref::VlMarkupHtmlDesignTime(doc, text.c_str(), out)
                        : vlref::VlMarkupHtmlDesignTimeForms(doc, text.c_str(), out, pass);
    });
}

// Runs one pass in both and compares; gives the engine's text for chaining.
inline std::string ComparePass(Differences &d, const std::string &w, VlHtmlDoc *engine,
                               VlHtmlDoc *reference, const std::string &text, int pass) {
    Marked a = EnginePass(engine, text, pass);
    Marked b = ReferencePass(reference, text, pass);
    const std::string what = w + " pass " + std::to_string(pass);
    d.Number(what + " result", a.result, b.result);
    d.Bytes(what, a.text, b.text);
    // The save chains the passes in memory instead of through a stream: the
    // text it keeps must be the same (the stream functions read up to a NUL).
    std::string inMemory = text.c_str(), spare;
    vlmarkup::RunPass(engine, inMemory, spare, pass);
    d.Bytes(what + " in memory", inMemory, a.text);
    return a.text;
}

// The small public readers on the whole text as their argument.
inline void CompareReaders(Differences &d, const char *text) {
    VlHtmlForm *fa = VlHtmlFormNew(), *fb = VlHtmlFormNew();
    d.Number("VlProcessForm result", ::VlProcessForm(fa, text), vlref::VlProcessForm(fb, text));
    CompareForm(d, "VlProcessForm", fa, fb);
    VlHtmlFormDelete(fa);
    VlHtmlFormDelete(fb);

    VlHtmlAnch *aa = VlHtmlAnchNew(), *ab = VlHtmlAnchNew();
    d.Number("VlProcessAnch result", ::VlProcessAnch(aa, text), vlref::VlProcessAnch(ab, text));
    CompareAnch(d, "VlProcessAnch", aa, ab);
    VlHtmlAnchDelete(aa);
    VlHtmlAnchDelete(ab);

    VlHtmlFormElement *ea = VlHtmlFormElementNew(), *eb = VlHtmlFormElementNew();
    d.Number("VlReadInput result", ::VlReadInput(ea, text), vlref::VlReadInput(eb, text));
    CompareElement(d, "VlReadInput", ea, eb);
    VlHtmlFormElementDelete(ea);
    VlHtmlFormElementDelete(eb);

    auto owned = [&](const char *what, char *a, char *b) {
        d.Text(what, a, b);
        std::free(a);
        std::free(b);
    };
    owned("VlProcessNameValue", ::VlProcessNameValue(text), vlref::VlProcessNameValue(text));
    owned("VlProcessNameValueLib", ::VlProcessNameValueLib(text),
          vlref::VlProcessNameValueLib(text));

    const char *const searches[][2] = {
        {"/FORM>", "<FORM"}, {"/A>", "<A "}, {"/SELECT>", "<SELECT"}, {"a", nullptr}, {"x", "y"}};
    for (const auto &s : searches) {
        const char *a = ::VlStrIStr(text, s[0], s[1]);
        const char *b = vlref::VlStrIStr(text, s[0], s[1]);
        d.Number(std::string("VlStrIStr ") + s[0], a ? a - text : -1, b ? b - text : -1);
    }
    // Keyword attributes and the inside tests at the first white-space places.
    int tried = 0;
    for (const char *p = text; *p && tried < 16; ++p) {
        if (*p != ' ' && *p != '\n' && *p != '\t') continue;
        tried++;
        const std::string at = " at " + std::to_string(p - text);
        VlHtmlAnch *ka = ::VlProcessKeyWords(text, p);
        VlHtmlAnch *kb = vlref::VlProcessKeyWords(text, p);
        CompareAnch(d, "VlProcessKeyWords" + at, ka, kb);
        VlHtmlAnchDelete(ka);
        VlHtmlAnchDelete(kb);
        d.Number("VlIsInAnchor" + at, ::VlIsInAnchor(text, p), vlref::VlIsInAnchor(text, p));
        d.Number("VlIsInForm" + at, ::VlIsInForm(text, p), vlref::VlIsInForm(text, p));
    }
}

// The whole check on one page (cut at its first NUL, as a page file read into
// a C string is): the documents as scanned, the passes on the page with the
// records as scanned and once named, the passes chained as a save runs them,
// and the readers. Uses the keyword list as it is loaded. Empty when the
// engine and the reference agree, else the first difference.
inline std::string DiffPage(std::string page) {
    page.resize(std::strlen(page.c_str()));
    Differences d;
    VlHtmlDoc *a = ::VlReadHtmlDesignTime(page.c_str());
    VlHtmlDoc *b = vlref::VlReadHtmlDesignTime(page.c_str());
    CompareDocs(d, "scanned", a, b);
    // The scan reads blocks of thirty-two bytes where the processor can: the
    // sixteen-byte walk must agree too.
    VlHtmlDoc *narrow = vlscan::ReadDesignTime(page.c_str(), false);
    CompareDocs(d, "scanned sixteen bytes at a time", narrow, b);
    VlHtmlDelete(narrow);
    for (int pass : {1, 2, 0, -1})
        ComparePass(d, "as scanned", a, b, page, pass);

    for (VlHtmlDoc *doc : {a, b}) {
        VlHtmlSetName(doc, "shop.html");
        VlHtmlMarkOrigNames(doc);
        VlSetLastSiteNumber(doc);
        VlHtmlGenFormNames(doc);
        VlHtmlGenAnchNames(doc);
        VlHtmlGenSiteNames(doc);
    }
    CompareDocs(d, "named", a, b);
    for (int pass : {1, 2, 0, -1})
        ComparePass(d, "named", a, b, page, pass);
    std::string chained = page;
    for (int pass : {1, 2, 0, -1})
        chained = ComparePass(d, "chained", a, b, chained, pass);
    VlHtmlDelete(a);
    VlHtmlDelete(b);

    // The marked page scans alike too.
    a = ::VlReadHtmlDesignTime(chained.c_str());
    b = vlref::VlReadHtmlDesignTime(chained.c_str());
    CompareDocs(d, "marked page scanned", a, b);
    VlHtmlDelete(a);
    VlHtmlDelete(b);

    CompareReaders(d, page.c_str());
    return d.First();
}

} // namespace vlref

#endif
