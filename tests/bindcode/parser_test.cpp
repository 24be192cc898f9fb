// The binding-code parser on hand-written activator bodies: the request walk,
// the work call, the kind and vendor tables, columns, arguments, quoted lists
// and their unescaping, and truncated or malformed code.
#include "support/bind_text.hpp"
#include "bindcode/parser.h"
#include "bindcode/upkeep.h"
#include "support/binding_code.hpp"

#include <gtest/gtest.h>

namespace {

class Parser : public ::testing::Test {
  protected:
    void SetUp() override { SwdResetTheMap(); }
    void TearDown() override { SwdResetTheMap(); }
};

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
    ~Found() { DestroyBinds(binds); }
    int Size() const { return SutSizList(binds); }
    SpmSPBind *Bind(int i) const { return Nth<SpmSPBind>(binds, i); }
    SpmCallbackBind *Call(int i) const { return Nth<SpmCallbackBind>(Bind(i)->callBinds, 0); }
};

TEST_F(Parser, TwoRequestsInOneBodyKeepTheirOrderAndCode) {
    std::string body =
        kCodeHead +
        Request("  x = 1;\n  y = 2;\n", WorkCall("25", "orders", "USE_IT"),
                "\n\t/* Brennix Bind Name : ordersBind */\n"
                "\tSgeSetCallDetail(pSgeWCD, TO_CACHE,\n\t\t(XtPointer)ckey,\n\t\tNEXT_INDEX, "
                "(XtPointer)0x0,\n\t\t(XtPointer)ikey,\n\t\tQUEUE_TO_FILE);\n",
                "OSQL", "  done();\n") +
        "\n" + Request("", WorkCall("-1", "items", "NO_USE"), "", "DSQL", "") + "\n}";
    Found f(body);
    ASSERT_EQ(f.Size(), 2);
    EXPECT_EQ(
        Stored(f.Bind(0)),
        "\"srv\" 0 \"db\" 0 \"orders\" 0 \"ordersBind\" 1 \"TO_CACHE\" \"ckey\" \"ikey\" none 1 "
        "none\ncall \"Form1\" \"Page1\" \"F\" 1 \"  x = 1;\n  y = 2;\" \"  done();\" "
        "\"USE_IT\" 25 0 \"NEXT_INDEX\" null \"QUEUE_TO_FILE\" none");
    EXPECT_EQ(f.Call(0)->isChanged, 1);
    // The second has no bind-name comment: it keeps the first free bindN.
    EXPECT_EQ(Stored(f.Bind(1)),
              "\"srv\" 0 \"db\" 0 \"items\" 0 \"bind1\" 1 \"NO_CACHE\" null null "
              "none 0 none\ncall \"Form1\" \"Page1\" \"F\" 1 null null \"NO_USE\" -1 "
              "1 \"ROW_INDEX\" null \"NO_QUEUE_FILE\" none");
}

TEST_F(Parser, BindsOfOneBodyMayShareANameUntilTheirCommentIsRead) {
    SpmAddSPBind()->altName = strdup("bind1");
    std::string one = Request("", WorkCall("1", "a", "NO_WP"), "", "DSQL", "");
    Found f(kCodeHead + one + "\n" + one + "\n}");
    ASSERT_EQ(f.Size(), 2);
    EXPECT_STREQ(f.Bind(0)->altName, "bind2");
    EXPECT_STREQ(f.Bind(1)->altName, "bind2");
}

TEST_F(Parser, KindWordsAndVendorsFollowTheirTables) {
    struct Case {
        const char *word, *run;
        int id, vendor;
        const char *dialog;
    } cases[] = {{"READ_FILE", "ISQL", 1002, 2, "NO_WP"},
                 {"NULL_EXEC", "XSQL", 1005, 4, "NO_WP"},
                 {"NO_USE", "DSQL", 0, 0, "NO_USE"}};
    for (const Case &c : cases) {
        Found f(kCodeHead + Request("", WorkCall("3", "r", c.word), "", c.run, "") + "\n}");
        ASSERT_EQ(f.Size(), 1) << c.word;
        EXPECT_EQ(f.Bind(0)->id, c.id) << c.word;
        EXPECT_EQ(f.Bind(0)->dbVendor, c.vendor) << c.word;
        EXPECT_STREQ(f.Call(0)->useDialog, c.dialog) << c.word;
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
    Found f(kCodeHead + Request("", WorkCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    ASSERT_EQ(f.Size(), 1);
    // The second detail has only three numbers: the fixed default type 39 and
    // no computation; the third column has no detail line.
    EXPECT_EQ(Stored(f.Bind(0)).substr(Stored(f.Bind(0)).find("\ncol")),
              "\ncol \"Entry1\" \"Page2\" 0 null 0 \"name\" 0 \"char\" 12 10 \"popUp\" "
              "\"(XtPointer)\"a;\\\"b\"\" 1 3 4 [\"width : 20\",\"a \"q\"\nb\",]"
              "\ncol null \"Page2\" 5 null 0 \"qty\" 0 \"int\" 39 4 null null 2 0 0 none"
              "\ncol \"Entry3\" \"Page2\" 6 null 0 null 0 null -1 8 \"plain\" \"myData\" 3 0 0 none"
              "\ncall \"Form1\" \"Page1\" \"F\" 1 null null \"NO_WP\" 0 0 \"ROW_INDEX\" null "
              "\"NO_QUEUE_FILE\" none");
}

TEST_F(Parser, ArgumentBindsOfBothFormsAndTheirOptions) {
    std::string calls =
        "\tSgeSetArgBnd2(pSgeWCD, 56, 4, \"p_id\", \"int\",\n\t\tVlGetInputValue(\"i;d\"));\n"
        "\tVlVaSetArgOptions(pSgeWCD, 1,\n\t\t\"null : ok\",\n\t\tVULL);\n"
        "\tSgeSetArgBind(pSgeWCD, 12, \"p_name\",\n\t\t\"\");\n";
    Found f(kCodeHead + Request("", WorkCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    EXPECT_EQ(Stored(f.Bind(0)).substr(Stored(f.Bind(0)).find("\narg")),
              "\narg \"p_id\" 1 \"int\" 56 4 \"VlGetInputValue(\"i;d\")\" [\"null : ok\",]"
              "\narg \"p_name\" 2 null 12 -1 \"\"\"\" none");
}

TEST_F(Parser, FragmentsAndOptionListsAreUnescaped) {
    std::string calls = "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"select \\\"a\\\" \\\nfrom t\",\n\t\t"
                        "\"where x = 1\",\n\t\tVULL);\n"
                        "\tVlVaSetReqOptions(pSgeWCD,\n\t\t\"r : 1\",\n\t\tVULL);\n"
                        "\tVlVaSetCallOptions(pSgeWCD,\n\t\t\"c : \\\\2\",\n\t\tVULL);\n";
    Found f(kCodeHead + Request("", WorkCall("0", "r", "NO_WP"), calls, "DSQL", "") + "\n}");
    SpmSPBind *b = f.Bind(0);
    EXPECT_EQ(b->id, 1); // fragments make it a dynamic SQL request
    EXPECT_EQ(Items(b->sqlFrags), (Strings{"select \"a\"\nfrom t", "where x = 1"}));
    EXPECT_EQ(Items(b->options), Strings{"r : 1"});
    EXPECT_EQ(Items(f.Call(0)->options), Strings{"c : \\\\2"});

    // A kind from the work call stays; an item without its closing quote is
    // dropped and ends the list.
    std::string open = "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"one\",\n\t\t\"two";
    Found g(kCodeHead + Request("", WorkCall("0", "r", "READ_FILE"), open, "DSQL", "") + "\n}");
    ASSERT_EQ(g.Size(), 1);
    EXPECT_EQ(g.Bind(0)->id, 1002);
    EXPECT_EQ(Items(g.Bind(0)->sqlFrags), Strings{"one"});
}

TEST_F(Parser, EntryPointsPutAppliedBindsIntoTheMap) {
    std::string body = kCodeHead + Request("", WorkCall("0", "r", "NO_WP"), "", "DSQL", "") + "\n}";
    EXPECT_EQ(SwdParseFormCode("P", "", body.c_str()), 0);
    EXPECT_EQ(SpmGetMapContext(), nullptr);

    EXPECT_EQ(SwdParseFormCode("P", "Form1", body.c_str()), 1);
    EXPECT_EQ(SwdParseAnchCode("P", "Anch1", body.c_str()), 1);
    EXPECT_EQ(SwdParseAnchCode("P", "Anch2", "{ no binding code here }"), 1);
    SpmMap *map = SpmGetMapContext();
    ASSERT_NE(map, nullptr);
    // The first landed in the map before the second was named.
    EXPECT_EQ(BindsOf(map->spBinds), (Strings{"r/bind1 1 P|Form1|F", "r/bind2 1 P|Anch1|A"}));
}

} // namespace
