// Writing the whole project: the backup of the files as they were, the
// project file with each module written after its line and each page saved
// before its line, the write script last; the failures; "noname"; saving
// under a new name.
#include "project_support.hpp"
#include "run_support.hpp"
#include "support/file_texts.hpp"

#include <string>

namespace {

using namespace MainRegions;
const std::string &kHead = kProjectHead;

void Templates() {
    WriteTemplate("main.tem", "/* main */\n");
    WriteTemplate("Makefile.tem", "all: $VL_EXECUTABLE\n");
}

TEST(ProjectWrite, FailedBackupGoesOnAndUnwritableProjectFileStops) {
    Workspace ws;
    Templates();
    VlProjSetName("shop");
    SetOptions({"Project.Call Read/Write Scripts : False"});
    ws.Write("shop.pj", "old\n");
    ws.Write("shop.c", "old main\n");
    ws.Write("velmoraBackshop", "a file, not a directory\n");
    std::string out = Printed([] { EXPECT_EQ(VlProjWrite(1), 1); });
    EXPECT_EQ(out, "Copy to backup directory failed.\n");
    EXPECT_EQ(ws.Read("shop.pj"), kHead + "HTML Files :\nProject Options :\n"
                                          "Project.Call Read/Write Scripts : False\n");

    fs::remove("shop.pj");
    fs::remove("shop.c");
    fs::remove("shop.mak");
    fs::create_directory("shop.pj");
    out = Printed([] { EXPECT_EQ(VlProjWrite(1), 0); });
    EXPECT_EQ(out, "Could not write file in VlProjWrite:shop\n");
    EXPECT_FALSE(fs::exists("shop.c"));
    EXPECT_FALSE(fs::exists("shop.mak"));
}

TEST(ProjectWrite, SaveAsMovesTheProjectAndCarriesWorkingCopiesOnlyOutward) {
    Workspace ws;
    Templates();
    VlProjSetName("shop");
    SetOptions({"Project.Call Read/Write Scripts : False"});
    ReadPage(ws, "a.html", "<html>a</html>\n");

    // A page's name without its extension cannot become the project's name.
    std::string out = Printed([] { EXPECT_EQ(VlProjSaveAsWithCheck("sub/a"), 0); });
    EXPECT_EQ(out, "The name of the project cannot be the same\n"
                   "as the name of an HTML file without the file extension.\n");
    EXPECT_FALSE(fs::exists("sub"));

    // Into a subdirectory: the working copies come along, the page with them.
    EXPECT_EQ(VlProjSaveAsWithCheck("sub/store"), 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir()) / "sub");
    EXPECT_EQ(ws.Read("sub/in_use/a.html.vlm"), "<html>a</html>\n");
    EXPECT_EQ(ws.Read("sub/store.pj"), kHead + "a.c\nHTML Files :\na.html\n"
                                               "Project Options :\n"
                                               "Project.Call Read/Write Scripts : "
                                               "False\n");

    // Back into the parent, whose path occurs in the old one: nothing copied.
    fs::remove(ws.Dir() + "/in_use/a.html.vlm");
    EXPECT_EQ(VlProjSaveAs((ws.Dir() + "/shop").c_str()), 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir()));
    EXPECT_FALSE(fs::exists(ws.Dir() + "/in_use/a.html.vlm"));
}

} // namespace
