/* The request record of a generated CGI program and its accessors: numbered
 * arguments unpacked from the request's options, result strings, counts and
 * error entries. */
#ifndef VELMORA_RUNTIME_REQUEST_H
#define VELMORA_RUNTIME_REQUEST_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct VlReqArg {
    char *name;
    char *value;
    int number;
    int aux1; /* further values for the runtime; start at 0 */
    int aux2;
} VlReqArg;

typedef struct VlReqError {
    int value1; /* the caller's values, stored as given */
    int value2;
    int value3;
    char *text;
    int value4;
    int value5;
} VlReqError;

typedef struct VlRequest {
    SutList *args;      /* of VlReqArg */
    SutList *strings;   /* result strings */
    SutList *rowCounts; /* integers in the item pointers */
    SutList *colCounts;
    SutList *errors;  /* of VlReqError */
    SutList *options; /* the request's option lines */
    int groupCount;
    int errorCode;
    int returnCode;
    int affectedRowCount;
} VlRequest;

/* Unpacking "Arg<i>Name" / "Arg<i>Value" options (i = 0 .. 1024, stopping at
 * the first incomplete pair) into args; both options of each pair are removed
 * from the option list. 0 on success, 1 for a null request or no options. */
int VlUnPackOdbcArgs(VlRequest *request);
/* The same, but each argument's name is the Value option and its value the
 * Name option, with number 0: kept so on purpose for the programs that rely
 * on it. */
int VlUnPackArgsFromOptions(VlRequest *request);

/* Lookups: the argument's field itself, not a copy; null when absent. */
char *VlReqGetArgByName(VlRequest *request, const char *name);
char *VlReqGetNArg(VlRequest *request, int n);
char *VlReqGetNArgName(VlRequest *request, int n);
int VlReqGetNumArgs(VlRequest *request);
SutList *VlReqGetOptionList(VlRequest *request);

/* Results: 0 on success, 1 for a null request or a negative number (the
 * record is then unchanged). */
int VlReqAppendString(VlRequest *request, const char *text);
int VlReqAppendRowCount(VlRequest *request, int n);
int VlReqAppendColCount(VlRequest *request, int n);
int VlReqSetGroupCount(VlRequest *request, int n);
int VlReqSetErrorCode(VlRequest *request, int n);
int VlReqSetReturnCode(VlRequest *request, int n);
int VlReqSetAffectedRowCount(VlRequest *request, int n);
int VlReqAppendError(VlRequest *request, int a, int b, int c, const char *text, int d, int e);

/* Releases a calloc'ed request with everything these accessors put into it
 * and its option list. The runtime that answers requests has its own
 * lifecycle; this exists for tests and embedders. */
void VlReqDelete(VlRequest *request);

#ifdef __cplusplus
}
#endif

#endif
