/* The HTML scanner: page text into a document record of sites, forms, elements and anchors. */
#ifndef VELMORA_HTML_SCANNER_H
#define VELMORA_HTML_SCANNER_H

#include "html/document.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A new document holding the page's sites, forms and anchors in page order;
 * null only for null text. */
VlHtmlDoc *VlReadHtmlDesignTime(const char *text);

/* Read the form (anchor) whose tag starts at cursor into the record (a null
 * form is read only to be skipped). 0, or 1 for a null or empty cursor. */
int VlReadForm(VlHtmlForm *form, const char *cursor);
int VlReadAnch(VlHtmlAnch *anchor, const char *cursor);

/* The text inside a form: ACTION, METHOD and the form elements. 0; 1 for empty text. */
int VlProcessForm(VlHtmlForm *form, const char *formText);
/* The text inside an anchor tag: 1 when an HREF was seen or the text ended early. */
int VlProcessAnch(VlHtmlAnch *anchor, const char *anchText);
/* NAME, TYPE and the hidden form name of an element. Always 0 (1 for null text). */
int VlReadInput(VlHtmlFormElement *element, const char *tagText);

/* Attribute values, as new strings: strictly double-quoted, and lenient. */
char *VlProcessNameValue(const char *text);
char *VlProcessNameValueLib(const char *text);

#ifdef __cplusplus
}
#endif

#endif
