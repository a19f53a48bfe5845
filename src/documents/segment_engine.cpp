#include "documents/segment_engine.h"

#include "engine/status.h"

namespace orvane {
namespace {

constexpr const char* kDocumentHc = "HC";


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
    if (int32_t status = runStep(e.check, e, segments[0])) return status;
    // A segment step cannot refuse the input: its result is not looked at.
    runStep(e.dispatch, e, segments[0]);
    runStep(e.second, e, segments[1]);
    runStep(e.third, e, segments[2]);
    setFieldLiteralIfMissing(e.record, field::documentType, kDocumentHc);
    return kOk;
}

int32_t dispatchFieldSteps(SegmentEngine& e, TextSpan segment) {
    if (!spanUsable(segment)) return kOk;
    runStep(e.fieldFirst, e, segment);
    for (SegmentFieldStep step : e.fieldSteps) runStep(step, e, segment);
    runStep(e.fieldLast, e, segment);
    return kOk;
}

}  // namespace orvane
