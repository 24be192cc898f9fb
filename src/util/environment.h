/* The environment: variables read as strings that are never null, and the
 * distribution directory that VELMORA names (templates, option file, keyword
 * file and scripts live under it). */
#ifndef VELMORA_UTIL_ENVIRONMENT_H
#define VELMORA_UTIL_ENVIRONMENT_H

#ifdef __cplusplus
extern "C" {
#endif

/* The distribution directory once read (see VlGetDistDir); null before. */
extern char *theDistDir;

/* The environment variable's value as a new string; "" when unset. */
char *VlGetEnv(const char *name);
/* The distribution directory from VELMORA without one trailing slash or backslash,
 * read once (theDistDir, not a copy); null while VELMORA is unset. */
char *VlGetDistDir(void);
/* A new copy of VlGetDistDir(), or null. */
char *GetVelmoraDir(void);
/* Forgets the distribution directory so the next VlGetDistDir reads VELMORA
 * again. Exists for tests and embedders. */
void VlResetDistDir(void);

#ifdef __cplusplus
}
#endif

#endif
