/* Makefile generation from Makefile.tem, and the executable suffix. */
#ifndef VELMORA_PROJECT_MAKEFILE_H
#define VELMORA_PROJECT_MAKEFILE_H

#ifdef __cplusplus
extern "C" {
#endif

/* The value of option "Makefile." "exeSuffix", or ".exe" when it is absent;
 * a new string. */
char *VlProjGetExeSuffix(void);

#ifdef __cplusplus
}
#endif

#endif
