// Reading module files: the section cursor, fragments, what a module read
// keeps and drops with its messages, and the read script's command line.
#include "support/file_texts.hpp"
#include "support/test_dist.hpp"

namespace {

std::string Section(const char *text, const char *start, const char *end, const char **cursor) {
    return Take(VlParseSection(text, start, end, cursor)).value_or("<null>");
}

// A module of shop.html in the canonical layout: user includes, a form
// function, an anchor function, and an alias of the form on cart.html.
const std::string kShopModule =
    ShopModule("#include <stdio.h>\n",
               ModuleFunction("Forder", "\tint n = 0;\n", "\tn++;\n", "\treturn;\n") +
                   ModuleFunction("Ahome", "", "", ""),
               "\tVlRegisterHtmlAlias(\"pay__Fcart_html\",\"order__Fshop_html\");\n");

} // namespace

TEST(ParseSection, EndMarkerIsFoundAgainAsTheNextStart) {
    const char *text = "head<a>one<b>two<c>tail";
    const char *cursor = nullptr;
    EXPECT_EQ(Section(text, "<a>", "<b>", &cursor), "one");
    EXPECT_STREQ(cursor, "<b>two<c>tail");
    EXPECT_EQ(Section(cursor, "<b>", "<c>", &cursor), "two");
    // No end marker found: the section runs to the end, the cursor to the NUL.
    EXPECT_EQ(Section(text, "<b>", "<zz>", &cursor), "two<c>tail");
    EXPECT_EQ(*cursor, '\0');
    // A missing start marker gives null and leaves the cursor alone.
    const char *kept = text + 2;
    cursor = kept;
    EXPECT_EQ(Section(text, "<q>", "<b>", &cursor), "<null>");
    EXPECT_EQ(cursor, kept);
    // The end marker is searched only after the section's beginning.
    EXPECT_EQ(Section("x]y[z]", "[", "]", &cursor), "z");
}

TEST(Fragments, CutAtEverySeparatorAndWrittenBack) {
    Workspace ws;
    ws.Write("frags", "--a----b");
    SutList *parts = VlParseFileToFragments("frags", "--");
    EXPECT_EQ(Items(parts), (Strings{"", "a", "", "b"}));
    EXPECT_EQ(VlWriteFragmentsToFile(parts, "out", "--"), 1);
    EXPECT_EQ(ws.Read("out"), "--a----b");
    EXPECT_EQ(Printed([&] { EXPECT_EQ(VlWriteFragmentsToFile(parts, "no/such/dir", "--"), 0); }),
              "Could not write file in VlWriteFragmentsToFile no/such/dir\n");
    SutDestroyList(parts);
}

TEST(ModuleRead, KeepsIncludesCodeSectionsAndAliases) {
    Workspace ws;
    VlHtmlDoc *shop = AddPage("shop.html", {"order"}, {"home"});
    VlHtmlDoc *cart = AddPage("cart.html", {"pay"});
    ws.Write("shop.c", kShopModule);

    VlModule *module = VlModuleNewFromFile("shop.c");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(module->html, shop);
    EXPECT_EQ(module->modTime, VlGetFileModTime("shop.c"));
    EXPECT_STREQ(module->userIncludes, "#include <stdio.h>\n");
    ASSERT_EQ(SutSizList(module->functions), 2);
    VlFunction *order = FunctionAt(module, 0);
    EXPECT_EQ(order->form, FormOf(shop, "order"));
    EXPECT_EQ(CodeOf(order), "\tint n = 0;\n|\tn++;\n|\treturn;\n");
    EXPECT_EQ(FunctionAt(module, 1)->anchor, AnchorOf(shop, "home"));
    // The alias is known by name only until it is resolved.
    VlAlias *alias = AliasAt(order, 0);
    EXPECT_EQ(alias->html, nullptr);
    EXPECT_EQ(VlModuleResolveAliases(module), 1);
    EXPECT_EQ(alias->form, FormOf(cart, "pay"));

    // Written back with force, the canonical file comes out byte for byte.
    EXPECT_EQ(VlModuleWrite(module, "copy.c", 1), 1);
    EXPECT_EQ(ws.Read("copy.c"), kShopModule);
    VlModuleDelete(module);
}

TEST(ModuleRead, FailuresPrintTheirMessageAndGiveNull) {
    Workspace ws;
    AddPage("shop.html", {"order"});
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlModuleNewFromFile("gone.c"), nullptr); }),
              "Could not read file in VlModuleNewFromFile<gone.c>\n");
    ws.Write("plain.c", "int main() { return 0; }\n");
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlModuleNewFromFile("plain.c"), nullptr); }),
              "plain.c is not a valid module file.\n");
    // The version line counts wherever it stands.
    ws.Write("late.c",
             "/* x */\n" + kModuleVersion + "static char _Vl_HTML_Filename[] = \"shop.html\";\n");
    VlModule *late = nullptr;
    EXPECT_EQ(Printed([&] { late = VlModuleNewFromFile("late.c"); }), "");
    ASSERT_NE(late, nullptr);
    VlModuleDelete(late);

    ws.Write("nopage.c", kModuleVersion);
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlModuleNewFromFile("nopage.c"), nullptr); }),
              "Could not read htmlfile for module NULL HTML Name\n");
}

TEST(ModuleRead, DropsFunctionsAndAliasesWhoseActivatorIsGone) {
    Workspace ws;
    // The page has lost its form "order" and its anchor "home".
    VlHtmlDoc *shop = AddPage("shop.html", {"keep"});
    std::string text = kModuleVersion + "static char _Vl_HTML_Filename[] = \"shop.html\";\n";
    for (std::string name : {"Forder", "Ahome", "Xodd", "Fkeep"})
        text += ModuleFunction(name, "", name + "\n", "");
    text += "void R_shop_html()\n{\n"
            "\tVlRegisterHtmlAlias(\"x__Fshop_html\",\"order__Fshop_html\");\n"
            "\tVlRegisterHtmlAlias(\"y__Fshop_html\",\"keep__Fshop_html\");\n"
            "\tVlRegisterHtmlAlias(\"z__Fshop_html\",\"nodoublescore\");\n"
            "\n}/* Velmora End of Module */\n";
    ws.Write("shop.c", text);
    VlModule *module = nullptr;
    EXPECT_EQ(Printed([&] { module = VlModuleNewFromFile("shop.c"); }),
              "The form order has been removed from shop.html\n"
              "The anchor home has been removed from shop.html\n"
              "Invalid module function name defined in module shop.html Xodd\n"
              "Could Not Find function for order__Fshop_html\n"
              "Could Not Find function for nodoublescore\n");
    ASSERT_NE(module, nullptr);
    ASSERT_EQ(SutSizList(module->functions), 1);
    VlFunction *keep = FunctionAt(module, 0);
    EXPECT_EQ(keep->form, FormOf(shop, "keep"));
    EXPECT_STREQ(keep->funcCode, "Fkeep\n");
    ASSERT_EQ(SutSizList(keep->aliases), 1);
    EXPECT_STREQ(AliasAt(keep, 0)->name, "y__Fshop_html");
    // y is no form of the page: resolving removes it, with the trailing blank.
    EXPECT_EQ(Printed([&] { VlModuleResolveAliases(module); }),
              "Removing alias y__Fshop_html because activator removed from HTML\n ");
    EXPECT_EQ(SutSizList(keep->aliases), 0);
    VlModuleDelete(module);
}

TEST(ModuleRead, AMissingFileIsOfferedToTheReadScriptFirst) {
    Workspace ws;
    Printed([] { VlModuleNewFromFile("fetch.c"); }); // the script may fetch it
    EXPECT_EQ(ws.Scripts(), "vlreadmodule.sh 1|fetch.c\n");
}

// Functions without their code markers used to send every section search to
// the end of the file, once per function; the searches now remember where a
// marker is. A marker that stands only further on is still found from an
// earlier function, which takes the section, and everything up to it is
// passed over; the function after it is read from there on.
TEST(ModuleRead, SectionMarkersFurtherOnAreFoundFromAnEarlierFunction) {
    Workspace ws;
    theProj->options = MakeList({"Project.Call Read/Write Scripts : False"});
    AddPage("shop.html", {"order"}, {"home"});
    const std::string bare = "/*Velmora Start of Function */\nstatic void Forder ()\n";
    ws.Write("late.c", kModuleVersion + "static char _Vl_HTML_Filename[] = \"shop.html\";\n" +
                           bare + bare + "/*Velmora Start of Function */\nstatic void Ahome ()\n" +
                           "/* start of final code */\nX}/* end of final code */\n" + bare);
    VlModule *module = nullptr;
    EXPECT_EQ(Printed([&] { module = VlModuleNewFromFile("late.c"); }), "");
    ASSERT_NE(module, nullptr);
    ASSERT_EQ(SutSizList(module->functions), 2);
    EXPECT_EQ(CodeOf(FunctionAt(module, 0)), "<null>|<null>|X");
    EXPECT_EQ(CodeOf(FunctionAt(module, 1)), "<null>|<null>|<null>");
    VlModuleDelete(module);
}
