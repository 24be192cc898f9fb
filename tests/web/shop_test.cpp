// The example shop as a user gets it: vlnogui regenerates it with the staged
// distribution and vlinst.sh builds shop.cgi, vlsql creates its database, and
// lighttpd serves it on 127.0.0.1 while curl asks: pages, activators, an
// alias, searches, orders, hostile values and every refusal with its status.
#include "web/shop_site.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace {

class Shop : public ShopSuite {
  protected:
    static void SetUpTestSuite() {
        skipped_ = WebToolsMissing();
        if (!skipped_.empty()) return;
        site_ = std::make_unique<ShopSite>();
        site_->CreateSqliteDatabase();
    }
    static void TearDownTestSuite() { StopSite(); }

    static HttpAnswer Ask(const std::string &body, const std::string &path = "/cgi-bin/shop.cgi") {
        return site_->Ask(body, path);
    }
    static std::string Sql(const std::string &query) { return site_->Sqlite(query); }
};

TEST_F(Shop, PagesActivatorsAndAliases) {
    HttpAnswer start = Ask("");
    EXPECT_EQ(start.status, 200);
    EXPECT_NE(start.headers.find("Content-Type: text/html; charset=utf-8"), std::string::npos);
    EXPECT_EQ(Books(start), "");
    EXPECT_NE(start.body.find("<head><base href=\"http://localhost/shop/\"><title>"), std::string::npos);

    EXPECT_EQ(Books(Ask("", "/cgi-bin/shop.cgi?FNC=specials__Acatalog_html")), kSpecials);
    // The alias on the order page runs the same activator, whose column binds
    // answer with the catalog page.
    EXPECT_EQ(Books(Ask("", "/cgi-bin/shop.cgi?FNC=more__Aorder_html")), kSpecials);

    HttpAnswer banner = Ask("", "/cgi-bin/shop.cgi?FNC=banner__Acatalog_html");
    EXPECT_EQ(banner.status, 200);
    EXPECT_NE(banner.headers.find("Content-Type: image/svg+xml"), std::string::npos);
    EXPECT_NE(banner.body.find(">This week's specials</text></svg>\n"), std::string::npos);

    HttpAnswer page = Ask("", "/cgi-bin/shop.cgi/order.html");
    EXPECT_EQ(page.status, 200);
    EXPECT_NE(page.body.find("<h1>Order a book</h1>"), std::string::npos);
}

TEST_F(Shop, SearchesAFormPost) {
    ExpectSearchesOfTheCatalog();
}

TEST_F(Shop, AnOrderInsertsOneRowAndShowsItEscaped) {
    const std::string before = Sql("select count(*) from orders;");
    HttpAnswer order = Ask("VlFormName=order__Forder_html&customer=Ann&title=Dune&quantity=2");
    EXPECT_EQ(order.status, 200);
    EXPECT_NE(order.body.find("</FORM>\nThank you, Ann. Ordered: 2 x Dune\n<p>"), std::string::npos);
    EXPECT_EQ(Sql("select count(*) from orders;"), std::to_string(std::stoi(before) + 1) + "\n");

    order = Ask("VlFormName=order__Forder_html&customer=%3Cscript%3Ealert(1)%3C/script%3E"
                "&title=%27+OR+1%3D1--&quantity=1");
    EXPECT_NE(order.body.find("Thank you, &lt;script&gt;alert(1)&lt;/script&gt;. Ordered: 1 x "
                              "&#39; OR 1=1--\n"),
              std::string::npos);
    EXPECT_EQ(order.body.find("<script>"), std::string::npos);
    EXPECT_EQ(Sql("select customer, title from orders order by id desc limit 1;"),
              "<script>alert(1)</script>|' OR 1=1--\n");
    EXPECT_EQ(Sql("select count(*) from orders;"), std::to_string(std::stoi(before) + 2) + "\n");
}

TEST_F(Shop, RefusalsAndFailuresGetTheirStatusAndAShortPage) {
    const std::string before = Sql("select count(*) from orders;");
    struct Case {
        std::string body, path;
        int status;
        std::string message;
    };
    const std::string big(2 << 20, 'a');
    EXPECT_EQ(HttpGet(site_->Server().Url("/cgi-bin/shop.cgi"), {"-X", "PUT"}).status, 405);
    EXPECT_EQ(HttpGet(site_->Server().Url("/cgi-bin/shop.cgi"), {"-F", "title=Mo"}).status, 415);
    const Case cases[] = {
        // (lighttpd passes a bad escape of the query on as "%25".)
        {"FNC=%zz", "", 400, "The request holds a bad %-escape."},
        {"VlFormName=order__Forder_html&customer=Ann&title=Dune&quantity=abc", "", 400,
         "The value for quantity is not an integer."},
        {"VlFormName=order__Forder_html&customer=Ann&title=Dune&quantity=3000000000", "", 400,
         "The value for quantity is out of the range of its integer type."},
        {"title=" + big, "", 413, "The request body is larger than 1 MiB."},
        {"", "/cgi-bin/shop.cgi?FNC=nothing__Acatalog_html", 404,
         "This application has no activator nothing__Acatalog_html."},
        {"", "/cgi-bin/shop.cgi/order..html", 404,
         "The page order..html is not part of this application."},
        // The database refuses 0 copies: the work call fails, nothing stays.
        {"VlFormName=order__Forder_html&customer=Ann&title=Dune&quantity=0", "", 500,
         "The request could not be completed."},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.message);
        HttpAnswer answer = c.path.empty() ? Ask(c.body) : Ask(c.body, c.path);
        EXPECT_EQ(answer.status, c.status);
        std::string title = std::to_string(c.status) + " " +
                            answer.headers.substr(13, answer.headers.find('\r') - 13);
        EXPECT_EQ(answer.body, "<!DOCTYPE html>\n<html><head><title>" + title +
                                   "</title></head>\n<body><h1>" + title + "</h1>\n<p>" +
                                   c.message + "</p>\n</body></html>\n");
    }
    EXPECT_EQ(Sql("select count(*) from orders;"), before);

    // A page name that leaves the HTML directory never reaches a web server's
    // CGI unnormalised; the program refuses it all the same.
    ProgramRun run = RunProgram(site_->Root().File("cgi-bin/shop.cgi"), {},
                                {"REQUEST_METHOD=GET", "PATH_INFO=/../shop/shop.c"},
                                site_->Root().Path());
    EXPECT_EQ(run.out.substr(0, 24), "Status: 404 Not Found\r\nC");

    // The database and the configuration file beside the program are not sent.
    for (const char *file : {"shop.db", "shop.cfg"})
        EXPECT_EQ(Ask("", std::string("/cgi-bin/") + file).status, 403) << file;
}

} // namespace
