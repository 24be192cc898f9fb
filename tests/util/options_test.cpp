// Option lines: the exact " : " match, replacement in place, positional name
// cut of appended lines, and the file and text readers.
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/options.h"

#include <gtest/gtest.h>

namespace {

TEST(Options, LookupTakesTheFirstExactMatch) {
    SutList *l = MakeList(
        {"bad line", nullptr, "AB : 1", "A: x", "A : 2 : with colon \r", "A : 3", "B :", "C : "});
    int i = -1;
    EXPECT_EQ(Take(VlGetOption(l, "A", &i)), "2 : with colon \r");
    EXPECT_EQ(i, 4);
    EXPECT_EQ(VlGetOption(l, "Z", &i), nullptr);
    EXPECT_EQ(i, 4);                              // not written when nothing matches
    EXPECT_EQ(VlGetOptionValue(l, "B"), nullptr); // shorter than "B : "
    EXPECT_EQ(Take(VlGetOptionValue(l, "C")), "");
    EXPECT_EQ(VlDeleteOptions(l, "A"), 1);
    EXPECT_EQ(Take(VlGetOptionValue(l, "A")), "3");
    SutDestroyList(l);

    l = MakeList({"A :   x y \r", "Project.CGI URL : /cgi-bin/x "});
    EXPECT_EQ(Take(VlGetStrippedOptionValue(l, "A")), "x y");
    EXPECT_EQ(Take(VlGetStrippedOptionValueByCat(l, "Project.", "CGI URL")), "/cgi-bin/x");
    SutDestroyList(l);
}

TEST(Options, NamesAndLineMaking) {
    EXPECT_EQ(VlValidOptionName("App Server.Host name"), 1);
    EXPECT_EQ(VlValidOptionName("a:b"), 0);
    EXPECT_EQ(Take(VlMakeOptionString(" Name\t", " v \r")), "Name :  v \r");
    EXPECT_EQ(VlMakeOptionString("a|b", "v"), nullptr);
    EXPECT_EQ(VlMakeOptionString(" \t", "v"), nullptr);
}

TEST(Options, AppendReplacesInPlaceOrAppendsAtTheEnd) {
    SutList *l = MakeList({"X : 0", "A : 1", "Y : 2"});
    char *line = strdup("A : 3");
    EXPECT_EQ(VlAppendOption(l, line), l);
    EXPECT_EQ(SutGetNList(l, 1), line); // the line itself is stored
    VlAppendOption(l, strdup("New : v"));
    // The name is cut one character before the colon: "Y: z" looks up "" and
    // "Cat.Name: x" looks up "Cat.Nam", so both are appended as new lines.
    VlAppendOption(l, strdup("Y: z"));
    SutAddList(l, strdup("Cat.Name : 1"));
    VlAppendOption(l, strdup("Cat.Name: x"));
    VlAppendOption(l, strdup("Cat.Name : 2"));
    EXPECT_EQ(Items(l), (Strings{"X : 0", "A : 3", "Y : 2", "New : v", "Y: z", "Cat.Name : 2",
                                 "Cat.Name: x"}));
    // Lines without a colon, or with nothing before it, stay the caller's.
    char noColon[] = "no colon";
    char leading[] = ": x";
    EXPECT_EQ(VlAppendOption(l, noColon), l);
    EXPECT_EQ(VlAppendOption(l, leading), l);
    EXPECT_EQ(SutSizList(l), 7);
    SutDestroyList(l);
    EXPECT_EQ(TakeList(VlAppendOption(nullptr, noColon)), Strings{}); // an empty list

    l = VlAppendOptionNameValue(nullptr, " Test.Port ", "80");
    VlAppendOptionNameValue(l, "Test.Port", "81");
    VlAppendOptionNameValue(l, "bad:name", "1");
    const char *shared = "Test.Port : 82";
    EXPECT_EQ(VlVaOptionsMerge(l, shared, (char *)nullptr), l); // merging appends copies
    EXPECT_EQ(Items(l), (Strings{"Test.Port : 81", "Test.Port : 82"}));
    EXPECT_NE(SutGetNList(l, 1), shared);
    SutDestroyList(l);
}

// Merging a configuration goes through an index of the names; the result is
// that of appending the lines one by one, the positional name cut included:
// a "Cat.Name: x" line takes the place of the first "Cat.Nam : ..." line and
// then answers to no name, so the next one goes to the second.
TEST(Options, MergingLinesEqualsAppendingThemOneByOne) {
    const std::initializer_list<const char *> project = {
        "Cat.Nam : 1", "bad", "A : 1", "Cat.Nam : 2", "A : B : C", "A : 2", " : x"};
    SutList *lines = MakeList({"Cat.Name: x", "A : 3", "no colon", ": y", "Cat.Name: y",
                               "Cat.Nam : 3", "New : 1", "New : 2", "A : B : D", " : z"});
    EXPECT_EQ(TakeList(VlMergeOptionLines(MakeList(project), lines)),
              (Strings{"Cat.Name: x", "bad", "A : B : D", "Cat.Name: y", "A : B : C", "A : 2",
                       " : x", "Cat.Nam : 3", "New : 2", " : z"}));
    EXPECT_EQ(
        TakeList(VlMergeOptionLines(nullptr, lines)),
        (Strings{"Cat.Name: x", "A : B : D", "Cat.Name: y", "Cat.Nam : 3", "New : 2", " : z"}));
    SutDestroyList(lines);
}

TEST(Options, ReadersKeepLinesVerbatimAndDropLinesWithoutColon) {
    TempDir dir;
    // No comments, no continuation; carriage returns and blanks stay.
    std::string path = dir.Write("dos.cfg", "# note : kept\r\n\nB\n  Indented : x \\\r\nnext\r\n");
    EXPECT_EQ(TakeList(VlOptionGetFromFile(path.c_str())),
              (Strings{"# note : kept\r", "  Indented : x \\\r"}));
    // An unreadable file gives an empty list, never null.
    EXPECT_EQ(TakeList(VlOptionGetFromFile(dir.Path().c_str())), Strings{});
}

} // namespace
