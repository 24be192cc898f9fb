/* Reading a project file into the current project. */
#ifndef VELMORA_PROJECT_READER_H
#define VELMORA_PROJECT_READER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
