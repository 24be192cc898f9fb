// The map file: the text form of a binding map. The writer puts out one
// "*<path> : <value>" line per stored field (multi-line values followed by an
// empty line); the reader is a small line-driven state machine that rebuilds
// the map and reports the first bad line by file and line number.
#include "maps/mapfile.h"

#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "maps/fields.hpp"
#include "maps/map.h"
#include "util/heap.hpp"
#include "util/messages.h"
#include "util/process.h"
#include "util/safefile.h"

namespace {

using std::string_view;

// ---------------------------------------------------------------- writing

int CountOf(const SutList *list) {
    return list ? SutSizList(list) : 0;
}

// One line "<prefix>.<name> : <value>"; a value that may hold newlines is
// followed by an empty line, which the reader takes off again.
void WriteLine(FILE *fp, const std::string &prefix, const BindField &field, const char *value) {
    if (!value) return;
    fprintf(fp, "%s.%s : %s\n", prefix.c_str(), field.name, value);
    if (field.kind == FieldKind::LongText || field.kind == FieldKind::LongLines) fputs("\n", fp);
}

// The lines of one stored field of the record (none for child records,
// which the caller writes); prefix is "*" and the bind's name, for a child
// record followed by "." and the child kind.
void WriteField(FILE *fp, const std::string &prefix, const void *record, const BindField &field) {
    if (field.flags & (kMemoryOnly | kInHeader)) return;
    switch (field.kind) {
    case FieldKind::Text:
    case FieldKind::LongText:
    case FieldKind::Choice:
        WriteLine(fp, prefix, field, FieldOf<char *>(record, field));
        break;
    case FieldKind::Int:
        WriteLine(fp, prefix, field, std::to_string(FieldOf<int>(record, field)).c_str());
        break;
    case FieldKind::Long:
        WriteLine(fp, prefix, field, std::to_string(FieldOf<long>(record, field)).c_str());
        break;
    case FieldKind::Flag:
        WriteLine(fp, prefix, field, FieldOf<int>(record, field) ? "True" : "False");
        break;
    case FieldKind::Count:
        WriteLine(fp, prefix, field,
                  std::to_string(CountOf(FieldOf<SutList *>(record, field))).c_str());
        break;
    case FieldKind::Lines:
    case FieldKind::LongLines: {
        const SutList *items = FieldOf<SutList *>(record, field);
        for (int i = 0; i < SutSizList(items); i++)
            WriteLine(fp, prefix, field, static_cast<const char *>(SutGetNList(items, i)));
        break;
    }
    case FieldKind::Records:
    case FieldKind::Handle:
        break;
    }
}

// Every stored field of the record in table order, the fields of each child
// record where the list of them stands (child records hold no records).
void WriteFields(FILE *fp, const std::string &prefix, const void *record,
                 const BindRecordKind &kind) {
    for (const BindField &field : kind.fields) {
        WriteField(fp, prefix, record, field);
        if (field.kind != FieldKind::Records) continue;
        const SutList *children = FieldOf<SutList *>(record, field);
        const std::string childPrefix = prefix + "." + field.name;
        for (int i = 0; i < SutSizList(children); i++)
            if (const void *child = SutGetNList(children, i))
                for (const BindField &childField : field.children->fields)
                    WriteField(fp, childPrefix, child, childField);
    }
}

// "*" and the bind's name ("(null)" for none, as printf would write it).
std::string PrefixOf(const char *bindName) {
    return std::string("*") + (bindName ? bindName : "(null)");
}

// ---------------------------------------------------------------- reading

// Catalog texts of the reader's and the writer's messages.
const char *BadLineText() {
    return VlCatGets(0, 30, "Error in the map file %s at line %d.\n");
}
const char *NoReadPathText() {
    return VlCatGets(0, 31, "No map file name was given to read.\n");
}
const char *NoWritePathText() {
    return VlCatGets(0, 33, "No map file name was given to write.\n");
}

struct FileCloser {
    void operator()(FILE *fp) const { fclose(fp); }
};

string_view SkipOneBlank(string_view v) {
    if (!v.empty() && (v.front() == ' ' || v.front() == '\t')) v.remove_prefix(1);
    return v;
}

string_view LessNewline(string_view v) {
    if (!v.empty() && v.back() == '\n') v.remove_suffix(1);
    return v;
}

string_view LessLast(string_view v) {
    return v.substr(0, v.empty() ? 0 : v.size() - 1);
}

// Reads a decimal number the way "%d" would: leading white space skipped, an
// optional sign, at least one digit. Out-of-range numbers do not parse.
bool ParseNumber(string_view v, long &out, long lo, long hi) {
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

bool ParseInt(string_view v, int &out) {
    long value;
    if (!ParseNumber(v, value, INT_MIN, INT_MAX)) return false;
    out = static_cast<int>(value);
    return true;
}

// "True" or "False" with the line's newline.
bool ParseFlag(string_view v, int &out) {
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
bool ParseChoice(string_view v, char **field, std::span<const char *const> names) {
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

void AppendLine(SutList **list, string_view v) {
    if (!*list) *list = SutNewList();
    SutAddList(*list, VlHeapCopy(v));
}

// The field of a record that a "<name> " key stands for in the map file.
const BindField *FieldOfKey(const BindRecordKind &kind, string_view key) {
    if (key.empty() || key.back() != ' ') return nullptr;
    const BindField *field = FindBindField(kind, key.substr(0, key.size() - 1));
    if (!field || field->flags & (kMemoryOnly | kInHeader) || field->kind == FieldKind::Records)
        return nullptr;
    return field;
}

// Where the reader stands in the file.
enum class ReadState {
    BeforeMap,      // no "*spmap.numberMaps" line yet
    InMap,          // reading lines of the map
    GatheringValue, // in a value that may hold newlines, up to the bind's next line
};

// What the reader knows of one kind of child record of the current bind.
struct ChildState {
    int declared = 0; // the bind's numCol, numCall or numArg
    int seen = 0;
    void *current = nullptr; // the record the kind's lines go to
};

struct MapReader {
    SpmMap *map = nullptr;
    ReadState state = ReadState::BeforeMap;
    int declaredBinds = 0, seenBinds = 0;
    int declaredIfaces = 0, seenIfaces = 0;
    SpmSPBind *bind = nullptr;
    std::map<size_t, ChildState> children; // by the offset of the bind's child list
    char **gatherField = nullptr;          // the field a multi-line value goes into
    std::string gathered;
    std::string prefix; // "*" and the current bind's name

    void StartGathering(char **field, string_view first) {
        VlReplaceText(field, first);
        gatherField = field;
        gathered.assign(first);
        state = ReadState::GatheringValue;
    }

    void StoreGathered() {
        VlReplaceText(gatherField, gathered);
        gatherField = nullptr;
        gathered.clear();
    }

    bool Line(string_view text);
    bool MapLine(string_view rest);
    bool IfaceLine(string_view rest);
    bool BindHeader(string_view rest);
    bool BindLine(string_view rest);
    bool ChildLine(const BindField &list, string_view key, string_view value);
    bool SetField(void *record, const BindField &field, string_view value);
};

bool MapReader::Line(string_view text) {
    if (state == ReadState::GatheringValue) {
        if (text.size() > prefix.size() && text.front() == '*' &&
            text.substr(0, prefix.size()) == prefix && text[prefix.size()] == '.') {
            if (!gathered.empty() && gathered.back() == '\n') gathered.pop_back();
            if (!gathered.empty() && gathered.back() == '\n') gathered.pop_back();
            StoreGathered();
            state = ReadState::InMap;
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

    if (first == "*spmap") return MapLine(rest);
    if (first == "*spiface") return IfaceLine(rest);
    if (first == "*spid") return BindHeader(rest);
    if (bind && first == prefix) return BindLine(rest);
    return false;
}

bool MapReader::MapLine(string_view rest) {
    size_t colon = rest.find(':');
    if (state != ReadState::BeforeMap || colon == string_view::npos ||
        rest.substr(0, colon) != "numberMaps ")
        return false;
    if (!ParseInt(rest.substr(colon + 1), declaredBinds)) return false;
    state = ReadState::InMap;
    seenBinds = 0;
    if (!map->spBinds) map->spBinds = SutNewList();
    return true;
}

bool MapReader::IfaceLine(string_view rest) {
    size_t colon = rest.find(':');
    if (colon == string_view::npos) return false;
    string_view key = rest.substr(0, colon), value = rest.substr(colon + 1);
    if (key == "numInterfaces ") {
        if (!ParseInt(value, declaredIfaces)) return false;
        seenIfaces = 0;
        return true;
    }
    if (key == "interfaceName ") {
        if (++seenIfaces > declaredIfaces) return false;
        // The last character is the newline (or, on a cut piece, whatever
        // stands there: it goes all the same).
        std::string name(LessLast(SkipOneBlank(value)));
        SpmAddIface(map, name.c_str());
        return true;
    }
    return false;
}

bool MapReader::BindHeader(string_view rest) {
    if (++seenBinds > declaredBinds) return false;
    SpmSPBind *fresh = SpmNewSPBind();
    if (!fresh) return false;
    if (!map->spBinds) map->spBinds = SutNewList();
    SutAddList(map->spBinds, fresh);
    bind = fresh;
    children.clear();

    size_t colon = rest.find(':');
    if (colon == string_view::npos || rest.substr(0, colon) != "name ") return false;
    string_view value = SkipOneBlank(rest.substr(colon + 1));
    value = value.substr(0, value.find(':'));
    if (value.empty() || value.front() == '\n') return false;
    value = LessLast(value);
    VlReplaceText(&bind->name, value);
    prefix = "*";
    prefix.append(value);
    return true;
}

bool MapReader::BindLine(string_view rest) {
    size_t cut = rest.find_first_of(".:");
    if (cut == string_view::npos) return false;
    string_view key = rest.substr(0, cut);
    if (rest[cut] == '.') {
        const BindField *list = FindBindField(kSPBindKind, key);
        if (!list || list->kind != FieldKind::Records) return false;
        string_view childPart = rest.substr(cut + 1);
        size_t colon = childPart.find(':');
        if (colon == string_view::npos) return false;
        return ChildLine(*list, childPart.substr(0, colon),
                         SkipOneBlank(childPart.substr(colon + 1)));
    }
    const BindField *field = FieldOfKey(kSPBindKind, key);
    if (!field) return false;
    string_view value = rest.substr(cut + 1);
    if (field->flags & kEndsAtDot) value = value.substr(0, value.find_first_of(".:"));
    return SetField(bind, *field, SkipOneBlank(value));
}

bool MapReader::ChildLine(const BindField &list, string_view key, string_view value) {
    const BindField *field = FieldOfKey(*list.children, key);
    if (!field) return false;
    ChildState &child = children[list.offset];
    if (field->flags & kOpensRecord) {
        if (++child.seen > child.declared) return false;
        void *record = list.children->make();
        if (!record) return false;
        SutList *&records = FieldOf<SutList *>(bind, list);
        if (!records) records = SutNewList();
        SutAddList(records, record);
        child.current = record;
    }
    return child.current && SetField(child.current, *field, value);
}

// Stores the value of one line in the record's field.
bool MapReader::SetField(void *record, const BindField &field, string_view value) {
    switch (field.kind) {
    case FieldKind::Text:
        VlReplaceText(&FieldOf<char *>(record, field), LessNewline(value));
        return true;
    case FieldKind::LongText:
        StartGathering(&FieldOf<char *>(record, field), value);
        return true;
    case FieldKind::Choice:
        return ParseChoice(value, &FieldOf<char *>(record, field), field.choices);
    case FieldKind::Int:
        return ParseInt(value, FieldOf<int>(record, field));
    case FieldKind::Long:
        return ParseNumber(value, FieldOf<long>(record, field), LONG_MIN, LONG_MAX);
    case FieldKind::Flag:
        return ParseFlag(value, FieldOf<int>(record, field));
    case FieldKind::Count:
        return ParseInt(value, children[field.offset].declared);
    case FieldKind::Lines:
        AppendLine(&FieldOf<SutList *>(record, field), LessNewline(value));
        return true;
    case FieldKind::LongLines: {
        SutList *&items = FieldOf<SutList *>(record, field);
        if (!items) items = SutNewList();
        SutAddList(items, nullptr);
        StartGathering(reinterpret_cast<char **>(&items->items[items->count - 1]), value);
        return true;
    }
    case FieldKind::Records:
    case FieldKind::Handle:
        return false;
    }
    return false;
}

// The map file's path: the project path (at most 1019 characters of it) with
// everything from its last dot replaced by ".map", or ".map" appended.
std::string MapPathOf(const char *projectPath) {
    std::string path(projectPath, strnlen(projectPath, 1019));
    size_t dot = path.rfind('.');
    if (dot != std::string::npos) path.erase(dot);
    return path + ".map";
}

} // namespace

extern "C" {

int SpmWriteColBind(FILE *fp, const char *name, SpmColBind *col) {
    WriteFields(fp, PrefixOf(name) + ".colBind", col, kColBindKind);
    return 0;
}

int SpmWriteCallbackBind(FILE *fp, const char *name, SpmCallbackBind *call) {
    WriteFields(fp, PrefixOf(name) + ".callBind", call, kCallbackBindKind);
    return 0;
}

int SpmWriteArgBind(FILE *fp, const char *name, SpmArgBind *arg) {
    WriteFields(fp, PrefixOf(name) + ".argBind", arg, kArgBindKind);
    return 0;
}

int SpmWriteSPBind(FILE *fp, SpmSPBind *bind) {
    // Only applied binds with an activator are stored.
    if (!bind || !bind->beenApplied || CountOf(bind->callBinds) == 0) return 0;
    if (!bind->name) return -1;
    fprintf(fp, "*spid.name : %s\n", bind->name);
    WriteFields(fp, PrefixOf(bind->name), bind, kSPBindKind);
    return 0;
}

int SpmWriteMap(FILE *fp, SpmMap *map) {
    if (!fp || !map) return -1;
    fprintf(fp, "%s.%s: %-d\n", "*spmap", "numberMaps ", CountOf(map->spBinds));
    fprintf(fp, "%s.%s: %-d\n", "*spiface", "numInterfaces ", CountOf(map->interfaces));
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
        fputs(NoWritePathText(), stderr);
        return -1;
    }
    FILE *fp = VlOpenSafely(path);
    if (!fp) {
        fputs("GCatb(32,0)", stderr);
        return -1;
    }
    // A bind without a name ends the file early; what was written stays.
    SpmWriteMap(fp, map);
    return VlCloseSafely(fp) >= 0 ? 0 : -1;
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
        fputs(NoReadPathText(), stderr);
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
        if (!reader.Line(string_view(buffer, strlen(buffer)))) {
            SpmDestroyMap(&reader.map);
            fprintf(stderr, BadLineText(), path, lineNo);
            return -1;
        }
    }
    if (reader.state == ReadState::GatheringValue) reader.StoreGathered();
    *mapPtr = reader.map;
    SpmResetMapVerified();
    return 0;
}

int SpmMapFileExist(const char *projectPath) {
    if (!projectPath) return -1;
    FILE *fp = fopen(MapPathOf(projectPath).c_str(), "r");
    if (!fp) return -1;
    fclose(fp);
    return 0;
}

int SpmProjectReadMap(const char *projectPath) {
    if (!projectPath) return -1;
    SpmMap *old = SpmSetMapContext(nullptr);
    SpmDestroyMap(&old);
    std::string mapPath = MapPathOf(projectPath);
    SpmMap *map = nullptr;
    int result = SpmReadMapFile(&map, mapPath.c_str());
    if (result == 0) {
        // A map that was read does not stay in place: it is kept as ".BAK".
        char *quoted = VlShellQuoteName(mapPath.c_str());
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
    if (SpmWriteMapFile(map, MapPathOf(projectPath).c_str()) != 0) return -1;
    return 1;
}

} // extern "C"
