// Identifier strings that name a form or an anchor of a page, the display
// text of a binding, activator letters, recent-project menu entries, category
// option names, and lookups in resource lists (the lines of a map file).
#include "util/ident.h"

#include "util/heap.hpp"
#include "util/strings.h"
#include "util/toolkit.hpp"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

bool IsSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

// The text of a candidate line for name after its leading white space, or
// null. A line starting with "#" is a comment only when the "#" stands first:
// an indented "#" line is a candidate like any other.
const char *Candidate(const char *line, std::string_view name) {
    if (!line || line[0] == '#') return nullptr;
    while (*line && IsSpace(*line))
        ++line;
    return std::string_view(line).substr(0, name.size()) == name ? line : nullptr;
}

// The part of the text after its first ".", or null.
const char *AfterDot(const char *name) {
    const char *dot = name ? std::strchr(name, '.') : nullptr;
    return dot ? dot + 1 : nullptr;
}

} // namespace

extern "C" {

char *WbMakeFormIdString(const char *page, const char *name, int type) {
    if (!page || !name) return nullptr;
    std::string id(page);
    id += type == 1 ? "<A>" : "<FORM>";
    id += name;
    return VlHeapCopy(id);
}

int WbGetFormIdStringParts(const char *id, char **pageOut, char **nameOut, int *typeOut) {
    char *page = nullptr;
    int type = -1;
    int result = 0;
    if (id && *id) {
        std::string_view v(id);
        size_t at = v.find("<A>");
        size_t markLen = 3;
        type = 1;
        if (at == std::string_view::npos) {
            at = v.find("<FORM>");
            markLen = 6;
            type = 0;
        }
        if (at == std::string_view::npos) {
            type = -1;
        } else if (at + markLen < v.size()) {
            page = VlHeapCopy(v.substr(0, at));
            if (nameOut) *nameOut = VlHeapCopy(v.substr(at + markLen));
            result = 1;
        }
    }
    if (!result && nameOut) *nameOut = nullptr;
    if (pageOut)
        *pageOut = page;
    else
        std::free(page);
    if (typeOut) *typeOut = type;
    return result;
}

char *WbMakeBindIdString(const char *a, const char *b, const char *c, const char *d, int typeId) {
    if (!a || !d) return nullptr;
    // The type name is a new heap string in this build; it is released here.
    VlCharPtr type(SgeGetObjTypeIdFromInt(typeId));
    const char *typeName = type ? type.get() : "";
    std::string out(a);
    out += " --> ";
    if (b && c) {
        out += b;
        out += '|';
        out += c;
        out += '|';
    }
    out += d;
    out += " (";
    out += typeName;
    out += ')';
    return VlHeapCopy(out);
}

char *WbMakeActivatorType(int type) {
    return VlHeapCopy(type == 1 ? "A" : "F");
}

int WbGetActivatorType(const char *letters) {
    return letters && (letters[0] == 'A' || letters[0] == 'a') ? 1 : 0;
}

char *WbFormatMRUItem(const char *path, int index) {
    if (!path || index < 0 || index >= 99) return nullptr;
    // An entry that is already numbered is renumbered, not numbered twice.
    const char *numbered = std::strstr(path, ". ");
    std::string out = std::to_string(index + 1) + ". ";
    out += numbered ? numbered + 2 : path;
    return VlHeapCopy(out);
}

char *WbMakeCatOption(const char *category, const char *name, const char *value) {
    if (!category || !name) return nullptr;
    std::string out(category);
    out += '.';
    out += name;
    out += " : ";
    out += value ? value : "";
    return VlHeapCopy(out);
}

int WbGetCatOnly(const char *optionName, char **catOut) {
    if (!catOut) return 0;
    *catOut = nullptr;
    const char *dot = optionName ? std::strchr(optionName, '.') : nullptr;
    if (!dot || dot == optionName) return 0;
    *catOut = VlHeapCopy(std::string_view(optionName, static_cast<size_t>(dot - optionName)));
    return 1;
}

int WbGetOptOnly(const char *optionName, char **optOut) {
    if (!optOut) return 0;
    const char *opt = AfterDot(optionName);
    *optOut = opt ? VlHeapCopy(opt) : nullptr;
    return opt ? 1 : 0;
}

char *WbStripCat(const char *optionName) {
    const char *opt = AfterDot(optionName);
    return opt ? VlHeapCopy(opt) : nullptr;
}

int WbSortStringProc(const void *a, const void *b) {
    const char *x = *static_cast<const char *const *>(a);
    const char *y = *static_cast<const char *const *>(b);
    if (!x || !y) return x ? 1 : (y ? -1 : 0);
    return std::strcmp(x, y);
}

int WbSutListSort(SutList *list) {
    if (SutSizList(list) <= 0) return 0;
    std::qsort(list->items, static_cast<size_t>(list->count), sizeof(void *), WbSortStringProc);
    return 1;
}

SutList *WbSutListStrDup(const SutList *list) {
    if (!list) return nullptr;
    SutList *copy = SutNewList();
    for (int i = 0; i < SutSizList(list); i++)
        SutAddList(copy, StrDup(static_cast<const char *>(SutGetNList(list, i))));
    return copy;
}

int WbStrToDelim(const char *name) {
    return VlDelimStrToChar(name);
}

char *WbGetResourceValueFromList(SutList *list, const char *name) {
    if (!list || !name) return nullptr;
    std::string_view n(name);
    for (int i = 0; i < SutSizList(list); i++) {
        const char *line = Candidate(static_cast<char *>(SutGetNList(list, i)), n);
        const char *colon = line ? std::strchr(line, ':') : nullptr;
        if (!colon) continue;
        char *value = const_cast<char *>(colon + 1);
        while (*value && IsSpace(*value))
            ++value;
        return *value ? value : nullptr;
    }
    return nullptr;
}

char *WbGetMultiResourceValueFromList(SutList *list, const char *name) {
    if (!list || !name) return VlHeapCopy("");
    std::string_view n(name);
    int first = -1;
    for (int i = 0; i < SutSizList(list) && first < 0; i++)
        if (Candidate(static_cast<char *>(SutGetNList(list, i)), n)) first = i;
    if (first < 0) return VlHeapCopy("");

    // Count the lines of the value; each continuation backslash is cut off in
    // the list's own line, so the list keeps only the first line afterwards.
    int counted = 0;
    for (int i = first; i < SutSizList(list); i++) {
        char *line = static_cast<char *>(SutGetNList(list, i));
        if (!line || !*line) continue;
        counted++;
        char *last = line + std::strlen(line) - 1;
        while (last > line && IsSpace(*last))
            --last;
        if (*last != '\\') break;
        *last = '\0';
    }

    const char *firstLine = static_cast<char *>(SutGetNList(list, first));
    const char *colon = std::strchr(firstLine, ':');
    std::string value;
    if (colon) {
        const char *v = colon + 1;
        while (*v && IsSpace(*v))
            ++v;
        value = v;
    }
    // Further lines are taken by position, deliberately: an empty line inside
    // a continued value takes the place of a later line.
    for (int k = 1; k < counted; k++) {
        const char *line = static_cast<char *>(SutGetNList(list, first + k));
        value += '\n';
        value += line ? line : "";
    }
    return VlHeapCopy(value);
}

} // extern "C"
