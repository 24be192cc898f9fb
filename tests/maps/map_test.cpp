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

SpmCallbackBind *call0(SpmSPBind *b) {
    return nth<SpmCallbackBind>(b->callBinds, 0);
}

// An applied bind in the context map run from callback cb of page|widget.
SpmSPBind *addApplied(const char *page, const char *widget, const char *cb, int order) {
    SpmSPBind *b = SpmAddSPBindAndCreateLists(0, 1, 0);
    b->beenApplied = 1;
    set(&call0(b)->interface, page);
    set(&call0(b)->swidget, widget);
    set(&call0(b)->callbackName, cb);
    call0(b)->callOrder = order;
    return b;
}

std::vector<void *> pointers(SutList *list) {
    std::vector<void *> out(list->items, list->items + list->count);
    SutDeleteList(list);
    return out;
}

TEST_F(MapModel, ConstructorsSetTheDocumentedStartingValues) {
    SpmSPBind *b = SpmCreateListsForSpmBind(1, 1, 1);
    EXPECT_EQ(stored(b), "\"\" 0 \"\" 0 null 0 null 0 \"NO_CACHE\" null null none 0 none\n"
                         "col null null 0 null 0 null 0 null -1 -1 null null 1 0 0 none\n"
                         "call null null null 0 null null \"NO_WP\" -1 0 \"ROW_INDEX\" null "
                         "\"NO_QUEUE_FILE\" none\n"
                         "arg null 0 null -1 -1 \"\"\"\" none");
    EXPECT_EQ(unstored(b), " 0 0 0 0 0 0 0 0");
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
    EXPECT_EQ(pointers(SutCopyList(map->spBinds)), (std::vector<void *>{first, added}));
}

TEST_F(MapModel, InterfaceListReportsZeroOnChangeAndOneOtherwise) {
    SpmMap *m = SpmNewMap();
    EXPECT_EQ(SpmAddIface(m, "Page1"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 1);
    EXPECT_EQ(SpmRemoveIface(m, "page2"), 1); // case-sensitive
    // Renaming the first leaves it last.
    EXPECT_EQ(SpmRenameIface(m, "Page1", "Start"), 0);
    EXPECT_EQ(items(m->interfaces), (Strings{"Page2", "Start"}));
    SpmDestroyMap(&m);
}

TEST_F(MapModel, LookupsCompareExactly) {
    EXPECT_EQ(AcGetBindings("P", "W", "F"), nullptr); // no context
    SpmSPBind *noName = SpmAddSPBind();
    SpmSPBind *a = SpmAddSPBind();
    set(&a->name, "orders");
    set(&a->altName, "bind1");
    EXPECT_EQ(SpmGetMapByName("", "", "orders"), a);
    EXPECT_EQ(SpmGetMapByName("", "", "Orders"), nullptr);
    // The null-safe compare lets a null name find a bind without altName.
    EXPECT_EQ(WbeGetSPBindFromName(nullptr), noName);

    SpmSPBind *b1 = addApplied("P", "W", "F", 0);
    addApplied("P", "W", "F", 0)->beenApplied = 0;
    addApplied("P", "Other", "F", 0);
    SpmSPBind *b4 = addApplied("P", "W", "F", 0);
    EXPECT_EQ(pointers(AcGetBindings("P", "W", "F")), (std::vector<void *>{b1, b4}));
}

TEST_F(MapModel, AcSortBindingsIsAStableBubbleSortThatStopsAtABrokenItem) {
    SpmSPBind *a = addApplied("P", "W", "F", 2);
    SpmSPBind *b = addApplied("P", "W", "F", 1);
    SpmSPBind *c = addApplied("P", "W", "F", 2);
    SpmSPBind *d = addApplied("P", "W", "F", 0);
    SutList *list = AcGetBindings("P", "W", "F");
    AcSortBindings(list);
    EXPECT_EQ(pointers(list), (std::vector<void *>{d, b, a, c})); // equal keys keep their order

    // The first pass walks from the end: it swaps d forward past c, then
    // meets the bind without callback binds and stops there.
    SpmSPBind *broken = SpmAddSPBind();
    SutList *partial = SutNewList();
    for (SpmSPBind *x : {a, broken, c, d})
        SutAddList(partial, x);
    AcSortBindings(partial);
    EXPECT_EQ(pointers(partial), (std::vector<void *>{a, broken, d, c}));
}

TEST_F(MapModel, SpmCopyChecksCountsAndRemovesOnlyEveryOtherSurplusCallbackBind) {
    SpmSPBind *src = SpmCreateListsForSpmBind(0, 1, 0);
    SpmSPBind *wrong = SpmCreateListsForSpmBind(1, 1, 0);
    set(&src->name, "n");
    EXPECT_EQ(printed([&] { EXPECT_EQ(SpmCopy(wrong, src), 0); }),
              "Error - Source colbinds/argbinds don't match destination.\n");
    EXPECT_EQ(wrong->name, nullptr);
    SpmDestroySPBind(&wrong);

    SpmSPBind *dest = SpmCreateListsForSpmBind(0, 4, 0);
    const char *names[] = {"one", "two", "three", "four"};
    for (int i = 0; i < 4; i++)
        set(&nth<SpmCallbackBind>(dest->callBinds, i)->callbackName, names[i]);
    set(&call0(src)->callbackName, "src");
    auto calls = [](SpmSPBind *bind) {
        return each<SpmCallbackBind>(bind->callBinds,
                                     [](SpmCallbackBind *k) { return str(k->callbackName); });
    };
    EXPECT_EQ(SpmCopy(dest, src), 1);
    EXPECT_EQ(calls(dest), (Strings{"src", "three"}));
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
}

// Clears the widgets of the bind's columns and callbacks.
void clearWidgets(SpmSPBind *bind) {
    for (int i = 0; i < SutSizList(bind->colBinds); i++)
        set(&nth<SpmColBind>(bind->colBinds, i)->swidget, nullptr);
    for (int i = 0; i < SutSizList(bind->callBinds); i++)
        set(&nth<SpmCallbackBind>(bind->callBinds, i)->swidget, nullptr);
}

TEST_F(MapModel, SpmDupCopiesEveryFieldButTheWidgets) {
    TempDir dir;
    SpmMap *map = sampleMap(dir);
    for (int b = 0; b < SutSizList(map->spBinds); b++) {
        SpmSPBind *src = nth<SpmSPBind>(map->spBinds, b);
        src->editor = reinterpret_cast<void *>(0x1234);
        nth<SpmCallbackBind>(src->callBinds, 0)->transientC = 2;
        SpmSPBind *copy = SpmDup(src);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(unstored(copy), unstored(src));
        const std::string copied = stored(copy);
        clearWidgets(copy);
        EXPECT_EQ(copied, stored(copy)); // the copy is bound to no widget
        clearWidgets(src);
        EXPECT_EQ(stored(copy), stored(src)); // apart from that it equals the source
        SpmDestroySPBind(&copy);
    }
    SpmDestroyMap(&map);
}

TEST_F(MapModel, UniqueNamesCountUpFromTheStemLessOneDigit) {
    auto unique = [](const char *base) { return take(WbeGetUniqueSPName(base)); };
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
    set(&a->finalCode, "old");
    AcCopyActBind(a, b);
    EXPECT_EQ(a->callOrder, 4);
    EXPECT_EQ(a->finalCode, nullptr);
    SpmDestroyCallbackBind(&a);
    SpmDestroyCallbackBind(&b);

    SpmSPBind *bind = SpmCreateListsForSpmBind(1, 0, 0);
    auto *col = nth<SpmColBind>(bind->colBinds, 0);
    col->options = SutNewList(); // an empty option list is no detail
    EXPECT_EQ(RdHasDetail(col), 0);
    SutAddList(col->options, strdup("x"));
    EXPECT_NE(RdHasDetail(col), 0);
    SpmDestroySPBind(&bind);
}

TEST_F(MapModel, WbeDestroySpmSPBindDestroysOnlyBindsOfTheMap) {
    SpmSPBind *loose = SpmNewSPBind();
    EXPECT_EQ(printed([&] { EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0); }),
              "Error - The Project map has somehow been destroyed.  Save your work!\n");
    SpmSPBind *kept = SpmAddSPBind();
    SpmSPBind *gone = SpmAddSPBind();
    EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0); // not in the map
    EXPECT_EQ(WbeDestroySpmSPBind(&gone), 1);
    EXPECT_EQ(gone, nullptr);
    EXPECT_EQ(pointers(SutCopyList(SpmGetMapContext()->spBinds)), (std::vector<void *>{kept}));
    SpmDestroySPBind(&loose);
}

} // namespace
