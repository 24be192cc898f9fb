/* Project options: lookup across command line, project, user and global option files; upgrade of
 * old names. */
#ifndef VELMORA_PROJECT_OPTIONS_H
#define VELMORA_PROJECT_OPTIONS_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The user's option file ($HOME/Velmora.cfg) and the distribution's
 * (<dist>/config/Velmora.cfg), loaded by the first lookup that finds them. */
extern SutList *theUserOptions;
extern SutList *theGlobalOptions;

/* The value of a full option name ("Test.CGI URL") as a new string, or null:
 * command line first, then the project, the user file and the global file. */
char *VlProjGetOptionNoParse(const char *fullName);
/* The same with "#proj" and "#user" expanded; null without a current project. */
char *VlProjGetOption(const char *fullName);
char *VlProjGetOptionByCat(const char *category, const char *name);

/* Renames the option oldName of list in place; 1 when it was there, else 0. */
int VlProjRenameOption(SutList *list, const char *oldName, const char *newCategory,
                       const char *newName);
/* Renames the option names of older versions; 1 when any was renamed. */
int VlProjUpgradeOptions(SutList *list);

/* A new list of copies of all option sets, project over user over global. */
SutList *VlProjBuildOptionsList(void);
/* Writes the merged list to the user option file and keeps it as the user's
 * options; 1 on success, 0 when the file cannot be written. */
int VlProjSaveUserOptions(void);

/* Command-line options: the value given for a full option name (not a copy),
 * or null. This program registers none; embedders and tests set them. */
const char *VlCmdLineGetOption(const char *fullName);
/* Sets (or with a null value removes) a command-line option; 1, or 0 for a null name. */
int VlCmdLineSetOption(const char *fullName, const char *value);
void VlCmdLineClearOptions(void);

/* Drops the loaded user and global option sets so the next lookup reads the
 * files again. Exists for tests and embedders. */
void VlProjResetOptionFiles(void);

#ifdef __cplusplus
}
#endif

#endif
