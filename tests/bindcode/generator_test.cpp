// The binding-code generator: the exact text of one request's code, with and
// without the user's code, and the escaping of quoted list items.
#include "support/bind_text.hpp"
#include "bindcode/generator.h"
#include "bindcode/upkeep.h"
#include "support/binding_code.hpp"

#include <gtest/gtest.h>

namespace {

struct Sample {
    SpmSPBind *bind = SpmCreateListsForSpmBind(2, 1, 1);
    SpmCallbackBind *call = Nth<SpmCallbackBind>(bind->callBinds, 0);
    SpmColBind *col = Nth<SpmColBind>(bind->colBinds, 0);
    SpmColBind *col2 = Nth<SpmColBind>(bind->colBinds, 1);
    SpmArgBind *arg = Nth<SpmArgBind>(bind->argBinds, 0);

    Sample() {
        Set(&bind->servername, "srv");
        Set(&bind->dbname, "db");
        Set(&bind->name, "orders");
        Set(&bind->altName, "bind3");
        Set(&bind->indexKey, "ik");
        bind->dbVendor = 2;
        bind->sqlFrags = MakeList({"select \"x\"\nfrom t\r"});
        call->maxRows = 25;
        Set(&call->useDialog, "USE_IT");
        Set(&call->initCode, "a = 1;");
        Set(&call->finalCode, "b = 2;");
        call->options = MakeList({"o : 1"});
        Set(&col->swidget, "Entry");
        Set(&col->interface, "Page1");
        col->dataSize = 10;
        col->dataTypeId = 12;
        col->columnId = 3;
        Set(&col->dataType, "char");
        Set(&col->columnName, "name");
        Set(&col2->popCallbackName, "popIt");
        Set(&col2->clientData, "(XtPointer)\"a;b\"");
        col2->group = 2;
        col2->order = 1;
        col2->dataSize = 4;
        col2->dataTypeId = 7;
        col2->computeId = 1;
        col2->computeColumn = 2;
        col2->columnId = 5;
        Set(&col2->dataType, "int");
        Set(&col2->columnName, "qty");
        col2->options = MakeList({"w : 3"});
        arg->dataTypeId = 56;
        arg->dataSize = 4;
        Set(&arg->argName, "p_id");
        Set(&arg->dataType, "int");
        Set(&arg->initCode, "VlGetInputValue(\"id\")");
    }
    ~Sample() { SpmDestroySPBind(&bind); }
};

// The calls of the sample's request.
std::string Calls() {
    return "\n\t/* Brennix Bind Name : bind3 */\n"
           "\tSgeSetCallDetail(pSgeWCD, NO_CACHE,\n\t\t(XtPointer)0x0,\n\t\tROW_INDEX, "
           "(XtPointer)0x0,\n\t\t(XtPointer)ik,\n\t\tNO_QUEUE_FILE);\n"
           "\tSgeVaSetFrags(pSgeWCD,\n\t\t\"select \\\"x\\\" \\\nfrom t\",\n\t\tVULL);\n"
           "\tVlVaSetCallOptions(pSgeWCD,\n\t\t\"o : 1\",\n\t\tVULL);\n"
           "\tSgeSetColBind(pSgeWCD, \"Page1|Entry\", 1, 0, 10,\n\t\t(XtPointer)0x0,\n\t\t"
           "(XtPointer)0x0);\n"
           "\tSgeSetColDetail(pSgeWCD, 12, 0, 0, 1,\n\t\t\"char\",\n\t\t\"name\");\n"
           "\tSgeSetColBind(pSgeWCD, (XtPointer)0x0, 2, 1, 4,\n\t\t(XtPointer)popIt,\n\t\t"
           "(XtPointer)\"a;b\");\n"
           "\tSgeSetColDetail(pSgeWCD, 7, 1, 2, 2,\n\t\t\"int\",\n\t\t\"qty\");\n"
           "\tVlVaSetColOptions(pSgeWCD, 2,\n\t\t\"w : 3\",\n\t\tVULL);\n"
           "\tSgeSetArgBnd2(pSgeWCD, 56, 4, \"p_id\", \"int\",\n\t\tVlGetInputValue(\"id\"));\n";
}

TEST(Generator, WritesTheRequestWithTheUsersCodeWhenAsked) {
    Sample s;
    const std::string call = WorkCall("25", "orders", "USE_IT");
    EXPECT_EQ(Take(getCallbackCode(s.bind, s.call, 1)),
              Request("a = 1;\n", call, Calls(), "ISQL", "b = 2;\n"));
    EXPECT_EQ(Take(getCallbackCode(s.bind, s.call, 0)), Request("", call, Calls(), "ISQL", ""));
}

std::string Generate(SpmSPBind *bind, SpmCallbackBind *call, int flag) {
    return Take(getCallbackCode(bind, call, flag)).value_or("");
}

TEST(Generator, KindWordsAndDynamicSqlAndEmptyLists) {
    Sample s;
    SutDestroyList(s.bind->sqlFrags);
    s.bind->sqlFrags = nullptr;
    SutDestroyList(s.call->options);
    s.call->options = SutNewList(); // empty: no list written
    s.bind->id = 1003;
    s.bind->dbVendor = 0;
    std::string code = Generate(s.bind, s.call, 0);
    EXPECT_NE(code.find("\t\t\"orders\", READ_EXEC);\n\n"), std::string::npos);
    EXPECT_NE(code.find("\n\tDoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);\n\n"), std::string::npos);
    // A dynamic SQL request without fragments still says so.
    s.bind->id = 1;
    EXPECT_NE(Generate(s.bind, s.call, 0)
                  .find("(XtPointer)ik,\n\t\tNO_QUEUE_FILE);\n"
                        "\tSgeVaSetFrags(pSgeWCD,\n\t\tVULL);\n\tSgeSetColBind("),
              std::string::npos);
}

} // namespace
