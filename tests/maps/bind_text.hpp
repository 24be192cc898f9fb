// Test helpers: filling bind fields, reading list items, and the stored
// fields of a bind as one text, so that two binds compare in one assertion
// whose failure shows the differing field.
#ifndef VELMORA_TESTS_MAPS_BIND_TEXT_HPP
#define VELMORA_TESTS_MAPS_BIND_TEXT_HPP

#include <cstdlib>
#include <cstring>
#include <string>

#include "maps/map.h"

inline void set(char **field, const std::string &value) {
    free(*field);
    *field = strdup(value.c_str());
}

inline void add(SutList **list, const std::string &value) {
    if (!*list) *list = SutNewList();
    SutAddList(*list, strdup(value.c_str()));
}

template <typename T> T *nth(const SutList *l, int i) {
    return static_cast<T *>(SutGetNList(l, i));
}

inline const char *item(const SutList *l, int i) {
    return nth<const char>(l, i);
}

inline std::string show(const char *s) {
    return s ? "\"" + std::string(s) + "\"" : "null";
}

// A list as text; an empty list reads back as none.
inline std::string showList(const SutList *l) {
    if (SutSizList(l) <= 0) return "none";
    std::string s = "[";
    for (int i = 0; i < SutSizList(l); i++)
        s += show(item(l, i)) + ",";
    return s + "]";
}

// Every field that the map file stores.
inline std::string stored(const SpmSPBind *b) {
    auto n = [](long v) { return " " + std::to_string(v); };
    std::string s = show(b->servername) + n(b->serverid) + show(b->dbname) + n(b->dbid) +
                    show(b->name) + n(b->id) + show(b->altName) + n(b->beenApplied) +
                    show(b->cacheFlag) + show(b->cacheKey) + show(b->indexKey) +
                    showList(b->sqlFrags) + n(b->dbVendor) + showList(b->options);
    for (int i = 0; i < SutSizList(b->colBinds); i++) {
        auto *c = nth<SpmColBind>(b->colBinds, i);
        s += "\ncol " + show(c->swidget) + show(c->interface) + n(c->order) + show(c->tableName) +
             n(c->tableId) + show(c->columnName) + n(c->columnId) + show(c->dataType) +
             n(c->dataTypeId) + n(c->dataSize) + show(c->popCallbackName) + show(c->clientData) +
             n(c->group) + n(c->computeId) + n(c->computeColumn) + showList(c->options);
    }
    for (int i = 0; i < SutSizList(b->callBinds); i++) {
        auto *k = nth<SpmCallbackBind>(b->callBinds, i);
        s += "\ncall " + show(k->swidget) + show(k->interface) + show(k->callbackName) +
             n(k->isWritten) + show(k->initCode) + show(k->finalCode) + show(k->useDialog) +
             n(k->maxRows) + n(k->callOrder) + show(k->indexFlag) + show(k->indexValue) +
             show(k->queueFile) + showList(k->options);
    }
    for (int i = 0; i < SutSizList(b->argBinds); i++) {
        auto *a = nth<SpmArgBind>(b->argBinds, i);
        s += "\narg " + show(a->argName) + n(a->argId) + show(a->dataType) + n(a->dataTypeId) +
             n(a->dataSize) + show(a->initCode) + showList(a->options);
    }
    return s;
}

// The fields that are kept in memory only and copied with a bind.
inline std::string unstored(const SpmSPBind *b) {
    auto n = [](long v) { return " " + std::to_string(v); };
    std::string s = n(reinterpret_cast<long>(b->editor)) + n(b->isChanged);
    for (int i = 0; i < SutSizList(b->colBinds); i++)
        s += n(nth<SpmColBind>(b->colBinds, i)->isChanged) +
             n(nth<SpmColBind>(b->colBinds, i)->spare);
    for (int i = 0; i < SutSizList(b->callBinds); i++)
        s += n(nth<SpmCallbackBind>(b->callBinds, i)->isChanged) +
             n(nth<SpmCallbackBind>(b->callBinds, i)->transientC);
    for (int i = 0; i < SutSizList(b->argBinds); i++)
        s += n(nth<SpmArgBind>(b->argBinds, i)->isChanged) +
             n(nth<SpmArgBind>(b->argBinds, i)->spare);
    return s;
}

#endif
