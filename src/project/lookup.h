/* Lookups and queries over the current project's modules and pages, and the project-wide form and anchor operations. */
#ifndef VELMORA_PROJECT_LOOKUP_H
#define VELMORA_PROJECT_LOOKUP_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
