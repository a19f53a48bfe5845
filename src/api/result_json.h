// The whole result of the last parse as one JSON object, written into the caller's
// buffer without allocating: the one JSON writer the tool and the bindings share.
#pragma once

#include <cstdint>

#include "api/handle.h"

namespace orvane {

// 0 with the object in buffer; -26 when it does not fit (buffer then holds ""); -21 for
// bad arguments or before any parse. *length is the object's length either way.
int32_t writeResultJson(ParserHandle* handle, char* buffer, int32_t capacity, int32_t* length);

}  // namespace orvane
