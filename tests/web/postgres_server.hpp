// A private PostgreSQL server for tests: a cluster made by initdb in a
// scratch directory, the server listening on a socket in a private directory
// only (no TCP), run as an unprivileged user when the tests run as root
// (initdb refuses root), and stopped by the destructor; should the test
// process die first, the server gets SIGQUIT (an immediate shutdown) as the
// parent-death signal of its postmaster.
#ifndef VELMORA_TESTS_WEB_POSTGRES_SERVER_HPP
#define VELMORA_TESTS_WEB_POSTGRES_SERVER_HPP

#include "support/run_program.hpp"
#include "support/temp_dir.hpp"

#include <libpq-fe.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

// The server's programs: the newest /usr/lib/postgresql/<version>/bin (the
// package postgresql), or empty.
inline std::string PostgresBinDir() {
    std::string best;
    int bestVersion = 0;
    std::error_code ec;
    for (const auto &entry : fs::directory_iterator("/usr/lib/postgresql", ec)) {
        int version = std::atoi(entry.path().filename().c_str());
        std::string bin = entry.path().string() + "/bin";
        if (version > bestVersion && access((bin + "/initdb").c_str(), X_OK) == 0 &&
            access((bin + "/postgres").c_str(), X_OK) == 0) {
            bestVersion = version;
            best = bin;
        }
    }
    return best;
}

using PgConnection = std::unique_ptr<PGconn, decltype(&PQfinish)>;

class PostgresServer {
  public:
    static constexpr const char *kRole = "vltest";

    // Makes the cluster in a scratch directory of its own (whose parent,
    // the temporary directory, the server's user may enter).
    PostgresServer() : dir_(temp_.Path()), data_(dir_ + "/data"), socket_(dir_ + "/socket") {
        const std::string bin = PostgresBinDir();
        if (bin.empty()) {
            log_ = "the PostgreSQL server is not installed (apt-get install postgresql)";
            return;
        }
        fs::create_directories(data_);
        fs::create_directories(socket_);
        fs::permissions(socket_, fs::perms::owner_all);
        const bool root = geteuid() == 0;
        if (root && !GiveToNobody()) return;
        ProgramRun initdb = RunProgram(bin + "/initdb",
                                       {"-D", data_, "-U", kRole, "-A", "trust", "-E", "UTF8",
                                        "--locale=C", "--no-sync", "--no-instructions"},
                                       {"PATH=/usr/bin:/bin"}, dir_, true);
        if (initdb.status != 0) {
            log_ = "initdb failed:\n" + initdb.out + initdb.err;
            return;
        }
        SpawnOptions server{.dir = dir_, .out = dir_ + "/server.log", .deathSignal = SIGQUIT};
        if (root) server.uid = server.gid = kNobody;
        pid_ = SpawnProgram({bin + "/postgres", "-D", data_, "-k", socket_, "-c",
                             "listen_addresses=", "-c", "fsync=off", "-c", "synchronous_commit=off",
                             "-c", "full_page_writes=off"},
                            server);
        if (!WaitUntilReady()) Stop();
    }
    ~PostgresServer() { Stop(); }
    PostgresServer(const PostgresServer &) = delete;
    PostgresServer &operator=(const PostgresServer &) = delete;

    bool Running() const { return pid_ > 0; }
    // The socket directory, the "host" of the connections.
    const std::string &SocketDir() const { return socket_; }
    // Why it is not running, or what initdb and the server wrote.
    std::string Log() const { return log_ + ReadText(dir_ + "/server.log"); }

    PgConnection Connect(const std::string &database) const {
        const char *names[] = {"host", "dbname", "user", nullptr};
        const char *values[] = {socket_.c_str(), database.c_str(), kRole, nullptr};
        return PgConnection(PQconnectdbParams(names, values, 0), &PQfinish);
    }

    // Runs SQL (one or more statements); the rows of the last as lines of
    // values joined by '|', or "error: <message>".
    static std::string Query(PGconn *connection, const std::string &sql) {
        std::unique_ptr<PGresult, decltype(&PQclear)> result(PQexec(connection, sql.c_str()),
                                                             &PQclear);
        ExecStatusType status = PQresultStatus(result.get());
        if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK)
            return "error: " + std::string(PQresultErrorMessage(result.get()));
        std::string out;
        for (int r = 0; r < PQntuples(result.get()); r++) {
            for (int c = 0; c < PQnfields(result.get()); c++)
                out += (c ? "|" : "") + std::string(PQgetvalue(result.get(), r, c));
            out += "\n";
        }
        return out;
    }

    // Creates a database and runs the SQL file in it; empty, or what failed.
    std::string CreateDatabase(const std::string &name, const std::string &sqlFile) const {
        std::string created = Query(Connect("postgres").get(), "CREATE DATABASE " + name);
        if (!created.empty()) return created;
        std::string loaded = Query(Connect(name).get(), ReadText(sqlFile));
        return loaded.starts_with("error: ") ? loaded : "";
    }

    // A fast shutdown, then SIGKILL after 10 seconds.
    void Stop() { StopProcess(pid_, SIGINT, 10000); }

  private:
    // As root: the cluster belongs to nobody, who may enter the scratch
    // directory but not read it.
    bool GiveToNobody() {
        fs::permissions(dir_, fs::perms::owner_all | fs::perms::group_exec | fs::perms::others_exec);
        for (const std::string &owned : {data_, socket_})
            if (chown(owned.c_str(), kNobody, kNobody) != 0) {
                log_ = "cannot give " + owned + " to nobody";
                return false;
            }
        return true;
    }

    bool WaitUntilReady() {
        auto accepts = [&] { return PQstatus(Connect("postgres").get()) == CONNECTION_OK; };
        if (PollUntilReady(pid_, 300, std::chrono::milliseconds(100), accepts)) return true;
        log_ = pid_ <= 0 ? "the PostgreSQL server ended at start:\n"
                         : "the PostgreSQL server did not accept connections within 30 seconds:\n";
        return false;
    }

    TempDir temp_; // removed after the server stopped
    std::string dir_;
    std::string data_;
    std::string socket_;
    pid_t pid_ = -1;
    std::string log_;
};

#endif
