// The binding-code parser against its reference copy (the parser as it stood
// before it read fields without sscanf, kept in fuzz/reference/) on every
// input of the committed fuzz corpora: identical binds in every field,
// identical work calls, and the call lines read as sscanf reads them. The
// fuzz target fuzz_bindcode_diff does the same on new inputs.
#include <gtest/gtest.h>

#include <filesystem>

#include "reference/compare_binds.hpp"
#include "support/temp_dir.hpp"

TEST(ParserDifferential, CommittedCorporaParseAsTheReferenceDoes) {
    int compared = 0;
    for (const auto &entry : fs::recursive_directory_iterator(VELMORA_SOURCE_DIR "/fuzz/corpus")) {
        if (!entry.is_regular_file()) continue;
        EXPECT_EQ(vlref::DiffBody("shop.html", "order", ReadText(entry.path().string())), "")
            << entry.path();
        compared++;
    }
    EXPECT_GT(compared, 80); // the committed corpora were found
}
