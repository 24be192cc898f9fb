/* Reading a module file: sections, functions with their code, and alias lines;
 * plus the fragment helpers that cut a file at a separator and put it back. */
#ifndef VELMORA_MODULE_READER_H
#define VELMORA_MODULE_READER_H

#include "module/module.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The text between the first start marker in text (or text itself for a null
 * start marker) and the first end marker after it (or the end of text), as a
 * new string. *cursor is set to the end marker itself (not past it), or to the
 * terminating NUL, so one section's end marker is found again as the next
 * section's start. Null, with *cursor untouched, when the start marker is
 * absent or text or cursor is null. */
char *VlParseSection(const char *text, const char *startMarker, const char *endMarker,
                     const char **cursor);

/* Reads a module file into a new module record bound to its page of the
 * current project; the function code is handed to the binding-code parser.
 * Null, with a message, when the file cannot be used. */
VlModule *VlModuleNewFromFile(const char *fileName);

/* The file's text cut at every separator (the separator dropped); null when an
 * argument is null or the file cannot be read. */
SutList *VlParseFileToFragments(const char *fileName, const char *separator);

/* Writes the fragments with the separator between them; 1 on success. */
int VlWriteFragmentsToFile(SutList *fragments, const char *fileName, const char *separator);

#ifdef __cplusplus
}
#endif

#endif
