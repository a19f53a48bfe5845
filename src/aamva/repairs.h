// Repairs of the damage AAMVA barcode text suffers between the scanner and the caller.
#pragma once

#include "engine/record.h"

namespace orvane {

// The header word with a letter lost or its blank gone ("NSI 6360..", "ANSI6360..",
// "AMVA6360.."), made whole.
int32_t repairHeaderMarker(TextSpan in, char* out, int32_t room);
// The separators between "@" and the header word (line feed, record separator, carriage
// return) dropped, doubled or replaced by other line breaks and blanks, put back.
int32_t repairHeaderSeparators(TextSpan in, char* out, int32_t room);
// Element lines indented by blanks, the blanks taken away.
int32_t repairLineIndents(TextSpan in, char* out, int32_t room);
// Elements run together without separators: a line feed put before each element id,
// each id once, as the element tables know them.
int32_t repairElementSeparators(TextSpan in, char* out, int32_t room);
// Dates written with slashes (01/31/1990) or year first with hyphens (1990-01-31)
// without them.
int32_t repairSlashDates(TextSpan in, char* out, int32_t room);

}  // namespace orvane
