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

// Character classes of a zone.
int isMrzZoneCharacter(int c);  // digit, capital letter or "<"
int isMrzCodeCharacter(int c);  // capital letter or "<"

// The parts of a name field: the primary identifier, all given names, the first of
// them and the ones after it.
struct MrzName {
    TextSpan primary;
    TextSpan givenNames;
    TextSpan firstGiven;
    TextSpan otherGiven;
};

// The shared readers: 0, -21 for a null or too short field, -20 for a field that does
// not read.
// A three-letter code up to its first "<" ("D<<" gives "D").
int32_t readMrzCountryCode(TextSpan field, TextSpan* code);
// YYMMDD as 19YY, MM, DD; the century is the caller's concern.
int32_t readMrzDate(TextSpan field, DateValue* date);
int32_t readMrzName(TextSpan field, MrzName* name);

}  // namespace orvane
