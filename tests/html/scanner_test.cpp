// The scanner: what it finds in a page and what it deliberately misses.
#include "html_support.hpp"
#include "html/store.hpp"
#include "html/textscan.hpp"

#include <gtest/gtest.h>

namespace {

TEST(Scanner, NothingAtTheVeryFirstCharacterIsSeen) {
    EXPECT_EQ(Scan("<FORM ACTION=\"a\">x</FORM>")->forms, nullptr);
    EXPECT_EQ(Scan("<A HREF=\"u\">l</A>")->anchors, nullptr);
    EXPECT_EQ(Scan("##Vl_s1##")->sites, nullptr);

    DocPtr shifted = Scan(" <FORM ACTION=\"a\">x</FORM><A HREF=\"u\">l</A>");
    EXPECT_EQ(FormsOf(shifted.get()), Strings{"<null>|a|<null>"});
    EXPECT_EQ(AnchorsOf(shifted.get()), Strings{"<null>|u"});
}

TEST(Scanner, SiteMarksAndRejectedSiteNames) {
    const std::pair<const char *, Strings> rows[] = {
        {"x##Vl_s1## ##Vl_my site## ##Vl_a\"b## ##Vl_c\\d## ##Vl_## ##Vl_open", {"s1", ""}},
        // After a rejected name the walk goes on, so its closing marks can open a site.
        {"a##Vl_my site##Vl_x##", {"x"}},
        // After a site the walk resumes on the closing mark's second "#".
        {"a##Vl_s1##Vl_s2##", {"s1"}},
        {"a##vl_s1##", {}},
    };
    for (const auto &[text, sites] : rows)
        EXPECT_EQ(SitesOf(Scan(text).get()), sites) << text;
}

TEST(Scanner, FormsActionMethodAndNesting) {
    // ACTION and METHOD anywhere in the form; the last ACTION wins.
    DocPtr doc = Scan(" <form method=\"get\" action = \"first\">\n<INPUT NAME=\"q\" TYPE=text>"
                      "plain ACTION=\"second\" and ACTION='third' METHOD=post\n</Form>");
    EXPECT_EQ(FormsOf(doc.get()), Strings{"<null>|second|get"});
    EXPECT_EQ(ElementsOf(FormAt(doc.get(), 0)), Strings{"q/text"});

    // The outer form's end search stops at the nested form: only the inner one counts.
    EXPECT_EQ(FormsOf(Scan(" <FORM ACTION=\"a\"><FORM ACTION=\"b\">x</FORM></FORM>").get()),
              Strings{"<null>|b|<null>"});
    EXPECT_EQ(Scan(" <FORM ACTION=\"a\"><INPUT NAME=\"x\">")->forms, nullptr);
}

TEST(Scanner, FormElements) {
    DocPtr doc = Scan(" <FORM><SELECT NAME=\"s\"><OPTION>1</SELECT>"
                      "<TEXTAREA NAME=\"t\">x</TEXTAREA><INPUT TYPE=submit NAME=\"go\">"
                      "<INPUT TYPE='radio' NAME=\"r\"><INPUT NAME=r2 TYPE=\"check\">"
                      "<INPUT NAME=\"last\"</FORM>");
    // The last INPUT has no ">" before the end of the form text: no element.
    EXPECT_EQ(ElementsOf(FormAt(doc.get(), 0)),
              (Strings{"s/SELECT", "t/TEXTAREA", "go/submit", "r/radio", "<null>/check"}));
}

TEST(Scanner, HiddenFormNameInputNamesTheForm) {
    DocPtr doc = Scan(" <FORM><input type=hidden name=\"VlFormName\" value=\"f__Fpage_html\">"
                      "</FORM> <FORM><input type=hidden name=VlFormName value=\"g__Fpage_html\">"
                      "</FORM> <FORM><INPUT VALUE=\"h__Fp\" TYPE=\"hidden\" NAME=\"VlFormName\">"
                      "</FORM> <FORM><INPUT NAME=\"vlformname\" VALUE=\"x\" TYPE=\"HIDDEN\" "
                      "VALUE=\"i__Fp\"></FORM>");
    // NAME needs double quotes (TYPE does not); a VALUE before both TYPE and
    // NAME were seen does not count; names and types compare without case and
    // a later VALUE wins. The form name moves from the element to the form.
    EXPECT_EQ(FormsOf(doc.get()), (Strings{"f__Fpage_html|<null>|<null>", "<null>|<null>|<null>",
                                           "<null>|<null>|<null>", "i__Fp|<null>|<null>"}));
    EXPECT_EQ(Nth<VlHtmlFormElement>(FormAt(doc.get(), 0)->elements, 0)->formName, nullptr);
}

TEST(Scanner, AnchorsAndTheirUrls) {
    DocPtr doc = Scan(" <A HREF=\"x\">1</A><a\thref=\"p?FNC=a__Ashop_html\">2</a>"
                      "<A\nHREF='single'>3</A><A HREF=\"x?a=b\">4</A><A NAME=\"top\">5</A>"
                      "<A HREF=\"p?FNC=n\" HREF=\"q\">6</A><A HREF x=\"1\" HREF = \"y\">7</A>"
                      "<A HREF=\"p?x=1?FNC=n\">8</A><AB HREF=\"no\">9</A><A HREF=\"open\">");
    EXPECT_EQ(AnchorsOf(doc.get()), (Strings{"<null>|x", "a__Ashop_html|p", "<null>|x?a=b", "n|q",
                                             "<null>|y", "<null>|p?x=1?FNC=n"}));

    DocPtr inForm = Scan(" <FORM ACTION=\"f\"><A HREF=\"x?FNC=a__Fp\">l</A></FORM>");
    EXPECT_EQ(SutSizList(inForm->forms), 1);
    EXPECT_EQ(AnchorsOf(inForm.get()), Strings{"a__Fp|x"});
}

TEST(Scanner, KeywordAnchorsInPageOrder) {
    KeywordsLoaded keys("SRC\n");
    DocPtr doc = Scan(" <IMG SRC=\"img?FNC=pic__Ashop_html\"> <A HREF=\"b\">x</A> <IMG SRC=\"c\">");
    EXPECT_EQ(AnchorsOf(doc.get()), (Strings{"pic__Ashop_html|img", "<null>|b", "<null>|c"}));
    EXPECT_EQ(Each<VlHtmlAnch>(
                  doc->anchors,
                  [](VlHtmlAnch *a) { return std::to_string(a->isKeyword) + Str(a->urlAttr); }),
              (Strings{"1SRC", "0<null>", "1SRC"}));
}

// Tag words are compared several bytes at a time with the case bit set on
// letters only, and keyword places are picked by a quick test that lets a few
// other bytes through: a byte that equals a mark's only with its case bit set
// is not the mark.
TEST(Scanner, BytesOneCaseBitAwayAreNotMarks) {
    // \x1E is ">" without its case bit.
    DocPtr doc = Scan(" <FORM ACTION=\"a\"></FORM\x1E<INPUT NAME=\"n\">"
                      "<TeXtArEa NAME=\"t\">x</tExTaReA></FORM>");
    EXPECT_EQ(FormsOf(doc.get()), Strings{"<null>|a|<null>"});
    EXPECT_EQ(ElementsOf(FormAt(doc.get(), 0)), (Strings{"n/<null>", "t/TEXTAREA"}));

    KeywordsLoaded keys("SRC\n3D\n");
    doc = Scan(" x\x01SRC=\"no\"\tsrc=\"yes\" \x13"
               "D=\"no\" 3d=\"yes\" \x13"
               "3D=\"no\"");
    EXPECT_EQ(AnchorsOf(doc.get()), (Strings{"<null>|yes", "<null>|yes"}));
}

// Form marks count wherever they stand, inside a site name too, while the
// other marks inside a site name are passed over.
TEST(Scanner, FormMarksInsideSiteNames) {
    const std::pair<const char *, Strings> rows[] = {
        // The form's close stands in a site name: the form ends there.
        {" <FORM ACTION=\"a\">##Vl_x/FORM>## <A HREF=\"u\">l</A>", {"<null>|a|<null>"}},
        // An opening in a site name ends the form before it without a close,
        // and opens nothing itself.
        {" <FORM ACTION=\"a\">##Vl_<FORM##</FORM>", {}},
        {" ##Vl_<FORM##ACTION=\"b\"></FORM> <FORM ACTION=\"c\"></FORM>", {"<null>|c|<null>"}},
    };
    for (const auto &[text, forms] : rows)
        EXPECT_EQ(FormsOf(Scan(text).get()), forms) << text;
    DocPtr doc = Scan(" ##Vl_<A##HREF=\"no\">l</A> <A HREF=\"yes\">m</A>");
    EXPECT_EQ(AnchorsOf(doc.get()), Strings{"<null>|yes"});
    EXPECT_EQ(SitesOf(doc.get()), Strings{"<A"});
    // An anchor's close in a site name ends the anchor too.
    EXPECT_EQ(AnchorsOf(Scan(" <A HREF=\"a\">l##Vl_x/A>##").get()), Strings{"<null>|a"});
}

// NAME, TYPE and VALUE count wherever they end right before "=" (white space
// between), even at the end of a longer word, and not without "=".
TEST(Scanner, ElementWordsBeforeEqualSigns) {
    DocPtr doc = Scan(" <FORM><INPUT NAME \t= \"a\" TYPE\n=text><INPUT XNAME=\"b\" NAME \"c\">"
                      "<INPUT TYPE=hidden name=\"VlFormName\" VALUE  =  \"f__Fp\"></FORM>");
    EXPECT_EQ(ElementsOf(FormAt(doc.get(), 0)),
              (Strings{"a/text", "b/<null>", "VlFormName/hidden"}));
    EXPECT_EQ(FormsOf(doc.get()), Strings{"f__Fp|<null>|<null>"});
}

// An anchor's own HREF is passed over without recognising it, unless a
// keyword before HREF in the list may begin the same text.
TEST(Scanner, KeywordsBeginningLikeAnAnchorsHref) {
    const char *page = " <A HREF=\"a\" HREFX=\"b\">l</A> <P HREF=\"c\"> <A HREF=\"d\">";
    {
        KeywordsLoaded keys("SRC\nHREF\nHREFX\n");
        // The last anchor never closes, and its HREF stays inside it.
        EXPECT_EQ(AnchorsOf(Scan(page).get()), (Strings{"<null>|a", "<null>|c"}));
    }
    KeywordsLoaded keys("HREFX\nHREF\n");
    EXPECT_EQ(AnchorsOf(Scan(page).get()), (Strings{"<null>|a", "<null>|b", "<null>|c"}));
}

// The page walk and the form and anchor readers test sixteen bytes at a time
// or, where the processor has them, thirty-two, and the last bytes of a page
// one by one: every mark is found wherever it stands in a block, across a
// block's edge and near the page's end.
TEST(Scanner, MarksAtEveryPlaceOfABlock) {
    const std::string piece = "##Vl_s##<FORM ACTION=\"a\"><INPUT NAME=\"n\"><SELECT NAME=\"m\">"
                              "</SELECT></FORM><A HREF=\"u\">l</A> SRC=\"k\"";
    for (const char *keywords : {"SRC\n", "SRC\nHREF\nlow\n9x|\n"}) {
        KeywordsLoaded keys(keywords);
        for (int shift = 1; shift <= 40; shift++) {
            for (int tail : {0, 40}) {
                const std::string page = std::string(shift, ' ') + piece + std::string(tail, ' ');
                for (bool wide : {false, true}) {
                    SCOPED_TRACE(page + (wide ? " wide" : " sixteen bytes"));
                    DocPtr doc(vlscan::ReadDesignTime(page.c_str(), wide));
                    EXPECT_EQ(SitesOf(doc.get()), Strings{"s"});
                    EXPECT_EQ(FormsOf(doc.get()), Strings{"<null>|a|<null>"});
                    EXPECT_EQ(ElementsOf(FormAt(doc.get(), 0)), (Strings{"n/<null>", "m/SELECT"}));
                    EXPECT_EQ(AnchorsOf(doc.get()), (Strings{"<null>|u", "<null>|k"}));
                }
            }
        }
    }
}

// An HREF keyword attribute inside an anchor is the anchor's: inside means
// after an anchor's opening (one at the first character, which is not read,
// too) or before a closing mark.
TEST(Scanner, HrefKeywordsInsideAnchors) {
    KeywordsLoaded keys("SRC\nHREF\n");
    const std::pair<const char *, Strings> rows[] = {
        {"<A x> HREF=\"in\"", {}},
        {"x HREF=\"in\" /A> HREF=\"out\"", {"<null>|out"}},
        {" <A HREF=\"a\">l</A> HREF=\"out\" <A\tx HREF=\"a2\" HREF=\"in\"></A>",
         {"<null>|a", "<null>|out", "<null>|a2"}},
    };
    for (const auto &[text, anchors] : rows)
        EXPECT_EQ(AnchorsOf(Scan(text).get()), anchors) << text;
}

// Records take far more room than a page of keyword attributes: the page's
// records and names spread over several blocks, and every name still reads
// back whole (the markup writes them at the length they were kept with).
TEST(Scanner, RecordsOutgrowingTheFirstBlockKeepTheirNames) {
    KeywordsLoaded keys("SRC\n");
    VlHtmlResetProjName();
    std::string page = "<P>";
    for (int i = 0; i < 20000; i++)
        page += " SRC=\"p" + std::to_string(i) + "\"";
    DocPtr doc = Scan(page);
    VlHtmlSetName(doc.get(), "k.html");
    ASSERT_EQ(SutSizList(doc->anchors), 20000);
    ASSERT_GT(doc->store->count, 1); // the case this test is about
    EXPECT_EQ(Str(AnchAt(doc.get(), 19999)->url), "p19999");
    VlHtmlMarkOrigNames(doc.get());
    VlHtmlGenAnchNames(doc.get());
    EXPECT_EQ(Str(AnchAt(doc.get(), 19999)->origUrl), "p19999");
    const std::string marked = Mark(doc.get(), page, 2).text;
    const std::string last = " SRC=\"http://localhost/cgi-bin/?FNC=anch19999__Ak_html\"";
    ASSERT_GT(marked.size(), last.size());
    EXPECT_EQ(marked.substr(marked.size() - last.size()), last);
    const std::string first = "<P> SRC=\"http://localhost/cgi-bin/?FNC=anch0__Ak_html\" SRC";
    EXPECT_EQ(marked.substr(0, first.size()), first);
}

} // namespace
