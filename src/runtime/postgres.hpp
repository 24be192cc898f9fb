// Work calls on PostgreSQL: one connection per server and database of a
// request, opened with separate keywords (never a connection string made of
// settings) and a transaction begun; each work call one statement whose
// :name placeholders are sent as parameters, or a stored function called
// with the arguments; committed at the end of the request or rolled back.
#ifndef VELMORA_RUNTIME_POSTGRES_HPP
#define VELMORA_RUNTIME_POSTGRES_HPP

#include "runtime/fault.hpp"
#include "runtime/workcall.hpp"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct pg_conn;

namespace vlrun {

// The keywords and values of a connection: host (a name, an address or a
// socket directory) and port from server ("db.example.com:5433"; an
// address with more than one colon is taken whole), dbname, user and
// password when given, and the session settings the runtime relies on.
std::vector<std::pair<std::string, std::string>>
ConnectionKeywords(std::string_view server, const std::string &database, const std::string &user,
                   const std::string &password);

class PostgresDatabases {
  public:
    PostgresDatabases() = default;
    ~PostgresDatabases(); // rolls back whatever was not committed
    PostgresDatabases(const PostgresDatabases &) = delete;
    PostgresDatabases &operator=(const PostgresDatabases &) = delete;

    // Runs the work call on database of server: its fragments joined into
    // one statement, or without fragments the function of its name called
    // with its arguments in order.
    Fault Run(SgeWorkCallData &call, const std::string &server, const std::string &database);
    Fault Commit();
    void Rollback();

  private:
    struct Connection {
        std::string server;
        std::string database;
        pg_conn *handle;
    };
    pg_conn *Open(const std::string &server, const std::string &database, Fault &fault);
    std::vector<Connection> open_;
};

} // namespace vlrun

#endif
