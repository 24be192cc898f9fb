/* Writing a module record back to its C source file in the module file format. */
#ifndef VELMORA_MODULE_WRITER_H
#define VELMORA_MODULE_WRITER_H

#include "module/module.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Writes the module to fileName: the user's text between the markers, every
 * function, the registration function with one line per function and alias.
 * A saved module is left alone unless force is set. 1 on success, 0 for a
 * null argument or when the file cannot be written. */
int VlModuleWrite(VlModule *module, const char *fileName, int force);

#ifdef __cplusplus
}
#endif

#endif
