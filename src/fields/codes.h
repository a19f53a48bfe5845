// Licence codes, their descriptions, the yes/no flags, the document type and the
// AAMVA version.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// The two-digit AAMVA header version, copied as it stands.
int32_t getAamvaVersion(const ParsedRecord* record, char* buffer, int32_t capacity);

}  // namespace orvane
