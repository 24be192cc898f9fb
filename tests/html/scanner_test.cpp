// The scanner: what it finds in a page and what it deliberately misses.
#include "html_support.hpp"
#include "support/c_values.hpp"

#include <gtest/gtest.h>

namespace {

TEST(Scanner, NothingAtTheVeryFirstCharacterIsSeen) {
    EXPECT_EQ(scan("<FORM ACTION=\"a\">x</FORM>")->forms, nullptr);
    EXPECT_EQ(scan("<A HREF=\"u\">l</A>")->anchors, nullptr);
    EXPECT_EQ(scan("##Vl_s1##")->sites, nullptr);

    DocPtr shifted = scan(" <FORM ACTION=\"a\">x</FORM><A HREF=\"u\">l</A>");
    ASSERT_EQ(SutSizList(shifted->forms), 1);
    EXPECT_EQ(str(formAt(shifted.get(), 0)->action), "a");
    ASSERT_EQ(SutSizList(shifted->anchors), 1);
    EXPECT_EQ(str(anchAt(shifted.get(), 0)->url), "u");

    EXPECT_EQ(VlReadHtmlDesignTime(nullptr), nullptr);
    DocPtr empty = scan("");
    EXPECT_EQ(empty->forms, nullptr);
    EXPECT_EQ(empty->sites, nullptr);
}

TEST(Scanner, SiteMarksAndRejectedSiteNames) {
    DocPtr doc = scan("x##Vl_s1## ##Vl_my site## ##Vl_a\"b## ##Vl_c\\d## ##Vl_## ##Vl_open");
    std::vector<std::string> names;
    for (int i = 0; i < SutSizList(doc->sites); i++)
        names.push_back(str(siteAt(doc.get(), i)->name));
    EXPECT_EQ(names, (std::vector<std::string>{"s1", ""}));

    // After a rejected name the walk goes on, so its closing marks can open a site.
    DocPtr reopened = scan("a##Vl_my site##Vl_x##");
    ASSERT_EQ(SutSizList(reopened->sites), 1);
    EXPECT_EQ(str(siteAt(reopened.get(), 0)->name), "x");

    // After a site the walk resumes on the closing mark's second "#".
    DocPtr adjacent = scan("a##Vl_s1##Vl_s2##");
    ASSERT_EQ(SutSizList(adjacent->sites), 1);
    EXPECT_EQ(str(siteAt(adjacent.get(), 0)->name), "s1");

    DocPtr caseMatters = scan("a##vl_s1##");
    EXPECT_EQ(caseMatters->sites, nullptr);
}

TEST(Scanner, FormActionAndMethodAnywhereInTheFormLastWins) {
    DocPtr doc = scan(" <form method=\"get\" action = \"first\">\n<INPUT NAME=\"q\" TYPE=text>"
                      "plain ACTION=\"second\" and ACTION='third' METHOD=post\n</Form>");
    ASSERT_EQ(SutSizList(doc->forms), 1);
    VlHtmlForm *form = formAt(doc.get(), 0);
    EXPECT_EQ(str(form->action), "second");
    EXPECT_EQ(str(form->method), "get");
    EXPECT_EQ(form->fullName, nullptr);
    ASSERT_EQ(SutSizList(form->elements), 1);
    EXPECT_EQ(str(elemAt(form, 0)->name), "q");
    EXPECT_EQ(str(elemAt(form, 0)->type), "text");
}

TEST(Scanner, NestedAndUnclosedForms) {
    // The outer form's end search stops at the nested form: only the inner one counts.
    DocPtr nested = scan(" <FORM ACTION=\"a\"><FORM ACTION=\"b\">x</FORM></FORM>");
    ASSERT_EQ(SutSizList(nested->forms), 1);
    EXPECT_EQ(str(formAt(nested.get(), 0)->action), "b");

    DocPtr unclosed = scan(" <FORM ACTION=\"a\"><INPUT NAME=\"x\">");
    EXPECT_EQ(unclosed->forms, nullptr);

    DocPtr two = scan(" <FORM ACTION=\"a\"></FORM><FORM ACTION=\"b\"></FORM>");
    ASSERT_EQ(SutSizList(two->forms), 2);
    EXPECT_EQ(str(formAt(two.get(), 1)->action), "b");
}

TEST(Scanner, FormElements) {
    DocPtr doc = scan(" <FORM><SELECT NAME=\"s\"><OPTION>1</SELECT>"
                      "<TEXTAREA NAME=\"t\">x</TEXTAREA><INPUT TYPE=submit NAME=\"go\">"
                      "<INPUT TYPE='radio' NAME=\"r\"><INPUT NAME=r2 TYPE=\"check\">"
                      "<INPUT NAME=\"last\"</FORM>");
    VlHtmlForm *form = formAt(doc.get(), 0);
    ASSERT_NE(form, nullptr);
    std::vector<std::string> got;
    for (int i = 0; i < SutSizList(form->elements); i++)
        got.push_back(str(elemAt(form, i)->name) + "/" + str(elemAt(form, i)->type));
    // The last INPUT has no ">" before the end of the form text: no element.
    EXPECT_EQ(got, (std::vector<std::string>{"s/SELECT", "t/TEXTAREA", "go/submit", "r/radio",
                                             "<null>/check"}));
}

TEST(Scanner, HiddenFormNameInputNamesTheForm) {
    DocPtr doc = scan(" <FORM><input type=hidden name=\"VlFormName\" value=\"f__Fpage_html\">"
                      "</FORM> <FORM><input type=hidden name=VlFormName value=\"g__Fpage_html\">"
                      "</FORM> <FORM><INPUT VALUE=\"h__Fp\" TYPE=\"hidden\" NAME=\"VlFormName\">"
                      "</FORM> <FORM><INPUT NAME=\"vlformname\" VALUE=\"x\" TYPE=\"HIDDEN\" "
                      "VALUE=\"i__Fp\"></FORM>");
    ASSERT_EQ(SutSizList(doc->forms), 4);
    VlHtmlForm *named = formAt(doc.get(), 0);
    EXPECT_EQ(str(named->fullName), "f__Fpage_html");
    ASSERT_EQ(SutSizList(named->elements), 1);
    EXPECT_EQ(str(elemAt(named, 0)->name), "VlFormName");
    EXPECT_EQ(str(elemAt(named, 0)->type), "hidden");
    EXPECT_EQ(elemAt(named, 0)->formName, nullptr);

    // NAME needs double quotes (TYPE does not): nothing is recognised.
    EXPECT_EQ(formAt(doc.get(), 1)->fullName, nullptr);
    EXPECT_EQ(elemAt(formAt(doc.get(), 1), 0)->name, nullptr);
    // A VALUE before both TYPE and NAME were seen does not count.
    EXPECT_EQ(formAt(doc.get(), 2)->fullName, nullptr);
    // Names and types compare without case; a later VALUE wins.
    EXPECT_EQ(str(formAt(doc.get(), 3)->fullName), "i__Fp");
}

TEST(Scanner, AnchorsAndTheirUrls) {
    DocPtr doc = scan(" <A HREF=\"x\">1</A><a\thref=\"p?FNC=a__Ashop_html\">2</a>"
                      "<A\nHREF='single'>3</A><A HREF=\"x?a=b\">4</A><A NAME=\"top\">5</A>"
                      "<A HREF=\"p?FNC=n\" HREF=\"q\">6</A><A HREF x=\"1\" HREF = \"y\">7</A>"
                      "<A HREF=\"p?x=1?FNC=n\">8</A><AB HREF=\"no\">9</A><A HREF=\"open\">");
    std::vector<std::string> got;
    for (int i = 0; i < SutSizList(doc->anchors); i++)
        got.push_back(str(anchAt(doc.get(), i)->fullName) + "|" + str(anchAt(doc.get(), i)->url));
    EXPECT_EQ(got, (std::vector<std::string>{"<null>|x", "a__Ashop_html|p", "<null>|x?a=b", "n|q",
                                             "<null>|y", "<null>|p?x=1?FNC=n"}));
}

TEST(Scanner, AnchorsInsideFormsAndKeywordAnchorsInPageOrder) {
    DocPtr inForm = scan(" <FORM ACTION=\"f\"><A HREF=\"x?FNC=a__Fp\">l</A></FORM>");
    ASSERT_EQ(SutSizList(inForm->forms), 1);
    ASSERT_EQ(SutSizList(inForm->anchors), 1);
    EXPECT_EQ(str(anchAt(inForm.get(), 0)->fullName), "a__Fp");

    KeywordsLoaded keys("SRC\n");
    DocPtr doc = scan(" <IMG SRC=\"img?FNC=pic__Ashop_html\"> <A HREF=\"b\">x</A> <IMG SRC=\"c\">");
    ASSERT_EQ(SutSizList(doc->anchors), 3);
    EXPECT_EQ(anchAt(doc.get(), 0)->isKeyword, 1);
    EXPECT_EQ(str(anchAt(doc.get(), 0)->fullName), "pic__Ashop_html");
    EXPECT_EQ(str(anchAt(doc.get(), 0)->url), "img");
    EXPECT_EQ(str(anchAt(doc.get(), 0)->urlAttr), "SRC");
    EXPECT_EQ(anchAt(doc.get(), 1)->isKeyword, 0);
    EXPECT_EQ(str(anchAt(doc.get(), 1)->url), "b");
    EXPECT_EQ(anchAt(doc.get(), 1)->urlAttr, nullptr);
    EXPECT_EQ(str(anchAt(doc.get(), 2)->url), "c");
}

TEST(Scanner, AttributeValues) {
    EXPECT_EQ(take(VlProcessNameValue("\"abc\" x")), "abc");
    EXPECT_EQ(take(VlProcessNameValue("\"\"")), "");
    EXPECT_EQ(take(VlProcessNameValue("abc\"")), std::nullopt);
    EXPECT_EQ(take(VlProcessNameValue("\"")), std::nullopt);
    EXPECT_EQ(take(VlProcessNameValue("\"abc")), std::nullopt);
    EXPECT_EQ(take(VlProcessNameValue(nullptr)), std::nullopt);

    EXPECT_EQ(take(VlProcessNameValueLib("submit>")), "submit");
    EXPECT_EQ(take(VlProcessNameValueLib("\"x y\"")), "x");
    EXPECT_EQ(take(VlProcessNameValueLib("'radio' ")), "radio");
    EXPECT_EQ(take(VlProcessNameValueLib("a<b")), "a");
    EXPECT_EQ(take(VlProcessNameValueLib(">>")), ">"); // the first character is not tested
    EXPECT_EQ(take(VlProcessNameValueLib("\" \"")), " ");
    EXPECT_EQ(take(VlProcessNameValueLib("open")), std::nullopt);
    EXPECT_EQ(take(VlProcessNameValueLib("\"")), std::nullopt);
    EXPECT_EQ(take(VlProcessNameValueLib("")), std::nullopt);
}

TEST(Scanner, ReadersOnTheirOwn) {
    VlHtmlForm *form = VlHtmlFormNew();
    EXPECT_EQ(VlReadForm(form, nullptr), 1);
    EXPECT_EQ(VlReadForm(form, ""), 1);
    EXPECT_EQ(VlReadForm(form, "<FORM ACTION=\"a\">"), 0);
    EXPECT_EQ(form->action, nullptr);
    EXPECT_EQ(VlReadForm(form, "<FORM ACTION=\"a\"></FORM>"), 0);
    EXPECT_EQ(str(form->action), "a");
    EXPECT_EQ(VlProcessForm(form, ""), 1);
    EXPECT_EQ(VlReadForm(nullptr, "<FORM ACTION=\"a\"><INPUT NAME=\"n\"></FORM>"), 0);
    VlHtmlFormDelete(form);

    VlHtmlAnch *anchor = VlHtmlAnchNew();
    EXPECT_EQ(VlProcessAnch(anchor, " HREF"), 1);   // the text ended early
    EXPECT_EQ(VlProcessAnch(anchor, " HREF x"), 1); // an HREF was seen
    EXPECT_EQ(VlProcessAnch(anchor, " NAME=\"n\""), 0);
    EXPECT_EQ(VlProcessAnch(anchor, " HREF=\"u\""), 1);
    EXPECT_EQ(str(anchor->url), "u");
    VlHtmlAnchDelete(anchor);

    VlHtmlFormElement *element = VlHtmlFormElementNew();
    EXPECT_EQ(VlReadInput(element, nullptr), 1);
    EXPECT_EQ(VlReadInput(element, " NAME=\"a\" NAME=\"b\" TYPE=x TYPE=y>"), 0);
    EXPECT_EQ(str(element->name), "b");
    EXPECT_EQ(str(element->type), "y");
    VlHtmlFormElementDelete(element);
}

} // namespace
