// Files written whole (a temporary file and rename: the mode kept, a symbolic
// link replaced, unchanged bytes left alone, failures by kind), the reader
// that refuses a file it cannot read whole, and the test of paths inside the
// working directory.
#include "support/capture.hpp"
#include "support/temp_dir.hpp"
#include "util/runstate.h"
#include "util/safefile.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utime.h>

#include <cerrno>
#include <iterator>

namespace {

TEST(SafeFile, WritesReplaceWholeFilesAndLeaveUnchangedOnesAlone) {
    TempDir dir;
    ScopedCwd cwd(dir.Path());
    WriteText("a", "old");
    chmod("a", 0640);
    struct utimbuf long_ago = {1000000000, 1000000000};
    utime("a", &long_ago);
    EXPECT_EQ(VlWriteFileSafely("a", "old", 3), VL_WRITE_SAME);
    struct stat st;
    ASSERT_EQ(stat("a", &st), 0);
    EXPECT_EQ(st.st_mtime, 1000000000);
    EXPECT_EQ(VlWriteFileSafely("a", "new\0bytes", 9), VL_WRITE_DONE);
    EXPECT_EQ(ReadText("a"), std::string("new\0bytes", 9));
    ASSERT_EQ(stat("a", &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0640U);

    // In pieces: the same rules once the stream ends.
    for (int outcome : {VL_WRITE_DONE, VL_WRITE_SAME}) {
        FILE *f = VlOpenSafely("b");
        ASSERT_NE(f, nullptr);
        fputs("first ", f);
        fputs("second", f);
        EXPECT_EQ(VlCloseSafely(f), outcome);
    }
    EXPECT_EQ(ReadText("b"), "first second");

    // A symbolic link is replaced; what it points to stays.
    WriteText("target", "precious");
    fs::create_symlink("target", "link");
    EXPECT_EQ(VlWriteFileSafely("link", "x", 1), VL_WRITE_DONE);
    EXPECT_EQ(ReadText("target"), "precious");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status("link")));

    // Where fopen could not open the file, nothing is made; the run notes it.
    VlResetRunState();
    fs::create_directory("d");
    EXPECT_EQ(VlWriteFileSafely("d", "x", 1), VL_WRITE_NOT_OPENED);
    EXPECT_EQ(errno, EISDIR);
    EXPECT_EQ(VlOpenSafely("no/such/file"), nullptr);
    EXPECT_EQ(VlAnyWriteFailed(), 1);
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlCloseSafely(stdout), VL_WRITE_FAILED); }),
              "Could not write (a stream not opened safely): Bad file descriptor\n");
    // No temporary file is left behind.
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 5);
    VlResetRunState();
}

TEST(SafeFile, TheReaderRefusesAFileItCannotReadWhole) {
    TempDir dir;
    ScopedCwd cwd(dir.Path());
    VlResetRunState();
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlReadFileWhole("missing", nullptr), nullptr); }), "");
    EXPECT_EQ(VlWritesRefused(), 0);
    WriteText("page", std::string("ab\0c", 4));
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlReadFileWhole("page", nullptr), nullptr); }),
              "page holds a NUL byte at offset 2: it is not read\n");
    EXPECT_EQ(VlWritesRefused(), 1);
    VlResetRunState();
    EXPECT_EQ(Printed([&] { EXPECT_EQ(VlReadFileWhole(dir.Path().c_str(), nullptr), nullptr); }),
              "Could not read " + dir.Path() + ": not a regular file\n");
    EXPECT_EQ(VlWritesRefused(), 1);
    VlResetRunState();
}

TEST(SafeFile, PathsInsideTheWorkingDirectory) {
    TempDir dir;
    fs::create_directories(dir.File("project/sub"));
    fs::create_symlink("/", dir.File("project/root"));
    ScopedCwd cwd(dir.File("project"));
    for (const char *inside : {"a.html", "sub/a.html", "new/../a.html", "sub/../sub/a"})
        EXPECT_EQ(VlPathInsideWorkingDir(inside), 1) << inside;
    EXPECT_EQ(VlPathInsideWorkingDir(dir.File("project/sub/a").c_str()), 1);
    for (const char *outside : {"../a.html", "new/../../a.html", "root/a.html", "/etc/x", ""})
        EXPECT_EQ(VlPathInsideWorkingDir(outside), 0) << outside;
    EXPECT_EQ(VlPathInsideWorkingDir(nullptr), 0);
}

} // namespace
