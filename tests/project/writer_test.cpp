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

void templates() {
    writeTemplate("main.tem", "/* main */\n");
    writeTemplate("Makefile.tem", "all: $VL_EXECUTABLE\n");
}

// A page read from disk (so it has a working copy) with its module.
VlHtmlDoc *readPage(const Workspace &ws, const char *name, const std::string &text) {
    ws.write(name, text);
    VlHtmlDoc *doc = VlHtmlNewFromFile(name);
    SutAddList(theProj->htmlDocs, doc);
    addModule(doc);
    return doc;
}

TEST(ProjectWrite, FirstWriteOfAnEmptyProject) {
    Workspace ws;
    templates();
    EXPECT_EQ(VlProjWrite(1), 0); // no name: nothing is touched
    EXPECT_EQ(ws.scripts(), "");

    VlProjSetName("shop");
    setOptions({"Project.Name : x", "Makefile.exeSuffix : .cgi"});
    SutAddList(theProj->options, nullptr);
    theProj->saved = 0;
    EXPECT_EQ(printed([] { EXPECT_EQ(VlProjWrite(1), 1); }), "");
    EXPECT_EQ(ws.read("shop.pj"), kHead + "HTML Files :\nProject Options :\n"
                                          "Project.Name : x\n"
                                          "Makefile.exeSuffix : .cgi\n");
    EXPECT_EQ(ws.read("shop.c"), "/* main */\n" + IS + IE + DS + DE + InS + InE + RS +
                                     "\tVlInitHeaders();\n\tVlRelocatableProject(0);\n"
                                     "\tVlSetApiMaxNum(2);\n\tVlAllowShutDown(1);\n"
                                     "\tVlSetCacheNumConn(2);\n\tVlSetSessTimeOut(1200);\n"
                                     "\tVlProcessLogin(0);\n\tVlSetDoCommonLog(0);\n"
                                     "\tVlSetUseAppLogin(0);\n" +
                                     RE + FS + FE);
    EXPECT_EQ(ws.read("shop.mak"), "all: shop.cgi\n");
    // A first write makes the backup directory but has nothing to copy.
    EXPECT_TRUE(fs::is_empty("velmoraBackshop"));
    EXPECT_EQ(ws.scripts(), "vlwriteprj.sh 1|shop.pj\n");
}

TEST(ProjectWrite, ModulesPagesScriptsAndTheBackup) {
    Workspace ws;
    templates();
    VlProjSetName("shop");
    setOptions({"Project.Call Read/Write Scripts : True"});
    readPage(ws, "a b.html", "<html>a</html>\n");
    readPage(ws, "c.html", "<html>c</html>\n");
    ws.scripts();
    EXPECT_EQ(VlProjWrite(1), 1);
    const std::string project = kHead + "a b.c\nc.c\nHTML Files :\na b.html\nc.html\n"
                                        "Project Options :\n"
                                        "Project.Call Read/Write Scripts : True\n";
    EXPECT_EQ(ws.read("shop.pj"), project);
    EXPECT_EQ(ws.scripts(), "vlwritemodule.sh 1|a b.c\n"
                            "vlwritemodule.sh 1|c.c\n"
                            "vlwritehtml.sh 1|a b.html\n"
                            "vlwritehtml.sh 1|c.html\n"
                            "vlwriteprj.sh 1|shop.pj\n");
    const std::string module = ws.read("a b.c");

    // The second write keeps the files as they stood before it, whatever
    // their names hold; the page itself is saved from its working copy.
    ws.write("c.html", "<html>edited</html>\n");
    ws.write("shop.c", "/* user's main */\n");
    EXPECT_EQ(VlProjWrite(1), 1);
    EXPECT_EQ(ws.read("velmoraBackshop/a b.c"), module);
    EXPECT_EQ(ws.read("velmoraBackshop/shop.c"), "/* user's main */\n");
    EXPECT_EQ(ws.read("c.html"), "<html>c</html>\n");
}

TEST(ProjectWrite, FailedBackupGoesOnAndUnwritableProjectFileStops) {
    Workspace ws;
    templates();
    VlProjSetName("shop");
    setOptions({"Project.Call Read/Write Scripts : False"});
    ws.write("shop.pj", "old\n");
    ws.write("shop.c", "old main\n");
    ws.write("velmoraBackshop", "a file, not a directory\n");
    std::string out = printed([] { EXPECT_EQ(VlProjWrite(1), 1); });
    EXPECT_EQ(out, "Copy to backup directory failed.\n");
    EXPECT_EQ(ws.read("shop.pj"), kHead + "HTML Files :\nProject Options :\n"
                                          "Project.Call Read/Write Scripts : False\n");

    fs::remove("shop.pj");
    fs::remove("shop.c");
    fs::remove("shop.mak");
    fs::create_directory("shop.pj");
    out = printed([] { EXPECT_EQ(VlProjWrite(1), 0); });
    EXPECT_EQ(out, "Could not write file in VlProjWrite:shop\n");
    EXPECT_FALSE(fs::exists("shop.c"));
    EXPECT_FALSE(fs::exists("shop.mak"));
}

TEST(ProjectWrite, NonameProjectIsAcceptedOnceWritten) {
    Workspace ws;
    templates();
    VlProjSetName("noname");
    setOptions({"Project.Call Read/Write Scripts : False"});
    EXPECT_EQ(VlProjNeedToSaveAs(), 1);
    EXPECT_EQ(VlProjWrite(0), 1);
    EXPECT_EQ(theProj->nonameAccepted, 1);
    EXPECT_EQ(VlProjNeedToSaveAs(), 0);
}

TEST(ProjectWrite, SaveAsMovesTheProjectAndCarriesWorkingCopiesOnlyOutward) {
    Workspace ws;
    templates();
    VlProjSetName("shop");
    setOptions({"Project.Call Read/Write Scripts : False"});
    readPage(ws, "a.html", "<html>a</html>\n");

    // A page's name without its extension cannot become the project's name.
    std::string out = printed([] { EXPECT_EQ(VlProjSaveAsWithCheck("sub/a"), 0); });
    EXPECT_EQ(out, "The name of the project cannot be the same\n"
                   "as the name of an HTML file without the file extension.\n");
    EXPECT_FALSE(fs::exists("sub"));

    // Into a subdirectory: the working copies come along, the page with them.
    EXPECT_EQ(VlProjSaveAsWithCheck("sub/store"), 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.dir()) / "sub");
    EXPECT_EQ(ws.read("sub/in_use/a.html.vlm"), "<html>a</html>\n");
    EXPECT_EQ(ws.read("sub/store.pj"), kHead + "a.c\nHTML Files :\na.html\n"
                                               "Project Options :\n"
                                               "Project.Call Read/Write Scripts : "
                                               "False\n");

    // Back into the parent, whose path occurs in the old one: nothing copied.
    fs::remove(ws.dir() + "/in_use/a.html.vlm");
    EXPECT_EQ(VlProjSaveAs((ws.dir() + "/shop").c_str()), 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.dir()));
    EXPECT_FALSE(fs::exists(ws.dir() + "/in_use/a.html.vlm"));
}

} // namespace
