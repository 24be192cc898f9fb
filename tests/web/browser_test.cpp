// The example shop in a real browser: vlnogui installs it for the URL of a
// lighttpd on 127.0.0.1, headless Chromium opens the order page, a name
// holding non-ASCII letters, quotes, '<' and an entity is typed into the
// form and sent, and the page the browser lands on and the row stored in
// the database must hold that name exactly.
#include "web/browser.hpp"
#include "web/shop_site.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

const std::string kName = "Zo\xC3\xAB \"Ann\" O'Brien <b>&amp;</b> \xE6\x97\xA5\xE6\x9C\xAC";

class BrowserShop : public ShopSuite {
  protected:
    static void SetUpTestSuite() {
        skipped_ = WebToolsMissing();
        if (skipped_.empty() && (access(kChromium, X_OK) != 0 || access(kChromedriver, X_OK) != 0))
            skipped_ = "Chromium is not installed (apt-get install chromium chromium-driver)";
        if (!skipped_.empty()) return;
        // The pages' forms and the answers' links carry the server's own URL.
        site_ = std::make_unique<ShopSite>([](const WebServer &server) {
            return std::vector<std::string>{"Test.CGI URL : " + server.Url("/cgi-bin"),
                                            "Test.HTML URL : " + server.Url("/shop")};
        });
        site_->CreateSqliteDatabase();
        profile_ = std::make_unique<TempDir>();
        browser_ = std::make_unique<Browser>(profile_->Path());
    }
    static void TearDownTestSuite() {
        browser_.reset();
        profile_.reset();
        StopSite();
    }
    void SetUp() override {
        ShopSuite::SetUp();
        if (!IsSkipped() && !HasFatalFailure()) {
            ASSERT_TRUE(browser_->Running()) << browser_->Log();
        }
    }

    static inline std::unique_ptr<TempDir> profile_;
    static inline std::unique_ptr<Browser> browser_;
};

TEST_F(BrowserShop, AnOrderTypedIntoThePageArrivesExactly) {
    Browser &browser = *browser_;
    const std::string program = site_->Server().Url("/cgi-bin/shop.cgi");
    browser.Command("POST", "/url", "{\"url\":" + JsonQuote(site_->Server().Url("/shop/order.html")) + "}");
    EXPECT_EQ(browser.Script("return document.characterSet + ' ' + document.forms[0].action"),
              "UTF-8 " + program);

    browser.Type("input[name=customer]", kName);
    browser.Type("input[name=title]", "Dune");
    browser.Click("select[name=quantity] option:nth-of-type(3)");
    browser.Click("input[type=submit]");

    std::string landed;
    for (int i = 0; i < 50 && landed != program; i++) {
        landed = browser.Command("GET", "/url");
        if (landed != program) std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    EXPECT_EQ(landed, program);
    EXPECT_EQ(browser.Command("GET", "/title"), "Velmora Shop: Order");
    // What the reader sees, and no element made of the name's text.
    EXPECT_EQ(browser.Script("const t = [...document.body.childNodes].find("
                             "n => n.nodeType === 3 && n.textContent.includes('Thank you'));"
                             "return t ? t.textContent : 'no confirmation';"),
              "\nThank you, " + kName + ". Ordered: 3 x Dune\n");
    EXPECT_EQ(browser.Script("return String(document.querySelectorAll('b, script').length)"), "0");
    // The page as the browser holds it (text escaped as it serializes it).
    EXPECT_NE(browser.Command("GET", "/source")
                  .find("</form>\nThank you, Zo\xC3\xAB \"Ann\" O'Brien &lt;b&gt;&amp;amp;&lt;/b&gt; "
                        "\xE6\x97\xA5\xE6\x9C\xAC. Ordered: 3 x Dune\n<p>"),
              std::string::npos);

    EXPECT_EQ(site_->Sqlite("select customer, title, quantity from orders order by id desc limit 1;"),
              kName + "|Dune|3\n");
}

} // namespace
