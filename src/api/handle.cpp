#include "api/handle.h"

#include <cstdlib>
#include <cstring>
#include <ctime>

#include "engine/driver.h"
#include "engine/status.h"

namespace orvane {

void readParseClock(ParserHandle* handle) {
    const std::time_t now = std::time(nullptr);
    // A time zone the caller changes within one second shows from the next one.
    if (handle->clockSecond == static_cast<int64_t>(now) && handle->secondClock.parseYear != 0) {
        handle->clock = handle->secondClock;
        return;
    }
    std::tm local{};
    // The reentrant form keeps handles on different threads from sharing state.
    if (localtime_r(&now, &local) == nullptr) return;
    ParseClock& clock = handle->clock;
    clock.parseYear = local.tm_year + 1900;
    clock.parseMonth = local.tm_mon + 1;
    clock.parseDay = local.tm_mday;
    clock.parseHour = local.tm_hour;
    clock.parseMinute = local.tm_min;
    clock.parseSecond = local.tm_sec;
    handle->clockSecond = static_cast<int64_t>(now);
    handle->secondClock = clock;
}

int32_t ensureHandleBuffers(ParserHandle* handle, int32_t needed) {
    if (handle->inputCopy != nullptr && handle->workStore != nullptr &&
        handle->inputCopyCapacity >= needed && handle->workStoreCapacity >= needed) {
        return kOk;
    }
    std::free(handle->inputCopy);
    std::free(handle->workStore);
    // The framings and the repaired copy share the input copy's allocation, so a handle
    // still holds two.
    handle->inputCopy = static_cast<char*>(std::calloc(4 * static_cast<size_t>(needed), 1));
    handle->workStore = static_cast<char*>(std::calloc(static_cast<size_t>(needed), 1));
    if (handle->inputCopy == nullptr || handle->workStore == nullptr) {
        std::free(handle->inputCopy);
        std::free(handle->workStore);
        handle->inputCopy = nullptr;
        handle->workStore = nullptr;
        handle->framings = nullptr;
        handle->repairedInput = nullptr;
        handle->keptText = nullptr;
        handle->inputCopyCapacity = 0;
        handle->workStoreCapacity = 0;
        handle->record.workBuffer = nullptr;
        handle->record.workCapacity = 0;
        handle->record.workUsed = 0;
        return kErrNoWorkBuffer;
    }
    handle->framings = handle->inputCopy + needed;
    handle->repairedInput = handle->framings + 2 * static_cast<size_t>(needed);
    handle->inputCopyCapacity = needed;
    handle->workStoreCapacity = needed;
    return attachWorkBuffer(&handle->record, handle->workStore, needed);
}

namespace {

// The winner's text stays in the framings: where the driver left it, or copied into the
// zone framing's place, which no answer needs once the parse is over.
void keepWinnerText(ParserHandle* handle, const ParseOutcome& outcome) {
    handle->keptText = nullptr;
    handle->keptLength = 0;
    if (outcome.text == nullptr || outcome.length < 0) return;
    const char* store = handle->framings;
    const size_t storeSize = 2 * static_cast<size_t>(handle->inputCopyCapacity);
    if (outcome.text >= store && outcome.text < store + storeSize) {
        handle->keptText = outcome.text;
    } else {
        char* place = handle->framings + handle->inputCopyCapacity;
        std::memmove(place, outcome.text, static_cast<size_t>(outcome.length));
        handle->keptText = place;
    }
    handle->keptLength = outcome.length;
}

}  // namespace

int32_t prepareParse(ParserHandle* handle, int32_t length) {
    if (handle == nullptr) return kErrInvalidArgument;
    handle->elements.listed = false;
    if (length < 1) {
        // The record stays for the field getters, but the answers about the last parse
        // (status, format, JSON) must not describe an earlier input.
        handle->lastStatus = kErrInvalidArgument;
        handle->repairs = 0;
        return kErrInvalidArgument;
    }
    const int32_t needed = length > kMinimumBufferSize ? length : kMinimumBufferSize;
    readParseClock(handle);
    return ensureHandleBuffers(handle, needed);
}

int32_t parseInto(ParserHandle* handle, std::span<const FormatDescriptor> rows, const void* data, int32_t length,
                  ParseOutcome* outcome) {
    const ParseBuffers buffers{handle->inputCopy, handle->inputCopyCapacity, handle->framings};
    ParseOutcome own{};
    ParseOutcome* out = outcome != nullptr ? outcome : &own;
    const int32_t status = parseBestFormatOf(rows, data, length, buffers, &handle->record, &handle->clock, out);
    handle->lastStatus = status;
    handle->elements.listed = false;
    keepWinnerText(handle, *out);
    return status;
}

int32_t checkParsed(const ParserHandle* handle) {
    if (handle == nullptr || handle->record.workBuffer == nullptr) return kErrInvalidArgument;
    return handle->lastStatus == kOk ? kOk : kErrNoAnswer;
}

}  // namespace orvane

using namespace orvane;

extern "C" {

SVT_API SVT_ParserHandle* SVT_create(void) {
    return static_cast<SVT_ParserHandle*>(std::calloc(1, sizeof(SVT_ParserHandle)));
}

SVT_API void SVT_delete(SVT_ParserHandle* handle) {
    if (handle == nullptr) return;
    std::free(handle->inputCopy);
    std::free(handle->workStore);
    std::free(handle);
}

SVT_API int SVT_parse(SVT_ParserHandle* handle, const void* data, int length) {
    if (int32_t status = prepareParse(handle, length)) return status;
    handle->repairs = 0;
    return parseInto(handle, formatRegistry(), data, length, nullptr);
}

SVT_API int SVT_getMajorVersion(void) { return kVersionMajor; }
SVT_API int SVT_getMinorVersion(void) { return kVersionMinor; }
SVT_API int SVT_getBuildVersion(void) { return kVersionBuild; }

}  // extern "C"
