/* Keyword file, keyword attributes of pages and the case-insensitive tag searches. */
#ifndef VELMORA_HTML_KEYWORDS_H
#define VELMORA_HTML_KEYWORDS_H

#include "html/document.h"
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

/* Keyword attributes: an anchor record for the keyword attribute whose name
 * begins right after position (a white-space character), or null. */
VlHtmlAnch *VlProcessKeyWords(const char *text, const char *position);

/* Small scanners; each returns a pointer into its argument or null. */
char *VlIsValidUrlKey(const char *text);     /* VlSkipWhiteAndEqual; null for "" */
char *VlSkipWhiteAndEqual(const char *text); /* white space, "=", white space */
char *VlSkipWhite(const char *text);         /* first non-white character */
int VlIsNiceUrlName(const char *text);       /* non-empty, no white space, "<" or ">" */
char *VlToLower(const char *text);           /* new lower-case copy; "" for null */

/* Tag searches, ignoring case. VlStrNCaseCompAnch compares like strncasecmp
 * but also takes "<A" with a tab or a line end for "<A ". VlStrIStr finds
 * pattern in text and gives null when stop matches first. */
int VlStrNCaseCompAnch(const char *text, const char *pattern, int count);
char *VlStrIStr(const char *text, const char *pattern, const char *stop);
int VlIsInAnchor(const char *text, const char *position);
int VlIsInForm(const char *text, const char *position);

#ifdef __cplusplus
}
#endif

#endif
