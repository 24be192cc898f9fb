// The answer of a request as the program builds it: status, headers, content
// type and body, either a filled page or the activator's own output; the
// short error page; HTML escaping; and the CGI response text.
#ifndef VELMORA_RUNTIME_ANSWER_HPP
#define VELMORA_RUNTIME_ANSWER_HPP

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vlrun {

struct Answer {
    int status = 200;
    std::string contentType; // empty: text/html; charset=utf-8
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    bool own = false; // the activator wrote its own output: no page is filled
};

// & < > " ' as character references.
std::string HtmlEscape(std::string_view text);
void AppendEscaped(std::string &out, std::string_view text);

// "Not Found" for 404, and so on; "Error" for a status it does not know.
std::string_view ReasonPhrase(int status);

// A short HTML page that gives the status and the (escaped) message.
std::string ErrorPage(int status, std::string_view message);

// The CGI response: Status, Content-Type, Content-Length, the answer's own
// headers, a blank line and (unless head) the body.
std::string CgiResponse(const Answer &answer, bool head);

// True when text may stand in a header (no CR, LF or NUL).
bool IsHeaderSafe(std::string_view text);

} // namespace vlrun

#endif
