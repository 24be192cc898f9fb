// READ_FILE, READ_EXEC and EXEC_FUNCTION work calls: a flat file or the
// output of a program run without a shell is cut into records and fields,
// or a registered C function gives the rows itself.
#include "runtime/file_objects.hpp"

#include "runtime/api.hpp"
#include "runtime/program_output.hpp"
#include "runtime/registration.hpp"
#include "runtime/settings.hpp"
#include "util/list.h"
#include "util/options.h"
#include "util/strings.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vlrun {

namespace {

constexpr int kMaxSeconds = 3600;

// The byte length of the first count characters of UTF-8 text.
std::size_t CharactersPrefix(std::string_view text, std::size_t count) {
    std::size_t at = 0;
    for (; at < text.size(); at++)
        if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80 && count-- == 0) break;
    return at;
}

// Cuts text into records (a last record without a delimiter counts; with
// the newline as delimiter a CR before it is dropped) and the records into
// the work call's rows.
void AddRows(SgeWorkCallData &call, std::string_view text) {
    const std::vector<std::string> &options = call.requestOptions;
    int field = VlDelimStrToChar(OptionValue(options, "Delimiter").c_str());
    int named = VlDelimStrToChar(OptionValue(options, "Record Delimiter").c_str());
    char record = named ? static_cast<char>(named) : '\n';
    SutList *list = VlOptionGetIntList(OptionValue(options, "Column Widths").c_str());
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(std::max(0, SutSizList(list))));
    for (int i = 0; i < SutSizList(list); i++)
        widths.push_back(static_cast<int>(reinterpret_cast<intptr_t>(SutGetNList(list, i))));
    SutDeleteList(list);

    std::vector<std::vector<std::string>> rows;
    std::size_t columns = 0;
    const std::size_t limit = call.maxRows < 1 ? SIZE_MAX : static_cast<std::size_t>(call.maxRows);
    while (!text.empty() && rows.size() < limit) {
        std::size_t end = text.find(record);
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (record == '\n' && !line.empty() && line.back() == '\r') line.remove_suffix(1);
        rows.push_back(SplitLine(line, field, widths));
        columns = std::max(columns, rows.back().size());
    }
    std::vector<std::string> names;
    for (std::size_t c = 1; c <= columns; c++)
        names.push_back(std::to_string(c));
    BeginResults(call, std::move(names));
    for (const auto &row : rows)
        AddResultRow(call, row);
    EndResults(call, 0);
}

// The program's output: its arguments are the request's "Argument" options,
// then the values of the argument binds, each one argument as it stands.
bool ReadProgram(const SgeWorkCallData &call, std::string &output, std::string &why) {
    std::vector<std::string> argv = {FromProgramDir(call.name)};
    for (std::string &argument : OptionValues(call.requestOptions, "Argument"))
        argv.push_back(std::move(argument));
    for (const ArgumentBind &arg : call.arguments)
        argv.push_back(arg.value);
    ProgramLimits limits;
    std::string seconds = OptionValue(call.requestOptions, "Time Limit");
    if (!seconds.empty()) {
        bool digits = seconds.size() <= 4 && seconds.find_first_not_of("0123456789") == std::string::npos;
        limits.seconds = digits ? std::atoi(seconds.c_str()) : 0;
        if (limits.seconds < 1 || limits.seconds > kMaxSeconds) {
            why = "the Time Limit " + seconds + " is not a number of seconds from 1 to 3600";
            return false;
        }
    }
    if (!ProgramOutput(argv, limits, output, why)) {
        why = argv[0] + " " + why;
        return false;
    }
    return true;
}

} // namespace

std::vector<std::string> SplitLine(std::string_view line, int delimiter,
                                   const std::vector<int> &widths) {
    std::vector<std::string> columns;
    if (!widths.empty()) {
        for (std::size_t i = 0; i < widths.size() && !line.empty(); i++) {
            std::size_t bytes = i + 1 == widths.size()
                                    ? line.size()
                                    : CharactersPrefix(line, static_cast<std::size_t>(widths[i]));
            columns.emplace_back(line.substr(0, bytes));
            line.remove_prefix(bytes);
        }
        return columns;
    }
    if (delimiter == 0) return {std::string(line)};
    while (true) {
        std::size_t at = line.find(static_cast<char>(delimiter));
        columns.emplace_back(line.substr(0, at));
        if (at == std::string_view::npos) return columns;
        line.remove_prefix(at + 1);
    }
}

Fault RunFileObject(SgeWorkCallData &call) {
    if (call.kind == EXEC_FUNCTION) {
        VlExecFunction function = FindFunction(call.name);
        if (!function)
            return {500, kRequestFailed, Describe(call) + ": no function " + call.name + " is registered"};
        call.ran = false;
        int rc = function(&call);
        if (!call.ran) BeginResults(call, {});
        EndResults(call, 0);
        if (rc != 0)
            return {500, kRequestFailed, Describe(call) + ": " + call.name + " returned " + std::to_string(rc)};
        return {};
    }
    std::string text;
    if (call.kind == READ_EXEC) {
        std::string why;
        if (!ReadProgram(call, text, why)) return {500, kRequestFailed, Describe(call) + ": " + why};
    } else {
        std::ifstream in(FromProgramDir(call.name), std::ios::binary);
        if (!in)
            return {500, kRequestFailed, Describe(call) + ": cannot read " + FromProgramDir(call.name)};
        std::ostringstream content;
        content << in.rdbuf();
        text = content.str();
    }
    AddRows(call, text);
    return {};
}

} // namespace vlrun
