// Child processes: blocking runs keep the command's output off our standard
// output and hand back system's status; capture streams and their table;
// shell quoting.
#include "support/capture.hpp"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/process.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string readAll(FILE *f) {
    std::string out;
    int c;
    while ((c = fgetc(f)) != EOF)
        out += static_cast<char>(c);
    return out;
}

TEST(Process, LaunchAndBlockCapturesOutputAndReturnsTheRawStatus) {
    TempDir dir;
    std::string out = printed([&] {
        printf("before ");
        // Our own pending output goes first: it was flushed before the run.
        EXPECT_EQ(VlLaunchAndBlock("echo out; echo err >&2"), 0);
        int status = VlLaunchAndBlock(("echo x > " + dir.file("made") + "; exit 3").c_str());
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 3);
        EXPECT_EQ(status, 3 << 8); // unchanged, not decoded
        printf("after");
    });
    EXPECT_EQ(out, "before after");
    EXPECT_EQ(dir.read("made"), "x\n");
    EXPECT_EQ(VlLaunchAndBlock(nullptr), 0);
}

TEST(Process, LaunchAndBlockRemovesItsTemporaryFile) {
    TempDir dir;
    std::string tmp = dir.file("tmp");
    ASSERT_EQ(mkdir(tmp.c_str(), 0700), 0);
    ScopedEnv tmpdir("TMPDIR", tmp.c_str());
    // The command sees its capture file while it runs.
    EXPECT_EQ(VlLaunchAndBlock(("ls " + tmp + " | grep -c vlnogui > " + dir.file("seen")).c_str()),
              0);
    EXPECT_EQ(dir.read("seen"), "1\n");
    EXPECT_TRUE(fs::is_empty(tmp));
}

TEST(Process, CaptureStreamsCarryBothOutputsInOrder) {
    FILE *f = VlExecCaptureOutAndErr("echo one; echo two >&2; echo three; exit 5");
    ASSERT_NE(f, nullptr);
    FILE *g = VlExecCaptureOutAndErr("echo second stream");
    ASSERT_NE(g, nullptr);
    EXPECT_EQ(readAll(f), "one\ntwo\nthree\n");
    int status = Vlpclose(f);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_EQ(readAll(g), "second stream\n");
    EXPECT_EQ(Vlpclose(g), 0);

    // A stream the table does not know, and null, give -1.
    FILE *other = tmpfile();
    EXPECT_EQ(Vlpclose(other), -1);
    fclose(other);
    EXPECT_EQ(Vlpclose(nullptr), -1);
    EXPECT_EQ(VlExecCaptureOutAndErr(nullptr), nullptr);

    f = VlExecCaptureOutAndErr("exec /no/such/program");
    ASSERT_NE(f, nullptr);
    readAll(f);
    EXPECT_EQ(WEXITSTATUS(Vlpclose(f)), 127);
}

TEST(Process, LaterCaptureChildrenDoNotHoldEarlierStreams) {
    FILE *first = VlExecCaptureOutAndErr("sleep 0.2; echo a");
    ASSERT_NE(first, nullptr);
    std::string probe = "test -e /proc/$$/fd/" + std::to_string(fileno(first)) +
                        " && echo inherited || echo closed";
    FILE *second = VlExecCaptureOutAndErr(probe.c_str());
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(readAll(second), "closed\n");
    EXPECT_EQ(Vlpclose(second), 0);
    EXPECT_EQ(readAll(first), "a\n");
    EXPECT_EQ(Vlpclose(first), 0);
}

TEST(Process, ReadFromStdInClosesAtEndOfInput) {
    FILE *f = VlExecCaptureOutAndErr("printf abc");
    ASSERT_NE(f, nullptr);
    int fd = fileno(f);
    pollfd p{fd, POLLIN, 0};
    // Wait until the child has finished writing and closed its end.
    for (int i = 0; i < 500 && !(p.revents & POLLHUP); i++) {
        usleep(10000); // the data alone makes poll return at once
        ASSERT_GE(poll(&p, 1, 0), 0);
    }
    ASSERT_TRUE(p.revents & POLLHUP);
    unsigned long id = 0;
    ReadFromStdIn(f, &fd, &id);
    errno = 0;
    EXPECT_EQ(fcntl(fd, F_GETFD), -1); // the stream was closed with Vlpclose
    EXPECT_EQ(errno, EBADF);
    ReadFromStdIn(nullptr, &fd, &id);
}

TEST(Process, ReadFromStdInReturnsWhenNothingIsWaiting) {
    FILE *f = VlExecCaptureOutAndErr("sleep 0.2; echo got");
    ASSERT_NE(f, nullptr);
    int fd = fileno(f);
    unsigned long id = 0;
    ReadFromStdIn(f, &fd, &id); // would block: returns at once, stream stays open
    EXPECT_NE(fcntl(fd, F_GETFL) & O_NONBLOCK, 0);
    clr_fl(fd, O_NONBLOCK);
    EXPECT_EQ(fcntl(fd, F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(readAll(f), "got\n");
    EXPECT_EQ(Vlpclose(f), 0);
}

TEST(Process, FlagsOnBadDescriptorsReportToStandardError) {
    EXPECT_EQ(printedToStderr([&] {
                  set_fl(-1, O_NONBLOCK);
                  clr_fl(-1, O_NONBLOCK);
              }),
              "fcntl F_GETFL errorfcntl F_GETFL error");
}

TEST(Process, BackgroundLaunchStartsTheCommandAndReturnsTheNullRegistration) {
    EXPECT_EQ(VlLaunch(nullptr), 0u);
    TempDir dir;
    std::string made = dir.file("made");
    // Without a toolkit the input registration is the null handle 0.
    EXPECT_EQ(VlLaunch(("echo started > " + made + ".tmp && mv " + made + ".tmp " + made).c_str()),
              0u);
    for (int i = 0; i < 500 && !fs::exists(made); i++)
        usleep(10000);
    EXPECT_EQ(dir.read("made"), "started\n");
}

TEST(Process, ShellQuoting) {
    EXPECT_EQ(take(VlShellQuote("/a/b-c_d.e+f,g:h@i%j=k")), "/a/b-c_d.e+f,g:h@i%j=k");
    EXPECT_EQ(take(VlShellQuote("a b")), "'a b'");
    EXPECT_EQ(take(VlShellQuote("it's")), "'it'\\''s'");
    EXPECT_EQ(take(VlShellQuote("")), "''");
    EXPECT_EQ(take(VlShellQuote(nullptr)), "''");
    EXPECT_EQ(take(VlShellQuote("~x")), "'~x'");

    EXPECT_EQ(take(VlShellEscapeInDoubleQuotes("a $b `c` \"d\" \\e 'f'")),
              "a \\$b \\`c\\` \\\"d\\\" \\\\e 'f'");
    EXPECT_EQ(take(VlShellEscapeInDoubleQuotes(nullptr)), "");

    // What the shell makes of them: the original text, as one word.
    TempDir dir;
    const char *nasty = "it's \"$HOME\" `id` \\ ; * \n end";
    std::string cmd = "printf %s " + *take(VlShellQuote(nasty)) + " > " + dir.file("q") +
                      "; printf %s \"" + *take(VlShellEscapeInDoubleQuotes(nasty)) + "\" > " +
                      dir.file("d");
    EXPECT_EQ(VlLaunchAndBlock(cmd.c_str()), 0);
    EXPECT_EQ(dir.read("q"), nasty);
    EXPECT_EQ(dir.read("d"), nasty);
}

} // namespace
