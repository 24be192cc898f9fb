/* Design-time markup: writes a page back with its forms, anchors and keyword attributes tied to
 * their activator names. */
#ifndef VELMORA_HTML_MARKUP_H
#define VELMORA_HTML_MARKUP_H

#include <stdio.h>
#include "html/document.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Writes text to out with one kind of tag rewritten from the document's
 * records: pass 0 forms, 1 anchors, 2 keyword attributes. 0; 1 for a null
 * document or text, and 1 when an anchor's "/A>" is missing in pass 1 (the
 * output then stops there). */
int VlMarkupHtmlDesignTimeForms(VlHtmlDoc *doc, const char *text, FILE *out, int pass);

/* Writes text to out with the names of the site marks taken from the document. */
int VlMarkupHtmlDesignTime(VlHtmlDoc *doc, const char *text, FILE *out);

#ifdef __cplusplus
}
#endif

#endif
