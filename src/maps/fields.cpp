// The field tables of the bind records and the two walks over them that the
// map model needs: releasing a record with all it owns, and copying one record
// into another. The map file's reader and writer walk the same tables.
#include "maps/fields.hpp"

#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "maps/map.h"
#include "util/heap.hpp"

namespace {

constexpr const char *kCacheFlags[] = {"NO_CACHE", "TO_CACHE", "FROM_CACHE"};
constexpr const char *kIndexFlags[] = {"ROW_INDEX",    "WIDGET_INDEX", "NEXT_INDEX", "PREV_INDEX",
                                       "PAGEUP_INDEX", "PAGEDW_INDEX", "LAST_INDEX", "HOME_INDEX"};
constexpr const char *kQueueFiles[] = {"NO_QUEUE_FILE", "QUEUE_TO_FILE"};
constexpr const char *kDialogs[] = {"USE_IT", "NO_USE", "NO_WP"};

using K = FieldKind;

const BindField kColBindFields[] = {
    {"columnId", offsetof(SpmColBind, columnId), K::Int, kOpensRecord},
    {"columnName", offsetof(SpmColBind, columnName), K::Text},
    {"swidget", offsetof(SpmColBind, swidget), K::Text, kNotCopied},
    {"interface", offsetof(SpmColBind, interface), K::Text},
    {"order", offsetof(SpmColBind, order), K::Int},
    {"tableName", offsetof(SpmColBind, tableName), K::Text},
    {"tableId", offsetof(SpmColBind, tableId), K::Int},
    {"dataType", offsetof(SpmColBind, dataType), K::Text},
    {"options", offsetof(SpmColBind, options), K::Lines},
    {"dataTypeId", offsetof(SpmColBind, dataTypeId), K::Int},
    {"dataSize", offsetof(SpmColBind, dataSize), K::Int},
    {"group", offsetof(SpmColBind, group), K::Int},
    {"computeId", offsetof(SpmColBind, computeId), K::Int},
    {"computeColumn", offsetof(SpmColBind, computeColumn), K::Int},
    {"popCallbackName", offsetof(SpmColBind, popCallbackName), K::Text},
    {"clientData", offsetof(SpmColBind, clientData), K::LongText},
    {"isChanged", offsetof(SpmColBind, isChanged), K::Int, kMemoryOnly},
    {"spare", offsetof(SpmColBind, spare), K::Int, kMemoryOnly},
};

const BindField kCallbackBindFields[] = {
    {"callbackName", offsetof(SpmCallbackBind, callbackName), K::Text, kOpensRecord},
    {"swidget", offsetof(SpmCallbackBind, swidget), K::Text, kNotCopied},
    {"interface", offsetof(SpmCallbackBind, interface), K::Text},
    {"isWritten", offsetof(SpmCallbackBind, isWritten), K::Flag},
    {"initCode", offsetof(SpmCallbackBind, initCode), K::LongText},
    {"finalCode", offsetof(SpmCallbackBind, finalCode), K::LongText},
    {"indexFlag", offsetof(SpmCallbackBind, indexFlag), K::Choice, 0, kIndexFlags},
    {"indexValue", offsetof(SpmCallbackBind, indexValue), K::Text},
    {"queueFile", offsetof(SpmCallbackBind, queueFile), K::Choice, 0, kQueueFiles},
    {"useDialog", offsetof(SpmCallbackBind, useDialog), K::Choice, 0, kDialogs},
    {"options", offsetof(SpmCallbackBind, options), K::Lines},
    {"maxRows", offsetof(SpmCallbackBind, maxRows), K::Long},
    {"callOrder", offsetof(SpmCallbackBind, callOrder), K::Int},
    {"isChanged", offsetof(SpmCallbackBind, isChanged), K::Int, kMemoryOnly},
    {"transientC", offsetof(SpmCallbackBind, transientC), K::Int, kMemoryOnly},
};

const BindField kArgBindFields[] = {
    {"argId", offsetof(SpmArgBind, argId), K::Int, kOpensRecord},
    {"argName", offsetof(SpmArgBind, argName), K::Text},
    {"dataType", offsetof(SpmArgBind, dataType), K::Text},
    {"options", offsetof(SpmArgBind, options), K::Lines},
    {"dataTypeId", offsetof(SpmArgBind, dataTypeId), K::Int},
    {"initCode", offsetof(SpmArgBind, initCode), K::LongText},
    {"dataSize", offsetof(SpmArgBind, dataSize), K::Int},
    {"isChanged", offsetof(SpmArgBind, isChanged), K::Int, kMemoryOnly},
    {"spare", offsetof(SpmArgBind, spare), K::Int, kMemoryOnly},
};

// Deliberately, the map file cuts most values of a bind's own lines at the
// first "." or ":"; only the database name, fragments and options keep them.
const BindField kSPBindFields[] = {
    {"name", offsetof(SpmSPBind, name), K::Text, kInHeader},
    {"altName", offsetof(SpmSPBind, altName), K::Text, kEndsAtDot},
    {"id", offsetof(SpmSPBind, id), K::Int, kEndsAtDot},
    {"dbid", offsetof(SpmSPBind, dbid), K::Int, kEndsAtDot},
    {"dbname", offsetof(SpmSPBind, dbname), K::Text},
    {"serverid", offsetof(SpmSPBind, serverid), K::Int, kEndsAtDot},
    {"servername", offsetof(SpmSPBind, servername), K::Text, kEndsAtDot},
    {"numCol", offsetof(SpmSPBind, colBinds), K::Count, kEndsAtDot},
    {"numCall", offsetof(SpmSPBind, callBinds), K::Count, kEndsAtDot},
    {"numArg", offsetof(SpmSPBind, argBinds), K::Count, kEndsAtDot},
    {"cacheFlag", offsetof(SpmSPBind, cacheFlag), K::Choice, kEndsAtDot, kCacheFlags},
    {"cacheKey", offsetof(SpmSPBind, cacheKey), K::Text, kEndsAtDot},
    {"indexKey", offsetof(SpmSPBind, indexKey), K::Text, kEndsAtDot},
    {"dbVendor", offsetof(SpmSPBind, dbVendor), K::Int, kEndsAtDot},
    {"sqlFrags", offsetof(SpmSPBind, sqlFrags), K::LongLines},
    {"options", offsetof(SpmSPBind, options), K::Lines},
    {"beenApplied", offsetof(SpmSPBind, beenApplied), K::Flag, kEndsAtDot},
    {"colBind", offsetof(SpmSPBind, colBinds), K::Records, 0, {}, &kColBindKind},
    {"callBind", offsetof(SpmSPBind, callBinds), K::Records, 0, {}, &kCallbackBindKind},
    {"argBind", offsetof(SpmSPBind, argBinds), K::Records, 0, {}, &kArgBindKind},
    {"editor", offsetof(SpmSPBind, editor), K::Handle, kMemoryOnly},
    {"isChanged", offsetof(SpmSPBind, isChanged), K::Int, kMemoryOnly},
};

// Replaces an owned list of strings by a list of copies of src's (null for null).
void ReplaceStringList(SutList **field, const SutList *src) {
    SutList *copy = nullptr;
    if (src) {
        copy = SutNewList();
        for (int i = 0; i < SutSizList(src); i++) {
            const auto *item = static_cast<const char *>(SutGetNList(src, i));
            SutAddList(copy, item ? strdup(item) : nullptr);
        }
    }
    SutDestroyList(*field);
    *field = copy;
}

} // namespace

const BindRecordKind kColBindKind = {kColBindFields,
                                     [] { return static_cast<void *>(SpmNewColBind()); }};
const BindRecordKind kCallbackBindKind = {kCallbackBindFields,
                                          [] { return static_cast<void *>(SpmNewCallbackBind()); }};
const BindRecordKind kArgBindKind = {kArgBindFields,
                                     [] { return static_cast<void *>(SpmNewArgBind()); }};
const BindRecordKind kSPBindKind = {kSPBindFields,
                                    [] { return static_cast<void *>(SpmNewSPBind()); }};

const BindField *FindBindField(const BindRecordKind &kind, std::string_view name) {
    for (const BindField &field : kind.fields)
        if (name == field.name) return &field;
    return nullptr;
}

namespace {

// Frees what one field of a record owns; child records are the caller's.
void DestroyField(void *record, const BindField &field) {
    switch (field.kind) {
    case K::Text:
    case K::LongText:
    case K::Choice:
        free(FieldOf<char *>(record, field));
        break;
    case K::Lines:
    case K::LongLines:
        SutDestroyList(FieldOf<SutList *>(record, field));
        break;
    case K::Records:
    case K::Int:
    case K::Long:
    case K::Flag:
    case K::Count:
    case K::Handle:
        break;
    }
}

// Copies one field of src into dest; child records are the caller's.
void CopyField(void *dest, const void *src, const BindField &field) {
    switch (field.kind) {
    case K::Text:
    case K::LongText:
    case K::Choice:
        VlReplaceString(&FieldOf<char *>(dest, field),
                        field.flags & kNotCopied ? nullptr : FieldOf<char *>(src, field));
        break;
    case K::Lines:
    case K::LongLines:
        ReplaceStringList(&FieldOf<SutList *>(dest, field), FieldOf<SutList *>(src, field));
        break;
    case K::Int:
    case K::Flag:
        FieldOf<int>(dest, field) = FieldOf<int>(src, field);
        break;
    case K::Long:
        FieldOf<long>(dest, field) = FieldOf<long>(src, field);
        break;
    case K::Handle:
        FieldOf<void *>(dest, field) = FieldOf<void *>(src, field);
        break;
    case K::Records:
    case K::Count:
        break;
    }
}

} // namespace

void DestroyBindRecord(void *record, const BindRecordKind &kind) {
    for (const BindField &field : kind.fields) {
        DestroyField(record, field);
        if (field.kind != K::Records) continue;
        SutList *children = FieldOf<SutList *>(record, field);
        for (int i = 0; i < SutSizList(children); i++) {
            void *child = SutGetNList(children, i);
            if (!child) continue;
            for (const BindField &childField : field.children->fields)
                DestroyField(child, childField);
            free(child);
        }
        SutDeleteList(children);
    }
    free(record);
}

void CopyBindFields(void *dest, const void *src, const BindRecordKind &kind) {
    for (const BindField &field : kind.fields) {
        CopyField(dest, src, field);
        if (field.kind != K::Records) continue;
        const SutList *from = FieldOf<SutList *>(src, field);
        const SutList *to = FieldOf<SutList *>(dest, field);
        for (int i = 0; i < SutSizList(from); i++) {
            void *d = SutGetNList(to, i);
            const void *s = SutGetNList(from, i);
            if (!d || !s) continue;
            for (const BindField &childField : field.children->fields)
                CopyField(d, s, childField);
        }
    }
}
