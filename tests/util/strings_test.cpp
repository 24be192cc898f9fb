// String helpers: null answers, copying and joining, quoting, paths, delimiter
// names and template substitution.
#include "util/strings.h"
#include "util/support.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

namespace {

TEST(Strings, NullSafeWrappers) {
    EXPECT_EQ(StrDup(nullptr), nullptr);
    EXPECT_EQ(take(StrDup("abc")), "abc");
    EXPECT_EQ(StrNDup(nullptr, 3), nullptr);
    EXPECT_EQ(take(StrNDup("abcdef", 3)), "abc");
    EXPECT_EQ(take(StrNDup("ab", 5)), "ab");
    EXPECT_EQ(take(StrNDup("ab", 0)), "");

    char buf[16] = "ab";
    EXPECT_EQ(StrCat(buf, "cd"), buf);
    EXPECT_STREQ(buf, "abcd");
    EXPECT_EQ(StrCat(buf, nullptr), buf);
    EXPECT_STREQ(buf, "abcd");
    EXPECT_EQ(StrCat(nullptr, "x"), nullptr);

    EXPECT_EQ(StrChr(nullptr, 'a'), nullptr);
    EXPECT_EQ(StrChr(buf, 'c'), buf + 2);

    EXPECT_EQ(StrCmp(nullptr, nullptr), 0);
    EXPECT_EQ(StrCmp(nullptr, ""), 1);
    EXPECT_EQ(StrCmp("", nullptr), 1);
    EXPECT_EQ(StrCmp("a", "a"), 0);
    EXPECT_LT(StrCmp("a", "b"), 0);
    EXPECT_EQ(StrNCmp(nullptr, nullptr, 2), 0);
    EXPECT_EQ(StrNCmp("abx", nullptr, 2), 1);
    EXPECT_EQ(StrNCmp("abx", "aby", 2), 0);
    EXPECT_GT(StrNCmp("abz", "aby", 3), 0);

    EXPECT_EQ(ResStrCmp(nullptr, ""), 0);
    EXPECT_EQ(ResStrCmp("", nullptr), 0);
    EXPECT_EQ(ResStrCmp(nullptr, nullptr), 0);
    EXPECT_EQ(ResStrCmp(nullptr, "x"), 1);
    EXPECT_EQ(ResStrCmp("x", nullptr), 1);
    EXPECT_GT(ResStrCmp("b", "a"), 0);

    char target[8] = "old";
    char *dest = target;
    EXPECT_EQ(StrCpy(&dest, "new"), target);
    EXPECT_STREQ(target, "new");
    EXPECT_EQ(StrCpy(&dest, nullptr), nullptr);
    EXPECT_EQ(dest, nullptr);
    EXPECT_STREQ(target, "new"); // the buffer is not touched
    EXPECT_EQ(StrCpy(nullptr, "x"), nullptr);

    EXPECT_EQ(StrLen(nullptr), 0);
    EXPECT_EQ(StrLen("four"), 4);
}

TEST(Strings, WrapStripAndItoA) {
    char *s = strdup("name");
    EXPECT_EQ(StrWrap(&s, '"'), 1);
    EXPECT_STREQ(s, "\"name\"");
    free(s);
    char *none = nullptr;
    EXPECT_EQ(StrWrap(&none, '"'), 0);
    EXPECT_EQ(StrWrap(nullptr, '"'), 0);

    EXPECT_EQ(take(StripStr(" \t\r\n x y \r\n\v\f")), "x y");
    EXPECT_EQ(take(StripStr(nullptr)), "");
    EXPECT_EQ(take(StripStr("   ")), "");

    EXPECT_STREQ(ItoA(-42), "-42");
    const char *first = ItoA(7);
    ItoA(123456);
    EXPECT_STREQ(first, "123456"); // one static buffer
}

TEST(Strings, CopiesJoinsAndSqlText) {
    EXPECT_EQ(take(VlCopyString(nullptr)), "");
    EXPECT_EQ(take(VlCopyString("a b")), "a b");
    EXPECT_EQ(take(VlStrMCat("a", "", "bc", "d", (char *)nullptr)), "abcd");
    EXPECT_EQ(take(VlStrMCat("only", (char *)nullptr)), "only");
    EXPECT_EQ(take(VlCopyDbString(nullptr)), "null");
    EXPECT_EQ(take(VlCopyDbString("")), "null");
    EXPECT_EQ(take(VlCopyDbString("v")), "v");
    EXPECT_EQ(take(VlMakeEscapedString("it's")), "'it''s'");
    EXPECT_EQ(take(VlMakeEscapedString("''")), "''''''");
    EXPECT_EQ(take(VlMakeEscapedString("")), "null");
    EXPECT_EQ(take(VlMakeEscapedString(nullptr)), "null");
}

TEST(Strings, StripFBKeepsLeadingNewlinesAndCarriageReturns) {
    EXPECT_EQ(take(VlStripFB(" \tname \n")), "name");
    EXPECT_EQ(take(VlStripFB("\nname")), "\nname");
    EXPECT_EQ(take(VlStripFB("name\r\n")), "name\r");
    EXPECT_EQ(take(VlStripFB(" \t\n\t ")), "");
    EXPECT_EQ(VlStripFB(nullptr), nullptr);
}

TEST(Strings, PathParts) {
    EXPECT_EQ(take(VlGetFileFromFullPath("/a/b.html")), "b.html");
    EXPECT_EQ(take(VlGetFileFromFullPath("b.html")), "b.html");
    EXPECT_EQ(VlGetFileFromFullPath("/a/"), nullptr);
    EXPECT_EQ(VlGetFileFromFullPath(""), nullptr);
    EXPECT_EQ(VlGetFileFromFullPath(nullptr), nullptr);

    EXPECT_EQ(take(VlGetDirFromFullPath("/a/b.html")), "/a");
    EXPECT_EQ(take(VlGetDirFromFullPath("/a/")), "/a/");
    EXPECT_EQ(take(VlGetDirFromFullPath("/x")), "");
    EXPECT_EQ(take(VlGetDirFromFullPath("a/b/c")), "a/b");
    EXPECT_EQ(VlGetDirFromFullPath("b.html"), nullptr);
    EXPECT_EQ(VlGetDirFromFullPath(""), nullptr);
    EXPECT_EQ(VlGetDirFromFullPath(nullptr), nullptr);
}

TEST(Strings, DelimiterNames) {
    EXPECT_EQ(VlDelimStrToChar(nullptr), 0);
    EXPECT_EQ(VlDelimStrToChar(""), 0);
    EXPECT_EQ(VlDelimStrToChar(","), 44);
    EXPECT_EQ(VlDelimStrToChar("^"), '^');
    EXPECT_EQ(VlDelimStrToChar("<"), '<');
    EXPECT_EQ(VlDelimStrToChar("<tab>"), 9);
    EXPECT_EQ(VlDelimStrToChar("<spc>"), 32);
    EXPECT_EQ(VlDelimStrToChar("<TAB>"), 0);
    EXPECT_EQ(VlDelimStrToChar("<tab"), 0);
    EXPECT_EQ(VlDelimStrToChar("^A"), 1);
    EXPECT_EQ(VlDelimStrToChar("^i"), 9);
    EXPECT_EQ(VlDelimStrToChar("^z"), 26);
    EXPECT_EQ(VlDelimStrToChar("^["), 27);
    EXPECT_EQ(VlDelimStrToChar("^\\"), 0);
    EXPECT_EQ(VlDelimStrToChar("^]"), 29);
    EXPECT_EQ(VlDelimStrToChar("^^"), 30);
    EXPECT_EQ(VlDelimStrToChar("^_"), 31);
    EXPECT_EQ(VlDelimStrToChar("^1"), 0);
    EXPECT_EQ(VlDelimStrToChar("^AB"), 0);
    EXPECT_EQ(VlDelimStrToChar("ab"), 0);
}

TEST(Strings, SubstitutionResumesAfterEachReplacedOccurrence) {
    EXPECT_EQ(VlStrNumMatch("aaa", "aa"), 1);
    EXPECT_EQ(VlStrNumMatch("aaaa", "aa"), 2);
    EXPECT_EQ(VlStrNumMatch("abc", "x"), 0);
    EXPECT_EQ(VlStrNumMatch(nullptr, "x"), 0);
    EXPECT_EQ(VlStrNumMatch("x", nullptr), 0);

    EXPECT_EQ(take(VlStrSubs("aaa", "aa", "b")), "ba");
    EXPECT_EQ(take(VlStrSubs("x$Ay", "$A", nullptr)), "xy");
    EXPECT_EQ(take(VlStrSubs("xyz", "q", "r")), "xyz");
    // The replacement is not scanned again.
    EXPECT_EQ(take(VlStrSubs("a.a", "a", "aa")), "aa.aa");
    EXPECT_EQ(take(VlStrSubs("ab", "ab", "")), "");
    EXPECT_EQ(VlStrSubs(nullptr, "a", "b"), nullptr);
    EXPECT_EQ(VlStrSubs("a", nullptr, "b"), nullptr);
}

TEST(Strings, TemplateKeysFirstInListOrderWin) {
    SutList *keys = makeList({"$VL_A", "$VL_AB"});
    SutList *values = makeList({"1", "2"});
    EXPECT_EQ(take(VlStrSubsList("$VL_AB", keys, values, "$VL_")), "1B");
    EXPECT_EQ(take(VlStrSubsList("no markers", keys, values, "$VL_")), "no markers");
    EXPECT_EQ(take(VlStrSubsList("$VL_A$VL_A-$VL_A", keys, values, "$VL_")), "11-1");
    EXPECT_EQ(VlStrSubsList(nullptr, keys, values, "$VL_"), nullptr);
    EXPECT_EQ(VlStrSubsList("x", nullptr, values, "$VL_"), nullptr);
    EXPECT_EQ(VlStrSubsList("x", keys, nullptr, "$VL_"), nullptr);
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
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 0)), 2);
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 1)), 1);
    VlStrNumMatchInList(nullptr, keys, counts, "$VL_");
    VlStrNumMatchInList("$VL_A", keys, counts, nullptr);
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 0)), 2);
    SutDeleteList(counts);
    SutDestroyList(keys);
    SutDestroyList(values);
}

} // namespace
