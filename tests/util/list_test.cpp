// The ordered list: growth rule, positional checks, ownership of the array.
#include "support/c_values.hpp"
#include "util/list.h"
#include "util/list.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

void *Num(intptr_t n) {
    return reinterpret_cast<void *>(n);
}

std::vector<intptr_t> Numbers(const SutList *l) {
    std::vector<intptr_t> out;
    for (int i = 0; i < SutSizList(l); i++)
        out.push_back(reinterpret_cast<intptr_t>(SutGetNList(l, i)));
    return out;
}

TEST(List, CapacitiesAndGrowth) {
    SutList *l = SutNewList();
    for (int i = 1; i <= 19; i++)
        SutAddList(l, Num(i));
    EXPECT_EQ(l->capacity, 20);
    SutAddList(l, Num(20)); // the twentieth item fills it: grows by half
    EXPECT_EQ(l->capacity, 30);
    EXPECT_EQ(Numbers(l).front(), 1); // moved out of the first array whole
    EXPECT_EQ(Numbers(l).back(), 20);
    SutDeleteList(l);
    for (auto [asked, capacity] : {std::pair{-5, 4}, {3, 4}, {10, 11}}) {
        l = SutNewListSize(asked);
        EXPECT_EQ(l->capacity, capacity) << asked;
        SutDeleteList(l);
    }
}

// A list placed in its owner's room: made as SutNewListSize makes one, it
// grows out of the room into an array that Vacate frees (the sanitizer build
// reports that array if it is lost), and the room is never freed.
TEST(List, PlacedListsGrowOutOfTheirRoom) {
    void *const values[] = {Num(1), Num(2), Num(3)};
    alignas(void *) unsigned char room[64];
    ASSERT_LE(sutlist::PlacedSize(3), sizeof room);
    SutList *l = sutlist::Place(room, values, 3);
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{1, 2, 3}));
    EXPECT_EQ(l->capacity, 4);
    EXPECT_EQ(SutAddNList(l, 0, Num(0)), Num(0)); // fills it: grows
    EXPECT_EQ(l->capacity, 6);
    EXPECT_NE(static_cast<void *>(l->items), static_cast<void *>(l + 1));
    SutAddList(l, Num(4));
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{0, 1, 2, 3, 4}));
    sutlist::Vacate(l);

    l = sutlist::Place(room, values, 0); // room for four, all empty
    EXPECT_EQ(SutSizList(l), 0);
    EXPECT_EQ(SutGetNList(l, 0), nullptr);
    SutAddList(l, Num(7));
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{7}));
    sutlist::Vacate(l); // nothing grown: nothing to free
}

TEST(List, FromValuesTakesOverLargeArraysAndCopiesSmallOnes) {
    void **five = static_cast<void **>(calloc(5, sizeof(void *)));
    SutList *l = SutNewListFromValues(five, 5);
    EXPECT_EQ(l->items, five);
    SutAddList(l, Num(6)); // full: grows to 7 before storing
    EXPECT_EQ(l->capacity, 7);
    SutDeleteList(l);
    // Fewer than four: copied into a fresh array of four and the caller's
    // array released (the sanitizer build checks it).
    void **two = static_cast<void **>(calloc(2, sizeof(void *)));
    two[1] = Num(8);
    l = SutNewListFromValues(two, 2);
    EXPECT_EQ(l->capacity, 4);
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{0, 8}));
    SutDeleteList(l);
}

TEST(List, AddAtEndMayLeaveTheListFullAndTheNextAddGrowsFirst) {
    SutList *l = SutNewListSize(3); // capacity 4
    SutAddList(l, Num(1));
    SutAddList(l, Num(2));
    EXPECT_EQ(SutAddNList(l, 2, Num(3)), Num(3));
    EXPECT_EQ(SutAddNList(l, 3, Num(4)), Num(4)); // fills the last slot, no growth
    EXPECT_EQ(l->capacity, 4);
    EXPECT_EQ(SutAddNList(l, 0, Num(0)), Num(0)); // grows first (6), then 5 < 6
    EXPECT_EQ(l->capacity, 6);
    // Insertion in the middle that fills the list grows after storing.
    EXPECT_EQ(SutAddNList(l, 2, Num(9)), Num(9));
    EXPECT_EQ(l->capacity, 9);
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{0, 1, 9, 2, 3, 4}));
    EXPECT_EQ(SutAddNList(l, 7, Num(5)), nullptr); // past the end
    EXPECT_EQ(l->count, 6);
    SutDeleteList(l);
}

TEST(List, PositionalAccessReplaceRemoveAndPop) {
    SutList *l = SutNewList();
    for (int i = 0; i < 5; i++)
        SutAddList(l, Num(10 + i));
    EXPECT_EQ(SutGetNList(l, 5), nullptr);
    EXPECT_EQ(SutSizList(nullptr), -1);
    EXPECT_EQ(SutReplaceNList(l, 1, Num(99)), Num(11));
    EXPECT_EQ(SutRemoveNList(l, 0), Num(10));
    EXPECT_EQ(SutRemoveList(l), Num(14)); // the last item, not the first
    EXPECT_EQ(Numbers(l), (std::vector<intptr_t>{99, 12, 13}));
    EXPECT_EQ(SutGetPosFromItem(l, Num(13)), 2);
    SutDeleteList(l);
}

TEST(List, PositionIsByIdentityAndCopiesShareItems) {
    SutList *l = MakeList({"x", "y"});
    char same[] = "y";
    EXPECT_EQ(SutGetPosFromItem(l, same), -1); // equal text at another address
    SutList *copy = SutCopyList(l);
    EXPECT_EQ(copy->capacity, l->capacity);
    EXPECT_EQ(SutGetNList(copy, 1), SutGetNList(l, 1));
    SutDeleteList(copy);
    EXPECT_EQ(SutListCat(l, l), 1); // a list onto itself doubles once
    EXPECT_EQ(Items(l), (Strings{"x", "y", "x", "y"}));
    SutRemoveList(l); // the shared pointers would be freed twice otherwise
    SutRemoveList(l);
    SutDestroyList(l);
}

} // namespace
