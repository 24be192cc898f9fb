// Queries over the current project's modules and pages, the change state,
// and the installing of callback code into an activator's function.
#include "support/test_dist.hpp"

namespace {

std::string owned(char *s) {
    return take(s).value_or("<null>");
}

} // namespace

TEST(ProjectLookup, NamesAndFinders) {
    Workspace ws;
    EXPECT_EQ(owned(VlProjGetModuleNames(0)), "");
    EXPECT_EQ(owned(VlProjGetHtmlNamesString(0)), "");
    VlHtmlDoc *a = addPage("a.html", {"f"}, {"l"});
    VlHtmlDoc *b = addPage("sub/b.v2.html", {});
    VlModule *ma = addModule(a);
    VlModule *mb = addModule(b);
    EXPECT_EQ(owned(VlProjGetModuleNames(0)), " a.c sub/b.v2.c");
    EXPECT_EQ(owned(VlProjGetHtmlNamesString(0)), " a.html sub/b.v2.html");
    ws.write("sub/b.v2.c", "");
    ws.write("a.html", "");
    EXPECT_EQ(owned(VlProjGetModuleNames(1)), " sub/b.v2.c");
    EXPECT_EQ(owned(VlProjGetHtmlNamesString(1)), " a.html");

    EXPECT_EQ(VlProjGetModuleByFileName("sub/b.v2.c"), mb);
    EXPECT_EQ(VlProjGetModuleByFileName("a"), nullptr);
    EXPECT_EQ(VlProjGetModule(a), ma);
    EXPECT_EQ(VlProjGetHtml("sub/b.v2.html"), b);
    EXPECT_EQ(VlProjGetHtml("b.v2.html"), nullptr);
    // The name is cut at its first ".pj", each page name at its last ".".
    EXPECT_EQ(VlProjGetHtmlByShortName("a.pj"), a);
    EXPECT_EQ(VlProjGetHtmlByShortName("a.pjx.pj"), a);
    EXPECT_EQ(VlProjGetHtmlByShortName("sub/b.v2"), b);
    EXPECT_EQ(VlProjGetHtmlByShortName("sub/b"), nullptr);
    EXPECT_EQ(VlProjGetHtmlByShortName(nullptr), nullptr);

    theProj->name = strdup("shop");
    EXPECT_EQ(owned(VlProjGetMainCFileName()), "shop.c");

    VlHtmlDoc *page = nullptr;
    VlHtmlForm *form = nullptr;
    VlHtmlAnch *anchor = nullptr;
    EXPECT_EQ(VlProjGetActivator("a_html", 'F', "f", &page, &form, &anchor), 1);
    EXPECT_EQ(std::vector<void *>({page, form, anchor}),
              std::vector<void *>({a, formOf(a, "f"), nullptr}));
    EXPECT_EQ(VlProjGetActivator("a_html", 'A', "l", &page, &form, &anchor), 1);
    EXPECT_EQ(std::vector<void *>({page, form, anchor}),
              std::vector<void *>({a, nullptr, anchorOf(a, "l")}));
    EXPECT_EQ(VlProjGetActivator("a_html", 'A', "f", &page, &form, &anchor), 0);
    EXPECT_EQ(page, nullptr);
    EXPECT_EQ(VlProjGetActivator("a_html", 'X', "f", &page, &form, &anchor), 0);
    EXPECT_EQ(VlProjGetActivator("b_html", 'F', "f", &page, &form, &anchor), 0);
    EXPECT_EQ(form, nullptr);

    VlProjDelete();
    EXPECT_EQ(VlProjGetMainCFileName(), nullptr);
    EXPECT_EQ(owned(VlProjGetModuleNames(0)), "");
    EXPECT_EQ(VlProjGetHtml("a.html"), nullptr);
}

TEST(ProjectLookup, ChangeState) {
    Workspace ws;
    EXPECT_EQ(VlProjChanged(), 0);
    EXPECT_EQ(VlProjSetChanged(5), 1);
    EXPECT_EQ(theProj->saved, 0);
    EXPECT_EQ(VlProjChanged(), 1);
    VlProjSetChanged(0);
    EXPECT_EQ(theProj->saved, 1);
    VlModule *module = addModule(addPage("a.html", {}));
    module->saved = 0;
    EXPECT_EQ(VlProjChanged(), 1);
    module->saved = 1;
    EXPECT_EQ(VlProjChanged(), 0);

    // A page whose file changed since it was read asks for a refresh.
    VlHtmlDoc *page = static_cast<VlHtmlDoc *>(SutGetNList(theProj->htmlDocs, 0));
    ws.write("a.html", "<html>\n");
    page->modTime = VlGetFileModTime("a.html");
    EXPECT_EQ(VlProjNeedToRefresh(), 0);
    page->modTime -= 5;
    EXPECT_EQ(VlProjNeedToRefresh(), 1);
    VlProjDelete();
    EXPECT_EQ(VlProjNeedToRefresh(), 0);
    EXPECT_EQ(VlProjChanged(), 0);
    EXPECT_EQ(VlProjSetChanged(1), 1);
}

TEST(ProjectLookup, CallbackCodeReachesTheActivatorFunction) {
    Workspace ws;
    VlHtmlDoc *a = addPage("a.html", {"f"}, {"l"});
    VlModule *module = addModule(a);
    VlModuleAddFunc(module, formOf(a, "f"), nullptr, "old");
    set(&functionAt(module, 0)->initCode, "init");
    module->saved = 1;
    EXPECT_EQ(VlProjAddHtmlForm("a.html", "f", "new"), 1);
    EXPECT_EQ(codeOf(functionAt(module, 0)), "init|new|<null>");
    EXPECT_EQ(module->saved, 0);
    // An anchor without a function gets one.
    EXPECT_EQ(VlProjAddHtmlAnch("a.html", "l", "code"), 1);
    ASSERT_EQ(SutSizList(module->functions), 2);
    EXPECT_EQ(functionAt(module, 1)->anchor, anchorOf(a, "l"));
    EXPECT_STREQ(functionAt(module, 1)->funcCode, "code");
    // No code takes the code away, and never makes a function.
    EXPECT_EQ(VlProjAddHtmlAnch("a.html", "l", nullptr), 1);
    EXPECT_EQ(functionAt(module, 1)->funcCode, nullptr);
    VlHtmlDoc *b = addPage("b.html", {"g"});
    EXPECT_EQ(VlProjAddHtmlForm("b.html", "g", nullptr), 1);
    EXPECT_EQ(VlProjGetModule(b), nullptr);
    // A page without a module gets one so the code is kept.
    EXPECT_EQ(VlProjAddHtmlForm("b.html", "g", "kept"), 1);
    ASSERT_NE(VlProjGetModule(b), nullptr);
    EXPECT_STREQ(functionAt(VlProjGetModule(b), 0)->funcCode, "kept");
    // Unknown pages and activators are refused.
    EXPECT_EQ(VlProjAddHtmlForm("c.html", "g", "x"), 0);
    EXPECT_EQ(VlProjAddHtmlForm("a.html", "l", "x"), 0);
    EXPECT_EQ(VlProjAddHtmlAnch("a.html", "f", "x"), 0);
}
