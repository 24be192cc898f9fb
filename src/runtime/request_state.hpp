// The state of the request being answered: its record (input fields as
// arguments, results, errors), the work calls its activator made, the open
// databases, the answer and the first fault. One at a time, reached through
// currentRequest() by the C calls of the generated code.
#ifndef VELMORA_RUNTIME_REQUEST_STATE_HPP
#define VELMORA_RUNTIME_REQUEST_STATE_HPP

#include "runtime/answer.hpp"
#include "runtime/fault.hpp"
#include "runtime/request.h"

#include <memory>
#include <string>
#include <vector>

struct SgeWorkCallData;

namespace vlrun {

class Databases;

struct RequestState {
    RequestState();
    ~RequestState();
    RequestState(const RequestState &) = delete;
    RequestState &operator=(const RequestState &) = delete;

    VlRequest *record;
    std::vector<std::unique_ptr<SgeWorkCallData>> calls;
    std::unique_ptr<Databases> databases;
    Answer answer;
    std::string answerPage; // chosen by the activator
    Fault fault;            // the first failure; later work calls do not run
};

// The request being answered, or null outside VlProcessRequest.
RequestState *CurrentRequest();
void SetCurrentRequest(RequestState *request);

// Records a failure of the current request: the first one decides the
// answer; each is written to standard error and kept in the record's errors.
void FailRequest(Fault fault);

} // namespace vlrun

#endif
