// The one current project (theProj) and the process-wide distribution
// directory: creating an empty project, deleting the current one with all it
// owns, the small getters, and the environment and message helpers that the
// project code prints and looks things up with.
#include "project/project.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "html/document.h"
#include "maps/upkeep.h"
#include "module/module.h"
#include "project/mainmodule.h"
#include "util/list.h"
#include "util/strings.h"

VlProject *theProj = nullptr;
char *theDistDir = nullptr;

extern "C" {

VlProject *VlProjNewEmpty(void) {
    VlProjDelete();
    auto *project = static_cast<VlProject *>(calloc(1, sizeof(VlProject)));
    project->mainModule = VlMainModuleNewEmpty();
    project->htmlDocs = SutNewList();
    project->modules = SutNewList();
    project->saved = 1;
    theProj = project;
    return project;
}

void VlProjDelete(void) {
    VlProject *project = theProj;
    if (!project) return;
    for (int i = 0; i < SutSizList(project->modules); i++)
        VlModuleDelete(static_cast<VlModule *>(SutGetNList(project->modules, i)));
    SutDeleteList(project->modules);
    for (int i = 0; i < SutSizList(project->htmlDocs); i++)
        VlHtmlDelete(static_cast<VlHtmlDoc *>(SutGetNList(project->htmlDocs, i)));
    // The emptied list object goes too: nothing can reach it once the project
    // record is gone, and keeping it would only leak it.
    SutDeleteList(project->htmlDocs);
    if (VlMainModule *main = project->mainModule) {
        free(main->declarations);
        free(main->initialCode);
        free(main->finalCode);
        free(main);
    }
    SutDestroyList(project->options);
    free(project->name);
    free(project);
    theProj = nullptr;
    SwdResetTheMap();
}

VlProject *VlProjGetDefault(void) {
    return theProj;
}
void VlProjSetDefault(VlProject *project) {
    theProj = project;
}

SutList *VlProjGetOptions(void) {
    return theProj ? theProj->options : nullptr;
}

void VlProjSetOptions(SutList *list) {
    if (theProj) theProj->options = list;
}

char *VlProjGetName(void) {
    return theProj ? theProj->name : nullptr;
}

char *VlGetEnv(const char *name) {
    const char *value = name && *name ? getenv(name) : nullptr;
    return VlCopyString(value);
}

char *VlGetDistDir(void) {
    if (!theDistDir) {
        const char *value = getenv("VELMORA");
        if (!value) return nullptr;
        theDistDir = StrDup(value);
        size_t n = strlen(theDistDir);
        if (n > 0 && (theDistDir[n - 1] == '/' || theDistDir[n - 1] == '\\'))
            theDistDir[n - 1] = '\0';
    }
    return theDistDir;
}

char *GetVelmoraDir(void) {
    return StrDup(VlGetDistDir());
}

void VlResetDistDir(void) {
    free(theDistDir);
    theDistDir = nullptr;
}

void VlPrintError(const char *text) {
    if (text) fputs(text, stdout);
}

} // extern "C"
