// The binding map model: starting values, list building, destructors, the
// interface list, lookups, copying and the naming of new binds.
#include "support/bind_text.hpp"
#include "bindcode/upkeep.h"
#include "support/test_dist.hpp"

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
    call0(b)->interface = strdup(page);
    call0(b)->swidget = strdup(widget);
    call0(b)->callbackName = strdup(cb);
    call0(b)->callOrder = order;
    return b;
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
    EXPECT_EQ(SpmDestroySPBind(&b), -1);

    SpmColBind *c = SpmNewColBind();
    EXPECT_EQ(SpmDestroyColBind(&c), 0);
    EXPECT_EQ(SpmDestroyColBind(&c), -1); // the pointer was cleared

    SpmMap *m = SpmNewMap();
    EXPECT_EQ(m->spBinds, nullptr);
    EXPECT_EQ(m->interfaces, nullptr);
    EXPECT_EQ(SpmDestroyMap(&m), 0);
    EXPECT_EQ(m, nullptr);
    EXPECT_EQ(SpmDestroyMap(&m), -1);
}

TEST_F(MapModel, ListBuildingPutsOnlyAddedBindsIntoTheContextMap) {
    EXPECT_EQ(SpmGetMapContext(), nullptr);
    SpmSPBind *first = SpmAddSPBind();
    SpmMap *map = SpmGetMapContext();
    ASSERT_NE(map, nullptr);
    EXPECT_EQ(SutSizList(map->spBinds), 1);
    EXPECT_EQ(SutGetNList(map->spBinds, 0), first);

    SpmSPBind *loose = SpmCreateListsForSpmBind(2, 3, 1);
    EXPECT_EQ(SutSizList(loose->colBinds), 2);
    EXPECT_EQ(SutSizList(loose->callBinds), 3);
    EXPECT_EQ(SutSizList(loose->argBinds), 1);
    EXPECT_EQ(SutSizList(map->spBinds), 1);
    EXPECT_EQ(SutGetPosFromItem(map->spBinds, loose), -1);
    SpmDestroySPBind(&loose);

    SpmSPBind *added = SpmAddSPBindAndCreateLists(0, 2, 0);
    EXPECT_EQ(added->colBinds, nullptr);
    EXPECT_EQ(SutSizList(added->callBinds), 2);
    EXPECT_EQ(added->argBinds, nullptr);
    EXPECT_EQ(SutGetNList(map->spBinds, 1), added);

    SpmColBind *col = SpmAddColBindToSP(added);
    EXPECT_EQ(SutGetNList(added->colBinds, 0), col);
    EXPECT_EQ(SpmAddColBindToSP(nullptr), nullptr);

    // Setting a context hands back the one it replaces.
    SpmMap *other = SpmNewMap();
    EXPECT_EQ(SpmSetMapContext(other), map);
    EXPECT_EQ(SpmSetMapContext(map), other);
    SpmDestroyMap(&other);
}

TEST_F(MapModel, InterfaceListReportsZeroOnChangeAndOneOtherwise) {
    SpmMap *m = SpmNewMap();
    EXPECT_EQ(SpmAddIface(m, "Page1"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page3"), 0);
    EXPECT_EQ(SpmAddIface(m, "Page2"), 1);
    EXPECT_EQ(SpmAddIface(m, "page2"), 0); // case-sensitive
    EXPECT_EQ(SpmAddIface(m, nullptr), 1);
    EXPECT_EQ(SpmAddIface(nullptr, "x"), 1);
    EXPECT_EQ(SpmRemoveIface(m, "page2"), 0);
    EXPECT_EQ(SpmRemoveIface(m, "page2"), 1);

    // Renaming the first of three leaves it last.
    EXPECT_EQ(SpmRenameIface(m, "Page1", "Start"), 0);
    EXPECT_EQ(items(m->interfaces), (Strings{"Page2", "Page3", "Start"}));
    EXPECT_EQ(SpmRenameIface(m, "Page1", "X"), 1);
    EXPECT_EQ(SpmRenameIface(m, "Page2", nullptr), 1);
    SpmDestroyMap(&m);
}

TEST_F(MapModel, LookupsCompareExactlyAndNeedAContext) {
    EXPECT_EQ(SpmGetMapByName("s", "d", "n"), nullptr);
    EXPECT_EQ(WbeGetSPBindFromName("bind1"), nullptr);
    EXPECT_EQ(AcGetBindings("P", "W", "F"), nullptr);

    SpmSPBind *noName = SpmAddSPBind();
    SpmSPBind *a = SpmAddSPBind();
    set(&a->servername, "srv");
    set(&a->dbname, "db");
    set(&a->name, "orders");
    set(&a->altName, "bind1");
    EXPECT_EQ(SpmGetMapByName("srv", "db", "orders"), a);
    EXPECT_EQ(SpmGetMapByName("srv", "db", "Orders"), nullptr);
    EXPECT_EQ(SpmGetMapByName("srv", nullptr, "orders"), nullptr);
    EXPECT_EQ(WbeGetSPBindFromName("bind1"), a);
    EXPECT_EQ(WbeGetSPBindFromName("bind2"), nullptr);
    // The null-safe compare lets a null name find a bind without altName.
    EXPECT_EQ(WbeGetSPBindFromName(nullptr), noName);

    // An empty map gives an empty list, not none.
    SwdResetTheMap();
    SpmSetMapContext(SpmNewMap());
    SutList *none = AcGetBindings("P", "W", "F");
    EXPECT_EQ(SutSizList(none), 0);
    SutDeleteList(none);
}

TEST_F(MapModel, AcGetBindingsReturnsAppliedBindsOfTheCallbackInMapOrder) {
    SpmSPBind *b1 = addApplied("P", "W", "F", 0);
    SpmSPBind *unapplied = addApplied("P", "W", "F", 0);
    unapplied->beenApplied = 0;
    addApplied("P", "Other", "F", 0);
    SpmSPBind *b4 = addApplied("P", "W", "F", 0);
    SpmAddSPBind(); // no callback bind at all
    SutList *found = AcGetBindings("P", "W", "F");
    EXPECT_EQ(std::vector<void *>(found->items, found->items + found->count),
              (std::vector<void *>{b1, b4}));
    SutDeleteList(found);
}

TEST_F(MapModel, AcSortBindingsIsAStableBubbleSortThatStopsAtABrokenItem) {
    SpmSPBind *a = addApplied("P", "W", "F", 2);
    SpmSPBind *b = addApplied("P", "W", "F", 1);
    SpmSPBind *c = addApplied("P", "W", "F", 2);
    SpmSPBind *d = addApplied("P", "W", "F", 0);
    auto order = [](SutList *list) {
        std::vector<void *> out(list->items, list->items + list->count);
        SutDeleteList(list);
        return out;
    };
    SutList *list = AcGetBindings("P", "W", "F");
    AcSortBindings(list);
    EXPECT_EQ(order(list), (std::vector<void *>{d, b, a, c})); // equal keys keep their order

    // The first pass walks from the end: it swaps d forward past c, then
    // meets the bind without callback binds and stops there.
    SpmSPBind *broken = SpmAddSPBind();
    SutList *partial = SutNewList();
    SutAddList(partial, a);
    SutAddList(partial, broken);
    SutAddList(partial, c);
    SutAddList(partial, d);
    AcSortBindings(partial);
    EXPECT_EQ(order(partial), (std::vector<void *>{a, broken, d, c}));

    SutList *one = SutNewList();
    SutAddList(one, broken);
    AcSortBindings(one); // fewer than two items: left alone
    AcSortBindings(nullptr);
    EXPECT_EQ(SutGetNList(one, 0), broken);
    SutDeleteList(one);
}

TEST_F(MapModel, SpmCopyRefusesDifferentColumnOrArgumentCounts) {
    SpmSPBind *src = SpmCreateListsForSpmBind(2, 1, 0);
    SpmSPBind *dest = SpmCreateListsForSpmBind(3, 1, 0);
    src->name = strdup("n");
    const std::string error = "Error - Source colbinds/argbinds don't match destination.\n";
    EXPECT_EQ(printed([&] { EXPECT_EQ(SpmCopy(dest, src), 0); }), error);
    EXPECT_EQ(dest->name, nullptr);
    SpmSPBind *args = SpmCreateListsForSpmBind(3, 1, 1);
    EXPECT_EQ(printed([&] { EXPECT_EQ(SgeSpmCopy(args, dest), 0); }), error);
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
    SpmDestroySPBind(&args);
}

TEST_F(MapModel, SpmCopyRemovesOnlyEveryOtherSurplusCallbackBind) {
    SpmSPBind *src = SpmCreateListsForSpmBind(0, 1, 0);
    SpmSPBind *dest = SpmCreateListsForSpmBind(0, 4, 0);
    const char *names[] = {"one", "two", "three", "four"};
    for (int i = 0; i < 4; i++) {
        auto *k = nth<SpmCallbackBind>(dest->callBinds, i);
        k->callbackName = strdup(names[i]);
        k->callOrder = 10 + i;
    }
    call0(src)->callbackName = strdup("src");
    call0(src)->callOrder = 7;
    auto calls = [](SpmSPBind *b) {
        return each<SpmCallbackBind>(b->callBinds, [](SpmCallbackBind *k) {
            return str(k->callbackName) + "/" + std::to_string(k->callOrder);
        });
    };
    EXPECT_EQ(SpmCopy(dest, src), 1);
    EXPECT_EQ(calls(dest), (Strings{"src/7", "three/12"}));
    // With fewer callback binds the destination grows to the source's count.
    SpmSPBind *small = SpmCreateListsForSpmBind(0, 0, 0);
    EXPECT_EQ(SpmCopy(small, dest), 1);
    EXPECT_EQ(calls(small), (Strings{"src/7", "three/12"}));
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
    SpmDestroySPBind(&small);
}

// A bind with random values in every field, in-memory ones included.
SpmSPBind *fullBind(Random &r) {
    SpmSPBind *b = randomBind(r);
    b->editor = reinterpret_cast<void *>(0x1234);
    b->isChanged = 1;
    for (int i = 0; i < SutSizList(b->colBinds); i++)
        nth<SpmColBind>(b->colBinds, i)->spare = 7;
    for (int i = 0; i < SutSizList(b->callBinds); i++)
        nth<SpmCallbackBind>(b->callBinds, i)->transientC = 2;
    for (int i = 0; i < SutSizList(b->argBinds); i++)
        nth<SpmArgBind>(b->argBinds, i)->isChanged = 1;
    return b;
}

TEST_F(MapModel, SpmDupCopiesEveryFieldButTheWidgets) {
    Random r(77);
    for (int round = 0; round < 20; round++) {
        SpmSPBind *src = fullBind(r);
        SpmSPBind *copy = SpmDup(src);
        ASSERT_NE(copy, nullptr);
        EXPECT_EQ(unstored(copy), unstored(src));
        if (src->options) {
            EXPECT_NE(copy->options, src->options); // copies, not shared lists
        }
        // The copy is bound to no widget: apart from that it equals the source.
        for (int i = 0; i < SutSizList(copy->colBinds); i++) {
            EXPECT_EQ(nth<SpmColBind>(copy->colBinds, i)->swidget, nullptr);
            set(&nth<SpmColBind>(copy->colBinds, i)->swidget,
                nth<SpmColBind>(src->colBinds, i)->swidget);
        }
        for (int i = 0; i < SutSizList(copy->callBinds); i++) {
            EXPECT_EQ(nth<SpmCallbackBind>(copy->callBinds, i)->swidget, nullptr);
            set(&nth<SpmCallbackBind>(copy->callBinds, i)->swidget,
                nth<SpmCallbackBind>(src->callBinds, i)->swidget);
        }
        EXPECT_EQ(stored(copy), stored(src));
        SpmDestroySPBind(&src);
        SpmDestroySPBind(&copy);
    }

    // Absent strings and lists stay absent in the copy.
    SpmSPBind *bare = SpmCreateListsForSpmBind(1, 0, 0);
    SpmSPBind *bareCopy = SpmDup(bare);
    EXPECT_EQ(stored(bareCopy), stored(bare));
    EXPECT_EQ(SpmDup(nullptr), nullptr);
    SpmDestroySPBind(&bare);
    SpmDestroySPBind(&bareCopy);
}

TEST_F(MapModel, WbeGetUniqueSPNameCountsUpFromTheStemLessOneDigit) {
    auto unique = [](const char *base) { return take(WbeGetUniqueSPName(base)); };
    EXPECT_EQ(unique("total7"), "total7"); // no map context: a plain copy
    SpmSetMapContext(SpmNewMap());
    EXPECT_EQ(unique("q7"), "q1");
    EXPECT_EQ(unique("q12"), "q11"); // only one digit goes
    EXPECT_EQ(unique("total"), "total1");
    SpmAddSPBind()->altName = strdup("total1");
    SpmAddSPBind(); // no altName: blocks nothing
    SpmAddSPBind()->altName = strdup("total2");
    EXPECT_EQ(unique("total"), "total3");
    EXPECT_EQ(unique("total2"), "total3");
    // Only the exact name stem + n blocks n: not a leading zero, a sign, a
    // tail after the digits or a number too long for any counter.
    for (const char *near : {"total03", "total+3", "total3x", "total", "total99999999999999999999"})
        SpmAddSPBind()->altName = strdup(near);
    EXPECT_EQ(unique("total"), "total3");
    SpmAddSPBind()->altName = strdup("total3");
    EXPECT_EQ(unique("total"), "total4");
    EXPECT_EQ(unique(""), "1");
    EXPECT_EQ(unique(nullptr), std::nullopt);
}

TEST_F(MapModel, PjDuplicateObjBindingMakesAChangedCopyForAnotherWidget) {
    Random r(5);
    SpmSPBind *src = randomBind(r);
    set(&src->altName, "orders2");
    SpmSetMapContext(SpmNewMap());
    SpmGetMapContext()->spBinds = SutNewList();
    SutAddList(SpmGetMapContext()->spBinds, src); // the map owns it now
    SpmSPBind *dup = PjDuplicateObjBinding(src, "Page9", "Form9");
    ASSERT_NE(dup, nullptr);
    EXPECT_EQ(dup->isChanged, 1);
    EXPECT_EQ(dup->beenApplied, 1);
    EXPECT_EQ(dup->editor, nullptr);
    for (int i = 0; i < SutSizList(dup->callBinds); i++) {
        EXPECT_STREQ(nth<SpmCallbackBind>(dup->callBinds, i)->interface, "Page9");
        EXPECT_STREQ(nth<SpmCallbackBind>(dup->callBinds, i)->swidget, "Form9");
    }
    EXPECT_STREQ(dup->altName, "orders1");
    EXPECT_EQ(SutGetPosFromItem(SpmGetMapContext()->spBinds, dup), -1);
    SpmDestroySPBind(&dup);

    SpmSPBind *noCalls = SpmCreateListsForSpmBind(0, 0, 0);
    EXPECT_EQ(PjDuplicateObjBinding(noCalls, "P", "W"), nullptr);
    SpmDestroySPBind(&noCalls);
}

TEST_F(MapModel, SmallHelpersOfBindsAndColumns) {
    SpmCallbackBind *a = SpmNewCallbackBind();
    SpmCallbackBind *b = SpmNewCallbackBind();
    b->callOrder = 4;
    b->initCode = strdup("i");
    a->finalCode = strdup("old");
    AcCopyActBind(a, b);
    EXPECT_EQ(a->callOrder, 4);
    EXPECT_STREQ(a->initCode, "i");
    EXPECT_EQ(a->finalCode, nullptr);
    AcCopyActBind(nullptr, b);
    SpmDestroyCallbackBind(&a);
    SpmDestroyCallbackBind(&b);

    SpmSPBind *bind = SpmCreateListsForSpmBind(3, 2, 0);
    EXPECT_EQ(WbeMarkSpMapAsChanged(bind), 1);
    EXPECT_EQ(call0(bind)->isChanged, 1);
    EXPECT_EQ(nth<SpmCallbackBind>(bind->callBinds, 1)->isChanged, 1);
    EXPECT_EQ(bind->isChanged, 0);

    EXPECT_EQ(BeGetTemplateColBind(bind->colBinds), nullptr);
    auto *second = nth<SpmColBind>(bind->colBinds, 1);
    second->interface = strdup("Page1");
    EXPECT_EQ(BeGetTemplateColBind(bind->colBinds), second);

    EXPECT_EQ(RdHasDetail(second), 0);
    second->order = 1;
    EXPECT_NE(RdHasDetail(second), 0);
    second->order = 0;
    second->options = SutNewList();
    EXPECT_EQ(RdHasDetail(second), 0);
    SutAddList(second->options, strdup("x"));
    EXPECT_NE(RdHasDetail(second), 0);
    auto *third = nth<SpmColBind>(bind->colBinds, 2);
    third->clientData = strdup("d");
    EXPECT_NE(RdHasDetail(third), 0);
    auto *first = nth<SpmColBind>(bind->colBinds, 0);
    first->popCallbackName = strdup("p");
    EXPECT_NE(RdHasDetail(first), 0);
    EXPECT_EQ(SpmGetKindOfSP(bind), 0);
    SpmDestroySPBind(&bind);
}

TEST_F(MapModel, WbeDestroySpmSPBindDestroysOnlyBindsOfTheMap) {
    SpmSPBind *none = nullptr;
    EXPECT_EQ(WbeDestroySpmSPBind(&none), 1);

    SpmSPBind *loose = SpmNewSPBind();
    EXPECT_EQ(printed([&] { EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0); }),
              "Error - The Project map has somehow been destroyed.  Save your work!\n");
    EXPECT_NE(loose, nullptr);

    SpmSPBind *kept = SpmAddSPBind();
    SpmSPBind *gone = SpmAddSPBind();
    EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0);
    EXPECT_NE(loose, nullptr);
    EXPECT_EQ(WbeDestroySpmSPBind(&gone), 1);
    EXPECT_EQ(gone, nullptr);
    ASSERT_EQ(SutSizList(SpmGetMapContext()->spBinds), 1);
    EXPECT_EQ(SutGetNList(SpmGetMapContext()->spBinds, 0), kept);
    SpmDestroySPBind(&loose);
}

TEST_F(MapModel, ResetAndVerifiedFlag) {
    SpmAddSPBind();
    EXPECT_EQ(SwdResetTheMap(), 0);
    EXPECT_EQ(SpmGetMapContext(), nullptr);
    EXPECT_EQ(SwdResetTheMap(), 0);

    SpmMapVerified();
    SpmMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 1);
    SpmResetMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 0);
}

} // namespace
