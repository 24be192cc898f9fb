/* The project record: options, modules, pages and main module of the one
 * current project, held in theProj. */
#ifndef VELMORA_PROJECT_PROJECT_H
#define VELMORA_PROJECT_PROJECT_H

#include <time.h>
#include "util/list.h"
#include "html/document.h"
#include "module/module.h"

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
extern char *theDistDir;

#ifdef __cplusplus
}
#endif

#endif
