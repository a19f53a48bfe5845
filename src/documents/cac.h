// The five readers of US military and civilian identity card barcodes (formats 51 to
// 55): fixed-width layouts read by the fixed-field engine.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseCacFormat51(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseCacFormat52(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseCacFormat53(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseCacFormat54(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseCacFormat55(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

// Necessary conditions of each reader's acceptance, for the driver's quick refusals.
bool mayReadCacFormat51(const TextFacts& facts);
bool mayReadCacFormat52(const TextFacts& facts);
bool mayReadCacFormat53(const TextFacts& facts);
bool mayReadCacFormat54(const TextFacts& facts);
bool mayReadCacFormat55(const TextFacts& facts);

}  // namespace orvane
