// Finding a machine-readable zone in what a scanner or an OCR app hands over: the lines of
// a known layout among other lines, with blanks inside them, letters in lower case,
// characters OCR could not read ("?"), junk after or before them, and fillers lost at the
// end of the line that ends with the names.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

inline constexpr int32_t kLongestZoneText = 90;

// The layouts a zone can have, told apart by their line lengths and opening letters.
enum class ZoneKind : int32_t {
    None = 0,
    Passport,             // two lines of 44, "P"
    VisaLong,             // two lines of 44, "V"
    Td1,                  // three lines of 30, "A", "C" or "I"
    Td2,                  // two lines of 36, "A", "C" or "I"
    VisaShort,            // two lines of 36, "V"
    FrenchIdentityCard,   // two lines of 36, "IDFRA"
    SwissDrivingLicence,  // lines of 9, 30 and 30, the second "F" and "CHE"
    FrenchDrivingLicence, // one line of 30, "D", a digit, "FRA"
};

// A zone as found: its characters in capitals, lines joined.
struct FoundZone {
    char text[kLongestZoneText];
    int32_t length;
    ZoneKind kind;
};

// The letter a digit is mistaken for (0 O, 1 I, 2 Z, 5 S, 6 G, 8 B), or c itself.
char letterLookAlike(char c);
// The digit a letter is mistaken for (O, D and Q 0; I and L 1; Z 2; S 5; G 6; B 8), or c itself.
char digitLookAlike(char c);

// The layout of zone characters, lines joined; the opening letters may be digits that look
// like them, as OCR leaves them.
ZoneKind zoneKindOf(const char* zone, int32_t length);
// Whether the zone opens with its layout's own letters, not with digits that look like them.
bool opensAsWritten(const FoundZone& zone);

// Looks for the lines of a zone in text: lines that hold zone characters (blanks and
// other characters inside them dropped, letters capitalised, a "?" kept in its place as
// a filler, which the check digits then judge) in the numbers and lengths
// of a layout. One line of the zone must have its length exactly; another may carry
// junk after it (or, when that makes no layout, before it), or, when it ends with the
// names, lack fillers at its end. A zone
// written on one line is found too. False when no zone is there.
bool findZone(TextSpan text, FoundZone* zone);

// Writes the zone as its lines, each ended by a line feed but the last; the length, or -1
// when it does not fit.
int32_t writeZoneLines(const FoundZone& zone, char* out, int32_t room);

// Whether the text's zone characters, capitalised, are the zone's: then the framing alone
// makes the zone of the text.
bool holdsTheZoneAlone(TextSpan text, const FoundZone& zone);

}  // namespace orvane
