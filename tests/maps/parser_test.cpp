// The binding-code parser on hand-written activator bodies: the request walk,
// the work call, the kind and vendor tables, columns, arguments, quoted lists
// and their unescaping, and truncated or malformed code.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "maps/map.h"
#include "maps/parser.h"
#include "maps/upkeep.h"

namespace {

class Parser : public ::testing::Test {
  protected:
    void SetUp() override { SwdResetTheMap(); }
    void TearDown() override { SwdResetTheMap(); }
};

const std::string head = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer VlClient=NULL;\n";
const std::string initBanner = "\t/********************************************************/\n"
                               "\t/********* users initial code is inserted here **********/\n"
                               "\t/********************************************************/\n";
const std::string finalBanner = "\t/*******************************************************/\n"
                                "\t/********** users final code is inserted here **********/\n"
                                "\t/*******************************************************/\n";
const std::string endBanner =
    "\n\t/*************** END OF VELMORA FINAL CODE  ***************************/\n}";

std::string workCall(const char *rows, const char *name, const char *word) {
    return std::string("\n\tpSgeWCD = getSgeWorkCallData(UxWidget,\n\t\t") + rows +
           ",\n\t\t\"srv\",\n\t\t\"db\",\n\t\t\"" + name + "\", " + word + ");\n\n";
}

// One request: init code, work call, body calls, run call, final code.
std::string request(const std::string &init, const std::string &call, const std::string &calls,
                    const char *run, const std::string &final) {
    return "{\n\tpSgeWorkCallData pSgeWCD;\n\n" + initBanner + init + call + calls +
           "\n\tDoWorkProc(pSgeWCD, PROCESSBRSREQUEST_" + run + ");\n\n" + finalBanner + final +
           endBanner;
}

// Runs the extractor on one body and hands back its binds.
struct Found {
    SutList *binds;
    explicit Found(const std::string &body, const char *cb = "F") : Found(body.c_str(), cb) {}
    explicit Found(const char *body, const char *cb = "F") {
        SwdCallbackCode item = {const_cast<char *>(cb), const_cast<char *>(body)};
        SutList *items = SutNewList();
        SutAddList(items, &item);
        binds = SwdExtractMapsFromCallbacks("Page1", "Form1", items);
        SutDeleteList(items);
    }
    ~Found() {
        for (int i = 0; i < SutSizList(binds); i++) {
            auto *b = static_cast<SpmSPBind *>(SutGetNList(binds, i));
            SpmDestroySPBind(&b);
        }
        SutDeleteList(binds);
    }
    int size() const { return SutSizList(binds); }
    SpmSPBind *bind(int i) const { return static_cast<SpmSPBind *>(SutGetNList(binds, i)); }
    SpmCallbackBind *call(int i) const {
        return static_cast<SpmCallbackBind *>(SutGetNList(bind(i)->callBinds, 0));
    }
    SpmColBind *col(int i, int c) const {
        return static_cast<SpmColBind *>(SutGetNList(bind(i)->colBinds, c));
    }
    SpmArgBind *arg(int i, int a) const {
        return static_cast<SpmArgBind *>(SutGetNList(bind(i)->argBinds, a));
    }
};

const char *item(SutList *list, int i) {
    return static_cast<const char *>(SutGetNList(list, i));
}

TEST_F(Parser, TwoRequestsInOneBodyKeepTheirOrderAndCode) {
    std::string body =
        head +
        request("  x = 1;\n  y = 2;\n", workCall("25", "orders", "USE_IT"),
                "\n\t/* Brennix Bind Name : ordersBind */\n"
                "\tSgeSetCallDetail(pSgeWCD, TO_CACHE,\n\t\t(XtPointer)ckey,\n\t\tNEXT_INDEX, "
                "(XtPointer)0x0,\n\t\t(XtPointer)ikey,\n\t\tQUEUE_TO_FILE);\n",
                "OSQL", "  done();\n") +
        "\n" + request("", workCall("-1", "items", "NO_USE"), "", "DSQL", "") + "\n}";
    Found f(body);
    ASSERT_EQ(f.size(), 2);
    SpmSPBind *b = f.bind(0);
    EXPECT_STREQ(b->servername, "srv");
    EXPECT_STREQ(b->dbname, "db");
    EXPECT_STREQ(b->name, "orders");
    EXPECT_STREQ(b->altName, "ordersBind");
    EXPECT_EQ(b->beenApplied, 1);
    EXPECT_EQ(b->id, 0);
    EXPECT_EQ(b->dbVendor, 1);
    EXPECT_STREQ(b->cacheFlag, "TO_CACHE");
    EXPECT_STREQ(b->cacheKey, "ckey");
    EXPECT_STREQ(b->indexKey, "ikey");
    SpmCallbackBind *k = f.call(0);
    EXPECT_STREQ(k->initCode, "  x = 1;\n  y = 2;");
    EXPECT_STREQ(k->finalCode, "  done();");
    EXPECT_EQ(k->maxRows, 25);
    EXPECT_STREQ(k->useDialog, "USE_IT");
    EXPECT_STREQ(k->indexFlag, "NEXT_INDEX");
    EXPECT_EQ(k->indexValue, nullptr);
    EXPECT_STREQ(k->queueFile, "QUEUE_TO_FILE");
    EXPECT_EQ(k->callOrder, 0);
    EXPECT_EQ(k->isChanged, 1);
    EXPECT_EQ(k->isWritten, 1);
    EXPECT_STREQ(k->interface, "Page1");
    EXPECT_STREQ(k->swidget, "Form1");
    EXPECT_STREQ(k->callbackName, "F");

    // The second has no bind-name comment: it keeps the first free bindN.
    SpmSPBind *c = f.bind(1);
    EXPECT_STREQ(c->name, "items");
    EXPECT_STREQ(c->altName, "bind1");
    EXPECT_EQ(c->dbVendor, 0);
    EXPECT_STREQ(c->cacheFlag, "NO_CACHE");
    EXPECT_EQ(f.call(1)->callOrder, 1);
    EXPECT_EQ(f.call(1)->maxRows, -1);
    EXPECT_STREQ(f.call(1)->useDialog, "NO_USE");
    EXPECT_EQ(f.call(1)->initCode, nullptr);
    EXPECT_EQ(f.call(1)->finalCode, nullptr);
}

TEST_F(Parser, BindsOfOneBodyMayShareANameUntilTheirCommentIsRead) {
    SpmAddSPBind()->altName = strdup("bind1");
    std::string one = request("", workCall("1", "a", "NO_WP"), "", "DSQL", "");
    Found f(head + one + "\n" + one + "\n}");
    ASSERT_EQ(f.size(), 2);
    EXPECT_STREQ(f.bind(0)->altName, "bind2");
    EXPECT_STREQ(f.bind(1)->altName, "bind2");
}

TEST_F(Parser, KindWordsAndVendorsFollowTheirTables) {
    struct Case {
        const char *word, *run;
        int id, vendor;
        const char *dialog;
    } cases[] = {
        {"READ_FILE", "OSQL", 1002, 1, "NO_WP"},     {"READ_EXEC", "ISQL", 1003, 2, "NO_WP"},
        {"EXEC_FUNCTION", "SSQL", 1004, 3, "NO_WP"}, {"NULL_EXEC", "XSQL", 1005, 4, "NO_WP"},
        {"USE_IT", "DSQL", 0, 0, "USE_IT"},          {"NO_USE", "OSQL", 0, 1, "NO_USE"}};
    for (const Case &c : cases) {
        Found f(head + request("", workCall("3", "r", c.word), "", c.run, "") + "\n}");
        ASSERT_EQ(f.size(), 1) << c.word;
        EXPECT_EQ(f.bind(0)->id, c.id) << c.word;
        EXPECT_EQ(f.bind(0)->dbVendor, c.vendor) << c.word;
        EXPECT_STREQ(f.call(0)->useDialog, c.dialog) << c.word;
    }
}

TEST_F(Parser, ColumnBindsWidgetsPopupsClientDataAndDetails) {
    std::string calls =
        // A bare widget, then a null one, then a page|widget pair that fills
        // the page of the earlier two.
        "\tSgeSetColBind(pSgeWCD, \"Entry1\", 1, 0, 10,\n\t\t(XtPointer)popUp,\n\t\t"
        "(XtPointer)\"a;\\\"b\");\n"
        "\tSgeSetColDetail(pSgeWCD, 12, 3, 4, 99,\n\t\t\"char\",\n\t\t\"name\");\n"
        "\tVlVaSetColOptions(pSgeWCD, 1,\n\t\t\"width : 20\",\n\t\t\"a \\\"q\\\" \\\nb\",\n\t\t"
        "VULL);\n"
        "\tSgeSetColBind(pSgeWCD, (XtPointer)0x0, 2, 5, 4,\n\t\t(XtPointer)0x0,\n\t\t"
        "(XtPointer)0x0);\n"
        "\tSgeSetColDetail(pSgeWCD, 7, 8, 9,\n\t\t\"int\",\n\t\t\"qty\");\n"
        "\tSgeSetColBind(pSgeWCD, \"Page2|Entry3\", 3, 6, 8,\n\t\tplain,\n\t\tmyData);\n";
    Found f(head + request("", workCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    ASSERT_EQ(f.size(), 1);
    ASSERT_EQ(SutSizList(f.bind(0)->colBinds), 3);
    SpmColBind *a = f.col(0, 0), *b = f.col(0, 1), *c = f.col(0, 2);
    EXPECT_STREQ(a->swidget, "Entry1");
    EXPECT_STREQ(a->interface, "Page2");
    EXPECT_EQ(a->group, 1);
    EXPECT_EQ(a->order, 0);
    EXPECT_EQ(a->dataSize, 10);
    EXPECT_STREQ(a->popCallbackName, "popUp");
    EXPECT_STREQ(a->clientData, "(XtPointer)\"a;\\\"b\"");
    EXPECT_EQ(a->dataTypeId, 12);
    EXPECT_EQ(a->computeId, 3);
    EXPECT_EQ(a->computeColumn, 4);
    EXPECT_STREQ(a->dataType, "char");
    EXPECT_STREQ(a->columnName, "name");
    ASSERT_EQ(SutSizList(a->options), 2);
    EXPECT_STREQ(item(a->options, 0), "width : 20");
    EXPECT_STREQ(item(a->options, 1), "a \"q\"\nb");

    EXPECT_EQ(b->swidget, nullptr);
    EXPECT_STREQ(b->interface, "Page2");
    EXPECT_EQ(b->popCallbackName, nullptr);
    EXPECT_EQ(b->clientData, nullptr);
    EXPECT_EQ(b->group, 2);
    EXPECT_EQ(b->order, 5);
    // Only three numbers: the fixed default type and no computation.
    EXPECT_EQ(b->dataTypeId, 39);
    EXPECT_EQ(b->computeId, 0);
    EXPECT_EQ(b->computeColumn, 0);
    EXPECT_STREQ(b->dataType, "int");
    EXPECT_STREQ(b->columnName, "qty");

    EXPECT_STREQ(c->interface, "Page2");
    EXPECT_STREQ(c->swidget, "Entry3");
    EXPECT_STREQ(c->popCallbackName, "plain");
    EXPECT_STREQ(c->clientData, "myData");
    EXPECT_EQ(c->dataTypeId, -1); // no detail line
}

TEST_F(Parser, ArgumentBindsOfBothFormsAndTheirOptions) {
    std::string calls =
        "\tSgeSetArgBnd2(pSgeWCD, 56, 4, \"p_id\", \"int\",\n\t\tVlGetInputValue(\"i;d\"));\n"
        "\tVlVaSetArgOptions(pSgeWCD, 1,\n\t\t\"null : ok\",\n\t\tVULL);\n"
        "\tSgeSetArgBind(pSgeWCD, 12, \"p_name\",\n\t\t\"\");\n";
    Found f(head + request("", workCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    ASSERT_EQ(SutSizList(f.bind(0)->argBinds), 2);
    SpmArgBind *a = f.arg(0, 0), *b = f.arg(0, 1);
    EXPECT_EQ(a->argId, 1);
    EXPECT_EQ(a->dataTypeId, 56);
    EXPECT_EQ(a->dataSize, 4);
    EXPECT_STREQ(a->argName, "p_id");
    EXPECT_STREQ(a->dataType, "int");
    EXPECT_STREQ(a->initCode, "VlGetInputValue(\"i;d\")");
    ASSERT_EQ(SutSizList(a->options), 1);
    EXPECT_STREQ(item(a->options, 0), "null : ok");
    EXPECT_EQ(b->argId, 2);
    EXPECT_EQ(b->dataTypeId, 12);
    EXPECT_EQ(b->dataSize, -1);
    EXPECT_STREQ(b->argName, "p_name");
    EXPECT_EQ(b->dataType, nullptr);
    EXPECT_STREQ(b->initCode, "\"\"");
}

TEST_F(Parser, FragmentsAndOptionListsAreUnescaped) {
    std::string calls = "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"select \\\"a\\\" \\\nfrom t\",\n\t\t"
                        "\"where x = 1\",\n\t\tVULL);\n"
                        "\tVlVaSetReqOptions(pSgeWCD,\n\t\t\"r : 1\",\n\t\tVULL);\n"
                        "\tVlVaSetCallOptions(pSgeWCD,\n\t\t\"c : \\\\2\",\n\t\tVULL);\n";
    Found f(head + request("", workCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    SpmSPBind *b = f.bind(0);
    EXPECT_EQ(b->id, 1); // fragments make it a dynamic SQL request
    ASSERT_EQ(SutSizList(b->sqlFrags), 2);
    EXPECT_STREQ(item(b->sqlFrags, 0), "select \"a\"\nfrom t");
    EXPECT_STREQ(item(b->sqlFrags, 1), "where x = 1");
    ASSERT_EQ(SutSizList(b->options), 1);
    EXPECT_STREQ(item(b->options, 0), "r : 1");
    ASSERT_EQ(SutSizList(f.call(0)->options), 1);
    EXPECT_STREQ(item(f.call(0)->options, 0), "c : \\\\2");

    // A kind from the work call stays; an item without its closing quote is
    // dropped and ends the list.
    std::string open = "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"one\",\n\t\t\"two";
    Found g(head + request("", workCall("0", "r", "READ_FILE"), open, "DSQL", "") + "\n}");
    ASSERT_EQ(g.size(), 1);
    EXPECT_EQ(g.bind(0)->id, 1002);
    ASSERT_EQ(SutSizList(g.bind(0)->sqlFrags), 1);
    EXPECT_STREQ(item(g.bind(0)->sqlFrags, 0), "one");
}

TEST_F(Parser, WorkCallAndConstructReadersOnTheirOwn) {
    long rows = 0;
    char *server, *db, *name, *last;
    const char *text =
        "\n\tpSgeWCD = getSgeWorkCallData(UxWidget,\n\t\t 42,\n\t\t\"s\",\n\t\t\"d\","
        "\n\t\t\"a,b\", USE_IT);\n\n\n";
    ASSERT_EQ(SwdParseWorkCall(text, &rows, &server, &db, &name, &last), 1);
    EXPECT_EQ(rows, 42);
    EXPECT_STREQ(server, "s\",");
    EXPECT_STREQ(db, "d\",");
    EXPECT_STREQ(name, "a,b\",");
    EXPECT_STREQ(last, "USE_IT);");
    free(server);
    free(db);
    free(name);
    free(last);
    EXPECT_EQ(SwdParseWorkCall(nullptr, &rows, &server, &db, &name, &last), 0);
    EXPECT_EQ(SwdParseWorkCall(text, nullptr, &server, &db, &name, &last), 0);

    SpmSPBind *bind = SpmCreateListsForSpmBind(0, 1, 0);
    const char *code = "/* Brennix Bind Name : myBind */\nrest";
    const char *pos = code;
    EXPECT_EQ(SwdParseBindName(bind, &pos), 1);
    EXPECT_STREQ(bind->altName, "myBind");
    EXPECT_EQ(*pos, '*');
    const char *frags = "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"f\",\n\t\tVULL);\n";
    pos = frags;
    EXPECT_EQ(SwdParseFragmentsCode(bind, &pos), 1);
    EXPECT_STREQ(item(bind->sqlFrags, 0), "f");
    EXPECT_EQ(std::string(pos), ",\n\t\tVULL);\n");
    EXPECT_EQ(SwdParseBindName(nullptr, &pos), 0);
    SpmDestroySPBind(&bind);
}

TEST_F(Parser, EntryPointsPutAppliedBindsIntoTheMap) {
    std::string body = head + request("", workCall("0", "r", "NO_WP"), "", "DSQL", "") + "\n}";
    EXPECT_EQ(SwdParseFormCode(nullptr, "W", body.c_str()), 0);
    EXPECT_EQ(SwdParseFormCode("P", "", body.c_str()), 0);
    EXPECT_EQ(SwdParseAnchCode("P", "W", ""), 0);
    EXPECT_EQ(SpmGetMapContext(), nullptr);

    EXPECT_EQ(SwdParseFormCode("P", "Form1", body.c_str()), 1);
    EXPECT_EQ(SwdParseAnchCode("P", "Anch1", body.c_str()), 1);
    EXPECT_EQ(SwdParseAnchCode("P", "Anch2", "{ no binding code here }"), 1);
    SpmMap *map = SpmGetMapContext();
    ASSERT_NE(map, nullptr);
    ASSERT_EQ(SutSizList(map->spBinds), 2);
    auto *f = static_cast<SpmSPBind *>(SutGetNList(map->spBinds, 0));
    auto *a = static_cast<SpmSPBind *>(SutGetNList(map->spBinds, 1));
    EXPECT_EQ(f->beenApplied, 1);
    EXPECT_STREQ(static_cast<SpmCallbackBind *>(SutGetNList(f->callBinds, 0))->callbackName, "F");
    EXPECT_STREQ(static_cast<SpmCallbackBind *>(SutGetNList(a->callBinds, 0))->callbackName, "A");
    EXPECT_STREQ(static_cast<SpmCallbackBind *>(SutGetNList(a->callBinds, 0))->swidget, "Anch1");
    // The first landed in the map before the second was named.
    EXPECT_STREQ(f->altName, "bind1");
    EXPECT_STREQ(a->altName, "bind2");
}

TEST_F(Parser, TruncatedAndMalformedCodeNeverReadsPastTheEnd) {
    std::string calls =
        "\n\t/* Brennix Bind Name : b */\n"
        "\tSgeSetCallDetail(pSgeWCD, TO_CACHE,\n\t\t(XtPointer)k,\n\t\tROW_INDEX, "
        "(XtPointer)v,\n\t\t(XtPointer)i,\n\t\tNO_QUEUE_FILE);\n"
        "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"a \\\"b\\\" \\\nc\",\n\t\tVULL);\n"
        "\tVlVaSetReqOptions(pSgeWCD,\n\t\t\"r\",\n\t\tVULL);\n"
        "\tVlVaSetCallOptions(pSgeWCD,\n\t\t\"c\",\n\t\tVULL);\n"
        "\tSgeSetColBind(pSgeWCD, \"P|E\", 1, 0, 10,\n\t\t(XtPointer)p,\n\t\t(XtPointer)0x0);\n"
        "\tSgeSetColDetail(pSgeWCD, 12, 0, 0, 3,\n\t\t\"char\",\n\t\t\"name\");\n"
        "\tVlVaSetColOptions(pSgeWCD, 1,\n\t\t\"o\",\n\t\tVULL);\n"
        "\tSgeSetArgBnd2(pSgeWCD, 56, 4, \"p\", \"int\",\n\t\tx(\"y\"));\n"
        "\tVlVaSetArgOptions(pSgeWCD, 1,\n\t\t\"o\",\n\t\tVULL);\n"
        "\tSgeSetArgBind(pSgeWCD, 1, \"q\",\n\t\tz);\n";
    std::string body =
        head + request("init;\n", workCall("5", "r", "USE_IT"), calls, "OSQL", "fin;\n") + "\n}";
    // Every prefix is parsed from its own exactly-sized heap copy, so a read
    // past the end is caught by the address sanitizer.
    for (size_t n = 0; n <= body.size(); n++) {
        char *copy = static_cast<char *>(malloc(n + 1));
        memcpy(copy, body.data(), n);
        copy[n] = '\0';
        Found f(copy);
        free(copy);
        if (n == body.size()) {
            ASSERT_EQ(f.size(), 1);
            EXPECT_STREQ(f.call(0)->finalCode, "fin;");
            EXPECT_STREQ(f.call(0)->initCode, "init;");
            EXPECT_STREQ(f.bind(0)->indexKey, "i");
            EXPECT_STREQ(f.call(0)->indexValue, "v");
        }
    }
    // Garbage made of the recognised texts, out of order and cut short.
    const char *junk[] = {
        "xSgeWorkCallData pSgeWCD",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo\"\";/* Brennix Bind "
        "Name :",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo;\tSgeSetColBind("
        "pSgeWCD,,,,,,",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo;\tSgeSetColBind("
        "pSgeWCD\tSgeSetColDetail(pSgeWCD\tSgeSetArgBnd2(pSgeWCD,,,,,",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo;\tSgeSetCallDetail("
        "pSgeWCD, a,\n)\n\t\t,)\n)\n\t\t",
        "xSgeWorkCallData pSgeWCD//////\n\tpSgeWCD = getSgeWo;DoWorkProc(pSgeWCD, "
        "PROCESSBRSREQUEST_XSQL);//////END OF VELMORA FINAL CODE"};
    for (const char *text : junk) {
        size_t len = strlen(text);
        char *copy = static_cast<char *>(malloc(len + 1));
        memcpy(copy, text, len + 1);
        Found f(copy);
        EXPECT_EQ(f.size(), 1) << text;
        free(copy);
    }
}

} // namespace
