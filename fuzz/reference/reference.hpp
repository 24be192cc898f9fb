// The reference readers: the engine's page scanner, design-time markup,
// keyword-attribute recogniser and binding-code parser as they stood before
// they jumped between the places where something can start, copied unchanged
// into namespace vlref. The differential fuzz targets (fuzz_html_diff,
// fuzz_bindcode_diff) and the corpus test run both and require identical
// records and identical marked text. Every function is declared here, before
// the copies use it, so that their calls resolve to the reference versions
// and never to the engine's of the same name; the keyword list, the document
// and bind records and the map are the engine's own.
#ifndef VELMORA_FUZZ_REFERENCE_REFERENCE_HPP
#define VELMORA_FUZZ_REFERENCE_REFERENCE_HPP

#include <cstdio>

#include "html/document.h"
#include "maps/map.h"

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

int SwdParseFormCode(const char *interface, const char *widget, const char *body);
int SwdParseAnchCode(const char *interface, const char *widget, const char *body);
SutList *SwdExtractMapsFromCallbacks(const char *interface, const char *widget, SutList *callbacks);
int SwdParseWorkCall(const char *text, long *maxRows, char **servername, char **dbname, char **name,
                     char **last);
int SwdParseBindName(SpmSPBind *bind, const char **pos);
int SwdParseCallDetailCode(SpmSPBind *bind, const char **pos);
int SwdParseColumnDetailCode(SpmColBind *col, const char **pos);
int SwdParseFragmentsCode(SpmSPBind *bind, const char **pos);
int SwdParseReqOptionsCode(SpmSPBind *bind, const char **pos);
int SwdParseCallOptionsCode(SpmCallbackBind *call, const char **pos);
int SwdParseColOptionsCode(SpmColBind *col, const char **pos);
int SwdParseArgOptionsCode(SpmArgBind *arg, const char **pos);

} // namespace vlref

#endif
