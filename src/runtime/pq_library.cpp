// Loading libpq.so.5 with dlopen and looking up the functions the PostgreSQL
// work calls use; the result (or the reason it failed) is kept for the rest
// of the process.
#include "runtime/pq_library.hpp"

#include <dlfcn.h>

#include <cstring>

namespace vlrun {

namespace {

// libpq's soname: the interface of version 5 has been kept since 2006.
constexpr const char *kLibpq = "libpq.so.5";

template <typename Function> bool LookUp(void *library, const char *name, Function &function) {
    void *symbol = dlsym(library, name);
    // A data pointer cannot be cast to a function pointer in ISO C++; dlsym's
    // result is a function's address on every POSIX system.
    static_assert(sizeof symbol == sizeof function);
    std::memcpy(&function, &symbol, sizeof function);
    return symbol != nullptr;
}

bool Load(PqLibrary &pq, std::string &why) {
    void *library = dlopen(kLibpq, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char *error = dlerror();
        why = std::string("PostgreSQL's client library cannot be loaded (") +
              (error ? error : kLibpq) + "); install it: apt-get install libpq5";
        return false;
    }
    why.clear();
    auto need = [&](const char *name, auto &function) {
        if (why.empty() && !LookUp(library, name, function))
            why = std::string(kLibpq) + " lacks " + name;
    };
    need("PQconnectdbParams", pq.connectdbParams);
    need("PQstatus", pq.status);
    need("PQerrorMessage", pq.errorMessage);
    need("PQfinish", pq.finish);
    need("PQexec", pq.exec);
    need("PQexecParams", pq.execParams);
    need("PQresultStatus", pq.resultStatus);
    need("PQresultErrorMessage", pq.resultErrorMessage);
    need("PQresultErrorField", pq.resultErrorField);
    need("PQntuples", pq.ntuples);
    need("PQnfields", pq.nfields);
    need("PQfname", pq.fname);
    need("PQgetvalue", pq.getvalue);
    need("PQgetisnull", pq.getisnull);
    need("PQcmdStatus", pq.cmdStatus);
    need("PQcmdTuples", pq.cmdTuples);
    need("PQclear", pq.clear);
    return why.empty(); // the library stays loaded for the rest of the process
}

} // namespace

const PqLibrary *LoadPqLibrary(std::string &why) {
    static PqLibrary pq;
    static std::string failure;
    static const bool loaded = Load(pq, failure);
    if (!loaded) why = failure;
    return loaded ? &pq : nullptr;
}

} // namespace vlrun
