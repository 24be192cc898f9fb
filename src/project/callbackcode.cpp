/* Installing callback code into the current project: the page is found by
 * name, its form or anchor by short name, and the code becomes the func code
 * of the function serving it in the page's module. */
#include "project/callbackcode.h"

#include "module/functions.h"
#include "project/lookup.h"
#include "project/project.h"

namespace {

/* Installs or removes the func code of the activator's function. */
int AddActivatorCode(const char *pageName, const char *widget, const char *code, bool anchor) {
    VlHtmlDoc *page = VlProjGetHtml(pageName);
    if (!page) return 0;
    VlHtmlForm *form = anchor ? nullptr : VlHtmlGetFormByName(page, widget);
    VlHtmlAnch *anch = anchor ? VlHtmlGetAnchByName(page, widget) : nullptr;
    if (!form && !anch) return 0;
    VlModule *module = VlProjGetModule(page);
    if (!code) {
        // Taking code away never creates a function.
        VlFunction *fn =
            anchor ? VlModuleGetFuncByAnch(module, anch) : VlModuleGetFuncByForm(module, form);
        return fn ? VlModuleAddFunc(module, form, anch, nullptr) : 1;
    }
    if (!module) {
        // A page whose module file was never written gets its module now, so
        // the code is not lost at the next write.
        module = VlModuleNew(page);
        SutAddList(theProj->modules, module);
    }
    return VlModuleAddFunc(module, form, anch, code);
}

} // namespace

extern "C" {

int VlProjAddHtmlAnch(const char *pageName, const char *widget, const char *code) {
    return AddActivatorCode(pageName, widget, code, true);
}

int VlProjAddHtmlForm(const char *pageName, const char *widget, const char *code) {
    return AddActivatorCode(pageName, widget, code, false);
}

} // extern "C"
