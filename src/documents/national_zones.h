// Machine-readable zones of national layouts beside the ICAO ones, which the lenient
// parse reads as formats 100 to 102 (zone characters only, lines joined):
//   - the French identity card issued until 2021, two lines of 36 (format 100);
//   - the Swiss driving licence, lines of 9, 30 and 30 (format 101);
//   - the French driving licence, one line of 30 (format 102).
#pragma once

#include <cstdint>

#include "engine/format.h"

namespace orvane {

inline constexpr uint32_t kFormatFrenchIdentityCard = 100;
inline constexpr uint32_t kFormatSwissDrivingLicence = 101;
inline constexpr uint32_t kFormatFrenchDrivingLicence = 102;

enum class NationalZone : int32_t {
    None = 0,
    FrenchIdentityCard,
    SwissDrivingLicence,
    FrenchDrivingLicence,
};

// The layout a format number reads, or None.
NationalZone nationalZoneOfFormat(uint32_t formatId);

int32_t parseFrenchIdentityCardZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseSwissDrivingLicenceZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);
int32_t parseFrenchDrivingLicenceZone(char* text, int32_t length, ParsedRecord* record, const ParseClock* clock);

bool mayReadFrenchIdentityCardZone(const TextFacts& facts);
bool mayReadSwissDrivingLicenceZone(const TextFacts& facts);
bool mayReadFrenchDrivingLicenceZone(const TextFacts& facts);

// What the check digits of a national zone say.
struct NationalZoneCheck {
    int32_t checkedDigits;      // 0 for a layout without check digits
    const char* failures[3];    // "documentNumber", "birthDate" or "composite", in zone order
    int32_t failureCount;
};

// Verifies the check digits of a zone of the layout given as zone characters only, by the
// weights 7, 3, 1; a "<" in a digit's place holds only for a field of fillers alone.
// Answers 1 when every digit holds (also for a layout that has none), 0 when one fails,
// -20 for a zone of another length; the report, when given, is always written.
int32_t checkNationalZoneDigits(NationalZone layout, TextSpan zone, NationalZoneCheck* report);

// Visits the fields of a zone of the layout, given as zone characters only, in zone order
// and trimmed of fillers at both ends:
//   French identity card: documentCode, issuingState, surname, administrativeCode,
//     documentNumber (the twelve characters of issue month, office and serial),
//     givenNames, birthDate, sex;
//   Swiss driving licence: documentNumber (the first line), documentCode, issuingState,
//     personalNumber, version, birthDate, names;
//   French driving licence: documentCode, issuingState, documentNumber, expiryDate, names.
void visitNationalZoneElements(NationalZone layout, TextSpan zone, ElementVisitor visit, void* context);

}  // namespace orvane
