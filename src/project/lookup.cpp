/* Lookups over the current project's modules and pages, the small project
 * queries, and the form and anchor operations that reach every module. */
#include "project/lookup.h"

#include <string.h>

#include <string>
#include <string_view>
#include <unordered_map>

#include "module/functions.h"
#include "project/options.h"
#include "project/project.h"
#include "util/files.h"
#include "util/heap.hpp"
#include "util/strings.h"

namespace {

int ModuleCount() {
    return theProj ? SutSizList(theProj->modules) : 0;
}
VlModule *ModuleAt(int i) {
    return static_cast<VlModule *>(SutGetNList(theProj->modules, i));
}
int PageCount() {
    return theProj ? SutSizList(theProj->htmlDocs) : 0;
}
VlHtmlDoc *PageAt(int i) {
    return static_cast<VlHtmlDoc *>(SutGetNList(theProj->htmlDocs, i));
}

/* Joins the names, each after one blank, leaving out missing files on request. */
template <typename NameOf> char *BlankJoined(int count, int onlyExisting, NameOf nameOf) {
    std::string out;
    for (int i = 0; i < count; i++) {
        VlCharPtr name(nameOf(i));
        if (!name || (onlyExisting && !VlFileExists(name.get()))) continue;
        out += ' ';
        out += name.get();
    }
    return VlHeapCopy(out);
}

// Between VlProjBeginPageLookups and VlProjEndPageLookups: the position of
// the first page of each name in the list it was built from.
struct PageIndex {
    bool active = false;
    SutList *pages = nullptr; // the list indexed; null until the first lookup
    std::unordered_map<std::string, int> first;
};
PageIndex pageIndex;

} // namespace

extern "C" {

void VlProjBeginPageLookups(void) {
    pageIndex = PageIndex{};
    pageIndex.active = true;
}

void VlProjEndPageLookups(void) {
    pageIndex = PageIndex{};
}

char *VlProjGetMainCFileName(void) {
    if (!theProj) return nullptr;
    VlCharPtr suffix(VlProjGetOptionByCat("Makefile.", "$VL_SOURCE_SUFFIX"));
    std::string name = theProj->name ? theProj->name : "";
    if (suffix) name += suffix.get();
    return VlHeapCopy(name);
}

char *VlProjGetModuleNames(int onlyExisting) {
    return BlankJoined(ModuleCount(), onlyExisting,
                       [](int i) { return VlModuleGetCFileName(ModuleAt(i)); });
}

char *VlProjGetHtmlNamesString(int onlyExisting) {
    return BlankJoined(PageCount(), onlyExisting,
                       [](int i) { return StrDup(VlHtmlGetName(PageAt(i))); });
}

VlModule *VlProjGetModuleByFileName(const char *cFileName) {
    if (!cFileName) return nullptr;
    for (int i = 0; i < ModuleCount(); i++) {
        VlCharPtr name(VlModuleGetCFileName(ModuleAt(i)));
        if (name && strcmp(name.get(), cFileName) == 0) return ModuleAt(i);
    }
    return nullptr;
}

VlModule *VlProjGetModule(VlHtmlDoc *htmlDoc) {
    if (!htmlDoc) return nullptr;
    for (int i = 0; i < ModuleCount(); i++)
        if (VlModuleGetHtml(ModuleAt(i)) == htmlDoc) return ModuleAt(i);
    return nullptr;
}

VlHtmlDoc *VlProjGetHtml(const char *name) {
    if (!name) return nullptr;
    if (pageIndex.active && theProj) {
        if (pageIndex.pages != theProj->htmlDocs) {
            pageIndex.pages = theProj->htmlDocs;
            pageIndex.first.clear();
            for (int i = 0; i < PageCount(); i++)
                if (const char *pageName = VlHtmlGetName(PageAt(i)))
                    pageIndex.first.emplace(pageName, i);
        }
        const auto hit = pageIndex.first.find(name);
        return hit == pageIndex.first.end() ? nullptr : PageAt(hit->second);
    }
    for (int i = 0; i < PageCount(); i++) {
        const char *pageName = VlHtmlGetName(PageAt(i));
        if (pageName && strcmp(pageName, name) == 0) return PageAt(i);
    }
    return nullptr;
}

VlHtmlDoc *VlProjGetHtmlByShortName(const char *shortName) {
    if (!shortName) return nullptr;
    std::string_view wanted(shortName);
    if (size_t pj = wanted.find(".pj"); pj != std::string_view::npos) wanted = wanted.substr(0, pj);
    for (int i = 0; i < PageCount(); i++) {
        const char *pageName = VlHtmlGetName(PageAt(i));
        if (!pageName) continue;
        std::string_view page(pageName);
        if (size_t dot = page.rfind('.'); dot != std::string_view::npos) page = page.substr(0, dot);
        if (page == wanted) return PageAt(i);
    }
    return nullptr;
}

int VlProjGetActivator(const char *moduleName, int typeLetter, const char *shortName,
                       VlHtmlDoc **pageOut, VlHtmlForm **formOut, VlHtmlAnch **anchorOut) {
    VlHtmlDoc *page = nullptr;
    VlHtmlForm *form = nullptr;
    VlHtmlAnch *anchor = nullptr;
    for (int i = 0; moduleName && i < PageCount() && !page; i++) {
        const char *modName = VlHtmlGetModName(PageAt(i));
        if (modName && strcmp(modName, moduleName) == 0) page = PageAt(i);
    }
    if (page && typeLetter == 'F') form = VlHtmlGetFormByName(page, shortName);
    if (page && typeLetter == 'A') anchor = VlHtmlGetAnchByName(page, shortName);
    const int found = page && (form || anchor);
    if (pageOut) *pageOut = found ? page : nullptr;
    if (formOut) *formOut = form;
    if (anchorOut) *anchorOut = anchor;
    return found;
}

int VlProjNeedToRefresh(void) {
    for (int i = 0; i < PageCount(); i++)
        if (VlHtmlIsChanged(PageAt(i))) return 1;
    return 0;
}

int VlProjChanged(void) {
    if (!theProj) return 0;
    for (int i = 0; i < ModuleCount(); i++)
        if (VlModuleChanged(ModuleAt(i))) return 1;
    return theProj->saved ? 0 : 1;
}

int VlProjSetChanged(int changed) {
    if (theProj) theProj->saved = changed ? 0 : 1;
    return 1;
}

int VlProjChangeFormPtr(VlHtmlDoc *page, VlHtmlForm *oldForm, VlHtmlForm *newForm) {
    for (int i = 0; i < ModuleCount(); i++)
        VlModuleChangeFormPtr(ModuleAt(i), page, oldForm, newForm);
    return 1;
}

int VlProjChangeAnchPtr(VlHtmlDoc *page, VlHtmlAnch *oldAnchor, VlHtmlAnch *newAnchor) {
    for (int i = 0; i < ModuleCount(); i++)
        VlModuleChangeAnchPtr(ModuleAt(i), page, oldAnchor, newAnchor);
    return 1;
}

int VlProjDeleteForm(VlHtmlDoc *page, VlHtmlForm *form, int) {
    for (int i = 0; i < ModuleCount(); i++)
        VlModuleDeleteForm(ModuleAt(i), page, form);
    return 1;
}

int VlProjDeleteAnch(VlHtmlDoc *page, VlHtmlAnch *anchor, int) {
    for (int i = 0; i < ModuleCount(); i++)
        VlModuleDeleteAnch(ModuleAt(i), page, anchor);
    return 1;
}

} // extern "C"
