// The segment reader: cuts the input into up to three segments (the tracks of a
// stripe, or the whole text), checks the first and runs field steps over each. A
// reader builds one engine on its stack, installs its steps and runs it; an empty step
// is skipped.
#pragma once

#include <cstdint>

#include "engine/format.h"
#include "engine/record.h"

namespace orvane {

struct SegmentEngine;

// Reads one field (or a few) from a whole segment.
using SegmentFieldStep = void (*)(SegmentEngine& e, TextSpan segment);

struct SegmentEngine {
    ParsedRecord* record;
    const void* context;  // handed over by the format reader, kept untouched

    int32_t (*run)(SegmentEngine& e, const char* input, int32_t length);
    int32_t (*locate)(SegmentEngine& e, const char* input, int32_t length, TextSpan* first,
                      TextSpan* second, TextSpan* third);
    int32_t (*check)(SegmentEngine& e, TextSpan first);
    int32_t (*dispatch)(SegmentEngine& e, TextSpan first);
    int32_t (*second)(SegmentEngine& e, TextSpan second);
    int32_t (*third)(SegmentEngine& e, TextSpan third);
    SegmentFieldStep fieldFirst;
    SegmentFieldStep fieldSteps[4];
    SegmentFieldStep fieldLast;
};

// Clears the engine, keeps the arguments and installs run; every other step is empty.
void initSegmentEngine(SegmentEngine& e, ParsedRecord* record, const void* context);

// Runs the run step, or answers 0 when it was removed.
int32_t runSegmentEngine(SegmentEngine& e, const char* input, int32_t length);

// The run step: locate, check, the three segment steps, then documentType "HC" when
// no step wrote one.
int32_t segmentRun(SegmentEngine& e, const char* input, int32_t length);

// A segment step running fieldFirst, the four field steps and fieldLast on a segment
// that holds text.
int32_t dispatchFieldSteps(SegmentEngine& e, TextSpan segment);

}  // namespace orvane
