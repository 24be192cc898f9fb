/* Project options: lookup across command line, project, user and global option files; upgrade of old names. */
#ifndef VELMORA_PROJECT_OPTIONS_H
#define VELMORA_PROJECT_OPTIONS_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
