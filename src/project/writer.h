/* Project writer: backup, project file, modules, pages, main module, makefile,
 * configuration file; and the record of recently used projects. */
#ifndef VELMORA_PROJECT_WRITER_H
#define VELMORA_PROJECT_WRITER_H

#ifdef __cplusplus
extern "C" {
#endif

/* Records the project in the list of recently used projects. This program
 * keeps no such list: the entry's path is formed and let go. */
void VlProjAddToMRU(void);

#ifdef __cplusplus
}
#endif

#endif
