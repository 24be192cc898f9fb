/* Installing callback code: the code that the binding map regenerates goes
 * into the activator function of a page's form or anchor. */
#ifndef VELMORA_PROJECT_CALLBACKCODE_H
#define VELMORA_PROJECT_CALLBACKCODE_H

#ifdef __cplusplus
extern "C" {
#endif

/* Sets the func code of the function serving the anchor (form) named widget
 * on the page named pageName, creating the function (and the page's module)
 * when needed; a null code takes the code away. 1 when done, 0 when the page
 * or the activator is unknown. */
int VlProjAddHtmlAnch(const char *pageName, const char *widget, const char *code);
int VlProjAddHtmlForm(const char *pageName, const char *widget, const char *code);

#ifdef __cplusplus
}
#endif

#endif
