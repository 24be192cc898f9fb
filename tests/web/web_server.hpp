// A lighttpd with mod_cgi on 127.0.0.1 at a free port for the web tests,
// serving a directory of pages and a directory of CGI programs, stopped by
// its destructor (and with the test process, should that die first), and
// curl to ask it.
#ifndef VELMORA_TESTS_WEB_WEB_SERVER_HPP
#define VELMORA_TESTS_WEB_WEB_SERVER_HPP

#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

inline const char *const kLighttpd = "/usr/sbin/lighttpd";
inline const char *const kCurl = "/usr/bin/curl";

// Of the CGI directory only the programs run: the database and the
// configuration file beside them are never sent.
inline const std::string kPrivateCgiBin =
    "$HTTP[\"url\"] =~ \"^/cgi-bin/\" { static-file.exclude-extensions = ( \"\" ) }\n";
// Pages are UTF-8, and a browser must know it before it sends a form.
inline const std::string kMimeTypes =
    "mimetype.assign = ( \".html\" => \"text/html; charset=utf-8\", \".svg\" => \"image/svg+xml\" )\n";

struct HttpAnswer {
    int status = 0;
    std::string headers;
    std::string body;
};

// Asks url with curl; extra are further curl arguments (-d, -H, ...).
inline HttpAnswer HttpGet(const std::string &url, std::vector<std::string> extra = {}) {
    extra.insert(extra.begin(), {"-s", "-i", "--path-as-is"});
    extra.push_back(url);
    ProgramRun run = RunProgram(kCurl, extra, {"PATH=/usr/bin:/bin"}, "/");
    HttpAnswer answer;
    // A large body may first get an interim "100 Continue".
    while (run.out.compare(0, 12, "HTTP/1.1 100") == 0)
        run.out.erase(0, run.out.find("\r\n\r\n") + 4);
    std::size_t end = run.out.find("\r\n\r\n");
    answer.headers = run.out.substr(0, end);
    answer.body = end == std::string::npos ? "" : run.out.substr(end + 4);
    if (run.out.size() > 12) answer.status = std::atoi(run.out.c_str() + 9);
    return answer;
}

class WebServer {
  public:
    // Serves www at / and cgiBin at /cgi-bin/; logs into dir.
    WebServer(const std::string &dir, const std::string &www, const std::string &cgiBin)
        : log_(dir + "/lighttpd-error.log"), cgiLog_(dir + "/cgi-stderr.log") {
        port_ = OnAFreePort([&](int port) {
            port_ = port;
            const std::string conf = dir + "/lighttpd.conf";
            WriteText(conf, "server.document-root = \"" + www + "\"\nserver.bind = \"127.0.0.1\"\n" +
                                "server.port = " + std::to_string(port) +
                                "\nserver.modules = ( \"mod_alias\", \"mod_cgi\" )\n"
                                "server.errorlog = \"" + log_ + "\"\nserver.breakagelog = \"" +
                                cgiLog_ + "\"\nalias.url = ( \"/cgi-bin/\" => \"" +
                                cgiBin + "/\" )\ncgi.assign = ( \".cgi\" => \"\" )\n" + kPrivateCgiBin +
                                kMimeTypes);
            pid_ = SpawnProgram({kLighttpd, "-D", "-f", conf}, {.deathSignal = SIGTERM});
            // It ends at once when the port is taken.
            auto answers = [&] { return HttpGet(Url("/")).status != 0; };
            if (!PollUntilReady(pid_, 100, std::chrono::milliseconds(50), answers)) Stop();
            return pid_ > 0;
        });
    }
    ~WebServer() { Stop(); }
    WebServer(const WebServer &) = delete;
    WebServer &operator=(const WebServer &) = delete;

    bool Running() const { return pid_ > 0; }
    std::string Url(const std::string &path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }
    // The server's log, then what the CGI programs wrote to standard error.
    std::string ErrorLog() const { return ReadText(log_) + ReadText(cgiLog_); }

    void Stop() { StopProcess(pid_, SIGTERM, 10000); }

  private:
    std::string log_;
    std::string cgiLog_;
    int port_ = 0;
    pid_t pid_ = -1;
};

#endif
