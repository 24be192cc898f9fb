// String helpers used everywhere: null-safe wrappers of the C functions,
// copying and joining, SQL quoting, path splitting, delimiter names and the
// marker substitution that fills templates. Results are malloc'ed strings.
#include "util/strings.h"

#include "util/heap.hpp"

#include <algorithm>
#include <cctype>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

char *VlHeapCopy(std::string_view text) {
    char *out = static_cast<char *>(std::malloc(text.size() + 1));
    if (!out) return nullptr;
    if (!text.empty()) std::memcpy(out, text.data(), text.size());
    out[text.size()] = '\0';
    return out;
}

void VlReplaceString(char **field, const char *value) {
    char *copy = value ? strdup(value) : nullptr;
    std::free(*field);
    *field = copy;
}

void VlReplaceText(char **field, std::string_view text) {
    char *copy = VlHeapCopy(text);
    std::free(*field);
    *field = copy;
}

namespace {

bool IsSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// Lengths of the key/value lists read as strings; a null item counts as "".
std::string_view ItemText(const SutList *list, int n) {
    const char *s = static_cast<const char *>(SutGetNList(list, n));
    return s ? std::string_view(s) : std::string_view();
}

} // namespace

extern "C" {

char *StrDup(const char *s) {
    return s ? strdup(s) : nullptr;
}

char *StrNDup(const char *s, int n) {
    if (!s) return nullptr;
    size_t limit = n > 0 ? static_cast<size_t>(n) : 0;
    return VlHeapCopy(std::string_view(s, strnlen(s, limit)));
}

char *StrCat(char *dest, const char *src) {
    // StrCat is strcat made null-safe: the caller owns the room, as with strcat.
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.strcpy): unbounded by contract
    if (dest && src) std::strcat(dest, src);
    return dest;
}

char *StrChr(const char *s, int c) {
    return s ? const_cast<char *>(std::strchr(s, c)) : nullptr;
}

int StrCmp(const char *a, const char *b) {
    if (!a && !b) return 0;
    if (!a || !b) return 1;
    return std::strcmp(a, b);
}

int StrNCmp(const char *a, const char *b, int n) {
    if (!a && !b) return 0;
    if (!a || !b) return 1;
    return std::strncmp(a, b, static_cast<size_t>(n));
}

int ResStrCmp(const char *a, const char *b) {
    if (a && b) return std::strcmp(a, b);
    const char *other = a ? a : b;
    return other && *other ? 1 : 0;
}

char *StrCpy(char **destPtr, const char *src) {
    if (!destPtr) return nullptr;
    if (!src) {
        *destPtr = nullptr;
        return nullptr;
    }
    if (!*destPtr) return nullptr;
    // StrCpy copies into the caller's buffer unbounded, as strcpy does: its contract.
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.strcpy): unbounded by contract
    return std::strcpy(*destPtr, src);
}

int StrLen(const char *s) {
    return s ? static_cast<int>(std::strlen(s)) : 0;
}

int StrWrap(char **sPtr, int c) {
    if (!sPtr || !*sPtr) return 0;
    std::string out;
    out += static_cast<char>(c);
    out += *sPtr;
    out += static_cast<char>(c);
    char *wrapped = VlHeapCopy(out);
    if (!wrapped) return 0;
    std::free(*sPtr);
    *sPtr = wrapped;
    return 1;
}

char *StripStr(const char *s) {
    if (!s) return VlHeapCopy("");
    std::string_view v(s);
    while (!v.empty() && IsSpace(v.front()))
        v.remove_prefix(1);
    while (!v.empty() && IsSpace(v.back()))
        v.remove_suffix(1);
    return VlHeapCopy(v);
}

const char *ItoA(int n) {
    static char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%d", n);
    return buffer;
}

char *VlCopyString(const char *s) {
    return VlHeapCopy(s ? s : "");
}

char *VlStrMCat(const char *first, ...) {
    std::string out;
    if (!first) return VlHeapCopy(out);
    out = first;
    va_list ap;
    va_start(ap, first);
    // The analyzer of clang-tidy-14 does not see the va_start right above.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    while (const char *next = va_arg(ap, const char *))
        out += next;
    va_end(ap);
    return VlHeapCopy(out);
}

char *VlCopyDbString(const char *s) {
    return VlHeapCopy(s && *s ? s : "null");
}

char *VlMakeEscapedString(const char *s) {
    if (!s || !*s) return VlHeapCopy("null");
    std::string out = "'";
    for (const char *p = s; *p; ++p) {
        if (*p == '\'') out += '\'';
        out += *p;
    }
    out += '\'';
    return VlHeapCopy(out);
}

char *VlStripFB(const char *s) {
    if (!s) return nullptr;
    std::string_view v(s);
    // Leading newlines stay: only blanks and tabs go at the front.
    while (!v.empty() && (v.front() == ' ' || v.front() == '\t'))
        v.remove_prefix(1);
    while (!v.empty() && (v.back() == ' ' || v.back() == '\t' || v.back() == '\n'))
        v.remove_suffix(1);
    return VlHeapCopy(v);
}

char *VlGetFileFromFullPath(const char *path) {
    if (!path || !*path) return nullptr;
    std::string_view v(path);
    size_t slash = v.rfind('/');
    if (slash == std::string_view::npos) return VlHeapCopy(v);
    if (slash + 1 == v.size()) return nullptr;
    return VlHeapCopy(v.substr(slash + 1));
}

char *VlGetDirFromFullPath(const char *path) {
    if (!path || !*path) return nullptr;
    std::string_view v(path);
    size_t slash = v.rfind('/');
    if (slash == std::string_view::npos) return nullptr;
    if (slash + 1 == v.size()) return VlHeapCopy(v);
    return VlHeapCopy(v.substr(0, slash));
}

int VlDelimStrToChar(const char *name) {
    if (!name || !*name) return 0;
    std::string_view v(name);
    if (v.size() == 1) return static_cast<unsigned char>(v[0]);
    if (v[0] == '<') {
        if (v == "<tab>") return 9;
        if (v == "<spc>") return 32;
        return 0;
    }
    if (v[0] == '^' && v.size() == 2) {
        char c = static_cast<char>(std::toupper(static_cast<unsigned char>(v[1])));
        if (c >= 'A' && c <= 'Z') return c - 'A' + 1;
        switch (c) {
        case '[':
            return 27;
        case ']':
            return 29;
        case '^':
            return 30;
        case '_':
            return 31;
        default:
            return 0; // "^\" included: the file separator cannot be named
        }
    }
    return 0;
}

int VlStrNumMatch(const char *text, const char *pattern) {
    if (!text || !pattern || !*pattern) return 0;
    std::string_view t(text), p(pattern);
    int n = 0;
    for (size_t at = t.find(p); at != std::string_view::npos; at = t.find(p, at + p.size()))
        n++;
    return n;
}

char *VlStrSubs(const char *text, const char *pattern, const char *replacement) {
    if (!text || !pattern) return nullptr;
    std::string_view t(text), p(pattern), r(replacement ? replacement : "");
    if (p.empty()) return VlHeapCopy(t);
    std::string out;
    out.reserve(t.size());
    size_t from = 0;
    for (size_t at = t.find(p); at != std::string_view::npos; at = t.find(p, from)) {
        out.append(t.substr(from, at - from));
        out.append(r);
        from = at + p.size();
    }
    out.append(t.substr(from));
    return VlHeapCopy(out);
}

} // extern "C"

namespace {

// Walks the markers of a template in the one order that both the counting and
// the substitution use. At each marker, the first key in list order that the
// text begins with is reported with its position; an unknown marker reports -1
// and is overwritten by the last key, whose length the walk then skips.
template <typename OnText, typename OnKey>
void WalkMarkers(std::string_view text, const SutList *keys, std::string_view marker, OnText onText,
                 OnKey onKey) {
    int nkeys = SutSizList(keys);
    std::string_view lastKey = nkeys > 0 ? ItemText(keys, nkeys - 1) : std::string_view();
    size_t from = 0;
    for (size_t at = text.find(marker); at != std::string_view::npos;
         at = text.find(marker, from)) {
        onText(text.substr(from, at - from));
        std::string_view rest = text.substr(at);
        int found = -1;
        for (int k = 0; k < nkeys && found < 0; k++) {
            std::string_view key = ItemText(keys, k);
            if (!key.empty() && rest.substr(0, key.size()) == key) found = k;
        }
        size_t skip;
        if (found >= 0) {
            skip = ItemText(keys, found).size();
            onKey(found);
        } else if (!lastKey.empty()) {
            skip = lastKey.size();
            onKey(-1);
        } else {
            // No usable last key: keep the marker as it stands so the walk moves on.
            skip = marker.size();
            onText(marker);
        }
        from = at + std::min(skip, rest.size());
    }
    onText(text.substr(from));
}

} // namespace

extern "C" {

void VlStrNumMatchInList(const char *text, SutList *keys, SutList *counts, const char *marker) {
    if (!text || !keys || !counts || !marker || !*marker) return;
    WalkMarkers(
        text, keys, marker, [](std::string_view) {},
        [&](int k) {
            if (k < 0 || k >= SutSizList(counts)) return;
            intptr_t n = reinterpret_cast<intptr_t>(SutGetNList(counts, k));
            SutReplaceNList(counts, k, reinterpret_cast<void *>(n + 1));
        });
}

char *VlStrSubsList(const char *text, SutList *keys, SutList *values, const char *marker) {
    if (!text || !keys || !values) return nullptr;
    if (!marker || !*marker) return VlHeapCopy(text);
    int nkeys = SutSizList(keys);
    // Size the result from the per-key counts, as the template filler always has.
    SutList *counts = SutNewListSize(nkeys);
    for (int k = 0; k < nkeys; k++)
        SutAddList(counts, nullptr);
    VlStrNumMatchInList(text, keys, counts, marker);
    long long size = static_cast<long long>(std::strlen(text));
    for (int k = 0; k < nkeys; k++) {
        long long n = reinterpret_cast<intptr_t>(SutGetNList(counts, k));
        size += (static_cast<long long>(ItemText(values, k).size()) -
                 static_cast<long long>(ItemText(keys, k).size())) *
                n;
    }
    SutDeleteList(counts);
    std::string out;
    out.reserve(size > 0 ? static_cast<size_t>(size) : 0);
    std::string_view lastKey = nkeys > 0 ? ItemText(keys, nkeys - 1) : std::string_view();
    WalkMarkers(
        text, keys, marker, [&](std::string_view piece) { out.append(piece); },
        [&](int k) { out.append(k >= 0 ? ItemText(values, k) : lastKey); });
    return VlHeapCopy(out);
}

} // extern "C"
