/* Editing a module's activator functions and aliases. Operations given a page
 * work on that page's module of the current project. Every change clears the
 * module's saved flag, except a function's pointer change (see below). */
#include "module/functions.h"

#include <stdlib.h>

#include <memory>

#include "project/lookup.h"
#include "util/heap.hpp"
#include "util/ident.h"
#include "util/messages.h"
#include "util/strings.h"

namespace {

VlFunction *FunctionAt(const VlModule *module, int i) {
    return module ? static_cast<VlFunction *>(SutGetNList(module->functions, i)) : nullptr;
}

VlAlias *AliasAt(const VlFunction *fn, int i) {
    return static_cast<VlAlias *>(SutGetNList(fn->aliases, i));
}

char TypeLetter(const char *type) {
    return type ? type[0] : '\0';
}

/* Position of the function serving the form or the anchor, or -1. */
int FindFunction(const VlModule *module, const VlHtmlForm *form, const VlHtmlAnch *anchor) {
    if (!module) return -1;
    for (int i = 0; i < SutSizList(module->functions); i++) {
        const VlFunction *fn = FunctionAt(module, i);
        if ((form && fn->form == form) || (anchor && fn->anchor == anchor)) return i;
    }
    return -1;
}

/* The first alias, functions and their aliases in order, that stands for the
 * form (or the anchor) of this page. */
bool FindAlias(const VlModule *module, const VlHtmlDoc *page, const VlHtmlForm *form,
               const VlHtmlAnch *anchor, VlFunction **fnOut, int *indexOut) {
    for (int i = 0; i < SutSizList(module->functions); i++) {
        VlFunction *fn = FunctionAt(module, i);
        for (int j = 0; j < SutSizList(fn->aliases); j++) {
            const VlAlias *alias = AliasAt(fn, j);
            if (alias->html != page) continue;
            if ((form && alias->form == form) || (anchor && alias->anchor == anchor)) {
                *fnOut = fn;
                *indexOut = j;
                return true;
            }
        }
    }
    return false;
}

int DeleteActivator(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form, VlHtmlAnch *anchor) {
    if (!module) return 1;
    int pos = FindFunction(module, form, anchor);
    if (pos >= 0) {
        VlModuleDeleteFunc(static_cast<VlFunction *>(SutRemoveNList(module->functions, pos)));
        module->saved = 0;
    }
    // Only the first alias goes; later ones are dropped when aliases are resolved.
    VlFunction *fn = nullptr;
    int index = -1;
    if (FindAlias(module, page, form, anchor, &fn, &index)) {
        VlModuleFreeAlias(static_cast<VlAlias *>(SutRemoveNList(fn->aliases, index)));
        module->saved = 0;
    }
    return 1;
}

char *FunctionCode(VlHtmlDoc *page, const char *shortName, const char *type, bool initial) {
    VlFunction *fn = VlModuleGetFuncByActivator(page, shortName, type);
    if (!fn) return nullptr;
    return initial ? fn->initCode : fn->finalCode;
}

int SetFunctionCode(VlHtmlDoc *page, const char *shortName, const char *type, const char *code,
                    bool initial) {
    VlFunction *fn = VlModuleGetFuncByActivator(page, shortName, type);
    if (!fn) return 0;
    VlReplaceString(initial ? &fn->initCode : &fn->finalCode, code);
    VlModuleSetChanged(VlProjGetModule(page));
    return 1;
}

} // namespace

extern "C" {

int VlModuleAddFunc(VlModule *module, VlHtmlForm *form, VlHtmlAnch *anchor, const char *funcCode) {
    if (!module || (form != nullptr) == (anchor != nullptr)) return 0;
    if (!module->functions) module->functions = SutNewList();
    module->saved = 0;
    int pos = FindFunction(module, form, anchor);
    if (pos >= 0) {
        VlReplaceString(&FunctionAt(module, pos)->funcCode, funcCode);
        return 1;
    }
    auto *fn = static_cast<VlFunction *>(calloc(1, sizeof(VlFunction)));
    fn->form = form;
    fn->anchor = anchor;
    fn->aliases = SutNewList();
    fn->funcCode = StrDup(funcCode);
    SutAddList(module->functions, fn);
    return 1;
}

VlFunction *VlModuleGetFuncByForm(VlModule *module, VlHtmlForm *form) {
    if (!form) return nullptr;
    return FunctionAt(module, FindFunction(module, form, nullptr));
}

VlFunction *VlModuleGetFuncByAnch(VlModule *module, VlHtmlAnch *anchor) {
    if (!anchor) return nullptr;
    return FunctionAt(module, FindFunction(module, nullptr, anchor));
}

VlFunction *VlModuleGetFuncByActivator(VlHtmlDoc *page, const char *shortName, const char *type) {
    switch (TypeLetter(type)) {
    case 'A':
        return VlModuleGetFuncByAnch(VlProjGetModule(page), VlHtmlGetAnchByName(page, shortName));
    case 'F':
        return VlModuleGetFuncByForm(VlProjGetModule(page), VlHtmlGetFormByName(page, shortName));
    default:
        return nullptr;
    }
}

char *VlModuleGetFunctionName(VlHtmlDoc *page, const char *shortName, const char *type) {
    if (!page) return nullptr;
    switch (TypeLetter(type)) {
    case 'A':
        return VlHtmlAnchGetFuncName(VlHtmlGetAnchByName(page, shortName));
    case 'F':
        return VlHtmlFormGetFuncName(VlHtmlGetFormByName(page, shortName));
    default:
        return nullptr;
    }
}

char *VlModuleGetFunctionInitCode(VlHtmlDoc *page, const char *shortName, const char *type) {
    return FunctionCode(page, shortName, type, true);
}

char *VlModuleGetFunctionFinalCode(VlHtmlDoc *page, const char *shortName, const char *type) {
    return FunctionCode(page, shortName, type, false);
}

int VlModuleSetFunctionInitCode(VlHtmlDoc *page, const char *shortName, const char *type,
                                const char *code) {
    return SetFunctionCode(page, shortName, type, code, true);
}

int VlModuleSetFunctionFinalCode(VlHtmlDoc *page, const char *shortName, const char *type,
                                 const char *code) {
    return SetFunctionCode(page, shortName, type, code, false);
}

char *VlModuleGetUserIncludes(VlHtmlDoc *page) {
    VlModule *module = VlProjGetModule(page);
    return module ? module->userIncludes : nullptr;
}

int VlModuleSetUserIncludes(VlHtmlDoc *page, const char *text) {
    VlModule *module = VlProjGetModule(page);
    if (!module) return 0;
    VlReplaceString(&module->userIncludes, text);
    module->saved = 0;
    return 1;
}

int VlModuleDeleteForm(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form) {
    if (!page || !form) return 0;
    return DeleteActivator(module, page, form, nullptr);
}

int VlModuleDeleteAnch(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *anchor) {
    if (!page || !anchor) return 0;
    return DeleteActivator(module, page, nullptr, anchor);
}

int VlModuleChangeFormPtr(VlModule *module, VlHtmlDoc *page, VlHtmlForm *oldForm,
                          VlHtmlForm *newForm) {
    if (!page || !oldForm || !newForm) return 0;
    if (!module) return 1;
    // The function's own pointer moves without touching saved: the file's text
    // does not change with it.
    if (VlFunction *fn = VlModuleGetFuncByForm(module, oldForm)) fn->form = newForm;
    VlFunction *fn = nullptr;
    int index = -1;
    if (FindAlias(module, page, oldForm, nullptr, &fn, &index)) {
        AliasAt(fn, index)->form = newForm;
        module->saved = 0;
    }
    return 1;
}

int VlModuleChangeAnchPtr(VlModule *module, VlHtmlDoc *page, VlHtmlAnch *oldAnchor,
                          VlHtmlAnch *newAnchor) {
    if (!page || !oldAnchor || !newAnchor) return 0;
    if (!module) return 1;
    if (VlFunction *fn = VlModuleGetFuncByAnch(module, oldAnchor)) fn->anchor = newAnchor;
    VlFunction *fn = nullptr;
    int index = -1;
    if (FindAlias(module, page, nullptr, oldAnchor, &fn, &index)) {
        AliasAt(fn, index)->anchor = newAnchor;
        module->saved = 0;
    }
    return 1;
}

int VlModuleIsActivator(VlModule *module, VlHtmlDoc *page, const char *shortName,
                        const char *type) {
    if (!module || !page || !type) return 0;
    // The type does not choose: a form and an anchor of that name are both tried.
    VlFunction *byForm = VlModuleGetFuncByForm(module, VlHtmlGetFormByName(page, shortName));
    if (byForm && byForm->funcCode && *byForm->funcCode) return 1;
    VlFunction *byAnch = VlModuleGetFuncByAnch(module, VlHtmlGetAnchByName(page, shortName));
    if (byAnch && byAnch->funcCode && *byAnch->funcCode) return 1;
    return 0;
}

int VlwGetActIdParts(const char *formId, char **pageOut, char **shortNameOut, char **typeOut) {
    int type = -1;
    if (!pageOut || !shortNameOut || !typeOut) return 0;
    *typeOut = nullptr;
    if (!WbGetFormIdStringParts(formId, pageOut, shortNameOut, &type)) return 0;
    *typeOut = WbMakeActivatorType(type);
    return 1;
}

int VlModuleRenameActivator(VlModule *module, const char *oldName, const char *newName) {
    if (!module) return 0;
    // Aliases are matched against the old name but left as they are: the next
    // resolve mends them by name.
    char *oldPage = nullptr, *oldShort = nullptr, *oldType = nullptr;
    char *newPage = nullptr, *newShort = nullptr, *newType = nullptr;
    VlwGetActIdParts(oldName, &oldPage, &oldShort, &oldType);
    VlwGetActIdParts(newName, &newPage, &newShort, &newType);
    for (int i = 0; i < SutSizList(module->functions); i++) {
        VlFunction *fn = FunctionAt(module, i);
        for (int j = SutSizList(fn->aliases) - 1; j >= 0; j--) {
            char *modName = nullptr, *shortName = nullptr;
            char type = 0;
            VlHtmlSplitFuncName(AliasAt(fn, j)->name, &modName, &type, &shortName);
            free(modName);
            free(shortName);
        }
    }
    for (char *p : {oldPage, oldShort, oldType, newPage, newShort, newType})
        free(p);
    return 1;
}

int VlModuleAddAlias(VlHtmlDoc *page, const char *shortName, const char *type, VlHtmlDoc *aliasPage,
                     const char *aliasShortName) {
    VlModule *module = VlProjGetModule(page);
    if (!module) return 0;
    module->saved = 0; // cleared before it is known whether an alias is added
    VlFunction *fn = nullptr;
    if (TypeLetter(type) == 'F')
        fn = VlModuleGetFuncByForm(module, VlHtmlGetFormByName(page, shortName));
    else if (TypeLetter(type) == 'A')
        fn = VlModuleGetFuncByAnch(module, VlHtmlGetAnchByName(page, shortName));
    if (!fn) return 0;

    VlHtmlForm *form = VlHtmlGetFormByName(aliasPage, aliasShortName);
    VlHtmlAnch *anchor = VlHtmlGetAnchByName(aliasPage, aliasShortName);
    const char *name = form ? VlHtmlFormGetFullName(form) : VlHtmlAnchGetFullName(anchor);
    if (!name) {
        VlPrintError("Internal error in VlModuleAddAlias\n");
        return 0;
    }
    auto *alias = static_cast<VlAlias *>(calloc(1, sizeof(VlAlias)));
    alias->html = aliasPage;
    alias->form = form;
    alias->anchor = anchor;
    alias->name = StrDup(name);
    if (!fn->aliases) fn->aliases = SutNewList();
    SutAddList(fn->aliases, alias);
    return 1;
}

int VlModuleGetFuncAndAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                            const char *type, VlFunction **functionOut, VlAlias **aliasOut,
                            int *indexOut) {
    return VlModuleGetFuncAndAlias2(module, page, VlHtmlGetFormByName(page, shortName),
                                    VlHtmlGetAnchByName(page, shortName), type, functionOut,
                                    aliasOut, indexOut);
}

int VlModuleGetFuncAndAlias2(VlModule *module, VlHtmlDoc *page, VlHtmlForm *form,
                             VlHtmlAnch *anchor, const char *type, VlFunction **functionOut,
                             VlAlias **aliasOut, int *indexOut) {
    if (!module || !type || !functionOut || !aliasOut || !indexOut || (!form && !anchor)) return 0;
    // The type letter says which of the two records the alias must point at.
    VlHtmlForm *wantForm = type[0] == 'F' ? form : nullptr;
    VlHtmlAnch *wantAnchor = type[0] == 'A' ? anchor : nullptr;
    VlFunction *fn = nullptr;
    int index = -1;
    if (!FindAlias(module, page, wantForm, wantAnchor, &fn, &index)) return 0;
    *functionOut = fn;
    *aliasOut = AliasAt(fn, index);
    *indexOut = index;
    return 1;
}

int VlModuleDeleteAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                        const char *type) {
    VlFunction *fn = nullptr;
    VlAlias *alias = nullptr;
    int index = -1;
    if (!VlModuleGetFuncAndAlias(module, page, shortName, type, &fn, &alias, &index)) return 0;
    // Taken out of the list only; the record itself is not released here.
    SutRemoveNList(fn->aliases, index);
    module->saved = 0;
    return 1;
}

char *VlModuleGetActivatorByAlias(VlModule *module, VlHtmlDoc *page, const char *shortName,
                                  const char *type) {
    VlFunction *fn = nullptr;
    VlAlias *alias = nullptr;
    int index = -1;
    if (!VlModuleGetFuncAndAlias(module, page, shortName, type, &fn, &alias, &index))
        return nullptr;
    const bool isAnchor = type[0] == 'A';
    VlCharPtr name(isAnchor ? VlHtmlAnchGetName(fn->anchor) : VlHtmlFormGetName(fn->form));
    return WbMakeFormIdString(VlHtmlGetName(module->html), name.get(),
                              WbGetActivatorType(isAnchor ? "A" : "F"));
}

SutList *VlModuleFuncGetAliases(VlFunction *function) {
    if (!function) return nullptr;
    SutList *ids = SutNewList();
    for (int i = 0; i < SutSizList(function->aliases); i++) {
        const VlAlias *alias = AliasAt(function, i);
        char *id = nullptr;
        if (alias->form) {
            VlCharPtr name(VlHtmlFormGetName(alias->form));
            id =
                WbMakeFormIdString(VlHtmlGetName(alias->html), name.get(), WbGetActivatorType("F"));
        } else if (alias->anchor) {
            VlCharPtr name(VlHtmlAnchGetName(alias->anchor));
            id =
                WbMakeFormIdString(VlHtmlGetName(alias->html), name.get(), WbGetActivatorType("A"));
        } else {
            VlPrintError(VlCatGets(10, 12, "Could not resolve activator name\n"));
            continue;
        }
        if (id) SutAddList(ids, id);
    }
    return ids;
}

SutList *VlModuleGetAliasByActivator(VlHtmlDoc *page, const char *shortName, const char *type) {
    return VlModuleFuncGetAliases(VlModuleGetFuncByActivator(page, shortName, type));
}

SutList *VlModuleGetAllAliases(VlModule *module) {
    if (!module) return nullptr;
    SutList *all = SutNewList();
    for (int i = 0; i < SutSizList(module->functions); i++) {
        SutList *ids = VlModuleFuncGetAliases(FunctionAt(module, i));
        SutListCat(all, ids);
        SutDeleteList(ids);
    }
    return all;
}

} // extern "C"
