/* A small name registry for generated programs: names mapped to items the registry does not own. */
#ifndef VELMORA_RUNTIME_REGISTRY_H
#define VELMORA_RUNTIME_REGISTRY_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VlRegistryEntry {
    char *name; /* owned copy */
    void *item; /* not owned */
} VlRegistryEntry;

/* What VlRegistryAddItem answers when it adds nothing. */
#define VL_REGISTRY_ADD_FAILED ((void *)-1)

SutList *VlNewRegistry(void);
/* The new entry (a VlRegistryEntry), or VL_REGISTRY_ADD_FAILED for a null
 * registry or item or a null or empty name. */
void *VlRegistryAddItem(SutList *registry, const char *name, void *item);
/* The item of the first entry of that name (case-sensitive), or null. */
void *VlRegistryGetItem(SutList *registry, const char *name);
/* Frees the entries and their names; the items stay the caller's. */
void VlDeleteRegistry(SutList *registry);

#ifdef __cplusplus
}
#endif

#endif
