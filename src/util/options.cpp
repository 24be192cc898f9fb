// Option lines "name : value" and the lists that hold them: lookup of the
// first matching line, replacement in place, removal, and the readers that
// turn a file or a text into an option list.
#include "util/options.h"

#include "util/files.h"
#include "util/heap.hpp"
#include "util/strings.h"

#include <cctype>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

namespace {

// The value of a line that matches name (the name, then exactly " : "), or
// null. The value starts right after the separator.
const char *MatchValue(const char *line, std::string_view name) {
    if (!line) return nullptr;
    std::string_view l(line);
    if (l.size() < name.size() + 3 || l.substr(0, name.size()) != name ||
        l.substr(name.size(), 3) != " : ")
        return nullptr;
    return line + name.size() + 3;
}

// Position of the first line matching name, -1 when none does.
int FindOption(const SutList *list, const char *name, const char **valueOut) {
    if (!list || !name || !*name) return -1;
    std::string_view n(name);
    for (int i = 0; i < SutSizList(list); i++) {
        if (const char *v = MatchValue(static_cast<const char *>(SutGetNList(list, i)), n)) {
            if (valueOut) *valueOut = v;
            return i;
        }
    }
    return -1;
}

// The name a line answers to in a lookup by a name without a colon: the text
// before its first colon when " : " stands there; empty when none.
std::string_view LookupName(const char *line) {
    const char *colon = line ? std::strchr(line, ':') : nullptr;
    if (!colon || colon - line < 2 || colon[-1] != ' ' || colon[1] != ' ') return {};
    return std::string_view(line, static_cast<size_t>(colon - 1 - line));
}

// Keeps only the lines that hold a colon, in their order. The lines are
// closed up in one pass, so a file of many non-option lines stays linear.
SutList *DropNonOptionLines(SutList *lines) {
    int kept = 0;
    for (int i = 0; i < lines->count; i++) {
        char *line = static_cast<char *>(lines->items[i]);
        if (!line || !*line || !std::strchr(line, ':'))
            std::free(line);
        else
            lines->items[kept++] = line;
    }
    lines->count = kept;
    return lines;
}

} // namespace

extern "C" {

char *VlGetOption(SutList *list, const char *name, int *indexOut) {
    const char *value = nullptr;
    int pos = FindOption(list, name, &value);
    if (pos < 0) return nullptr;
    if (indexOut) *indexOut = pos;
    return VlHeapCopy(value);
}

char *VlGetOptionValue(SutList *list, const char *name) {
    return VlGetOption(list, name, nullptr);
}

char *VlGetStrippedOptionValue(SutList *list, const char *name) {
    const char *value = nullptr;
    if (FindOption(list, name, &value) < 0) return nullptr;
    return StripStr(value);
}

char *VlGetStrippedOptionValueByCat(SutList *list, const char *category, const char *name) {
    if (!category || !name) return nullptr;
    VlCharPtr key(VlStrMCat(category, name, static_cast<char *>(nullptr)));
    return VlGetStrippedOptionValue(list, key.get());
}

int VlValidOptionName(const char *name) {
    if (!name || !*name) return 0;
    return std::strpbrk(name, ":|") ? 0 : 1;
}

char *VlMakeOptionString(const char *name, const char *value) {
    if (!value || !VlValidOptionName(name)) return nullptr;
    VlCharPtr trimmed(VlStripFB(name));
    if (!trimmed || !*trimmed) return nullptr;
    std::string line(trimmed.get());
    line += " : ";
    line += value;
    return VlHeapCopy(line);
}

SutList *VlAppendOption(SutList *list, char *line) {
    if (!list) list = SutNewList();
    std::string name(line ? line : "");
    size_t colon = name.find(':');
    // No colon, or nothing in front of it: the line is not stored and stays
    // the caller's.
    if (colon == std::string::npos || colon == 0) return list;
    // Deliberately positional: the character in front of the colon (normally
    // the blank of " : ") is cut off with everything after it.
    name.resize(colon - 1);
    int pos = FindOption(list, name.c_str(), nullptr);
    if (pos >= 0) {
        void *old = SutReplaceNList(list, pos, line);
        if (old != line) std::free(old);
    } else
        SutAddList(list, line);
    return list;
}

SutList *VlAppendOptionNameValue(SutList *list, const char *name, const char *value) {
    if (!list) list = SutNewList();
    if (char *line = VlMakeOptionString(name, value)) VlAppendOption(list, line);
    return list;
}

int VlDeleteOptions(SutList *list, const char *name) {
    int pos = FindOption(list, name, nullptr);
    if (pos < 0) return 0;
    std::free(SutRemoveNList(list, pos));
    return 1;
}

SutList *VlVaOptionsMerge(SutList *list, ...) {
    if (!list) list = SutNewList();
    va_list ap;
    va_start(ap, list);
    // The analyzer of clang-tidy-14 does not see the va_start right above.
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
    while (const char *line = va_arg(ap, const char *))
        SutAddList(list, VlHeapCopy(line));
    va_end(ap);
    return list;
}

SutList *VlMergeOptionLines(SutList *list, const SutList *lines) {
    if (!list) list = SutNewList();
    // The positions of the lines that answer to each name, in order: the
    // first one is where VlAppendOption's lookup would stop.
    std::unordered_map<std::string, std::set<int>> positions;
    for (int i = 0; i < SutSizList(list); i++) {
        const std::string_view name = LookupName(static_cast<const char *>(SutGetNList(list, i)));
        if (!name.empty()) positions[std::string(name)].insert(i);
    }
    for (int i = 0; i < SutSizList(lines); i++) {
        char *line = VlCopyString(static_cast<const char *>(SutGetNList(lines, i)));
        const char *colon = std::strchr(line, ':');
        if (!colon || colon == line) {
            std::free(line); // not taken, as by VlAppendOption
            continue;
        }
        // The name is cut one character before the colon, as VlAppendOption cuts it.
        const std::string name(line, static_cast<size_t>(colon - 1 - line));
        const auto found = name.empty() ? positions.end() : positions.find(name);
        if (found != positions.end() && !found->second.empty()) {
            const int pos = *found->second.begin();
            std::free(SutReplaceNList(list, pos, line));
            // A line such as "Name: x" took the place of a "Nam : ..." line
            // but answers to no name itself.
            if (LookupName(line).empty()) found->second.erase(found->second.begin());
        } else {
            SutAddList(list, line);
            const std::string_view own = LookupName(line);
            if (!own.empty()) positions[std::string(own)].insert(SutSizList(list) - 1);
        }
    }
    return list;
}

SutList *VlOptionGetFromFile(const char *path) {
    // A missing or unreadable file reads as no text: the splitter then gives
    // one empty line, which is dropped, so the result is an empty list.
    VlCharPtr text(VlReadFileAndMod(path, nullptr));
    return DropNonOptionLines(VlParseFileString(text.get(), "\n", nullptr));
}

SutList *VlOptionGetFromString(const char *text) {
    if (!text) return nullptr;
    return DropNonOptionLines(VlParseFileString(text, "\n", nullptr));
}

SutList *VlOptionGetIntList(const char *text) {
    if (!text) return nullptr;
    SutList *list = SutNewList();
    std::string_view rest(text);
    while (!rest.empty()) {
        size_t comma = rest.find(',');
        std::string entry(rest.substr(0, comma));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
        if (entry.empty()) continue; // adjacent commas make no entry
        VlCharPtr trimmed(VlStripFB(entry.c_str()));
        std::string_view digits(trimmed.get());
        bool ok = true;
        long long value = 0;
        for (char c : digits) {
            if (!std::isdigit(static_cast<unsigned char>(c))) {
                ok = false;
                break;
            }
            // A number beyond the range of int is as bad an entry as a letter.
            value = value * 10 + (c - '0');
            if (value > INT_MAX) {
                ok = false;
                break;
            }
        }
        if (!ok || value < 1) {
            SutDeleteList(list);
            return nullptr;
        }
        SutAddList(list, reinterpret_cast<void *>(static_cast<intptr_t>(value)));
    }
    return list;
}

} // extern "C"
