// Map upkeep: keeps the binding map and the activator code of the modules in
// step. Changed binds have their callbacks' code regenerated and installed in
// the module functions; deleted page elements are followed through the map;
// and the map is reset when a project is closed.
#include "bindcode/upkeep.h"

#include <stdio.h>
#include <string.h>

#include <string>
#include <string_view>
#include <unordered_set>

#include "bindcode/generator.h"
#include "maps/mapfile.h"
#include "project/callbackcode.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/strings.h"
#include "util/toolkit.hpp"

namespace {

const char kFrameHead[] = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer VlClient=NULL;\n";
const char kOldFrameHead[] = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer SgeClientData;\n";
const char kFrameBody[] = "{\n\tpSgeWorkCallData pSgeWCD;\n\n";

int mapBeingRead = 0;

SutList *Binds() {
    SpmMap *map = SpmGetMapContext();
    return map ? map->spBinds : nullptr;
}

template <typename T> T *At(SutList *list, int i) {
    return static_cast<T *>(SutGetNList(list, i));
}

bool Present(const char *s) {
    return s != nullptr;
}

bool SameRequest(const SpmSPBind *a, const SpmSPBind *b) {
    return Present(a->servername) && Present(a->dbname) && Present(a->name) &&
           Present(b->servername) && Present(b->dbname) && Present(b->name) &&
           strcmp(a->servername, b->servername) == 0 && strcmp(a->dbname, b->dbname) == 0 &&
           strcmp(a->name, b->name) == 0;
}

bool SameCallback(const SpmCallbackBind *a, const SpmCallbackBind *b) {
    return StrCmp(a->interface, b->interface) == 0 && StrCmp(a->swidget, b->swidget) == 0 &&
           StrCmp(a->callbackName, b->callbackName) == 0;
}

bool ColBindsEqual(const SpmColBind *a, const SpmColBind *b) {
    return StrCmp(a->interface, b->interface) == 0 && StrCmp(a->swidget, b->swidget) == 0 &&
           StrCmp(a->popCallbackName, b->popCallbackName) == 0 &&
           StrCmp(a->clientData, b->clientData) == 0 && a->group == b->group &&
           a->order == b->order;
}

const char *OrNull(const char *s) {
    return s ? s : "NULL";
}

std::string Joined(const char *a, const char *b, const char *c) {
    return std::string(OrNull(a)) + "|" + OrNull(b) + "|" + OrNull(c);
}

/* Clears every change flag of the bind: its own, then its argument, callback
 * and column binds'. True when any was set. */
bool TakeChanged(SpmSPBind *bind) {
    bool changed = bind->isChanged == 1;
    bind->isChanged = 0;
    for (int i = 0; i < SutSizList(bind->argBinds); i++) {
        auto *arg = At<SpmArgBind>(bind->argBinds, i);
        if (arg->isChanged == 1) changed = true;
        arg->isChanged = 0;
    }
    for (int i = 0; i < SutSizList(bind->callBinds); i++) {
        auto *call = At<SpmCallbackBind>(bind->callBinds, i);
        if (call->isChanged == 1) changed = true;
        call->isChanged = 0;
    }
    for (int i = 0; i < SutSizList(bind->colBinds); i++) {
        auto *col = At<SpmColBind>(bind->colBinds, i);
        if (col->isChanged == 1) changed = true;
        col->isChanged = 0;
    }
    return changed;
}

/* Builds the code of every request run from the callback and installs it. */
void WriteCallback(SpmCallbackBind *call, SpmSPBind *bind) {
    call->isWritten = 1;
    SutList *matches = SwdGetListOfMatchPCalls(call, bind);
    std::string text = kFrameHead;
    SwdMatchPCall *last = nullptr;
    for (int i = 0; i < SutSizList(matches); i++) {
        last = At<SwdMatchPCall>(matches, i);
        last->code = getCallbackCode(last->bind, last->callBind, 1);
        if (i > 0) text += "\n";
        if (last->code) text += last->code;
        last->callBind->isChanged = 0;
    }
    text += "\n}";
    if (last)
        SwdInstallThisCallbackCode(last->callBind->interface, last->callBind->swidget,
                                   last->callBind->callbackName, text.c_str());
    SwdDestroyMatchPCallList(matches);
}

/* Sends the code text to the form or anchor the callback name stands for; a
 * null text takes the code away. */
int DispatchCallbackCode(const char *interface, const char *widget, const char *callbackName,
                         const char *code) {
    if (callbackName[0] == 'A')
        VlProjAddHtmlAnch(interface, widget, code);
    else if (callbackName[0] == 'F')
        VlProjAddHtmlForm(interface, widget, code);
    return 0;
}

bool Empty(const char *s) {
    return !s || !*s;
}

/* Step 1 of following a deleted element: removes the callback binds run from it. */
void RemoveCallbacksOf(SpmSPBind *bind, const char *widget, const char *interface,
                       const char *callbackName) {
    for (int i = 0; i < SutSizList(bind->callBinds);) {
        auto *call = At<SpmCallbackBind>(bind->callBinds, i);
        if (!call->interface || !call->swidget || !call->callbackName ||
            strcmp(call->interface, interface) != 0 || strcmp(call->swidget, widget) != 0 ||
            strcmp(call->callbackName, callbackName) != 0) {
            i++;
            continue;
        }
        BeReturnBe(bind->editor);
        std::string callback = Joined(call->interface, call->swidget, call->callbackName);
        std::string request = Joined(bind->servername, bind->dbname, bind->name);
        char message[2048];
        snprintf(message, sizeof message,
                 VlCatGets(0, 40, "Callback %s removed from Stored Procedure/DSQL object %s\n"),
                 callback.c_str(), request.c_str());
        fprintf(stderr, "%s", message);
        call->isWritten = 0;
        SutRemoveNList(bind->callBinds, i);
        SpmDestroyCallbackBind(&call);
    }
}

/* Step 2: unbinds the columns shown in a deleted site. */
void UnbindColumnsOf(SpmSPBind *bind, const char *widget, const char *interface) {
    for (int i = 0; i < SutSizList(bind->colBinds); i++) {
        auto *col = At<SpmColBind>(bind->colBinds, i);
        if (StrCmp(col->interface, interface) != 0 || StrCmp(col->swidget, widget) != 0) continue;
        // The interactive builder shows this; the command-line engine only forms it.
        char message[1024];
        snprintf(message, sizeof message,
                 "The swidget %s%s%s bound to column %d\nof Stored Procedure/DSQL object "
                 "%s%s%s%s%s has been deleted.",
                 OrNull(interface), "|", OrNull(widget), i + 1, OrNull(bind->servername), "|",
                 OrNull(bind->dbname), "|", OrNull(bind->name));
        free(col->swidget);
        free(col->interface);
        col->swidget = nullptr;
        col->interface = nullptr;
        col->isChanged = 1;
    }
}

/* Step 3: resets the arguments read from a deleted form element. */
void ResetArgumentsOf(SpmSPBind *bind, const char *widget, const char *interface,
                      const char *element) {
    auto *first = At<SpmCallbackBind>(bind->callBinds, 0);
    if (!first || StrCmp(first->callbackName, "F") != 0 || StrCmp(first->swidget, widget) != 0 ||
        StrCmp(first->interface, interface) != 0)
        return;
    const std::string readsElement = std::string("VlGetInputValue(\"") + element + "\"";
    bool reset = false;
    for (int i = 0; i < SutSizList(bind->argBinds); i++) {
        auto *arg = At<SpmArgBind>(bind->argBinds, i);
        if (!arg->initCode || readsElement != arg->initCode) continue;
        free(arg->initCode);
        arg->initCode = StrDup("\"\"");
        arg->isChanged = 1;
        reset = true;
    }
    if (reset && bind->editor) {
        BeReset(bind->editor);
        BePopulateFromBindName(bind->editor, bind->altName);
    }
}

} // namespace

extern "C" {

int SwdResetTheMap(void) {
    SpmMap *map = SpmGetMapContext();
    if (map) {
        for (int i = 0; i < SutSizList(map->spBinds); i++) {
            auto *bind = static_cast<SpmSPBind *>(SutGetNList(map->spBinds, i));
            if (bind) BeReturnBe(bind->editor);
        }
    }
    SpmDestroyMap(&map);
    SpmSetMapContext(nullptr);
    return 0;
}

SutList *SwdGetListOfMatchPCalls(SpmCallbackBind *callBind, SpmSPBind *bind) {
    (void)bind; // the callback alone decides which requests share it
    SutList *matches = SutNewList();
    SutList *binds = Binds();
    for (int i = 0; callBind && i < SutSizList(binds); i++) {
        auto *other = At<SpmSPBind>(binds, i);
        if (!other->beenApplied) continue;
        for (int j = 0; j < SutSizList(other->callBinds); j++) {
            auto *call = At<SpmCallbackBind>(other->callBinds, j);
            if (!SameCallback(call, callBind)) continue;
            auto *entry = static_cast<SwdMatchPCall *>(calloc(1, sizeof(SwdMatchPCall)));
            entry->bind = other;
            entry->callBind = call;
            SutAddList(matches, entry);
        }
    }
    return matches;
}

int SwdDestroyMatchPCallList(SutList *list) {
    if (!list) return -1;
    for (int i = 0; i < SutSizList(list); i++) {
        auto *entry = At<SwdMatchPCall>(list, i);
        free(entry->code);
        free(entry);
    }
    return SutDeleteList(list);
}

SutList *SwdGetMatchingSps(SpmSPBind *bind) {
    SutList *matches = SutNewList();
    SutList *binds = Binds();
    for (int i = 0; bind && i < SutSizList(binds); i++)
        if (At<SpmSPBind>(binds, i) == bind || SameRequest(At<SpmSPBind>(binds, i), bind))
            SutAddList(matches, At<SpmSPBind>(binds, i));
    return matches;
}

int SwdWriteAllMapChanges(void) {
    SutList *binds = Binds();
    if (!SpmGetMapContext()) return 0;
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *bind = At<SpmSPBind>(binds, i);
        // All flags are cleared first, so the generator sees clean ones.
        if (!TakeChanged(bind)) continue;
        for (int j = 0; j < SutSizList(bind->callBinds); j++)
            WriteCallback(At<SpmCallbackBind>(bind->callBinds, j), bind);
    }
    return SutSizList(binds) < 0 ? 0 : SutSizList(binds);
}

int SwdInstallThisMapsCode(SpmSPBind *newBind, SpmSPBind *oldBind) {
    SutList *binds = Binds();
    const int pos = oldBind ? SutGetPosFromItem(binds, oldBind) : -1;
    if (pos < 0) return 1;
    SutRemoveNList(binds, pos);
    if (newBind) {
        SutAddNList(binds, pos, newBind);
        for (int i = 0; i < SutSizList(newBind->callBinds); i++) {
            auto *call = At<SpmCallbackBind>(newBind->callBinds, i);
            call->isWritten = 1;
            call->isChanged = 1;
        }
    }
    for (int i = 0; i < SutSizList(oldBind->callBinds); i++) {
        auto *call = At<SpmCallbackBind>(oldBind->callBinds, i);
        SutList *matches = SwdGetListOfMatchPCalls(call, oldBind);
        if (SutSizList(matches) == 0) {
            // The old bind was the callback's only request: its code goes.
            SwdRemoveThisCallbackCode(call->interface, call->swidget, call->callbackName);
        } else {
            for (int j = 0; j < SutSizList(matches); j++)
                At<SwdMatchPCall>(matches, j)->callBind->isChanged = 1;
        }
        SwdDestroyMatchPCallList(matches);
    }
    SwdWriteAllMapChanges();
    if (newBind) SutRemoveNList(binds, pos);
    SutAddNList(binds, pos, oldBind);
    return 0;
}

int SwdInitialVerifyMap(void) {
    if (!SpmGetMapContext()) return 1;
    SutList *binds = Binds();
    for (int i = 0; i < SutSizList(binds); i++) {
        SutList *matching = SwdGetMatchingSps(At<SpmSPBind>(binds, i));
        const int valid = SgeValidateProcedure(matching);
        SutDeleteList(matching);
        if (!valid) {
            VlPrintError("\nData Object Refresh was cancelled by the user.\n");
            return 1;
        }
    }
    WbRefreshChangedBindEditors();
    SwdWriteAllMapChanges();
    return 0;
}

int SwdUpdateBes(void) {
    SutList *binds = Binds();
    for (int i = 0; i < SutSizList(binds); i++)
        BeRefreshSites(At<SpmSPBind>(binds, i)->editor);
    return 0;
}

int SwdCompareSPBinds(SpmSPBind *a, SpmSPBind *b) {
    if (!a || !b || !SameRequest(a, b)) return 0;
    if (SutSizList(a->colBinds) != SutSizList(b->colBinds) ||
        SutSizList(a->argBinds) != SutSizList(b->argBinds))
        return 0;
    for (int i = 0; i < SutSizList(a->colBinds); i++)
        if (!ColBindsEqual(At<SpmColBind>(a->colBinds, i), At<SpmColBind>(b->colBinds, i)))
            return 0;
    for (int i = 0; i < SutSizList(a->argBinds); i++)
        if (StrCmp(At<SpmArgBind>(a->argBinds, i)->initCode,
                   At<SpmArgBind>(b->argBinds, i)->initCode) != 0)
            return 0;
    return 1;
}

SpmSPBind *SwdGetRefBind(SpmSPBind *bind) {
    if (!bind || !bind->beenApplied) return nullptr;
    SutList *binds = Binds();
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *other = At<SpmSPBind>(binds, i);
        if (other != bind && SameRequest(other, bind)) return other;
    }
    return nullptr;
}

char *SwdGetUnique(const char *base, SutList *names) {
    if (!base) return nullptr;
    // One pass over the list, then each candidate is a set lookup.
    std::unordered_set<std::string_view> taken;
    for (int i = 0; i < SutSizList(names); i++)
        if (const char *name = At<const char>(names, i)) taken.insert(name);
    std::string candidate = base;
    for (int n = 1; taken.contains(candidate); n++)
        candidate = std::string(base) + std::to_string(n);
    return VlHeapCopy(candidate);
}

int SwdInstallThisCallbackCode(const char *interface, const char *widget, const char *callbackName,
                               const char *code) {
    if (Empty(interface) || Empty(widget) || Empty(callbackName) || Empty(code)) return 1;
    return DispatchCallbackCode(interface, widget, callbackName, code);
}

int SwdRemoveThisCallbackCode(const char *interface, const char *widget, const char *callbackName) {
    if (Empty(interface) || Empty(widget) || Empty(callbackName)) return 1;
    return DispatchCallbackCode(interface, widget, callbackName, nullptr);
}

int getKindOfCallbackCode(const char *code) {
    if (!code) return 0;
    for (const char *head : {kFrameHead, kOldFrameHead}) {
        const size_t len = strlen(head);
        if (strncmp(code, head, len) == 0 &&
            strncmp(code + len, kFrameBody, strlen(kFrameBody)) == 0)
            return 1;
    }
    return 2;
}

int SwdProjectFileExist(const char *projectPath) {
    SpmMapFileExist(projectPath);
    SwdMapBeingRead();
    return 1;
}

void SwdMapBeingRead(void) {
    mapBeingRead = 1;
}

int SwdIsMapBeingRead(void) {
    return mapBeingRead;
}

char *SwdCheckFileDefault(const char *path) {
    if (!path) return nullptr;
    std::string copy(path);
    const std::string_view ending = "/.uxrc";
    if (copy.size() >= ending.size() &&
        copy.compare(copy.size() - ending.size(), ending.size(), ending) == 0)
        copy.replace(copy.size() - ending.size(), ending.size(), "/.dbuxrc");
    return VlHeapCopy(copy);
}

int SwdUpdateMapDeletedSwidget(const char *widget, const char *interface, const char *callbackName,
                               const char *element) {
    SutList *binds = Binds();
    if (!widget || !interface || !callbackName)
        return SutSizList(binds) < 0 ? 0 : SutSizList(binds);
    for (int i = 0; i < SutSizList(binds);) {
        auto *bind = At<SpmSPBind>(binds, i);
        RemoveCallbacksOf(bind, widget, interface, callbackName);
        const int remaining = SutSizList(bind->callBinds);
        if (remaining > 0 && callbackName[0] == 'S') UnbindColumnsOf(bind, widget, interface);
        if (callbackName[0] == 'E' && element) ResetArgumentsOf(bind, widget, interface, element);
        if (remaining <= 0) {
            // The bind is run from nowhere any more: it leaves the map. The
            // builder would show message 41; here it is only formed.
            char message[2048];
            snprintf(message, sizeof message,
                     VlCatGets(0, 41, "Stored Procedure/DSQL object %s has been removed\n"),
                     Joined(bind->servername, bind->dbname, bind->name).c_str());
            SutRemoveNList(binds, i);
            SpmDestroySPBind(&bind);
            continue;
        }
        i++;
    }
    return SutSizList(binds) < 0 ? 0 : SutSizList(binds);
}

} // extern "C"
