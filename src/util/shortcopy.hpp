// Copying a few bytes whose number is known only when the program runs (a
// name, a URL): up to 32 bytes take two overlapping moves of a fixed size,
// which the compiler lays out in place, instead of a library call each; the
// readers and the markup make such a copy for every name they keep or write.
// Not part of the C interface.
#ifndef VELMORA_UTIL_SHORTCOPY_HPP
#define VELMORA_UTIL_SHORTCOPY_HPP

#include <cstddef>
#include <cstring>

inline void VlCopyShort(char *to, const char *from, size_t n) {
    if (n >= 16 && n <= 32) {
        std::memcpy(to, from, 16);
        std::memcpy(to + n - 16, from + n - 16, 16);
    } else if (n >= 8 && n < 16) {
        std::memcpy(to, from, 8);
        std::memcpy(to + n - 8, from + n - 8, 8);
    } else if (n >= 4 && n < 8) {
        std::memcpy(to, from, 4);
        std::memcpy(to + n - 4, from + n - 4, 4);
    } else if (n < 4) {
        for (size_t i = 0; i < n; i++)
            to[i] = from[i];
    } else {
        std::memcpy(to, from, n);
    }
}

#endif
