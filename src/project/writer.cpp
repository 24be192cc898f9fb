/* Writing the project back to disk in one pass (backup, project file, modules,
 * pages, main module, makefile, configuration file, write script), saving it
 * under a new name, and the record of recently used projects that a front end
 * with menus keeps. */
#include "project/writer.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

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
#include "util/runstate.h"
#include "util/safefile.h"
#include "util/strings.h"

namespace {

std::string Quoted(const char *text) {
    VlCharPtr quoted(VlShellQuoteName(text));
    return quoted.get();
}

// The backup directory is the engine's own: a symbolic link at its place, or
// at the place of a copy inside it, would send the copies elsewhere, so such
// a link is removed before copying (cp then makes a file or directory there).
void UnlinkSymbolicLink(const std::string &path) {
    struct stat st;
    if (lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode)) unlink(path.c_str());
}

// Whether an existing file has to be copied into the backup directory: not
// when its copy there already holds the same bytes (the backup then holds
// the file as it is before this run's writes all the same).
bool NeedsCopy(const char *file, const std::string &dir) {
    if (!file || !VlFileExists(file)) return false;
    VlCharPtr filePart(VlGetFileFromFullPath(file));
    const std::string copy = dir + "/" + (filePart ? filePart.get() : file);
    UnlinkSymbolicLink(copy);
    return !VlFilesHoldSameBytes(file, copy.c_str());
}

// Every listed file that has to be copied, in list order.
template <typename NameOf>
void AddFilesToCopy(std::vector<std::string> &files, SutList *list, NameOf nameOf,
                    const std::string &dir) {
    for (int i = 0; i < SutSizList(list); i++) {
        VlCharPtr name(nameOf(SutGetNList(list, i)));
        if (NeedsCopy(name.get(), dir)) files.emplace_back(name.get());
    }
}

std::string JoinQuoted(const std::vector<std::string> &files) {
    std::string out;
    for (const std::string &file : files)
        out += " " + Quoted(file.c_str());
    return out;
}

// Runs the backup copy: one command when the whole list fits in one command
// line, else as many as the system's limits on a command's arguments need.
// 0 when every command succeeded.
int CopyToBackup(const std::string &oneCommand, const std::vector<std::string> &files,
                 const std::string &dir) {
    const size_t room = static_cast<size_t>(VlCommandLineRoom());
    // A piece costs its bytes in the command line and, as an argument of cp,
    // a terminating NUL and a pointer of the argument vector.
    auto cost = [](const std::string &piece) { return piece.size() + 1 + sizeof(char *); };
    const std::string copy = "\\cp", target = " " + Quoted(dir.c_str());
    std::vector<std::string> pieces;
    size_t total = cost(copy) + cost(target);
    for (const std::string &file : files) {
        pieces.push_back(" " + Quoted(file.c_str()));
        total += cost(pieces.back());
    }
    if (total <= room) return VlLaunchAndBlock(oneCommand.c_str());
    for (size_t i = 0; i < pieces.size();) {
        std::string command = copy;
        size_t used = cost(copy) + cost(target);
        // At least one name a command, however long it is.
        do {
            command += pieces[i];
            used += cost(pieces[i]);
            i++;
        } while (i < pieces.size() && used + cost(pieces[i]) <= room);
        command += target;
        if (VlLaunchAndBlock(command.c_str()) != 0) return 1;
    }
    return 0;
}

void ProjectFileError(const char *name) {
    VlPrintError("Could not write file in VlProjWrite:");
    VlPrintError(name);
    VlPrintError("\n");
}

// A file of the project is written only inside the project directory (an
// option such as the source suffix could name a place outside it).
bool InsideProject(const char *file) {
    if (!file || VlPathInsideWorkingDir(file)) return true;
    VlPrintError(file);
    VlPrintError(" lies outside the project directory: it is not written\n");
    VlNoteWriteFailure();
    return false;
}

} // namespace

extern "C" {

int VlProjBackup(void) {
    if (!theProj) return 0;
    const std::string name = theProj->name ? theProj->name : "";
    const std::string dir = "velmoraBack" + name; // project shop: velmoraBackshop
    UnlinkSymbolicLink(dir);
    // A failed creation is not looked at here: it shows up as a failed copy.
    if (!VlDirExists(dir.c_str())) VlMkdir(dir.c_str());

    VlCharPtr mainFile(VlProjGetMainCFileName());
    const std::string projectFile = name + ".pj";
    // A project never written before has nothing to keep.
    if (!mainFile || !VlFileExists(mainFile.get()) || !VlFileExists(projectFile.c_str())) return 1;

    std::vector<std::string> modules, pages, last;
    AddFilesToCopy(
        modules, theProj->modules,
        [](void *module) { return VlModuleGetCFileName(static_cast<VlModule *>(module)); }, dir);
    AddFilesToCopy(
        pages, theProj->htmlDocs,
        [](void *doc) { return StrDup(VlHtmlGetName(static_cast<VlHtmlDoc *>(doc))); }, dir);
    for (const char *file : {static_cast<const char *>(mainFile.get()), projectFile.c_str()})
        if (NeedsCopy(file, dir)) last.emplace_back(file);
    // "\cp", the modules, a blank, the pages, the main module, the project
    // file and the directory, each name after a blank.
    const std::string command = "\\cp " + JoinQuoted(modules) + " " + JoinQuoted(pages) +
                                JoinQuoted(last) + " " + Quoted(dir.c_str());
    std::vector<std::string> files = modules;
    files.insert(files.end(), pages.begin(), pages.end());
    files.insert(files.end(), last.begin(), last.end());
    if (files.empty()) return 1;
    if (CopyToBackup(command, files, dir) != 0) {
        VlGUIError("Copy to backup directory failed.");
        return 0;
    }
    return 1;
}

int VlProjWrite(int force) {
    if (!theProj || !theProj->name) return 0;
    // A project that could not be read whole would come out without what
    // could not be read: nothing is written.
    if (VlWritesRefused()) return 0;
    VlProjBackup();

    const std::string projectFile = std::string(theProj->name) + ".pj";
    FILE *fp = VlOpenSafely(projectFile.c_str());
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
        if (InsideProject(cFileName.get())) VlModuleWrite(module, cFileName.get(), force);
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
    // The old project file stays when the new one cannot be written whole
    // (reported with the reason); the rest is then not written either.
    if (VlCloseSafely(fp) < 0) return 0;

    VlCharPtr mainFile(VlProjGetMainCFileName());
    if (InsideProject(mainFile.get())) VlMainModuleWrite(mainFile.get());
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
