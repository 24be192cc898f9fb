// Test helpers: take over a malloc'ed C string or a list of strings and turn
// them into values that gtest compares and prints.
#ifndef VELMORA_TESTS_UTIL_SUPPORT_HPP
#define VELMORA_TESTS_UTIL_SUPPORT_HPP

#include "util/list.h"

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

// The string's text (nullopt for null); the string is released.
inline std::optional<std::string> take(char *s) {
    if (!s) return std::nullopt;
    std::string out(s);
    std::free(s);
    return out;
}

// The items of a list of strings, "<null>" for a null item.
inline std::vector<std::string> items(const SutList *list) {
    std::vector<std::string> out;
    for (int i = 0; i < SutSizList(list); i++) {
        const char *s = static_cast<const char *>(SutGetNList(list, i));
        out.push_back(s ? s : "<null>");
    }
    return out;
}

// A new list of heap copies of the given strings (nullptr stays null).
inline SutList *makeList(std::initializer_list<const char *> strings) {
    SutList *list = SutNewList();
    for (const char *s : strings)
        SutAddList(list, s ? strdup(s) : nullptr);
    return list;
}

using Strings = std::vector<std::string>;

#endif
