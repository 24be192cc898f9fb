/* The main module: the C source file with the CGI program's entry, generated
 * from main.tem. Here its record, reading the user's three regions back, and
 * the setters and getters of those regions. */
#ifndef VELMORA_PROJECT_MAINMODULE_H
#define VELMORA_PROJECT_MAINMODULE_H

#include "project/project.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A new zero-filled main module record. */
VlMainModule *VlMainModuleNewEmpty(void);
/* Kept for callers of the old interface: always null. */
VlMainModule *VlMainModuleNew(void);
/* Reads the user includes, initial code and final code regions of the file
 * into the current project's main module; 1 on success, 0 (with a message
 * when the file cannot be read) on failure. */
int VlMainModuleRead(const char *fileName);

/* Store a copy of the text and mark the project changed; 0 without a project
 * or main module. The previous text is not released: callers may still hold
 * it from the getters. */
int VlProjMainSetDeclarations(const char *text);
int VlProjMainSetInitialCode(const char *text);
int VlProjMainSetFinalCode(const char *text);
/* The stored text itself, or null. */
char *VlProjMainGetDeclarations(void);
char *VlProjMainGetInitialCode(void);
char *VlProjMainGetFinalCode(void);

#ifdef __cplusplus
}
#endif

#endif
