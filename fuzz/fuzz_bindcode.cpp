// Fuzz target: the binding-code parser. An input of the form
// "interface NUL widget NUL body" gives all three; any other input is the
// body of form "order" and anchor "home" on shop.html. The body is parsed as
// a form's code and as an anchor's; the map is reset every run.
#include "support.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::string input = fuzz::Text(data, size);
    std::string interface = "shop.html", form = "order", anchor = "home", body = input;
    size_t first = input.find('\0');
    size_t second = first == std::string::npos ? first : input.find('\0', first + 1);
    if (second != std::string::npos) {
        interface = input.substr(0, first);
        form = anchor = input.substr(first + 1, second - first - 1);
        body = input.substr(second + 1);
    }
    SwdParseFormCode(interface.c_str(), form.c_str(), body.c_str());
    SwdParseAnchCode(interface.c_str(), anchor.c_str(), body.c_str());
    SwdResetTheMap();
    return 0;
}
