/* Reading a project file into the current project: its modules, pages and
 * options, then naming the project and reading its main module. */
#ifndef VELMORA_PROJECT_READER_H
#define VELMORA_PROJECT_READER_H

#include "project/project.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Makes the project read from path (".pj" added when only that file exists)
 * the current project and returns it. A missing file starts a new project of
 * that name; a file without the project header gives a new project "noname".
 * Null only for a null path. verify has no effect in this program. */
VlProject *VlProjNew(const char *path, int verify);

/* Reads each named module into the project; *statusOut gets a new list with
 * 1, 0 or (for a null name) null per entry. 1 when every module was read. */
int VlProjReadModules(SutList *names, SutList **statusOut);
/* Reads each named page into the project; 0 for a null list or no project. */
int VlProjReadHTML(SutList *names);

/* The section readers of the project file; each returns a new list of lines
 * (or null) and advances *cursor through buffer. */
SutList *VlGetModuleNamesFromBuffer(const char *buffer, const char **cursor);
SutList *VlGetHTMLNamesFromBuffer(const char *buffer, const char **cursor);
SutList *VlGetOptionsFromBuffer(const char *buffer, const char **cursor);

#ifdef __cplusplus
}
#endif

#endif
