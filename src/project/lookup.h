/* Lookups and queries over the current project's modules and pages, and the
 * project-wide form and anchor operations. */
#ifndef VELMORA_PROJECT_LOOKUP_H
#define VELMORA_PROJECT_LOOKUP_H

#include "html/document.h"
#include "module/module.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The project name followed by the source suffix; a new string, null without
 * a project. */
char *VlProjGetMainCFileName(void);
/* Each module's C source file name (or page name) preceded by one blank; with
 * onlyExisting set, names of files missing on disk are left out. */
char *VlProjGetModuleNames(int onlyExisting);
char *VlProjGetHtmlNamesString(int onlyExisting);

VlModule *VlProjGetModuleByFileName(const char *cFileName);
/* The module whose page is this very document record. */
VlModule *VlProjGetModule(VlHtmlDoc *htmlDoc);
VlHtmlDoc *VlProjGetHtml(const char *name);
/* From VlProjBeginPageLookups() to VlProjEndPageLookups(), VlProjGetHtml
 * answers from an index of the project's pages made at its first call, with
 * the same result as the walk: for a caller that looks many pages up while
 * neither the pages nor their names change (reading the modules). */
void VlProjBeginPageLookups(void);
void VlProjEndPageLookups(void);
/* Matches the name cut at its first ".pj" against each page name cut at its
 * last ".". */
VlHtmlDoc *VlProjGetHtmlByShortName(const char *shortName);
/* The page whose module name is moduleName and on it the form (typeLetter
 * 'F') or anchor ('A') of that short name: 1 when both are found, else 0 with
 * the three outputs null. */
int VlProjGetActivator(const char *moduleName, int typeLetter, const char *shortName,
                       VlHtmlDoc **pageOut, VlHtmlForm **formOut, VlHtmlAnch **anchorOut);

int VlProjNeedToRefresh(void);
int VlProjChanged(void);
int VlProjSetChanged(int changed);

/* The module operations of the same name applied to every module; return 1. */
int VlProjChangeFormPtr(VlHtmlDoc *page, VlHtmlForm *oldForm, VlHtmlForm *newForm);
int VlProjChangeAnchPtr(VlHtmlDoc *page, VlHtmlAnch *oldAnchor, VlHtmlAnch *newAnchor);
int VlProjDeleteForm(VlHtmlDoc *page, VlHtmlForm *form, int unused);
int VlProjDeleteAnch(VlHtmlDoc *page, VlHtmlAnch *anchor, int unused);

#ifdef __cplusplus
}
#endif

#endif
