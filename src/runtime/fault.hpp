// Why a request is refused or failed: the HTTP status, the sentence the
// error page shows, and the details that only go to standard error.
#ifndef VELMORA_RUNTIME_FAULT_HPP
#define VELMORA_RUNTIME_FAULT_HPP

#include <string>
#include <utility>

namespace vlrun {

// The sentences of the error pages that several sources give.
inline constexpr const char *kRequestFailed = "The request could not be completed.";
inline constexpr const char *kDatabaseUnavailable = "The application's database is not available.";
inline constexpr const char *kDatabaseBusy = "The database is busy; try again in a moment.";

struct Fault {
    Fault() = default;
    Fault(int status, std::string message, std::string detail = {})
        : status(status), message(std::move(message)), detail(std::move(detail)) {}

    int status = 0; // 0: no fault
    std::string message;
    std::string detail;
};

} // namespace vlrun

#endif
