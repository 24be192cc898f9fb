// String helpers: null answers, copying and joining, quoting, paths, delimiter
// names and template substitution.
#include "support/c_values.hpp"
#include "util/strings.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(Strings, NullSafeWrappers) {
    EXPECT_EQ(StrDup(nullptr), nullptr);
    EXPECT_EQ(take(StrDup("abc")), "abc");
    EXPECT_EQ(StrNDup(nullptr, 3), nullptr);
    EXPECT_EQ(take(StrNDup("abcdef", 3)), "abc");
    EXPECT_EQ(take(StrNDup("ab", 5)), "ab");

    char buf[16] = "ab";
    EXPECT_EQ(StrCat(buf, "cd"), buf);
    EXPECT_EQ(StrCat(buf, nullptr), buf);
    EXPECT_STREQ(buf, "abcd");
    EXPECT_EQ(StrCat(nullptr, "x"), nullptr);
    EXPECT_EQ(StrChr(buf, 'c'), buf + 2);

    EXPECT_EQ(StrCmp(nullptr, nullptr), 0);
    EXPECT_EQ(StrCmp(nullptr, ""), 1);
    EXPECT_EQ(StrCmp("", nullptr), 1);
    EXPECT_LT(StrCmp("a", "b"), 0);
    EXPECT_EQ(StrNCmp("abx", nullptr, 2), 1);
    EXPECT_EQ(StrNCmp("abx", "aby", 2), 0);
    EXPECT_EQ(ResStrCmp(nullptr, ""), 0);
    EXPECT_EQ(ResStrCmp("", nullptr), 0);
    EXPECT_EQ(ResStrCmp(nullptr, nullptr), 0);
    EXPECT_EQ(ResStrCmp(nullptr, "x"), 1);
    EXPECT_EQ(ResStrCmp("x", nullptr), 1);
    EXPECT_GT(ResStrCmp("b", "a"), 0);

    char target[8] = "old";
    char *dest = target;
    EXPECT_EQ(StrCpy(&dest, "new"), target);
    EXPECT_EQ(StrCpy(&dest, nullptr), nullptr);
    EXPECT_EQ(dest, nullptr);
    EXPECT_STREQ(target, "new"); // the buffer is not touched
    EXPECT_EQ(StrLen(nullptr), 0);
    EXPECT_EQ(StrLen("four"), 4);
}

TEST(Strings, WrapStripAndItoA) {
    char *s = strdup("name");
    EXPECT_EQ(StrWrap(&s, '"'), 1);
    EXPECT_EQ(take(s), "\"name\"");
    char *none = nullptr;
    EXPECT_EQ(StrWrap(&none, '"'), 0);

    EXPECT_EQ(take(StripStr(" \t\r\n x y \r\n\v\f")), "x y");
    EXPECT_EQ(take(StripStr(nullptr)), "");

    const char *first = ItoA(-42);
    EXPECT_STREQ(first, "-42");
    ItoA(123456);
    EXPECT_STREQ(first, "123456"); // one static buffer
}

TEST(Strings, CopiesJoinsAndSqlText) {
    EXPECT_EQ(take(VlCopyString(nullptr)), "");
    EXPECT_EQ(take(VlCopyString("a b")), "a b");
    EXPECT_EQ(take(VlStrMCat("a", "", "bc", "d", (char *)nullptr)), "abcd");
    EXPECT_EQ(take(VlCopyDbString(nullptr)), "null");
    EXPECT_EQ(take(VlCopyDbString("")), "null");
    EXPECT_EQ(take(VlCopyDbString("v")), "v");
    EXPECT_EQ(take(VlMakeEscapedString("it's")), "'it''s'");
    EXPECT_EQ(take(VlMakeEscapedString("''")), "''''''");
    EXPECT_EQ(take(VlMakeEscapedString("")), "null");
    EXPECT_EQ(take(VlMakeEscapedString(nullptr)), "null");

    // Leading newlines and inner carriage returns stay.
    EXPECT_EQ(take(VlStripFB(" \tname \n")), "name");
    EXPECT_EQ(take(VlStripFB("\nname")), "\nname");
    EXPECT_EQ(take(VlStripFB("name\r\n")), "name\r");
    EXPECT_EQ(take(VlStripFB(" \t\n\t ")), "");
    EXPECT_EQ(VlStripFB(nullptr), nullptr);
}

TEST(Strings, PathParts) {
    struct Row {
        const char *path;
        std::optional<std::string> file, dir;
    };
    const Row rows[] = {
        {"/a/b.html", "b.html", "/a"},
        {"b.html", "b.html", std::nullopt},
        {"/a/", std::nullopt, "/a/"},
        {"/x", "x", ""},
        {"a/b/c", "c", "a/b"},
        {"", std::nullopt, std::nullopt},
        {nullptr, std::nullopt, std::nullopt},
    };
    for (const Row &r : rows) {
        EXPECT_EQ(take(VlGetFileFromFullPath(r.path)), r.file) << str(r.path);
        EXPECT_EQ(take(VlGetDirFromFullPath(r.path)), r.dir) << str(r.path);
    }
}

TEST(Strings, DelimiterNames) {
    const std::pair<const char *, int> rows[] = {
        {nullptr, 0}, {"", 0},     {",", 44},  {"^", '^'}, {"<", '<'}, {"<tab>", 9}, {"<spc>", 32},
        {"<TAB>", 0}, {"<tab", 0}, {"^A", 1},  {"^i", 9},  {"^z", 26}, {"^[", 27},   {"^\\", 0},
        {"^]", 29},   {"^^", 30},  {"^_", 31}, {"^1", 0},  {"^AB", 0}, {"ab", 0},
    };
    for (auto [name, code] : rows)
        EXPECT_EQ(VlDelimStrToChar(name), code) << str(name);
}

TEST(Strings, SubstitutionResumesAfterEachReplacedOccurrence) {
    EXPECT_EQ(VlStrNumMatch("aaa", "aa"), 1);
    EXPECT_EQ(VlStrNumMatch("aaaa", "aa"), 2);
    EXPECT_EQ(VlStrNumMatch(nullptr, "x"), 0);

    EXPECT_EQ(take(VlStrSubs("aaa", "aa", "b")), "ba");
    EXPECT_EQ(take(VlStrSubs("x$Ay", "$A", nullptr)), "xy");
    EXPECT_EQ(take(VlStrSubs("xyz", "q", "r")), "xyz");
    EXPECT_EQ(take(VlStrSubs("a.a", "a", "aa")), "aa.aa"); // the replacement is not rescanned
    EXPECT_EQ(VlStrSubs(nullptr, "a", "b"), nullptr);
}

TEST(Strings, TemplateKeys) {
    SutList *keys = makeList({"$VL_A", "$VL_AB"});
    SutList *values = makeList({"1", "2"});
    // The first key in list order wins.
    EXPECT_EQ(take(VlStrSubsList("$VL_AB", keys, values, "$VL_")), "1B");
    EXPECT_EQ(take(VlStrSubsList("$VL_A$VL_A-$VL_A", keys, values, "$VL_")), "11-1");
    EXPECT_EQ(VlStrSubsList(nullptr, keys, values, "$VL_"), nullptr);
    SutDestroyList(keys);
    SutDestroyList(values);

    keys = makeList({"$VL_SRC", "$VL_OBJ", "$VL_NAME"});
    values = makeList({"a.c b.c", nullptr, "shop"});
    EXPECT_EQ(
        take(VlStrSubsList("SRC=$VL_SRC\nOBJ=$VL_OBJ\n$VL_NAME: $VL_SRC\n", keys, values, "$VL_")),
        "SRC=a.c b.c\nOBJ=\nshop: a.c b.c\n");
    SutDestroyList(keys);
    SutDestroyList(values);
}

TEST(Strings, TemplateUnknownMarkerIsOverwrittenByTheLastKey) {
    SutList *keys = makeList({"$VL_A", "$VL_LAST"});
    SutList *values = makeList({"1", "2"});
    EXPECT_EQ(take(VlStrSubsList("x $VL_Q yyyy", keys, values, "$VL_")), "x $VL_LASTyy");
    // Near the end of the text the skip stops at the end.
    EXPECT_EQ(take(VlStrSubsList("x $VL_Q", keys, values, "$VL_")), "x $VL_LAST");

    SutList *counts = SutNewList();
    SutAddList(counts, nullptr);
    SutAddList(counts, nullptr);
    VlStrNumMatchInList("$VL_A $VL_Qxyzw $VL_LAST $VL_A", keys, counts, "$VL_");
    VlStrNumMatchInList(nullptr, keys, counts, "$VL_");
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 0)), 2);
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 1)), 1);
    SutDeleteList(counts);
    SutDestroyList(keys);
    SutDestroyList(values);
}

} // namespace
