// The scripted runs: the install and test command lines with their arguments
// (each name arriving as one argument, ending before the first absent
// setting), the release into release/ with its README and scripts, and the
// background starts.
#include "project_support.hpp"
#include "run_support.hpp"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

void Installable(const Workspace &) {
    InstallRunScripts();
    VlProjSetName("shop");
    AddModule(AddPage("a.html", {"order"}));
    AddModule(AddPage("my page.html", {}));
}

TEST(ScriptedRuns, InstallAndTestCommandLines) {
    Workspace ws;
    Installable(ws);
    SetOptions({"Test.HTML Path : /www/#proj", "Test.CGI Path : /cgi dir",
                "Test.HTML URL : http://h/x", "Project.HTML Startup Document : start.html",
                "Makefile.exeSuffix : .cgi", "Makefile.$VL_DEPLOYMENT_TARGET : NSAPI"});
    theProj->releaseMode = 1;
    EXPECT_EQ(VlProjRunInstall(), 1);
    EXPECT_EQ(theProj->releaseMode, 0);
    EXPECT_EQ(ws.Scripts(), "vlinst.sh: [shop.cgi] [start.html] [/cgi dir] [http://h/x] "
                            "[/www/shop] [shop.mak] [NSAPI] [ a.html my page.html]\n");

    // The command line ends before the first setting the project lacks.
    SetOptions({"Test.HTML URL : http://h/x", "Project.HTML Startup Document : start.html"});
    EXPECT_EQ(VlProjRunInstall(), 1);
    EXPECT_EQ(ws.Scripts(), "vlinst.sh: [shop.exe] [start.html]\n");

    // An empty start document gives the first page; the target defaults to
    // CGI; shell characters in values arrive as they are and run nothing.
    SetOptions({"Test.HTML Path : ", "Test.CGI Path : /c", "Test.HTML URL : $(touch pwned)`x`",
                "Project.HTML Startup Document : "});
    EXPECT_EQ(VlProjRunInstall(), 1);
    EXPECT_EQ(ws.Scripts(),
              "vlinst.sh: [shop.exe] [a.html] [/c] [$(touch pwned)`x`] [] [shop.mak] [CGI] "
              "[ a.html my page.html]\n");
    EXPECT_FALSE(fs::exists("pwned"));

    // A relocatable project starts with its program, under its CGI URL.
    SetOptions({"Project.Relocatable Project : True", "Test.CGI URL : /cgi-bin",
                "Test.HTML URL : /not/used", "Test.CGI Path : /c", "Test.HTML Path : /h"});
    EXPECT_EQ(VlProjRunTest(), 1);
    EXPECT_EQ(ws.Scripts(), "vltest.sh: [shop.exe] [shop.exe] [/c] [/cgi-bin] [/h] [shop.mak] "
                            "[CGI] [ a.html my page.html]\n");
}

std::vector<std::string> SortedLines(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(ScriptedRuns, ReleaseWritesACopyWithReadmeAndComesBack) {
    Workspace ws;
    InstallRunScripts();
    WriteTemplate("main.tem", "");
    WriteTemplate("Makefile.tem", "all: $VL_EXECUTABLE\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlProjRunRelease(), 0); }),
              "There is no project to release.\n");

    VlProjSetName("shop");
    SetOptions({"Project.Call Read/Write Scripts : False", "Makefile.exeSuffix : .cgi",
                "Project.Allow Config File : True", "Project.Config File Name : conf/#proj.cfg",
                "Test.CGI URL : /test", "Release.CGI URL : /rel", "Release.HTML URL : /site",
                "Test.HTML URL : /t"});
    ReadPage(ws, "a.html", "<html>a</html>\n");
    ASSERT_EQ(VlProjWrite(1), 1);
    ws.Scripts();

    EXPECT_EQ(VlProjRunRelease(), 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir())); // back, with the project read again
    EXPECT_EQ(theProj->releaseMode, 0);

    const std::string settings = "CGI URL : /rel\nHTML URL : /site\n";
    EXPECT_EQ(ws.Read("release/README"),
              "This file contains important information about your project\n\n"
              "These files should be copied to a directory that is known to your HTTP server.\n"
              "CGI Name : shop.cgi\n"
              "Config File URL : shop.cfg\n"
              "HTML file(s) :  a.html\n\n"
              "These options are hard coded in the CGI program:\n"
              "This is NOT a relocatable project.\n" +
                  settings +
                  "\nNote that you can override these values if you use a config file.\n");
    EXPECT_EQ(ws.Read("release/shop.cfg"), settings);
    EXPECT_EQ(ws.Read("shop.cfg"), "CGI URL : /test\nHTML URL : /t\n");
    EXPECT_EQ(ws.Read("release/in_use/a.html.vlm"), "<html>a</html>\n");
    EXPECT_EQ(ws.Read("release/shop.mak"), "all: shop.cgi\n");

    // Reading the project again runs the read script: no project is current
    // then, and without one the scripts are called.
    EXPECT_EQ(SortedLines(WaitForLog(ws, 3)),
              (std::vector<std::string>{"vlreadprj.sh 1|shop.pj", "vlrel1.sh: [.c]",
                                        "vlrel2.sh: [shop] [.cgi] [shop.mak] "
                                        "[shop.cfg] [ a.html] [ a.c shop.c]"}));
}

TEST(ScriptedRuns, ReleaseWithoutItsReadmeStaysInTheReleaseDirectory) {
    Workspace ws;
    InstallRunScripts();
    WriteTemplate("main.tem", "");
    WriteTemplate("Makefile.tem", "");
    VlProjSetName("shop");
    SetOptions({"Project.Call Read/Write Scripts : False"});
    AddModule(AddPage("a.html", {}));
    fs::create_directories("release/README");
    std::string out = Printed([] { EXPECT_EQ(VlProjRunRelease(), 0); });
    EXPECT_EQ(out, "Could open file for write README\n");
    EXPECT_EQ(theProj->releaseMode, 1);
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir()) / "release");
    EXPECT_TRUE(fs::exists("shop.pj"));
    // The first script was started before the project moved.
    EXPECT_EQ(WaitForLog(ws, 1), "vlrel1.sh: [.c]\n");
}

TEST(ScriptedRuns, BackgroundStartsOfBuildEditorAndBrowser) {
    Workspace ws;
    InstallRunScripts();
    EXPECT_EQ(VlProjBuild(), 0);
    VlProjSetName("my shop");
    EXPECT_EQ(VlProjBuild(), 1);
    EXPECT_EQ(WaitForLog(ws, 1), "vlmake.sh: [my shop.mak]\n");
    EXPECT_EQ(VlProjPreviewHtml("a b.html"), 1);
    EXPECT_EQ(WaitForLog(ws, 1), "vlbrowser.sh: [-openFile] [" + ws.Dir() + "/a b.html]\n");
}

} // namespace
