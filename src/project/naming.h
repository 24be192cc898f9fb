/* Project naming, relocation, the configuration file and the scripted runs (test, install,
 * release). */
#ifndef VELMORA_PROJECT_NAMING_H
#define VELMORA_PROJECT_NAMING_H

#ifdef __cplusplus
extern "C" {
#endif

/* 1 when "Project.Call Read/Write Scripts" is absent or "True": the project's
 * read and write scripts run around every file the engine reads or writes. */
int VlProjCallReadWriteScripts(void);
/* 1 when "Project.Relocatable Project" is "True": CGI URLs are resolved when
 * the application runs instead of being written into pages and modules. */
int VlProjRelocatable(void);

/* Names the current project after path: the file part without ".pj" (or
 * "noname"); a directory part is created when missing and becomes the working
 * directory; every module and the pages get the program's URL. 1 only when a
 * directory part was entered; 0 otherwise and on failure (with a message). */
int VlProjSetName(const char *path);
/* The deployment URL option of category ("Test." or "Release.") that the
 * deployment target calls for; a new string or null. */
char *VlProjGetCGIURL(const char *category);

#ifdef __cplusplus
}
#endif

#endif
