// The binding-code generator: writes the code of one request, run from one
// callback, as the fixed sequence of calls on the work-call record that the
// binding-code parser reads back. Quoted list items are escaped so that the
// parser restores them exactly.
#include "bindcode/generator.h"

#include <string>
#include <string_view>

#include "util/heap.hpp"

namespace {

using std::string_view;

string_view OrEmpty(const char *s) {
    return s ? string_view(s) : string_view();
}
string_view OrDefault(const char *s, const char *fallback) {
    return s ? s : fallback;
}

// A null pointer of the generated code stands for an absent value.
std::string PointerOr0x0(const char *s) {
    return std::string("(XtPointer)") + (s ? s : "0x0");
}

// A quoted list item: a double quote becomes backslash-quote, a newline
// blank-backslash-newline; carriage returns are dropped.
void AppendQuotedItem(std::string &out, string_view text) {
    out += "\t\t\"";
    for (char c : text) {
        if (c == '"')
            out += "\\\"";
        else if (c == '\n')
            out += " \\\n";
        else if (c != '\r')
            out += c;
    }
    out += "\",\n";
}

void AppendList(std::string &out, const SutList *items) {
    for (int i = 0; i < SutSizList(items); i++)
        AppendQuotedItem(out, OrEmpty(static_cast<const char *>(SutGetNList(items, i))));
    out += "\t\tVULL);\n";
}

bool HasItems(const SutList *list) {
    return SutSizList(list) > 0;
}

// The work call's last argument: the request kind where it has one, else the
// callback's dialog setting.
string_view LastWord(const SpmSPBind *bind, const SpmCallbackBind *call) {
    switch (bind->id) {
    case 1002:
        return "READ_FILE";
    case 1003:
        return "READ_EXEC";
    case 1004:
        return "EXEC_FUNCTION";
    case 1005:
        return "NULL_EXEC";
    default:
        return OrDefault(call->useDialog, "NO_WP");
    }
}

string_view RunCallSuffix(int vendor) {
    switch (vendor) {
    case 1:
        return "OSQL";
    case 2:
        return "ISQL";
    case 3:
        return "SSQL";
    case 4:
        return "XSQL";
    default:
        return "DSQL";
    }
}

// The widget a column feeds, as "page|widget" or "widget".
std::string WidgetWord(const SpmColBind *col) {
    if (!col->swidget) return "(XtPointer)0x0";
    std::string word = "\"";
    if (col->interface) word.append(col->interface).append("|");
    return word.append(col->swidget).append("\"");
}

void AppendCode(std::string &out, const char *code) {
    if (code && *code) out.append(code).append("\n");
}

} // namespace

extern "C" {

char *getCallbackCode(SpmSPBind *bind, SpmCallbackBind *call, int flag) {
    if (!bind || !call) return nullptr;
    std::string out;
    out += "{\n\tpSgeWorkCallData pSgeWCD;\n\n";
    out += "\t/********************************************************/\n"
           "\t/********* users initial code is inserted here **********/\n"
           "\t/********************************************************/\n";
    if (flag) AppendCode(out, call->initCode);

    out += "\n\tpSgeWCD = getSgeWorkCallData(UxWidget,\n\t\t";
    out += std::to_string(call->maxRows);
    out.append(",\n\t\t\"").append(OrEmpty(bind->servername));
    out.append("\",\n\t\t\"").append(OrEmpty(bind->dbname));
    out.append("\",\n\t\t\"").append(OrEmpty(bind->name));
    out.append("\", ").append(LastWord(bind, call)).append(");\n\n");

    // Without a name the comment is left out, so the reader gives the bind a
    // fresh unique one.
    if (bind->altName)
        out.append("\n\t/* Brennix Bind Name : ").append(bind->altName).append(" */\n");

    out.append("\tSgeSetCallDetail(pSgeWCD, ").append(OrDefault(bind->cacheFlag, "NO_CACHE"));
    out.append(",\n\t\t").append(PointerOr0x0(bind->cacheKey));
    out.append(",\n\t\t").append(OrDefault(call->indexFlag, "ROW_INDEX"));
    out.append(", ").append(PointerOr0x0(call->indexValue));
    out.append(",\n\t\t").append(PointerOr0x0(bind->indexKey));
    out.append(",\n\t\t").append(OrDefault(call->queueFile, "NO_QUEUE_FILE")).append(");\n");

    // A dynamic SQL request carries its fragments, even when it has none.
    if (HasItems(bind->sqlFrags) || bind->id == 1) {
        out += "\tSgeVaSetFrags(pSgeWCD,\n";
        AppendList(out, bind->sqlFrags);
    }
    if (HasItems(bind->options)) {
        out += "\tVlVaSetReqOptions(pSgeWCD,\n";
        AppendList(out, bind->options);
    }
    if (HasItems(call->options)) {
        out += "\tVlVaSetCallOptions(pSgeWCD,\n";
        AppendList(out, call->options);
    }

    for (int i = 0; i < SutSizList(bind->colBinds); i++) {
        const auto *col = static_cast<const SpmColBind *>(SutGetNList(bind->colBinds, i));
        if (!col) continue;
        out.append("\tSgeSetColBind(pSgeWCD, ").append(WidgetWord(col));
        out.append(", ").append(std::to_string(col->group));
        out.append(", ").append(std::to_string(col->order));
        out.append(", ").append(std::to_string(col->dataSize));
        out.append(",\n\t\t").append(PointerOr0x0(col->popCallbackName));
        out.append(",\n\t\t").append(col->clientData ? col->clientData : "(XtPointer)0x0");
        out.append(");\n");
        out.append("\tSgeSetColDetail(pSgeWCD, ").append(std::to_string(col->dataTypeId));
        out.append(", ").append(std::to_string(col->computeId));
        out.append(", ").append(std::to_string(col->computeColumn));
        // The fourth number is not read back: the column's position.
        out.append(", ").append(std::to_string(i + 1));
        out.append(",\n\t\t\"").append(OrEmpty(col->dataType));
        out.append("\",\n\t\t\"").append(OrEmpty(col->columnName)).append("\");\n");
        if (HasItems(col->options)) {
            out.append("\tVlVaSetColOptions(pSgeWCD, ").append(std::to_string(i + 1)).append(",\n");
            AppendList(out, col->options);
        }
    }

    for (int i = 0; i < SutSizList(bind->argBinds); i++) {
        const auto *arg = static_cast<const SpmArgBind *>(SutGetNList(bind->argBinds, i));
        if (!arg) continue;
        out.append("\tSgeSetArgBnd2(pSgeWCD, ").append(std::to_string(arg->dataTypeId));
        out.append(", ").append(std::to_string(arg->dataSize));
        out.append(", \"").append(OrEmpty(arg->argName));
        out.append("\", \"").append(OrEmpty(arg->dataType));
        out.append("\",\n\t\t").append(OrDefault(arg->initCode, "\"\"")).append(");\n");
        if (HasItems(arg->options)) {
            out.append("\tVlVaSetArgOptions(pSgeWCD, ").append(std::to_string(i + 1)).append(",\n");
            AppendList(out, arg->options);
        }
    }

    out.append("\n\tDoWorkProc(pSgeWCD, PROCESSBRSREQUEST_").append(RunCallSuffix(bind->dbVendor));
    out += ");\n\n";
    out += "\t/*******************************************************/\n"
           "\t/********** users final code is inserted here **********/\n"
           "\t/*******************************************************/\n";
    if (flag) AppendCode(out, call->finalCode);
    out += "\n\t/*************** END OF VELMORA FINAL CODE  ***************************/\n}";
    return VlHeapCopy(out);
}

} // extern "C"
