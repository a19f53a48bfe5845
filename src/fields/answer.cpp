#include "fields/answer.h"

#include "fields/text.h"

namespace orvane {

int32_t answerAsIs(TextSpan value, char* buffer, int32_t capacity) {
    // copyFilteredZ with nothing filtered, written out: at most capacity - 1 bytes and a NUL.
    if (buffer == nullptr || capacity < 2 || !spanUsable(value)) return kErrNoAnswer;
    const int32_t n = value.length < capacity - 1 ? value.length : capacity - 1;
    moveValueBytes(buffer, value.data, n);
    buffer[n] = '\0';
    return kOk;
}

int32_t answerLiteral(const char* text, char* buffer, int32_t capacity) {
    if (text == nullptr) return kErrNoAnswer;
    return answerAsIs(makeSpan(text), buffer, capacity);
}

int32_t answerPrintable(TextSpan value, char* buffer, int32_t capacity) {
    trimIf(&value, isNotPrintableCode);
    // copyMappedZ with unprintable bytes made blanks, written out for this common answer.
    if (buffer == nullptr || capacity < 1 || !spanUsable(value)) return kErrNoAnswer;
    const int32_t n = value.length < capacity - 1 ? value.length : capacity - 1;
    if (n < 1) return kErrNoAnswer;
    for (int32_t i = 0; i < n; ++i) buffer[i] = isPrintableCode(static_cast<unsigned char>(value.data[i])) ? value.data[i] : ' ';
    buffer[n] = '\0';
    return kOk;
}

int32_t answerPrintableCollapsed(TextSpan value, char* buffer, int32_t capacity) {
    trimIf(&value, isNotPrintableCode);
    return answerFromCopy(copyMappedZ(buffer, capacity, value, isNotPrintableCode, isWhiteSpace, ' '));
}

int32_t answerFirstFilled(const ParsedRecord* record, const FieldId* ids, int32_t count, SpanAnswer answer,
                          char* buffer, int32_t capacity) {
    if (int32_t status = checkAnswerArgs(record, buffer, capacity)) return status;
    TextSpan value;
    if (firstFilledField(record, ids, count, &value) != kOk) return kErrNoAnswer;
    return answer(value, buffer, capacity);
}

}  // namespace orvane
