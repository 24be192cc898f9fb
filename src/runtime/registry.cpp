// The name registry of generated programs: a list of entries that map a name
// (copied) to an item (borrowed); lookups take the first entry of a name.
#include "runtime/registry.h"

#include <cstdlib>
#include <cstring>

extern "C" {

SutList *VlNewRegistry(void) {
    return SutNewList();
}

void *VlRegistryAddItem(SutList *registry, const char *name, void *item) {
    if (!registry || !item || !name || !*name) return VL_REGISTRY_ADD_FAILED;
    VlRegistryEntry *entry =
        static_cast<VlRegistryEntry *>(std::calloc(1, sizeof(VlRegistryEntry)));
    entry->name = strdup(name);
    entry->item = item;
    return SutAddList(registry, entry);
}

void *VlRegistryGetItem(SutList *registry, const char *name) {
    if (!registry || !name || !*name) return nullptr;
    for (int i = 0; i < SutSizList(registry); i++) {
        VlRegistryEntry *entry = static_cast<VlRegistryEntry *>(SutGetNList(registry, i));
        if (entry && entry->name && std::strcmp(entry->name, name) == 0) return entry->item;
    }
    return nullptr;
}

void VlDeleteRegistry(SutList *registry) {
    for (int i = 0; i < SutSizList(registry); i++) {
        VlRegistryEntry *entry = static_cast<VlRegistryEntry *>(SutGetNList(registry, i));
        if (entry) std::free(entry->name);
    }
    SutDestroyList(registry);
}

} // extern "C"
