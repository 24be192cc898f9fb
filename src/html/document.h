/* The records of an HTML page: the document with its forms (and their input
 * elements), anchors and site marks in page order, and the naming rules that
 * tie forms and anchors to the page's module. */
#ifndef VELMORA_HTML_DOCUMENT_H
#define VELMORA_HTML_DOCUMENT_H

#include <time.h>
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VlHtmlFormElement {
    char *name;         /* NAME of the element */
    char *type;         /* TYPE, or "SELECT" / "TEXTAREA" */
    char *formName;     /* value of the hidden VlFormName input (moved to the form) */
    char *origFormName; /* formName as the page stands on disk */
} VlHtmlFormElement;

typedef struct VlHtmlForm {
    char *fullName; /* "<short>__F<modName>", null while unnamed */
    char *action;
    char *method;
    char *origFullName;
    char *origAction;
    char *origMethod;
    int named;
    SutList *elements; /* of VlHtmlFormElement */
} VlHtmlForm;

typedef struct VlHtmlAnch {
    char *fullName; /* "<short>__A<modName>", null while unnamed */
    char *url;
    char *origFullName;
    char *origUrl;
    int isKeyword;  /* found through a keyword attribute, not an A tag */
    char *urlAttr;  /* attribute carrying the URL when it is not HREF */
} VlHtmlAnch;

typedef struct VlHtmlSite {
    char *name;
    char *origName;
} VlHtmlSite;

typedef struct VlHtmlDoc {
    char *name;    /* the page's file name as the project gives it */
    char *modName; /* base name with every non-alphanumeric character as "_" */
    int changed;
    int sitesChanged;
    int formsChanged;
    int anchorsChanged;
    time_t modTime;
    SutList *forms; /* of VlHtmlForm */
    int nextFormNumber;
    SutList *sites; /* of VlHtmlSite */
    int nextSiteNumber;
    SutList *anchors; /* of VlHtmlAnch */
    int nextAnchNumber;
    char *path;
} VlHtmlDoc;

#ifdef __cplusplus
}
#endif

#endif
