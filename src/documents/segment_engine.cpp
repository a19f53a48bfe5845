#include "documents/segment_engine.h"

#include "engine/status.h"

namespace orvane {
namespace {

constexpr const char* kDocumentHc = "HC";

void runFieldStep(SegmentEngine& e, SegmentFieldStep step, TextSpan segment) {
    if (step != nullptr) step(e, segment);
}

void runSegmentStep(SegmentEngine& e, int32_t (*step)(SegmentEngine&, TextSpan), TextSpan segment) {
    // A segment step cannot refuse the input: its result is not looked at.
    if (step != nullptr) step(e, segment);
}

}  // namespace

void initSegmentEngine(SegmentEngine& e, ParsedRecord* record, const void* context) {
    e = SegmentEngine{};
    e.record = record;
    e.context = context;
    e.run = segmentRun;
}

int32_t runSegmentEngine(SegmentEngine& e, const char* input, int32_t length) {
    if (e.run == nullptr) return kOk;
    return e.run(e, input, length);
}

int32_t segmentRun(SegmentEngine& e, const char* input, int32_t length) {
    TextSpan segments[3] = {};
    if (e.locate != nullptr) {
        if (int32_t status = e.locate(e, input, length, &segments[0], &segments[1], &segments[2])) {
            return status;
        }
    }
    if (e.check != nullptr) {
        if (int32_t status = e.check(e, segments[0])) return status;
    }
    runSegmentStep(e, e.dispatch, segments[0]);
    runSegmentStep(e, e.second, segments[1]);
    runSegmentStep(e, e.third, segments[2]);
    if (fieldMissing(e.record, field::documentType) != 0) {
        setFieldLiteral(e.record, field::documentType, kDocumentHc);
    }
    return kOk;
}

int32_t dispatchFieldSteps(SegmentEngine& e, TextSpan segment) {
    if (!spanUsable(segment)) return kOk;
    runFieldStep(e, e.fieldFirst, segment);
    for (SegmentFieldStep step : e.fieldSteps) runFieldStep(e, step, segment);
    runFieldStep(e, e.fieldLast, segment);
    return kOk;
}

}  // namespace orvane
