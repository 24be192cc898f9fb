/* Map upkeep: keeps the binding map and the activator code of the modules in step. */
#ifndef VELMORA_MAPS_UPKEEP_H
#define VELMORA_MAPS_UPKEEP_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
