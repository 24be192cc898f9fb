// The bundled distribution's scripts: each copes with any number of missing
// trailing arguments, the read and write hooks do nothing unless
// VELMORA_HOOK names a command, and the install script copies the pages and
// builds the program only when the makefile's inputs are there.
#include "e2e/harness.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kBin = std::string(VELMORA_SOURCE_DIR) + "/dist/bin/";

// Runs a script of the distribution in dir; a browser would be "true".
ProgramRun Script(const std::string &dir, const std::string &name,
                  const std::vector<std::string> &args, std::vector<std::string> env = {}) {
    env.push_back("PATH=/usr/bin:/bin");
    env.push_back("BROWSER=true");
    std::vector<std::string> all = {kBin + name};
    all.insert(all.end(), args.begin(), args.end());
    return RunProgram("/bin/sh", all, env, dir);
}

TEST(DistScripts, EveryScriptCopesWithoutArguments) {
    for (const std::string &name : E2eWorld::kScripts) {
        SCOPED_TRACE(name);
        TempDir dir;
        ProgramRun r = Script(dir.Path(), name, {});
        EXPECT_GE(r.status, 0);
        EXPECT_LE(r.status, 2);
    }
}

TEST(DistScripts, HooksRunOnlyWhenVelmoraHookIsSet) {
    TempDir dir;
    const std::string hook = dir.Write("hook", "#!/bin/sh\nprintf '[%s]' \"$@\" >> log\n");
    fs::permissions(hook, fs::perms::owner_all);
    for (const char *name : {"vlreadprj.sh", "vlwriteprj.sh", "vlreadmodule.sh", "vlwritemodule.sh",
                             "vlreadhtml.sh", "vlwritehtml.sh"}) {
        EXPECT_EQ(Script(dir.Path(), name, {"my shop.pj"}).status, 0);
        EXPECT_EQ(Script(dir.Path(), name, {"my shop.pj"}, {"VELMORA_HOOK=" + hook}).status, 0);
    }
    EXPECT_EQ(dir.Read("log"), "[vlreadprj][my shop.pj][vlwriteprj][my shop.pj]"
                               "[vlreadmodule][my shop.pj][vlwritemodule][my shop.pj]"
                               "[vlreadhtml][my shop.pj][vlwritehtml][my shop.pj]");
}

TEST(DistScripts, InstallCopiesPagesAndBuildsWhenItCan) {
    TempDir dir;
    fs::create_directories(dir.File("dist/include"));
    fs::create_directories(dir.File("p"));
    dir.Write("p/a.html", "<p>a</p>\n");
    dir.Write("p/shop.mak", "all: shop.cgi\nshop.cgi: shop.c\n\tcp shop.c shop.cgi\n");
    const std::vector<std::string> args = {
        "shop.cgi", "a.html", dir.File("cgi"), "http://h/x", "C:" + dir.File("www"),
        "shop.mak", "CGI",    " a.html"};
    auto install = [&](const std::vector<std::string> &a) {
        return Script(dir.File("p"), "vlinst.sh", a, {"VELMORA=" + dir.File("dist")});
    };

    // No runtime: the pages are copied (the drive prefix dropped), nothing built.
    ProgramRun r = install(args);
    EXPECT_EQ(r.status, 0) << r.out << r.err;
    EXPECT_EQ(dir.Read("www/a.html"), "<p>a</p>\n");
    EXPECT_NE(r.out.find("program not built"), std::string::npos);
    EXPECT_FALSE(fs::exists(dir.File("cgi")));

    // Building needs make and a C compiler on this machine.
    if (RunProgram("/bin/sh", {"-c", "command -v make && command -v cc"}, {"PATH=/usr/bin:/bin"},
                   dir.Path())
            .status != 0)
        GTEST_SKIP() << "make or cc missing: the build steps are not tried";

    // With the runtime but without the makefile's source: a failure.
    dir.Write("dist/include/VlRnHtml.h", "");
    r = install(args);
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find("sources named in shop.mak are missing"), std::string::npos);

    // Everything there: built and installed.
    dir.Write("p/shop.c", "program\n");
    r = install(args);
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(dir.Read("cgi/shop.cgi"), "program\n");

    // Fewer arguments: the steps that lack theirs are skipped; from the
    // makefile on the program is built and installed again.
    for (size_t n = 0; n < args.size(); n++) {
        fs::remove_all(dir.File("cgi"));
        r = install(std::vector<std::string>(args.begin(), args.begin() + n));
        EXPECT_EQ(r.status, 0) << n << " arguments";
        EXPECT_EQ(fs::exists(dir.File("cgi/shop.cgi")), n >= 6) << n << " arguments";
    }
}

} // namespace
