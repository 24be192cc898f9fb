// Fuzz target: the field splitter. The first byte is the delimiter, the
// second the quote character (a NUL byte there means no quote character),
// the rest is the text.
#include "support.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    fuzz::Quiet();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 2) return 0;
    const char delimiters[2] = {static_cast<char>(data[0]), '\0'};
    const char quotes[2] = {static_cast<char>(data[1]), '\0'};
    std::string text = fuzz::Text(data + 2, size - 2);
    SutList *fields = VlParseFileString(text.c_str(), delimiters, quotes[0] ? quotes : nullptr);
    SutDestroyList(fields);
    return 0;
}
