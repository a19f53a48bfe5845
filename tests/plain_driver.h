// The parse driver written out the plain way, step by step: every row framed anew and
// upper-cased byte by byte, the whole work buffer cleared before every reader, every
// reader run and scored, the winner run once more. The library's driver frames shared
// texts once, refuses rows by their quick checks and keeps the winner's record; the tests
// and the fuzz target hold it to this one.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "engine/registry.h"

namespace orvane::testing {

// The plain driver over the given rows, with a scratch buffer of the given capacity.
int32_t plainParseBestFormat(std::span<const FormatDescriptor> rows, const std::string& input, char* scratch,
                             int32_t scratchCapacity, ParsedRecord* record, const ParseClock* clock);

// Parses the input with both drivers on buffers of the handle's size for it and compares
// the statuses and everything the records hold; "" when they agree, else what differs.
std::string compareDrivers(const std::string& input, std::span<const FormatDescriptor> rows);

}  // namespace orvane::testing
