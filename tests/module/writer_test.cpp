// Writing modules: the exact file layout, when a write happens, the alias
// lines built from the pages' current names, and the write script.
#include "support/file_texts.hpp"
#include "support/test_dist.hpp"

TEST(ModuleWrite, FunctionsRegistrationAndAliasesFromCurrentNames) {
    Workspace ws;
    VlHtmlDoc *shop = AddPage("shop.html", {"order"}, {"home"});
    VlHtmlDoc *cart = AddPage("cart.html", {"pay"}, {"back"});
    VlModule *module = AddModule(shop);
    VlModuleAddFunc(module, FormOf(shop, "order"), nullptr, "\tcall();\r\n");
    VlModuleAddFunc(module, nullptr, AnchorOf(shop, "home"), nullptr);
    FunctionAt(module, 0)->initCode = strdup("\tint a;\r\n");
    FunctionAt(module, 1)->finalCode = strdup("\tdone();\n");
    module->userIncludes = strdup("#include \"x.h\"\r\n");
    ASSERT_EQ(VlModuleAddAlias(shop, "order", "F", cart, "pay"), 1);
    ASSERT_EQ(VlModuleAddAlias(shop, "home", "A", cart, "back"), 1);
    // The aliased form is renamed after the alias was made: the line follows.
    VlHtmlNameForm(cart, "pay", "checkout");

    EXPECT_EQ(VlModuleWrite(module, "shop.c", 0), 1);
    EXPECT_EQ(ws.Read("shop.c"),
              ShopModule("#include \"x.h\"\n",
                         ModuleFunction("Forder", "\tint a;\n", "\tcall();\n", "") +
                             ModuleFunction("Ahome", "", "", "\tdone();\n"),
                         "\tVlRegisterHtmlAlias(\"checkout__Fcart_html\",\"order__Fshop_html\");\n"
                         "\tVlRegisterHtmlAlias(\"back__Acart_html\",\"home__Ashop_html\");\n"));
    EXPECT_EQ(module->saved, 1);
}

TEST(ModuleWrite, SavedModuleIsLeftAloneWithoutForce) {
    Workspace ws;
    VlModule *module = VlModuleNew(AddPage("my-page.html", {}));
    module->saved = 1;
    ws.Write("my-page.c", "untouched");
    EXPECT_EQ(VlModuleWrite(module, "my-page.c", 0), 1);
    EXPECT_EQ(ws.Read("my-page.c"), "untouched");
    EXPECT_EQ(ws.Scripts(), "");
    // Forced, an empty module gets the bare layout.
    EXPECT_EQ(VlModuleWrite(module, "my-page.c", 1), 1);
    EXPECT_EQ(ws.Read("my-page.c"), kModuleHead +
                                        "static char _Vl_HTML_Filename[] = \"my-page.html\";\n"
                                        "void R_my_page_html()\n{\n\n}"
                                        "/* Velmora End of Module */\n");
    EXPECT_EQ(ws.Scripts(), "vlwritemodule.sh 1|my-page.c\n");
    VlModuleDelete(module);
}

TEST(ModuleWrite, FailuresAndUnresolvedAliases) {
    Workspace ws;
    VlHtmlDoc *page = AddPage("shop.html", {"order"});
    VlModule *module = VlModuleNew(page);
    VlModuleAddFunc(module, FormOf(page, "order"), nullptr, "x");
    EXPECT_EQ(Printed([&] { EXPECT_EQ(VlModuleWrite(module, "no/dir/shop.c", 1), 0); }),
              "Could not write file in VlModuleWrite no/dir/shop.c\n");
    EXPECT_EQ(module->saved, 0);
    EXPECT_EQ(ws.Scripts(), "");

    // An alias that was never resolved has no form or anchor to take a name from.
    auto *alias = static_cast<VlAlias *>(calloc(1, sizeof(VlAlias)));
    alias->name = strdup("pay__Fcart_html");
    SutAddList(FunctionAt(module, 0)->aliases, alias);
    EXPECT_EQ(Printed([&] { EXPECT_EQ(VlModuleWrite(module, "my shop.c", 1), 1); }),
              "Warning alias name is null while writingmy shop.c\n");
    EXPECT_EQ(ws.Read("my shop.c").find("VlRegisterHtmlAlias"), std::string::npos);
    EXPECT_EQ(ws.Scripts(), "vlwritemodule.sh 1|my shop.c\n");
    VlModuleDelete(module);
}

TEST(ModuleModel, FileNameUrlAndChangeState) {
    Workspace ws;
    VlHtmlDoc *shop = AddPage("shop.html", {"order"});
    VlHtmlDoc *cart = AddPage("dir.v2/README", {"pay"});
    VlModule *module = AddModule(cart);
    EXPECT_EQ(Take(VlModuleGetCFileName(module)), "dir.c"); // the last "." of the whole name
    VlModuleSetHtml(module, shop);
    // Every form and anchor served gets the URL, aliases' ones included.
    VlModuleAddFunc(module, FormOf(shop, "order"), nullptr, "x");
    VlModuleAddAlias(shop, "order", "F", cart, "pay");
    EXPECT_EQ(VlModuleSetURL(module, "/cgi-bin/new.exe"), 1);
    EXPECT_STREQ(FormOf(shop, "order")->action, "/cgi-bin/new.exe");
    EXPECT_STREQ(FormOf(cart, "pay")->action, "/cgi-bin/new.exe");
    EXPECT_EQ(VlModuleChanged(module), 1);
    EXPECT_EQ(VlModuleWrite(module, "shop.c", 0), 1);
    EXPECT_EQ(VlModuleChanged(module), 0);
    module->modTime = VlGetFileModTime("shop.c") - 10;
    EXPECT_EQ(VlModuleChangedOnDisk(module), 1);
}
