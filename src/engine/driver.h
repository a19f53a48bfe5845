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

// Number of filled slots of a record.
int32_t countFilledFields(const ParsedRecord* record);

}  // namespace orvane
