// String helpers: null answers, copying and joining, quoting, delimiter names
// and template substitution.
#include "support/c_values.hpp"
#include "util/strings.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

TEST(Strings, NullSafeWrappers) {
    EXPECT_EQ(StrCmp(nullptr, ""), 1);
    // ResStrCmp takes a missing string for an empty one.
    EXPECT_EQ(ResStrCmp(nullptr, ""), 0);
    EXPECT_EQ(ResStrCmp("x", nullptr), 1);
    char target[8] = "old";
    char *dest = target;
    EXPECT_EQ(StrCpy(&dest, nullptr), nullptr);
    EXPECT_EQ(dest, nullptr); // the buffer is not touched
    const char *first = ItoA(-42);
    ItoA(123456);
    EXPECT_STREQ(first, "123456"); // one static buffer
}

TEST(Strings, CopiesJoinsAndSqlText) {
    EXPECT_EQ(Take(VlCopyString(nullptr)), "");
    EXPECT_EQ(Take(VlStrMCat("a", "", "bc", "d", (char *)nullptr)), "abcd");
    EXPECT_EQ(Take(VlCopyDbString("")), "null");
    EXPECT_EQ(Take(VlMakeEscapedString("it's")), "'it''s'");
    EXPECT_EQ(Take(VlMakeEscapedString("")), "null");
    // Leading newlines and inner carriage returns stay.
    EXPECT_EQ(Take(VlStripFB(" \tname \n")), "name");
    EXPECT_EQ(Take(VlStripFB("\nname\r\n")), "\nname\r");
}

TEST(Strings, DelimiterNames) {
    const std::pair<const char *, int> rows[] = {
        {",", 44}, {"<tab>", 9}, {"<TAB>", 0}, {"^i", 9}, {"^[", 27}, {"^\\", 0}, {"ab", 0},
    };
    for (auto [name, code] : rows)
        EXPECT_EQ(VlDelimStrToChar(name), code) << name;
}

TEST(Strings, SubstitutionResumesAfterEachReplacedOccurrence) {
    EXPECT_EQ(VlStrNumMatch("aaaa", "aa"), 2);
    EXPECT_EQ(Take(VlStrSubs("aaa", "aa", "b")), "ba");
    EXPECT_EQ(Take(VlStrSubs("x$Ay", "$A", nullptr)), "xy");
    EXPECT_EQ(Take(VlStrSubs("a.a", "a", "aa")), "aa.aa"); // the replacement is not rescanned
}

TEST(Strings, TemplateKeys) {
    SutList *keys = MakeList({"$VL_A", "$VL_AB"});
    SutList *values = MakeList({"1", nullptr});
    // The first key in list order wins; a null value is empty.
    EXPECT_EQ(Take(VlStrSubsList("$VL_AB-$VL_A", keys, values, "$VL_")), "1B-1");
    SutDestroyList(keys);
    SutDestroyList(values);

    // An unknown marker is overwritten by the last key, whose length is
    // skipped (up to the end of the text).
    keys = MakeList({"$VL_A", "$VL_LAST"});
    values = MakeList({"1", "2"});
    EXPECT_EQ(Take(VlStrSubsList("x $VL_Q yyyy", keys, values, "$VL_")), "x $VL_LASTyy");
    EXPECT_EQ(Take(VlStrSubsList("x $VL_Q", keys, values, "$VL_")), "x $VL_LAST");
    SutList *counts = SutNewList();
    SutAddList(counts, nullptr);
    SutAddList(counts, nullptr);
    VlStrNumMatchInList("$VL_A $VL_Qxyzw $VL_LAST $VL_A", keys, counts, "$VL_");
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 0)), 2);
    EXPECT_EQ(reinterpret_cast<intptr_t>(SutGetNList(counts, 1)), 1);
    SutDeleteList(counts);
    SutDestroyList(keys);
    SutDestroyList(values);
}

} // namespace
