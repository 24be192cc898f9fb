/* Project naming, relocation, the configuration file and the scripted runs (test, install, release). */
#ifndef VELMORA_PROJECT_NAMING_H
#define VELMORA_PROJECT_NAMING_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
