// The 31 AAMVA format readers, formats 17 to 47: each configures the engine for one
// edition or issuer layout and runs it.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseAamvaFormat17(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat18(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat19(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat20(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat21(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat22(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat23(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat24(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat25(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat26(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat27(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat28(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat29(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat30(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat31(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat32(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat33(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat34(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat35(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat36(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat37(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat38(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat39(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat40(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat41(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat42(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat43(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat44(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat45(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat46(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseAamvaFormat47(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

}  // namespace orvane
