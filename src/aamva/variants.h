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

// Necessary conditions of each reader's acceptance, for the driver's quick refusals:
// the header steps each variant runs, judged from the text's facts.
bool mayReadAamvaFormat17(const TextFacts& facts);
bool mayReadAamvaFormat18(const TextFacts& facts);
bool mayReadAamvaFormat19(const TextFacts& facts);
bool mayReadAamvaFormat20(const TextFacts& facts);
bool mayReadAamvaFormat21(const TextFacts& facts);
bool mayReadAamvaFormat22(const TextFacts& facts);
bool mayReadAamvaFormat23(const TextFacts& facts);
bool mayReadAamvaFormat24(const TextFacts& facts);
bool mayReadAamvaFormat25(const TextFacts& facts);
bool mayReadAamvaFormat26(const TextFacts& facts);
bool mayReadAamvaFormat27(const TextFacts& facts);
bool mayReadAamvaFormat28(const TextFacts& facts);
bool mayReadAamvaFormat29(const TextFacts& facts);
bool mayReadAamvaFormat30(const TextFacts& facts);
bool mayReadAamvaFormat31(const TextFacts& facts);
bool mayReadAamvaFormat32(const TextFacts& facts);
bool mayReadAamvaFormat33(const TextFacts& facts);
bool mayReadAamvaFormat34(const TextFacts& facts);
bool mayReadAamvaFormat35(const TextFacts& facts);
bool mayReadAamvaFormat36(const TextFacts& facts);
bool mayReadAamvaFormat37(const TextFacts& facts);
bool mayReadAamvaFormat38(const TextFacts& facts);
bool mayReadAamvaFormat39(const TextFacts& facts);
bool mayReadAamvaFormat40(const TextFacts& facts);
bool mayReadAamvaFormat41(const TextFacts& facts);
bool mayReadAamvaFormat42(const TextFacts& facts);
bool mayReadAamvaFormat43(const TextFacts& facts);
bool mayReadAamvaFormat44(const TextFacts& facts);
bool mayReadAamvaFormat45(const TextFacts& facts);
bool mayReadAamvaFormat46(const TextFacts& facts);
bool mayReadAamvaFormat47(const TextFacts& facts);

// Texts that format 46 reads exactly as format 42 does.
bool format46ReadsAsFormat42(const TextFacts& facts);

}  // namespace orvane
