// Design-time markup: each pass rewrites exactly the bytes its rules name, and
// marking a marked page again changes nothing.
#include "html_support.hpp"

#include <gtest/gtest.h>

namespace {

constexpr const char *kUrl = "http://h/cgi-bin/app";

class Markup : public testing::Test {
  protected:
    void SetUp() override {
        VlHtmlResetProjName();
        VlHtmlSetProjName(kUrl);
    }
    void TearDown() override { VlHtmlResetProjName(); }

    // Scans text as the page shop.html.
    DocPtr Page(const std::string &text) {
        DocPtr doc = Scan(text);
        VlHtmlSetName(doc.get(), "shop.html");
        return doc;
    }
};

TEST_F(Markup, NamedFormGetsActionMethodAndHiddenInput) {
    const std::string text =
        "x <FORM ACTION=\"old\" METHOD=\"get\">\n<INPUT NAME=\"q\">\n</FORM> y";
    DocPtr doc = Page(text);
    ASSERT_EQ(VlHtmlNameFormByPos(doc.get(), 0, "order"), 0);
    const std::string once =
        "x <FORM ACTION=\"http://h/cgi-bin/app\" METHOD=\"post\" >\n"
        "<INPUT NAME=\"q\">\n"
        "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"order__Fshop_html\"> "
        "</FORM> y";
    Marked m = Mark(doc.get(), text, 0);
    EXPECT_EQ(m.result, 0);
    EXPECT_EQ(m.text, once);

    EXPECT_EQ(Mark(doc.get(), once, 0).text, once); // a fixed point from the second marking
    EXPECT_EQ(Mark(doc.get(), text, 7).text, text); // an unknown pass copies the text
}

TEST_F(Markup, MethodInsertedWhenTheTagHasNone) {
    const std::string hidden =
        "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"f__Fshop_html\"> ";
    // The texts are written as they stand: the inserted METHOD brings its
    // blank after the rewritten ACTION's own, or after a blank of the page.
    // The next marking finds the METHOD: from then on the text stays.
    const std::string action = " <form ACTION=\"http://h/cgi-bin/app\" ";
    const std::string tags[][3] = {
        {" <FORM>a</FORM>", " <FORM METHOD=\"post\" >a", " <FORM METHOD=\"post\" >a"},
        {" <form action=\"a\">b</form>", action + " METHOD=\"post\" >b",
         action + "METHOD=\"post\" >b"},
        {" <FORM NAME=\"n\" >c</FORM>", " <FORM NAME=\"n\"  METHOD=\"post\" >c",
         " <FORM NAME=\"n\"  METHOD=\"post\" >c"},
    };
    for (const auto &[text, firstTag, laterTag] : tags) {
        DocPtr doc = Page(text);
        VlHtmlNameFormByPos(doc.get(), 0, "f");
        const std::string end = hidden + (text[2] == 'f' ? "</form>" : "</FORM>");
        const std::string once = Mark(doc.get(), text, 0).text;
        EXPECT_EQ(once, firstTag + end);
        EXPECT_EQ(Mark(doc.get(), once, 0).text, laterTag + end);
        EXPECT_EQ(Mark(doc.get(), laterTag + end, 0).text, laterTag + end);
    }
    // A record without a method gets no METHOD at all.
    DocPtr noMethod = Page(" <FORM>a</FORM>");
    VlHtmlForm *unnamed = FormAt(noMethod.get(), 0);
    VlHtmlSetString(unnamed->store, &unnamed->fullName, "f__Fshop_html");
    EXPECT_EQ(Mark(noMethod.get(), " <FORM>a</FORM>", 0).text, " <FORM>a" + hidden + "</FORM>");
}

TEST_F(Markup, FormsWithoutNameOrEndStayAsTheyAre) {
    const std::string text = " <FORM ACTION=\"a\">1</FORM> <FORM ACTION=\"b\">2</FORM> <FORM x>";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->forms), 2);
    EXPECT_EQ(Mark(doc.get(), text, 0).text, text);

    // The second record is named: the first FORM tag keeps its bytes.
    VlHtmlNameFormByPos(doc.get(), 1, "two");
    EXPECT_EQ(Mark(doc.get(), text, 0).text,
              " <FORM ACTION=\"a\">1</FORM> <FORM ACTION=\"http://h/cgi-bin/app\"  "
              "METHOD=\"post\" >2<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" "
              "VALUE=\"two__Fshop_html\"> </FORM> <FORM x>");
}

TEST_F(Markup, ExistingHiddenInputGetsOnlyItsValue) {
    const std::string text = " <FORM METHOD=\"post\">"
                             "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"old__Fshop_html\">"
                             "ACTION  =  \"x\"   z</FORM>";
    DocPtr doc = Page(text);
    EXPECT_EQ(Str(FormAt(doc.get(), 0)->fullName), "old__Fshop_html");
    VlHtmlNameFormByPos(doc.get(), 0, "new");
    EXPECT_EQ(Mark(doc.get(), text, 0).text,
              " <FORM METHOD=\"post\" >"
              "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"new__Fshop_html\">"
              "ACTION=\"http://h/cgi-bin/app\" z</FORM>");
}

TEST_F(Markup, AnchorHrefRewritten) {
    const std::string text = " <A NAME=\"top\">t</A> <A HREF=\"x\"  TARGET=\"t\">go</A>"
                             " <a href='single'>s</a> <A HREF=\"y\">u</A>";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->anchors), 2);
    VlHtmlNameAnchByPos(doc.get(), 0, "go");
    const std::string once =
        " <A NAME=\"top\">t</A> "
        "<A HREF=\"http://h/cgi-bin/app?FNC=go__Ashop_html\" TARGET=\"t\">go</A>"
        " <a href='single'>s</a> <A HREF=\"y\">u</A>";
    EXPECT_EQ(Mark(doc.get(), text, 1).text, once);
    EXPECT_EQ(Mark(doc.get(), once, 1).text, once);
}

TEST_F(Markup, AnchorWithoutEndIsReadAsNothingAndCopied) {
    // The temporary anchor of a tag without "/A>" gets neither name nor URL, so
    // the tag is passed over before its end is looked for again.
    const std::string text = " <A HREF=\"a\">1</A> <A HREF=\"b\">no end";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->anchors), 1);
    SutAddList(doc->anchors, VlHtmlAnchNew());
    VlHtmlGenAnchNames(doc.get());
    Marked m = Mark(doc.get(), text, 1);
    EXPECT_EQ(m.result, 0);
    EXPECT_EQ(m.text, " <A HREF=\"http://h/cgi-bin/app?FNC=anch0__Ashop_html\" >1</A>"
                      " <A HREF=\"b\">no end");
}

TEST_F(Markup, AnchorPassSkipsKeywordRecordsAndStopsWhenRecordsRunOut) {
    KeywordsLoaded keys("SRC\n");
    const std::string text = " <IMG SRC=\"i\"> <A HREF=\"a\">1</A> <A HREF=\"b\">2</A>";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->anchors), 3);
    VlHtmlNameAnchByPos(doc.get(), 1, "one");
    // The keyword record is skipped: the first A tag goes with the second record.
    EXPECT_EQ(Mark(doc.get(), text, 1).text,
              " <IMG SRC=\"i\"> <A HREF=\"http://h/cgi-bin/app?FNC=one__Ashop_html\" >1</A>"
              " <A HREF=\"b\">2</A>");
}

TEST_F(Markup, KeywordAttributesRewrittenByTheirKind) {
    KeywordsLoaded keys("SRC\nlow\ncode|\n");
    const std::string text = " <IMG SRC = \"a.gif\" ALT=\"x\"> <P low='b'> <X code  \"c\">";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->anchors), 3);
    EXPECT_EQ(Mark(doc.get(), text, 2).text, text);
    VlHtmlGenAnchNames(doc.get());
    const std::string once = " <IMG SRC=\"http://h/cgi-bin/app?FNC=anch0__Ashop_html\" ALT=\"x\">"
                             " <P low='http://h/cgi-bin/app?FNC=anch1__Ashop_html'>"
                             " <X code \"http://h/cgi-bin/app?FNC=anch2__Ashop_html\">";
    EXPECT_EQ(Mark(doc.get(), text, 2).text, once);
    EXPECT_EQ(Mark(doc.get(), once, 2).text, once);
}

TEST_F(Markup, SiteMarksTakeTheRecordsNames) {
    const std::string text = "x##Vl_a## ##Vl_b c## ##Vl_b## ##Vl_c## end";
    DocPtr doc = Page(text);
    ASSERT_EQ(SutSizList(doc->sites), 3);
    VlHtmlSiteDelete(static_cast<VlHtmlSite *>(SutRemoveNList(doc->sites, 2)));
    VlHtmlSite *first = SiteAt(doc.get(), 0), *second = SiteAt(doc.get(), 1);
    VlHtmlSetString(first->store, &first->name, "s1");
    VlHtmlSetString(second->store, &second->name, "s2");
    // A third mark without a record loses its name and one "#".
    EXPECT_EQ(Mark(doc.get(), text, -1).text, "x##Vl_s1## ##Vl_b c## ##Vl_s2## ##Vl_# end");
    EXPECT_EQ(Mark(doc.get(), " <FORM>##Vl_q##</FORM>", -1).text, " <FORM>##Vl_s1##</FORM>");
}

} // namespace
