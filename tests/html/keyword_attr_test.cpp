// Keyword attributes and the case-insensitive tag searches.
#include "html_support.hpp"

#include <gtest/gtest.h>

namespace {

struct AnchDeleter {
    void operator()(VlHtmlAnch *a) const { VlHtmlAnchDelete(a); }
};
using AnchPtr = std::unique_ptr<VlHtmlAnch, AnchDeleter>;

// The anchor recognised at the first blank of text, as "fullName|url|attr".
std::string KeywordAt(const std::string &text, size_t position) {
    AnchPtr a(VlProcessKeyWords(text.c_str(), text.c_str() + position));
    if (!a) return "none";
    EXPECT_EQ(a->isKeyword, 1);
    return Str(a->fullName) + "|" + Str(a->url) + "|" + Str(a->urlAttr);
}

TEST(KeywordAttributes, RecognisedByKind) {
    KeywordsLoaded keys("src2\nSRC\ncode|\nsr\n");
    EXPECT_EQ(KeywordAt("x SRC = \"prog?FNC=pic__Ashop_html\"", 1), "pic__Ashop_html|prog|SRC");
    EXPECT_EQ(KeywordAt("x src=\"a\"", 1), "<null>|a|SRC");
    // An all-lower-case keyword takes single quotes only.
    EXPECT_EQ(KeywordAt("x src2=\"a\"", 1), "none");
    EXPECT_EQ(KeywordAt("x src2='a'", 1), "<null>|a|src2");
    // A bar keyword: blank, no "=", double quotes.
    EXPECT_EQ(KeywordAt("x code  \"u?FNC=c__Ap\"", 1), "c__Ap|u|code ");
    EXPECT_EQ(KeywordAt("x code=\"u\"", 1), "none");
    EXPECT_EQ(KeywordAt("x SRC=\"a b\"", 1), "none");
    EXPECT_EQ(KeywordAt("x SRC \"a\"", 1), "none");
    // The first keyword in file order wins: SRC before sr, which then needs
    // double quotes.
    EXPECT_EQ(KeywordAt("x src='a'", 1), "none");
    EXPECT_EQ(KeywordAt("x sr='a'", 1), "<null>|a|sr");
}

TEST(KeywordAttributes, HrefAndActionBelongToAnchorsAndForms) {
    KeywordsLoaded keys("HREF\nACTION\n");
    EXPECT_EQ(KeywordAt("<A HREF=\"x\">t</A>", 2), "none");
    EXPECT_EQ(KeywordAt("<P HREF=\"x\">t</P>", 2), "<null>|x|HREF");
    EXPECT_EQ(KeywordAt("<FORM ACTION=\"x\">t</FORM>", 5), "none");
    EXPECT_EQ(KeywordAt("</FORM> <P ACTION=\"x\">", 10), "<null>|x|ACTION");
}

TEST(KeywordAttributes, NothingWithoutKeywords) {
    EXPECT_EQ(VlAnyKeys(), 0);
    EXPECT_EQ(KeywordAt("x SRC=\"a\"", 1), "none");
    DocPtr doc = Scan(" <IMG SRC=\"a\">");
    EXPECT_EQ(doc->anchors, nullptr);
}

TEST(TagSearch, StrIStrStopsAtWhicheverComesFirst) {
    const char *text = "ab/form> <FORM";
    EXPECT_EQ(VlStrIStr(text, "/FORM>", "<FORM"), text + 2);
    EXPECT_EQ(VlStrIStr("x<form y /FORM>", "/FORM>", "<FORM"), nullptr);
    EXPECT_EQ(VlStrIStr("x<a\ty /A>", "/A>", "<A "), nullptr); // "<A " takes a tab or a line end
    EXPECT_EQ(VlStrIStr("x<ab /A>", "/A>", "<A ")[0], '/');
    const char *plain = "xyzXYZ";
    EXPECT_EQ(VlStrIStr(plain, "ZX", ""), plain + 2); // an empty stop is none
    EXPECT_EQ(VlStrIStr("ab", "abc", nullptr), nullptr);
}

} // namespace
