/* The binding map: the database requests (stored procedures and SQL objects)
 * of a project with the widgets their result columns feed, the callbacks
 * that run them and their arguments. One map is current per process. */
#ifndef VELMORA_MAPS_MAP_H
#define VELMORA_MAPS_MAP_H

#include "util/list.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SpmColBind {
    char *swidget;
    char *interface;
    int order;
    char *tableName;
    int tableId;
    char *columnName;
    int columnId;
    char *dataType;
    int dataTypeId;
    int dataSize;
    char *popCallbackName;
    char *clientData;
    int isChanged;
    int spare; /* not stored; copied */
    int group;
    int computeId;
    int computeColumn;
    SutList *options;
} SpmColBind;

typedef struct SpmCallbackBind {
    char *swidget;
    char *interface;
    char *callbackName;
    int isWritten;
    char *initCode;
    char *finalCode;
    char *useDialog; /* "USE_IT", "NO_USE", "NO_WP" */
    long maxRows;
    int isChanged;
    int transientC;
    int callOrder;
    char *indexFlag; /* "ROW_INDEX", "WIDGET_INDEX", ... */
    char *indexValue;
    char *queueFile; /* "NO_QUEUE_FILE", "QUEUE_TO_FILE" */
    SutList *options;
} SpmCallbackBind;

typedef struct SpmArgBind {
    char *argName;
    int argId;
    char *dataType;
    int dataTypeId;
    int dataSize;
    char *initCode;
    int isChanged;
    int spare; /* not stored */
    SutList *options;
} SpmArgBind;

typedef struct SpmSPBind {
    char *servername;
    int serverid;
    char *dbname;
    int dbid;
    char *name;
    int id; /* request kind */
    char *altName;
    SutList *colBinds;  /* of SpmColBind */
    SutList *callBinds; /* of SpmCallbackBind; the first is the activator */
    SutList *argBinds;  /* of SpmArgBind */
    void *editor;
    int isChanged;
    int beenApplied;
    char *cacheFlag; /* "NO_CACHE", "TO_CACHE", "FROM_CACHE" */
    char *cacheKey;
    char *indexKey;
    SutList *sqlFrags;
    int dbVendor;
    SutList *options;
} SpmSPBind;

typedef struct SpmMap {
    SutList *spBinds;    /* of SpmSPBind, owned */
    SutList *interfaces; /* of owned strings */
    long spare;          /* zero, unused */
} SpmMap;

#ifdef __cplusplus
}
#endif

#endif
