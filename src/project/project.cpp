// The one current project (theProj): creating an empty project, deleting the
// current one with all it owns, and the small getters.
#include "project/project.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "bindcode/upkeep.h"
#include "html/document.h"
#include "module/module.h"
#include "project/mainmodule.h"
#include "util/list.h"
#include "util/strings.h"

VlProject *theProj = nullptr;

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

} // extern "C"
