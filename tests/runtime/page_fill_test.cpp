// The page filler and the answer: site marks, the program URL and the BASE
// element; the tables and bare values of the column binds, escaped; the CGI
// response and the activator's own output with its refusals.
#include "runtime/page_fill.hpp"
#include "runtime/request_state.hpp"
#include "runtime/workcall.hpp"
#include "runtime/VlRnHtml.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Filled(const std::string &page, const std::string &base = "") {
    return vlrun::FillPage(
        page, [](std::string_view site) { return "[" + std::string(site) + "]"; },
        "/cgi-bin/a&b.cgi", base);
}

TEST(PageFill, ReplacesSiteMarksAndTheProgramUrl) {
    EXPECT_EQ(Filled("a##Vl_one##b##Vl_two####Vl_x##"), "a[one]b[two][x]");
    // Not marks: an empty, blank, quoted or unclosed name stays as it is.
    EXPECT_EQ(Filled("##Vl_##|##Vl_a b##|##Vl_a\"b##|##Vl_end#"),
              "##Vl_##|##Vl_a b##|##Vl_a\"b##|##Vl_end#");
    EXPECT_EQ(Filled("<a href=\"$$VL_CGI_URL?FNC=x\">$$VL_CGI_URL"),
              "<a href=\"/cgi-bin/a&amp;b.cgi?FNC=x\">/cgi-bin/a&amp;b.cgi");
    EXPECT_EQ(Filled("<html><HEAD>\n<title>t</title>", "http://h/shop"),
              "<html><HEAD><base href=\"http://h/shop/\">\n<title>t</title>");
    EXPECT_EQ(Filled("<header><head id=\"h\">", "/x/"), "<header><head id=\"h\"><base href=\"/x/\">");
    EXPECT_EQ(Filled("<head><BASE href=\"/\">", "/x"), "<head><BASE href=\"/\">");
    EXPECT_EQ(Filled("<p>no head</p>", "/x"), "<p>no head</p>");
}

TEST(PageFill, ColumnBindsGiveEscapedTablesOrBareValues) {
    vlrun::RequestState request;
    vlrun::SetCurrentRequest(&request);
    auto call = [&](long maxRows, std::vector<std::string> names,
                    const std::vector<std::vector<std::string>> &rows) -> SgeWorkCallData & {
        SgeWorkCallData &c = *request.calls.emplace_back(std::make_unique<SgeWorkCallData>());
        c.maxRows = maxRows;
        vlrun::BeginResults(c, std::move(names));
        for (const auto &row : rows)
            vlrun::AddResultRow(c, row);
        vlrun::EndResults(c, 0);
        return c;
    };
    SgeWorkCallData &books = call(-1, {"title", "price"}, {{"<b>Dune</b>", "9.50"}, {"Emma", "7"}});
    SgeSetColBind(&books, "p.html|list", 1, 2, 60, nullptr, nullptr);
    SgeSetColDetail(&books, 12, 0, 0, 1, "varchar", ""); // no name: its position
    SgeSetColBind(&books, "p.html|list", 1, 1, 8, nullptr, nullptr);
    SgeSetColDetail(&books, 3, 0, 0, 2, "decimal", "PRICE"); // by name, any case
    SgeSetColBind(&books, "other.html|list", 1, 3, 8, nullptr, nullptr);
    SgeWorkCallData &note = call(1, {"n"}, {{"Tom & 'Jerry'"}, {"not shown"}});
    SgeSetColBind(&note, "note", 1, 1, 60, nullptr, nullptr); // any page

    EXPECT_EQ(vlrun::SiteHtml(request.calls, "p.html", "list"),
              "<table class=\"vl-list\">\n<tr><th>PRICE</th><th>title</th></tr>\n"
              "<tr><td>9.50</td><td>&lt;b&gt;Dune&lt;/b&gt;</td></tr>\n"
              "<tr><td>7</td><td>Emma</td></tr>\n</table>\n");
    EXPECT_EQ(vlrun::SiteHtml(request.calls, "q.html", "note"), "Tom &amp; &#39;Jerry&#39;");
    EXPECT_EQ(vlrun::SiteHtml(request.calls, "p.html", "none"), "");
    EXPECT_EQ(vlrun::SiteTable("s\"", {"<h>"}, {{"a<b"}, {""}}),
              "<table class=\"vl-s&quot;\">\n<tr><th>&lt;h&gt;</th></tr>\n"
              "<tr><td>a&lt;b</td></tr>\n<tr><td></td></tr>\n</table>\n");
    vlrun::SetCurrentRequest(nullptr);
}

TEST(PageFill, TheActivatorsOwnOutputAndItsRefusals) {
    EXPECT_EQ(VlSetStatus(201), -1); // outside a request
    vlrun::RequestState request;
    vlrun::SetCurrentRequest(&request);
    EXPECT_EQ(VlSetStatus(99), -1);
    EXPECT_EQ(VlSetStatus(201), 0);
    EXPECT_EQ(VlAddHeader("X-A", "1"), 0);
    EXPECT_EQ(VlAddHeader("X-B", "1\r\nSet-Cookie: x=1"), -1);
    EXPECT_EQ(VlAddHeader("X-C\n", "1"), -1);
    EXPECT_EQ(VlAddHeader("X D", "1"), -1);
    EXPECT_EQ(VlSetContentType("text/plain\nX: 1"), -1);
    EXPECT_EQ(VlSetContentType("text/plain"), 0);
    EXPECT_EQ(VlPrintf("%d %s", 7, "<x>"), 0);
    EXPECT_EQ(VlWrite("!", 1), 0);
    EXPECT_EQ(VlSendFile("../etc/passwd"), -1);
    EXPECT_EQ(vlrun::CgiResponse(request.answer, false),
              "Status: 201 Created\r\nContent-Type: text/plain\r\nContent-Length: 6\r\n"
              "X-A: 1\r\n\r\n7 <x>!");
    EXPECT_EQ(VlRedirect("/x\r\nY: 1"), -1);
    EXPECT_EQ(VlRedirect("/next?a=<1>"), 0);
    EXPECT_EQ(vlrun::CgiResponse(request.answer, true),
              "Status: 302 Found\r\nContent-Type: text/plain\r\nContent-Length: " +
                  std::to_string(request.answer.body.size()) +
                  "\r\nX-A: 1\r\nLocation: /next?a=<1>\r\n\r\n");
    EXPECT_NE(request.answer.body.find("<a href=\"/next?a=&lt;1&gt;\">"), std::string::npos);
    vlrun::SetCurrentRequest(nullptr);
}

} // namespace
