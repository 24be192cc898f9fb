/* Builds the current project from a project file: the file's three sections
 * (module files, page files, option lines), then the pages, the modules with
 * their binding code, the aliases between them, the project's name and
 * directory and its main module. */
#include "project/reader.h"

#include <stdint.h>
#include <string.h>

#include <string>

#include "html/page.h"
#include "module/module.h"
#include "module/reader.h"
#include "project/lookup.h"
#include "project/mainmodule.h"
#include "project/naming.h"
#include "project/options.h"
#include "project/writer.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/runstate.h"
#include "util/safefile.h"
#include "util/strings.h"

namespace {

const char kHeader[] = "Velmora Project File V1.0\n";
const char kHeaderB[] = "Velmora Project File V1.0B\n";
const char kSourceFiles[] = "This is a generated file. DO NOT MODIFY.\nSource files:\n";
const char kHtmlFiles[] = "HTML Files :\n";
const char kOptions[] = "Project Options :\n";

/* The lines of one section of the buffer, searched from *cursor on. */
SutList *SectionLines(const char *buffer, const char **cursor, const char *start, const char *end,
                      bool emptyIsNone) {
    if (!buffer || !cursor) return nullptr;
    const char *from = *cursor ? *cursor : buffer;
    VlCharPtr section(VlParseSection(from, start, end, cursor));
    if (!section || (emptyIsNone && !*section)) return nullptr;
    return VlParseFileString(section.get(), "\n", nullptr);
}

/* The file actually read: path itself when it exists or already ends in
 * ".pj", else path with ".pj" added. */
std::string SettledFileName(const char *path) {
    std::string name(path);
    if (VlFileExists(path)) return name;
    if (name.size() > 3 && name.compare(name.size() - 3, 3, ".pj") == 0) return name;
    return name + ".pj";
}

// A page or module listed with a name that leads out of the project
// directory is not read: writing it back would write outside the project.
bool InsideProject(const char *name) {
    if (VlPathInsideWorkingDir(name)) return true;
    VlPrintError(name);
    VlPrintError(" lies outside the project directory: it is not read\n");
    VlRefuseWrites();
    return false;
}

VlProject *NewNamedProject(const char *name) {
    VlProjNewEmpty();
    VlProjSetName(name);
    return theProj;
}

} // namespace

extern "C" {

SutList *VlGetModuleNamesFromBuffer(const char *buffer, const char **cursor) {
    return SectionLines(buffer, cursor, kSourceFiles, kHtmlFiles, true);
}

SutList *VlGetHTMLNamesFromBuffer(const char *buffer, const char **cursor) {
    return SectionLines(buffer, cursor, kHtmlFiles, kOptions, false);
}

SutList *VlGetOptionsFromBuffer(const char *buffer, const char **cursor) {
    return SectionLines(buffer, cursor, kOptions, nullptr, false);
}

int VlProjReadModules(SutList *names, SutList **statusOut) {
    if (!names || !theProj) return 0;
    SutList *status = SutNewList();
    if (statusOut) *statusOut = status;
    int allRead = 1;
    // Each module names its page; the pages stay as they are meanwhile.
    VlProjBeginPageLookups();
    // Once a file could not be read whole the project will not be written
    // back: reading stops there.
    for (int i = 0; i < SutSizList(names) && !VlWritesRefused(); i++) {
        const char *name = static_cast<const char *>(SutGetNList(names, i));
        if (!name) {
            SutAddList(status, nullptr);
            continue;
        }
        VlModule *module = InsideProject(name) ? VlModuleNewFromFile(name) : nullptr;
        if (module)
            SutAddList(theProj->modules, module);
        else
            allRead = 0;
        SutAddList(status, reinterpret_cast<void *>(static_cast<intptr_t>(module ? 1 : 0)));
    }
    VlProjEndPageLookups();
    if (!statusOut) SutDeleteList(status);
    return allRead;
}

int VlProjReadHTML(SutList *names) {
    if (!names || !theProj) return 0;
    for (int i = 0; i < SutSizList(names) && !VlWritesRefused(); i++) {
        const char *name = static_cast<const char *>(SutGetNList(names, i));
        if (!name || !*name || !InsideProject(name)) continue;
        if (VlHtmlDoc *doc = VlHtmlNewFromFile(name)) SutAddList(theProj->htmlDocs, doc);
    }
    return 1;
}

VlProject *VlProjNew(const char *path, int verify) {
    if (!path) return nullptr;
    const std::string fileName = SettledFileName(path);
    std::string startPath = path;
    if (path[0] != '/') {
        VlCharPtr cwd(VlGetCurrentDir());
        if (cwd && *cwd) startPath = std::string(cwd.get()) + "/" + path;
    }

    // The script may fetch the file (from version control, say) first.
    if (VlProjCallReadWriteScripts()) VlRunFileScript("vlreadprj.sh ", fileName.c_str());

    // A file that exists but cannot be read whole is refused (the run then
    // writes nothing); only a missing one starts a new project.
    VlCharPtr buffer(VlReadFileWhole(fileName.c_str(), nullptr));
    if (!buffer) return NewNamedProject(path);

    // The header is searched anywhere in the text, not only on the first line.
    if (!strstr(buffer.get(), kHeader) && !strstr(buffer.get(), kHeaderB)) {
        VlGUIError((fileName + " is not a valid project file.").c_str());
        return NewNamedProject("noname");
    }

    const char *cursor = buffer.get();
    SutList *moduleNames = VlGetModuleNamesFromBuffer(buffer.get(), &cursor);
    SutList *htmlNames = VlGetHTMLNamesFromBuffer(buffer.get(), &cursor);

    // Naming enters the project's directory: the listed files are relative to it.
    NewNamedProject(path);
    if (cursor) theProj->options = VlGetOptionsFromBuffer(buffer.get(), &cursor);
    buffer.reset();
    if (VlProjUpgradeOptions(theProj->options))
        VlPrintError("Upgraded Project Options from an old version of Velmora\n");

    VlProjReadHTML(htmlNames);
    if (moduleNames && !VlWritesRefused()) {
        SutList *status = nullptr;
        VlProjReadModules(moduleNames, &status);
        SutDeleteList(status);
    }
    SutDestroyList(moduleNames);
    SutDestroyList(htmlNames);
    for (int i = 0; i < SutSizList(theProj->modules); i++)
        VlModuleResolveAliases(static_cast<VlModule *>(SutGetNList(theProj->modules, i)));

    // Named again now that modules and pages exist, so they get the CGI URL.
    // The working directory is the project's by now, so a relative path is
    // taken from where the reading started: the same directory, not one
    // nested inside it.
    VlProjSetName(startPath.c_str());
    if (theProj->name && strcmp(theProj->name, "noname") == 0) theProj->nonameAccepted = 1;
    VlCharPtr mainFile(VlProjGetMainCFileName());
    if (!VlWritesRefused()) VlMainModuleRead(mainFile.get());

    if (SutSizList(theProj->modules) > 0 && verify) {
        // A front end with dialogs would ask before reading; nothing to ask here.
        VlCharPtr prompt(VlProjGetOptionByCat("Project.", "Verify Prompt"));
        (void)(prompt && strcmp(prompt.get(), "True") == 0);
    }

    theProj->saved = 1;
    VlProjAddToMRU();
    return theProj;
}

} // extern "C"
