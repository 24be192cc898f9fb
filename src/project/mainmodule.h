/* The main module: reading the user's regions and generating it from main.tem. */
#ifndef VELMORA_PROJECT_MAINMODULE_H
#define VELMORA_PROJECT_MAINMODULE_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
