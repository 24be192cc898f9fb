// Fuzz target: what the application runtime reads from outside. The first
// byte chooses the request's method, content type and whether its content
// length lies; the rest up to the first newline is the query string and the
// remainder the body, read by the CGI input reader as a request. The same
// bytes are also taken as urlencoded text, as an argument's value of each
// type, and as an answer page whose site marks are filled.
#include "runtime/cgi_input.hpp"
#include "runtime/page_fill.hpp"
#include "runtime/values.hpp"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void readAsRequest(const std::string &text) {
    const unsigned char choice = text.empty() ? 0 : static_cast<unsigned char>(text[0]);
    static const char *const kMethods[] = {"GET", "POST", "HEAD", "PUT"};
    static const char *const kTypes[] = {"application/x-www-form-urlencoded",
                                         "Application/X-WWW-Form-Urlencoded ; charset=UTF-8",
                                         "multipart/form-data; boundary=x", ""};
    std::string rest = text.empty() ? text : text.substr(1);
    std::size_t newline = rest.find('\n');
    std::string query = rest.substr(0, newline);
    std::string body = newline == std::string::npos ? std::string() : rest.substr(newline + 1);
    query = query.substr(0, query.find('\0')); // the environment holds C strings
    setenv("REQUEST_METHOD", kMethods[choice & 3], 1);
    setenv("CONTENT_TYPE", kTypes[(choice >> 2) & 3], 1);
    setenv("QUERY_STRING", query.c_str(), 1);
    std::size_t claimed = body.size() + ((choice >> 4) & 1); // a body one byte short
    setenv("CONTENT_LENGTH", std::to_string(claimed).c_str(), 1);
    std::FILE *in = fmemopen(body.data(), body.size(), "rb");
    if (!in) in = std::fopen("/dev/null", "rb");
    std::vector<vlrun::Field> fields;
    vlrun::readCgiInput(in, fields);
    std::fclose(in);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    readAsRequest(text);
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
