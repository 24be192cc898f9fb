// Accessors that generated programs call on their request record: numbered
// arguments unpacked from the request's options, argument lookups, and the
// result strings, counts and error entries the program appends.
#include "runtime/request.h"

#include "util/options.h"
#include "util/strings.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Highest argument index that unpacking looks at.
constexpr int kLastArg = 1024;

SutList *Ensure(SutList *&list) {
    if (!list) list = SutNewList();
    return list;
}

// Takes the value of the option and removes the option, found or not.
char *TakeOption(SutList *options, int i, const char *part) {
    char name[32];
    std::snprintf(name, sizeof name, "Arg%-d%s", i, part);
    char *value = VlGetOptionValue(options, name);
    VlDeleteOptions(options, name);
    return value;
}

// The loop both unpackers share; swapped fills name from the Value option.
int Unpack(VlRequest *request, bool swapped) {
    if (!request || !request->options) return 1;
    for (int i = 0; i <= kLastArg; i++) {
        char *name = TakeOption(request->options, i, "Name");
        char *value = TakeOption(request->options, i, "Value");
        if (!name || !value) {
            std::free(name);
            std::free(value);
            break;
        }
        VlReqArg *arg = static_cast<VlReqArg *>(std::calloc(1, sizeof(VlReqArg)));
        if (swapped) {
            arg->name = value;
            arg->value = name;
        } else {
            arg->name = name;
            arg->value = value;
            arg->number = std::atoi(name);
        }
        SutAddList(Ensure(request->args), arg);
    }
    return 0;
}

VlReqArg *ArgAt(VlRequest *request, int n) {
    return request ? static_cast<VlReqArg *>(SutGetNList(request->args, n)) : nullptr;
}

int AppendCount(VlRequest *request, SutList *VlRequest::*field, int n) {
    if (!request || n < 0) return 1;
    SutAddList(Ensure(request->*field), reinterpret_cast<void *>(static_cast<intptr_t>(n)));
    return 0;
}

int SetField(VlRequest *request, int VlRequest::*field, int n) {
    if (!request || n < 0) return 1;
    request->*field = n;
    return 0;
}

} // namespace

extern "C" {

int VlUnPackOdbcArgs(VlRequest *request) {
    return Unpack(request, false);
}

int VlUnPackArgsFromOptions(VlRequest *request) {
    return Unpack(request, true);
}

char *VlReqGetArgByName(VlRequest *request, const char *name) {
    if (!request || !name || !*name) return nullptr;
    for (int i = 0; i < SutSizList(request->args); i++) {
        VlReqArg *arg = ArgAt(request, i);
        if (arg && arg->name && *arg->name && std::strcmp(arg->name, name) == 0) return arg->value;
    }
    return nullptr;
}

char *VlReqGetNArg(VlRequest *request, int n) {
    VlReqArg *arg = ArgAt(request, n);
    return arg ? arg->value : nullptr;
}

char *VlReqGetNArgName(VlRequest *request, int n) {
    VlReqArg *arg = ArgAt(request, n);
    return arg ? arg->name : nullptr;
}

int VlReqGetNumArgs(VlRequest *request) {
    return request && request->args ? SutSizList(request->args) : 0;
}

SutList *VlReqGetOptionList(VlRequest *request) {
    return request ? request->options : nullptr;
}

int VlReqAppendString(VlRequest *request, const char *text) {
    if (!request) return 1;
    SutAddList(Ensure(request->strings), VlCopyString(text));
    return 0;
}

int VlReqAppendRowCount(VlRequest *request, int n) {
    return AppendCount(request, &VlRequest::rowCounts, n);
}

int VlReqAppendColCount(VlRequest *request, int n) {
    return AppendCount(request, &VlRequest::colCounts, n);
}

int VlReqSetGroupCount(VlRequest *request, int n) {
    return SetField(request, &VlRequest::groupCount, n);
}

int VlReqSetErrorCode(VlRequest *request, int n) {
    return SetField(request, &VlRequest::errorCode, n);
}

int VlReqSetReturnCode(VlRequest *request, int n) {
    return SetField(request, &VlRequest::returnCode, n);
}

int VlReqSetAffectedRowCount(VlRequest *request, int n) {
    return SetField(request, &VlRequest::affectedRowCount, n);
}

int VlReqAppendError(VlRequest *request, int a, int b, int c, const char *text, int d, int e) {
    if (!request) return 1;
    VlReqError *error = static_cast<VlReqError *>(std::calloc(1, sizeof(VlReqError)));
    error->value1 = a;
    error->value2 = b;
    error->value3 = c;
    error->text = VlCopyString(text);
    error->value4 = d;
    error->value5 = e;
    SutAddList(Ensure(request->errors), error);
    return 0;
}

void VlReqDelete(VlRequest *request) {
    if (!request) return;
    for (int i = 0; i < SutSizList(request->args); i++) {
        if (VlReqArg *arg = ArgAt(request, i)) {
            std::free(arg->name);
            std::free(arg->value);
        }
    }
    SutDestroyList(request->args);
    for (int i = 0; i < SutSizList(request->errors); i++)
        if (auto *error = static_cast<VlReqError *>(SutGetNList(request->errors, i)))
            std::free(error->text);
    SutDestroyList(request->errors);
    SutDestroyList(request->strings);
    SutDeleteList(request->rowCounts); // numbers, not pointers
    SutDeleteList(request->colCounts);
    SutDestroyList(request->options);
    std::free(request);
}

} // extern "C"
