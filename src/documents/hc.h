// The three "HC" card readers: a fixed-position barcode text (format 48), stripe
// tracks (format 49) and keyword lines (format 50).
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseHcFormat48(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat49(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat50(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

// Necessary conditions of each reader's acceptance, for the driver's quick refusals.
bool mayReadHcFormat48(const TextFacts& facts);
bool mayReadHcFormat49(const TextFacts& facts);
bool mayReadHcFormat50(const TextFacts& facts);

}  // namespace orvane
