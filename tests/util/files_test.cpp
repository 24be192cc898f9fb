// Whole-file I/O, existence tests, line ends and the field splitter.
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

Strings Split(const char *text, const char *delim, const char *quotes) {
    return TakeList(VlParseFileString(text, delim, quotes));
}

TEST(Files, ReadAndWriteWholeFiles) {
    TempDir dir;
    std::string path = dir.Write("a.txt", std::string("line\r\nnul\0in", 12));
    struct stat st;
    ASSERT_EQ(stat(path.c_str(), &st), 0);
    time_t when = 0;
    char *text = VlReadFileAndMod(path.c_str(), &when);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::string(text, 13), std::string("line\r\nnul\0in\0", 13));
    EXPECT_EQ(when, st.st_mtime);
    free(text);
    EXPECT_EQ(VlReadFileAndMod(dir.Path().c_str(), &when), nullptr); // a directory

    EXPECT_EQ(VlWriteStrToFile(path.c_str(), "second"), 0); // truncates
    EXPECT_EQ(dir.Read("a.txt"), "second");
    EXPECT_EQ(VlWriteStrToFile(dir.File("no/such/dir").c_str(), "x"), 1);
}

TEST(Files, ExistenceTestsAndDirectories) {
    TempDir dir;
    std::string file = dir.Write("f", "x");
    EXPECT_EQ(VlFileExists(dir.Path().c_str()), 0);
    EXPECT_EQ(VlDirExists((dir.Path() + "\\").c_str()), 1);
    EXPECT_EQ(VlDirExists((file + "/").c_str()), 0);
    // mkdir goes through the shell: names with blanks and quotes arrive whole
    // and a name never runs as a command.
    std::string odd = dir.File("a b/it's;touch pwned/c");
    EXPECT_EQ(VlMkdir(odd.c_str()), 0);
    EXPECT_EQ(VlDirExists(odd.c_str()), 1);
    EXPECT_FALSE(VlFileExists("pwned"));
    ScopedCwd cwd(dir.Path());
    EXPECT_EQ(Take(VlGetCurrentDir()), fs::canonical(dir.Path()).string());
}

TEST(Files, LineEndConversion) {
    EXPECT_EQ(Take(VlUnixToDos("\na\r\nb\n")), "\r\na\r\nb\r\n");
    EXPECT_EQ(Take(VlDosToUnix("a\rb\r\n")), "ab\n");
    char path[] = "c:\\dir\\file.html";
    VlDosToUnixSlashes(path);
    EXPECT_STREQ(path, "c:/dir/file.html");
}

TEST(Files, Split) {
    EXPECT_EQ(Split("a\n\nb\n", "\n", nullptr), (Strings{"a", "", "b"}));
    EXPECT_EQ(Split("", "\n", nullptr), (Strings{""}));
    // Only the first character of the delimiters counts.
    EXPECT_EQ(Split("a;b,c", ",;", ""), (Strings{"a;b", "c"}));
    EXPECT_EQ(Split("x,\"a,b\",\"say \"\"hi\"\"\"", ",", "\""),
              (Strings{"x", "a,b", "say \"hi\""}));
    // Quotes may open in the middle of a field; an unclosed quote runs to the end.
    EXPECT_EQ(Split("ab'c,d'e,'f,g", ",", "'"), (Strings{"abc,de", "f,g"}));
    // An empty field is dropped at the end, kept before a delimiter.
    EXPECT_EQ(Split("'',x,''", ",", "'"), (Strings{"", "x"}));
    // Newlines that are not the delimiter become blanks, inside quotes too.
    EXPECT_EQ(Split("'a\nb',c\n", ",", "'"), (Strings{"a b", "c "}));
}

} // namespace
