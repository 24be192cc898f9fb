// What a run does when its surroundings are not as they should be: a working
// copy or a page it cannot make or read, a read-only project, names that
// lead out of the project or look like options, symbolic links shipped in
// the project, more names than one command line holds, and a second run on
// a project in use. Nothing is lost and nothing outside the project is
// written; a run that cannot go on says which file and why and ends with 1.
#include "e2e/harness.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>

namespace {

using Files = std::map<std::string, std::string>;

const std::string kNothingWritten = "Nothing was written: the project could not be read whole.\n";

std::string Start(const std::string &project, const std::string &config = "") {
    return kBanner + "Applying Changes to " + project + " from " + config + "\n";
}

TEST(Safety, EnvironmentFailuresWriteNothing) {
    E2eWorld w;
    Distribution(w);
    PageProject(w, "");
    // No working copy can be made: the page would drop out of the project.
    w.Write("proj/in_use", "a file where the directory should be\n");
    Files before = w.Project();
    before["store.pj.lock"] = "";
    ProgramRun r = w.Run({"-p", "store.pj"});
    EXPECT_EQ(r.out, Start("store.pj") +
                         "Error making backup. Probably directory write permissions: "
                         "in_use/shop.html.vlm: Not a directory\n" +
                         kNothingWritten);
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(w.Project(), before);

    // A listed page that exists but cannot be read.
    fs::remove(w.Path("proj/in_use"));
    fs::remove(w.Path("proj/shop.html"));
    fs::create_directories(w.Path("proj/shop.html"));
    r = w.Run({"-p", "store.pj"});
    EXPECT_EQ(r.out, Start("store.pj") + "Could not read shop.html: not a regular file\n" +
                         kNothingWritten);
    EXPECT_EQ(r.status, 1);
    before.erase("in_use");
    before["shop.html"] = "<dir>";
    EXPECT_EQ(w.Project(), before);

    // A project the user may not write: what would change is reported, and
    // every file keeps its content.
    fs::remove(w.Path("proj/shop.html"));
    w.Write("proj/shop.html", kPage);
    ASSERT_EQ(w.Run({"-p", "store.pj"}).status, 0);
    w.Write("other.cfg", "Test.CGI URL : http://other/cgi-bin\n");
    for (const char *dir : {"proj", "proj/in_use", "proj/velmoraBackstore"})
        fs::permissions(w.Path(dir), fs::perms::owner_write | fs::perms::group_write,
                        fs::perm_options::remove);
    before = w.Project();
    r = w.Run({"-p", "store.pj", "-c", w.Path("other.cfg")}, "proj", true);
    EXPECT_EQ(r.out, Start("store.pj", w.Path("other.cfg")) +
                         "Done Reading Project.\nCopy to backup directory failed.\n"
                         "Could not write file in VlProjWrite:store\n"
                         "Done Writing Project\nFinished\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(w.Project(), before);
    for (const char *dir : {"proj", "proj/in_use", "proj/velmoraBackstore"})
        fs::permissions(w.Path(dir), fs::perms::owner_write, fs::perm_options::add);
}

TEST(Safety, NothingOutsideTheProjectIsReadOrWritten) {
    E2eWorld w;
    Distribution(w);
    w.Write("outside.html", kPage);
    for (const std::string &page :
         {std::string("../outside.html"), std::string("in_use/../../outside.html"),
          w.Path("outside.html")}) {
        SCOPED_TRACE(page);
        w.Write("proj/x.pj", kProjectHead + "HTML Files :\n" + page + "\nProject Options :\n");
        ProgramRun r = w.Run({"-p", "x.pj"});
        EXPECT_EQ(r.out, Start("x.pj") + page +
                             " lies outside the project directory: it is not read\n" +
                             kNothingWritten);
        EXPECT_EQ(r.status, 1);
        EXPECT_EQ(w.Read("outside.html"), kPage);
        EXPECT_FALSE(fs::exists(w.Path("proj/x.c")));
    }

    // Symbolic links shipped in the project are replaced by the files the
    // run writes; what they point to stays as it was.
    fs::remove(w.Path("proj/x.pj"));
    PageProject(w, "Project.Allow Config File : True\nProject.Config File Name : store.cfg\n");
    const std::string project = w.Path("proj/store.pj");
    ASSERT_EQ(w.Run({"-p", project}).status, 0);
    const Files written = w.Project();
    // Each link, and the file of the first run whose content takes its place.
    const std::pair<std::string, std::string> links[] = {
        {"in_use/shop.html.vlm", "in_use/shop.html.vlm"},
        {"store.mak", "store.mak"},
        {"store.cfg", "store.cfg"},
        {"velmoraBackstore/shop.c", "shop.c"}};
    for (const auto &[link, content] : links) {
        const std::string target = w.Path("target-" + fs::path(link).filename().string());
        WriteText(target, "precious\n");
        fs::remove(w.Path("proj/" + link));
        fs::create_symlink(target, w.Path("proj/" + link));
    }
    ASSERT_EQ(w.Run({"-p", project}).status, 0);
    for (const auto &[link, content] : links) {
        SCOPED_TRACE(link);
        EXPECT_EQ(w.Read("target-" + fs::path(link).filename().string()), "precious\n");
        EXPECT_FALSE(fs::is_symlink(w.Path("proj/" + link)));
        EXPECT_EQ(w.Read("proj/" + link), written.at(content));
    }
}

// A page named "-l": every command gets it as "./-l", so the backup copies
// it (cp does not take it for its option to link) and holds the page as it
// was before the run.
TEST(Safety, NamesThatLookLikeOptionsReachCommandsAsPaths) {
    E2eWorld w;
    Distribution(w);
    w.Write("proj/x.pj", kProjectHead + "-l.c\nHTML Files :\n-l\nProject Options :\n");
    std::string page = kPage;
    page.replace(page.find("__Fshop_html"), 12, "__F_l");
    w.Write("proj/-l", page);
    w.Write("proj/-l.c", kModuleHead + "static char _Vl_HTML_Filename[] = \"-l\";\n" + kOrder +
                             "void R__l()\n{\n\n}/* Velmora End of Module */\n");
    ASSERT_EQ(w.Run({"-p", "x.pj"}).status, 0);
    const std::string first = w.Read("proj/-l");
    w.Write("other.cfg", "Test.CGI URL : http://other/cgi-bin\n");
    w.Scripts();
    ASSERT_EQ(w.Run({"-p", "x.pj", "-c", w.Path("other.cfg")}).status, 0);
    EXPECT_EQ(w.Read("proj/velmoraBackx/-l"), first);
    EXPECT_NE(w.Read("proj/-l"), first);
    struct stat st;
    ASSERT_EQ(stat(w.Path("proj/velmoraBackx/-l").c_str(), &st), 0);
    EXPECT_EQ(st.st_nlink, 1U);
    EXPECT_EQ(w.Scripts(), "vlreadprj.sh: [x.pj]\nvlreadhtml.sh: [./-l]\n"
                           "vlreadmodule.sh: [./-l.c]\nvlwritemodule.sh: [./-l.c]\n"
                           "vlwritehtml.sh: [./-l]\nvlwriteprj.sh: [x.pj]\n"
                           "vlinst.sh: [x.cgi] [./-l] [/cgi] [http://h/x] [/www/x] [x.mak] [CGI] "
                           "[ -l]\n");
}

// More names than one command line holds: the backup is split into as many
// copies as the system's limits need, and every file arrives.
TEST(Safety, ABackupOfThousandsOfPagesIsSplitToTheArgumentLimit) {
    E2eWorld w;
    Distribution(w);
    std::string project = kProjectHead + "HTML Files :\n";
    const int pages = 8000;
    for (int i = 0; i < pages; i++) {
        const std::string name = "a-page-with-a-rather-long-name-" + std::to_string(i) + ".html";
        w.Write("proj/" + name, "<p>" + std::to_string(i) + "</p>\n");
        project += name + "\n";
    }
    w.Write("proj/big.pj",
            project + "Project Options :\nProject.Call Read/Write Scripts : False\n");
    ASSERT_EQ(w.Run({"-p", "big.pj"}).status, 0);
    ProgramRun r = w.Run({"-p", "big.pj"});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out.find("Copy to backup directory failed."), std::string::npos);
    int copied = 0;
    for (const auto &entry : fs::directory_iterator(w.Path("proj/velmoraBackbig")))
        copied += entry.is_regular_file() ? 1 : 0;
    EXPECT_EQ(copied, pages + 2); // the pages, the main module and the project file
    EXPECT_EQ(w.Read("proj/velmoraBackbig/a-page-with-a-rather-long-name-7999.html"),
              "<p>7999</p>\n");
}

TEST(Safety, ASecondRunOnAProjectInUseEndsAtOnce) {
    E2eWorld w;
    Distribution(w);
    PageProject(w, "");
    const std::string project = w.Path("proj/store.pj");
    const int held = open((project + ".lock").c_str(), O_RDONLY | O_CREAT, 0644);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    const Files before = w.Project();
    ProgramRun r = w.Run({"-p", project});
    EXPECT_EQ(r.out, Start(project) + "Project " + project + " is in use by another run\n");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(w.Project(), before);
    close(held);
    EXPECT_EQ(w.Run({"-p", project}).status, 0);
}

} // namespace
