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

/* Constructors: a zeroed record with the documented starting values, or
 * null when memory runs out. */
SpmMap *SpmNewMap(void);
SpmSPBind *SpmNewSPBind(void);
SpmColBind *SpmNewColBind(void);
SpmCallbackBind *SpmNewCallbackBind(void);
SpmArgBind *SpmNewArgBind(void);

/* Appends a new bind to the context map, making the map first when there is
 * none. */
SpmSPBind *SpmAddSPBind(void);
SpmColBind *SpmAddColBindToSP(SpmSPBind *bind);
SpmCallbackBind *SpmAddCallbackBindToSP(SpmSPBind *bind);
SpmArgBind *SpmAddArgBindToSP(SpmSPBind *bind);
/* A free-standing bind with that many column, callback and argument binds. */
SpmSPBind *SpmCreateListsForSpmBind(int numCol, int numCall, int numArg);
/* The same, but the bind is appended to the context map. */
SpmSPBind *SpmAddSPBindAndCreateLists(int numCol, int numCall, int numArg);

/* Destructors: free the record and all it owns, set the holder to null and
 * return 0; -1 when the holder is already null. */
int SpmDestroyMap(SpmMap **mapPtr);
int SpmDestroySPBind(SpmSPBind **bindPtr);
int SpmDestroyColBind(SpmColBind **colPtr);
int SpmDestroyCallbackBind(SpmCallbackBind **callPtr);
int SpmDestroyArgBind(SpmArgBind **argPtr);

/* Interface names of a map: 0 when the list changed, 1 when nothing was done.
 * Renaming moves the interface to the end of the list. */
int SpmAddIface(SpmMap *map, const char *name);
int SpmRemoveIface(SpmMap *map, const char *name);
int SpmRenameIface(SpmMap *map, const char *oldName, const char *newName);

/* Lookups in the context map. */
SpmSPBind *SpmGetMapByName(const char *servername, const char *dbname, const char *name);
SpmSPBind *WbeGetSPBindFromName(const char *altName);
/* A new list (sharing its items) of the applied binds run from this callback
 * of this widget; null without a map context. */
SutList *AcGetBindings(const char *interface, const char *swidget, const char *callbackName);
SpmColBind *BeGetTemplateColBind(SutList *colBinds);
int RdHasDetail(SpmColBind *col);
/* The kind of request (insert, update, delete); no caller tells them apart,
 * so every bind is kind 0. */
int SpmGetKindOfSP(SpmSPBind *bind);

/* Copies src into dest, whose column and argument counts must match; 1 on
 * success, 0 on failure. The copy's widgets are cleared. */
int SpmCopy(SpmSPBind *dest, SpmSPBind *src);
int SgeSpmCopy(SpmSPBind *dest, SpmSPBind *src);
SpmSPBind *SpmDup(SpmSPBind *src);
/* The base name less one trailing digit, followed by the first number that
 * gives an altName no bind of the context map carries. */
char *WbeGetUniqueSPName(const char *base);
/* A changed, applied copy of src bound to another widget, not in the map. */
SpmSPBind *PjDuplicateObjBinding(SpmSPBind *src, const char *interface, const char *swidget);
void AcCopyActBind(SpmCallbackBind *dest, SpmCallbackBind *src);
int WbeMarkSpMapAsChanged(SpmSPBind *bind);
/* Destroys a bind of the context map and takes it out of the map: 1 (also
 * for a null holder), or 0 when the bind is not in the map. */
int WbeDestroySpmSPBind(SpmSPBind **bindPtr);
/* Stable in-place sort by the first callback bind's callOrder. */
void AcSortBindings(SutList *binds);

/* The process's current map and the verified flag. */
SpmMap *SpmGetMapContext(void);
SpmMap *SpmSetMapContext(SpmMap *map); /* returns the previous map, not freed */
int SpmIsMapVerified(void);
void SpmMapVerified(void);
/* Clears the verified flag: reading a map file does this, and tests and
 * embedders use it for a clean slate. */
void SpmResetMapVerified(void);

#ifdef __cplusplus
}
#endif

#endif
