// The three "HC" card readers: a fixed-position barcode text (format 48), stripe
// tracks (format 49) and keyword lines (format 50).
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseHcFormat48(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat49(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat50(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

// A two-digit year: below 31 it is 20YY, otherwise 19YY.
int32_t expandHcYear(int32_t twoDigitYear);

}  // namespace orvane
