// Reading the numbers and words of a generated call line by a fixed pattern,
// in place and without sscanf: the binding-code parser reads the generator's
// lines by patterns such as "\tSgeSetColDetail(pSgeWCD, %d, %d, %d, %d,\n",
// and gets exactly what sscanf would give for them, including its answer
// when the line ends early or departs from the pattern. Not part of the C
// interface.
#ifndef VELMORA_BINDCODE_CALLFIELDS_HPP
#define VELMORA_BINDCODE_CALLFIELDS_HPP

#include <cstddef>
#include <span>
#include <string_view>

namespace swd {

// One conversion of a pattern: %d gives number, %s gives word (a view into
// the text read).
struct Field {
    int number = 0;
    std::string_view word;
};

// Reads text by pattern as sscanf does with only %d and %s conversions: white
// space in the pattern skips any white space of the text (none too), another
// pattern character must match the text's next one, and %d and %s first skip
// white space; %d reads an optional sign and digits (a number beyond a long
// is the nearest long, kept as its low 32 bits, as the C library does), %s
// a run of characters other than white space. The fields receive the
// conversions in order. The answer is the number of conversions made, or -1
// when the text ends before the first one.
int ReadFields(std::string_view text, std::string_view pattern, std::span<Field> fields);

// strtol(text, nullptr, 10) on a text that need not end in a NUL: white space,
// an optional sign, the digits; 0 when no digit follows, the nearest long
// when the number is beyond one.
long ReadLong(std::string_view text);

} // namespace swd

#endif
