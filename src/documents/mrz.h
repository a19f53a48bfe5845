// The machine-readable-zone readers: passports (TD3, format 64), identity cards of
// three lines (TD1, 65) and of two (TD2, 66), and visas (67). Each reads fixed
// positions of the zone's lines joined into one text; check digits are not examined.
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

int32_t parseMrzFormat64(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseMrzFormat65(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseMrzFormat66(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseMrzFormat67(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

// Necessary conditions of each reader's acceptance, for the driver's quick refusals,
// judged on the caller's bytes before the zone framing.
bool mayReadMrzFormat64(const TextFacts& facts);
bool mayReadMrzFormat65(const TextFacts& facts);
bool mayReadMrzFormat66(const TextFacts& facts);
bool mayReadMrzFormat67(const TextFacts& facts);

// The first two characters of the zone the framing makes of the caller's bytes,
// upper-cased as it does.
struct ZoneOpening {
    char first;
    char second;
    int32_t next;  // the index after the second
};
ZoneOpening openZone(const TextFacts& input);

// Whether that zone may have that many characters.
bool zoneMayHaveLength(const TextFacts& input, const ZoneOpening& opening, int32_t length);

// Character classes of a zone.
int isMrzZoneCharacter(int c);  // digit, capital letter or "<"
int isMrzCodeCharacter(int c);  // capital letter or "<"

// Identity cards open with A, C or I; a "V" in second place marks a visa.
bool isMrzCardType(char first, char second);

}  // namespace orvane
