// The reference copy of the keyword-attribute recogniser and the tag searches
// (src/html/keywords.cpp as it stood before the speed-up, less the keyword
// file, which the reference shares with the engine), kept unchanged inside
// namespace vlref for the differential fuzz target.
// The keyword file: which attribute names, besides HREF and ACTION, carry a
// URL that calls the application. The driver reads it once; the scanner and
// the markup read the process-wide list. Below it, the recogniser of one
// keyword attribute and the case-insensitive tag searches the scanner shares.
#include "html/keywords.h"
#include "reference/textscan.hpp"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/strings.h"

#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include "reference/reference.hpp"

namespace vlref {


using namespace vlscan;

namespace {

bool EndsInBlank(const char *s) {
    size_t n = strlen(s);
    return n > 0 && s[n - 1] == ' ';
}

bool HasUpper(const char *s) {
    for (; *s; ++s)
        if (isupper(static_cast<unsigned char>(*s))) return true;
    return false;
}

bool SameIgnoringCase(const char *a, const char *b) {
    return IPrefix(a, b) && strlen(a) == strlen(b);
}

} // namespace

namespace vlscan {

char KeywordQuote(const char *keyword) {
    return EndsInBlank(keyword) || HasUpper(keyword) ? '"' : '\'';
}

VlHtmlAnch *ProcessKeyWordsAt(KeywordScan &scan, const char *position) {
    SutList *keys = VlGetKeyWords();
    const char *text = scan.text;
    if (!keys || !text || !*text || !position || !*position || !position[1]) return nullptr;

    // The first keyword in list order that the attribute name begins with.
    const char *keyword = nullptr;
    for (int i = 0; i < SutSizList(keys) && !keyword; i++) {
        const auto *k = static_cast<const char *>(SutGetNList(keys, i));
        if (k && *k && IPrefix(position + 1, k)) keyword = k;
    }
    if (!keyword) return nullptr;

    const char *after = position + 1 + strlen(keyword);
    const char *value = EndsInBlank(keyword) ? VlSkipWhite(after) : VlIsValidUrlKey(after);
    if (!value) return nullptr;
    const char quote = KeywordQuote(keyword);
    if (*value != quote) return nullptr;

    // HREF of an anchor and ACTION of a form belong to the form and anchor scanner.
    if (SameIgnoringCase(keyword, "HREF") && scan.inAnch.Inside(position)) return nullptr;
    if (SameIgnoringCase(keyword, "ACTION") && scan.inForm.Inside(position)) return nullptr;

    const char *close = strchr(value + 1, quote);
    if (!close) return nullptr;
    std::string_view url(value + 1, static_cast<size_t>(close - value - 1));
    VlCharPtr whole(VlHeapCopy(url));
    if (!VlIsNiceUrlName(whole.get())) return nullptr;

    VlHtmlAnch *anchor = VlHtmlAnchNew();
    size_t fnc = url.find("?FNC=");
    if (fnc != std::string_view::npos) {
        anchor->fullName = VlHeapCopy(url.substr(fnc + 5));
        anchor->url = VlHeapCopy(url.substr(0, fnc));
    } else {
        anchor->url = whole.release();
    }
    anchor->isKeyword = 1;
    anchor->urlAttr = StrDup(keyword);
    return anchor;
}

} // namespace vlscan


VlHtmlAnch *VlProcessKeyWords(const char *text, const char *position) {
    if (!text) return nullptr;
    KeywordScan scan(text);
    return ProcessKeyWordsAt(scan, position);
}

char *VlIsValidUrlKey(const char *text) {
    if (!text || !*text) return nullptr;
    return VlSkipWhiteAndEqual(text);
}

char *VlSkipWhite(const char *text) {
    if (!text) return nullptr;
    while (*text && IsWhite(*text))
        ++text;
    return *text ? const_cast<char *>(text) : nullptr;
}

char *VlSkipWhiteAndEqual(const char *text) {
    const char *p = VlSkipWhite(text);
    if (!p || *p != '=') return nullptr;
    return VlSkipWhite(p + 1);
}

int VlIsNiceUrlName(const char *text) {
    if (!text || !*text) return 0;
    for (; *text; ++text)
        if (IsWhite(*text) || *text == '<' || *text == '>') return 0;
    return 1;
}

char *VlToLower(const char *text) {
    char *copy = VlCopyString(text);
    for (char *p = copy; *p; ++p)
        *p = static_cast<char>(tolower(static_cast<unsigned char>(*p)));
    return copy;
}

int VlStrNCaseCompAnch(const char *text, const char *pattern, int count) {
    if (!text) return -1;
    if (!pattern) return 1;
    if (count <= 0) return 0;
    if (strncasecmp(text, "<A\t", static_cast<size_t>(count)) == 0 ||
        strncasecmp(text, "<A\n", static_cast<size_t>(count)) == 0)
        return 0;
    return strncasecmp(text, pattern, static_cast<size_t>(count));
}

// One pass: at each place the pattern is tried first, then the stop pattern.
char *VlStrIStr(const char *text, const char *pattern, const char *stop) {
    if (!text || !*text || !pattern || !*pattern) return nullptr;
    const bool hasStop = stop && *stop;
    const bool anchStop = hasStop && strcmp(stop, "<A ") == 0;
    const char first = Upper(*pattern);
    const char stopFirst = hasStop ? Upper(*stop) : '\0';
    for (const char *p = text; *p; ++p) {
        const char c = Upper(*p);
        if (c == first && IPrefix(p, pattern)) return const_cast<char *>(p);
        if (hasStop && c == stopFirst) {
            if (anchStop ? AnchOpen(p) : IPrefix(p, stop)) return nullptr;
        }
    }
    return nullptr;
}

int VlIsInAnchor(const char *text, const char *position) {
    if (!text || !*text || !position || !*position) return 1;
    return AnchTracker(text).Inside(position) ? 1 : 0;
}

int VlIsInForm(const char *text, const char *position) {
    if (!text || !*text || !position || !*position) return 1;
    return FormTracker(text).Inside(position) ? 1 : 0;
}

} // namespace vlref
