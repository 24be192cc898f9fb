/* The module record of a page: creation, release and the simple accessors.
 * A module owns its user includes and its functions; a function owns its
 * code sections and aliases; the page records are the project's. */
#include "module/module.h"

#include <stdlib.h>

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

} // extern "C"
