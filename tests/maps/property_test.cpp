// Round trip over randomly built maps (fixed seed): a written map file read
// back gives every stored field of every applied bind.
#include "bindcode/upkeep.h"
#include "maps/mapfile.h"
#include "support/bind_text.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

namespace {

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
