/* Writing the project back to disk in one pass (backup, project file, modules,
 * pages, main module, makefile, configuration file, write script), saving it
 * under a new name, and the record of recently used projects that a front end
 * with menus keeps. */
#include "project/writer.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "html/page.h"
#include "module/module.h"
#include "module/writer.h"
#include "project/configfile.h"
#include "project/lookup.h"
#include "project/mainmodule.h"
#include "project/makefile.h"
#include "project/naming.h"
#include "project/project.h"
#include "project/scripts.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/list.h"
#include "util/messages.h"
#include "util/process.h"
#include "util/strings.h"

namespace {

std::string Quoted(const char *text) {
    VlCharPtr quoted(VlShellQuote(text));
    return quoted.get();
}

// " name" for every listed file that exists on disk, each quoted for the shell.
template <typename NameOf> std::string ExistingFiles(SutList *list, NameOf nameOf) {
    std::string out;
    for (int i = 0; i < SutSizList(list); i++) {
        VlCharPtr name(nameOf(SutGetNList(list, i)));
        if (name && VlFileExists(name.get())) out += " " + Quoted(name.get());
    }
    return out;
}

void ProjectFileError(const char *name) {
    VlPrintError("Could not write file in VlProjWrite:");
    VlPrintError(name);
    VlPrintError("\n");
}

} // namespace

extern "C" {

int VlProjBackup(void) {
    if (!theProj) return 0;
    const std::string name = theProj->name ? theProj->name : "";
    const std::string dir = "velmoraBack" + name; // project shop: velmoraBackshop
    // A failed creation is not looked at here: it shows up as a failed copy.
    if (!VlDirExists(dir.c_str())) VlMkdir(dir.c_str());

    std::string command = "\\cp ";
    command += ExistingFiles(theProj->modules, [](void *module) {
        return VlModuleGetCFileName(static_cast<VlModule *>(module));
    });
    command += " ";
    command += ExistingFiles(theProj->htmlDocs, [](void *doc) {
        return StrDup(VlHtmlGetName(static_cast<VlHtmlDoc *>(doc)));
    });

    VlCharPtr mainFile(VlProjGetMainCFileName());
    const std::string projectFile = name + ".pj";
    // A project never written before has nothing to keep.
    if (!mainFile || !VlFileExists(mainFile.get()) || !VlFileExists(projectFile.c_str())) return 1;
    command += " " + Quoted(mainFile.get()) + " " + Quoted(projectFile.c_str()) + " " +
               Quoted(dir.c_str());
    if (VlLaunchAndBlock(command.c_str()) != 0) {
        VlGUIError("Copy to backup directory failed.");
        return 0;
    }
    return 1;
}

int VlProjWrite(int force) {
    if (!theProj || !theProj->name) return 0;
    VlProjBackup();

    const std::string projectFile = std::string(theProj->name) + ".pj";
    FILE *fp = std::fopen(projectFile.c_str(), "w");
    if (!fp) {
        ProjectFileError(theProj->name);
        return 0;
    }
    std::fputs("Velmora Project File V1.0\n", fp);
    std::fputs("This is a generated file. DO NOT MODIFY.\nSource files:\n", fp);
    for (int i = 0; i < SutSizList(theProj->modules); i++) {
        VlModule *module = static_cast<VlModule *>(SutGetNList(theProj->modules, i));
        VlCharPtr cFileName(VlModuleGetCFileName(module));
        std::fprintf(fp, "%s\n", cFileName ? cFileName.get() : "");
        // Each module is written right after its line, before the next one.
        VlModuleWrite(module, cFileName.get(), force);
    }
    std::fputs("HTML Files :\n", fp);
    for (int i = 0; i < SutSizList(theProj->htmlDocs); i++) {
        VlHtmlDoc *doc = static_cast<VlHtmlDoc *>(SutGetNList(theProj->htmlDocs, i));
        VlHtmlSave(doc);
        const char *name = VlHtmlGetName(doc);
        std::fprintf(fp, "%s\n", name ? name : "");
    }
    std::fputs("Project Options :\n", fp);
    for (int i = 0; i < SutSizList(theProj->options); i++)
        if (const char *line = static_cast<const char *>(SutGetNList(theProj->options, i)))
            std::fprintf(fp, "%s\n", line);
    // A full disk shows up only here; the file is then not a project file
    // anyone should trust, so the write is reported as failed.
    const bool failed = std::ferror(fp) != 0;
    if (std::fclose(fp) != 0 || failed) {
        ProjectFileError(theProj->name);
        return 0;
    }

    VlCharPtr mainFile(VlProjGetMainCFileName());
    VlMainModuleWrite(mainFile.get());
    VlProjWriteMakefile();
    VlProjWriteConfigFile();

    if (std::strcmp(theProj->name, "noname") == 0) theProj->nonameAccepted = 1;
    // The script may, for instance, check the written files in.
    if (VlProjCallReadWriteScripts()) VlRunFileScript("vlwriteprj.sh ", projectFile.c_str());
    theProj->saved = 1;
    VlProjAddToMRU();
    return 1;
}

int VlProjSaveAs(const char *path) {
    if (!theProj || !path) return 0;
    VlCharPtr oldDir(VlGetCurrentDir());
    VlProjSetName(path);
    VlCharPtr newDir(VlGetCurrentDir());

    // Only a move to a place outside the old directory's path takes the
    // working copies along (a parent directory or the same one does not).
    if (!std::strstr(oldDir.get(), newDir.get())) {
        VlHtmlMakeBackupDir();
        const std::string command =
            "\\cp " + Quoted(oldDir.get()) + "/in_use/*.vlm " + Quoted(newDir.get()) + "/in_use/";
        VlLaunchAndBlock(command.c_str());
    }

    if (!VlProjWrite(1)) {
        const std::string message =
            std::string("Could not write ") + (theProj && theProj->name ? theProj->name : "");
        VlGUIError(message.c_str());
        return 0;
    }
    return 1;
}

int VlProjSaveAsWithCheck(const char *path) {
    if (!path) return 0;
    VlCharPtr filePart(VlGetFileFromFullPath(path));
    const std::string withSuffix = std::string(path) + ".pj";
    if (!VlFileExists(path) && !VlFileExists(withSuffix.c_str())) {
        // A front end would ask before saving over another project of the
        // target directory; there is no one to ask here.
        VlCharPtr dir(VlGetDirFromFullPath(path));
        VlCharPtr here(dir ? nullptr : VlGetCurrentDir());
        VlCharPtr other(VlProjInDir(dir ? dir.get() : here.get()));
    }
    // Saving a project under a name that begins with its own name into
    // another directory is likewise a question for a front end only.
    if (filePart && VlProjGetHtmlByShortName(filePart.get())) {
        VlGUIError("The name of the project cannot be the same\n"
                   "as the name of an HTML file without the file extension.");
        return 0;
    }
    return VlProjSaveAs(path);
}

int VlProjCheckForSave(void) {
    return 1;
}

int VlProjNeedToSaveAs(void) {
    if (!theProj || !theProj->name) return 1;
    return std::strcmp(theProj->name, "noname") == 0 && !theProj->nonameAccepted ? 1 : 0;
}

void VlProjAddToMRU(void) {
    if (!theProj || !theProj->name) return;
    VlCharPtr dir(VlGetCurrentDir());
    if (!dir || !*dir) return;
    // The full path of the project file is what a menu would list; the
    // command-line build keeps no menu, so it goes no further.
    const std::string entry = std::string(dir.get()) + "/" + theProj->name + ".pj";
    (void)entry;
}

} // extern "C"
