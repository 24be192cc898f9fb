// C++ helpers shared by the engine's .cpp files (not part of the C interface):
// the one place where a built std::string becomes a malloc'ed C string, the
// replacing of an owned string field, and a unique_ptr that releases C strings
// with free so early returns leak nothing.
#ifndef VELMORA_UTIL_HEAP_HPP
#define VELMORA_UTIL_HEAP_HPP

#include <cstdlib>
#include <memory>
#include <string_view>

struct VlFreeDeleter {
    void operator()(void *p) const { std::free(p); }
};
using VlCharPtr = std::unique_ptr<char, VlFreeDeleter>;

// A new malloc'ed, NUL-terminated copy of text (never null for a successful
// allocation); the caller releases it with free.
char *VlHeapCopy(std::string_view text);

// Replaces the owned string in *field by a copy of value (null leaves none).
void VlReplaceString(char **field, const char *value);
// Replaces the owned string in *field by a copy of text.
void VlReplaceText(char **field, std::string_view text);

#endif
