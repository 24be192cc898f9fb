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

#ifdef __cplusplus
}
#endif

#endif
