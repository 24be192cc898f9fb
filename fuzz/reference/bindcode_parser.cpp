// The reference copy of the binding-code parser (src/bindcode/parser.cpp as
// it stood before it read fields without sscanf and jumped between the
// places where a text can begin), kept unchanged inside namespace vlref for
// the differential fuzz target fuzz_bindcode_diff. One call is qualified
// with vlref::, since its list argument would also find the engine's
// function of that name.
// The binding-code parser: finds the generated database requests inside an
// activator function's body and rebuilds one bind per request. It reads the
// generator's output by fixed texts, fixed skips and counts of separators;
// every skip is checked against the end of the text, and the walk never goes
// back, so any input is read in time linear in its length.
#include "bindcode/parser.h"
#include "reference/reference.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "maps/map.h"
#include "util/files.h"
#include "util/heap.hpp"

namespace vlref {

namespace {

using std::string_view;
constexpr size_t npos = string_view::npos;

bool StartsAt(string_view t, size_t i, string_view pattern) {
    return i <= t.size() && t.substr(i).starts_with(pattern);
}

size_t FindFrom(string_view t, char c, size_t from) {
    return from < t.size() ? t.find(c, from) : npos;
}

// The text between a and b, clamped to the text: never reads past its end.
string_view Slice(string_view t, size_t a, size_t b) {
    if (a >= t.size() || b <= a) return {};
    return t.substr(a, b - a);
}

string_view DropLast(string_view v, size_t n) {
    return v.substr(0, v.size() > n ? v.size() - n : 0);
}

// A C string as a view; a null one (a failed copy) is the empty text.
string_view ViewOf(const char *s) {
    return s ? string_view(s) : string_view();
}

// The first ";" outside double quotes from `from`. With escapes, a quote
// preceded by a backslash does not open or close a quoted part.
size_t FindCodeEnd(string_view t, size_t from, bool escapes) {
    bool quoted = false;
    for (size_t i = from; i < t.size(); i++) {
        if (t[i] == '"' && !(escapes && i > 0 && t[i - 1] == '\\'))
            quoted = !quoted;
        else if (t[i] == ';' && !quoted)
            return i;
    }
    return npos;
}

// The position of the n-th occurrence of c from `from`.
size_t FindNth(string_view t, char c, size_t from, int n) {
    size_t pos = from;
    for (int k = 0; k < n; k++) {
        pos = FindFrom(t, c, pos);
        if (pos == npos) return npos;
        if (k + 1 < n) pos++;
    }
    return pos;
}

void AppendItem(SutList **list, string_view v) {
    if (!*list) *list = SutNewList();
    SutAddList(*list, VlHeapCopy(v));
}

// ------------------------------------------------------------ constructs

void ParseBindName(SpmSPBind *bind, string_view t, size_t &pos) {
    size_t colon = FindFrom(t, ':', pos);
    if (colon == npos) {
        pos = t.size();
        return;
    }
    size_t start = colon + 2 <= t.size() ? colon + 2 : t.size();
    size_t star = t.find('*', start);
    size_t end = star == npos ? t.size() : star;
    VlReplaceText(&bind->altName, DropLast(Slice(t, start, end), 1));
    pos = end;
}

// "0x0" stands for a null pointer in the generated code: no value.
void SetUnlessNull(char **field, string_view v) {
    if (v != "0x0") VlReplaceText(field, v);
}

void ParseCallDetail(SpmSPBind *bind, string_view t, size_t &pos) {
    SpmCallbackBind *call = static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, 0));
    size_t stop = t.size();
    size_t comma = FindFrom(t, ',', pos);
    size_t flagEnd = comma == npos ? npos : FindFrom(t, ',', comma + 2);
    if (flagEnd == npos) return void(pos = stop);
    VlReplaceText(&bind->cacheFlag, Slice(t, comma + 2, flagEnd));

    size_t paren = FindFrom(t, ')', flagEnd);
    size_t eol = FindFrom(t, '\n', paren);
    if (eol == npos) return void(pos = stop);
    SetUnlessNull(&bind->cacheKey, DropLast(Slice(t, paren + 1, eol), 1));

    size_t indexFlagEnd = FindFrom(t, ',', eol + 3);
    if (indexFlagEnd == npos) return void(pos = stop);
    if (call) VlReplaceText(&call->indexFlag, Slice(t, eol + 3, indexFlagEnd));
    paren = FindFrom(t, ')', indexFlagEnd);
    eol = FindFrom(t, '\n', paren);
    if (eol == npos) return void(pos = stop);
    if (call) SetUnlessNull(&call->indexValue, DropLast(Slice(t, paren + 1, eol), 1));

    paren = FindFrom(t, ')', eol + 1);
    eol = FindFrom(t, '\n', paren);
    if (eol == npos) return void(pos = stop);
    SetUnlessNull(&bind->indexKey, DropLast(Slice(t, paren + 1, eol), 1));

    paren = FindFrom(t, ')', eol + 3);
    if (paren == npos) return void(pos = stop);
    if (call) VlReplaceText(&call->queueFile, Slice(t, eol + 3, paren));
    pos = paren;
}

void ParseColumnDetail(SpmColBind *col, string_view t, size_t &pos) {
    size_t eol1 = FindFrom(t, '\n', pos);
    std::string first(Slice(t, pos, eol1 == npos ? t.size() : eol1 + 1));
    int dataTypeId = 0, computeId = 0, computeColumn = 0, fourth = 0;
    if (sscanf(first.c_str(), "\tSgeSetColDetail(pSgeWCD, %d, %d, %d, %d,\n", &dataTypeId,
               &computeId, &computeColumn, &fourth) == 4) {
        col->dataTypeId = dataTypeId;
        col->computeId = computeId;
        col->computeColumn = computeColumn;
    } else {
        col->computeId = 0;
        col->computeColumn = 0;
        col->dataTypeId = 39;
    }
    if (eol1 == npos) return void(pos = t.size());
    size_t eol2 = FindFrom(t, '\n', eol1 + 1);
    size_t end2 = eol2 == npos ? t.size() : eol2;
    VlReplaceText(&col->dataType, DropLast(Slice(t, eol1 + 4, end2), 2));
    if (eol2 == npos) return void(pos = t.size());
    size_t eol3 = FindFrom(t, '\n', eol2 + 1);
    size_t end3 = eol3 == npos ? t.size() : eol3;
    VlReplaceText(&col->columnName, DropLast(Slice(t, eol2 + 4, end3), 3));
    pos = end3;
}

// Reads the quoted items of a list whose first item begins four characters
// after the comma at `comma`, undoing the generator's escapes: backslash-quote
// is a quote, blank-backslash-newline a newline.
void ParseQuotedList(SutList **target, string_view t, size_t comma, size_t &pos) {
    size_t open = comma + 4;
    pos = comma + 1;
    std::string item;
    while (open < t.size() && t[open] == '"') {
        item.clear();
        size_t i = open + 1;
        bool closed = false;
        for (; i < t.size(); i++) {
            char c = t[i];
            if (c == '\\' && i + 1 < t.size() && t[i + 1] == '"') {
                item.push_back('"');
                i++;
            } else if (c == '\\' && i + 1 < t.size() && t[i + 1] == '\n') {
                if (!item.empty() && item.back() == ' ') item.pop_back();
                item.push_back('\n');
                i++;
            } else if (c == '"') {
                closed = true;
                break;
            } else {
                item.push_back(c);
            }
        }
        if (!closed) {
            // An item that never closes is dropped and ends the list.
            pos = t.size();
            return;
        }
        AppendItem(target, item);
        pos = i + 1;
        open = i + 5; // past the quote, the comma, the newline and two tabs
    }
}

// Fragments and the request's and callback's options: the list follows the
// first comma.
void ParseListAfterFirstComma(SutList **target, string_view t, size_t &pos) {
    size_t comma = FindFrom(t, ',', pos);
    if (comma == npos) return void(pos = t.size());
    ParseQuotedList(target, t, comma, pos);
}

// Column and argument options: a number (not used) stands between the first
// comma and the list.
void ParseListAfterNumber(SutList **target, string_view t, size_t &pos) {
    size_t comma = FindNth(t, ',', pos, 2);
    if (comma == npos) return void(pos = t.size());
    ParseQuotedList(target, t, comma, pos);
}

void ParseColBind(SpmSPBind *bind, string_view t, size_t &pos) {
    SpmColBind *col = SpmAddColBindToSP(bind);
    size_t sixth = FindNth(t, ',', pos, 6);
    size_t headEnd = sixth == npos ? t.size() : sixth + 1;
    std::string head(Slice(t, pos, headEnd));
    std::vector<char> widget(head.size() + 1), popup(head.size() + 1);
    int group = 0, order = 0, dataSize = 0;
    int read = sscanf(head.c_str(), "\tSgeSetColBind(pSgeWCD, %s %d, %d, %d, %s", widget.data(),
                      &group, &order, &dataSize, popup.data());
    if (!col) return void(pos = headEnd);
    if (read >= 2) col->group = group;
    if (read >= 3) col->order = order;
    if (read >= 4) col->dataSize = dataSize;

    if (read >= 1) {
        string_view word = DropLast(widget.data(), 1);
        if (word != "(XtPointer)0x0") {
            string_view inside = word.substr(word.empty() ? 0 : 1);
            inside = inside.substr(0, inside.find('"'));
            size_t bar = inside.find('|');
            if (bar != npos) {
                VlReplaceText(&col->interface, inside.substr(0, bar));
                VlReplaceText(&col->swidget, inside.substr(bar + 1));
                // Earlier columns written without their page share this one's.
                for (int i = 0; i + 1 < SutSizList(bind->colBinds); i++) {
                    auto *earlier = static_cast<SpmColBind *>(SutGetNList(bind->colBinds, i));
                    if (earlier && !earlier->interface)
                        VlReplaceText(&earlier->interface, inside.substr(0, bar));
                }
            } else {
                VlReplaceText(&col->swidget, inside);
            }
        }
    }
    if (read >= 5) {
        string_view word = DropLast(popup.data(), 1);
        if (word != "(XtPointer)0x0") {
            if (word.starts_with("(XtPointer)")) word.remove_prefix(strlen("(XtPointer)"));
            VlReplaceText(&col->popCallbackName, word);
        }
    }

    if (sixth == npos) return void(pos = t.size());
    size_t end = FindCodeEnd(t, sixth + 4, true);
    string_view data = DropLast(Slice(t, sixth + 4, end == npos ? t.size() : end), 1);
    if (data != "(XtPointer)0x0") VlReplaceText(&col->clientData, data);
    pos = end == npos ? t.size() : end + 1;
}

void ParseArgBind(SpmSPBind *bind, string_view t, size_t &pos, bool older) {
    SpmArgBind *arg = SpmAddArgBindToSP(bind);
    // The call's first line ends at the comma after its last quoted word.
    size_t comma = FindNth(t, ',', pos, older ? 3 : 5);
    size_t headEnd = comma == npos ? t.size() : comma + 1;
    std::string head(Slice(t, pos, headEnd));
    if (!arg) return void(pos = headEnd);
    arg->argId = SutSizList(bind->argBinds); // its position, counted from 1
    std::vector<char> name(head.size() + 1), type(head.size() + 1);
    int dataTypeId = 0, dataSize = 0;
    if (older) {
        int read =
            sscanf(head.c_str(), "\tSgeSetArgBind(pSgeWCD, %d, \"%s", &dataTypeId, name.data());
        if (read >= 1) arg->dataTypeId = dataTypeId;
        if (read >= 2) VlReplaceText(&arg->argName, DropLast(name.data(), 2));
    } else {
        int read = sscanf(head.c_str(), "\tSgeSetArgBnd2(pSgeWCD, %d, %d, \"%s \"%s", &dataTypeId,
                          &dataSize, name.data(), type.data());
        if (read >= 1) arg->dataTypeId = dataTypeId;
        if (read >= 2) arg->dataSize = dataSize;
        if (read >= 3) VlReplaceText(&arg->argName, DropLast(name.data(), 2));
        if (read >= 4) VlReplaceText(&arg->dataType, DropLast(type.data(), 2));
    }
    if (comma == npos) return void(pos = t.size());
    // The value's line: two tabs, the expression, ");".
    size_t end = FindCodeEnd(t, comma + 2, true);
    string_view init = Slice(t, comma + 2, end == npos ? t.size() : end);
    for (int k = 0; k < 2 && init.starts_with('\t'); k++)
        init.remove_prefix(1);
    if (init.ends_with(')')) init.remove_suffix(1);
    VlReplaceText(&arg->initCode, init);
    pos = end == npos ? t.size() : end + 1;
}

// The request kinds that the work call's last argument can name.
struct KindWord {
    const char *word;
    int id;
};
constexpr KindWord kKindWords[] = {
    {"READ_FILE", 1002}, {"READ_EXEC", 1003}, {"EXEC_FUNCTION", 1004}, {"NULL_EXEC", 1005}};

struct RunCall {
    const char *text;
    int vendor; // 0: leaves dbVendor as it is
};
constexpr RunCall kRunCalls[] = {{"DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_OSQL);", 1},
                                 {"DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_ISQL);", 2},
                                 {"DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_SSQL);", 3},
                                 {"DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_XSQL);", 4},
                                 {"DoWorkProc(pSgeWCD, PROCESSBRSREQUEST_DSQL);", 0}};

// Fills a new bind from its work call, the text from "\n\tpSgeWCD =" to the
// call's ";" and the three characters after it.
void ApplyWorkCall(SpmSPBind *bind, SpmCallbackBind *call, string_view text) {
    std::string copy(text);
    long maxRows = 0;
    char *server = nullptr, *db = nullptr, *name = nullptr, *last = nullptr;
    SwdParseWorkCall(copy.c_str(), &maxRows, &server, &db, &name, &last);
    VlCharPtr s(server), d(db), n(name), l(last);
    VlReplaceText(&bind->servername, DropLast(ViewOf(server), 2));
    VlReplaceText(&bind->dbname, DropLast(ViewOf(db), 2));
    VlReplaceText(&bind->name, DropLast(ViewOf(name), 2));
    string_view word = DropLast(ViewOf(last), 2);
    call->maxRows = maxRows;
    VlReplaceText(&call->useDialog, word);
    for (const KindWord &kind : kKindWords) {
        if (word == kind.word) {
            bind->id = kind.id;
            VlReplaceText(&call->useDialog, "NO_WP");
        }
    }
}

// Where the walk over an activator's body stands.
enum class BodyState {
    BetweenRequests, // looking for the next "SgeWorkCallData pSgeWCD"
    InitialBanner,   // in the three banner lines before the user's initial code
    InitialCode,     // in the initial code, up to the work call
    InRequest,       // among the request's calls, up to its run call
    FinalBanner,     // in the three banner lines before the user's final code
    FinalCode,       // in the final code, up to the end banner
};

// Walks one body, one state after the other for each request.
// Each request's bind is first named by WbeGetUniqueSPName("bind1"), which
// walks the whole map context; the bind-name comment that generated code
// always carries then replaces that name. So the walk is left to the end of
// the extraction and made only for the binds that kept no name of their own
// (their addresses go into unnamed): the map context does not change while a
// body is read, so the name is the same as it would have been at once, and
// reading a project's modules stays linear in the number of its binds.
void ExtractFromBody(SutList *result, const char *interface, const char *widget,
                     const char *callbackName, string_view t, std::vector<SpmSPBind *> &unnamed) {
    BodyState state = BodyState::BetweenRequests;
    int requests = 0, slashes = 0;
    size_t codeStart = 0, sixthSlash = 0;
    SpmSPBind *bind = nullptr;
    SpmCallbackBind *call = nullptr;
    SpmColBind *col = nullptr;
    SpmArgBind *arg = nullptr;

    size_t i = 1;
    while (i < t.size()) {
        size_t next = i + 1;
        switch (state) {
        case BodyState::BetweenRequests:
            if (StartsAt(t, i, "SgeWorkCallData pSgeWCD")) {
                requests++;
                bind = SpmNewSPBind();
                if (!bind) return;
                SutAddList(result, bind);
                bind->callBinds = SutNewList();
                call = SpmAddCallbackBindToSP(bind);
                if (!call) return;
                col = nullptr;
                arg = nullptr;
                slashes = 0;
                state = BodyState::InitialBanner;
            }
            break;
        case BodyState::InitialBanner:
        case BodyState::FinalBanner:
            // The sixth slash closes the three banner lines; the code starts
            // after the slash and its newline.
            if (t[i] == '/' && ++slashes == 6) {
                sixthSlash = i;
                codeStart = i + 2;
                state = state == BodyState::InitialBanner ? BodyState::InitialCode
                                                          : BodyState::FinalCode;
            }
            break;
        case BodyState::InitialCode:
            if (StartsAt(t, i, "\n\tpSgeWCD = getSgeWo")) {
                if (i > codeStart + 1) VlReplaceText(&call->initCode, Slice(t, codeStart, i - 1));
                size_t end = FindCodeEnd(t, i, false);
                size_t callEnd = end == npos ? t.size() : end + 1;
                ApplyWorkCall(bind, call, Slice(t, i, end == npos ? t.size() : end + 4));
                free(bind->altName);
                bind->altName = nullptr;
                unnamed.push_back(bind);
                bind->beenApplied = 1;
                call->callOrder = requests - 1;
                call->isChanged = 1;
                call->isWritten = 1;
                VlReplaceString(&call->swidget, widget);
                VlReplaceString(&call->interface, interface);
                VlReplaceString(&call->callbackName, callbackName);
                state = BodyState::InRequest;
                next = callEnd;
            }
            break;
        case BodyState::InRequest: {
            // Every recognised text starts with a tab, a slash or "D".
            if (t[i] != '\t' && t[i] != '/' && t[i] != 'D') break;
            size_t pos = i;
            if (StartsAt(t, i, "/* Brennix Bind Name :")) {
                ParseBindName(bind, t, pos);
            } else if (StartsAt(t, i, "\tSgeSetCallDetail(pSgeWCD")) {
                ParseCallDetail(bind, t, pos);
            } else if (col && StartsAt(t, i, "\tSgeSetColDetail(pSgeWCD")) {
                ParseColumnDetail(col, t, pos);
            } else if (StartsAt(t, i, "\tSgeVaSetFrags(pSgeWCD,\n")) {
                ParseListAfterFirstComma(&bind->sqlFrags, t, pos);
                if (bind->id == 0) bind->id = 1; // a dynamic SQL request
            } else if (StartsAt(t, i, "\tVlVaSetReqOptions(pSgeWCD,\n")) {
                ParseListAfterFirstComma(&bind->options, t, pos);
            } else if (StartsAt(t, i, "\tVlVaSetCallOptions(pSgeWCD,\n")) {
                ParseListAfterFirstComma(&call->options, t, pos);
            } else if (col && StartsAt(t, i, "\tVlVaSetColOptions(pSgeWCD, ")) {
                ParseListAfterNumber(&col->options, t, pos);
            } else if (arg && StartsAt(t, i, "\tVlVaSetArgOptions(pSgeWCD, ")) {
                ParseListAfterNumber(&arg->options, t, pos);
            } else if (StartsAt(t, i, "\tSgeSetColBind(pSgeWCD")) {
                ParseColBind(bind, t, pos);
                col = static_cast<SpmColBind *>(
                    SutGetNList(bind->colBinds, SutSizList(bind->colBinds) - 1));
            } else if (StartsAt(t, i, "\tSgeSetArgBind(pSgeWCD") ||
                       StartsAt(t, i, "\tSgeSetArgBnd2(pSgeWCD")) {
                ParseArgBind(bind, t, pos, StartsAt(t, i, "\tSgeSetArgBind(pSgeWCD"));
                arg = static_cast<SpmArgBind *>(
                    SutGetNList(bind->argBinds, SutSizList(bind->argBinds) - 1));
            } else {
                for (const RunCall &run : kRunCalls) {
                    if (StartsAt(t, i, run.text)) {
                        if (run.vendor) bind->dbVendor = run.vendor;
                        slashes = 0;
                        state = BodyState::FinalBanner;
                        pos = i + strlen(run.text);
                        break;
                    }
                }
            }
            next = pos > i ? pos : i + 1;
            break;
        }
        case BodyState::FinalCode:
            if (StartsAt(t, i, "END OF VELMORA FINAL CODE")) {
                // Of the characters counted from the sixth slash, 22 are not
                // the user's: the slash and its newline before the code, and
                // the code's last newline with the 19 characters of the end
                // banner that stand before this text.
                size_t count = i - sixthSlash;
                if (count > 22)
                    VlReplaceText(&call->finalCode, Slice(t, codeStart, codeStart + count - 22));
                state = BodyState::BetweenRequests;
            }
            break;
        }
        i = next;
    }
}

int ParseActivator(const char *interface, const char *widget, const char *body,
                   const char *callbackName) {
    if (!interface || !*interface || !widget || !*widget || !body || !*body) return 0;
    SwdCallbackCode item = {const_cast<char *>(callbackName), const_cast<char *>(body)};
    SutList *callbacks = SutNewList();
    SutAddList(callbacks, &item);
    SutList *found = vlref::SwdExtractMapsFromCallbacks(interface, widget, callbacks);
    SutDeleteList(callbacks);

    SpmMap *map = SpmGetMapContext();
    if (!map) {
        map = SpmNewMap();
        SpmSetMapContext(map);
    }
    if (map && !map->spBinds) map->spBinds = SutNewList();
    for (int i = 0; i < SutSizList(found); i++) {
        auto *bind = static_cast<SpmSPBind *>(SutGetNList(found, i));
        bind->beenApplied = 1;
        if (!map || !SutAddList(map->spBinds, bind)) SpmDestroySPBind(&bind);
    }
    SutDeleteList(found);
    return 1;
}

// Runs a construct reader on the text from *pos and moves *pos on.
template <typename R, typename F> int RunAt(R *record, const char **pos, F reader) {
    if (!record || !pos || !*pos) return 0;
    string_view t(*pos);
    size_t p = 0;
    reader(record, t, p);
    *pos += p;
    return 1;
}

} // namespace


int SwdParseFormCode(const char *interface, const char *widget, const char *body) {
    return ParseActivator(interface, widget, body, "F");
}

int SwdParseAnchCode(const char *interface, const char *widget, const char *body) {
    return ParseActivator(interface, widget, body, "A");
}

SutList *SwdExtractMapsFromCallbacks(const char *interface, const char *widget,
                                     SutList *callbacks) {
    SutList *result = SutNewList();
    std::vector<SpmSPBind *> unnamed;
    for (int i = 0; i < SutSizList(callbacks); i++) {
        auto *item = static_cast<SwdCallbackCode *>(SutGetNList(callbacks, i));
        if (item && item->code)
            ExtractFromBody(result, interface, widget, item->callbackName, item->code, unnamed);
    }
    char *name = nullptr;
    for (SpmSPBind *bind : unnamed) {
        if (bind->altName) continue; // its bind-name comment named it
        if (!name) name = WbeGetUniqueSPName("bind1");
        bind->altName = name ? strdup(name) : nullptr;
    }
    free(name);
    return result;
}

int SwdParseWorkCall(const char *text, long *maxRows, char **servername, char **dbname, char **name,
                     char **last) {
    if (!text || !maxRows || !servername || !dbname || !name || !last) return 0;
    const char *comma = strchr(text, ',');
    SutList *lines = VlParseFileString(comma ? comma : "", "\n", nullptr);
    auto line = [&](int n) {
        const char *s = static_cast<const char *>(SutGetNList(lines, n));
        return string_view(s ? s : "");
    };
    string_view rows = line(1);
    while (!rows.empty() && (rows.front() == ' ' || rows.front() == '\t'))
        rows.remove_prefix(1);
    *maxRows = strtol(std::string(rows).c_str(), nullptr, 10);
    *servername = VlHeapCopy(line(2).substr(std::min<size_t>(3, line(2).size())));
    *dbname = VlHeapCopy(line(3).substr(std::min<size_t>(3, line(3).size())));
    // The request name is quoted and may hold a comma; the last argument
    // follows the first comma outside the quotes and a blank.
    string_view fifth = line(4);
    bool quoted = false;
    size_t comma4 = npos;
    for (size_t i = 0; i < fifth.size() && comma4 == npos; i++) {
        if (fifth[i] == '"')
            quoted = !quoted;
        else if (fifth[i] == ',' && !quoted)
            comma4 = i;
    }
    size_t nameEnd = comma4 == npos ? fifth.size() : comma4 + 1;
    *name = VlHeapCopy(Slice(fifth, 3, nameEnd));
    *last = VlHeapCopy(comma4 == npos ? string_view() : Slice(fifth, comma4 + 2, fifth.size()));
    SutDestroyList(lines);
    return 1;
}

int SwdParseBindName(SpmSPBind *bind, const char **pos) {
    return RunAt(bind, pos, ParseBindName);
}

int SwdParseCallDetailCode(SpmSPBind *bind, const char **pos) {
    return RunAt(bind, pos, ParseCallDetail);
}

int SwdParseColumnDetailCode(SpmColBind *col, const char **pos) {
    return RunAt(col, pos, ParseColumnDetail);
}

int SwdParseFragmentsCode(SpmSPBind *bind, const char **pos) {
    return RunAt(bind, pos, [](SpmSPBind *b, string_view t, size_t &p) {
        ParseListAfterFirstComma(&b->sqlFrags, t, p);
    });
}

int SwdParseReqOptionsCode(SpmSPBind *bind, const char **pos) {
    return RunAt(bind, pos, [](SpmSPBind *b, string_view t, size_t &p) {
        ParseListAfterFirstComma(&b->options, t, p);
    });
}

int SwdParseCallOptionsCode(SpmCallbackBind *call, const char **pos) {
    return RunAt(call, pos, [](SpmCallbackBind *c, string_view t, size_t &p) {
        ParseListAfterFirstComma(&c->options, t, p);
    });
}

int SwdParseColOptionsCode(SpmColBind *col, const char **pos) {
    return RunAt(col, pos, [](SpmColBind *c, string_view t, size_t &p) {
        ParseListAfterNumber(&c->options, t, p);
    });
}

int SwdParseArgOptionsCode(SpmArgBind *arg, const char **pos) {
    return RunAt(arg, pos, [](SpmArgBind *a, string_view t, size_t &p) {
        ParseListAfterNumber(&a->options, t, p);
    });
}

} // namespace vlref
