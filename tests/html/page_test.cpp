// Page files: the working copy, the save that copies it back, and the read and
// write scripts around them, in a temporary project directory.
#include "html_support.hpp"
#include "support/test_dist.hpp"

#include <gtest/gtest.h>

#include <utime.h>

namespace {

// In the working directory of a workspace whose scripts log their calls.
class Page : public testing::Test {
  protected:
    void SetUp() override { VlHtmlSetProjName("http://h/cgi-bin/app"); }
    void TearDown() override {
        VlCmdLineClearOptions();
        VlHtmlResetProjName();
    }
    static void SetModTime(const std::string &file, time_t when) {
        struct utimbuf times = {when, when};
        utime(file.c_str(), &times);
    }
    Workspace work_;
};

const std::string kPage = "<HTML>\n <FORM ACTION=\"order.cgi\">\n<INPUT NAME=\"qty\">\n</FORM>\n"
                          " <A HREF=\"next.html\">next</A> <IMG SRC=\"pic.gif\">\n</HTML>\n";

TEST_F(Page, ReadingLeavesAnExactWorkingCopyAndSavingCopiesItBack) {
    work_.Write("shop.html", kPage);
    SetModTime("shop.html", 1000000000);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(work_.Read("in_use/shop.html.vlm"), kPage);
    EXPECT_EQ(doc->modTime, 1000000000);
    EXPECT_EQ(Str(FormAt(doc.get(), 0)->origAction), "order.cgi");
    // Saved without changes the page is not rewritten: its bytes and its
    // time stay, and the time is taken anew from the page as it stands.
    doc->changed = 1;
    doc->modTime = 0;
    EXPECT_EQ(VlHtmlSave(doc.get()), 0);
    EXPECT_EQ(work_.Read("shop.html"), kPage);
    EXPECT_EQ(doc->modTime, 1000000000);
    EXPECT_EQ(doc->changed, 0);
    SetModTime("shop.html", 1000000001);
    EXPECT_EQ(VlHtmlIsChanged(doc.get()), 1);
    EXPECT_EQ(work_.Scripts(), "vlreadhtml.sh 1|shop.html\nvlwritehtml.sh 1|shop.html\n");
}

TEST_F(Page, SaveWritesAnchorsKeywordsAndFormsInThatOrder) {
    KeywordsLoaded keys("SRC\n");
    work_.Write("shop.html", kPage);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    ASSERT_EQ(SutSizList(doc->anchors), 2);
    VlHtmlGenFormNames(doc.get());
    VlHtmlGenAnchNames(doc.get());
    EXPECT_EQ(VlHtmlNeedsSave(doc.get()), 1);
    EXPECT_EQ(VlHtmlSave(doc.get()), 0);
    const std::string marked =
        "<HTML>\n <FORM ACTION=\"http://h/cgi-bin/app\"  METHOD=\"post\" >\n<INPUT NAME=\"qty\">\n"
        "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"form0__Fshop_html\"> </FORM>\n"
        " <A HREF=\"http://h/cgi-bin/app?FNC=anch0__Ashop_html\" >next</A>"
        " <IMG SRC=\"http://h/cgi-bin/app?FNC=anch1__Ashop_html\">\n</HTML>\n";
    EXPECT_EQ(work_.Read("shop.html"), marked);
    EXPECT_EQ(work_.Read("in_use/shop.html.vlm"), marked);
    EXPECT_EQ(VlHtmlNeedsSave(doc.get()), 0);

    // Named the same way and saved again: the METHOD is found and one blank
    // stays before it; from then on the page stays as it is.
    std::string again = marked;
    again.erase(again.find("  METHOD"), 1);
    for (int save = 0; save < 2; save++) {
        VlHtmlNameFormByPos(doc.get(), 0, "form0");
        EXPECT_EQ(VlHtmlSave(doc.get()), 0);
        EXPECT_EQ(work_.Read("shop.html"), again);
    }
}

TEST_F(Page, FailuresLeaveThePageAlone) {
    work_.Write("in_use", "a file where the directory should be");
    work_.Write("shop.html", kPage);
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlHtmlNewFromFile("shop.html"), nullptr); }),
              "Error making backup. Probably directory write permissions: "
              "in_use/shop.html.vlm: Not a directory\n");
    DocPtr doc(VlReadHtmlDesignTime(kPage.c_str()));
    EXPECT_EQ(VlHtmlSave(doc.get()), 1); // no name
    VlHtmlSetName(doc.get(), "shop.html");
    VlHtmlGenFormNames(doc.get());
    EXPECT_EQ(VlHtmlSave(doc.get()), 1); // no working copy
    EXPECT_EQ(work_.Read("shop.html"), kPage);
    EXPECT_EQ(doc->formsChanged, 1);
}

} // namespace
