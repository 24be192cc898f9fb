/* Project writer: backup, project file, modules, pages, main module, makefile, configuration file. */
#ifndef VELMORA_PROJECT_WRITER_H
#define VELMORA_PROJECT_WRITER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
