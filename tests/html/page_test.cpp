// Page files: the working copy, the save that copies it back, and the read and
// write scripts around them, in a temporary project directory.
#include "html/page.h"
#include "html_support.hpp"
#include "project/options.h"
#include "project/project.h"
#include "support/c_values.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utime.h>

namespace {

class Page : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(dist_.file("config"));
        std::filesystem::create_directories(dist_.file("bin"));
        dist_.write("config/Velmora.cfg", "Project.Call Read/Write Scripts : True\n");
        for (const char *script : {"vlreadhtml.sh", "vlwritehtml.sh"}) {
            std::string path = dist_.write(
                std::string("bin/") + script,
                "#!/bin/sh\nprintf '%s' \"$(basename \"$0\")\" >> " + dist_.file("log") +
                    "\nfor a in \"$@\"; do printf ' [%s]' \"$a\"; done >> " + dist_.file("log") +
                    "\necho >> " + dist_.file("log") + "\n");
            chmod(path.c_str(), 0755);
        }
        path_.emplace("PATH", (dist_.file("bin") + ":" + getenv("PATH")).c_str());
        VlResetDistDir();
        VlProjResetOptionFiles();
        VlHtmlResetProjName();
        VlHtmlSetProjName("http://h/cgi-bin/app");
    }
    void TearDown() override {
        VlCmdLineClearOptions();
        VlResetDistDir();
        VlProjResetOptionFiles();
        VlHtmlResetProjName();
    }
    std::string log() { return dist_.read("log"); }
    static void setModTime(const std::string &file, time_t when) {
        struct utimbuf times = {when, when};
        utime(file.c_str(), &times);
    }

    TempDir dist_, work_, home_;
    ScopedEnv velmora_{"VELMORA", dist_.path().c_str()};
    ScopedEnv homeEnv_{"HOME", home_.path().c_str()};
    std::optional<ScopedEnv> path_;
    ScopedCwd cwd_{work_.path()};
};

const std::string kPage = "<HTML>\n <FORM ACTION=\"order.cgi\">\n<INPUT NAME=\"qty\">\n</FORM>\n"
                          " <A HREF=\"next.html\">next</A> <IMG SRC=\"pic.gif\">\n</HTML>\n";

TEST_F(Page, ReadingLeavesAnExactWorkingCopy) {
    work_.write("shop.html", kPage);
    setModTime(work_.file("shop.html"), 1000000000);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    EXPECT_TRUE(std::filesystem::is_directory(work_.file("in_use")));
    EXPECT_EQ(work_.read("in_use/shop.html.vlm"), kPage);
    EXPECT_EQ(doc->modTime, 1000000000);
    EXPECT_EQ(str(doc->name), "shop.html");
    EXPECT_EQ(str(doc->modName), "shop_html");
    ASSERT_EQ(SutSizList(doc->forms), 1);
    EXPECT_EQ(str(formAt(doc.get(), 0)->origAction), "order.cgi");
    EXPECT_EQ(str(anchAt(doc.get(), 0)->origUrl), "next.html");
    EXPECT_EQ(log(), "vlreadhtml.sh [shop.html]\n");
    EXPECT_EQ(VlHtmlIsChanged(doc.get()), 0);
}

TEST_F(Page, SaveWithoutChangesIsByteForByte) {
    work_.write("shop.html", kPage);
    setModTime(work_.file("shop.html"), 1000000000);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    doc->changed = 1;
    EXPECT_EQ(VlHtmlSave(doc.get()), 0);
    EXPECT_EQ(work_.read("shop.html"), kPage);
    EXPECT_NE(doc->modTime, 1000000000);
    EXPECT_EQ(doc->modTime, VlGetFileModTime("shop.html"));
    EXPECT_EQ(doc->changed, 0);
    EXPECT_EQ(VlHtmlIsChanged(doc.get()), 0);
    setModTime(work_.file("shop.html"), 1000000000);
    EXPECT_EQ(VlHtmlIsChanged(doc.get()), 1);
    EXPECT_EQ(log(), "vlreadhtml.sh [shop.html]\nvlwritehtml.sh [shop.html]\n");
}

TEST_F(Page, SaveWritesAnchorsKeywordsAndFormsInThatOrder) {
    KeywordsLoaded keys("SRC\n");
    ScopedEnv distribution("VELMORA", dist_.path().c_str());
    work_.write("shop.html", kPage);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    ASSERT_EQ(SutSizList(doc->anchors), 2);
    VlHtmlGenFormNames(doc.get());
    VlHtmlGenAnchNames(doc.get());
    EXPECT_EQ(VlHtmlNeedsSave(doc.get()), 1);
    EXPECT_EQ(VlHtmlSave(doc.get()), 0);
    const std::string marked =
        "<HTML>\n <FORM ACTION=\"http://h/cgi-bin/app\" METHOD=\"post\" >\n<INPUT NAME=\"qty\">\n"
        "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"form0__Fshop_html\"> </FORM>\n"
        " <A HREF=\"http://h/cgi-bin/app?FNC=anch0__Ashop_html\" >next</A>"
        " <IMG SRC=\"http://h/cgi-bin/app?FNC=anch1__Ashop_html\">\n</HTML>\n";
    EXPECT_EQ(work_.read("shop.html"), marked);
    EXPECT_EQ(work_.read("in_use/shop.html.vlm"), marked);
    EXPECT_EQ(VlHtmlNeedsSave(doc.get()), 0);

    // Read back, renamed the same way and saved again: the page stays as it is.
    DocPtr again(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(str(formAt(again.get(), 0)->fullName), "form0__Fshop_html");
    VlHtmlNameFormByPos(again.get(), 0, "form0");
    VlHtmlNameAnchByPos(again.get(), 0, "anch0");
    VlHtmlNameAnchByPos(again.get(), 1, "anch1");
    EXPECT_EQ(VlHtmlSave(again.get()), 0);
    EXPECT_EQ(work_.read("shop.html"), marked);
}

TEST_F(Page, ScriptsFollowTheProjectOptionAndQuoteNames) {
    VlCmdLineSetOption("Project.Call Read/Write Scripts", "False");
    work_.write("shop.html", kPage);
    DocPtr doc(VlHtmlNewFromFile("shop.html"));
    ASSERT_NE(doc, nullptr);
    EXPECT_EQ(VlHtmlSave(doc.get()), 0);
    EXPECT_FALSE(std::filesystem::exists(dist_.file("log")));

    VlCmdLineClearOptions();
    work_.write("my page.html", kPage);
    DocPtr spaced(VlHtmlNewFromFile("my page.html"));
    ASSERT_NE(spaced, nullptr);
    EXPECT_EQ(work_.read("in_use/my page.html.vlm"), kPage);
    EXPECT_EQ(log(), "vlreadhtml.sh [my page.html]\n");
}

TEST_F(Page, OnlySitesChangedKeepsTheWorkingCopy) {
    work_.write("s.html", "x ##Vl_## y");
    DocPtr doc(VlHtmlNewFromFile("s.html"));
    ASSERT_NE(doc, nullptr);
    VlHtmlGenSiteNames(doc.get());
    EXPECT_EQ(doc->sitesChanged, 1);
    EXPECT_EQ(VlHtmlBackup(doc.get()), 0);
    EXPECT_EQ(doc->sitesChanged, 0);
    EXPECT_EQ(work_.read("in_use/s.html.vlm"), "x ##Vl_## y");
}

TEST_F(Page, FailuresLeaveThePageAlone) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(VlHtmlNewFromFile(nullptr), nullptr);
    EXPECT_EQ(VlHtmlNewFromFile("missing.html"), nullptr);
    work_.write("in_use", "a file where the directory should be");
    work_.write("shop.html", kPage);
    EXPECT_EQ(VlHtmlNewFromFile("shop.html"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error making backup. Probably directory write permissions");

    EXPECT_EQ(VlHtmlSave(nullptr), 1);
    DocPtr doc(VlReadHtmlDesignTime(kPage.c_str()));
    EXPECT_EQ(VlHtmlSave(doc.get()), 1);   // no name
    EXPECT_EQ(VlHtmlBackup(doc.get()), 1); // no name
    VlHtmlSetName(doc.get(), "shop.html");
    EXPECT_EQ(VlHtmlBackup(doc.get()), 0); // nothing changed
    VlHtmlGenFormNames(doc.get());
    EXPECT_EQ(VlHtmlSave(doc.get()), 1); // no working copy
    EXPECT_EQ(work_.read("shop.html"), kPage);
    EXPECT_EQ(doc->formsChanged, 1);
}

TEST_F(Page, FileHelpers) {
    EXPECT_EQ(VlGetFileModTime(work_.path().c_str()), -1);
    EXPECT_EQ(VlGetFileModTime(nullptr), -1);
    EXPECT_EQ(VlGetFileModTime("missing"), -1);
    EXPECT_EQ(VlGetBackupFileName(nullptr), nullptr);
    EXPECT_FALSE(std::filesystem::exists(work_.file("in_use")));
    EXPECT_EQ(take(VlGetBackupFileName("a.html")), "in_use/a.html.vlm");
    EXPECT_TRUE(std::filesystem::is_directory(work_.file("in_use")));
    EXPECT_EQ(VlHtmlMakeBackupDir(), 0);
    EXPECT_EQ(VlGetBackupFile(nullptr), nullptr);
    EXPECT_EQ(VlGetBackupFile("no/such/dir/x"), nullptr);
}

} // namespace
