/* Whole-file reading and writing, existence tests, line-end conversion and
 * the splitting of a text into fields. */
#ifndef VELMORA_UTIL_FILES_H
#define VELMORA_UTIL_FILES_H

#include <time.h>
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

char *VlReadFileAndMod(const char *path, time_t *modTimeOut);
char *VlReadFile(const char *path);
char *VlReadFileToString(const char *path);
int VlWriteStrToFile(const char *path, const char *text); /* 0 on success */
int VlFileExists(const char *path);
int VlDirExists(const char *path);
int VlMkdir(const char *path);
char *VlGetCurrentDir(void);
char *VlDosToUnix(const char *text);
char *VlUnixToDos(const char *text);
void VlDosToUnixSlashes(char *path);
SutList *VlParseFileString(const char *text, const char *delimiters, const char *quotes);

#ifdef __cplusplus
}
#endif

#endif
