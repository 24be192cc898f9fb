// Generating the main module from main.tem: the template's text between the
// regions, the user's three texts, one declaration and one registration call
// per page module, and the runtime setup calls with their defaults.
#include "project_support.hpp"
#include "run_support.hpp"
#include "support/file_texts.hpp"
#include "support/temp_dir.hpp"

#include <string>

namespace {

using namespace MainRegions;

// The ten delimiter lines with nothing around or between them.
std::string Bare() {
    return IS + IE + DS + DE + InS + InE + RS + RE + FS + FE;
}

// The generated file for the bare template.
std::string Generated(const std::string &decls, const std::string &regs,
                      const std::string &includes = "", const std::string &initial = "",
                      const std::string &final = "") {
    return IS + includes + IE + DS + decls + DE + InS + initial + InE + RS + regs + RE + FS +
           final + FE;
}

const char kDefaults[] = "\tVlInitHeaders();\n\tVlRelocatableProject(0);\n\tVlSetApiMaxNum(2);\n"
                         "\tVlAllowShutDown(1);\n\tVlSetCacheNumConn(2);\n"
                         "\tVlSetSessTimeOut(1200);\n\tVlProcessLogin(0);\n"
                         "\tVlSetDoCommonLog(0);\n\tVlSetUseAppLogin(0);\n";

TEST(MainModuleWrite, ModulesAndEverySetupCallFromTheOptions) {
    Workspace ws;
    EnvVar login("LOGNAME", "ann");
    WriteTemplate("main.tem", Bare());
    VlProjSetName("shop");
    AddModule(AddPage("a.html", {"order"}));
    AddModule(nullptr); // a module without a page is left out
    AddModule(AddPage("b-c.html", {}));
    SetOptions({"Project.Relocatable Project : True",
                "Test.Database Server : tsrv",
                "Test.Database Name : tdb",
                "Release.Database Server : rsrv",
                "Release.Database Name : rdb",
                "Project.HTML Startup Document : start.html",
                "Test.HTML URL : http://t/#proj",
                "Release.HTML URL : /r",
                "App Server.Max Requests : 7",
                "App Server.Allow Shutdown : False",
                "App Server.Cached Connections : 3",
                "App Server.Timeout : 60",
                "Test.GIF URL : /gif",
                "Test.Database Vendor : SYBASE",
                "Test.ORB_HOST : orb",
                "Test.ORB_SEED : 42",
                "Test.Database User Name : #user",
                "Test.Database User Password : secret",
                "Project.Allow SQL in HTML : True",
                "Project.Allow Config File : true",
                "Project.Config File Name : #proj.cfg",
                "Test.HTML Path : C:/www/shop",
                "Project.Print Form Args : True",
                "Project.Print Environment : no",
                "Project.Secure Login : True",
                "Project.Use Common Login : True",
                "Project.Use Native OS Login : True",
                "Test.STATE_HOST : state"});
    const std::string decls = "extern void R_a_html ();\nextern void R_b_c_html ();\n";
    const std::string calls = "\tR_a_html ();\n\tR_b_c_html ();\n";
    EXPECT_EQ(VlMainModuleWrite("shop.c"), 1);
    EXPECT_EQ(ws.Read("shop.c"), Generated(decls, calls + "\tVlInitHeaders();\n"
                                                          "\tVlRelocatableProject(1);\n"
                                                          "\tVlSetDefaults(\"tsrv\",\"tdb\");\n"
                                                          "\tVlSetStartupHtml(\"start.html\");\n"
                                                          "\tVlSetHtmlURL(\"http://t/shop\");\n"
                                                          "\tVlSetApiMaxNum(7);\n"
                                                          "\tVlAllowShutDown(0);\n"
                                                          "\tVlSetCacheNumConn(3);\n"
                                                          "\tVlSetSessTimeOut(60);\n"
                                                          "\tVlSetGifURL(\"/gif\");\n"
                                                          "\tVlSetDefaultVendor(SGESYBASE);\n"
                                                          "\tVlSetOrbHost(\"orb\");\n"
                                                          "\tVlSetOrbSeed(42);\n"
                                                          "\tVlSetDefaultUser(\"ann\");\n"
                                                          "\tVlSetDefaultPass(\"secret\");\n"
                                                          "\tVlAllowSQL(1);\n"
                                                          "\tVlAllowConfigFile(0);\n"
                                                          "\tVlSetConfigFile(\"shop.cfg\");\n"
                                                          "\tVlSetHtmlDir(\"/www/shop\");\n"
                                                          "\tVlSetPrintArgs(1);\n"
                                                          "\tVlSetPrintEnv(0);\n"
                                                          "\tVlProcessLogin(1);\n"
                                                          "\tVlSetDoCommonLog(1);\n"
                                                          "\tVlSetUseAppLogin(1);\n"
                                                          "\tVlSetStateHost(\"state\");\n"));

    // In release mode the mode settings come from "Release." only; those it
    // lacks are not written. Defaults need both server and name.
    theProj->releaseMode = 1;
    free(SutRemoveNList(theProj->options, 4)); // Release.Database Name
    EXPECT_EQ(VlMainModuleWrite("shop.c"), 1);
    const std::string release = ws.Read("shop.c");
    EXPECT_NE(release.find("\tVlSetStartupHtml(\"start.html\");\n\tVlSetHtmlURL(\"/r\");\n"),
              std::string::npos);
    for (const char *call : {"VlSetDefaults", "VlSetGifURL", "VlSetHtmlDir", "VlSetStateHost"})
        EXPECT_EQ(release.find(call), std::string::npos) << call;

    // An empty seed is not written; a path without a colon is written whole.
    theProj->releaseMode = 0;
    SetOptions({"Test.ORB_SEED : ", "Test.HTML Path : /www/x"});
    EXPECT_EQ(VlMainModuleWrite("shop.c"), 1);
    EXPECT_EQ(ws.Read("shop.c"),
              Generated(decls, calls + "\tVlInitHeaders();\n\tVlRelocatableProject(0);\n"
                                       "\tVlSetApiMaxNum(2);\n\tVlAllowShutDown(1);\n"
                                       "\tVlSetCacheNumConn(2);\n\tVlSetSessTimeOut(1200);\n"
                                       "\tVlSetHtmlDir(\"/www/x\");\n"
                                       "\tVlProcessLogin(0);\n\tVlSetDoCommonLog(0);\n"
                                       "\tVlSetUseAppLogin(0);\n"));
}

TEST(MainModuleWrite, UserTextsSurviveWritingReadingAndWritingAgain) {
    Workspace ws;
    WriteTemplate("main.tem", "/* top */\n" + Bare() + "/* end */\n");
    VlProjSetName("shop");
    VlProjMainSetDeclarations("#include <x.h>\r\nint g;\r\n");
    VlProjMainSetInitialCode("\tinit();\n");
    VlProjMainSetFinalCode("\tdone();\r\n\r\n");
    EXPECT_EQ(VlMainModuleWrite("shop.c"), 1);
    const std::string first = ws.Read("shop.c");
    EXPECT_EQ(first, "/* top */\n" +
                         Generated("", kDefaults, "#include <x.h>\nint g;\n", "\tinit();\n",
                                   "\tdone();\n\n") +
                         "/* end */\n");

    EXPECT_EQ(VlMainModuleRead("shop.c"), 1);
    EXPECT_STREQ(VlProjMainGetDeclarations(), "#include <x.h>\nint g;\n");
    EXPECT_STREQ(VlProjMainGetInitialCode(), "\tinit();\n");
    EXPECT_STREQ(VlProjMainGetFinalCode(), "\tdone();\n\n");
    EXPECT_EQ(VlMainModuleWrite("shop.c"), 1);
    EXPECT_EQ(ws.Read("shop.c"), first);
}

TEST(MainModuleWrite, FailuresPrintTheirPiecesAndWriteNothing) {
    Workspace ws;
    WriteTemplate("main.tem", Bare());
    VlProjSetName("shop");
    std::string out = Printed([] { EXPECT_EQ(VlMainModuleWrite("nodir/shop.c"), 0); });
    EXPECT_EQ(out, "Could not write file in VlMainModuleWrite :nodir/shop.c\n");
    {
        EnvVar velmora("VELMORA", nullptr);
        VlResetDistDir();
        out = Printed([] { EXPECT_EQ(VlMainModuleWrite("shop.c"), 0); });
        EXPECT_EQ(out, "VELMORAenvironment variable is not set \n");
    }
    VlResetDistDir();
    EXPECT_FALSE(fs::exists("shop.c"));
}

} // namespace
