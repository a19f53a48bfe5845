// The 17 magnetic-stripe format readers, formats 0 to 16: each installs the splitter and
// check of its stripe shape, puts its own steps in place of some defaults, and runs.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseStripeFormat0(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat1(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat2(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat3(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat4(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat5(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat6(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat7(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat8(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat9(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat10(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat11(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat12(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat13(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat14(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat15(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseStripeFormat16(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

// Necessary conditions of each reader's acceptance, for the driver's quick refusals.
bool mayReadStripeFormat0(const TextFacts& facts);
bool mayReadStripeFormat1(const TextFacts& facts);
bool mayReadStripeFormat2(const TextFacts& facts);
bool mayReadStripeFormat3(const TextFacts& facts);
bool mayReadStripeFormat4(const TextFacts& facts);
bool mayReadStripeFormat5(const TextFacts& facts);
bool mayReadStripeFormat6(const TextFacts& facts);
bool mayReadStripeFormat7(const TextFacts& facts);
bool mayReadStripeFormat8(const TextFacts& facts);
bool mayReadStripeFormat9(const TextFacts& facts);
bool mayReadStripeFormat10(const TextFacts& facts);
bool mayReadStripeFormat11(const TextFacts& facts);
bool mayReadStripeFormat12(const TextFacts& facts);
bool mayReadStripeFormat13(const TextFacts& facts);
bool mayReadStripeFormat14(const TextFacts& facts);
bool mayReadStripeFormat15(const TextFacts& facts);
bool mayReadStripeFormat16(const TextFacts& facts);

// Deletes every line feed of the text in place, closing the gaps; the new length.
int32_t deleteLineFeeds(char* text, int32_t length);

}  // namespace orvane
