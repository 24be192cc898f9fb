// vlsql: creates or updates the SQLite database of a Velmora application by
// running a file of SQL statements (a schema, seed data, the stored
// procedures of vl_procedures), so that no separate SQLite shell is needed.
// The file runs as one transaction (so it holds no BEGIN or COMMIT of its
// own): when a statement fails, nothing of it stays. Rows that statements
// return are printed one a line, values separated by '|'.
//   vlsql DATABASE-FILE [SQL-FILE]     (standard input without SQL-FILE)
#include <sqlite3.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

int PrintRow(void *, int columns, char **values, char **) {
    for (int i = 0; i < columns; i++)
        std::printf("%s%s", i ? "|" : "", values[i] ? values[i] : "");
    std::printf("\n");
    return 0;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: vlsql DATABASE-FILE [SQL-FILE]\n");
        return 2;
    }
    std::ostringstream sql;
    if (argc == 3) {
        std::ifstream in(argv[2], std::ios::binary);
        if (!in) {
            std::fprintf(stderr, "vlsql: cannot read %s\n", argv[2]);
            return 1;
        }
        sql << in.rdbuf();
    } else {
        sql << std::cin.rdbuf();
    }
    sqlite3 *db = nullptr;
    if (sqlite3_open_v2(argv[1], &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) !=
        SQLITE_OK) {
        std::fprintf(stderr, "vlsql: cannot open %s: %s\n", argv[1],
                     db ? sqlite3_errmsg(db) : "out of memory");
        sqlite3_close(db);
        return 1;
    }
    char *error = nullptr;
    int rc = sqlite3_exec(db, "BEGIN", nullptr, nullptr, &error);
    if (rc == SQLITE_OK) rc = sqlite3_exec(db, sql.str().c_str(), PrintRow, nullptr, &error);
    if (rc == SQLITE_OK) rc = sqlite3_exec(db, "COMMIT", nullptr, nullptr, &error);
    if (rc != SQLITE_OK) sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK)
        std::fprintf(stderr, "vlsql: %s: %s\n", argc == 3 ? argv[2] : "stdin",
                     error ? error : sqlite3_errstr(rc));
    sqlite3_free(error);
    sqlite3_close(db);
    return rc == SQLITE_OK ? 0 : 1;
}
