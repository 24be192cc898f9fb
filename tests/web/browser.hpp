// Headless Chromium for the browser test, driven through chromedriver's W3C
// WebDriver HTTP API with curl. chromedriver and Chromium run in a process
// group of their own under a small watchdog process, which kills the whole
// group when the test closes its pipe or dies, so no browser outlives the
// test; the session is first ended properly, which closes Chromium.
#ifndef VELMORA_TESTS_WEB_BROWSER_HPP
#define VELMORA_TESTS_WEB_BROWSER_HPP

#include "support/run_program.hpp"
#include "support/temp_dir.hpp"
#include "web/web_server.hpp"

#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <vector>

inline const char *const kChromium = "/usr/bin/chromium";
inline const char *const kChromedriver = "/usr/bin/chromedriver";

// A JSON string literal of text (UTF-8 passes as it is).
inline std::string JsonQuote(const std::string &text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            out += escape;
        } else {
            out += static_cast<char>(c);
        }
    }
    return out + "\"";
}

// The string value of the first "key" of a JSON text, decoded to UTF-8, or
// "(no <key> in <json>)". WebDriver's answers are small and flat enough for
// a search by key.
inline std::string JsonString(const std::string &json, const std::string &key) {
    std::size_t at = json.find("\"" + key + "\":");
    if (at == std::string::npos) return "(no " + key + " in " + json + ")";
    at = json.find_first_not_of(" ", at + key.size() + 3);
    if (at == std::string::npos || json[at] != '"') return "(no " + key + " in " + json + ")";
    std::string out;
    for (std::size_t i = at + 1; i < json.size() && json[i] != '"'; i++) {
        if (json[i] != '\\') {
            out += json[i];
            continue;
        }
        char e = json[++i];
        if (e != 'u') {
            out += e == 'n' ? '\n' : e == 't' ? '\t' : e == 'r' ? '\r' : e == 'b' ? '\b' : e == 'f' ? '\f' : e;
            continue;
        }
        // chromedriver sends UTF-8 as it is and escapes only a few
        // characters, all of them in the Basic Multilingual Plane.
        unsigned long code = std::stoul(json.substr(i + 1, 4), nullptr, 16);
        i += 4;
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return out;
}

class Browser {
  public:
    // Starts chromedriver on a free port of 127.0.0.1 and a Chromium session
    // with a new, empty profile in dir.
    explicit Browser(const std::string &dir) : dir_(dir) {
        port_ = OnAFreePort([&](int port) {
            port_ = port;
            StartDriver();
            if (WaitUntilReady()) StartSession();
            if (session_.empty()) Stop();
            return !session_.empty();
        });
    }
    ~Browser() { Stop(); }
    Browser(const Browser &) = delete;
    Browser &operator=(const Browser &) = delete;

    bool Running() const { return !session_.empty(); }
    // What went wrong at start, and chromedriver's log.
    std::string Log() const { return log_ + ReadText(dir_ + "/chromedriver.log"); }

    // A WebDriver command of the session: its answer's "value" as a string.
    std::string Command(const std::string &method, const std::string &path,
                        const std::string &body = "") {
        return JsonString(Request(method, "/session/" + session_ + path, body), "value");
    }
    // The id of the element a CSS selector finds first.
    std::string Element(const std::string &selector) {
        std::string answer = Request("POST", "/session/" + session_ + "/element",
                                     "{\"using\":\"css selector\",\"value\":" + JsonQuote(selector) + "}");
        return JsonString(answer, "element-6066-11e4-a52e-4f735466cecf");
    }
    void Type(const std::string &selector, const std::string &text) {
        Command("POST", "/element/" + Element(selector) + "/value", "{\"text\":" + JsonQuote(text) + "}");
    }
    void Click(const std::string &selector) {
        Command("POST", "/element/" + Element(selector) + "/click", "{}");
    }
    // The result of a script run in the page, which must give a string.
    std::string Script(const std::string &source) {
        return Command("POST", "/execute/sync", "{\"script\":" + JsonQuote(source) + ",\"args\":[]}");
    }

    // Ends the session (Chromium closes), then the watchdog kills what is
    // left of the group.
    void Stop() {
        if (!session_.empty()) Request("DELETE", "/session/" + session_);
        session_.clear();
        if (pipe_ >= 0) close(pipe_);
        pipe_ = -1;
        if (watchdog_ > 0) waitpid(watchdog_, nullptr, 0);
        watchdog_ = -1;
    }

  private:
    std::string Request(const std::string &method, const std::string &path,
                        const std::string &body = "") {
        std::vector<std::string> args = {"-s", "-X", method, "--max-time", "60",
                                         "http://127.0.0.1:" + std::to_string(port_) + path};
        if (!body.empty())
            args.insert(args.end(), {"-H", "Content-Type: application/json", "--data-raw", body});
        return RunProgram(kCurl, args, {"PATH=/usr/bin:/bin"}, "/").out;
    }

    // The watchdog: a child in a new process group, which starts
    // chromedriver in another and kills that group (chromedriver and the
    // Chromium it starts) once the pipe from the test reaches its end.
    void StartDriver() {
        int fds[2];
        if (pipe2(fds, O_CLOEXEC) != 0) return;
        const std::string port = "--port=" + std::to_string(port_);
        const std::string logFile = dir_ + "/chromedriver.log";
        const std::string home = "HOME=" + dir_;
        std::fflush(stdout);
        std::fflush(stderr);
        watchdog_ = fork();
        if (watchdog_ == 0) {
            close(fds[1]);
            prctl(PR_SET_CHILD_SUBREAPER, 1); // Chromium's orphans come here
            const std::vector<std::string> env = {"PATH=/usr/bin:/bin", home};
            pid_t driver =
                SpawnProgram({kChromedriver, port}, {.env = env, .out = logFile, .ownGroup = true});
            setpgid(driver, driver);
            char byte = 0;
            for (ssize_t n = 1; n > 0 || (n < 0 && errno == EINTR);)
                n = read(fds[0], &byte, 1);
            kill(-driver, SIGKILL);
            alarm(10); // Chromium's crash handlers end with it
            for (pid_t reaped = 1; reaped > 0 || (reaped < 0 && errno == EINTR);)
                reaped = waitpid(-1, nullptr, 0);
            _exit(0);
        }
        close(fds[0]);
        pipe_ = fds[1];
        if (watchdog_ < 0) {
            close(pipe_);
            pipe_ = -1;
        }
    }

    bool WaitUntilReady() {
        if (PollUntilReady(watchdog_, 100, std::chrono::milliseconds(100), [&] {
                return Request("GET", "/status").find("\"ready\":true") != std::string::npos;
            }))
            return true;
        log_ += "chromedriver did not answer on port " + std::to_string(port_) + "\n";
        return false;
    }

    void StartSession() {
        std::string args;
        for (const std::string &flag : std::vector<std::string>{
                 "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
              "--disable-background-networking", "--disable-component-update", "--disable-sync",
              "--user-data-dir=" + dir_ + "/profile"})
            args += (args.empty() ? "" : ",") + JsonQuote(flag);
        std::string answer = Request(
            "POST", "/session",
            "{\"capabilities\":{\"alwaysMatch\":{\"browserName\":\"chrome\",\"goog:chromeOptions\":"
            "{\"binary\":" + JsonQuote(kChromium) + ",\"args\":[" + args + "]}}}}");
        if (answer.find("\"sessionId\":") != std::string::npos)
            session_ = JsonString(answer, "sessionId");
        else
            log_ += "no session: " + answer + "\n";
    }

    std::string dir_;
    int port_ = 0;
    pid_t watchdog_ = -1;
    int pipe_ = -1;
    std::string session_;
    std::string log_;
};

#endif
