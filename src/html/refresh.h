/* Refreshing a page that changed on disk: names and bindings carried from the old reading to the new one. */
#ifndef VELMORA_HTML_REFRESH_H
#define VELMORA_HTML_REFRESH_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
