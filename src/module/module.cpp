/* The module record of a page: creation, release and the simple accessors.
 * A module owns its user includes and its functions; a function owns its
 * code sections and aliases; the page records are the project's. */
#include "module/module.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>

#include <memory>
#include <string>

#include "html/document.h"
#include "project/lookup.h"
#include "project/options.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"
#include "util/strings.h"

namespace {

VlFunction *FunctionAt(VlModule *module, int i) {
    return static_cast<VlFunction *>(SutGetNList(module->functions, i));
}

} // namespace

extern "C" {

VlModule *VlModuleNewEmpty(void) {
    return static_cast<VlModule *>(calloc(1, sizeof(VlModule)));
}

VlModule *VlModuleNew(VlHtmlDoc *html) {
    VlModule *module = VlModuleNewEmpty();
    if (module) module->html = html;
    return module;
}

void VlModuleFreeAlias(VlAlias *alias) {
    if (!alias) return;
    free(alias->name);
    free(alias);
}

void VlModuleDeleteFunc(VlFunction *function) {
    if (!function) return;
    free(function->initCode);
    free(function->funcCode);
    free(function->finalCode);
    for (int i = 0; i < SutSizList(function->aliases); i++)
        VlModuleFreeAlias(static_cast<VlAlias *>(SutGetNList(function->aliases, i)));
    SutDeleteList(function->aliases);
    free(function);
}

void VlModuleDelete(VlModule *module) {
    if (!module) return;
    free(module->userIncludes);
    for (int i = 0; i < SutSizList(module->functions); i++)
        VlModuleDeleteFunc(static_cast<VlFunction *>(SutGetNList(module->functions, i)));
    SutDeleteList(module->functions);
    free(module);
}

VlHtmlDoc *VlModuleGetHtml(VlModule *module) {
    return module ? module->html : nullptr;
}

void VlModuleSetHtml(VlModule *module, VlHtmlDoc *html) {
    if (module) module->html = html;
}

int VlModuleSetURL(VlModule *module, const char *url) {
    if (!module || !url || !module->html) return 0;
    for (int i = 0; i < SutSizList(module->functions); i++) {
        VlFunction *fn = FunctionAt(module, i);
        if (fn->form) VlHtmlSetFormURL(module->html, fn->form, url);
        if (fn->anchor) VlHtmlSetAnchURL(module->html, fn->anchor, url);
        for (int j = 0; j < SutSizList(fn->aliases); j++) {
            auto *alias = static_cast<VlAlias *>(SutGetNList(fn->aliases, j));
            if (alias->form) VlHtmlSetFormURL(alias->html, alias->form, url);
            if (alias->anchor) VlHtmlSetAnchURL(alias->html, alias->anchor, url);
        }
    }
    return 1;
}

char *VlModuleGetCFileName(VlModule *module) {
    const char *page = module ? VlHtmlGetName(module->html) : nullptr;
    if (!page) return nullptr;
    std::string name(page);
    // The last "." of the whole name, directory part included.
    if (size_t dot = name.rfind('.'); dot != std::string::npos) name.resize(dot);
    VlCharPtr suffix(VlProjGetOptionByCat("Makefile.", "$VL_SOURCE_SUFFIX"));
    if (suffix) name += suffix.get();
    return StrDup(name.c_str());
}

int VlModuleChangedOnDisk(VlModule *module) {
    VlCharPtr name(VlModuleGetCFileName(module));
    struct stat st;
    if (!name || stat(name.get(), &st) != 0) return 0;
    return st.st_mtime != module->modTime ? 1 : 0;
}

int VlModuleResolveAliases(VlModule *module) {
    if (!module) return 0;
    for (int i = 0; i < SutSizList(module->functions); i++) {
        VlFunction *fn = FunctionAt(module, i);
        // Backwards, so removing an alias leaves the positions still to visit valid.
        for (int j = SutSizList(fn->aliases) - 1; j >= 0; j--) {
            auto *alias = static_cast<VlAlias *>(SutGetNList(fn->aliases, j));
            char *modName = nullptr, *shortName = nullptr;
            char type = 0;
            VlHtmlDoc *page = nullptr;
            VlHtmlForm *form = nullptr;
            VlHtmlAnch *anchor = nullptr;
            int found = VlHtmlSplitFuncName(alias->name, &modName, &type, &shortName) &&
                        VlProjGetActivator(modName, type, shortName, &page, &form, &anchor);
            free(modName);
            free(shortName);
            if (found) {
                alias->html = page;
                alias->form = form;
                alias->anchor = anchor;
            } else {
                VlPrintError("Removing alias ");
                VlPrintError(alias->name);
                VlPrintError(" because activator removed from HTML\n ");
                SutRemoveNList(fn->aliases, j);
                VlModuleFreeAlias(alias);
            }
        }
    }
    return 1;
}

int VlModuleSetChanged(VlModule *module) {
    if (!module) return 0;
    module->saved = 0;
    return 1;
}

int VlModuleChanged(VlModule *module) {
    return module ? !module->saved : 0;
}

int VlRunFileScript(const char *script, const char *fileName) {
    VlCharPtr quoted(VlShellQuoteName(fileName));
    VlCharPtr command(VlStrMCat(script, quoted.get(), (const char *)nullptr));
    fflush(stdout);
    fflush(stderr);
    return VlLaunchAndBlock(command.get());
}

} // extern "C"
