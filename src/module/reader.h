/* Reading a module file: sections, functions with their code, and alias lines. */
#ifndef VELMORA_MODULE_READER_H
#define VELMORA_MODULE_READER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
