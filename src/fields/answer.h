// Helpers shared by the field workers that answer the getters.
#pragma once

#include <cstdint>

#include "engine/record.h"
#include "engine/status.h"

namespace orvane {

// Every text worker refuses a null record, a record without work buffer, a null
// buffer and a capacity below 1 with -21.
inline int32_t checkAnswerArgs(const ParsedRecord* record, const void* out, int32_t capacity) {
    if (record == nullptr || record->workBuffer == nullptr || record->workCapacity < 1 ||
        out == nullptr || capacity < 1) {
        return kErrInvalidArgument;
    }
    return kOk;
}

// A copy that produced no character is no answer.
inline int32_t answerFromCopy(int32_t written) { return written > 0 ? kOk : kErrNoAnswer; }

// Copies the first filled of the slots as it stands: 0, or -26.
int32_t copyFirstFilled(const ParsedRecord* record, const FieldId* ids, int32_t count,
                        char* buffer, int32_t capacity);

}  // namespace orvane
