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

// Copies the text as it stands: 0, or -26 when nothing was written.
int32_t answerAsIs(TextSpan value, char* buffer, int32_t capacity);
// Copies a constant text: 0, or -26 when nothing was written.
int32_t answerLiteral(const char* text, char* buffer, int32_t capacity);
// Trims characters outside 33..125 from both ends and copies the rest with every such
// character inside turned into a blank: 0, or -26.
int32_t answerPrintable(TextSpan value, char* buffer, int32_t capacity);
// As answerPrintable, and runs of white space become one blank.
int32_t answerPrintableCollapsed(TextSpan value, char* buffer, int32_t capacity);

// One of the copies above.
using SpanAnswer = int32_t (*)(TextSpan value, char* buffer, int32_t capacity);

// Checks the arguments and answers the first filled of the slots through the copy:
// 0, -21, or -26 when none is filled or nothing was written.
int32_t answerFirstFilled(const ParsedRecord* record, const FieldId* ids, int32_t count, SpanAnswer answer,
                          char* buffer, int32_t capacity);
template <size_t N>
int32_t answerFirstFilled(const ParsedRecord* record, const FieldId (&ids)[N], SpanAnswer answer, char* buffer,
                          int32_t capacity) {
    return answerFirstFilled(record, ids, static_cast<int32_t>(N), answer, buffer, capacity);
}
inline int32_t answerSlot(const ParsedRecord* record, FieldId id, SpanAnswer answer, char* buffer,
                          int32_t capacity) {
    return answerFirstFilled(record, &id, 1, answer, buffer, capacity);
}

}  // namespace orvane
