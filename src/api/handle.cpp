#include "api/handle.h"

#include <cstdlib>
#include <ctime>

#include "engine/driver.h"
#include "engine/status.h"

namespace orvane {

void readParseClock(ParseClock* clock) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    // The reentrant form keeps handles on different threads from sharing state.
    if (localtime_r(&now, &local) == nullptr) return;
    clock->parseYear = local.tm_year + 1900;
    clock->parseMonth = local.tm_mon + 1;
    clock->parseDay = local.tm_mday;
    clock->parseHour = local.tm_hour;
    clock->parseMinute = local.tm_min;
    clock->parseSecond = local.tm_sec;
}

int32_t ensureHandleBuffers(ParserHandle* handle, int32_t needed) {
    if (handle->inputCopy != nullptr && handle->workStore != nullptr &&
        handle->inputCopyCapacity >= needed && handle->workStoreCapacity >= needed) {
        return kOk;
    }
    std::free(handle->inputCopy);
    std::free(handle->workStore);
    // The framings share the input copy's allocation, so a handle still holds two.
    handle->inputCopy = static_cast<char*>(std::calloc(3 * static_cast<size_t>(needed), 1));
    handle->workStore = static_cast<char*>(std::calloc(static_cast<size_t>(needed), 1));
    if (handle->inputCopy == nullptr || handle->workStore == nullptr) {
        std::free(handle->inputCopy);
        std::free(handle->workStore);
        handle->inputCopy = nullptr;
        handle->workStore = nullptr;
        handle->framings = nullptr;
        handle->inputCopyCapacity = 0;
        handle->workStoreCapacity = 0;
        handle->record.workBuffer = nullptr;
        handle->record.workCapacity = 0;
        handle->record.workUsed = 0;
        return kErrNoWorkBuffer;
    }
    handle->framings = handle->inputCopy + needed;
    handle->inputCopyCapacity = needed;
    handle->workStoreCapacity = needed;
    return attachWorkBuffer(&handle->record, handle->workStore, needed);
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
    if (handle == nullptr || length < 1) return kErrInvalidArgument;
    const int32_t needed = length > kMinimumBufferSize ? length : kMinimumBufferSize;
    readParseClock(&handle->clock);
    if (int32_t status = ensureHandleBuffers(handle, needed)) return status;
    const ParseBuffers buffers{handle->inputCopy, handle->inputCopyCapacity, handle->framings};
    return parseBestFormat(data, length, buffers, &handle->record, &handle->clock);
}

SVT_API int SVT_getMajorVersion(void) { return kVersionMajor; }
SVT_API int SVT_getMinorVersion(void) { return kVersionMinor; }
SVT_API int SVT_getBuildVersion(void) { return kVersionBuild; }

}  // extern "C"
