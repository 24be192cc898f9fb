// vlnogui run end to end on small projects with a test distribution: the
// exact standard output and status, every file left in the project
// directory, and every script call with its arguments. The expected texts
// follow from the rules for each file, written out here by hand.
#include "e2e/harness.hpp"
#include "support/file_texts.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Files = std::map<std::string, std::string>;

using namespace MainRegions;
const std::string &kHead = kProjectHead;

// The main module of project name with one page module, shop.html's: the
// template's text, the module's declaration and registration, and the setup
// calls that the distribution's options give.
std::string MainFile(const std::string &name) {
    return "/* main */\n" + IS + IE + DS + "extern void R_shop_html ();\n" + DE +
           "int main()\n{\n" + InS + InE + RS +
           "\tR_shop_html ();\n\tVlInitHeaders();\n\tVlRelocatableProject(0);\n"
           "\tVlSetHtmlURL(\"http://h/" +
           name +
           "\");\n\tVlSetApiMaxNum(2);\n\tVlAllowShutDown(1);\n\tVlSetCacheNumConn(2);\n"
           "\tVlSetSessTimeOut(1200);\n\tVlSetHtmlDir(\"/www/" +
           name + "\");\n\tVlProcessLogin(0);\n\tVlSetDoCommonLog(0);\n\tVlSetUseAppLogin(0);\n" +
           RE + FS + FE + "}\n";
}

TEST(EndToEnd, PagesAndModulesWithScriptsAndASecondRunThatChangesNothing) {
    E2eWorld w;
    Distribution(w);
    PageProject(w, "Project.Name : store\n");
    const std::string project = w.Path("proj/store.pj");
    ProgramRun r = w.Run({"-p", project, "-c", w.Path("none.cfg")});
    EXPECT_EQ(r.out, Progress(project, w.Path("none.cfg"),
                              "Could not read file in VlMainModuleRead:store.c\n"
                              "Warning : Could not open configuration file " +
                                  w.Path("none.cfg") + "\n",
                              ""));
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.status, 0);

    // The program's URL went into the form and the anchor of the page.
    const std::string page =
        "<html><body>\n"
        "<FORM ACTION=\"http://h/cgi-bin/store.cgi\" METHOD=\"post\" >\n"
        "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"order__Fshop_html\">\n"
        "<INPUT TYPE=\"text\" NAME=\"item\">\n"
        "</FORM>\n"
        "<A HREF=\"http://h/cgi-bin/store.cgi?FNC=home__Ashop_html\" >Home</A>\n"
        "</body></html>\n";
    const std::string module = ShopModule("#include <stdio.h>\n", kOrder + kHome);
    const std::string projectFile = kHead + "shop.c\nHTML Files :\nshop.html\n"
                                            "Project Options :\nProject.Name : store\n";
    const std::string main = MainFile("store");
    const Files written = {{"store.pj", projectFile},
                           {"shop.c", module},
                           {"shop.html", page},
                           {"in_use", "<dir>"},
                           {"in_use/shop.html.vlm", page},
                           {"store.c", main},
                           {"store.mak", "PROGRAM = store.cgi\nOBJS = store.c \\\n\tshop.c\n"},
                           {"store.pj.lock", ""},
                           {"velmoraBackstore", "<dir>"}};
    EXPECT_EQ(w.Project(), written);
    const std::string install = "vlinst.sh: [store.cgi] [shop.html] [/cgi] [http://h/store] "
                                "[/www/store] [store.mak] [CGI] [ shop.html]\n";
    EXPECT_EQ(w.Scripts(), "vlreadprj.sh: [" + project +
                               "]\n"
                               "vlreadhtml.sh: [shop.html]\n"
                               "vlreadmodule.sh: [shop.c]\n"
                               "vlwritemodule.sh: [shop.c]\n"
                               "vlwritehtml.sh: [shop.html]\n"
                               "vlwriteprj.sh: [store.pj]\n" +
                               install);

    // The engine's own output is a fixed point: only the backup changes.
    r = w.Run({"-p", project, "-c", w.Path("none.cfg")});
    EXPECT_EQ(r.out,
              Progress(project, w.Path("none.cfg"),
                       "Warning : Could not open configuration file " + w.Path("none.cfg") + "\n",
                       ""));
    EXPECT_EQ(r.status, 0);
    Files outsideBackup = written;
    outsideBackup.erase("velmoraBackstore");
    EXPECT_EQ(w.Project({"velmoraBack"}), outsideBackup);
    EXPECT_EQ(w.Read("proj/velmoraBackstore/store.c"), main);
}

TEST(EndToEnd, RelativePathsAreTakenFromWhereTheRunStarted) {
    E2eWorld w;
    Distribution(w);
    w.Write("proj/store.pj", kHead + "HTML Files :\nProject Options :\n"
                                     "Project.Call Read/Write Scripts : False\n");
    w.Write("site.cfg", "Test.CGI Path : /x\n");
    ProgramRun r = w.Run({"-p", "proj/store.pj", "-c", "site.cfg"}, "");
    EXPECT_EQ(r.out, Progress("proj/store.pj", "site.cfg",
                              "Could not read file in VlMainModuleRead:store.c\n", kNoBinding));
    EXPECT_EQ(r.status, 0);
    // Written where it was read, not in a directory nested inside it.
    EXPECT_FALSE(fs::exists(w.Path("proj/proj")));
    EXPECT_EQ(w.Read("proj/store.pj"), kHead + "HTML Files :\nProject Options :\n"
                                               "Project.Call Read/Write Scripts : "
                                               "False\nTest.CGI Path : /x\n");
    EXPECT_TRUE(fs::exists(w.Path("proj/store.mak")));
}

// Every file found under dir whose own name is name.
std::vector<std::string> FilesNamed(const std::string &dir, const std::string &name) {
    std::vector<std::string> found;
    for (const auto &entry : fs::recursive_directory_iterator(dir))
        if (entry.path().filename() == name) found.push_back(entry.path().string());
    return found;
}

// Directory, project, page and module names that hold a blank, both quotes,
// ";", "&", "|", "$(...)" and a backquote, each built around a command that
// would leave a file "canary" behind: with the read and write scripts on, a
// run and a second run (which backs every file up) start no such command,
// and every script gets each name as one argument.
TEST(EndToEnd, HostileNamesRunNoCommandAndArriveWhole) {
    E2eWorld w;
    Distribution(w);
    const std::string dir = "it's \"a\" dir $(touch canary)";
    const std::string name = "shop;touch canary;&touch canary&|touch canary|";
    const std::string page = "pg $(touch canary) `touch canary`.html";
    const std::string pageModule = "pg___touch_canary___touch_canary__html";
    const std::string module = "pg $(touch canary) `touch canary`.c"; // the page's module
    w.Write("proj/" + dir + "/" + name + ".pj",
            kHead + module + "\nHTML Files :\n" + page +
                "\nProject Options :\nProject.Call Read/Write Scripts : True\n");
    w.Write(
        "proj/" + dir + "/" + page,
        "<p>\n<FORM ACTION=\"x.cgi\" METHOD=\"post\">\n<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" "
        "VALUE=\"order__F" +
            pageModule + "\">\n</FORM>\n");
    w.Write("proj/" + dir + "/" + module,
            "/* Velmora Module File V1.0B */\n/* Velmora Start Of user Includes */\n"
            "static char _Vl_HTML_Filename[] = \"" +
                page + "\";\n" + kOrder + "void R_" + pageModule +
                "()\n{\n\n}/* Velmora End of Module */\n");
    const std::string project = w.Path("proj/" + dir + "/" + name + ".pj");
    const std::string none = w.Path("none.cfg");
    ProgramRun r = w.Run({"-p", project, "-c", none});
    const std::string noConfig = "Warning : Could not open configuration file " + none + "\n";
    EXPECT_EQ(r.out,
              Progress(project, none,
                       "Could not read file in VlMainModuleRead:" + name + ".c\n" + noConfig, ""));
    EXPECT_EQ(r.status, 0);
    const std::string calls = "vlreadhtml.sh: [" + page + "]\nvlreadmodule.sh: [" + module +
                              "]\nvlwritemodule.sh: [" + module + "]\nvlwritehtml.sh: [" + page +
                              "]\nvlwriteprj.sh: [" + name + ".pj]\nvlinst.sh: [" + name +
                              ".cgi] [" + page + "] [/cgi] [http://h/" + name + "] [/www/" + name +
                              "] [" + name + ".mak] [CGI] [ " + page + "]\n";
    EXPECT_EQ(w.Scripts(), "vlreadprj.sh: [" + project + "]\n" + calls);
    EXPECT_EQ(w.Read("proj/" + dir + "/" + name + ".mak"),
              "PROGRAM = " + name + ".cgi\nOBJS = " + name + ".c \\\n\t" + module + "\n");

    r = w.Run({"-p", project, "-c", none});
    EXPECT_EQ(r.out, Progress(project, none, noConfig, ""));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(w.Scripts(), "vlreadprj.sh: [" + project + "]\n" + calls);
    for (const std::string &file : {name + ".pj", name + ".c", page, module})
        EXPECT_EQ(w.Read("proj/" + dir + "/velmoraBack" + name + "/" + file),
                  w.Read("proj/" + dir + "/" + file))
            << file;
    EXPECT_EQ(FilesNamed(w.Path(), "canary"), std::vector<std::string>{});
}

// Each section is read from its first marker on, wherever the others stand:
// repeated markers end up inside the options and are written back as they
// were.
TEST(EndToEnd, ProjectFileSectionsRepeated) {
    E2eWorld w;
    Distribution(w);
    const std::string repeated = kHead + "HTML Files :\na.html\nProject Options :\n"
                                         "Project.Call Read/Write Scripts : False\n"
                                         "HTML Files :\nb.html\nProject Options :\nTest.Y : 2\n";
    w.Write("proj/r.pj", repeated);
    w.Write("proj/a.html", "<p>a</p>\n");
    w.Write("proj/b.html", "<p>b</p>\n");
    ProgramRun r = w.Run({"-p", "r.pj"});
    EXPECT_EQ(r.out, Progress("r.pj", "",
                              "Could not read file in VlMainModuleRead:r.c\n"
                              "Warning : Could not open configuration file \n",
                              kNoBinding));
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(w.Read("proj/r.pj"), repeated);
    EXPECT_EQ(w.Project({"r.", "velmoraBack"}), (Files{{"a.html", "<p>a</p>\n"},
                                                       {"b.html", "<p>b</p>\n"},
                                                       {"in_use", "<dir>"},
                                                       {"in_use/a.html.vlm", "<p>a</p>\n"}}));
    EXPECT_EQ(w.Scripts(), "vlreadprj.sh: [r.pj]\n");
}

// Control characters, bytes above 127 and invalid UTF-8 pass through a run
// unchanged in pages and options. A NUL byte would cut the text it stands
// in: a page, module, main module, project or configuration file holding one
// is refused by name and offset, and nothing is written.
TEST(EndToEnd, BinaryBytesAreKeptAndNulBytesRefused) {
    E2eWorld w;
    Distribution(w);
    const std::string page = "<p>\xff\xfe\x01\x80\x7f caf\xc3\xa9\n"
                             "<A HREF=\"\xe9\x1b.html\">\x02</A>\n";
    w.Write("proj/b.pj", kHead + "HTML Files :\nb.html\nProject Options :\n"
                                 "Project.Call Read/Write Scripts : False\n");
    w.Write("proj/b.html", page);
    w.Write("bin.cfg", std::string("Test.Z : \x01\xff\xc0\n", 13));
    ProgramRun r = w.Run({"-p", "b.pj", "-c", w.Path("bin.cfg")});
    EXPECT_EQ(r.status, 0);
    EXPECT_EQ(r.out, Progress("b.pj", w.Path("bin.cfg"),
                              "Could not read file in VlMainModuleRead:b.c\n", kNoBinding));
    EXPECT_EQ(w.Read("proj/b.html"), page);
    EXPECT_EQ(w.Read("proj/in_use/b.html.vlm"), page);
    EXPECT_EQ(w.Read("proj/b.pj"), kHead + "HTML Files :\nb.html\nProject Options :\n"
                                           "Project.Call Read/Write Scripts : False\n"
                                           "Test.Z : \x01\xff\xc0\n");

    PageProject(w, "Project.Call Read/Write Scripts : False\n");
    ASSERT_EQ(w.Run({"-p", "store.pj"}).status, 0);
    const std::string nothing = "Nothing was written: the project could not be read whole.\n";
    const std::string nul(1, '\0');
    const std::pair<std::string, std::string> cases[] = {
        {"shop.html", nothing},
        {"shop.c", "Could not read file in VlModuleNewFromFile<shop.c>\n" + nothing},
        {"store.c", "Could not read file in VlMainModuleRead:store.c\n" + nothing},
        {"store.pj", nothing},
        {"nul.cfg", "Could not open configuration file nul.cfg\n"}};
    w.Write("proj/nul.cfg", "Test.X : a\nTest.Y : b\n");
    for (const auto &[file, after] : cases) {
        SCOPED_TRACE(file);
        const std::string text = w.Read("proj/" + file);
        w.Write("proj/" + file, text.substr(0, 12) + nul + text.substr(12));
        const Files before = w.Project();
        r = w.Run({"-p", "store.pj", "-c", "nul.cfg"});
        const std::string named = file == "nul.cfg" ? w.Path("proj/nul.cfg") : file;
        EXPECT_EQ(r.out, kBanner + "Applying Changes to store.pj from nul.cfg\n" + named +
                             " holds a NUL byte at offset 12: it is not read\n" + after);
        EXPECT_EQ(r.status, 1);
        EXPECT_EQ(w.Project(), before);
        w.Write("proj/" + file, text);
    }
}

} // namespace
