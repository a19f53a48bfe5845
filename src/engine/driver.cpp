#include "engine/driver.h"

#include <cctype>

#include "engine/framers.h"
#include "engine/status.h"

namespace orvane {
namespace {

inline constexpr int32_t kNoScore = -9999;

int32_t checkDriverArguments(const void* data, int32_t dataLength, const char* inputCopy,
                             int32_t inputCopyCapacity, const ParsedRecord* record) {
    if (data == nullptr) return kErrNullInput;
    if (dataLength < 1) return kErrEmptyInput;
    if (inputCopy == nullptr || inputCopyCapacity < 1 || record == nullptr) {
        return kErrInvalidArgument;
    }
    if (record->workBuffer == nullptr || record->workCapacity < 1) return kErrNoWorkBuffer;
    return kOk;
}

void upperCaseInPlace(char* text, int32_t length) {
    for (int32_t i = 0; i < length; ++i) {
        text[i] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[i])));
    }
}

// Frames the input into the scratch buffer and runs the row's reader on a fresh record.
int32_t runRow(const FormatDescriptor& row, const void* data, int32_t dataLength, char* inputCopy,
               int32_t room, ParsedRecord* record, const ParseClock* clock, int32_t* framedLength) {
    int32_t length = 0;
    const int32_t framed =
        row.framer(static_cast<const char*>(data), dataLength, inputCopy, room, &length);
    if (framed != kOk) return framed;
    if (length < 0) length = 0;
    if (length > room) length = room;
    *framedLength = length;
    // Readers see upper-case text, except after the pass-through framer.
    if (row.framer != framePassThrough) upperCaseInPlace(inputCopy, length);
    resetRecord(record);
    return row.parser(inputCopy, length, record, clock);
}

}  // namespace

int32_t countFilledFields(const ParsedRecord* record) {
    int32_t filled = 0;
    for (FieldId id = 0; id < kFieldCount; ++id) {
        if (fieldMissing(record, id) == 0) ++filled;
    }
    return filled;
}

int32_t parseBestFormatOf(std::span<const FormatDescriptor> rows, const void* data,
                          int32_t dataLength, char* inputCopy, int32_t inputCopyCapacity,
                          ParsedRecord* record, const ParseClock* clock) {
    const int32_t status =
        checkDriverArguments(data, dataLength, inputCopy, inputCopyCapacity, record);
    if (status != kOk) return status;
    const int32_t room = inputCopyCapacity - 1;
    int32_t bestRow = -1;
    int32_t bestScore = kNoScore;
    for (size_t r = 0; r < rows.size(); ++r) {
        int32_t length = 0;
        if (runRow(rows[r], data, dataLength, inputCopy, room, record, clock, &length) != kOk) {
            continue;
        }
        const int32_t score = countFilledFields(record);
        if (score == 0) continue;
        if (score > bestScore) {
            bestRow = static_cast<int32_t>(r);
            bestScore = score;
        }
    }
    if (bestRow < 0) return kErrNotRecognised;
    const FormatDescriptor& best = rows[static_cast<size_t>(bestRow)];
    int32_t length = 0;
    const int32_t final = runRow(best, data, dataLength, inputCopy, room, record, clock, &length);
    if (final != kOk) return final;
    record->formatGroup = best.formatGroup;
    record->formatId = best.formatId;
    sanitizeWorkBuffer(record);
    return kOk;
}

int32_t parseBestFormat(const void* data, int32_t dataLength, char* inputCopy,
                        int32_t inputCopyCapacity, ParsedRecord* record, const ParseClock* clock) {
    return parseBestFormatOf(formatRegistry(), data, dataLength, inputCopy, inputCopyCapacity,
                             record, clock);
}

}  // namespace orvane
