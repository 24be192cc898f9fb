// Project options: lookup order, expansion, the option files' loading and
// messages, the upgrade of old names, merging and saving the user's options.
#include "project/naming.h"
#include "project_support.hpp"
#include "run_support.hpp"
#include "support/c_values.hpp"
#include "util/options.h"

namespace {

class Options : public testing::Test {
  protected:
    void SetUp() override {
        fs::create_directories(dist_.File("config"));
        ResetProjectState();
        VlProjNewEmpty();
    }
    void TearDown() override { ResetProjectState(); }

    void WriteGlobal(const std::string &text) { dist_.Write("config/Velmora.cfg", text); }
    void WriteUser(const std::string &text) { home_.Write("Velmora.cfg", text); }
    std::string GlobalPath() { return dist_.File("config/Velmora.cfg"); }

    TempDir dist_, home_;
    EnvVar velmora_{"VELMORA", dist_.Path().c_str()};
    EnvVar home{"HOME", home_.Path().c_str()};
    EnvVar login_{"LOGNAME", "alice"};
};

TEST_F(Options, CommandLineThenProjectThenUserThenGlobal) {
    WriteGlobal("Test.A : global\nTest.B : gB\nTest.C :  gC \n");
    WriteUser("Test.A : user\nTest.B : uB\n");
    SetOptions({"Test.A :  proj  "});
    EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.A")), "proj");
    EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.B")), "uB");
    EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.C")), "gC");
    VlCmdLineSetOption("Test.A", " cmd ");
    EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.A")), " cmd "); // as given, not stripped
    VlCmdLineSetOption("Test.A", nullptr);
    // Without a project the files still answer the unexpanded lookup.
    VlProjDelete();
    EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.A")), "user");
    EXPECT_EQ(Take(VlProjGetOption("Test.A")), std::nullopt);
}

TEST_F(Options, ProjectNameAndLoginExpanded) {
    WriteGlobal("Test.P : /#proj/#user/#proj#\n");
    theProj->name = strdup("shop");
    EXPECT_EQ(Take(VlProjGetOption("Test.P")), "/shop/alice/shop#");
    EXPECT_EQ(Take(VlProjGetOptionByCat("Test.", "P")), "/shop/alice/shop#");
    login_.Set(nullptr);
    EXPECT_EQ(Take(VlProjGetOption("Test.P")), "/shop//shop#");
}

TEST_F(Options, MissingGlobalFileRepeatsItsMessage) {
    const std::string message = "Global Options File Not Found\nGlobal Options File Not Found\n";
    auto twice = [] {
        free(VlProjGetOptionNoParse("Test.A"));
        free(VlProjGetOptionNoParse("Test.A"));
    };
    EXPECT_EQ(Printed(twice), message + message);
    // An existing but empty file loads: its message comes once.
    WriteGlobal("");
    EXPECT_EQ(Printed(twice), message);
    // A user file that appears later is loaded by the next lookup, silently.
    WriteUser("Test.A : late\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.A")), "late"); }), "");
}

TEST_F(Options, UpgradeRenamesOldNamesInPlace) {
    SutList *list =
        MakeList({"X : 0", "CGI test URL : x", "exeSuffix : .exe", "Database Name : db"});
    EXPECT_EQ(VlProjUpgradeOptions(list), 1);
    EXPECT_EQ(Items(list), (Strings{"X : 0", "Test.CGI URL : x", "Makefile.exeSuffix : .exe",
                                    "Test.Database Name : db"}));
    EXPECT_EQ(VlProjUpgradeOptions(list), 0);
    SutDestroyList(list);
}

TEST_F(Options, OldOptionFilesAreUpgradedWithAMessage) {
    WriteUser("HTML test Path : /p\n");
    WriteGlobal("Database Name : db\n");
    EXPECT_EQ(Printed([] {
                  EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.HTML Path")), "/p");
                  EXPECT_EQ(Take(VlProjGetOptionNoParse("Test.Database Name")), "db");
              }),
              home_.File("Velmora.cfg") +
                  " contains options from an old version of Velmora\n"
                  "Please save your user options from the options editor.\n" +
                  GlobalPath() +
                  " contains options from an old version of Velmora\n"
                  "Please have the tool administrator fix the file.\n");
    EXPECT_EQ(home_.Read("Velmora.cfg"), "HTML test Path : /p\n"); // files are not rewritten
}

TEST_F(Options, MergedListAndSavedUserOptions) {
    WriteGlobal("G : 1\nS : g\n");
    WriteUser("S : u\nU : 2\n");
    SetOptions({"S : p", "P : 3", "no colon"});
    EXPECT_EQ(VlProjSaveUserOptions(), 1);
    EXPECT_EQ(home_.Read("Velmora.cfg"), "G : 1\nS : p\nU : 2\nP : 3\n");
    home.Set((home_.Path() + "/no/such/dir").c_str());
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlProjSaveUserOptions(), 0); }),
              "Could not open user's option file for write.\n");
}

TEST_F(Options, ScriptAndRelocationSwitches) {
    WriteGlobal("X : 1\n");
    SetOptions({"Project.Call Read/Write Scripts : True ", "Project.Relocatable Project : True"});
    EXPECT_EQ(VlProjCallReadWriteScripts(), 1);
    EXPECT_EQ(VlProjRelocatable(), 1);
    SetOptions({"Project.Call Read/Write Scripts : true", "Project.Relocatable Project : yes"});
    EXPECT_EQ(VlProjCallReadWriteScripts(), 0);
    EXPECT_EQ(VlProjRelocatable(), 0);
}

} // namespace
