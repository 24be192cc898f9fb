// Helpers of the map tests: filling bind fields, the stored fields of a bind
// as one text (so that two binds compare in one assertion whose failure shows
// the differing field), and binds built from a fixed-seed random source.
#ifndef VELMORA_TESTS_SUPPORT_BIND_TEXT_HPP
#define VELMORA_TESTS_SUPPORT_BIND_TEXT_HPP

#include "maps/fields.hpp"
#include "maps/map.h"
#include "support/c_values.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

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

// The fields of a record that the map file stores (memoryOnly false) or those
// kept in memory only, in the record's order, blank-separated; for a bind, the
// stored fields of each child record follow on a line of their own.
inline std::string fieldText(const void *record, const BindRecordKind &kind, bool memoryOnly) {
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
            s += show(FieldOf<char *>(record, *f));
            break;
        case FieldKind::Lines:
        case FieldKind::LongLines:
            s += showList(FieldOf<SutList *>(record, *f));
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

// Every field that the map file stores, one line per child record.
inline std::string stored(const SpmSPBind *b) {
    std::string s = fieldText(b, kSPBindKind, false);
    for (int i = 0; i < SutSizList(b->colBinds); i++)
        s += "\ncol " + fieldText(SutGetNList(b->colBinds, i), kColBindKind, false);
    for (int i = 0; i < SutSizList(b->callBinds); i++)
        s += "\ncall " + fieldText(SutGetNList(b->callBinds, i), kCallbackBindKind, false);
    for (int i = 0; i < SutSizList(b->argBinds); i++)
        s += "\narg " + fieldText(SutGetNList(b->argBinds, i), kArgBindKind, false);
    return s;
}

// Each bind of a list by name, alias, applied flag and the page, widget and
// callback of its first callback bind: "name/altName 1 page|widget|F".
inline Strings bindsOf(const SutList *binds) {
    return each<SpmSPBind>(binds, [](SpmSPBind *b) {
        auto *k = nth<SpmCallbackBind>(b->callBinds, 0);
        return str(b->name) + "/" + str(b->altName) + " " + std::to_string(b->beenApplied) + " " +
               (k ? str(k->interface) + "|" + str(k->swidget) + "|" + str(k->callbackName)
                  : std::string("-"));
    });
}

// The fields that are kept in memory only and copied with a bind.
inline std::string unstored(const SpmSPBind *b) {
    std::string s = fieldText(b, kSPBindKind, true);
    for (int i = 0; i < SutSizList(b->colBinds); i++)
        s += fieldText(SutGetNList(b->colBinds, i), kColBindKind, true);
    for (int i = 0; i < SutSizList(b->callBinds); i++)
        s += fieldText(SutGetNList(b->callBinds, i), kCallbackBindKind, true);
    for (int i = 0; i < SutSizList(b->argBinds); i++)
        s += fieldText(SutGetNList(b->argBinds, i), kArgBindKind, true);
    return s;
}

// A small deterministic source of random choices (mt19937 output is fixed by
// the standard; the distributions are not, so they are not used).
struct Random {
    std::mt19937 engine;
    explicit Random(uint32_t seed) : engine(seed) {}
    int below(int n) { return static_cast<int>(engine() % static_cast<uint32_t>(n)); }
    int between(int lo, int hi) { return lo + below(hi - lo + 1); }
    bool chance(int percent) { return below(100) < percent; }
    std::string from(const char *alphabet, int minLen, int maxLen) {
        size_t n = strlen(alphabet);
        std::string s;
        for (int i = between(minLen, maxLen); i > 0; i--)
            s += alphabet[engine() % n];
        return s;
    }
    template <size_t N> const char *pick(const char *const (&options)[N]) {
        return options[below(N)];
    }
};

inline const char *const ident = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";

// Text of a quoted list item: quotes, newlines, carriage returns, blanks and
// backslashes anywhere but at the very end (a backslash before the closing
// quote would escape it, also once a carriage return after it is dropped).
inline std::string listText(Random &r) {
    std::string s = r.from("ab \"\n\r\\;,*/:.", 0, 12);
    size_t last = s.find_last_not_of('\r');
    if (last != std::string::npos && s[last] == '\\') s += 'z';
    return s;
}

inline SutList *textList(Random &r, int maxItems) {
    int n = r.between(0, maxItems);
    if (n == 0 && !r.chance(50)) return nullptr;
    SutList *l = SutNewList();
    for (int i = 0; i < n; i++)
        SutAddList(l, strdup(listText(r).c_str()));
    return l;
}

// User code of several lines: anything but the markers that end it.
inline std::string userCode(Random &r) {
    std::string s;
    for (int i = r.between(1, 3); i > 0; i--)
        s += "\t" + r.from("abc =;()\"/*{}", 1, 20) + "\n";
    return s.substr(0, s.size() - (r.chance(50) ? 1 : 0));
}

// An applied bind with random values in every stored field.
inline SpmSPBind *randomBind(Random &r) {
    static const char *const cacheFlags[] = {"NO_CACHE", "TO_CACHE", "FROM_CACHE"};
    static const char *const indexFlags[] = {"ROW_INDEX",  "WIDGET_INDEX", "NEXT_INDEX",
                                             "PREV_INDEX", "PAGEUP_INDEX", "PAGEDW_INDEX",
                                             "LAST_INDEX", "HOME_INDEX"};
    static const char *const queueFiles[] = {"NO_QUEUE_FILE", "QUEUE_TO_FILE"};
    static const char *const dialogs[] = {"USE_IT", "NO_USE", "NO_WP"};
    static const int kinds[] = {0, 1, 1002, 1003, 1004, 1005};
    // C expressions as the user writes them: quotes, escaped quotes and
    // semicolons inside string literals, nested parentheses.
    static const char *const expressions[] = {
        "VlGetInputValue(\"id\")", "\"\"", "f(a, g(b))", "(XtPointer)\"a;b\\\"c\"", "x",
        "\"semi;colon\"",          "n + 1"};

    int numCol = r.between(0, 4), numCall = r.between(1, 3), numArg = r.between(0, 3);
    SpmSPBind *b = SpmCreateListsForSpmBind(numCol, numCall, numArg);
    set(&b->servername, r.from("abcxyz_ ,;.", 0, 10));
    set(&b->dbname, r.from("abcxyz_ ,;.", 0, 10));
    set(&b->name, r.from("abcxyz_ ,;", 1, 10));
    set(&b->altName, r.from("abcxyz_ 019", 1, 10));
    b->id = kinds[r.below(6)];
    set(&b->cacheFlag, r.pick(cacheFlags));
    if (r.chance(60)) set(&b->cacheKey, r.from("abc019_ ,()", 1, 8));
    if (r.chance(60)) set(&b->indexKey, r.from("abc019_ ,()", 1, 8));
    b->dbVendor = r.between(0, 4);
    if (b->id != 0) b->sqlFrags = textList(r, 4);
    b->options = textList(r, 3);
    b->beenApplied = 1;
    b->serverid = r.between(-5, 1000);
    b->dbid = r.between(-5, 1000);

    // Either every bound column names its page, or none does.
    std::string page = r.chance(70) ? r.from(ident, 1, 8) : "";
    for (int i = 0; i < numCol; i++) {
        auto *col = nth<SpmColBind>(b->colBinds, i);
        if (r.chance(80)) {
            set(&col->swidget, r.from(ident, 1, 8));
            if (!page.empty()) set(&col->interface, page);
        } else if (!page.empty() && r.chance(50)) {
            set(&col->interface, page);
        }
        col->group = r.between(-2, 9);
        col->order = r.between(-2, 9);
        col->dataSize = r.between(-1, 4000);
        if (r.chance(50)) set(&col->popCallbackName, r.from(ident, 1, 8));
        if (r.chance(50)) set(&col->clientData, r.pick(expressions));
        col->dataTypeId = r.between(-1, 100);
        col->computeId = r.between(-3, 3);
        col->computeColumn = r.between(-3, 3);
        set(&col->dataType, r.from(ident, 1, 8));
        set(&col->columnName, r.from("abc_ ,;", 1, 8));
        col->options = textList(r, 2);
        col->columnId = i;
        col->tableId = r.between(0, 9);
        if (r.chance(50)) set(&col->tableName, r.from("abc_ .:", 1, 8));
    }
    for (int i = 0; i < numCall; i++) {
        auto *call = nth<SpmCallbackBind>(b->callBinds, i);
        call->maxRows = r.chance(30) ? -1 : r.between(0, 1 << 30);
        set(&call->useDialog, r.pick(dialogs));
        set(&call->indexFlag, r.pick(indexFlags));
        if (r.chance(50)) set(&call->indexValue, r.from("abc019_ ,()", 1, 8));
        set(&call->queueFile, r.pick(queueFiles));
        call->options = textList(r, 2);
        if (r.chance(60)) set(&call->initCode, userCode(r));
        if (r.chance(60)) set(&call->finalCode, userCode(r));
        set(&call->callbackName, r.chance(50) ? "F" : "A");
        set(&call->swidget, r.from(ident, 1, 8));
        set(&call->interface, r.from(ident, 1, 8));
        call->isWritten = r.below(2);
        call->callOrder = r.between(0, 5);
    }
    for (int i = 0; i < numArg; i++) {
        auto *arg = nth<SpmArgBind>(b->argBinds, i);
        arg->argId = i + 1;
        arg->dataTypeId = r.between(-1, 100);
        arg->dataSize = r.between(-1, 100);
        set(&arg->argName, r.from(ident, 1, 8));
        set(&arg->dataType, r.from(ident, 1, 8));
        set(&arg->initCode, r.pick(expressions));
        arg->options = textList(r, 2);
    }
    return b;
}

// Destroys the binds of a list and the list.
inline void destroyBinds(SutList *binds) {
    for (int i = 0; i < SutSizList(binds); i++) {
        auto *b = nth<SpmSPBind>(binds, i);
        SpmDestroySPBind(&b);
    }
    SutDeleteList(binds);
}

#endif
