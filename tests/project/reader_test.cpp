// Reading a project: the settled file name, the read script, the header and
// section rules, naming (which enters the project's directory), pages then
// modules with their binding code, aliases, the main module, and release.
#include "support/bind_text.hpp"
#include "support/binding_code.hpp"
#include "support/file_texts.hpp"
#include "support/test_dist.hpp"

namespace {

// An activator function whose code runs one request on page shop.html.
std::string Function(const std::string &name, const std::string &request, const std::string &bind) {
    return ModuleFunction(name, "",
                          ::Request("\tint before;\n", WorkCall("-1", request, "USE_IT"),
                                    "\n\t/* Brennix Bind Name : " + bind + " */\n", "DSQL", "") +
                              "\n",
                          "");
}

const char kShopPage[] = "<html><body>\n"
                         "<FORM ACTION=\"old.exe\" METHOD=\"post\">\n"
                         "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"order__Fshop_html\">\n"
                         "<INPUT TYPE=\"text\" NAME=\"cust\">\n"
                         "</FORM>\n"
                         "<A HREF=\"old.exe?FNC=home__Ashop_html\">Home</A>\n"
                         "##Vl_list##\n"
                         "</body></html>\n";

const char kCartPage[] = "<html><body>\n"
                         "<FORM ACTION=\"old.exe\" METHOD=\"post\">\n"
                         "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"pay__Fcart_html\">\n"
                         "</FORM>\n"
                         "</body></html>\n";

// A project "store" in proj/: two pages, a module with two bound functions
// and an alias, an empty module, and one option.
void WriteStore(const Workspace &ws) {
    ws.Write("proj/shop.html", kShopPage);
    ws.Write("proj/cart.html", kCartPage);
    ws.Write("proj/shop.c",
             kModuleHead + std::string("static char _Vl_HTML_Filename[] = \"shop.html\";\n") +
                 Function("Forder", "getorders", "orders") +
                 Function("Ahome", "gethome", "homebind") +
                 "void R_shop_html()\n{\n"
                 "\tVlRegisterHtmlAlias(\"pay__Fcart_html\",\"order__Fshop_html\");\n"
                 "\n}/* Velmora End of Module */\n");
    ws.Write("proj/cart.c", kModuleHead +
                                std::string("static char _Vl_HTML_Filename[] = \"cart.html\";\n") +
                                "void R_cart_html()\n{\n\n}/* Velmora End of Module */\n");
    ws.Write("proj/store.pj", kProjectHead + "shop.c\ncart.c\nHTML Files :\nshop.html\ncart.html\n"
                                             "Project Options :\nTest.CGI URL : /cgi-bin\n");
}

} // namespace

TEST(ProjectRead, BuildsPagesModulesAliasesAndBindingMaps) {
    Workspace ws;
    WriteStore(ws);
    const std::string path = ws.Dir() + "/proj/store.pj";
    VlProject *project = nullptr;
    EXPECT_EQ(Printed([&] { project = VlProjNew(path.c_str(), 0); }),
              "Could not read file in VlMainModuleRead:store.c\n");
    ASSERT_NE(project, nullptr);
    EXPECT_STREQ(project->name, "store");
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir() + "/proj"));
    EXPECT_EQ(Items(project->options), Strings{"Test.CGI URL : /cgi-bin"});
    EXPECT_EQ(ws.Scripts(), "vlreadprj.sh 1|" + path +
                                "\nvlreadhtml.sh 1|shop.html\nvlreadhtml.sh 1|cart.html\n"
                                "vlreadmodule.sh 1|shop.c\nvlreadmodule.sh 1|cart.c\n");

    VlHtmlDoc *shop = Nth<VlHtmlDoc>(project->htmlDocs, 0);
    VlHtmlDoc *cart = Nth<VlHtmlDoc>(project->htmlDocs, 1);
    ASSERT_EQ(SutSizList(project->modules), 2);
    VlFunction *order = Nth<VlFunction>(Nth<VlModule>(project->modules, 0)->functions, 0);
    EXPECT_EQ(order->form, FormOf(shop, "order"));
    // The alias was resolved once all pages were there.
    EXPECT_EQ(Nth<VlAlias>(order->aliases, 0)->form, FormOf(cart, "pay"));

    // Naming gave every form served, the alias's included, the program URL.
    EXPECT_STREQ(FormOf(shop, "order")->action, "/cgi-bin/store.exe");
    EXPECT_STREQ(FormOf(cart, "pay")->action, "/cgi-bin/store.exe");

    // The binding code of both functions became applied binds of the map,
    // run from the page, activator and kind of the function they came from.
    ASSERT_NE(SpmGetMapContext(), nullptr);
    EXPECT_EQ(
        BindsOf(SpmGetMapContext()->spBinds),
        (Strings{"getorders/orders 1 shop.html|order|F", "gethome/homebind 1 shop.html|home|A"}));
}

TEST(ProjectRead, HeaderVariantsAndInvalidFiles) {
    Workspace ws;
    // The B header is a project file too, and the header counts anywhere in the text.
    for (const std::string header :
         {"Velmora Project File V1.0B\n", "# by hand\nVelmora Project File V1.0\n"}) {
        ws.Write("late.pj",
                 header + kProjectHead.substr(26) + "HTML Files :\nProject Options :\nA : 1\n");
        VlProject *late = nullptr;
        Printed([&] { late = VlProjNew((ws.Dir() + "/late.pj").c_str(), 0); });
        EXPECT_EQ(Items(late->options), Strings{"A : 1"}) << header;
    }
    ws.Write("bad.pj", "Velmora Project File V2.0\n");
    VlProject *bad = nullptr;
    const std::string badPath = ws.Dir() + "/bad.pj";
    EXPECT_EQ(Printed([&] { bad = VlProjNew(badPath.c_str(), 0); }),
              badPath + " is not a valid project file.\n");
    EXPECT_STREQ(bad->name, "noname");
    EXPECT_EQ(bad->options, nullptr);
}

TEST(ProjectRead, SettledFileNameAndMissingFiles) {
    Workspace ws;
    // Neither shop nor shop.pj: a new empty project of that name.
    VlProject *fresh = VlProjNew((ws.Dir() + "/shop").c_str(), 0);
    ASSERT_NE(fresh, nullptr);
    EXPECT_STREQ(fresh->name, "shop");
    EXPECT_EQ(fresh->options, nullptr);
    EXPECT_EQ(ws.Scripts(), "vlreadprj.sh 1|" + ws.Dir() + "/shop.pj\n");
    // Three characters or fewer always get ".pj" when the file is missing.
    VlProjNew(".pj", 0);
    EXPECT_EQ(ws.Scripts(), "vlreadprj.sh 1|.pj.pj\n");
    EXPECT_STREQ(theProj->name, ".pj");
    // An existing file is read under any name; no options line, no options.
    ws.Write("plain", kProjectHead + "HTML Files :\n");
    VlProject *read = nullptr;
    Printed([&] { read = VlProjNew((ws.Dir() + "/plain").c_str(), 0); });
    EXPECT_EQ(ws.Scripts(), "vlreadprj.sh 1|" + ws.Dir() + "/plain\n");
    EXPECT_STREQ(read->name, "plain");
    EXPECT_EQ(read->options, nullptr);
}

TEST(ProjectRead, ScriptQuotingUpgradeAndNoname) {
    Workspace ws;
    const std::string dir = ws.Dir() + "/my proj";
    fs::create_directories(dir);
    WriteText(dir + "/noname.pj", kProjectHead + "HTML Files :\nProject Options :\n"
                                                 "Project.Call Read/Write Scripts : False\n"
                                                 "CGI test URL : /x\nProject.B : 2\n");
    VlProject *project = nullptr;
    EXPECT_EQ(Printed([&] { project = VlProjNew((dir + "/noname.pj").c_str(), 0); }),
              "Upgraded Project Options from an old version of Velmora\n"
              "Could not read file in VlMainModuleRead:noname.c\n");
    EXPECT_EQ(ws.Scripts(), "vlreadprj.sh 1|" + dir + "/noname.pj\n");
    EXPECT_EQ(Items(project->options), (Strings{"Project.Call Read/Write Scripts : False",
                                                "Test.CGI URL : /x", "Project.B : 2"}));
    EXPECT_STREQ(project->name, "noname");
    EXPECT_EQ(project->nonameAccepted, 1);
}

TEST(ProjectRead, ModulesAndPagesThatCannotBeReadAreLeftOut) {
    Workspace ws;
    WriteStore(ws);
    fs::current_path(ws.Dir() + "/proj");
    SutList *pages = MakeList({"shop.html", "", "missing.html", nullptr});
    EXPECT_EQ(VlProjReadHTML(pages), 1);
    EXPECT_EQ(SutSizList(theProj->htmlDocs), 1);
    SutList *modules = MakeList({"shop.c", "cart.c", nullptr}); // cart.html was not read
    SutList *status = nullptr;
    EXPECT_EQ(Printed([&] { EXPECT_EQ(VlProjReadModules(modules, &status), 0); }),
              "Could not read htmlfile for module cart.html\n");
    EXPECT_EQ(std::vector<void *>(status->items, status->items + status->count),
              (std::vector<void *>{reinterpret_cast<void *>(1), nullptr, nullptr}));
    EXPECT_EQ(SutSizList(theProj->modules), 1);
    SutDeleteList(status);
    SutDestroyList(modules);
    SutDestroyList(pages);
}

TEST(ProjectNaming, NameDirectoryAndProgramUrl) {
    Workspace ws;
    auto name = [] { return std::string(theProj->name ? theProj->name : "<null>"); };
    EXPECT_EQ(VlProjSetName("shop.pj"), 0);
    EXPECT_EQ(name(), "shop");
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir()));
    EXPECT_STREQ(VlHtmlGetProjName(), "/cgi-bin//shop.exe"); // the doubled slash is kept
    EXPECT_EQ(VlProjSetName("dir/"), 1);
    EXPECT_EQ(name(), "noname");
    EXPECT_EQ(VlProjSetName((ws.Dir() + "/new dir/deep/shop").c_str()), 1);
    EXPECT_EQ(name(), "shop");
    EXPECT_EQ(fs::current_path(), fs::path(ws.Dir() + "/new dir/deep"));

    // The deployment target picks the URL option; the executable suffix follows.
    theProj->options = MakeList({"Makefile.$VL_DEPLOYMENT_TARGET : NSAPI", "Test.CGI URL : /cgi",
                                 "Release.NSAPI URL : /ns", "Makefile.exeSuffix : .cgi"});
    VlProjSetName("shop");
    EXPECT_STREQ(VlHtmlGetProjName(), "/cgi-bin//shop.cgi");
    theProj->releaseMode = 1;
    VlProjSetName("shop");
    EXPECT_STREQ(VlHtmlGetProjName(), "/ns/shop.cgi");
    EXPECT_EQ(VlProjGetCGIURL("Test."), nullptr);

    // A relocatable project leaves the URL to run time.
    VlHtmlDoc *page = AddPage("p.html", {"f"});
    VlModuleAddFunc(AddModule(page), FormOf(page, "f"), nullptr, "x");
    SutAddList(theProj->options, strdup("Project.Relocatable Project : True"));
    VlProjSetName("shop");
    EXPECT_STREQ(FormOf(page, "f")->action, "$$VL_CGI_URL");

    // A directory that cannot be made leaves the project without a name.
    EXPECT_EQ(Printed([] { EXPECT_EQ(VlProjSetName("/proc/no/such/shop"), 0); }),
              "Create directory failed.\n");
    EXPECT_EQ(theProj->name, nullptr);
}
