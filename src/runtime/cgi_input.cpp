// Decoding and checking the urlencoded fields of a CGI request (query string
// and POST body), with the limits that keep a request from costing more than
// a page's worth of work before anything is refused.
#include "runtime/cgi_input.hpp"

#include <cstdlib>
#include <cstring>

namespace vlrun {

namespace {

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Decodes one name or value; false (with the fault set) when it is refused.
bool Decode(std::string_view text, std::string &out, Fault &fault) {
    out.clear();
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); i++) {
        char c = text[i];
        if (c == '+') {
            c = ' ';
        } else if (c == '%') {
            bool whole = i + 2 < text.size();
            int high = whole ? HexDigit(text[i + 1]) : -1;
            int low = whole ? HexDigit(text[i + 2]) : -1;
            if (high < 0 || low < 0) {
                fault = {400, "The request holds a bad %-escape."};
                return false;
            }
            c = static_cast<char>(high * 16 + low);
            i += 2;
        }
        if (c == '\0') {
            fault = {400, "The request holds a NUL byte."};
            return false;
        }
        out += c;
    }
    if (!IsUtf8(out)) {
        fault = {400, "The request holds text that is not UTF-8."};
        return false;
    }
    return true;
}

std::string_view Env(const char *name) {
    const char *value = std::getenv(name);
    return value ? std::string_view(value) : std::string_view();
}

// The media type of a Content-Type value, without parameters and blanks, in
// lower case.
std::string MediaType(std::string_view contentType) {
    std::string type;
    for (char c : contentType.substr(0, contentType.find(';')))
        if (c != ' ' && c != '\t') type += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    return type;
}

} // namespace

bool IsUtf8(std::string_view text) {
    const auto *s = reinterpret_cast<const unsigned char *>(text.data());
    std::size_t n = text.size();
    for (std::size_t i = 0; i < n;) {
        unsigned char c = s[i];
        if (c < 0x80) {
            i++;
            continue;
        }
        std::size_t length = 0;
        unsigned int low = 0x80, high = 0xBF; // range of the second byte
        if (c >= 0xC2 && c <= 0xDF) {
            length = 2;
        } else if (c >= 0xE0 && c <= 0xEF) {
            length = 3;
            if (c == 0xE0) low = 0xA0;  // overlong
            if (c == 0xED) high = 0x9F; // surrogates
        } else if (c >= 0xF0 && c <= 0xF4) {
            length = 4;
            if (c == 0xF0) low = 0x90;  // overlong
            if (c == 0xF4) high = 0x8F; // beyond U+10FFFF
        } else {
            return false;
        }
        if (i + length > n || s[i + 1] < low || s[i + 1] > high) return false;
        for (std::size_t k = 2; k < length; k++)
            if (s[i + k] < 0x80 || s[i + k] > 0xBF) return false;
        i += length;
    }
    return true;
}

Fault ParseUrlEncoded(std::string_view text, std::vector<Field> &fields) {
    Fault fault;
    while (!text.empty()) {
        std::size_t amp = text.find('&');
        std::string_view piece = text.substr(0, amp);
        text = amp == std::string_view::npos ? std::string_view() : text.substr(amp + 1);
        if (piece.empty()) continue;
        if (fields.size() >= kMaxFields) return {413, "The request holds more than 1025 fields."};
        std::size_t eq = piece.find('=');
        Field field;
        if (!Decode(piece.substr(0, eq), field.name, fault)) return fault;
        if (eq != std::string_view::npos && !Decode(piece.substr(eq + 1), field.value, fault))
            return fault;
        fields.push_back(std::move(field));
    }
    return fault;
}

Fault ReadCgiInput(std::FILE *in, std::vector<Field> &fields) {
    std::string_view method = Env("REQUEST_METHOD");
    if (method.empty()) method = "GET";
    if (method != "GET" && method != "HEAD" && method != "POST")
        return {405, "This application answers GET, HEAD and POST requests only."};
    std::string_view query = Env("QUERY_STRING");
    if (query.size() > kMaxBodyBytes) return {414, "The query string is longer than 1 MiB."};

    if (method == "POST") {
        std::string_view length = Env("CONTENT_LENGTH");
        if (length.empty()) return {411, "A POST request needs a content length."};
        if (length.size() > 18 || length.find_first_not_of("0123456789") != std::string_view::npos)
            return {400, "The content length is not a number."};
        std::size_t size = std::strtoull(std::string(length).c_str(), nullptr, 10);
        if (size > kMaxBodyBytes) return {413, "The request body is larger than 1 MiB."};
        if (size > 0) {
            std::string type = MediaType(Env("CONTENT_TYPE"));
            if (type != "application/x-www-form-urlencoded")
                return {415, type == "multipart/form-data"
                                 ? "File uploads (multipart/form-data) are not accepted."
                                 : "The request body is not application/x-www-form-urlencoded."};
            std::string body(size, '\0');
            if (std::fread(body.data(), 1, size, in) != size)
                return {400, "The request body is shorter than its content length."};
            Fault fault = ParseUrlEncoded(body, fields);
            if (fault.status) return fault;
        }
    }
    return ParseUrlEncoded(query, fields);
}

} // namespace vlrun
