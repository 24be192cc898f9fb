// Reading the keyword file named by VELMORA: valid lines, the bar form, and
// every way of ending up with no keywords.
#include "html/keywords.h"
#include "support/c_values.hpp"
#include "util/tempdir.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

// Points VELMORA at a temporary distribution for one test and restores it.
class KeywordFile : public testing::Test {
  protected:
    void SetUp() override {
        const char *old = getenv("VELMORA");
        hadOld_ = old != nullptr;
        if (old) old_ = old;
        std::filesystem::create_directories(dist_.file("config"));
        setenv("VELMORA", dist_.path().c_str(), 1);
    }
    void TearDown() override {
        if (hadOld_)
            setenv("VELMORA", old_.c_str(), 1);
        else
            unsetenv("VELMORA");
        VlReadKeyWords(); // leave the process as the environment says
    }
    void writeKeywords(const std::string &text) { dist_.write("config/VlKeyWds.ini", text); }

    TempDir dist_;
    std::string old_;
    bool hadOld_ = false;
};

TEST_F(KeywordFile, ValidLinesAreKeptInOrderAndBarsBecomeBlanks) {
    writeKeywords("SRC\ncode|\nbad-line\n\nsrc2\n|\nx||\n a\nB r\nLAST|");
    EXPECT_EQ(VlReadKeyWords(), 0);
    EXPECT_EQ(VlAnyKeys(), 1);
    EXPECT_EQ(items(VlGetKeyWords()), (Strings{"SRC", "code ", "src2", "LAST "}));
}

TEST_F(KeywordFile, NoKeywordsLeaveTheListNull) {
    writeKeywords("SRC\n");
    ASSERT_EQ(VlReadKeyWords(), 0);

    writeKeywords("bad-line\n\n|\nwith\r\n"); // carriage returns make a line invalid
    EXPECT_EQ(VlReadKeyWords(), 1);
    EXPECT_EQ(VlAnyKeys(), 0);
    EXPECT_EQ(VlGetKeyWords(), nullptr);

    writeKeywords("");
    EXPECT_EQ(VlReadKeyWords(), 1);
    EXPECT_EQ(VlAnyKeys(), 0);

    writeKeywords("SRC\n");
    ASSERT_EQ(VlReadKeyWords(), 0);
    std::filesystem::remove(dist_.file("config/VlKeyWds.ini"));
    EXPECT_EQ(VlReadKeyWords(), 1); // an earlier list does not survive
    EXPECT_EQ(VlAnyKeys(), 0);

    writeKeywords("SRC\n");
    unsetenv("VELMORA");
    EXPECT_EQ(VlReadKeyWords(), 1);
    EXPECT_EQ(VlAnyKeys(), 0);
}

TEST(KeywordLines, Validity) {
    EXPECT_EQ(VlIsKeyWord("SRC"), 1);
    EXPECT_EQ(VlIsKeyWord("code|"), 1);
    EXPECT_EQ(VlIsKeyWord("a1B2"), 1);
    EXPECT_EQ(VlIsKeyWord("9"), 1);
    EXPECT_EQ(VlIsKeyWord("|"), 0);
    EXPECT_EQ(VlIsKeyWord("a||"), 0);
    EXPECT_EQ(VlIsKeyWord("|a"), 0);
    EXPECT_EQ(VlIsKeyWord("a b"), 0);
    EXPECT_EQ(VlIsKeyWord("a_b"), 0);
    EXPECT_EQ(VlIsKeyWord("\xc3\xa9t\xc3\xa9"), 0);
    EXPECT_EQ(VlIsKeyWord(""), 0);
    EXPECT_EQ(VlIsKeyWord(nullptr), 0);
}

} // namespace
