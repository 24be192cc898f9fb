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

/* The storage of a read page: the records and strings the scanner finds are
 * taken from it and live as long as the page. A record made on its own has
 * none (store is null) and owns malloc'ed strings. The setters below keep a
 * record's strings where the record lives; code outside the page changes a
 * string field with VlHtmlSetString, never by assigning a malloc'ed one to a
 * record of a page. A record of a page is released with the page. */
typedef struct VlHtmlStore VlHtmlStore;

typedef struct VlHtmlFormElement {
    char *name;         /* NAME of the element */
    char *type;         /* TYPE, or "SELECT" / "TEXTAREA" */
    char *formName;     /* value of the hidden VlFormName input (moved to the form) */
    char *origFormName; /* formName as the page stands on disk */
    VlHtmlStore *store; /* where the record and its strings live; null: malloc */
} VlHtmlFormElement;

typedef struct VlHtmlForm {
    char *fullName; /* "<short>__F<modName>", null while unnamed */
    char *action;
    char *method;
    char *origFullName;
    char *origAction;
    char *origMethod;
    int named;
    SutList *elements;  /* of VlHtmlFormElement */
    VlHtmlStore *store; /* where the record and its strings live; null: malloc */
} VlHtmlForm;

typedef struct VlHtmlAnch {
    char *fullName; /* "<short>__A<modName>", null while unnamed */
    char *url;
    char *origFullName;
    char *origUrl;
    int isKeyword;      /* found through a keyword attribute, not an A tag */
    char *urlAttr;      /* attribute carrying the URL when it is not HREF */
    VlHtmlStore *store; /* where the record and its strings live; null: malloc */
} VlHtmlAnch;

typedef struct VlHtmlSite {
    char *name;
    char *origName;
    VlHtmlStore *store; /* where the record and its strings live; null: malloc */
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
    VlHtmlStore *store; /* of the records read from the page; null until read */
} VlHtmlDoc;

/* The project URL: written into the ACTION of every form and the HREF of every
 * anchor that is given a name. Null or empty urls are ignored. */
int VlHtmlSetProjName(const char *url);
/* The stored project URL (not a copy); null until set or until a document is made. */
const char *VlHtmlGetProjName(void);
/* Forgets the project URL so the next VlHtmlNew installs the built-in default
 * again. Exists for tests and embedders that run several projects. */
void VlHtmlResetProjName(void);

/* Records: zeroed on creation; the deleters free every owned string and list. */
VlHtmlDoc *VlHtmlNew(void);
VlHtmlForm *VlHtmlFormNew(void);
VlHtmlAnch *VlHtmlAnchNew(void);
VlHtmlSite *VlHtmlSiteNew(void);
VlHtmlFormElement *VlHtmlFormElementNew(void);
void VlHtmlDelete(VlHtmlDoc *doc);
void VlHtmlFormDelete(VlHtmlForm *form);
void VlHtmlAnchDelete(VlHtmlAnch *anchor);
void VlHtmlSiteDelete(VlHtmlSite *site);
void VlHtmlFormElementDelete(VlHtmlFormElement *element);
/* Puts a copy of value (null: none) in a string field of a record whose store
 * is given (null for a record made on its own), releasing what the field held;
 * code outside the page changes a record's strings this way. */
void VlHtmlSetString(VlHtmlStore *store, char **field, const char *value);

/* Accessors. Names marked "field" are the stored strings, the others new ones. */
char *VlHtmlGetName(VlHtmlDoc *doc);             /* field */
char *VlHtmlGetModName(VlHtmlDoc *doc);          /* field */
char *VlHtmlFormGetName(VlHtmlForm *form);       /* short name */
char *VlHtmlAnchGetName(VlHtmlAnch *anchor);     /* short name */
char *VlHtmlFormGetFuncName(VlHtmlForm *form);   /* "F" + short name */
char *VlHtmlAnchGetFuncName(VlHtmlAnch *anchor); /* "A" + short name */
char *VlHtmlFormGetFullName(VlHtmlForm *form);   /* field; null when empty */
char *VlHtmlAnchGetFullName(VlHtmlAnch *anchor); /* field; null when empty */

/* Splits "<short>__<type><rest>" at the first "__"; 1 on success, 0 when an
 * argument is null or there is no "__". */
int VlHtmlSplitFuncName(const char *fullName, char **restOut, char *typeOut, char **shortOut);

/* Lookups by short name; an unnamed record matches when its action (url)
 * equals the name asked for. */
VlHtmlForm *VlHtmlGetFormByName(VlHtmlDoc *doc, const char *shortName);
VlHtmlAnch *VlHtmlGetAnchByName(VlHtmlDoc *doc, const char *shortName);
/* From VlHtmlBeginNameLookups(doc) to VlHtmlEndNameLookups(), the two
 * lookups above answer for doc from an index made at the first lookup, with
 * the same result as the walk of its list, in constant time: for a reader
 * that looks up many names on a page while neither the page nor its forms
 * and anchors change (the module reader). One page at a time; a new begin
 * replaces the old. */
void VlHtmlBeginNameLookups(VlHtmlDoc *doc);
void VlHtmlEndNameLookups(void);
int VlHtmlIsUniqueFormName(VlHtmlDoc *doc, const char *shortName);
int VlHtmlIsUniqueAnchName(VlHtmlDoc *doc, const char *shortName);
SutList *VlHtmlGetForms(VlHtmlDoc *doc);                           /* new strings */
SutList *VlHtmlGetAnchs(VlHtmlDoc *doc);                           /* new strings */
SutList *VlHtmlGetSites(VlHtmlDoc *doc);                           /* the names themselves */
SutList *VlHtmlGetFormElems(VlHtmlDoc *doc, const char *formName); /* the names themselves */

/* Naming. Each returns 1 and does nothing for a null argument or empty name. */
int VlHtmlFormSetName(VlHtmlDoc *doc, VlHtmlForm *form, const char *shortName);
int VlHtmlAnchSetName(VlHtmlDoc *doc, VlHtmlAnch *anchor, const char *shortName);
int VlHtmlNameForm(VlHtmlDoc *doc, const char *oldName, const char *newName);
int VlHtmlNameAnch(VlHtmlDoc *doc, const char *oldName, const char *newName);
int VlHtmlNameFormByPos(VlHtmlDoc *doc, int index, const char *newName);
int VlHtmlNameAnchByPos(VlHtmlDoc *doc, int index, const char *newName);
int VlHtmlGenFormNames(VlHtmlDoc *doc);
int VlHtmlGenAnchNames(VlHtmlDoc *doc);
int VlHtmlGenSiteNames(VlHtmlDoc *doc);
int VlSetLastSiteNumber(VlHtmlDoc *doc);
int VlHtmlSetFormURL(VlHtmlDoc *doc, VlHtmlForm *form, const char *url);
int VlHtmlSetAnchURL(VlHtmlDoc *doc, VlHtmlAnch *anchor, const char *url);
int VlHtmlMarkOrigNames(VlHtmlDoc *doc);
int VlHtmlSetName(VlHtmlDoc *doc, const char *path);

/* State. */
int VlHtmlNeedsSave(VlHtmlDoc *doc);
int VlHtmlIsChanged(VlHtmlDoc *doc);
/* Debug listing on standard error. */
void VlHtmlPrint(VlHtmlDoc *doc);

#ifdef __cplusplus
}
#endif

#endif
