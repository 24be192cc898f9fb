// The vlnogui program run as a child process with a controlled environment:
// its exact standard output, standard error and exit status for the command
// line forms and failures that the start-up steps handle, and the progress
// lines of a complete run.
#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

const char kBanner[] = "No GUI Velmora Version 3.0\n";
const char kUsage[] = "Usage :vlnogui -p <full path to project> -c < full path to config file>\n";
const char kProject[] = "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\n"
                        "Source files:\nHTML Files :\nProject Options :\nProject.Name : shop\n";

// What a complete run over the project of the fixture prints after its
// "Applying Changes" line: the project has no main module yet, no page and
// no module, so nothing can be installed.
std::string completed(const std::string &warning = "") {
    return "Could not read file in VlMainModuleRead:shop.c\n" + warning +
           "Done Reading Project.\nDone Writing Project\n"
           "You must have at least one binding before testing.\nFinished\n";
}

std::string missingConfig(const std::string &name) {
    return "Warning : Could not open configuration file " + name + "\n";
}

class Driver : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(dist_.file("config"));
        dist_.write("config/Velmora.cfg", "Project.Call Read/Write Scripts : False\n"
                                          "Makefile.$VL_SOURCE_SUFFIX : .c\n");
        dist_.write("config/main.tem", "");
        dist_.write("config/Makefile.tem", "");
        project_ = work_.write("shop.pj", kProject);
    }

    // Runs vlnogui with args in the work directory. The environment holds
    // only PATH, HOME and, when given, VELMORA.
    ProgramRun run(const std::vector<std::string> &args, const char *velmora) {
        std::vector<std::string> env = {"PATH=/usr/bin:/bin", "HOME=" + work_.path()};
        if (velmora) env.push_back(std::string("VELMORA=") + velmora);
        // Every run starts from a project that was never written.
        std::filesystem::remove(work_.file("shop.c"));
        return runProgram(VLNOGUI_PATH, args, env, work_.path());
    }

    TempDir work_;
    TempDir dist_;
    std::string project_;
};

TEST_F(Driver, FewerThanTwoArgumentsPrintTheUsageLine) {
    for (std::vector<std::string> args : {std::vector<std::string>{}, {"-p"}, {"-pc"}}) {
        ProgramRun r = run(args, dist_.path().c_str());
        EXPECT_EQ(r.out, std::string(kBanner) + kUsage);
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, 1);
    }
}

TEST_F(Driver, MissingProjectFileIsReportedBeforeTheEnvironmentIsConsulted) {
    for (const char *velmora : {static_cast<const char *>(nullptr), "/nonexistent"}) {
        ProgramRun r = run({"-p", "/no/such.pj", "-c", "cfg"}, velmora);
        EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to /no/such.pj from cfg\n"
                                                "Could not open project file /no/such.pj\n");
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, 1);
    }
    // A directory is not a project file.
    ProgramRun r = run({"-p", work_.path(), "-c", "cfg"}, nullptr);
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to " + work_.path() +
                         " from cfg\nCould not open project file " + work_.path() + "\n");
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, VelmoraMustBeSetEvenIfEmpty) {
    ProgramRun r = run({"-p", "shop.pj", "-c", "site.cfg"}, nullptr);
    EXPECT_EQ(r.out, std::string(kBanner) +
                         "Applying Changes to shop.pj from site.cfg\n"
                         "VELMORA environment variable must be set to run Velmora\n");
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 1);

    // An empty value passes the check; the run then finds no distribution
    // (no global option file at every lookup) and still completes.
    r = run({"-p", "shop.pj", "-c", "site.cfg"}, "");
    const std::string start = std::string(kBanner) + "Applying Changes to shop.pj from site.cfg\n";
    EXPECT_EQ(r.out.substr(0, start.size()), start);
    EXPECT_NE(r.out.find("Global Options File Not Found\n"), std::string::npos);
    EXPECT_EQ(r.out.substr(r.out.size() - 9), "Finished\n");
    EXPECT_EQ(r.status, 0);
}

TEST_F(Driver, GroupedLettersTakeTheirValuesInOrder) {
    ProgramRun grouped = run({"-pc", project_, "cfg"}, dist_.path().c_str());
    ProgramRun separate = run({"-p", project_, "-c", "cfg"}, dist_.path().c_str());
    EXPECT_EQ(grouped.out, std::string(kBanner) + "Applying Changes to " + project_ +
                               " from cfg\n" + completed(missingConfig("cfg")));
    EXPECT_EQ(grouped.err, "");
    EXPECT_EQ(grouped.status, 0);
    EXPECT_EQ(separate.out, grouped.out);
    EXPECT_EQ(separate.err, grouped.err);

    ProgramRun reversed = run({"-cp", "cfg", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(reversed.out, std::string(kBanner) + "Applying Changes to shop.pj from cfg\n" +
                                completed(missingConfig("cfg")));
}

TEST_F(Driver, UnknownLettersAreReportedWithoutNewlineAndParsingGoesOn) {
    ProgramRun r = run({"-x", "-p", "shop.pj", "-qc", "cfg"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) +
                         "unknown command line option: x"
                         "unknown command line option: q"
                         "Applying Changes to shop.pj from cfg\n" +
                         completed(missingConfig("cfg")));
    EXPECT_EQ(r.status, 0);
}

TEST_F(Driver, LaterValuesWinAndTrailingArgumentsAreIgnored) {
    work_.write("b.cfg", "Test.HTML URL : /b\n");
    ProgramRun r = run({"-p", "first.pj", "-c", "a.cfg", "-p", "shop.pj", "-c", "b.cfg", "extra",
                        "-p", "other.pj"},
                       dist_.path().c_str());
    EXPECT_EQ(r.out,
              std::string(kBanner) + "Applying Changes to shop.pj from b.cfg\n" + completed());
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(work_.read("shop.pj"), std::string(kProject) + "Test.HTML URL : /b\n");
}

TEST_F(Driver, NoProjectSpecified) {
    // The first argument is not an option: nothing is parsed at all.
    ProgramRun r = run({"shop.pj", "-p", "x"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "No Project specified\n");
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 1);

    r = run({"-c", "cfg"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "No Project specified\n");
    EXPECT_EQ(r.status, 1);

    // "-p" as the last argument.
    r = run({"-c", "cfg", "-p"}, dist_.path().c_str());
    EXPECT_EQ(r.out,
              std::string(kBanner) + "-p requires another argument" + "No Project specified\n");
    EXPECT_EQ(r.status, 1);

    // Letters past the end of the arguments each report and read nothing.
    r = run({"-ppc", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "-p requires another argument" +
                         "-c requires another argument" + "No Project specified\n");
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, MissingConfigurationPathBecomesEmpty) {
    ProgramRun r = run({"-p", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from \n" +
                         completed(missingConfig("")));
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 0);

    r = run({"-p", "shop.pj", "-c"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "-c requires another argument" +
                         "Applying Changes to shop.pj from \n" + completed(missingConfig("")));
    EXPECT_EQ(r.status, 0);

    r = run({"-pc", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "-c requires another argument" +
                         "Applying Changes to shop.pj from \n" + completed(missingConfig("")));
    EXPECT_EQ(r.status, 0);
}

TEST_F(Driver, KeywordFileProblemsDoNotStopTheRun) {
    dist_.write("config/VlKeyWds.ini", "bad-line\n");
    ProgramRun r = run({"-p", "shop.pj", "-c", "x"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from x\n" +
                         completed(missingConfig("x")));
    EXPECT_EQ(r.status, 0);
}

TEST_F(Driver, AProjectWithoutOptionsEndsTheRun) {
    // No "Project Options :" line: the project has no option list at all.
    work_.write("shop.pj", "Velmora Project File V1.0\nThis is a generated file. DO NOT MODIFY.\n"
                           "Source files:\nHTML Files :\n");
    ProgramRun r = run({"-p", "shop.pj", "-c", "x"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from x\n" +
                         "Could not read file in VlMainModuleRead:shop.c\n"
                         "Internal Error. could not read project options\n");
    EXPECT_EQ(r.status, 1);

    // A file that is not a project file starts an empty project "noname",
    // which has no options either.
    work_.write("shop.pj", "just text\n");
    r = run({"-p", "shop.pj", "-c", "x"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from x\n" +
                         "shop.pj is not a valid project file.\n"
                         "Internal Error. could not read project options\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(work_.read("shop.pj"), "just text\n");
}

} // namespace
