// The best-match driver: tries every registered format on the input and keeps the
// record of the best-scoring one.
#pragma once

#include <cstdint>

#include "engine/format.h"
#include "engine/registry.h"

namespace orvane {

// data is the caller's input and is only read; inputCopy is the handle's scratch buffer.
int32_t parseBestFormat(const void* data, int32_t dataLength, char* inputCopy,
                        int32_t inputCopyCapacity, ParsedRecord* record, const ParseClock* clock);

// The same over a given list of rows, so that tests can drive a registry of their own.
int32_t parseBestFormatOf(std::span<const FormatDescriptor> rows, const void* data,
                          int32_t dataLength, char* inputCopy, int32_t inputCopyCapacity,
                          ParsedRecord* record, const ParseClock* clock);

// Finds "ANSI" or "AAMVA" followed (after one byte) by eight digits in text that starts
// with "@"; the version is the two bytes after the six-digit issuer number. 0 with the
// version span, -21 for a null text or negative length, -26 when there is none.
int32_t findAamvaHeader(const char* text, int32_t length, TextSpan* version);

// Number of filled slots of a record.
int32_t countFilledFields(const ParsedRecord* record);

}  // namespace orvane
