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
    SutList *errors;    /* of VlReqError */
    SutList *options;   /* the request's option lines */
    int groupCount;
    int errorCode;
    int returnCode;
    int affectedRowCount;
} VlRequest;

#ifdef __cplusplus
}
#endif

#endif
