// Turning the engine's C values into values that gtest compares and prints:
// malloc'ed strings, lists of strings, list items of any type.
#ifndef VELMORA_TESTS_SUPPORT_C_VALUES_HPP
#define VELMORA_TESTS_SUPPORT_C_VALUES_HPP

#include "util/list.h"

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

using Strings = std::vector<std::string>;

// The string's text (nullopt for null); the string is released.
inline std::optional<std::string> Take(char *s) {
    if (!s) return std::nullopt;
    std::string out(s);
    std::free(s);
    return out;
}

// The string's text ("<null>" for null); the string is released.
inline std::string Owned(char *s) {
    return Take(s).value_or("<null>");
}

// A possibly null C string as text.
inline std::string Str(const char *s) {
    return s ? s : "<null>";
}

// The items of a list of strings, "<null>" for a null item.
inline Strings Items(const SutList *list) {
    Strings out;
    for (int i = 0; i < SutSizList(list); i++)
        out.push_back(Str(static_cast<const char *>(SutGetNList(list, i))));
    return out;
}

// The items of a list of strings, which is destroyed with them.
inline Strings TakeList(SutList *list) {
    Strings out = Items(list);
    SutDestroyList(list);
    return out;
}

// A new list of heap copies of the given strings (nullptr stays null).
inline SutList *MakeList(std::initializer_list<const char *> strings) {
    SutList *list = SutNewList();
    for (const char *s : strings)
        SutAddList(list, s ? strdup(s) : nullptr);
    return list;
}

// Replaces a heap string field by a copy of value (null: none).
inline void Set(char **field, const char *value) {
    free(*field);
    *field = value ? strdup(value) : nullptr;
}
inline void Set(char **field, const std::string &value) {
    Set(field, value.c_str());
}

// Item i of a list, as a T.
template <typename T> T *Nth(const SutList *list, int i) {
    return static_cast<T *>(SutGetNList(list, i));
}

// Each record of list as the text that fn makes of it.
template <typename T, typename Fn> Strings Each(const SutList *list, Fn fn) {
    Strings out;
    for (int i = 0; i < SutSizList(list); i++)
        out.push_back(fn(Nth<T>(list, i)));
    return out;
}

#endif
