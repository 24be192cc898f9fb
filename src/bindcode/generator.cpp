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

string_view orEmpty(const char *s) {
    return s ? string_view(s) : string_view();
}
string_view orDefault(const char *s, const char *fallback) {
    return s ? s : fallback;
}

// A null pointer of the generated code stands for an absent value.
std::string pointerOr0x0(const char *s) {
    return std::string("(XtPointer)") + (s ? s : "0x0");
}

// A quoted list item: a double quote becomes backslash-quote, a newline
// blank-backslash-newline; carriage returns are dropped.
void appendQuotedItem(std::string &out, string_view text) {
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

void appendList(std::string &out, const SutList *items) {
    for (int i = 0; i < SutSizList(items); i++)
        appendQuotedItem(out, orEmpty(static_cast<const char *>(SutGetNList(items, i))));
    out += "\t\tVULL);\n";
}

bool hasItems(const SutList *list) {
    return SutSizList(list) > 0;
}

// The work call's last argument: the request kind where it has one, else the
// callback's dialog setting.
string_view lastWord(const SpmSPBind *bind, const SpmCallbackBind *call) {
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
        return orDefault(call->useDialog, "NO_WP");
    }
}

string_view runCall(int vendor) {
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
std::string widgetWord(const SpmColBind *col) {
    if (!col->swidget) return "(XtPointer)0x0";
    std::string word = "\"";
    if (col->interface) word.append(col->interface).append("|");
    return word.append(col->swidget).append("\"");
}

void appendCode(std::string &out, const char *code) {
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
    if (flag) appendCode(out, call->initCode);

    out += "\n\tpSgeWCD = getSgeWorkCallData(UxWidget,\n\t\t";
    out += std::to_string(call->maxRows);
    out.append(",\n\t\t\"").append(orEmpty(bind->servername));
    out.append("\",\n\t\t\"").append(orEmpty(bind->dbname));
    out.append("\",\n\t\t\"").append(orEmpty(bind->name));
    out.append("\", ").append(lastWord(bind, call)).append(");\n\n");

    // Without a name the comment is left out, so the reader gives the bind a
    // fresh unique one.
    if (bind->altName)
        out.append("\n\t/* Brennix Bind Name : ").append(bind->altName).append(" */\n");

    out.append("\tSgeSetCallDetail(pSgeWCD, ").append(orDefault(bind->cacheFlag, "NO_CACHE"));
    out.append(",\n\t\t").append(pointerOr0x0(bind->cacheKey));
    out.append(",\n\t\t").append(orDefault(call->indexFlag, "ROW_INDEX"));
    out.append(", ").append(pointerOr0x0(call->indexValue));
    out.append(",\n\t\t").append(pointerOr0x0(bind->indexKey));
    out.append(",\n\t\t").append(orDefault(call->queueFile, "NO_QUEUE_FILE")).append(");\n");

    // A dynamic SQL request carries its fragments, even when it has none.
    if (hasItems(bind->sqlFrags) || bind->id == 1) {
        out += "\tSgeVaSetFrags(pSgeWCD,\n";
        appendList(out, bind->sqlFrags);
    }
    if (hasItems(bind->options)) {
        out += "\tVlVaSetReqOptions(pSgeWCD,\n";
        appendList(out, bind->options);
    }
    if (hasItems(call->options)) {
        out += "\tVlVaSetCallOptions(pSgeWCD,\n";
        appendList(out, call->options);
    }

    for (int i = 0; i < SutSizList(bind->colBinds); i++) {
        const auto *col = static_cast<const SpmColBind *>(SutGetNList(bind->colBinds, i));
        if (!col) continue;
        out.append("\tSgeSetColBind(pSgeWCD, ").append(widgetWord(col));
        out.append(", ").append(std::to_string(col->group));
        out.append(", ").append(std::to_string(col->order));
        out.append(", ").append(std::to_string(col->dataSize));
        out.append(",\n\t\t").append(pointerOr0x0(col->popCallbackName));
        out.append(",\n\t\t").append(col->clientData ? col->clientData : "(XtPointer)0x0");
        out.append(");\n");
        out.append("\tSgeSetColDetail(pSgeWCD, ").append(std::to_string(col->dataTypeId));
        out.append(", ").append(std::to_string(col->computeId));
        out.append(", ").append(std::to_string(col->computeColumn));
        // The fourth number is not read back: the column's position.
        out.append(", ").append(std::to_string(i + 1));
        out.append(",\n\t\t\"").append(orEmpty(col->dataType));
        out.append("\",\n\t\t\"").append(orEmpty(col->columnName)).append("\");\n");
        if (hasItems(col->options)) {
            out.append("\tVlVaSetColOptions(pSgeWCD, ").append(std::to_string(i + 1)).append(",\n");
            appendList(out, col->options);
        }
    }

    for (int i = 0; i < SutSizList(bind->argBinds); i++) {
        const auto *arg = static_cast<const SpmArgBind *>(SutGetNList(bind->argBinds, i));
        if (!arg) continue;
        out.append("\tSgeSetArgBnd2(pSgeWCD, ").append(std::to_string(arg->dataTypeId));
        out.append(", ").append(std::to_string(arg->dataSize));
        out.append(", \"").append(orEmpty(arg->argName));
        out.append("\", \"").append(orEmpty(arg->dataType));
        out.append("\",\n\t\t").append(orDefault(arg->initCode, "\"\"")).append(");\n");
        if (hasItems(arg->options)) {
            out.append("\tVlVaSetArgOptions(pSgeWCD, ").append(std::to_string(i + 1)).append(",\n");
            appendList(out, arg->options);
        }
    }

    out.append("\n\tDoWorkProc(pSgeWCD, PROCESSBRSREQUEST_").append(runCall(bind->dbVendor));
    out += ");\n\n";
    out += "\t/*******************************************************/\n"
           "\t/********** users final code is inserted here **********/\n"
           "\t/*******************************************************/\n";
    if (flag) appendCode(out, call->finalCode);
    out += "\n\t/*************** END OF VELMORA FINAL CODE  ***************************/\n}";
    return VlHeapCopy(out);
}

} // extern "C"
