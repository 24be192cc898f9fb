// The binding map model: starting values, list building, destructors, the
// interface list, lookups, copying and the naming of new binds.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "maps/map.h"
#include "maps/upkeep.h"
#include "maps/bind_text.hpp"

namespace {

class MapModel : public ::testing::Test {
  protected:
    void SetUp() override { SwdResetTheMap(); }
    void TearDown() override { SwdResetTheMap(); }
};

std::string str(const char *s) {
    return s ? s : "<null>";
}

SpmCallbackBind *call0(SpmSPBind *b) {
    return static_cast<SpmCallbackBind *>(SutGetNList(b->callBinds, 0));
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
    SpmSPBind *b = SpmNewSPBind();
    EXPECT_STREQ(b->servername, "");
    EXPECT_STREQ(b->dbname, "");
    EXPECT_STREQ(b->cacheFlag, "NO_CACHE");
    EXPECT_EQ(b->name, nullptr);
    EXPECT_EQ(b->altName, nullptr);
    EXPECT_EQ(b->cacheKey, nullptr);
    EXPECT_EQ(b->indexKey, nullptr);
    EXPECT_EQ(b->id, 0);
    EXPECT_EQ(b->dbVendor, 0);
    EXPECT_EQ(b->beenApplied, 0);
    EXPECT_EQ(b->isChanged, 0);
    EXPECT_EQ(b->colBinds, nullptr);
    EXPECT_EQ(b->callBinds, nullptr);
    EXPECT_EQ(b->argBinds, nullptr);
    EXPECT_EQ(b->sqlFrags, nullptr);
    EXPECT_EQ(b->options, nullptr);
    EXPECT_EQ(SpmDestroySPBind(&b), 0);
    EXPECT_EQ(b, nullptr);
    EXPECT_EQ(SpmDestroySPBind(&b), -1);

    SpmColBind *c = SpmNewColBind();
    EXPECT_EQ(c->group, 1);
    EXPECT_EQ(c->dataTypeId, -1);
    EXPECT_EQ(c->dataSize, -1);
    EXPECT_EQ(c->order, 0);
    EXPECT_EQ(c->computeId, 0);
    EXPECT_EQ(c->computeColumn, 0);
    EXPECT_EQ(c->swidget, nullptr);
    EXPECT_EQ(c->clientData, nullptr);
    EXPECT_EQ(SpmDestroyColBind(&c), 0);
    EXPECT_EQ(SpmDestroyColBind(&c), -1);

    SpmCallbackBind *k = SpmNewCallbackBind();
    EXPECT_STREQ(k->useDialog, "NO_WP");
    EXPECT_STREQ(k->indexFlag, "ROW_INDEX");
    EXPECT_STREQ(k->queueFile, "NO_QUEUE_FILE");
    EXPECT_EQ(k->maxRows, -1);
    EXPECT_EQ(k->isWritten, 0);
    EXPECT_EQ(k->callOrder, 0);
    EXPECT_EQ(k->indexValue, nullptr);
    EXPECT_EQ(k->initCode, nullptr);
    EXPECT_EQ(SpmDestroyCallbackBind(&k), 0);
    EXPECT_EQ(SpmDestroyCallbackBind(&k), -1);

    SpmArgBind *a = SpmNewArgBind();
    EXPECT_STREQ(a->initCode, "\"\"");
    EXPECT_EQ(a->dataTypeId, -1);
    EXPECT_EQ(a->dataSize, -1);
    EXPECT_EQ(a->argName, nullptr);
    EXPECT_EQ(SpmDestroyArgBind(&a), 0);
    EXPECT_EQ(SpmDestroyArgBind(&a), -1);

    SpmMap *m = SpmNewMap();
    EXPECT_EQ(m->spBinds, nullptr);
    EXPECT_EQ(m->interfaces, nullptr);
    EXPECT_EQ(m->spare, 0);
    EXPECT_EQ(SpmDestroyMap(&m), 0);
    EXPECT_EQ(m, nullptr);
    EXPECT_EQ(SpmDestroyMap(&m), -1);
    EXPECT_EQ(SpmDestroyMap(nullptr), -1);
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
    EXPECT_EQ(SpmAddCallbackBindToSP(nullptr), nullptr);
    EXPECT_EQ(SpmAddArgBindToSP(nullptr), nullptr);

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
    ASSERT_EQ(SutSizList(m->interfaces), 3);
    EXPECT_STREQ(static_cast<char *>(SutGetNList(m->interfaces, 0)), "Page2");
    EXPECT_STREQ(static_cast<char *>(SutGetNList(m->interfaces, 1)), "Page3");
    EXPECT_STREQ(static_cast<char *>(SutGetNList(m->interfaces, 2)), "Start");
    EXPECT_EQ(SpmRenameIface(m, "Page1", "X"), 1);
    EXPECT_EQ(SpmRenameIface(m, nullptr, "X"), 1);
    EXPECT_EQ(SpmRenameIface(m, "Page2", nullptr), 1);
    EXPECT_EQ(SpmRemoveIface(nullptr, "Page2"), 1);
    SpmDestroyMap(&m);
}

TEST_F(MapModel, LookupsCompareExactlyAndNeedAContext) {
    EXPECT_EQ(SpmGetMapByName("s", "d", "n"), nullptr);
    EXPECT_EQ(WbeGetSPBindFromName("bind1"), nullptr);
    EXPECT_EQ(AcGetBindings("P", "W", "F"), nullptr);

    SpmSPBind *noName = SpmAddSPBind();
    SpmSPBind *a = SpmAddSPBind();
    free(a->servername);
    a->servername = strdup("srv");
    free(a->dbname);
    a->dbname = strdup("db");
    a->name = strdup("orders");
    a->altName = strdup("bind1");
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
    ASSERT_NE(none, nullptr);
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
    ASSERT_EQ(SutSizList(found), 2);
    EXPECT_EQ(SutGetNList(found, 0), b1);
    EXPECT_EQ(SutGetNList(found, 1), b4);
    SutDeleteList(found);
}

TEST_F(MapModel, AcSortBindingsIsAStableBubbleSortThatStopsAtABrokenItem) {
    SpmSPBind *a = addApplied("P", "W", "F", 2);
    SpmSPBind *b = addApplied("P", "W", "F", 1);
    SpmSPBind *c = addApplied("P", "W", "F", 2);
    SpmSPBind *d = addApplied("P", "W", "F", 0);
    SutList *list = AcGetBindings("P", "W", "F");
    AcSortBindings(list);
    ASSERT_EQ(SutSizList(list), 4);
    EXPECT_EQ(SutGetNList(list, 0), d);
    EXPECT_EQ(SutGetNList(list, 1), b);
    EXPECT_EQ(SutGetNList(list, 2), a); // equal keys keep their order
    EXPECT_EQ(SutGetNList(list, 3), c);
    SutDeleteList(list);

    // The first pass walks from the end: it swaps d forward past c, then
    // meets the bind without callback binds and stops there.
    SpmSPBind *broken = SpmAddSPBind();
    SutList *partial = SutNewList();
    SutAddList(partial, a);
    SutAddList(partial, broken);
    SutAddList(partial, c);
    SutAddList(partial, d);
    AcSortBindings(partial);
    EXPECT_EQ(SutGetNList(partial, 0), a);
    EXPECT_EQ(SutGetNList(partial, 1), broken);
    EXPECT_EQ(SutGetNList(partial, 2), d);
    EXPECT_EQ(SutGetNList(partial, 3), c);
    SutDeleteList(partial);

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
    testing::internal::CaptureStdout();
    EXPECT_EQ(SpmCopy(dest, src), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error - Source colbinds/argbinds don't match destination.\n");
    EXPECT_EQ(dest->name, nullptr);

    SpmSPBind *args = SpmCreateListsForSpmBind(3, 1, 1);
    testing::internal::CaptureStdout();
    EXPECT_EQ(SgeSpmCopy(args, dest), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error - Source colbinds/argbinds don't match destination.\n");
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
    SpmDestroySPBind(&args);
}

TEST_F(MapModel, SpmCopyRemovesOnlyEveryOtherSurplusCallbackBind) {
    SpmSPBind *src = SpmCreateListsForSpmBind(0, 1, 0);
    SpmSPBind *dest = SpmCreateListsForSpmBind(0, 4, 0);
    const char *names[] = {"one", "two", "three", "four"};
    for (int i = 0; i < 4; i++) {
        auto *k = static_cast<SpmCallbackBind *>(SutGetNList(dest->callBinds, i));
        k->callbackName = strdup(names[i]);
        k->callOrder = 10 + i;
    }
    call0(src)->callbackName = strdup("src");
    call0(src)->callOrder = 7;
    EXPECT_EQ(SpmCopy(dest, src), 1);
    ASSERT_EQ(SutSizList(dest->callBinds), 2);
    EXPECT_STREQ(call0(dest)->callbackName, "src");
    EXPECT_EQ(call0(dest)->callOrder, 7);
    auto *third = static_cast<SpmCallbackBind *>(SutGetNList(dest->callBinds, 1));
    EXPECT_STREQ(third->callbackName, "three");
    EXPECT_EQ(third->callOrder, 12);

    // With fewer callback binds the destination grows to the source's count.
    SpmSPBind *small = SpmCreateListsForSpmBind(0, 0, 0);
    EXPECT_EQ(SpmCopy(small, dest), 1);
    EXPECT_EQ(SutSizList(small->callBinds), 2);
    EXPECT_STREQ(static_cast<SpmCallbackBind *>(SutGetNList(small->callBinds, 1))->callbackName,
                 "three");
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&dest);
    SpmDestroySPBind(&small);
}

// A bind with every field set, for the copying tests.
SpmSPBind *fullBind() {
    SpmSPBind *b = SpmCreateListsForSpmBind(1, 1, 1);
    set(&b->servername, "srv");
    set(&b->dbname, "db");
    set(&b->name, "orders");
    set(&b->altName, "orders2");
    set(&b->cacheFlag, "TO_CACHE");
    set(&b->cacheKey, "ck");
    set(&b->indexKey, "ik");
    add(&b->sqlFrags, "select");
    add(&b->options, "a : b");
    b->dbVendor = 3;
    b->serverid = 4;
    b->dbid = 5;
    b->id = 1;
    b->editor = reinterpret_cast<void *>(0x1234);
    auto *col = nth<SpmColBind>(b->colBinds, 0);
    set(&col->swidget, "Entry");
    set(&col->interface, "Page1");
    set(&col->tableName, "t");
    set(&col->columnName, "c");
    set(&col->dataType, "int");
    set(&col->popCallbackName, "pop");
    set(&col->clientData, "cd");
    add(&col->options, "co");
    col->order = 2;
    col->tableId = 3;
    col->columnId = 4;
    col->dataTypeId = 5;
    col->dataSize = 6;
    col->isChanged = 1;
    col->spare = 7;
    col->group = 8;
    col->computeId = 9;
    col->computeColumn = 10;
    SpmCallbackBind *k = call0(b);
    set(&k->swidget, "Form1");
    set(&k->interface, "Page1");
    set(&k->callbackName, "F");
    set(&k->initCode, "init();");
    set(&k->finalCode, "final();");
    set(&k->useDialog, "USE_IT");
    set(&k->indexFlag, "NEXT_INDEX");
    set(&k->indexValue, "iv");
    set(&k->queueFile, "QUEUE_TO_FILE");
    add(&k->options, "ko");
    k->isWritten = 1;
    k->maxRows = 50;
    k->isChanged = 1;
    k->transientC = 2;
    k->callOrder = 3;
    auto *arg = nth<SpmArgBind>(b->argBinds, 0);
    set(&arg->argName, "p_id");
    set(&arg->dataType, "int");
    set(&arg->initCode, "VlGetInputValue(\"id\")");
    add(&arg->options, "ao");
    arg->argId = 1;
    arg->dataTypeId = 56;
    arg->dataSize = 4;
    arg->isChanged = 1;
    arg->spare = 9;
    return b;
}

TEST_F(MapModel, SpmDupCopiesEveryFieldButTheWidgets) {
    SpmSPBind *src = fullBind();
    SpmSPBind *copy = SpmDup(src);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(unstored(copy), unstored(src));
    EXPECT_NE(copy->sqlFrags, src->sqlFrags);
    EXPECT_NE(item(copy->options, 0), item(src->options, 0));
    EXPECT_NE(nth<SpmArgBind>(copy->argBinds, 0)->initCode,
              nth<SpmArgBind>(src->argBinds, 0)->initCode);
    // The copy is bound to no widget: apart from that it equals the source.
    EXPECT_EQ(nth<SpmColBind>(copy->colBinds, 0)->swidget, nullptr);
    EXPECT_EQ(call0(copy)->swidget, nullptr);
    set(&nth<SpmColBind>(copy->colBinds, 0)->swidget, "Entry");
    set(&call0(copy)->swidget, "Form1");
    EXPECT_EQ(stored(copy), stored(src));

    // Absent strings and lists stay absent in the copy.
    SpmSPBind *bare = SpmCreateListsForSpmBind(1, 0, 0);
    SpmSPBind *bareCopy = SpmDup(bare);
    EXPECT_EQ(stored(bareCopy), stored(bare));
    EXPECT_EQ(bareCopy->name, nullptr);
    EXPECT_EQ(SpmDup(nullptr), nullptr);
    SpmDestroySPBind(&bare);
    SpmDestroySPBind(&bareCopy);
    SpmDestroySPBind(&src);
    SpmDestroySPBind(&copy);
}

TEST_F(MapModel, WbeGetUniqueSPNameCountsUpFromTheStemLessOneDigit) {
    char *plain = WbeGetUniqueSPName("total7");
    EXPECT_STREQ(plain, "total7"); // no map context: a plain copy
    free(plain);

    SpmSetMapContext(SpmNewMap());
    auto unique = [](const char *base) {
        char *s = WbeGetUniqueSPName(base);
        std::string r = str(s);
        free(s);
        return r;
    };
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
    EXPECT_EQ(WbeGetUniqueSPName(nullptr), nullptr);
}

TEST_F(MapModel, PjDuplicateObjBindingMakesAChangedCopyForAnotherWidget) {
    SpmSPBind *src = fullBind();
    SpmSetMapContext(SpmNewMap());
    SpmGetMapContext()->spBinds = SutNewList();
    SutAddList(SpmGetMapContext()->spBinds, src); // the map owns it now
    SpmSPBind *dup = PjDuplicateObjBinding(src, "Page9", "Form9");
    ASSERT_NE(dup, nullptr);
    EXPECT_EQ(dup->isChanged, 1);
    EXPECT_EQ(dup->beenApplied, 1);
    EXPECT_EQ(dup->editor, nullptr);
    EXPECT_STREQ(call0(dup)->interface, "Page9");
    EXPECT_STREQ(call0(dup)->swidget, "Form9");
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
    EXPECT_EQ(static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, 1))->isChanged, 1);
    EXPECT_EQ(bind->isChanged, 0);

    EXPECT_EQ(BeGetTemplateColBind(bind->colBinds), nullptr);
    auto *second = static_cast<SpmColBind *>(SutGetNList(bind->colBinds, 1));
    second->interface = strdup("Page1");
    EXPECT_EQ(BeGetTemplateColBind(bind->colBinds), second);
    EXPECT_EQ(BeGetTemplateColBind(nullptr), nullptr);

    EXPECT_EQ(RdHasDetail(second), 0);
    second->order = 1;
    EXPECT_NE(RdHasDetail(second), 0);
    second->order = 0;
    second->options = SutNewList();
    EXPECT_EQ(RdHasDetail(second), 0);
    SutAddList(second->options, strdup("x"));
    EXPECT_NE(RdHasDetail(second), 0);
    auto *third = static_cast<SpmColBind *>(SutGetNList(bind->colBinds, 2));
    third->clientData = strdup("d");
    EXPECT_NE(RdHasDetail(third), 0);
    auto *first = static_cast<SpmColBind *>(SutGetNList(bind->colBinds, 0));
    first->popCallbackName = strdup("p");
    EXPECT_NE(RdHasDetail(first), 0);
    EXPECT_EQ(SpmGetKindOfSP(bind), 0);
    SpmDestroySPBind(&bind);
}

TEST_F(MapModel, WbeDestroySpmSPBindDestroysOnlyBindsOfTheMap) {
    SpmSPBind *none = nullptr;
    EXPECT_EQ(WbeDestroySpmSPBind(&none), 1);

    SpmSPBind *loose = SpmNewSPBind();
    testing::internal::CaptureStdout();
    EXPECT_EQ(WbeDestroySpmSPBind(&loose), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
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

    SpmResetMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 0);
    SpmMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 1);
    SpmMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 1);
    SpmResetMapVerified();
    EXPECT_EQ(SpmIsMapVerified(), 0);
}

} // namespace
