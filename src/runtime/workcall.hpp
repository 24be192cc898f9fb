// The work-call record that the generated binding code fills (request name,
// fragments, options, column binds, argument binds) and DoWorkProc runs, and
// the collection of its results into the request record: row-major strings
// with a row count and a column count per work call.
#ifndef VELMORA_RUNTIME_WORKCALL_HPP
#define VELMORA_RUNTIME_WORKCALL_HPP

#include "runtime/values.hpp"

#include <string>
#include <vector>

namespace vlrun {

struct ColumnBind {
    std::string page; // empty: a site of the answer page
    std::string site;
    int group = 1;
    int order = 0;
    int size = -1;
    int dataTypeId = -1;
    int position = 0; // 1, 2, ... in the order the binding code declares them
    std::string dataType;
    std::string columnName;
    std::vector<std::string> options;
};

struct ArgumentBind {
    int dataTypeId = -1;
    int size = -1;
    std::string name;
    std::string dataType;
    bool hasValue = false; // false: the field was absent (NULL)
    std::string value;
    std::vector<std::string> options;
    TypedValue typed; // set by DoWorkProc once the value is checked
};

} // namespace vlrun

// Owned by the request that made it (see VlRnHtml.h for the C calls).
struct SgeWorkCallData {
    std::string activator;
    long maxRows = -1; // less than 1: no limit
    std::string server;
    std::string database;
    std::string name;
    int kind = 0;
    std::vector<std::string> fragments;
    std::vector<std::string> requestOptions;
    std::vector<std::string> callOptions;
    std::vector<vlrun::ColumnBind> columns;
    std::vector<vlrun::ArgumentBind> arguments;

    // Results, once it ran: the record's strings from firstString on.
    bool ran = false;
    int firstString = 0;
    int rows = 0;
    int columnCount = 0;
    int affected = 0;
    std::vector<std::string> resultNames;
};

namespace vlrun {

// Result collection for the database and the file objects.
void BeginResults(SgeWorkCallData &call, std::vector<std::string> names);
bool WantsMoreRows(const SgeWorkCallData &call);
// Adds one row, cut or padded with empty values to the column count.
void AddResultRow(SgeWorkCallData &call, const std::vector<std::string> &values);
void EndResults(SgeWorkCallData &call, int affected);

// The first argument bind of that name, or null.
const ArgumentBind *ArgumentNamed(const SgeWorkCallData &call, std::string_view name);

// The value at row and column (from 0), or null.
const char *ResultValue(const SgeWorkCallData &call, int row, int column);

// "work call <name> of <activator>", for the details of a fault.
std::string Describe(const SgeWorkCallData &call);

// The value of an option line "name : value" of the list, or empty.
std::string OptionValue(const std::vector<std::string> &options, std::string_view name);
// The values of every line of that option, in order.
std::vector<std::string> OptionValues(const std::vector<std::string> &options, std::string_view name);

} // namespace vlrun

#endif
