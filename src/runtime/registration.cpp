// Registration of activators, aliases, EXEC_FUNCTION functions and pages, and
// the lookups that dispatch and the page checks use. Activators, aliases and
// functions sit in name registries (first entry of a name wins); they live as
// long as the process.
#include "runtime/registration.hpp"

#include "runtime/registry.h"

#include <cstring>
#include <set>

namespace vlrun {

namespace {

struct Activator {
    VlActivatorProc proc;
};
struct Function {
    VlExecFunction proc;
};

struct Registrations {
    SutList *activators = VlNewRegistry(); // of Activator
    SutList *aliases = VlNewRegistry();    // of the activator's full name (char)
    SutList *functions = VlNewRegistry();  // of Function
    std::set<std::string, std::less<>> pages;
    std::set<std::string, std::less<>> modules; // modules with an activator or alias
};

Registrations &TheRegistrations() {
    static Registrations r;
    return r;
}

std::string NameKey(std::string_view name) {
    return std::string(name);
}

// The module part of a full activator name: after the first "__" and the
// type letter ("search__Fcatalog_html" -> "catalog_html").
void NoteModule(const char *fullName) {
    const char *split = std::strstr(fullName, "__");
    if (split && split[2]) TheRegistrations().modules.insert(split + 3);
}

} // namespace

VlActivatorProc FindActivator(std::string_view name, std::string &fullName) {
    Registrations &r = TheRegistrations();
    std::string key = NameKey(name);
    if (key.empty()) return nullptr;
    if (const auto *target = static_cast<const char *>(VlRegistryGetItem(r.aliases, key.c_str())))
        key = target;
    const auto *activator = static_cast<const Activator *>(VlRegistryGetItem(r.activators, key.c_str()));
    if (!activator) return nullptr;
    fullName = key;
    return activator->proc;
}

VlExecFunction FindFunction(std::string_view name) {
    std::string key = NameKey(name);
    const auto *f =
        static_cast<const Function *>(VlRegistryGetItem(TheRegistrations().functions, key.c_str()));
    return f ? f->proc : nullptr;
}

std::string ModuleNameOf(std::string_view page) {
    std::size_t slash = page.rfind('/');
    std::string name(slash == std::string_view::npos ? page : page.substr(slash + 1));
    for (char &c : name)
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))) c = '_';
    return name;
}

void RegisterPage(std::string_view page) {
    if (!page.empty()) TheRegistrations().pages.emplace(page);
}

bool IsRegisteredPage(std::string_view page) {
    const Registrations &r = TheRegistrations();
    return r.pages.contains(page) || r.modules.contains(ModuleNameOf(page));
}

} // namespace vlrun

using vlrun::TheRegistrations;

extern "C" {

void VlRegisterHtmlActivator(const char *fullName, VlActivatorProc activator) {
    if (!fullName || !*fullName || !activator) return;
    vlrun::Registrations &r = TheRegistrations();
    if (VlRegistryGetItem(r.activators, fullName)) return;
    VlRegistryAddItem(r.activators, fullName, new vlrun::Activator{activator});
    vlrun::NoteModule(fullName);
}

void VlRegisterHtmlAlias(const char *aliasName, const char *activatorName) {
    if (!aliasName || !*aliasName || !activatorName || !*activatorName) return;
    vlrun::Registrations &r = TheRegistrations();
    if (VlRegistryGetItem(r.aliases, aliasName)) return;
    VlRegistryAddItem(r.aliases, aliasName, strdup(activatorName));
    vlrun::NoteModule(aliasName);
}

void VlRegisterHtmlPage(const char *pageName) {
    if (pageName) vlrun::RegisterPage(pageName);
}

void VlRegisterFunction(const char *name, VlExecFunction function) {
    if (!name || !*name || !function) return;
    vlrun::Registrations &r = TheRegistrations();
    if (VlRegistryGetItem(r.functions, name)) return;
    VlRegistryAddItem(r.functions, name, new vlrun::Function{function});
}

} // extern "C"
