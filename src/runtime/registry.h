/* A small name registry for generated programs: names mapped to items the registry does not own. */
#ifndef VELMORA_RUNTIME_REGISTRY_H
#define VELMORA_RUNTIME_REGISTRY_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
