/* Null-safe string helpers, copying and joining, SQL quoting, path splitting,
 * delimiter names and template substitution. Returned strings are new heap
 * strings owned by the caller unless a comment says otherwise. */
#ifndef VELMORA_UTIL_STRINGS_H
#define VELMORA_UTIL_STRINGS_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* First family: null-safe wrappers of the standard functions. */
char *StrDup(const char *s);
char *StrNDup(const char *s, int n);
char *StrCat(char *dest, const char *src);
char *StrChr(const char *s, int c); /* pointer into s */
int StrCmp(const char *a, const char *b);
int StrNCmp(const char *a, const char *b, int n);
int ResStrCmp(const char *a, const char *b);
char *StrCpy(char **destPtr, const char *src);
int StrLen(const char *s);
int StrWrap(char **sPtr, int c);
char *StripStr(const char *s);
const char *ItoA(int n); /* static buffer, overwritten by the next call */

/* Second family. */
char *VlCopyString(const char *s);
char *VlStrMCat(const char *first, ...); /* arguments end with a null pointer */
char *VlCopyDbString(const char *s);
char *VlMakeEscapedString(const char *s);
char *VlStripFB(const char *s);
char *VlGetFileFromFullPath(const char *path);
char *VlGetDirFromFullPath(const char *path);
int VlDelimStrToChar(const char *name);
int VlStrNumMatch(const char *text, const char *pattern);
char *VlStrSubs(const char *text, const char *pattern, const char *replacement);
void VlStrNumMatchInList(const char *text, SutList *keys, SutList *counts, const char *marker);
char *VlStrSubsList(const char *text, SutList *keys, SutList *values, const char *marker);

#ifdef __cplusplus
}
#endif

#endif
