// The world of an end-to-end run of vlnogui: a temporary directory holding a
// test distribution (templates, global option file and the thirteen scripts,
// each of which logs its call as one line "<script>: [arg] [arg] ..."), a
// HOME without option files and a project directory. Runs the built program
// there and takes stock of every file it left. Below it, the distribution's
// files and a project of one page with its module that several runs use.
#ifndef VELMORA_TESTS_E2E_HARNESS_HPP
#define VELMORA_TESTS_E2E_HARNESS_HPP

#include "support/file_texts.hpp"
#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;

// Every file and directory under dir: relative path to contents, "<dir>" for
// a directory. Paths that begin with one of the skipped prefixes are left out.
inline std::map<std::string, std::string> Snapshot(const std::string &dir,
                                                   const std::vector<std::string> &skipped = {}) {
    std::map<std::string, std::string> files;
    for (const auto &entry : fs::recursive_directory_iterator(dir)) {
        const std::string rel = fs::relative(entry.path(), dir).string();
        bool skip = false;
        for (const std::string &prefix : skipped)
            skip = skip || rel.compare(0, prefix.size(), prefix) == 0;
        if (skip) continue;
        files[rel] = entry.is_directory() ? "<dir>" : ReadText(entry.path().string());
    }
    return files;
}

class E2eWorld {
  public:
    static inline const std::vector<std::string> kScripts = {
        "vlreadprj.sh",   "vlwriteprj.sh", "vlreadmodule.sh", "vlwritemodule.sh", "vlreadhtml.sh",
        "vlwritehtml.sh", "vltest.sh",     "vlinst.sh",       "vlrel1.sh",        "vlrel2.sh",
        "vlmake.sh",      "vledithtml.sh", "vlbrowser.sh"};

    E2eWorld() {
        fs::create_directories(root_.File("dist/config"));
        fs::create_directories(root_.File("home"));
        fs::create_directories(root_.File("proj"));
        root_.Write("dist/config/VlKeyWds.ini", "");
        // Readable by all, so that a run without privileges sees the world.
        fs::permissions(root_.Path(), fs::perms::owner_all | fs::perms::group_read |
                                          fs::perms::group_exec | fs::perms::others_read |
                                          fs::perms::others_exec);
        WriteScripts(Path("dist/bin"), kScripts);
    }

    std::string Path(const std::string &name = "") const {
        return name.empty() ? root_.Path() : root_.File(name);
    }
    // Writes a file of the distribution, the home or the project (the name
    // begins with "dist/", "home/" or "proj/").
    void Write(const std::string &name, const std::string &text) const { root_.Write(name, text); }
    std::string Read(const std::string &name) const { return root_.Read(name); }

    // Runs vlnogui with the test distribution, in the project directory
    // unless another directory of the world is named; unprivileged, as the
    // user nobody when the tests run as root; watched while it runs. VELMORA
    // names the world's directory velmora ("dist"), is empty for "" and
    // unset for null.
    ProgramRun Run(const std::vector<std::string> &args, const std::string &where = "proj",
                   bool unprivileged = false, const std::function<void(pid_t)> &whileRunning = {},
                   const char *velmora = "dist") const {
        std::vector<std::string> env = {"PATH=" + Path("dist/bin") + ":/usr/bin:/bin",
                                        "HOME=" + Path("home"),
                                        "VL_SCRIPT_LOG=" + Path("scripts.log")};
        if (velmora) env.push_back("VELMORA=" + (*velmora ? Path(velmora) : std::string()));
        return RunProgram(VLNOGUI_PATH, args, env, Path(where), unprivileged, whileRunning);
    }

    // The script calls logged so far; the log starts again empty.
    std::string Scripts() const {
        std::string log = Read("scripts.log");
        fs::remove(Path("scripts.log"));
        return log;
    }
    std::map<std::string, std::string> Project(const std::vector<std::string> &skipped = {}) const {
        return Snapshot(Path("proj"), skipped);
    }

  private:
    TempDir root_;
};

// The test distribution of the runs (the scripts are the world's own): its
// global options give the test deployment.
inline void Distribution(const E2eWorld &w) {
    w.Write("dist/config/Velmora.cfg", "Makefile.$VL_SOURCE_SUFFIX : .c\n"
                                       "Makefile.exeSuffix : .cgi\n"
                                       "Test.CGI URL : http://h/cgi-bin\n"
                                       "Test.CGI Path : /cgi\n"
                                       "Test.HTML URL : http://h/#proj\n"
                                       "Test.HTML Path : /www/#proj\n");
    using namespace MainRegions;
    w.Write("dist/config/main.tem", "/* main */\n" + IS + "junk\n" + IE + DS + DE +
                                        "int main()\n{\n" + InS + InE + RS + RE + FS + FE + "}\n");
    w.Write("dist/config/Makefile.tem",
            "PROGRAM = $VL_EXECUTABLE\nOBJS = $VL_MAIN \\\n$VL_MODULES");
}

inline std::string Progress(const std::string &project, const std::string &config,
                            const std::string &beforeDone, const std::string &install) {
    return kBanner + "Applying Changes to " + project + " from " + config + "\n" + beforeDone +
           "Done Reading Project.\nDone Writing Project\n" + install + "Finished\n";
}

inline const char kNoBinding[] = "You must have at least one binding before testing.\n";

inline const char kPage[] =
    "<html><body>\n"
    "<FORM ACTION=\"old.cgi\" METHOD=\"post\">\n"
    "<INPUT TYPE=\"hidden\" NAME=\"VlFormName\" VALUE=\"order__Fshop_html\">\n"
    "<INPUT TYPE=\"text\" NAME=\"item\">\n"
    "</FORM>\n"
    "<A HREF=\"old.cgi?FNC=home__Ashop_html\">Home</A>\n"
    "</body></html>\n";

inline const std::string kShopModuleHead =
    kModuleHead + "#include <stdio.h>\nstatic char _Vl_HTML_Filename[] = \"shop.html\";\n";
inline const std::string kOrder = ModuleFunction("Forder", "\tint n = 0;\n", "", "\tn++;\n");
inline const std::string kHome = ModuleFunction("Ahome", "", "", "");

inline void PageProject(const E2eWorld &w, const std::string &options) {
    w.Write("proj/store.pj", kProjectHead +
                                 "shop.c\nHTML Files :\nshop.html\n"
                                 "Project Options :\n" +
                                 options);
    w.Write("proj/shop.html", kPage);
    // Text between functions and extra lines in R_ are regenerated away.
    w.Write("proj/shop.c", kShopModuleHead + kOrder + "/* stray text */\n" + kHome +
                               "void R_shop_html()\n{\n\tVlRegisterHtmlActivator(\"x\",Fx);\n"
                               "\n}/* Velmora End of Module */\n");
}

#endif
