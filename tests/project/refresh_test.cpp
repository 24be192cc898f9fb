// Refreshing a page read again after it changed on disk: forms and anchors
// carried over by name or by their original action or URL, module functions
// and aliases moved or dropped, and deleted elements reported to the map.
#include "support/c_values.hpp"
#include "support/test_dist.hpp"

namespace {

// A new reading of the page: named forms and anchors, unnamed ones that
// carry only their original action or URL, and sites.
struct NewReading {
    VlHtmlDoc *doc = VlHtmlNew();
    explicit NewReading(const char *name) {
        VlHtmlSetName(doc, name);
        doc->forms = SutNewList();
        doc->anchors = SutNewList();
        doc->sites = SutNewList();
    }
    VlHtmlForm *Form(const char *name, const char *origAction = nullptr) {
        VlHtmlForm *form = VlHtmlFormNew();
        SutAddList(doc->forms, form);
        if (name) VlHtmlFormSetName(doc, form, name);
        Set(&form->origAction, origAction);
        return form;
    }
    VlHtmlAnch *Anchor(const char *name, const char *origUrl = nullptr) {
        VlHtmlAnch *anchor = VlHtmlAnchNew();
        SutAddList(doc->anchors, anchor);
        if (name) VlHtmlAnchSetName(doc, anchor, name);
        Set(&anchor->origUrl, origUrl);
        return anchor;
    }
    void Site(const char *name) {
        VlHtmlSite *site = VlHtmlSiteNew();
        site->name = strdup(name);
        SutAddList(doc->sites, site);
    }
};

} // namespace

TEST(HtmlRefresh, CarriesNamesAndBindingsOverToTheNewReading) {
    Workspace ws;
    VlHtmlDoc *old = AddPage("shop.html", {"order", "moved", "gone"}, {"home", "far", "lost"});
    VlHtmlDoc *cart = AddPage("cart.html", {"pay"});
    for (const char *name : {"s1", "s2"}) {
        VlHtmlSite *site = VlHtmlSiteNew();
        site->name = strdup(name);
        if (!old->sites) old->sites = SutNewList();
        SutAddList(old->sites, site);
    }
    Set(&FormOf(old, "moved")->origAction, "/orig/moved");
    Set(&AnchorOf(old, "far")->origUrl, "/orig/far");
    VlModule *module = AddModule(old);
    for (const char *form : {"order", "moved", "gone"})
        VlModuleAddFunc(module, FormOf(old, form), nullptr, form);
    for (const char *anchor : {"home", "far", "lost"})
        VlModuleAddFunc(module, nullptr, AnchorOf(old, anchor), anchor);
    VlModule *cartModule = AddModule(cart);
    VlModuleAddFunc(cartModule, FormOf(cart, "pay"), nullptr, "pay");
    VlModuleAddAlias(cart, "pay", "F", old, "order");
    VlModuleAddAlias(cart, "pay", "F", old, "gone");
    AddBind("q1", "F", "gone", "s2");
    AddBind("q2", "A", "lost", "s2");
    SpmSPBind *orderBind = AddBind("q3", "F", "order", "s2");

    NewReading fresh("shop.html");
    VlHtmlForm *order = fresh.Form("order");
    VlHtmlForm *decoy = fresh.Form(nullptr, "/other");
    VlHtmlForm *moved = fresh.Form(nullptr, "/orig/moved");
    VlHtmlForm *second = fresh.Form(nullptr, "/orig/moved");
    VlHtmlAnch *home = fresh.Anchor("home");
    VlHtmlAnch *far = fresh.Anchor(nullptr, "/orig/far");
    fresh.Site("s1");

    EXPECT_EQ(PrintedToStderr([&] { EXPECT_EQ(VlHtmlRefresh(old, fresh.doc), 0); }),
              "Callback shop.html|gone|F removed from Stored Procedure/DSQL object srv|db|q1\n"
              "Callback shop.html|lost|A removed from Stored Procedure/DSQL object srv|db|q2\n");

    // The unnamed form with the old form's original action took its name.
    EXPECT_STREQ(moved->fullName, "moved__Fshop_html");
    EXPECT_EQ(second->fullName, nullptr);
    EXPECT_EQ(decoy->fullName, nullptr);
    EXPECT_STREQ(far->fullName, "far__Ashop_html");

    // Functions follow the surviving records; the gone ones are dropped.
    ASSERT_EQ(SutSizList(module->functions), 4);
    EXPECT_EQ(Nth<VlFunction>(module->functions, 0)->form, order);
    EXPECT_EQ(Nth<VlFunction>(module->functions, 1)->form, moved);
    EXPECT_EQ(Nth<VlFunction>(module->functions, 2)->anchor, home);
    EXPECT_EQ(Nth<VlFunction>(module->functions, 3)->anchor, far);
    EXPECT_STREQ(Nth<VlFunction>(module->functions, 3)->funcCode, "far");
    VlFunction *pay = Nth<VlFunction>(cartModule->functions, 0);
    ASSERT_EQ(SutSizList(pay->aliases), 1);
    EXPECT_EQ(Nth<VlAlias>(pay->aliases, 0)->form, order);

    // The map lost the binds run from the deleted form and anchor; the site
    // that is gone unbinds the column of the bind that is left.
    SutList *binds = SpmGetMapContext()->spBinds;
    ASSERT_EQ(SutSizList(binds), 1);
    EXPECT_EQ(Nth<SpmSPBind>(binds, 0), orderBind);
    EXPECT_EQ(Nth<SpmColBind>(orderBind->colBinds, 0)->swidget, nullptr);
    EXPECT_EQ(Nth<SpmColBind>(orderBind->colBinds, 0)->isChanged, 1);

    // The project now holds the new reading in place of the old one.
    SutReplaceNList(theProj->htmlDocs, 0, fresh.doc);
    VlModuleSetHtml(module, fresh.doc);
    VlHtmlDelete(old);
}
