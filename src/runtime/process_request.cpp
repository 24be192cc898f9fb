// Answering one CGI request: settings and configuration file, the input
// fields into the request record, dispatch by VlFormName or FNC to the
// registered activator, then the activator's own output or the answer page
// filled with the work calls' results, committed as one transaction; every
// refusal or failure becomes its HTTP status and a short page.
#include "runtime/api.hpp"
#include "runtime/cgi_input.hpp"
#include "runtime/database.hpp"
#include "runtime/page_fill.hpp"
#include "runtime/pages.hpp"
#include "runtime/registration.hpp"
#include "runtime/request_state.hpp"
#include "runtime/settings.hpp"
#include "runtime/workcall.hpp"
#include "util/options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

extern char **environ; // NOLINT(readability-redundant-declaration): POSIX declares it nowhere

namespace vlrun {

namespace {

std::string env(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

// The fields become the record's numbered argument options, which the
// record's own unpacking turns into its arguments (body fields first).
void takeFields(VlRequest *record, const std::vector<Field> &fields) {
    record->options = SutNewList();
    for (std::size_t i = 0; i < fields.size(); i++) {
        std::string arg = "Arg" + std::to_string(i);
        SutAddList(record->options,
                   VlMakeOptionString((arg + "Name").c_str(), fields[i].name.c_str()));
        SutAddList(record->options,
                   VlMakeOptionString((arg + "Value").c_str(), fields[i].value.c_str()));
    }
    VlUnPackOdbcArgs(record);
}

void errorAnswer(Answer &answer, const Fault &fault) {
    answer = Answer();
    answer.status = fault.status;
    answer.body = errorPage(fault.status, fault.message);
    if (fault.status == 405) answer.headers.emplace_back("Allow", "GET, HEAD, POST");
}

// The page a request is answered with when the activator wrote nothing of
// its own: the one it chose, else that of its first column bind, else the
// page named in the URL's path, else the start page.
std::string answerPageName(const RequestState &request) {
    if (!request.answerPage.empty()) return request.answerPage;
    for (const auto &call : request.calls)
        for (const ColumnBind &column : call->columns)
            if (!column.page.empty()) return column.page;
    std::string path = env("PATH_INFO");
    path.erase(0, path.find_first_not_of('/'));
    return path.empty() ? settings().startupHtml : path;
}

std::vector<std::pair<std::string, std::string>> environmentPairs() {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (char **e = environ; e && *e; e++) {
        std::string_view line(*e);
        std::size_t eq = line.find('=');
        pairs.emplace_back(line.substr(0, eq),
                           eq == std::string_view::npos ? "" : line.substr(eq + 1));
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

void answerWithPage(RequestState &request, const std::vector<Field> &fields) {
    const Settings &s = settings();
    std::string name = answerPageName(request);
    std::string text, message;
    if (name.empty()) {
        message = "This application has no start page.";
    } else if (readPage(name, text, message)) {
        message.clear();
    }
    if (!message.empty()) {
        request.databases->rollback();
        return errorAnswer(request.answer, {404, message});
    }
    Fault fault = request.databases->commit();
    if (fault.status) {
        failRequest(fault);
        return errorAnswer(request.answer, request.fault);
    }
    std::string page = fillPage(
        text, [&](std::string_view site) { return siteHtml(request.calls, name, site); },
        env("SCRIPT_NAME"), s.htmlUrl);
    if (s.printArgs) {
        std::vector<std::pair<std::string, std::string>> pairs;
        pairs.reserve(fields.size());
        for (const Field &field : fields)
            pairs.emplace_back(field.name, field.value);
        page = beforeBodyEnd(page, pairTable("args", pairs));
    }
    if (s.printEnv) page = beforeBodyEnd(page, pairTable("env", environmentPairs()));
    request.answer.body = std::move(page);
}

void answer(RequestState &request) {
    std::vector<Field> fields;
    Fault fault;
    if (settings().loginRequired && env("REMOTE_USER").empty())
        fault = {401, "This application needs a login."};
    else
        fault = readCgiInput(stdin, fields);
    if (fault.status) return errorAnswer(request.answer, fault);
    takeFields(request.record, fields);

    const char *name = VlReqGetArgByName(request.record, "VlFormName");
    if (!name || !*name) name = VlReqGetArgByName(request.record, "FNC");
    if (name && *name) {
        std::string fullName;
        VlActivatorProc activator = findActivator(name, fullName);
        if (!activator)
            return errorAnswer(request.answer,
                               {404, "This application has no activator " + std::string(name) + ".",
                                {}});
        UxWidget = fullName.data();
        activator();
        UxWidget = nullptr;
    }
    if (request.fault.status) {
        request.databases->rollback();
        return errorAnswer(request.answer, request.fault);
    }
    if (!request.answer.own) return answerWithPage(request, fields);
    fault = request.databases->commit();
    if (fault.status) {
        failRequest(fault);
        errorAnswer(request.answer, request.fault);
    }
}

// A line of the Common Log Format on standard error, which the web server
// keeps in its error log.
void commonLog(const Answer &answer) {
    char when[64];
    std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::strftime(when, sizeof when, "%d/%b/%Y:%H:%M:%S +0000", &utc);
    std::string target = env("SCRIPT_NAME") + env("PATH_INFO");
    if (!env("QUERY_STRING").empty()) target += "?" + env("QUERY_STRING");
    std::string user = env("REMOTE_USER");
    std::fprintf(stderr, "%s - %s [%s] \"%s %s %s\" %d %zu\n",
                 env("REMOTE_ADDR").empty() ? "-" : env("REMOTE_ADDR").c_str(),
                 user.empty() ? "-" : user.c_str(), when, env("REQUEST_METHOD").c_str(),
                 target.c_str(), env("SERVER_PROTOCOL").c_str(), answer.status, answer.body.size());
}

} // namespace

} // namespace vlrun

extern "C" {

XtPointer UxWidget = nullptr;

int VlProcessRequest(int argc, char **argv) {
    vlrun::setProgramDir(argc > 0 && argv ? argv[0] : nullptr);
    vlrun::Settings &s = vlrun::settings();
    vlrun::readConfigFile(s);
    vlrun::registerPage(s.startupHtml);

    std::string response;
    {
        vlrun::RequestState request;
        vlrun::setCurrentRequest(&request);
        vlrun::answer(request);
        response = vlrun::cgiResponse(request.answer, vlrun::env("REQUEST_METHOD") == "HEAD");
        if (s.commonLog) vlrun::commonLog(request.answer);
        vlrun::setCurrentRequest(nullptr);
    }
    bool written = std::fwrite(response.data(), 1, response.size(), stdout) == response.size();
    return written && std::fflush(stdout) == 0 ? 0 : 1;
}

const char *VlGetInputValue(const char *field) {
    vlrun::RequestState *request = vlrun::currentRequest();
    return request ? VlReqGetArgByName(request->record, field) : nullptr;
}

int VlSetAnswerPage(const char *page) {
    vlrun::RequestState *request = vlrun::currentRequest();
    if (!request || !page) return -1;
    request->answerPage = page;
    return 0;
}

} // extern "C"
