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

std::string Env(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

// The fields become the record's numbered argument options, which the
// record's own unpacking turns into its arguments (body fields first).
void TakeFields(VlRequest *record, const std::vector<Field> &fields) {
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

void ErrorAnswer(Answer &answer, const Fault &fault) {
    answer = Answer();
    answer.status = fault.status;
    answer.body = ErrorPage(fault.status, fault.message);
    if (fault.status == 405) answer.headers.emplace_back("Allow", "GET, HEAD, POST");
}

// The page a request is answered with when the activator wrote nothing of
// its own: the one it chose, else that of its first column bind, else the
// page named in the URL's path, else the start page.
std::string AnswerPageName(const RequestState &request) {
    if (!request.answerPage.empty()) return request.answerPage;
    for (const auto &call : request.calls)
        for (const ColumnBind &column : call->columns)
            if (!column.page.empty()) return column.page;
    std::string path = Env("PATH_INFO");
    path.erase(0, path.find_first_not_of('/'));
    return path.empty() ? TheSettings().startupHtml : path;
}

std::vector<std::pair<std::string, std::string>> EnvironmentPairs() {
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

void AnswerWithPage(RequestState &request, const std::vector<Field> &fields) {
    const Settings &s = TheSettings();
    std::string name = AnswerPageName(request);
    std::string text, message;
    if (name.empty()) {
        message = "This application has no start page.";
    } else if (ReadPage(name, text, message)) {
        message.clear();
    }
    if (!message.empty()) {
        request.databases->Rollback();
        return ErrorAnswer(request.answer, {404, message});
    }
    Fault fault = request.databases->Commit();
    if (fault.status) {
        FailRequest(fault);
        return ErrorAnswer(request.answer, request.fault);
    }
    std::string page = FillPage(
        text, [&](std::string_view site) { return SiteHtml(request.calls, name, site); },
        Env("SCRIPT_NAME"), s.htmlUrl);
    if (s.printArgs) {
        std::vector<std::pair<std::string, std::string>> pairs;
        pairs.reserve(fields.size());
        for (const Field &field : fields)
            pairs.emplace_back(field.name, field.value);
        page = BeforeBodyEnd(page, PairTable("args", pairs));
    }
    if (s.printEnv) page = BeforeBodyEnd(page, PairTable("env", EnvironmentPairs()));
    request.answer.body = std::move(page);
}

void SendAnswer(RequestState &request) {
    std::vector<Field> fields;
    Fault fault;
    if (TheSettings().loginRequired && Env("REMOTE_USER").empty())
        fault = {401, "This application needs a login."};
    else
        fault = ReadCgiInput(stdin, fields);
    if (fault.status) return ErrorAnswer(request.answer, fault);
    TakeFields(request.record, fields);

    const char *name = VlReqGetArgByName(request.record, "VlFormName");
    if (!name || !*name) name = VlReqGetArgByName(request.record, "FNC");
    if (name && *name) {
        std::string fullName;
        VlActivatorProc activator = FindActivator(name, fullName);
        if (!activator)
            return ErrorAnswer(request.answer,
                               {404, "This application has no activator " + std::string(name) + ".",
                                {}});
        UxWidget = fullName.data();
        activator();
        UxWidget = nullptr;
    }
    if (request.fault.status) {
        request.databases->Rollback();
        return ErrorAnswer(request.answer, request.fault);
    }
    if (!request.answer.own) return AnswerWithPage(request, fields);
    fault = request.databases->Commit();
    if (fault.status) {
        FailRequest(fault);
        ErrorAnswer(request.answer, request.fault);
    }
}

// A line of the Common Log Format on standard error, which the web server
// keeps in its error log.
void CommonLog(const Answer &answer) {
    char when[64];
    std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    std::strftime(when, sizeof when, "%d/%b/%Y:%H:%M:%S +0000", &utc);
    std::string target = Env("SCRIPT_NAME") + Env("PATH_INFO");
    if (!Env("QUERY_STRING").empty()) target += "?" + Env("QUERY_STRING");
    std::string user = Env("REMOTE_USER");
    std::fprintf(stderr, "%s - %s [%s] \"%s %s %s\" %d %zu\n",
                 Env("REMOTE_ADDR").empty() ? "-" : Env("REMOTE_ADDR").c_str(),
                 user.empty() ? "-" : user.c_str(), when, Env("REQUEST_METHOD").c_str(),
                 target.c_str(), Env("SERVER_PROTOCOL").c_str(), answer.status, answer.body.size());
}

} // namespace

} // namespace vlrun

extern "C" {

XtPointer UxWidget = nullptr;

int VlProcessRequest(int argc, char **argv) {
    vlrun::SetProgramDir(argc > 0 && argv ? argv[0] : nullptr);
    vlrun::Settings &s = vlrun::TheSettings();
    vlrun::ReadConfigFile(s);
    vlrun::RegisterPage(s.startupHtml);

    std::string response;
    {
        vlrun::RequestState request;
        vlrun::SetCurrentRequest(&request);
        vlrun::SendAnswer(request);
        response = vlrun::CgiResponse(request.answer, vlrun::Env("REQUEST_METHOD") == "HEAD");
        if (s.commonLog) vlrun::CommonLog(request.answer);
        vlrun::SetCurrentRequest(nullptr);
    }
    bool written = std::fwrite(response.data(), 1, response.size(), stdout) == response.size();
    return written && std::fflush(stdout) == 0 ? 0 : 1;
}

const char *VlGetInputValue(const char *field) {
    vlrun::RequestState *request = vlrun::CurrentRequest();
    return request ? VlReqGetArgByName(request->record, field) : nullptr;
}

int VlSetAnswerPage(const char *page) {
    vlrun::RequestState *request = vlrun::CurrentRequest();
    if (!request || !page) return -1;
    request->answerPage = page;
    return 0;
}

} // extern "C"
