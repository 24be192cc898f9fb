// The example shop installed the way its user installs it, for the tests
// that serve it: a scratch directory with a lighttpd on 127.0.0.1 serving
// www/ and cgi-bin/, and vlnogui run on a copy of the example with the
// example's test.cfg (with some options replaced), so that vlinst.sh builds
// shop.cgi with the staged distribution and installs it and the pages.
#ifndef VELMORA_TESTS_WEB_SHOP_SITE_HPP
#define VELMORA_TESTS_WEB_SHOP_SITE_HPP

#include "web/web_server.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

inline const std::string kExample = std::string(VELMORA_SOURCE_DIR) + "/examples/shop";
inline const std::string kDist = VELMORA_STAGE_DIR;

// Why a test that serves the shop cannot run here, or empty.
inline std::string WebToolsMissing() {
    if (access(kLighttpd, X_OK) != 0 || access(kCurl, X_OK) != 0)
        return "lighttpd or curl is not installed (apt-get install lighttpd curl)";
    return {};
}

// Skips the test for that reason, or fails it where the tests must run
// (VELMORA_REQUIRE_WEB, which .ci/run sets).
#define SKIP_OR_FAIL_UNLESS_EMPTY(reason)                                                        \
    do {                                                                                         \
        if (!(reason).empty()) {                                                                 \
            if (std::getenv("VELMORA_REQUIRE_WEB")) FAIL() << (reason);                          \
            GTEST_SKIP() << (reason);                                                            \
        }                                                                                        \
    } while (0)

class ShopSite {
  public:
    // options: "name : value" lines that replace (or add to) those of the
    // example's test.cfg; the server's own URL is known by then, for the
    // URLs the pages carry.
    using Options = std::vector<std::string> (*)(const WebServer &server);

    explicit ShopSite(Options options = nullptr) {
        for (const char *dir : {"home", "www", "cgi-bin"})
            fs::create_directories(root_.File(dir));
        fs::copy(kExample, root_.File("shop"), fs::copy_options::recursive);
        server_ = std::make_unique<WebServer>(root_.Path(), root_.File("www"), root_.File("cgi-bin"));
        if (!server_->Running()) {
            log_ = "lighttpd did not start\n" + server_->ErrorLog();
            return;
        }
        // test.cfg, then the replacements: a run merges a configuration line
        // by line, each into the place of the option of its name.
        std::string config = ReadText(kExample + "/test.cfg");
        for (const std::string &line : options ? options(*server_) : std::vector<std::string>())
            config += line + "\n";
        config = root_.Write("shop/site.cfg", config);
        // The sanitizer build's library needs the same flags on the program.
        ProgramRun run = RunProgram(
            VLNOGUI_PATH, {"-p", root_.File("shop/shop.pj"), "-c", config},
            {"PATH=" + kDist + "/bin:/usr/bin:/bin", "HOME=" + root_.File("home"),
             "VELMORA=" + kDist, std::string("CFLAGS=") + VELMORA_C_FLAGS,
             std::string("LDFLAGS=") + VELMORA_LINK_FLAGS},
            root_.Path());
        log_ = run.out + run.err;
    }

    // True when shop.cgi was built and installed; else log() says why.
    bool Ready() const { return server_->Running() && fs::exists(root_.File("cgi-bin/shop.cgi")); }
    const std::string &Log() const { return log_; }
    const TempDir &Root() const { return root_; }
    WebServer &Server() { return *server_; }

    // Creates the SQLite database from the example's shop.sql.
    void CreateSqliteDatabase() {
        ProgramRun run = RunProgram(kDist + "/bin/vlsql", {"cgi-bin/shop.db", kExample + "/shop.sql"},
                                    {}, root_.Path());
        log_ += run.err;
    }

    // Runs SQL on the SQLite database; what vlsql prints.
    std::string Sqlite(const std::string &query) const {
        return RunProgram(kDist + "/bin/vlsql",
                          {root_.File("cgi-bin/shop.db"), root_.Write("query.sql", query)}, {},
                          root_.Path())
            .out;
    }

    // POSTs body (from a file: it may be larger than a command line) unless empty.
    HttpAnswer Ask(const std::string &body, const std::string &path = "/cgi-bin/shop.cgi") const {
        if (body.empty()) return HttpGet(server_->Url(path));
        return HttpGet(server_->Url(path), {"--data-binary", "@" + root_.Write("body", body)});
    }

    // Stops the server; then what the server and the program wrote to
    // standard error when it holds a sanitizer's report, else empty.
    std::string StopAndReportSanitizers() {
        server_->Stop();
        std::string log = server_->ErrorLog();
        return log.find("Sanitizer") == std::string::npos ? std::string() : log;
    }

  private:
    TempDir root_;
    std::unique_ptr<WebServer> server_;
    std::string log_;
};

// What the fixtures of the tests that serve the shop share: the site of the
// suite, which a test needs ready unless a tool is missing (skipped_), and
// whose server's log must hold no sanitizer report at the end; the searches
// every database answers alike.
class ShopSuite : public ::testing::Test {
  protected:
    static inline const std::string kBooksHead =
        "<table class=\"vl-site1\">\n<tr><th>title</th><th>price</th></tr>\n";
    static inline const std::string kMobyDick = "<tr><td>Moby-Dick</td><td>11.90</td></tr>\n";
    static inline const std::string kSpecials =
        kBooksHead + "<tr><td>Dune</td><td>9.50</td></tr>\n" + kMobyDick + "</table>\n";

    // The part of a page the program filled: between "<h2>Books</h2>\n" and "<p>".
    static std::string Books(const HttpAnswer &answer) {
        std::size_t from = answer.body.find("<h2>Books</h2>\n");
        std::size_t to = answer.body.find("\n<p>", from);
        return from == std::string::npos || to == std::string::npos
                   ? "(no books part) " + answer.body
                   : answer.body.substr(from + 15, to - from - 15);
    }
    static std::string Search(const std::string &title) {
        return Books(site_->Ask("VlFormName=search__Fcatalog_html&title=" + title));
    }
    static void ExpectSearchesOfTheCatalog() {
        EXPECT_EQ(Search("Mo"), kBooksHead + kMobyDick + "</table>\n");
        // A title shorter than two characters lists the whole catalog.
        std::string all = Search("M");
        EXPECT_TRUE(all.starts_with(kBooksHead + "<tr><td>Dune</td><td>9.50</td></tr>\n"
                                                 "<tr><td>Emma</td><td>7.25</td></tr>\n"))
            << all;
        EXPECT_TRUE(all.ends_with("<tr><td>Ulysses</td><td>14.50</td></tr>\n</table>\n")) << all;
        EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 9);
        // Request text is a parameter, never SQL.
        EXPECT_EQ(Search("%27+OR+1%3D1--"), kBooksHead + "</table>\n");
    }

    static void StopSite() {
        if (site_) {
            EXPECT_EQ(site_->StopAndReportSanitizers(), "");
        }
        site_.reset();
    }
    void SetUp() override {
        SKIP_OR_FAIL_UNLESS_EMPTY(skipped_);
        ASSERT_TRUE(site_->Ready()) << site_->Log();
    }

    static inline std::unique_ptr<ShopSite> site_;
    static inline std::string skipped_;
};

#endif
