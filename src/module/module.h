/* The module of a page: the generated C source file holding one activator
 * function per bound form or anchor, the user's code between markers, and
 * the aliases that let one function serve further forms and anchors. */
#ifndef VELMORA_MODULE_MODULE_H
#define VELMORA_MODULE_MODULE_H

#include <time.h>
#include "html/document.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VlAlias {
    VlHtmlDoc *html; /* page of the aliased form or anchor; filled on resolve */
    VlHtmlForm *form;
    VlHtmlAnch *anchor;
    char *name; /* the alias's full activator name, as in the file */
} VlAlias;

typedef struct VlFunction {
    VlHtmlForm *form; /* exactly one of form and anchor is set */
    VlHtmlAnch *anchor;
    char *initCode;
    char *funcCode; /* the binding code */
    char *finalCode;
    SutList *aliases; /* of VlAlias */
} VlFunction;

typedef struct VlModule {
    int saved; /* 1 while the record matches the file */
    time_t modTime;
    VlHtmlDoc *html; /* not owned */
    char *userIncludes;
    SutList *functions; /* of VlFunction, in file order */
} VlModule;

/* A new zeroed module record; VlModuleNew sets its page. */
VlModule *VlModuleNewEmpty(void);
VlModule *VlModuleNew(VlHtmlDoc *html);
/* Frees the user includes, every function with its aliases, the function
 * list and the record; a null module is ignored. */
void VlModuleDelete(VlModule *module);
VlHtmlDoc *VlModuleGetHtml(VlModule *module);
void VlModuleSetHtml(VlModule *module, VlHtmlDoc *html);
/* Frees a function's three code sections, its aliases, alias list and record. */
void VlModuleDeleteFunc(VlFunction *function);
/* Frees an alias's name and the record. */
void VlModuleFreeAlias(VlAlias *alias);

/* Gives every form and anchor the module serves, its own and its aliases',
 * the URL; 0 for a null module, url or page, else 1. */
int VlModuleSetURL(VlModule *module, const char *url);
/* The module's C source file name: the page name cut at its last "." followed
 * by the project's source suffix; a new string, null without a page name. */
char *VlModuleGetCFileName(VlModule *module);
/* 1 when the C source file's modification time differs from modTime. */
int VlModuleChangedOnDisk(VlModule *module);
/* Points every alias at its page, form and anchor of the current project,
 * dropping (with a message) the aliases whose activator is gone. 0 for a null
 * module, else 1. */
int VlModuleResolveAliases(VlModule *module);
/* Marks the module as changed (saved 0); 0 for a null module. */
int VlModuleSetChanged(VlModule *module);
/* 1 when the module has unsaved changes; 0 for a null module. */
int VlModuleChanged(VlModule *module);

/* Runs a distribution script with the file name as its one argument, quoted
 * for the shell, and waits for it; the script's status is returned. */
int VlRunFileScript(const char *script, const char *fileName);

#ifdef __cplusplus
}
#endif

#endif
