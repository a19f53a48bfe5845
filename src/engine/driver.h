// The best-match driver: tries every registered format on the input and keeps the
// record of the best-scoring one.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"
#include "engine/registry.h"

namespace orvane {

// The handle's buffers as the driver uses them. Readers that rewrite their text get a
// copy in the scratch buffer, which the scoring derivers also write into; the texts that
// many rows share (the barcode and the zone framing) are made once into the framing
// store, which holds two texts of scratchCapacity bytes each.
struct ParseBuffers {
    char* scratch;
    int32_t scratchCapacity;
    char* framings;
};

// What the driver tells its caller besides the status.
struct ParseOutcome {
    int32_t row;       // the winning row, or -1
    int32_t score;     // its score
    // The winner's text as framed for it, before its reader rewrote anything: in the
    // framing store, or in the scratch buffer, whence the caller must copy it before use.
    const char* text;
    int32_t length;
};

// data is the caller's input and is only read.
int32_t parseBestFormat(const void* data, int32_t dataLength, const ParseBuffers& buffers,
                        ParsedRecord* record, const ParseClock* clock, ParseOutcome* outcome = nullptr);

// The same over a given list of rows, so that tests can drive a registry of their own.
int32_t parseBestFormatOf(std::span<const FormatDescriptor> rows, const void* data, int32_t dataLength,
                          const ParseBuffers& buffers, ParsedRecord* record, const ParseClock* clock,
                          ParseOutcome* outcome = nullptr);

// Number of filled slots of a record.
int32_t countFilledFields(const ParsedRecord* record);

}  // namespace orvane
