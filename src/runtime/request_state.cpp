// The current request's state: creation and release of its record, work
// calls and databases, and the recording of its failures.
#include "runtime/request_state.hpp"

#include "runtime/database.hpp"
#include "runtime/workcall.hpp"

#include <cstdio>
#include <cstdlib>

namespace vlrun {

namespace {

RequestState *current = nullptr;

} // namespace

RequestState::RequestState()
    : record(static_cast<VlRequest *>(std::calloc(1, sizeof(VlRequest)))),
      databases(std::make_unique<Databases>()) {}

RequestState::~RequestState() {
    databases.reset(); // rolls back what was not committed
    calls.clear();
    VlReqDelete(record);
}

RequestState *CurrentRequest() {
    return current;
}

void SetCurrentRequest(RequestState *request) {
    current = request;
}

void FailRequest(Fault fault) {
    const std::string &detail = fault.detail.empty() ? fault.message : fault.detail;
    std::fprintf(stderr, "vlrun: %d: %s\n", fault.status, detail.c_str());
    if (!current) return;
    VlReqAppendError(current->record, fault.status, 0, 0, detail.c_str(), 0, 0);
    if (!current->fault.status) current->fault = std::move(fault);
}

} // namespace vlrun
