/* Design-time markup: writes a page back with its forms, anchors and keyword attributes tied to their activator names. */
#ifndef VELMORA_HTML_MARKUP_H
#define VELMORA_HTML_MARKUP_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
