// Queries over the current project's modules and pages, and the change state.
#include "support/test_dist.hpp"

TEST(ProjectLookup, NamesAndFinders) {
    Workspace ws;
    VlHtmlDoc *a = AddPage("a.html", {"f"}, {"l"});
    VlHtmlDoc *b = AddPage("sub/b.v2.html", {});
    VlModule *ma = AddModule(a);
    VlModule *mb = AddModule(b);
    EXPECT_EQ(Owned(VlProjGetHtmlNamesString(0)), " a.html sub/b.v2.html");
    ws.Write("sub/b.v2.c", "");
    EXPECT_EQ(Owned(VlProjGetModuleNames(1)), " sub/b.v2.c"); // only files that exist
    EXPECT_EQ(VlProjGetModuleByFileName("sub/b.v2.c"), mb);
    EXPECT_EQ(VlProjGetModule(a), ma);
    EXPECT_EQ(VlProjGetHtml("b.v2.html"), nullptr);
    // The name is cut at its first ".pj", each page name at its last ".".
    EXPECT_EQ(VlProjGetHtmlByShortName("a.pjx.pj"), a);
    EXPECT_EQ(VlProjGetHtmlByShortName("sub/b.v2"), b);
    theProj->name = strdup("shop");
    EXPECT_EQ(Owned(VlProjGetMainCFileName()), "shop.c");

    VlHtmlDoc *page = nullptr;
    VlHtmlForm *form = nullptr;
    VlHtmlAnch *anchor = nullptr;
    EXPECT_EQ(VlProjGetActivator("a_html", 'A', "l", &page, &form, &anchor), 1);
    EXPECT_EQ(std::vector<void *>({page, form, anchor}),
              std::vector<void *>({a, nullptr, AnchorOf(a, "l")}));
    EXPECT_EQ(VlProjGetActivator("a_html", 'A', "f", &page, &form, &anchor), 0);
    EXPECT_EQ(page, nullptr);
}

TEST(ProjectLookup, ChangeState) {
    Workspace ws;
    VlModule *module = AddModule(AddPage("a.html", {}));
    module->saved = 0;
    EXPECT_EQ(VlProjChanged(), 1); // a changed module changes the project
    // A page whose file changed since it was read asks for a refresh.
    ws.Write("a.html", "<html>\n");
    module->html->modTime = VlGetFileModTime("a.html");
    EXPECT_EQ(VlProjNeedToRefresh(), 0);
    module->html->modTime -= 5;
    EXPECT_EQ(VlProjNeedToRefresh(), 1);
}
