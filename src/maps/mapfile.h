/* The map file: the text form of a binding map, its writer and its reader. */
#ifndef VELMORA_MAPS_MAPFILE_H
#define VELMORA_MAPS_MAPFILE_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
