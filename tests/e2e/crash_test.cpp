// Runs that do not end well: killed (SIGKILL) at moments spread over their
// length, or on a file system that fills up. At every moment each page,
// module, the project file and the main module holds its old or its new
// content (so the user's code regions are never cut), and a normal run
// afterwards brings every file to its new content.
#include "e2e/harness.hpp"

#include <gtest/gtest.h>

#include <poll.h>
#include <signal.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using Files = std::map<std::string, std::string>;

// File i of the project: "p<i>" with the extension.
std::string File(int i, const char *extension) {
    return "p" + std::to_string(i) + extension;
}

// Writes the module of each page with stray text between its functions,
// which a run regenerates away, so that every run that finds it writes it.
void StrayModules(const E2eWorld &w, int pages) {
    for (int i = 0; i < pages; i++)
        w.Write(
            "proj/" + File(i, ".c"),
            kModuleHead + "static char _Vl_HTML_Filename[] = \"" + File(i, ".html") + "\";\n" +
                ModuleFunction("Forder", "\tint n = " + std::to_string(i) + ";\n", "", "\tn++;\n") +
                "/* stray text */\n" + ModuleFunction("Ahome", "", "", "") + "void R_p" +
                std::to_string(i) + "_html()\n{\n\n}/* Velmora End of Module */\n");
}

// A project of pages of about pageBytes, each with a form and an anchor that
// its module serves, and the two configurations a.cfg and b.cfg, which give
// every page, the project file and the main module other URLs.
void Generate(const E2eWorld &w, int pages, size_t pageBytes) {
    std::string project = kProjectHead, pageList;
    for (int i = 0; i < pages; i++) {
        std::string page = kPage;
        for (size_t at; (at = page.find("shop_html")) != std::string::npos;)
            page.replace(at, 9, "p" + std::to_string(i) + "_html");
        page.insert(page.size() - 15, std::string(pageBytes, 'x') + "\n");
        w.Write("proj/" + File(i, ".html"), page);
        project += File(i, ".c") + "\n";
        pageList += File(i, ".html") + "\n";
    }
    StrayModules(w, pages);
    w.Write("proj/store.pj", project + "HTML Files :\n" + pageList +
                                 "Project Options :\nProject.Call Read/Write Scripts : False\n");
    for (const char *c : {"a", "b"})
        w.Write(std::string(c) + ".cfg", std::string("Test.CGI URL : http://") + c +
                                             "/cgi-bin\nTest.HTML URL : http://" + c + "/html\n");
}

Files ProjectFiles(const E2eWorld &w, int pages) {
    Files files = {{"store.pj", w.Read("proj/store.pj")}, {"store.c", w.Read("proj/store.c")}};
    for (int i = 0; i < pages; i++)
        for (const char *extension : {".html", ".c"})
            files[File(i, extension)] = w.Read("proj/" + File(i, extension));
    return files;
}

// The files that hold neither their old nor their new content (given the
// same files twice: the files that do not hold their new content).
std::vector<std::string> NeitherOldNorNew(const Files &now, const Files &old, const Files &wanted) {
    std::vector<std::string> wrong;
    for (const auto &[name, text] : now)
        if (text != old.at(name) && text != wanted.at(name)) wrong.push_back(name);
    return wrong;
}

ProgramRun RunWith(const E2eWorld &w, const char *config,
                   const std::function<void(pid_t)> &whileRunning = {}) {
    return w.Run({"-p", "store.pj", "-c", w.Path(std::string(config) + ".cfg")}, "proj", false,
                 whileRunning);
}

// Every write of a run ends with a rename into the project directory or
// in_use. This counts them as they happen and kills the run (SIGKILL) right
// after the given number; it lets the run end when the number is negative.
class Renames {
  public:
    explicit Renames(const E2eWorld &w) : fd_(inotify_init1(IN_CLOEXEC)) {
        for (const char *dir : {"proj", "proj/in_use"})
            inotify_add_watch(fd_, w.Path(dir).c_str(), IN_MOVED_TO);
    }
    ~Renames() { close(fd_); }

    // The renames seen until the run ended or was killed.
    int Watch(pid_t pid, int killAfter) {
        int seen = 0;
        alignas(inotify_event) char events[1 << 16];
        for (;;) {
            if (killAfter >= 0 && seen >= killAfter) {
                kill(pid, SIGKILL);
                return seen;
            }
            pollfd ready = {fd_, POLLIN, 0};
            if (poll(&ready, 1, 5) > 0) {
                const ssize_t n = read(fd_, events, sizeof events);
                for (ssize_t at = 0; at < n;
                     at += static_cast<ssize_t>(sizeof(inotify_event)) +
                           reinterpret_cast<inotify_event *>(events + at)->len)
                    seen++;
                continue;
            }
            // Ended (and left for the runner to collect)?
            siginfo_t info = {};
            if (waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
                info.si_pid == pid)
                return seen;
        }
    }

  private:
    int fd_;
};

TEST(Crash, EveryFileIsOldOrNewWhereverARunIsKilled) {
    E2eWorld w;
    Distribution(w);
    const int pages = 300;
    Generate(w, pages, 4000);
    ASSERT_EQ(RunWith(w, "a").status, 0);
    ASSERT_EQ(RunWith(w, "b").status, 0);
    const Files newB = ProjectFiles(w, pages);
    // A run that writes every file, as each run below does: its renames counted.
    Renames renames(w);
    StrayModules(w, pages);
    int length = 0;
    ASSERT_EQ(RunWith(w, "a", [&](pid_t pid) { length = renames.Watch(pid, -1); }).status, 0);
    ASSERT_GT(length, 3 * pages);
    const Files newA = ProjectFiles(w, pages);

    // Moments from the start to nine tenths of the run's writes.
    const int moments = 36;
    int killed = 0;
    for (int k = 0; k < moments; k++) {
        const int moment = length * 9 / 10 * k / (moments - 1);
        SCOPED_TRACE("killed after " + std::to_string(moment) + " renames");
        const char *config = k % 2 == 0 ? "b" : "a";
        const Files &wanted = k % 2 == 0 ? newB : newA;
        StrayModules(w, pages);
        const Files old = ProjectFiles(w, pages);
        const ProgramRun r = RunWith(w, config, [&](pid_t pid) { renames.Watch(pid, moment); });
        killed += r.status == -1 ? 1 : 0;
        EXPECT_EQ(NeitherOldNorNew(ProjectFiles(w, pages), old, wanted),
                  std::vector<std::string>{});
        ASSERT_EQ(RunWith(w, config).status, 0);
        EXPECT_EQ(NeitherOldNorNew(ProjectFiles(w, pages), wanted, wanted),
                  std::vector<std::string>{});
    }
    EXPECT_GE(killed, 30);
}

// The project on a small file system of its own (mounting one needs root,
// as in CI) that has room left for small files but not for a page.
TEST(Crash, AFullDiskEndsWithStatusOneAndEveryFileOldOrNew) {
    E2eWorld w;
    Distribution(w);
    const std::string dir = w.Path("proj");
    if (mount("tmpfs", dir.c_str(), "tmpfs", 0, "size=4m") != 0)
        GTEST_SKIP() << "the disk-full test needs a small file system, and mounting one failed: "
                     << std::strerror(errno);
    struct Unmount {
        std::string dir;
        ~Unmount() { umount2(dir.c_str(), MNT_DETACH); }
    } unmount{dir};
    const int pages = 40;
    Generate(w, pages, 20000);
    for (const char *config : {"a", "b", "a"})
        ASSERT_EQ(RunWith(w, config).status, 0);
    const Files newA = ProjectFiles(w, pages);
    ASSERT_EQ(RunWith(w, "b").status, 0);
    StrayModules(w, pages);
    const Files old = ProjectFiles(w, pages);

    struct statvfs stats;
    ASSERT_EQ(statvfs(dir.c_str(), &stats), 0);
    const size_t room = 12 * 1024, free = stats.f_bavail * stats.f_frsize;
    ASSERT_GT(free, room);
    w.Write("proj/filler", std::string(free - room, '\0'));
    ProgramRun r = RunWith(w, "a");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.out.find(".html.vlm: No space left on device\n"), std::string::npos) << r.out;
    const Files now = ProjectFiles(w, pages);
    EXPECT_EQ(NeitherOldNorNew(now, old, newA), std::vector<std::string>{});
    EXPECT_NE(NeitherOldNorNew(now, old, old), std::vector<std::string>{}); // the modules fit

    fs::remove(w.Path("proj/filler"));
    ASSERT_EQ(RunWith(w, "a").status, 0);
    EXPECT_EQ(NeitherOldNorNew(ProjectFiles(w, pages), newA, newA), std::vector<std::string>{});
}

} // namespace
