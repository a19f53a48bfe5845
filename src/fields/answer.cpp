#include "fields/answer.h"

namespace orvane {

int32_t copyFirstFilled(const ParsedRecord* record, const FieldId* ids, int32_t count,
                        char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan value;
    if (firstFilledField(record, ids, count, &value) != kOk) return kErrNoAnswer;
    return answerFromCopy(copyFilteredZ(buffer, capacity, value, nullptr, nullptr, '\0'));
}

}  // namespace orvane
