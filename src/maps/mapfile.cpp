// The map file: the text form of a binding map. The writer puts out one
// "*<path> : <value>" line per stored field (multi-line values followed by an
// empty line); the reader is a small line-driven state machine that rebuilds
// the map and reports the first bad line by file and line number.
#include "maps/mapfile.h"

#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "maps/map.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"

namespace {

using std::string_view;

// ---------------------------------------------------------------- writing

const char *boolText(int flag) {
    return flag ? "True" : "False";
}

void writeString(FILE *fp, const char *name, const char *key, const char *value) {
    if (value) fprintf(fp, "*%s.%s: %s\n", name, key, value);
}

// Values that may hold newlines are followed by an empty line, which the
// reader takes off again.
void writeMultiLine(FILE *fp, const char *name, const char *key, const char *value) {
    if (value) fprintf(fp, "*%s.%s: %s\n\n", name, key, value);
}

void writeChildString(FILE *fp, const char *name, const char *kind, const char *key,
                      const char *value) {
    if (value) fprintf(fp, "*%s.%s.%s: %s\n", name, kind, key, value);
}

void writeChildMultiLine(FILE *fp, const char *name, const char *kind, const char *key,
                         const char *value) {
    if (value) fprintf(fp, "*%s.%s.%s: %s\n\n", name, kind, key, value);
}

void writeChildInt(FILE *fp, const char *name, const char *kind, const char *key, int value) {
    fprintf(fp, "*%s.%s.%s: %-d\n", name, kind, key, value);
}

void writeChildOptions(FILE *fp, const char *name, const char *kind, SutList *options) {
    for (int i = 0; i < SutSizList(options); i++)
        writeChildString(fp, name, kind, "options ",
                         static_cast<const char *>(SutGetNList(options, i)));
}

int countOf(const SutList *list) {
    return list ? SutSizList(list) : 0;
}

// ---------------------------------------------------------------- reading

// Catalog texts of the reader's and the writer's messages.
const char *badLineText() {
    return VlCatGets(0, 30, "Error in the map file %s at line %d.\n");
}
const char *noReadPathText() {
    return VlCatGets(0, 31, "No map file name was given to read.\n");
}
const char *noWritePathText() {
    return VlCatGets(0, 33, "No map file name was given to write.\n");
}

struct FileCloser {
    void operator()(FILE *fp) const { fclose(fp); }
};

string_view skipOneBlank(string_view v) {
    if (!v.empty() && (v.front() == ' ' || v.front() == '\t')) v.remove_prefix(1);
    return v;
}

string_view lessNewline(string_view v) {
    if (!v.empty() && v.back() == '\n') v.remove_suffix(1);
    return v;
}

string_view lessLast(string_view v) {
    return v.substr(0, v.empty() ? 0 : v.size() - 1);
}

// Reads a decimal number the way "%d" would: leading white space skipped, an
// optional sign, at least one digit. Out-of-range numbers do not parse.
bool parseNumber(string_view v, long &out, long lo, long hi) {
    size_t i = 0;
    while (i < v.size() && (v[i] == ' ' || v[i] == '\t' || v[i] == '\n' || v[i] == '\r' ||
                            v[i] == '\v' || v[i] == '\f'))
        i++;
    // from_chars takes a minus sign but not a plus sign.
    if (i + 1 < v.size() && v[i] == '+' && v[i + 1] != '-') i++;
    long value = 0;
    auto [end, ec] = std::from_chars(v.data() + i, v.data() + v.size(), value);
    if (ec != std::errc() || value < lo || value > hi) return false;
    out = value;
    return true;
}

bool parseInt(string_view v, int &out) {
    long value;
    if (!parseNumber(v, value, INT_MIN, INT_MAX)) return false;
    out = static_cast<int>(value);
    return true;
}

bool parseBool(string_view v, int &out) {
    if (v == "True\n")
        out = 1;
    else if (v == "False\n")
        out = 0;
    else
        return false;
    return true;
}

// Sets an owned string field to one of the allowed names; the value carries
// its newline, as the names are compared with it.
bool parseEnum(string_view v, char **field, std::initializer_list<const char *> names) {
    for (const char *name : names) {
        size_t n = strlen(name);
        if (v.size() == n + 1 && v.substr(0, n) == name && v[n] == '\n') {
            free(*field);
            *field = strdup(name);
            return true;
        }
    }
    return false;
}

void setString(char **field, string_view v) {
    free(*field);
    *field = VlHeapCopy(v);
}

void appendOption(SutList **list, string_view v) {
    if (!*list) *list = SutNewList();
    SutAddList(*list, VlHeapCopy(v));
}

struct MapReader {
    SpmMap *map = nullptr;
    int state = 0; // 0 before the map line, 1 in the body, 5 in a multi-line value
    int declaredBinds = 0, seenBinds = 0;
    int declaredIfaces = 0, seenIfaces = 0;
    SpmSPBind *bind = nullptr;
    int numCol = 0, numCall = 0, numArg = 0;
    int seenCol = 0, seenCall = 0, seenArg = 0;
    SpmColBind *col = nullptr;
    SpmCallbackBind *call = nullptr;
    SpmArgBind *arg = nullptr;
    char **gatherField = nullptr; // the field a multi-line value goes into
    std::string gathered;
    std::string prefix; // "*" and the current bind's name

    void startGathering(char **field, string_view first) {
        setString(field, first);
        gatherField = field;
        gathered.assign(first);
        state = 5;
    }

    void storeGathered() {
        setString(gatherField, gathered);
        gatherField = nullptr;
        gathered.clear();
    }

    bool line(string_view text);
    bool mapLine(string_view rest);
    bool ifaceLine(string_view rest);
    bool bindHeader(string_view rest);
    bool bindField(string_view rest);
    bool childField(string_view kind, string_view key, string_view value);
};

bool MapReader::line(string_view text) {
    if (state == 5) {
        if (text.size() > prefix.size() && text.front() == '*' &&
            text.substr(0, prefix.size()) == prefix && text[prefix.size()] == '.') {
            if (!gathered.empty() && gathered.back() == '\n') gathered.pop_back();
            if (!gathered.empty() && gathered.back() == '\n') gathered.pop_back();
            storeGathered();
            state = 1;
        } else {
            gathered.append(text);
            return true;
        }
    }
    if (text.empty() || text.front() != '*') return true;

    // The first part runs to the first dot, but a dot inside the current
    // bind's name belongs to the name.
    std::string lineText(text);
    int dot = SpmExtraDot(lineText.c_str(), prefix.c_str());
    size_t from = dot >= 2 ? static_cast<size_t>(dot) + 1 : 0;
    size_t end = text.find('.', from);
    if (end == string_view::npos) return false;
    string_view first = text.substr(0, end);
    string_view rest = text.substr(end + 1);

    if (first == "*spmap") return mapLine(rest);
    if (first == "*spiface") return ifaceLine(rest);
    if (first == "*spid") return bindHeader(rest);
    if (bind && first == prefix) return bindField(rest);
    return false;
}

bool MapReader::mapLine(string_view rest) {
    size_t colon = rest.find(':');
    if (state != 0 || colon == string_view::npos || rest.substr(0, colon) != "numberMaps ")
        return false;
    if (!parseInt(rest.substr(colon + 1), declaredBinds)) return false;
    state = 1;
    seenBinds = 0;
    if (!map->spBinds) map->spBinds = SutNewList();
    return true;
}

bool MapReader::ifaceLine(string_view rest) {
    size_t colon = rest.find(':');
    if (colon == string_view::npos) return false;
    string_view key = rest.substr(0, colon), value = rest.substr(colon + 1);
    if (key == "numInterfaces ") {
        if (!parseInt(value, declaredIfaces)) return false;
        seenIfaces = 0;
        return true;
    }
    if (key == "interfaceName ") {
        if (++seenIfaces > declaredIfaces) return false;
        // The last character is the newline (or, on a cut piece, whatever
        // stands there: it goes all the same).
        std::string name(lessLast(skipOneBlank(value)));
        SpmAddIface(map, name.c_str());
        return true;
    }
    return false;
}

bool MapReader::bindHeader(string_view rest) {
    if (++seenBinds > declaredBinds) return false;
    SpmSPBind *fresh = SpmNewSPBind();
    if (!fresh) return false;
    if (!map->spBinds) map->spBinds = SutNewList();
    SutAddList(map->spBinds, fresh);
    bind = fresh;
    col = nullptr;
    call = nullptr;
    arg = nullptr;
    numCol = numCall = numArg = 0;
    seenCol = seenCall = seenArg = 0;

    size_t colon = rest.find(':');
    if (colon == string_view::npos || rest.substr(0, colon) != "name ") return false;
    string_view value = skipOneBlank(rest.substr(colon + 1));
    value = value.substr(0, value.find(':'));
    if (value.empty() || value.front() == '\n') return false;
    value = lessLast(value);
    setString(&bind->name, value);
    prefix = "*";
    prefix.append(value);
    return true;
}

bool MapReader::bindField(string_view rest) {
    size_t cut = rest.find_first_of(".:");
    if (cut == string_view::npos) return false;
    string_view key = rest.substr(0, cut);
    if (rest[cut] == '.' && (key == "colBind" || key == "callBind" || key == "argBind")) {
        string_view childPart = rest.substr(cut + 1);
        size_t colon = childPart.find(':');
        if (colon == string_view::npos) return false;
        return childField(key, childPart.substr(0, colon),
                          skipOneBlank(childPart.substr(colon + 1)));
    }
    if (rest[cut] != ':') return false;
    string_view value = rest.substr(cut + 1);
    // Only these values may hold dots and colons; the others end at the first.
    if (key != "dbname " && key != "sqlFrags " && key != "options ")
        value = value.substr(0, value.find_first_of(".:"));
    value = skipOneBlank(value);

    if (key == "id ") return parseInt(value, bind->id);
    if (key == "dbid ") return parseInt(value, bind->dbid);
    if (key == "serverid ") return parseInt(value, bind->serverid);
    if (key == "numCol ") return parseInt(value, numCol);
    if (key == "numCall ") return parseInt(value, numCall);
    if (key == "numArg ") return parseInt(value, numArg);
    if (key == "dbVendor ") return parseInt(value, bind->dbVendor);
    if (key == "beenApplied ") return parseBool(value, bind->beenApplied);
    if (key == "cacheFlag ")
        return parseEnum(value, &bind->cacheFlag, {"NO_CACHE", "TO_CACHE", "FROM_CACHE"});
    char **field = key == "dbname "       ? &bind->dbname
                   : key == "altName "    ? &bind->altName
                   : key == "servername " ? &bind->servername
                   : key == "cacheKey "   ? &bind->cacheKey
                   : key == "indexKey "   ? &bind->indexKey
                                          : nullptr;
    if (field) {
        setString(field, lessNewline(value));
        return true;
    }
    if (key == "options ") {
        appendOption(&bind->options, lessNewline(value));
        return true;
    }
    if (key == "sqlFrags ") {
        if (!bind->sqlFrags) bind->sqlFrags = SutNewList();
        SutAddList(bind->sqlFrags, nullptr);
        startGathering(reinterpret_cast<char **>(&bind->sqlFrags->items[bind->sqlFrags->count - 1]),
                       value);
        return true;
    }
    return false;
}

bool MapReader::childField(string_view kind, string_view key, string_view value) {
    if (kind == "colBind") {
        if (key == "columnId ") {
            if (++seenCol > numCol) return false;
            col = SpmAddColBindToSP(bind);
            return col && parseInt(value, col->columnId);
        }
        if (!col) return false;
        if (key == "order ") return parseInt(value, col->order);
        if (key == "tableId ") return parseInt(value, col->tableId);
        if (key == "dataTypeId ") return parseInt(value, col->dataTypeId);
        if (key == "dataSize ") return parseInt(value, col->dataSize);
        if (key == "group ") return parseInt(value, col->group);
        if (key == "computeId ") return parseInt(value, col->computeId);
        if (key == "computeColumn ") return parseInt(value, col->computeColumn);
        if (key == "options ") {
            appendOption(&col->options, lessNewline(value));
            return true;
        }
        if (key == "clientData ") {
            startGathering(&col->clientData, value);
            return true;
        }
        char **field = key == "columnName "        ? &col->columnName
                       : key == "swidget "         ? &col->swidget
                       : key == "interface "       ? &col->interface
                       : key == "tableName "       ? &col->tableName
                       : key == "dataType "        ? &col->dataType
                       : key == "popCallbackName " ? &col->popCallbackName
                                                   : nullptr;
        if (!field) return false;
        setString(field, lessNewline(value));
        return true;
    }
    if (kind == "callBind") {
        if (key == "callbackName ") {
            if (++seenCall > numCall) return false;
            call = SpmAddCallbackBindToSP(bind);
            if (!call) return false;
            setString(&call->callbackName, lessNewline(value));
            return true;
        }
        if (!call) return false;
        if (key == "isWritten ") return parseBool(value, call->isWritten);
        if (key == "callOrder ") return parseInt(value, call->callOrder);
        if (key == "maxRows ") return parseNumber(value, call->maxRows, LONG_MIN, LONG_MAX);
        if (key == "indexFlag ")
            return parseEnum(value, &call->indexFlag,
                             {"ROW_INDEX", "WIDGET_INDEX", "NEXT_INDEX", "PREV_INDEX",
                              "PAGEUP_INDEX", "PAGEDW_INDEX", "LAST_INDEX", "HOME_INDEX"});
        if (key == "queueFile ")
            return parseEnum(value, &call->queueFile, {"NO_QUEUE_FILE", "QUEUE_TO_FILE"});
        if (key == "useDialog ")
            return parseEnum(value, &call->useDialog, {"USE_IT", "NO_USE", "NO_WP"});
        if (key == "options ") {
            appendOption(&call->options, lessNewline(value));
            return true;
        }
        if (key == "initCode " || key == "finalCode ") {
            startGathering(key == "initCode " ? &call->initCode : &call->finalCode, value);
            return true;
        }
        char **field = key == "swidget "      ? &call->swidget
                       : key == "interface "  ? &call->interface
                       : key == "indexValue " ? &call->indexValue
                                              : nullptr;
        if (!field) return false;
        setString(field, lessNewline(value));
        return true;
    }
    // argBind
    if (key == "argId ") {
        if (++seenArg > numArg) return false;
        arg = SpmAddArgBindToSP(bind);
        return arg && parseInt(value, arg->argId);
    }
    if (!arg) return false;
    if (key == "dataTypeId ") return parseInt(value, arg->dataTypeId);
    if (key == "dataSize ") return parseInt(value, arg->dataSize);
    if (key == "options ") {
        appendOption(&arg->options, lessNewline(value));
        return true;
    }
    if (key == "initCode ") {
        startGathering(&arg->initCode, value);
        return true;
    }
    char **field = key == "argName "    ? &arg->argName
                   : key == "dataType " ? &arg->dataType
                                        : nullptr;
    if (!field) return false;
    setString(field, lessNewline(value));
    return true;
}

// The map file's path: the project path (at most 1019 characters of it) with
// everything from its last dot replaced by ".map", or ".map" appended.
std::string mapPathOf(const char *projectPath) {
    std::string path(projectPath, strnlen(projectPath, 1019));
    size_t dot = path.rfind('.');
    if (dot != std::string::npos) path.erase(dot);
    return path + ".map";
}

} // namespace

extern "C" {

int SpmWriteColBind(FILE *fp, const char *name, SpmColBind *col) {
    const char *kind = "colBind";
    writeChildInt(fp, name, kind, "columnId ", col->columnId);
    writeChildString(fp, name, kind, "columnName ", col->columnName);
    writeChildString(fp, name, kind, "swidget ", col->swidget);
    writeChildString(fp, name, kind, "interface ", col->interface);
    writeChildInt(fp, name, kind, "order ", col->order);
    writeChildString(fp, name, kind, "tableName ", col->tableName);
    writeChildInt(fp, name, kind, "tableId ", col->tableId);
    writeChildString(fp, name, kind, "dataType ", col->dataType);
    writeChildOptions(fp, name, kind, col->options);
    writeChildInt(fp, name, kind, "dataTypeId ", col->dataTypeId);
    writeChildInt(fp, name, kind, "dataSize ", col->dataSize);
    writeChildInt(fp, name, kind, "group ", col->group);
    writeChildInt(fp, name, kind, "computeId ", col->computeId);
    writeChildInt(fp, name, kind, "computeColumn ", col->computeColumn);
    writeChildString(fp, name, kind, "popCallbackName ", col->popCallbackName);
    writeChildMultiLine(fp, name, kind, "clientData ", col->clientData);
    return 0;
}

int SpmWriteCallbackBind(FILE *fp, const char *name, SpmCallbackBind *call) {
    const char *kind = "callBind";
    writeChildString(fp, name, kind, "callbackName ", call->callbackName);
    writeChildString(fp, name, kind, "swidget ", call->swidget);
    writeChildString(fp, name, kind, "interface ", call->interface);
    writeChildString(fp, name, kind, "isWritten ", boolText(call->isWritten));
    writeChildMultiLine(fp, name, kind, "initCode ", call->initCode);
    writeChildMultiLine(fp, name, kind, "finalCode ", call->finalCode);
    writeChildString(fp, name, kind, "indexFlag ", call->indexFlag);
    writeChildString(fp, name, kind, "indexValue ", call->indexValue);
    writeChildString(fp, name, kind, "queueFile ", call->queueFile);
    writeChildString(fp, name, kind, "useDialog ", call->useDialog);
    writeChildOptions(fp, name, kind, call->options);
    fprintf(fp, "*%s.%s.%s: %-ld\n", name, kind, "maxRows ", call->maxRows);
    writeChildInt(fp, name, kind, "callOrder ", call->callOrder);
    return 0;
}

int SpmWriteArgBind(FILE *fp, const char *name, SpmArgBind *arg) {
    const char *kind = "argBind";
    writeChildInt(fp, name, kind, "argId ", arg->argId);
    writeChildString(fp, name, kind, "argName ", arg->argName);
    writeChildString(fp, name, kind, "dataType ", arg->dataType);
    writeChildOptions(fp, name, kind, arg->options);
    writeChildInt(fp, name, kind, "dataTypeId ", arg->dataTypeId);
    writeChildMultiLine(fp, name, kind, "initCode ", arg->initCode);
    writeChildInt(fp, name, kind, "dataSize ", arg->dataSize);
    return 0;
}

int SpmWriteSPBind(FILE *fp, SpmSPBind *bind) {
    // Only applied binds with an activator are stored.
    if (!bind || !bind->beenApplied || countOf(bind->callBinds) == 0) return 0;
    if (!bind->name) return -1;
    const char *name = bind->name;
    fprintf(fp, "%s.%s: %s\n", "*spid", "name ", name);
    writeString(fp, name, "altName ", bind->altName);
    fprintf(fp, "*%s.%s: %-d\n", name, "id ", bind->id);
    fprintf(fp, "*%s.%s: %-d\n", name, "dbid ", bind->dbid);
    writeString(fp, name, "dbname ", bind->dbname);
    fprintf(fp, "*%s.%s: %-d\n", name, "serverid ", bind->serverid);
    writeString(fp, name, "servername ", bind->servername);
    fprintf(fp, "*%s.%s: %-d\n", name, "numCol ", countOf(bind->colBinds));
    fprintf(fp, "*%s.%s: %-d\n", name, "numCall ", countOf(bind->callBinds));
    fprintf(fp, "*%s.%s: %-d\n", name, "numArg ", countOf(bind->argBinds));
    writeString(fp, name, "cacheFlag ", bind->cacheFlag);
    writeString(fp, name, "cacheKey ", bind->cacheKey);
    writeString(fp, name, "indexKey ", bind->indexKey);
    fprintf(fp, "*%s.%s: %d\n", name, "dbVendor ", bind->dbVendor);
    for (int i = 0; i < SutSizList(bind->sqlFrags); i++)
        writeMultiLine(fp, name, "sqlFrags ",
                       static_cast<const char *>(SutGetNList(bind->sqlFrags, i)));
    for (int i = 0; i < SutSizList(bind->options); i++)
        writeString(fp, name, "options ", static_cast<const char *>(SutGetNList(bind->options, i)));
    writeString(fp, name, "beenApplied ", boolText(bind->beenApplied));
    for (int i = 0; i < SutSizList(bind->colBinds); i++)
        if (auto *col = static_cast<SpmColBind *>(SutGetNList(bind->colBinds, i)))
            SpmWriteColBind(fp, name, col);
    for (int i = 0; i < SutSizList(bind->callBinds); i++)
        if (auto *call = static_cast<SpmCallbackBind *>(SutGetNList(bind->callBinds, i)))
            SpmWriteCallbackBind(fp, name, call);
    for (int i = 0; i < SutSizList(bind->argBinds); i++)
        if (auto *arg = static_cast<SpmArgBind *>(SutGetNList(bind->argBinds, i)))
            SpmWriteArgBind(fp, name, arg);
    return 0;
}

int SpmWriteMap(FILE *fp, SpmMap *map) {
    if (!fp || !map) return -1;
    fprintf(fp, "%s.%s: %-d\n", "*spmap", "numberMaps ", countOf(map->spBinds));
    fprintf(fp, "%s.%s: %-d\n", "*spiface", "numInterfaces ", countOf(map->interfaces));
    for (int i = 0; i < SutSizList(map->interfaces); i++)
        fprintf(fp, "%s.%s: %s\n", "*spiface", "interfaceName ",
                static_cast<const char *>(SutGetNList(map->interfaces, i)));
    for (int i = 0; i < SutSizList(map->spBinds); i++) {
        fputs("\n", fp);
        if (SpmWriteSPBind(fp, static_cast<SpmSPBind *>(SutGetNList(map->spBinds, i))) != 0)
            return -1;
    }
    return 0;
}

int SpmWriteMapFile(SpmMap *map, const char *path) {
    if (!map || !map->spBinds) return -1;
    if (!path || !*path) {
        fputs(noWritePathText(), stderr);
        return -1;
    }
    FILE *fp = fopen(path, "w");
    if (!fp) {
        fputs("GCatb(32,0)", stderr);
        return -1;
    }
    // A bind without a name ends the file early; what was written stays.
    SpmWriteMap(fp, map);
    fclose(fp);
    return 0;
}

int SpmExtraDot(const char *line, const char *prefix) {
    if (!line || !prefix || !*prefix) return -1;
    size_t prefixLen = strlen(prefix);
    if (prefixLen >= strlen(line) || line[0] != '*' || strncmp(line, prefix, prefixLen) != 0 ||
        line[prefixLen] != '.')
        return -1;
    size_t pos = strcspn(line, ".:");
    if (line[pos] != '.') return -1;
    return pos < prefixLen ? static_cast<int>(pos) : -1;
}

int SpmReadMapFile(SpmMap **mapPtr, const char *path) {
    if (!mapPtr) return -1;
    *mapPtr = nullptr;
    if (!path || !*path) {
        fputs(noReadPathText(), stderr);
        return -1;
    }
    std::unique_ptr<FILE, FileCloser> fp(fopen(path, "r"));
    if (!fp) return -1;

    MapReader reader;
    reader.map = SpmNewMap();
    if (!reader.map) return -1;
    char buffer[4096];
    int lineNo = 0;
    // A line longer than the buffer arrives in pieces, each taken as a line.
    while (fgets(buffer, sizeof buffer, fp.get())) {
        lineNo++;
        if (!reader.line(string_view(buffer, strlen(buffer)))) {
            SpmDestroyMap(&reader.map);
            fprintf(stderr, badLineText(), path, lineNo);
            return -1;
        }
    }
    if (reader.state == 5) reader.storeGathered();
    *mapPtr = reader.map;
    SpmResetMapVerified();
    return 0;
}

int SpmMapFileExist(const char *projectPath) {
    if (!projectPath) return -1;
    FILE *fp = fopen(mapPathOf(projectPath).c_str(), "r");
    if (!fp) return -1;
    fclose(fp);
    return 0;
}

int SpmProjectReadMap(const char *projectPath) {
    if (!projectPath) return -1;
    SpmMap *old = SpmSetMapContext(nullptr);
    SpmDestroyMap(&old);
    std::string mapPath = mapPathOf(projectPath);
    SpmMap *map = nullptr;
    int result = SpmReadMapFile(&map, mapPath.c_str());
    if (result == 0) {
        // A map that was read does not stay in place: it is kept as ".BAK".
        char *quoted = VlShellQuote(mapPath.c_str());
        std::string command = std::string("mv ") + quoted + " " + quoted + ".BAK";
        free(quoted);
        fflush(stdout);
        fflush(stderr);
        if (system(command.c_str()) == -1) perror("mv");
    } else {
        SpmDestroyMap(&map);
    }
    SpmSetMapContext(map);
    return result;
}

int SpmProjectWriteMap(const char *projectPath) {
    SpmMap *map = SpmGetMapContext();
    if (!projectPath || !map) return -1;
    if (strlen(projectPath) < 7) projectPath = "Untitled.prj";
    if (SpmWriteMapFile(map, mapPathOf(projectPath).c_str()) != 0) return -1;
    return 1;
}

} // extern "C"
