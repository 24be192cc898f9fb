// Request accessors of generated programs: unpacking numbered arguments (and
// the deliberate swap of VlUnPackArgsFromOptions), lookups, results, and the
// name registry.
#include "runtime/registry.h"
#include "runtime/request.h"
#include "support/c_values.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

VlRequest *RequestWith(std::initializer_list<const char *> options) {
    VlRequest *r = static_cast<VlRequest *>(calloc(1, sizeof(VlRequest)));
    if (options.size()) r->options = MakeList(options);
    return r;
}

// The arguments as "name=value#number".
Strings ArgsOf(VlRequest *r) {
    return Each<VlReqArg>(r->args, [](VlReqArg *a) {
        return Str(a->name) + "=" + Str(a->value) + "#" + std::to_string(a->number) +
               std::to_string(a->aux1) + std::to_string(a->aux2);
    });
}

std::vector<intptr_t> Numbers(SutList *l) {
    std::vector<intptr_t> out;
    for (int i = 0; i < SutSizList(l); i++)
        out.push_back(reinterpret_cast<intptr_t>(SutGetNList(l, i)));
    return out;
}

TEST(Request, UnpackStopsAtTheFirstIncompletePairAndRemovesWhatItTook) {
    VlRequest *r = RequestWith(
        {"Other : x", "Arg0Name : 7a", "Arg0Value : 1", "Arg2Name : c", "Arg2Value : 3"});
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(ArgsOf(r), Strings{"7a=1#700"}); // the number is atoi of the name
    EXPECT_EQ(Items(r->options), (Strings{"Other : x", "Arg2Name : c", "Arg2Value : 3"}));
    VlReqDelete(r);

    // Half a pair ends the loop, and both of its options are gone.
    r = RequestWith({"Arg0Name : a", "Arg0Value : 1", "Arg1Name : b", "Arg1Name : b2",
                     "Arg1Value : 2", "Arg2Value : z"});
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(ArgsOf(r), (Strings{"a=1#000", "b=2#000"}));
    EXPECT_EQ(Items(r->options), Strings{"Arg1Name : b2"});
    VlReqDelete(r);

    VlRequest *bare = RequestWith({}); // without options (both unpackers share the check)
    EXPECT_EQ(VlUnPackArgsFromOptions(bare), 1);
    VlReqDelete(bare);
}

TEST(Request, UnpackGoesUpToIndex1024) {
    VlRequest *r = RequestWith({});
    r->options = SutNewList();
    for (int i = 0; i <= 1025; i++) {
        std::string n = std::to_string(i);
        SutAddList(r->options, strdup(("Arg" + n + "Name : n" + n).c_str()));
        SutAddList(r->options, strdup(("Arg" + n + "Value : v" + n).c_str()));
    }
    EXPECT_EQ(VlUnPackOdbcArgs(r), 0);
    EXPECT_EQ(VlReqGetNumArgs(r), 1025);
    EXPECT_STREQ(VlReqGetNArg(r, 1024), "v1024");
    EXPECT_EQ(Items(r->options), (Strings{"Arg1025Name : n1025", "Arg1025Value : v1025"}));
    VlReqDelete(r);
}

TEST(Request, ArgsFromOptionsSwapNameAndValue) {
    VlRequest *r =
        RequestWith({"Arg0Name : user", "Arg0Value : bob", "Arg1Name : 12", "Arg1Value : "});
    EXPECT_EQ(VlUnPackArgsFromOptions(r), 0);
    EXPECT_EQ(ArgsOf(r), (Strings{"bob=user#000", "=12#000"}));
    EXPECT_STREQ(VlReqGetArgByName(r, "bob"), "user");
    EXPECT_EQ(VlReqGetArgByName(r, "user"), nullptr);
    EXPECT_EQ(VlReqGetArgByName(r, ""), nullptr); // an empty name is never found
    EXPECT_EQ(SutSizList(r->options), 0);
    VlReqDelete(r);
}

TEST(Request, Lookups) {
    VlRequest *r = RequestWith({"Arg0Name : a", "Arg0Value : 1", "Arg1Name : a", "Arg1Value : 2"});
    EXPECT_EQ(VlReqGetOptionList(r), r->options);
    EXPECT_EQ(VlReqGetNumArgs(r), 0); // no argument list yet
    VlUnPackOdbcArgs(r);
    EXPECT_STREQ(VlReqGetArgByName(r, "a"), "1"); // first in list order
    EXPECT_EQ(VlReqGetArgByName(r, "A"), nullptr);
    EXPECT_EQ(VlReqGetArgByName(nullptr, "a"), nullptr);
    EXPECT_STREQ(VlReqGetNArgName(r, 1), "a");
    EXPECT_STREQ(VlReqGetNArg(r, 1), "2");
    EXPECT_EQ(VlReqGetNArg(r, -1), nullptr);
    EXPECT_EQ(VlReqGetNArgName(r, 2), nullptr);
    VlReqDelete(r);
}

TEST(Request, ResultsAndCounters) {
    VlRequest *r = RequestWith({});
    EXPECT_EQ(VlReqAppendString(r, "row"), 0);
    EXPECT_EQ(VlReqAppendString(r, nullptr), 0);
    EXPECT_EQ(VlReqAppendString(nullptr, "x"), 1);
    EXPECT_EQ(Items(r->strings), (Strings{"row", ""}));

    // Each counter goes to its own field. The appenders share one check, the
    // setters another: a negative value or a null request is refused and the
    // field stays as it was.
    EXPECT_EQ(VlReqAppendRowCount(r, 0), 0);
    EXPECT_EQ(VlReqAppendRowCount(r, -1), 1);
    EXPECT_EQ(VlReqAppendColCount(r, 12), 0);
    EXPECT_EQ(VlReqAppendColCount(nullptr, 3), 1);
    EXPECT_EQ(Numbers(r->rowCounts), (std::vector<intptr_t>{0}));
    EXPECT_EQ(Numbers(r->colCounts), (std::vector<intptr_t>{12}));
    int value = 5;
    for (auto setter :
         {VlReqSetGroupCount, VlReqSetErrorCode, VlReqSetReturnCode, VlReqSetAffectedRowCount})
        EXPECT_EQ(setter(r, value++), 0);
    EXPECT_EQ(VlReqSetErrorCode(r, -1), 1);
    EXPECT_EQ(VlReqSetReturnCode(nullptr, 2), 1);
    EXPECT_EQ(std::vector<int>({r->groupCount, r->errorCode, r->returnCode, r->affectedRowCount}),
              std::vector<int>({5, 6, 7, 8}));

    EXPECT_EQ(VlReqAppendError(r, 1, -2, 3, "bad row", 4, 5), 0);
    EXPECT_EQ(VlReqAppendError(r, 0, 0, 0, nullptr, 0, 0), 0);
    EXPECT_EQ(Each<VlReqError>(r->errors,
                               [](VlReqError *e) {
                                   return std::to_string(e->value1) + " " +
                                          std::to_string(e->value2) + " " +
                                          std::to_string(e->value3) + " " + Str(e->text) + " " +
                                          std::to_string(e->value4) + " " +
                                          std::to_string(e->value5);
                               }),
              (Strings{"1 -2 3 bad row 4 5", "0 0 0  0 0"}));
    VlReqDelete(r);
    VlReqDelete(nullptr);
}

TEST(Registry, AddLookUpAndDelete) {
    SutList *reg = VlNewRegistry();
    ASSERT_NE(reg, nullptr);
    int one = 1, two = 2, three = 3;
    void *entry = VlRegistryAddItem(reg, "conn", &one);
    EXPECT_EQ(entry, SutGetNList(reg, 0));
    EXPECT_STREQ(static_cast<VlRegistryEntry *>(entry)->name, "conn");
    VlRegistryAddItem(reg, "conn", &two);
    VlRegistryAddItem(reg, "other", &three);
    EXPECT_EQ(VlRegistryGetItem(reg, "conn"), &one); // the first of the same name
    EXPECT_EQ(VlRegistryGetItem(reg, "other"), &three);
    EXPECT_EQ(VlRegistryGetItem(reg, "Conn"), nullptr);
    EXPECT_EQ(VlRegistryGetItem(reg, ""), nullptr);

    // No registry, item or name: nothing is added.
    EXPECT_EQ(VlRegistryAddItem(reg, "x", nullptr), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(VlRegistryAddItem(reg, "", &one), VL_REGISTRY_ADD_FAILED);
    EXPECT_EQ(SutSizList(reg), 3);

    char name[] = "copied";
    VlRegistryAddItem(reg, name, &two);
    name[0] = 'X';
    EXPECT_EQ(VlRegistryGetItem(reg, "copied"), &two);
    VlDeleteRegistry(reg); // the items are stack ints: freeing them would crash
    VlDeleteRegistry(nullptr);
}

} // namespace
