// Option lines: the exact " : " match, replacement in place, positional name
// cut of appended lines, and the file and text readers.
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"
#include "util/options.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(Options, LookupTakesTheFirstExactMatch) {
    SutList *l = makeList({"A : 1", "A : 2"});
    int i = -1;
    EXPECT_EQ(take(VlGetOption(l, "A", &i)), "1");
    EXPECT_EQ(i, 0);
    EXPECT_EQ(VlDeleteOptions(l, "A"), 1);
    EXPECT_EQ(items(l), (Strings{"A : 2"}));
    EXPECT_EQ(VlDeleteOptions(l, "B"), 0);
    SutDestroyList(l);

    l = makeList({"bad line", nullptr, "AB : 1", "A: x", "A : 2 : with colon \r"});
    i = -1;
    EXPECT_EQ(take(VlGetOption(l, "A", &i)), "2 : with colon \r");
    EXPECT_EQ(i, 4);
    EXPECT_EQ(take(VlGetOptionValue(l, "AB")), "1");
    i = -1;
    EXPECT_EQ(VlGetOption(l, "Z", &i), nullptr);
    EXPECT_EQ(i, -1); // not written when nothing matches
    EXPECT_EQ(VlGetOption(l, "", &i), nullptr);
    EXPECT_EQ(VlGetOption(nullptr, "A", &i), nullptr);
    EXPECT_EQ(i, -1);
    SutDestroyList(l);

    l = makeList({"A :", "B : "});
    EXPECT_EQ(VlGetOptionValue(l, "A"), nullptr); // shorter than "A : "
    EXPECT_EQ(take(VlGetOptionValue(l, "B")), "");
    SutDestroyList(l);
}

TEST(Options, StrippedValuesAndCategories) {
    SutList *l = makeList({"A :   x y \r", "B :  \t ", "Project.CGI URL : /cgi-bin/x "});
    EXPECT_EQ(take(VlGetStrippedOptionValue(l, "A")), "x y");
    EXPECT_EQ(take(VlGetStrippedOptionValue(l, "B")), "");
    EXPECT_EQ(VlGetStrippedOptionValue(l, "C"), nullptr);
    EXPECT_EQ(take(VlGetStrippedOptionValueByCat(l, "Project.", "CGI URL")), "/cgi-bin/x");
    EXPECT_EQ(VlGetStrippedOptionValueByCat(l, "Test.", "CGI URL"), nullptr);
    EXPECT_EQ(VlGetStrippedOptionValueByCat(l, nullptr, "CGI URL"), nullptr);
    SutDestroyList(l);
}

TEST(Options, NamesAndLineMaking) {
    EXPECT_EQ(VlValidOptionName("App Server.Host name"), 1);
    EXPECT_EQ(VlValidOptionName("a:b"), 0);
    EXPECT_EQ(VlValidOptionName(""), 0);

    EXPECT_EQ(take(VlMakeOptionString(" Name\t", "v")), "Name : v");
    EXPECT_EQ(take(VlMakeOptionString("Name\n", " v \r")), "Name :  v \r");
    EXPECT_EQ(take(VlMakeOptionString("N", "")), "N : ");
    EXPECT_EQ(VlMakeOptionString("a|b", "v"), nullptr);
    EXPECT_EQ(VlMakeOptionString(" \t", "v"), nullptr);
    EXPECT_EQ(VlMakeOptionString("N", nullptr), nullptr);
}

TEST(Options, AppendReplacesInPlaceOrAppendsAtTheEnd) {
    SutList *l = makeList({"X : 0", "A : 1", "Y : 2"});
    char *line = strdup("A : 3");
    EXPECT_EQ(VlAppendOption(l, line), l);
    EXPECT_EQ(items(l), (Strings{"X : 0", "A : 3", "Y : 2"}));
    EXPECT_EQ(SutGetNList(l, 1), line); // the line itself is stored
    VlAppendOption(l, strdup("New : v"));
    EXPECT_EQ(items(l), (Strings{"X : 0", "A : 3", "Y : 2", "New : v"}));

    // The name is cut one character before the colon: "Y: z" looks up "" and
    // "Cat.Name: x" looks up "Cat.Nam", so both are appended as new lines.
    VlAppendOption(l, strdup("Y: z"));
    SutAddList(l, strdup("Cat.Name : 1"));
    VlAppendOption(l, strdup("Cat.Name: x"));
    EXPECT_EQ(items(l), (Strings{"X : 0", "A : 3", "Y : 2", "New : v", "Y: z", "Cat.Name : 1",
                                 "Cat.Name: x"}));
    // A well-formed line finds the first line of its full name.
    VlAppendOption(l, strdup("Cat.Name : 2"));
    EXPECT_EQ(items(l)[5], "Cat.Name : 2");

    // Lines without a colon, or with nothing before it, stay the caller's.
    char noColon[] = "no colon";
    char leading[] = ": x";
    int before = SutSizList(l);
    EXPECT_EQ(VlAppendOption(l, noColon), l);
    EXPECT_EQ(VlAppendOption(l, leading), l);
    EXPECT_EQ(VlAppendOption(l, nullptr), l);
    EXPECT_EQ(SutSizList(l), before);
    EXPECT_STREQ(noColon, "no colon");
    SutDestroyList(l);

    EXPECT_EQ(takeList(VlAppendOption(nullptr, strdup("A : 1"))), (Strings{"A : 1"}));
    EXPECT_EQ(takeList(VlAppendOption(nullptr, noColon)), Strings{}); // an empty list
}

TEST(Options, AppendNameValueAndMerge) {
    SutList *l = VlAppendOptionNameValue(nullptr, " Test.Port ", "80");
    VlAppendOptionNameValue(l, "Test.Port", "81");
    VlAppendOptionNameValue(l, "bad:name", "1");
    VlAppendOptionNameValue(l, "Test.Host", "h");
    EXPECT_EQ(items(l), (Strings{"Test.Port : 81", "Test.Host : h"}));
    EXPECT_EQ(takeList(VlAppendOptionNameValue(nullptr, "bad|name", "1")), Strings{});

    const char *shared = "Test.Port : 82";
    EXPECT_EQ(VlVaOptionsMerge(l, shared, "Z : 1", (char *)nullptr), l);
    EXPECT_EQ(items(l), (Strings{"Test.Port : 81", "Test.Host : h", "Test.Port : 82", "Z : 1"}));
    EXPECT_NE(SutGetNList(l, 2), shared); // copies, not the caller's text
    SutDestroyList(l);
    EXPECT_EQ(takeList(VlVaOptionsMerge(nullptr, "A : 1", (char *)nullptr)), (Strings{"A : 1"}));
}

TEST(Options, ReadersKeepLinesVerbatimAndDropLinesWithoutColon) {
    TempDir dir;
    std::string path = dir.write("Velmora.cfg", "A : 1\n\nB\nC : 3\n");
    EXPECT_EQ(takeList(VlOptionGetFromFile(path.c_str())), (Strings{"A : 1", "C : 3"}));

    // No comments, no continuation; carriage returns and blanks stay.
    path = dir.write("dos.cfg", "# note : kept\r\n  Indented : x \\\r\nnext\r\n");
    EXPECT_EQ(takeList(VlOptionGetFromFile(path.c_str())),
              (Strings{"# note : kept\r", "  Indented : x \\\r"}));

    // Unreadable files give an empty list, never null.
    std::string missingFile = dir.file("missing.cfg");
    for (const char *missing : std::initializer_list<const char *>{
             missingFile.c_str(), dir.path().c_str(), "", nullptr}) {
        SutList *l = VlOptionGetFromFile(missing);
        ASSERT_NE(l, nullptr) << str(missing);
        EXPECT_EQ(takeList(l), Strings{});
    }
    EXPECT_EQ(takeList(VlOptionGetFromString("x:y\n:\nz")), (Strings{"x:y", ":"}));
    EXPECT_EQ(takeList(VlOptionGetFromString("")), Strings{});
    EXPECT_EQ(VlOptionGetFromString(nullptr), nullptr);
}

std::vector<intptr_t> numbers(SutList *l) {
    std::vector<intptr_t> out;
    for (int i = 0; i < SutSizList(l); i++)
        out.push_back(reinterpret_cast<intptr_t>(SutGetNList(l, i)));
    SutDeleteList(l);
    return out;
}

TEST(Options, IntegerLists) {
    EXPECT_EQ(numbers(VlOptionGetIntList("10, 20,5")), (std::vector<intptr_t>{10, 20, 5}));
    EXPECT_EQ(numbers(VlOptionGetIntList(",,3,,\t4 ,")), (std::vector<intptr_t>{3, 4}));
    for (const char *empty : {"", ",,"}) {
        SutList *l = VlOptionGetIntList(empty);
        ASSERT_NE(l, nullptr) << empty;
        EXPECT_EQ(numbers(l), std::vector<intptr_t>{});
    }
    EXPECT_EQ(VlOptionGetIntList("10,0"), nullptr);
    EXPECT_EQ(VlOptionGetIntList("1,x"), nullptr);
    EXPECT_EQ(VlOptionGetIntList("1, ,2"), nullptr); // trims to "" and so to 0
    EXPECT_EQ(VlOptionGetIntList("-1"), nullptr);
    EXPECT_EQ(VlOptionGetIntList("1 2"), nullptr);
    EXPECT_EQ(VlOptionGetIntList("99999999999"), nullptr);
    EXPECT_EQ(VlOptionGetIntList(nullptr), nullptr);
}

} // namespace
