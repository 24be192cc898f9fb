// The keyword file: which attribute names, besides HREF and ACTION, carry a
// URL that calls the application. The driver reads it once; the scanner and
// the markup read the process-wide list. Below it, the recogniser of one
// keyword attribute and the case-insensitive tag searches the scanner shares.
#include "html/keywords.h"

#include "html/store.hpp"
#include "html/textscan.hpp"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/strings.h"

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace {

SutList *keyWords = nullptr;

} // namespace

extern "C" {

int VlIsKeyWord(const char *line) {
    if (!line || !*line) return 0;
    size_t n = std::strlen(line);
    if (line[n - 1] == '|') n--; // one bar at the very end is allowed
    if (n == 0) return 0;
    for (size_t i = 0; i < n; i++)
        if (!vlscan::IsAlnum(line[i])) return 0;
    return 1;
}

int VlReadKeyWords(void) {
    SutDestroyList(keyWords);
    keyWords = nullptr;
    const char *home = std::getenv("VELMORA");
    if (!home) return 1;
    std::string path = std::string(home) + "/config/VlKeyWds.ini";
    VlCharPtr text(VlReadFile(path.c_str()));
    if (!text) return 1;
    SutList *lines = VlParseFileString(text.get(), "\n", nullptr);
    // Invalid lines are freed and the valid ones closed up in order, in one pass.
    int kept = 0;
    for (int i = 0; i < lines->count; i++) {
        char *line = static_cast<char *>(lines->items[i]);
        if (!VlIsKeyWord(line)) {
            std::free(line);
            continue;
        }
        size_t n = std::strlen(line);
        if (line[n - 1] == '|') line[n - 1] = ' ';
        lines->items[kept++] = line;
    }
    lines->count = kept;
    if (SutSizList(lines) > 0) {
        keyWords = lines;
        return 0;
    }
    SutDestroyList(lines);
    return 1;
}

int VlAnyKeys(void) {
    return keyWords ? 1 : 0;
}

SutList *VlGetKeyWords(void) {
    return keyWords;
}

} // extern "C"

using namespace vlscan;

namespace {

// Keywords are ASCII letters and digits (VlIsKeyWord).
bool HasUpper(std::string_view s) {
    for (char c : s)
        if (c >= 'A' && c <= 'Z') return true;
    return false;
}

// Where a NUL-terminated text ends: the end the bounded readers need.
const char *EndOf(const char *text) {
    return text + strlen(text);
}

} // namespace

namespace vlscan {

char KeywordQuote(std::string_view keyword) {
    return keyword.ends_with(' ') || HasUpper(keyword) ? '"' : '\'';
}

KeywordScan::KeywordScan(const char *t, const char *e)
    : text(t), end(e), inAnch(t, e), inForm(t, e) {
    SutList *keys = VlGetKeyWords();
    std::string firsts, seconds;
    for (int i = 0; i < SutSizList(keys); i++) {
        const auto *k = static_cast<const char *>(SutGetNList(keys, i));
        if (!k || !*k) continue;
        const size_t n = strlen(k);
        const std::string_view word(k, n);
        std::string folded(word), caseBits(n, '\0');
        for (size_t j = 0; j < n; j++)
            if (IsAlpha(k[j])) {
                folded[j] = Lower(k[j]);
                caseBits[j] = 0x20;
            }
        keywords.push_back({k, n, std::move(folded), std::move(caseBits),
                            n <= 8 ? EightOf(word) : EightBytes{}, KeywordQuote(k), k[n - 1] == ' ',
                            EqualsIgnoringCase(word, "HREF"), EqualsIgnoringCase(word, "ACTION")});
        // Walks look for keywords after white space and before a letter or a digit.
        if (IsAlnum(k[0])) {
            firsts += Upper(k[0]);
            firsts += Lower(k[0]);
        }
        if (n < 2)
            allLong = false;
        else
            seconds += {Upper(k[1]), Lower(k[1])};
    }
    for (const Keyword &k : keywords) {
        if (k.isHref) {
            hrefFirst = true;
            break;
        }
        // One that begins "HREF", or that "HREF" begins, may come first.
        const std::string_view word(k.text, k.length), href = "HREF";
        if (word.size() <= href.size() ? IPrefix(href.data(), href.data() + href.size(), word)
                                       : IPrefix(word.data(), word.data() + word.size(), href))
            break;
    }
    firstBytes = ByteFinder(firsts);
    secondBytes = ByteFinder(seconds);
    marks.withSeconds = allLong;
}

std::optional<KeywordHit> RecognizeKeyword(KeywordScan &scan, const char *position,
                                           AnchorMarks anchorMarks) {
    const char *end = scan.end;
    if (scan.keywords.empty() || !scan.text || scan.text >= end || !position || position + 1 >= end)
        return std::nullopt;

    // The first keyword in list order that the attribute name begins with.
    const char *name = position + 1;
    const Keyword *keyword = nullptr;
    const bool eightToRead = end - name >= 8;
    for (const Keyword &k : scan.keywords) {
        if (k.length <= 8 && eightToRead ? Matches(k.eight, name)
                                         : FoldedPrefix(name, end, k.folded, k.caseBits.data())) {
            keyword = &k;
            break;
        }
    }
    if (!keyword) return std::nullopt;
    // Known to be an anchor's HREF: no value to read.
    if (keyword->isHref && anchorMarks == AnchorMarks::kLastOpens) return std::nullopt;

    const char *after = name + keyword->length;
    const char *value = keyword->endsInBlank
                            ? SkipWhite(after, end)
                            : (after < end ? SkipWhiteAndEqual(after, end) : nullptr);
    if (!value || *value != keyword->quote) return std::nullopt;

    // HREF of an anchor and ACTION of a form belong to the form and anchor scanner.
    if (keyword->isHref && (anchorMarks == AnchorMarks::kAsk ? scan.inAnch.Inside(position)
                                                             : scan.inAnch.CloseAhead(position)))
        return std::nullopt;
    if (keyword->isAction && scan.inForm.Inside(position)) return std::nullopt;

    // The value runs to the closing delimiter and must be a nice URL: not
    // empty, no white space, "<" or ">". One walk finds both: a byte that is
    // not nice ends it before the delimiter is looked for any further.
    for (const char *q = value + 1; q < end; ++q) {
        if (*q == keyword->quote) {
            if (q == value + 1) return std::nullopt;
            return KeywordHit{keyword, {value + 1, static_cast<size_t>(q - value - 1)}};
        }
        if (IsWhite(*q) || *q == '<' || *q == '>') return std::nullopt;
    }
    return std::nullopt;
}

VlHtmlAnch *KeywordAnchor(const KeywordHit &hit, VlHtmlStore *store) {
    auto *anchor = vlstore::NewRecord<VlHtmlAnch>(store);
    const size_t fnc = hit.url.find("?FNC=");
    if (fnc != std::string_view::npos) {
        anchor->fullName = vlstore::Copy(store, hit.url.substr(fnc + 5));
        anchor->url = vlstore::Copy(store, hit.url.substr(0, fnc));
    } else {
        anchor->url = vlstore::Copy(store, hit.url);
    }
    anchor->isKeyword = 1;
    const Keyword &keyword = *hit.keyword;
    if (!store) {
        anchor->urlAttr = VlHeapCopy({keyword.text, keyword.length});
    } else {
        // Strings of a store never change: every anchor of the keyword shares one.
        if (keyword.copiedIn != store) {
            keyword.copy = vlstore::Copy(store, {keyword.text, keyword.length});
            keyword.copiedIn = store;
        }
        anchor->urlAttr = keyword.copy;
    }
    return anchor;
}

} // namespace vlscan

extern "C" {

VlHtmlAnch *VlProcessKeyWords(const char *text, const char *position) {
    if (!text) return nullptr;
    KeywordScan scan(text, EndOf(text));
    std::optional<KeywordHit> hit = RecognizeKeyword(scan, position);
    return hit ? KeywordAnchor(*hit, nullptr) : nullptr;
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

// One pass: at each place the pattern is tried first, then the stop pattern;
// only the places holding the first byte of either (in either case) are tried.
char *VlStrIStr(const char *text, const char *pattern, const char *stop) {
    if (!text || !*text || !pattern || !*pattern) return nullptr;
    const std::string_view stopText = stop ? stop : "";
    std::string firsts = {Upper(*pattern), Lower(*pattern)};
    if (!stopText.empty()) firsts += {Upper(stopText[0]), Lower(stopText[0])};
    const ByteFinder starts(firsts);
    return const_cast<char *>(FindTag(text, pattern, stopText, ByteStarts{starts, EndOf(text)}));
}

int VlIsInAnchor(const char *text, const char *position) {
    if (!text || !*text || !position || !*position) return 1;
    return AnchTracker(text, EndOf(text)).Inside(position) ? 1 : 0;
}

int VlIsInForm(const char *text, const char *position) {
    if (!text || !*text || !position || !*position) return 1;
    return FormTracker(text, EndOf(text)).Inside(position) ? 1 : 0;
}

} // extern "C"
