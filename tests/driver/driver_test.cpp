// The vlnogui program run as a child process with a controlled environment:
// its exact standard output, standard error and exit status for the command
// line forms and failures that the start-up steps handle, and the progress
// lines of a complete run.
#include "support/file_texts.hpp"
#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

const std::string kProject =
    kProjectHead + "HTML Files :\nProject Options :\nProject.Name : shop\n";

// What a complete run over the project of the fixture prints after its
// "Applying Changes" line: the project has no main module yet, no page and
// no module, so nothing can be installed.
std::string completed(const std::string &missingConfig) {
    return "Could not read file in VlMainModuleRead:shop.c\n" +
           (missingConfig == "-"
                ? ""
                : "Warning : Could not open configuration file " + missingConfig + "\n") +
           "Done Reading Project.\nDone Writing Project\n"
           "You must have at least one binding before testing.\nFinished\n";
}

class Driver : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(dist_.file("config"));
        dist_.write("config/Velmora.cfg", "Project.Call Read/Write Scripts : False\n"
                                          "Makefile.$VL_SOURCE_SUFFIX : .c\n");
        dist_.write("config/main.tem", "");
        dist_.write("config/Makefile.tem", "");
        dist_.write("config/VlKeyWds.ini", "");
        work_.write("shop.pj", kProject);
    }

    // Runs vlnogui with args in the work directory; the environment holds
    // only PATH, HOME and, unless told otherwise, VELMORA. Every run starts
    // from a project that was never written.
    ProgramRun run(const std::vector<std::string> &args, const char *velmora = "dist") {
        std::vector<std::string> env = {"PATH=/usr/bin:/bin", "HOME=" + work_.path()};
        if (velmora)
            env.push_back("VELMORA=" + (velmora == std::string("dist") ? dist_.path() : velmora));
        std::filesystem::remove(work_.file("shop.c"));
        return runProgram(VLNOGUI_PATH, args, env, work_.path());
    }
    void expectRun(const std::vector<std::string> &args, const std::string &out, int status) {
        ProgramRun r = run(args);
        EXPECT_EQ(r.out, kBanner + out) << args.size();
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, status);
    }

    TempDir work_;
    TempDir dist_;
};

TEST_F(Driver, FewerThanTwoArgumentsPrintTheUsageLine) {
    for (std::vector<std::string> args : {std::vector<std::string>{}, {"-pc"}})
        expectRun(args, "Usage :vlnogui -p <full path to project> -c < full path to config file>\n",
                  1);
}

TEST_F(Driver, OptionLettersAndTheirValues) {
    // Grouped letters take their values in order; unknown letters are
    // reported without a newline and parsing goes on.
    expectRun({"-x", "-cp", "cfg", "shop.pj"},
              "unknown command line option: xApplying Changes to shop.pj from cfg\n" +
                  completed("cfg"),
              0);
    // No path after "-c" (also past the end of a group): the empty path,
    // which is only a warning.
    expectRun({"-p", "shop.pj", "-c"},
              "-c requires another argumentApplying Changes to shop.pj from \n" + completed(""), 0);
    // The first argument is not an option: nothing is parsed at all.
    expectRun({"shop.pj", "-p", "x"}, "No Project specified\n", 1);
    expectRun({"-ppc", "shop.pj"},
              "-p requires another argument-c requires another argumentNo Project specified\n", 1);

    // A later value wins; arguments after the options are ignored.
    work_.write("b.cfg", "Test.HTML URL : /b\n");
    expectRun({"-p", "first.pj", "-c", "a.cfg", "-p", "shop.pj", "-c", "b.cfg", "extra", "-p",
               "other.pj"},
              "Applying Changes to shop.pj from b.cfg\n" + completed("-"), 0);
    EXPECT_EQ(work_.read("shop.pj"), kProject + "Test.HTML URL : /b\n");
}

TEST_F(Driver, ProjectFileAndEnvironmentChecksInTheirOrder) {
    // A missing project file (a directory is none) is reported before the
    // environment is consulted.
    ProgramRun r = run({"-p", work_.path(), "-c", "cfg"}, nullptr);
    EXPECT_EQ(r.out, kBanner + ("Applying Changes to " + work_.path() +
                                " from cfg\nCould not open project file " + work_.path() + "\n"));
    EXPECT_EQ(r.status, 1);
    r = run({"-p", "shop.pj", "-c", "site.cfg"}, nullptr);
    EXPECT_EQ(r.out, kBanner + "Applying Changes to shop.pj from site.cfg\n"
                               "VELMORA environment variable must be set to run Velmora\n");
    EXPECT_EQ(r.status, 1);
    // An empty value passes the check, but names no distribution: without
    // its keyword file the run would drop the functions of keyword anchors,
    // so it stops before it reads the project.
    r = run({"-p", "shop.pj", "-c", "site.cfg"}, "");
    EXPECT_EQ(r.out, kBanner + "Applying Changes to shop.pj from site.cfg\n"
                               "Could not read the keyword file /config/VlKeyWds.ini: "
                               "No such file or directory\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(work_.read("shop.pj"), kProject);
}

TEST_F(Driver, AProjectWithoutOptionsEndsTheRun) {
    // A file that is not a project file starts an empty project "noname",
    // which has no options; the file is left as it is.
    work_.write("shop.pj", "just text\n");
    expectRun({"-p", "shop.pj", "-c", "x"},
              "Applying Changes to shop.pj from x\n"
              "shop.pj is not a valid project file.\n"
              "Internal Error. could not read project options\n",
              1);
    EXPECT_EQ(work_.read("shop.pj"), "just text\n");
}

} // namespace
