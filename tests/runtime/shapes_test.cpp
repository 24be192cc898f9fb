// Every code shape the project's own generator writes compiles against the
// distribution's VlRnHtml.h without a warning, as C11 and as C++20, and links
// with -lvlrun alone: the binding code of getCallbackCode with every
// optional list, every kind, dialog, cache, index and queue word and all five
// run calls, inside the frames the map upkeep writes (with the older one and
// the older argument call), in a module of the module file format, together
// with the example's generated main module and page modules.
#include "runtime/generated_program.hpp"
#include "support/temp_dir.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kExample = std::string(VELMORA_SOURCE_DIR) + "/examples/shop/";

// The code of request k: its kind, dialog and detail words chosen by k, so
// that together the requests use every word.
std::string RequestCode(int k) {
    static const char *const indexWords[] = {"ROW_INDEX",    "WIDGET_INDEX", "NEXT_INDEX",
                                             "PREV_INDEX",   "PAGEUP_INDEX", "PAGEDW_INDEX",
                                             "LAST_INDEX",   "HOME_INDEX"};
    static const int kinds[] = {0, 0, 0, 1, 1002, 1003, 1004, 1005};
    static const char *const dialogs[] = {"NO_WP", "USE_IT", "NO_USE"};
    static const char *const caches[] = {"NO_CACHE", "TO_CACHE", "FROM_CACHE"};
    SpmSPBind *bind = SpmNewSPBind();
    Set(&bind->servername, "srv");
    Set(&bind->dbname, "db");
    Set(&bind->name, "request");
    Set(&bind->altName, ("bind" + std::to_string(k)).c_str());
    bind->id = kinds[k];
    bind->dbVendor = k % 5;
    Set(&bind->cacheFlag, caches[k % 3]);
    if (k % 2) Set(&bind->cacheKey, "\"key\"");
    if (k % 2) Set(&bind->indexKey, "\"index\"");
    bind->sqlFrags = MakeList({"select \"a\" from t", "where b = :b\nand c = :c"});
    bind->options = MakeList({"Delimiter : ,"});
    SpmCallbackBind *call = SpmAddCallbackBindToSP(bind);
    call->maxRows = 10;
    Set(&call->useDialog, dialogs[k % 3]);
    Set(&call->indexFlag, indexWords[k]);
    if (k % 2) Set(&call->indexValue, "\"value\"");
    Set(&call->queueFile, k % 2 ? "QUEUE_TO_FILE" : "NO_QUEUE_FILE");
    Set(&call->initCode, "\tconst char *seen = VlGetInputValue(\"b\");");
    Set(&call->finalCode, "\tif (seen && VlGetRowCount(pSgeWCD) > 0) VlSetAnswerPage(seen);");
    call->options = MakeList({"Call : 1"});
    struct Column {
        const char *page, *widget, *popup, *clientData;
    };
    for (Column c : {Column{"p.html", "site1", "showRow", "(XtPointer)\"row\""},
                     Column{nullptr, "site2", nullptr, nullptr},
                     Column{nullptr, nullptr, nullptr, nullptr}}) {
        SpmColBind *col = SpmAddColBindToSP(bind);
        Set(&col->interface, c.page);
        Set(&col->swidget, c.widget);
        Set(&col->popCallbackName, c.popup);
        Set(&col->clientData, c.clientData);
        Set(&col->dataType, "varchar");
        Set(&col->columnName, "a");
        col->options = MakeList({"Width : 20"});
    }
    for (const char *init : {"VlGetInputValue(\"b\")", "\"\"", "seen"}) {
        SpmArgBind *arg = SpmAddArgBindToSP(bind);
        Set(&arg->argName, "b");
        Set(&arg->dataType, "int");
        Set(&arg->initCode, init);
        arg->options = MakeList({"Null : yes"});
    }
    char *code = getCallbackCode(bind, call, 1);
    std::string text = code ? code : "";
    free(code);
    SpmDestroySPBind(&bind);
    return text;
}

// A module of eight activators, their registration and the setup calls that
// the example's main module does not make.
std::string ShapesModule() {
    const std::string frame = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer VlClient=NULL;\n";
    const std::string oldFrame = "{\n\t/**  velmora versn 1.00  **/\n\tXtPointer SgeClientData;\n";
    std::vector<std::pair<std::string, std::string>> activators;
    for (int k = 0; k < 8; k++) {
        std::string body = RequestCode(k);
        if (k == 0) body = frame + body + "\n" + RequestCode(1) + "\n}";
        if (k == 1) {
            std::size_t run = body.find("\n\tDoWorkProc");
            body = oldFrame + body.insert(run, "\tSgeSetArgBind(pSgeWCD, 12, \"b\",\n\t\t\"\");\n") +
                   "\n}";
        }
        activators.emplace_back(std::to_string(k), body);
    }
    std::string registrations = "\tVlRegisterHtmlAlias(\"x__Aother_html\",\"0__Fshapes_html\");\n"
                                "\tVlSetOrbSeed(7);\n";
    for (const char *vendor : {"SQLITE", "POSTGRES", "ORACLE", "SYBASE", "INFORMIX", "DB2", "ODBC",
                               "MSSQL", "MYSQL", "INGRES"})
        registrations += std::string("\tVlSetDefaultVendor(SGE") + vendor + ");\n";
    return ModuleText("shapes.html", activators, "static void showRow(void) {}\n", registrations);
}

TEST(GeneratedCode, EveryShapeCompilesWithoutWarningsAsC11AndCxx20AndLinks) {
    TempDir dir;
    dir.Write("shapes.c", ShapesModule());
    for (const char *file : {"shop.c", "catalog.c", "order.c"})
        dir.Write(file, ReadText(kExample + file));
    struct Language {
        std::string compiler, options;
    };
    for (const Language &language :
         {Language{VELMORA_C_COMPILER, "-std=c11"},
          Language{VELMORA_CXX_COMPILER, "-x c++ -std=c++20"}}) {
        SCOPED_TRACE(language.options);
        // Linked as the generated makefile links: the C compiler, -lvlrun alone.
        ASSERT_EQ(BuildProgram(dir.Path(), {"shapes.c", "shop.c", "catalog.c", "order.c"},
                               "shop.cgi", language.options + " -Wall -Wextra -Werror",
                               language.compiler),
                  "");
        // It answers: the start page is not installed here.
        ProgramRun answer = RunProgram(dir.File("shop.cgi"), {}, {"REQUEST_METHOD=GET"}, dir.Path());
        EXPECT_EQ(answer.out.substr(0, 23), "Status: 404 Not Found\r\n");
    }
}

} // namespace
