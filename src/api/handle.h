// The parser handle behind the C interface: the parse time, the record of the last
// parse, the two buffers it owns and what the answers beyond the record need.
#pragma once

#include <cstdint>

#include <span>

#include "engine/driver.h"
#include "engine/format.h"
#include "engine/record.h"
#include "orvane_parser.h"

// The last parse's raw elements, listed when first asked for, so that reading them one
// index at a time costs one walk rather than one per index.
inline constexpr int32_t kListedElements = 256;
struct ElementList {
    bool listed;     // false until asked for after a parse
    int32_t count;   // every element, also those past the list
    orvane::TextSpan ids[kListedElements];
    orvane::TextSpan values[kListedElements];
};

struct SVT_ParserHandle {
    orvane::ParseClock clock;  // parseYear .. parseSecond of the last parse
    orvane::ParsedRecord record;
    char* inputCopy;  // framed copy of the input; scratch for the driver and getters
    char* workStore;  // the record's work buffer
    int32_t inputCopyCapacity;
    int32_t workStoreCapacity;
    // Behind inputCopy in its allocation: the texts many formats share (two of
    // inputCopyCapacity bytes), then the lenient parse's repaired copy of the input.
    char* framings;
    char* repairedInput;
    int32_t lastStatus;     // of the last parse
    const char* keptText;   // the winner's text as framed for it, in the framings
    int32_t keptLength;
    uint32_t repairs;       // what the last parse repaired, a bit per repair
    ElementList elements;
    // The local time worked out for the last second a parse began in, so that parses in
    // the same second do not ask the time zone again.
    int64_t clockSecond;
    orvane::ParseClock secondClock;
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

// Stores the local date and time in the handle's clock.
void readParseClock(ParserHandle* handle);

// Makes the buffers hold at least needed bytes, reallocating only when they are too
// small; returns 0 or -24 when memory is exhausted.
int32_t ensureHandleBuffers(ParserHandle* handle, int32_t needed);

// The first steps of every parse: the argument check, the clock and the buffers.
int32_t prepareParse(ParserHandle* handle, int32_t length);

// Runs the driver over the rows on buffers that prepareParse made, and keeps what the
// answers beyond the record need: the status and the winner's text.
int32_t parseInto(ParserHandle* handle, std::span<const FormatDescriptor> rows, const void* data, int32_t length,
                  ParseOutcome* outcome);

// Whether the last parse left a winning record to answer from: 0, -21 before any
// parse, -26 after one that recognised nothing.
int32_t checkParsed(const ParserHandle* handle);

}  // namespace orvane
