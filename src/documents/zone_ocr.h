// The repairs of a machine-readable zone as OCR reads it. The first keeps the zone's lines
// alone (see findZone). The others correct the characters OCR takes for one another (0 and O,
// 1 and I, 2 and Z, 5 and S, 6 and G, 8 and B): digits where the layout has digits (dates,
// check digits), letters where it has letters (codes, names), and where it has either
// (document numbers, optional data) the one choice that makes the field's own check digit
// hold with the fewest changes; when two would, the field is not corrected. The corrections
// stand only when every check digit of the zone holds afterwards, so a layout without
// check digits is never corrected. Each repair
// below writes the corrections of one field, so that the lenient parse names each.
#pragma once

#include <cstdint>

#include "documents/zone_lines.h"
#include "engine/format.h"

namespace orvane {

// The zone with its look-alikes corrected; false when the zone has no layout with check
// digits or when no correction makes every digit hold (a zone whose digits hold as it
// stands is given back unchanged, with true).
bool correctZoneLookAlikes(const FoundZone& zone, FoundZone* corrected);

// The zone's lines alone, when the text holds more than the zone's characters or fewer of
// them than the zone, and the zone opens with its layout's letters or its look-alikes
// are corrected: a zone opening with a digit is left alone, which readers of other
// families would take for theirs.
int32_t repairZoneLines(TextSpan in, char* out, int32_t room);

// Whether a look-alike correction could change the zone the text holds: one of its
// characters is not of its place's kind, or a check digit fails. The corrections of every
// field share this gate, so a clean zone costs one look.
bool zoneMayNeedCorrection(const TextFacts& facts);

int32_t repairZoneDocumentCode(TextSpan in, char* out, int32_t room);
int32_t repairZoneIssuingState(TextSpan in, char* out, int32_t room);
int32_t repairZoneNames(TextSpan in, char* out, int32_t room);
int32_t repairZoneDocumentNumber(TextSpan in, char* out, int32_t room);
int32_t repairZoneNationality(TextSpan in, char* out, int32_t room);
int32_t repairZoneBirthDate(TextSpan in, char* out, int32_t room);
int32_t repairZoneExpiryDate(TextSpan in, char* out, int32_t room);
int32_t repairZoneOptionalData(TextSpan in, char* out, int32_t room);
int32_t repairZoneComposite(TextSpan in, char* out, int32_t room);

}  // namespace orvane
