/* The editing operations on a module's activator functions and their aliases:
 * adding, finding, changing and removing them. An activator is named by a page,
 * a short name and a type ("F" form, "A" anchor), or by a form-id string. */
#ifndef VELMORA_MODULE_FUNCTIONS_H
#define VELMORA_MODULE_FUNCTIONS_H

#include "util/list.h"
#include "html/document.h"
#include "module/module.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Functions. */
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
int VlModuleDeleteForm(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form);
int VlModuleDeleteAnch(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *anchor);
int VlModuleChangeFormPtr(VlModule *module, VlHtmlDoc *page, VlHtmlForm *oldForm,
                          VlHtmlForm *newForm);
int VlModuleChangeAnchPtr(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *oldAnchor,
                          VlHtmlAnch *newAnchor);
int VlModuleIsActivator(VlModule *module, VlHtmlDoc *page, const char *shortName, const char *type);
int VlModuleRenameActivator(VlModule *module, const char *oldName, const char *newName);
int VlwGetActIdParts(const char *formId, char **pageOut, char **shortNameOut, char **typeOut);

/* Aliases. */
int VlModuleAddAlias(VlHtmlDoc *page, const char *shortName, const char *type, VlHtmlDoc *aliasPage,
                     const char *aliasShortName);
int VlModuleGetFuncAndAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                            const char *type, VlFunction **functionOut, VlAlias **aliasOut,
                            int *indexOut);
int VlModuleGetFuncAndAlias2(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form,
                             VlHtmlAnch *anchor, const char *type, VlFunction **functionOut,
                             VlAlias **aliasOut, int *indexOut);
int VlModuleDeleteAlias(VlModule *module, VlHtmlDoc *page, const char *shortName, const char *type);
char *VlModuleGetActivatorByAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                                  const char *type);
SutList *VlModuleFuncGetAliases(VlFunction *function);
SutList *VlModuleGetAliasByActivator(VlHtmlDoc *page, const char *shortName, const char *type);
SutList *VlModuleGetAllAliases(VlModule *module);

#ifdef __cplusplus
}
#endif

#endif
