/* The binding-code parser: rebuilds binds from the generated code inside activator functions. */
#ifndef VELMORA_BINDCODE_PARSER_H
#define VELMORA_BINDCODE_PARSER_H

#include "maps/map.h"
#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

/* One activator's code handed to the parser: the callback name ("F" for a
 * form, "A" for an anchor) and the function body. Both strings are owned. */
typedef struct SwdCallbackCode {
    char *callbackName;
    char *code;
} SwdCallbackCode;

/* Entry points of the module reader: every request found in the body becomes
 * an applied bind of the context map. 1, or 0 when an argument is null or
 * empty. */
int SwdParseFormCode(const char *interface, const char *widget, const char *body);
int SwdParseAnchCode(const char *interface, const char *widget, const char *body);

/* A new list of new binds, one per request found in the bodies of the list
 * of SwdCallbackCode, in body order; nothing is put into the map. */
SutList *SwdExtractMapsFromCallbacks(const char *interface, const char *widget, SutList *callbacks);

/* Reads the work call: maxRows and four new strings (server, database and
 * request name each still with their closing quote and comma, the last
 * argument with its ");"). 1, or 0 when an argument is null. */
int SwdParseWorkCall(const char *text, long *maxRows, char **servername, char **dbname, char **name,
                     char **last);

/* Readers of one construct each: they read from *pos and leave *pos where
 * the construct ends. 1 when something was read, else 0. */
int SwdParseBindName(SpmSPBind *bind, const char **pos);
int SwdParseCallDetailCode(SpmSPBind *bind, const char **pos);
int SwdParseColumnDetailCode(SpmColBind *col, const char **pos);
int SwdParseFragmentsCode(SpmSPBind *bind, const char **pos);
int SwdParseReqOptionsCode(SpmSPBind *bind, const char **pos);
int SwdParseCallOptionsCode(SpmCallbackBind *call, const char **pos);
int SwdParseColOptionsCode(SpmColBind *col, const char **pos);
int SwdParseArgOptionsCode(SpmArgBind *arg, const char **pos);

#ifdef __cplusplus
}
#endif

#endif
