// Zones whose dates are not known in full. Issuers write fillers "<" for the parts of a
// birth date they do not know (the day, the month, or the whole date) and for the
// expiry of a document that has none. The readers of the five layouts refuse such a
// zone; the lenient rows 103 to 106 read it in the same layouts.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

inline constexpr uint32_t kFormatPassportZoneUnknownDates = 103;
inline constexpr uint32_t kFormatCardZoneUnknownDates = 104;
inline constexpr uint32_t kFormatTwoLineCardZoneUnknownDates = 105;
inline constexpr uint32_t kFormatVisaZoneUnknownDates = 106;

// The year of a two-digit birth year: this century only when the last one would put it
// more than a hundred years back, as the zone readers count.
int32_t zoneBirthYear(int32_t twoDigitYear, int32_t parseYear);

// A birth date YYMMDD whose pairs may each be "<<". 0 with the date, where an unknown
// month reads as December and an unknown day as the last day of its month: the latest
// day the holder can have been born on, so that an age derived from it is never more
// than the holder's. -26 when the year is unknown; -20 for any other character, for
// a pair half filler, or for an unknown day in a month outside 1..12. A known month or
// day is not range-checked, as the zone readers do not check them.
int32_t readZoneBirthDate(TextSpan six, int32_t parseYear, DateValue* date);

// Whether six characters are a birth date with at least one unknown pair ("<<").
bool isPartlyUnknownDate(TextSpan six);

// The passport (TD3), three-line card (TD1), two-line card (TD2) and visa layouts when
// the birth date is partly unknown or the expiry is all fillers: what is known is read
// as those layouts read it, the birth date as readZoneBirthDate gives it (nothing when
// its year is unknown), and no expiry for one of fillers.
int32_t parsePassportZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseCardZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseTwoLineCardZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseVisaZoneUnknownDates(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

bool mayReadPassportZoneUnknownDates(const TextFacts& facts);
bool mayReadCardZoneUnknownDates(const TextFacts& facts);
bool mayReadTwoLineCardZoneUnknownDates(const TextFacts& facts);
bool mayReadVisaZoneUnknownDates(const TextFacts& facts);

}  // namespace orvane
