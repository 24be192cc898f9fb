/* The binding-code parser: rebuilds binds from the generated code inside activator functions. */
#ifndef VELMORA_MAPS_PARSER_H
#define VELMORA_MAPS_PARSER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
