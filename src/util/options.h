/* Option lines ("name : value") and option lists: lookup, replacement,
 * removal, and the readers that turn a file or a text into an option list. */
#ifndef VELMORA_UTIL_OPTIONS_H
#define VELMORA_UTIL_OPTIONS_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

char *VlGetOption(SutList *list, const char *name, int *indexOut);
char *VlGetOptionValue(SutList *list, const char *name);
char *VlGetStrippedOptionValue(SutList *list, const char *name);
char *VlGetStrippedOptionValueByCat(SutList *list, const char *category, const char *name);
int VlValidOptionName(const char *name);
char *VlMakeOptionString(const char *name, const char *value);
SutList *VlAppendOption(SutList *list, char *line); /* takes line when it stores it */
SutList *VlAppendOptionNameValue(SutList *list, const char *name, const char *value);
int VlDeleteOptions(SutList *list, const char *name); /* 1 when a line was removed */
SutList *VlVaOptionsMerge(SutList *list, ...);        /* lines end with a null pointer */
/* Appends a copy of each of lines to list, in order, by the rule of
 * VlAppendOption (a line replaces the first line of its name in place, or
 * goes at the end; a line without a usable colon is not taken): the same
 * list as one VlAppendOption per line, through an index of the names, so the
 * time grows with the number of lines, not with its square. Returns the list
 * (a new one when list is null); lines is left as it is. */
SutList *VlMergeOptionLines(SutList *list, const SutList *lines);
SutList *VlOptionGetFromFile(const char *path);
SutList *VlOptionGetFromString(const char *text);
SutList *VlOptionGetIntList(const char *text);

#ifdef __cplusplus
}
#endif

#endif
