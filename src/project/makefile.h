/* Makefile generation from Makefile.tem, and the executable suffix. */
#ifndef VELMORA_PROJECT_MAKEFILE_H
#define VELMORA_PROJECT_MAKEFILE_H

#ifdef __cplusplus
extern "C" {
#endif

/* The value of option "Makefile." "exeSuffix", or ".exe" when it is absent;
 * a new string. */
char *VlProjGetExeSuffix(void);

/* Writes <name>.mak from the distribution's config/Makefile.tem, its twelve
 * "$VL_" tokens filled from the "Makefile." options, the project name and the
 * module list. 1 when written; 0 without a named project or on failure (with
 * a message, the previous makefile left as it was). */
int VlProjWriteMakefile(void);

#ifdef __cplusplus
}
#endif

#endif
