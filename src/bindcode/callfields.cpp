// Reading a generated call line by a fixed pattern of %d and %s conversions,
// with the C library's sscanf rules for them, and strtol for one number.
#include "bindcode/callfields.hpp"

#include <algorithm>
#include <climits>

namespace swd {

namespace {

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

size_t SkipSpace(std::string_view t, size_t i) {
    while (i < t.size() && IsSpace(t[i]))
        i++;
    return i;
}

// An optional sign and at least one digit from i, as strtol reads them; i
// moves past them. False, with i unchanged, when no digit follows.
bool ReadNumber(std::string_view t, size_t &i, long &value) {
    size_t p = i;
    const bool negative = p < t.size() && t[p] == '-';
    if (p < t.size() && (t[p] == '-' || t[p] == '+')) p++;
    if (p >= t.size() || t[p] < '0' || t[p] > '9') return false;
    // Accumulated as a negative number, which reaches LONG_MIN exactly.
    long n = 0;
    bool overflow = false;
    for (; p < t.size() && t[p] >= '0' && t[p] <= '9'; p++) {
        const int digit = t[p] - '0';
        if (n < (LONG_MIN + digit) / 10) overflow = true;
        if (!overflow) n = n * 10 - digit;
    }
    if (overflow)
        value = negative ? LONG_MIN : LONG_MAX;
    else if (negative)
        value = n;
    else
        value = n == LONG_MIN ? LONG_MAX : -n;
    i = p;
    return true;
}

} // namespace

int ReadFields(std::string_view text, std::string_view pattern, std::span<Field> fields) {
    size_t i = 0;
    size_t done = 0;
    // The text ended: -1 before the first conversion, else the count.
    auto ended = [&] { return done == 0 ? -1 : static_cast<int>(done); };
    for (size_t f = 0; f < pattern.size(); f++) {
        const char c = pattern[f];
        if (IsSpace(c)) {
            i = SkipSpace(text, i);
            continue;
        }
        if (c != '%' || f + 1 >= pattern.size()) {
            // A run of ordinary pattern characters is compared at once.
            size_t run = 1;
            while (f + run < pattern.size() && pattern[f + run] != '%' &&
                   !IsSpace(pattern[f + run]))
                run++;
            const size_t same = std::mismatch(pattern.begin() + static_cast<long>(f),
                                              pattern.begin() + static_cast<long>(f + run),
                                              text.begin() + static_cast<long>(i), text.end())
                                    .first -
                                pattern.begin() - static_cast<long>(f);
            if (same < run) {
                if (i + same >= text.size()) return ended();
                return static_cast<int>(done);
            }
            i += run;
            f += run - 1;
            continue;
        }
        const char conversion = pattern[++f];
        i = SkipSpace(text, i);
        if (i >= text.size()) return ended();
        if (done >= fields.size()) return static_cast<int>(done);
        if (conversion == 'd') {
            long value = 0;
            if (!ReadNumber(text, i, value)) return static_cast<int>(done);
            // The C library keeps the low 32 bits of the long it read.
            fields[done].number = static_cast<int>(static_cast<unsigned long>(value));
        } else { // 's'
            const size_t start = i;
            while (i < text.size() && !IsSpace(text[i]))
                i++;
            fields[done].word = text.substr(start, i - start);
        }
        done++;
    }
    return static_cast<int>(done);
}

long ReadLong(std::string_view text) {
    size_t i = SkipSpace(text, 0);
    long value = 0;
    return ReadNumber(text, i, value) ? value : 0;
}

} // namespace swd
