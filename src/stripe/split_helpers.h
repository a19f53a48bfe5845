// Cutting a reader's text into pieces: shared by the splitters of every stripe shape.
#pragma once

#include <cstdint>

#include "engine/record.h"
#include "fields/text.h"

namespace orvane {

// Index of the first occurrence of the C string at or after from, or -1.
inline int32_t findText(TextSpan text, const char* needle, int32_t from) {
    if (text.data == nullptr || from < 0 || from >= text.length) return -1;
    const int32_t found = spanFind(TextSpan{text.data + from, text.length - from}, makeSpan(needle));
    return found < 0 ? -1 : from + found;
}
// The bytes from begin up to (not including) end; empty when end is not after begin.
TextSpan spanBetween(TextSpan text, int32_t begin, int32_t end);
// The first `max` lines of at least 2 bytes, cut at every CR or LF; returns how many.
int32_t pickLines(TextSpan text, TextSpan* lines, int32_t max);
// The first `max` pieces cut after every "?" (which stays with its piece), each trimmed
// of CR, LF and blanks, empty ones skipped; returns how many.
int32_t pickEndSentinelPieces(TextSpan text, TextSpan* pieces, int32_t max);

}  // namespace orvane
