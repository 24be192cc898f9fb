// Fuzz target: what the application runtime reads from outside, the same
// bytes taken as a urlencoded request (query or body), as an argument's value
// of each type, and as an answer page whose site marks are filled.
#include "runtime/cgi_input.hpp"
#include "runtime/page_fill.hpp"
#include "runtime/values.hpp"

#include <cstdint>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    std::vector<vlrun::Field> fields;
    vlrun::parseUrlEncoded(text, fields);
    vlrun::TypedValue typed;
    std::string why;
    for (const char *type : {"int", "decimal", "varchar"})
        vlrun::typedValue(type, -1, 8, &text, typed, why);
    vlrun::fillPage(
        text, [](std::string_view site) { return std::string(site); }, "/cgi-bin/x.cgi",
        "http://h/x");
    return 0;
}
