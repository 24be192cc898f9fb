/* Map upkeep: keeps the binding map and the activator code of the modules in
 * step: regenerating the code of changed binds, installing one bind's code,
 * comparing binds, unique names, and following deleted page elements. */
#ifndef VELMORA_BINDCODE_UPKEEP_H
#define VELMORA_BINDCODE_UPKEEP_H

#include "maps/map.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One request run by a callback: the bind, its callback bind that runs from
 * the callback, and the generated code of that request (owned, or null). */
typedef struct SwdMatchPCall {
    SpmSPBind *bind;
    SpmCallbackBind *callBind;
    char *code;
} SwdMatchPCall;

/* Hands every bind's editor back, destroys the map context and leaves the
 * process without a map. Returns 0. */
int SwdResetTheMap(void);

/* Regenerates the callback code of every changed bind (clearing all change
 * flags) and installs it in the modules; returns the number of binds. */
int SwdWriteAllMapChanges(void);
/* Rewrites the code of the callbacks of oldBind as if newBind (or nothing)
 * stood in its place in the map; the map is left as it was. 0 when done, 1
 * when oldBind is not in the map. The caller keeps both binds. */
int SwdInstallThisMapsCode(SpmSPBind *newBind, SpmSPBind *oldBind);
/* Validates every bind and writes all changes: 0, or 1 when refused or there
 * is no map. */
int SwdInitialVerifyMap(void);
int SwdUpdateBes(void);

/* A new list of the applied binds whose callback bind runs from the same
 * interface, widget and callback as callBind, in map order. */
SutList *SwdGetListOfMatchPCalls(SpmCallbackBind *callBind, SpmSPBind *bind);
/* Frees the entries and their code, not the binds; 0, or -1 for null. */
int SwdDestroyMatchPCallList(SutList *list);
/* A new list (sharing its items) of the binds of the map that name the same
 * request (server, database and name) as bind. */
SutList *SwdGetMatchingSps(SpmSPBind *bind);

/* 1 when both binds name the same request and fill the same columns and
 * arguments the same way. */
int SwdCompareSPBinds(SpmSPBind *a, SpmSPBind *b);
/* The first other bind of the map naming the same request as an applied bind. */
SpmSPBind *SwdGetRefBind(SpmSPBind *bind);
/* base, or base followed by 1, 2, ... until no item of names equals it. */
char *SwdGetUnique(const char *base, SutList *names);

/* Installs the code text as the code of the anchor ("A...") or form ("F...")
 * callback; 1 when an argument is missing or empty, else 0. */
int SwdInstallThisCallbackCode(const char *interface, const char *widget, const char *callbackName,
                               const char *code);
int SwdRemoveThisCallbackCode(const char *interface, const char *widget, const char *callbackName);
/* 0 for no text, 1 for generated binding code, 2 for the user's own code. */
int getKindOfCallbackCode(const char *code);

/* Notes whether the project's map file exists and that the map is being read; 1. */
int SwdProjectFileExist(const char *projectPath);
void SwdMapBeingRead(void);
int SwdIsMapBeingRead(void);
/* A copy of path with a final "/.uxrc" made "/.dbuxrc". */
char *SwdCheckFileDefault(const char *path);

/* Follows the deletion of a page element (callback name "F" form, "A"
 * anchor, "S" site, "E" form element): callback binds run from it are
 * removed, columns shown in it unbound, arguments read from it reset, and
 * binds left without callbacks dropped. Returns the number of binds left. */
int SwdUpdateMapDeletedSwidget(const char *widget, const char *interface, const char *callbackName,
                               const char *element);

#ifdef __cplusplus
}
#endif

#endif
