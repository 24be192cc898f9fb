/* The runs that hand the project to the distribution's scripts: installing
 * and testing (waited for), releasing, building, editing and previewing
 * (started and left running); and the checks on a project's name and
 * directory. Every file name and option value goes into a command line quoted
 * for the shell, so no name can run a command. */
#include "project/scripts.h"

#include <dirent.h>
#include <strings.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "project/configfile.h"
#include "project/lookup.h"
#include "project/makefile.h"
#include "project/naming.h"
#include "project/options.h"
#include "project/project.h"
#include "project/reader.h"
#include "project/writer.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"
#include "util/safefile.h"
#include "util/strings.h"

namespace {

// A command line joined from pieces that ends before the first missing one,
// as the scripts' argument lists always have: a project that lacks a setting
// gives a shorter command line, and the scripts cope with fewer arguments.
class CommandLine {
  public:
    explicit CommandLine(const char *script) : text_(script) {}
    // Text of the command line's own making, as it stands.
    CommandLine &Raw(const char *piece) {
        if (!piece) ended_ = true;
        if (!ended_) text_ += piece;
        return *this;
    }
    // An option value, quoted for the shell where it needs it.
    CommandLine &Word(const char *piece) { return Quoted(piece, VlShellQuote); }
    // A file or directory name: quoted, and one that begins with "-" given
    // as "./-name", so the script never takes it for an option.
    CommandLine &Name(const char *piece) { return Quoted(piece, VlShellQuoteName); }
    // A value that stands inside the double quotes of the command line.
    CommandLine &InQuotes(const char *piece) {
        if (!piece) ended_ = true;
        if (ended_) return *this;
        VlCharPtr escaped(VlShellEscapeInDoubleQuotes(piece));
        text_ += escaped.get();
        return *this;
    }
    const char *Text() const { return text_.c_str(); }

  private:
    CommandLine &Quoted(const char *piece, char *(*quote)(const char *)) {
        if (!piece) ended_ = true;
        if (ended_) return *this;
        VlCharPtr quoted(quote(piece));
        text_ += quoted.get();
        return *this;
    }

    std::string text_;
    bool ended_ = false;
};

VlCharPtr Option(const char *category, const char *name) {
    return VlCharPtr(VlProjGetOptionByCat(category, name));
}

bool IsTrue(const char *value) {
    return value && std::strcmp(value, "True") == 0;
}

// The text before the last "." (all of it when there is none).
std::string CutAtLastDot(const char *text) {
    std::string s = text ? text : "";
    const size_t dot = s.rfind('.');
    return dot == std::string::npos ? s : s.substr(0, dot);
}

bool EqualsIgnoringCase(const std::string &a, const std::string &b) {
    return a.size() == b.size() && strcasecmp(a.c_str(), b.c_str()) == 0;
}

int Start(const CommandLine &command) {
    VlLaunch(command.Text());
    return 1;
}

} // namespace

extern "C" {

char *VlProjInDir(const char *directory) {
    if (!directory) return nullptr;
    DIR *dir = opendir(directory);
    if (!dir) return nullptr;
    char *found = nullptr;
    while (const dirent *entry = readdir(dir)) {
        if (std::strstr(entry->d_name, ".pj")) {
            found = StrDup(entry->d_name);
            break;
        }
    }
    closedir(dir);
    return found;
}

int VlProjNameClash(const char *path) {
    VlCharPtr file(VlGetFileFromFullPath(path));
    if (!file || !theProj) return 0;
    const std::string base = CutAtLastDot(file.get());
    if (theProj->name && EqualsIgnoringCase(base, theProj->name)) return 1;
    for (int i = 0; i < SutSizList(theProj->htmlDocs); i++) {
        const char *page =
            VlHtmlGetName(static_cast<VlHtmlDoc *>(SutGetNList(theProj->htmlDocs, i)));
        if (page && EqualsIgnoringCase(base, CutAtLastDot(page))) return 1;
    }
    return 0;
}

int VlProjRunTestLL(int install) {
    if (!theProj || SutSizList(theProj->htmlDocs) == 0 || SutSizList(theProj->modules) == 0) {
        VlGUIError("You must have at least one binding before testing.");
        return 0;
    }
    theProj->releaseMode = 0;
    VlProjCheckForSave();

    VlCharPtr htmlPath = Option("Test.", "HTML Path");
    VlCharPtr cgiPath = Option("Test.", "CGI Path");
    const std::string makefile = std::string(theProj->name ? theProj->name : "") + ".mak";
    VlCharPtr pages(VlProjGetHtmlNamesString(0));
    VlCharPtr suffix(VlProjGetExeSuffix());
    VlCharPtr target = Option("Makefile.", "$VL_DEPLOYMENT_TARGET");
    if (!target) target.reset(VlCopyString("CGI"));

    VlCharPtr start, url;
    if (VlProjRelocatable()) {
        start.reset(VlStrMCat(theProj->name ? theProj->name : "", suffix.get(), (char *)nullptr));
        url.reset(VlProjGetCGIURL("Test."));
    } else {
        url = Option("Test.", "HTML URL");
        start = Option("Project.", "HTML Startup Document");
        if (!start || !*start) {
            VlHtmlDoc *first = static_cast<VlHtmlDoc *>(SutGetNList(theProj->htmlDocs, 0));
            start.reset(StrDup(VlHtmlGetName(first)));
        }
    }

    CommandLine command(install ? "vlinst.sh " : "vltest.sh ");
    command.Name(theProj->name).Word(suffix.get()).Raw(" ").Name(start.get()).Raw(" ");
    command.Name(cgiPath.get()).Raw(" ").Word(url.get()).Raw(" ").Name(htmlPath.get()).Raw(" ");
    command.Name(makefile.c_str()).Raw(" \"").InQuotes(target.get()).Raw("\"");
    command.Raw(" \"").InQuotes(pages.get()).Raw("\"");
    std::fflush(stdout);
    std::fflush(stderr);
    // The script's status is its own business: it reports what it did.
    int status = std::system(command.Text());
    (void)status;
    return 1;
}

int VlProjRunTest(void) {
    return VlProjRunTestLL(0);
}

int VlProjRunInstall(void) {
    return VlProjRunTestLL(1);
}

int VlProjRunRelease(void) {
    if (!theProj || SutSizList(theProj->htmlDocs) == 0) {
        VlGUIError("There is no project to release.");
        return 0;
    }
    VlProjCheckForSave();
    theProj->releaseMode = 1;
    VlCharPtr sourceSuffix = Option("Makefile.", "$VL_SOURCE_SUFFIX");
    Start(CommandLine("vlrel1.sh ").Word(sourceSuffix.get()));

    // The project moves into release/, where everything is written with the
    // "Release." settings.
    VlCharPtr startDir(VlGetCurrentDir());
    const std::string name = theProj->name ? theProj->name : "";
    const std::string releasePath = "release/" + name;
    if (!VlProjSaveAs(releasePath.c_str())) return 0;

    const std::string makefile = name + ".mak";
    VlCharPtr pages(VlProjGetHtmlNamesString(1));
    VlCharPtr exeSuffix = Option("Makefile.", "exeSuffix");
    VlCharPtr modules(VlProjGetModuleNames(1));
    VlCharPtr mainFile(VlProjGetMainCFileName());
    VlCharPtr configName(VlCopyString("NoConfigFile"));
    if (IsTrue(Option("Project.", "Allow Config File").get())) {
        VlCharPtr configured = Option("Project.", "Config File Name");
        configName.reset(VlGetFileFromFullPath(configured.get()));
    }

    CommandLine second("vlrel2.sh ");
    second.Name(name.c_str()).Raw(" ").Word(exeSuffix.get()).Raw(" ").Name(makefile.c_str());
    second.Raw(" ").Name(configName.get()).Raw(" \"").InQuotes(pages.get()).Raw("\" \"");
    second.InQuotes(modules.get()).Raw(" ").InQuotes(mainFile.get()).Raw("\" ");

    FILE *readme = VlOpenSafely("README");
    if (!readme) {
        // The release stays in release mode and in the release directory.
        VlPrintError("Could open file for write ");
        VlPrintError("README\n");
        return 0;
    }
    std::fputs("This file contains important information about your project\n", readme);
    std::fputs("\n", readme);
    std::fputs("These files should be copied to a directory that is known to your HTTP server.\n",
               readme);
    std::fprintf(readme, "CGI Name : %s%s\n", name.c_str(), exeSuffix ? exeSuffix.get() : "");
    std::fprintf(readme, "Config File URL : %s\n", configName ? configName.get() : "");
    std::fprintf(readme, "HTML file(s) : %s\n", pages ? pages.get() : "");
    std::fputs("\n", readme);
    std::fputs("These options are hard coded in the CGI program:\n", readme);
    std::fputs(VlProjRelocatable() ? "This is a relocatable project.\n"
                                   : "This is NOT a relocatable project.\n",
               readme);
    VlProjBuildConfigOptions();
    VlProjWriteConfigFileLL(readme, "Release.");
    std::fputs("\nNote that you can override these values if you use a config file.\n", readme);
    // A README that could not be written whole has been reported; the
    // release goes on as it does after the other write failures.
    VlCloseSafely(readme);

    Start(second);
    theProj->releaseMode = 0;
    // Back to the project in the starting directory.
    if (chdir(startDir.get()) != 0) VlGUIError("Change directory failed.");
    VlProjDelete();
    VlProjNew((name + ".pj").c_str(), 0);
    return 1;
}

int VlProjBuild(void) {
    if (!theProj || !theProj->name) return 0;
    return Start(CommandLine("vlmake.sh ").Name(theProj->name).Raw(".mak"));
}

int VlProjRebuild(void) {
    if (!theProj || !theProj->name) return 0;
    return Start(CommandLine("vlmake.sh ").Name(theProj->name).Raw(".mak -rebuild"));
}

int VlProjLaunchEditor(const char *htmlName) {
    if (!htmlName) return 0;
    return Start(CommandLine("vledithtml.sh ").Name(htmlName));
}

int VlProjPreviewHtml(const char *htmlName) {
    if (!htmlName) return 0;
    VlCharPtr dir(VlGetCurrentDir());
    const std::string path = std::string(dir.get()) + "/" + htmlName;
    return Start(CommandLine("vlbrowser.sh -openFile ").Name(path.c_str()));
}

} // extern "C"
