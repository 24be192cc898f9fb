// Round trip over randomly built binds (fixed seed): the code generated for
// one to four requests of one callback parses back into binds whose code is
// the very same text, so every field the code carries survives.
#include "bindcode/generator.h"
#include "bindcode/parser.h"
#include "bindcode/upkeep.h"
#include "support/bind_text.hpp"
#include "support/binding_code.hpp"

#include <gtest/gtest.h>

namespace {

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
            ASSERT_EQ(generate(p, nth<SpmCallbackBind>(p->callBinds, 0)),
                      generate(o, nth<SpmCallbackBind>(o->callBinds, 0)))
                << text;
            EXPECT_EQ(nth<SpmCallbackBind>(p->callBinds, 0)->callOrder, i);
            binds++;
        }
        destroyBinds(parsed);
        destroyBinds(originals);
    }
    EXPECT_GE(binds, 250);
}

} // namespace
