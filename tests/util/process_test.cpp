// Child processes: blocking runs keep the command's output off our standard
// output and hand back system's status; capture streams and their table;
// shell quoting.
#include "support/capture.hpp"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/process.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string ReadAll(FILE *f) {
    std::string out;
    int c;
    while ((c = fgetc(f)) != EOF)
        out += static_cast<char>(c);
    return out;
}

TEST(Process, LaunchAndBlockCapturesOutputAndReturnsTheRawStatus) {
    TempDir dir;
    std::string tmp = dir.File("tmp");
    ASSERT_EQ(mkdir(tmp.c_str(), 0700), 0);
    ScopedEnv tmpdir("TMPDIR", tmp.c_str());
    std::string out = Printed([&] {
        printf("before ");
        // Our own pending output goes first: it was flushed before the run.
        EXPECT_EQ(VlLaunchAndBlock("echo out; echo err >&2"), 0);
        // The command sees its capture file while it runs.
        int status =
            VlLaunchAndBlock(("ls " + tmp + " > " + dir.File("seen") + "; exit 3").c_str());
        EXPECT_EQ(status, 3 << 8); // unchanged, not decoded
        printf("after");
    });
    EXPECT_EQ(out, "before after");
    EXPECT_EQ(dir.Read("seen").substr(0, 7), "vlnogui");
    EXPECT_TRUE(fs::is_empty(tmp)); // and it is gone afterwards
}

TEST(Process, CaptureStreamsCarryBothOutputsInOrder) {
    FILE *f = VlExecCaptureOutAndErr("echo one; echo two >&2; echo three; exit 5");
    ASSERT_NE(f, nullptr);
    // A later capture child does not hold the earlier stream open.
    std::string probe =
        "test -e /proc/$$/fd/" + std::to_string(fileno(f)) + " && echo inherited || echo closed";
    FILE *g = VlExecCaptureOutAndErr(probe.c_str());
    ASSERT_NE(g, nullptr);
    EXPECT_EQ(ReadAll(f), "one\ntwo\nthree\n");
    EXPECT_EQ(WEXITSTATUS(Vlpclose(f)), 5);
    EXPECT_EQ(ReadAll(g), "closed\n");
    EXPECT_EQ(Vlpclose(g), 0);
}

TEST(Process, ShellQuoting) {
    EXPECT_EQ(Take(VlShellQuote("/a/b-c_d.e+f,g:h@i%j=k")), "/a/b-c_d.e+f,g:h@i%j=k");
    EXPECT_EQ(Take(VlShellQuote("a;b")), "'a;b'");
    EXPECT_EQ(Take(VlShellQuote("it's")), "'it'\\''s'");
    EXPECT_EQ(Take(VlShellQuote(nullptr)), "''");
    // A name that begins with "-" is a path to the command, never an option.
    EXPECT_EQ(Take(VlShellQuoteName("-l")), "./-l");
    EXPECT_EQ(Take(VlShellQuoteName("-a b")), "'./-a b'");
    EXPECT_EQ(Take(VlShellQuoteName("a-b")), "a-b");
    EXPECT_EQ(Take(VlShellQuote("-l")), "-l");
    EXPECT_EQ(Take(VlShellEscapeInDoubleQuotes("a $b `c` \"d\" \\e 'f'")),
              "a \\$b \\`c\\` \\\"d\\\" \\\\e 'f'");

    // What the shell makes of them: the original text, as one word.
    TempDir dir;
    const char *nasty = "it's \"$HOME\" `id` \\ ; * \n end";
    std::string cmd = "printf %s " + *Take(VlShellQuote(nasty)) + " > " + dir.File("q") +
                      "; printf %s \"" + *Take(VlShellEscapeInDoubleQuotes(nasty)) + "\" > " +
                      dir.File("d");
    EXPECT_EQ(VlLaunchAndBlock(cmd.c_str()), 0);
    EXPECT_EQ(dir.Read("q"), nasty);
    EXPECT_EQ(dir.Read("d"), nasty);
}

} // namespace
