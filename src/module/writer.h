/* Module writer and the editing operations on functions, aliases and activators. */
#ifndef VELMORA_MODULE_WRITER_H
#define VELMORA_MODULE_WRITER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
