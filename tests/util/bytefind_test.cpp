// The cursor over marked places: the places a walk over part of a text is
// given, in blocks of sixteen and of thirty-two bytes and one by one.
#include "util/bytefind.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The places where "<f" or "<F" begins in [text, end), the text readable to
// its end, as the cursor gives them. The place just before the end, which a
// block test may give from the byte after it, is left out.
template <bool Wide> std::vector<int> MarkedPlaces(const std::string &text, size_t end) {
    using Marks = WordStarts<Words<'<', 'f'>>;
    const char *stop = text.data() + end;
    const Marks marks{stop};
    MarkCursor<Marks, Wide> cursor(marks, stop, text.data() + text.size());
    std::vector<int> places;
    for (const char *p = text.data(); (p = cursor.Next(p)) != nullptr; ++p)
        if (p + 1 != stop) places.push_back(static_cast<int>(p - text.data()));
    return places;
}

// Every mark before the end is given, in order, and none at or after it,
// though the blocks read on past it.
TEST(MarkCursor, GivesEveryMarkBeforeTheEndOnly) {
    std::string text;
    std::vector<int> all;
    for (int i = 0; text.size() < 100; i++) {
        all.push_back(static_cast<int>(text.size()));
        text += i % 2 ? "<f" : "<F";
        text += std::string(static_cast<size_t>(i % 5), 'x') + "f<";
    }
    for (size_t end = 0; end <= text.size(); end++) {
        std::vector<int> expected;
        for (int place : all)
            if (static_cast<size_t>(place) + 1 < end) expected.push_back(place);
        EXPECT_EQ(MarkedPlaces<false>(text, end), expected) << "end " << end;
        if (bytefind::HasWideBlocks()) {
            EXPECT_EQ(MarkedPlaces<true>(text, end), expected) << "wide, end " << end;
        }
    }
}

} // namespace
