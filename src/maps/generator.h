/* The binding-code generator: the code of one request, exactly as the parser reads it back. */
#ifndef VELMORA_MAPS_GENERATOR_H
#define VELMORA_MAPS_GENERATOR_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
