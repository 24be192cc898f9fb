// READ_FILE, READ_EXEC and EXEC_FUNCTION work calls: a flat file or the
// output of a program run without a shell is cut into lines and columns, or a
// registered C function gives the rows itself.
#include "runtime/file_objects.hpp"

#include "runtime/api.hpp"
#include "runtime/registration.hpp"
#include "runtime/settings.hpp"
#include "util/list.h"
#include "util/options.h"
#include "util/strings.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace vlrun {

namespace {


// Cuts text into lines (a last line without a newline counts, a CR before
// the newline is dropped) and the lines into the work call's rows.
void addRows(SgeWorkCallData &call, std::string_view text) {
    int delimiter = VlDelimStrToChar(optionValue(call.requestOptions, "Delimiter").c_str());
    SutList *list = VlOptionGetIntList(optionValue(call.requestOptions, "Column Widths").c_str());
    std::vector<int> widths;
    widths.reserve(static_cast<std::size_t>(std::max(0, SutSizList(list))));
    for (int i = 0; i < SutSizList(list); i++)
        widths.push_back(static_cast<int>(reinterpret_cast<intptr_t>(SutGetNList(list, i))));
    SutDeleteList(list);

    std::vector<std::vector<std::string>> rows;
    std::size_t columns = 0;
    while (!text.empty()) {
        std::size_t newline = text.find('\n');
        std::string_view line = text.substr(0, newline);
        text = newline == std::string_view::npos ? std::string_view() : text.substr(newline + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        rows.push_back(splitLine(line, delimiter, widths));
        columns = std::max(columns, rows.back().size());
    }
    std::vector<std::string> names;
    for (std::size_t c = 1; c <= columns; c++)
        names.push_back(std::to_string(c));
    beginResults(call, std::move(names));
    for (const auto &row : rows) {
        if (!wantsMoreRows(call)) break;
        addResultRow(call, row);
    }
    endResults(call, 0);
}

// The standard output of the program, run with the arguments' values.
bool runProgram(const SgeWorkCallData &call, std::string &output, std::string &why) {
    std::string program = fromProgramDir(call.name);
    std::vector<std::string> args = {program};
    args.reserve(call.arguments.size() + 1);
    for (const ArgumentBind &arg : call.arguments)
        args.push_back(arg.value);
    std::vector<char *> argv;
    argv.reserve(args.size() + 1);
    for (std::string &a : args)
        argv.push_back(a.data());
    argv.push_back(nullptr);

    int fds[2];
    if (pipe(fds) != 0) {
        why = "pipe failed";
        return false;
    }
    std::fflush(stdout);
    std::fflush(stderr);
    pid_t pid = fork();
    if (pid == 0) {
        dup2(fds[1], 1);
        close(fds[0]);
        close(fds[1]);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(fds[1]);
    if (pid < 0) {
        close(fds[0]);
        why = "fork failed";
        return false;
    }
    char buffer[65536];
    ssize_t n = 0;
    while ((n = read(fds[0], buffer, sizeof buffer)) > 0 || (n < 0 && errno == EINTR))
        if (n > 0) output.append(buffer, static_cast<std::size_t>(n));
    close(fds[0]);
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return true;
    why = program + (WIFEXITED(status) ? " ended with status " + std::to_string(WEXITSTATUS(status))
                                        : std::string(" was killed"));
    return false;
}

} // namespace

std::vector<std::string> splitLine(std::string_view line, int delimiter,
                                   const std::vector<int> &widths) {
    std::vector<std::string> columns;
    if (!widths.empty()) {
        for (std::size_t i = 0; i < widths.size() && !line.empty(); i++) {
            std::size_t width = i + 1 == widths.size() ? line.size() : static_cast<std::size_t>(widths[i]);
            columns.emplace_back(line.substr(0, width));
            line.remove_prefix(std::min(width, line.size()));
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

Fault runFileObject(SgeWorkCallData &call) {
    if (call.kind == EXEC_FUNCTION) {
        VlExecFunction function = findFunction(call.name);
        if (!function)
            return {500, kRequestFailed, describe(call) + ": no function " + call.name + " is registered"};
        call.ran = false;
        int rc = function(&call);
        if (!call.ran) beginResults(call, {});
        endResults(call, 0);
        if (rc != 0)
            return {500, kRequestFailed, describe(call) + ": " + call.name + " returned " + std::to_string(rc)};
        return {};
    }
    std::string text;
    if (call.kind == READ_EXEC) {
        std::string why;
        if (!runProgram(call, text, why)) return {500, kRequestFailed, describe(call) + ": " + why};
    } else {
        std::ifstream in(fromProgramDir(call.name), std::ios::binary);
        if (!in) return {500, kRequestFailed, describe(call) + ": cannot read " + fromProgramDir(call.name)};
        std::ostringstream content;
        content << in.rdbuf();
        text = content.str();
    }
    addRows(call, text);
    return {};
}

} // namespace vlrun
