// The input of a CGI request: application/x-www-form-urlencoded fields from
// the query string and from a POST body, decoded and checked (limits, %
// escapes, NUL bytes, UTF-8), or the HTTP status that refuses the request.
#ifndef VELMORA_RUNTIME_CGI_INPUT_HPP
#define VELMORA_RUNTIME_CGI_INPUT_HPP

#include "runtime/fault.hpp"

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace vlrun {

constexpr std::size_t kMaxBodyBytes = 1 << 20; // larger bodies are refused unread
constexpr std::size_t kMaxFields = 1025;       // what the request record unpacks

struct Field {
    std::string name;
    std::string value;
};

// Appends the fields of urlencoded text ("a=1&b=x+y%21"): '+' is a blank,
// %XX a byte, a field without '=' has the empty value, empty pieces between
// '&' are skipped. Refuses (status 400) a bad escape, a NUL byte or text that
// is not UTF-8, and (413) more than kMaxFields fields in all.
Fault ParseUrlEncoded(std::string_view text, std::vector<Field> &fields);

// True when text is well-formed UTF-8 (no overlong forms, surrogates or
// code points beyond U+10FFFF).
bool IsUtf8(std::string_view text);

// The request's fields from the CGI environment and, for POST, from in:
// body fields first, then the query's. Refuses a method other than GET,
// HEAD and POST (405), a POST body of another type (415, multipart included),
// a bad or missing length (400 / 411), a body over kMaxBodyBytes (413, checked
// before reading) and a body shorter than its length (400).
Fault ReadCgiInput(std::FILE *in, std::vector<Field> &fields);

} // namespace vlrun

#endif
