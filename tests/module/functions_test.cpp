// The editing operations on functions and aliases, with their results and
// their effect on the module's saved flag, the deliberate cases included.
#include "support/test_dist.hpp"

namespace {

// The module's saved flag after fn ran on the module marked saved.
template <typename Fn> int SavedAfter(VlModule *module, Fn fn) {
    module->saved = 1;
    fn();
    return module->saved;
}

struct Shop {
    VlHtmlDoc *shop = AddPage("shop.html", {"order", "both"}, {"home", "both"});
    VlHtmlDoc *cart = AddPage("cart.html", {"pay", "pay2"}, {"back"});
    VlModule *module = AddModule(shop);
    VlHtmlForm *order = FormOf(shop, "order");
    VlHtmlAnch *home = AnchorOf(shop, "home");
};

} // namespace

TEST(ModuleFunctions, AddFuncReplacesOnlyTheFuncCode) {
    Workspace ws;
    Shop s;
    EXPECT_EQ(VlModuleAddFunc(s.module, s.order, s.home, "x"), 0); // exactly one of them
    EXPECT_EQ(
        SavedAfter(s.module,
                   [&] { EXPECT_EQ(VlModuleAddFunc(s.module, s.order, nullptr, "first"), 1); }),
        0);
    VlFunction *fn = FunctionAt(s.module, 0);
    Set(&fn->initCode, "init");
    Set(&fn->finalCode, "final");
    ASSERT_EQ(VlModuleAddAlias(s.shop, "order", "F", s.cart, "pay"), 1);
    EXPECT_EQ(VlModuleAddFunc(s.module, s.order, nullptr, "second"), 1);
    ASSERT_EQ(SutSizList(s.module->functions), 1);
    EXPECT_EQ(CodeOf(fn), "init|second|final");
    EXPECT_EQ(SutSizList(fn->aliases), 1);
    EXPECT_EQ(VlModuleAddFunc(s.module, nullptr, s.home, "anchor"), 1);
    EXPECT_EQ(VlModuleGetFuncByAnch(s.module, s.home), FunctionAt(s.module, 1));
}

TEST(ModuleFunctions, LookupsAndCodeByActivator) {
    Workspace ws;
    Shop s;
    VlModuleAddFunc(s.module, s.order, nullptr, "binding");
    VlModuleAddFunc(s.module, nullptr, s.home, "");
    EXPECT_EQ(VlModuleGetFuncByActivator(s.shop, "home", "A"), FunctionAt(s.module, 1));
    EXPECT_EQ(VlModuleGetFuncByActivator(s.shop, "home", "F"), nullptr);
    EXPECT_EQ(Owned(VlModuleGetFunctionName(s.shop, "order", "F")), "Forder");
    EXPECT_EQ(
        SavedAfter(s.module,
                   [&] { EXPECT_EQ(VlModuleSetFunctionInitCode(s.shop, "order", "F", "i"), 1); }),
        0);
    EXPECT_EQ(VlModuleSetFunctionFinalCode(s.shop, "order", "F", "f"), 1);
    EXPECT_EQ(CodeOf(FunctionAt(s.module, 0)), "i|binding|f");
    EXPECT_EQ(VlModuleSetUserIncludes(s.shop, "#include <x.h>\n"), 1);
    EXPECT_STREQ(VlModuleGetUserIncludes(s.shop), "#include <x.h>\n");
    EXPECT_EQ(VlModuleSetUserIncludes(s.cart, "y"), 0); // cart has no module
    // Activator: a form or anchor of that name served with non-empty code,
    // whatever the type says.
    EXPECT_EQ(VlModuleIsActivator(s.module, s.shop, "order", "A"), 1);
    EXPECT_EQ(VlModuleIsActivator(s.module, s.shop, "home", "A"), 0);
}

TEST(ModuleFunctions, DeleteRemovesTheFunctionAndOnlyTheFirstAlias) {
    Workspace ws;
    Shop s;
    VlHtmlDoc *other = AddPage("other.html", {"x"});
    VlModule *otherModule = AddModule(other);
    VlModuleAddFunc(otherModule, FormOf(other, "x"), nullptr, "code");
    VlModuleAddFunc(s.module, s.order, nullptr, "code");
    // Two aliases on the same form of the shop page.
    ASSERT_EQ(VlModuleAddAlias(other, "x", "F", s.shop, "order"), 1);
    ASSERT_EQ(VlModuleAddAlias(other, "x", "F", s.shop, "order"), 1);
    s.module->saved = 1;
    otherModule->saved = 1;
    EXPECT_EQ(VlProjDeleteForm(s.shop, s.order, 1), 1);
    EXPECT_EQ(SutSizList(s.module->functions), 0);
    EXPECT_EQ(SutSizList(FunctionAt(otherModule, 0)->aliases), 1);
    EXPECT_EQ(s.module->saved + otherModule->saved, 0);
    // A module serving nothing of the page stays saved.
    otherModule->saved = 1;
    EXPECT_EQ(VlModuleDeleteAnch(otherModule, s.shop, s.home), 1);
    EXPECT_EQ(otherModule->saved, 1);
}

TEST(ModuleFunctions, PointerChangeAloneLeavesSavedAsItIs) {
    Workspace ws;
    Shop s;
    VlHtmlForm *replacement = VlHtmlFormNew();
    VlHtmlAnch *newAnchor = VlHtmlAnchNew();
    VlModuleAddFunc(s.module, s.order, nullptr, "code");
    VlModuleAddFunc(s.module, nullptr, s.home, "code");
    s.module->saved = 1;
    EXPECT_EQ(VlModuleChangeFormPtr(s.module, s.shop, s.order, replacement), 1);
    EXPECT_EQ(FunctionAt(s.module, 0)->form, replacement);
    EXPECT_EQ(s.module->saved, 1);

    // An alias pointing at the old record moves too, and that clears saved.
    VlModule *cartModule = AddModule(s.cart);
    VlModuleAddFunc(cartModule, FormOf(s.cart, "pay"), nullptr, "code");
    VlModuleAddFunc(cartModule, nullptr, AnchorOf(s.cart, "back"), "code");
    ASSERT_EQ(VlModuleAddAlias(s.cart, "pay", "F", s.shop, "both"), 1);
    ASSERT_EQ(VlModuleAddAlias(s.cart, "back", "A", s.shop, "home"), 1);
    VlAlias *formAlias = AliasAt(FunctionAt(cartModule, 0), 0);
    VlAlias *anchorAlias = AliasAt(FunctionAt(cartModule, 1), 0);
    EXPECT_EQ(formAlias->anchor, AnchorOf(s.shop, "both")); // a form and an anchor share it
    VlHtmlForm *both = FormOf(s.shop, "both");
    cartModule->saved = 1;
    EXPECT_EQ(VlProjChangeFormPtr(s.shop, both, replacement), 1);
    EXPECT_EQ(formAlias->form, replacement);
    EXPECT_EQ(cartModule->saved, 0);
    EXPECT_EQ(VlProjChangeAnchPtr(s.shop, s.home, newAnchor), 1);
    EXPECT_EQ(anchorAlias->anchor, newAnchor);
    VlHtmlFormDelete(replacement);
    VlHtmlAnchDelete(newAnchor);
}

TEST(ModuleFunctions, AddAliasClearsSavedFirst) {
    Workspace ws;
    Shop s;
    VlModuleAddFunc(s.module, s.order, nullptr, "code");
    s.module->saved = 1;
    EXPECT_EQ(VlModuleAddAlias(s.shop, "home", "A", s.cart, "pay"), 0); // no function for home
    EXPECT_EQ(s.module->saved, 0);
    EXPECT_EQ(
        Printed([&] { EXPECT_EQ(VlModuleAddAlias(s.shop, "order", "F", s.cart, "nothing"), 0); }),
        "Internal error in VlModuleAddAlias\n");
    ASSERT_EQ(VlModuleAddAlias(s.shop, "order", "F", s.cart, "back"), 1);
    VlAlias *alias = AliasAt(FunctionAt(s.module, 0), 0);
    EXPECT_EQ(alias->anchor, AnchorOf(s.cart, "back"));
    EXPECT_STREQ(alias->name, "back__Acart_html");
}

TEST(ModuleFunctions, FindingListingAndRemovingAliases) {
    Workspace ws;
    Shop s;
    VlModuleAddFunc(s.module, s.order, nullptr, "code");
    VlModuleAddFunc(s.module, nullptr, s.home, "code");
    VlModuleAddAlias(s.shop, "order", "F", s.cart, "pay");
    VlModuleAddAlias(s.shop, "order", "F", s.cart, "pay2");
    VlModuleAddAlias(s.shop, "home", "A", s.cart, "back");

    VlFunction *fn = nullptr;
    VlAlias *alias = nullptr;
    int index = -1;
    EXPECT_EQ(VlModuleGetFuncAndAlias(s.module, s.cart, "pay2", "F", &fn, &alias, &index), 1);
    EXPECT_EQ(alias, AliasAt(FunctionAt(s.module, 0), 1));
    EXPECT_EQ(index, 1);
    EXPECT_EQ(VlModuleGetFuncAndAlias(s.module, s.cart, "back", "F", &fn, &alias, &index), 0);
    EXPECT_EQ(Owned(VlModuleGetActivatorByAlias(s.module, s.cart, "pay", "F")),
              "shop.html<FORM>order");
    EXPECT_EQ(TakeList(VlModuleGetAllAliases(s.module)),
              (Strings{"cart.html<FORM>pay", "cart.html<FORM>pay2", "cart.html<A>back"}));

    // Removing takes the alias out of its list but hands the record back to
    // nobody; the caller that found it releases it.
    ASSERT_EQ(VlModuleGetFuncAndAlias(s.module, s.cart, "pay", "F", &fn, &alias, &index), 1);
    EXPECT_EQ(SavedAfter(s.module,
                         [&] { EXPECT_EQ(VlModuleDeleteAlias(s.module, s.cart, "pay", "F"), 1); }),
              0);
    EXPECT_EQ(SutSizList(fn->aliases), 1);
    VlModuleFreeAlias(alias);

    // An alias that points at nothing cannot be listed.
    AliasAt(fn, 0)->form = nullptr;
    EXPECT_EQ(Printed([&] { EXPECT_EQ(TakeList(VlModuleFuncGetAliases(fn)), Strings{}); }),
              "Could not resolve activator name\n");
}
