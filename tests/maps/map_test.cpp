// The binding map model: starting values, list building, destructors, the
// interface list, lookups, copying and the naming of new binds.
#include "bindcode/upkeep.h"
#include "support/bind_text.hpp"
#include "support/capture.hpp"
#include "support/map_sample.hpp"

#include <gtest/gtest.h>

namespace {

class MapModel : public ::testing::Test {
  protected:
    void SetUp() override { SwdResetTheMap(); }
    void TearDown() override { SwdResetTheMap(); }
};

SpmCallbackBind *Call0(SpmSPBind *b) {
    return Nth<SpmCallbackBind>(b->callBinds, 0);
}

// An applied bind in the context map run from callback cb of page|widget.
SpmSPBind *AddApplied(const char *page, const char *widget, const char *cb, int order) {
    SpmSPBind *b = SpmAddSPBindAndCreateLists(0, 1, 0);
    b->beenApplied = 1;
    Set(&Call0(b)->interface, page);
    Set(&Call0(b)->swidget, widget);
    Set(&Call0(b)->callbackName, cb);
    Call0(b)->callOrder = order;
    return b;
}

std::vector<void *> Pointers(SutList *list) {
    std::vector<void *> out(list->items, list->items + list->count);
    SutDeleteList(list);
    return out;
}

TEST_F(MapModel, ConstructorsSetTheDocumentedStartingValues) {
    SpmSPBind *b = SpmCreateListsForSpmBind(1, 1, 1);
    EXPECT_EQ(Stored(b), "\"\" 0 \"\" 0 null 0 null 0 \"NO_CACHE\" null null none 0 none\n"
                         "col null null 0 null 0 null 0 null -1 -1 null null 1 0 0 none\n"
                         "call null null null 0 null null \"NO_WP\" -1 0 \"ROW_INDEX\" null "
                         "\"NO_QUEUE_FILE\" none\n"
                         "arg null 0 null -1 -1 \"\"\"\" none");
    EXPECT_EQ(Unstored(b), " 0 0 0 0 0 0 0 0");
    EXPECT_EQ(SpmDestroySPBind(&b), 0);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(SpmDestroySPBind(&b), -1); // the holder was cleared
}

TEST_F(MapModel, ListBuildingPutsOnlyAddedBindsIntoTheContextMap) {
    SpmSPBind *first = SpmAddSPBind(); // makes the context map
    SpmMap *map = SpmGetMapContext();
    ASSERT_NE(map, nullptr);
    SpmSPBind *loose = SpmCreateListsForSpmBind(2, 3, 1);
    SpmDestroySPBind(&loose);
    SpmSPBind *added = SpmAddSPBindAndCreateLists(0, 2, 0);
    EXPECT_EQ(added->colBinds, nullptr); // no list for no children
    EXPECT_EQ(Pointers(SutCopyList(map->spBinds)), (std::vector<void *>{first, added}));
}

TEST_F(MapModel, InterfaceListReportsZeroOnChangeAndOneOtherwise) {
    SpmMap *m = SpmNewMap();
    EXPECT_EQ(SpmAddIface(m, "Page1"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 1);
    EXPECT_EQ(SpmRemoveIface(m, "page2"), 1); // case-sensitive
    // Renaming the first leaves it last.
    EXPECT_EQ(SpmRenameIface(m, "Page1", "Start"), 0);
    EXPECT_EQ(Items(m->interfaces), (Strings{"Page2", "Start"}));
    SpmDestroyMap(&m);
}

TEST_F(MapModel, LookupsCompareExactly) {
    EXPECT_EQ(AcGetBindings("P", "W", "F"), nullptr); // no context
    SpmSPBind *noName = SpmAddSPBind();
    SpmSPBind *a = SpmAddSPBind();
    Set(&a->name, "orders");
    Set(&a->altName, "bind1");
    EXPECT_EQ(SpmGetMapByName("", "", "orders"), a);
    EXPECT_EQ(SpmGetMapByName("", "", "Orders"), nullptr);
    // The null-safe compare lets a null name find a bind without altName.
    EXPECT_EQ(WbeGetSPBindFromName(nullptr), noName);

    SpmSPBind *b1 = AddApplied("P", "W", "F", 0);
    AddApplied("P", "W", "F", 0)->beenApplied = 0;
    AddApplied("P", "Other", "F", 0);
    SpmSPBind *b4 = AddApplied("P", "W", "F", 0);
    EXPECT_EQ(Pointers(AcGetBindings("P", "W", "F")), (std::vector<void *>{b1, b4}));
}

TEST_F(MapModel, AcSortBindingsIsAStableBubbleSortThatStopsAtABrokenItem) {
    SpmSPBind *a = AddApplied("P", "W", "F", 2);
    SpmSPBind *b = AddApplied("P", "W", "F", 1);
    SpmSPBind *c = AddApplied("P", "W", "F", 2);
    SpmSPBind *d = AddApplied("P", "W", "F", 0);
    SutList *list = AcGetBindings("P", "W", "F");
    AcSortBindings(list);
    EXPECT_EQ(Pointers(list), (std::vector<void *>{d, b, a, c})); // equal keys keep their order

    // The first pass walks from the end: it swaps d forward past c, then
    // meets the bind without callback binds and stops there.
    SpmSPBind *broken = SpmAddSPBind();
    SutList *partial = SutNewList();
    for (SpmSPBind *x : {a, broken, c, d})
        SutAddList(partial, x);
    AcSortBindings(partial);
    EXPECT_EQ(Pointers(partial), (std::vector<void *>{a, broken, d, c}));
}

TEST_F(MapModel, SpmCopyChecksCountsAndRemovesOnlyEveryOtherSurplusCallbackBind) {
    SpmSPBind *src = SpmCreateListsForSpmBind(0, 1, 0);
    SpmSPBind *wrong = SpmCreateListsForSpmBind(1, 1, 0);
    Set(&src->name, "n");
    EXPECT_EQ(Printed([&] { EXPECT_EQ(SpmCopy(wrong, src), 0); }),
              "Error - Source colbinds/argbinds don't match destination.\n");
    EXPECT_EQ(wrong->name, nullptr);
    SpmDestroySPBind(&wrong);

    SpmSPBind *dest = SpmCreateListsForSpmBind(0, 4, 0);
    const char *names[] = {"one", "two", "three", "four"};
    for (int i = 0; i < 4; i++)
        Set(&Nth<SpmCallbackBind>(dest->callBinds, i)->callbackName, names[i]);
    Set(&Call0(src)->callbackName, "src");
    auto calls = [](SpmSPBind *bind) {
        return Each<SpmCallbackBind>(bind->callBinds,
                                     [](SpmCallbackBind *k) { return Str(k->callbackName); });
    };
    EXPECT_EQ(SpmCopy(dest, src), 1);
    EXPECT_EQ(calls(dest), (Strings{"src", "three"}));
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
}

// Clears the widgets of the bind's columns and callbacks.
void ClearWidgets(SpmSPBind *bind) {
    for (int i = 0; i < SutSizList(bind->colBinds); i++)
        Set(&Nth<SpmColBind>(bind->colBinds, i)->swidget, nullptr);
    for (int i = 0; i < SutSizList(bind->callBinds); i++)
        Set(&Nth<SpmCallbackBind>(bind->callBinds, i)->swidget, nullptr);
}

TEST_F(MapModel, SpmDupCopiesEveryFieldButTheWidgets) {
    TempDir dir;
    SpmMap *map = SampleMap(dir);
    for (int b = 0; b < SutSizList(map->spBinds); b++) {
        SpmSPBind *src = Nth<SpmSPBind>(map->spBinds, b);
        src->editor = reinterpret_cast<void *>(0x1234);
        Nth<SpmCallbackBind>(src->callBinds, 0)->transientC = 2;
        SpmSPBind *copy = SpmDup(src);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(Unstored(copy), Unstored(src));
        const std::string copied = Stored(copy);
        ClearWidgets(copy);
        EXPECT_EQ(copied, Stored(copy)); // the copy is bound to no widget
        ClearWidgets(src);
        EXPECT_EQ(Stored(copy), Stored(src)); // apart from that it equals the source
        SpmDestroySPBind(&copy);
    }
    SpmDestroyMap(&map);
}

TEST_F(MapModel, UniqueNamesCountUpFromTheStemLessOneDigit) {
    auto unique = [](const char *base) { return Take(WbeGetUniqueSPName(base)); };
    EXPECT_EQ(unique("total7"), "total7"); // no map context: a plain copy
    SpmSetMapContext(SpmNewMap());
    EXPECT_EQ(unique("q12"), "q11"); // only one digit goes
    // Only the exact name stem + n blocks n: not a leading zero, a sign, a
    // tail after the digits or a number too long for any counter.
    for (const char *name : {"total1", "total2", "total03", "total+3", "total3x", "total",
                             "total99999999999999999999"})
        SpmAddSPBind()->altName = strdup(name);
    SpmAddSPBind(); // no altName: blocks nothing
    EXPECT_EQ(unique("total2"), "total3");
}

TEST_F(MapModel, SmallHelpersOfBindsAndColumns) {
    SpmCallbackBind *a = SpmNewCallbackBind();
    SpmCallbackBind *b = SpmNewCallbackBind();
    b->callOrder = 4;
    Set(&a->finalCode, "old");
    AcCopyActBind(a, b);
    EXPECT_EQ(a->callOrder, 4);
    EXPECT_EQ(a->finalCode, nullptr);
    SpmDestroyCallbackBind(&a);
    SpmDestroyCallbackBind(&b);

    SpmSPBind *bind = SpmCreateListsForSpmBind(1, 0, 0);
    auto *col = Nth<SpmColBind>(bind->colBinds, 0);
    col->options = SutNewList(); // an empty option list is no detail
    EXPECT_EQ(RdHasDetail(col), 0);
    SutAddList(col->options, strdup("x"));
    EXPECT_NE(RdHasDetail(col), 0);
    SpmDestroySPBind(&bind);
}

TEST_F(MapModel, WbeDestroySpmSPBindDestroysOnlyBindsOfTheMap) {
    SpmSPBind *loose = SpmNewSPBind();
    EXPECT_EQ(Printed([&] { EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0); }),
              "Error - The Project map has somehow been destroyed.  Save your work!\n");
    SpmSPBind *kept = SpmAddSPBind();
    SpmSPBind *gone = SpmAddSPBind();
    EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0); // not in the map
    EXPECT_EQ(WbeDestroySpmSPBind(&gone), 1);
    EXPECT_EQ(gone, nullptr);
    EXPECT_EQ(Pointers(SutCopyList(SpmGetMapContext()->spBinds)), (std::vector<void *>{kept}));
    SpmDestroySPBind(&loose);
}

} // namespace
