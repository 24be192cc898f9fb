// The reference page scanner and design-time markup: the engine's scanner,
// markup and keyword-attribute recogniser as they stood before they jumped
// between candidate bytes, copied unchanged into namespace vlref. The
// differential fuzz target (fuzz_html_diff) and its corpus test run both and
// require identical documents and identical marked text. Every function is
// declared here, before the copies use it, so that their calls resolve to
// the reference versions and never to the engine's of the same name; the
// keyword list and the document records are the engine's own.
#ifndef VELMORA_FUZZ_REFERENCE_REFERENCE_HPP
#define VELMORA_FUZZ_REFERENCE_REFERENCE_HPP

#include <cstdio>

#include "html/document.h"

namespace vlref {

VlHtmlDoc *VlReadHtmlDesignTime(const char *text);
int VlReadForm(VlHtmlForm *form, const char *cursor);
int VlReadAnch(VlHtmlAnch *anchor, const char *cursor);
int VlProcessForm(VlHtmlForm *form, const char *formText);
int VlProcessAnch(VlHtmlAnch *anchor, const char *anchText);
int VlReadInput(VlHtmlFormElement *element, const char *tagText);
char *VlProcessNameValue(const char *text);
char *VlProcessNameValueLib(const char *text);

int VlMarkupHtmlDesignTimeForms(VlHtmlDoc *doc, const char *text, FILE *out, int pass);
int VlMarkupHtmlDesignTime(VlHtmlDoc *doc, const char *text, FILE *out);

VlHtmlAnch *VlProcessKeyWords(const char *text, const char *position);
char *VlIsValidUrlKey(const char *text);
char *VlSkipWhiteAndEqual(const char *text);
char *VlSkipWhite(const char *text);
int VlIsNiceUrlName(const char *text);
char *VlToLower(const char *text);
int VlStrNCaseCompAnch(const char *text, const char *pattern, int count);
char *VlStrIStr(const char *text, const char *pattern, const char *stop);
int VlIsInAnchor(const char *text, const char *position);
int VlIsInForm(const char *text, const char *position);

} // namespace vlref

#endif
