// Fuzz target: the differential check of the binding-code parser. An input
// of the form "interface NUL widget NUL body" gives all three; any other
// input is the body of form "order" on shop.html. The engine's parser and
// the reference copy of it as it stood before it read fields without sscanf
// (fuzz/reference/) must build binds that agree in every field, read work
// calls alike, and the engine's reading of every line by the generator's call
// patterns must agree with sscanf's. Any difference aborts with a description.
#include "support.hpp"

#include "reference/compare_binds.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string input = fuzz::Text(data, size);
    std::string interface = "shop.html", widget = "order", body = input;
    size_t first = input.find('\0');
    size_t second = first == std::string::npos ? first : input.find('\0', first + 1);
    if (second != std::string::npos) {
        interface = input.substr(0, first);
        widget = input.substr(first + 1, second - first - 1);
        body = input.substr(second + 1);
    }
    std::string difference = vlref::DiffBody(interface, widget, body);
    if (!difference.empty()) {
        // Standard error's stream is silenced; descriptor 2 still reports.
        dprintf(2, "engine and reference parsers differ: %s\n", difference.c_str());
        std::abort();
    }
    return 0;
}
