// Reading the keyword file named by VELMORA: valid lines, the bar form, and
// every way of ending up with no keywords.
#include "html_support.hpp"

#include <gtest/gtest.h>

namespace {

TEST(KeywordFile, ValidLinesAreKeptInOrderAndBarsBecomeBlanks) {
    KeywordsLoaded keys("");
    EXPECT_EQ(keys.Read("SRC\ncode|\nbad-line\n\nsrc2\n|\nx||\n a\nB r\nLAST|"), 0);
    EXPECT_EQ(VlAnyKeys(), 1);
    EXPECT_EQ(Items(VlGetKeyWords()), (Strings{"SRC", "code ", "src2", "LAST "}));
}

TEST(KeywordFile, NoKeywordsLeaveTheListNull) {
    KeywordsLoaded keys("");
    EXPECT_EQ(keys.Read("bad-line\n\n|\nwith\r\n"), 1); // a carriage return makes a line invalid
    EXPECT_EQ(VlGetKeyWords(), nullptr);
    ASSERT_EQ(keys.Read("SRC\n"), 0);
    EXPECT_EQ(keys.Read(std::nullopt), 1); // no file: an earlier list does not survive
    EXPECT_EQ(VlAnyKeys(), 0);
}

} // namespace
