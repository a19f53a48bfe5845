// The parser handle behind the C interface: the parse time, the record of the last
// parse and the two buffers it owns.
#pragma once

#include <cstdint>

#include "engine/format.h"
#include "engine/record.h"
#include "orvane_parser.h"

struct SVT_ParserHandle {
    orvane::ParseClock clock;  // parseYear .. parseSecond of the last parse
    orvane::ParsedRecord record;
    char* inputCopy;  // framed copy of the input; scratch for the driver and getters
    char* workStore;  // the record's work buffer
    int32_t inputCopyCapacity;
    int32_t workStoreCapacity;
    char* framings;   // the texts many formats share: two of inputCopyCapacity bytes, behind inputCopy
};

namespace orvane {

using ParserHandle = ::SVT_ParserHandle;

// Buffers are never smaller than this, so that small inputs allocate them once.
inline constexpr int32_t kMinimumBufferSize = 8192;

// Text of the library's version, as given to Java callers.
inline constexpr const char* kVersionText = "v.1.26.0";
inline constexpr int32_t kVersionMajor = 1;
inline constexpr int32_t kVersionMinor = 26;
inline constexpr int32_t kVersionBuild = 0;

// Stores the local date and time in the clock.
void readParseClock(ParseClock* clock);

// Makes the buffers hold at least needed bytes, reallocating only when they are too
// small; returns 0 or -24 when memory is exhausted.
int32_t ensureHandleBuffers(ParserHandle* handle, int32_t needed);

}  // namespace orvane
