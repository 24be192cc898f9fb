/* Interfaces of the page reader, project options and binding-code parser that
 * this branch calls before their own headers declare them. Removed as soon as
 * those headers land. */
#ifndef VELMORA_PROJECT_PENDING_H
#define VELMORA_PROJECT_PENDING_H

#include "util/list.h"
#include "html/document.h"

#ifdef __cplusplus
extern "C" {
#endif

void VlPrintError(const char *text);
char *VlProjGetOptionByCat(const char *category, const char *name);
int VlProjCallReadWriteScripts(void);
int VlProjSetName(const char *path);
int VlProjUpgradeOptions(SutList *list);
struct VlProject *VlProjNewEmpty(void);
VlHtmlDoc *VlHtmlNewFromFile(const char *name);
time_t VlGetFileModTime(const char *name);
int SwdParseFormCode(const char *interface, const char *widget, const char *body);
int SwdParseAnchCode(const char *interface, const char *widget, const char *body);
struct SpmSPBind;
struct SpmCallbackBind;
char *getCallbackCode(struct SpmSPBind *bind, struct SpmCallbackBind *callBind, int flag);

#ifdef __cplusplus
}
#endif

#endif
