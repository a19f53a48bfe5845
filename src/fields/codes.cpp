#include "fields/codes.h"

#include "fields/answer.h"

namespace orvane {

int32_t getAamvaVersion(const ParsedRecord* record, char* buffer, int32_t capacity) {
    const FieldId slot = field::aamvaVersion;
    return copyFirstFilled(record, &slot, 1, buffer, capacity);
}

}  // namespace orvane
