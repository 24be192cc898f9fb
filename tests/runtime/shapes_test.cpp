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
    Replace(bind->servername, "srv");
    Replace(bind->dbname, "db");
    Replace(bind->name, "request");
    Replace(bind->altName, ("bind" + std::to_string(k)).c_str());
    bind->id = kinds[k];
    bind->dbVendor = k % 5;
    Replace(bind->cacheFlag, caches[k % 3]);
    if (k % 2) Replace(bind->cacheKey, "\"key\"");
    if (k % 2) Replace(bind->indexKey, "\"index\"");
    bind->sqlFrags = Texts({"select \"a\" from t", "where b = :b\nand c = :c"});
    bind->options = Texts({"Delimiter : ,"});
    SpmCallbackBind *call = SpmAddCallbackBindToSP(bind);
    call->maxRows = 10;
    Replace(call->useDialog, dialogs[k % 3]);
    Replace(call->indexFlag, indexWords[k]);
    if (k % 2) Replace(call->indexValue, "\"value\"");
    Replace(call->queueFile, k % 2 ? "QUEUE_TO_FILE" : "NO_QUEUE_FILE");
    Replace(call->initCode, "\tconst char *seen = VlGetInputValue(\"b\");");
    Replace(call->finalCode, "\tif (seen && VlGetRowCount(pSgeWCD) > 0) VlSetAnswerPage(seen);");
    call->options = Texts({"Call : 1"});
    struct Column {
        const char *page, *widget, *popup, *clientData;
    };
    for (Column c : {Column{"p.html", "site1", "showRow", "(XtPointer)\"row\""},
                     Column{nullptr, "site2", nullptr, nullptr},
                     Column{nullptr, nullptr, nullptr, nullptr}}) {
        SpmColBind *col = SpmAddColBindToSP(bind);
        Replace(col->interface, c.page);
        Replace(col->swidget, c.widget);
        Replace(col->popCallbackName, c.popup);
        Replace(col->clientData, c.clientData);
        Replace(col->dataType, "varchar");
        Replace(col->columnName, "a");
        col->options = Texts({"Width : 20"});
    }
    for (const char *init : {"VlGetInputValue(\"b\")", "\"\"", "seen"}) {
        SpmArgBind *arg = SpmAddArgBindToSP(bind);
        Replace(arg->argName, "b");
        Replace(arg->dataType, "int");
        Replace(arg->initCode, init);
        arg->options = Texts({"Null : yes"});
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
    std::string module = "/* Velmora Module File V1.0B */\n/* Velmora Start Of Tool Includes */\n"
                         "#include \"VlRnHtml.h\"\n/* Velmora Start Of user Includes */\n"
                         "static void showRow(void) {}\n"
                         "static char _Vl_HTML_Filename[] = \"shapes.html\";\n";
    std::string registration = "void R_shapes_html()\n{\n";
    for (int k = 0; k < 8; k++) {
        std::string body = RequestCode(k);
        if (k == 0) body = frame + body + "\n" + RequestCode(1) + "\n}";
        if (k == 1) {
            std::size_t run = body.find("\n\tDoWorkProc");
            body = oldFrame + body.insert(run, "\tSgeSetArgBind(pSgeWCD, 12, \"b\",\n\t\t\"\");\n") +
                   "\n}";
        }
        std::string name = "F" + std::to_string(k);
        module += "/*Velmora Start of Function */\nstatic void " + name +
                  " ()\n/* start of initial code */\n{\n/* start of func Code */\n" + body +
                  "/* end of func code */\n/* start of final code */\n}/* end of final code */\n";
        registration += "\tVlRegisterHtmlActivator(\"" + std::to_string(k) + "__Fshapes_html\"," +
                        name + ");\n";
    }
    registration += "\tVlRegisterHtmlAlias(\"x__Aother_html\",\"0__Fshapes_html\");\n"
                    "\tVlSetOrbSeed(7);\n";
    for (const char *vendor : {"SQLITE", "POSTGRES", "ORACLE", "SYBASE", "INFORMIX", "DB2", "ODBC",
                               "MSSQL", "MYSQL", "INGRES"})
        registration += std::string("\tVlSetDefaultVendor(SGE") + vendor + ");\n";
    return module + registration + "\n}/* Velmora End of Module */\n";
}

TEST(GeneratedCode, EveryShapeCompilesWithoutWarningsAsC11AndCxx20AndLinks) {
    TempDir dir;
    dir.write("shapes.c", ShapesModule());
    for (const char *file : {"shop.c", "catalog.c", "order.c"})
        dir.write(file, readText(kExample + file));
    struct Language {
        std::string compiler, options;
    };
    for (const Language &language :
         {Language{VELMORA_C_COMPILER, "-std=c11"},
          Language{VELMORA_CXX_COMPILER, "-x c++ -std=c++20"}}) {
        SCOPED_TRACE(language.options);
        for (const char *file : {"shapes", "shop", "catalog", "order"}) {
            ProgramRun run = Shell(language.compiler + " " + language.options + " " +
                                    VELMORA_C_FLAGS + " -Wall -Wextra -Werror -I" + kStage +
                                    "/include -c " + file + ".c -o " + file + ".o",
                                dir.path());
            EXPECT_EQ(run.status, 0) << file << ".c:\n" << run.err;
        }
        // Linked as the generated makefile links: the C compiler, -lvlrun alone.
        ProgramRun link = Shell(std::string(VELMORA_C_COMPILER) + " " + VELMORA_LINK_FLAGS +
                                 " -o shop.cgi shop.o catalog.o order.o shapes.o -L" + kStage +
                                 "/lib -lvlrun",
                             dir.path());
        ASSERT_EQ(link.status, 0) << link.err;
        // It answers: the start page is not installed here.
        ProgramRun answer = runProgram(dir.file("shop.cgi"), {}, {"REQUEST_METHOD=GET"}, dir.path());
        EXPECT_EQ(answer.out.substr(0, 23), "Status: 404 Not Found\r\n");
    }
}

} // namespace
