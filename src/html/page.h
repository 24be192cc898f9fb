/* Page reading, the working copy under in_use, and saving a page back. */
#ifndef VELMORA_HTML_PAGE_H
#define VELMORA_HTML_PAGE_H

#include <stdio.h>
#include <time.h>
#include "html/document.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Creates "in_use" in the current directory when it is missing: the status of
 * the mkdir command, or 0 when the directory is already there. */
int VlHtmlMakeBackupDir(void);
/* "in_use/<page>.vlm" as a new string (in_use created when needed); null for null. */
char *VlGetBackupFileName(const char *pageName);
/* A stream that writes the named file whole (VlOpenSafely), or null; it is
 * ended with VlCloseSafely. */
FILE *VlGetBackupFile(const char *fileName);
/* Modification time of a regular file; -1 for null, a missing file or another kind. */
time_t VlGetFileModTime(const char *fileName);

/* Reads a page into a new document and leaves an exact copy of it as the
 * working copy; null when the page or the working copy fails. */
VlHtmlDoc *VlHtmlNewFromFile(const char *pageName);
/* Writes the document's changes into the working copy (markup passes 1, 2, 0).
 * 0 when done or nothing to do; 1 for a document without a name. */
int VlHtmlBackup(VlHtmlDoc *doc);
/* Copies the working copy, with the changes written in, over the page.
 * 0 after a save; 1 when it cannot (no document, name or working copy). */
int VlHtmlSave(VlHtmlDoc *doc);

#ifdef __cplusplus
}
#endif

#endif
