// Fuzz target: what the application runtime reads from outside. The first
// byte chooses the request's method, content type and whether its content
// length lies; the rest up to the first newline is the query string and the
// remainder the body, read by the CGI input reader as a request. The same
// bytes are also taken as urlencoded text, as an argument's value of each
// type, and as an answer page whose site marks are filled.
#include "runtime/cgi_input.hpp"
#include "runtime/page_fill.hpp"
#include "runtime/values.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

// An environment variable whose text lives in a buffer of its own: putenv
// keeps the buffer itself, so each new value replaces the last, where
// setenv would keep every distinct value for the rest of the process.
class Variable {
  public:
    explicit Variable(const char *name) : prefix_(std::string(name) + "=") {
        buffer_.resize(prefix_.size() + kMaxValue + 1);
        set("");
        putenv(buffer_.data());
    }
    void set(std::string_view value) {
        value = value.substr(0, std::min(value.find('\0'), kMaxValue)); // C strings
        std::memcpy(buffer_.data(), prefix_.data(), prefix_.size());
        std::memcpy(buffer_.data() + prefix_.size(), value.data(), value.size());
        buffer_[prefix_.size() + value.size()] = '\0';
    }

  private:
    static constexpr std::size_t kMaxValue = std::size_t(1) << 16;
    std::string prefix_;
    std::vector<char> buffer_;
};

void readAsRequest(const std::string &text) {
    static Variable method("REQUEST_METHOD"), type("CONTENT_TYPE"), query("QUERY_STRING"),
        length("CONTENT_LENGTH");
    const unsigned char choice = text.empty() ? 0 : static_cast<unsigned char>(text[0]);
    static const char *const kMethods[] = {"GET", "POST", "HEAD", "PUT"};
    static const char *const kTypes[] = {"application/x-www-form-urlencoded",
                                         "Application/X-WWW-Form-Urlencoded ; charset=UTF-8",
                                         "multipart/form-data; boundary=x", ""};
    std::string rest = text.empty() ? text : text.substr(1);
    std::size_t newline = rest.find('\n');
    std::string body = newline == std::string::npos ? std::string() : rest.substr(newline + 1);
    method.set(kMethods[choice & 3]);
    type.set(kTypes[(choice >> 2) & 3]);
    query.set(std::string_view(rest).substr(0, newline));
    std::size_t claimed = body.size() + ((choice >> 4) & 1); // a body one byte short
    length.set(std::to_string(claimed));
    std::FILE *in = fmemopen(body.data(), body.size(), "rb");
    if (!in) in = std::fopen("/dev/null", "rb");
    std::vector<vlrun::Field> fields;
    vlrun::ReadCgiInput(in, fields);
    std::fclose(in);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    readAsRequest(text);
    std::vector<vlrun::Field> fields;
    vlrun::ParseUrlEncoded(text, fields);
    vlrun::TypedValue typed;
    std::string why;
    for (const char *type : {"int", "decimal", "varchar"})
        vlrun::ToTypedValue(type, -1, 8, &text, typed, why);
    vlrun::FillPage(
        text, [](std::string_view site) { return std::string(site); }, "/cgi-bin/x.cgi",
        "http://h/x");
    return 0;
}
