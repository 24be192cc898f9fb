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
        fs::create_directories(dist_.file("config"));
        resetProjectState();
        VlProjNewEmpty();
    }
    void TearDown() override { resetProjectState(); }

    void writeGlobal(const std::string &text) { dist_.write("config/Velmora.cfg", text); }
    void writeUser(const std::string &text) { home_.write("Velmora.cfg", text); }
    std::string globalPath() { return dist_.file("config/Velmora.cfg"); }

    TempDir dist_, home_;
    EnvVar velmora_{"VELMORA", dist_.path().c_str()};
    EnvVar home{"HOME", home_.path().c_str()};
    EnvVar login_{"LOGNAME", "alice"};
};

TEST_F(Options, CommandLineThenProjectThenUserThenGlobal) {
    writeGlobal("Test.A : global\nTest.B : gB\nTest.C :  gC \n");
    writeUser("Test.A : user\nTest.B : uB\n");
    setOptions({"Test.A :  proj  "});
    EXPECT_EQ(take(VlProjGetOptionNoParse("Test.A")), "proj");
    EXPECT_EQ(take(VlProjGetOptionNoParse("Test.B")), "uB");
    EXPECT_EQ(take(VlProjGetOptionNoParse("Test.C")), "gC");
    VlCmdLineSetOption("Test.A", " cmd ");
    EXPECT_EQ(take(VlProjGetOptionNoParse("Test.A")), " cmd "); // as given, not stripped
    VlCmdLineSetOption("Test.A", nullptr);
    // Without a project the files still answer the unexpanded lookup.
    VlProjDelete();
    EXPECT_EQ(take(VlProjGetOptionNoParse("Test.A")), "user");
    EXPECT_EQ(take(VlProjGetOption("Test.A")), std::nullopt);
}

TEST_F(Options, ProjectNameAndLoginExpanded) {
    writeGlobal("Test.P : /#proj/#user/#proj#\n");
    theProj->name = strdup("shop");
    EXPECT_EQ(take(VlProjGetOption("Test.P")), "/shop/alice/shop#");
    EXPECT_EQ(take(VlProjGetOptionByCat("Test.", "P")), "/shop/alice/shop#");
    login_.set(nullptr);
    EXPECT_EQ(take(VlProjGetOption("Test.P")), "/shop//shop#");
}

TEST_F(Options, MissingGlobalFileRepeatsItsMessage) {
    const std::string message = "Global Options File Not Found\nGlobal Options File Not Found\n";
    auto twice = [] {
        free(VlProjGetOptionNoParse("Test.A"));
        free(VlProjGetOptionNoParse("Test.A"));
    };
    EXPECT_EQ(printed(twice), message + message);
    // An existing but empty file loads: its message comes once.
    writeGlobal("");
    EXPECT_EQ(printed(twice), message);
    // A user file that appears later is loaded by the next lookup, silently.
    writeUser("Test.A : late\n");
    EXPECT_EQ(printed([] { EXPECT_EQ(take(VlProjGetOptionNoParse("Test.A")), "late"); }), "");
}

TEST_F(Options, UpgradeRenamesOldNamesInPlace) {
    SutList *list =
        makeList({"X : 0", "CGI test URL : x", "exeSuffix : .exe", "Database Name : db"});
    EXPECT_EQ(VlProjUpgradeOptions(list), 1);
    EXPECT_EQ(items(list), (Strings{"X : 0", "Test.CGI URL : x", "Makefile.exeSuffix : .exe",
                                    "Test.Database Name : db"}));
    EXPECT_EQ(VlProjUpgradeOptions(list), 0);
    SutDestroyList(list);
}

TEST_F(Options, OldOptionFilesAreUpgradedWithAMessage) {
    writeUser("HTML test Path : /p\n");
    writeGlobal("Database Name : db\n");
    EXPECT_EQ(printed([] {
                  EXPECT_EQ(take(VlProjGetOptionNoParse("Test.HTML Path")), "/p");
                  EXPECT_EQ(take(VlProjGetOptionNoParse("Test.Database Name")), "db");
              }),
              home_.file("Velmora.cfg") +
                  " contains options from an old version of Velmora\n"
                  "Please save your user options from the options editor.\n" +
                  globalPath() +
                  " contains options from an old version of Velmora\n"
                  "Please have the tool administrator fix the file.\n");
    EXPECT_EQ(home_.read("Velmora.cfg"), "HTML test Path : /p\n"); // files are not rewritten
}

TEST_F(Options, MergedListAndSavedUserOptions) {
    writeGlobal("G : 1\nS : g\n");
    writeUser("S : u\nU : 2\n");
    setOptions({"S : p", "P : 3", "no colon"});
    EXPECT_EQ(VlProjSaveUserOptions(), 1);
    EXPECT_EQ(home_.read("Velmora.cfg"), "G : 1\nS : p\nU : 2\nP : 3\n");
    home.set((home_.path() + "/no/such/dir").c_str());
    EXPECT_EQ(printed([] { EXPECT_EQ(VlProjSaveUserOptions(), 0); }),
              "Could not open user's option file for write.\n");
}

TEST_F(Options, ScriptAndRelocationSwitches) {
    writeGlobal("X : 1\n");
    setOptions({"Project.Call Read/Write Scripts : True ", "Project.Relocatable Project : True"});
    EXPECT_EQ(VlProjCallReadWriteScripts(), 1);
    EXPECT_EQ(VlProjRelocatable(), 1);
    setOptions({"Project.Call Read/Write Scripts : true", "Project.Relocatable Project : yes"});
    EXPECT_EQ(VlProjCallReadWriteScripts(), 0);
    EXPECT_EQ(VlProjRelocatable(), 0);
}

} // namespace
