// Building the answer: HTML escaping, the error page, the CGI response text,
// and the calls with which an activator answers on its own (status, headers,
// content type, written text, a file, a redirect).
#include "runtime/answer.hpp"

#include "runtime/api.hpp"
#include "runtime/pages.hpp"
#include "runtime/request_state.hpp"

#include <cstdarg>
#include <cstdio>

namespace vlrun {

namespace {

struct Reason {
    int status;
    const char *phrase;
};
constexpr Reason kReasons[] = {
    {200, "OK"},
    {201, "Created"},
    {204, "No Content"},
    {301, "Moved Permanently"},
    {302, "Found"},
    {303, "See Other"},
    {304, "Not Modified"},
    {307, "Temporary Redirect"},
    {400, "Bad Request"},
    {401, "Unauthorized"},
    {403, "Forbidden"},
    {404, "Not Found"},
    {405, "Method Not Allowed"},
    {411, "Length Required"},
    {413, "Payload Too Large"},
    {414, "URI Too Long"},
    {415, "Unsupported Media Type"},
    {500, "Internal Server Error"},
    {503, "Service Unavailable"},
};

// The request the calls below act on; null outside VlProcessRequest, where
// they refuse.
Answer *OwnAnswer() {
    RequestState *request = CurrentRequest();
    return request ? &request->answer : nullptr;
}

} // namespace

void AppendEscaped(std::string &out, std::string_view text) {
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\'':
            out += "&#39;";
            break;
        default:
            out += c;
        }
    }
}

std::string HtmlEscape(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    AppendEscaped(out, text);
    return out;
}

std::string_view ReasonPhrase(int status) {
    for (const Reason &r : kReasons)
        if (r.status == status) return r.phrase;
    return "Error";
}

std::string ErrorPage(int status, std::string_view message) {
    std::string title = std::to_string(status) + " " + std::string(ReasonPhrase(status));
    std::string page = "<!DOCTYPE html>\n<html><head><title>" + title +
                       "</title></head>\n<body><h1>" + title + "</h1>\n<p>";
    AppendEscaped(page, message);
    page += "</p>\n</body></html>\n";
    return page;
}

std::string CgiResponse(const Answer &answer, bool head) {
    std::string out = "Status: " + std::to_string(answer.status) + " " +
                      std::string(ReasonPhrase(answer.status)) + "\r\n";
    out += "Content-Type: ";
    out += answer.contentType.empty() ? "text/html; charset=utf-8" : answer.contentType;
    out += "\r\nContent-Length: " + std::to_string(answer.body.size()) + "\r\n";
    for (const auto &[name, value] : answer.headers)
        out.append(name).append(": ").append(value).append("\r\n");
    out += "\r\n";
    if (!head) out += answer.body;
    return out;
}

bool IsHeaderSafe(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

} // namespace vlrun

using vlrun::OwnAnswer;

extern "C" {

int VlSetStatus(int status) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || status < 100 || status > 599) return -1;
    answer->status = status;
    return 0;
}

int VlAddHeader(const char *name, const char *value) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || !name || !*name || !value) return -1;
    std::string_view n(name);
    if (!vlrun::IsHeaderSafe(n) || n.find_first_of(": \t") != std::string_view::npos ||
        !vlrun::IsHeaderSafe(value)) {
        std::fprintf(stderr, "VlAddHeader: refused a header whose name or value holds a line "
                             "break, or whose name holds a blank or colon\n");
        return -1;
    }
    answer->headers.emplace_back(name, value);
    return 0;
}

int VlSetContentType(const char *contentType) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || !contentType || !*contentType || !vlrun::IsHeaderSafe(contentType)) return -1;
    answer->contentType = contentType;
    return 0;
}

int VlWrite(const void *data, size_t size) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || (!data && size > 0)) return -1;
    answer->body.append(static_cast<const char *>(data), size);
    answer->own = true;
    return 0;
}

int VlPrintf(const char *format, ...) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || !format) return -1;
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    int n = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    if (n >= 0) {
        std::string text(static_cast<std::size_t>(n) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, again);
        text.resize(static_cast<std::size_t>(n));
        answer->body += text;
        answer->own = true;
    }
    va_end(again);
    return n >= 0 ? 0 : -1;
}

int VlSendFile(const char *path) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || !path) return -1;
    std::string content;
    if (!vlrun::ReadHtmlDirFile(path, content)) return -1;
    if (answer->contentType.empty()) answer->contentType = vlrun::ContentTypeOf(path);
    answer->body = std::move(content);
    answer->own = true;
    return 0;
}

int VlRedirect(const char *url) {
    vlrun::Answer *answer = OwnAnswer();
    if (!answer || !url || !*url || !vlrun::IsHeaderSafe(url)) return -1;
    if (answer->status < 300 || answer->status > 399) answer->status = 302;
    answer->headers.emplace_back("Location", url);
    answer->body = "<!DOCTYPE html>\n<html><body><p>Moved to <a href=\"" + vlrun::HtmlEscape(url) +
                   "\">" + vlrun::HtmlEscape(url) + "</a>.</p></body></html>\n";
    answer->own = true;
    return 0;
}

} // extern "C"
