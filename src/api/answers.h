// The argument checks and status mapping shared by every exported getter and check,
// so that each exported function is one line naming its worker.
#pragma once

#include <cstdint>

#include "api/handle.h"
#include "engine/status.h"

namespace orvane {

using FlagDeriver = int32_t (*)(const ParsedRecord* record, int32_t* value);

// A text getter: the worker writes the answer, NUL-terminated, into the caller's buffer.
inline int answerText(const ParserHandle* handle, char* buffer, int capacity, TextDeriver derive) {
    if (handle == nullptr || capacity < 0) return kErrInvalidArgument;
    return derive(&handle->record, buffer, capacity);
}

// A flag getter: the value is written only when the worker answered.
inline int answerFlag(const ParserHandle* handle, int* value, FlagDeriver derive) {
    if (handle == nullptr || value == nullptr) return kErrInvalidArgument;
    int32_t answer = 0;
    const int32_t status = derive(&handle->record, &answer);
    if (status == kOk) *value = answer;
    return status;
}

// A validity check: results 1 to 3 go to the caller's status with 0 returned; anything
// else is returned as it stands and the caller's status keeps its value.
template <typename Check>
int answerCheck(ParserHandle* handle, int* status, Check check) {
    if (handle == nullptr || status == nullptr) return kErrInvalidArgument;
    const int32_t result = check(*handle);
    if (result >= kCheckNotCheckable && result <= kCheckInvalid) {
        *status = result;
        return kOk;
    }
    return result;
}

}  // namespace orvane
