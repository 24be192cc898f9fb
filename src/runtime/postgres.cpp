// PostgreSQL work calls through libpq (loaded on first use): connections
// opened with PQconnectdbParams, statements run with PQexecParams and their
// :name placeholders rewritten to $n, stored functions called by name, and
// one transaction per server and database of a request.
#include "runtime/postgres.hpp"

#include "runtime/placeholders.hpp"
#include "runtime/pq_library.hpp"
#include "runtime/settings.hpp"

#include <algorithm>
#include <cstdlib>

namespace vlrun {

namespace {

// Standard conforming strings are what the placeholder rewriter reads
// ('\' is a plain character in '...'); a lock held longer than the SQLite
// busy timeout answers 503 as it does there.
constexpr const char *kSessionOptions = "-c standard_conforming_strings=on -c lock_timeout=5000";

// SQLSTATEs of a statement that may succeed when tried again: a lock not
// granted in time, a deadlock, a serialization failure.
bool IsBusy(std::string_view state) {
    return state == "55P03" || state == "40P01" || state == "40001";
}

// libpq's messages end in a newline and may span lines; the details are
// written as one line.
std::string OneLine(const char *message) {
    std::string text = message ? message : "";
    for (char &c : text)
        if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

// A schema-qualified or plain function name of letters, digits, '_' and '$'
// ("specials", "shop.find_books"), as the database folds it.
bool IsFunctionName(std::string_view name) {
    bool partStart = true;
    for (char c : name) {
        bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        bool digit = (c >= '0' && c <= '9') || c == '$';
        if (c == '.' && !partStart) {
            partStart = true;
        } else if (letter || (digit && !partStart)) {
            partStart = false;
        } else {
            return false;
        }
    }
    return !partStart;
}

// The statement of a work call and the argument binds of its parameters in
// the order $1, $2, ...
bool StatementOf(const SgeWorkCallData &call, std::string &sql,
                 std::vector<const ArgumentBind *> &parameters, Fault &fault) {
    if (call.fragments.empty()) {
        if (!IsFunctionName(call.name)) {
            fault = {500, kRequestFailed, Describe(call) + ": " + call.name + " is not a function name"};
            return false;
        }
        sql = "SELECT * FROM " + call.name + "(";
        for (std::size_t i = 0; i < call.arguments.size(); i++) {
            sql += (i ? ", $" : "$") + std::to_string(i + 1);
            parameters.push_back(&call.arguments[i]);
        }
        sql += ")";
        return true;
    }
    std::string joined, why;
    for (const std::string &fragment : call.fragments)
        joined.append(joined.empty() ? "" : "\n").append(fragment);
    PositionalSql positional;
    if (!RewritePlaceholders(joined, positional, why)) {
        fault = {500, kRequestFailed, Describe(call) + ": " + why};
        return false;
    }
    for (const std::string &name : positional.names) {
        const ArgumentBind *arg = ArgumentNamed(call, name);
        if (!arg) {
            fault = {500, kRequestFailed,
                     Describe(call) + ": placeholder :" + name + " has no argument bind"};
            return false;
        }
        parameters.push_back(arg);
    }
    sql = std::move(positional.sql);
    return true;
}

// Rows changed by a statement that writes; 0 for one that reads.
int AffectedRows(const PqLibrary &pq, PGresult *result) {
    std::string_view command = pq.cmdStatus(result);
    for (std::string_view writes : {"INSERT", "UPDATE", "DELETE", "MERGE"})
        if (command.starts_with(writes)) return std::atoi(pq.cmdTuples(result));
    return 0;
}

void CollectRows(const PqLibrary &pq, PGresult *result, SgeWorkCallData &call) {
    const int columns = pq.nfields(result);
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(std::max(columns, 0)));
    for (int c = 0; c < columns; c++)
        names.emplace_back(pq.fname(result, c));
    BeginResults(call, std::move(names));
    std::vector<std::string> row(static_cast<std::size_t>(columns));
    for (int r = 0; r < pq.ntuples(result) && WantsMoreRows(call); r++) {
        for (int c = 0; c < columns; c++)
            row[c] = pq.getisnull(result, r, c) ? "" : pq.getvalue(result, r, c);
        AddResultRow(call, row);
    }
    EndResults(call, AffectedRows(pq, result));
}

} // namespace

std::vector<std::pair<std::string, std::string>>
ConnectionKeywords(std::string_view server, const std::string &database, const std::string &user,
                   const std::string &password) {
    std::vector<std::pair<std::string, std::string>> keywords;
    std::size_t colon = server.find(':');
    bool hasPort = colon != std::string_view::npos && colon > 0 && colon + 1 < server.size() &&
                   server.find(':', colon + 1) == std::string_view::npos &&
                   server.find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
    if (!server.empty()) keywords.emplace_back("host", server.substr(0, hasPort ? colon : server.size()));
    if (hasPort) keywords.emplace_back("port", server.substr(colon + 1));
    keywords.emplace_back("dbname", database);
    if (!user.empty()) keywords.emplace_back("user", user);
    if (!password.empty()) keywords.emplace_back("password", password);
    keywords.emplace_back("client_encoding", "UTF8");
    keywords.emplace_back("connect_timeout", "10");
    keywords.emplace_back("application_name", "vlrun");
    keywords.emplace_back("options", kSessionOptions);
    return keywords;
}

PostgresDatabases::~PostgresDatabases() {
    Rollback();
}

pg_conn *PostgresDatabases::Open(const std::string &server, const std::string &database,
                                 Fault &fault) {
    for (const Connection &connection : open_)
        if (connection.server == server && connection.database == database) return connection.handle;
    std::string why;
    const PqLibrary *pq = LoadPqLibrary(why);
    const std::string where = "database " + database + (server.empty() ? "" : " on " + server);
    if (!pq) {
        fault = {500, kDatabaseUnavailable, where + ": " + why};
        return nullptr;
    }
    const Settings &s = TheSettings();
    auto keywords = ConnectionKeywords(server, database, s.user, s.password);
    std::vector<const char *> names, values;
    for (const auto &[name, value] : keywords) {
        names.push_back(name.c_str());
        values.push_back(value.c_str());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    // expand_dbname 0: a database name is never read as a connection string.
    pg_conn *handle = pq->connectdbParams(names.data(), values.data(), 0);
    if (handle && pq->status(handle) == CONNECTION_OK) {
        PGresult *begun = pq->exec(handle, "BEGIN");
        bool ok = pq->resultStatus(begun) == PGRES_COMMAND_OK;
        pq->clear(begun);
        if (ok) {
            open_.push_back({server, database, handle});
            return handle;
        }
    }
    fault = {500, kDatabaseUnavailable,
             where + ": " + (handle ? OneLine(pq->errorMessage(handle)) : "out of memory")};
    if (handle) pq->finish(handle);
    return nullptr;
}

Fault PostgresDatabases::Run(SgeWorkCallData &call, const std::string &server,
                             const std::string &database) {
    Fault fault;
    pg_conn *handle = Open(server, database, fault);
    if (!handle) return fault;
    std::string why;
    const PqLibrary &pq = *LoadPqLibrary(why);

    std::string sql;
    std::vector<const ArgumentBind *> parameters;
    if (!StatementOf(call, sql, parameters, fault)) return fault;
    // Values go as text, already checked against their bind's type; the
    // server gives each parameter the type its place in the statement needs.
    std::vector<std::string> texts(parameters.size());
    std::vector<const char *> values(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); i++) {
        const TypedValue &typed = parameters[i]->typed;
        if (typed.null) continue;
        texts[i] = typed.type == ValueType::Integer ? std::to_string(typed.integer)
                                                     : parameters[i]->value;
        values[i] = texts[i].c_str();
    }
    PGresult *result = pq.execParams(handle, sql.c_str(), static_cast<int>(values.size()), nullptr,
                                     values.data(), nullptr, nullptr, 0);
    ExecStatusType status = pq.resultStatus(result);
    if (status == PGRES_TUPLES_OK || status == PGRES_COMMAND_OK) {
        CollectRows(pq, result, call);
    } else if (status == PGRES_EMPTY_QUERY) {
        fault = {500, kRequestFailed, Describe(call) + ": the SQL is empty"};
    } else {
        const char *state = result ? pq.resultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
        bool busy = state && IsBusy(state);
        fault = {busy ? 503 : 500, busy ? kDatabaseBusy : kRequestFailed,
                 Describe(call) + ": " +
                     OneLine(result ? pq.resultErrorMessage(result) : pq.errorMessage(handle))};
    }
    pq.clear(result);
    return fault;
}

Fault PostgresDatabases::Commit() {
    if (open_.empty()) return {};
    std::string why;
    const PqLibrary *pq = LoadPqLibrary(why);
    Fault fault;
    while (!open_.empty()) {
        Connection &connection = open_.front();
        PGresult *result = pq->exec(connection.handle, "COMMIT");
        // A transaction that failed answers COMMIT with ROLLBACK.
        bool committed = pq->resultStatus(result) == PGRES_COMMAND_OK &&
                         std::string_view(pq->cmdStatus(result)) == "COMMIT";
        if (!committed)
            fault = {500, kRequestFailed,
                     "database " + connection.database + ": the transaction was not committed: " +
                         OneLine(pq->errorMessage(connection.handle))};
        pq->clear(result);
        if (!committed) break;
        pq->finish(connection.handle);
        open_.erase(open_.begin());
    }
    if (fault.status) Rollback();
    return fault;
}

void PostgresDatabases::Rollback() {
    if (open_.empty()) return;
    std::string why;
    const PqLibrary *pq = LoadPqLibrary(why);
    for (const Connection &connection : open_) {
        pq->clear(pq->exec(connection.handle, "ROLLBACK"));
        pq->finish(connection.handle);
    }
    open_.clear();
}

} // namespace vlrun
