// The three "HC" card readers: a fixed-position barcode text (format 48), stripe
// tracks (format 49) and keyword lines (format 50).
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseHcFormat48(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat49(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseHcFormat50(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

}  // namespace orvane
