// The file objects a work call can name instead of SQL: READ_FILE (a flat
// file), READ_EXEC (a program's output) and EXEC_FUNCTION (a registered C
// function), whose lines become the work call's rows.
#ifndef VELMORA_RUNTIME_FILE_OBJECTS_HPP
#define VELMORA_RUNTIME_FILE_OBJECTS_HPP

#include "runtime/fault.hpp"
#include "runtime/workcall.hpp"

#include <string_view>
#include <vector>

namespace vlrun {

// Splits one record into columns: at fixed widths (in characters) when
// widths are given (the last column takes the rest), else at the delimiter
// when it is not 0, else the whole record is one column.
std::vector<std::string> SplitLine(std::string_view line, int delimiter,
                                   const std::vector<int> &widths);

// Runs a READ_FILE, READ_EXEC or EXEC_FUNCTION work call. The file or
// program is the work call's name, relative to the program's directory. The
// request options say how its text is cut: "Delimiter" (between fields),
// "Record Delimiter" (between records; a newline when absent) and "Column
// Widths" (fixed widths instead of a delimiter, as "4,10,2"). A program runs
// without a shell, with the "Argument" options and then the argument binds'
// values as its arguments, for at most "Time Limit" seconds (10 when absent).
Fault RunFileObject(SgeWorkCallData &call);

} // namespace vlrun

#endif
