/* The editing operations on a module's activator functions and their aliases:
 * adding, finding, changing and removing them. An activator is named by a page,
 * a short name and a type ("F" form, "A" anchor), or by a form-id string. */
#ifndef VELMORA_MODULE_FUNCTIONS_H
#define VELMORA_MODULE_FUNCTIONS_H

#include "html/document.h"
#include "module/module.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Functions. Adding for a form or anchor that already has a function only
 * replaces its func code. 1 on success, 0 unless exactly one of form and
 * anchor is given. */
int VlModuleAddFunc(VlModule *module, VlHtmlForm *form, VlHtmlAnch *anchor, const char *funcCode);
VlFunction *VlModuleGetFuncByForm(VlModule *module, VlHtmlForm *form);
VlFunction *VlModuleGetFuncByAnch(VlModule *module, VlHtmlAnch *anchor);
VlFunction *VlModuleGetFuncByActivator(VlHtmlDoc *page, const char *shortName, const char *type);
char *VlModuleGetFunctionName(VlHtmlDoc *page, const char *shortName, const char *type);
char *VlModuleGetFunctionInitCode(VlHtmlDoc *page, const char *shortName, const char *type);
char *VlModuleGetFunctionFinalCode(VlHtmlDoc *page, const char *shortName, const char *type);
int VlModuleSetFunctionInitCode(VlHtmlDoc *page, const char *shortName, const char *type,
                                const char *code);
int VlModuleSetFunctionFinalCode(VlHtmlDoc *page, const char *shortName, const char *type,
                                 const char *code);
char *VlModuleGetUserIncludes(VlHtmlDoc *page);
int VlModuleSetUserIncludes(VlHtmlDoc *page, const char *text);
/* Remove the function serving the form (anchor) and the first alias of it,
 * searching functions and their aliases in order; later aliases stay until
 * the next resolve. 0 for a null page or record, else 1. */
int VlModuleDeleteForm(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form);
int VlModuleDeleteAnch(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *anchor);
/* Make the function and the first alias of the old record serve the new one.
 * Only the alias change clears saved: a function's pointer alone does not
 * change the file. 0 for a null page or record, else 1. */
int VlModuleChangeFormPtr(VlModule *module, VlHtmlDoc *page, VlHtmlForm *oldForm,
                          VlHtmlForm *newForm);
int VlModuleChangeAnchPtr(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *oldAnchor,
                          VlHtmlAnch *newAnchor);
/* 1 when a form or anchor of that name (the type does not choose) is served
 * by a function with non-empty func code. */
int VlModuleIsActivator(VlModule *module, VlHtmlDoc *page, const char *shortName, const char *type);
/* Aliases are mended by name at the next resolve; nothing changes here.
 * 0 for a null module, else 1. */
int VlModuleRenameActivator(VlModule *module, const char *oldName, const char *newName);
int VlwGetActIdParts(const char *formId, char **pageOut, char **shortNameOut, char **typeOut);

/* Aliases. Adding clears the page module's saved flag before it knows
 * whether an alias will be added; duplicates are not looked for. */
int VlModuleAddAlias(VlHtmlDoc *page, const char *shortName, const char *type, VlHtmlDoc *aliasPage,
                     const char *aliasShortName);
int VlModuleGetFuncAndAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                            const char *type, VlFunction **functionOut, VlAlias **aliasOut,
                            int *indexOut);
int VlModuleGetFuncAndAlias2(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form,
                             VlHtmlAnch *anchor, const char *type, VlFunction **functionOut,
                             VlAlias **aliasOut, int *indexOut);
/* Takes the alias out of its function's list; the record is not freed (a
 * caller that found it with VlModuleGetFuncAndAlias releases it). */
int VlModuleDeleteAlias(VlModule *module, VlHtmlDoc *page, const char *shortName, const char *type);
char *VlModuleGetActivatorByAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                                  const char *type);
/* New lists of new form-id strings ("page<FORM>name", "page<A>name"). */
SutList *VlModuleFuncGetAliases(VlFunction *function);
SutList *VlModuleGetAliasByActivator(VlHtmlDoc *page, const char *shortName, const char *type);
SutList *VlModuleGetAllAliases(VlModule *module);

#ifdef __cplusplus
}
#endif

#endif
