/* Page reading, the working copy under in_use, and saving a page back. */
#ifndef VELMORA_HTML_PAGE_H
#define VELMORA_HTML_PAGE_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
