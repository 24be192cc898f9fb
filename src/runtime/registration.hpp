// What the program's modules register: activators by full name, aliases that
// lead to them, the C functions of EXEC_FUNCTION objects, and the pages the
// program may answer with. Held in the name registries of the request model.
#ifndef VELMORA_RUNTIME_REGISTRATION_HPP
#define VELMORA_RUNTIME_REGISTRATION_HPP

#include "runtime/api.hpp"

#include <string>
#include <string_view>

namespace vlrun {

// The activator of a full name or of an alias of it; null when unknown. The
// activator's own full name goes to fullName.
VlActivatorProc FindActivator(std::string_view name, std::string &fullName);

VlExecFunction FindFunction(std::string_view name);

// A page's module name: its file name with every character that is not an
// ASCII letter or digit replaced by '_' ("catalog.html" -> "catalog_html").
std::string ModuleNameOf(std::string_view page);

// Pages the program may answer with: those registered by name (the start
// page and column-bind pages are registered as the program learns them) and
// those whose module has a registered activator or alias.
void RegisterPage(std::string_view page);
bool IsRegisteredPage(std::string_view page);

} // namespace vlrun

#endif
