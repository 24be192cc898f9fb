// PostgreSQL's client library, loaded when a program first needs it. A CGI
// program starts for every request, and linking libpq (with the TLS,
// Kerberos and LDAP libraries it brings) would make every program of every
// vendor load them at each start; so libpq.so.5 is opened only by the first
// PostgreSQL work call, and the functions the runtime calls are looked up.
#ifndef VELMORA_RUNTIME_PQ_LIBRARY_HPP
#define VELMORA_RUNTIME_PQ_LIBRARY_HPP

#include <libpq-fe.h>

#include <string>

namespace vlrun {

// The libpq functions the runtime calls, under their names without "PQ".
struct PqLibrary {
    decltype(&PQconnectdbParams) connectdbParams = nullptr;
    decltype(&PQstatus) status = nullptr;
    decltype(&PQerrorMessage) errorMessage = nullptr;
    decltype(&PQfinish) finish = nullptr;
    decltype(&PQexec) exec = nullptr;
    decltype(&PQexecParams) execParams = nullptr;
    decltype(&PQresultStatus) resultStatus = nullptr;
    decltype(&PQresultErrorMessage) resultErrorMessage = nullptr;
    decltype(&PQresultErrorField) resultErrorField = nullptr;
    decltype(&PQntuples) ntuples = nullptr;
    decltype(&PQnfields) nfields = nullptr;
    decltype(&PQfname) fname = nullptr;
    decltype(&PQgetvalue) getvalue = nullptr;
    decltype(&PQgetisnull) getisnull = nullptr;
    decltype(&PQcmdStatus) cmdStatus = nullptr;
    decltype(&PQcmdTuples) cmdTuples = nullptr;
    decltype(&PQclear) clear = nullptr;
};

// The library, loaded at the first call; null (with the reason in why) when
// it cannot be loaded or lacks a function.
const PqLibrary *LoadPqLibrary(std::string &why);

} // namespace vlrun

#endif
