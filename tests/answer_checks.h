// Asks a parsed handle every question of the C interface and checks each status is one
// the interface documents and that no answer passes its buffer's capacity. Shared by the
// hostile-input, thread and fuzz tests.
#pragma once

#include <cstring>
#include <string>

#include "../tools/answer_table.h"
#include "orvane_parser.h"

namespace orvane::testing {

// SVT_parse: its own codes, or the refusal a format reader gave on its final run.
inline bool isDocumentedParseStatus(int s) {
    return s == SVT_OK || s == SVT_ERR_NULL_INPUT || s == SVT_ERR_EMPTY_INPUT || s == SVT_ERR_INVALID_ARGUMENT ||
           s == SVT_ERR_NO_WORK_BUFFER || s == SVT_ERR_NOT_RECOGNISED || (s >= -14 && s <= -1) || s == -20 || s == -22;
}
inline bool isDocumentedTextStatus(int s) {
    return s == SVT_OK || s == SVT_ERR_BUFFER_TOO_SMALL || s == SVT_ERR_INVALID_ARGUMENT || s == SVT_ERR_NO_ANSWER;
}
inline bool isDocumentedFlagStatus(int s) { return s == SVT_OK || s == SVT_ERR_INVALID_ARGUMENT || s == SVT_ERR_NO_ANSWER; }
inline bool isDocumentedCheckStatus(int s) { return s == SVT_OK || s == SVT_ERR_INVALID_ARGUMENT; }

// Every text answer at several capacities (with a guard after the buffer), every flag
// and the three checks. The first fault, or "" when there is none.
inline std::string askEverything(SVT_ParserHandle* handle, int columns = 20, int rows = 15, int level = 5) {
    constexpr int kGuard = 16;
    char buffer[256 + kGuard];
    for (const auto& answer : orvane_tools::kTextAnswers) {
        int exact = 0;
        if (answer.getter(handle, buffer, 256) == SVT_OK) exact = static_cast<int>(strnlen(buffer, 256)) + 1;
        for (int capacity : {1, 2, 11, exact, 256}) {
            if (capacity < 1) continue;
            std::memset(buffer, 0x5A, sizeof buffer);
            const int status = answer.getter(handle, buffer, capacity);
            if (!isDocumentedTextStatus(status)) return std::string(answer.name) + " status " + std::to_string(status);
            for (int i = capacity; i < capacity + kGuard; ++i) {
                if (buffer[i] != 0x5A) return std::string(answer.name) + " wrote past capacity " + std::to_string(capacity);
            }
        }
    }
    for (const auto& answer : orvane_tools::kFlagAnswers) {
        int value = 7;
        const int status = answer.getter(handle, &value);
        if (!isDocumentedFlagStatus(status)) return std::string(answer.name) + " status " + std::to_string(status);
        if (status == SVT_OK && value != 0 && value != 1) return std::string(answer.name) + " value " + std::to_string(value);
    }
    int status = 0;
    int result = SVT_validateDocumentId(handle, &status);
    if (!isDocumentedCheckStatus(result)) return "document id check " + std::to_string(result);
    result = SVT_validateJurisdictionCode(handle, &status);
    if (!isDocumentedCheckStatus(result)) return "jurisdiction check " + std::to_string(result);
    result = SVT_validateBarcode(handle, columns, rows, level, &status);
    if (!isDocumentedCheckStatus(result)) return "barcode check " + std::to_string(result);
    return std::string();
}

}  // namespace orvane::testing
