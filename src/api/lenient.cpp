// The lenient parse: the input as it came, read by every row and then by the rows only
// the lenient parse tries, and the input with the damage scanners do to it repaired; the
// best reading wins. On a tie the input as it came wins, and among its rows the earlier
// one, unless the repairs undid damage no layout has of its own.
#include "api/handle.h"
#include "engine/repairs.h"
#include "engine/status.h"

using namespace orvane;

namespace {

enum class Reading { AsItCame, Repaired };

struct Candidate {
    Reading reading;
    int32_t status;
    int32_t score;
    bool winsTies;  // a repaired text whose damage is never a layout's own
    bool better(const Candidate& other) const {
        if (status != kOk) return false;
        if (other.status != kOk) return true;
        return winsTies ? score >= other.score : score > other.score;
    }
};

Candidate parseAs(ParserHandle* handle, Reading reading, const void* data, int32_t length) {
    ParseOutcome outcome{};
    const int32_t status = parseInto(handle, lenientRegistry(), data, length, &outcome);
    return Candidate{reading, status, outcome.score, false};
}

}  // namespace

extern "C" SVT_API int SVT_parseLenient(SVT_ParserHandle* handle, const void* data, int length) {
    if (int32_t status = prepareParse(handle, length)) return status;
    handle->repairs = 0;
    if (data == nullptr) return parseInto(handle, formatRegistry(), data, length, nullptr);
    // The repaired text lies in its own buffer; the input copy helps build it and is free
    // again before the parse.
    uint32_t applied = 0;
    const int32_t room = handle->inputCopyCapacity - 1;
    const TextSpan input{static_cast<const char*>(data), length < room ? length : room};
    const int32_t repairedLength = repairText(input, handle->repairedInput, handle->inputCopy, room, &applied);
    // The repaired reading is parsed again if it wins: the input as it came is parsed
    // last, as it wins most often.
    Candidate repaired{Reading::Repaired, kErrNotRecognised, 0, false};
    if (repairedLength > 0) {
        repaired = parseAs(handle, Reading::Repaired, handle->repairedInput, repairedLength);
        repaired.winsTies = anyDecisive(applied);
    }
    const Candidate asItCame = parseAs(handle, Reading::AsItCame, data, length);
    if (repaired.better(asItCame)) {
        handle->repairs = applied;
        return parseAs(handle, Reading::Repaired, handle->repairedInput, repairedLength).status;
    }
    // Nothing read the input: it is left as the strict parse leaves it.
    if (asItCame.status != kOk) return parseInto(handle, formatRegistry(), data, length, nullptr);
    return asItCame.status;
}
