// Helpers of the map tests: the fields of a bind as one text, taken from the
// field tables (so that two binds compare in one assertion whose failure
// shows the differing field), and binds listed by name.
#ifndef VELMORA_TESTS_SUPPORT_BIND_TEXT_HPP
#define VELMORA_TESTS_SUPPORT_BIND_TEXT_HPP

#include "maps/fields.hpp"
#include "maps/map.h"
#include "support/c_values.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

inline const char *Item(const SutList *l, int i) {
    return Nth<const char>(l, i);
}

inline std::string Show(const char *s) {
    return s ? "\"" + std::string(s) + "\"" : "null";
}

// A list as text; an empty list reads back as none.
inline std::string ShowList(const SutList *l) {
    if (SutSizList(l) <= 0) return "none";
    std::string s = "[";
    for (int i = 0; i < SutSizList(l); i++)
        s += Show(Item(l, i)) + ",";
    return s + "]";
}

// The fields of a record that the map file stores (memoryOnly false) or those
// kept in memory only, in the record's order, blank-separated; for a bind, the
// stored fields of each child record follow on a line of their own.
inline std::string FieldText(const void *record, const BindRecordKind &kind, bool memoryOnly) {
    std::vector<const BindField *> fields;
    for (const BindField &f : kind.fields)
        if (f.kind != FieldKind::Records && f.kind != FieldKind::Count &&
            ((f.flags & kMemoryOnly) != 0) == memoryOnly)
            fields.push_back(&f);
    std::sort(fields.begin(), fields.end(),
              [](const BindField *a, const BindField *b) { return a->offset < b->offset; });
    std::string s;
    for (const BindField *f : fields) {
        if (!s.empty() || memoryOnly) s += " ";
        switch (f->kind) {
        case FieldKind::Text:
        case FieldKind::LongText:
        case FieldKind::Choice:
            s += Show(FieldOf<char *>(record, *f));
            break;
        case FieldKind::Lines:
        case FieldKind::LongLines:
            s += ShowList(FieldOf<SutList *>(record, *f));
            break;
        case FieldKind::Long:
            s += std::to_string(FieldOf<long>(record, *f));
            break;
        case FieldKind::Handle:
            s += std::to_string(reinterpret_cast<long>(FieldOf<void *>(record, *f)));
            break;
        default:
            s += std::to_string(FieldOf<int>(record, *f));
        }
    }
    return s;
}

// The fields of a bind and of its child records that the map file stores
// (one line per child record, "col ...", "call ...", "arg ...") or that are
// kept in memory only (all on one line).
inline std::string BindText(const SpmSPBind *b, bool memoryOnly) {
    const struct {
        const SutList *list;
        const BindRecordKind &kind;
        const char *line;
    } children[] = {{b->colBinds, kColBindKind, "\ncol "},
                    {b->callBinds, kCallbackBindKind, "\ncall "},
                    {b->argBinds, kArgBindKind, "\narg "}};
    std::string s = FieldText(b, kSPBindKind, memoryOnly);
    for (const auto &child : children)
        for (int i = 0; i < SutSizList(child.list); i++)
            s += (memoryOnly ? "" : child.line) +
                 FieldText(SutGetNList(child.list, i), child.kind, memoryOnly);
    return s;
}
inline std::string Stored(const SpmSPBind *b) {
    return BindText(b, false);
}
inline std::string Unstored(const SpmSPBind *b) {
    return BindText(b, true);
}

// Each bind of a list by name, alias, applied flag and the page, widget and
// callback of its first callback bind: "name/altName 1 page|widget|F".
inline Strings BindsOf(const SutList *binds) {
    return Each<SpmSPBind>(binds, [](SpmSPBind *b) {
        auto *k = Nth<SpmCallbackBind>(b->callBinds, 0);
        return Str(b->name) + "/" + Str(b->altName) + " " + std::to_string(b->beenApplied) + " " +
               (k ? Str(k->interface) + "|" + Str(k->swidget) + "|" + Str(k->callbackName)
                  : std::string("-"));
    });
}

// Destroys the binds of a list and the list.
inline void DestroyBinds(SutList *binds) {
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *b = Nth<SpmSPBind>(binds, i);
        SpmDestroySPBind(&b);
    }
    SutDeleteList(binds);
}

#endif
