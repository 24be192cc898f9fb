// The calls of the generated binding code: a work call is made, filled with
// fragments, options, column and argument binds, and run by DoWorkProc in the
// request's transaction; its results go into the request record, where the
// page filler and the activator's final code read them.
#include "runtime/workcall.hpp"

#include "runtime/api.hpp"
#include "runtime/database.hpp"
#include "runtime/file_objects.hpp"
#include "runtime/registration.hpp"
#include "runtime/request_state.hpp"

#include <cstdarg>
#include <cstring>

namespace vlrun {

namespace {

std::string Text(const char *s) {
    return s ? s : "";
}

void AppendTexts(std::vector<std::string> &list, va_list args) {
    while (const char *item = va_arg(args, const char *))
        list.emplace_back(item);
}

// The bind that an option list names by its number (from 1), else the last.
template <typename T> T *Numbered(std::vector<T> &binds, int number) {
    if (binds.empty()) return nullptr;
    return number >= 1 && static_cast<std::size_t>(number) <= binds.size() ? &binds[number - 1]
                                                                           : &binds.back();
}

ArgumentBind &AddArgument(SgeWorkCallData &call, int dataTypeId, const char *name,
                          const char *value) {
    ArgumentBind &arg = call.arguments.emplace_back();
    arg.dataTypeId = dataTypeId;
    arg.name = Text(name);
    arg.hasValue = value != nullptr;
    arg.value = Text(value);
    return arg;
}

// Types and checks every argument; a value that does not fit refuses the
// request with status 400.
bool CheckArguments(SgeWorkCallData &call) {
    for (ArgumentBind &arg : call.arguments) {
        std::string why;
        if (!ToTypedValue(arg.dataType, arg.dataTypeId, arg.size, arg.hasValue ? &arg.value : nullptr,
                        arg.typed, why)) {
            FailRequest({400, "The value for " + arg.name + " " + why + ".",
                         Describe(call) + ": argument " + arg.name + " " + why});
            return false;
        }
    }
    return true;
}

} // namespace

void BeginResults(SgeWorkCallData &call, std::vector<std::string> names) {
    RequestState *request = CurrentRequest();
    call.ran = true;
    call.firstString = request->record->strings ? SutSizList(request->record->strings) : 0;
    call.rows = 0;
    call.columnCount = static_cast<int>(names.size());
    call.affected = 0;
    call.resultNames = std::move(names);
}

bool WantsMoreRows(const SgeWorkCallData &call) {
    return call.maxRows < 1 || call.rows < call.maxRows;
}

void AddResultRow(SgeWorkCallData &call, const std::vector<std::string> &values) {
    VlRequest *record = CurrentRequest()->record;
    for (int i = 0; i < call.columnCount; i++)
        VlReqAppendString(record, static_cast<std::size_t>(i) < values.size() ? values[i].c_str() : "");
    call.rows++;
}

void EndResults(SgeWorkCallData &call, int affected) {
    VlRequest *record = CurrentRequest()->record;
    call.affected = affected;
    VlReqAppendRowCount(record, call.rows);
    VlReqAppendColCount(record, call.columnCount);
    VlReqSetAffectedRowCount(record, affected);
}

const ArgumentBind *ArgumentNamed(const SgeWorkCallData &call, std::string_view name) {
    for (const ArgumentBind &arg : call.arguments)
        if (arg.name == name) return &arg;
    return nullptr;
}

const char *ResultValue(const SgeWorkCallData &call, int row, int column) {
    RequestState *request = CurrentRequest();
    if (!request || !call.ran || row < 0 || row >= call.rows || column < 0 ||
        column >= call.columnCount)
        return nullptr;
    return static_cast<const char *>(
        SutGetNList(request->record->strings, call.firstString + row * call.columnCount + column));
}

std::string Describe(const SgeWorkCallData &call) {
    return "work call " + call.name + " of " + (call.activator.empty() ? "?" : call.activator);
}

std::vector<std::string> OptionValues(const std::vector<std::string> &options, std::string_view name) {
    std::vector<std::string> values;
    for (const std::string &line : options)
        if (line.size() >= name.size() + 3 && line.compare(0, name.size(), name) == 0 &&
            line.compare(name.size(), 3, " : ") == 0)
            values.push_back(line.substr(name.size() + 3));
    return values;
}

std::string OptionValue(const std::vector<std::string> &options, std::string_view name) {
    std::vector<std::string> values = OptionValues(options, name);
    return values.empty() ? std::string() : values.front();
}

} // namespace vlrun

using vlrun::CurrentRequest;

extern "C" {

pSgeWorkCallData getSgeWorkCallData(XtPointer widget, long maxRows, const char *server,
                                    const char *database, const char *name, int kind) {
    vlrun::RequestState *request = CurrentRequest();
    if (!request) return nullptr;
    auto call = std::make_unique<SgeWorkCallData>();
    call->activator = vlrun::Text(static_cast<const char *>(widget));
    call->maxRows = maxRows;
    call->server = vlrun::Text(server);
    call->database = vlrun::Text(database);
    call->name = vlrun::Text(name);
    call->kind = kind;
    request->calls.push_back(std::move(call));
    return request->calls.back().get();
}

void SgeSetCallDetail(pSgeWorkCallData, int, const void *, int, const void *, const void *, int) {
    // Cache, row index and queueing keep nothing between the requests of a
    // CGI program: every work call reads afresh and runs at once.
}

void SgeVaSetFrags(pSgeWorkCallData call, ...) {
    va_list args;
    va_start(args, call);
    if (call) vlrun::AppendTexts(call->fragments, args);
    va_end(args);
}

void VlVaSetReqOptions(pSgeWorkCallData call, ...) {
    va_list args;
    va_start(args, call);
    if (call) vlrun::AppendTexts(call->requestOptions, args);
    va_end(args);
}

void VlVaSetCallOptions(pSgeWorkCallData call, ...) {
    va_list args;
    va_start(args, call);
    if (call) vlrun::AppendTexts(call->callOptions, args);
    va_end(args);
}

void SgeSetColBind(pSgeWorkCallData call, const void *widget, int group, int order, int size,
                   const void *, const void *) {
    if (!call) return;
    vlrun::ColumnBind &column = call->columns.emplace_back();
    std::string_view where = widget ? static_cast<const char *>(widget) : "";
    std::size_t bar = where.find('|');
    if (bar != std::string_view::npos) {
        column.page = where.substr(0, bar);
        vlrun::RegisterPage(column.page);
    }
    column.site = where.substr(bar == std::string_view::npos ? 0 : bar + 1);
    column.group = group;
    column.order = order;
    column.size = size;
    column.position = static_cast<int>(call->columns.size());
}

void SgeSetColDetail(pSgeWorkCallData call, int dataTypeId, int, int, int, const char *dataType,
                     const char *columnName) {
    if (!call || call->columns.empty()) return;
    vlrun::ColumnBind &column = call->columns.back();
    column.dataTypeId = dataTypeId;
    column.dataType = vlrun::Text(dataType);
    column.columnName = vlrun::Text(columnName);
}

void VlVaSetColOptions(pSgeWorkCallData call, int column, ...) {
    va_list args;
    va_start(args, column);
    if (vlrun::ColumnBind *bind = call ? vlrun::Numbered(call->columns, column) : nullptr)
        vlrun::AppendTexts(bind->options, args);
    va_end(args);
}

void SgeSetArgBnd2(pSgeWorkCallData call, int dataTypeId, int size, const char *name,
                   const char *dataType, const char *value) {
    if (!call) return;
    vlrun::ArgumentBind &arg = vlrun::AddArgument(*call, dataTypeId, name, value);
    arg.size = size;
    arg.dataType = vlrun::Text(dataType);
}

void SgeSetArgBind(pSgeWorkCallData call, int dataTypeId, const char *name, const char *value) {
    if (call) vlrun::AddArgument(*call, dataTypeId, name, value);
}

void VlVaSetArgOptions(pSgeWorkCallData call, int argument, ...) {
    va_list args;
    va_start(args, argument);
    if (vlrun::ArgumentBind *bind = call ? vlrun::Numbered(call->arguments, argument) : nullptr)
        vlrun::AppendTexts(bind->options, args);
    va_end(args);
}

int DoWorkProc(pSgeWorkCallData call, int) {
    vlrun::RequestState *request = CurrentRequest();
    // After a failure nothing more runs: the request is rolled back anyway.
    if (!request || !call || request->fault.status) return -1;
    if (!vlrun::CheckArguments(*call)) return -1;
    vlrun::Fault fault;
    if (call->kind == NULL_EXEC) {
        vlrun::BeginResults(*call, {});
        vlrun::EndResults(*call, 0);
    } else if (call->kind == READ_FILE || call->kind == READ_EXEC || call->kind == EXEC_FUNCTION) {
        fault = vlrun::RunFileObject(*call);
    } else {
        fault = request->databases->Run(*call);
    }
    if (fault.status) {
        vlrun::FailRequest(std::move(fault));
        return -1;
    }
    return 0;
}

int VlGetRowCount(pSgeWorkCallData call) {
    return call && call->ran ? call->rows : 0;
}

int VlGetColumnCount(pSgeWorkCallData call) {
    return call && call->ran ? call->columnCount : 0;
}

const char *VlGetValue(pSgeWorkCallData call, int row, int column) {
    return call ? vlrun::ResultValue(*call, row, column) : nullptr;
}

int VlGetAffectedRows(pSgeWorkCallData call) {
    return call && call->ran ? call->affected : 0;
}

const char *VlGetArgValue(pSgeWorkCallData call, const char *name) {
    const vlrun::ArgumentBind *arg = call && name ? vlrun::ArgumentNamed(*call, name) : nullptr;
    return arg && arg->hasValue ? arg->value.c_str() : nullptr;
}

int VlAddRow(pSgeWorkCallData call, int count, const char *const *values) {
    if (!call || !CurrentRequest() || count < 0 || (count > 0 && !values)) return -1;
    std::vector<std::string> row;
    row.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; i++)
        row.emplace_back(vlrun::Text(values[i]));
    if (!call->ran) {
        std::vector<std::string> names;
        for (int i = 1; i <= count; i++)
            names.push_back(std::to_string(i));
        vlrun::BeginResults(*call, std::move(names));
    }
    if (!vlrun::WantsMoreRows(*call)) return 0;
    vlrun::AddResultRow(*call, row);
    return 0;
}

} // extern "C"
