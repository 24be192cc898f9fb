/* Project writer: backup, project file, modules, pages, main module, makefile,
 * configuration file and write script; saving under a new name; and the record
 * of recently used projects. */
#ifndef VELMORA_PROJECT_WRITER_H
#define VELMORA_PROJECT_WRITER_H

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the whole current project in the working directory: backup first,
 * then the project file with each module written right after its line and
 * each page saved right before its line, the main module, the makefile, the
 * configuration file, and last the write script. force is passed on to every
 * module's writer. 1 on success; 0 without a named project or when the
 * project file cannot be written (with a message). */
int VlProjWrite(int force);
/* Copies the project's existing files into velmoraBack<name>. 1 when copied
 * or when there is nothing to copy yet; 0 without a project or when the copy
 * fails (with a message). */
int VlProjBackup(void);
/* Moves the project to path (directory created and entered) and writes it
 * there; the working copies of the pages come along when the new directory
 * is not part of the old one's path. 1 when written. */
int VlProjSaveAs(const char *path);
/* VlProjSaveAs after refusing a name that equals a page's name without its
 * extension (0 with a message). */
int VlProjSaveAsWithCheck(const char *path);
/* A program without dialogs never stops to ask: always 1. */
int VlProjCheckForSave(void);
/* 1 when there is no named project, or it is the unsaved "noname" project. */
int VlProjNeedToSaveAs(void);

/* Records the project in the list of recently used projects. This program
 * keeps no such list: the entry's path is formed and let go. */
void VlProjAddToMRU(void);

#ifdef __cplusplus
}
#endif

#endif
