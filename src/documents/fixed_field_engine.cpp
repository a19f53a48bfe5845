#include "documents/fixed_field_engine.h"

#include <cstring>

#include "engine/status.h"
#include "fields/text.h"

namespace orvane {
namespace {

// Characters of the head: four letters, the version and four that are not read.
constexpr int32_t kHeadLength = 9;
constexpr const char* kIdus = "IDUS";

bool isEmptyInput(TextSpan input) { return input.data == nullptr || input.length == 0; }

bool hasVersion(const FixedFieldEngine& e) {
    return e.versionText != nullptr && e.versionText[0] != '\0';
}

}  // namespace

void initFixedFieldEngine(FixedFieldEngine& e, ParsedRecord* record, const void* context,
                          const char* versionText, std::span<const FixedFieldLayout> layout) {
    e = FixedFieldEngine{};
    e.record = record;
    e.context = context;
    e.versionText = versionText;
    e.layout = layout.data();
    e.layoutCount = static_cast<uint32_t>(layout.size());
    e.run = fixedFieldRun;
    e.checkHeader = checkIdusHeader;
    e.enterBody = enterBodyAfterHead;
    e.splitFields = splitFixedFields;
    e.storeField = storeTrimmedField;
}

int32_t runFixedFieldEngine(FixedFieldEngine& e, const char* input, int32_t length) {
    if (e.run == nullptr) return kOk;
    return e.run(e, input, length);
}

int32_t fixedFieldRun(FixedFieldEngine& e, const char* input, int32_t length) {
    if (input == nullptr || length < 0) return kErrInvalidArgument;
    const TextSpan whole{input, length};
    if (int32_t status = runStep(e.checkHeader, e, whole)) return status;
    if (e.enterBody == nullptr) return kOk;
    return e.enterBody(e, whole);
}

int32_t checkVersionAt(const FixedFieldEngine& e, TextSpan input, int32_t position) {
    if (!hasVersion(e)) return kOk;
    if (position < 0 || position >= input.length) return kErrVersion;
    return input.data[position] == e.versionText[0] ? kOk : kErrVersion;
}

int32_t checkIdusHeader(FixedFieldEngine& e, TextSpan input) {
    if (isEmptyInput(input)) return kErrInvalidArgument;
    if (input.length < 5 || std::memcmp(input.data, kIdus, 4) != 0) return kErrFraming;
    return checkVersionAt(e, input, 4);
}

int32_t enterBodyAfterHead(FixedFieldEngine& e, TextSpan input) {
    if (input.data == nullptr || input.length < kHeadLength) return kErrFraming;
    if (e.splitFields == nullptr) return kOk;
    return e.splitFields(e, TextSpan{input.data + kHeadLength, input.length - kHeadLength});
}

int32_t splitFixedFields(FixedFieldEngine& e, TextSpan body) {
    if (body.data == nullptr || body.length < 0 || e.layout == nullptr || e.layoutCount < 1) {
        return kErrInvalidArgument;
    }
    if (body.length == 0) return kOk;
    int32_t remaining = body.length;
    const char* at = body.data;
    if (e.layout[0].width > remaining) return kErrNotRecognised;
    for (uint32_t row = 0; row < e.layoutCount; ++row) {
        const FixedFieldLayout& field = e.layout[row];
        if (e.storeField != nullptr) e.storeField(e, field.id, TextSpan{at, field.width});
        remaining -= field.width;
        if (row + 1 == e.layoutCount || remaining < 1) return kOk;
        at += field.width;
        // Ending at a field boundary is fine; ending inside one is not.
        if (e.layout[row + 1].width > remaining) return kErrNotRecognised;
    }
    return kOk;
}

void storeTrimmedField(FixedFieldEngine& e, FieldId id, TextSpan value) {
    trimIf(&value, isBlankOrNul);
    setFieldMapped(e.record, id, value, nullptr, nullptr, '\0');
}

}  // namespace orvane
