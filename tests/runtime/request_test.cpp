// Request accessors of generated programs: unpacking numbered arguments (and
// the deliberate swap of VlUnPackArgsFromOptions), lookups, results, and the
// name registry.
#include "runtime/registry.h"
#include "runtime/request.h"
#include "support/c_values.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

VlRequest *requestWith(std::initializer_list<const char *> options) {
    VlRequest *r = static_cast<VlRequest *>(calloc(1, sizeof(VlRequest)));
    r->options = makeList(options);
    return r;
}

intptr_t numberAt(SutList *l, int n) {
    return reinterpret_cast<intptr_t>(SutGetNList(l, n));
}

TEST(Request, UnpackStopsAtTheFirstIncompletePairAndRemovesWhatItTook) {
    VlRequest *r = requestWith(
        {"Other : x", "Arg0Name : 7a", "Arg0Value : 1", "Arg2Name : c", "Arg2Value : 3"});
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 1);
    EXPECT_STREQ(VlReqGetNArgName(r, 0), "7a");
    EXPECT_STREQ(VlReqGetNArg(r, 0), "1");
    auto *arg = static_cast<VlReqArg *>(SutGetNList(r->args, 0));
    EXPECT_EQ(arg->number, 7); // atoi of the name
    EXPECT_EQ(arg->aux1, 0);
    EXPECT_EQ(arg->aux2, 0);
    EXPECT_EQ(items(r->options), (Strings{"Other : x", "Arg2Name : c", "Arg2Value : 3"}));
    VlReqDelete(r);

    // Half a pair ends the loop, and both of its options are gone.
    r = requestWith({"Arg0Name : a", "Arg0Value : 1", "Arg1Name : b", "Arg1Name : b2",
                     "Arg1Value : 2", "Arg2Value : z"});
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 2);
    EXPECT_STREQ(VlReqGetArgByName(r, "b"), "2");
    EXPECT_EQ(items(r->options), (Strings{"Arg1Name : b2"}));
    VlReqDelete(r);

    r = requestWith({"Arg0Name : a"});
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 0);
    EXPECT_EQ(SutSizList(r->options), 0);
    VlReqDelete(r);

    VlRequest *bare = static_cast<VlRequest *>(calloc(1, sizeof(VlRequest)));
    EXPECT_EQ(VlUnPackOdbcArgs(bare), 1);
    EXPECT_EQ(VlUnPackArgsFromOptions(bare), 1);
    EXPECT_EQ(VlUnPackOdbcArgs(nullptr), 1);
    EXPECT_EQ(VlUnPackArgsFromOptions(nullptr), 1);
    VlReqDelete(bare);
}

TEST(Request, UnpackGoesUpToIndex1024) {
    VlRequest *r = static_cast<VlRequest *>(calloc(1, sizeof(VlRequest)));
    r->options = SutNewList();
    for (int i = 0; i <= 1025; i++) {
        std::string n = std::to_string(i);
        SutAddList(r->options, strdup(("Arg" + n + "Name : n" + n).c_str()));
        SutAddList(r->options, strdup(("Arg" + n + "Value : v" + n).c_str()));
    }
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 1025);
    EXPECT_STREQ(VlReqGetNArg(r, 1024), "v1024");
    EXPECT_EQ(items(r->options), (Strings{"Arg1025Name : n1025", "Arg1025Value : v1025"}));
    VlReqDelete(r);
}

TEST(Request, ArgsFromOptionsSwapNameAndValue) {
    VlRequest *r =
        requestWith({"Arg0Name : user", "Arg0Value : bob", "Arg1Name : 12", "Arg1Value : "});
    EXPECT_EQ(VlUnPackArgsFromOptions(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 2);
    EXPECT_STREQ(VlReqGetArgByName(r, "bob"), "user");
    EXPECT_EQ(VlReqGetArgByName(r, "user"), nullptr);
    EXPECT_STREQ(VlReqGetNArgName(r, 0), "bob");
    EXPECT_STREQ(VlReqGetNArg(r, 0), "user");
    EXPECT_EQ(static_cast<VlReqArg *>(SutGetNList(r->args, 1))->number, 0);
    // An argument with an empty name is never found by name.
    EXPECT_STREQ(VlReqGetNArgName(r, 1), "");
    EXPECT_EQ(VlReqGetArgByName(r, ""), nullptr);
    EXPECT_EQ(SutSizList(r->options), 0);
    VlReqDelete(r);
}

TEST(Request, Lookups) {
    VlRequest *r = requestWith({"Arg0Name : a", "Arg0Value : 1", "Arg1Name : a", "Arg1Value : 2"});
    SutList *options = r->options;
    EXPECT_EQ(VlReqGetOptionList(r), options);
    EXPECT_EQ(VlReqGetNumArgs(r), 0); // no argument list yet
    VlUnPackOdbcArgs(r);
    EXPECT_STREQ(VlReqGetArgByName(r, "a"), "1"); // first in list order
    EXPECT_EQ(VlReqGetArgByName(r, "A"), nullptr);
    EXPECT_EQ(VlReqGetArgByName(r, nullptr), nullptr);
    EXPECT_EQ(VlReqGetArgByName(nullptr, "a"), nullptr);
    EXPECT_EQ(VlReqGetNArg(r, -1), nullptr);
    EXPECT_EQ(VlReqGetNArg(r, 2), nullptr);
    EXPECT_EQ(VlReqGetNArg(nullptr, 0), nullptr);
    EXPECT_EQ(VlReqGetNArgName(r, 5), nullptr);
    EXPECT_EQ(VlReqGetNArgName(nullptr, 0), nullptr);
    EXPECT_EQ(VlReqGetNumArgs(nullptr), 0);
    EXPECT_EQ(VlReqGetOptionList(nullptr), nullptr);
    VlReqDelete(r);
}

TEST(Request, ResultsAndCounters) {
    VlRequest *r = static_cast<VlRequest *>(calloc(1, sizeof(VlRequest)));
    EXPECT_EQ(VlReqAppendString(r, "row"), 0);
    EXPECT_EQ(VlReqAppendString(r, nullptr), 0);
    EXPECT_EQ(items(r->strings), (Strings{"row", ""}));
    EXPECT_EQ(VlReqAppendString(nullptr, "x"), 1);

    EXPECT_EQ(VlReqAppendRowCount(r, 0), 0);
    EXPECT_EQ(VlReqAppendRowCount(r, 12), 0);
    EXPECT_EQ(VlReqAppendRowCount(r, -1), 1);
    EXPECT_EQ(VlReqAppendColCount(r, 3), 0);
    EXPECT_EQ(VlReqAppendColCount(r, -3), 1);
    EXPECT_EQ(VlReqAppendColCount(nullptr, 3), 1);
    EXPECT_EQ(SutSizList(r->rowCounts), 2);
    EXPECT_EQ(numberAt(r->rowCounts, 1), 12);
    EXPECT_EQ(SutSizList(r->colCounts), 1);
    EXPECT_EQ(numberAt(r->colCounts, 0), 3);

    EXPECT_EQ(VlReqSetGroupCount(r, 2), 0);
    EXPECT_EQ(VlReqSetErrorCode(r, 5), 0);
    EXPECT_EQ(VlReqSetErrorCode(r, -1), 1);
    EXPECT_EQ(VlReqSetReturnCode(r, 0), 0);
    EXPECT_EQ(VlReqSetReturnCode(r, -7), 1);
    EXPECT_EQ(VlReqSetAffectedRowCount(r, 40), 0);
    EXPECT_EQ(VlReqSetAffectedRowCount(r, -40), 1);
    EXPECT_EQ(VlReqSetGroupCount(r, -2), 1);
    EXPECT_EQ(VlReqSetGroupCount(nullptr, 2), 1);
    EXPECT_EQ(r->groupCount, 2);
    EXPECT_EQ(r->errorCode, 5); // unchanged by the negative value
    EXPECT_EQ(r->returnCode, 0);
    EXPECT_EQ(r->affectedRowCount, 40);

    EXPECT_EQ(VlReqAppendError(r, 1, -2, 3, "bad row", 4, 5), 0);
    EXPECT_EQ(VlReqAppendError(r, 0, 0, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(VlReqAppendError(nullptr, 0, 0, 0, "x", 0, 0), 1);
    ASSERT_EQ(SutSizList(r->errors), 2);
    auto *e = static_cast<VlReqError *>(SutGetNList(r->errors, 0));
    EXPECT_EQ(e->value1, 1);
    EXPECT_EQ(e->value2, -2);
    EXPECT_EQ(e->value3, 3);
    EXPECT_STREQ(e->text, "bad row");
    EXPECT_EQ(e->value4, 4);
    EXPECT_EQ(e->value5, 5);
    EXPECT_STREQ(static_cast<VlReqError *>(SutGetNList(r->errors, 1))->text, "");
    VlReqDelete(r);
    VlReqDelete(nullptr);
}

TEST(Registry, AddLookUpAndDelete) {
    SutList *reg = VlNewRegistry();
    ASSERT_NE(reg, nullptr);
    int one = 1, two = 2, three = 3;
    void *entry = VlRegistryAddItem(reg, "conn", &one);
    ASSERT_NE(entry, VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(entry, SutGetNList(reg, 0));
    EXPECT_STREQ(static_cast<VlRegistryEntry *>(entry)->name, "conn");
    EXPECT_EQ(static_cast<VlRegistryEntry *>(entry)->item, &one);
    VlRegistryAddItem(reg, "conn", &two);
    VlRegistryAddItem(reg, "other", &three);
    EXPECT_EQ(VlRegistryGetItem(reg, "conn"), &one); // the first of the same name
    EXPECT_EQ(VlRegistryGetItem(reg, "other"), &three);
    EXPECT_EQ(VlRegistryGetItem(reg, "Conn"), nullptr);
    EXPECT_EQ(VlRegistryGetItem(reg, ""), nullptr);
    EXPECT_EQ(VlRegistryGetItem(reg, nullptr), nullptr);
    EXPECT_EQ(VlRegistryGetItem(nullptr, "conn"), nullptr);

    EXPECT_EQ(VlRegistryAddItem(nullptr, "x", &one), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(VlRegistryAddItem(reg, "x", nullptr), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(VlRegistryAddItem(reg, "", &one), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(VlRegistryAddItem(reg, nullptr, &one), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(SutSizList(reg), 3);

    char name[] = "copied";
    VlRegistryAddItem(reg, name, &two);
    name[0] = 'X';
    EXPECT_EQ(VlRegistryGetItem(reg, "copied"), &two);
    VlDeleteRegistry(reg); // the items are stack ints: freeing them would crash
    VlDeleteRegistry(nullptr);
}

} // namespace
