// Installing callback code: the code goes into the function serving the
// form or anchor of the named page, made when needed.
#include "support/test_dist.hpp"

TEST(CallbackCode, ReachesTheActivatorFunction) {
    Workspace ws;
    VlHtmlDoc *a = AddPage("a.html", {"f"}, {"l"});
    VlModule *module = AddModule(a);
    VlModuleAddFunc(module, FormOf(a, "f"), nullptr, "old");
    Set(&FunctionAt(module, 0)->initCode, "init");
    module->saved = 1;
    EXPECT_EQ(VlProjAddHtmlForm("a.html", "f", "new"), 1);
    EXPECT_EQ(CodeOf(FunctionAt(module, 0)), "init|new|<null>");
    EXPECT_EQ(module->saved, 0);
    // No code takes the code away, and never makes a function.
    VlHtmlDoc *b = AddPage("b.html", {"g"});
    EXPECT_EQ(VlProjAddHtmlForm("b.html", "g", nullptr), 1);
    EXPECT_EQ(VlProjGetModule(b), nullptr);
    // A page without a module gets one so the code is kept.
    EXPECT_EQ(VlProjAddHtmlForm("b.html", "g", "kept"), 1);
    ASSERT_NE(VlProjGetModule(b), nullptr);
    EXPECT_STREQ(FunctionAt(VlProjGetModule(b), 0)->funcCode, "kept");
    EXPECT_EQ(VlProjAddHtmlAnch("a.html", "f", "x"), 0); // f is no anchor
}
