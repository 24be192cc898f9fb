// VlRnHtml.h as the runtime's own sources include it: the header lets the
// generated modules leave a variable unused for the rest of their text, which
// the runtime's own code is not allowed.
#ifndef VELMORA_RUNTIME_API_HPP
#define VELMORA_RUNTIME_API_HPP

#pragma GCC diagnostic push
#include "runtime/VlRnHtml.h"
#pragma GCC diagnostic pop

#endif
