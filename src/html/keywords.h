/* Keyword file, keyword attributes of pages and the case-insensitive tag searches. */
#ifndef VELMORA_HTML_KEYWORDS_H
#define VELMORA_HTML_KEYWORDS_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Reads "/config/VlKeyWds.ini" under $VELMORA into the process-wide keyword
 * list, replacing any earlier one: 0 when keywords were loaded, 1 otherwise
 * (the list is then null). Calling it again is also the reset for tests. */
int VlReadKeyWords(void);
/* 1 when line is letters and digits, optionally ending in one "|". */
int VlIsKeyWord(const char *line);
/* 1 when a keyword list is loaded. */
int VlAnyKeys(void);
/* The loaded keywords (a "|" keyword with a blank in place of its bar), or
 * null; the list stays owned by this module. */
SutList *VlGetKeyWords(void);

#ifdef __cplusplus
}
#endif

#endif
