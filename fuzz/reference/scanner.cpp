// The reference copy of the page scanner (src/html/scanner.cpp as it stood
// before the scanner jumped between candidate bytes), kept unchanged inside
// namespace vlref: the differential fuzz target compares the engine's scanner
// with it.
// The HTML scanner: a character-by-character walk over a page held in memory
// that finds site marks, forms (with their INPUT, SELECT and TEXTAREA elements),
// anchors and keyword attributes, and fills a document record in page order.
// It recognises a handful of words ignoring case and takes values by simple
// quote rules; it is not an HTML parser. Every walk starts at the second
// character of its text, so a tag standing at the very start is not seen.

#include <cstdlib>
#include <cstring>
#include <string_view>

#include "html/keywords.h"
#include "reference/textscan.hpp"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/strings.h"
#include "reference/reference.hpp"

namespace vlref {

using namespace vlscan;

namespace {

char *Copy(const char *from, const char *to) {
    return VlHeapCopy(std::string_view(from, static_cast<size_t>(to - from)));
}

void Replace(char **field, char *value) {
    free(*field);
    *field = value;
}

SutList *Append(SutList **list, void *item) {
    if (!*list) *list = SutNewList();
    SutAddList(*list, item);
    return *list;
}

struct Blank {
    bool operator()(const char *p) const { return *p == ' ' || *p == '<' || *p == '>'; }
};

// The finders that keep the lenient values of one tag text linear even when
// the tag repeats TYPE= many times without a blank.
struct LibFinders {
    NextFinder<Blank> end;
    NextFinder<CharIs<'"'>> dquote;
    NextFinder<CharIs<'\''>> squote;
};

char *LibValue(const char *text, LibFinders &f) {
    if (!text || !*text) return nullptr;
    const char quote = (*text == '"' || *text == '\'') ? *text : '\0';
    const char *start = quote ? text + 1 : text;
    if (!*start) return nullptr;
    // The value's first character is taken as it stands, so a one-character
    // value is never cut.
    const char *end = f.end.Next(start + 1);
    if (quote) {
        const char *q = quote == '"' ? f.dquote.Next(start + 1) : f.squote.Next(start + 1);
        if (q && (!end || q < end)) end = q;
    }
    return end ? Copy(start, end) : nullptr;
}

// After "=" (white space allowed around it) a double-quoted value, or null.
char *QuotedAfterEqual(const char *afterWord) {
    return VlProcessNameValue(VlSkipWhiteAndEqual(afterWord));
}

// Reads a SELECT or TEXTAREA element whose text runs to its closing tag, and
// answers where the scan goes on (null when the closing tag is missing).
const char *ReadBlockElement(VlHtmlForm *form, const char *tag, const char *open, const char *close,
                             const char *type) {
    const char *end = VlStrIStr(tag + 1, close, open);
    if (!end) return nullptr;
    char *inner = Copy(tag + strlen(open), end);
    VlHtmlFormElement *element = form ? VlHtmlFormElementNew() : nullptr;
    if (form) Append(&form->elements, element);
    VlReadInput(element, inner);
    free(inner);
    if (element) {
        Replace(&element->type, StrDup(type));
        if (element->formName) { // the hidden form name belongs to the form
            Replace(&form->fullName, element->formName);
            element->formName = nullptr;
        }
    }
    return end;
}

} // namespace


char *VlProcessNameValue(const char *text) {
    if (!text || *text != '"' || !text[1]) return nullptr;
    const char *close = strchr(text + 1, '"');
    return close ? Copy(text + 1, close) : nullptr;
}

char *VlProcessNameValueLib(const char *text) {
    LibFinders f;
    return LibValue(text, f);
}

int VlReadInput(VlHtmlFormElement *element, const char *tagText) {
    if (!tagText) return 1;
    if (!*tagText) return 0;
    LibFinders finders;
    bool hidden = false, formNameInput = false;
    for (const char *p = tagText + 1; *p; ++p) {
        if (IPrefix(p, "NAME")) {
            char *value = QuotedAfterEqual(p + 4);
            if (!value) continue;
            if (strcasecmp(value, "VlFormName") == 0) formNameInput = true;
            if (element)
                Replace(&element->name, value);
            else
                free(value);
        } else if (IPrefix(p, "TYPE")) {
            char *value = LibValue(VlSkipWhiteAndEqual(p + 4), finders);
            if (!value) continue;
            if (strcasecmp(value, "hidden") == 0) hidden = true;
            if (element)
                Replace(&element->type, value);
            else
                free(value);
        } else if (hidden && formNameInput && IPrefix(p, "VALUE")) {
            char *value = QuotedAfterEqual(p + 5);
            if (element && value)
                Replace(&element->formName, value);
            else
                free(value);
        }
    }
    return 0;
}

int VlProcessForm(VlHtmlForm *form, const char *formText) {
    if (!formText || !*formText) return 1;
    NextFinder<CharIs<'>'>> tagEnd;
    for (const char *p = formText + 1; *p; ++p) {
        if (*p != '<') {
            // ACTION and METHOD count wherever they stand in the form: the last wins.
            if (IPrefix(p, "ACTION")) {
                char *value = QuotedAfterEqual(p + 6);
                if (value && form)
                    Replace(&form->action, value);
                else
                    free(value);
            } else if (IPrefix(p, "METHOD")) {
                char *value = QuotedAfterEqual(p + 6);
                if (value && form)
                    Replace(&form->method, value);
                else
                    free(value);
            }
        } else if (IPrefix(p, "<INPUT")) {
            const char *gt = tagEnd.Next(p + 1);
            if (!gt) continue;
            // The tag text keeps its ">", so an unquoted last value still ends.
            char *tag = Copy(p + 6, gt + 1);
            VlHtmlFormElement *element = form ? VlHtmlFormElementNew() : nullptr;
            if (form) Append(&form->elements, element);
            VlReadInput(element, tag);
            free(tag);
            if (element && element->formName) {
                Replace(&form->fullName, element->formName);
                element->formName = nullptr;
            }
            p = gt;
        } else if (IPrefix(p, "<SELECT")) {
            if (const char *end = ReadBlockElement(form, p, "<SELECT", "/SELECT>", "SELECT"))
                p = end;
        } else if (IPrefix(p, "<TEXTAREA")) {
            if (const char *end = ReadBlockElement(form, p, "<TEXTAREA", "/TEXTAREA>", "TEXTAREA"))
                p = end;
        }
    }
    return 0;
}

int VlReadForm(VlHtmlForm *form, const char *cursor) {
    if (!cursor || !*cursor) return 1;
    const char *end = VlStrIStr(cursor + 1, "/FORM>", "<FORM");
    if (!end) return 0;
    const char *start = cursor + strlen("<FORM");
    char *text = end > start ? Copy(start, end) : StrDup("");
    VlProcessForm(form, text);
    free(text);
    return 0;
}

int VlProcessAnch(VlHtmlAnch *anchor, const char *anchText) {
    if (!anchText || !*anchText) return 0;
    bool sawHref = false;
    for (const char *p = anchText + 1; *p; ++p) {
        if (!IPrefix(p, "HREF")) continue;
        sawHref = true;
        const char *q = p + 4;
        while (*q && IsWhite(*q))
            ++q;
        if (!*q) return 1;
        if (*q != '=') continue;
        ++q;
        while (*q && IsWhite(*q))
            ++q;
        if (!*q) return 1;
        if (*q != '"') continue;
        VlCharPtr value(VlProcessNameValue(q));
        if (!value) continue;
        const char *question = strchr(value.get(), '?');
        if (!question) {
            if (anchor) Replace(&anchor->url, value.release());
            return 1;
        }
        if (strncmp(question + 1, "FNC=", 4) == 0) {
            // Named: the activator's full name follows; a later HREF may override.
            if (anchor) {
                Replace(&anchor->fullName, StrDup(question + 5));
                Replace(&anchor->url, Copy(value.get(), question));
            }
            continue;
        }
        if (anchor) Replace(&anchor->url, value.release());
        return 1;
    }
    return sawHref ? 1 : 0;
}

int VlReadAnch(VlHtmlAnch *anchor, const char *cursor) {
    if (!cursor || !*cursor) return 1;
    const char *end = VlStrIStr(cursor + 1, "/A>", "<A ");
    if (!end) return 0;
    // The text starts right after "<A", with the blank that follows it, so an
    // HREF standing first in the tag is seen by the scan from the second character.
    const char *start = cursor + 2;
    char *text = end > start ? Copy(start, end) : StrDup("");
    VlProcessAnch(anchor, text);
    free(text);
    return 0;
}

VlHtmlDoc *VlReadHtmlDesignTime(const char *text) {
    if (!text) return nullptr;
    VlHtmlDoc *doc = VlHtmlNew();
    if (!*text) return doc;
    const bool keywords = VlAnyKeys() != 0;
    KeywordScan scan(text);
    struct Hashes {
        bool operator()(const char *p) const { return p[0] == '#' && p[1] == '#'; }
    };
    NextFinder<Hashes> siteEnd;

    for (const char *p = text + 1; *p; ++p) {
        const char c = *p;
        if (c == '#') {
            if (strncmp(p, "##Vl_", 5) != 0) continue;
            const char *close = siteEnd.Next(p + 5);
            if (!close) continue;
            const char *name = p + 5;
            bool valid = true;
            for (const char *q = name; q < close && valid; ++q)
                valid = !IsWhite(*q) && *q != '"' && *q != '\\';
            if (!valid) continue;
            VlHtmlSite *site = VlHtmlSiteNew();
            site->name = Copy(name, close);
            Append(&doc->sites, site);
            p = close;
        } else if (c == '<') {
            if (FormOpen(p) && VlStrIStr(p + 1, "/FORM>", "<FORM")) {
                VlHtmlForm *form = VlHtmlFormNew();
                Append(&doc->forms, form);
                VlReadForm(form, p);
            }
            if (AnchOpen(p)) {
                VlHtmlAnch *anchor = VlHtmlAnchNew();
                VlReadAnch(anchor, p);
                if (anchor->fullName || anchor->url)
                    Append(&doc->anchors, anchor);
                else
                    VlHtmlAnchDelete(anchor);
            }
        } else if (keywords && IsWhite(c) && IsAlnum(p[1])) {
            if (VlHtmlAnch *anchor = ProcessKeyWordsAt(scan, p)) Append(&doc->anchors, anchor);
        }
    }
    return doc;
}

} // namespace vlref
