// Map upkeep: regenerating changed callbacks into the module functions,
// installing one bind's code, following deleted page elements through the
// map, and the comparisons and names the builder relies on.
#include "support/bind_text.hpp"
#include "support/binding_code.hpp"
#include "support/test_dist.hpp"

namespace {

// The callback code frame holding the code of each bind's first callback.
std::string Frame(std::initializer_list<SpmSPBind *> binds) {
    std::string text = kCodeHead;
    for (SpmSPBind *b : binds)
        text += (text == kCodeHead ? "" : "\n") +
                Owned(getCallbackCode(b, Nth<SpmCallbackBind>(b->callBinds, 0), 1));
    return text + "\n}";
}

} // namespace

TEST(MapUpkeep, ChangedBindsRegenerateTheirCallbacks) {
    Workspace ws;
    VlHtmlDoc *shop = AddPage("shop.html", {"order"}, {"home"});
    VlModule *module = AddModule(shop);
    SpmSPBind *first = AddBind("q1", "F", "order");
    SpmSPBind *second = AddBind("q2", "F", "order");
    SpmSPBind *other = AddBind("q3", "A", "home");
    AddBind("q4", "F", "order")->beenApplied = 0;
    Nth<SpmColBind>(second->colBinds, 0)->isChanged = 1;

    // One text for the form's callback: both applied requests in map order.
    EXPECT_EQ(SwdWriteAllMapChanges(), 4);
    ASSERT_EQ(SutSizList(module->functions), 1);
    EXPECT_EQ(FunctionAt(module, 0)->form, FormOf(shop, "order"));
    EXPECT_EQ(FunctionAt(module, 0)->funcCode, Frame({first, second}));
    EXPECT_EQ(module->saved, 0);
    EXPECT_EQ(Nth<SpmColBind>(second->colBinds, 0)->isChanged, 0);

    // Nothing changed: nothing is rewritten. An argument's flag counts too.
    Set(&FunctionAt(module, 0)->funcCode, "kept");
    Nth<SpmArgBind>(other->argBinds, 0)->isChanged = 1;
    EXPECT_EQ(SwdWriteAllMapChanges(), 4);
    EXPECT_STREQ(FunctionAt(module, 0)->funcCode, "kept");
    EXPECT_EQ(Nth<SpmArgBind>(other->argBinds, 0)->isChanged, 0);
    EXPECT_EQ(FunctionAt(module, 1)->anchor, AnchorOf(shop, "home"));
    EXPECT_EQ(FunctionAt(module, 1)->funcCode, Frame({other}));
}

TEST(MapUpkeep, InstallingOneBindsCodeLeavesTheMapAsItWas) {
    Workspace ws;
    VlHtmlDoc *shop = AddPage("shop.html", {"order", "pay"});
    VlModule *module = AddModule(shop);
    SpmSPBind *keep = AddBind("q0", "F", "pay");
    SpmSPBind *old = AddBind("q1", "F", "order");
    VlModuleAddFunc(module, FormOf(shop, "order"), nullptr, "old code");
    VlModuleAddFunc(module, FormOf(shop, "pay"), nullptr, "pay code");

    // A replacement for the same callback: its code goes in, the map is restored.
    SpmSPBind *replacement = SpmCreateListsForSpmBind(1, 1, 1);
    Set(&replacement->name, "q9");
    replacement->beenApplied = 1;
    SpmCallbackBind *call = Nth<SpmCallbackBind>(replacement->callBinds, 0);
    Set(&call->callbackName, "F");
    Set(&call->swidget, "order");
    Set(&call->interface, "shop.html");
    EXPECT_EQ(SwdInstallThisMapsCode(replacement, old), 0);
    EXPECT_EQ(FunctionAt(module, 0)->funcCode, Frame({replacement}));
    EXPECT_STREQ(FunctionAt(module, 1)->funcCode, "pay code");
    SutList *binds = SpmGetMapContext()->spBinds;
    EXPECT_EQ(std::vector<void *>(binds->items, binds->items + binds->count),
              (std::vector<void *>{keep, old}));

    // Without a replacement, the callback whose only request it was loses its code.
    EXPECT_EQ(SwdInstallThisMapsCode(nullptr, old), 0);
    EXPECT_EQ(FunctionAt(module, 0)->funcCode, nullptr);
    EXPECT_EQ(SwdInstallThisMapsCode(nullptr, replacement), 1); // not in the map
    SpmDestroySPBind(&replacement);
}

TEST(MapUpkeep, DeletedElementsAreFollowedThroughTheMap) {
    Workspace ws;
    SpmSPBind *formBind = AddBind("q1", "F", "order");
    Set(&Nth<SpmArgBind>(formBind->argBinds, 0)->initCode, "VlGetInputValue(\"cust\"");
    SpmAddArgBindToSP(formBind);
    Set(&Nth<SpmArgBind>(formBind->argBinds, 1)->initCode, "VlGetInputValue(\"custom\"");
    SpmSPBind *twoCalls = AddBind("q2", "A", "home");
    SpmCallbackBind *second = SpmAddCallbackBindToSP(twoCalls);
    Set(&second->callbackName, "F");
    Set(&second->swidget, "pay");
    Set(&second->interface, "cart.html");

    // Step 1: the anchor's callback goes, with a report on standard error.
    EXPECT_EQ(PrintedToStderr([&] {
                  EXPECT_EQ(SwdUpdateMapDeletedSwidget("home", "shop.html", "A", nullptr), 2);
              }),
              "Callback shop.html|home|A removed from Stored Procedure/DSQL object srv|db|q2\n");
    EXPECT_EQ(Nth<SpmCallbackBind>(twoCalls->callBinds, 0), second);

    // Step 2: a deleted site unbinds the columns shown in it.
    EXPECT_EQ(SwdUpdateMapDeletedSwidget("list", "shop.html", "S", nullptr), 2);
    SpmColBind *col = Nth<SpmColBind>(formBind->colBinds, 0);
    EXPECT_EQ(Str(col->swidget) + Str(col->interface) + std::to_string(col->isChanged),
              "<null><null>1");

    // Step 3: an argument read from a deleted element of the form is reset;
    // one reading another element stays.
    EXPECT_EQ(SwdUpdateMapDeletedSwidget("order", "shop.html", "E", "cust"), 2);
    EXPECT_STREQ(Nth<SpmArgBind>(formBind->argBinds, 0)->initCode, "\"\"");
    EXPECT_EQ(Nth<SpmArgBind>(formBind->argBinds, 0)->isChanged, 1);
    EXPECT_STREQ(Nth<SpmArgBind>(formBind->argBinds, 1)->initCode, "VlGetInputValue(\"custom\"");

    // Step 4: a bind run from nowhere any more leaves the map.
    PrintedToStderr(
        [] { EXPECT_EQ(SwdUpdateMapDeletedSwidget("order", "shop.html", "F", nullptr), 1); });
    EXPECT_EQ(Nth<SpmSPBind>(SpmGetMapContext()->spBinds, 0), twoCalls);
}

TEST(MapUpkeep, ComparisonsNamesAndCodeKinds) {
    Workspace ws;
    SpmSPBind *a = AddBind("q1", "F", "order");
    SpmSPBind *b = AddBind("q1", "F", "other");
    Set(&b->cacheFlag, "TO_CACHE");
    EXPECT_EQ(SwdCompareSPBinds(a, b), 1); // callbacks and cache are not compared
    Nth<SpmColBind>(b->colBinds, 0)->group = 2;
    EXPECT_EQ(SwdCompareSPBinds(a, b), 0);
    EXPECT_EQ(SwdGetRefBind(a), b);

    EXPECT_EQ(getKindOfCallbackCode(kCodeHead.c_str()), 2);
    EXPECT_EQ(SwdInstallThisCallbackCode("shop.html", "order", "F", ""), 1);
    EXPECT_EQ(SwdInitialVerifyMap(), 0);
    SwdResetTheMap();
    EXPECT_EQ(SwdInitialVerifyMap(), 1);
}
