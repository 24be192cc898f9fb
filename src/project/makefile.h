/* Makefile generation from Makefile.tem. */
#ifndef VELMORA_PROJECT_MAKEFILE_H
#define VELMORA_PROJECT_MAKEFILE_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
