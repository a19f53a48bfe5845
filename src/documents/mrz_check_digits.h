// Check digits of a machine-readable zone (weights 7, 3, 1), verified apart from the
// zone readers so that what a reader stores never depends on them.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// Layouts recognised by their length and first character, as the zone readers do.
enum class MrzLayout : int32_t {
    None = 0,
    Td1,        // identity card, three lines of 30
    Td2,        // identity card, two lines of 36
    Td3,        // passport, two lines of 44
    VisaLong,   // visa, two lines of 44
    VisaShort,  // visa, two lines of 36
};

inline constexpr int32_t kMostZoneCheckDigits = 5;

struct MrzCheckReport {
    MrzLayout layout;
    int32_t checkedDigits;     // check digits examined
    const char* firstFailure;  // "documentNumber", "birthDate", "expiryDate", "optionalData"
                               // or "composite"; null when every digit holds
    const char* failures[kMostZoneCheckDigits];  // every field whose digit fails, in zone order
    int32_t failureCount;
};

// Verifies every check digit of a zone given as scanned: line breaks, blanks and other
// characters outside the zone are dropped and lower-case letters read as capitals. A
// filler "<" in a check-digit position holds only for a field of fillers alone. A
// three-line card's number longer than nine characters is checked whole: it goes on in
// the optional data after the "<" at its check digit's place, and its own check digit
// is the last character before the next filler. Answers 1 when every check digit
// holds, 0 when one does not (the report names the first), -21 for a null text or a
// negative length, -20 when the text is not a zone of a known layout. The report may
// be null; when given it is always written.
int32_t checkMrzDigits(const char* zoneText, int32_t length, MrzCheckReport* report);

// The layout of a zone of zone characters only, by its length and first characters.
MrzLayout zoneLayoutOf(const char* zone, int32_t length);

// The check digit 0..9 of a run of zone characters, or -20 for any other character.
int32_t mrzCheckDigit(TextSpan characters);

}  // namespace orvane
