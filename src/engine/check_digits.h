// The check digits a document carries: those of a machine-readable zone, and the Luhn
// digit of a South African identity number.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

struct CheckDigitReport {
    int32_t verdict;            // 1 the document has none, 2 all hold, 3 some fail
    const char* failures[5];    // the fields whose digit fails, in document order
    int32_t failureCount;
};

// Checks the digits of the record's reading; text is the winner's text as framed.
CheckDigitReport checkDocumentDigits(const ParsedRecord* record, TextSpan text);

}  // namespace orvane
