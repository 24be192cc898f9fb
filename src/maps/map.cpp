// The binding map model: construction and destruction of the map and its bind
// records, the process's current map, the interface list, lookups, copying of
// binds and the naming of new binds. The map file and the binding code build
// on these records.
#include "maps/map.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "maps/fields.hpp"
#include "util/heap.hpp"
#include "util/strings.h"

namespace {

SpmMap *theMapContext = nullptr;
int mapVerified = 0;

// Number of items of a child list; an absent list holds none.
int CountOf(const SutList *list) {
    return list ? SutSizList(list) : 0;
}

// Makes a child record, creates the owning list if needed and appends it.
template <typename T> T *AddChild(SutList **list, T *(*make)(), int (*destroy)(T **)) {
    T *child = make();
    if (!child) return nullptr;
    // A bind has a few records of each kind: the list starts small.
    if (!*list) *list = SutNewListSize(1);
    if (!SutAddList(*list, child)) {
        destroy(&child);
        return nullptr;
    }
    return child;
}

// Fills a bind with the given numbers of children; 0 when one fails.
int FillLists(SpmSPBind *bind, int numCol, int numCall, int numArg) {
    for (int i = 0; i < numCol; i++)
        if (!SpmAddColBindToSP(bind)) return 0;
    for (int i = 0; i < numCall; i++)
        if (!SpmAddCallbackBindToSP(bind)) return 0;
    for (int i = 0; i < numArg; i++)
        if (!SpmAddArgBindToSP(bind)) return 0;
    return 1;
}

// Releases the record in *holder with all it owns and clears the holder: 0,
// or -1 when there is none.
template <typename T> int DestroyHeld(T **holder, const BindRecordKind &kind) {
    if (!holder || !*holder) return -1;
    DestroyBindRecord(*holder, kind);
    *holder = nullptr;
    return 0;
}

SpmCallbackBind *FirstCallBind(const SpmSPBind *bind) {
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
    return bind ? AddChild(&bind->colBinds, SpmNewColBind, SpmDestroyColBind) : nullptr;
}

SpmCallbackBind *SpmAddCallbackBindToSP(SpmSPBind *bind) {
    return bind ? AddChild(&bind->callBinds, SpmNewCallbackBind, SpmDestroyCallbackBind) : nullptr;
}

SpmArgBind *SpmAddArgBindToSP(SpmSPBind *bind) {
    return bind ? AddChild(&bind->argBinds, SpmNewArgBind, SpmDestroyArgBind) : nullptr;
}

SpmSPBind *SpmCreateListsForSpmBind(int numCol, int numCall, int numArg) {
    SpmSPBind *bind = SpmNewSPBind();
    if (!bind) return nullptr;
    if (!FillLists(bind, numCol, numCall, numArg)) {
        SpmDestroySPBind(&bind);
        return nullptr;
    }
    return bind;
}

SpmSPBind *SpmAddSPBindAndCreateLists(int numCol, int numCall, int numArg) {
    SpmSPBind *bind = SpmAddSPBind();
    if (!bind) return nullptr;
    if (!FillLists(bind, numCol, numCall, numArg)) {
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
    for (int i = 0; i < SutSizList(map->spBinds); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(map->spBinds, i));
        SpmDestroySPBind(&bind);
    }
    SutDeleteList(map->spBinds);
    SutDestroyList(map->interfaces);
    free(map);
    *mapPtr = nullptr;
    return 0;
}

int SpmDestroySPBind(SpmSPBind **bindPtr) {
    return DestroyHeld(bindPtr, kSPBindKind);
}

int SpmDestroyColBind(SpmColBind **colPtr) {
    return DestroyHeld(colPtr, kColBindKind);
}

int SpmDestroyCallbackBind(SpmCallbackBind **callPtr) {
    return DestroyHeld(callPtr, kCallbackBindKind);
}

int SpmDestroyArgBind(SpmArgBind **argPtr) {
    return DestroyHeld(argPtr, kArgBindKind);
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
        SpmCallbackBind *call = FirstCallBind(bind);
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
    if (CountOf(dest->colBinds) != CountOf(src->colBinds) ||
        CountOf(dest->argBinds) != CountOf(src->argBinds)) {
        printf("Error - Source colbinds/argbinds don't match destination.\n");
        return 0;
    }
    int srcCalls = CountOf(src->callBinds);
    while (CountOf(dest->callBinds) < srcCalls)
        if (!SpmAddCallbackBindToSP(dest)) return 0;
    // The position advances while the list shrinks, so only every other
    // surplus callback bind is removed; old maps depend on this.
    for (int pos = srcCalls; pos < CountOf(dest->callBinds); pos++) {
        auto *call = static_cast<SpmCallbackBind *>(SutRemoveNList(dest->callBinds, pos));
        SpmDestroyCallbackBind(&call);
    }

    // Every field and, by position, every child record.
    CopyBindFields(dest, src, kSPBindKind);
    return 1;
}

int SgeSpmCopy(SpmSPBind *dest, SpmSPBind *src) {
    return SpmCopy(dest, src);
}

SpmSPBind *SpmDup(SpmSPBind *src) {
    if (!src) return nullptr;
    SpmSPBind *copy = SpmCreateListsForSpmBind(CountOf(src->colBinds), CountOf(src->callBinds),
                                               CountOf(src->argBinds));
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
    SpmCallbackBind *call = FirstCallBind(copy);
    if (!call) {
        SpmDestroySPBind(&copy);
        return nullptr;
    }
    copy->isChanged = 1;
    copy->beenApplied = 1;
    copy->editor = nullptr;
    VlReplaceString(&call->interface, interface);
    VlReplaceString(&call->swidget, swidget);
    char *unique = WbeGetUniqueSPName(src->altName);
    free(copy->altName);
    copy->altName = unique;
    return copy;
}

void AcCopyActBind(SpmCallbackBind *dest, SpmCallbackBind *src) {
    if (!dest || !src) return;
    dest->callOrder = src->callOrder;
    VlReplaceString(&dest->initCode, src->initCode);
    VlReplaceString(&dest->finalCode, src->finalCode);
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
            SpmCallbackBind *later = FirstCallBind(static_cast<SpmSPBind *>(items[j]));
            SpmCallbackBind *earlier = FirstCallBind(static_cast<SpmSPBind *>(items[j - 1]));
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
