/* Refreshing a page that changed on disk: names and bindings carried from the
 * old reading to the new one. */
#ifndef VELMORA_PROJECT_REFRESH_H
#define VELMORA_PROJECT_REFRESH_H

#include "html/document.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Carries the old reading's named forms and anchors over to the new reading
 * (by full name, or an unnamed form or anchor by its original action or URL)
 * and moves every module reference to the new records; forms, anchors and
 * sites that are gone are dropped from the modules and reported to the
 * binding map. 1 when either document is null, else 0. */
int VlHtmlRefresh(VlHtmlDoc *oldDoc, VlHtmlDoc *newDoc);

#ifdef __cplusplus
}
#endif

#endif
