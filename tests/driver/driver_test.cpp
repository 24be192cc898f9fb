// The vlnogui program run as a child process with a controlled environment:
// its exact standard output, standard error and exit status for the command
// line forms and failures that the start-up steps handle, and the progress
// lines of a complete run.
#include "e2e/harness.hpp"
#include "support/file_texts.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kProject =
    kProjectHead + "HTML Files :\nProject Options :\nProject.Name : shop\n";

// What a complete run over the project of the fixture prints after its
// "Applying Changes" line: the project has no main module yet, no page and
// no module, so nothing can be installed.
std::string Completed(const std::string &missingConfig) {
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
        w_.Write("dist/config/Velmora.cfg", "Project.Call Read/Write Scripts : False\n"
                                            "Makefile.$VL_SOURCE_SUFFIX : .c\n");
        w_.Write("dist/config/main.tem", "");
        w_.Write("dist/config/Makefile.tem", "");
        w_.Write("proj/shop.pj", kProject);
    }

    // Runs vlnogui in the project directory, with VELMORA as E2eWorld::run
    // takes it. Every run starts from a project that was never written.
    ProgramRun Run(const std::vector<std::string> &args, const char *velmora = "dist") {
        fs::remove(w_.Path("proj/shop.c"));
        return w_.Run(args, "proj", false, {}, velmora);
    }
    void ExpectRun(const std::vector<std::string> &args, const std::string &out, int status) {
        ProgramRun r = Run(args);
        EXPECT_EQ(r.out, kBanner + out) << args.size();
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, status);
    }

    E2eWorld w_;
};

TEST_F(Driver, FewerThanTwoArgumentsPrintTheUsageLine) {
    for (std::vector<std::string> args : {std::vector<std::string>{}, {"-pc"}})
        ExpectRun(args, "Usage :vlnogui -p <full path to project> -c < full path to config file>\n",
                  1);
}

TEST_F(Driver, OptionLettersAndTheirValues) {
    // Grouped letters take their values in order; unknown letters are
    // reported without a newline and parsing goes on.
    ExpectRun({"-x", "-cp", "cfg", "shop.pj"},
              "unknown command line option: xApplying Changes to shop.pj from cfg\n" +
                  Completed("cfg"),
              0);
    // No path after "-c" (also past the end of a group): the empty path,
    // which is only a warning.
    ExpectRun({"-p", "shop.pj", "-c"},
              "-c requires another argumentApplying Changes to shop.pj from \n" + Completed(""), 0);
    // The first argument is not an option: nothing is parsed at all.
    ExpectRun({"shop.pj", "-p", "x"}, "No Project specified\n", 1);
    ExpectRun({"-ppc", "shop.pj"},
              "-p requires another argument-c requires another argumentNo Project specified\n", 1);

    // A later value wins; arguments after the options are ignored.
    w_.Write("proj/b.cfg", "Test.HTML URL : /b\n");
    ExpectRun({"-p", "first.pj", "-c", "a.cfg", "-p", "shop.pj", "-c", "b.cfg", "extra", "-p",
               "other.pj"},
              "Applying Changes to shop.pj from b.cfg\n" + Completed("-"), 0);
    EXPECT_EQ(w_.Read("proj/shop.pj"), kProject + "Test.HTML URL : /b\n");
}

TEST_F(Driver, ProjectFileAndEnvironmentChecksInTheirOrder) {
    // A missing project file (a directory is none) is reported before the
    // environment is consulted.
    const std::string dir = w_.Path("proj");
    ProgramRun r = Run({"-p", dir, "-c", "cfg"}, nullptr);
    EXPECT_EQ(r.out, kBanner + "Applying Changes to " + dir +
                         " from cfg\nCould not open project file " + dir + "\n");
    EXPECT_EQ(r.status, 1);
    r = Run({"-p", "shop.pj", "-c", "site.cfg"}, nullptr);
    EXPECT_EQ(r.out, kBanner + "Applying Changes to shop.pj from site.cfg\n"
                               "VELMORA environment variable must be set to run Velmora\n");
    EXPECT_EQ(r.status, 1);
    // An empty value passes the check, but names no distribution: without
    // its keyword file the run would drop the functions of keyword anchors,
    // so it stops before it reads the project.
    r = Run({"-p", "shop.pj", "-c", "site.cfg"}, "");
    EXPECT_EQ(r.out, kBanner + "Applying Changes to shop.pj from site.cfg\n"
                               "Could not read the keyword file /config/VlKeyWds.ini: "
                               "No such file or directory\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(w_.Read("proj/shop.pj"), kProject);
}

TEST_F(Driver, AProjectWithoutOptionsEndsTheRun) {
    // A file that is not a project file starts an empty project "noname",
    // which has no options; the file is left as it is.
    w_.Write("proj/shop.pj", "just text\n");
    ExpectRun({"-p", "shop.pj", "-c", "x"},
              "Applying Changes to shop.pj from x\n"
              "shop.pj is not a valid project file.\n"
              "Internal Error. could not read project options\n",
              1);
    EXPECT_EQ(w_.Read("proj/shop.pj"), "just text\n");
}

} // namespace
