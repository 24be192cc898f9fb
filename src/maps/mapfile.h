/* The map file: the text form of a binding map, its writer and its reader. */
#ifndef VELMORA_MAPS_MAPFILE_H
#define VELMORA_MAPS_MAPFILE_H

#include <stdio.h>
#include "maps/map.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the map to the file at path: 0 on success (also when a bind
 * without a name cut the writing short), -1 when nothing could be written. */
int SpmWriteMapFile(SpmMap *map, const char *path);
/* The writers of the file's parts: 0 on success, -1 for a bind without a
 * name. Binds that are not applied or have no callback bind are skipped. */
int SpmWriteMap(FILE *fp, SpmMap *map);
int SpmWriteSPBind(FILE *fp, SpmSPBind *bind);
int SpmWriteColBind(FILE *fp, const char *bindName, SpmColBind *col);
int SpmWriteCallbackBind(FILE *fp, const char *bindName, SpmCallbackBind *call);
int SpmWriteArgBind(FILE *fp, const char *bindName, SpmArgBind *arg);

/* Reads a map file into a new map put in *mapPtr: 0 on success, -1 with
 * *mapPtr null on failure (a message names the file and the line). Clears
 * the verified flag. */
int SpmReadMapFile(SpmMap **mapPtr, const char *path);
/* Where a bind name holds a dot: the position of the line's first dot when
 * it lies inside the prefix ("*" and the bind's name), else -1. */
int SpmExtraDot(const char *line, const char *prefix);

/* The map file of a project sits beside it with the extension ".map". */
int SpmMapFileExist(const char *projectPath); /* 0 when it can be opened */
/* Replaces the map context by the project's map file (none when the read
 * fails: 0 or -1), and moves a file that was read to "<map file>.BAK". */
int SpmProjectReadMap(const char *projectPath);
/* Writes the map context beside the project (paths under 7 characters give
 * "Untitled.map"): 1, or -1. */
int SpmProjectWriteMap(const char *projectPath);

#ifdef __cplusplus
}
#endif

#endif
