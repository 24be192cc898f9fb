/* The project record: options, modules, pages and main module of the one
 * current project, held in theProj. */
#ifndef VELMORA_PROJECT_PROJECT_H
#define VELMORA_PROJECT_PROJECT_H

#include <time.h>
#include "html/document.h"
#include "module/module.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VlMainModule {
    time_t modTime;
    long spare; /* kept for layout; unused */
    char *declarations;
    char *initialCode;
    char *finalCode;
} VlMainModule;

typedef struct VlProject {
    SutList *options; /* option lines, owned */
    char *name;
    int nonameAccepted;
    int saved;
    int releaseMode;
    VlMainModule *mainModule;
    SutList *modules;  /* of VlModule, owned */
    SutList *htmlDocs; /* of VlHtmlDoc, owned */
} VlProject;

extern VlProject *theProj;

/* The current project. VlProjNewEmpty deletes the one that was current and
 * makes a new empty one current; VlProjDelete frees the current project with
 * everything it owns and resets the binding map. */
VlProject *VlProjNewEmpty(void);
void VlProjDelete(void);
VlProject *VlProjGetDefault(void);
void VlProjSetDefault(VlProject *project); /* the old one is not deleted */

/* The project's option list (owned by the project) and its name (the field). */
SutList *VlProjGetOptions(void);
void VlProjSetOptions(SutList *list); /* the old list is not freed */
char *VlProjGetName(void);

#ifdef __cplusplus
}
#endif

#endif
