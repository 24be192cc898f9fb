// The vlnogui program run as a child process with a controlled environment:
// its exact standard output, standard error and exit status for the command
// line forms and failures that the start-up steps handle.
#include "util/tempdir.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

struct Outcome {
    std::string out;
    std::string err;
    int status = -1; // exit status, or -1 when the program did not exit normally
};

const char kBanner[] = "No GUI Velmora Version 3.0\n";
const char kUsage[] = "Usage :vlnogui -p <full path to project> -c < full path to config file>\n";
const char kNotBuilt[] = "vlnogui: project processing is not built yet\n";

class Driver : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(dist_.file("config"));
        project_ = work_.write("shop.pj", "");
    }

    // Runs vlnogui with args in the work directory. The environment holds
    // only PATH, HOME, the sanitizer settings and, when given, VELMORA.
    Outcome run(const std::vector<std::string> &args, const char *velmora) {
        std::vector<std::string> env = {"PATH=/usr/bin:/bin", "HOME=" + work_.path()};
        for (const char *name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"})
            if (const char *v = getenv(name)) env.push_back(std::string(name) + "=" + v);
        if (velmora) env.push_back(std::string("VELMORA=") + velmora);

        std::vector<char *> argv = {const_cast<char *>(VLNOGUI_PATH)};
        for (const std::string &a : args)
            argv.push_back(const_cast<char *>(a.c_str()));
        argv.push_back(nullptr);
        std::vector<char *> envp;
        for (std::string &e : env)
            envp.push_back(e.data());
        envp.push_back(nullptr);

        std::string outPath = work_.file(".stdout"), errPath = work_.file(".stderr");
        fflush(stdout);
        fflush(stderr);
        pid_t pid = fork();
        if (pid == 0) {
            int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            int in = open("/dev/null", O_RDONLY);
            if (out < 0 || err < 0 || in < 0 || chdir(work_.path().c_str()) != 0) _exit(126);
            dup2(in, 0);
            dup2(out, 1);
            dup2(err, 2);
            execve(argv[0], argv.data(), envp.data());
            _exit(127);
        }
        Outcome r;
        int status = 0;
        if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status))
            r.status = WEXITSTATUS(status);
        r.out = work_.read(".stdout");
        r.err = work_.read(".stderr");
        return r;
    }

    TempDir work_;
    TempDir dist_;
    std::string project_;
};

TEST_F(Driver, FewerThanTwoArgumentsPrintTheUsageLine) {
    for (std::vector<std::string> args : {std::vector<std::string>{}, {"-p"}, {"-pc"}}) {
        Outcome r = run(args, dist_.path().c_str());
        EXPECT_EQ(r.out, std::string(kBanner) + kUsage);
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, 1);
    }
}

TEST_F(Driver, MissingProjectFileIsReportedBeforeTheEnvironmentIsConsulted) {
    for (const char *velmora : {static_cast<const char *>(nullptr), "/nonexistent"}) {
        Outcome r = run({"-p", "/no/such.pj", "-c", "cfg"}, velmora);
        EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to /no/such.pj from cfg\n"
                                                "Could not open project file /no/such.pj\n");
        EXPECT_EQ(r.err, "");
        EXPECT_EQ(r.status, 1);
    }
    // A directory is not a project file.
    Outcome r = run({"-p", work_.path(), "-c", "cfg"}, nullptr);
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to " + work_.path() +
                         " from cfg\nCould not open project file " + work_.path() + "\n");
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, VelmoraMustBeSetEvenIfEmpty) {
    Outcome r = run({"-p", "shop.pj", "-c", "site.cfg"}, nullptr);
    EXPECT_EQ(r.out, std::string(kBanner) +
                         "Applying Changes to shop.pj from site.cfg\n"
                         "VELMORA environment variable must be set to run Velmora\n");
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 1);

    r = run({"-p", "shop.pj", "-c", "site.cfg"}, "");
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from site.cfg\n");
    EXPECT_EQ(r.err, kNotBuilt);
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, GroupedLettersTakeTheirValuesInOrder) {
    Outcome grouped = run({"-pc", project_, "cfg"}, dist_.path().c_str());
    Outcome separate = run({"-p", project_, "-c", "cfg"}, dist_.path().c_str());
    EXPECT_EQ(grouped.out,
              std::string(kBanner) + "Applying Changes to " + project_ + " from cfg\n");
    EXPECT_EQ(grouped.err, kNotBuilt);
    EXPECT_EQ(grouped.status, 1);
    EXPECT_EQ(separate.out, grouped.out);
    EXPECT_EQ(separate.err, grouped.err);

    Outcome reversed = run({"-cp", "cfg", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(reversed.out, std::string(kBanner) + "Applying Changes to shop.pj from cfg\n");
}

TEST_F(Driver, UnknownLettersAreReportedWithoutNewlineAndParsingGoesOn) {
    Outcome r = run({"-x", "-p", "shop.pj", "-qc", "cfg"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "unknown command line option: x"
                                            "unknown command line option: q"
                                            "Applying Changes to shop.pj from cfg\n");
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, LaterValuesWinAndTrailingArgumentsAreIgnored) {
    Outcome r = run({"-p", "first.pj", "-c", "a.cfg", "-p", "shop.pj", "-c", "b.cfg", "extra", "-p",
                     "other.pj"},
                    dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from b.cfg\n");
    EXPECT_EQ(r.err, kNotBuilt);
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, NoProjectSpecified) {
    // The first argument is not an option: nothing is parsed at all.
    Outcome r = run({"shop.pj", "-p", "x"}, dist_.path().c_str());
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
    Outcome r = run({"-p", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from \n");
    EXPECT_EQ(r.err, kNotBuilt);
    EXPECT_EQ(r.status, 1);

    r = run({"-p", "shop.pj", "-c"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "-c requires another argument" +
                         "Applying Changes to shop.pj from \n");
    EXPECT_EQ(r.status, 1);

    r = run({"-pc", "shop.pj"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "-c requires another argument" +
                         "Applying Changes to shop.pj from \n");
    EXPECT_EQ(r.status, 1);
}

TEST_F(Driver, KeywordFileProblemsDoNotStopTheStart) {
    dist_.write("config/VlKeyWds.ini", "bad-line\n");
    Outcome r = run({"-p", "shop.pj", "-c", "x"}, dist_.path().c_str());
    EXPECT_EQ(r.out, std::string(kBanner) + "Applying Changes to shop.pj from x\n");
    EXPECT_EQ(r.err, kNotBuilt);
    EXPECT_EQ(r.status, 1);
}

} // namespace
