/* The HTML scanner: page text into a document record of sites, forms, elements and anchors. */
#ifndef VELMORA_HTML_SCANNER_H
#define VELMORA_HTML_SCANNER_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
