/* Identifier strings of forms, anchors and bindings, activator type letters,
 * menu entries, category option names and lookups in resource lists. */
#ifndef VELMORA_UTIL_IDENT_H
#define VELMORA_UTIL_IDENT_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

char *WbMakeFormIdString(const char *page, const char *name, int type);
int WbGetFormIdStringParts(const char *id, char **pageOut, char **nameOut, int *typeOut);
char *WbMakeBindIdString(const char *a, const char *b, const char *c, const char *d, int typeId);
char *WbMakeActivatorType(int type);
int WbGetActivatorType(const char *letters);
char *WbFormatMRUItem(const char *path, int index);
char *WbMakeCatOption(const char *category, const char *name, const char *value);
int WbGetCatOnly(const char *optionName, char **catOut);
int WbGetOptOnly(const char *optionName, char **optOut);
char *WbStripCat(const char *optionName);
int WbSutListSort(SutList *list);
int WbSortStringProc(const void *a, const void *b);
SutList *WbSutListStrDup(const SutList *list);
int WbStrToDelim(const char *name);
char *WbGetResourceValueFromList(SutList *list, const char *name); /* points into the list */
char *WbGetMultiResourceValueFromList(SutList *list, const char *name);

#ifdef __cplusplus
}
#endif

#endif
