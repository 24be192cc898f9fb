// The binding code of one generated request, as the module writer puts it
// into a form's activator function: shared by the generator of large projects
// (make_project) and the module-reading benchmark.
#ifndef VELMORA_BENCH_GENERATED_CODE_HPP
#define VELMORA_BENCH_GENERATED_CODE_HPP

#include <cstdlib>
#include <cstring>
#include <string>

#include "bindcode/generator.h"
#include "maps/map.h"

namespace bench {

inline void Set(char **field, const std::string &value) {
    free(*field);
    *field = strdup(value.c_str());
}

// One request of a form: two columns shown in a site of the page, one argument.
inline std::string GeneratedRequest(const std::string &file, const std::string &form, int n) {
    SpmSPBind *b = SpmCreateListsForSpmBind(2, 1, 1);
    Set(&b->servername, "localhost");
    Set(&b->dbname, "shop");
    Set(&b->name, "proc_" + form + "_" + std::to_string(n));
    Set(&b->altName, "bind" + std::to_string(n));
    b->id = 1;
    b->sqlFrags = SutNewList();
    SutAddList(b->sqlFrags, strdup("select title, price from books where title like :title"));
    for (int i = 0; i < 2; i++) {
        auto *col = static_cast<SpmColBind *>(SutGetNList(b->colBinds, i));
        Set(&col->swidget, "site1");
        Set(&col->interface, file);
        Set(&col->columnName, i ? "price" : "title");
        Set(&col->dataType, i ? "decimal" : "varchar");
        col->columnId = i + 1;
        col->dataSize = 40;
        col->dataTypeId = i ? 3 : 12;
    }
    auto *call = static_cast<SpmCallbackBind *>(SutGetNList(b->callBinds, 0));
    Set(&call->callbackName, "F");
    Set(&call->swidget, form);
    Set(&call->interface, file);
    Set(&call->useDialog, "NO_WP");
    call->maxRows = 20;
    Set(&call->initCode, "\tint count = " + std::to_string(n) + ";");
    Set(&call->finalCode, "\tshowResult(count);");
    auto *arg = static_cast<SpmArgBind *>(SutGetNList(b->argBinds, 0));
    arg->argId = 1;
    Set(&arg->argName, "title");
    Set(&arg->dataType, "varchar");
    Set(&arg->initCode, "VlGetInputValue(\"title\")");
    char *code = getCallbackCode(b, call, 1);
    std::string text = code ? code : "";
    free(code);
    SpmDestroySPBind(&b);
    return text;
}

} // namespace bench

#endif
