// The page scanner and the markup against their reference copies (the
// scanner and markup as they stood before they jumped between candidate
// bytes, kept in fuzz/reference/) on every input of the committed fuzz
// corpora, with keyword lists loaded and without: identical documents, identical
// marked text. The fuzz target fuzz_html_diff does the same on new inputs.
#include <gtest/gtest.h>

#include "html/html_support.hpp"
#include "reference/compare.hpp"

TEST(ScannerDifferential, CommittedCorporaScanAndMarkAsTheReferenceDoes) {
    int compared = 0;
    // Many keywords, the two of a distribution (whose first and second bytes
    // the page walk keeps at hand), and none.
    for (const char *keywords : {vlref::kDiffKeywords, "SRC\nHREF\n", ""}) {
        KeywordsLoaded loaded(keywords);
        ASSERT_EQ(VlAnyKeys(), *keywords ? 1 : 0);
        for (const auto &entry :
             fs::recursive_directory_iterator(VELMORA_SOURCE_DIR "/fuzz/corpus")) {
            if (!entry.is_regular_file()) continue;
            EXPECT_EQ(vlref::DiffPage(ReadText(entry.path().string())), "") << entry.path();
            compared++;
        }
    }
    EXPECT_GT(compared, 150);
}
