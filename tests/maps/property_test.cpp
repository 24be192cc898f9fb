// Round trips over randomly built binds (fixed seeds): generated code parsed
// back gives every field the code carries, and generating again gives the
// same text; a written map file read back gives every stored field.
#include "support/bind_text.hpp"
#include "bindcode/generator.h"
#include "maps/mapfile.h"
#include "bindcode/parser.h"
#include "bindcode/upkeep.h"
#include "support/binding_code.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

namespace {

std::string withoutCR(const char *s) {
    std::string out;
    for (; *s; s++)
        if (*s != '\r') out += *s;
    return out;
}

// A list as text (an empty list reads back as none); carriage returns go
// when the items passed through generated code.
std::string showCarried(const SutList *l, bool dropCR) {
    if (SutSizList(l) <= 0) return "none";
    std::string s = "[";
    for (int i = 0; i < SutSizList(l); i++) {
        const char *item = static_cast<const char *>(SutGetNList(l, i));
        s += (dropCR ? show(withoutCR(item).c_str()) : show(item)) + ",";
    }
    return s + "]";
}

std::string nonEmpty(const char *s) {
    return s && *s ? show(s) : "null";
}

// What the code of one request carries. For the original bind the reader's
// rules are applied: the kind overrides the dialog, the page of a later
// column fills earlier columns without one, arguments are numbered.
std::string carried(const SpmSPBind *b, const SpmCallbackBind *call, int callOrder, bool original) {
    std::string s;
    s += "server=" + show(b->servername) + " db=" + show(b->dbname) + " name=" + show(b->name);
    s += " alt=" + show(b->altName) + " id=" + std::to_string(b->id);
    s += " cache=" + show(b->cacheFlag) + "/" + show(b->cacheKey) + " ikey=" + show(b->indexKey);
    s += " vendor=" + std::to_string(b->dbVendor) +
         " applied=" + std::to_string(original ? 1 : b->beenApplied);
    s += " frags=" + showCarried(b->sqlFrags, original) +
         " opts=" + showCarried(b->options, original);
    bool kind = b->id >= 1002;
    s += "\ncall rows=" + std::to_string(call->maxRows);
    s += " dialog=" + (original && kind ? show("NO_WP") : show(call->useDialog));
    s += " index=" + show(call->indexFlag) + "/" + show(call->indexValue);
    s += " queue=" + show(call->queueFile) + " opts=" + showCarried(call->options, original);
    s += " init=" + nonEmpty(call->initCode) + " final=" + nonEmpty(call->finalCode);
    s += " order=" + std::to_string(original ? callOrder : call->callOrder);
    s += " at=" + (original ? std::string("\"Page\"/\"Form\"/\"F\"")
                            : show(call->interface) + "/" + show(call->swidget) + "/" +
                                  show(call->callbackName));
    s += " changed=" + std::to_string(original ? 1 : call->isChanged);
    s += " written=" + std::to_string(original ? 1 : call->isWritten);
    int numCol = SutSizList(b->colBinds);
    for (int i = 0; i < numCol; i++) {
        auto *col = nth<SpmColBind>(b->colBinds, i);
        const char *page = col->swidget ? col->interface : nullptr;
        if (original && !page) {
            for (int j = i + 1; j < numCol && !page; j++) {
                auto *later = nth<SpmColBind>(b->colBinds, j);
                if (later->swidget && later->interface) page = later->interface;
            }
        }
        s += "\ncol widget=" + show(col->swidget) +
             " page=" + show(original ? page : col->interface);
        s += " g/o/size=" + std::to_string(col->group) + "/" + std::to_string(col->order) + "/" +
             std::to_string(col->dataSize);
        s += " pop=" + show(col->popCallbackName) + " data=" + show(col->clientData);
        s += " type=" + std::to_string(col->dataTypeId) + "/" + show(col->dataType);
        s +=
            " compute=" + std::to_string(col->computeId) + "/" + std::to_string(col->computeColumn);
        s += " column=" + show(col->columnName) + " opts=" + showCarried(col->options, original);
    }
    for (int i = 0; i < SutSizList(b->argBinds); i++) {
        auto *arg = nth<SpmArgBind>(b->argBinds, i);
        s += "\narg id=" + std::to_string(original ? i + 1 : arg->argId);
        s += " name=" + show(arg->argName) + " type=" + std::to_string(arg->dataTypeId) + "/" +
             show(arg->dataType) + " size=" + std::to_string(arg->dataSize);
        s += " init=" + show(arg->initCode) + " opts=" + showCarried(arg->options, original);
    }
    return s;
}

std::string generate(SpmSPBind *b, SpmCallbackBind *call) {
    char *code = getCallbackCode(b, call, 1);
    std::string text = code;
    free(code);
    return text;
}

TEST(RoundTrip, GeneratedCodeParsesBackAndRegeneratesTheSameText) {
    SwdResetTheMap();
    Random r(20261122);
    int binds = 0;
    for (int body = 0; body < 120; body++) {
        // One callback running one to four requests, framed as the upkeep
        // code frames them.
        SutList *originals = SutNewList();
        std::string text = kCodeHead;
        int n = r.between(1, 4);
        for (int i = 0; i < n; i++) {
            SpmSPBind *b = randomBind(r);
            SutAddList(originals, b);
            text += (i ? "\n" : "") + generate(b, nth<SpmCallbackBind>(b->callBinds, 0));
        }
        text += "\n}";
        SwdCallbackCode item = {const_cast<char *>("F"), const_cast<char *>(text.c_str())};
        SutList *items = SutNewList();
        SutAddList(items, &item);
        SutList *parsed = SwdExtractMapsFromCallbacks("Page", "Form", items);
        SutDeleteList(items);

        ASSERT_EQ(SutSizList(parsed), n) << text;
        for (int i = 0; i < n; i++) {
            SpmSPBind *o = nth<SpmSPBind>(originals, i);
            SpmSPBind *p = nth<SpmSPBind>(parsed, i);
            SpmCallbackBind *oc = nth<SpmCallbackBind>(o->callBinds, 0);
            SpmCallbackBind *pc = nth<SpmCallbackBind>(p->callBinds, 0);
            ASSERT_EQ(carried(p, pc, i, false), carried(o, oc, i, true)) << text;
            ASSERT_EQ(generate(p, pc), generate(o, oc));
            binds++;
        }
        destroyBinds(parsed);
        destroyBinds(originals);
    }
    EXPECT_GE(binds, 250);
}

TEST(RoundTrip, WrittenMapFilesReadBackWithEveryStoredField) {
    SwdResetTheMap();
    Random r(4096);
    TempDir dir;
    std::string path = dir.file("round.map");
    int checked = 0;
    for (int round = 0; round < 30; round++) {
        SpmMap *map = SpmNewMap();
        map->spBinds = SutNewList();
        for (int i = r.between(0, 3); i > 0; i--)
            SpmAddIface(map, r.from(ident, 1, 10).c_str());
        for (int i = r.between(5, 15); i > 0; i--) {
            SpmSPBind *b = randomBind(r);
            // Names may hold one dot; single-line bind values hold neither
            // dots nor colons; multi-line values do not end in a newline, and
            // none of their lines starts with "*".
            set(&b->name, r.from(ident, 1, 5) + (r.chance(30) ? "." + r.from(ident, 1, 5) : ""));
            set(&b->servername, r.from("abc _,;", 0, 8));
            set(&b->altName, r.from("abc _,;", 0, 8));
            if (b->cacheKey) set(&b->cacheKey, r.from("abc _,;", 0, 8));
            if (b->indexKey) set(&b->indexKey, r.from("abc _,;", 0, 8));
            set(&b->dbname, r.from("abc _,;.:", 0, 8));
            b->beenApplied = r.chance(85);
            b->id = r.between(-100, 2000);
            auto refill = [&r](SutList *l, const char *alphabet, const char *end) {
                for (int k = 0; k < SutSizList(l); k++) {
                    free(l->items[k]);
                    l->items[k] = strdup((r.from(alphabet, 0, 12) + end).c_str());
                }
            };
            const char *multi = "ab .:;\n", *single = "ab .:*";
            refill(b->sqlFrags, multi, "x");
            refill(b->options, single, "");
            for (int k = 0; k < SutSizList(b->colBinds); k++) {
                auto *c = nth<SpmColBind>(b->colBinds, k);
                if (c->clientData) set(&c->clientData, r.from(multi, 0, 12) + "x");
                refill(c->options, single, "");
            }
            for (int k = 0; k < SutSizList(b->callBinds); k++) {
                auto *c = nth<SpmCallbackBind>(b->callBinds, k);
                if (c->initCode) set(&c->initCode, r.from(multi, 0, 12) + ";");
                if (c->finalCode) set(&c->finalCode, r.from(multi, 0, 12) + ";");
                refill(c->options, single, "");
            }
            for (int k = 0; k < SutSizList(b->argBinds); k++)
                refill(nth<SpmArgBind>(b->argBinds, k)->options, single, "");
            SutAddList(map->spBinds, b);
        }
        ASSERT_EQ(SpmWriteMapFile(map, path.c_str()), 0);
        SpmMap *back = nullptr;
        ASSERT_EQ(SpmReadMapFile(&back, path.c_str()), 0);
        EXPECT_EQ(showList(back->interfaces), showList(map->interfaces));
        int j = 0;
        for (int i = 0; i < SutSizList(map->spBinds); i++) {
            SpmSPBind *o = nth<SpmSPBind>(map->spBinds, i);
            if (!o->beenApplied) continue;
            ASSERT_LT(j, SutSizList(back->spBinds));
            ASSERT_EQ(stored(nth<SpmSPBind>(back->spBinds, j++)), stored(o));
            checked++;
        }
        EXPECT_EQ(j, SutSizList(back->spBinds));
        SpmDestroyMap(&map);
        SpmDestroyMap(&back);
    }
    EXPECT_GE(checked, 200);
}

} // namespace
