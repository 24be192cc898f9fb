// Work calls on the project's vendor, and on SQLite itself: the database
// file of the configured (else the work call's) database, one transaction
// per request, one statement per work call with its :name placeholders bound
// as typed parameters, stored procedures as SQL kept by name in the table
// vl_procedures.
#include "runtime/database.hpp"

#include "runtime/api.hpp"
#include "runtime/postgres.hpp"
#include "runtime/settings.hpp"

#include <sqlite3.h>

namespace vlrun {

namespace {

constexpr int kBusyMilliseconds = 5000;

// A fault for what the database said about the statement or the connection.
Fault DatabaseFault(sqlite3 *db, const SgeWorkCallData &call, int rc) {
    int status = rc == SQLITE_BUSY || rc == SQLITE_LOCKED ? 503 : 500;
    return {status,
            status == 503 ? kDatabaseBusy : kRequestFailed,
            Describe(call) + ": " + (db ? sqlite3_errmsg(db) : sqlite3_errstr(rc))};
}

// The SQL of a stored procedure: the text kept under its name.
bool StoredProcedure(sqlite3 *db, const SgeWorkCallData &call, std::string &sql, Fault &fault) {
    sqlite3_stmt *query = nullptr;
    int rc = sqlite3_prepare_v2(db, "SELECT sql FROM vl_procedures WHERE name = ?1", -1, &query,
                                nullptr);
    if (rc == SQLITE_OK) rc = sqlite3_bind_text(query, 1, call.name.c_str(), -1, SQLITE_STATIC);
    if (rc == SQLITE_OK) rc = sqlite3_step(query);
    if (rc == SQLITE_ROW) {
        const unsigned char *text = sqlite3_column_text(query, 0);
        sql = text ? reinterpret_cast<const char *>(text) : "";
    } else if (rc == SQLITE_DONE) {
        fault = {500, kRequestFailed, Describe(call) + ": no stored procedure " + call.name + " in vl_procedures"};
    } else {
        fault = DatabaseFault(db, call, rc);
    }
    sqlite3_finalize(query);
    return !fault.status;
}

// Prepares exactly one statement; more than one is refused.
sqlite3_stmt *PrepareOne(sqlite3 *db, const SgeWorkCallData &call, const std::string &sql,
                         Fault &fault) {
    sqlite3_stmt *statement = nullptr;
    const char *tail = nullptr;
    int rc = sqlite3_prepare_v2(db, sql.c_str(), static_cast<int>(sql.size()), &statement, &tail);
    if (rc != SQLITE_OK) {
        fault = DatabaseFault(db, call, rc);
        return nullptr;
    }
    const char *end = sql.c_str() + sql.size();
    while (statement && tail && tail < end) {
        sqlite3_stmt *next = nullptr;
        const char *after = nullptr;
        rc = sqlite3_prepare_v2(db, tail, static_cast<int>(end - tail), &next, &after);
        if (rc != SQLITE_OK || next) {
            sqlite3_finalize(next);
            sqlite3_finalize(statement);
            fault = {500, kRequestFailed, Describe(call) + ": the SQL holds more than one statement"};
            return nullptr;
        }
        if (after == tail) break;
        tail = after;
    }
    if (!statement) fault = {500, kRequestFailed, Describe(call) + ": the SQL is empty"};
    return statement;
}

} // namespace

std::string DatabaseFile(std::string_view name) {
    std::string file(name);
    std::size_t slash = file.rfind('/');
    std::size_t dot = file.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) file += ".db";
    return FromProgramDir(file);
}

Fault BindParameters(sqlite3_stmt *statement, const SgeWorkCallData &call) {
    int count = sqlite3_bind_parameter_count(statement);
    for (int i = 1; i <= count; i++) {
        const char *placeholder = sqlite3_bind_parameter_name(statement, i);
        if (!placeholder || placeholder[0] != ':')
            return {500, kRequestFailed,
                    Describe(call) + ": parameter " + (placeholder ? placeholder : "?") +
                        " is not a :name placeholder"};
        const ArgumentBind *arg = ArgumentNamed(call, placeholder + 1);
        if (!arg)
            return {500, kRequestFailed,
                    Describe(call) + ": placeholder " + placeholder + " has no argument bind"};
        const TypedValue &v = arg->typed;
        int rc = SQLITE_OK;
        if (v.null)
            rc = sqlite3_bind_null(statement, i);
        else if (v.type == ValueType::Integer)
            rc = sqlite3_bind_int64(statement, i, v.integer);
        else if (v.type == ValueType::Numeric)
            rc = sqlite3_bind_double(statement, i, v.number);
        else
            rc = sqlite3_bind_text(statement, i, arg->value.data(),
                                   static_cast<int>(arg->value.size()), SQLITE_TRANSIENT);
        if (rc != SQLITE_OK) return DatabaseFault(sqlite3_db_handle(statement), call, rc);
    }
    return {};
}

Databases::Databases() = default;

Databases::~Databases() {
    Rollback();
}

sqlite3 *Databases::Open(const std::string &file, Fault &fault) {
    for (const auto &[name, db] : open_)
        if (name == file) return db;
    sqlite3 *db = nullptr;
    int rc = sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr);
    if (rc == SQLITE_OK) {
        sqlite3_busy_timeout(db, kBusyMilliseconds);
        rc = sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    }
    if (rc != SQLITE_OK) {
        fault = {500, kDatabaseUnavailable,
                 "database " + file + ": " + (db ? sqlite3_errmsg(db) : sqlite3_errstr(rc))};
        sqlite3_close(db);
        return nullptr;
    }
    open_.emplace_back(file, db);
    return db;
}

Fault Databases::Run(SgeWorkCallData &call) {
    const Settings &s = TheSettings();
    if (s.vendor != SGESQLITE && s.vendor != SGEPOSTGRES)
        return {500,
                "The database vendor " + s.vendorName +
                    " is not supported by this runtime, which serves SQLITE and POSTGRES.",
                Describe(call) + ": database vendor " + s.vendorName + " is not supported"};
    const std::string &name = s.database.empty() ? call.database : s.database;
    if (name.empty()) return {500, kRequestFailed, Describe(call) + ": no database is named"};
    if (s.vendor == SGEPOSTGRES) {
        if (!postgres_) postgres_ = std::make_unique<PostgresDatabases>();
        return postgres_->Run(call, s.server.empty() ? call.server : s.server, name);
    }
    Fault fault;
    sqlite3 *db = Open(DatabaseFile(name), fault);
    if (!db) return fault;

    std::string sql;
    if (call.fragments.empty()) {
        if (!StoredProcedure(db, call, sql, fault)) return fault;
    } else {
        for (const std::string &fragment : call.fragments)
            sql.append(sql.empty() ? "" : "\n").append(fragment);
    }
    sqlite3_stmt *statement = PrepareOne(db, call, sql, fault);
    if (!statement) return fault;
    fault = BindParameters(statement, call);
    if (fault.status) {
        sqlite3_finalize(statement);
        return fault;
    }

    std::vector<std::string> names;
    int columns = sqlite3_column_count(statement);
    for (int c = 0; c < columns; c++) {
        const char *columnName = sqlite3_column_name(statement, c);
        names.emplace_back(columnName ? columnName : "");
    }
    bool reading = sqlite3_stmt_readonly(statement) != 0;
    BeginResults(call, std::move(names));
    std::vector<std::string> row(static_cast<std::size_t>(columns));
    int rc = SQLITE_ROW;
    while ((rc = sqlite3_step(statement)) == SQLITE_ROW) {
        if (!WantsMoreRows(call)) {
            if (reading) break;
            continue; // a statement that writes runs to its end
        }
        for (int c = 0; c < columns; c++) {
            const unsigned char *value = sqlite3_column_text(statement, c);
            row[c] = value ? reinterpret_cast<const char *>(value) : "";
        }
        AddResultRow(call, row);
    }
    if (rc != SQLITE_ROW && rc != SQLITE_DONE) fault = DatabaseFault(db, call, rc);
    sqlite3_finalize(statement);
    EndResults(call, reading ? 0 : sqlite3_changes(db));
    return fault;
}

Fault Databases::Commit() {
    Fault fault = postgres_ ? postgres_->Commit() : Fault();
    if (fault.status) {
        Rollback();
        return fault;
    }
    for (auto it = open_.begin(); it != open_.end();) {
        if (sqlite3_exec(it->second, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK) {
            fault = {500, kRequestFailed, "database " + it->first + ": " + sqlite3_errmsg(it->second)};
            break;
        }
        sqlite3_close(it->second);
        it = open_.erase(it);
    }
    if (fault.status) Rollback();
    return fault;
}

void Databases::Rollback() {
    if (postgres_) postgres_->Rollback();
    for (auto &[name, db] : open_) {
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    }
    open_.clear();
}

} // namespace vlrun
