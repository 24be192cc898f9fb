// The binding map model: construction and destruction of the map and its bind
// records, the process's current map, the interface list, lookups, copying of
// binds and the naming of new binds. The map file and the binding code build
// on these records.
#include "maps/map.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>
#include <utility>

#include "util/heap.hpp"
#include "util/strings.h"

namespace {

SpmMap *theMapContext = nullptr;
int mapVerified = 0;

// Replaces an owned string field by a copy of src (null stays null).
void replaceString(char **field, const char *src) {
    char *copy = StrDup(src);
    free(*field);
    *field = copy;
}

// A new list holding copies of the strings of src; null for null.
SutList *copyStringList(const SutList *src) {
    if (!src) return nullptr;
    SutList *copy = SutNewList();
    if (!copy) return nullptr;
    for (int i = 0; i < SutSizList(src); i++)
        SutAddList(copy, StrDup(static_cast<const char *>(SutGetNList(src, i))));
    return copy;
}

void replaceStringList(SutList **field, const SutList *src) {
    SutList *copy = copyStringList(src);
    SutDestroyList(*field);
    *field = copy;
}

// Number of items of a child list; an absent list holds none.
int countOf(const SutList *list) {
    return list ? SutSizList(list) : 0;
}

// Makes a child record, creates the owning list if needed and appends it.
template <typename T> T *addChild(SutList **list, T *(*make)(), int (*destroy)(T **)) {
    T *child = make();
    if (!child) return nullptr;
    if (!*list) *list = SutNewList();
    if (!SutAddList(*list, child)) {
        destroy(&child);
        return nullptr;
    }
    return child;
}

// Fills a bind with the given numbers of children; 0 when one fails.
int fillLists(SpmSPBind *bind, int numCol, int numCall, int numArg) {
    for (int i = 0; i < numCol; i++)
        if (!SpmAddColBindToSP(bind)) return 0;
    for (int i = 0; i < numCall; i++)
        if (!SpmAddCallbackBindToSP(bind)) return 0;
    for (int i = 0; i < numArg; i++)
        if (!SpmAddArgBindToSP(bind)) return 0;
    return 1;
}

// Destroys every item of an owned list of records, then the list itself.
template <typename T> void destroyRecords(SutList **list, int (*destroy)(T **)) {
    for (int i = 0; i < SutSizList(*list); i++) {
        T *item = static_cast<T *>(SutGetNList(*list, i));
        destroy(&item);
    }
    SutDeleteList(*list);
    *list = nullptr;
}

SpmCallbackBind *firstCallBind(const SpmSPBind *bind) {
    return bind ? static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, 0)) : nullptr;
}

} // namespace

extern "C" {

SpmMap *SpmNewMap(void) {
    return static_cast<SpmMap *>(calloc(1, sizeof(SpmMap)));
}

SpmSPBind *SpmNewSPBind(void) {
    auto *bind = static_cast<SpmSPBind *>(calloc(1, sizeof(SpmSPBind)));
    if (!bind) return nullptr;
    bind->servername = strdup("");
    bind->dbname = strdup("");
    bind->cacheFlag = strdup("NO_CACHE");
    if (!bind->servername || !bind->dbname || !bind->cacheFlag) SpmDestroySPBind(&bind);
    return bind;
}

SpmColBind *SpmNewColBind(void) {
    auto *col = static_cast<SpmColBind *>(calloc(1, sizeof(SpmColBind)));
    if (!col) return nullptr;
    col->dataTypeId = -1;
    col->dataSize = -1;
    col->group = 1;
    return col;
}

SpmCallbackBind *SpmNewCallbackBind(void) {
    auto *call = static_cast<SpmCallbackBind *>(calloc(1, sizeof(SpmCallbackBind)));
    if (!call) return nullptr;
    call->useDialog = strdup("NO_WP");
    call->maxRows = -1;
    call->indexFlag = strdup("ROW_INDEX");
    call->queueFile = strdup("NO_QUEUE_FILE");
    if (!call->useDialog || !call->indexFlag || !call->queueFile) SpmDestroyCallbackBind(&call);
    return call;
}

SpmArgBind *SpmNewArgBind(void) {
    auto *arg = static_cast<SpmArgBind *>(calloc(1, sizeof(SpmArgBind)));
    if (!arg) return nullptr;
    arg->dataTypeId = -1;
    arg->dataSize = -1;
    arg->initCode = strdup("\"\""); // an empty string literal of the generated code
    if (!arg->initCode) SpmDestroyArgBind(&arg);
    return arg;
}

SpmSPBind *SpmAddSPBind(void) {
    if (!theMapContext) {
        theMapContext = SpmNewMap();
        if (!theMapContext) return nullptr;
    }
    SpmSPBind *bind = SpmNewSPBind();
    if (!bind) return nullptr;
    if (!theMapContext->spBinds) theMapContext->spBinds = SutNewList();
    if (!SutAddList(theMapContext->spBinds, bind)) {
        SpmDestroySPBind(&bind);
        return nullptr;
    }
    return bind;
}

SpmColBind *SpmAddColBindToSP(SpmSPBind *bind) {
    return bind ? addChild(&bind->colBinds, SpmNewColBind, SpmDestroyColBind) : nullptr;
}

SpmCallbackBind *SpmAddCallbackBindToSP(SpmSPBind *bind) {
    return bind ? addChild(&bind->callBinds, SpmNewCallbackBind, SpmDestroyCallbackBind) : nullptr;
}

SpmArgBind *SpmAddArgBindToSP(SpmSPBind *bind) {
    return bind ? addChild(&bind->argBinds, SpmNewArgBind, SpmDestroyArgBind) : nullptr;
}

SpmSPBind *SpmCreateListsForSpmBind(int numCol, int numCall, int numArg) {
    SpmSPBind *bind = SpmNewSPBind();
    if (!bind) return nullptr;
    if (!fillLists(bind, numCol, numCall, numArg)) {
        SpmDestroySPBind(&bind);
        return nullptr;
    }
    return bind;
}

SpmSPBind *SpmAddSPBindAndCreateLists(int numCol, int numCall, int numArg) {
    SpmSPBind *bind = SpmAddSPBind();
    if (!bind) return nullptr;
    if (!fillLists(bind, numCol, numCall, numArg)) {
        // The half-built bind was appended last: take it out of the map again.
        if (SutGetNList(theMapContext->spBinds, SutSizList(theMapContext->spBinds) - 1) == bind)
            SutRemoveList(theMapContext->spBinds);
        SpmDestroySPBind(&bind);
        return nullptr;
    }
    return bind;
}

int SpmDestroyMap(SpmMap **mapPtr) {
    if (!mapPtr || !*mapPtr) return -1;
    SpmMap *map = *mapPtr;
    destroyRecords(&map->spBinds, SpmDestroySPBind);
    SutDestroyList(map->interfaces);
    free(map);
    *mapPtr = nullptr;
    return 0;
}

int SpmDestroySPBind(SpmSPBind **bindPtr) {
    if (!bindPtr || !*bindPtr) return -1;
    SpmSPBind *bind = *bindPtr;
    free(bind->servername);
    free(bind->dbname);
    free(bind->name);
    free(bind->altName);
    free(bind->cacheFlag);
    free(bind->cacheKey);
    free(bind->indexKey);
    SutDestroyList(bind->sqlFrags);
    SutDestroyList(bind->options);
    destroyRecords(&bind->colBinds, SpmDestroyColBind);
    destroyRecords(&bind->callBinds, SpmDestroyCallbackBind);
    destroyRecords(&bind->argBinds, SpmDestroyArgBind);
    free(bind);
    *bindPtr = nullptr;
    return 0;
}

int SpmDestroyColBind(SpmColBind **colPtr) {
    if (!colPtr || !*colPtr) return -1;
    SpmColBind *col = *colPtr;
    free(col->swidget);
    free(col->interface);
    free(col->tableName);
    free(col->columnName);
    free(col->dataType);
    free(col->popCallbackName);
    free(col->clientData);
    SutDestroyList(col->options);
    free(col);
    *colPtr = nullptr;
    return 0;
}

int SpmDestroyCallbackBind(SpmCallbackBind **callPtr) {
    if (!callPtr || !*callPtr) return -1;
    SpmCallbackBind *call = *callPtr;
    free(call->swidget);
    free(call->interface);
    free(call->callbackName);
    free(call->initCode);
    free(call->finalCode);
    free(call->useDialog);
    free(call->indexFlag);
    free(call->indexValue);
    free(call->queueFile);
    SutDestroyList(call->options);
    free(call);
    *callPtr = nullptr;
    return 0;
}

int SpmDestroyArgBind(SpmArgBind **argPtr) {
    if (!argPtr || !*argPtr) return -1;
    SpmArgBind *arg = *argPtr;
    free(arg->argName);
    free(arg->dataType);
    free(arg->initCode);
    SutDestroyList(arg->options);
    free(arg);
    *argPtr = nullptr;
    return 0;
}

int SpmAddIface(SpmMap *map, const char *name) {
    if (!map || !name) return 1;
    for (int i = 0; i < SutSizList(map->interfaces); i++)
        if (strcmp(static_cast<const char *>(SutGetNList(map->interfaces, i)), name) == 0) return 1;
    if (!map->interfaces) map->interfaces = SutNewList();
    char *copy = strdup(name);
    if (!copy || !SutAddList(map->interfaces, copy)) {
        free(copy);
        return 1;
    }
    return 0;
}

int SpmRemoveIface(SpmMap *map, const char *name) {
    if (!map || !name) return 1;
    for (int i = 0; i < SutSizList(map->interfaces); i++) {
        if (strcmp(static_cast<const char *>(SutGetNList(map->interfaces, i)), name) == 0) {
            free(SutRemoveNList(map->interfaces, i));
            return 0;
        }
    }
    return 1;
}

int SpmRenameIface(SpmMap *map, const char *oldName, const char *newName) {
    if (!map || !oldName || !newName) return 1;
    for (int i = 0; i < SutSizList(map->interfaces); i++) {
        if (strcmp(static_cast<const char *>(SutGetNList(map->interfaces, i)), oldName) == 0) {
            free(SutRemoveNList(map->interfaces, i));
            SutAddList(map->interfaces, strdup(newName));
            return 0;
        }
    }
    return 1;
}

SpmSPBind *SpmGetMapByName(const char *servername, const char *dbname, const char *name) {
    if (!servername || !dbname || !name || !theMapContext) return nullptr;
    SutList *binds = theMapContext->spBinds;
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(binds, i));
        if (bind && bind->servername && bind->dbname && bind->name &&
            strcmp(bind->servername, servername) == 0 && strcmp(bind->dbname, dbname) == 0 &&
            strcmp(bind->name, name) == 0)
            return bind;
    }
    return nullptr;
}

SpmSPBind *WbeGetSPBindFromName(const char *altName) {
    if (!theMapContext) return nullptr;
    SutList *binds = theMapContext->spBinds;
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(binds, i));
        if (bind && StrCmp(bind->altName, altName) == 0) return bind;
    }
    return nullptr;
}

SutList *AcGetBindings(const char *interface, const char *swidget, const char *callbackName) {
    if (!theMapContext) return nullptr;
    SutList *found = SutNewList();
    SutList *binds = theMapContext->spBinds;
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(binds, i));
        SpmCallbackBind *call = firstCallBind(bind);
        if (!call || !bind->beenApplied) continue;
        if (StrCmp(call->interface, interface) == 0 && StrCmp(call->swidget, swidget) == 0 &&
            StrCmp(call->callbackName, callbackName) == 0)
            SutAddList(found, bind);
    }
    return found;
}

SpmColBind *BeGetTemplateColBind(SutList *colBinds) {
    for (int i = 0; i < SutSizList(colBinds); i++) {
        auto *col = static_cast<SpmColBind *>(SutGetNList(colBinds, i));
        if (col && col->interface) return col;
    }
    return nullptr;
}

int RdHasDetail(SpmColBind *col) {
    if (!col) return 0;
    return col->popCallbackName || col->clientData || col->order != 0 ||
           SutSizList(col->options) > 0;
}

// The kinds "insert", "update" and "delete" exist in name only.
int SpmGetKindOfSP(SpmSPBind *) {
    return 0;
}

int SpmCopy(SpmSPBind *dest, SpmSPBind *src) {
    if (!dest || !src) return 0;
    if (countOf(dest->colBinds) != countOf(src->colBinds) ||
        countOf(dest->argBinds) != countOf(src->argBinds)) {
        printf("Error - Source colbinds/argbinds don't match destination.\n");
        return 0;
    }
    int srcCalls = countOf(src->callBinds);
    while (countOf(dest->callBinds) < srcCalls)
        if (!SpmAddCallbackBindToSP(dest)) return 0;
    // The position advances while the list shrinks, so only every other
    // surplus callback bind is removed; old maps depend on this.
    for (int pos = srcCalls; pos < countOf(dest->callBinds); pos++) {
        auto *call = static_cast<SpmCallbackBind *>(SutRemoveNList(dest->callBinds, pos));
        SpmDestroyCallbackBind(&call);
    }

    replaceString(&dest->servername, src->servername);
    replaceString(&dest->dbname, src->dbname);
    replaceString(&dest->name, src->name);
    replaceString(&dest->altName, src->altName);
    replaceString(&dest->cacheFlag, src->cacheFlag);
    replaceString(&dest->cacheKey, src->cacheKey);
    replaceString(&dest->indexKey, src->indexKey);
    replaceStringList(&dest->sqlFrags, src->sqlFrags);
    replaceStringList(&dest->options, src->options);
    dest->dbVendor = src->dbVendor;
    dest->serverid = src->serverid;
    dest->dbid = src->dbid;
    dest->id = src->id;
    dest->editor = src->editor;
    dest->isChanged = src->isChanged;
    dest->beenApplied = src->beenApplied;

    for (int i = 0; i < countOf(src->colBinds); i++) {
        auto *s = static_cast<SpmColBind *>(SutGetNList(src->colBinds, i));
        auto *d = static_cast<SpmColBind *>(SutGetNList(dest->colBinds, i));
        if (!s || !d) continue;
        replaceString(&d->interface, s->interface);
        replaceString(&d->tableName, s->tableName);
        replaceString(&d->columnName, s->columnName);
        replaceString(&d->dataType, s->dataType);
        replaceString(&d->popCallbackName, s->popCallbackName);
        replaceString(&d->clientData, s->clientData);
        d->order = s->order;
        d->tableId = s->tableId;
        d->columnId = s->columnId;
        d->dataTypeId = s->dataTypeId;
        d->dataSize = s->dataSize;
        d->isChanged = s->isChanged;
        d->spare = s->spare;
        d->group = s->group;
        d->computeId = s->computeId;
        d->computeColumn = s->computeColumn;
        replaceStringList(&d->options, s->options);
        // A copy feeds no widget until its caller binds it.
        free(d->swidget);
        d->swidget = nullptr;
    }

    for (int i = 0; i < srcCalls; i++) {
        auto *s = static_cast<SpmCallbackBind *>(SutGetNList(src->callBinds, i));
        auto *d = static_cast<SpmCallbackBind *>(SutGetNList(dest->callBinds, i));
        if (!s || !d) continue;
        replaceString(&d->interface, s->interface);
        replaceString(&d->callbackName, s->callbackName);
        replaceString(&d->indexFlag, s->indexFlag);
        replaceString(&d->indexValue, s->indexValue);
        replaceString(&d->queueFile, s->queueFile);
        replaceString(&d->initCode, s->initCode);
        replaceString(&d->finalCode, s->finalCode);
        replaceString(&d->useDialog, s->useDialog);
        d->isWritten = s->isWritten;
        d->maxRows = s->maxRows;
        d->isChanged = s->isChanged;
        d->transientC = s->transientC;
        d->callOrder = s->callOrder;
        replaceStringList(&d->options, s->options);
        free(d->swidget);
        d->swidget = nullptr;
    }

    for (int i = 0; i < countOf(src->argBinds); i++) {
        auto *s = static_cast<SpmArgBind *>(SutGetNList(src->argBinds, i));
        auto *d = static_cast<SpmArgBind *>(SutGetNList(dest->argBinds, i));
        if (!s || !d) continue;
        replaceString(&d->argName, s->argName);
        replaceString(&d->dataType, s->dataType);
        replaceString(&d->initCode, s->initCode);
        d->argId = s->argId;
        d->dataTypeId = s->dataTypeId;
        d->dataSize = s->dataSize;
        d->isChanged = s->isChanged;
        d->spare = s->spare;
        replaceStringList(&d->options, s->options);
    }
    return 1;
}

int SgeSpmCopy(SpmSPBind *dest, SpmSPBind *src) {
    return SpmCopy(dest, src);
}

SpmSPBind *SpmDup(SpmSPBind *src) {
    if (!src) return nullptr;
    SpmSPBind *copy = SpmCreateListsForSpmBind(countOf(src->colBinds), countOf(src->callBinds),
                                               countOf(src->argBinds));
    if (!copy) return nullptr;
    if (!SpmCopy(copy, src)) {
        SpmDestroySPBind(&copy);
        return nullptr;
    }
    return copy;
}

char *WbeGetUniqueSPName(const char *base) {
    if (!base) return nullptr;
    if (!theMapContext) return strdup(base);
    std::string stem(base);
    if (!stem.empty() && stem.back() >= '0' && stem.back() <= '9') stem.pop_back();

    // One walk marks the numbers n for which stem + n is taken. With m binds
    // the answer is at most m + 1, so larger numbers need no mark, and no
    // name is copied or hashed.
    SutList *binds = theMapContext->spBinds;
    const size_t limit = static_cast<size_t>(SutSizList(binds)) + 1;
    std::vector<bool> taken(limit + 1, false);
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(binds, i));
        const char *name = bind ? bind->altName : nullptr;
        if (!name || strncmp(name, stem.data(), stem.size()) != 0) continue;
        const char *digits = name + stem.size();
        // Only the decimal form that "%d" writes: no sign, no leading zero.
        if (*digits < '1' || *digits > '9') continue;
        size_t n = 0;
        const char *d = digits;
        for (; *d >= '0' && *d <= '9' && n <= limit; d++)
            n = n * 10 + static_cast<size_t>(*d - '0');
        if (*d == '\0' && n <= limit) taken[n] = true;
    }
    size_t n = 1;
    while (taken[n])
        n++;
    return VlHeapCopy(stem + std::to_string(n));
}

SpmSPBind *PjDuplicateObjBinding(SpmSPBind *src, const char *interface, const char *swidget) {
    SpmSPBind *copy = SpmDup(src);
    if (!copy) return nullptr;
    SpmCallbackBind *call = firstCallBind(copy);
    if (!call) {
        SpmDestroySPBind(&copy);
        return nullptr;
    }
    copy->isChanged = 1;
    copy->beenApplied = 1;
    copy->editor = nullptr;
    replaceString(&call->interface, interface);
    replaceString(&call->swidget, swidget);
    char *unique = WbeGetUniqueSPName(src->altName);
    free(copy->altName);
    copy->altName = unique;
    return copy;
}

void AcCopyActBind(SpmCallbackBind *dest, SpmCallbackBind *src) {
    if (!dest || !src) return;
    dest->callOrder = src->callOrder;
    replaceString(&dest->initCode, src->initCode);
    replaceString(&dest->finalCode, src->finalCode);
}

int WbeMarkSpMapAsChanged(SpmSPBind *bind) {
    if (!bind) return 1;
    for (int i = 0; i < SutSizList(bind->callBinds); i++) {
        auto *call = static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, i));
        if (call) call->isChanged = 1;
    }
    return 1;
}

int WbeDestroySpmSPBind(SpmSPBind **bindPtr) {
    if (!bindPtr || !*bindPtr) return 1;
    if (!theMapContext) {
        printf("Error - The Project map has somehow been destroyed.  Save your work!\n");
        return 0;
    }
    int pos = SutGetPosFromItem(theMapContext->spBinds, *bindPtr);
    if (pos < 0) return 0;
    SutRemoveNList(theMapContext->spBinds, pos);
    SpmDestroySPBind(bindPtr);
    return 1;
}

void AcSortBindings(SutList *binds) {
    int count = SutSizList(binds);
    if (count < 2) return;
    void **items = binds->items;
    for (int i = 1; i < count; i++) {
        for (int j = count - 1; j >= i; j--) {
            SpmCallbackBind *later = firstCallBind(static_cast<SpmSPBind *>(items[j]));
            SpmCallbackBind *earlier = firstCallBind(static_cast<SpmSPBind *>(items[j - 1]));
            // A missing bind or activator ends the sort where it stands.
            if (!later || !earlier) return;
            if (later->callOrder < earlier->callOrder) std::swap(items[j - 1], items[j]);
        }
    }
}

SpmMap *SpmGetMapContext(void) {
    return theMapContext;
}

SpmMap *SpmSetMapContext(SpmMap *map) {
    SpmMap *previous = theMapContext;
    theMapContext = map;
    return previous;
}

int SpmIsMapVerified(void) {
    return mapVerified;
}
void SpmMapVerified(void) {
    mapVerified = 1;
}
void SpmResetMapVerified(void) {
    mapVerified = 0;
}

} // extern "C"
