// The configuration file of the generated program: written only when the
// project allows it, into the project directory under the file part of its
// name, with "Project." lines in full and mode settings under their bare name.
#include "project_support.hpp"
#include "run_support.hpp"

#include <cstdio>
#include <string>

namespace {

TEST(ConfigFile, WrittenOnlyWhenAllowedWithTheValuesOfTheMode) {
    Workspace ws;
    EnvVar login("LOGNAME", "ann");
    VlProjSetName("shop");
    SetOptions({"Project.Allow Config File : yes", "Project.Config File Name : conf/#proj.cfg"});
    EXPECT_EQ(VlProjWriteConfigFile(), 1);
    EXPECT_FALSE(fs::exists("shop.cfg"));

    SetOptions({"Project.Allow Config File : True", "Project.Config File Name : conf/#proj.cfg",
                "Project.HTML Startup Document : start.html", "Project.Secure Login : True",
                "Project.Print Form Args : ", "Test.CGI URL : /cgi-bin",
                "Test.Database User Name : #user", "Test.Database User Password : secret",
                "Release.CGI URL : /rel", "Test.ORB_SEED : 7", "Release.STATE_HOST : state",
                "App Server.Timeout : 5"});
    EXPECT_EQ(VlProjWriteConfigFile(), 1);
    // Options without a value and the password are not written.
    EXPECT_EQ(ws.Read("shop.cfg"), "Project.HTML Startup Document : start.html\n"
                                   "Project.Secure Login : True\n"
                                   "CGI URL : /cgi-bin\n"
                                   "Database User Name : ann\n"
                                   "ORB_SEED : 7\n");

    theProj->releaseMode = 1;
    EXPECT_EQ(VlProjWriteConfigFile(), 1);
    EXPECT_EQ(ws.Read("shop.cfg"), "Project.HTML Startup Document : start.html\n"
                                   "Project.Secure Login : True\n"
                                   "CGI URL : /rel\n"
                                   "STATE_HOST : state\n");
    ASSERT_EQ(SutSizList(theConfigOptions), SutSizList(theConfigCatagories));
}

TEST(ConfigFile, MissingNameAndUnwritableFile) {
    Workspace ws;
    EXPECT_EQ(VlProjWriteConfigFile(), 1); // not allowed by default
    VlProjSetName("shop");
    SetOptions({"Project.Allow Config File : True"});
    std::string out = Printed([] { EXPECT_EQ(VlProjWriteConfigFile(), 0); });
    EXPECT_EQ(out, "Could not determine config file name.\n"
                   "Make sure the option Config File Name is defined.\n");

    SetOptions({"Project.Allow Config File : True", "Project.Config File Name : site.cfg"});
    fs::create_directory("site.cfg");
    out = Printed([] { EXPECT_EQ(VlProjWriteConfigFile(), 0); });
    EXPECT_EQ(out, "Could open file for write site.cfg\n");
}

} // namespace
