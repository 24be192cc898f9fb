/* Map upkeep: keeps the binding map and the activator code of the modules in step. */
#ifndef VELMORA_MAPS_UPKEEP_H
#define VELMORA_MAPS_UPKEEP_H

#ifdef __cplusplus
extern "C" {
#endif

/* Hands every bind's editor back, destroys the map context and leaves the
 * process without a map. Returns 0. */
int SwdResetTheMap(void);

#ifdef __cplusplus
}
#endif

#endif
