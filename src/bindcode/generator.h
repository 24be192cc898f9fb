/* The binding-code generator: the code of one request, exactly as the parser reads it back. */
#ifndef VELMORA_BINDCODE_GENERATOR_H
#define VELMORA_BINDCODE_GENERATOR_H

#include "maps/map.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The code that runs one request from one of its callbacks: a block that
 * opens with "{\n\tpSgeWorkCallData pSgeWCD;\n\n" and closes after the
 * final-code banner with "}", holding the work call, the bind name, the call
 * detail, fragments, options, columns, arguments and the run call. The
 * callback bind gives the row limit, dialog, index, queueing and callback
 * options. With flag non-zero the callback bind's initial and final code go
 * between their banners (the form used when the map is written back into
 * the modules); with flag 0 the banners stay empty, giving a fresh callback
 * without the user's code. A new string, or null when bind or callBind is
 * null. */
char *getCallbackCode(SpmSPBind *bind, SpmCallbackBind *callBind, int flag);

#ifdef __cplusplus
}
#endif

#endif
