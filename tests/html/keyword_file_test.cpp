// Reading the keyword file named by VELMORA: valid lines, the bar form, and
// every way of ending up with no keywords.
#include "html/keywords.h"
#include "support/c_values.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

namespace {

// Points VELMORA at a temporary distribution for one test and restores it.
class KeywordFile : public testing::Test {
  protected:
    void TearDown() override {
        velmora_.set(nullptr);
        VlReadKeyWords(); // no keywords for the next test
    }
    void writeKeywords(const std::string &text) { dist_.write("config/VlKeyWds.ini", text); }

    TempDir dist_;
    ScopedEnv velmora_{"VELMORA", dist_.path().c_str()};
};

TEST_F(KeywordFile, ValidLinesAreKeptInOrderAndBarsBecomeBlanks) {
    writeKeywords("SRC\ncode|\nbad-line\n\nsrc2\n|\nx||\n a\nB r\nLAST|");
    EXPECT_EQ(VlReadKeyWords(), 0);
    EXPECT_EQ(VlAnyKeys(), 1);
    EXPECT_EQ(items(VlGetKeyWords()), (Strings{"SRC", "code ", "src2", "LAST "}));
}

TEST_F(KeywordFile, NoKeywordsLeaveTheListNull) {
    writeKeywords("bad-line\n\n|\nwith\r\n"); // carriage returns make a line invalid
    EXPECT_EQ(VlReadKeyWords(), 1);
    EXPECT_EQ(VlGetKeyWords(), nullptr);
    writeKeywords("SRC\n");
    ASSERT_EQ(VlReadKeyWords(), 0);
    fs::remove(dist_.file("config/VlKeyWds.ini"));
    EXPECT_EQ(VlReadKeyWords(), 1); // an earlier list does not survive
    EXPECT_EQ(VlAnyKeys(), 0);
}

} // namespace
