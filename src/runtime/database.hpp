// The databases of one request, of the project's vendor (SQLite, or
// PostgreSQL in postgres.hpp): each opened on first use with a transaction
// begun, work calls run as one prepared statement whose :name placeholders
// are bound to the argument binds as typed parameters, and the whole request
// committed at the end or rolled back.
#ifndef VELMORA_RUNTIME_DATABASE_HPP
#define VELMORA_RUNTIME_DATABASE_HPP

#include "runtime/fault.hpp"
#include "runtime/workcall.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace vlrun {

class PostgresDatabases;

// The file of a database name: ".db" added when the name has no extension,
// relative to the program's directory.
std::string DatabaseFile(std::string_view name);

// Binds every parameter of the statement: each must be a :name placeholder
// with an argument bind of that name, bound as its checked typed value. A
// fault (500) names a placeholder without a bind or one of another form.
Fault BindParameters(sqlite3_stmt *statement, const SgeWorkCallData &call);

class Databases {
  public:
    Databases();
    ~Databases(); // rolls back whatever was not committed
    Databases(const Databases &) = delete;
    Databases &operator=(const Databases &) = delete;

    // Runs the work call on the configured server and database (else its
    // own), of the configured vendor: its fragments joined, or without them
    // the SQL stored under its name in vl_procedures (SQLite) or the function
    // of its name (PostgreSQL).
    Fault Run(SgeWorkCallData &call);
    // Commits every open database; a fault when one fails.
    Fault Commit();
    void Rollback();

  private:
    sqlite3 *Open(const std::string &file, Fault &fault);
    std::vector<std::pair<std::string, sqlite3 *>> open_;
    std::unique_ptr<PostgresDatabases> postgres_; // made by the first PostgreSQL work call
};

} // namespace vlrun

#endif
